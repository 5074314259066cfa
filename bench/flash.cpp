#include "flash.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace bench {

namespace {

const QLatin1String mediaDirectory("/media");
const QLatin1String flashDirectory("/media/flash/userdata");

/// The first step that failed, and why.
struct Failure
{
    QString step;
    int number = 0;
};

bool check(bool done, const QString &step, Failure &failure)
{
    if (!done)
        failure = {step, errno};
    return done;
}

bool mountAt(const QString &source, const QString &target, const char *type, unsigned long flags,
             Failure &failure)
{
    const int result = ::mount(QFile::encodeName(source).constData(),
                               QFile::encodeName(target).constData(), type, flags, nullptr);
    return check(result == 0, QStringLiteral("mount %1").arg(target), failure);
}

bool bindAt(const QString &source, const QString &target, Failure &failure)
{
    return mountAt(source, target, nullptr, MS_BIND | MS_REC, failure);
}

bool writeLine(const QString &path, const QString &text, Failure &failure)
{
    QFile file(path);
    const QByteArray line = text.toLatin1();
    return check(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)
                     && file.write(line) == line.size(),
                 path, failure);
}

/// A mount namespace of our own. Without root it takes a user namespace, in which we stay who we
/// are.
bool enterNamespace(Failure &failure)
{
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    const QString step = QStringLiteral("unshare");
    if (user == 0) {
        if (!check(::unshare(CLONE_NEWNS) == 0, step, failure))
            return false;
    } else {
        const QString map = QStringLiteral("%1 %1 1");
        if (!check(::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0, step, failure)
            || !writeLine(QStringLiteral("/proc/self/setgroups"), QStringLiteral("deny"), failure)
            || !writeLine(QStringLiteral("/proc/self/uid_map"), map.arg(user), failure)
            || !writeLine(QStringLiteral("/proc/self/gid_map"), map.arg(group), failure))
            return false;
    }
    // Sticks that are mounted outside still come in; what we mount does not get out.
    return mountAt(QStringLiteral("none"), QStringLiteral("/"), nullptr, MS_REC | MS_SLAVE,
                   failure);
}

/// Shows @p original, an entry of the covered folder, again as @p target.
bool restoreEntry(const QFileInfo &original, const QString &target, Failure &failure)
{
    if (original.isSymLink()) {
        const QByteArray link = QFile::encodeName(QFile::symLinkTarget(original.filePath()));
        return check(::symlink(link.constData(), QFile::encodeName(target).constData()) == 0,
                     target, failure);
    }
    if (original.isDir())
        return check(QDir().mkdir(target), target, failure)
            && bindAt(original.filePath(), target, failure);
    QFile placeholder(target);
    return check(placeholder.open(QIODevice::WriteOnly), target, failure)
        && bindAt(original.filePath(), target, failure);
}

/// Covers @p directory by a folder in memory that shows the same entries and takes new ones.
bool makeExtensible(const QString &directory, Failure &failure)
{
    const int original = ::open(QFile::encodeName(directory).constData(), O_PATH | O_CLOEXEC);
    if (!check(original >= 0, directory, failure))
        return false;
    const QString source = QStringLiteral("/proc/self/fd/%1/").arg(original);
    const auto entries = QDir(source).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System
                                                    | QDir::NoDotAndDotDot);
    bool done = mountAt(QStringLiteral("none"), directory, "tmpfs", 0, failure);
    for (const QFileInfo &entry : entries)
        done =
            done && restoreEntry(entry, directory + QLatin1Char('/') + entry.fileName(), failure);
    ::close(original);
    return done;
}

bool makeFlashDirectory(Failure &failure)
{
    if (QFileInfo(flashDirectory).isDir())
        return true;
    const QString parent = QFileInfo(flashDirectory).path();
    const bool hasParent = QFileInfo(parent).isDir();
    return makeExtensible(hasParent ? parent : QString(mediaDirectory), failure)
        && check(QDir().mkpath(flashDirectory), flashDirectory, failure);
}

} // namespace

bool mountFlash(const QString &directory, QString *error)
{
    Failure failure;
    const QString source = QFileInfo(directory).absoluteFilePath();
    const bool done = enterNamespace(failure) && makeFlashDirectory(failure)
        && bindAt(source, flashDirectory, failure);
    if (!done) {
        *error = QCoreApplication::translate(
                     "Flash",
                     "The folder %1 cannot stand for the unit's flash: %2: %3. This takes root, or "
                     "a kernel that lets users have namespaces of their own.")
                     .arg(source, failure.step, qt_error_string(failure.number));
    }
    return done;
}

} // namespace bench
