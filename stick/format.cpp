#include "readablefile.h"
#include "texts.h"

#include <writer.h>

#include <QBuffer>

namespace stick {

ExitCode runFormat(const Arguments &arguments, Console &console)
{
    const QString path = arguments.paths.first();
    console.showProgress(Texts::tr("reading %1").arg(path));
    const ReadFile file = readLikeUnit(path, console);
    // A unit does not rewrite what it cannot read.
    if (file.exitCode != NothingToReport)
        return file.exitCode;
    QBuffer rewritten;
    rewritten.open(QIODevice::WriteOnly);
    production::writeSettings(rewritten, file.map, file.comments);
    console.write(rewritten.data());
    return NothingToReport;
}

} // namespace stick
