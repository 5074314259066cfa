#pragma once

#include "headunit.h"
#include "mountwatcher.h"

#include <QStringList>
#include <QVector>

namespace bench {

/// The exit codes of production-bench, as its --help documents them.
enum ExitCode {
    ModuleEnded = 0,
    Unusable = 1,
    TimedOut = 3,
};

/// What production-bench is asked to do.
struct Options
{
    /// Its directory is empty for a unit that is thrown away; for several units it is the folder
    /// in which each gets a numbered one.
    HeadUnitConfig unit;
    QStringList sticks;
    QStringList media; ///< folders beneath which every mount point is a stick
    QString flash;
    QVector<Mount> ownMounts; ///< the unit's flash and what it took to mount it: no sticks
    QString journal;
    int timeoutSeconds = 0; ///< 0: no limit
    bool unplugWhenDone = false;
    bool dryRun = false; ///< one pass on copies of unit, sticks and flash
    bool verbose = false;
    bool window = false; ///< a screen instead of lines, and several units
    bool loop = false; ///< several units on the terminal

    bool severalUnits() const { return window || loop; }
};

/// What to do with a command line.
enum class Request {
    Run,
    Show, ///< the text on standard output, for --help and --version
    Refuse, ///< the text on standard error
};

/**
 * Reads the command line @p arguments, the program's name first, into @p options, or gives the
 * text to show instead. Everything that can be known without changing anything is checked here.
 */
Request parseOptions(const QStringList &arguments, Options &options, QString &text);

} // namespace bench
