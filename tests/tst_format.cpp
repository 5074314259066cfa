#include "fuzz/formatproperty.h"
#include "productionobject.h"
#include "reader.h"
#include "testunit.h"
#include "writer.h"

#include <QBuffer>
#include <QDirIterator>
#include <QSettings>
#include <QtTest>

#include <cstring>

using namespace production;

namespace {

const QByteArray workedExample = "; sample file\n"
                                 "\n"
                                 "[FactorySettings]\n"
                                 "mode = 1\n"
                                 "alpha = 10   ; first value\n"
                                 "beta = \"two words\"\n"
                                 "gamma = 1, 2 ,\"3\"\n"
                                 "delta\n"
                                 "epsilon =\n"
                                 "[ general ]\n"
                                 "zeta=a=b\n"
                                 "[SN]\n"
                                 "startwith=AB\n"
                                 "length=4\n"
                                 "mode=1\n"
                                 "AB01\n"
                                 "AB02\n";

QVariant list(std::initializer_list<const char *> texts)
{
    QVariantList items;
    for (const char *text : texts)
        items.append(QString::fromUtf8(text));
    return items;
}

QByteArray withLineEnds(QByteArray lines)
{
    return lines.replace("\n", "\r\n");
}

QByteArray repeated(const char *text, int characters)
{
    return QByteArray(text).repeated(characters / int(std::strlen(text)));
}

/// The functions as QSettings calls them.
QSettings::Format settingsFormat()
{
    static const QSettings::Format format =
        QSettings::registerFormat(QStringLiteral("ini"), &ProductionObject::readSetting,
                                  &ProductionObject::writeSetting, Qt::CaseSensitive);
    return format;
}

/// A stick that fails after so many bytes in either direction.
class FailingDevice : public QBuffer
{
public:
    explicit FailingDevice(QByteArray content, qint64 bytesUntilFailure)
        : left(bytesUntilFailure)
    {
        setData(content);
    }

protected:
    qint64 readData(char *data, qint64 length) override
    {
        return left > 0 ? count(QBuffer::readData(data, qMin(length, left))) : -1;
    }
    qint64 writeData(const char *data, qint64 length) override
    {
        return left > 0 ? count(QBuffer::writeData(data, qMin(length, left))) : -1;
    }

private:
    qint64 count(qint64 bytes)
    {
        left -= bytes;
        return bytes;
    }

    qint64 left;
};

} // namespace

/// The settings format: what its reader takes from a text and what its writer makes of it again.
class TestFormat : public QObject
{
    Q_OBJECT

private slots:
    void line_data();
    void line();
    void header_data();
    void header();
    void encoding_data();
    void encoding();
    void commentColumn_data();
    void commentColumn();
    void rewrite_data();
    void rewrite();
    void corpus_data();
    void corpus();
    void hugeTexts_data();
    void hugeTexts();
    void failingDevice_data();
    void failingDevice();
    void tooLargeFile();
    void forgetsCommentsOfFileBefore();

    void takesSerialOutOfWorkedExample();
    void listsGroupsDespiteEmptyKey();
    void failedRereadKeepsFile();
};

