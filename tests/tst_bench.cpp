// What is the bench's own: the unit's data, and production-bench as people and scripts use it.

#include "testunit.h"

#include "bench/unitdata.h"

#include <QDir>
#include <QJsonValue>
#include <QProcess>
#include <QScopeGuard>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>

using bench::Area;
using bench::UnitData;

namespace {

/// Lets every file of the process grow to so many bytes only, as on a full disk.
void limitFileSize(rlim_t bytes)
{
    signal(SIGXFSZ, SIG_IGN);
    rlimit limit = {};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = qMin(bytes, limit.rlim_max);
    setrlimit(RLIMIT_FSIZE, &limit);
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
    void runEndsWithReason_data();
    void runEndsWithReason();
    void linesOfInputAct_data();
    void linesOfInputAct();
    void passThatNeverEndsTimesOut();
    void signalLeavesNothingBehind();

private:
    QString path(const char *name) const { return m_folder->filePath(name); }
    Outcome run(const QString &arguments) const
    {
        return runProgram(BENCH_PROGRAM, m_folder->path(), arguments);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

/// With a stick whose pass waits for data on the CAN bus, and a unit's folder.
void BenchTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkdir(path("stick")) && QDir().mkdir(path("unit")));
    QVERIFY(writeFile(path("stick/production.ini"), "[CANBUS]\nmode=1\n"));
}

void BenchTest::storedValueComesBack_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("number") << "key" << QVariant(-6);
    QTest::newRow("bool") << "key" << QVariant(true);
    for (const char *text :
         {"", "12", "007", "1e5", "10.1", "true", " blanks ", "[list", "\"quoted\"", "a\nb",
          "; comment", "a=b", "蓝牙", "99999999999999999999"})
        QTest::addRow("text %s", text) << "key" << QVariant(QString(text));
    QTest::newRow("list of texts") << "key" << QVariant(QVariantList{"1", "a,b"});
    QTest::newRow("list in a list")
        << "key" << QVariant(QVariantList{"k", QVariantList{"x"}, QString("")});
    for (const char *key : {"a=b", "[a]", ";a", "#a", " a", "a/b", "100%", "键"})
        QTest::addRow("key %s", key) << key << QVariant(1);
}

void BenchTest::storedValueComesBack()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);

    QString error;
    {
        UnitData data;
        QVERIFY2(data.open(path("unit"), &error), qPrintable(error));
        QVERIFY2(data.store({{Area::Production, key, value}}, &error), qPrintable(error));
    }
    UnitData data;
    QVERIFY2(data.open(path("unit"), &error), qPrintable(error));
    const QVariant read = data.value(Area::Production, key, {});
    QCOMPARE(QJsonValue::fromVariant(read), QJsonValue::fromVariant(value));
    QVERIFY(!data.value(Area::Factory, key, {}).isValid());
}

void BenchTest::fullDiskKeepsTheOldData()
{
    const QString file = path("unit/unit.ini");
    QString error;
    UnitData data;
    QVERIFY2(data.open(path("unit"), &error), qPrintable(error));
    QVERIFY(data.store({{Area::Production, "SN", "old"}}, &error));
    const QByteArray before = readFile(file);

    {
        limitFileSize(4096);
        const auto lift = qScopeGuard([] { limitFileSize(RLIM_INFINITY); });
        QVERIFY(!data.store({{Area::Production, "SN", QString(5000, 'x')}}, &error));
    }
    QVERIFY2(error.contains(file), qPrintable(error));
    QCOMPARE(readFile(file), before);
    QCOMPARE(data.value(Area::Production, "SN", {}).toString(), "old");
    QCOMPARE(QDir(path("unit")).entryList(QDir::Files).size(), 1);

    QVERIFY(data.store({{Area::Production, "SN", "new"}}, &error));
    QVERIFY(readFile(file).contains("SN=new\n"));
}

void BenchTest::unusableUnitIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("inUse");
    QTest::addColumn<QByteArray>("error");

    const auto row = [](const char *fault, const char *content, bool inUse, const char *error) {
        QTest::newRow(fault) << QByteArray(content) << inUse << QByteArray(error);
    };
    row("another bench uses it", "[Factory]\n", true, "in use");
    row("unknown section", "[Fctory]\na=1\n", false, "unit.ini:1:");
    row("key before any section", "a=1\n[Factory]\n", false, "unit.ini:1:");
    row("torn list", "[Factory]\na=[1,\n", false, "unit.ini:2:");
}

void BenchTest::unusableUnitIsRefused()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, inUse);
    QFETCH(QByteArray, error);

    QVERIFY(writeFile(path("unit/unit.ini"), content));
    UnitData user;
    QString ignored;
    if (inUse)
        QVERIFY(user.open(path("unit"), &ignored));
    const QByteArray before = readFile(path("unit/unit.ini"));

    const Outcome outcome = run("--unit unit");
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.err.contains(error), outcome.err.constData());
    QCOMPARE(readFile(path("unit/unit.ini")), before);
}

void BenchTest::wrongUsageIsRefused_data()
{
    QTest::addColumn<QString>("argument");
    for (const char *argument :
         {"--bogus", "extra", "--stick=/no/such/folder", "--stick", "--stick=/proc",
          "--media=/no/such/folder", "--flash=/no/such/folder", "--step-range=256",
          "--step-range=-1", "--model=seven", "--timeout=0", "--without=wifi", "--set=Fctory/a=1",
          "--set=Factory/a", "--set=Factory/=1", "--journal=/no/such/folder/j",
          "--dry-run --stick stick --media", "--window --timeout=2"})
        QTest::newRow(argument) << argument;
}

