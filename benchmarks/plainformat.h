#pragma once

#include "settingsmap.h"

class QIODevice;

/**
 * The format's reader and writer as one would first write them, with the same results on the
 * generated files: the yardsticks for the real ones.
 */
namespace plainformat {

bool read(QIODevice &device, production::SettingsMap &map, production::KeyComments &comments);

bool write(QIODevice &device, const production::SettingsMap &map,
           const production::KeyComments &comments);

} // namespace plainformat
