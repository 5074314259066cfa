#pragma once

#include <QJsonObject>
#include <QString>

namespace stick {

/**
 * Standard output and standard error of the tool, in UTF-8. Colours only where standard output is
 * a terminal and NO_COLOR is not set.
 */
class Console
{
public:
    enum Style { Plain, Bold, Faint, Red, Green, Magenta, Cyan };

    Console();

    void print(const QString &line);
    void print(const QJsonObject &object);
    void write(const QByteArray &bytes);
    /// A line on standard error.
    void complain(const QString &line);
    /// False when standard output did not take everything.
    bool finish();

    QString styled(const QString &text, Style style) const;

private:
    const bool m_colour;
};

/// @p text for a terminal, which control characters of a file must not reach.
QString printable(QString text);

} // namespace stick
