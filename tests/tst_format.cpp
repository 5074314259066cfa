#include "fuzz/formatproperty.h"
#include "reader.h"
#include "testunit.h"
#include "writer.h"

#include <QBuffer>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

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
    void hugeTexts_data() { addTextCases(QFINDTESTDATA("cases/huge.txt")); }
    void hugeTexts();
    void manySections();
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

/// A case is a begin, what is repeated up to a million characters, and an end. Anything but linear
/// work would not end before the test is given up.
void TestFormat::hugeTexts()
{
    QFETCH(QStringList, parts);
    for (QString &part : parts)
        part.chop(1); // the line end before "---"
    const QByteArray repeated = parts[1].toUtf8();
    const QByteArray text =
        parts[0].toUtf8() + repeated.repeated(1'000'000 / repeated.size()) + parts[2].toUtf8();
    QVERIFY(readContent(text).readable);
    QCOMPARE(brokenFormatProperty(text), QString());
}

void TestFormat::manySections()
{
    QByteArray text;
    for (int i = 0; i < 100'000; ++i)
        text += "[s" + QByteArray::number(i) + "]\nmode=1\n";
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
