#include "options.h"

#include "mountwatcher.h"
#include "platform/moduleregistry.h"
#include "pools.h"

#include <configurationfiles.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <limits>

namespace bench {

namespace {

/// The command line's options; each has its name in one place.
class Line
{
    Q_DECLARE_TR_FUNCTIONS(Options)

public:
    QCommandLineOption unit{
        QStringLiteral("unit"),
        tr("The unit's data; created when missing. Without it, a new unit that is thrown away."),
        QStringLiteral("DIR")};
    QCommandLineOption stick{
        QStringLiteral("stick"),
        tr("A folder that stands for a mounted USB storage device. May be repeated; the order is "
           "the order reported."),
        QStringLiteral("DIR")};
    QCommandLineOption media{
        QStringLiteral("media"),
        tr("Every mount point beneath DIR is a USB storage device, as it comes and goes; may be "
           "repeated. Without DIR: where the desktop mounts removable media, /media/$USER and "
           "/run/media/$USER. The unit is switched on once there is a stick."),
        QStringLiteral("DIR")};
    QCommandLineOption flash{
        QStringLiteral("flash"),
        tr("A folder that stands for the unit's flash, /media/flash/userdata. Takes root, or a "
           "kernel that lets users have namespaces of their own."),
        QStringLiteral("DIR")};
    QCommandLineOption unplugWhenDone{
        QStringLiteral("unplug-when-done"),
        tr("Unplug the stick of the pass when the pass is over and every message has been shown. "
           "A pass over the flash file, which no stick ends, is ended as by 'quit'.")};
    QCommandLineOption loop{
        QStringLiteral("loop"),
        tr("One unit after another, each when the next stick is plugged; --unit then names the "
           "folder in which each gets a numbered one. With --unplug-when-done the same sticks go "
           "on to the next unit at once, until a pool is used up, a pass takes no serial or the "
           "operator is told of trouble.")};
    QCommandLineOption dryRun{
        QStringLiteral("dry-run"),
        tr("Run one pass on copies of the unit, the sticks and the flash, and report what would "
           "have happened; nothing of it stays. Standard input is not read.")};
    QCommandLineOption set{
        QStringLiteral("set"),
        tr("Preset the unit's data, as text; AREA is Factory, Runtime, Production or User. May be "
           "repeated."),
        QStringLiteral("AREA/KEY=VALUE")};
    QCommandLineOption displaySize{QStringLiteral("display-size"),
                                   tr("The panel's size in inches that the unit tells the module."),
                                   QStringLiteral("TEXT")};
    QCommandLineOption stepRange{
        QStringLiteral("step-range"),
        tr("The highest backlight step, 0 to 255: a step table holds one value more. Default: 10."),
        QStringLiteral("N")};
    QCommandLineOption model{QStringLiteral("model"), tr("The head unit's model. Default: 0."),
                             QStringLiteral("N")};
    QCommandLineOption without{
        QStringLiteral("without"),
        tr("Leave out the \"canbus\" or the \"mcu\" module. May be repeated."),
        QStringLiteral("NAME")};
    QCommandLineOption lateUsb{
        QStringLiteral("late-usb"),
        tr("Device events are requested only after all modules have started.")};
    QCommandLineOption window{
        QStringLiteral("window"),
        tr("Show the unit in a window, where one unit after another can be tried; --unit then "
           "names the folder in which each gets a numbered one.")};
    QCommandLineOption timeout{
        QStringLiteral("timeout"),
        tr("Give up after that long; of several units, each and each wait for a stick counts. Not "
           "with --window."),
        QStringLiteral("SECONDS")};
    QCommandLineOption journal{
        QStringLiteral("journal"),
        tr("Append one line of JSON for every call of the module on the platform, in order."),
        QStringLiteral("FILE")};
    QCommandLineOption verbose{QStringLiteral("verbose"),
                               tr("Show the module's log on standard error too.")};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")}, tr("Show this help.")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               tr("Show the version.")};