void TestFormat::line_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("comment");
    QTest::addColumn<bool>("readable");
    const auto row = [](const char *fault, const char *line, const char *key, const QVariant &value,
                        const char *comment = "", bool readable = true) {
        QTest::newRow(fault) << QByteArray(line) << QString::fromUtf8(key) << value
                             << QString::fromUtf8(comment) << readable;
    };
    const auto text = [](const char *value) { return QVariant(QString::fromUtf8(value)); };

    row("blanks around both sides", " key = 1\t", "Panel/key", text("1"));
    row("blanks inside a key", "my  key=1", "Panel/my  key", text("1"));
    row("comma makes a list", "a=x,y", "Panel/a", list({"x", "y"}));
    row("comma between quotes", "a=\"x,y\"", "Panel/a", text("x,y"));
    row("item between quotes", "a=\"x\",y", "Panel/a", list({"x", "y"}));
    row("empty items", "a=x,,", "Panel/a", list({"x", "", ""}));
    row("comma in the key", "a,b=c", "Panel/a,b", text("c"));
    row("quotes inside", "a=say \"hi\"", "Panel/a", text("say \"hi\""));
    row("lone quote", "a=\"", "Panel/a", text("\""));
    row("pair of quotes", "a=\"\"", "Panel/a", text(""));
    row("quotes in the key stay", "\"a\"=1", "Panel/\"a\"", text("1"));
    row("second separator", "a=b=c", "Panel/a", text("b=c"));
    row("separator between quotes", "\"a=b\"", "Panel/\"a=b\"", text("{none}"));
    row("separator behind a backslash", "a\\=b=c", "Panel/a\\=b", text("c"));
    row("backslash stays", "a=\\;\\,\\\\", "Panel/a", text("\\;\\,\\\\"));
    row("comment", "a=1 ; note # more", "Panel/a", text("1"), "; note # more");
    row("comment character between quotes", "a=\"1;2\"", "Panel/a", text("1;2"));
    row("comment in the key", "a;b=1", "Panel/a", text("{none}"), ";b=1");
    row("comment only", "# note", "Panel/", text("{none}"), "# note");
    row("bare key", "flag", "Panel/flag", text("{none}"));
    row("empty value", "flag=", "Panel/flag", text(""));
    row("no key", "=v", "Panel/", text("v"));
    row("carriage return inside", "a=1\r2", "Panel/a", text("1\r2"));
    row("backslash at the end", "a=1\\", "Panel/a", text("1\\"), "", false);
    row("backslash and blanks at the end", "a\\ ", "Panel/a\\", text("{none}"), "", false);
    row("twice: comment of the first, value of the last", "a=1;c\na=2", "Panel/a", text("2"), ";c");
}

void TestFormat::line()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    QFETCH(QString, comment);
    QFETCH(bool, readable);
    const FileContent content = readContent("[Panel]\n" + line + "\nnext\n");
    QCOMPARE(content.readable, readable);
    QCOMPARE(content.map.value(key), value);
    QCOMPARE(content.map.value(key).userType(), value.userType());
    QCOMPARE(content.comments.value(key), comment);
    QCOMPARE(content.map.size(), 2);
    QVERIFY(content.map.contains(QStringLiteral("Panel/next"))); // read on in any case
}

void TestFormat::header_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("readable");
    QTest::newRow("blanks and a comment")
        << QByteArray(" [ Panel ] ; x") << QStringLiteral("Panel/k") << true;
    QTest::newRow("slash inside") << QByteArray("[a/b]") << QStringLiteral("a/b/k") << true;
    QTest::newRow("empty name") << QByteArray("[]") << QStringLiteral("/k") << true;
    QTest::newRow("second bracket") << QByteArray("[a]]") << QStringLiteral("a/k") << true;
    QTest::newRow("general section") << QByteArray("[ generaL ]") << QStringLiteral("k") << true;
    QTest::newRow("group named general")
        << QByteArray("[%GENERAL]") << QStringLiteral("general/k") << true;
    QTest::newRow("not closed") << QByteArray("[Panel ") << QStringLiteral("Panel/k") << false;
}

void TestFormat::header()
{
    QFETCH(QByteArray, header);
    QFETCH(QString, key);
    QFETCH(bool, readable);
    const FileContent content = readContent("[x]\n" + header + "\nk=1\n");
    QCOMPARE(content.readable, readable);
    QCOMPARE(content.map.keys(), QStringList(key));
    QVERIFY(content.comments.isEmpty());
}

void TestFormat::encoding_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("value");
    const QString text = QStringLiteral("中");
    QTest::newRow("UTF-8 mark") << QByteArray("\xEF\xBB\xBF[A]\nk=\xE4\xB8\xAD") << text;
    QTest::newRow("UTF-16 mark, little-endian")
        << QByteArray("\xFF\xFE[\0A\0]\0\n\0k\0=\0\x2D\x4E", 16) << text;
    QTest::newRow("UTF-16 mark, big-endian")
        << QByteArray("\xFE\xFF\0[\0A\0]\0\n\0k\0=\x4E\x2D", 16) << text;
    QTest::newRow("lone surrogate, which UTF-8 cannot hold")
        << QByteArray("\xFF\xFE[\0A\0]\0\n\0k\0=\0\x00\xD8", 16) << QStringLiteral("\uFFFD");
    QTest::newRow("carriage returns") << QByteArray("[A]\r\nk=\xE4\xB8\xAD\r\n") << text;
    QTest::newRow("not UTF-8") << QByteArray("[A]\nk=\xD6x") << QStringLiteral("\uFFFDx");
    QTest::newRow("character cut off by the end")
        << QByteArray("[A]\nk=1\xE4\xB8") << QStringLiteral("1");
}

