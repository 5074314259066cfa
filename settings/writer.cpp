#include "writer.h"

#include "grammar.h"

#include <QFileDevice>

#include <algorithm>
#include <array>
#include <cerrno>
#include <unistd.h>

namespace production {

namespace {

const QLatin1String lineEnd("\r\n");
const QLatin1String itemSeparator(" , ");
constexpr int commentColumn = 16; ///< Bytes; comments of longer lines stand at multiples of 4.
constexpr int outputSize = 16 * 1024; ///< Characters that are collected for one write.

/// In a named section these come first, in this order.
constexpr std::array<QLatin1String, 3> specialNames = {
    QLatin1String("mode", 4), QLatin1String("length", 6), QLatin1String("startwith", 9)};

/// One key with all that its lines must carry.
struct Entry
{
    const QString &key;
    const QVariant &value;
    QString comment; ///< Empty when the key has none.
};

/// Where a key stands: under the header of a section, with the rest of the key as its name.
struct Place
{
    QStringView section; ///< Empty with isGeneral, or for the section "[]".
    QStringView name;
    bool isGeneral; ///< The general section, where a key stands with its whole text.
};

/// How the texts of a value are written.
enum class Layout {
    Bare,
    Quoted, ///< Those that would not come back bare stand between double quotes.
};

bool isList(const QVariant &value)
{
    return value.userType() == QMetaType::QVariantList
        || value.userType() == QMetaType::QStringList;
}

/// The text of a value that is a single one, without a copy; nullptr for any other.
const QString *textOf(const QVariant &value)
{
    return value.userType() == QMetaType::QString ? static_cast<const QString *>(value.constData())
                                                  : nullptr;
}

bool isBareValue(const QVariant &value)
{
    const QString *const text = textOf(value);
    return text != nullptr && *text == bareValue();
}

QStringList texts(const QVariant &value)
{
    return isList(value) ? value.toStringList() : QStringList(value.toString());
}

/// Nothing that a scan acts on: such a text always comes back as it is.
bool isPlain(QStringView text)
{
    if (text.isEmpty())
        return true;
    if (std::any_of(text.begin(), text.end(), isActive) || text.front() == QLatin1Char('['))
        return false;
    return !text.front().isSpace() && !text.back().isSpace();
}

QString headerName(const Place &place)
{
    if (place.isGeneral)
        return QStringLiteral("General");
    if (place.section.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("%General");
    return place.section.toString();
}

QString headerLine(const Place &place)
{
    return QLatin1Char('[') + headerName(place) + QLatin1Char(']');
}

/// Whether the keys under the place's header are read with the place's section as their prefix.
bool headerComesBack(const Place &place)
{
    const QString line = headerLine(place);
    const SectionHeader header = scanSectionHeader(line);
    const QString prefix = header.prefix();
    if (place.isGeneral)
        return prefix.isEmpty();
    return prefix.size() == place.section.size() + 1 && prefix.startsWith(place.section);
}

Place generalPlace(QStringView key)
{
    return {{}, key, true};
}

Place splitAt(QStringView key, qsizetype slash)
{
    return {key.left(slash), key.mid(slash + 1), false};
}

/// The usual place: a key belongs to the section before its last slash.
Place usualPlace(QStringView key)
{
    const auto name = std::find(key.crbegin(), key.crend(), QLatin1Char('/')).base();
    return name == key.begin() ? generalPlace(key) : splitAt(key, name - key.begin() - 1);
}

/// Whether the quotes in @p text, a part of a line, leave what follows it between quotes.
bool opensQuote(QStringView text)
{
    KeyLine line = scanKeyLine(text);
    // A scan ends where a comment would begin; nothing is quoted there.
    while (!line.comment.isEmpty())
        line = scanKeyLine(line.comment.mid(1));
    return line.openQuote;
}

/// Whether the texts on both sides of the slash can be a header's name and the begin of a line.
bool mayPart(QStringView key, qsizetype slash)
{
    const bool blankBefore = slash > 0 && key[slash - 1].isSpace();
    const bool last = slash + 1 == key.size();
    return !blankBefore
        && (last || !(key[slash + 1].isSpace() || key[slash + 1] == QLatin1Char('[')));
}

/**
 * Calls @p accepts with the places where the key may stand, best first, until one is accepted.
 *
 * A name is scanned as if no quote were open before it. So the slashes fall into two kinds, by
 * whether the quotes behind them leave one open, and of each kind only the last needs trying: what
 * keeps the text behind it from being a name stands behind the earlier ones of its kind as well.
 */
template <typename Accepts>
bool findPlace(QStringView key, Accepts accepts)
{
    const qsizetype bracket = key.indexOf(QLatin1Char(']')); // where any header's name would end
    qsizetype limit = bracket < 0 ? key.size() : bracket;
    qsizetype end = key.size();
    std::array<bool, 2> tried{};
    bool openQuote = false;
    while (!(tried[0] && tried[1])) {
        const qsizetype slash = key.left(limit).lastIndexOf(QLatin1Char('/'));
        if (slash < 0)
            break;
        openQuote ^= opensQuote(key.mid(slash + 1, end - slash - 1));
        limit = end = slash;
        if (tried[openQuote] || !mayPart(key, slash))
            continue;
        tried[openQuote] = true;
        const Place place = splitAt(key, slash);
        if (headerComesBack(place) && accepts(place))
            return true;
    }
    return accepts(generalPlace(key));
}

/// "name=", or with a blank between when the name's last backslash would swallow the "=".
QString nameWithSeparator(QStringView name)
{
    const QString line = name.toString() + QLatin1Char('=');
    if (scanKeyLine(line).isBare())
        return name.toString() + QLatin1String(" =");
    return line;
}

/// Whether the text comes back as it is from an item that is followed by another one, by the
/// line's comment or by nothing.
bool standsBare(const QString &text, bool isLast, bool hasComment)
{
    const bool beforeComment = isLast && hasComment;
    const QLatin1String behind = beforeComment ? QLatin1String(" ;") : QLatin1String();
    const QString line = QLatin1Char('=') + text + (isLast ? behind : itemSeparator);
    const KeyLine read = scanKeyLine(QStringView(line).trimmed());
    return !read.danglingBackslash && read.comment.isEmpty() != beforeComment
        && read.commas.size() == !isLast && texts(read.value()).constFirst() == text;
}

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString valueText(const QVariant &value, Layout layout, bool hasComment)
{
    QStringList items = texts(value);
    if (layout == Layout::Quoted) {
        for (int i = 0; i < items.size(); ++i) {
            if (!standsBare(items[i], i + 1 == items.size(), hasComment))
                items[i] = quoted(items[i]);
        }
    }
    return items.join(itemSeparator);
}

/// The key's line without its comment.
QString keyText(QStringView name, const QVariant &value, Layout layout, bool hasComment)
{
    if (isBareValue(value) && layout == Layout::Bare)
        return name.toString();
    return nameWithSeparator(name) + valueText(value, layout, hasComment);
}

/**
 * Appends @p comment to the line that begins at @p lineBegin of @p text.
 *
 * Columns are counted in bytes. A comment right behind a backslash would be taken for text.
 */
void appendComment(QString &text, int lineBegin, const QString &comment)
{
    if (comment.isEmpty())
        return;
    const QStringView line = QStringView(text).mid(lineBegin);
    const int bytes = line.toUtf8().size();
    const bool full = bytes > commentColumn
        || (bytes == commentColumn && scanKeyLine(line.trimmed()).danglingBackslash);
    const int spaces = full ? 4 - bytes % 4 : commentColumn - bytes;
    text += QString(spaces, QLatin1Char(' '));
    text += comment;
}

/// Whether @p line, under the header of @p place, is read as exactly this entry.
bool comesBack(const Place &place, const QString &line, const Entry &entry)
{
    const QStringView trimmed = QStringView(line).trimmed();
    if (trimmed.isEmpty() || isSectionHeader(trimmed))
        return false;
    const KeyLine read = scanKeyLine(trimmed);
    if (read.danglingBackslash || read.name() != place.name || read.comment != entry.comment)
        return false;
    const QVariant value = read.value();
    return isList(value) == isList(entry.value) && texts(value) == texts(entry.value);
}

class Writer
{
public:
    Writer(const SettingsMap &map, const KeyComments &comments)
        : map(map)
        , comments(comments)
        , nextComment(comments.cbegin())
    {
    }

    /// Returns false as soon as the device does not take everything.
    bool writeTo(QIODevice &device)
    {
        for (auto it = map.cbegin(); it != map.cend(); ++it) {
            writeEntry({it.key(), it.value(), commentInOrder(it.key())});
            if (output.size() >= outputSize && !flushTo(device))
                return false;
        }
        return flushTo(device);
    }

private:
    bool flushTo(QIODevice &device)
    {
        const QByteArray bytes = output.toUtf8();
        output.resize(0);
        return device.write(bytes) == bytes.size();
    }

    void writeEntry(const Entry &entry)
    {
        if (writePlainEntry(entry) || writeOnOneLine(entry) || writeOnTwoLines(entry))
            return;
        // No text of a file is read as such a value, so there is none that could be kept.
        const Place place = usualPlace(entry.key);
        writeLine(place, keyText(place.name, entry.value, Layout::Bare, false));
    }

    /// Writes the ordinary key, whose line needs no asking. Returns false when this is none.
    bool writePlainEntry(const Entry &entry)
    {
        const Place place = usualPlace(entry.key);
        const QString *const value = textOf(entry.value);
        if (place.name.isEmpty() || !isPlain(place.name) || value == nullptr)
            return false;
        const bool bare = *value == bareValue();
        if (!bare && !isPlain(*value))
            return false;
        if (!isCurrent(place)) {
            if (!headerComesBack(place))
                return false;
            beginSection(place);
        }

        if (isWrittenAlready(place))
            return true;
        const int lineBegin = output.size();
        output.append(place.name.data(), int(place.name.size()));
        if (!bare) {
            output += QLatin1Char('=');
            output += *value;
        }
        appendComment(output, lineBegin, entry.comment);
        output += lineEnd;
        return true;
    }

    bool writeOnOneLine(const Entry &entry)
    {
        return findPlace(entry.key, [&](const Place &place) { return tryLine(place, entry); });
    }

    /// Where no line can carry both value and comment, a bare one before it carries the comment.
    bool writeOnTwoLines(const Entry &entry)
    {
        if (entry.comment.isEmpty())
            return false;
        const QVariant bare = bareValue();
        writeOnOneLine({entry.key, bare, entry.comment});
        return writeOnOneLine({entry.key, entry.value, QString()});
    }

    bool tryLine(const Place &place, const Entry &entry)
    {
        for (const Layout layout : {Layout::Bare, Layout::Quoted}) {
            QString line = keyText(place.name, entry.value, layout, !entry.comment.isEmpty());
            appendComment(line, 0, entry.comment);
            if (comesBack(place, line, entry)) {
                writeLine(place, line);
                return true;
            }
        }
        return false;
    }

    void writeLine(const Place &place, const QString &line)
    {
        if (!isCurrent(place))
            beginSection(place);
        if (isWrittenAlready(place))
            return;
        output += line;
        output += lineEnd;
    }

    bool isCurrent(const Place &place) const
    {
        return hasSection && place.isGeneral == currentIsGeneral && place.section == currentSection;
    }

    void beginSection(const Place &place)
    {
        if (hasSection)
            output += lineEnd;
        output += headerLine(place);
        output += lineEnd;
        hasSection = true;
        currentIsGeneral = place.isGeneral;
        currentSection = place.section.toString();
        specialsWritten = {};
        // The general section and the group "general" keep them in their sorted place.
        if (!place.isGeneral && headerName(place) == currentSection)
            writeSpecials();
    }

    void writeSpecials()
    {
        for (size_t i = 0; i < specialNames.size(); ++i) {
            const auto it = map.constFind(currentSection + QLatin1Char('/') + specialNames[i]);
            if (it == map.cend())
                continue;
            const Entry entry = {it.key(), it.value(), comments.value(it.key())};
            if (isBareValue(entry.value))
                writeBareSpecial(entry);
            else
                writeEntry(entry);
            specialsWritten[i] = true;
        }
    }

    /// These stand with their "=" even where the file had none.
    void writeBareSpecial(const Entry &entry)
    {
        const Place place = usualPlace(entry.key);
        QString line = keyText(place.name, entry.value, Layout::Quoted, !entry.comment.isEmpty());
        appendComment(line, 0, entry.comment);
        writeLine(place, line);
    }

    bool isWrittenAlready(const Place &place) const
    {
        for (size_t i = 0; i < specialNames.size(); ++i) {
            if (specialsWritten[i] && place.name == specialNames[i])
                return true;
        }
        return false;
    }

    /// The key's comment; the keys are asked for in ascending order.
    QString commentInOrder(const QString &key)
    {
        while (nextComment != comments.cend() && nextComment.key() < key)
            ++nextComment;
        return nextComment != comments.cend() && nextComment.key() == key ? nextComment.value()
                                                                          : QString();
    }

    const SettingsMap &map;
    const KeyComments &comments;
    KeyComments::const_iterator nextComment;
    QString output; ///< Whole lines that the device does not have yet.
    bool hasSection = false;
    QString currentSection;
    bool currentIsGeneral = false;
    std::array<bool, specialNames.size()> specialsWritten{};
};

/// Whether everything written to the file is on the disk.
bool syncToDisk(QFileDevice &file)
{
    if (!file.flush())
        return false;
    // EINVAL: not a file that could be synced, a pipe for example.
    return file.handle() < 0 || fdatasync(file.handle()) == 0 || errno == EINVAL;
}

} // namespace

bool writeSettings(QIODevice &device, const SettingsMap &map, const KeyComments &comments)
{
    if (!Writer(map, comments).writeTo(device))
        return false;
    QFileDevice *const file = qobject_cast<QFileDevice *>(&device);
    return file == nullptr || syncToDisk(*file);
}

} // namespace production
