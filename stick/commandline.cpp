#include "commandline.h"

#include "texts.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace stick {

namespace {

/// The options of the commands; each has its name in one place.
struct Line
{
    QCommandLineOption json{QStringLiteral("json"), Texts::tr("Print JSON instead of text.")};
    QCommandLineOption low{QStringLiteral("low"),
                           Texts::tr("Report pools with fewer than N usable entries. Default: 10."),
                           QStringLiteral("N")};
    QCommandLineOption limit{
        QStringLiteral("limit"),
        Texts::tr("Print at most N findings of each code and file, 0 for all. Default: 20."),
        QStringLiteral("N")};
    QCommandLineOption stepRange{
        QStringLiteral("step-range"),
        Texts::tr("The unit's highest backlight step, 0 to 255: its step tables hold one value "
                  "more."),
        QStringLiteral("N")};
    QCommandLineOption issued{
        QStringLiteral("issued"),
        Texts::tr("All serials handed to the line: a production file as it was first issued, or "
                  "one serial per line. May be repeated."),
        QStringLiteral("LIST")};
    QCommandLineOption sticks{QStringLiteral("sticks"), Texts::tr("How many sticks to make."),
                              QStringLiteral("N")};
    QCommandLineOption into{
        QStringLiteral("into"),
        Texts::tr("The folder that gets the folders stick-1 to stick-N; created when missing."),
        QStringLiteral("DIR")};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                            Texts::tr("Show this help.")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               Texts::tr("Show the version.")};
};

struct CommandInfo
{
    Command command;
    QString name;
    QString operand; ///< What its positional arguments are called.
    QString operandText;
    bool severalOperands;
    QString summary;
    QList<QCommandLineOption> options;
};

QList<CommandInfo> commandInfos(const Line &line)
{
    const QString file = QStringLiteral("FILE");
    const QString fileText = Texts::tr("A production file.");
    return {
        {Command::Show,
         QStringLiteral("show"),
         file,
         fileText,
         false,
         Texts::tr("Show what the unit reads: every key, its value and its comment."),
         {line.json}},
        {Command::Format,
         QStringLiteral("format"),
         file,
         fileText,
         false,
         Texts::tr("Print the file as the unit's rewrite will leave it."),
         {}},
        {Command::Check,
         QStringLiteral("check"),
         QStringLiteral("PATH"),
         Texts::tr("A production file, or the folder of a stick."),
         true,
         Texts::tr("Tell what is wrong or surprising, and what the unit will do about it."),
         {line.json, line.low, line.limit, line.stepRange}},
        {Command::Audit,
         QStringLiteral("audit"),
         QStringLiteral("STICK"),
         Texts::tr("The folder of a stick."),
         true,
         Texts::tr("Tell what became of the serials on sticks that were in use."),
         {line.json, line.issued}},
        {Command::Split,
         QStringLiteral("split"),
         file,
         fileText,
         false,
         Texts::tr("Make several sticks with disjoint pools out of one file."),
         {line.sticks, line.into}},
    };
}

QString exitCodes()
{
    return Texts::tr("Exit codes:\n"
                     "  0  nothing to report\n"
                     "  1  something was found: an unreadable file, findings of check, serials\n"
                     "     that audit finds duplicate, missing, foreign or torn\n"
                     "  2  something cannot be read or written, or wrong usage\n");
}

QString generalHelp(const QList<CommandInfo> &infos)
{
    QString text = Texts::tr("Usage: production-stick COMMAND [options] ...\n"
                             "Prepares and examines the sticks that units are produced with.\n"
                             "\n"
                             "Commands:\n");
    for (const CommandInfo &info : infos)
        text += QStringLiteral("  %1  %2\n").arg(info.name.leftJustified(8), info.summary);
    text += Texts::tr("\n"
                      "production-stick COMMAND --help tells the options of a command.\n"
                      "show, format, check and audit never write to a stick.\n"
                      "\n");
    return text + exitCodes();
}

QString versionText()
{
    return QCoreApplication::applicationName() + QLatin1Char(' ')
        + QCoreApplication::applicationVersion() + QLatin1Char('\n');
}

/// Takes the options of one command apart; the first fault makes a sentence in error().
class Reading
{
public:
    Reading(const QCommandLineParser &parser, const Line &line, const CommandInfo &info)
        : m_parser(parser)
        , m_line(line)
        , m_info(info)
    {
    }

