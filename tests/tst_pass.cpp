#include "recordedpass.h"

#include <datasavecontrol.h>

#include <QDir>
#include <QProcess>
#include <QScopeGuard>
#include <QtTest>

#include <sys/fsuid.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

const QString configName = QStringLiteral("/production.ini");
const QString markerName = QStringLiteral("/production_done.txt");

/// File permissions bind this thread and those it starts while the object lives, root's too.
class OrdinaryUser
{
public:
    OrdinaryUser() { setfsuid(geteuid() == 0 ? nobody : geteuid()); }
    ~OrdinaryUser()
    {
        setfsuid(geteuid());
        prctl(PR_SET_DUMPABLE, 1); // for the leak sanitizer, which looks into its own process
    }
    Q_DISABLE_COPY(OrdinaryUser)

private:
    static constexpr uid_t nobody = 65534;
};

QStringList warnings;

void collectWarning(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type != QtDebugMsg)
        warnings << text;
}

/// Runs @p commands of the shell in @p directory; root again where this process is.
void shell(const QString &directory, const QString &commands)
{
    QProcess process;
    process.setWorkingDirectory(directory);
    process.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), commands});
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s: %s", qUtf8Printable(commands), process.readAllStandardError().constData());
}

/// Every file of a directory with its size, sorted.
QStringList listing(const QString &directory)
{
    QStringList files;
    for (const QFileInfo &file : QDir(directory).entryInfoList(
             QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name))
        files << file.fileName() + QLatin1Char(' ') + QString::number(file.size());
    return files;
}

} // namespace

/// Which file a pass takes, and what becomes of the pass, of the file and of the marker.
class TestPass : public QObject
{
    Q_OBJECT

private slots:
    void discovery_data();
    void discovery();
    void givenPath_data();
    void givenPath();
    void workedPass();
    void itemCounter_data();
    void itemCounter();
    void completionMarker_data();
    void completionMarker();
    void badFile_data();
    void badFile();
    void failedRewrite_data();
    void failedRewrite();
    void rewriteKeepsComments();
    void largePool();
};

void TestPass::discovery_data()
{
    QTest::addColumn<QString>("files"); // on the sticks a and b, which are reported in this order
    QTest::addColumn<int>("used"); // number of the file, 0 for none
    QTest::addColumn<bool>("silent");
    QTest::newRow("ordinary file before serial file")
        << "a/production_sn.ini a/production.ini" << 2 << false;
    QTest::newRow("system file before ordinary file")
        << "a/production.ini a/production_sys.ini" << 2 << true;
    QTest::newRow("first stick before the better name")
        << "a/production_sn.ini b/production_sys.ini" << 1 << false;
    QTest::newRow("stick without a file is passed over")
        << "a/notes.txt b/production_sn.ini" << 2 << false;
    QTest::newRow("other letter case is another file") << "a/Production.ini" << 0 << false;
}

void TestPass::discovery()
{
    QFETCH(QString, files);
    QFETCH(int, used);
    QFETCH(bool, silent);
    TestUnit unit;
    const QStringList paths = files.split(QLatin1Char(' '));
    QString stick;
    for (int number = 1; number <= paths.size(); ++number) {
        const QString name = paths[number - 1].section(QLatin1Char('/'), 0, 0);
        const QString path = unit.makeStick("[BT]\nmode=1\nadv_power=" + QByteArray::number(number),
                                            paths[number - 1].section(QLatin1Char('/'), 1), name);
        if (!unit.headUnit().sticks().contains(path))
            unit.plug(path);
        if (number == used)
            stick = path;
    }
    const RecordedPass pass(unit);

    QCOMPARE(unit.stored(bench::Area::Factory, QStringLiteral("adv_power")).toInt(), used);
    QCOMPARE(pass.worker.currentState(), used != 0 ? Done : Ready);
    QCOMPARE(pass.events.contains(QStringLiteral("finished()")), used == 0);
    QCOMPARE(pass.events.filter(QStringLiteral("message(")).isEmpty(), silent || used == 0);
    QCOMPARE(DataSaveControl::productionMode, used != 0 && !silent);
    if (used != 0) {
        QVERIFY(pass.worker.isConfigurationDevice(stick));
        QCOMPARE(QFile::exists(stick + QStringLiteral("/production_sys.ini")), false);
    }
}

