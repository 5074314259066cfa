#include "productionobject.h"

#include "groups.h"
#include "productionlog.h"
#include "projectionsize.h"

#include <datadefault.h>
#include <datasavecontrol.h>

using namespace production;

namespace {

constexpr int panelSetMessage = 41;

/// The group's values as they stand in the file; invalid for a key that it does not have.
struct PanelValues
{
    QVariant size;
    QVariant vcom;
    QVariant avdd;
    QVariant backlightSteps;
    QVariant backlightDay;
    QVariant backlightNight;
    QVariant driver;
    QVariant hicarPhysicalWidth;
    QVariant hicarPhysicalHeight;
    PhysicalSizes physicalSizes;
};

/// Reads every key of the entered group; the one place where a key of the panel is named.
PanelValues readPanel(const QSettings &settings)
{
    PanelValues values;
    values.size = settings.value(panel::size);
    values.vcom = settings.value(panel::vcom);
    values.avdd = settings.value(panel::avdd);
    values.backlightSteps = settings.value(panel::backlightSteps);
    values.backlightDay = settings.value(panel::backlightDay);
    values.backlightNight = settings.value(panel::backlightNight);
    values.driver = settings.value(panel::driver);
    values.hicarPhysicalWidth = settings.value(panel::hicarPhysicalWidth);
    values.hicarPhysicalHeight = settings.value(panel::hicarPhysicalHeight);

    QString displaySize = DataSaveControl::getPannelDisplaySize();
    const QString size = values.size.toString().simplified();
    if (!size.isEmpty()) {
        displaySize = size;
        values.size = size;
    }
    values.physicalSizes = collectPhysicalSizes(settings, displaySize);
    return values;
}

void storeRuntimeAndFactoryData(const QString &key, const QVariant &value)
{
    DataSaveControl::backupRuntimeData(key, value, true);
    DataSaveControl::saveFactoryData(key, value, true);
}

void applyDisplaySize(const QVariant &size)
{
    if (size.isValid())
        DataSaveControl::saveFactoryData(QStringLiteral("DisplaySize"), size.toString(), true);
}

/// One of the two panel drive settings. Returns whether it was applied, as the items below do.
bool applyDuty(const QString &key, const QVariant &duty)
{
    if (!duty.isValid())
        return false;
    storeRuntimeAndFactoryData(key, duty.toInt());
    WORKER_LOG() << "write:" << key << duty.toInt();
    return true;
}

/// Loads the touch controller's setting that goes with a driver; others need none.
void setTouchController(const QString &driver)
{
    // Fixed commands: no text of the file may reach the shell.
    if (driver == QLatin1String("quillvarent_9inc.ko"))
        runCommand("echo 9 > /proc/sys/touch/touch_inc");
    else if (driver == QLatin1String("quillvarent_10inc.ko"))
        runCommand("echo 10 > /proc/sys/touch/touch_inc");
}

bool applyTouchDriver(const QVariant &value)
{
    const QString driver = value.toString().simplified();
    if (driver.isEmpty())
        return false;
    const QString key = QStringLiteral("defaultTouchDriver");
    storeRuntimeAndFactoryData(key, driver);
    WORKER_LOG() << "write:" << key << driver;
    setTouchController(driver);
    return true;
}

QString confirmation(const QVariant &size)
{
    if (size.isValid())
        return QStringLiteral("检测到屏幕背光设置，%1寸屏背光设置成功，请核对。")
            .arg(size.toString());
    return QStringLiteral("检测到屏幕背光设置，屏背光设置成功，请核对。");
}

} // namespace

bool ProductionObject::exePanelGroup(QSettings &settings)
{
    settings.beginGroup(panel::group);
    if (settings.value(modeKey).toInt() <= 0) {
        settings.endGroup();
        return false;
    }
    const PanelValues values = readPanel(settings);
    settings.endGroup();

    applyDisplaySize(values.size);
    int applied = 0;
    applied += applyDuty(QStringLiteral("vcom_duty"), values.vcom);
    applied += applyDuty(QStringLiteral("avdd_duty"), values.avdd);
    applied += applyBacklightSteps(values.backlightSteps);
    applied += applyDayLevel(values.backlightDay);
    applied += applyNightLevel(values.backlightNight);
    applied += applyTouchDriver(values.driver);
    applied += applyPhysicalSizes(values.hicarPhysicalWidth, values.hicarPhysicalHeight,
                                  values.physicalSizes);

    if (applied > 0)
        sendMessage(confirmation(values.size), panelSetMessage);
    return true;
}

/// Takes a table of exactly the platform's number of steps; any other is ignored as a whole.
bool ProductionObject::applyBacklightSteps(const QVariant &steps)
{
    const QStringList entries = steps.toStringList();
    if (entries.size() != int(DataDefault::panelLightStepRange) + 1)
        return false;

    QStringList stored;
    stored.reserve(entries.size());
    DataDefault::panelLightStepValueList.clear();
    for (const QString &entry : entries) {
        const auto value = static_cast<unsigned char>(entry.toUInt(nullptr, 10));
        DataDefault::panelLightStepValueList.append(value);
        stored.append(QString::number(value, 10));
    }
    const QString key = QStringLiteral("PanelLightStepValueList");
    DataSaveControl::saveFactoryData(key, stored, true);
    emit lightStepRangeChanged();
    WORKER_LOG() << "write:" << key << stored;
    return true;
}

bool ProductionObject::applyDayLevel(const QVariant &level)
{
    if (!level.isValid())
        return false;
    emit userLightLevelChanged(static_cast<unsigned char>(level.toInt()));
    return true;
}

bool ProductionObject::applyNightLevel(const QVariant &level)
{
    if (!level.isValid())
        return false;
    emit illLightLevelChanged(static_cast<unsigned char>(level.toInt()));
    return true;
}
