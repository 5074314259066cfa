#include "plainformat.h"

#include <QIODevice>
#include <QStringList>
#include <QTextCodec>
#include <QTextStream>

#include <utility>

using production::bareValue;
using production::KeyComments;
using production::SettingsMap;

namespace plainformat {

namespace {

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

QString sectionPrefix(const QString &name)
{
    if (name.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0)
        return QLatin1String("");
    if (name.compare(QLatin1String("%general"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("general/");
    return name + QLatin1Char('/');
}

QString unquoted(QString text)
{
    text = text.trimmed();
    if (text.size() >= 2 && text.startsWith(QLatin1Char('"')) && text.endsWith(QLatin1Char('"')))
        return text.mid(1, text.size() - 2);
    return text;
}

QVariant valueOf(const QString &line, int separator, const QList<int> &commas)
{
    if (commas.isEmpty())
        return unquoted(line.mid(separator + 1));
    QVariantList items;
    int begin = separator + 1;
    for (int comma : commas) {
        items.append(unquoted(line.mid(begin, comma - begin)));
        begin = comma + 1;
    }
    items.append(unquoted(line.mid(begin)));
    return items;
}

bool readKeyLine(QString line, const QString &prefix, SettingsMap &map, KeyComments &comments)
{
    bool ok = true;
    bool quoted = false;
    int separator = -1;
    QList<int> commas;
    QString comment;
    for (int i = 0; i < line.size(); ++i) {
        const QChar c = line.at(i);
        if (c == QLatin1Char('\\')) {
            if (++i == line.size())
                ok = false;
        } else if (c == QLatin1Char('"')) {
            quoted = !quoted;
        } else if (quoted) {
            continue;
        } else if (c == QLatin1Char('=')) {
            if (separator < 0)
                separator = i;
        } else if (c == QLatin1Char(',')) {
            if (separator >= 0)
                commas.append(i);
        } else if (c == QLatin1Char(';') || c == QLatin1Char('#')) {
            comment = line.mid(i);
            line.truncate(i);
        }
    }

    const QString key = prefix + (separator < 0 ? line : line.left(separator)).trimmed();
    if (separator < 0)
        map.insert(key, bareValue());
    else
        map.insert(key, valueOf(line, separator, commas));
    if (!comment.isEmpty())
        comments.insert(key, comment);
    return ok;
}

QString headerOf(const QString &key)
{
    const int slash = key.lastIndexOf(QLatin1Char('/'));
    if (slash < 0)
        return QStringLiteral("[General]");
    const QString section = key.left(slash);
    if (section.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("[%General]");
    return QLatin1Char('[') + section + QLatin1Char(']');
}

QString protectedText(const QString &text)
{
    const bool special = text.contains(QLatin1Char(',')) || text.contains(QLatin1Char(';'))
        || text.contains(QLatin1Char('#'));
    return special ? QLatin1Char('"') + text + QLatin1Char('"') : text;
}

QString valueText(const QVariant &value)
{
    if (value.type() != QVariant::List && value.type() != QVariant::StringList)
        return protectedText(value.toString());
    QStringList items;
    for (const QString &item : value.toStringList())
        items.append(protectedText(item));
    return items.join(QLatin1String(" , "));
}

QByteArray withComment(QByteArray line, const QString &comment)
{
    if (!comment.isEmpty()) {
        line += QByteArray(line.size() <= 16 ? 16 - line.size() : 4 - line.size() % 4, ' ');
        line += comment.toUtf8();
    }
    line += "\r\n";
    return line;
}

QByteArray keyLine(const QString &name, const QVariant &value, const QString &comment)
{
    QByteArray line = name.toUtf8();
    if (value.toString() != bareValue())
        line += "=" + valueText(value).toUtf8();
    return withComment(std::move(line), comment);
}

/// A key that stands at the begin of its section, with its "=" even when it has no value.
QByteArray specialLine(const QString &name, const QVariant &value, const QString &comment)
{
    return withComment((name + QLatin1Char('=') + valueText(value)).toUtf8(), comment);
}

} // namespace

bool read(QIODevice &device, SettingsMap &map, KeyComments &comments)
{
    comments.clear();
    QTextStream stream(&device);
    stream.setCodec("utf-8");
    const QTextCodec *const utf8 = stream.codec();
    bool ok = true;
    QString prefix = QLatin1String("");
    while (!stream.atEnd()) {
        QString line = stream.readLine();
        if (stream.codec() != utf8)
            line = wellFormed(line);
        line = line.trimmed();
        if (line.isEmpty())
            continue;
        if (line.startsWith(QLatin1Char('['))) {
            const int end = line.indexOf(QLatin1Char(']'));
            ok = ok && end >= 0;
            prefix = sectionPrefix((end < 0 ? line.mid(1) : line.mid(1, end - 1)).trimmed());
        } else if (!readKeyLine(line, prefix, map, comments)) {
            ok = false;
        }
    }
    return ok;
}

bool write(QIODevice &device, const SettingsMap &map, const KeyComments &comments)
{
    const QStringList specialNames = {QStringLiteral("mode"), QStringLiteral("length"),
                                      QStringLiteral("startwith")};
    bool ok = true;
    QString lastPrefix;
    QString lastHeader;
    QStringList written;
    for (auto it = map.begin(); ok && it != map.end(); ++it) {
        const int nameBegin = it.key().lastIndexOf(QLatin1Char('/')) + 1;
        const bool samePrefix = !lastHeader.isEmpty() && it.key().leftRef(nameBegin) == lastPrefix;
        const QString header = samePrefix ? lastHeader : headerOf(it.key());
        if (!samePrefix)
            lastPrefix = it.key().left(nameBegin);
        if (header != lastHeader) {
            if (!lastHeader.isEmpty())
                device.write("\r\n");
            ok = device.write(header.toUtf8() + "\r\n") >= 0;
            lastHeader = header;
            written.clear();
            for (const QString &name : specialNames) {
                const QString key = header.mid(1, header.size() - 2) + QLatin1Char('/') + name;
                if (!map.contains(key))
                    continue;
                device.write(specialLine(name, map.value(key), comments.value(key)));
                written.append(name);
            }
        }
        const QString name = it.key().mid(nameBegin);
        if (!written.contains(name))
            ok = ok && device.write(keyLine(name, it.value(), comments.value(it.key()))) >= 0;
    }
    return ok;
}

} // namespace plainformat