void TestPass::givenPath_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("silent");
    QTest::newRow("system file, used once") << "production_sys.ini" << 1 << true;
    QTest::newRow("end of the name") << "my_production_sys.ini" << 1 << true;
    QTest::newRow("system file with nothing to do") << "production_sys.ini" << 0 << true;
    QTest::newRow("other letter case is an ordinary file") << "Production_sys.ini" << 1 << false;
}

void TestPass::givenPath()
{
    QFETCH(QString, fileName);
    QFETCH(int, mode);
    QFETCH(bool, silent);
    TestUnit unit;
    const QString stick =
        unit.makeStick("[DirectionKey]\nmode=" + QByteArray::number(mode), fileName);
    const RecordedPass pass(unit, stick + QLatin1Char('/') + fileName);
    QCOMPARE(pass.events.filter(QStringLiteral("message(")).isEmpty(), silent);
    QCOMPARE(pass.worker.currentState(), mode > 0 ? Done : Idle);
    QCOMPARE(listing(stick).isEmpty(), silent);
    QVERIFY(!pass.worker.isConfigurationDevice(stick));
}

/// Everything that one pass does, in order; the next unit then takes the next serial.
void TestPass::workedPass()
{
    TestUnit unit;
    const QString stick =
        plugFile(unit,
                 "[Panel]\nmode=1\nsize=10.1\nbacklight_day=80\n[SN]\nmode=1\nlength=6\n"
                 "startwith=AB\nAB0001\nAB0002\n[CANBUS]\nmode=1\n[BT]\nmode=1\nadv_power=4\n");
    const QStringList expected =
        list("message('正在读取USB配置文件，请不要断开电源或拔出USB。',6); "
             "message('成功进入生产模式。',6); "
             "saveFactoryData('DisplaySize','10.1',true); day(80); "
             "message('检测到屏幕背光设置，10.1寸屏背光设置成功，请核对。',41); message('',13); "
             "system('sync'); system('sync'); system('sync'); "
             "saveProductionData('SN','AB0001'); message('AB0001',10); canbus(true,28); "
             "saveFactoryData('adv_power',4,true); message('成功设置蓝牙发射功率为4db',70); "
             "system('sync'); system('sync'); system('sync')");
    QByteArray fileAtSync;
    {
        RecordedPass pass(unit, {}, [&](ProductionObject &, const QString &event) {
            if (event == QLatin1String("system('sync')") && fileAtSync.isEmpty())
                fileAtSync = readFile(stick + configName);
        });
        QCOMPARE(pass.events, expected);
        QCOMPARE(pass.worker.currentState(), Done);
        QVERIFY(DataSaveControl::productionMode);
        pass.worker.setLeave();
        QVERIFY(!DataSaveControl::productionMode);
    }
    // Out of the pool before the unit has it: a cut may lose a serial, never give it twice.
    QVERIFY(!fileAtSync.contains("AB0001") && fileAtSync.contains("AB0002"));
    unit.replaceUnit();
    unit.plug(stick);
    const RecordedPass next(unit);
    QVERIFY(next.stepMessages().contains(QStringLiteral("10 AB0002")));
    QCOMPARE(readFile(stick + markerName), QByteArray("AB0001\r\nAB0002\r\n"));
}

void TestPass::itemCounter_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("counts");
    const auto row = [](const char *name, const QByteArray &file, bool counts) {
        QTest::newRow(name) << file << counts;
    };
    row("no group", "mode=1\n", false);
    row("unknown group", "[Wifi]\nmode=1\n", false);
    row("group in other letter case", "[panel]\nmode=1\nvcom=5\n", false);
    row("factory settings", "[FactorySettings]\nmode=1\na=1\n", false);
    row("panel with nothing to apply", "[Panel]\nmode=1\n", true);
    row("SN without serials", "[SN]\nmode=1\n", true);
    row("SN with a mode that does nothing", "[SN]\nmode=3\n", true);
    row("SK without values", "[SK]\nmode=2\n", true);
    row("CAN bus", "[CANBUS]\nmode=1\n", true);
    row("direction keys", "[DirectionKey]\nmode=1\n", true);
    row("Bluetooth", "[BT]\nmode=1\nadv_power=4\n", true);
    row("Bluetooth without power", "[BT]\nmode=1\n", false);
    row("one of many", "[Panel]\nmode=0\n[SN]\nmode=0\n[BT]\nmode=1\nadv_power=4\n", true);
    row("byte-order mark before the only group", "\xEF\xBB\xBF[CANBUS]\nmode=1\n", true);
}

