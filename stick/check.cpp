#include "check.h"

#include "input.h"
#include "stickfolder.h"
#include "texts.h"

#include <configurationfiles.h>

#include <QDir>
#include <QFileInfo>

#include <memory>

using namespace production;

namespace stick {

namespace {

/// A production file with everything that is known of it; its pools point into the file's text.
struct Subject
{
    Subject(const QString &path, const QByteArray &bytes, int limit)
        : path(path)
        , target(QFileInfo(path).canonicalFilePath())
        , size(bytes.size())
        , file(bytes)
        , pools(poolsOf(file))
        , findings(path, limit)
    {
    }

    QString path;
    QString target; ///< Where it leads to: a stick's file may be named beside the stick.
    qint64 size;
    ScannedFile file;
    Pools pools;
    Findings findings;
};

/// A run of the command: the files checked so far, which later ones are compared with.
class Check
{
public:
    explicit Check(const CheckOptions &options)
        : m_options(options)
    {
    }

    void add(const QString &path)
    {
        if (QFileInfo(path).isDir())
            addStick(QDir::cleanPath(path));
        else
            addFile(path);
    }

    CheckResult takeResult()
    {
        for (const auto &subject : m_subjects)
            m_result.files.push_back(summaryOf(*subject));
        return std::move(m_result);
    }

private:
    void addStick(const QString &path);
    Subject *addFile(const QString &path);
    void addFileless(const Findings &findings, const QString &path);
    CheckedFile summaryOf(const Subject &subject) const;

    CheckOptions m_options;
    std::vector<std::unique_ptr<Subject>> m_subjects;
    CheckResult m_result;
};

PoolSummary summaryOf(const Pool &pool)
{
    PoolSummary summary = {pool.group().name, pool.mode, int(pool.entries.size()), 0, {}};
    if (pool.isOpen()) {
        summary.usable = pool.usableCount;
        summary.next = pool.next();
    }
    return summary;
}

void checkSystemFile(const Subject &subject, Findings &findings)
{
    if (isSystemFile(subject.path))
        findings.add(Code::SystemFile, 0,
                     Texts::tr("a system file: the unit shows no message, deletes the file after "
                               "its pass and writes no completion line"));
}

bool isRewritten(const Subject &subject)
{
    return isSystemFile(subject.path)
        || std::any_of(subject.pools.cbegin(), subject.pools.cend(),
                       [](const Pool &pool) { return pool.next().has_value(); });
}

void Check::addStick(const QString &path)
{
    QString error;
    const std::optional<QStringList> names = listFolder(path, error);
    if (!names) {
        m_result.errors.append(error);
        return;
    }
    const StickFolder stick(path, *names);
    Subject *const subject =
        stick.configuration().isEmpty() ? nullptr : addFile(stick.configuration());
    if (subject == nullptr) {
        Findings findings(path, m_options.limit);
        checkStick(stick, findings);
        // Of a file that cannot be read there is an error already.
        if (!findings.tally().isClean())
            addFileless(findings, path);
        return;
    }
    checkStick(stick, subject->findings);
    if (isRewritten(*subject))
        checkSpace(stick, subject->size, subject->findings);
    if (stick.marker().isEmpty())
        return;
    if (const auto lines = readMarker(stick.marker(), error))
        checkMarker(stick.marker(), *lines, subject->pools, subject->findings);
    else
        m_result.errors.append(error);
}

/// Returns null, with a finding or an error, when there is no such file.
Subject *Check::addFile(const QString &path)
{
    QString error;
    const std::optional<QByteArray> bytes = readFile(path, error);
    if (!bytes) {
        m_result.errors.append(error);
        return nullptr;
    }
    m_subjects.push_back(std::make_unique<Subject>(path, *bytes, m_options.limit));
    Subject &subject = *m_subjects.back();
    checkText(*bytes, subject.file, subject.findings);
    checkSystemFile(subject, subject.findings);
    checkGroups(subject.file, m_options, subject.findings);
    for (const Pool &pool : subject.pools) {
        checkPool(subject.file, pool, m_options, subject.findings);
        for (const auto &earlier : m_subjects) {
            if (earlier->target != subject.target)
                checkSharedEntries(pool, earlier->pools[size_t(pool.groupIndex())], earlier->path,
                                   subject.findings);
        }
    }
    return &subject;
}

void Check::addFileless(const Findings &findings, const QString &path)
{
    m_result.files.push_back(
        {path, false, findings.sorted(), findings.omitted(), findings.tally(), {}});
}

CheckedFile Check::summaryOf(const Subject &subject) const
{
    CheckedFile checked = {subject.path,
                           subject.file.isReadable(),
                           subject.findings.sorted(),
                           subject.findings.omitted(),
                           subject.findings.tally(),
                           {}};
    for (const Pool &pool : subject.pools) {
        if (subject.file.lineOfGroup(pool.group().name) > 0)
            checked.pools.push_back(stick::summaryOf(pool));
    }
    return checked;
}

} // namespace

CheckResult check(const QStringList &paths, const CheckOptions &options)
{
    Check run(options);
    const QStringList distinct = distinctPaths(paths);
    for (const QString &path : distinct)
        run.add(path);
    return run.takeResult();
}

} // namespace stick
