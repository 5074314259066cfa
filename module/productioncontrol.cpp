#include "productioncontrol.h"

#include "configurationfiles.h"
#include "productionlog.h"
#include "productionobject.h"
#include "workerthread.h"

#include <constsetting.h>
#include <datasavecontrol.h>
#include <modulemanager.h>
#include <screenlockctrl.h>
#include <tipdialog.h>

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QPointer>
#include <QStringList>
#include <QThread>

#define CONTROL_LOG() PRODUCTION_LOG("[ProductionControl]")

using tolappframework::Module;
using tolappframework::ModuleManager;

namespace {

constexpr int controlMessage = 1; ///< Type code of the control object's own pop-ups.
constexpr int modelWithoutTestPopUp = 7;
constexpr unsigned long threadEndTimeout = 1000; // ms

QString flashFile()
{
    return production::filePath(QStringLiteral("/media/flash/userdata"),
                                production::systemFileName());
}

void storeLevel(const QString &key, int level)
{
    DataSaveControl::saveFactoryData(key, QVariant(level), true);
}

} // namespace

ProductionControl *ProductionControl::ins = nullptr;

ProductionControl *ProductionControl::getInstance()
{
    if (ins == nullptr)
        ins = new ProductionControl(nullptr);
    return ins;
}

ProductionControl::ProductionControl(QObject *parent)
    : QObject(parent)
{
    ins = this;
    connect(ModuleManager::self().data(), SIGNAL(allModuleStartupReady()), this,
            SLOT(onAllModuleReady()));
}

ProductionControl::~ProductionControl()
{
    CONTROL_LOG() << __func__;
    ins = nullptr;
    if (workerThread != nullptr) {
        stopWorkerThread();
        releaseWorkerThread();
    }
}

bool ProductionControl::isInProductionModel() const
{
    return worker != nullptr && worker->currentState() > Ready;
}

void ProductionControl::onAllModuleReady()
{
    CONTROL_LOG() << __func__;
    UsbControl *const usb = UsbControl::getInstance();
    if (usb->isDeviceEventRequested())
        checkUSB();
    else
        connect(usb, SIGNAL(hadRequestedDeviceEvent()), this, SLOT(checkUSB()));
}

void ProductionControl::checkUSB()
{
    CONTROL_LOG() << __func__;
    if (worker != nullptr)
        return;
    // A pass that an earlier control object has let go: two at once could take two serials. A
    // worker that is back in this thread only waits to be deleted.
    const ProductionObject *const earlier = ProductionObject::ins;
    const bool busy = earlier != nullptr && earlier->thread() != thread();
    const QString flashPath = flashFile();
    const QStringList devices =
        UsbControl::getInstance()->getMountDeviceByType(MediaTypeUsbStorage);
    const bool onFlash = QFile::exists(flashPath);
    if (busy || (!onFlash && devices.isEmpty())) {
        deleteLater();
        return;
    }
    init();
    if (!workerThread->isRunning()) {
        qWarning("The system has no thread for the production pass.");
        delete worker; // no thread of its own will ever do it
        worker = nullptr;
        deleteLater();
        return;
    }
    emit startExe(onFlash ? flashPath : QString());
}

void ProductionControl::init()
{
    if (worker != nullptr)
        return;
    startWorkerThread();
    connectWorker();
    connectUsb();
    connectCanbus();
    connectMcu();
}

void ProductionControl::startWorkerThread()
{
    worker = new ProductionObject(nullptr);
    worker->setReady();
    workerThread = new WorkerThread(worker, this);
    worker->moveToThread(workerThread);
    workerThread->start(QThread::InheritPriority);
}

// Signatures stay as Qt normalizes them, which saves it the work.
// clang-format off
void ProductionControl::connectWorker()
{
    connect(this, SIGNAL(startExe(QString)), worker, SLOT(start(QString)));
    connect(worker, SIGNAL(message(QString,int)), this, SLOT(onMessage(QString,int)));
    connect(worker, SIGNAL(canbusEntryProductionTestMode(bool,int)),
            this, SIGNAL(canbusEntryProductionTestMode(bool,int)));
    connect(worker, SIGNAL(directionKeyEntryProductionTestMode(bool)),
            this, SIGNAL(directionKeyEntryProductionTestMode(bool)));
    connect(worker, SIGNAL(lightStepRangeChanged()), this, SLOT(onLightStepRangeChanged()));
    connect(worker, SIGNAL(userLightLevelChanged(int)), this, SLOT(onUserLightLevelChagned(int)));
    connect(worker, SIGNAL(illLightLevelChanged(int)), this, SLOT(onIllLightLevelChagned(int)));
    connect(worker, SIGNAL(finished()), this, SLOT(onFinished()));
    connect(workerThread, SIGNAL(destroyed(QObject*)), worker, SLOT(deleteLater()));
}

