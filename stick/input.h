#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// Reading that leaves no trace on a stick: no write, no lock, no access time where that is up to
/// the reader. Reentrant.
namespace stick {

/// The content of the file @p path; without one, @p error says why, the path included. Of a larger
/// file than a unit reads, just as much as tells so.
std::optional<QByteArray> readFile(const QString &path, QString &error);

/// @p paths without those that lead to the same file or folder as one before.
QStringList distinctPaths(const QStringList &paths);

/// The names in the folder @p path, sorted; without them, @p error says why, the path included.
std::optional<QStringList> listFolder(const QString &path, QString &error);

} // namespace stick