void TestFormat::encoding()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, value);
    const FileContent content = readContent(bytes);
    QVERIFY(content.readable);
    QCOMPARE(content.map, (SettingsMap{{QStringLiteral("A/k"), value}}));
    QCOMPARE(brokenFormatProperty(bytes), QString());
}

void TestFormat::commentColumn_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("spaces");
    QTest::newRow("short line") << QByteArray("alpha=10") << 8;
    QTest::newRow("16 bytes") << QByteArray("k=12345678901234") << 0;
    QTest::newRow("16 bytes, a backslash would take the comment")
        << QByteArray("k=1234567890123\\") << 4;
    QTest::newRow("17 bytes") << QByteArray("k=123456789012345") << 3;
    QTest::newRow("20 bytes") << QByteArray("k=123456789012345678") << 4;
    QTest::newRow("bytes, not characters") << QByteArray("k=\xE4\xB8\xAD\xE4\xB8\xAD") << 8;
    QTest::newRow("bare key") << QByteArray("k") << 15;
    QTest::newRow("comment only") << QByteArray() << 16;
}

void TestFormat::commentColumn()
{
    QFETCH(QByteArray, line);
    QFETCH(int, spaces);
    const QByteArray written = writtenContent(readContent("[A]\n" + line + " ; note"));
    QCOMPARE(written, "[A]\r\n" + line + QByteArray(spaces, ' ') + "; note\r\n");
}

void TestFormat::rewrite_data()
{
    // What is read, and what is written of it; the lines end in "\r\n".
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("rewritten");
    const auto row = [](const char *fault, const char *text, const char *rewritten) {
        QTest::newRow(fault) << QByteArray(text) << withLineEnds(rewritten);
    };

    row("empty file", "", "");
    row("bare and empty", "[A]\nflag\nnone=", "[A]\nflag\nnone=\n");
    row("comment lines: the last stays", "# one\n# two", "[General]\n                # two\n");

    row("comma in quotes", "[A]\na=\"x,y\"", "[A]\na=\"x,y\"\n");
    row("comment character in quotes", "[A]\na=\"#1\"", "[A]\na=\"#1\"\n");
    row("quotes in quotes", "[A]\na=\"\"x\"\"", "[A]\na=\"\"x\"\"\n");
    row("blanks in quotes", "[A]\na=\" x \"", "[A]\na=\" x \"\n");
    row("comma in inner quotes stands bare", "[A]\na=say \"x,y\" ", "[A]\na=say \"x,y\"\n");
    row("needless quotes", "[A]\na=\"x y\"", "[A]\na=x y\n");
    row("trailing backslash", "[A]\na=\"x\\\"", "[A]\na=\"x\\\"\n");
    row("trailing backslash before a comment", "[A]\na=x\\ ;c", "[A]\na=x\\            ;c\n");
    row("open quote and a comment", "[A]\na=1;c\na=\"x", "[A]\na               ;c\na=\"x\n");
    row("text of a bare value", "[A]\na={none}", "[A]\na\n");

    row("list", "[A]\na=x,\"y\" ,z", "[A]\na=x , y , z\n");
    row("only the item that needs quotes", "[A]\na=x,\"y,z\"", "[A]\na=x , \"y,z\"\n");
    row("backslash beside quotes", "[A]\na=x\\ ,\"y,z\"", "[A]\na=x\\ , \"y,z\"\n");
    row("empty items", "[A]\na=,x,", "[A]\na= , x , \n");

    row("special keys first", "[A]\nstartwith=x\nlength=4\nb\nmode=1",
        "[A]\nmode=1\nlength=4\nstartwith=x\nb\n");
    row("special keys hold lists", "[A]\nstartwith=x,y\nlength=\"4,5\"\nmode=1,;c",
        "[A]\nmode=1 ,        ;c\nlength=\"4,5\"\nstartwith=x , y\n");
    row("bare special key keeps its separator", "[A]\nmode;c", "[A]\nmode={none}     ;c\n");
    row("special keys are ordinary in the general section", "mode=1\nalpha\n[%general]\nmode\na",
        "[General]\nalpha\n\n[%General]\na\nmode\n\n[General]\nmode=1\n");
    row("section entered again", "[A]\nmode=1\nx\n[A/s]\nmode=2\ny",
        "[A]\nmode=1\n\n[A/s]\nmode=2\ny\n\n[A]\nmode=1\nx\n");
    row("sections that differ in case", "[panel]\na=1\n[Panel]\na=2",
        "[Panel]\na=2\n\n[panel]\na=1\n");

    row("general as a path of the general section", "General/mode=1\n%general/k=2",
        "[General]\n%general/k=2\nGeneral/mode=1\n");
    row("header's bracket in a name", "[A]\nb]/c=1", "[A]\nb]/c=1\n");
    row("name begins with a bracket", "A/[x=1", "[General]\nA/[x=1\n");
    row("name cuts quotes in two", "[A]\n\"b/c\"=1", "[A]\n\"b/c\"=1\n");
    row("path cuts quotes in two", "[A\"]\nb/c\"=1\nb/c=\"", "[A\"/b]\nc=\"\nc\"=1\n");
    row("blank before a slash", "[A]\nb /c=1", "[A]\nb /c=1\n");
    row("blank behind a slash", "A/ b=1", "[General]\nA/ b=1\n");
    row("key takes its separator", "[A]\na\\ =1", "[A]\na\\ =1\n");
    row("key takes its comment", "[A]\na\\ ;c", "[A]\na\\              ;c\n");
    row("no key, no value, no comment", "[A]\n={none}", "[A]\n={none}\n");
    row("no key, no section", "[]\n=v", "[]\n=v\n");
}

