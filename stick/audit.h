#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <vector>

namespace stick {

/// Where a serial stands: free in a pool, or done in a completion marker.
struct Place
{
    bool done;
    QString file;
    int line;
};

/// A serial that needs an explanation, with every place where it stands.
struct SerialCase
{
    QString serial;
    std::vector<Place> places; ///< In the order of the sticks; empty for a missing one.
};

/// What became of the serials of one group. A serial is in exactly one of the lists, except that a
/// foreign one may be duplicate too.
struct SerialAudit
{
    QStringList free; ///< In one pool, as it should be.
    QStringList done; ///< In one marker, as it should be.
    std::vector<SerialCase> duplicate; ///< In several places.
    std::vector<SerialCase> missing; ///< Issued, and in no place.
    std::vector<SerialCase> foreign; ///< In some place, but never issued.
};

/// A line of a marker that was cut off, or that cannot be told apart.
struct DoubtfulLine
{
    QString file;
    int line;
    QString text;
};

struct AuditResult
{
    std::array<SerialAudit, 2> groups; ///< By SerialGroupIndex.
    std::vector<DoubtfulLine> torn;
    QStringList unreadable; ///< Production files that a unit cannot read; their pools count.
    QStringList errors; ///< What could not be read at all; the audit is then incomplete.

    bool isClean() const;
};

/**
 * Tells what became of the serials of @p sticks, which are folders. @p issued are files with all
 * serials that were ever handed to the line; without any, none is missing or foreign.
 */
AuditResult audit(const QStringList &sticks, const QStringList &issued);

} // namespace stick