void TestPass::itemCounter()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, counts);
    TestUnit unit;
    const QString stick = unit.makeStick(file);
    QVERIFY(unit.runPass(stick));
    QCOMPARE(unit.popUps().contains(QStringLiteral("8 未进入任何生产测试项，请核对配置文件。")),
             !counts);
    if (counts)
        QCOMPARE(ProductionObject::ins.load()->currentState(), Done);
    else
        QVERIFY(unit.waitForEnd());
    QCOMPARE(DataSaveControl::productionMode, counts);
    QCOMPARE(readFile(stick + configName), file);
    QVERIFY(!QFile::exists(stick + markerName));
}

void TestPass::completionMarker_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after"); // two units later
    const auto row = [](const char *name, const QByteArray &file, const QByteArray &before,
                        const QByteArray &after, const char *fileName = "production.ini") {
        QTest::newRow(name) << QString::fromLatin1(fileName) << file << before << after;
    };
    row("a line for each unit, SN first", "[SK]\nmode=1\nK1\nK2\n[SN]\nmode=1\nA1\nA2\n", "",
        "A1, K1\r\nA2, K2\r\n");
    row("pool that runs dry", "[SN]\nmode=1\nA1\n", "old", "oldA1\r\n", "production_sn.ini");
    row("Latin-1", "[SN]\nmode=2\n\xC3\x84\n\xE5\xBA\x8F\n", "", "\xC4\r\n?\r\n");
    row("nothing taken, not created", "[SN]\nmode=3\nA1\n", "", "");
    row("system file", "[SN]\nmode=1\nA1\n", "", "", "production_sys.ini");
}

void TestPass::completionMarker()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    TestUnit unit;
    const QString stick = unit.makeStick(file, fileName);
    if (!before.isEmpty())
        QVERIFY(writeFile(stick + markerName, before));
    for (int units = 0; units < 2; ++units) {
        unit.plug(stick);
        {
            const RecordedPass pass(unit);
        }
        unit.replaceUnit();
    }
    QCOMPARE(readFile(stick + markerName), after);
    QCOMPARE(QFile::exists(stick + markerName), !after.isEmpty());
}

void TestPass::badFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("commands"); // of the shell, on the stick
    const auto row = [](const char *name, const QByteArray &content, const char *commands = "") {
        QTest::newRow(name) << content << QString::fromLatin1(commands);
    };
    const QByteArray pool = "[SN]\nmode=1\nA1\n";
    QByteArray junk;
    for (int i = 0; i < 5000; ++i)
        junk += char(i * 7919 >> 3);
    row("empty", "");
    row("nothing but a byte-order mark", "\xEF\xBB\xBF");
    row("directory", "", "rm production.ini; mkdir production.ini");
    row("unreadable", pool, "chmod 000 production.ini");
    row("binary junk", junk);
    row("pool behind a header without its end", pool + "[CANBUS\nmode=1\n");
    row("pool before a backslash at a line's end", "a=1\\\n" + pool);
    row("one line of 50 MB", QByteArray(50 * 1024 * 1024, 'x'));
}

void TestPass::badFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, commands);
    const OrdinaryUser user;
    TestUnit unit;
    const QString stick = unit.makeStick(content);
    shell(stick, commands);
    const QStringList before = listing(stick);
    unit.plug(stick);
    const RecordedPass pass(unit); // not limited in time, which a sanitizer may need
    QCOMPARE(pass.events,
             list("message('正在读取USB配置文件，请不要断开电源或拔出USB。',6); "
                  "message('成功进入生产模式。',6); "
                  "message('未进入任何生产测试项，请核对配置文件。',8); "
                  "canbus(false,0); directionKey(false); finished()"));
    QCOMPARE(listing(stick), before);
    shell(stick, QStringLiteral("chmod -f 644 production.ini || true"));
    QCOMPARE(readFile(stick + configName),
             commands.contains(QLatin1String("mkdir")) ? QByteArray() : content);
}

