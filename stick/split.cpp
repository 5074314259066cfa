#include "split.h"

#include "texts.h"

using namespace production;

namespace stick {

namespace {

/// Full keys of a pool's entries.
struct PoolKeys
{
    QStringList usable;
    QStringList others; ///< Those that no unit takes.

    explicit PoolKeys(const Pool &pool)
    {
        const QString prefix = pool.group().name + QLatin1Char('/');
        for (const EntryLine &entry : pool.entries)
            (pool.takes(entry.name) ? usable : others).append(prefix + entry.name.toString());
    }
};

/// Moves the share of file @p index of @p count from @p all to @p target.
void addShare(const SettingsMap &all, const QStringList &keys, int index, int count,
              SettingsMap &target)
{
    const auto bound = [&](int share) { return int(qint64(keys.size()) * share / count); };
    for (int i = bound(index); i < bound(index + 1); ++i)
        target.insert(keys[i], all.value(keys[i]));
}

} // namespace

std::optional<std::vector<SettingsMap>> splitPools(const SettingsMap &map, const Pools &pools,
                                                   int count, QString &error)
{
    SettingsMap common = map;
    std::vector<PoolKeys> dealt;
    for (const Pool &pool : pools) {
        dealt.emplace_back(pool);
        if (!pool.entries.empty() && pool.usableCount < count) {
            error = Texts::tr("the pool %1 has %n usable entries, fewer than sticks", nullptr,
                              pool.usableCount)
                        .arg(pool.group().name);
            return std::nullopt;
        }
        const QStringList keys = dealt.back().usable + dealt.back().others;
        for (const QString &key : keys)
            common.remove(key);
    }
    if (common.size() == map.size()) {
        error = Texts::tr("there is no pool entry to be dealt out");
        return std::nullopt;
    }

    std::vector<SettingsMap> files(size_t(count), common);
    for (int i = 0; i < count; ++i) {
        for (const PoolKeys &keys : dealt) {
            addShare(map, keys.usable, i, count, files[size_t(i)]);
            addShare(map, keys.others, i, count, files[size_t(i)]);
        }
    }
    return files;
}

} // namespace stick
