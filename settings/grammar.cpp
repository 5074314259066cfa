#include "grammar.h"

#include "settingsmap.h"

namespace production {

namespace {

/// An item of a value: trimmed, and without its outer pair of double quotes.
QString itemText(QStringView item)
{
    const QLatin1Char quote('"');
    item = item.trimmed();
    if (item.size() >= 2 && item.startsWith(quote) && item.endsWith(quote))
        item = item.mid(1, item.size() - 2);
    return item.toString();
}

} // namespace

SectionHeader scanSectionHeader(QStringView line)
{
    const qsizetype close = line.indexOf(QLatin1Char(']'));
    const bool closed = close >= 0;
    return {(closed ? line.mid(1, close - 1) : line.mid(1)).trimmed(), closed};
}

QString SectionHeader::prefix() const
{
    if (name.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0)
        return QLatin1String("");
    if (name.compare(QLatin1String("%general"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("general/");
    return name.toString() + QLatin1Char('/');
}

KeyLine scanKeyLine(QStringView line)
{
    KeyLine key;
    key.text = line;
    bool quoted = false;
    const int size = int(line.size());
    for (int i = 0; i < size; ++i) {
        if (!isActive(line[i]))
            continue;
        switch (line[i].unicode()) {
        case '=':
            if (!quoted && key.separator < 0)
                key.separator = i;
            break;
        case '"':
            quoted = !quoted;
            break;
        case ',':
            if (!quoted && key.separator >= 0)
                key.commas.append(i);
            break;
        case ';':
        case '#':
            if (quoted)
                break;
            key.text = line.left(i);
            key.comment = line.mid(i);
            return key;
        case '\\':
            // The next character stands for itself; both stay in the text.
            key.danglingBackslash = ++i == size;
            break;
        default:
            break;
        }
    }
    key.openQuote = quoted;
    return key;
}

QStringView KeyLine::name() const
{
    return (isBare() ? text : text.left(separator)).trimmed();
}

QVariant KeyLine::value() const
{
    if (isBare())
        return bareValue();
    if (commas.isEmpty())
        return itemText(text.mid(separator + 1));

    QVariantList items;
    items.reserve(commas.size() + 1);
    int begin = separator + 1;
    for (const int comma : commas) {
        items.append(itemText(text.mid(begin, comma - begin)));
        begin = comma + 1;
    }
    items.append(itemText(text.mid(begin)));
    return items;
}

} // namespace production
