#include "productionobject.h"

#include "groups.h"

using namespace production;

bool ProductionObject::exeCanbusGroup(QSettings &settings)
{
    settings.beginGroup(canbus::group);
    const int mode = settings.value(modeKey).toInt();
    const int id = settings.value(canbus::id).toInt();
    settings.endGroup();

    const bool entered = mode > 0;
    emit canbusEntryProductionTestMode(entered, id > 0 ? id : canbus::defaultId);
    return entered;
}
