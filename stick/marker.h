#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace stick {

/// What one unit took: a line of a completion marker.
struct MarkerLine
{
    int line;
    QString text;
    QStringList values; ///< Of the groups provisioned, SN before SK; empty for a torn line.

    /// Cut off while it was written: it does not end, or holds what the disk was never given.
    bool isTorn() const { return values.isEmpty(); }
};

/// The lines of the completion marker @p path that are not blank; without them, @p error says why,
/// the path included.
std::optional<std::vector<MarkerLine>> readMarker(const QString &path, QString &error);

} // namespace stick
