#pragma once

#include "options.h"
#include "passrecord.h"

#include <QObject>
#include <QPointer>
#include <QThread>

class ProductionControl;

namespace bench {

/**
 * One life of the module on a head unit: starts it as the application does, notices the end of the
 * pass and of the module, and does what the options and the user ask for in between. Lives in the
 * main thread.
 *
 * The module is watched from outside only, through its public signals and its QObject tree.
 */
class Session : public QObject
{
    Q_OBJECT

public:
    /// The references must outlive the session.
    Session(HeadUnit &unit, const Options &options);

    bool hasStarted() const { return m_started; }

    /// What the unit has told the operator.
    QVector<Popup> told() const { return m_record.told(); }

public slots:
    /// The application has started, with whatever sticks are plugged. Once.
    void start();

    /// Ends production mode: unplugs the stick of the pass, or for a flash file does as quit().
    void endPass();

    /// Ends the module as an application does that shuts down.
    void quit();

    /// A line of standard input.
    void execute(const QString &line);

signals:
    /// The pass has returned and all that it sent has been handled.
    void passOver(const bench::PassResult &result);

    /// After passOver(): the module stays until the stick is unplugged, or quit.
    void waiting();

    /// The module and its thread are gone.
    void over(int exitCode);

private slots:
    void onPassRequested(const QString &path);
    void probePass();
    void onPassReturned();
    void onControlDestroyed();
    void onTimeout();
    void giveUp();

private:
    void tellResult();
    void stop(int exitCode);
    void checkOver();
    void runCommand(const QString &command, const QString &argument);

    HeadUnit &m_unit;
    const Options &m_options;
    PassRecord m_record;

    bool m_started = false;
    QPointer<ProductionControl> m_control;
    QPointer<QThread> m_thread; ///< the worker's; null before the pass and once it has ended
    QString m_stick; ///< that of the pass; empty for a flash file, or when no stick holds a file
    bool m_flashPass = false;
    bool m_resultDue = false; ///< a pass has begun whose result has not been told
    int m_exitCode = ModuleEnded;
};

} // namespace bench
