#include "moduleregistry.h"

#include "../headunit.h"

namespace bench {

QStringList interfaceModuleNames()
{
    return {canbusModuleName, mcuModuleName};
}

void CanbusModule::entryProductionTestMode(bool entry, int canId)
{
    HeadUnit::current().report({calls::canbusTestMode, {entry, canId}});
}

void McuModule::entryProductionMode(bool entry)
{
    HeadUnit::current().report({calls::mcuTestMode, {entry}});
}

ModuleRegistry::ModuleRegistry(const QStringList &leftOut)
{
    m_modules.insert(canbusModuleName, QSharedPointer<LoadedModule>::create(new CanbusModule));
    m_modules.insert(mcuModuleName, QSharedPointer<LoadedModule>::create(new McuModule));
    for (const QString &name : leftOut)
        m_modules.remove(name);
}

bool ModuleRegistry::reportData(const QString &name) const
{
    const auto module = find(name);
    return module && QMetaObject::invokeMethod(module->object.data(), "productionTestDataReady");
}

} // namespace bench

namespace tolappframework {

QObject *Module::moduleObject() const
{
    return static_cast<const bench::LoadedModule *>(this)->object.data();
}

QSharedPointer<ModuleManager> ModuleManager::self()
{
    return bench::HeadUnit::current().moduleRegistry();
}

QSharedPointer<Module> ModuleManager::findModule(const QString &name) const
{
    return static_cast<const bench::ModuleRegistry *>(this)->find(name);
}

} // namespace tolappframework
