#include "stickfolder.h"

#include "knowngroups.h"

#include <configurationfiles.h>

#include <QFile>

#include <algorithm>

using namespace production;

namespace stick {

namespace {

/// QSettings writes to "FILE.XXXXXX" before it renames that over the file.
bool isTemporaryCopy(const QString &name, const QString &fileName)
{
    constexpr int randomCharacters = 6;
    const auto isRandom = [](QChar c) { return c.isLetterOrNumber(); };
    return name.size() == fileName.size() + 1 + randomCharacters
        && name.startsWith(fileName + QLatin1Char('.'))
        && std::all_of(name.cend() - randomCharacters, name.cend(), isRandom);
}

bool isMisnamed(const QString &name, const QString &fileName)
{
    // Editors like to add this, and hide it.
    if (name.compare(fileName + QLatin1String(".txt"), Qt::CaseInsensitive) == 0)
        return true;
    const QByteArray known = fileName.toLatin1();
    return isNearMiss(name, QLatin1String(known));
}

} // namespace

StickFolder::StickFolder(const QString &path, const QStringList &names)
    : m_path(path)
{
    const QStringList candidates = configurationFileNames();
    QString used;
    for (const QString &candidate : candidates) {
        // Not the list of names: a FAT does not care about case.
        if (!QFile::exists(filePath(path, candidate)))
            continue;
        if (used.isEmpty())
            used = candidate;
        else
            notLookedAt.append(filePath(path, candidate));
    }
    if (!used.isEmpty())
        m_configuration = filePath(path, used);
    if (names.contains(completionMarkerName()))
        m_marker = filePath(path, completionMarkerName());

    for (const QString &name : names) {
        const auto isLock = [&](const QString &known) { return name == lockFilePath(known); };
        const auto isCopy = [&](const QString &known) { return isTemporaryCopy(name, known); };
        const auto looksLikeMisnamed = [&](const QString &known) {
            return !candidates.contains(name) && isMisnamed(name, known)
                && !(name.compare(known, Qt::CaseInsensitive) == 0
                     && QFile::exists(filePath(path, known)));
        };
        if (std::any_of(candidates.cbegin(), candidates.cend(), isLock))
            leftoverLocks.append(filePath(path, name));
        else if (std::any_of(candidates.cbegin(), candidates.cend(), isCopy))
            leftoverCopies.append(filePath(path, name));
        else if (std::any_of(candidates.cbegin(), candidates.cend(), looksLikeMisnamed))
            misnamed.append(filePath(path, name));
    }
}

} // namespace stick
