#include "marker.h"

namespace stick {

std::vector<MarkerLine> readMarker(const QByteArray &content)
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

} // namespace stick
