#include "recordedpass.h"

#include "serialpool.h"

#include <datadefault.h>

#include <QtTest>

#include <algorithm>

Q_DECLARE_METATYPE(bench::HeadUnitConfig)

namespace {

/// A call that stores factory data; @p json is the value as it stands in the record.
QString factory(const char *key, const char *json)
{
    return QStringLiteral("saveFactoryData('%1',%2,true)")
        .arg(QLatin1String(key), QLatin1String(json));
}

QStringList runtimeAndFactory(const char *key, const char *json)
{
    const QString both = factory(key, json);
    return {QString(both).replace(QStringLiteral("saveFactoryData"),
                                  QStringLiteral("backupRuntimeData")),
            both};
}

/// The four keys of the dimension "Width" or "Height".
QStringList physical(const char *dimension, const char *value)
{
    QStringList calls;
    for (const char *variant : {"HiCar", "Carplay", "CarplayAlt", "CarplayAlt2"})
        calls << factory(qPrintable(QLatin1String(variant) + QLatin1String(dimension)
                                    + QLatin1String("Physical")),
                         value);
    return calls;
}

/// A step table is stored, and complete when it is announced.
QStringList stepTable(const QStringList &steps)
{
    const QString json = QStringLiteral("['%1']").arg(steps.join(QStringLiteral("','")));
    return {factory("PanelLightStepValueList", qPrintable(json)),
            QStringLiteral("lightSteps('%1')").arg(steps.join(QLatin1Char(' ')))};
}

/// What the message of the panel says when a size was given, or none.
QStringList panelSet(const char *size = nullptr)
{
    const QString display =
        size != nullptr ? QString::fromLatin1(size) + QStringLiteral("寸") : QString();
    return {QStringLiteral("41 检测到屏幕背光设置，%1屏背光设置成功，请核对。").arg(display)};
}

/// Lines that may be pool entries, sorted.
QStringList bareLines(const QByteArray &file)
{
    QStringList lines = QString::fromUtf8(file).split(QRegularExpression(QStringLiteral("\\s*\n")));
    lines = lines.filter(QRegularExpression(QStringLiteral("^[^\\[=]+$")));
    lines.sort();
    return lines;
}

void addRow(const char *name, const QByteArray &file, const QStringList &effects,
            const QStringList &messages = {}, const bench::HeadUnitConfig &config = {})
{
    QTest::newRow(name) << file << effects << messages << config;
}

} // namespace

/// What every group of the file does to the unit and shows to the operator, in order.
class TestGroups : public QObject
{
    Q_OBJECT

private slots:
    void steps_data();
    void steps();
    void serials_data();
    void serials();
    void searchStops();
    void testModesEnd_data();
    void testModesEnd();
    void pulled_data();
    void pulled();

private:
    void addOffModes();
    void addFactorySettings();
    void addPanel();
    void addPhysicalSizes();
    void addInterfaces();
};

void TestGroups::steps_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("effects");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<bench::HeadUnitConfig>("config");
    addOffModes();
    addFactorySettings();
    addPanel();
    addPhysicalSizes();
    addInterfaces();
}

void TestGroups::addOffModes()
{
    const QByteArray file =
        "[FactorySettings]\n@\na=1\n[Panel]\n@\nsize=8\nvcom=5\n[SN]\n@\nA1\n[SK]\n@\nK1\n"
        "[CANBUS]\n@\nid=5\n[DirectionKey]\n@\n[BT]\n@\nadv_power=4\n";
    const auto row = [&](const char *name, const char *mode) {
        // The groups of the test modes switch them off, and leaving does so once more.
        addRow(name, QByteArray(file).replace('@', mode),
               list("canbus(false,5); directionKey(false); canbus(false,0); directionKey(false)"));
    };
    row("mode missing", "other=1");
    row("mode zero", "mode=0");
    row("mode negative", "mode=-1");
    row("mode no whole number", "mode=1.5");
    row("mode bare", "mode");
    row("mode a list", "mode=1,1");
    row("mode in other letter case", "Mode=1");
}

