#include "readablefile.h"

#include "input.h"
#include "texts.h"

#include <reader.h>

#include <QBuffer>

using namespace production;

namespace stick {

namespace {

/// The faults that make the file unreadable, with their lines.
void complainOfFaults(const QString &path, const QByteArray &bytes, Console &console)
{
    constexpr int limit = 20;
    Findings findings(path, limit);
    checkText(bytes, ScannedFile(bytes), findings);
    for (const Finding &finding : findings.sorted()) {
        if (finding.code == Code::UnclosedSection || finding.code == Code::TrailingBackslash
            || finding.code == Code::TooLarge)
            console.complain(findingLine(finding));
    }
}

} // namespace

ReadFile readLikeUnit(const QString &path, Console &console)
{
    ReadFile result = {Failed, {}, {}, {}};
    QString error;
    const std::optional<QByteArray> bytes = stick::readFile(path, error);
    if (!bytes) {
        console.complain(error);
        return result;
    }
    result.bytes = *bytes;
    QBuffer device(&result.bytes);
    device.open(QIODevice::ReadOnly);
    const bool readable = readSettings(device, result.map, result.comments);
    result.exitCode = readable ? NothingToReport : SomethingFound;
    if (!readable)
        complainOfFaults(path, *bytes, console);
    return result;
}

} // namespace stick
