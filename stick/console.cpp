#include "console.h"

#include <QJsonDocument>

#include <cstdio>
#include <unistd.h>

namespace stick {

namespace {

bool wantsColour()
{
    return ::isatty(STDOUT_FILENO) && qEnvironmentVariableIsEmpty("NO_COLOR")
        && qgetenv("TERM") != "dumb";
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
{
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
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

void Console::complain(const QString &line)
{
    std::fflush(stdout);
    std::fprintf(stderr, "%s\n", qUtf8Printable(line));
}

bool Console::finish()
{
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
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
