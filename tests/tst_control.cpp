#include "testunit.h"

#include "bench/flash.h"
#include "productioncontrol.h"
#include "productionobject.h"

#include <usbcontrol.h>

#include <QDir>
#include <QElapsedTimer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <functional>
#include <thread>

namespace {

const QByteArray btFile = "[BT]\nmode=1\nadv_power=4\n";
const QByteArray serialFile = "[SN]\nmode=1\nAB01\nAB02\n[BT]\nmode=1\nadv_power=4\n";

const QString unplugged = "1 The USB is unplugged, it has exited production mode.";
const QString testPassed =
    "1 It is detected that there is communication on the interface, and the test is passed.";

QString flashDirectory; ///< Stands for the unit's flash; empty when the kernel refused.
QString flashError;

std::function<void(const QString &)> afterFound; ///< Called in the thread that looked.

/// What the modules of the interface tests were told: "canbus(true,28) mcu(false)".
QString testModeCalls(const TestUnit &unit)
{
    QStringList texts;
    const QVector<bench::Call> all = unit.calls();
    for (const bench::Call &call : all)
        texts << callText(call);
    return texts.filter("entryProduction")
        .replaceInStrings("entryProductionTestMode", "canbus")
        .replaceInStrings("entryProductionMode", "mcu")
        .join(' ');
}

} // namespace

/// Takes the place of Qt's, for a hand in between a look for a file and what comes of it.
bool QFile::exists(const QString &name)
{
    const bool found = QFileInfo::exists(name);
    if (found && afterFound)
        afterFound(name);
    return found;
}

/// The life of the module: what starts it, what ends it, and that it always ends as a whole.
class TestControl : public QObject
{
    Q_OBJECT

private slots:
    void init() { threadsBefore = threadCount(); }

    void endsByItself_data();
    void endsByItself();
    void waitsForDeviceEvents();
    void flashFileWinsOverStick();
    void unpluggedAfterPass_data();
    void unpluggedAfterPass();
    void ignoresOtherDevices();
    void interfaceTestPopUp_data();
    void interfaceTestPopUp();
    void secondCheckDoesNothing();
    void unpluggedAsItIsFound();
    void startedAgainAtItsEnd();
    void destroyedWhileLeaving_data();
    void destroyedWhileLeaving();
    void destroyedDuringPass();
    void startOnlyWhenReady_data();
    void startOnlyWhenReady();
    void leaveSeenByBothThreads();

private:
    int threadsBefore = 0;
};

void TestControl::endsByItself_data()
{
    QTest::addColumn<bool>("plugged");
    QTest::newRow("no stick") << false;
    QTest::newRow("stick without a configuration file") << true;
}

void TestControl::endsByItself()
{
    QFETCH(bool, plugged);
    TestUnit unit;
    if (plugged)
        unit.plug(unit.makeStick("", "readme.txt"));
    const ProductionControl *const control = unit.startModule();
    QCOMPARE(ProductionObject::ins != nullptr, plugged);
    QVERIFY(plugged || !control->isInProductionModel());
    QVERIFY(unit.waitForEnd());
    QVERIFY(unit.popUps().isEmpty() && testModeCalls(unit).isEmpty());
    QTRY_COMPARE(threadCount(), threadsBefore);
    QPointer<ProductionControl> next = ProductionControl::getInstance();
    QVERIFY(!next.isNull());
    delete next;
}

void TestControl::waitsForDeviceEvents()
{
    bench::HeadUnitConfig config;
    config.lateUsb = true;
    TestUnit unit(config);
    plugFile(unit, btFile);
    QPointer<ProductionControl> control = unit.startModule();
    QCoreApplication::processEvents();
    QVERIFY(ProductionObject::ins == nullptr && !control.isNull());
    unit.headUnit().requestDeviceEvents();
    QVERIFY(unit.waitForPass());
    QVERIFY(control->isInProductionModel());
}

void TestControl::flashFileWinsOverStick()
{
    if (flashDirectory.isEmpty())
        QSKIP(qPrintable(flashError));
    const QString flashFile = flashDirectory + "/production_sys.ini";
    QVERIFY(writeFile(flashFile, "[BT]\nmode=1\nadv_power=9\n"));
    TestUnit unit;
    const QString stick = unit.makeStick(btFile);
    QVERIFY(unit.runPass(stick));
    QCOMPARE(unit.stored(bench::Area::Factory, "adv_power").toInt(), 9);
    QVERIFY(unit.popUps().isEmpty());
    QVERIFY(!QFile::exists(flashFile)); // used once
    unit.unplug(stick);
    QCoreApplication::processEvents();
    QVERIFY(unit.moduleExists()); // nothing but the application's end takes it out of Done
}