    static QString epilogue()
    {
        return tr(
            "Without --window, lines on standard input act while it runs; their end changes\n"
            "nothing:\n"
            "  plug DIR, unplug DIR     a stick comes or goes\n"
            "  canbus, mcu              the module sees data on its interface\n"
            "  quit                     the application ends, and the module with it\n"
            "\n"
            "Exit codes:\n"
            "  0  the module has ended: after the unplugging, by itself, with nothing to do, or\n"
            "     by 'quit'\n"
            "  1  wrong usage, or a unit directory, stick, flash folder or journal that cannot be\n"
            "     used, or no production file on any of the sticks; nothing has been run\n"
            "  3  timed out\n");
    }
};

/**
 * Takes the options apart one by one; the first fault makes a sentence in error(), and nothing
 * counts after it.
 */
class Reading
{
    Q_DECLARE_TR_FUNCTIONS(Options)

public:
    Reading(const QCommandLineParser &parser, Options &options)
        : m_parser(parser)
        , m_options(options)
    {
    }

    void readAll(const Line &line)
    {
        if (!m_parser.positionalArguments().isEmpty())
            fail(tr("\"%1\" is not an option.").arg(m_parser.positionalArguments().constFirst()));
        m_options.unplugWhenDone = m_parser.isSet(line.unplugWhenDone);
        m_options.unit.lateUsb = m_parser.isSet(line.lateUsb);
        m_options.verbose = m_parser.isSet(line.verbose);
        m_options.window = m_parser.isSet(line.window);
        m_options.loop = m_parser.isSet(line.loop);
        m_options.dryRun = m_parser.isSet(line.dryRun);
        if (m_options.window && m_parser.isSet(line.timeout))
            fail(tr("--timeout is for the terminal; a window stays until it is closed."));
        if (m_options.window && m_options.loop)
            fail(tr("--loop is for the terminal; the window has a button for the next unit."));
        m_options.unit.displaySize = m_parser.value(line.displaySize);
        m_options.unit.stepRange = quint8(number(line.stepRange, 0, 255, m_options.unit.stepRange));
        m_options.unit.modelId = number(line.model, std::numeric_limits<qint32>::min(),
                                        std::numeric_limits<qint32>::max(), 0);
        // The upper end is what a timer takes in milliseconds.
        m_options.timeoutSeconds =
            number(line.timeout, 1, std::numeric_limits<int>::max() / 1000, 0);
        readPresets(line.set);
        readModules(line.without);
        readMedia(line.media);
        // Only folders that are named can be copied before a pass runs on them.
        if (m_options.dryRun && (m_options.window || m_options.loop || !m_options.media.isEmpty()))
            fail(tr("--dry-run runs one pass on the sticks that are named."));
        readSticks(line.stick);
        readPlaces(line);
        checkForFile();
    }

    QString error() const { return m_error; }

private:
    void fail(const QString &sentence)
    {
        if (m_error.isEmpty())
            m_error = sentence;
    }

    static QString shown(const QCommandLineOption &option)
    {
        return QLatin1String("--") + option.names().constLast();
    }

    int number(const QCommandLineOption &option, int least, int most, int otherwise)
    {
        if (!m_parser.isSet(option))
            return otherwise;
        bool ok = false;
        const int value = m_parser.value(option).toInt(&ok);
        if (ok && value >= least && value <= most)
            return value;
        fail(tr("%1 takes a whole number from %2 to %3, not \"%4\".")
                 .arg(shown(option))
                 .arg(least)
                 .arg(most)
                 .arg(m_parser.value(option)));
        return otherwise;
    }

    void readPresets(const QCommandLineOption &option)
    {
        const QStringList presets = m_parser.values(option);
        for (const QString &preset : presets) {
            const int slash = preset.indexOf(QLatin1Char('/'));
            const int equals = preset.indexOf(QLatin1Char('='));
            const auto area = areaFromName(preset.left(slash));
            if (slash > 0 && equals > slash + 1 && area)
                m_options.unit.presets.append(
                    {*area, preset.mid(slash + 1, equals - slash - 1), preset.mid(equals + 1)});
            else
                fail(tr("--set takes AREA/KEY=VALUE with the area Factory, Runtime, Production or "
                        "User, not \"%1\".")
                         .arg(preset));
        }
    }

    void readModules(const QCommandLineOption &option)
    {
        m_options.unit.modulesLeftOut = m_parser.values(option);
        for (const QString &name : qAsConst(m_options.unit.modulesLeftOut)) {
            if (!interfaceModuleNames().contains(name))
                fail(tr("--without takes \"canbus\" or \"mcu\", not \"%1\".").arg(name));
        }
    }

