#include "check.h"

#include "texts.h"

#include <grammar.h>

namespace stick {

namespace {

/// Where decoding found bytes that are no text.
constexpr QChar replacement(QChar::ReplacementCharacter);

void checkMark(const QByteArray &bytes, Findings &findings)
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        findings.add(Code::ByteOrderMark, 1,
                     Texts::tr("the file begins with a byte-order mark: the unit drops it"));
    else if (bytes.startsWith("\xFE\xFF") || bytes.startsWith("\xFF\xFE"))
        findings.add(Code::ByteOrderMark, 1,
                     Texts::tr("the file is UTF-16 or UTF-32: the unit reads it, and its rewrite "
                               "stores UTF-8"));
}

void checkEncoding(const QByteArray &bytes, const QString &text, Findings &findings)
{
    if (!text.contains(replacement))
        return;
    int first = 0;
    int lines = 0;
    production::forEachLine(text, [&](int number, QStringView line) {
        if (!line.contains(replacement))
            return;
        ++lines;
        if (first == 0)
            first = number;
    });
    const bool wasReplacedBefore = text.count(replacement) == bytes.count("\xEF\xBF\xBD");
    const QString what = wasReplacedBefore
        ? Texts::tr("%n line(s) from here on hold U+FFFD: what was no text was lost in an "
                    "earlier rewrite",
                    nullptr, lines)
        : Texts::tr("%n line(s) from here on hold bytes that are no text: the unit reads U+FFFD "
                    "for them, and its rewrite stores that",
                    nullptr, lines);
    findings.add(Code::NotUtf8, first, what);
}

void checkEnd(const ScannedFile &file, Findings &findings)
{
    if (file.endsWithinCharacter())
        findings.add(Code::NotUtf8, file.text().count(QLatin1Char('\n')) + 1,
                     Texts::tr("the file ends within a character: the unit drops what is there of "
                               "it"));
}

void checkHeaders(const ScannedFile &file, Findings &findings)
{
    for (const Header &header : file.headers) {
        if (!header.closed)
            findings.add(Code::UnclosedSection, header.line,
                         Texts::tr("section header without \"]\": the unit takes nothing of the "
                                   "whole file"));
        if (header.trailingText)
            findings.add(Code::TextAfterHeader, header.line,
                         Texts::tr("the unit ignores what stands behind [%1] on this line")
                             .arg(sectionName(header.prefix)));
        if (header.repeated)
            findings.add(Code::DuplicateSection, header.line,
                         Texts::tr("[%1] was there before: the unit takes both as one section")
                             .arg(sectionName(header.prefix)));
    }
}

void checkLines(const ScannedFile &file, Findings &findings)
{
    if (file.isTooLarge())
        findings.add(Code::TooLarge, 0,
                     Texts::tr("more text than a unit's memory holds: the unit takes nothing of "
                               "it"));
    for (const int line : file.danglingBackslashes)
        findings.add(Code::TrailingBackslash, line,
                     Texts::tr("the line ends in a backslash: the unit takes nothing of the whole "
                               "file"));
    for (const int line : file.unbalancedQuotes)
        findings.add(Code::UnbalancedQuote, line,
                     Texts::tr("a double quote has no partner: the unit takes the rest of the line "
                               "as text, commas and comment included"));
    for (const int line : file.emptyKeys)
        findings.add(Code::EmptyKey, line,
                     Texts::tr("the line begins with \"=\": the unit has no key to look for it"));
}

void checkDuplicates(const ScannedFile &file, Findings &findings)
{
    for (const DuplicateKey &key : file.duplicates)
        findings.add(Code::DuplicateKey, key.line,
                     Texts::tr("\"%1\" was set in line %2: the unit takes this line")
                         .arg(key.key, QString::number(key.earlierLine)));
}

} // namespace

void checkText(const QByteArray &bytes, const ScannedFile &file, Findings &findings)
{
    checkMark(bytes, findings);
    checkEncoding(bytes, file.text(), findings);
    checkEnd(file, findings);
    checkHeaders(file, findings);
    checkLines(file, findings);
    checkDuplicates(file, findings);
}

} // namespace stick
