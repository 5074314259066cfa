#include "headunit.h"

#include "platform/moduleregistry.h"
#include "platform/usbservice.h"

#include <constsetting.h>
#include <datadefault.h>
#include <datasavecontrol.h>
#include <screenlockctrl.h>

#include <QDir>
#include <QFileInfo>

#include <atomic>

namespace bench {

namespace {

std::atomic<HeadUnit *> currentUnit{nullptr};

/**
 * Orders the calls of all threads. It belongs to the process so that what an earlier unit's worker
 * did is ordered before what the next unit does. A standard mutex, which the thread sanitizer
 * sees; Qt's own it does not.
 */
std::mutex callOrder;

} // namespace

std::unique_ptr<HeadUnit> HeadUnit::create(const HeadUnitConfig &config, QString *error)
{
    Q_ASSERT(!exists());
    std::unique_ptr<HeadUnit> unit(new HeadUnit(config));
    if (!unit->m_data.open(config.unitDirectory, error)
        || !unit->m_data.store(config.presets, error))
        return nullptr;
    unit->setPlatformDefaults();
    currentUnit = unit.get();
    return unit;
}

HeadUnit::HeadUnit(const HeadUnitConfig &config)
    : m_config(config)
    , m_modules(QSharedPointer<ModuleRegistry>::create(config.modulesLeftOut))
    , m_usb(std::make_unique<UsbService>(!config.lateUsb))
    , m_screen(std::make_unique<ScreenLockCtrl>())
{
}

HeadUnit::~HeadUnit()
{
    HeadUnit *self = this;
    currentUnit.compare_exchange_strong(self, nullptr);
}

void HeadUnit::setPlatformDefaults() const
{
    const std::lock_guard<std::mutex> guard(callOrder);
    DataSaveControl::productionMode = false;
    ConstSetting::clientModelId = m_config.modelId;
    DataDefault::panelLightStepRange = m_config.stepRange;
    DataDefault::panelLightStepValueList.clear();
    const int range = m_config.stepRange;
    for (int step = 0; step <= range; ++step)
        DataDefault::panelLightStepValueList.append(uchar(range > 0 ? step * 255 / range : 255));
}

HeadUnit &HeadUnit::current()
{
    HeadUnit *unit = currentUnit;
    if (!unit)
        qFatal("bench: a service of the head unit is called while there is no head unit");
    return *unit;
}

bool HeadUnit::exists()
{
    return currentUnit != nullptr;
}

void HeadUnit::observe(CallObserver observer)
{
    const std::lock_guard<std::mutex> guard(callOrder);
    m_observers.push_back(std::move(observer));
}

void HeadUnit::setBeforeCall(CallObserver hook)
{
    const std::lock_guard<std::mutex> guard(callOrder);
    m_beforeCall = std::move(hook);
}

void HeadUnit::report(const Call &call)
{
    std::unique_lock<std::mutex> lock(callOrder);
    if (m_beforeCall && call.kind == Call::Service) {
        const CallObserver hook = m_beforeCall;
        lock.unlock();
        hook(call);
        lock.lock();
    }
    for (const CallObserver &observer : m_observers)
        observer(call);
}

void HeadUnit::startAllModules()
{
    emit m_modules->allModuleStartupReady();
}

void HeadUnit::requestDeviceEvents()
{
    m_usb->requestDeviceEvents();
}

bool HeadUnit::plug(const QString &directory, QString *error)
{
    const QString path = QDir(directory).absolutePath();
    if (!QFileInfo(path).isDir()) {
        *error = tr("The stick %1 is not a folder; name one that exists.").arg(path);
        return false;
    }
    if (sticks().contains(path)) {
        *error = tr("The stick %1 is plugged already.").arg(path);
        return false;
    }
    report({calls::plugged, {path}, Call::Lifecycle});
    m_usb->mount(path);
    return true;
}

bool HeadUnit::unplug(const QString &directory, QString *error)
{
    const QString path = QDir(directory).absolutePath();
    if (!sticks().contains(path)) {
        *error = tr("The stick %1 is not plugged.").arg(path);
        return false;
    }
    report({calls::unplugged, {path}, Call::Lifecycle});
    m_usb->unmount(path);
    return true;
}

QStringList HeadUnit::sticks() const
{
    return m_usb->mountedDirectories();
}

bool HeadUnit::reportData(const QString &name)
{
    if (!m_modules->find(name))
        return false;
    report({calls::dataSeen, {name}, Call::Lifecycle});
    return m_modules->reportData(name);
}

} // namespace bench
