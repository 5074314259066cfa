#pragma once

#include <QJsonObject>
#include <QString>

#include <memory>

namespace stick {

class Progress;

/**
 * Standard output and standard error of the tool, in UTF-8. Colours only where standard output is
 * a terminal and NO_COLOR is not set.
 */
class Console
{
public:
    enum Style { Plain, Bold, Faint, Red, Green, Magenta, Cyan };

    Console();
    ~Console();

    /// Shows @p what is going on where it takes long, until there is something to be read instead.
    void showProgress(const QString &what);
    void print(const QString &line);
    void print(const QJsonObject &object);
    void write(const QByteArray &bytes);
    /// A line on standard error, which must not hold any styles.
    void complain(const QString &line);
    /// False when standard output did not take everything.
    bool finish();

    QString styled(const QString &text, Style style) const;

private:
    const bool m_colour;
    const bool m_fillsFile; ///< Standard output is a file: nobody reads it meanwhile.
    std::unique_ptr<Progress> m_progress;
};

/// @p text for a terminal, which control characters of a file must not reach.
QString printable(QString text);

} // namespace stick