    Arguments read()
    {
        Arguments arguments;
        arguments.command = m_info.command;
        arguments.paths = m_parser.positionalArguments();
        checkOperands(arguments.paths);
        arguments.json = isSet(m_line.json);
        arguments.check.low = number(m_line.low, 0, maximum, arguments.check.low);
        arguments.check.limit = number(m_line.limit, 0, maximum, arguments.check.limit);
        if (isSet(m_line.stepRange))
            arguments.check.stepRange = number(m_line.stepRange, 0, 255, 0);
        if (takes(m_line.issued))
            arguments.issued = m_parser.values(m_line.issued);
        if (m_info.command == Command::Split)
            readSplit(arguments);
        return arguments;
    }

    QString error() const { return m_error; }

private:
    static constexpr int maximum = std::numeric_limits<int>::max();
    static constexpr int mostSticks = 1000;

    void fail(const QString &error)
    {
        if (m_error.isEmpty())
            m_error = error;
    }

    bool takes(const QCommandLineOption &option) const
    {
        return std::any_of(m_info.options.cbegin(), m_info.options.cend(),
                           [&](const auto &taken) { return taken.names() == option.names(); });
    }
    bool isSet(const QCommandLineOption &option) const
    {
        return takes(option) && m_parser.isSet(option);
    }

    void checkOperands(const QStringList &operands)
    {
        if (operands.isEmpty())
            fail(Texts::tr("%1 needs a %2.").arg(m_info.name, m_info.operand));
        else if (operands.contains(QString()))
            fail(Texts::tr("an empty text is no %1.").arg(m_info.operand));
        else if (operands.size() > 1 && !m_info.severalOperands)
            fail(Texts::tr("%1 takes one %2; \"%3\" is one too many.")
                     .arg(m_info.name, m_info.operand, operands.at(1)));
    }

    int number(const QCommandLineOption &option, int least, int most, int otherwise)
    {
        if (!isSet(option))
            return otherwise;
        bool ok = false;
        const int value = m_parser.value(option).toInt(&ok);
        if (ok && value >= least && value <= most)
            return value;
        fail(Texts::tr("--%1 takes a number from %2 to %3, not \"%4\".")
                 .arg(option.names().constFirst(), QString::number(least), QString::number(most),
                      m_parser.value(option)));
        return otherwise;
    }

    void readSplit(Arguments &arguments)
    {
        arguments.sticks = number(m_line.sticks, 1, mostSticks, 0);
        arguments.into = m_parser.value(m_line.into);
        if (arguments.sticks == 0)
            fail(Texts::tr("split needs --sticks with their number."));
        if (arguments.into.isEmpty())
            fail(Texts::tr("split needs --into with a folder."));
    }

    const QCommandLineParser &m_parser;
    const Line &m_line;
    const CommandInfo &m_info;
    QString m_error;
};

Request refuse(const QString &error, QString &text)
{
    text = error;
    return Request::Refuse;
}

Request parseCommand(const CommandInfo &info, const Line &line, const QStringList &arguments,
                     Arguments &result, QString &text)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(info.summary);
    parser.addOptions(info.options + QList<QCommandLineOption>{line.help, line.version});
    const QString operands =
        info.severalOperands ? info.operand + QLatin1String("...") : info.operand;
    parser.addPositionalArgument(info.operand, info.operandText,
                                 info.name + QLatin1Char(' ') + operands);

    if (!parser.parse(arguments))
        return refuse(parser.errorText(), text);
    if (parser.isSet(line.help) || parser.isSet(line.version)) {
        // Qt shows options before operands, and with them before the command.
        const QRegularExpression order(QStringLiteral(R"((\[[^]]*\]) (%1))").arg(info.name));
        text = parser.isSet(line.help) ? parser.helpText().replace(order, QStringLiteral("\\2 \\1"))
                + QLatin1Char('\n') + exitCodes()
                                       : versionText();
        return Request::Show;
    }
    Reading reading(parser, line, info);
    result = reading.read();
    return reading.error().isEmpty() ? Request::Run : refuse(reading.error(), text);
}

} // namespace

Request parseCommandLine(const QStringList &arguments, Arguments &result, QString &text)
{
    const Line line;
    const QList<CommandInfo> infos = commandInfos(line);
    const QString first = arguments.value(1);
    for (const CommandInfo &info : infos) {
        if (info.name == first)
            return parseCommand(info, line, arguments.mid(0, 1) + arguments.mid(2), result, text);
    }
    if (first == QLatin1String("--help") || first == QLatin1String("-h")
        || first == QLatin1String("--version") || first == QLatin1String("-v")) {
        text = first.contains(QLatin1Char('h')) ? generalHelp(infos) : versionText();
        return Request::Show;
    }
    return refuse(first.isEmpty() ? Texts::tr("a command is missing.")
                                  : Texts::tr("there is no command \"%1\".").arg(first),
                  text);
}

} // namespace stick
