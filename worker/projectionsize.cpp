#include "projectionsize.h"

#include "groups.h"
#include "productionlog.h"

#include <datasavecontrol.h>

#include <QSettings>

#include <array>

namespace production {

namespace {

/// One key for each projection variant, in the order of writing.
using DimensionKeys = std::array<QLatin1String, 4>;

const DimensionKeys widthKeys = {
    QLatin1String("HiCarWidthPhysical"), QLatin1String("CarplayWidthPhysical"),
    QLatin1String("CarplayAltWidthPhysical"), QLatin1String("CarplayAlt2WidthPhysical")};
const DimensionKeys heightKeys = {
    QLatin1String("HiCarHeightPhysical"), QLatin1String("CarplayHeightPhysical"),
    QLatin1String("CarplayAltHeightPhysical"), QLatin1String("CarplayAlt2HeightPhysical")};

/// The HiCar sources log the first two keys that they write.
constexpr int hicarLoggedKeys = 2;

void saveDimension(const DimensionKeys &keys, int value, int loggedKeys)
{
    for (const QLatin1String &key : keys) {
        DataSaveControl::saveFactoryData(key, value, true);
        if (loggedKeys-- > 0)
            WORKER_LOG() << "write:" << key << value;
    }
}

/// Whether @p key is @p plainKey, or its form for @p displaySize.
bool matches(const QString &key, QLatin1String plainKey, const QString &displaySize)
{
    if (key == plainKey)
        return true;
    const int open = key.indexOf(QLatin1Char('('));
    const int close = key.indexOf(QLatin1Char(')'));
    return !displaySize.isEmpty() && open > 0 && open < close
        && key.midRef(open + 1, close - open - 1) == displaySize;
}

} // namespace

PhysicalSizes collectPhysicalSizes(const QSettings &settings, const QString &displaySize)
{
    PhysicalSizes sizes;
    const auto take = [&](const QString &key, QLatin1String plainKey, QVariant &size) {
        if (!size.isValid() && key.startsWith(plainKey) && matches(key, plainKey, displaySize))
            size = settings.value(key);
    };
    const QStringList keys = settings.childKeys();
    for (const QString &key : keys) {
        take(key, panel::physicalWidth, sizes.width);
        take(key, panel::physicalHeight, sizes.height);
    }
    return sizes;
}

void savePhysicalWidth(int width, int loggedKeys)
{
    saveDimension(widthKeys, width, loggedKeys);
}

void savePhysicalHeight(int height, int loggedKeys)
{
    saveDimension(heightKeys, height, loggedKeys);
}

int applyPhysicalSizes(const QVariant &hicarWidth, const QVariant &hicarHeight,
                       const PhysicalSizes &scanned)
{
    int applied = 0;
    if (const int width = hicarWidth.toInt(); width > 0) {
        savePhysicalWidth(width, hicarLoggedKeys);
        ++applied;
    }
    if (const int height = hicarHeight.toInt(); height > 0) {
        savePhysicalHeight(height, hicarLoggedKeys);
        ++applied;
    }
    if (const int width = scanned.width.toInt(); width > 0) {
        savePhysicalWidth(width);
        WORKER_LOG() << "write: physical width" << width;
        ++applied;
    }
    if (const int height = scanned.height.toInt(); height > 0) {
        savePhysicalHeight(height);
        WORKER_LOG() << "write: physical height" << height;
        ++applied;
    }
    return applied;
}

} // namespace production
