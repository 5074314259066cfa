#pragma once

#include "line.h"
#include "terminal.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

namespace bench {

/**
 * Takes a unit through production on the terminal or, with --loop, one after another, each when a
 * stick comes. Lives in the main thread.
 */
class TerminalRun : public QObject
{
    Q_OBJECT

public:
    /// @p options must outlive the run.
    explicit TerminalRun(const Options &options);

    /// Places the first unit. On failure returns false with a sentence for the user in @p error.
    bool open(QString *error);

public slots:
    /// Plugs the sticks that are there, and goes on from then until over().
    void begin();

    /// A line of standard input.
    void execute(const QString &line);

signals:
    void over(int exitCode);

private slots:
    void plug(const QString &stick);
    void unplug(const QString &stick);
    void onPassOver(const bench::PassResult &result);
    void onWaiting();
    void onUnitOver(int exitCode);
    void onTimeout();

private:
    enum Stage {
        Off, ///< the unit waits for its first stick
        Running,
        Over, ///< the unit has had its turn
    };

    void change(const std::function<void()> &action);
    bool providesUnit();
    void proceed();
    void serveNextAtOnce(const Verdict &verdict);
    bool placeNext(const QStringList &sticks);
    void start();
    void waitForStick();
    Verdict verdict() const;
    QString unitName() const;

    const Options &m_options;
    Terminal m_terminal; ///< before the line, whose unit reports to it
    Line m_line;
    QTimer m_patience; ///< runs while no unit does, if there is a limit
    Stage m_stage = Off;
    bool m_quit = false; ///< the user wants no further unit
    QStringList m_untried; ///< sticks that have come since a unit was last switched on
    std::optional<PassResult> m_result; ///< of this unit's pass
};

} // namespace bench
