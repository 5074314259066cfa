#include "audit.h"
#include "check.h"
#include "formatproperty.h"
#include "split.h"
#include "testunit.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopeGuard>
#include <QtTest>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>

using namespace stick;

namespace {

const QString source = PRODUCTION_SOURCE_DIR;

/// "FILE:LINE code" of every finding, in order.
QStringList codes(const CheckedFile &file)
{
    QStringList codes;
    for (const Finding &finding : file.findings)
        codes << QString("%1:%2 %3")
                     .arg(QFileInfo(finding.file).fileName())
                     .arg(finding.line)
                     .arg(codeName(finding.code));
    return codes;
}

CheckedFile checkOne(const QString &path)
{
    CheckOptions options;
    options.low = 1;
    options.stepRange = 3;
    return check({path}, options).files.front();
}

/**
 * Makes the files of @p text in @p folder and returns the findings that it expects, as codes()
 * does. ">>> NAME" begins a file (the folder itself is "."); the first is production.ini unless
 * named. " <<< CODE" tells of a finding about its line, behind a name of one about the file. "%XX"
 * stands for a byte; a "%" at the end of a line takes the line end away.
 */
QStringList makeFiles(const QString &folder, const QString &text)
{
    const QString begin = ">>> ";
    const QString first = text.startsWith(begin) ? QString() : "production.ini\n";
    QStringList findings;
    for (const QString &file : (first + text).split(begin, Qt::SkipEmptyParts)) {
        QStringList lines = file.split('\n');
        QString path;
        for (int i = 0; i < lines.size(); ++i) {
            QStringList codes = lines[i].split(" <<< ");
            lines[i] = codes.takeFirst();
            if (i == 0)
                path = folder + '/' + lines[i];
            const QString name = QFileInfo(QDir::cleanPath(path)).fileName();
            for (const QString &code : qAsConst(codes))
                findings << QString("%1:%2 %3").arg(name).arg(i).arg(code);
        }
        const QString content = lines.mid(1).join('\n').remove("%\n");
        QDir().mkpath(QFileInfo(path).path());
        writeFile(path, QByteArray::fromPercentEncoding(content.toUtf8()));
    }
    return findings;
}

/// What check says that the next unit takes from each group.
QMap<QString, QString> foretold(const CheckedFile &file)
{
    QMap<QString, QString> serials;
    for (const PoolSummary &pool : file.pools) {
        if (pool.next)
            serials.insert(pool.group, *pool.next);
    }
    return serials;
}

/// What a unit takes.
QMap<QString, QString> taken(const QString &stick)
{
    TestUnit unit;
    if (!unit.runPass(stick))
        qFatal("the pass does not end");
    QMap<QString, QString> serials;
    for (const bench::Call &call : unit.calls(bench::calls::saveProductionData))
        serials.insert(call.args[0].toString(), call.args[1].toString());
    return serials;
}

QStringList serials(const std::vector<SerialCase> &cases)
{
    QStringList serials;
    for (const SerialCase &serialCase : cases)
        serials << serialCase.serial;
    return serials;
}

/// @p serials on a line that begins with @p title; nothing without any.
QStringList line(const QString &title, const QStringList &serials)
{
    return serials.isEmpty() ? QStringList()
                             : QStringList((QStringList(title) + serials).join(' '));
}

} // namespace

/// production-stick tells of every fault that a unit would pass over, and agrees with the unit.
class TestStick : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void faults_data();
    void faults();
    void stickThatCannotBeRewritten();
    void entriesOnTwoSticks();
    void hugeFile();
    void manyFindingsOfOneKind();
    void everyCodeIsInTheManual();
    void agreesWithTheUnit_data();
    void agreesWithTheUnit();
    void serialsAreAccountedFor_data();
    void serialsAreAccountedFor();
    void splitDealsOutEverything();
    void splitOverwritesNothing();
    void exitCodes_data();
    void exitCodes();
    void looksWithoutATrace_data();
    void looksWithoutATrace();
    void showAndFormat();

