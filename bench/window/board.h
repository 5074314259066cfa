#pragma once

#include "../line.h"
#include "callqueue.h"
#include "unitstate.h"

#include <QObject>

namespace bench {

/**
 * What stands between the bench's services and the widgets: keeps the state that they show, and
 * takes what the user does to the line. Lives in the main thread.
 */
class Board : public QObject
{
    Q_OBJECT

public:
    /// @p options must outlive the board.
    explicit Board(const Options &options);

    /**
     * Places the first unit with the sticks that the options name, and starts it if there are any.
     * On failure returns false with a sentence for the user in @p error.
     */
    bool open(QString *error);

    const UnitState &state() const { return m_state; }

    /// Whether the module lives, so that the window cannot simply go away.
    bool isBusy() const;

    /// Whether proceed() does anything.
    bool canProceed() const { return m_state.stage != UnitState::Running; }

public slots:
    /// Switches the unit on or, when it has had its turn, puts the next one there with the same
    /// sticks and switches that on.
    void proceed();

    void plug(const QString &directory);
    void unplug(const QString &directory);

    /// The interface module @p name sees data.
    void reportData(const QString &name);

    /// Ends the module as an application does that shuts down.
    void quit();

signals:
    void changed();

    /// @p sentence tells the user what did not work.
    void failed(const QString &sentence);

private slots:
    void onCalled(const bench::Call &call);
    void onPassOver(const bench::PassResult &result);
    void onWaiting();
    void onUnmounted(const QString &directory);
    void onOver();

private:
    bool placeUnit(QString *error);
    void placeNextUnit(const QStringList &sticks);
    void startUnit();
    void readSticks();
    void setStage(UnitState::Stage stage);

    const Options &m_options;
    Line m_line;
    CallQueue m_calls;
    UnitState m_state;
    QStringList m_sticksAtStart; ///< of this unit; the next one gets them when none is plugged
    /// Set when the next unit is to come, with these, as soon as the module of this one is gone.
    std::optional<QStringList> m_nextSticks;
};

} // namespace bench