void TestGroups::addFactorySettings()
{
    const auto row = [](const char *name, const QByteArray &settings, const char *triples) {
        QStringList effects = list("canbus(true,28)");
        if (*triples != '\0')
            effects.prepend(QStringLiteral("saveData([%1],'FactorySettings',true)")
                                .arg(QLatin1String(triples)));
        addRow(name, "[FactorySettings]\nmode=1\n" + settings + "[CANBUS]\nmode=1\n", effects);
    };
    row("value kinds", "beta=x,y\ngamma\nalpha=10\nempty=\n",
        "'alpha','10','','beta',['x','y'],'','empty','','','gamma','{none}',''");
    row("lower section", "b=1\n[FactorySettings/sub]\n; note\na=2\nmode=3\n",
        "'b','1','','sub/a','2','','sub/mode','3',''");
    row("other letter case is a setting", "Mode=2\n", "'Mode','2',''");
    row("key that no lookup finds", "a//b=1\nc=2\n", "'a//b',null,'','c','2',''");
    row("nothing but comments and mode", "; note\n# more\n=5\n", "");
}

void TestGroups::addPanel()
{
    bench::HeadUnitConfig config;
    config.stepRange = 3;
    const auto row = [&](const char *name, const QByteArray &keys, const QStringList &effects,
                         const QStringList &messages) {
        addRow(name, "[Panel]\nmode=1\n" + keys, effects, messages, config);
    };
    row("every item, in order, whatever their order in the file",
        "physical_h=90\nphysical_w=160\ndriver=d.ko\nbacklight_night=20\nbacklight_day=80\n"
        "backlight_steps=0,1,2,3\navdd=6\nvcom=5\nsize=10.1\nhicar_physical_h=91\n",
        QStringList{factory("DisplaySize", "'10.1'")}
            << runtimeAndFactory("vcom_duty", "5") << runtimeAndFactory("avdd_duty", "6")
            << stepTable(list("0; 1; 2; 3")) << list("day(80); night(20)")
            << runtimeAndFactory("defaultTouchDriver", "'d.ko'") << physical("Height", "91")
            << physical("Width", "160") << physical("Height", "90"),
        panelSet("10.1"));
    row("size alone is not confirmed", "size=10.1", {factory("DisplaySize", "'10.1'")}, {});
    row("blanks around and within the size", "size=\" 10.1   x \"\nbacklight_day=1",
        {factory("DisplaySize", "'10.1 x'"), QStringLiteral("day(1)")}, panelSet("10.1 x"));
    row("size a list", "size=8,10\nbacklight_day=1",
        {factory("DisplaySize", "''"), QStringLiteral("day(1)")}, panelSet(""));
    row("bare vcom", "vcom", runtimeAndFactory("vcom_duty", "0"), panelSet());
    row("levels keep their low 8 bits", "backlight_day=300\nbacklight_night=-1",
        list("day(44); night(255)"), panelSet());
    row("step entries keep their low 8 bits", "backlight_steps=300,x,-1,255",
        stepTable(list("44; 0; 0; 255")), panelSet());
    row("step table too short", "backlight_steps=1,2,3", {}, {});
    row("step table too long", "backlight_steps=1,2,3,4,5", {}, {});
    row("step table in quotes", "backlight_steps=\"1,2,3,4\"", {}, {});
    row("blank driver", "driver=\"  \"", {}, {});
    row("9 inch touch driver on another size", "driver=\" quillvarent_9inc.ko \"\nsize=10.1",
        QStringList{factory("DisplaySize", "'10.1'")}
            << runtimeAndFactory("defaultTouchDriver", "'quillvarent_9inc.ko'")
            << list("system('echo 9 > /proc/sys/touch/touch_inc')"),
        panelSet("10.1"));
    row("10 inch touch driver", "driver=quillvarent_10inc.ko",
        runtimeAndFactory("defaultTouchDriver", "'quillvarent_10inc.ko'")
            << list("system('echo 10 > /proc/sys/touch/touch_inc')"),
        panelSet());
    row("touch driver in upper case", "driver=QUILLVARENT_9INC.KO",
        runtimeAndFactory("defaultTouchDriver", "'QUILLVARENT_9INC.KO'"), panelSet());
    row("shell text in the driver", "driver=\"quillvarent_9inc.ko; $(reboot) | `id` > /x\"",
        runtimeAndFactory("defaultTouchDriver", "'quillvarent_9inc.ko; $(reboot) | `id` > /x'"),
        panelSet());
    config.stepRange = 255; // one more entry than fits 8 bits
    row("longest step table",
        "backlight_steps=" + QByteArrayList(QVector<QByteArray>(256, "7").toList()).join(','),
        stepTable(QVector<QString>(256, QStringLiteral("7")).toList()), panelSet());
    row("empty step table", "backlight_steps=", {}, {});
    config.stepRange = 0;
    row("step table of one, no comma", "backlight_steps=9", stepTable(list("9")), panelSet());
}

