#pragma once

#include "pools.h"

#include <settingsmap.h>

#include <optional>
#include <vector>

namespace stick {

/**
 * The content of @p count files that are like @p map, except that each entry of @p pools, the pools
 * of the same file, stands in exactly one of them. Each file gets a run of neighbours, and as many
 * entries that units may take as any other, or one more.
 *
 * Nothing, with a sentence in @p error, when that leaves a file without any.
 */
std::optional<std::vector<production::SettingsMap>>
splitPools(const production::SettingsMap &map, const Pools &pools, int count, QString &error);

} // namespace stick
