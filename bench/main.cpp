#include "commandinput.h"
#include "dryrun.h"
#include "flash.h"
#include "options.h"
#include "quitsignals.h"
#include "screenplugin.h"
#include "terminalrun.h"
#include "translations.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QPluginLoader>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

using namespace bench;

namespace {

/// A standard stream that was closed would lend its number to the next file that is opened.
void openStandardStreams()
{
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= 2)
        descriptor = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    if (descriptor > 2)
        ::close(descriptor);
}

int refuse(const QString &error)
{
    fprintf(stderr, "%s\n", qUtf8Printable(error));
    return Unusable;
}

void prepareApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("production-bench"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PRODUCTION_VERSION));
    production::loadTranslation(QStringLiteral("qt"));
    production::loadTranslation(QStringLiteral("production-bench"));
}

void announce(const DryRun &copies)
{
    puts(qUtf8Printable(
        QCoreApplication::translate("Bench", "Dry run: on copies, of which nothing stays.")));
    for (const QString &caution : copies.cautions())
        puts(qUtf8Printable(caution));
}

bool mountUnitsFlash(Options &options, QString *error)
{
    const QVector<Mount> before = readableMounts();
    if (!mountFlash(options.flash, error))
        return false;
    options.ownMounts = readableMounts();
    for (const Mount &mount : before)
        options.ownMounts.removeOne(mount);
    return true;
}

/// A journal holds the module's texts, and they are the same in every language.
void loadModuleTexts(const Options &options)
{
    if (options.journal.isEmpty())
        production::loadTranslation(QStringLiteral("production"));
}

/// Shows the units in lines on the terminal.
int run(const Options &options)
{
    QString error;
    TerminalRun run(options);
    if (!run.open(&error))
        return refuse(error);
    QObject::connect(&run, &TerminalRun::over, qApp, &QCoreApplication::exit);
    const QuitSignals quitSignals;
    QObject::connect(&quitSignals, &QuitSignals::received, &run,
                     [&run] { run.execute(QStringLiteral("quit")); });
    CommandInput input;
    // A stick that a line plugs would be no copy.
    if (!options.dryRun)
        QObject::connect(&input, &CommandInput::entered, &run, &TerminalRun::execute);
    QTimer::singleShot(0, &run, &TerminalRun::begin);
    const int exitCode = QCoreApplication::exec();
    // The worker is destroyed when its thread has been.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return exitCode;
}

/// In the user's language, which is known only while there is an application object.
QString noScreenText;

/// Qt ends a program that gets no screen by a crash, with a text on its plugins.
void refuseWithoutScreen(QtMsgType type, const QMessageLogContext &, const QString &)
{
    if (type == QtFatalMsg)
        ::_exit(refuse(noScreenText));
}

/// Shows the units in a window; takes a process without an application object.
int runWindow(int &argc, char **argv, const Options &options, const QString &libraryPath)
{
    QPluginLoader loader(libraryPath);
    auto *screen = qobject_cast<ScreenPlugin *>(loader.instance());
    if (!screen)
        return refuse(
            QCoreApplication::translate("Bench", "There is no window (%1); leave --window out.")
                .arg(loader.errorString()));
    const QtMessageHandler handler = qInstallMessageHandler(refuseWithoutScreen);
    const auto application = screen->makeApplication(argc, argv);
    qInstallMessageHandler(handler);
    prepareApplication();
    loadModuleTexts(options);
    const QuitSignals quitSignals;
    QObject::connect(&quitSignals, &QuitSignals::received, qApp, [screen] { screen->close(); });
    return screen->run(options);
}

} // namespace

int main(int argc, char *argv[])
{
    openStandardStreams();
    // A reader of the output that goes away does not end the unit in the middle of its pass.
    std::signal(SIGPIPE, SIG_IGN);
    Options options;
    QString screenPath;
    {
        const QCoreApplication application(argc, argv);
        prepareApplication();
        QString text;
        const Request request = parseOptions(QCoreApplication::arguments(), options, text);
        if (request != Request::Run) {
            fputs(text.toUtf8().constData(), request == Request::Show ? stdout : stderr);
            return request == Request::Show ? ModuleEnded : Unusable;
        }
        // QT_LOGGING_RULES still has the last word.
        if (!options.verbose)
            QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
        QString error;
        std::optional<DryRun> copies;
        if (options.dryRun && !copies.emplace().redirect(options, &error))
            return refuse(error);
        if (copies)
            announce(*copies);
        // Before anything else: it takes a process without further threads.
        if (!options.flash.isEmpty() && !mountUnitsFlash(options, &error))
            return refuse(error);
        if (!options.window) {
            loadModuleTexts(options);
            return run(options);
        }
        noScreenText = QCoreApplication::translate(
            "Bench",
            "There is no screen for the window: set DISPLAY, WAYLAND_DISPLAY or QT_QPA_PLATFORM to "
            "one that can be reached, or leave --window out.");
        screenPath =
            QCoreApplication::applicationDirPath() + QLatin1String("/" PRODUCTION_BENCH_WINDOW);
    }
    return runWindow(argc, argv, options, screenPath);
}
