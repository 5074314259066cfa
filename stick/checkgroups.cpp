#include "check.h"

#include "knowngroups.h"
#include "texts.h"

#include <groups.h>
#include <settingsmap.h>

#include <QMap>

using namespace production;

namespace stick {

namespace {

const QLatin1Char slash('/');

/// A setting taken apart; the group is one that the unit knows.
struct GroupSetting
{
    const KnownGroup &group;
    const Setting &setting;

    /// Within the group, "sub/key" for one of a lower section.
    QString name() const { return setting.key.mid(group.name.size() + 1); }
};

const Setting *find(const ScannedFile &file, QLatin1String group, QLatin1String key)
{
    return file.find(group + slash + key);
}

/// Whether the key @p key, in full, stands in the section @p group and in none below it.
bool isDirectlyIn(QLatin1String group, const QString &key)
{
    return key.startsWith(group) && key.indexOf(slash) == group.size()
        && key.indexOf(slash, group.size() + 1) < 0;
}

bool isOn(const ScannedFile &file, const KnownGroup &group)
{
    const Setting *const mode = find(file, group.name, modeKey);
    return mode != nullptr && mode->value.toInt() > 0;
}

bool isNumber(const QVariant &value)
{
    bool ok = false;
    value.toInt(&ok);
    return ok;
}

bool isList(const QVariant &value)
{
    return value.userType() == QMetaType::QVariantList;
}

bool isBlank(const QVariant &value)
{
    return !isList(value) && value.toString().simplified().isEmpty();
}

/// The value as a message shows it.
QString shown(const QVariant &value)
{
    if (isList(value))
        return Texts::tr("a list of %n values", nullptr, value.toList().size());
    if (value == bareValue())
        return Texts::tr("a key without \"=\"");
    return QLatin1Char('"') + value.toString() + QLatin1Char('"');
}

QString insteadOfNumber(ValueKind kind)
{
    switch (kind) {
    case ValueKind::Mode:
        return Texts::tr("the group is off");
    case ValueKind::Dimension:
        return Texts::tr("the unit does not apply it");
    case ValueKind::CanIndex:
        return Texts::tr("the unit uses %1").arg(canbus::defaultId);
    case ValueKind::Length:
        return Texts::tr("any length will do");
    default:
        return Texts::tr("the unit uses 0");
    }
}

void checkRange(ValueKind kind, const QString &name, int number, int line, Findings &findings)
{
    QString instead;
    if (kind == ValueKind::Level && (number < 0 || number > 255))
        instead = Texts::tr("is not within 0 to 255: the unit uses %1")
                      .arg(static_cast<unsigned char>(number));
    else if (kind == ValueKind::Dimension && number <= 0)
        instead = Texts::tr("is not above 0: the unit does not apply it");
    else if (kind == ValueKind::CanIndex && number <= 0)
        instead = Texts::tr("is not above 0: the unit uses %1").arg(canbus::defaultId);
    else if (kind == ValueKind::Length && number < 0)
        instead = Texts::tr("is below 0: any length will do");
    if (!instead.isEmpty())
        findings.add(Code::OutOfRange, line,
                     QStringLiteral("\"%1\": %2 %3").arg(name, QString::number(number), instead));
}

void checkNumber(ValueKind kind, const QString &name, const Setting &setting, Findings &findings)
{
    if (!isNumber(setting.value)) {
        findings.add(Code::NotANumber, setting.line,
                     Texts::tr("\"%1\": %2 is no whole number: %3")
                         .arg(name, shown(setting.value), insteadOfNumber(kind)));
        return;
    }
    // QVariant::toInt() is content with 64 bits of a text, and cuts them.
    const int number = setting.value.toInt();
    if (const qint64 written = setting.value.toLongLong(); written != number)
        findings.add(Code::OutOfRange, setting.line,
                     Texts::tr("\"%1\": %2 has more than 32 bits: the unit reads %3")
                         .arg(name, QString::number(written), QString::number(number)));
    checkRange(kind, name, number, setting.line, findings);
}

void checkStepValues(const QStringList &steps, int line, Findings &findings)
{
    for (int i = 0; i < steps.size(); ++i) {
        bool ok = false;
        const uint value = steps[i].toUInt(&ok, 10);
        if (!ok)
            findings.add(Code::NotANumber, line,
                         Texts::tr("step %1, \"%2\", is no whole number: the unit uses 0")
                             .arg(QString::number(i), steps[i]));
        else if (value > 255)
            findings.add(Code::OutOfRange, line,
                         Texts::tr("step %1, %2, is not within 0 to 255: the unit uses %3")
                             .arg(i)
                             .arg(value)
                             .arg(static_cast<unsigned char>(value)));
    }
}

/// Why no unit (or not this one) takes a table of these steps; empty when it does.
QString whyIgnored(const QVariant &value, int count, const CheckOptions &options)
{
    constexpr int mostSteps = 256; // the range is an 8-bit number
    if (options.stepRange && count != *options.stepRange + 1)
        return Texts::tr("the unit takes a table of exactly %n step(s)", nullptr,
                         *options.stepRange + 1);
    if (!isList(value))
        return Texts::tr("a list stands without quotes, and of at least two steps");
    if (count > mostSteps)
        return Texts::tr("no unit takes more than %1").arg(mostSteps);
    return {};
}

void checkSteps(const Setting &setting, const CheckOptions &options, Findings &findings)
{
    const QStringList steps = setting.value.toStringList();
    const QString why = whyIgnored(setting.value, steps.size(), options);
    if (why.isEmpty())
        checkStepValues(steps, setting.line, findings);
    else
        findings.add(Code::StepCount, setting.line,
                     Texts::tr("%n step(s): the unit ignores the table (%1)", nullptr, steps.size())
                         .arg(why));
}

void checkTextValue(const QString &name, const Setting &setting, Findings &findings)
{
    if (isList(setting.value))
        findings.add(Code::UnexpectedList, setting.line,
                     Texts::tr("\"%1\" is a list, as its commas stand outside of quotes: the unit "
                               "reads an empty text")
                         .arg(name));
    else if (setting.value == bareValue())
        findings.add(Code::BareSetting, setting.line,
                     Texts::tr("\"%1\" stands without \"=\": the unit reads the text \"%2\"")
                         .arg(name, bareValue()));
    else if (isBlank(setting.value))
        findings.add(Code::EmptyValue, setting.line,
                     Texts::tr("\"%1\" is empty: the unit does as if it had none").arg(name));
}

void checkDisplaySize(const QString &name, const Setting &setting, Findings &findings)
{
    if (isBlank(setting.value))
        findings.add(
            Code::EmptySize, setting.line,
            Texts::tr("\"%1\" is empty: the unit stores that, and its display size is lost")
                .arg(name));
    else
        checkTextValue(name, setting, findings);
}

void checkPrefixes(const QString &name, const Setting &setting, Findings &findings)
{
    if (isList(setting.value))
        findings.add(Code::StartwithList, setting.line,
                     Texts::tr("several prefixes without quotes around them all: no prefix is in "
                               "force, and no \"%1\" either")
                         .arg(serial::length));
    else
        checkTextValue(name, setting, findings);
}

void checkValue(ValueKind kind, const QString &name, const Setting &setting,
                const CheckOptions &options, Findings &findings)
{
    switch (kind) {
    case ValueKind::Mode:
        break; // looked at for every group, present or not
    case ValueKind::Number:
    case ValueKind::Level:
    case ValueKind::Dimension:
    case ValueKind::CanIndex:
    case ValueKind::Length:
        checkNumber(kind, name, setting, findings);
        break;
    case ValueKind::Text:
        checkTextValue(name, setting, findings);
        break;
    case ValueKind::DisplaySize:
        checkDisplaySize(name, setting, findings);
        break;
    case ValueKind::Steps:
        checkSteps(setting, options, findings);
        break;
    case ValueKind::Prefixes:
        checkPrefixes(name, setting, findings);
        break;
    }
}

/// The plain key whose sized form the panel's key @p name is; empty when it is none.
QLatin1String plainKey(const QString &name)
{
    for (const QLatin1String plain : {panel::physicalWidth, panel::physicalHeight}) {
        if (name.startsWith(plain) && name != plain)
            return plain;
    }
    return {};
}

/// A key of the panel for one display size.
struct SizedKey
{
    explicit SizedKey(const Setting &setting)
        : setting(&setting)
        , name(setting.key.mid(panel::group.size() + 1))
        , plain(plainKey(name))
    {
        const int open = name.indexOf(QLatin1Char('('));
        const int close = name.indexOf(QLatin1Char(')'));
        if (open >= 0 && open < close)
            size = name.mid(open + 1, close - open - 1);
    }

