#pragma once

#include <QLatin1String>

/// The groups of a production file and their keys, as they stand in the file (case-sensitive).
namespace production {

/// Every group has it; 0 or less, or no number, switches the group off.
inline const QLatin1String modeKey("mode");

namespace factorysettings {
inline const QLatin1String group("FactorySettings");
}

namespace panel {
inline const QLatin1String group("Panel");
inline const QLatin1String size("size");
inline const QLatin1String vcom("vcom");
inline const QLatin1String avdd("avdd");
inline const QLatin1String backlightSteps("backlight_steps");
inline const QLatin1String backlightDay("backlight_day");
inline const QLatin1String backlightNight("backlight_night");
inline const QLatin1String driver("driver");
inline const QLatin1String hicarPhysicalWidth("hicar_physical_w");
inline const QLatin1String hicarPhysicalHeight("hicar_physical_h");
/// These two also begin the keys that hold for one display size: "physical_w(10.1)".
inline const QLatin1String physicalWidth("physical_w");
inline const QLatin1String physicalHeight("physical_h");
} // namespace panel

// The serial pools; their groups are also the names under which the unit stores the value.
namespace serial {
inline const QLatin1String snGroup("SN");
inline const QLatin1String skGroup("SK");
inline const QLatin1String length("length");
inline const QLatin1String startWith("startwith"); ///< SN only; in SK it is a pool entry.
} // namespace serial

namespace canbus {
inline const QLatin1String group("CANBUS");
inline const QLatin1String id("id");
constexpr int defaultId = 28;
} // namespace canbus

namespace directionkey {
inline const QLatin1String group("DirectionKey");
}

namespace bt {
inline const QLatin1String group("BT");
inline const QLatin1String advPower("adv_power");
} // namespace bt

} // namespace production