private:
    QString path(const char *name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    Outcome run(const QString &arguments) const
    {
        return runProgram(PRODUCTION_STICK, m_folder->path(), arguments);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestStick::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void TestStick::faults_data()
{
    addTextCases(source + "/tests/cases/stick.txt");
}

void TestStick::faults()
{
    QFETCH(QStringList, parts);
    const QString stick = path("stick");
    const QStringList expected = makeFiles(stick, parts.first());
    const CheckedFile checked = checkOne(stick);
    QCOMPARE(codes(checked), expected);
    QCOMPARE(taken(stick), foretold(checked));
}

/// On a file system of its own, where the test may mount one.
void TestStick::stickThatCannotBeRewritten()
{
    const QByteArray stick = QFile::encodeName(m_folder->path());
    if (::mount("none", stick.constData(), "tmpfs", 0, "size=192k") != 0)
        QSKIP("no file system can be mounted");
    const auto umount = qScopeGuard([&] { ::umount2(stick.constData(), MNT_DETACH); });
    const auto remount = [&](unsigned long flags) {
        return ::mount("none", stick.constData(), nullptr, MS_REMOUNT | flags, nullptr) == 0;
    };
    const auto found = [this] { return codes(checkOne(m_folder->path())).join(' '); };

    QVERIFY(writeFile(path("production.ini"), "[SK]\nmode=1\nK1\n"));
    QCOMPARE(found(), QString());
    QVERIFY(writeFile(path("video"), QByteArray(128 * 1024, 'x')));
    QCOMPARE(found(), "production.ini:0 stick-full");
    QVERIFY(remount(MS_RDONLY));
    QCOMPARE(found(), "production.ini:0 not-writable");
    QVERIFY(remount(0));
    QVERIFY(writeFile(path("production.ini"), "[CANBUS]\nmode=1\n"));
    QCOMPARE(found(), QString()); // Nothing is written where no serial is taken.
}

void TestStick::entriesOnTwoSticks()
{
    QVERIFY(writeFile(path("a"), "[SN]\nmode=1\nA3\nA1\n[SK]\nmode=1\nB\n"));
    QVERIFY(writeFile(path("b"), "[SN]\nmode=1\nB\nA1\nA3\nA0\n"));
    // Of these no unit takes what the others hold as well.
    QVERIFY(writeFile(path("off"), "[SN]\nmode=3\nA1\n[SK]\nmode=1\nlength=2\nB\n"));
    QVERIFY(writeFile(path("bad"), "[SN]\nmode=1\nA1\n[SK\n"));
    CheckOptions options;
    options.low = 3;
    const CheckResult result =
        check({path("a"), path("./a"), path("b"), path("off"), path("bad")}, options);
    QCOMPARE(int(result.files.size()), 4);
    QCOMPARE(codes(result.files[0]), QStringList({"a:1 pool-low", "a:5 pool-low"}));
    QCOMPARE(codes(result.files[1]), QStringList({"b:4 shared-entry", "b:5 shared-entry"}));
    QVERIFY(result.files[1].findings.front().text.contains(path("a") + ":4"));
    for (size_t i : {2, 3})
        QVERIFY(!codes(result.files[i]).join(' ').contains("shared-entry"));
}

/// Larger than the memory: nothing of it may be read.
void TestStick::hugeFile()
{
    QFile file(path("production.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(qint64(3) << 30));
    QCOMPARE(codes(checkOne(m_folder->path())), QStringList("production.ini:0 too-large"));
    QCOMPARE(run("show production.ini").exitCode, 1);
}

void TestStick::manyFindingsOfOneKind()
{
    QByteArray content = "[SN]\nmode=1\nstartwith=B\n";
    for (int i = 1000; i < 2000; ++i)
        content += "A" + QByteArray::number(i) + "\n";
    for (int i = 0; i < 30; ++i)
        content += "[X" + QByteArray::number(i) + "]\n";
    QVERIFY(writeFile(path("many.ini"), content));

    CheckOptions options;
    const CheckedFile file = check({path("many.ini")}, options).files.front();
    QCOMPARE(file.tally.warnings, 1030);
    QCOMPARE(int(file.findings.size()), 1 + 2 * options.limit);
    QCOMPARE(file.findings.back().line, 1003 + options.limit); // The first are told, run by run.
    QCOMPARE(file.omitted, 1030 - 2 * options.limit);
    options.limit = 0;
    QCOMPARE(int(check({path("many.ini")}, options).files.front().findings.size()), 1031);
}

void TestStick::everyCodeIsInTheManual()
{
    const QByteArray manual = readFile(source + "/docs/man/production-stick.1");
    for (int i = 0; i < int(Code::CodeCount); ++i) {
        const Code code = Code(i);
        const QByteArray row = QByteArray(codeName(code).latin1()) + "\t"
            + severityName(severity(code)).latin1() + "\t";
        QVERIFY2(manual.contains(row), row.constData());
    }
}

void TestStick::agreesWithTheUnit_data()
{
    QTest::addColumn<QByteArray>("content");
    for (const char *folder : {"/tests/corpus", "/examples"}) {
        QDirIterator it(source + folder, {"*.ini"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString file = it.next();
            QTest::newRow(qUtf8Printable(file.mid(source.size() + 1))) << readFile(file);
        }
    }
}

/// What check says that the next unit takes is what a unit then takes.
void TestStick::agreesWithTheUnit()
{
    QFETCH(QByteArray, content);
    QVERIFY(QDir().mkdir(path("stick")) && writeFile(path("stick/production.ini"), content));
    const QMap<QString, QString> expected = foretold(checkOne(path("stick")));
    QCOMPARE(taken(path("stick")), expected);
}

void TestStick::serialsAreAccountedFor_data()
{
    addTextCases(source + "/tests/cases/audit.txt");
}

void TestStick::serialsAreAccountedFor()
{
    QFETCH(QStringList, parts);
    makeFiles(m_folder->path(), parts.value(0));
    QStringList sticks;
    for (const char *stick : {"a", "b"}) {
        if (QFileInfo::exists(path(stick)))
            sticks << path(stick);
    }
    const QString issued = path("issued");
    const AuditResult result =
        audit(sticks, QFileInfo::exists(issued) ? QStringList(issued) : QStringList());

    QStringList found;
    for (int group = 0; group < SerialGroupCount; ++group) {
        const SerialAudit &audit = result.groups[size_t(group)];
        const QString name = serialGroup(group).name;
        found << line(name + " free", audit.free) << line(name + " done", audit.done)
              << line(name + " duplicate", serials(audit.duplicate))
              << line(name + " missing", serials(audit.missing))
              << line(name + " foreign", serials(audit.foreign));
    }
    for (const DoubtfulLine &torn : result.torn)
        found << line("torn", {QString(torn.text).remove(QChar(0))});
    for (const QString &file : result.unreadable)
        found << line("unreadable", {QFileInfo(file).fileName()});
    QCOMPARE(found, parts.value(1).split('\n', Qt::SkipEmptyParts));
    const QRegularExpression inOrder("^S[NK] (free|done) ");
    QCOMPARE(result.isClean(), found.filter(inOrder) == found);
}

void TestStick::splitDealsOutEverything()
{
    QByteArray content = "[Panel]\nmode=1\nsize=8 ; \xE4\xBD\xA0\n[SN/A]\nB\n"
                         "[SK]\nmode=1\nlength=4\n[SN]\nmode=1\nlength=5\nstartwith=\"A,C\"\n";
    for (int i = 1000; i < 1100; ++i)
        content += QByteArray(i % 3 == 0 ? "B" : "A") + QByteArray::number(i) + "=1 ; note\n";
    const production::SettingsMap map = readContent(content).map;
    const ScannedFile scanned(content);
    const Pools pools = poolsOf(scanned);
    QString error;
    for (const int count : {1, 3, 67}) {
        const auto files = splitPools(map, pools, count, error);
        QVERIFY2(files, qUtf8Printable(error));
        production::SettingsMap merged;
        int size = 0;
        for (const production::SettingsMap &file : *files) {
            size += file.size();
            int usable = 0;
            for (auto it = file.cbegin(); it != file.cend(); ++it) {
                merged.insert(it.key(), it.value());
                usable += it.key().startsWith("SN/A1");
            }
            QVERIFY(usable == 67 / count || usable == 67 / count + 1);
        }
        QCOMPARE(merged, map);
        // What is not dealt out stands in each; an entry in two files would make more.
        const int common = map.size() - 100;
        QCOMPARE(size, 100 + count * common);
    }
    QVERIFY(!splitPools(map, pools, 68, error));
}

void TestStick::splitOverwritesNothing()
{
    const QByteArray content = "[SK]\nmode=1\nK1\nK2\n";
    QVERIFY(writeFile(path("master.ini"), content));
    QVERIFY(QDir().mkpath(path("sticks/stick-2")));
    const QString split = "split --sticks 2 --into sticks master.ini";
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QCOMPARE(run(split).exitCode, 2);
    QCOMPARE(QDir(path("sticks")).entryList(all), QStringList({"stick-2"}));

    QVERIFY(QDir().rmdir(path("sticks/stick-2")));
    QCOMPARE(run(split).exitCode, 0);
    QCOMPARE(QDir(path("sticks")).entryList(all), QStringList({"stick-1", "stick-2"}));
    QCOMPARE(readFile(path("sticks/stick-2/production.ini")),
             QByteArray("[SK]\r\nmode=1\r\nK2\r\n"));
    QCOMPARE(readFile(path("master.ini")), content);
}

void TestStick::exitCodes_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("exitCode");
    const auto row = [](const char *name, const char *arguments, int exitCode) {
        QTest::newRow(name) << QString::fromLatin1(arguments) << exitCode;
    };
    row("nothing to say", "check --low 1 good.ini", 0);
    row("findings", "check good.ini", 1);
    row("findings as JSON", "check --json good.ini", 1);
    row("one file is not there", "check good.ini none.ini", 2);
    row("a folder for a file", "show .", 2);
    row("unreadable for show", "show bad.ini", 1);
    row("unreadable for format", "format bad.ini", 1);
    row("unreadable for split", "split --sticks 1 --into new bad.ini", 1);
    row("duplicates", "audit stick twin", 1);
    row("one stick by two names", "audit stick ./stick/", 0);
    row("an issued list that is not there", "audit --issued none stick", 2);
    row("a folder for a production file", "check odd", 2);
    row("more sticks than entries", "split --sticks 5 --into new good.ini", 2);
    row("help for a command", "split --help", 0);
    row("no command", "", 2);
    row("no such command", "repair good.ini", 2);
    row("option of another command", "show --low 1 good.ini", 2);
    row("a number that is none", "check --low few good.ini", 2);
    row("a number left out", "check good.ini --low", 2);
    row("a line feed in a name", "show none\n.ini", 2);
    row("two files for one", "show good.ini good.ini", 2);
}

void TestStick::exitCodes()
{
    QFETCH(QString, arguments);
    QFETCH(int, exitCode);
    const QByteArray good = "[SN]\nmode=1\nA1\n";
    QVERIFY(writeFile(path("good.ini"), good) && writeFile(path("bad.ini"), good + "[SK\n"));
    QVERIFY(QDir().mkpath(path("odd/production.ini")));
    for (const char *stick : {"stick/", "twin/"})
        QVERIFY(QDir().mkdir(path(stick)) && writeFile(path(stick) + "production.ini", good));
    const Outcome outcome = run(arguments);
    QCOMPARE(outcome.exitCode, exitCode);
    // What failed is told on standard error, and never among the results.
    const bool failed = exitCode == 2 || arguments.contains("bad.ini");
    QCOMPARE(!outcome.err.isEmpty(), failed);
    QVERIFY(!QFileInfo::exists(path("new")));
    if (exitCode == 2) {
        QVERIFY(!outcome.out.contains("nothing to report") && !outcome.out.contains("foreign  "));
        QVERIFY(!outcome.err.contains("..") && !outcome.err.contains("none\n.ini"));
    }
    if (arguments.contains("--json"))
        QVERIFY(QJsonDocument::fromJson(outcome.out).isObject());
}

void TestStick::looksWithoutATrace_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("says");
    const QString tool = PRODUCTION_STICK;
    const QString bench = PRODUCTION_BENCH;
    QTest::newRow("check") << tool << "check --low 1 stick" << QByteArray("next K1");
    QTest::newRow("audit") << tool << "audit stick" << QByteArray("SK: 1 free");
    QTest::newRow("show") << tool << "show stick/production.ini" << QByteArray("SK/K1");
    QTest::newRow("format") << tool << "format stick/production.ini" << QByteArray("K1");
    QTest::newRow("dry run of the bench")
        << bench << "--dry-run --stick stick --unit unit" << QByteArray("taken: K1");
}

void TestStick::looksWithoutATrace()
{
    QFETCH(QString, program);
    QFETCH(QString, arguments);
    QFETCH(QByteArray, says);
    makeFiles(m_folder->path(), R"(>>> stick/production.ini
[SK]
mode=2
K1
>>> stick/production_done.txt
K0
>>> unit/unit.ini
[Production]
SK=K0
)");
    // An access time before the modification is one that every file system would renew.
    const timespec old[2] = {{1000, 0}, {2000, 0}};
    for (const char *file : {"stick/production.ini", "stick/production_done.txt", "stick"})
        QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(path(file)).constData(), old, 0), 0);

    // Names, sizes and times must stay; where files are copied, all but the time of the access.
    const QString access = program == PRODUCTION_STICK ? " -type f -printf %A@\\n" : "";
    const auto traces = [&] {
        const QString find = "stick unit -printf %p:%s:%T@\\n" + access;
        return runProgram("find", m_folder->path(), find).out;
    };
    const QByteArray before = traces();
    QVERIFY(before.contains("production_done.txt:3:2000.0"));
    const Outcome outcome = runProgram(program, m_folder->path(), arguments);
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.out.contains(says), outcome.out.constData());
    QCOMPARE(traces(), before);
}

void TestStick::showAndFormat()
{
    const QString file = source + "/tests/corpus/worked-example.ini";
    const QJsonObject shown = QJsonDocument::fromJson(run("show --json " + file).out).object();
    QCOMPARE(shown.value("readable"), QJsonValue(true));
    const production::SettingsMap map = readContent(readFile(file)).map;
    production::SettingsMap keys;
    for (const QJsonValue &key : shown.value("keys").toArray())
        keys.insert(key["key"].toString(), key["value"].toVariant());
    QCOMPARE(keys, map);
    QCOMPARE(readContent(run("format " + file).out).map, map);
}

QTEST_GUILESS_MAIN(TestStick)
#include "tst_stick.moc"
