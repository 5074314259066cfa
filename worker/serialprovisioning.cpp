#include "productionobject.h"

#include "configurationfiles.h"
#include "productionlog.h"
#include "serialpool.h"

#include <datasavecontrol.h>

#include <QFile>
#include <QFileInfo>

using namespace production;

namespace {

/**
 * Why QSettings must not rewrite @p path now, nullptr when it may: it would create a file that is
 * gone anew, and wait for a lock that cannot be removed. A lock that an earlier rewrite of the pass
 * could not remove is of no use to anybody.
 */
const char *obstacleToRewrite(const QString &path)
{
    if (!QFile::exists(path))
        return "it is gone";
    const QFileInfo lock(lockFilePath(path));
    const bool isLocked = lock.exists() || lock.isSymLink();
    return isLocked && !QFile::remove(lock.filePath()) ? "its lock cannot be removed" : nullptr;
}

} // namespace

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

/**
 * Rewrites the file without @p value, with a second try in case that an error of the stick was a
 * passing one. A file that cannot be rewritten is left as it is.
 */
void ProductionObject::removeFromPool(const SerialGroup &group, const QString &value,
                                      QSettings &settings)
{
    const QString path = settings.fileName();
    if (const char *const obstacle = obstacleToRewrite(path)) {
        qWarning("%s: not rewritten, %s", qUtf8Printable(configPath), obstacle);
        return;
    }
    // An error of an earlier rewrite stays in the status, and this one then takes both values out;
    // that it did shows the size, except where the new layout makes up for them to the byte.
    const qint64 sizeBefore = QFileInfo(path).size();
    const auto failed = [&] {
        return settings.status() != QSettings::NoError && QFileInfo(path).size() == sizeBefore;
    };
    settings.beginGroup(group.name);
    settings.remove(value);
    settings.endGroup();
    settings.sync();
    if (failed() && obstacleToRewrite(path) == nullptr)
        settings.sync(); // QSettings still knows what it has to remove
    if (failed()) {
        qWarning("%s: not rewritten, %s still stands in its pool (QSettings status %d)",
                 qUtf8Printable(configPath), qUtf8Printable(value), int(settings.status()));
    }
}
