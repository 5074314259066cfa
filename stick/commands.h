#pragma once

#include "commandline.h"
#include "console.h"

namespace stick {

/// The exit codes of production-stick, as its --help documents them.
enum ExitCode {
    NothingToReport = 0,
    SomethingFound = 1,
    Failed = 2, ///< Something cannot be read or written, or wrong usage.
};

// One for each command. Results go to standard output, what failed to standard error.
ExitCode runShow(const Arguments &arguments, Console &console);
ExitCode runFormat(const Arguments &arguments, Console &console);
ExitCode runCheck(const Arguments &arguments, Console &console);
ExitCode runAudit(const Arguments &arguments, Console &console);
ExitCode runSplit(const Arguments &arguments, Console &console);

/// One finding as a compiler would print it, in the styles of @p console if there is one.
QString findingLine(const Finding &finding, const Console *console = nullptr);

} // namespace stick
