#include "serialpool.h"

#include "groups.h"

#include <algorithm>

namespace production {

const SerialGroup snSerialGroup = {serial::snGroup, 10, 11, 12, 13, 15};
const SerialGroup skSerialGroup = {serial::skGroup, 20, 21, 22, 23, 24};

namespace {

template <typename Eligible>
std::optional<QString> smallest(const QStringList &pool, const StopRequested &stop,
                                Eligible eligible)
{
    const QString *found = nullptr;
    for (const QString &entry : pool) {
        if (stop())
            return std::nullopt;
        if ((found == nullptr || entry < *found) && eligible(entry))
            found = &entry;
    }
    return found != nullptr ? std::optional(*found) : std::nullopt;
}

} // namespace

QStringList serialPrefixes(const QString &startWith)
{
    return startWith.split(QLatin1Char(','), Qt::SkipEmptyParts);
}

bool isPoolEntry(const SerialGroup &group, QStringView name)
{
    // Lines that hold only a comment leave an empty name among the keys.
    return !name.isEmpty() && name != modeKey && name != serial::length
        && (name != serial::startWith || group.name != serial::snGroup);
}

QStringList serialPool(const SerialGroup &group, QStringList childKeys)
{
    const auto isSetting = [&](const QString &key) { return !isPoolEntry(group, key); };
    childKeys.erase(std::remove_if(childKeys.begin(), childKeys.end(), isSetting), childKeys.end());
    return childKeys;
}

bool isEligibleSn(QStringView entry, const QStringList &prefixes, int length)
{
    if (prefixes.isEmpty())
        return true;
    const bool allowed =
        std::any_of(prefixes.cbegin(), prefixes.cend(),
                    [&](const QString &prefix) { return entry.startsWith(prefix); });
    return allowed && (length <= 0 || entry.size() == length);
}

bool isEligibleSk(QStringView entry, int length)
{
    return length <= 0 || entry.size() == length;
}

std::optional<QString> chooseSn(const QStringList &pool, const QStringList &prefixes, int length,
                                const StopRequested &stop)
{
    return smallest(pool, stop,
                    [&](const QString &entry) { return isEligibleSn(entry, prefixes, length); });
}

std::optional<QString> chooseSk(const QStringList &pool, int length, const StopRequested &stop)
{
    return smallest(pool, stop, [&](const QString &entry) { return isEligibleSk(entry, length); });
}

} // namespace production
