#pragma once

#include "headunit.h"
#include "journal.h"
#include "mountwatcher.h"
#include "options.h"
#include "passrecord.h"

#include <QObject>
#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace bench {

class Session;

/**
 * The production line: brings up one fresh head unit after another, each with a session that takes
 * it through production. Lives in the main thread and owns the unit and its session.
 */
class Line : public QObject
{
    Q_OBJECT

public:
    /// @p options must outlive the line.
    explicit Line(const Options &options);
    ~Line() override;

    /// From now on every unit has @p observer; see HeadUnit::observe().
    void observe(CallObserver observer);

    /**
     * Opens the journal, to which all units write, and watches for the real sticks, if the options
     * ask for them. Before the first unit, which is not touched when that fails: returns false with
     * a sentence for the user in @p error.
     */
    bool open(QString *error);

    /// What a new unit is to find plugged: the folders that the options name and the real sticks.
    QStringList sticks() const;

    /**
     * Puts the next unit, switched off and without sticks, in the place of the one before, whose
     * module must be gone. On failure returns false with a sentence for the user in @p error, and
     * there is no unit.
     */
    bool placeUnit(QString *error);

    /// Plugs those of @p sticks that are folders; the others are told on standard error.
    void plug(const QStringList &sticks);

    /// Unit and session are null before the first unit and where placing one has failed. Starting
    /// the session, once, switches the unit on.
    HeadUnit *unit() const { return m_unit.get(); }
    Session *session() const { return m_session.get(); }

    /// The name of the folder with the unit's data.
    QString unitName() const;

signals:
    // As of the unit's session.
    void passOver(const bench::PassResult &result);
    void waiting();
    void over(int exitCode);

    // A real stick; the unit has not been told.
    void mounted(const QString &stick);
    void unmounted(const QString &stick);

private:
    bool openJournal(QString *error);
    void removeUnusedUnit();
    QString nextUnitDirectory() const;

    const Options &m_options;
    std::unique_ptr<QTemporaryDir> m_throwaway; ///< for units that the user wants no data of
    QString m_unitDirectory;
    Journal m_journal;
    MountWatcher m_media;
    std::vector<CallObserver> m_observers;
    std::unique_ptr<HeadUnit> m_unit;
    std::unique_ptr<Session> m_session; ///< observes m_unit for as long as that exists
};

} // namespace bench
