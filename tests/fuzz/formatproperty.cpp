#include "formatproperty.h"

#include "plainformat.h"
#include "reader.h"
#include "writer.h"

#include <QBuffer>

#include <algorithm>

using namespace production;

namespace {

FileContent contentReadBy(decltype(readSettings) read, QByteArray bytes)
{
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    FileContent content;
    content.comments.insert("old", "; of the file before");
    content.readable = read(device, content.map, content.comments);
    return content;
}

QByteArray bytesWrittenBy(decltype(writeSettings) write, const FileContent &content)
{
    QByteArray bytes;
    QBuffer device(&bytes);
    device.open(QIODevice::WriteOnly);
    return write(device, content.map, content.comments) ? bytes : QByteArray("(failed)");
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

FileContent readContent(const QByteArray &bytes)
{
    return contentReadBy(readSettings, bytes);
}

QByteArray writtenContent(const FileContent &content)
{
    return bytesWrittenBy(writeSettings, content);
}

QString brokenFormatProperty(const QByteArray &input)
{
    const FileContent content = readContent(input);
    if (!same(content, contentReadBy(plainformat::read, input)))
        return "is read differently";
    if (hasNullKey(content))
        return "holds a null key";
    if (!content.readable)
        return QString();

    const QByteArray rewritten = writtenContent(content);
    const FileContent again = readContent(rewritten);
    if (!same(again, content))
        return "does not come back";
    if (writtenContent(again) != rewritten)
        return "changes with the second rewrite";
    if (!losesOnlyRemovedKey(content))
        return "loses more than the removed key";
    // A comma or comment character behind a backslash needs no quotes, which the plain writer sets.
    const QByteArray plain = bytesWrittenBy(plainformat::write, content);
    if (!input.contains('\\') && same(readContent(plain), content) && plain != rewritten)
        return "is not written in the plain layout";
    return QString();
}
