#pragma once

#include <QString>
#include <QStringList>

/// How the files on a stick are called. Reentrant.
namespace production {

/// Name of a file that is used once, in silence.
QString systemFileName();

/// Names under which a device may carry its configuration file; the first that exists wins.
QStringList configurationFileNames();

/// Whether @p path names a system file.
bool isSystemFile(const QString &path);

/// The file of @p directory called @p name.
QString filePath(const QString &directory, const QString &name);

/// Name of the file on the stick that gets a line for every unit that took serial identities.
QString completionMarkerName();

/// Name of the lock that QSettings holds while it rewrites the file @p configPath.
QString lockFilePath(const QString &configPath);

} // namespace production
