#include "passrecord.h"

#include <configurationfiles.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace bench {

namespace {

QStringList entriesOf(const QVector<Pool> &pools, const QString &group)
{
    const auto pool = std::find_if(pools.begin(), pools.end(),
                                   [&](const Pool &other) { return other.group == group; });
    return pool != pools.end() ? pool->entries : QStringList();
}

QString lastLine(const QString &path)
{
    constexpr qint64 enough = 64 << 10;
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    file.seek(std::max<qint64>(0, file.size() - enough));
    const QList<QByteArray> lines = file.readAll().trimmed().split('\n');
    return QString::fromLatin1(lines.last().trimmed());
}

} // namespace

std::optional<UnitValue> storedValue(const Call &call)
{
    if (call.name == calls::saveFactoryData)
        return UnitValue{Area::Factory, call.args.at(0).toString(), call.args.at(1)};
    if (call.name == calls::backupRuntimeData)
        return UnitValue{Area::Runtime, call.args.at(0).toString(), call.args.at(1)};
    if (call.name == calls::saveProductionData)
        return UnitValue{Area::Production, call.args.at(0).toString(), call.args.at(1)};
    if (call.name == calls::saveData)
        return UnitValue{Area::Factory, call.args.at(1).toString(), call.args.at(0)};
    return std::nullopt;
}

void PassRecord::begin(const QString &configurationFile, const QString &stick)
{
    m_configurationFile = configurationFile;
    m_stick = stick;
    m_poolsBefore = readPools(configurationFile);
    m_markerSizeBefore = QFileInfo(markerPath()).size();
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_stored.clear();
}

void PassRecord::note(const Call &call)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (call.name == calls::showMessage)
        m_told.append({call.args.at(1).toInt(), call.args.at(0).toString()});
    const auto value = storedValue(call);
    if (!value)
        return;
    const auto known = std::find_if(m_stored.begin(), m_stored.end(), [&](const UnitValue &other) {
        return other.area == value->area && other.key == value->key;
    });
    if (known != m_stored.end())
        known->value = value->value;
    else
        m_stored.append(*value);
}

QVector<Popup> PassRecord::told() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_told;
}

PassResult PassRecord::result() const
{
    PassResult result;
    result.configurationFile = m_configurationFile;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        result.stored = m_stored;
    }
    std::stable_sort(result.stored.begin(), result.stored.end(),
                     [](const UnitValue &a, const UnitValue &b) { return a.area < b.area; });

    result.fileGone = !QFile::exists(m_configurationFile);
    if (!result.fileGone)
        result.pools = poolChanges();
    if (!m_stick.isEmpty()) {
        result.markerLine = lastLine(markerPath());
        result.markerGrown = QFileInfo(markerPath()).size() > m_markerSizeBefore;
    }
    return result;
}

QVector<PoolChange> PassRecord::poolChanges() const
{
    QVector<PoolChange> changes;
    const QVector<Pool> poolsAfter = readPools(m_configurationFile);
    for (const Pool &before : m_poolsBefore) {
        const QStringList after = entriesOf(poolsAfter, before.group);
        PoolChange change{before.group, before.entries.size(), after.size(), {}};
        std::set_difference(before.entries.begin(), before.entries.end(), after.begin(),
                            after.end(), std::back_inserter(change.taken));
        changes.append(change);
    }
    return changes;
}

QString PassRecord::markerPath() const
{
    return production::filePath(m_stick, production::completionMarkerName());
}

} // namespace bench
