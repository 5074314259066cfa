#include "productionobject.h"

#include "groups.h"
#include "productionlog.h"

#include <datasavecontrol.h>

using namespace production;

namespace {

constexpr int powerSetMessage = 70;

} // namespace

bool ProductionObject::exeBtGroup(QSettings &settings)
{
    settings.beginGroup(bt::group);
    const int mode = settings.value(modeKey).toInt();
    const QVariant advPower = settings.value(bt::advPower);
    settings.endGroup();
    if (mode <= 0 || !advPower.isValid())
        return false;

    const int power = advPower.toInt();
    DataSaveControl::saveFactoryData(bt::advPower, QVariant(power), true);
    sendMessage(QStringLiteral("成功设置蓝牙发射功率为%1db").arg(power), powerSetMessage);
    WORKER_LOG() << "write:" << bt::advPower << power;
    return true;
}
