#include "productionobject.h"

#include "groups.h"

using namespace production;

bool ProductionObject::exeDirectionKeyGroup(QSettings &settings)
{
    settings.beginGroup(directionkey::group);
    const int mode = settings.value(modeKey).toInt();
    settings.endGroup();

    const bool entered = mode > 0;
    emit directionKeyEntryProductionTestMode(entered);
    return entered;
}
