#include "helddirectory.h"

#include <QFile>

#include <atomic>
#include <fcntl.h>
#include <unistd.h>

namespace production {

namespace {

/**
 * Gives an open file a number that was not in use lately, as far as the process may have so many.
 *
 * QSettings keeps a file that it could not write in its process-wide cache with the keys that it
 * still wants to remove, and applies them to the next file of the same path: a serial of another
 * stick would be lost. Its cache holds no more than ten files.
 */
int renumbered(int descriptor)
{
    constexpr unsigned lowest = 128;
    constexpr unsigned numbers = 256;
    static std::atomic<unsigned> used{0};
    const int other = fcntl(descriptor, F_DUPFD_CLOEXEC, int(lowest + used++ % numbers));
    if (other < 0)
        return descriptor;
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
