#pragma once

#include "settingsmap.h"

class QIODevice;

namespace production {

/**
 * The most bytes of a file, and the most characters of its keys with their sections. More than any
 * production file has, and little enough for a unit's memory: a larger file, or one whose sections
 * repeat a huge name before many keys, would end the host application.
 */
constexpr qint64 mostCharacters = qint64(256) * 1024 * 1024;

/**
 * The text of a production file: UTF-8, or what its byte-order mark says (which is dropped).
 *
 * Bytes that are no text in that encoding become U+FFFD, except that a character which the end of
 * @p bytes cuts off is dropped; @p cutOff tells of it.
 */
QString decodeText(const QByteArray &bytes, bool *cutOff = nullptr);

/**
 * Reads the whole of @p device, which is open for reading, into @p map, and the comments of its
 * lines into @p comments, which is emptied first.
 *
 * Returns false when a line makes the file unreadable (a section header without "]", a key line
 * that ends in a backslash); map and comments then still hold every line. Returns false, too, when
 * the device does not deliver all its bytes, and when the file is too large for a unit (see
 * mostCharacters). Reentrant.
 */
bool readSettings(QIODevice &device, SettingsMap &map, KeyComments &comments);

} // namespace production