    QString folder(const QCommandLineOption &option, const QString &path)
    {
        if (!QFileInfo(path).isDir())
            fail(tr("%1: %2 is not a folder; name one that exists.").arg(shown(option), path));
        return QDir(path).absolutePath();
    }

    void readSticks(const QCommandLineOption &option)
    {
        const QStringList paths = m_parser.values(option);
        for (const QString &path : paths) {
            const QString stick = folder(option, path);
            if (m_options.sticks.contains(stick))
                fail(tr("%1: %2 is named twice.").arg(shown(option), path));
            m_options.sticks.append(stick);
        }
    }

    void readMedia(const QCommandLineOption &option)
    {
        const QStringList paths = m_parser.values(option);
        for (const QString &path : paths)
            m_options.media.append(folder(option, path));
    }

    /// Unless other sticks can come, the module would find nothing to do.
    void checkForFile()
    {
        const QStringList &sticks = m_options.sticks;
        const bool holdsNone = std::all_of(sticks.begin(), sticks.end(), [](const QString &stick) {
            return configurationFileOn(stick).isEmpty();
        });
        if (holdsNone && !sticks.isEmpty() && m_options.media.isEmpty() && m_options.flash.isEmpty()
            && !m_options.window)
            fail(tr("There is no production file on %1; put one there, named %2.")
                     .arg(sticks.join(QLatin1String(", ")),
                          production::configurationFileNames().join(QLatin1String(", "))));
    }

    void readPlaces(const Line &line)
    {
        m_options.unit.unitDirectory = m_parser.value(line.unit);
        if (m_parser.isSet(line.unit) && m_options.unit.unitDirectory.isEmpty())
            fail(tr("%1 takes the name of a folder.").arg(shown(line.unit)));
        if (m_parser.isSet(line.flash))
            m_options.flash = folder(line.flash, m_parser.value(line.flash));

        m_options.journal = m_parser.value(line.journal);
        const QFileInfo journal(m_options.journal);
        if (m_parser.isSet(line.journal)
            && (m_options.journal.isEmpty() || journal.isDir() || !journal.dir().exists()))
            fail(tr("%1: \"%2\" cannot be a file; name one in a folder that exists.")
                     .arg(shown(line.journal), m_options.journal));
    }

    const QCommandLineParser &m_parser;
    Options &m_options;
    QString m_error;
};

/// Takes --media without a folder, which the parser does not know, out of @p arguments.
bool takeBareMedia(QStringList &arguments, const QCommandLineOption &media)
{
    const QString name = QLatin1String("--") + media.names().constFirst();
    bool found = false;
    for (int i = arguments.size() - 1; i > 0; --i) {
        const bool bare =
            i + 1 == arguments.size() || arguments.at(i + 1).startsWith(QLatin1Char('-'));
        if (arguments.at(i) == name && bare) {
            arguments.removeAt(i);
            found = true;
        }
    }
    return found;
}

} // namespace

Request parseOptions(const QStringList &arguments, Options &options, QString &text)
{
    const Line line;
    QCommandLineParser parser;
    parser.setApplicationDescription(Line::tr(
        "Runs the production module on a stand-in head unit and shows what the operator sees."));
    parser.addOptions({line.unit, line.stick, line.media, line.flash, line.unplugWhenDone,
                       line.dryRun, line.loop, line.set, line.displaySize, line.stepRange,
                       line.model, line.without, line.lateUsb, line.window, line.timeout,
                       line.journal, line.verbose, line.help, line.version});

    QStringList completed = arguments;
    if (takeBareMedia(completed, line.media))
        options.media = desktopMediaFolders();
    const bool parsed = parser.parse(completed);
    if (parsed && parser.isSet(line.help)) {
        text = parser.helpText() + QLatin1Char('\n') + Line::epilogue();
        return Request::Show;
    }
    if (parsed && parser.isSet(line.version)) {
        text = QCoreApplication::applicationName() + QLatin1Char(' ')
            + QCoreApplication::applicationVersion() + QLatin1Char('\n');
        return Request::Show;
    }

    Reading reading(parser, options);
    if (parsed)
        reading.readAll(line);
    const QString error = parsed ? reading.error() : parser.errorText();
    if (error.isEmpty())
        return Request::Run;
    text = error + QLatin1Char('\n') + Line::tr("production-bench --help tells the options.")
        + QLatin1Char('\n');
    return Request::Refuse;
}

} // namespace bench
