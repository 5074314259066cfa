#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

namespace production {

/**
 * What a production file holds: full key ("Panel/size", or "size" in the general section) to value.
 *
 * A value is a QString, a QVariantList of QString for a text with commas, or bareValue() for a key
 * without "=". It is the map type that QSettings hands to a custom format.
 */
using SettingsMap = QMap<QString, QVariant>;

/**
 * Full key to the comment of its line, with its ";" or "#" and without trailing white space.
 *
 * The comment of a line that holds nothing else stands under the key that equals the section's
 * prefix ("Panel/", or the empty key in the general section).
 */
using KeyComments = QMap<QString, QString>;

/// The value of a key that stands in the file without "=".
inline QString bareValue()
{
    return QStringLiteral("{none}");
}

} // namespace production
