#include "plainformat.h"

#include <QStringList>
#include <QTextStream>

namespace plainformat {

namespace {

const QString bare = QStringLiteral("{none}");

/// Lone surrogates, which only UTF-16 can hold, replaced.
QString wellFormed(const QString &line)
{
    QString result;
    for (const uint c : line.toUcs4()) {
        if (QChar::requiresSurrogates(c))
            result += QChar(QChar::highSurrogate(c));
        result += QChar::requiresSurrogates(c) ? QChar(QChar::lowSurrogate(c)) : QChar(ushort(c));
    }
    return result;
}

QString unquoted(QString text)
{
    text = text.trimmed();
    const QLatin1Char quote('"');
    return text.size() >= 2 && text.startsWith(quote) && text.endsWith(quote)
        ? text.mid(1, text.size() - 2)
        : text;
}

QString sectionPrefix(const QString &line, bool &readable)
{
    const int close = line.indexOf(QLatin1Char(']'));
    readable &= close >= 0;
    const QString name = line.mid(1, close < 0 ? -1 : close - 1).trimmed();
    const QString folded = name.toLower();
    if (folded == QLatin1String("general"))
        return QString();
    return (folded == QLatin1String("%general") ? QStringLiteral("general") : name)
        + QLatin1Char('/');
}

QVariant valueOf(const QString &line, int separator, const QList<int> &commas)
{
    if (commas.isEmpty())
        return unquoted(line.mid(separator + 1));
    QVariantList items;
    int begin = separator + 1;
    for (const int comma : commas + QList<int>{line.size()}) {
        items.append(unquoted(line.mid(begin, comma - begin)));
        begin = comma + 1;
    }
    return items;
}

bool readKeyLine(QString line, const QString &prefix, production::SettingsMap &map,
                 production::KeyComments &comments)
{
    bool quoted = false;
    bool readable = true;
    int separator = -1;
    QList<int> commas;
    QString comment;
    for (int i = 0; i < line.size(); ++i) {
        const QChar c = line.at(i);
        if (c == QLatin1Char('\\')) {
            readable = ++i < line.size();
        } else if (c == QLatin1Char('"')) {
            quoted = !quoted;
        } else if (quoted) {
            continue;
        } else if (c == QLatin1Char('=') && separator < 0) {
            separator = i;
        } else if (c == QLatin1Char(',') && separator >= 0) {
            commas.append(i);
        } else if (c == QLatin1Char(';') || c == QLatin1Char('#')) {
            comment = line.mid(i);
            line.truncate(i);
        }
    }
    const QString key = prefix + line.left(separator).trimmed();
    map.insert(key, separator < 0 ? QVariant(bare) : valueOf(line, separator, commas));
    if (!comment.isEmpty())
        comments.insert(key, comment);
    return readable;
}

QByteArray withComment(QByteArray line, const QString &comment)
{
    if (!comment.isEmpty()) {
        const int spaces = line.size() <= 16 ? 16 - line.size() : 4 - line.size() % 4;
        line += QByteArray(spaces, ' ') + comment.toUtf8();
    }
    return line + "\r\n";
}

QByteArray keyLine(const QString &leaf, const QVariant &value)
{
    if (value.userType() == QMetaType::QVariantList)
        return (leaf + QLatin1Char('=') + value.toStringList().join(QLatin1String(" , "))).toUtf8();
    return value.toString() == bare ? leaf.toUtf8()
                                    : (leaf + QLatin1Char('=') + value.toString()).toUtf8();
}

} // namespace

bool read(const QByteArray &bytes, production::SettingsMap &map, production::KeyComments &comments)
{
    QTextStream stream(bytes);
    stream.setCodec("utf-8");
    bool readable = true;
    QString prefix;
    while (!stream.atEnd()) {
        const QString line = wellFormed(stream.readLine()).trimmed();
        if (line.startsWith(QLatin1Char('[')))
            prefix = sectionPrefix(line, readable);
        else if (!line.isEmpty())
            readable &= readKeyLine(line, prefix, map, comments);
    }
    return readable;
}

QByteArray write(const production::SettingsMap &map, const production::KeyComments &comments)
{
    QByteArray text;
    QString header;
    QStringList written;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        const int slash = it.key().lastIndexOf(QLatin1Char('/'));
        const QString leaf = it.key().mid(slash + 1);
        QString section = slash < 0 ? QStringLiteral("General") : it.key().left(slash);
        if (slash >= 0 && section.toLower() == QLatin1String("general"))
            section = QStringLiteral("%General");
        if (text.isEmpty() || section != header) {
            text += (text.isEmpty() ? "[" : "\r\n[") + section.toUtf8() + "]\r\n";
            header = section;
            written.clear();
            for (const char *name : {"mode", "length", "startwith"}) {
                const QString word = QLatin1String(name);
                const QString key = section + QLatin1Char('/') + word;
                if (!map.contains(key))
                    continue;
                const QString value = map.value(key).toString();
                text +=
                    withComment((word + QLatin1Char('=') + value).toUtf8(), comments.value(key));
                written.append(word);
            }
        }
        if (!written.contains(leaf))
            text += withComment(keyLine(leaf, it.value()), comments.value(it.key()));
    }
    return text;
}

} // namespace plainformat