void TestGroups::addPhysicalSizes()
{
    bench::HeadUnitConfig config;
    config.displaySize = QStringLiteral("8");
    const auto row = [&](const char *name, const QByteArray &keys, const QStringList &effects) {
        addRow(name, "[Panel]\nmode=1\n" + keys, effects,
               effects.isEmpty() ? QStringList() : panelSet(), config);
    };
    row("key for another display", "physical_w(10.1)=217\nphysical_w(8)=150",
        physical("Width", "150"));
    row("plain key before the sized one", "physical_w=0\nphysical_w(8)=150", {});
    row("sized key before a longer one", "physical_h(8)=90\nphysical_h_lcd(8)=1",
        physical("Height", "90"));
    row("text before and behind the parentheses", "physical_w_lcd(8)x=150",
        physical("Width", "150"));
    row("parentheses that do not match", "physical_w)8(=1\nphysical_w(8=2\nphysical_w()=3", {});
    row("both presences of one dimension", "hicar_physical_w=200\nphysical_w=210",
        physical("Width", "200") + physical("Width", "210"));
    row("values not above zero", "hicar_physical_w=0\nphysical_h=-5\nphysical_w=wide", {});
    config.displaySize.clear();
    row("unit without a display size", "physical_w(8)=150\nphysical_h()=90\nphysical_h=91",
        physical("Height", "91"));
    addRow("size in the file, over the unit's own", "[Panel]\nmode=1\nsize=7\nphysical_w(7)=150",
           QStringList{factory("DisplaySize", "'7'")} << physical("Width", "150"), panelSet("7"),
           config);
    config.displaySize = QStringLiteral("8");
    addRow("blank size: stored, and the unit's own matched",
           "[Panel]\nmode=1\nsize=\"  \"\nphysical_w(8)=150",
           QStringList{factory("DisplaySize", "'  '")} << physical("Width", "150"), panelSet("  "),
           config);
}

void TestGroups::addInterfaces()
{
    addRow("CAN bus without an index", "[CANBUS]\nmode=1\n", list("canbus(true,28)"));
    addRow("CAN bus with an index", "[CANBUS]\nmode=1\nid=5\n", list("canbus(true,5)"));
    addRow("CAN bus, negative index", "[CANBUS]\nmode=1\nid=-3\n", list("canbus(true,28)"));
    addRow("CAN bus, index no number", "[CANBUS]\nmode=1\nid=x\n", list("canbus(true,28)"));
    addRow("order of the test modes", "[DirectionKey]\nmode=2\n[CANBUS]\nmode=1\n",
           list("canbus(true,28); directionKey(true)"));

    const auto bluetooth = [](const char *name, const QByteArray &key, const char *power) {
        addRow(name, "[BT]\nmode=1\n" + key, {factory("adv_power", power)},
               {QStringLiteral("70 成功设置蓝牙发射功率为%1db").arg(QLatin1String(power))});
    };
    bluetooth("power", "adv_power=4", "4");
    bluetooth("negative power", "adv_power=-6", "-6");
    bluetooth("power no number", "adv_power=high", "0");
    bluetooth("empty power", "adv_power=", "0");
}

void TestGroups::steps()
{
    QFETCH(QByteArray, file);
    QFETCH(QStringList, effects);
    QFETCH(QStringList, messages);
    QFETCH(bench::HeadUnitConfig, config);
    TestUnit unit(config);
    const QList<unsigned char> stepsBefore = DataDefault::panelLightStepValueList;
    plugFile(unit, file);
    const RecordedPass pass(unit);
    QCOMPARE(pass.effects(), effects);
    QCOMPARE(pass.stepMessages(), messages);
    if (effects.isEmpty())
        QCOMPARE(DataDefault::panelLightStepValueList, stepsBefore);
}

