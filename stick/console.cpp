#include "console.h"

#include "progress.h"

#include <QJsonDocument>

#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace stick {

namespace {

bool wantsColour()
{
    return ::isatty(STDOUT_FILENO) && qEnvironmentVariableIsEmpty("NO_COLOR")
        && qgetenv("TERM") != "dumb";
}

bool fillsFile()
{
    struct stat status = {};
    return ::fstat(STDOUT_FILENO, &status) == 0 && S_ISREG(status.st_mode);
}

const char *sequence(Console::Style style)
{
    switch (style) {
    case Console::Bold:
        return "\033[1m";
    case Console::Faint:
        return "\033[2m";
    case Console::Red:
        return "\033[1;31m";
    case Console::Green:
        return "\033[32m";
    case Console::Magenta:
        return "\033[1;35m";
    case Console::Cyan:
        return "\033[1;36m";
    case Console::Plain:
        break;
    }
    return "";
}

} // namespace

Console::Console()
    : m_colour(wantsColour())
    , m_fillsFile(fillsFile())
{
}

Console::~Console() = default;

void Console::showProgress(const QString &what)
{
    m_progress = std::make_unique<Progress>(printable(what));
}

void Console::print(const QString &line)
{
    write((line + QLatin1Char('\n')).toUtf8());
}

void Console::print(const QJsonObject &object)
{
    write(QJsonDocument(object).toJson());
}

void Console::write(const QByteArray &bytes)
{
    if (!m_fillsFile)
        m_progress.reset();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

void Console::complain(const QString &line)
{
    m_progress.reset();
    std::fflush(stdout);
    std::fprintf(stderr, "%s\n", qUtf8Printable(printable(line)));
}

bool Console::finish()
{
    const bool complete = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    m_progress.reset();
    return complete;
}

QString Console::styled(const QString &text, Style style) const
{
    if (!m_colour || style == Plain)
        return text;
    return QLatin1String(sequence(style)) + text + QLatin1String("\033[0m");
}

QString printable(QString text)
{
    for (QChar &c : text) {
        if (c.category() == QChar::Other_Control)
            c = c.unicode() < 0x20 ? QChar(0x2400 + c.unicode())
                                   : QChar(QChar::ReplacementCharacter);
    }
    return text;
}

} // namespace stick
