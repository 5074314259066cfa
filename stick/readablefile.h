#pragma once

#include "commands.h"

#include <settingsmap.h>

namespace stick {

/// What the unit's reader makes of one file.
struct ReadFile
{
    ExitCode exitCode; ///< Failed when there is no such file, SomethingFound for an unreadable one.
    QByteArray bytes;
    production::SettingsMap map;
    production::KeyComments comments;
};

/// Reads @p path as a unit would, and complains of what keeps the unit from taking its keys.
ReadFile readLikeUnit(const QString &path, Console &console);

} // namespace stick
