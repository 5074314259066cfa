#pragma once

#include "findings.h"
#include "marker.h"
#include "pools.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace stick {

class StickFolder;

struct CheckOptions
{
    int low = 10; ///< A pool with fewer usable entries is reported.
    int limit = 20; ///< Findings kept of each code and file; 0 for all.
    std::optional<int> stepRange; ///< The highest backlight step of the unit, where it is known.
};

/// A pool as the next unit finds it.
struct PoolSummary
{
    QLatin1String group;
    int mode;
    int entries;
    int usable; ///< Entries that units will take.
    std::optional<QString> next; ///< What a unit that has no value yet takes now.
};

/// What check found out about one production file, or about a folder that holds none.
struct CheckedFile
{
    QString file;
    bool readable;
    std::vector<Finding> findings;
    int omitted; ///< Findings beyond the limit.
    Tally tally;
    std::vector<PoolSummary> pools; ///< Of the serial groups that the file has.
};

struct CheckResult
{
    std::vector<CheckedFile> files;
    QStringList errors; ///< What could not be read at all.
};

/// Checks production files, and the folders of sticks with the file that the unit would use.
CheckResult check(const QStringList &paths, const CheckOptions &options);

// The rules, one source file each.

/// Encoding, and what the reader does not take as its writer probably meant it.
void checkText(const QByteArray &bytes, const ScannedFile &file, Findings &findings);
/// Groups, keys and values.
void checkGroups(const ScannedFile &file, const CheckOptions &options, Findings &findings);
void checkPool(const ScannedFile &file, const Pool &pool, const CheckOptions &options,
               Findings &findings);
/// Entries that stand in @p earlier too, a pool of @p earlierFile.
void checkSharedEntries(const Pool &pool, const Pool &earlier, const QString &earlierFile,
                        Findings &findings);
/// What stands beside the configuration file on its stick.
void checkStick(const StickFolder &stick, Findings &findings);
/// The @p lines of the stick's completion marker @p marker against its pools.
void checkMarker(const QString &marker, const std::vector<MarkerLine> &lines, const Pools &pools,
                 Findings &findings);
/// Whether the stick takes the rewrite of its configuration file of @p size bytes.
void checkSpace(const StickFolder &stick, qint64 size, Findings &findings);

} // namespace stick
