#include "recordedpass.h"

#include "serialpool.h"

#include <datadefault.h>
#include <datasavecontrol.h>

#include <QtTest>

namespace {

/// Takes the lines "@ name=value" off the begin of @p file: what the unit has before the pass.
bench::HeadUnitConfig takeConfig(QString &file)
{
    bench::HeadUnitConfig config;
    for (; file.startsWith('@'); file = file.section('\n', 1)) {
        const QString name = file.section('=', 0, 0).mid(2);
        const QString value = file.section('\n', 0, 0).section('=', 1);
        if (name == "displaySize")
            config.displaySize = value;
        else if (name == "stepRange")
            config.stepRange = quint8(value.toUInt());
        else
            config.presets.append({bench::Area::Production, name, value});
    }
    return config;
}

} // namespace

/// What every group of the file does to the unit and shows to the operator, in order.
class TestGroups : public QObject
{
    Q_OBJECT

private slots:
    void steps_data() { addTextCases(QFINDTESTDATA("cases/groups.txt")); }
    void steps();
    void offModes_data();
    void offModes();
    void searchStops();
    void pulled_data();
    void pulled();
};

/// A case is a file, what its pass does, and the file afterwards where that is another.
void TestGroups::steps()
{
    QFETCH(QStringList, parts);
    TestUnit unit(takeConfig(parts[0]));
    const QList<unsigned char> stepsBefore = DataDefault::panelLightStepValueList;
    const QString stick = plugFile(unit, parts[0].toUtf8());
    QByteArray fileAtSync;
    const RecordedPass pass(unit, {}, [&](ProductionObject &, const QString &event) {
        if (event == "system('sync')" && fileAtSync.isEmpty())
            fileAtSync = readFile(stick + "/production.ini");
    });

    QCOMPARE(pass.transcript(), parts[1]);
    const bool left = pass.events.contains("finished()");
    QCOMPARE(pass.worker.currentState(), left ? Idle : Done);
    QCOMPARE(DataSaveControl::productionMode, !left);
    if (!parts[1].contains("lightSteps"))
        QCOMPARE(DataDefault::panelLightStepValueList, stepsBefore);
    const bool taken = parts.size() > 2;
    const QByteArray after = taken ? withLineEnds(parts[2]) : parts[0].toUtf8();
    QCOMPARE(readFile(stick + "/production.ini"), after);
    // Out of the pool before the unit has it: a cut may lose a serial, never give it twice.
    if (taken)
        QCOMPARE(fileAtSync, after);
    QCOMPARE(QFile::exists(stick + "/production_done.txt"), taken);
}

void TestGroups::offModes_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::newRow("missing") << QByteArray("other=1");
    QTest::newRow("zero") << QByteArray("mode=0");
    QTest::newRow("negative") << QByteArray("mode=-1");
    QTest::newRow("no whole number") << QByteArray("mode=1.5");
    QTest::newRow("bare") << QByteArray("mode");
    QTest::newRow("a list") << QByteArray("mode=1,1");
    QTest::newRow("in other letter case") << QByteArray("Mode=1");
}

/// The groups of the test modes switch them off, and leaving does so once more.
void TestGroups::offModes()
{
    QFETCH(QByteArray, mode);
    QByteArray file = "[FactorySettings]\n@\na=1\n[Panel]\n@\nsize=8\nvcom=5\n[SN]\n@\nA1\n"
                      "[SK]\n@\nK1\n[CANBUS]\n@\nid=5\n[DirectionKey]\n@\n[BT]\n@\nadv_power=4\n";
    TestUnit unit;
    plugFile(unit, file.replace('@', mode));
    const RecordedPass pass(unit);
    QCOMPARE(pass.transcript(),
             "canbus(false,5)\ndirectionKey(false)\n"
             "message('未进入任何生产测试项，请核对配置文件。',8)\n"
             "canbus(false,0)\ndirectionKey(false)\nfinished()\n");
}

/// A leave that is requested while a large pool is searched ends the search.
void TestGroups::searchStops()
{
    const QStringList pool = {"A1", "A2", "A3"};
    int asked = 0;
    const auto stop = [&] { return ++asked == 2; };
    QVERIFY(!production::chooseSn(pool, {"A"}, 0, stop));
    QCOMPARE(asked, 2);
    asked = 0;
    QVERIFY(!production::chooseSk(pool, 2, stop));
    QCOMPARE(asked, 2);
}

void TestGroups::pulled_data()
{
    QTest::addColumn<QString>("event");
    QTest::addColumn<QString>("last"); // event of a whole pass that still happens
    const auto row = [](const char *name, const char *event, const char *last) {
        QTest::newRow(name) << QString::fromUtf8(event) << QString::fromUtf8(last);
    };
    row("while the file is opened", "message('正在读取USB配置文件，请不要断开电源或拔出USB。',6)",
        "message('成功进入生产模式。',6)");
    row("factory settings, the panel still follows",
        "saveData(['a','1',''],'FactorySettings',true)",
        "message('检测到屏幕背光设置，屏背光设置成功，请核对。',41)");
    row("panel", "backupRuntimeData('vcom_duty',5,true)",
        "message('检测到屏幕背光设置，屏背光设置成功，请核对。',41)");
    row("SN before its write", "message('',13)", "saveProductionData('SN','A1')");
    row("SN in its write", "saveProductionData('SN','A1')", "saveProductionData('SN','A1')");
    row("SN after its write", "message('A1',10)", "message('A1',10)");
    row("SK before its write", "message('',23)", "saveProductionData('SK','K1')");
    row("SK after its write", "message('K1',20)", "message('K1',20)");
    row("CAN bus", "canbus(true,28)", "canbus(true,28)");
    row("direction keys, Bluetooth still follows", "directionKey(true)", "system('sync')");
    row("Bluetooth", "saveFactoryData('adv_power',4,true)", "system('sync')");
}

/// What still happens when the stick is pulled at a certain moment of a pass with every group.
void TestGroups::pulled()
{
    QFETCH(QString, event);
    QFETCH(QString, last);
    const QByteArray file =
        "[FactorySettings]\nmode=1\na=1\n[Panel]\nmode=1\nvcom=5\n[SN]\nmode=1\n"
        "A1\n[SK]\nmode=1\nK1\n[CANBUS]\nmode=1\n[DirectionKey]\nmode=1\n"
        "[BT]\nmode=1\nadv_power=4\n";
    TestUnit unit;
    plugFile(unit, file);
    QStringList expected = RecordedPass(unit).events;
    expected = expected.mid(0, expected.lastIndexOf(last) + 1);
    const bool whole = last == "system('sync')";
    expected << "canbus(false,0)"
             << "directionKey(false)"
             << "finished()";

    unit.replaceUnit();
    const QString stick = plugFile(unit, file);
    QFile::remove(stick + "/production_done.txt");
    const RecordedPass pass(unit, {}, [&](ProductionObject &worker, const QString &current) {
        if (current == event)
            worker.setLeave();
    });
    QCOMPARE(pass.events, expected);
    QCOMPARE(readFile(stick + "/production_done.txt"), QByteArray(whole ? "A1, K1\r\n" : ""));
}

QTEST_GUILESS_MAIN(TestGroups)
#include "tst_groups.moc"
