#include "marker.h"

#include "input.h"
#include "texts.h"

#include <reader.h>

namespace stick {

namespace {

std::vector<MarkerLine> markerLines(const QByteArray &content)
{
    std::vector<MarkerLine> lines;
    int number = 0;
    for (int begin = 0; begin < content.size();) {
        const int end = content.indexOf('\n', begin);
        const bool ended = end >= 0;
        const QByteArray line = content.mid(begin, ended ? end - begin : -1).trimmed();
        begin = ended ? end + 1 : content.size();
        ++number;
        if (line.isEmpty())
            continue;
        const QString text = QString::fromLatin1(line);
        // A stick that lost its power leaves blocks of zeros behind.
        const bool torn = !ended || line.contains('\0');
        lines.push_back({number, text, torn ? QStringList() : text.split(QLatin1String(", "))});
    }
    return lines;
}

} // namespace

std::optional<std::vector<MarkerLine>> readMarker(const QString &path, QString &error)
{
    const std::optional<QByteArray> content = readFile(path, error);
    if (!content)
        return std::nullopt;
    if (content->size() > production::mostCharacters) {
        error = Texts::tr("%1: too large for a completion marker").arg(path);
        return std::nullopt;
    }
    return markerLines(*content);
}

} // namespace stick
