#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// Reading that leaves no trace on a stick: no write, no lock, no access time where that is up to
/// the reader. Reentrant.
namespace stick {

/// The content of the file @p path; without one, @p error says why, the path included.
std::optional<QByteArray> readFile(const QString &path, QString &error);

/// The names in the folder @p path, sorted; without them, @p error says why, the path included.
std::optional<QStringList> listFolder(const QString &path, QString &error);

} // namespace stick
