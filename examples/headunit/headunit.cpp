// A head unit's implementation of the services that the module calls: as little as one can do with.
#include "headunit.h"

#include <constsetting.h>
#include <datadefault.h>
#include <datasavecontrol.h>
#include <modulemanager.h>
#include <screenlockctrl.h>
#include <tipdialog.h>
#include <usbcontrol.h>

#include <cstdio>

using tolappframework::Module;
using tolappframework::ModuleManager;

HeadUnit &headUnit()
{
    static HeadUnit unit;
    return unit;
}

void reportModulesStarted()
{
    emit ModuleManager::self()->allModuleStartupReady();
}

void unplugAll()
{
    // The list no longer holds what is told to be gone.
    QStringList gone;
    {
        const std::lock_guard<std::mutex> lock(headUnit().mutex);
        gone.swap(headUnit().sticks);
    }
    for (const QString &directory : qAsConst(gone))
        emit UsbControl::getInstance()->deviceUnmounted(MediaTypeUsbStorage, directory);
}

QSharedPointer<ModuleManager> ModuleManager::self()
{
    static const auto manager = QSharedPointer<ModuleManager>::create();
    return manager;
}

QSharedPointer<Module> ModuleManager::findModule(const QString & /*name*/) const
{
    return {};
}

QObject *Module::moduleObject() const
{
    return nullptr; // No module is ever found.
}

UsbControl *UsbControl::getInstance()
{
    static UsbControl usb;
    return &usb;
}

bool UsbControl::isDeviceEventRequested() const
{
    return true;
}

QStringList UsbControl::getMountDeviceByType(_MediaType type) const
{
    const std::lock_guard<std::mutex> lock(headUnit().mutex);
    return type == MediaTypeUsbStorage ? headUnit().sticks : QStringList();
}

bool DataSaveControl::productionMode = false;

bool DataSaveControl::saveFactoryData(const QString & /*key*/, const QVariant & /*value*/,
                                      bool /*flag*/)
{
    return true;
}

bool DataSaveControl::backupRuntimeData(const QString & /*key*/, const QVariant & /*value*/,
                                        bool /*flag*/)
{
    return true;
}

bool DataSaveControl::saveProductionData(const QString &key, const QVariant &value)
{
    const std::lock_guard<std::mutex> lock(headUnit().mutex);
    headUnit().productionData.insert(key, value);
    return true;
}

bool DataSaveControl::saveData(const QList<QVariant> & /*data*/, const QString & /*name*/,
                               bool /*flag*/)
{
    return true;
}

QVariant DataSaveControl::readProductionData(const QString &key, const QVariant &defaultValue)
{
    const std::lock_guard<std::mutex> lock(headUnit().mutex);
    return headUnit().productionData.value(key, defaultValue);
}

QVariant DataSaveControl::readUserData(const QString & /*key*/, const QVariant &defaultValue)
{
    return defaultValue;
}

QString DataSaveControl::getPannelDisplaySize()
{
    return {};
}

unsigned char DataDefault::panelLightStepRange = 0;
QList<unsigned char> DataDefault::panelLightStepValueList;
qint32 ConstSetting::clientModelId = 0;

void TipDialog::showMessage(const QString &text, int type, bool /*flag*/)
{
    std::printf("%d %s\n", type, qUtf8Printable(text));
    headUnit().onPopUp(type);
}

ScreenLockCtrl *ScreenLockCtrl::getInstance()
{
    static ScreenLockCtrl screen;
    return &screen;
}

void ScreenLockCtrl::setUserLevel(const int & /*level*/)
{
}

void ScreenLockCtrl::setIllLevel(const int & /*level*/)
{
}

void ScreenLockCtrl::resumeScreemLight(bool /*resume*/)
{
}
