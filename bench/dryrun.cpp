#include "dryrun.h"

#include "pools.h"

#include <configurationfiles.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

using namespace production;

namespace bench {

namespace {

/// All that the module touches on a stick; the rest of it may be films.
QStringList namesOnStick()
{
    const QStringList configurations = configurationFileNames();
    QStringList names = configurations;
    for (const QString &name : configurations)
        names.append(lockFilePath(name));
    names.append(completionMarkerName());
    return names;
}

} // namespace

bool DryRun::redirect(Options &options, QString *error)
{
    int number = 0;
    // Each in a folder of its own, so that it keeps its name in what is shown.
    const auto takeCopy = [&](QString &path, const QStringList &names) {
        const QString copy = m_folder.filePath(
            QStringLiteral("%1/%2").arg(QString::number(++number), QFileInfo(path).fileName()));
        const bool copied = copyFiles(path, names, copy, error);
        path = copy;
        return copied;
    };

    for (QString &stick : options.sticks) {
        lookAtStick(stick);
        if (!takeCopy(stick, namesOnStick()))
            return false;
    }
    QString &unit = options.unit.unitDirectory;
    // A copy would be fit even where its original is not.
    if (!unit.isEmpty() && !UnitData::canBeOpened(unit, error))
        return false;
    if (!unit.isEmpty() && !takeCopy(unit, QDir(unit).entryList(QDir::Files | QDir::Hidden)))
        return false;
    if (!options.flash.isEmpty() && !takeCopy(options.flash, configurationFileNames()))
        return false;
    options.unplugWhenDone = true;
    return true;
}

/// A copy can be written to, and has room, even where its original has not.
void DryRun::lookAtStick(const QString &stick)
{
    const QString file = configurationFileOn(stick);
    if (file.isEmpty() || isSystemFile(file))
        return;
    const QStorageInfo storage(stick);
    if (storage.isReadOnly() || !QFileInfo(stick).isWritable() || !QFileInfo(file).isWritable())
        m_cautions.append(tr("%1 cannot be written to: what a unit takes stays in its pools, and "
                             "the next one takes it again.")
                              .arg(stick));
    else if (storage.bytesAvailable() < 2 * QFileInfo(file).size())
        m_cautions.append(tr("%1 has no room for the rewrite: what a unit takes stays in its "
                             "pools, and the next one takes it again.")
                              .arg(stick));
}

bool DryRun::copyFiles(const QString &from, const QStringList &names, const QString &to,
                       QString *error) const
{
    bool copied = m_folder.isValid() && QDir().mkpath(to);
    for (const QString &name : names) {
        const QFileInfo original(filePath(from, name));
        if (original.isDir())
            copied &= QDir().mkpath(filePath(to, name));
        else if (original.exists())
            copied &= QFile::copy(original.filePath(), filePath(to, name));
    }
    if (!copied)
        *error = tr("%1 cannot be copied for the dry run; see that its files can be read and that "
                    "%2 has room.")
                     .arg(from, QDir::tempPath());
    return copied;
}

} // namespace bench
