#pragma once

#include "check.h"

#include <QStringList>

namespace stick {

enum class Command { Show, Format, Check, Audit, Split };

/// What production-stick is asked to do.
struct Arguments
{
    Command command = Command::Show;
    QStringList paths; ///< Files, or folders of sticks, as the command takes them.
    bool json = false;
    CheckOptions check;
    QStringList issued; ///< Lists of the serials that were handed to the line.
    int sticks = 0; ///< How many to split into.
    QString into; ///< The folder that the new sticks go to.
};

/// What to do with a command line.
enum class Request {
    Run,
    Show, ///< The text on standard output, for --help and --version.
    Refuse, ///< The text on standard error; it tells what is wrong.
};

/**
 * Reads the command line @p arguments, the program's name first, into @p result, or gives the text
 * to show instead.
 */
Request parseCommandLine(const QStringList &arguments, Arguments &result, QString &text);

} // namespace stick
