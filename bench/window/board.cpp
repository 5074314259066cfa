#include "board.h"

#include "../platform/moduleregistry.h"
#include "../session.h"

#include <datadefault.h>

namespace bench {

namespace {

/// The platform's own step table; before the module starts, which may replace it in its thread.
QVector<int> defaultStepTable()
{
    QVector<int> steps;
    for (const uchar step : qAsConst(DataDefault::panelLightStepValueList))
        steps.append(step);
    return steps;
}

} // namespace

Board::Board(const Options &options)
    : m_options(options)
    , m_line(options)
{
    m_line.observe([this](const Call &call) { m_calls.add(call); });
    connect(&m_calls, &CallQueue::called, this, &Board::onCalled);
    connect(&m_line, &Line::passOver, this, &Board::onPassOver);
    connect(&m_line, &Line::waiting, this, &Board::onWaiting);
    connect(&m_line, &Line::mounted, this, &Board::plug);
    connect(&m_line, &Line::unmounted, this, &Board::onUnmounted);
    // Queued: the session that tells it is replaced there.
    connect(&m_line, &Line::over, this, &Board::onOver, Qt::QueuedConnection);
}

bool Board::open(QString *error)
{
    if (!m_line.open(error) || !placeUnit(error))
        return false;
    m_line.plug(m_line.sticks());
    if (!m_line.unit()->sticks().isEmpty() || !m_options.flash.isEmpty())
        startUnit();
    return true;
}

bool Board::isBusy() const
{
    return m_state.stage == UnitState::Running || m_state.stage == UnitState::Waiting;
}

void Board::proceed()
{
    const QStringList plugged = m_line.unit() ? m_line.unit()->sticks() : QStringList();
    switch (m_state.stage) {
    case UnitState::Off:
        startUnit();
        break;
    case UnitState::Running:
        break;
    case UnitState::Waiting:
        m_nextSticks = plugged;
        m_line.session()->endPass();
        break;
    case UnitState::Ended:
    case UnitState::Missing:
        placeNextUnit(plugged.isEmpty() ? m_sticksAtStart : plugged);
        break;
    }
}

void Board::plug(const QString &directory)
{
    QString error;
    if (m_line.unit() && !m_line.unit()->plug(directory, &error))
        emit failed(error);
}

void Board::unplug(const QString &directory)
{
    QString error;
    if (m_line.unit() && !m_line.unit()->unplug(directory, &error))
        emit failed(error);
}

void Board::reportData(const QString &name)
{
    if (m_line.unit())
        m_line.unit()->reportData(name);
}

void Board::quit()
{
    m_nextSticks.reset();
    m_line.session()->quit();
}

bool Board::placeUnit(QString *error)
{
    m_calls.deliver(); // what is still to be told of the unit before
    QVector<StickState> sticks = m_state.sticks;
    for (StickState &stick : sticks)
        stick.plugged = false;

    m_state = UnitState();
    m_state.sticks = sticks;
    m_nextSticks.reset();
    if (!m_line.placeUnit(error))
        return false;
    m_state.stage = UnitState::Off;
    m_state.name = m_line.unitName();
    m_state.canbus.present = !m_options.unit.modulesLeftOut.contains(canbusModuleName);
    m_state.keys.present = !m_options.unit.modulesLeftOut.contains(mcuModuleName);
    m_state.stepTable = defaultStepTable();
    const QVector<UnitValue> values = m_line.unit()->data().values();
    for (const UnitValue &value : values)
        m_state.stored.append({value, StoredValue::Kept, {}});
    return true;
}

void Board::placeNextUnit(const QStringList &sticks)
{
    QString error;
    if (placeUnit(&error)) {
        m_line.plug(sticks);
        startUnit();
    } else {
        emit failed(error);
        emit changed();
    }
}

void Board::startUnit()
{
    m_sticksAtStart = m_line.unit()->sticks();
    setStage(UnitState::Running);
    m_line.session()->start();
}

void Board::onCalled(const Call &call)
{
    m_state.apply(call);
    const bool sticksChanged = call.name == calls::plugged || call.name == calls::unplugged;
    if (sticksChanged || call.name == calls::saveProductionData)
        readSticks();
    emit changed();
}

void Board::onPassOver(const PassResult &result)
{
    m_calls.deliver();
    m_state.pass = result;
    readSticks();
}

void Board::onWaiting()
{
    setStage(UnitState::Waiting);
}

/// A real stick, which the user may have unplugged here before.
void Board::onUnmounted(const QString &directory)
{
    // What is left is an empty folder, which the next unit must not get.
    m_sticksAtStart.removeAll(directory);
    if (m_nextSticks)
        m_nextSticks->removeAll(directory);
    if (m_line.unit() && m_line.unit()->sticks().contains(directory))
        unplug(directory);
}

void Board::onOver()
{
    m_calls.deliver();
    setStage(UnitState::Ended);
    if (m_nextSticks)
        placeNextUnit(QStringList(*m_nextSticks));
}

void Board::setStage(UnitState::Stage stage)
{
    m_state.stage = stage;
    emit changed();
}

void Board::readSticks()
{
    for (StickState &stick : m_state.sticks) {
        stick.configurationFile = configurationFileOn(stick.directory);
        stick.pools.clear();
        const QVector<Pool> pools = readPools(stick.configurationFile);
        for (const Pool &pool : pools)
            stick.pools.append({pool.group, pool.entries.size()});
    }
}

} // namespace bench
