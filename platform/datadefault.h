#pragma once

#include <QList>

/**
 * The platform's backlight defaults.
 *
 * Read and written in the module's worker thread while a pass runs; the host reads the list again
 * when the module calls ScreenLockCtrl::resumeScreemLight(), after it has been replaced.
 */
class DataDefault
{
public:
    /// Highest backlight step: a step table holds one value more than this.
    static unsigned char panelLightStepRange;

    /// The backlight value (0 to 255) of each step.
    static QList<unsigned char> panelLightStepValueList;
};