void BenchTest::wrongUsageIsRefused()
{
    QFETCH(QString, argument);
    const Outcome outcome = run("--unit new " + argument);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.err.contains("--help"), outcome.err.constData());
    QVERIFY(outcome.out.isEmpty());
    QVERIFY(!QFile::exists(path("new")));
}

void BenchTest::runEndsWithReason_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("content"); // of the stick's file
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *name, const char *arguments, const QByteArray &content,
                        int exitCode, const char *reason) {
        QTest::newRow(name) << QString(arguments) << content << exitCode << QString(reason);
    };
    row("bad journal", "--unit new --set User/a=1 --journal /proc/j", {}, 1, "name a file");
    row("bad journal, several units", "--loop --unit new --journal /proc/j", {}, 1, "name a file");
    row("bad unit, with a journal", "--unit stick/production.ini --journal new", {}, 1,
        "name a folder");
    row("kernel's folder, dry", "--dry-run --unit /proc/self", {}, 1,
        "self/unit.ini cannot be wri");
    row("broken unit, dry", "--dry-run --unit unit", {}, 1, "%1/unit/unit.ini:1:");

    const char *loop = "--loop --unplug-when-done --unit units";
    row("pools used up", loop, "[SN]\nmode=1\nA1\nA2\n", 0, "no serial for one more unit.");
    row("nothing to take", loop, "[CANBUS]\nmode=1\n", 0, "the pass took no serial.");
    // Larger than the files that the program may write.
    row("no rewrite", loop, "[SN]\nmode=1\nA1\n[SK]\nmode=1\nK1\n;" + QByteArray(9000, 'x'), 0,
        "No further unit: SN A1 + SK K1 still in the pool");
}

void BenchTest::runEndsWithReason()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, content);
    QFETCH(int, exitCode);
    QFETCH(QString, reason);
    QVERIFY(writeFile(path("unit/unit.ini"), "broken"));
    QVERIFY(writeFile(path("stick/production.ini"), content));

    limitFileSize(8192);
    const auto lift = qScopeGuard([] { limitFileSize(RLIM_INFINITY); });
    const Outcome outcome = run("--stick stick " + arguments);
    QCOMPARE(outcome.exitCode, exitCode);
    const QString text = QString::fromUtf8(outcome.out + outcome.err);
    QVERIFY2(text.contains(reason.replace("%1", m_folder->path())), qPrintable(text));
    QVERIFY(!QFile::exists(path("new")));
}

void BenchTest::linesOfInputAct_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QByteArray>("errors");

    const auto row = [](const char *name, const char *in, const char *out, const char *errors) {
        QTest::newRow(name) << QByteArray(in) << QByteArray(out) << QByteArray(errors);
    };
    row("data seen, then unplug without a line end", "canbus\nmcu\n\nunplug stick",
        "has exited production mode", "");
    row("unknown line, then quit", "jump\nquit\n", "ended", "jump");
    row("stick that is no folder", "plug no such folder\nquit\n", "ended",
        "no such folder is not a folder");
    row("unplug of what is not plugged", "unplug /tmp\nquit\n", "ended", "/tmp is not plugged");
}

/// The lines come in when the pass is over.
void BenchTest::linesOfInputAct()
{
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, output);
    QFETCH(QByteArray, errors);

    QProcess bench;
    bench.setWorkingDirectory(m_folder->path());
    bench.start(BENCH_PROGRAM, {"--stick", "stick"});
    QByteArray shown;
    while (!shown.contains("The pass over") && bench.waitForReadyRead())
        shown += bench.readAllStandardOutput();
    bench.write(input);
    bench.closeWriteChannel();
    QVERIFY(bench.waitForFinished());
    QCOMPARE(bench.exitCode(), 0);
    shown += bench.readAllStandardOutput();
    const QByteArray complaints = bench.readAllStandardError();
    QVERIFY2(shown.contains(output), shown.constData());
    QVERIFY2(complaints.contains(errors), complaints.constData());
}

void BenchTest::passThatNeverEndsTimesOut()
{
    const Outcome outcome = run("--stick stick --timeout=1");
    QCOMPARE(outcome.exitCode, 3);
    QVERIFY(outcome.out.contains("ended"));

    QCOMPARE(run("--loop --unit units --timeout=1").exitCode, 3);
    QVERIFY(QDir(path("units")).isEmpty()); // no number for a unit that was never switched on
}

void BenchTest::signalLeavesNothingBehind()
{
    const QTemporaryDir temporary;
    QProcess bench;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TMPDIR", temporary.path());
    bench.setProcessEnvironment(environment);
    bench.start(BENCH_PROGRAM, {"--stick", path("stick")});
    while (!bench.peek(1 << 16).contains("CAN bus on"))
        QVERIFY(bench.waitForReadyRead());
    QVERIFY(!QDir(temporary.path()).isEmpty()); // the data of a unit without a name
    bench.terminate();
    QVERIFY(bench.waitForFinished());
    QCOMPARE(bench.exitCode(), 0);
    QVERIFY(QDir(temporary.path()).isEmpty());
}

QTEST_GUILESS_MAIN(BenchTest)

#include "tst_bench.moc"
