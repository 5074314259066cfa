#pragma once

#include "settingsmap.h"

class QIODevice;

/**
 * The settings format as one would first write it: line by line through a text stream, without
 * protection of what does not come back bare, but for commas and comment characters. It is the
 * yardstick of the benchmarks and what the tests compare reader and writer with.
 */
namespace plainformat {

bool read(QIODevice &device, production::SettingsMap &map, production::KeyComments &comments);

bool write(QIODevice &device, const production::SettingsMap &map,
           const production::KeyComments &comments);

} // namespace plainformat
