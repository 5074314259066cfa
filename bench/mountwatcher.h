#pragma once

#include <QByteArray>
#include <QFile>
#include <QObject>
#include <QStringList>
#include <QVector>

namespace bench {

/// An entry of the kernel's mount table.
struct Mount
{
    QString directory;
    QByteArray device; ///< another one at the same directory is another stick

    bool operator==(const Mount &other) const
    {
        return directory == other.directory && device == other.device;
    }
};

/// Those that this process can read, the oldest first.
QVector<Mount> readableMounts();

/// The folders beneath which the user's desktop mounts removable media; they need not exist.
QStringList desktopMediaFolders();

/**
 * Tells which file systems are mounted beneath some folders, as the kernel's mount table changes.
 * Lives in the main thread and belongs to the line.
 *
 * A mount counts once it can be read; one that cannot is looked at again whenever the table
 * changes. It is gone with its entry in the table, so a lazy or forced unmount counts at once.
 */
class MountWatcher : public QObject
{
    Q_OBJECT

public:
    /// Nothing is watched without @p folders. One that is missing may still come. What is among
    /// @p leftOut is not told of.
    explicit MountWatcher(const QStringList &folders, const QVector<Mount> &leftOut = {},
                          QObject *parent = nullptr);

    /// Watches from now on; false with a sentence for the user when the kernel does not let it.
    bool open(QString *error);

    /// Mount directories as the last look at the table has found them, the oldest mount first.
    QStringList mounts() const;

signals:
    void mounted(QString directory);
    void unmounted(QString directory);

private slots:
    void update();

private:
    QVector<Mount> readMounts() const;

    const QStringList m_folders;
    const QVector<Mount> m_leftOut;
    QFile m_table;
    QVector<Mount> m_mounts;
};

} // namespace bench
