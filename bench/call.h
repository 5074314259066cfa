#pragma once

#include <QLatin1String>
#include <QString>
#include <QVariant>

#include <functional>

namespace bench {

/// One thing that happened on the bench, as its observers and the journal see it.
struct Call
{
    enum Kind {
        Service, ///< the module called a service of the head unit
        Lifecycle, ///< a stick came or went, an interface saw data, or the module ended
    };

    QString name; ///< one of the names below
    QVariantList args; ///< text, whole number, bool, or a list of these
    Kind kind = Service;
};

using CallObserver = std::function<void(const Call &)>;

namespace calls {

inline const QLatin1String showMessage{"TipDialog::showMessage"};
inline const QLatin1String saveFactoryData{"DataSaveControl::saveFactoryData"};
inline const QLatin1String backupRuntimeData{"DataSaveControl::backupRuntimeData"};
inline const QLatin1String saveProductionData{"DataSaveControl::saveProductionData"};
inline const QLatin1String saveData{"DataSaveControl::saveData"};
inline const QLatin1String setUserLevel{"ScreenLockCtrl::setUserLevel"};
inline const QLatin1String setIllLevel{"ScreenLockCtrl::setIllLevel"};
inline const QLatin1String resumeScreenLight{"ScreenLockCtrl::resumeScreemLight"};
inline const QLatin1String canbusTestMode{"canbus::entryProductionTestMode"};
inline const QLatin1String mcuTestMode{"mcu::entryProductionMode"};
inline const QLatin1String system{"system"};

inline const QLatin1String plugged{"plugged"};
inline const QLatin1String unplugged{"unplugged"};
inline const QLatin1String dataSeen{"dataSeen"};
inline const QLatin1String ended{"ended"};

} // namespace calls

} // namespace bench
