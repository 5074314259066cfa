#pragma once

#include <QString>

namespace production {

/**
 * Keeps a directory open, so that its files are reached through it and not through its path.
 *
 * A stick can be unmounted at any moment. Whatever is opened or created by the path of the mount
 * point after that lands on the unit's own flash below it; through the open directory it lands on
 * the stick or nowhere. While held, the stick cannot be unmounted other than lazily or by force.
 * Worker thread.
 */
class HeldDirectory
{
public:
    /// Opens the directory @p path; without it, filePath() names files that cannot exist.
    explicit HeldDirectory(const QString &path);
    ~HeldDirectory();
    Q_DISABLE_COPY(HeldDirectory)

    /// Path of the file @p name in this directory, valid in this process while the object lives.
    QString filePath(const QString &name) const;

    /// Makes filePath() return other paths to the same files from now on.
    void changePaths();

private:
    int descriptor;
};

} // namespace production
