#pragma once

#include "settingsmap.h"

/**
 * The settings format in the plainest way, line by line through a text stream and without any
 * protection of what does not come back bare: what reader and writer are compared with.
 */
namespace plainformat {

bool read(const QByteArray &bytes, production::SettingsMap &map, production::KeyComments &comments);
QByteArray write(const production::SettingsMap &map, const production::KeyComments &comments);

} // namespace plainformat
