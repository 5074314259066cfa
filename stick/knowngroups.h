#pragma once

#include <QLatin1String>
#include <QString>
#include <QStringView>

#include <vector>

/// The groups and keys that the unit knows, and what it makes of their values.
namespace stick {

enum class ValueKind {
    Mode,
    Number, ///< Any whole number.
    Level, ///< 0 to 255; the unit keeps the low 8 bits.
    Dimension, ///< Above 0; others are not applied.
    CanIndex, ///< Above 0; others are replaced.
    Length, ///< 0 for any.
    Text,
    DisplaySize, ///< A text that is stored even when it is blank.
    Steps, ///< A list of levels.
    Prefixes,
};

struct KnownKey
{
    QLatin1String name;
    ValueKind kind;
};

struct KnownGroup
{
    QLatin1String name;
    std::vector<KnownKey> keys;
    bool takesOtherKeys; ///< Keys beside these mean something too.

    const KnownKey *find(QStringView name) const;
};

/// In the order in which a pass carries them out.
const std::vector<KnownGroup> &knownGroups();
/// Null for a group that the unit ignores.
const KnownGroup *findGroup(QStringView name);

/// Whether @p word looks like a slip of the pen for @p known; false when they are equal.
bool isNearMiss(QStringView word, QLatin1String known);

/// The known group, or key of @p group, that was probably meant by @p name; empty when none is.
QLatin1String nearestGroup(QStringView name);
QLatin1String nearestKey(const KnownGroup &group, QStringView name);

} // namespace stick
