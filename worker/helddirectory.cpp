#include "helddirectory.h"

#include <QFile>

#include <atomic>
#include <fcntl.h>
#include <unistd.h>

namespace production {

namespace {

/**
 * Gives an open file a number that was not in use lately; for the worker thread.
 *
 * QSettings keeps a file that it could not write in its process-wide cache with the keys that it
 * still wants to remove, and applies them to the next file of the same path: a serial of another
 * stick would be lost. Its cache holds no more than ten files.
 */
int renumbered(int descriptor)
{
    constexpr int lowest = 128;
    constexpr int highest = 4096; // the kernel's table of the process grows with its numbers
    static std::atomic<int> wanted{lowest};
    if (wanted > highest)
        wanted = lowest;
    int other = fcntl(descriptor, F_DUPFD_CLOEXEC, wanted.load());
    if (other < 0) // the process may not have so many
        other = fcntl(descriptor, F_DUPFD_CLOEXEC, lowest);
    if (other < 0)
        return descriptor;
    wanted = other + 1; // what was wanted may have been in use
    close(descriptor);
    return other;
}

} // namespace

HeldDirectory::HeldDirectory(const QString &path)
    : descriptor(
        renumbered(open(QFile::encodeName(path).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC)))
{
}

HeldDirectory::~HeldDirectory()
{
    if (descriptor >= 0)
        close(descriptor);
}

QString HeldDirectory::filePath(const QString &name) const
{
    // proc(5): following this link leads to the open directory itself, mounted or not.
    return QStringLiteral("/proc/self/fd/%1/%2").arg(QString::number(descriptor), name);
}

void HeldDirectory::changePaths()
{
    descriptor = renumbered(descriptor);
}

} // namespace production
