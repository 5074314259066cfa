#include "productionobject.h"

#include "groups.h"
#include "serialpool.h"

#include <utility>

using namespace production;

bool ProductionObject::exeSnGroup(QSettings &settings, QStringList &provisioned)
{
    settings.beginGroup(serial::snGroup);
    const int mode = settings.value(modeKey).toInt();
    const int length = settings.value(serial::length).toInt();
    const QStringList prefixes = serialPrefixes(settings.value(serial::startWith).toString());
    QStringList keys = mode > 0 ? settings.childKeys() : QStringList();
    settings.endGroup();
    if (mode <= 0)
        return false;

    const std::optional<QString> chosen =
        chooseSn(serialPool(snSerialGroup, std::move(keys)), prefixes, length,
                 [this] { return isNeedLeave(); });
    if (!needLeave)
        provision(snSerialGroup, mode, chosen, settings, provisioned);
    return true;
}
