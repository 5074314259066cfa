#include "fuzz/formatproperty.h"
#include "reader.h"
#include "testunit.h"
#include "writer.h"

#include <QBuffer>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

#include <cstring>

using namespace production;

namespace {

/// A line for each key, as in JSON: the key, its value and, where it has one, its comment.
QString delivered(const FileContent &content)
{
    QString lines;
    for (auto it = content.map.cbegin(); it != content.map.cend(); ++it) {
        QJsonArray entry{it.key(), QJsonValue::fromVariant(it.value())};
        if (content.comments.contains(it.key()))
            entry.append(content.comments.value(it.key()));
        lines += QString::fromUtf8(QJsonDocument(entry).toJson(QJsonDocument::Compact)) + '\n';
    }
    return content.readable ? lines : lines + "unreadable\n";
}

QByteArray repeated(const char *text, int characters)
{
    return QByteArray(text).repeated(characters / int(std::strlen(text)));
}

/// Promises a byte more than it delivers, as a stick does that fails while it is read.
class CutBuffer : public QBuffer
{
public:
    using QBuffer::QBuffer;
    qint64 size() const override { return QBuffer::size() + 1; }
};

} // namespace

/// The settings format: what its reader takes from a text and what its writer makes of it again.
class TestFormat : public QObject
{
    Q_OBJECT

private slots:
    void readAndRewritten_data() { addTextCases(QFINDTESTDATA("cases/format.txt")); }
    void readAndRewritten();
    void corpus_data();
    void corpus();
    void hugeTexts_data();
    void hugeTexts();
    void failingDevice();
    void tooLargeFile();
};

/// A case is a file, what is delivered of it, and how that is written (with "\r\n").
void TestFormat::readAndRewritten()
{
    QFETCH(QStringList, parts);
    const FileContent content = readContent(parts[0].toUtf8());
    QCOMPARE(delivered(content), parts[1]);
    if (content.readable)
        QCOMPARE(writtenContent(content), withLineEnds(parts[2]));
    QCOMPARE(brokenFormatProperty(parts[0].toUtf8()), QString());
}

void TestFormat::corpus_data()
{
    QTest::addColumn<QString>("path");
    for (const QString &folder : {QFINDTESTDATA("corpus"), QFINDTESTDATA("../examples")}) {
        QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
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

void TestFormat::failingDevice()
{
    QByteArray text = "[A]\r\na=1\r\nb=2\r\n";
    FileContent content;
    CutBuffer source(&text);
    QVERIFY(source.open(QIODevice::ReadOnly));
    QVERIFY(!readSettings(source, content.map, content.comments));

    content = readContent(text);
    // The one takes nothing, the other everything, and has no room for it in the end.
    for (const QIODevice::OpenMode mode : {QIODevice::Unbuffered, QIODevice::NotOpen}) {
        QFile full("/dev/full");
        QVERIFY(full.open(QIODevice::WriteOnly | mode));
        QVERIFY(!writeSettings(full, content.map, content.comments));
    }
}

void TestFormat::tooLargeFile()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    QVERIFY(file.resize(257 * 1024 * 1024)); // sparse
    FileContent content;
    QVERIFY(!readSettings(file, content.map, content.comments));
}

QTEST_GUILESS_MAIN(TestFormat)
#include "tst_format.moc"
