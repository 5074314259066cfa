#include "commands.h"
#include "texts.h"

#include <translations.h>

#include <QLocale>

using namespace stick;

namespace {

ExitCode runCommand(const Arguments &arguments, Console &console)
{
    switch (arguments.command) {
    case Command::Show:
        return runShow(arguments, console);
    case Command::Format:
        return runFormat(arguments, console);
    case Command::Check:
        return runCheck(arguments, console);
    case Command::Audit:
        return runAudit(arguments, console);
    case Command::Split:
        return runSplit(arguments, console);
    }
    return Failed;
}

ExitCode run(const QStringList &commandLine, Console &console)
{
    Arguments arguments;
    QString text;
    switch (parseCommandLine(commandLine, arguments, text)) {
    case Request::Run:
        return runCommand(arguments, console);
    case Request::Show:
        console.write(text.toUtf8());
        return NothingToReport;
    case Request::Refuse:
        console.complain(QLatin1String("production-stick: ") + text);
        console.complain(Texts::tr("production-stick --help tells the usage."));
        break;
    }
    return Failed;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("production-stick"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PRODUCTION_VERSION));
    // JSON is read by programs: its texts are the same in every language.
    if (QCoreApplication::arguments().contains(QStringLiteral("--json")))
        QLocale::setDefault(QLocale::c());
    production::loadTranslation(QStringLiteral("qt"));
    production::loadTranslation(QStringLiteral("production-stick"));

    Console console;
    const ExitCode exitCode = run(QCoreApplication::arguments(), console);
    if (console.finish())
        return exitCode;
    console.complain(Texts::tr("standard output does not take everything"));
    return Failed;
}
