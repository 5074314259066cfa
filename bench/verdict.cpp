#include "verdict.h"

#include "popups.h"

#include <configurationfiles.h>

#include <algorithm>
#include <iterator>

namespace bench {

QString Verdict::trouble() const
{
    if (!pass)
        return tr("nothing to do, no stick was plugged");
    if (pass->configurationFile.isEmpty())
        return tr("no production file on any stick; put one there, named %1")
            .arg(production::configurationFileNames().join(QLatin1String(", ")));
    QStringList troubles;
    if (pass->pulled)
        troubles.append(tr("the stick was pulled before the pass was over"));
    for (const Popup &popup : told) {
        const PopupKind kind = popupKind(popup.code);
        if (kind.tone == PopupKind::Trouble && !troubles.contains(kind.name))
            troubles.append(kind.name);
    }
    const QStringList inPool = serialsInPool();
    if (!inPool.isEmpty())
        troubles.append(tr("%1 still in the pool, for the next unit to take again: the file could "
                           "not be rewritten")
                            .arg(inPool.join(QLatin1String(" + "))));
    return troubles.join(QLatin1String(", "));
}

QVector<UnitValue> Verdict::serials() const
{
    QVector<UnitValue> serials;
    if (pass) {
        std::copy_if(pass->stored.begin(), pass->stored.end(), std::back_inserter(serials),
                     [](const UnitValue &value) { return value.area == Area::Production; });
    }
    return serials;
}

/// Those that the unit has stored though nothing has gone from their pool.
QStringList Verdict::serialsInPool() const
{
    QStringList names;
    const QVector<UnitValue> stored = serials();
    for (const UnitValue &serial : stored) {
        const auto &pools = pass->pools;
        if (std::any_of(pools.begin(), pools.end(), [&](const PoolChange &pool) {
                return pool.group == serial.key && pool.taken.isEmpty();
            }))
            names.append(serial.key + QLatin1Char(' ') + serial.value.toString());
    }
    return names;
}

QString Verdict::hindrance() const
{
    const QString reason = trouble();
    if (!reason.isEmpty())
        return tr("No further unit: %1.").arg(reason);
    const auto &pools = pass->pools;
    if (std::all_of(pools.begin(), pools.end(),
                    [](const PoolChange &pool) { return pool.taken.isEmpty(); }))
        return tr("No further unit: the pass took no serial.");
    if (std::any_of(pools.begin(), pools.end(), [](const PoolChange &pool) {
            return !pool.taken.isEmpty() && pool.after == 0;
        }))
        return tr("The sticks have no serial for one more unit.");
    return {};
}

} // namespace bench
