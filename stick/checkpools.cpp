#include "check.h"

#include "knowngroups.h"
#include "texts.h"

#include <grammar.h>
#include <groups.h>

#include <algorithm>

using namespace production;

namespace stick {

namespace {

/// What is unusual about the characters of an entry.
struct EntryCharacters
{
    bool blank = false;
    bool punctuation = false; ///< What other tools quote or part values with.
    bool beyondLatin1 = false;
    bool digit = false;

    explicit EntryCharacters(QStringView name)
    {
        for (const QChar c : name) {
            const ushort code = c.unicode();
            blank |= code <= 0x20 || code == 0x7f || (code >= 0x80 && code <= 0xa0);
            punctuation |= code == '"' || code == ',' || code == '\\';
            beyondLatin1 |= code > 0xff;
            digit |= code >= '0' && code <= '9';
        }
    }
};

int lineOf(const ScannedFile &file, const Pool &pool, QLatin1String key)
{
    const QLatin1String group = pool.group().name;
    const Setting *const setting = file.find(group + QLatin1Char('/') + key);
    return setting != nullptr ? setting->line : file.lineOfGroup(group);
}

void checkSettingsOf(const ScannedFile &file, const Pool &pool, Findings &findings)
{
    const QLatin1String group = pool.group().name;
    if (!pool.provisions())
        findings.add(Code::ModeUnknown, lineOf(file, pool, modeKey),
                     Texts::tr("[%1] has the mode %2: the group counts as entered, but no unit "
                               "takes anything (1 and 2 do)")
                         .arg(group)
                         .arg(pool.mode));
    if (group != serial::snGroup)
        return;
    if (pool.length > 0 && pool.prefixes.isEmpty())
        findings.add(Code::LengthWithoutStartwith, lineOf(file, pool, serial::length),
                     Texts::tr("\"%1\" only counts together with \"%2\": the unit takes entries of "
                               "any length")
                         .arg(serial::length, serial::startWith));
    for (const QString &prefix : pool.prefixes) {
        if (prefix.front().isSpace() || (pool.length > 0 && prefix.size() > pool.length))
            findings.add(Code::UselessPrefix, lineOf(file, pool, serial::startWith),
                         Texts::tr("no entry can begin with the prefix \"%1\" (prefixes are parted "
                                   "by commas alone, blanks belong to them)")
                             .arg(prefix));
    }
}

void checkLevel(const ScannedFile &file, const Pool &pool, const CheckOptions &options,
                Findings &findings)
{
    const QLatin1String group = pool.group().name;
    const int usable = pool.usableCount;
    const int line = file.lineOfGroup(group);
    if (usable == 0)
        findings.add(Code::PoolEmpty, line,
                     Texts::tr("none of the %n entries of [%1] can be taken: no unit gets a value",
                               nullptr, int(pool.entries.size()))
                         .arg(group));
    else if (usable < options.low)
        findings.add(Code::PoolLow, line,
                     Texts::tr("[%1] has enough for %n unit(s) only", nullptr, usable).arg(group));
}

void checkCharacters(const EntryLine &entry, const EntryCharacters &characters, Findings &findings)
{
    if (characters.blank)
        findings.addEach(Code::EntryBlank, entry.line, [&] {
            return Texts::tr("the entry \"%1\" holds blanks or control characters: the unit takes "
                             "them as part of the value")
                .arg(entry.name);
        });
    if (characters.punctuation)
        findings.addEach(Code::EntryPunctuation, entry.line, [&] {
            return Texts::tr("the entry %1 holds a quote, a comma or a backslash: the unit takes "
                             "the line as one value, as it stands")
                .arg(entry.name);
        });
    if (characters.beyondLatin1)
        findings.addEach(Code::EntryEncoding, entry.line, [&] {
            return Texts::tr("the entry \"%1\" holds characters that the completion marker cannot: "
                             "the unit writes \"?\" for them")
                .arg(entry.name);
        });
}

/// What was meant as a setting, though the line is a pool entry for the unit (SK takes "startwith"
/// itself for one). Empty for other entries.
QLatin1String meantSetting(const KnownGroup &group, const EntryLine &entry,
                           const EntryCharacters &characters)
{
    constexpr int longest = 11;
    if (characters.digit || entry.name.size() > longest)
        return {};
    const QLatin1String meant = nearestKey(group, entry.name);
    if (!meant.isEmpty() || group.name != serial::skGroup)
        return meant;
    const bool isStartWith =
        entry.name == serial::startWith || isNearMiss(entry.name, serial::startWith);
    return isStartWith ? serial::startWith : QLatin1String();
}

void checkEntry(const Pool &pool, const KnownGroup &group, const EntryLine &entry,
                Findings &findings)
{
    const EntryCharacters characters(entry.name);
    const QLatin1String meant = meantSetting(group, entry, characters);
    if (!meant.isEmpty() && group.find(QString(meant)) == nullptr) {
        findings.add(Code::StartwithInSk, entry.line,
                     Texts::tr("[%1] knows no \"%2\": the unit takes \"%3\" for a pool entry")
                         .arg(pool.group().name, meant, entry.name));
        return;
    }
    if (!meant.isEmpty()) {
        findings.add(Code::MisspeltKey, entry.line,
                     Texts::tr("the unit takes \"%1\" for a pool entry; is \"%2\" meant?")
                         .arg(entry.name, meant));
        return;
    }
    const bool allUsable = pool.usableCount == int(pool.entries.size());
    if (!allUsable && !pool.takes(entry.name))
        findings.addEach(Code::NeverTaken, entry.line, [&] {
            return Texts::tr("no unit ever takes \"%1\": it has not the prefix or length required")
                .arg(entry.name);
        });
    if (!entry.bare)
        findings.addEach(Code::EntryWithValue, entry.line, [&] {
            return Texts::tr("\"%1\" has a value: the unit takes only what stands before the \"=\"")
                .arg(entry.name);
        });
    checkCharacters(entry, characters, findings);
}

} // namespace

void checkPool(const ScannedFile &file, const Pool &pool, const CheckOptions &options,
               Findings &findings)
{
    if (pool.mode <= 0)
        return;
    checkSettingsOf(file, pool, findings);
    if (pool.provisions())
        checkLevel(file, pool, options, findings);
    const KnownGroup &group = *findGroup(QString(pool.group().name));
    for (const EntryLine &entry : file.entries[size_t(pool.groupIndex())])
        checkEntry(pool, group, entry, findings);
    for (const EntryLine &entry : pool.repetitions)
        findings.addEach(Code::DuplicateEntry, entry.line, [&] {
            return Texts::tr("\"%1\" stands in the pool already: it serves one unit only")
                .arg(entry.name);
        });
}

void checkSharedEntries(const Pool &pool, const Pool &earlier, const QString &earlierFile,
                        Findings &findings)
{
    if (!pool.isOpen() || !earlier.isOpen())
        return;
    auto other = earlier.entries.cbegin();
    for (const EntryLine &entry : pool.entries) {
        while (other != earlier.entries.cend() && other->name < entry.name)
            ++other;
        if (other == earlier.entries.cend())
            return;
        if (other->name == entry.name && pool.takes(entry.name) && earlier.takes(entry.name))
            findings.addEach(Code::SharedEntry, entry.line, [&] {
                return Texts::tr("\"%1\" stands in %2:%3 too: two units will get it")
                    .arg(entry.name.toString(), earlierFile, QString::number(other->line));
            });
    }
}

} // namespace stick
