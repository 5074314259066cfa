#include "findings.h"

#include <algorithm>
#include <tuple>

namespace stick {

namespace {

struct CodeInfo
{
    QLatin1String name;
    Severity severity;
};

constexpr auto error = Severity::Error;
constexpr auto warning = Severity::Warning;
constexpr auto note = Severity::Note;

const CodeInfo codes[] = {
    {QLatin1String("unclosed-section"), error},
    {QLatin1String("trailing-backslash"), error},
    {QLatin1String("too-large"), error},
    {QLatin1String("not-utf8"), warning},
    {QLatin1String("byte-order-mark"), note},
    {QLatin1String("text-after-header"), error},
    {QLatin1String("unbalanced-quote"), warning},
    {QLatin1String("empty-key"), warning},
    {QLatin1String("no-group"), warning},
    {QLatin1String("unknown-group"), warning},
    {QLatin1String("misspelt-group"), error},
    {QLatin1String("lower-section"), warning},
    {QLatin1String("unknown-key"), warning},
    {QLatin1String("misspelt-key"), error},
    {QLatin1String("duplicate-section"), note},
    {QLatin1String("duplicate-key"), warning},
    {QLatin1String("nothing-entered"), error},
    {QLatin1String("mode-missing"), error},
    {QLatin1String("mode-off"), note},
    {QLatin1String("mode-unknown"), warning},
    {QLatin1String("no-effect"), warning},
    {QLatin1String("missing-key"), error},
    {QLatin1String("not-a-number"), error},
    {QLatin1String("out-of-range"), warning},
    {QLatin1String("unexpected-list"), error},
    {QLatin1String("bare-setting"), error},
    {QLatin1String("empty-value"), warning},
    {QLatin1String("empty-size"), error},
    {QLatin1String("step-count"), error},
    {QLatin1String("unmatched-size"), warning},
    {QLatin1String("unreachable-key"), warning},
    {QLatin1String("startwith-list"), error},
    {QLatin1String("length-without-startwith"), warning},
    {QLatin1String("useless-prefix"), warning},
    {QLatin1String("startwith-in-sk"), error},
    {QLatin1String("pool-empty"), error},
    {QLatin1String("pool-low"), warning},
    {QLatin1String("never-taken"), warning},
    {QLatin1String("duplicate-entry"), warning},
    {QLatin1String("shared-entry"), error},
    {QLatin1String("entry-with-value"), warning},
    {QLatin1String("entry-blank"), warning},
    {QLatin1String("entry-punctuation"), warning},
    {QLatin1String("entry-encoding"), error},
    {QLatin1String("entry-done"), error},
    {QLatin1String("no-configuration"), error},
    {QLatin1String("misnamed-file"), warning},
    {QLatin1String("system-file"), note},
    {QLatin1String("not-looked-at"), warning},
    {QLatin1String("leftover-lock"), warning},
    {QLatin1String("leftover-copy"), warning},
    {QLatin1String("torn-marker"), warning},
    {QLatin1String("not-writable"), error},
    {QLatin1String("stick-full"), error},
};
static_assert(std::size(codes) == size_t(Code::CodeCount), "one row for each code, in their order");

} // namespace

QLatin1String codeName(Code code)
{
    return codes[size_t(code)].name;
}

Severity severity(Code code)
{
    return codes[size_t(code)].severity;
}

QLatin1String severityName(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return QLatin1String("error");
    case Severity::Warning:
        return QLatin1String("warning");
    case Severity::Note:
        break;
    }
    return QLatin1String("note");
}

void Tally::add(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        ++errors;
        break;
    case Severity::Warning:
        ++warnings;
        break;
    case Severity::Note:
        ++notes;
        break;
    }
}

Tally &Tally::operator+=(const Tally &other)
{
    errors += other.errors;
    warnings += other.warnings;
    notes += other.notes;
    return *this;
}

Findings::Findings(const QString &file, int limit)
    : m_file(file)
    , m_limit(limit)
{
}

void Findings::addTo(const QString &file, Code code, int line, const QString &text)
{
    if (isKept(code))
        m_findings.push_back({file, line, code, text});
    count(code);
}

void Findings::count(Code code)
{
    if (!isKept(code))
        ++m_omitted;
    ++m_counts[size_t(code)];
    m_tally.add(severity(code));
}

std::vector<Finding> Findings::sorted() const
{
    std::vector<Finding> sorted = m_findings;
    std::stable_sort(sorted.begin(), sorted.end(), [this](const Finding &a, const Finding &b) {
        return std::forward_as_tuple(a.file != m_file, a.file, a.line)
            < std::forward_as_tuple(b.file != m_file, b.file, b.line);
    });
    return sorted;
}

} // namespace stick