    const Setting *setting;
    QString name;
    QLatin1String plain; ///< Empty when the key is no sized one.
    QString size; ///< Null without parentheses.
};

/// By name, the order in which the unit looks at them.
QMap<QString, SizedKey> sizedKeys(const ScannedFile &file)
{
    QMap<QString, SizedKey> keys;
    for (const Setting &setting : file.settings) {
        if (!isDirectlyIn(panel::group, setting.key))
            continue;
        const SizedKey key(setting);
        if (!key.plain.isEmpty())
            keys.insert(key.name, key);
    }
    return keys;
}

/// Why a sized key will never match; empty when it may.
QString whyUnmatched(const ScannedFile &file, const SizedKey &key)
{
    if (key.size.isNull())
        return Texts::tr("it names no display size in parentheses");
    if (key.size.isEmpty() || key.size != key.size.simplified())
        return Texts::tr("no display size reads \"%1\"").arg(key.size);
    if (find(file, panel::group, key.plain) != nullptr)
        return Texts::tr("\"%1\" is there and wins").arg(key.plain);
    const Setting *const fileSize = find(file, panel::group, panel::size);
    const QString displaySize =
        fileSize != nullptr ? fileSize->value.toString().simplified() : QString();
    if (!displaySize.isEmpty() && displaySize != key.size)
        return Texts::tr("the file's own \"%1\" is \"%2\"").arg(panel::size, displaySize);
    return {};
}

void checkSizedKeys(const ScannedFile &file, Findings &findings)
{
    QMap<QString, QString> winners; // for each plain key with a size
    const QMap<QString, SizedKey> keys = sizedKeys(file);
    for (const SizedKey &key : keys) {
        QString why = whyUnmatched(file, key);
        QString &winner = winners[key.plain + slash + key.size];
        if (why.isEmpty() && !winner.isEmpty())
            why = Texts::tr("\"%1\" is there and wins").arg(winner);
        if (!why.isEmpty()) {
            findings.add(Code::UnmatchedSize, key.setting->line,
                         Texts::tr("the unit never uses \"%1\": %2").arg(key.name, why));
            continue;
        }
        winner = key.name;
        checkNumber(ValueKind::Dimension, key.name, *key.setting, findings);
    }
}

/// A key that the group does not know by name.
void checkOtherKey(const ScannedFile &file, const GroupSetting &key, Findings &findings)
{
    const QString name = key.name();
    const QLatin1String meant =
        nearestKey(key.group, QStringView(name).left(name.indexOf(QLatin1Char('('))));
    if (key.group.takesOtherKeys) {
        if (!meant.isEmpty() && find(file, key.group.name, meant) == nullptr)
            findings.add(Code::MisspeltKey, key.setting.line,
                         Texts::tr("the unit takes \"%1\" for a setting like any other; is "
                                   "\"%2\" meant?")
                             .arg(name, meant));
    } else if (!meant.isEmpty()) {
        findings.add(Code::MisspeltKey, key.setting.line,
                     Texts::tr("the unit ignores \"%1\"; is \"%2\" meant?").arg(name, meant));
    } else {
        findings.addEach(Code::UnknownKey, key.setting.line, [&] {
            return Texts::tr("the unit knows no \"%1\" in [%2] and ignores it")
                .arg(name, key.group.name);
        });
    }
}

void checkLowerKey(const GroupSetting &key, Findings &findings)
{
    if (key.group.name != factorysettings::group)
        findings.addEach(Code::LowerSection, key.setting.line, [&] {
            return Texts::tr("\"%1\" does not stand in [%2] itself: the unit ignores it")
                .arg(key.setting.key, key.group.name);
        });
    // QSettings lists such a key but looks for it with single slashes only.
    else if (key.setting.key.contains(QLatin1String("//")) || key.setting.key.endsWith(slash))
        findings.addEach(Code::UnreachableKey, key.setting.line, [&] {
            return Texts::tr("the unit does not find the value of \"%1\" and stores none")
                .arg(key.setting.key);
        });
}

void checkSetting(const ScannedFile &file, const GroupSetting &key, const CheckOptions &options,
                  Findings &findings)
{
    const QString name = key.name();
    if (name.contains(slash))
        return checkLowerKey(key, findings);
    const KnownKey *const known = key.group.find(name);
    const bool isSized = key.group.name == panel::group && !plainKey(name).isEmpty();
    if (known == nullptr && !isSized)
        return checkOtherKey(file, key, findings);
    const bool isUsed = isOn(file, key.group) && file.find(key.setting.key) == &key.setting;
    if (known != nullptr && isUsed)
        checkValue(known->kind, name, key.setting, options, findings);
}

void checkSettings(const ScannedFile &file, const CheckOptions &options, Findings &findings)
{
    int outside = 0;
    int firstOutside = 0;
    for (const Setting &setting : file.settings) {
        const int end = setting.key.indexOf(slash);
        if (end < 0) {
            ++outside;
            if (firstOutside == 0)
                firstOutside = setting.line;
        } else if (const KnownGroup *const group = findGroup(QStringView(setting.key).left(end))) {
            checkSetting(file, {*group, setting}, options, findings);
        }
    }
    if (outside > 0)
        findings.add(Code::NoGroup, firstOutside,
                     Texts::tr("%n key(s) from here on stand in no group: the unit ignores them",
                               nullptr, outside));
}

void checkMode(const ScannedFile &file, const KnownGroup &group, int line, Findings &findings)
{
    const Setting *const mode = find(file, group.name, modeKey);
    if (mode == nullptr)
        findings.add(Code::ModeMissing, line,
                     Texts::tr("[%1] has no \"%2\": the group is off").arg(group.name, modeKey));
    else
        checkNumber(ValueKind::Mode, modeKey, *mode, findings);
    if (mode != nullptr && isNumber(mode->value) && mode->value.toInt() <= 0)
        findings.add(Code::ModeOff, mode->line, Texts::tr("[%1] is off").arg(group.name));
}

/// Groups that are on and do nothing all the same.
void checkEffect(const ScannedFile &file, const KnownGroup &group, int line, Findings &findings)
{
    const QString prefix = group.name + slash;
    const auto isContent = [&](const Setting &setting) {
        return setting.key.startsWith(prefix) && setting.key != prefix + modeKey
            && !(group.name == panel::group && setting.key == prefix + panel::size);
    };
    const bool empty = std::none_of(file.settings.cbegin(), file.settings.cend(), isContent);
    if (group.name == factorysettings::group && empty)
        findings.add(
            Code::NoEffect, line,
            Texts::tr("[%1] is on but has no settings: the unit stores none").arg(group.name));
    if (group.name == panel::group && empty)
        findings.add(Code::NoEffect, line,
                     Texts::tr("[%1] is on but sets nothing to be confirmed: the operator sees no "
                               "message of it")
                         .arg(group.name));
    if (group.name == bt::group && find(file, bt::group, bt::advPower) == nullptr)
        findings.add(Code::MissingKey, line,
                     Texts::tr("[%1] is on but has no \"%2\": the unit does nothing")
                         .arg(group.name, bt::advPower));
}

void checkUnknownGroup(const QString &name, int line, Findings &findings)
{
    const QLatin1String meant = nearestGroup(name);
    if (meant.isEmpty())
        findings.add(Code::UnknownGroup, line,
                     Texts::tr("the unit knows no group [%1] and ignores it")
                         .arg(sectionName(name + slash)));
    else
        findings.add(Code::MisspeltGroup, line,
                     Texts::tr("the unit ignores the group [%1]; is [%2] meant?").arg(name, meant));
}

/// Whether the unit stays in production mode: its count of entered items is not 0.
bool entersAnything(const ScannedFile &file)
{
    const auto &groups = knownGroups();
    return std::any_of(groups.cbegin(), groups.cend(), [&](const KnownGroup &group) {
        return isOn(file, group) && group.name != factorysettings::group
            && (group.name != bt::group || find(file, bt::group, bt::advPower) != nullptr);
    });
}

} // namespace

void checkGroups(const ScannedFile &file, const CheckOptions &options, Findings &findings)
{
    for (const QString &name : file.groups()) {
        const int line = file.lineOfGroup(name);
        const KnownGroup *const group = findGroup(name);
        if (group == nullptr) {
            checkUnknownGroup(name, line, findings);
            continue;
        }
        checkMode(file, *group, line, findings);
        if (isOn(file, *group))
            checkEffect(file, *group, line, findings);
    }
    checkSettings(file, options, findings);
    if (isOn(file, *findGroup(QString(panel::group))))
        checkSizedKeys(file, findings);
    if (file.isReadable() && !entersAnything(file))
        findings.add(Code::NothingEntered, 0,
                     Texts::tr("no group enters a production item: the unit says so and leaves "
                               "production mode at once"));
}

} // namespace stick