void TestPass::failedRewrite_data()
{
    QTest::addColumn<QString>("commands"); // of the shell, on the stick, once the file is open
    QTest::newRow("file gone") << "rm production.ini";
    QTest::newRow("stick gone") << "rm -r \"$PWD\"";
    QTest::newRow("stick write-protected") << "chmod 444 production.ini; chmod 555 .";
    QTest::newRow("file write-protected") << "chmod 444 production.ini";
    QTest::newRow("lock of somebody else") << "mkdir production.ini.lock";
    QTest::newRow("file no longer readable") << "echo '[CANBUS' >> production.ini";
}

/// The unit takes its serial all the same; the log says that the pool still has it.
void TestPass::failedRewrite()
{
    QFETCH(QString, commands);
    const OrdinaryUser user;
    warnings.clear();
    const auto restore = qScopeGuard(
        [previous = qInstallMessageHandler(collectWarning)] { qInstallMessageHandler(previous); });
    TestUnit unit;
    const QByteArray file = "[Panel]\nmode=1\nsize=8\n[SN]\nmode=1\nA1\nA2\n";
    const QStringList takesA1 = list("13; 10 A1");
    const QString stick = plugFile(unit, file);
    QStringList before;
    {
        const RecordedPass pass(unit, {}, [&](ProductionObject &, const QString &event) {
            if (event != QLatin1String("saveFactoryData('DisplaySize','8',true)"))
                return;
            shell(stick, commands);
            before = listing(stick);
        });
        QCOMPARE(pass.stepMessages(), takesA1);
        QCOMPARE(pass.worker.currentState(), Done);
    }
    QCOMPARE(unit.stored(bench::Area::Production, QStringLiteral("SN")).toString(),
             QStringLiteral("A1"));
    QCOMPARE(warnings.size(), 1);
    QVERIFY(warnings.first().startsWith(stick + configName + QStringLiteral(": not rewritten")));
    QStringList after = listing(stick);
    after.removeOne(QStringLiteral("production_done.txt 4"));
    QCOMPARE(after, before);
    if (QDir(stick).exists())
        shell(stick, QStringLiteral("chmod 755 ."));

    // What could not be written must not be made up for on the next stick.
    unit.unplug(stick);
    unit.replaceUnit();
    unit.plug(unit.makeStick(file, configName.mid(1), QStringLiteral("other")));
    const RecordedPass next(unit);
    QCOMPARE(next.stepMessages(), takesA1);
}

/// Qt answers a second open of an unchanged file from its cache, without reading the comments.
void TestPass::rewriteKeepsComments()
{
    TestUnit unit;
    const QString stick =
        plugFile(unit, "[SN] ; lost\n; keep out of the pool\nmode=1 ; once\nA1\nA2 # second\n");
    QVERIFY(writeFile(stick + configName + QStringLiteral(".lock"), "")); // of a unit cut off
    unit.headUnit().data().store(
        {{bench::Area::Production, QStringLiteral("SN"), QStringLiteral("OLD")}}, nullptr);
    {
        const RecordedPass reads(unit); // has one already
    }
    unit.replaceUnit();
    unit.plug(stick);
    const RecordedPass rewrites(unit);
    QCOMPARE(
        readFile(stick + configName),
        QByteArray("[SN]\r\nmode=1          ; once\r\n                ; keep out of the pool\r\n"
                   "A2              # second\r\n"));
    QVERIFY(!listing(stick).join(QLatin1Char(' ')).contains(QLatin1String(".lock")));
}

/// All but the last entry excluded by its prefix: grows as n log n at worst, or never ends here.
void TestPass::largePool()
{
    constexpr int entries = 100000;
    QByteArray file = "[SN]\nmode=1\nstartwith=Z\n";
    for (int i = 1; i < entries; ++i)
        file += "A" + QByteArray::number(i).rightJustified(6, '0') + "\n";
    TestUnit unit;
    const QString stick = plugFile(unit, file + "Z1\n");
    const RecordedPass pass(unit);
    QCOMPARE(pass.stepMessages(), list("13; 10 Z1"));
    QCOMPARE(readFile(stick + configName), file.replace("\n", "\r\n"));
}

QTEST_GUILESS_MAIN(TestPass)
#include "tst_pass.moc"
