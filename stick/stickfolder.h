#pragma once

#include <QString>
#include <QStringList>

namespace stick {

/**
 * A folder that stands for a stick, as the unit looks at it: which configuration file it uses,
 * what it never looks at, and what an interrupted rewrite has left behind.
 */
class StickFolder
{
public:
    /// @p path is a folder whose content is @p names.
    StickFolder(const QString &path, const QStringList &names);

    QString path() const { return m_path; }
    /// The file that the unit uses; empty when it ignores the stick.
    QString configuration() const { return m_configuration; }
    /// Path of the completion marker; empty when there is none.
    QString marker() const { return m_marker; }

    /// Further configuration files, which the unit does not look at.
    QStringList notLookedAt;
    /// Files whose names are nearly those of a configuration file.
    QStringList misnamed;
    /// Locks and copies of configuration files, present or gone, from rewrites that were cut off.
    QStringList leftoverLocks;
    QStringList leftoverCopies;

private:
    QString m_path;
    QString m_configuration;
    QString m_marker;
};

} // namespace stick
