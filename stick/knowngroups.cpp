#include "knowngroups.h"

#include <groups.h>

#include <QVarLengthArray>

#include <algorithm>

using namespace production;

namespace stick {

namespace {

/// How many letters were left out, added, mistaken or swapped with their neighbour.
int slips(QStringView a, QStringView b)
{
    using Row = QVarLengthArray<int, 32>;
    const int width = int(b.size()) + 1;
    Row beforeLast(width);
    Row last(width);
    Row current(width);
    for (int j = 0; j < width; ++j)
        last[j] = j;
    for (int i = 1; i <= int(a.size()); ++i) {
        current[0] = i;
        for (int j = 1; j < width; ++j) {
            const int mistaken = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            current[j] = std::min({last[j] + 1, current[j - 1] + 1, mistaken});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                current[j] = std::min(current[j], beforeLast[j - 2] + 1);
        }
        beforeLast = last;
        last = current;
    }
    return last[width - 1];
}

/**
 * At most how many letters of @p word do not occur in @p known, in either case.
 *
 * Letters of either case share their lowest five bits; what else shares them passes for the letter.
 */
int strangeLetters(QStringView word, QLatin1String known)
{
    const auto bit = [](ushort code) { return 1u << (code & 0x1f); };
    unsigned letters = 0;
    for (const char letter : known)
        letters |= bit(uchar(letter));
    return int(std::count_if(word.begin(), word.end(),
                             [&](QChar letter) { return !(letters & bit(letter.unicode())); }));
}

std::vector<KnownGroup> makeKnownGroups()
{
    const KnownKey mode = {modeKey, ValueKind::Mode};
    return {
        {factorysettings::group, {mode}, true},
        {panel::group,
         {mode,
          {panel::size, ValueKind::DisplaySize},
          {panel::vcom, ValueKind::Number},
          {panel::avdd, ValueKind::Number},
          {panel::backlightSteps, ValueKind::Steps},
          {panel::backlightDay, ValueKind::Level},
          {panel::backlightNight, ValueKind::Level},
          {panel::driver, ValueKind::Text},
          {panel::hicarPhysicalWidth, ValueKind::Dimension},
          {panel::hicarPhysicalHeight, ValueKind::Dimension},
          {panel::physicalWidth, ValueKind::Dimension},
          {panel::physicalHeight, ValueKind::Dimension}},
         false},
        {serial::snGroup,
         {mode, {serial::length, ValueKind::Length}, {serial::startWith, ValueKind::Prefixes}},
         true},
        {serial::skGroup, {mode, {serial::length, ValueKind::Length}}, true},
        {canbus::group, {mode, {canbus::id, ValueKind::CanIndex}}, false},
        {directionkey::group, {mode}, false},
        {bt::group, {mode, {bt::advPower, ValueKind::Number}}, false},
    };
}

} // namespace

const KnownKey *KnownGroup::find(QStringView name) const
{
    const auto it = std::find_if(keys.cbegin(), keys.cend(),
                                 [&](const KnownKey &key) { return name == key.name; });
    return it != keys.cend() ? &*it : nullptr;
}

const std::vector<KnownGroup> &knownGroups()
{
    static const std::vector<KnownGroup> groups = makeKnownGroups();
    return groups;
}

const KnownGroup *findGroup(QStringView name)
{
    const auto &groups = knownGroups();
    const auto it = std::find_if(groups.cbegin(), groups.cend(),
                                 [&](const KnownGroup &group) { return name == group.name; });
    return it != groups.cend() ? &*it : nullptr;
}

bool isNearMiss(QStringView word, QLatin1String known)
{
    const int allowed = known.size() <= 4 ? 1 : 2;
    if (word == known || qAbs(word.size() - known.size()) > allowed)
        return false;
    if (word.compare(known, Qt::CaseInsensitive) == 0)
        return true;
    // Every letter that the known word has not is a slip; this spares most words the table.
    if (strangeLetters(word, known) > allowed)
        return false;
    // Two letters leave no room for a mistaken one: "ST" is no slip for "SN".
    if (known.size() <= 2 && word.size() == known.size())
        return false;
    return slips(word.toString().toCaseFolded(), QString(known).toCaseFolded()) <= allowed;
}

QLatin1String nearestGroup(QStringView name)
{
    for (const KnownGroup &group : knownGroups()) {
        if (isNearMiss(name, group.name))
            return group.name;
    }
    return {};
}

QLatin1String nearestKey(const KnownGroup &group, QStringView name)
{
    for (const KnownKey &key : group.keys) {
        if (isNearMiss(name, key.name))
            return key.name;
    }
    return {};
}

} // namespace stick