void TestFormat::rewrite()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, rewritten);
    const FileContent content = readContent(text);
    QVERIFY(content.readable);
    QCOMPARE(writtenContent(content), rewritten);
    QCOMPARE(brokenFormatProperty(text), QString());
}

void TestFormat::corpus_data()
{
    QTest::addColumn<QString>("path");
    for (const char *folder : {"tests/corpus", "examples"}) {
        QDirIterator files(QStringLiteral(PRODUCTION_SOURCE_DIR "/") + QLatin1String(folder),
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            QTest::newRow(qPrintable(files.fileName())) << path;
        }
    }
}

void TestFormat::corpus()
{
    QFETCH(QString, path);
    QCOMPARE(brokenFormatProperty(readFile(path)), QString());
}

/// Anything but linear work would not end before the test is given up.
void TestFormat::hugeTexts_data()
{
    QTest::addColumn<QByteArray>("text");
    constexpr int many = 1'000'000;
    const auto row = [](const char *name, const QByteArray &text) { QTest::newRow(name) << text; };
    // No key that begins with a bracket can stand whole in the general section.
    const QByteArray section = "[[x]\n";
    row("slashes", section + repeated("/", many) + "=1");
    row("quotes", section + repeated("\"", many) + "=1");
    row("quotes and slashes", section + repeated("\"/", many) + "a");
    row("quotes, slashes and brackets", section + repeated("\"/[", many) + "a");
    row("escaped quotes and slashes", section + '"' + repeated("\\\"/", many) + "\"=1");
    row("quoted comment characters", section + '"' + repeated("/;", many) + "\"/[=1");
    row("blanks", section + 'a' + repeated(" / ", many) + "a=1");
    row("closing brackets", section + repeated("]/", many) + "]/a=1");
    row("section of quotes", "[[" + repeated("\"/", many) + "]\na/[=1\na/[;c\n");
    row("value of backslashes", "k=" + repeated("\\\\", many) + ";c");
    row("value of quotes", "k=" + repeated("\"", many) + ";c");
    row("value of commas", "k=" + repeated(",", many / 10));
    row("comment", "k;" + repeated("; ", many));
    QByteArray sections;
    for (int i = 0; i < many / 10; ++i)
        sections += "[s" + QByteArray::number(i) + "]\nmode=1\n";
    row("sections", sections);
}