void TestGroups::serials_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("taken");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<QString>("stored");
    const auto row = [](const char *name, const char *file, const char *taken, const char *messages,
                        const char *stored = "") {
        QTest::newRow(name) << QByteArray(file) << QString::fromLatin1(taken) << list(messages)
                            << QString::fromLatin1(stored);
    };
    row("SN, first of a unit", "[SN]\nmode=1\nA2\nA1\n", "A1", "13; 10 A1");
    row("SN, unit has one", "[SN]\nmode=1\nA1\n", "", "12 OLD", "OLD");
    row("SN, replaced", "[SN]\nmode=2\nA1\n", "A1", "13; 11 A1", "OLD");
    row("SN, none left to replace", "[SN]\nmode=2\n", "", "15", "OLD");
    row("SN, mode without a meaning", "[SN]\nmode=3\nA1\n", "", "");
    row("SN, settings and comments are no serials",
        "[SN]\nmode=1\nlength=4\nstartwith=\n; note\n# note\n", "", "15");
    row("SN, prefix and length", "[SN]\nmode=1\nlength=4\nstartwith=A\nA1\nA100\nA099\nB001\n",
        "A099", "13; 10 A099");
    row("SN, length without prefixes", "[SN]\nmode=1\nlength=3\nA1\nA22\nA333\n", "A1",
        "13; 10 A1");
    row("SN, length no number", "[SN]\nmode=1\nlength=x\nstartwith=A\nA22\n", "A22", "13; 10 A22");
    row("SN, prefixes in quotes", "[SN]\nmode=1\nlength=2\nstartwith=\"B,C\"\nA1\nC1\nB1\nB\n",
        "B1", "13; 10 B1");
    row("SN, prefixes without quotes are none", "[SN]\nmode=1\nlength=2\nstartwith=B,C\nA\nB1\n",
        "A", "13; 10 A");
    row("SN, prefixes are not trimmed", "[SN]\nmode=1\nstartwith=\"A, B\"\nB1\n", "", "15");
    row("SN, empty prefixes are none", "[SN]\nmode=1\nlength=9\nstartwith=\",,\"\nB1\n", "B1",
        "13; 10 B1");
    row("SN, prefix in other letter case", "[SN]\nmode=1\nstartwith=a\nA1\n", "", "15");
    row("SN, capitals before small letters", "[SN]\nmode=1\na1\nB1\n", "B1", "13; 10 B1");
    row("SN, key of a lower section", "[SN]\nmode=1\nA/1\n", "", "15");

    row("SK, first of a unit", "[SK]\nmode=1\nK2\nK1\n", "K1", "23; 20 K1");
    row("SK, unit has one", "[SK]\nmode=1\nK1\n", "", "22 OLD", "OLD");
    row("SK, replaced", "[SK]\nmode=2\nK1\n", "K1", "23; 21 K1", "OLD");
    row("SK, nothing but mode", "[SK]\nmode=1\n", "", "24");
    row("SK, length", "[SK]\nmode=1\nlength=3\nK1\nK333\nK23\nK22\n", "K22", "23; 20 K22");
    row("SK, no such length", "[SK]\nmode=1\nlength=5\nK1\nK333\n", "", "24");
    row("SK, startwith is a value", "[SK]\nmode=1\nstartwith\n", "startwith", "23; 20 startwith");
}

void TestGroups::serials()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, taken);
    QFETCH(QStringList, messages);
    QFETCH(QString, stored);
    const QString group = QString::fromLatin1(file.mid(1, 2));
    bench::HeadUnitConfig config;
    if (!stored.isEmpty())
        config.presets = {{bench::Area::Production, group, stored}};
    TestUnit unit(config);
    const QString path = plugFile(unit, file) + QStringLiteral("/production.ini");
    const RecordedPass pass(unit);

    QCOMPARE(pass.stepMessages(), messages);
    QCOMPARE(pass.worker.currentState(), Done);
    QStringList effects;
    QStringList left = bareLines(file);
    if (!taken.isEmpty()) {
        effects << QStringLiteral("saveProductionData('%1','%2')").arg(group, taken);
        left.removeOne(taken);
    }
    QCOMPARE(pass.effects(), effects);
    QCOMPARE(bareLines(readFile(path)), left);
    QCOMPARE(readFile(path) == file, taken.isEmpty());
}

/// A leave that is requested while a large pool is searched ends the search.
void TestGroups::searchStops()
{
    int asked = 0;
    const auto stop = [&] { return ++asked == 2; };
    QVERIFY(!production::chooseSn(list("A1; A2; A3"), list("A"), 0, stop));
    QCOMPARE(asked, 2);
    asked = 0;
    QVERIFY(!production::chooseSk(list("A1; A2; A3"), 2, stop));
    QCOMPARE(asked, 2);
}

