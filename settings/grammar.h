#pragma once

#include <QStringList>
#include <QStringView>
#include <QVarLengthArray>
#include <QVariant>

#include <algorithm>

/**
 * The grammar of one line of a production file.
 *
 * The reader, the writer (which asks how a line it wants to write would be read) and the tools all
 * scan lines with these functions, so they cannot disagree. Views returned point into the text
 * that was passed. Everything here is reentrant.
 */
namespace production {

/// A "[name]" line.
struct SectionHeader
{
    QStringView name; ///< Between the brackets, trimmed.
    bool closed; ///< False when the "]" is missing, which makes the file unreadable.

    /// What the keys that follow are prefixed with; never null.
    QString prefix() const;
};

/// A "key = value ; comment" line, or a part of one.
struct KeyLine
{
    QStringView text; ///< The line up to its comment.
    QStringView comment; ///< From its ";" or "#" to the end; empty when there is none.
    int separator = -1; ///< Position of the "=" in text, -1 for a bare key.
    QVarLengthArray<int, 16> commas; ///< Positions of the commas that part the value's items.
    bool danglingBackslash = false; ///< Ends in a backslash, which makes the file unreadable.
    bool openQuote = false; ///< Ends between double quotes: a comment would be taken for text.

    /// Whether the line is a key without "=".
    bool isBare() const { return separator < 0; }
    /// The key, trimmed.
    QStringView name() const;
    /// A QString, or a QVariantList of QString; bareValue() for a bare key.
    QVariant value() const;
};

/// Whether a scan of a key line acts on @p c; every other character is plain text.
constexpr bool isActive(QChar c)
{
    switch (c.unicode()) {
    case '=':
    case '"':
    case ',':
    case ';':
    case '#':
    case '\\':
        return true;
    default:
        return false;
    }
}

/// Whether the trimmed line @p line begins a section.
inline bool isSectionHeader(QStringView line)
{
    return line.startsWith(QLatin1Char('['));
}

/// @p line is trimmed and begins with "[".
SectionHeader scanSectionHeader(QStringView line);

/// @p line is trimmed and not a section header.
KeyLine scanKeyLine(QStringView line);

/**
 * Calls @p visit(number, line) for every line of @p text that is not blank, with the line's number
 * (from 1) and the trimmed line. A line ends at a line feed.
 */
template <typename Visitor>
void forEachLine(QStringView text, Visitor visit)
{
    int number = 0;
    for (auto begin = text.begin(); begin != text.end();) {
        const auto end = std::find(begin, text.end(), QLatin1Char('\n'));
        ++number;
        const QStringView line = QStringView(begin, end).trimmed();
        if (!line.isEmpty())
            visit(number, line);
        begin = end == text.end() ? end : end + 1;
    }
}

} // namespace production
