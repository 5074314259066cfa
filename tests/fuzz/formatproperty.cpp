#include "formatproperty.h"

#include "plainformat.h"
#include "reader.h"
#include "writer.h"

#include <QBuffer>

#include <algorithm>

using namespace production;

FileContent readContent(QByteArray bytes)
{
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    FileContent content;
    content.readable = readSettings(device, content.map, content.comments);
    return content;
}

QByteArray writtenContent(const FileContent &content)
{
    QByteArray bytes;
    QBuffer device(&bytes);
    device.open(QIODevice::WriteOnly);
    return writeSettings(device, content.map, content.comments) ? bytes : QByteArray("(failed)");
}

namespace {

FileContent readPlainly(const QByteArray &bytes)
{
    FileContent content;
    content.readable = plainformat::read(bytes, content.map, content.comments);
    return content;
}

bool sameKinds(const SettingsMap &a, const SettingsMap &b)
{
    return std::equal(
        a.cbegin(), a.cend(), b.cbegin(), b.cend(),
        [](const QVariant &x, const QVariant &y) { return x.userType() == y.userType(); });
}

bool same(const FileContent &a, const FileContent &b)
{
    return a.readable == b.readable && a.map == b.map && sameKinds(a.map, b.map)
        && a.comments == b.comments;
}

bool hasNullKey(const FileContent &content)
{
    // A null text sorts as an empty one does: first.
    return !content.map.isEmpty() && content.map.firstKey().isNull();
}

/// Whether exactly the key in the middle is gone after a rewrite without it.
bool losesOnlyRemovedKey(const FileContent &content)
{
    if (content.map.isEmpty())
        return true;
    FileContent rest = content;
    const QString key = std::next(rest.map.cbegin(), rest.map.size() / 2).key();
    rest.map.remove(key);
    const QByteArray rewritten = writtenContent(rest);
    rest.comments.remove(key);
    return same(readContent(rewritten), rest);
}

} // namespace

QString brokenFormatProperty(const QByteArray &input)
{
    const FileContent content = readContent(input);
    if (!same(content, readPlainly(input)))
        return QStringLiteral("is read differently");
    if (hasNullKey(content))
        return QStringLiteral("holds a null key");
    if (!content.readable)
        return QString();

    const QByteArray rewritten = writtenContent(content);
    const FileContent again = readContent(rewritten);
    if (!same(again, content))
        return QStringLiteral("does not come back");
    if (writtenContent(again) != rewritten)
        return QStringLiteral("changes with the second rewrite");
    if (!losesOnlyRemovedKey(content))
        return QStringLiteral("loses more than the removed key");
    const QByteArray plain = plainformat::write(content.map, content.comments);
    if (same(readContent(plain), content) && plain != rewritten)
        return QStringLiteral("is not written in the plain layout");
    return QString();
}