void ProductionControl::connectUsb()
{
    // The host may emit from another thread, which queues the signal with its arguments.
    qRegisterMetaType<MediaType>("MediaType");
    UsbControl *const usb = UsbControl::getInstance();
    connect(usb, SIGNAL(deviceMounted(MediaType,QString)),
            this, SLOT(onDeviceMounted(MediaType,QString)));
    connect(usb, SIGNAL(deviceUnmounted(MediaType,QString)),
            this, SLOT(onDeviceUnmounted(MediaType,QString)));
}

void ProductionControl::connectCanbus()
{
    const QSharedPointer<Module> module =
        ModuleManager::self()->findModule(QStringLiteral("canbus"));
    if (module.isNull())
        return;
    QObject *const canbus = module->moduleObject();
    connect(this, SIGNAL(canbusEntryProductionTestMode(bool,int)),
            canbus, SLOT(entryProductionTestMode(bool,int)));
    connect(canbus, SIGNAL(productionTestDataReady()), this, SLOT(onCanbusDataReady()));
}

void ProductionControl::connectMcu()
{
    const QSharedPointer<Module> module = ModuleManager::self()->findModule(QStringLiteral("mcu"));
    if (module.isNull())
        return;
    QObject *const mcu = module->moduleObject();
    connect(this, SIGNAL(directionKeyEntryProductionTestMode(bool)),
            mcu, SLOT(entryProductionMode(bool)));
    connect(mcu, SIGNAL(productionTestDataReady()), this, SLOT(onDirKeyDataReady()));
}
// clang-format on

void ProductionControl::onMessage(QString msg, int type)
{
    TipDialog::showMessage(msg, type, false);
}

void ProductionControl::onCanbusDataReady()
{
    CONTROL_LOG() << __func__;
    showTestPassed();
}

void ProductionControl::onDirKeyDataReady()
{
    CONTROL_LOG() << __func__;
    showTestPassed();
}

void ProductionControl::showTestPassed()
{
    if (ConstSetting::clientModelId == modelWithoutTestPopUp || !isInProductionModel()
        || worker->isSystemPass())
        return;
    TipDialog::showMessage(tr("It is detected that there is communication on the interface, and "
                              "the test is passed."),
                           controlMessage, false);
}

void ProductionControl::onUserLightLevelChagned(int level)
{
    ScreenLockCtrl::getInstance()->setUserLevel(level);
    const QString key = QStringLiteral("BacklightLevel_Day");
    storeLevel(key, level);
    CONTROL_LOG() << "write:" << key << level;
}

void ProductionControl::onIllLightLevelChagned(int level)
{
    ScreenLockCtrl::getInstance()->setIllLevel(level);
    const QString key = QStringLiteral("BacklightLevel_Night");
    storeLevel(key, level);
    CONTROL_LOG() << "write:" << key << level;
}

void ProductionControl::onLightStepRangeChanged()
{
    ScreenLockCtrl::getInstance()->resumeScreemLight(true);
}

void ProductionControl::onDeviceMounted(MediaType mt, QString dev)
{
    Q_UNUSED(mt)
    Q_UNUSED(dev)
}

void ProductionControl::onDeviceUnmounted(MediaType mt, QString dev)
{
    if (worker->currentState() == Idle || mt != MediaTypeUsbStorage
        || !worker->isConfigurationDevice(dev))
        return;
    // The leave is carried out here and now, so what the pass has queued would come after it: a
    // test mode would stay on, and the closing pop-up would not be the last.
    worker->setLeave([this] { deliverQueued(); });
}

void ProductionControl::onFinished()
{
    CONTROL_LOG() << __func__;
    const QPointer<ProductionControl> self(this); // pop-ups may let the host delete it
    if (workerThread != nullptr)
        stopWorkerThread();
    deliverQueued();
    if (self.isNull())
        return;
    if (worker != nullptr && !worker->isSystemPass() && worker->isNeedLeave()) {
        TipDialog::showMessage(tr("The USB is unplugged, it has exited production mode."),
                               controlMessage, false);
    }
    if (!self.isNull())
        deleteLater();
}

/// What the worker has sent is handled before what follows it.
void ProductionControl::deliverQueued()
{
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

void ProductionControl::stopWorkerThread()
{
    if (!workerThread->isRunning())
        return;
    workerThread->quit();
    workerThread->wait(threadEndTimeout);
}

/// Has the thread object deleted, and with it the worker, as soon as the thread has ended.
void ProductionControl::releaseWorkerThread()
{
    // Its parent would delete it right now, and deleting a running thread aborts the process.
    workerThread->setParent(nullptr);
    connect(workerThread, SIGNAL(finished()), workerThread, SLOT(deleteLater()));
    if (!workerThread->isRunning())
        workerThread->deleteLater();
    workerThread = nullptr;
}
