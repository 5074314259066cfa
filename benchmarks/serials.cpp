#include "serials.h"

#include "groups.h"
#include "serialpool.h"

#include <utility>

using namespace production;

std::optional<QString> chooseSerial(QSettings &settings)
{
    settings.beginGroup(serial::snGroup);
    const int length = settings.value(serial::length).toInt();
    const QStringList prefixes = serialPrefixes(settings.value(serial::startWith).toString());
    QStringList keys = settings.childKeys();
    settings.endGroup();
    return chooseSn(serialPool(snSerialGroup, std::move(keys)), prefixes, length,
                    [] { return false; });
}
