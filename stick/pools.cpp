#include "pools.h"

#include <groups.h>

#include <algorithm>

using namespace production;

namespace stick {

namespace {

QVariant valueOf(const ScannedFile &file, const SerialGroup &group, QLatin1String key)
{
    const Setting *const setting = file.find(group.name + QLatin1Char('/') + key);
    return setting != nullptr ? setting->value : QVariant();
}

bool nameLess(const EntryLine &a, const EntryLine &b)
{
    return a.name < b.name;
}

/// Sorts by name and moves all lines but the first of each name to @p repetitions.
void sortUnique(std::vector<EntryLine> &entries, std::vector<EntryLine> &repetitions)
{
    // A rewritten file is sorted already.
    if (!std::is_sorted(entries.begin(), entries.end(), nameLess))
        std::stable_sort(entries.begin(), entries.end(), nameLess);
    const auto sameName = [](const EntryLine &a, const EntryLine &b) { return a.name == b.name; };
    auto kept = std::adjacent_find(entries.begin(), entries.end(), sameName);
    for (auto it = kept; it != entries.end(); ++it) {
        if (it == kept)
            continue;
        if (sameName(*kept, *it))
            repetitions.push_back(*it);
        else
            *++kept = *it;
    }
    if (kept != entries.end())
        entries.erase(kept + 1, entries.end());
    std::sort(repetitions.begin(), repetitions.end(),
              [](const EntryLine &a, const EntryLine &b) { return a.line < b.line; });
}

/// Shares the text of the file, as a pool of its size in own texts would cost more than the rest.
QStringList sharedNames(const std::vector<EntryLine> &entries)
{
    QStringList names;
    names.reserve(int(entries.size()));
    for (const EntryLine &entry : entries)
        names.append(QString::fromRawData(entry.name.data(), int(entry.name.size())));
    return names;
}

} // namespace

Pool::Pool(const ScannedFile &file, int groupIndex)
    : entries(file.entries[size_t(groupIndex)])
    , m_groupIndex(groupIndex)
    , m_readable(file.isReadable())
{
    mode = valueOf(file, group(), modeKey).toInt();
    length = valueOf(file, group(), serial::length).toInt();
    if (groupIndex == SnIndex)
        prefixes = serialPrefixes(valueOf(file, group(), serial::startWith).toString());
    sortUnique(entries, repetitions);
    usableCount = int(std::count_if(entries.cbegin(), entries.cend(),
                                    [this](const EntryLine &entry) { return takes(entry.name); }));
}

bool Pool::provisions() const
{
    return mode == ProvisionOnce || mode == ProvisionAlways;
}

bool Pool::takes(QStringView entry) const
{
    return m_groupIndex == SnIndex ? isEligibleSn(entry, prefixes, length)
                                   : isEligibleSk(entry, length);
}

std::optional<QString> Pool::next() const
{
    if (!isOpen())
        return std::nullopt;
    const QStringList pool = sharedNames(entries);
    const StopRequested never = [] { return false; };
    std::optional<QString> chosen = m_groupIndex == SnIndex
        ? chooseSn(pool, prefixes, length, never)
        : chooseSk(pool, length, never);
    if (chosen)
        chosen->detach();
    return chosen;
}

const EntryLine *Pool::find(QStringView entry) const
{
    const auto it = std::lower_bound(
        entries.cbegin(), entries.cend(), entry,
        [](const EntryLine &candidate, QStringView name) { return candidate.name < name; });
    return it != entries.cend() && it->name == entry ? &*it : nullptr;
}

Pools poolsOf(const ScannedFile &file)
{
    return {Pool(file, SnIndex), Pool(file, SkIndex)};
}

} // namespace stick
