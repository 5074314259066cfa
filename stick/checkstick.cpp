#include "check.h"

#include "stickfolder.h"
#include "texts.h"

#include <configurationfiles.h>

#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <unistd.h>

using namespace production;

namespace stick {

namespace {

/// For the directory entries, and for a completion marker that grows.
constexpr qint64 spaceMargin = 64 << 10;

bool isWritable(const QString &path)
{
    return ::access(QFile::encodeName(path).constData(), W_OK) == 0;
}

QString fileNames(const QStringList &paths)
{
    QStringList names;
    for (const QString &path : paths)
        names.append(QFileInfo(path).fileName());
    return names.join(QLatin1String(", "));
}

void checkConfiguration(const StickFolder &stick, Findings &findings)
{
    if (!stick.configuration().isEmpty())
        return;
    const QString names = configurationFileNames().join(QLatin1String(", "));
    if (stick.leftoverCopies.isEmpty())
        findings.addTo(stick.path(), Code::NoConfiguration, 0,
                       Texts::tr("there is none of %1: the unit ignores the stick").arg(names));
    else
        findings.addTo(stick.path(), Code::NoConfiguration, 0,
                       Texts::tr("there is none of %1: the unit ignores the stick; a rewrite that "
                                 "was cut off may have left its file in %2")
                           .arg(names, fileNames(stick.leftoverCopies)));
}

void checkLeftovers(const StickFolder &stick, Findings &findings)
{
    for (const QString &file : stick.leftoverLocks) {
        const bool removed = file == lockFilePath(stick.configuration());
        findings.addTo(file, Code::LeftoverLock, 0,
                       removed ? Texts::tr("left by a rewrite that was cut off: the unit removes "
                                           "it; see whether the stick is sound")
                               : Texts::tr("left by a rewrite that was cut off: the unit leaves it "
                                           "alone; see whether the stick is sound"));
    }
    for (const QString &file : stick.leftoverCopies)
        findings.addTo(file, Code::LeftoverCopy, 0,
                       Texts::tr("left by a rewrite that was cut off: the unit leaves it alone; "
                                 "see whether the stick is sound"));
}

/// Null when units do not get @p value from @p pool.
const EntryLine *findOpen(const Pool &pool, const QString &value)
{
    return pool.isOpen() && pool.takes(value) ? pool.find(value) : nullptr;
}

} // namespace

void checkStick(const StickFolder &stick, Findings &findings)
{
    checkConfiguration(stick, findings);
    for (const QString &file : stick.misnamed)
        findings.addTo(file, Code::MisnamedFile, 0,
                       Texts::tr("nearly the name of a configuration file: the unit does not look "
                                 "at it"));
    for (const QString &file : stick.notLookedAt)
        findings.addTo(file, Code::NotLookedAt, 0,
                       Texts::tr("the unit never looks at it: %1 is there and wins")
                           .arg(QFileInfo(stick.configuration()).fileName()));
    checkLeftovers(stick, findings);
}

void checkMarker(const QString &marker, const std::vector<MarkerLine> &lines, const Pools &pools,
                 Findings &findings)
{
    for (const MarkerLine &line : lines) {
        if (line.isTorn())
            findings.addTo(marker, Code::TornMarker, line.line,
                           Texts::tr("\"%1\" was cut off while it was written: nobody knows what "
                                     "the unit took")
                               .arg(line.text));
        for (const QString &value : line.values) {
            for (const Pool &pool : pools) {
                if (const EntryLine *const entry = findOpen(pool, value))
                    findings.add(
                        Code::EntryDone, entry->line,
                        Texts::tr("\"%1\" was given to a unit already (%2:%3): another one "
                                  "will get it")
                            .arg(value, marker, QString::number(line.line)));
            }
        }
    }
}

void checkSpace(const StickFolder &stick, qint64 size, Findings &findings)
{
    const QStorageInfo storage(stick.path());
    if (storage.isReadOnly() || !isWritable(stick.path()) || !isWritable(stick.configuration())) {
        findings.add(Code::NotWritable, 0,
                     Texts::tr("the stick cannot be written to: what a unit takes stays in the "
                               "file, and the next one takes it again"));
        return;
    }
    // The rewrite stands beside the file until it replaces it.
    const qint64 needed = 2 * size + spaceMargin;
    if (storage.isValid() && storage.bytesAvailable() < needed)
        findings.add(Code::StickFull, 0,
                     Texts::tr("the stick has %1 bytes left, and the rewrite wants %2: it may "
                               "fail, and the next unit then takes the same again")
                         .arg(storage.bytesAvailable())
                         .arg(needed));
}

} // namespace stick
