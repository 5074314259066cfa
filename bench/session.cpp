#include "session.h"

#include "pools.h"

#include <productioncontrol.h>

#include <QTimer>

#include <cstdio>
#include <unistd.h>

namespace bench {

namespace {

/// How long a pass may go on after the application has ended before it is abandoned.
constexpr int graceMilliseconds = 5000;

void hint(const QString &text)
{
    fprintf(stderr, "%s\n", qUtf8Printable(text));
}

} // namespace

Session::Session(HeadUnit &unit, const Options &options)
    : m_unit(unit)
    , m_options(options)
{
    m_unit.observe([this](const Call &call) { m_record.note(call); });
}

void Session::start()
{
    m_started = true;
    if (m_options.timeoutSeconds > 0)
        QTimer::singleShot(m_options.timeoutSeconds * 1000, this, &Session::onTimeout);

    m_control = ProductionControl::getInstance();
    connect(m_control, &QObject::destroyed, this, &Session::onControlDestroyed);
    connect(m_control, &ProductionControl::startExe, this, &Session::onPassRequested);
    m_unit.startAllModules();
    if (m_options.unit.lateUsb)
        QTimer::singleShot(0, this, [this] { m_unit.requestDeviceEvents(); });
}

/// Before the pass: what it will use is still there, and the worker's thread exists.
void Session::onPassRequested(const QString &path)
{
    QString file = path;
    m_flashPass = !path.isEmpty();
    const QStringList sticks = m_unit.sticks();
    for (const QString &stick : sticks) {
        if (!file.isEmpty())
            break;
        file = configurationFileOn(stick);
        if (!file.isEmpty())
            m_stick = stick;
    }
    m_record.begin(file, m_stick);
    m_resultDue = true;

    m_thread = m_control->findChild<QThread *>();
    if (m_thread)
        connect(m_thread, &QObject::destroyed, this, &Session::checkOver, Qt::QueuedConnection);
    // The worker has not been told yet; from the main loop the probe comes after its pass.
    QMetaObject::invokeMethod(this, &Session::probePass, Qt::QueuedConnection);
}

/**
 * An object that the worker's thread destroys once it has done all that was queued for it before;
 * the news of that comes after everything the pass has sent. A plain QObject: the thread sanitizer
 * does not see that Qt's event queue orders what the two threads do to one of our own.
 */
void Session::probePass()
{
    if (!m_control || !m_thread)
        return; // the application has ended first, and the thread with it
    auto *probe = new QObject;
    connect(probe, &QObject::destroyed, this, &Session::onPassReturned, Qt::QueuedConnection);
    probe->moveToThread(m_thread);
    probe->deleteLater();
}

void Session::onPassReturned()
{
    tellResult();
    if (m_options.unplugWhenDone)
        endPass();
    else if (m_control)
        emit waiting();
}

void Session::tellResult()
{
    if (!m_resultDue)
        return;
    m_resultDue = false;
    PassResult result = m_record.result();
    result.pulled = !m_stick.isEmpty() && !m_unit.sticks().contains(m_stick);
    emit passOver(result);
}

void Session::endPass()
{
    QString error;
    if (m_unit.sticks().contains(m_stick))
        m_unit.unplug(m_stick, &error);
    else if (m_flashPass)
        quit();
}

void Session::onControlDestroyed()
{
    tellResult();
    // A pass that ends the module by itself may do so before the news of the probe arrives.
    if (m_options.unplugWhenDone && !m_flashPass)
        endPass();
    m_unit.report({calls::ended, {}, Call::Lifecycle});
    checkOver();
}

void Session::checkOver()
{
    if (!m_control && !m_thread)
        emit over(m_exitCode);
}

void Session::onTimeout()
{
    if (!m_control && !m_thread)
        return;
    hint(tr("Timed out after %n second(s).", nullptr, m_options.timeoutSeconds));
    stop(TimedOut);
}

void Session::quit()
{
    stop(ModuleEnded);
}

void Session::stop(int exitCode)
{
    m_exitCode = exitCode;
    QTimer::singleShot(graceMilliseconds, this, &Session::giveUp);
    delete m_control;
}

/// A pass that never returns: nothing may be destroyed under it.
void Session::giveUp()
{
    if (!m_control && !m_thread)
        return;
    hint(tr("The pass does not return; it is abandoned."));
    ::_exit(m_exitCode);
}

void Session::execute(const QString &line)
{
    const QString command = line.section(QLatin1Char(' '), 0, 0);
    runCommand(command, line.mid(command.size()).trimmed());
}

void Session::runCommand(const QString &command, const QString &argument)
{
    QString error;
    const bool takesStick = command == QLatin1String("plug") || command == QLatin1String("unplug");
    if (takesStick == argument.isEmpty()) {
        error = tr("Known lines: plug DIR, unplug DIR, canbus, mcu, quit.");
    } else if (command == QLatin1String("plug")) {
        m_unit.plug(argument, &error);
    } else if (command == QLatin1String("unplug")) {
        m_unit.unplug(argument, &error);
    } else if (command == QLatin1String("quit")) {
        quit();
    } else if (!m_unit.reportData(command)) {
        error = tr("There is no module \"%1\"; known lines: plug DIR, unplug DIR, canbus, mcu, "
                   "quit.")
                    .arg(command);
    }
    if (!error.isEmpty())
        hint(error);
}

} // namespace bench
