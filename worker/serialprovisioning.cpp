#include "productionobject.h"

#include "configurationfiles.h"
#include "productionlog.h"
#include "serialpool.h"

#include <datasavecontrol.h>

#include <QFile>
#include <QFileInfo>

using namespace production;

void ProductionObject::provision(const SerialGroup &group, int mode,
                                 const std::optional<QString> &chosen, QSettings &settings,
                                 QStringList &provisioned)
{
    const QString stored =
        DataSaveControl::readProductionData(group.name, QVariant(QLatin1String(""))).toString();
    if (mode == ProvisionOnce && !stored.isEmpty()) {
        sendMessage(stored, group.alreadyStored);
        return;
    }
    if (mode != ProvisionOnce && mode != ProvisionAlways)
        return;
    if (!chosen) {
        sendMessage(QString(QLatin1String("")), group.noneAvailable);
        return;
    }
    if (needLeave)
        return;
    writeSerial(group, *chosen, settings, provisioned);
    if (!needLeave)
        sendMessage(*chosen, mode == ProvisionOnce ? group.written : group.replaced);
}

/**
 * Gives the value to the unit:
 *  1. take it out of the pool: the file on the stick is rewritten without it;
 *  2. have the rewrite reach the stick;
 *  3. store the value in the unit.
 *
 * The point of no return is the renaming of the new file over the old one in 1. A cut before it
 * leaves the value in the pool and the unit without; one between it and 3 loses the value, which is
 * the better of two evils: in the other order a cut would give one serial to two units.
 */
void ProductionObject::writeSerial(const SerialGroup &group, const QString &value,
                                   QSettings &settings, QStringList &provisioned)
{
    sendMessage(QString(QLatin1String("")), group.beforeWrite);
    removeFromPool(group, value, settings);
    syncDisks();
    DataSaveControl::saveProductionData(group.name, QVariant(value));
    provisioned.append(value);
    WORKER_LOG() << "write:" << group.name << value;
}

/// Rewrites the file without @p value. A file that cannot be rewritten is left as it is.
void ProductionObject::removeFromPool(const SerialGroup &group, const QString &value,
                                      QSettings &settings)
{
    const QString path = settings.fileName();
    const QFileInfo lock(lockFilePath(path));
    // QSettings would create a file that is gone anew, and wait for a lock that cannot be removed.
    if (!QFile::exists(path) || lock.exists() || lock.isSymLink()) {
        qWarning("%s: not rewritten, %s", qUtf8Printable(configPath),
                 QFile::exists(path) ? "its lock cannot be removed" : "it is gone");
        return;
    }
    const qint64 sizeBefore = QFileInfo(path).size();
    settings.beginGroup(group.name);
    settings.remove(value);
    settings.endGroup();
    settings.sync();
    // An error of an earlier rewrite stays in the status, and this one then takes both values out.
    if (settings.status() != QSettings::NoError && QFileInfo(path).size() == sizeBefore) {
        qWarning("%s: not rewritten, %s still stands in its pool (QSettings status %d)",
                 qUtf8Printable(configPath), qUtf8Printable(value), int(settings.status()));
    }
}
