#pragma once

#include <serialpool.h>

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <array>
#include <vector>

namespace stick {

/// The two groups that hold serial pools, in the order in which a pass carries them out.
enum SerialGroupIndex { SnIndex, SkIndex, SerialGroupCount };

const production::SerialGroup &serialGroup(int index);

/// A "[name]" line.
struct Header
{
    int line;
    QString prefix; ///< What the keys below it are prefixed with.
    bool closed;
    bool repeated; ///< The section was there before, and not only left for a lower one.
    bool trailingText; ///< Something other than a comment follows the "]".
};

/// How a header names the section whose keys have the prefix @p prefix.
QString sectionName(const QString &prefix);

/// A key with its value, other than a pool entry.
struct Setting
{
    int line;
    QString key; ///< In full: "Panel/size".
    QVariant value;
};

/// A pool entry.
struct EntryLine
{
    int line;
    bool bare; ///< Has no "=" after it.
    QStringView name;
};

/// A key that stands in the file more than once; the last line wins.
struct DuplicateKey
{
    int line;
    int earlierLine;
    QString key;
};

/**
 * The text of a production file as the unit's reader takes it apart, with the line where everything
 * stands. What is wrong with it is for others to judge.
 */
class ScannedFile
{
public:
    explicit ScannedFile(const QByteArray &bytes);
    Q_DISABLE_COPY(ScannedFile)

    /// Whether the unit takes any key of the file at all.
    bool isReadable() const
    {
        return danglingBackslashes.empty() && !m_hasUnclosedHeader && !isTooLarge();
    }
    bool isTooLarge() const;

    /// The setting that the unit finds under @p key; null when there is none.
    const Setting *find(const QString &key) const;
    /// The line where the group @p name begins, with its header or else a key; 0 without either.
    int lineOfGroup(const QString &name) const { return m_groupLines.value(name); }

    /// Every group of the file, in the order of those lines.
    const QStringList &groups() const { return m_groups; }

    const QString &text() const { return m_text; }
    /// Whether the end of the file cuts off a character; it is none of text().
    bool endsWithinCharacter() const { return m_endsWithinCharacter; }

    std::vector<Header> headers;
    std::vector<Setting> settings; ///< In the order of the file, with those that others replace.
    std::array<std::vector<EntryLine>, SerialGroupCount> entries; ///< In the order of the file.
    std::vector<DuplicateKey> duplicates;
    std::vector<int> danglingBackslashes; ///< Lines that end in a backslash.
    std::vector<int> unbalancedQuotes; ///< Lines whose last double quote has no partner.
    std::vector<int> emptyKeys; ///< Lines that begin with "=".

private:
    void addHeader(int number, QStringView line);
    void addKeyLine(int number, QStringView line);
    bool addEntry(EntryLine entry);
    void addSetting(int number, const QString &key, const QVariant &value);
    void noteGroup(const QString &name, int line);

    const qint64 m_bytes;
    qint64 m_keyCharacters = 0; ///< Of the keys in full.
    bool m_endsWithinCharacter = false;
    const QString m_text; ///< What the views point into.
    // Most files have none, and their lines need not be searched for them one by one.
    const bool m_hasQuotes;
    const bool m_hasSlashes;

    QString m_prefix;
    int m_serialSection = -1; ///< Index of the serial group whose section this is.
    bool m_sectionResumed = false; ///< The section is one that the writer has left and re-entered.
    bool m_hasUnclosedHeader = false;
    QSet<QString> m_prefixes;
    QStringList m_groups;
    QHash<QString, int> m_groupLines;
    QHash<QString, size_t> m_lastSettings;
};

} // namespace stick
