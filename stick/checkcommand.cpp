#include "commands.h"
#include "texts.h"

#include <QJsonArray>

namespace stick {

namespace {

Console::Style styleOf(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return Console::Red;
    case Severity::Warning:
        return Console::Magenta;
    case Severity::Note:
        break;
    }
    return Console::Cyan;
}

QString severityText(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return Texts::tr("error");
    case Severity::Warning:
        return Texts::tr("warning");
    case Severity::Note:
        break;
    }
    return Texts::tr("note");
}

QString poolText(const PoolSummary &pool)
{
    const QString next = pool.next ? Texts::tr("next %1", "pool entry").arg(printable(*pool.next))
                                   : Texts::tr("none for the next unit", "pool entry");
    return Texts::tr("%1 %2 of %3 usable, %4")
        .arg(pool.group, QString::number(pool.usable), QString::number(pool.entries), next);
}

QString summaryText(const CheckedFile &file)
{
    QStringList parts;
    const Tally &tally = file.tally;
    if (tally.isClean())
        parts.append(Texts::tr("nothing to report"));
    if (tally.errors > 0)
        parts.append(Texts::tr("%n error(s)", nullptr, tally.errors));
    if (tally.warnings > 0)
        parts.append(Texts::tr("%n warning(s)", nullptr, tally.warnings));
    if (tally.notes > 0)
        parts.append(Texts::tr("%n note(s)", nullptr, tally.notes));
    QString text = printable(file.file) + QLatin1String(": ") + parts.join(QLatin1String(", "));
    if (file.omitted > 0)
        text += QLatin1Char(' ')
            + Texts::tr("(%n not shown; --limit 0 shows all)", nullptr, file.omitted);
    for (const PoolSummary &pool : file.pools)
        text += QLatin1String("; ") + poolText(pool);
    return text;
}

QJsonObject toJson(const Finding &finding)
{
    QJsonObject object{{QStringLiteral("file"), finding.file},
                       {QStringLiteral("severity"), severityName(severity(finding.code))},
                       {QStringLiteral("code"), codeName(finding.code)},
                       {QStringLiteral("text"), finding.text}};
    if (finding.line > 0)
        object.insert(QStringLiteral("line"), finding.line);
    return object;
}

QJsonObject toJson(const PoolSummary &pool)
{
    return {{QStringLiteral("group"), pool.group},
            {QStringLiteral("mode"), pool.mode},
            {QStringLiteral("entries"), pool.entries},
            {QStringLiteral("usable"), pool.usable},
            {QStringLiteral("next"), pool.next ? QJsonValue(*pool.next) : QJsonValue()}};
}

void insertTally(QJsonObject &object, const Tally &tally)
{
    object.insert(QStringLiteral("errors"), tally.errors);
    object.insert(QStringLiteral("warnings"), tally.warnings);
    object.insert(QStringLiteral("notes"), tally.notes);
}

QJsonObject toJson(const CheckedFile &file)
{
    QJsonArray findings;
    for (const Finding &finding : file.findings)
        findings.append(toJson(finding));
    QJsonArray pools;
    for (const PoolSummary &pool : file.pools)
        pools.append(toJson(pool));
    QJsonObject object{{QStringLiteral("file"), file.file},
                       {QStringLiteral("readable"), file.readable},
                       {QStringLiteral("findings"), findings},
                       {QStringLiteral("omitted"), file.omitted},
                       {QStringLiteral("pools"), pools}};
    insertTally(object, file.tally);
    return object;
}

void printAsJson(const CheckResult &result, const Tally &total, Console &console)
{
    QJsonArray files;
    for (const CheckedFile &file : result.files)
        files.append(toJson(file));
    QJsonObject object{{QStringLiteral("files"), files}};
    insertTally(object, total);
    console.print(object);
}

void printAsText(const CheckResult &result, Console &console)
{
    for (const CheckedFile &file : result.files) {
        for (const Finding &finding : file.findings)
            console.print(findingLine(finding, &console));
        console.print(summaryText(file));
    }
}

} // namespace

QString findingLine(const Finding &finding, const Console *console)
{
    const auto styled = [&](const QString &text, Console::Style style) {
        return console != nullptr ? console->styled(text, style) : text;
    };
    QString place = printable(finding.file) + QLatin1Char(':');
    if (finding.line > 0)
        place += QString::number(finding.line) + QLatin1Char(':');
    const Severity level = severity(finding.code);
    return QStringLiteral("%1 %2 %3 [%4]")
        .arg(styled(place, Console::Bold),
             styled(severityText(level) + QLatin1Char(':'), styleOf(level)),
             printable(finding.text), codeName(finding.code));
}

ExitCode runCheck(const Arguments &arguments, Console &console)
{
    console.showProgress(Texts::tr("checking %1").arg(arguments.paths.join(QLatin1String(", "))));
    const CheckResult result = check(arguments.paths, arguments.check);
    Tally total;
    for (const CheckedFile &file : result.files)
        total += file.tally;

    if (arguments.json)
        printAsJson(result, total, console);
    else
        printAsText(result, console);
    for (const QString &error : result.errors)
        console.complain(error);
    if (!result.errors.isEmpty())
        return Failed;
    return total.isClean() ? NothingToReport : SomethingFound;
}

} // namespace stick
