#include "audit.h"

#include "input.h"
#include "marker.h"
#include "pools.h"
#include "stickfolder.h"
#include "texts.h"

#include <QDir>
#include <QMap>

#include <memory>

#include <algorithm>

using namespace production;

namespace stick {

namespace {

/// Everything known of one serial.
struct Record
{
    bool issued = false;
    std::vector<Place> places;
};

using Records = QMap<QString, Record>;

/// A line of a marker whose group is still to be found out.
struct SingleValue
{
    QString value;
    Place place;
    bool inGroup[SerialGroupCount]; ///< Whether the stick's file has the group.
};

/// Reads everything first: which group a lone value of a marker is of depends on all of it.
class Audit
{
public:
    void addIssued(const QString &path);
    void addStick(const QString &path);
    AuditResult result();

private:
    void addPools(const QString &path, const ScannedFile &file);
    void addMarker(const QString &path, const ScannedFile *file);
    void addDone(const MarkerLine &line, const QString &path, const ScannedFile *file);
    void placeSingleValues();
    int groupOf(const SingleValue &single) const;
    SerialAudit auditOf(const Records &records) const;
    bool isForeign(const QString &serial, const Record &record) const;

    std::array<Records, SerialGroupCount> m_records;
    QMap<QString, bool> m_listed; ///< Issued in a plain list, to whether they were found.
    std::vector<SingleValue> m_single;
    bool m_hasIssued = false;
    bool m_missesIssued = false; ///< Something that was issued is in a list that cannot be read.
    AuditResult m_result;
};

bool hasGroup(const ScannedFile *file, int group)
{
    return file != nullptr && file->lineOfGroup(serialGroup(group).name) > 0;
}

/// One serial per line: no section header, so that every line is a bare key of the general section.
bool isPlainList(const ScannedFile &file)
{
    return file.headers.empty() && !file.isTooLarge();
}

void Audit::addIssued(const QString &path)
{
    m_hasIssued = true;
    QString error;
    const std::optional<QByteArray> bytes = readFile(path, error);
    if (!bytes) {
        m_missesIssued = true;
        m_result.errors.append(error);
        return;
    }
    const ScannedFile file(*bytes);
    m_missesIssued |= file.isTooLarge();
    if (isPlainList(file)) {
        for (const Setting &setting : file.settings)
            m_listed.insert(setting.key, false);
        return;
    }
    if (!file.isReadable())
        m_result.unreadable.append(path);
    const Pools pools = poolsOf(file);
    for (int group = 0; group < SerialGroupCount; ++group) {
        for (const EntryLine &entry : pools[size_t(group)].entries)
            m_records[size_t(group)][entry.name.toString()].issued = true;
    }
}

void Audit::addStick(const QString &path)
{
    QString error;
    const std::optional<QStringList> names = listFolder(path, error);
    if (!names) {
        m_result.errors.append(error);
        return;
    }
    const StickFolder stick(QDir::cleanPath(path), *names);
    std::optional<QByteArray> bytes;
    if (stick.configuration().isEmpty() && stick.marker().isEmpty())
        m_result.errors.append(
            Texts::tr("%1: neither a configuration file nor a completion marker").arg(path));
    if (!stick.configuration().isEmpty()) {
        bytes = readFile(stick.configuration(), error);
        if (!bytes)
            m_result.errors.append(error);
    }
    const auto file = bytes ? std::make_unique<ScannedFile>(*bytes) : nullptr;
    if (file)
        addPools(stick.configuration(), *file);
    if (!stick.marker().isEmpty())
        addMarker(stick.marker(), file.get());
}

void Audit::addPools(const QString &path, const ScannedFile &file)
{
    if (!file.isReadable())
        m_result.unreadable.append(path);
    const Pools pools = poolsOf(file);
    for (int group = 0; group < SerialGroupCount; ++group) {
        for (const EntryLine &entry : pools[size_t(group)].entries)
            m_records[size_t(group)][entry.name.toString()].places.push_back(
                {false, path, entry.line});
    }
}

void Audit::addMarker(const QString &path, const ScannedFile *file)
{
    QString error;
    const auto lines = readMarker(path, error);
    if (!lines) {
        m_result.errors.append(error);
        return;
    }
    for (const MarkerLine &line : *lines)
        addDone(line, path, file);
}

void Audit::addDone(const MarkerLine &line, const QString &path, const ScannedFile *file)
{
    const Place place = {true, path, line.line};
    if (line.values.size() == 1)
        m_single.push_back(
            {line.values.first(), place, {hasGroup(file, SnIndex), hasGroup(file, SkIndex)}});
    else if (line.values.size() == SerialGroupCount)
        for (int group = 0; group < SerialGroupCount; ++group)
            m_records[size_t(group)][line.values.at(group)].places.push_back(place);
    else
        m_result.torn.push_back({path, line.line, line.text});
}

/// A marker does not say which group a lone value is of: the one that knows it, else the one that
/// the stick has, else SN.
int Audit::groupOf(const SingleValue &single) const
{
    const bool isSn = m_records[SnIndex].contains(single.value);
    const bool isSk = m_records[SkIndex].contains(single.value);
    if (isSn != isSk)
        return isSk ? SkIndex : SnIndex;
    return single.inGroup[SkIndex] && !single.inGroup[SnIndex] ? SkIndex : SnIndex;
}

void Audit::placeSingleValues()
{
    for (const SingleValue &single : m_single)
        m_records[size_t(groupOf(single))][single.value].places.push_back(single.place);
}

bool Audit::isForeign(const QString &serial, const Record &record) const
{
    return m_hasIssued && !m_missesIssued && !record.issued && !m_listed.contains(serial);
}

SerialAudit Audit::auditOf(const Records &records) const
{
    SerialAudit audit;
    for (auto it = records.cbegin(); it != records.cend(); ++it) {
        const auto &places = it->places;
        const bool foreign = isForeign(it.key(), *it);
        if (places.empty())
            audit.missing.push_back({it.key(), places});
        else if (places.size() > 1)
            audit.duplicate.push_back({it.key(), places});
        else if (!foreign)
            (places.front().done ? audit.done : audit.free).append(it.key());
        if (foreign)
            audit.foreign.push_back({it.key(), places});
    }
    return audit;
}

AuditResult Audit::result()
{
    placeSingleValues();
    for (size_t group = 0; group < SerialGroupCount; ++group) {
        m_result.groups[group] = auditOf(m_records[group]);
        for (auto it = m_records[group].cbegin(); it != m_records[group].cend(); ++it) {
            if (const auto listed = m_listed.find(it.key()); listed != m_listed.end())
                *listed = true;
        }
    }
    // A plain list does not name groups; what nobody has seen is reported as a serial number.
    for (auto it = m_listed.cbegin(); it != m_listed.cend(); ++it) {
        if (!*it)
            m_result.groups[SnIndex].missing.push_back({it.key(), {}});
    }
    return std::move(m_result);
}

} // namespace

bool AuditResult::isClean() const
{
    return torn.empty() && unreadable.isEmpty() && errors.isEmpty()
        && std::all_of(groups.cbegin(), groups.cend(), [](const SerialAudit &group) {
               return group.duplicate.empty() && group.missing.empty() && group.foreign.empty();
           });
}

AuditResult audit(const QStringList &sticks, const QStringList &issued)
{
    Audit run;
    for (const QString &path : issued)
        run.addIssued(path);
    const QStringList distinct = distinctPaths(sticks);
    for (const QString &path : distinct)
        run.addStick(path);
    return run.result();
}

} // namespace stick
