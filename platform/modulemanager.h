#pragma once

#include <QObject>
#include <QSharedPointer>

namespace tolappframework {

/**
 * One loaded module of the head unit's application.
 *
 * The host owns it; the production module only holds a shared pointer while it connects.
 */
class Module
{
public:
    /**
     * The object that carries the module's signals and slots; never null. UI thread.
     *
     * The production module connects by signature:
     *  - "canbus": slot `entryProductionTestMode(bool,int)`, signal `productionTestDataReady()`
     *  - "mcu": slot `entryProductionMode(bool)`, signal `productionTestDataReady()`
     */
    QObject *moduleObject() const;
};

/**
 * The application's module framework: tells when every module has started and finds modules.
 *
 * Lives in the UI thread and outlives the production module.
 */
class ModuleManager : public QObject
{
    Q_OBJECT

public:
    /// The application's one manager; never null. UI thread.
    static QSharedPointer<ModuleManager> self();

    /// The loaded module called @p name (case-sensitive), null when there is none. UI thread.
    QSharedPointer<Module> findModule(const QString &name) const;

signals:
    /// Every module of the application has started; emitted once, in the UI thread.
    void allModuleStartupReady();
};

} // namespace tolappframework