void TestGroups::testModesEnd_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("index"); // 0: the unit has none
    QTest::addColumn<QString>("canbus");
    QTest::newRow("the unit's own index, not that of the file")
        << QByteArray("[CANBUS]\nmode=1\nid=5\n") << 7 << "canbus(false,7)";
    QTest::newRow("unit without an index")
        << QByteArray("[CANBUS]\nmode=1\n") << 0 << "canbus(false,0)";
    QTest::newRow("file without test modes")
        << QByteArray("[Panel]\nmode=1\n") << 7 << "canbus(false,7)";
}

void TestGroups::testModesEnd()
{
    QFETCH(QByteArray, file);
    QFETCH(int, index);
    QFETCH(QString, canbus);
    bench::HeadUnitConfig config;
    if (index != 0)
        config.presets = {{bench::Area::User, QStringLiteral("CanIndex"), index}};
    TestUnit unit(config);
    plugFile(unit, file);
    RecordedPass pass(unit);
    pass.events.clear();
    pass.worker.setLeave();
    QCOMPARE(pass.events, QStringList(canbus) + list("directionKey(false); finished()"));
}

void TestGroups::pulled_data()
{
    QTest::addColumn<QString>("event");
    QTest::addColumn<int>("effects"); // how many of a whole pass still happen
    QTest::addColumn<int>("messages");
    QTest::addColumn<QByteArray>("marker");
    const auto row = [](const char *name, const char *event, int effects, int messages,
                        const char *marker = "") {
        QTest::newRow(name) << QString::fromUtf8(event) << effects << messages
                            << QByteArray(marker);
    };
    row("while the file is opened", "message('正在读取USB配置文件，请不要断开电源或拔出USB。',6)",
        0, 0);
    row("factory settings, the panel still follows",
        "saveData(['a','1',''],'FactorySettings',true)", 3, 1);
    row("panel", "backupRuntimeData('vcom_duty',5,true)", 3, 1);
    row("SN before its write", "message('',13)", 4, 2);
    row("SN in its write", "saveProductionData('SN','A1')", 4, 2);
    row("SN after its write", "message('A1',10)", 4, 3);
    row("SK before its write", "message('',23)", 5, 4);
    row("SK after its write", "message('K1',20)", 5, 5);
    row("CAN bus", "canbus(true,28)", 6, 5);
    row("direction keys, Bluetooth still follows", "directionKey(true)", 8, 6, "A1, K1\r\n");
    row("Bluetooth", "saveFactoryData('adv_power',4,true)", 8, 6, "A1, K1\r\n");
}

/// What still happens when the stick is pulled at a certain moment of a pass with every group.
void TestGroups::pulled()
{
    QFETCH(QString, event);
    QFETCH(int, effects);
    QFETCH(int, messages);
    QFETCH(QByteArray, marker);
    TestUnit unit;
    const QString stick =
        plugFile(unit,
                 "[FactorySettings]\nmode=1\na=1\n[Panel]\nmode=1\nvcom=5\n[SN]\nmode=1\nA1\n"
                 "[SK]\nmode=1\nK1\n[CANBUS]\nmode=1\n[DirectionKey]\nmode=1\n[BT]\nmode=1\n"
                 "adv_power=4\n");
    const RecordedPass pass(unit, {}, [&](ProductionObject &worker, const QString &current) {
        if (current == event)
            worker.setLeave();
    });
    const QStringList whole = list(
        "saveData(['a','1',''],'FactorySettings',true); backupRuntimeData('vcom_duty',5,true); "
        "saveFactoryData('vcom_duty',5,true); saveProductionData('SN','A1'); "
        "saveProductionData('SK','K1'); canbus(true,28); directionKey(true); "
        "saveFactoryData('adv_power',4,true)");
    const QStringList wholeMessages =
        panelSet() + list("13; 10 A1; 23; 20 K1; 70 成功设置蓝牙发射功率为4db");
    QCOMPARE(pass.effects(), whole.mid(0, effects) + list("canbus(false,0); directionKey(false)"));
    QCOMPARE(pass.stepMessages(), wholeMessages.mid(0, messages));
    QCOMPARE(pass.events.last(), QStringLiteral("finished()"));
    QCOMPARE(readFile(stick + QStringLiteral("/production_done.txt")), marker);
}

QTEST_GUILESS_MAIN(TestGroups)
#include "tst_groups.moc"
