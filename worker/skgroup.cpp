#include "productionobject.h"

#include "groups.h"
#include "serialpool.h"

#include <utility>

using namespace production;

bool ProductionObject::exeSkGroup(QSettings &settings, QStringList &provisioned)
{
    settings.beginGroup(serial::skGroup);
    const int mode = settings.value(modeKey).toInt();
    const int length = settings.value(serial::length).toInt();
    QStringList keys = mode > 0 ? settings.childKeys() : QStringList();
    settings.endGroup();
    if (mode <= 0)
        return false;

    const std::optional<QString> chosen = chooseSk(serialPool(skSerialGroup, std::move(keys)),
                                                   length, [this] { return isNeedLeave(); });
    if (!needLeave)
        provision(skSerialGroup, mode, chosen, settings, provisioned);
    return true;
}