void TestControl::unpluggedAfterPass_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<QString>("moduleLeftOut");
    QTest::addColumn<int>("canIndex"); // 0: the unit has none
    QTest::addColumn<QString>("calls");
    QTest::addColumn<bool>("busy"); // the head unit's main thread, until the pass has ended
    const auto row = [](const char *name, const QByteArray &group, const QString &moduleLeftOut,
                        int canIndex, const QString &calls, bool busy = false) {
        QTest::newRow(name) << group << moduleLeftOut << canIndex << calls << busy;
    };
    row("index of the unit", "CANBUS", "", 7, "canbus(true,28) canbus(false,7) mcu(false)");
    row("unit without an index", "CANBUS", "", 0, "canbus(true,28) canbus(false,0) mcu(false)");
    row("no canbus module", "CANBUS", "canbus", 7, "mcu(false)");
    row("no mcu module", "CANBUS", "mcu", 7, "canbus(true,28) canbus(false,7)");
    row("file without test modes", "Panel", "", 7, "canbus(false,7) mcu(false)");
    row("before results are shown", "CANBUS", "", 7, "canbus(true,28) canbus(false,7) mcu(false)",
        true);
}

void TestControl::unpluggedAfterPass()
{
    QFETCH(QByteArray, group);
    QFETCH(QString, moduleLeftOut);
    QFETCH(int, canIndex);
    QFETCH(QString, calls);
    QFETCH(bool, busy);
    bench::HeadUnitConfig config;
    config.modulesLeftOut << moduleLeftOut;
    if (canIndex != 0)
        config.presets = {{bench::Area::User, "CanIndex", canIndex}};
    TestUnit unit(config);
    const QString stick = plugFile(unit, '[' + group + "]\nmode=1\n");
    unit.startModule();
    while (busy && ProductionObject::ins.load()->currentState() < Done)
        std::this_thread::yield();
    QVERIFY(busy || unit.waitForPass());
    unit.unplug(stick);
    QVERIFY(unit.waitForEnd());
    QCOMPARE(testModeCalls(unit), calls);
    QCOMPARE(unit.popUps().size(), 3);
    QCOMPARE(unit.popUps().last(), unplugged);
    QTRY_COMPARE(threadCount(), threadsBefore);
}

void TestControl::ignoresOtherDevices()
{
    TestUnit unit;
    const QString stick = unit.makeStick(btFile);
    const QString other = unit.makeStick(btFile, "production.ini", "other");
    QVERIFY(unit.runPass(stick));
    unit.plug(other);
    unit.unplug(other);
    emit UsbControl::getInstance()->deviceUnmounted(MediaTypeUnknown, stick);
    emit UsbControl::getInstance()->deviceUnmounted(MediaTypeUsbStorage, stick + '/');
    QCoreApplication::processEvents();
    QCOMPARE(ProductionObject::ins.load()->currentState(), Done);
}

void TestControl::interfaceTestPopUp_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<int>("popUps");
    QTest::newRow("one for each report") << 0 << "production.ini" << 3;
    QTest::newRow("never on model 7") << 7 << "production.ini" << 0;
    QTest::newRow("never in a silent pass") << 0 << "production_sys.ini" << 0;
}

void TestControl::interfaceTestPopUp()
{
    QFETCH(int, model);
    QFETCH(QString, fileName);
    QFETCH(int, popUps);
    bench::HeadUnitConfig config;
    config.modelId = model;
    TestUnit unit(config);
    unit.plug(unit.makeStick(btFile, fileName));
    QPointer<ProductionControl> control = ProductionControl::getInstance();
    control->init(); // Ready, and nobody has asked for a pass
    unit.headUnit().reportData("canbus");
    QCOMPARE(unit.popUps().count(testPassed), 0);
    emit control->startExe(QString());
    QVERIFY(unit.waitForPass());
    unit.headUnit().reportData("canbus");
    unit.headUnit().reportData("mcu");
    unit.headUnit().reportData("mcu");
    QCOMPARE(unit.popUps().count(testPassed), popUps);
    delete control;
}

void TestControl::secondCheckDoesNothing()
{
    TestUnit unit;
    QVERIFY(unit.runPass(unit.makeStick(serialFile)));
    const int before = unit.calls().size();
    ProductionObject *const worker = ProductionObject::ins;
    QVERIFY(QMetaObject::invokeMethod(ProductionControl::getInstance(), "checkUSB"));
    QVERIFY(unit.waitForPass());
    QCOMPARE(unit.calls().size(), before);
    QCOMPARE(ProductionObject::ins.load(), worker);
}

void TestControl::unpluggedAsItIsFound()
{
    TestUnit unit;
    const QString stick = plugFile(unit, btFile);
    afterFound = [&](const QString &name) {
        if (name == stick + "/production.ini")
            unit.unplugFromHook(stick);
    };
    const auto noMore = qScopeGuard([] { afterFound = nullptr; });
    unit.startModule();
    QVERIFY(unit.waitForEnd());
    QCOMPARE(unit.popUps(), QStringList(unplugged));
}

