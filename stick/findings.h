#pragma once

#include <QLatin1String>
#include <QString>

#include <array>
#include <vector>

namespace stick {

enum class Severity { Error, Warning, Note };

/// What can be wrong or surprising. Names and severities stand in the table of findings.cpp, in
/// this order, and in the manual page; they are stable and never translated.
enum class Code {
    UnclosedSection,
    TrailingBackslash,
    TooLarge,
    NotUtf8,
    ByteOrderMark,
    TextAfterHeader,
    UnbalancedQuote,
    EmptyKey,
    NoGroup,
    UnknownGroup,
    MisspeltGroup,
    LowerSection,
    UnknownKey,
    MisspeltKey,
    DuplicateSection,
    DuplicateKey,
    NothingEntered,
    ModeMissing,
    ModeOff,
    ModeUnknown,
    NoEffect,
    MissingKey,
    NotANumber,
    OutOfRange,
    UnexpectedList,
    BareSetting,
    EmptyValue,
    EmptySize,
    StepCount,
    UnmatchedSize,
    UnreachableKey,
    StartwithList,
    LengthWithoutStartwith,
    UselessPrefix,
    StartwithInSk,
    PoolEmpty,
    PoolLow,
    NeverTaken,
    DuplicateEntry,
    SharedEntry,
    EntryWithValue,
    EntryBlank,
    EntryPunctuation,
    EntryEncoding,
    EntryDone,
    NoConfiguration,
    MisnamedFile,
    SystemFile,
    NotLookedAt,
    LeftoverLock,
    LeftoverCopy,
    TornMarker,
    NotWritable,
    StickFull,
    CodeCount
};

QLatin1String codeName(Code code);
Severity severity(Code code);
/// "error", "warning" or "note".
QLatin1String severityName(Severity severity);

struct Finding
{
    QString file;
    int line; ///< From 1; 0 when the finding is about the file as a whole.
    Code code;
    QString text; ///< What is wrong, and what the unit will do.
};

/// Findings of one kind, by their severity.
struct Tally
{
    int errors = 0;
    int warnings = 0;
    int notes = 0;

    bool isClean() const { return errors == 0 && warnings == 0 && notes == 0; }
    void add(Severity severity);
    Tally &operator+=(const Tally &other);
};

/**
 * The findings about one production file. Every finding counts; of each code at most a given
 * number is kept, so that a fault of a million lines does not bury the others.
 */
class Findings
{
public:
    /// @p limit of 0 keeps all.
    Findings(const QString &file, int limit);

    void add(Code code, int line, const QString &text) { addTo(m_file, code, line, text); }
    /// Adds a finding about @p file, which is another one: a marker, a lock.
    void addTo(const QString &file, Code code, int line, const QString &text);
    /// Adds a finding whose text is only made when it will be kept.
    template <typename MakeText>
    void addEach(Code code, int line, MakeText makeText)
    {
        if (isKept(code))
            add(code, line, makeText());
        else
            count(code);
    }

    /// Those of the production file by line, then those of other files.
    std::vector<Finding> sorted() const;
    const Tally &tally() const { return m_tally; }
    int omitted() const { return m_omitted; }
    bool contains(Code code) const { return counted(code) > 0; }

private:
    int counted(Code code) const { return m_counts[size_t(code)]; }
    bool isKept(Code code) const { return m_limit == 0 || counted(code) < m_limit; }
    void count(Code code);

    QString m_file;
    int m_limit;
    std::vector<Finding> m_findings;
    std::array<int, size_t(Code::CodeCount)> m_counts{};
    Tally m_tally;
    int m_omitted = 0;
};

} // namespace stick
