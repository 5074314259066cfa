#include "line.h"

#include "session.h"

#include <QDir>
#include <QFileInfo>

namespace bench {

Line::Line(const Options &options)
    : m_options(options)
    , m_media(options.media, options.ownMounts)
{
    if (options.unit.unitDirectory.isEmpty())
        m_throwaway = std::make_unique<QTemporaryDir>();
    connect(&m_media, &MountWatcher::mounted, this, &Line::mounted);
    connect(&m_media, &MountWatcher::unmounted, this, &Line::unmounted);
}

Line::~Line()
{
    removeUnusedUnit();
}

/// A number of its own is only for a unit that has been switched on.
void Line::removeUnusedUnit()
{
    if (!m_options.severalUnits() || !m_session || m_session->hasStarted())
        return;
    m_session.reset();
    m_unit.reset();
    QDir(m_unitDirectory).removeRecursively();
}

bool Line::open(QString *error)
{
    return openJournal(error) && m_media.open(error);
}

void Line::observe(CallObserver observer)
{
    if (m_unit)
        m_unit->observe(observer);
    m_observers.push_back(std::move(observer));
}

bool Line::openJournal(QString *error)
{
    if (m_options.journal.isEmpty())
        return true;
    if (!m_journal.open(m_options.journal, error))
        return false;
    observe([this](const Call &call) { m_journal.write(call); });
    return true;
}

QStringList Line::sticks() const
{
    QStringList sticks = m_options.sticks + m_media.mounts();
    sticks.removeDuplicates();
    return sticks;
}

bool Line::placeUnit(QString *error)
{
    m_session.reset();
    m_unit.reset();

    if (m_throwaway && !m_throwaway->isValid()) {
        *error = tr("A unit that is thrown away finds no place: %1; name a unit directory.")
                     .arg(m_throwaway->errorString());
        return false;
    }
    HeadUnitConfig config = m_options.unit;
    m_unitDirectory = nextUnitDirectory();
    config.unitDirectory = m_unitDirectory;
    m_unit = HeadUnit::create(config, error);
    if (!m_unit)
        return false;
    for (const CallObserver &observer : m_observers)
        m_unit->observe(observer);

    m_session = std::make_unique<Session>(*m_unit, m_options);
    connect(m_session.get(), &Session::passOver, this, &Line::passOver);
    connect(m_session.get(), &Session::waiting, this, &Line::waiting);
    connect(m_session.get(), &Session::over, this, &Line::over);
    return true;
}

void Line::plug(const QStringList &sticks)
{
    for (const QString &stick : sticks) {
        QString error;
        if (!m_unit->plug(stick, &error))
            qWarning("%s", qUtf8Printable(error));
    }
}

QString Line::unitName() const
{
    return QFileInfo(m_unitDirectory).fileName();
}

QString Line::nextUnitDirectory() const
{
    const QString base = m_throwaway ? m_throwaway->path() : m_options.unit.unitDirectory;
    if (!m_options.severalUnits())
        return base;
    for (int number = 1;; ++number) {
        const QString path =
            QDir(base).filePath(QStringLiteral("unit-%1").arg(number, 3, 10, QLatin1Char('0')));
        if (!QFileInfo::exists(path))
            return path;
    }
}

} // namespace bench
