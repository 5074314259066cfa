#include "terminalrun.h"

#include "session.h"

#include <cstdio>
#include <unistd.h>

namespace bench {

namespace {

bool isCommand(const QString &line, const char *command)
{
    return line.section(QLatin1Char(' '), 0, 0) == QLatin1String(command);
}

} // namespace

TerminalRun::TerminalRun(const Options &options)
    : m_options(options)
    , m_line(options)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(options.timeoutSeconds * 1000);
    connect(&m_patience, &QTimer::timeout, this, &TerminalRun::onTimeout);
    m_line.observe([this](const Call &call) { m_terminal.show(call); });
    connect(&m_line, &Line::mounted, this, &TerminalRun::plug);
    connect(&m_line, &Line::unmounted, this, &TerminalRun::unplug);
    connect(&m_line, &Line::passOver, this, &TerminalRun::onPassOver);
    connect(&m_line, &Line::waiting, this, &TerminalRun::onWaiting);
    // Queued: the session that tells it is replaced there.
    connect(&m_line, &Line::over, this, &TerminalRun::onUnitOver, Qt::QueuedConnection);
}

bool TerminalRun::open(QString *error)
{
    return m_line.open(error) && m_line.placeUnit(error);
}

void TerminalRun::begin()
{
    if (m_options.loop)
        m_terminal.beginUnit(unitName());
    m_line.plug(m_line.sticks());
    const bool sticksToCome = m_options.loop || !m_options.media.isEmpty();
    if (sticksToCome && m_line.unit()->sticks().isEmpty() && m_options.flash.isEmpty())
        waitForStick();
    else
        start();
}

void TerminalRun::execute(const QString &line)
{
    if (isCommand(line, "quit")) {
        m_quit = true;
        if (m_stage != Running) {
            emit over(ModuleEnded);
            return;
        }
    }
    if (!isCommand(line, "plug") || providesUnit())
        change([&] { m_line.session()->execute(line); });
}

void TerminalRun::plug(const QString &stick)
{
    if (!m_line.unit()->sticks().contains(stick) && providesUnit())
        change([&] { m_line.plug({stick}); });
}

void TerminalRun::unplug(const QString &stick)
{
    QString ignored; // the user may have unplugged it with a line
    change([&] { m_line.unit()->unplug(stick, &ignored); });
}

/// Makes sure that a stick which comes after a unit's turn comes to the next one.
bool TerminalRun::providesUnit()
{
    return m_stage != Over || placeNext(m_line.unit()->sticks());
}

/// Does @p action, which may change the unit's sticks, and switches a unit on for one that came.
void TerminalRun::change(const std::function<void()> &action)
{
    const QStringList before = m_line.unit()->sticks();
    action();
    const QStringList after = m_line.unit()->sticks();
    for (const QString &stick : after) {
        if (!before.contains(stick))
            m_untried.append(stick);
    }
    for (const QString &stick : before) {
        if (!after.contains(stick))
            m_untried.removeAll(stick);
    }
    proceed();
}

void TerminalRun::proceed()
{
    if (m_stage == Running || m_untried.isEmpty())
        return;
    if (m_stage == Off || placeNext(m_line.unit()->sticks()))
        start();
}

void TerminalRun::start()
{
    m_patience.stop();
    m_untried.clear();
    m_stage = Running;
    m_line.session()->start();
}

void TerminalRun::onPassOver(const PassResult &result)
{
    m_result = result;
    m_terminal.show(result);
}

void TerminalRun::onWaiting()
{
    if (::isatty(STDIN_FILENO))
        m_terminal.note(tr("Now: unplug DIR, plug DIR, canbus, mcu, quit"));
}

void TerminalRun::onUnitOver(int exitCode)
{
    m_stage = Over;
    const Verdict result = verdict();
    m_terminal.show(result);
    const bool noFile = m_result && m_result->configurationFile.isEmpty();
    if (exitCode != ModuleEnded || m_quit)
        emit over(exitCode);
    else if (!m_options.loop)
        emit over(noFile ? Unusable : ModuleEnded);
    else if (m_options.unplugWhenDone)
        serveNextAtOnce(result);
    else if (m_untried.isEmpty())
        waitForStick();
    else
        proceed();
}

void TerminalRun::serveNextAtOnce(const Verdict &verdict)
{
    const QString hindrance = verdict.hindrance();
    if (!hindrance.isEmpty()) {
        m_terminal.note(hindrance);
        emit over(ModuleEnded);
    } else if (!placeNext(m_line.sticks())) {
        return;
    } else if (m_line.unit()->sticks().isEmpty()) {
        waitForStick();
    } else {
        start();
    }
}

/// Puts the next unit there with @p sticks; when that fails, the run is over.
bool TerminalRun::placeNext(const QStringList &sticks)
{
    QString error;
    m_result.reset();
    m_stage = Off;
    if (!m_line.placeUnit(&error)) {
        fprintf(stderr, "%s\n", qUtf8Printable(error));
        emit over(Unusable);
        return false;
    }
    m_terminal.beginUnit(unitName());
    m_line.plug(sticks);
    return true;
}

void TerminalRun::waitForStick()
{
    if (m_options.timeoutSeconds > 0)
        m_patience.start();
    m_terminal.note(m_options.media.isEmpty()
                        ? tr("Waiting for the next stick: plug DIR, or quit")
                        : tr("Waiting for the next stick beneath %1: mount it, plug DIR, or quit")
                              .arg(m_options.media.join(QLatin1String(", "))));
}

void TerminalRun::onTimeout()
{
    fprintf(stderr, "%s\n",
            qUtf8Printable(
                tr("No stick has come within %n second(s).", nullptr, m_options.timeoutSeconds)));
    emit over(TimedOut);
}

Verdict TerminalRun::verdict() const
{
    Verdict verdict;
    verdict.unit = unitName();
    verdict.pass = m_result;
    verdict.told = m_line.session()->told();
    return verdict;
}

QString TerminalRun::unitName() const
{
    const bool named = m_options.loop || !m_options.unit.unitDirectory.isEmpty();
    return named ? m_line.unitName() : tr("The unit");
}

} // namespace bench
