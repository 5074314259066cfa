#pragma once

#include <QVariant>

class QSettings;

/// The physical screen size for phone projection, out of the group "Panel". Worker thread.
namespace production {

/// The screen's, as they stand in the file.
struct PhysicalSizes
{
    QVariant width; ///< Invalid when no key of the group matched.
    QVariant height; ///< As the width is.
};

/**
 * Finds width and height among the keys of the group that @p settings has entered: the plain key
 * or the one for @p displaySize ("physical_w(10.1)"), whichever is listed first. Only plain keys
 * match an empty display size.
 */
PhysicalSizes collectPhysicalSizes(const QSettings &settings, const QString &displaySize);

/**
 * Stores every source value above 0 under the four keys of its dimension, the scanned ones last,
 * so that they remain. Returns how many of the four sources were applied.
 */
int applyPhysicalSizes(const QVariant &hicarWidth, const QVariant &hicarHeight,
                       const PhysicalSizes &scanned);

/// Stores @p width under the four width keys, with a log line for the first @p loggedKeys.
void savePhysicalWidth(int width, int loggedKeys = 0);

/// Stores @p height under the four height keys, with a log line for the first @p loggedKeys.
void savePhysicalHeight(int height, int loggedKeys = 0);

} // namespace production
