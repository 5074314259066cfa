#include "audit.h"
#include "commands.h"
#include "texts.h"

#include <QJsonArray>

namespace stick {

namespace {

QString placeText(const Place &place)
{
    const QString where = printable(place.file) + QLatin1Char(':') + QString::number(place.line);
    return place.done ? Texts::tr("done in %1").arg(where) : Texts::tr("free in %1").arg(where);
}

void printCases(const QString &label, Console::Style style, QLatin1String group,
                const std::vector<SerialCase> &cases, Console &console)
{
    constexpr int labelWidth = 11;
    for (const SerialCase &serialCase : cases) {
        QStringList places;
        for (const Place &place : serialCase.places)
            places.append(placeText(place));
        QString line = console.styled(label.leftJustified(labelWidth), style) + group
            + QLatin1Char(' ') + printable(serialCase.serial);
        if (!places.isEmpty())
            line += QLatin1String(": ") + places.join(QLatin1String(", "));
        console.print(line);
    }
}

bool isEmpty(const SerialAudit &audit)
{
    return audit.free.isEmpty() && audit.done.isEmpty() && audit.duplicate.empty()
        && audit.missing.empty() && audit.foreign.empty();
}

void printAsText(const AuditResult &result, Console &console)
{
    for (const DoubtfulLine &line : result.torn)
        console.print(Texts::tr("%1 %2:%3: \"%4\"")
                          .arg(console.styled(Texts::tr("torn").leftJustified(10), Console::Red),
                               printable(line.file), QString::number(line.line),
                               printable(line.text)));
    for (const QString &file : result.unreadable)
        console.print(
            Texts::tr("%1 %2: no unit can read it, see production-stick check")
                .arg(console.styled(Texts::tr("unreadable").leftJustified(10), Console::Red),
                     printable(file)));
    for (int group = 0; group < SerialGroupCount; ++group) {
        const SerialAudit &audit = result.groups[size_t(group)];
        const QLatin1String name = serialGroup(group).name;
        printCases(Texts::tr("duplicate"), Console::Red, name, audit.duplicate, console);
        printCases(Texts::tr("missing"), Console::Magenta, name, audit.missing, console);
        printCases(Texts::tr("foreign"), Console::Magenta, name, audit.foreign, console);
    }
    for (int group = 0; group < SerialGroupCount; ++group) {
        const SerialAudit &audit = result.groups[size_t(group)];
        if (isEmpty(audit))
            continue;
        console.print(
            Texts::tr("%1: %2 free, %3 done, %4 duplicate, %5 missing, %6 foreign")
                .arg(serialGroup(group).name, QString::number(audit.free.size()),
                     QString::number(audit.done.size()), QString::number(audit.duplicate.size()),
                     QString::number(audit.missing.size()), QString::number(audit.foreign.size())));
    }
}

QJsonArray toJson(const std::vector<SerialCase> &cases)
{
    QJsonArray array;
    for (const SerialCase &serialCase : cases) {
        QJsonArray places;
        for (const Place &place : serialCase.places)
            places.append(
                QJsonObject{{QStringLiteral("state"),
                             place.done ? QStringLiteral("done") : QStringLiteral("free")},
                            {QStringLiteral("file"), place.file},
                            {QStringLiteral("line"), place.line}});
        array.append(QJsonObject{{QStringLiteral("serial"), serialCase.serial},
                                 {QStringLiteral("places"), places}});
    }
    return array;
}

QJsonObject toJson(const AuditResult &result)
{
    QJsonObject groups;
    for (int group = 0; group < SerialGroupCount; ++group) {
        const SerialAudit &audit = result.groups[size_t(group)];
        groups.insert(serialGroup(group).name,
                      QJsonObject{{QStringLiteral("free"), QJsonArray::fromStringList(audit.free)},
                                  {QStringLiteral("done"), QJsonArray::fromStringList(audit.done)},
                                  {QStringLiteral("duplicate"), toJson(audit.duplicate)},
                                  {QStringLiteral("missing"), toJson(audit.missing)},
                                  {QStringLiteral("foreign"), toJson(audit.foreign)}});
    }
    QJsonArray torn;
    for (const DoubtfulLine &line : result.torn)
        torn.append(QJsonObject{{QStringLiteral("file"), line.file},
                                {QStringLiteral("line"), line.line},
                                {QStringLiteral("text"), line.text}});
    return {{QStringLiteral("groups"), groups},
            {QStringLiteral("torn"), torn},
            {QStringLiteral("unreadable"), QJsonArray::fromStringList(result.unreadable)}};
}

} // namespace

ExitCode runAudit(const Arguments &arguments, Console &console)
{
    console.showProgress(Texts::tr("reading the sticks"));
    const AuditResult result = audit(arguments.paths, arguments.issued);
    if (arguments.json)
        console.print(toJson(result));
    else
        printAsText(result, console);
    for (const QString &error : result.errors)
        console.complain(error);
    if (!result.errors.isEmpty())
        return Failed;
    return result.isClean() ? NothingToReport : SomethingFound;
}

} // namespace stick
