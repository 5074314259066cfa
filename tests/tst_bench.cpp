// What is the bench's own: the unit's data, and production-bench as people and scripts use it.

#include "bench/unitdata.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>

using bench::Area;
using bench::UnitData;

namespace {

constexpr int programLimit = 60000; // ms; only a hanging program ever takes that long

/// Lets every file of the process grow to so many bytes only, as on a full disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before;
};

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

} // namespace

class BenchTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void storedValueComesBack_data();
    void storedValueComesBack();
    void fullDiskKeepsTheOldData();
    void unusableUnitIsRefused_data();
    void unusableUnitIsRefused();

    void wrongUsageIsRefused_data();
    void wrongUsageIsRefused();
    void journalKeepsTypes();
    void linesOfInputAct_data();
    void linesOfInputAct();
    void passThatNeverEndsTimesOut();

private:
    QString path(const QString &name) const { return m_directory->filePath(name); }
    int runBench(const QStringList &arguments, const QByteArray &inputLines = {});
    QVector<QJsonObject> journal() const;

    std::unique_ptr<QTemporaryDir> m_directory;
    QByteArray m_output;
    QByteArray m_errors;
};

void BenchTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkdir(path(QStringLiteral("stick"))));
}

/**
 * @p inputLines come in when the pass is over; without them standard input is a file that is at
 * its end at once.
 */
int BenchTest::runBench(const QStringList &arguments, const QByteArray &inputLines)
{
    QProcess process;
    if (inputLines.isEmpty()) {
        const QString input = path(QStringLiteral("input"));
        if (!writeFile(input, {}))
            return -1;
        process.setStandardInputFile(input);
    }
    process.start(QStringLiteral(BENCH_PROGRAM), arguments);
    m_output.clear();
    while (!inputLines.isEmpty() && !m_output.contains("The pass over")) {
        if (!process.waitForReadyRead(programLimit))
            return -1;
        m_output += process.readAllStandardOutput();
    }
    if (!inputLines.isEmpty()) {
        process.write(inputLines);
        process.closeWriteChannel();
    }
    if (!process.waitForFinished(programLimit) || process.exitStatus() != QProcess::NormalExit)
        return -1;
    m_output += process.readAllStandardOutput();
    m_errors = process.readAllStandardError();
    return process.exitCode();
}

QVector<QJsonObject> BenchTest::journal() const
{
    QVector<QJsonObject> lines;
    for (const QByteArray &line : readFile(path(QStringLiteral("journal"))).split('\n'))
        lines.append(QJsonDocument::fromJson(line).object());
    lines.removeLast(); // what follows the last line's end
    return lines;
}

void BenchTest::storedValueComesBack_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");

    const QString key = QStringLiteral("key");
    QTest::newRow("number") << key << QVariant(-6);
    QTest::newRow("bool") << key << QVariant(true);
    QTest::newRow("empty text") << key << QVariant(QString(QLatin1String("")));
    const char *const texts[] = {"12",
                                 "007",
                                 "1e5",
                                 "10.1",
                                 "true",
                                 " blanks ",
                                 "[list",
                                 "\"quoted\"",
                                 "a\nb",
                                 "; comment",
                                 "a=b",
                                 "蓝牙",
                                 "99999999999999999999"};
    for (const char *text : texts)
        QTest::addRow("text %s", text) << key << QVariant(QString::fromUtf8(text));
    QTest::newRow("list of texts")
        << key << QVariant(QVariantList{QStringLiteral("1"), QStringLiteral("a,b")});
    QTest::newRow("list in a list")
        << key
        << QVariant(QVariantList{QStringLiteral("k"), QVariantList{QStringLiteral("x")},
                                 QString(QLatin1String(""))});
    for (const char *awkward : {"a=b", "[a]", ";a", "#a", " a", "a/b", "100%", "键"})
        QTest::addRow("key %s", awkward) << QString::fromUtf8(awkward) << QVariant(1);
}

