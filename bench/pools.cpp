#include "pools.h"

#include <configurationfiles.h>
#include <reader.h>
#include <serialpool.h>

#include <QFile>
#include <QFileInfo>

#include <optional>

namespace bench {

namespace {

const production::SerialGroup *const poolGroups[] = {&production::snSerialGroup,
                                                     &production::skSerialGroup};

/// Sorted; nothing when the file has no such group.
std::optional<QStringList> poolEntries(const production::SettingsMap &map,
                                       const production::SerialGroup &group)
{
    const QString prefix = group.name + QLatin1Char('/');
    auto it = map.lowerBound(prefix);
    if (it == map.end() || !it.key().startsWith(prefix))
        return std::nullopt;
    QStringList childKeys;
    for (; it != map.end() && it.key().startsWith(prefix); ++it) {
        const QString name = it.key().mid(prefix.size());
        if (!name.contains(QLatin1Char('/')))
            childKeys.append(name);
    }
    return production::serialPool(group, childKeys);
}

} // namespace

QVector<Pool> readPools(const QString &configurationFile)
{
    QVector<Pool> pools;
    QFile file(configurationFile);
    production::SettingsMap map;
    production::KeyComments comments;
    // Not a pipe or a device, which would block the bench.
    if (!QFileInfo(configurationFile).isFile() || !file.open(QIODevice::ReadOnly)
        || !production::readSettings(file, map, comments))
        return pools;
    for (const production::SerialGroup *group : poolGroups) {
        if (const auto entries = poolEntries(map, *group))
            pools.append({group->name, *entries});
    }
    return pools;
}

QString configurationFileOn(const QString &stick)
{
    const QStringList names = production::configurationFileNames();
    for (const QString &name : names) {
        const QString path = production::filePath(stick, name);
        if (QFile::exists(path))
            return path;
    }
    return {};
}

} // namespace bench
