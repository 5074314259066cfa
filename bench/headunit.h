#pragma once

#include "call.h"
#include "unitdata.h"

#include <QCoreApplication>
#include <QSharedPointer>
#include <QStringList>

#include <memory>
#include <mutex>
#include <vector>

class ScreenLockCtrl;

namespace bench {

class ModuleRegistry;
class UsbService;

/// What a bench unit is made of.
struct HeadUnitConfig
{
    QString unitDirectory; ///< the unit's data; created when missing
    QVector<UnitValue> presets; ///< stored before the module starts
    QString displaySize; ///< the panel's size in inches as text; may be empty
    quint8 stepRange = 10; ///< highest backlight step
    qint32 modelId = 0;
    QStringList modulesLeftOut; ///< of "canbus" and "mcu"
    bool lateUsb = false; ///< device events are only requested by requestDeviceEvents()
};

/**
 * The stand-in head unit: brings the services of platform/ to life for the module.
 *
 * At most one exists at a time; it must outlive the module's control object and its worker. Lives
 * in the main thread, where every operation is called unless said otherwise. The services answer
 * in whichever thread the module calls them.
 */
class HeadUnit
{
    Q_DECLARE_TR_FUNCTIONS(HeadUnit)
    Q_DISABLE_COPY(HeadUnit)

public:
    /// A unit, or null with a sentence for the user in @p error when its data cannot be used.
    static std::unique_ptr<HeadUnit> create(const HeadUnitConfig &config, QString *error);
    ~HeadUnit();

    /// The one unit; it is fatal to ask for it when there is none. Any thread.
    static HeadUnit &current();
    static bool exists();

    /**
     * From now on @p observer is told of every call, in the thread of the call and in one order
     * for all threads. It must be quick: it must not call the unit, nor wait for another thread.
     */
    void observe(CallObserver observer);

    /**
     * @p hook runs before a call of the module is reported and carried out, in the thread of the
     * call, and may take as long as it likes: this is the place to pull a stick at one certain
     * step. Replaces the hook before it.
     */
    void setBeforeCall(CallObserver hook);

    /// Every module of the application has started.
    void startAllModules();

    /// The USB service requests its device events, if it has not done so yet.
    void requestDeviceEvents();

    /**
     * Mounts, or unmounts, the folder @p directory as a USB storage device. Returns false, with a
     * sentence for the user, for a folder that does not exist or is (not) mounted already.
     */
    bool plug(const QString &directory, QString *error);
    bool unplug(const QString &directory, QString *error);

    /// Mount directories in the order in which the module gets them. Any thread.
    QStringList sticks() const;

    /// Lets the module @p name ("canbus", "mcu") see data on its interface; false when left out.
    bool reportData(const QString &name);

    /// Tells the observers. Any thread.
    void report(const Call &call);

    UnitData &data() { return m_data; }
    QString displaySize() const { return m_config.displaySize; }

    // What platform/ hands to the module.
    QSharedPointer<ModuleRegistry> moduleRegistry() const { return m_modules; }
    UsbService *usbService() const { return m_usb.get(); }
    ScreenLockCtrl *screen() const { return m_screen.get(); }

private:
    explicit HeadUnit(const HeadUnitConfig &config);
    void setPlatformDefaults() const;

    const HeadUnitConfig m_config;
    UnitData m_data;
    QSharedPointer<ModuleRegistry> m_modules;
    std::unique_ptr<UsbService> m_usb;
    std::unique_ptr<ScreenLockCtrl> m_screen;
    std::vector<CallObserver>
        m_observers; ///< protected, like m_beforeCall, by one process-wide mutex
    CallObserver m_beforeCall;
};

} // namespace bench
