#include "mountwatcher.h"

#include <QDir>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QStorageInfo>

#include <algorithm>
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

} // namespace

QStringList desktopMediaFolders()
{
    const QString user = qEnvironmentVariable("USER");
    return {QDir::cleanPath(QLatin1String("/media/") + user),
            QDir::cleanPath(QLatin1String("/run/media/") + user)};
}

MountWatcher::MountWatcher(const QStringList &folders, QObject *parent)
    : QObject(parent)
    , m_folders(folders)
    , m_table(QStringLiteral("/proc/self/mountinfo"))
{
}

bool MountWatcher::open(QString *error)
{
    if (m_folders.isEmpty())
        return true;
    if (!m_table.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        *error = tr("The mount table %1 cannot be watched: %2.")
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

QVector<MountWatcher::Mount> MountWatcher::readMounts() const
{
    QVector<Mount> mounts;
    const QList<QStorageInfo> volumes = QStorageInfo::mountedVolumes();
    for (const QStorageInfo &volume : volumes) {
        const QString directory = volume.rootPath();
        if (volume.isReady() && isBeneath(directory, m_folders) && canBeRead(directory))
            mounts.append({directory, volume.device()});
    }
    return mounts;
}

} // namespace bench
