#include "mountwatcher.h"

#include <QDir>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QStorageInfo>

#include <algorithm>
#include <pwd.h>
#include <unistd.h>
#include <utility>

namespace bench {

namespace {

bool isBeneath(const QString &path, const QStringList &folders)
{
    return std::any_of(folders.begin(), folders.end(), [&](const QString &folder) {
        // The table has no symbolic links.
        const QString canonical = QFileInfo(folder).canonicalFilePath();
        return !canonical.isEmpty() && path.startsWith(canonical + QLatin1Char('/'));
    });
}

bool canBeRead(const QString &directory)
{
    const QFileInfo info(directory);
    return info.isReadable() && info.isExecutable();
}

/// As the desktop knows the user, even where the environment does not tell.
QString userName()
{
    const QString user = qEnvironmentVariable("USER");
    const passwd *entry = user.isEmpty() ? ::getpwuid(::getuid()) : nullptr;
    return entry ? QString::fromLocal8Bit(entry->pw_name) : user;
}

} // namespace

QVector<Mount> readableMounts()
{
    QVector<Mount> mounts;
    const QList<QStorageInfo> volumes = QStorageInfo::mountedVolumes();
    for (const QStorageInfo &volume : volumes) {
        const QString directory = volume.rootPath();
        if (volume.isReady() && canBeRead(directory))
            mounts.append({directory, volume.device()});
    }
    return mounts;
}

QStringList desktopMediaFolders()
{
    const QString user = userName();
    return {QDir::cleanPath(QLatin1String("/media/") + user),
            QDir::cleanPath(QLatin1String("/run/media/") + user)};
}

MountWatcher::MountWatcher(const QStringList &folders, const QVector<Mount> &leftOut,
                           QObject *parent)
    : QObject(parent)
    , m_folders(folders)
    , m_leftOut(leftOut)
    , m_table(QStringLiteral("/proc/self/mountinfo"))
{
}

bool MountWatcher::open(QString *error)
{
    if (m_folders.isEmpty())
        return true;
    if (!m_table.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        *error = tr("The mount table %1 cannot be watched: %2; name the sticks with --stick "
                    "instead of --media.")
                     .arg(m_table.fileName(), m_table.errorString());
        return false;
    }
    // The kernel reports every change since the table was opened as an exceptional condition.
    auto *notifier = new QSocketNotifier(m_table.handle(), QSocketNotifier::Exception, this);
    connect(notifier, &QSocketNotifier::activated, this, &MountWatcher::update);
    m_mounts = readMounts();
    return true;
}

QStringList MountWatcher::mounts() const
{
    QStringList directories;
    for (const Mount &mount : m_mounts)
        directories.append(mount.directory);
    return directories;
}

void MountWatcher::update()
{
    const QVector<Mount> now = readMounts();
    const QVector<Mount> before = std::exchange(m_mounts, now);
    for (const Mount &mount : before) {
        if (!now.contains(mount))
            emit unmounted(mount.directory);
    }
    for (const Mount &mount : now) {
        if (!before.contains(mount))
            emit mounted(mount.directory);
    }
}

QVector<Mount> MountWatcher::readMounts() const
{
    QVector<Mount> mounts = readableMounts();
    mounts.erase(std::remove_if(mounts.begin(), mounts.end(),
                                [this](const Mount &mount) {
                                    return m_leftOut.contains(mount)
                                        || !isBeneath(mount.directory, m_folders);
                                }),
                 mounts.end());
    return mounts;
}

} // namespace bench
