#pragma once

#include "settingsmap.h"

class QIODevice;

namespace production {

/**
 * Writes @p map as the text of a production file to @p device, which is open for writing, with the
 * comments of its keys. Whatever readSettings() delivered comes back from it as the same keys,
 * values and comments.
 *
 * When it returns true on a file, the bytes have reached the disk: QSaveFile, which QSettings
 * writes through, does not notice when its last buffer cannot be written and would replace the
 * file by a shorter one. False means that a write or flush failed. Reentrant.
 */
bool writeSettings(QIODevice &device, const SettingsMap &map, const KeyComments &comments);

} // namespace production
