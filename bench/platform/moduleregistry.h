#pragma once

#include <modulemanager.h>

#include <QMap>
#include <QStringList>

namespace bench {

// The interface modules that the production module asks for test modes.
inline const QLatin1String canbusModuleName{"canbus"};
inline const QLatin1String mcuModuleName{"mcu"};
QStringList interfaceModuleNames();

/// The "canbus" module: reports the requests it gets. Main thread.
class CanbusModule : public QObject
{
    Q_OBJECT

signals:
    /// Data was seen on the tested interface.
    void productionTestDataReady();

public slots:
    void entryProductionTestMode(bool entry, int canId);
};

/// The "mcu" module, which serves the direction keys. Main thread.
class McuModule : public QObject
{
    Q_OBJECT

signals:
    /// Data was seen on the tested interface.
    void productionTestDataReady();

public slots:
    void entryProductionMode(bool entry);
};

/// One loaded module of the bench; every tolappframework::Module is one of these.
class LoadedModule : public tolappframework::Module
{
public:
    explicit LoadedModule(QObject *object)
        : object(object)
    {
    }

    const QScopedPointer<QObject> object;
};

/**
 * The bench's module framework. Lives in the main thread and belongs to the head unit.
 *
 * Adds what ModuleManager's declaration leaves to the implementation; the bench's one
 * ModuleManager is one of these.
 */
class ModuleRegistry : public tolappframework::ModuleManager
{
public:
    explicit ModuleRegistry(const QStringList &leftOut);

    QSharedPointer<LoadedModule> find(const QString &name) const { return m_modules.value(name); }

    /// Lets the module @p name see data on its interface; false when there is no such module.
    bool reportData(const QString &name) const;

private:
    QMap<QString, QSharedPointer<LoadedModule>> m_modules;
};

} // namespace bench
