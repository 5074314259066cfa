#pragma once

#include "scannedfile.h"

#include <QStringList>

#include <array>
#include <optional>
#include <vector>

namespace stick {

/**
 * One serial pool of a file, as the unit sees it. Its entries point into the file's text and live
 * no longer than the file.
 */
class Pool
{
public:
    Pool(const ScannedFile &file, int groupIndex);

    int groupIndex() const { return m_groupIndex; }
    const production::SerialGroup &group() const { return serialGroup(m_groupIndex); }

    /// Whether its mode lets units take values (some only when they have none yet).
    bool provisions() const;
    /// Whether units get values from it: it provisions, and they can read the file.
    bool isOpen() const { return m_readable && provisions(); }
    /// Whether @p entry is one for a unit, by prefixes and length.
    bool takes(QStringView entry) const;
    /// What the next unit takes; nothing when the pool has nothing for it or is not open.
    std::optional<QString> next() const;
    /// Null when the pool has no such entry.
    const EntryLine *find(QStringView entry) const;

    int mode = 0;
    int length = 0;
    QStringList prefixes; ///< SN only; empty when none is in force.
    std::vector<EntryLine> entries; ///< Sorted by name, each name once: its first line.
    std::vector<EntryLine> repetitions; ///< Further lines of the same names, by line.
    int usableCount = 0; ///< Entries that units may take.

private:
    int m_groupIndex;
    bool m_readable;
};

using Pools = std::array<Pool, SerialGroupCount>;
Pools poolsOf(const ScannedFile &file);

} // namespace stick