void BenchTest::storedValueComesBack()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);

    QString error;
    {
        UnitData data;
        QVERIFY2(data.open(path(QStringLiteral("unit")), &error), qPrintable(error));
        QVERIFY2(data.store({{Area::Production, key, value}}, &error), qPrintable(error));
    }
    UnitData data;
    QVERIFY2(data.open(path(QStringLiteral("unit")), &error), qPrintable(error));
    const QVariant read = data.value(Area::Production, key, {});
    QCOMPARE(QJsonValue::fromVariant(read), QJsonValue::fromVariant(value));
    QVERIFY(!data.value(Area::Factory, key, {}).isValid());
}

void BenchTest::fullDiskKeepsTheOldData()
{
    const QString key = QStringLiteral("SN");
    const QString file = path(QStringLiteral("unit/unit.ini"));
    QString error;
    UnitData data;
    QVERIFY2(data.open(path(QStringLiteral("unit")), &error), qPrintable(error));
    QVERIFY(data.store({{Area::Production, key, QStringLiteral("old")}}, &error));
    const QByteArray before = readFile(file);

    {
        const FileSizeLimit limit(4096);
        QVERIFY(!data.store({{Area::Production, key, QString(5000, QLatin1Char('x'))}}, &error));
    }
    QVERIFY2(error.contains(file), qPrintable(error));
    QCOMPARE(readFile(file), before);
    QCOMPARE(data.value(Area::Production, key, {}).toString(), QStringLiteral("old"));
    QCOMPARE(QDir(path(QStringLiteral("unit"))).entryList(QDir::Files).size(), 1);

    QVERIFY(data.store({{Area::Production, key, QStringLiteral("new")}}, &error));
    QVERIFY(readFile(file).contains("SN=new\n"));
}

void BenchTest::unusableUnitIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("inUse");
    QTest::addColumn<QByteArray>("error");

    QTest::newRow("another bench uses it")
        << QByteArray("[Factory]\n") << true << QByteArray("in use");
    QTest::newRow("unknown section")
        << QByteArray("[Fctory]\na=1\n") << false << QByteArray("unit.ini:1:");
    QTest::newRow("key before any section")
        << QByteArray("a=1\n[Factory]\n") << false << QByteArray("unit.ini:1:");
    QTest::newRow("torn list") << QByteArray("[Factory]\na=[1,\n") << false
                               << QByteArray("unit.ini:2:");
}

void BenchTest::unusableUnitIsRefused()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, inUse);
    QFETCH(QByteArray, error);

    const QString unit = path(QStringLiteral("unit"));
    const QString file = path(QStringLiteral("unit/unit.ini"));
    QVERIFY(QDir().mkdir(unit));
    QVERIFY(writeFile(file, content));
    UnitData user;
    QString ignored;
    if (inUse)
        QVERIFY(user.open(unit, &ignored));
    const QByteArray before = readFile(file);

    QCOMPARE(runBench({QStringLiteral("--unit"), unit}), 1);
    QVERIFY2(m_errors.contains(error), m_errors.constData());
    QCOMPARE(readFile(file), before);
}

void BenchTest::wrongUsageIsRefused_data()
{
    QTest::addColumn<QString>("argument");

    for (const char *argument :
         {"--bogus", "extra", "--stick=/no/such/folder", "--stick", "--stick=/proc",
          "--media=/no/such/folder", "--flash=/no/such/folder", "--step-range=256",
          "--step-range=-1", "--model=seven", "--timeout=0", "--without=wifi", "--set=Fctory/a=1",
          "--set=Factory/a", "--set=Factory/=1", "--journal=/no/such/folder/j"})
        QTest::newRow(argument) << QString::fromLatin1(argument);
}

void BenchTest::wrongUsageIsRefused()
{
    QFETCH(QString, argument);

    const QString unit = path(QStringLiteral("unit"));
    QCOMPARE(runBench({QStringLiteral("--unit"), unit, argument}), 1);
    QVERIFY2(m_errors.contains("--help"), m_errors.constData());
    QVERIFY(m_output.isEmpty());
    QVERIFY(!QFile::exists(unit));
}