void TestFormat::hugeTexts()
{
    QFETCH(QByteArray, text);
    QVERIFY(readContent(text).readable);
    QCOMPARE(brokenFormatProperty(text), QString());
}

void TestFormat::failingDevice_data()
{
    QTest::addColumn<int>("bytesUntilFailure");
    QTest::newRow("nothing") << 0;
    QTest::newRow("short") << 9;
}

void TestFormat::failingDevice()
{
    QFETCH(int, bytesUntilFailure);
    const QByteArray text = "[A]\r\na=1\r\nb=2\r\n";
    FileContent content;

    FailingDevice source(text, bytesUntilFailure);
    QVERIFY(source.open(QIODevice::ReadOnly));
    QVERIFY(!readSettings(source, content.map, content.comments));

    content = readContent(text);
    FailingDevice target({}, bytesUntilFailure);
    QVERIFY(target.open(QIODevice::WriteOnly));
    QVERIFY(!writeSettings(target, content.map, content.comments));

    // Takes everything, and has no room for it in the end.
    QFile full(QStringLiteral("/dev/full"));
    QVERIFY(full.open(QIODevice::WriteOnly));
    QVERIFY(!writeSettings(full, content.map, content.comments));
}

void TestFormat::tooLargeFile()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    QVERIFY(file.resize(257 * 1024 * 1024)); // sparse
    FileContent content;
    QVERIFY(!readSettings(file, content.map, content.comments));
}

void TestFormat::forgetsCommentsOfFileBefore()
{
    FileContent content = readContent("a=1;c");
    QByteArray next("a=1");
    QBuffer device(&next);
    QVERIFY(device.open(QIODevice::ReadOnly));
    QVERIFY(readSettings(device, content.map, content.comments));
    QVERIFY(content.comments.isEmpty());
}

void TestFormat::takesSerialOutOfWorkedExample()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("production.ini"));
    QVERIFY(writeFile(path, workedExample));
    ProductionObject worker;
    QSettings settings(path, settingsFormat());
    settings.beginGroup(QStringLiteral("SN"));
    settings.remove(QStringLiteral("AB01"));
    settings.endGroup();
    settings.sync();
    QCOMPARE(settings.status(), QSettings::NoError);
    QCOMPARE(readFile(path),
             withLineEnds("[General]\n"
                          "                ; sample file\n"
                          "\n"
                          "[FactorySettings]\n"
                          "mode=1\n"
                          "alpha=10        ; first value\n"
                          "beta=two words\n"
                          "delta\n"
                          "epsilon=\n"
                          "gamma=1 , 2 , 3\n"
                          "\n"
                          "[SN]\n"
                          "mode=1\n"
                          "length=4\n"
                          "startwith=AB\n"
                          "AB02\n"
                          "\n"
                          "[General]\n"
                          "zeta=a=b\n"));
}

/// QSettings lists nothing once a group was left if the key of a comment's line is a null text.
void TestFormat::listsGroupsDespiteEmptyKey()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("production.ini"));
    QVERIFY(writeFile(path, workedExample));
    ProductionObject worker;
    QSettings settings(path, settingsFormat());
    settings.beginGroup(QStringLiteral("SN"));
    settings.endGroup();
    QCOMPARE(settings.childGroups(),
             QStringList({QStringLiteral("FactorySettings"), QStringLiteral("SN")}));
}

/// QSettings reads a changed file again before it writes, and goes on when that fails.
void TestFormat::failedRereadKeepsFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("production.ini"));
    QVERIFY(writeFile(path, workedExample));
    ProductionObject worker;
    QSettings settings(path, settingsFormat());
    const QByteArray changed = workedExample + "AB03\\\n";
    QVERIFY(writeFile(path, changed));
    settings.remove(QStringLiteral("SN/AB01"));
    settings.sync();
    QCOMPARE(settings.status(), QSettings::FormatError);
    QCOMPARE(readFile(path), changed);
}

QTEST_GUILESS_MAIN(TestFormat)
#include "tst_format.moc"
