#include "commands.h"
#include "texts.h"

#include <translations.h>

#include <QLocale>

#include <cstdio>

using namespace stick;

namespace {

ExitCode run(const Arguments &arguments, Console &console)
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

    Arguments arguments;
    QString text;
    const Request request = parseCommandLine(QCoreApplication::arguments(), arguments, text);
    if (request != Request::Run) {
        std::fputs(text.toUtf8().constData(), request == Request::Show ? stdout : stderr);
        return request == Request::Show ? NothingToReport : Failed;
    }
    Console console;
    const ExitCode exitCode = run(arguments, console);
    if (console.finish())
        return exitCode;
    console.complain(Texts::tr("standard output does not take everything"));
    return Failed;
}
