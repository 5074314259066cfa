#include "scannedfile.h"

#include <grammar.h>
#include <reader.h>

using namespace production;

namespace stick {

namespace {

const QLatin1Char slash('/');

/// What stands behind the "]" of a closed header.
QStringView textAfterHeader(QStringView line, const SectionHeader &header)
{
    const qsizetype nameEnd = header.name.data() + header.name.size() - line.data();
    const QStringView rest = line.mid(nameEnd).trimmed();
    return rest.mid(1).trimmed();
}

/// Asks the unit's own scan whether a comment would begin at the end of @p line.
bool hasOpenQuote(QStringView line)
{
    return line.contains(QLatin1Char('"'))
        && scanKeyLine(QString(line.toString() + QLatin1Char(';'))).comment.isEmpty();
}

int serialGroupIndex(QStringView name)
{
    for (int i = 0; i < SerialGroupCount; ++i) {
        if (name == serialGroup(i).name)
            return i;
    }
    return -1;
}

} // namespace

const SerialGroup &serialGroup(int index)
{
    return index == SnIndex ? snSerialGroup : skSerialGroup;
}

QString sectionName(const QString &prefix)
{
    if (prefix.isEmpty())
        return QStringLiteral("General");
    return prefix == QLatin1String("general/") ? QStringLiteral("%General") : prefix.chopped(1);
}

ScannedFile::ScannedFile(const QByteArray &bytes)
    : m_bytes(bytes.size())
    , m_text(isTooLarge() ? QString() : decodeText(bytes, &m_endsWithinCharacter))
    , m_hasQuotes(m_text.contains(QLatin1Char('"')))
    , m_hasSlashes(m_text.contains(slash))
    , m_prefix(QLatin1String(""))
{
    forEachLine(m_text, [this](int number, QStringView line) {
        if (isSectionHeader(line))
            addHeader(number, line);
        else
            addKeyLine(number, line);
    });
}

bool ScannedFile::isTooLarge() const
{
    return m_bytes > mostCharacters || m_keyCharacters > mostCharacters;
}

const Setting *ScannedFile::find(const QString &key) const
{
    const auto it = m_lastSettings.constFind(key);
    return it != m_lastSettings.cend() ? &settings[*it] : nullptr;
}

void ScannedFile::addHeader(int number, QStringView line)
{
    const SectionHeader scanned = scanSectionHeader(line);
    Header header = {number, scanned.prefix(), scanned.closed, false, false};
    m_hasUnclosedHeader |= !header.closed;
    if (header.closed) {
        const QStringView rest = textAfterHeader(line, scanned);
        header.trailingText = !rest.isEmpty() && scanKeyLine(rest).comment.size() != rest.size();
    }
    const bool known = m_prefixes.contains(header.prefix);
    m_sectionResumed = known && m_prefix.startsWith(header.prefix) && m_prefix != header.prefix;
    // The general section is where the writer puts every key without a slash, in its sorted place.
    header.repeated = known && !m_sectionResumed && !header.prefix.isEmpty();
    m_prefixes.insert(header.prefix);

    m_prefix = header.prefix;
    const QString group = header.prefix.section(slash, 0, 0);
    if (!header.prefix.isEmpty())
        noteGroup(group, number);
    m_serialSection = header.prefix.size() == group.size() + 1 ? serialGroupIndex(group) : -1;
    headers.push_back(header);
}

void ScannedFile::addKeyLine(int number, QStringView line)
{
    const KeyLine scanned = scanKeyLine(line);
    if (scanned.danglingBackslash)
        danglingBackslashes.push_back(number);
    if (m_hasQuotes && hasOpenQuote(line))
        unbalancedQuotes.push_back(number);
    const QStringView name = scanned.name();
    m_keyCharacters += m_prefix.size() + name.size();
    if (isTooLarge())
        return;
    if (name.isEmpty()) {
        if (!scanned.isBare())
            emptyKeys.push_back(number);
        return;
    }
    if (!addEntry({number, scanned.isBare(), name}))
        addSetting(number, m_prefix + name.toString(), scanned.value());
}

/// A pool is known by its keys in full, so that "SN/AB01" in the general section is an entry too.
bool ScannedFile::addEntry(EntryLine entry)
{
    int group = m_serialSection;
    if (m_prefix.isEmpty()) {
        const qsizetype end = entry.name.indexOf(slash);
        group = end > 0 ? serialGroupIndex(entry.name.left(end)) : -1;
        entry.name = entry.name.mid(end + 1);
    }
    if (group < 0 || (m_hasSlashes && entry.name.contains(slash))
        || !isPoolEntry(serialGroup(group), entry.name))
        return false;
    entries[size_t(group)].push_back(entry);
    if (m_prefix.isEmpty())
        noteGroup(serialGroup(group).name, entry.line);
    return true;
}

void ScannedFile::addSetting(int number, const QString &key, const QVariant &value)
{
    const auto earlier = m_lastSettings.constFind(key);
    if (earlier != m_lastSettings.cend()) {
        const Setting &replaced = settings[*earlier];
        // The writer repeats mode, length and startwith in a section that it comes back to.
        if (!m_sectionResumed || replaced.value != value)
            duplicates.push_back({number, replaced.line, key});
    }
    m_lastSettings.insert(key, settings.size());
    settings.push_back({number, key, value});
    if (key.contains(slash))
        noteGroup(key.section(slash, 0, 0), number);
}

void ScannedFile::noteGroup(const QString &name, int line)
{
    if (m_groupLines.contains(name))
        return;
    m_groupLines.insert(name, line);
    m_groups.append(name);
}

} // namespace stick