void BenchTest::journalKeepsTypes()
{
    const QString stick = path(QStringLiteral("stick"));
    QVERIFY(
        writeFile(stick + QStringLiteral("/production.ini"),
                  "[FactorySettings]\nmode=1\na=x,y\n[Panel]\nmode=1\nvcom=5\n[CANBUS]\nmode=1\n"));
    QVERIFY(writeFile(path(QStringLiteral("journal")), "{\"event\":\"earlier\"}\n"));
    QCOMPARE(runBench({QStringLiteral("--stick"), stick, QStringLiteral("--unplug-when-done"),
                       QStringLiteral("--journal"), path(QStringLiteral("journal"))}),
             0);

    const QVector<QJsonObject> lines = journal();
    const auto arguments = [&lines](const char *kind, const char *name) {
        QJsonArray found;
        for (const QJsonObject &line : lines) {
            if (line.value(QLatin1String(kind)) == QJsonValue(QLatin1String(name)))
                found.append(line.value(QLatin1String("args")));
        }
        return QString::fromUtf8(QJsonDocument(found).toJson(QJsonDocument::Compact));
    };
    QCOMPARE(arguments("call", "DataSaveControl::saveData"),
             QStringLiteral(R"([[["a",["x","y"],""],"FactorySettings",true]])"));
    QCOMPARE(arguments("call", "DataSaveControl::backupRuntimeData"),
             QStringLiteral(R"([["vcom_duty",5,true]])"));
    QCOMPARE(arguments("call", "canbus::entryProductionTestMode"),
             QStringLiteral("[[true,28],[false,0]]"));
    QCOMPARE(arguments("event", "unplugged"), QStringLiteral(R"([["%1"]])").arg(stick));
    QCOMPARE(lines.first().value(QLatin1String("event")), QJsonValue(QLatin1String("earlier")));
    QCOMPARE(lines.last().value(QLatin1String("event")), QJsonValue(QLatin1String("ended")));
}

void BenchTest::linesOfInputAct_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QByteArray>("errors");

    QTest::newRow("data seen, then unplug without a line end")
        << QByteArray("canbus\nmcu\n\nunplug %1") << QByteArray("has exited production mode")
        << QByteArray();
    QTest::newRow("unknown line, then quit")
        << QByteArray("jump\nquit\n") << QByteArray("ended") << QByteArray("jump");
    QTest::newRow("stick that is no folder")
        << QByteArray("plug /no/such folder\nquit\n") << QByteArray("ended")
        << QByteArray("/no/such folder is not a folder");
    QTest::newRow("unplug of what is not plugged")
        << QByteArray("unplug /tmp\nquit\n") << QByteArray("ended")
        << QByteArray("/tmp is not plugged");
}

void BenchTest::linesOfInputAct()
{
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, output);
    QFETCH(QByteArray, errors);

    const QString stick = path(QStringLiteral("stick"));
    QVERIFY(writeFile(stick + QStringLiteral("/production.ini"), "[CANBUS]\nmode=1\n"));
    QCOMPARE(runBench({QStringLiteral("--stick"), stick}, input.replace("%1", stick.toUtf8())), 0);
    QVERIFY2(m_output.contains(output), m_output.constData());
    QVERIFY2(m_errors.contains(errors), m_errors.constData());
}

void BenchTest::passThatNeverEndsTimesOut()
{
    const QString stick = path(QStringLiteral("stick"));
    QVERIFY(writeFile(stick + QStringLiteral("/production.ini"), "[CANBUS]\nmode=1\n"));
    QCOMPARE(runBench({QStringLiteral("--stick"), stick, QStringLiteral("--timeout=1")}), 3);
    QVERIFY(m_output.contains("ended"));
}

QTEST_GUILESS_MAIN(BenchTest)

#include "tst_bench.moc"