void TestControl::startedAgainAtItsEnd()
{
    TestUnit unit;
    const QString stick = plugFile(unit, "[FactorySettings]\nmode=1\nkey=1\n");
    const QPointer<ProductionControl> first = unit.startModule();
    while (!first.isNull()) // no further, as the worker still waits for its deletion
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    unit.startModule();
    QVERIFY(unit.waitForEnd());
    QCOMPARE(unit.calls(bench::calls::saveData).size(), 2);
}

void TestControl::destroyedWhileLeaving_data()
{
    QTest::addColumn<QString>("call"); // in which the host deletes everything
    QTest::newRow("by the canbus module") << "entryProductionTestMode(false";
    QTest::newRow("by the mcu module") << "entryProductionMode(false";
    QTest::newRow("by the closing pop-up") << "unplugged";
}

void TestControl::destroyedWhileLeaving()
{
    QFETCH(QString, call);
    TestUnit unit;
    const QString stick = plugFile(unit, btFile);
    const QPointer<ProductionControl> control = unit.startModule();
    QVERIFY(unit.waitForPass());
    unit.headUnit().setBeforeCall([&](const bench::Call &made) {
        if (!callText(made).contains(call))
            return;
        delete control;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the thread
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the worker
    });
    unit.unplug(stick);
    QVERIFY(control.isNull());
    QVERIFY(unit.waitForEnd());
    unit.headUnit().setBeforeCall({});
}

void TestControl::destroyedDuringPass()
{
    TestUnit unit;
    const QString stick = plugFile(unit, serialFile);
    QSemaphore reached;
    QSemaphore release;
    unit.headUnit().setBeforeCall([&](const bench::Call &call) {
        if (call.name == bench::calls::saveProductionData) {
            reached.release();
            release.acquire();
        }
    });
    ProductionControl *const control = unit.startModule();
    reached.acquire();
    delete control; // lets the thread go after a second
    QVERIFY(ProductionObject::ins != nullptr);

    // A module that starts meanwhile must not run a second pass over the stick.
    QPointer<ProductionControl> next = ProductionControl::getInstance();
    QVERIFY(QMetaObject::invokeMethod(next, "checkUSB"));
    QTRY_VERIFY(next.isNull());

    release.release();
    QVERIFY(unit.waitForEnd());
    unit.headUnit().setBeforeCall({});
    QTRY_COMPARE(threadCount(), threadsBefore);
    QCOMPARE(readFile(stick + "/production_done.txt"), QByteArray("AB01\r\n"));
}

void TestControl::startOnlyWhenReady_data()
{
    QTest::addColumn<bool>("ready");
    QTest::addColumn<bool>("leave");
    QTest::addColumn<int>("finished");
    QTest::newRow("not ready: nothing at all") << false << false << 0;
    QTest::newRow("leave requested before the pass") << true << true << 1;
    QTest::newRow("nothing found") << true << false << 1;
}

void TestControl::startOnlyWhenReady()
{
    QFETCH(bool, ready);
    QFETCH(bool, leave);
    QFETCH(int, finished);
    TestUnit unit;
    if (leave)
        plugFile(unit, btFile);
    ProductionObject worker;
    if (ready)
        worker.setReady();
    if (leave)
        worker.setLeave();
    QSignalSpy spy(&worker, &ProductionObject::finished);
    worker.start(QString());
    QCOMPARE(spy.count(), finished);
    QCOMPARE(worker.currentState(), ready ? Ready : Idle);
    QVERIFY(unit.popUps().isEmpty());
}

void TestControl::leaveSeenByBothThreads()
{
    // The two threads meet at another point in every round; each must see exactly one leave.
    constexpr int rounds = 300;
    TestUnit unit;
    plugFile(unit, btFile);
    int leftByUi = 0;
    for (int round = 0; round < rounds; ++round) {
        ProductionObject worker;
        worker.setReady();
        std::atomic<int> finished{0};
        std::atomic<int> switchedOff{0};
        // Without a context object, so in the thread that leaves.
        connect(&worker, &ProductionObject::finished, [&] { ++finished; });
        connect(&worker, &ProductionObject::canbusEntryProductionTestMode, [&] { ++switchedOff; });
        std::thread pass([&] { worker.start(QString()); });
        while (worker.currentState() < Running)
            std::this_thread::yield();
        for (int spin = 0; spin < round * 20 && worker.currentState() < Done; ++spin)
            std::this_thread::yield();
        worker.setLeave();
        leftByUi += finished;
        pass.join();
        QCOMPARE(finished.load(), 1);
        QCOMPARE(switchedOff.load(), 1);
        QCOMPARE(worker.currentState(), Idle);
    }
    qInfo("%d of %d leaves were carried out before the UI thread returned", leftByUi, rounds);
}

int main(int argc, char **argv)
{
    // The namespace must be entered before there is a second thread.
    const QTemporaryDir flash;
    if (bench::mountFlash(flash.path(), &flashError))
        flashDirectory = flash.path();
    QCoreApplication app(argc, argv);
    TestControl test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_control.moc"
