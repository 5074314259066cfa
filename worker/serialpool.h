#pragma once

#include <QStringList>

#include <functional>
#include <optional>

/**
 * The rules that choose a unit's serial identity from a pool; without platform or file, so that
 * tools apply the very same ones. Reentrant.
 */
namespace production {

/// What tells the two serial groups apart: a name and five message type codes.
struct SerialGroup
{
    QLatin1String name; ///< Of the group in the file and of the value in the unit's data.
    int written; ///< Taken by a unit that had none.
    int replaced; ///< Taken whatever the unit had.
    int alreadyStored; ///< Kept by a unit that had one.
    int beforeWrite; ///< About to be taken.
    int noneAvailable; ///< The pool has none for this unit.
};

extern const SerialGroup snSerialGroup; ///< The serial numbers.
extern const SerialGroup skSerialGroup; ///< The SK values.

/// What is done with a unit; any other positive mode counts but does nothing.
enum SerialMode {
    ProvisionOnce = 1, ///< Only a unit that has no value yet.
    ProvisionAlways = 2,
};

/// Asked before each pool entry; true stops the search, which then finds nothing.
using StopRequested = std::function<bool()>;

/// The allowed prefixes in the text of "startwith": parted by commas, not trimmed.
QStringList serialPrefixes(const QString &startWith);

/// Whether the key @p name of @p group ("SN" or "SK") is a pool entry and none of its settings.
bool isPoolEntry(const SerialGroup &group, QStringView name);

/// The pool entries among @p childKeys, all the keys of @p group.
QStringList serialPool(const SerialGroup &group, QStringList childKeys);

/// Whether a unit may take the pool entry @p entry as its serial number; rules as in chooseSn().
bool isEligibleSn(QStringView entry, const QStringList &prefixes, int length);

/// Whether a unit may take the pool entry @p entry as its SK value; rules as in chooseSk().
bool isEligibleSk(QStringView entry, int length);

/**
 * The serial number that the next unit takes: the smallest (by UTF-16 code units) that begins with
 * one of @p prefixes and, when @p length is above 0, has that many UTF-16 code units. Without
 * prefixes every entry is eligible, whatever its length.
 */
std::optional<QString> chooseSn(const QStringList &pool, const QStringList &prefixes, int length,
                                const StopRequested &stop);

/// The SK value that the next unit takes: the smallest, of @p length when that is above 0.
std::optional<QString> chooseSk(const QStringList &pool, int length, const StopRequested &stop);

} // namespace production
