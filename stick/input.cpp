#include "input.h"

#include "texts.h"

#include <reader.h>

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace stick {

namespace {

QString failure(const QString &path, const QString &reason)
{
    return Texts::tr("%1: cannot be read: %2").arg(path, reason);
}

QString systemReason()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// Does not block on a pipe, and follows what open(2) allows: O_NOATIME is the owner's only.
int openUntouched(const QString &path, int flags)
{
    const QByteArray name = QFile::encodeName(path);
    flags |= O_RDONLY | O_NONBLOCK | O_CLOEXEC;
    const int descriptor = ::open(name.constData(), flags | O_NOATIME);
    return descriptor >= 0 || errno != EPERM ? descriptor : ::open(name.constData(), flags);
}

bool isRegularFile(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

std::optional<QByteArray> readFile(const QString &path, QString &error)
{
    const int descriptor = openUntouched(path, 0);
    QFile file;
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFile::AutoCloseHandle)) {
        error = failure(path, systemReason());
        return std::nullopt;
    }
    if (!isRegularFile(descriptor)) {
        error = failure(path, Texts::tr("not a file"));
        return std::nullopt;
    }
    const qint64 wanted = qMin(file.size(), production::mostCharacters + 1);
    const QByteArray content = file.read(wanted);
    if (content.size() < wanted) {
        error = failure(path, file.errorString());
        return std::nullopt;
    }
    return content;
}

QStringList distinctPaths(const QStringList &paths)
{
    QStringList distinct;
    QSet<QString> known;
    for (const QString &path : paths) {
        const QString target = QFileInfo(path).canonicalFilePath();
        // What does not exist has no target, and is for others to complain of.
        if (!target.isEmpty() && known.contains(target))
            continue;
        known.insert(target);
        distinct.append(path);
    }
    return distinct;
}

std::optional<QStringList> listFolder(const QString &path, QString &error)
{
    const int descriptor = openUntouched(path, O_DIRECTORY);
    const std::unique_ptr<DIR, int (*)(DIR *)> folder(
        descriptor >= 0 ? ::fdopendir(descriptor) : nullptr, &::closedir);
    if (!folder) {
        error = failure(path, systemReason());
        return std::nullopt;
    }
    QStringList names;
    while (const dirent *const entry = ::readdir(folder.get()))
        names.append(QFile::decodeName(entry->d_name));
    names.sort();
    return names;
}

} // namespace stick
