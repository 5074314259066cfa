#pragma once

#include "call.h"
#include "passrecord.h"
#include "verdict.h"

#include <QCoreApplication>

#include <mutex>

namespace bench {

/**
 * The operator's view as lines on standard output, in UTF-8.
 *
 * An observer of the head unit: every operation may be called in any thread.
 */
class Terminal
{
    Q_DECLARE_TR_FUNCTIONS(Terminal)

public:
    /// Colour only where standard output is a terminal and NO_COLOR is not set.
    Terminal();

    void show(const Call &call);
    void show(const PassResult &result);
    void show(const Verdict &verdict);

    /// Opens the lines of the unit @p name.
    void beginUnit(const QString &name);

    /// A remark of the bench itself.
    void note(const QString &text);

private:
    enum Style { Plain, Faint, Good, Bad };

    QString popupText(const Popup &popup) const;
    Style popupStyle(const Popup &popup) const;
    void showCommand(const QString &command);
    void showStoredValues(const QVector<UnitValue> &values);
    void showSerials(const Verdict &verdict);
    void line(const QString &label, const QString &text, Style style = Plain);
    void row(const QString &label, const QString &text, Style style = Plain);
    void flushCommand();
    void write(const QString &text);
    QString styled(const QString &text, Style style) const;

    const bool m_colour;
    std::mutex m_mutex; ///< protects the members below and standard output
    QString m_command; ///< the last shell command, held back to count its repetitions
    int m_commandCount = 0;
};

} // namespace bench
