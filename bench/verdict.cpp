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

bool Verdict::serialsLeft() const
{
    if (!pass)
        return false;
    const auto &pools = pass->pools;
    const bool taken = std::any_of(pools.begin(), pools.end(),
                                   [](const PoolChange &pool) { return !pool.taken.isEmpty(); });
    const bool usedUp = std::any_of(pools.begin(), pools.end(), [](const PoolChange &pool) {
        return !pool.taken.isEmpty() && pool.after == 0;
    });
    return taken && !usedUp;
}

} // namespace bench
