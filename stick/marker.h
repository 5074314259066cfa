#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

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

/// The lines of the completion marker @p content that are not blank.
std::vector<MarkerLine> readMarker(const QByteArray &content);

} // namespace stick
