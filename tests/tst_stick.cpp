#include "audit.h"
#include "check.h"
#include "split.h"
#include "testunit.h"

#include <reader.h>
#include <writer.h>

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace stick;

namespace {

const QString source = QStringLiteral(PRODUCTION_SOURCE_DIR);

struct Output
{
    int exitCode;
    QByteArray out;
    QByteArray err;
};

Output run(const QStringList &arguments)
{
    QProcess program;
    program.start(QStringLiteral(PRODUCTION_STICK), arguments);
    if (!program.waitForFinished() || program.exitStatus() != QProcess::NormalExit)
        return {-1, {}, program.errorString().toUtf8()};
    return {program.exitCode(), program.readAllStandardOutput(), program.readAllStandardError()};
}

/// "line code" of every finding in order, those about other files as "name line code".
QStringList codes(const CheckedFile &file)
{
    QStringList codes;
    for (const Finding &finding : file.findings) {
        QString text = QString::number(finding.line) + QLatin1Char(' ') + codeName(finding.code);
        if (finding.file != file.file)
            text.prepend(QFileInfo(finding.file).fileName() + QLatin1Char(' '));
        codes << text;
    }
    return codes;
}

/// Makes the folder @p name of a stick with files "name: content".
QString makeStick(const QTemporaryDir &folder, const QString &name,
                  const QMap<QString, QByteArray> &files)
{
    const QString stick = folder.filePath(name);
    QDir().mkpath(stick);
    for (auto it = files.cbegin(); it != files.cend(); ++it)
        writeFile(stick + QLatin1Char('/') + it.key(), it.value());
    return stick;
}

production::SettingsMap mapOf(const QByteArray &bytes)
{
    QByteArray copy = bytes;
    QBuffer device(&copy);
    device.open(QIODevice::ReadOnly);
    production::SettingsMap map;
    production::KeyComments comments;
    production::readSettings(device, map, comments);
    return map;
}

/// Names, sizes and times: what a tool that only looks must leave as it was.
QStringList traces(const QString &folder, bool withAccess = true)
{
    const auto text = [](const timespec &time) {
        return QStringLiteral(" %1.%2").arg(time.tv_sec).arg(time.tv_nsec);
    };
    QStringList traces;
    for (const QFileInfo &info : QDir(folder).entryInfoList(QDir::AllEntries | QDir::NoDotDot)) {
        struct stat status = {};
        stat(QFile::encodeName(info.filePath()).constData(), &status);
        traces << info.fileName() + QStringLiteral(" %1").arg(status.st_size) + text(status.st_mtim)
                + (withAccess ? text(status.st_atim) : QString());
    }
    return traces;
}

QStringList serials(const std::vector<SerialCase> &cases)
{
    QStringList serials;
    for (const SerialCase &serialCase : cases)
        serials << serialCase.serial;
    return serials;
}

} // namespace

/// production-stick tells of every fault that a unit would pass over, and agrees with the unit.
class TestStick : public QObject
{
    Q_OBJECT

private slots:
    void faultsOfAFile_data();
    void faultsOfAFile();
    void faultsOfAStick_data();
    void faultsOfAStick();
    void stickThatCannotBeRewritten();
    void entriesOnTwoSticks();
    void manyFindingsOfOneKind();
    void everyCodeIsInTheManual();
    void agreesWithTheUnit_data();
    void agreesWithTheUnit();
    void auditOfAHistory();
    void auditOfOddMarkers_data();
    void auditOfOddMarkers();
    void splitDealsOutEverything();
    void exitCodes_data();
    void exitCodes();
    void looksWithoutATrace();
    void dryRunOfTheBench();
    void splitOverwritesNothing();
    void showAndFormat();
};

void TestStick::faultsOfAFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *fault, const QByteArray &content, const char *expected) {
        const QString codes = QString::fromLatin1(expected);
        QTest::newRow(fault) << content << codes.split(QLatin1String(", "), Qt::SkipEmptyParts);
    };
    const QByteArray bt = "[BT]\nmode=1\nadv_power=4\n";
    const QByteArray panel = "[Panel]\nmode=1\n";
    const QByteArray sn = "[SN]\nmode=1\n";
    const QByteArray sk = "[SK]\nmode=1\n";

    row("nothing wrong", bt, "");
    row("header without its bracket", bt + "[SN\n", "4 unclosed-section, 4 mode-missing");
    row("path pasted with its last backslash", bt + "[FactorySettings]\nmode=1\na=C:\\\n",
        "6 trailing-backslash");
    row("comments saved as GBK", bt + "; \xd6\xd0\n;\xce\xc4\n", "4 not-utf8");
    row("saved with a mark by an editor", "\xEF\xBB\xBF" + bt, "1 byte-order-mark");
    row("saved with CR LF: lines are those of the editor", "\r\n\r\n[Bt]\r\nmode=1\r\n",
        "0 nothing-entered, 3 misspelt-group");
    row("saved as UTF-16: lines too",
        QByteArray("\xFF\xFE", 2) + QByteArray("[\0B\0T\0]\0\n\0m\0o\0d\0e\0=\0x\0\n\0", 24),
        "0 nothing-entered, 1 byte-order-mark, 2 not-a-number");
    row("key on the line of its header", "[BT] mode=1\nadv_power=4\nmode=1\n",
        "1 text-after-header");
    row("comment on the line of a header", "[BT] ; mode\nadv_power=4\nmode=1\n", "");
    row("quote never closed before a comment", bt + "[FactorySettings]\nmode=1\na=\"x ; y\n",
        "6 unbalanced-quote");
    row("name of a key lost", bt + "=5\n", "4 empty-key");
    row("no group at all", "mode=1\nx=2\n", "0 nothing-entered, 1 no-group");
    row("group of another product", bt + "[Radio]\nmode=1\n", "4 unknown-group");
    row("group in capitals", bt + "[PANEL]\nmode=1\n", "4 misspelt-group");
    row("letters of a group swapped", bt + "[CNABUS]\nmode=1\n", "4 misspelt-group");
    row("serials sorted into sections by year", bt + sn + "[SN/2024]\nA1\n",
        "4 pool-empty, 7 lower-section");
    row("key of another group", bt + "brightness=5\n", "4 unknown-key");
    row("key mistyped", "[BT]\nmode=1\nadvpower=4\n",
        "0 nothing-entered, 1 missing-key, "
        "3 misspelt-key");
    row("section twice", bt + "[CANBUS]\nmode=1\n[BT]\n", "6 duplicate-section");
    row("section as the writer splits it",
        bt
            + "[FactorySettings]\nmode=1\na=1\n\n[FactorySettings/b]\nc=2\n\n[FactorySettings]\n"
              "mode=1\nd=3\n",
        "");
    row("key twice", bt + "adv_power=6\n", "4 duplicate-key");
    row("mode forgotten", "[BT]\nadv_power=4\n", "0 nothing-entered, 1 mode-missing");
    row("mode 0", "[BT]\nmode=0\nadv_power=x\n", "0 nothing-entered, 2 mode-off");
    row("mode is a word", "[BT]\nmode=on\nadv_power=4\n", "0 nothing-entered, 2 not-a-number");
    row("mode that provisions nothing", "[SK]\nmode=3\nK1\n", "2 mode-unknown");
    row("only factory settings", "[FactorySettings]\nmode=1\na=1\n", "0 nothing-entered");
    row("factory settings without any", bt + "[FactorySettings]\nmode=1\n", "4 no-effect");
    row("mode of the factory settings in capitals", bt + "[FactorySettings]\nMode=1\na=1\n",
        "4 mode-missing, 5 misspelt-key");
    row("double slash in a factory setting", bt + "[FactorySettings]\nmode=1\na//b=1\n",
        "6 unreachable-key");
    row("numbers that are none", panel + "vcom=12V\navdd\nbacklight_day=\n",
        "3 not-a-number, 4 not-a-number, 5 not-a-number");
    row("numbers out of range", panel + "backlight_day=256\nbacklight_night=-1\nphysical_w=0\n",
        "3 out-of-range, 4 out-of-range, 5 out-of-range");
    row("CAN index 0", "[CANBUS]\nmode=1\nid=0\n", "3 out-of-range");
    row("step table for another unit", panel + "backlight_steps=0,1,2\n", "3 step-count");
    row("step table in quotes", panel + "backlight_steps=\"0,1,2,3\"\n", "3 step-count");
    row("steps that are none", panel + "backlight_steps=0,x,300,4\n",
        "3 not-a-number, 3 out-of-range");
    row("texts that are none", panel + "vcom=1\nsize=10,1\ndriver\n",
        "4 unexpected-list, 5 bare-setting");
    row("driver left empty", panel + "vcom=1\ndriver=\n", "4 empty-value");
    row("sized keys that never match",
        panel + "size=8\nphysical_w(8)=1\nphysical_w(10.1)=2\nphysical_w()=3\nphysical_h[8]=4\n",
        "5 unmatched-size, 6 unmatched-size, 7 unmatched-size");
    row("sized key beside the plain one", panel + "physical_w=1\nphysical_w(8)=2\n",
        "4 unmatched-size");
    row("prefixes without quotes", sn + "length=2\nstartwith=A,B\nA1\n",
        "3 length-without-startwith, 4 startwith-list");
    row("blank behind the comma of two prefixes", sn + "startwith=\"A, B\"\nA1\nB1\n",
        "3 useless-prefix, 5 never-taken");
    row("length without prefix", sn + "length=4\nA1\n", "3 length-without-startwith");
    row("prefix in SK", sk + "startwith=K\nK1\n", "3 startwith-in-sk");
    row("setting of a pool mistyped", sn + "lenght=2\nstart_with=A\nA1\n",
        "3 misspelt-key, 4 misspelt-key");
    row("empty pool", sn, "1 pool-empty");
    row("wrong length", sk + "length=5\nK1\n", "1 pool-empty, 4 never-taken");
    row("pool off, whatever is in it", bt + "[SN]\nmode=0\nlength=x\n\"A\"\n", "5 mode-off");
    row("entries twice", sn + "B1\nA1\nB1\nB1\nA1\n",
        "5 duplicate-entry, 6 duplicate-entry, 7 duplicate-entry");
    row("entries out of a spreadsheet", sn + "A1=x\n\"A2\"\nA3,A4\nA 5\n",
        "3 entry-with-value, 4 entry-punctuation, 5 entry-punctuation, 6 entry-blank");
    row("entry that the marker cannot hold", sn + "A\xE2\x82\xAC\n", "3 entry-encoding");
    row("entry of the general section", "SN/mode=1\nSN/A\xE2\x82\xAC\n", "2 entry-encoding");
}

void TestStick::faultsOfAFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, expected);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("production.ini"));
    writeFile(path, content);

    CheckOptions options;
    options.low = 1;
    options.stepRange = 3;
    const CheckResult result = check({path}, options);
    QCOMPARE(codes(result.files.front()), expected);
    const bool readable = expected.filter(QLatin1String("unclosed")).isEmpty()
        && expected.filter(QLatin1String("backslash")).isEmpty();
    QCOMPARE(result.files.front().readable, readable);
}

void TestStick::faultsOfAStick_data()
{
    using Files = QMap<QString, QByteArray>;
    QTest::addColumn<Files>("files");
    QTest::addColumn<QStringList>("expected");
    const QString name = QStringLiteral("production.ini");
    const QString marker = QStringLiteral("production_done.txt");
    const QByteArray pool = "[SN]\nmode=1\nA1\nA2\n";

    QTest::newRow("no configuration file, but nearly")
        << Files{{QStringLiteral("Production.ini"), pool},
                 {QStringLiteral("production_sn.ini.txt"), pool},
                 {QStringLiteral("notes.txt"), ""}}
        << QStringList{QStringLiteral("0 no-configuration"),
                       QStringLiteral("Production.ini 0 misnamed-file"),
                       QStringLiteral("production_sn.ini.txt 0 misnamed-file")};
    QTest::newRow("two configuration files")
        << Files{{name, pool}, {QStringLiteral("production_sn.ini"), "[SN\n"}}
        << QStringList{QStringLiteral("production_sn.ini 0 not-looked-at")};
    QTest::newRow("a system file wins")
        << Files{{name, pool}, {QStringLiteral("production_sys.ini"), pool}}
        << QStringList{QStringLiteral("0 system-file"),
                       QStringLiteral("production.ini 0 not-looked-at")};
    QTest::newRow("a rewrite was cut off")
        << Files{{name, pool},
                 {name + QStringLiteral(".lock"), ""},
                 {name + QStringLiteral(".aB3xyZ"), pool}}
        << QStringList{QStringLiteral("production.ini.aB3xyZ 0 leftover-copy"),
                       QStringLiteral("production.ini.lock 0 leftover-lock")};
    QTest::newRow("pool of last week copied back") << Files{{name, pool}, {marker, "A0\r\nA2\r\n"}}
                                                   << QStringList{QStringLiteral("4 entry-done")};
    QTest::newRow("pulled while the marker was written")
        << Files{{name, pool}, {marker, "A0\r\nB"}}
        << QStringList{QStringLiteral("production_done.txt 2 torn-marker")};
}

void TestStick::faultsOfAStick()
{
    using Files = QMap<QString, QByteArray>;
    QFETCH(Files, files);
    QFETCH(QStringList, expected);
    const QTemporaryDir folder;
    CheckOptions options;
    options.low = 1;
    const CheckResult result = check({makeStick(folder, QStringLiteral("stick"), files)}, options);
    QCOMPARE(codes(result.files.front()), expected);
}

/// On a file system of its own, where the test may mount one.
void TestStick::stickThatCannotBeRewritten()
{
    const QTemporaryDir folder;
    const QString mount = QStringLiteral("mount");
    const auto call = [](const QString &program, const QStringList &arguments) {
        return QProcess::execute(program, arguments) == 0;
    };
    if (geteuid() != 0
        || !call(mount,
                 {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                  QStringLiteral("size=192k"), QStringLiteral("none"), folder.path()}))
        QSKIP("no file system can be mounted");
    const auto umount = qScopeGuard([&] {
        call(QStringLiteral("umount"), {QStringLiteral("-l"), folder.path()});
    });

    const QString file = folder.filePath(QStringLiteral("production.ini"));
    CheckOptions options;
    options.low = 1;
    QVERIFY(writeFile(file, "[SK]\nmode=1\nK1\n"));
    QCOMPARE(codes(check({folder.path()}, options).files.front()), QStringList());
    QVERIFY(writeFile(folder.filePath(QStringLiteral("video")), QByteArray(128 * 1024, 'x')));
    QCOMPARE(codes(check({folder.path()}, options).files.front()),
             QStringList(QStringLiteral("0 stick-full")));
    QVERIFY(call(mount, {QStringLiteral("-o"), QStringLiteral("remount,ro"), folder.path()}));
    QCOMPARE(codes(check({folder.path()}, options).files.front()),
             QStringList(QStringLiteral("0 not-writable")));
    QVERIFY(call(mount, {QStringLiteral("-o"), QStringLiteral("remount,rw"), folder.path()}));
    QVERIFY(writeFile(file, "[CANBUS]\nmode=1\n"));
    // Nothing is written where no serial is taken.
    QCOMPARE(codes(check({folder.path()}, options).files.front()), QStringList());
}

void TestStick::entriesOnTwoSticks()
{
    const QTemporaryDir folder;
    const QString name = QStringLiteral("production.ini");
    const QStringList sticks{
        makeStick(folder, QStringLiteral("a"), {{name, "[SN]\nmode=1\nA3\nA1\n[SK]\nmode=1\nB\n"}}),
        makeStick(folder, QStringLiteral("b"), {{name, "[SN]\nmode=1\nB\nA1\nA3\nA0\n"}})};
    CheckOptions options;
    options.low = 1;
    const CheckResult result = check(sticks, options);
    QCOMPARE(codes(result.files[0]), QStringList());
    QCOMPARE(codes(result.files[1]),
             QStringList({QStringLiteral("4 shared-entry"), QStringLiteral("5 shared-entry")}));
    QVERIFY(result.files[1].findings.front().text.contains(sticks[0] + QLatin1String("/") + name
                                                           + QLatin1String(":4")));
}

void TestStick::manyFindingsOfOneKind()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("production.ini"));
    QByteArray content = "[SN]\nmode=1\nstartwith=B\n";
    for (int i = 1000; i < 2000; ++i)
        content += "A" + QByteArray::number(i) + "\n";
    writeFile(path, content);

    const CheckedFile file = check({path}, CheckOptions()).files.front();
    QCOMPARE(file.tally.warnings, 1000);
    QCOMPARE(int(file.findings.size()), 1 + CheckOptions().limit);
    QCOMPARE(file.omitted, 1000 - CheckOptions().limit);
    CheckOptions all;
    all.limit = 0;
    QCOMPARE(int(check({path}, all).files.front().findings.size()), 1001);
}

void TestStick::everyCodeIsInTheManual()
{
    const QByteArray manual = readFile(source + QStringLiteral("/docs/man/production-stick.1"));
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
    for (const QString &folder : {QStringLiteral("tests/corpus"), QStringLiteral("examples")}) {
        QDirIterator it(source + QLatin1Char('/') + folder, {QStringLiteral("*.ini")}, QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            QTest::newRow(qUtf8Printable(path.mid(source.size() + 1))) << readFile(path);
        }
    }
    QTest::newRow("entries of the general section")
        << QByteArray("SN/mode=1\nSN/B1\n[SN]\nB2\n[General]\nSN/A//1\n");
    QTest::newRow("prefixes as a list") << QByteArray("[SN]\nmode=1\nstartwith=B,C\nA1\nB1\n");
    QTest::newRow("prefix without value") << QByteArray("[SN]\nmode=1\nstartwith\nA1\n");
    QTest::newRow("entries below the pool") << QByteArray("[SN]\nmode=1\nB\n[SN/B]\nA\n");
    QTest::newRow("the smallest by code unit") << QByteArray("[SK]\nmode=2\na\nB\n\xC3\xA9\n#c\n");
    QTest::newRow("a setting twice") << QByteArray("[SK]\nmode=0\nlength=2\nK1\nK\nmode=1\n"
                                                   "length=1\n");
    QTest::newRow("a setting for an entry")
        << QByteArray("[SK]\nmode=1\nstartwith=x\nx\n[SN]\nmode=1\nMODE\nlength=4\n");
    QTest::newRow("unreadable") << QByteArray("[SN]\nmode=1\nA1\nA2\\\n");
}

/// What check says that the next unit takes is what a unit then takes.
void TestStick::agreesWithTheUnit()
{
    QFETCH(QByteArray, content);
    TestUnit unit;
    const QString stick = unit.makeStick(content);
    const CheckedFile checked = check({stick}, CheckOptions()).files.front();
    QMap<QString, QString> expected;
    for (const PoolSummary &pool : checked.pools) {
        if (pool.next)
            expected.insert(pool.group, *pool.next);
    }

    QVERIFY(unit.runPass(stick));
    QMap<QString, QString> taken;
    for (const bench::Call &call : unit.calls(bench::calls::saveProductionData))
        taken.insert(call.args[0].toString(), call.args[1].toString());
    QCOMPARE(taken, expected);
    unit.unplug(stick);
    QVERIFY(unit.waitForEnd());
}

/// Sticks in use for a while, with losses and copies planted.
void TestStick::auditOfAHistory()
{
    QRandomGenerator random(20);
    for (int round = 0; round < 20; ++round) {
        const QTemporaryDir folder;
        QByteArray issued;
        QByteArray pools[2];
        QByteArray markers[2];
        QMap<QString, QStringList> expected;
        for (int i = 0; i < 200; ++i) {
            const QString serial = QStringLiteral("S%1").arg(QString::number(1000 + i));
            const QByteArray line = serial.toLatin1() + "\r\n";
            const int stick = int(random.bounded(2));
            const QString fate =
                QStringList{QStringLiteral("free"),       QStringLiteral("done"),
                            QStringLiteral("done"),       QStringLiteral("missing"),
                            QStringLiteral("foreign"),    QStringLiteral("done and free"),
                            QStringLiteral("done twice"), QStringLiteral("free twice")}
                    .at(int(random.bounded(8)));
            expected[fate.contains(QLatin1Char(' ')) ? QStringLiteral("duplicate") : fate]
                << serial;
            if (fate != QLatin1String("foreign"))
                issued += line;
            if (fate.startsWith(QLatin1String("done")) || fate == QLatin1String("foreign"))
                markers[stick] += line;
            if (fate == QLatin1String("done twice"))
                markers[random.bounded(2)] += line;
            if (fate.contains(QLatin1String("free")))
                pools[stick] += line;
            if (fate == QLatin1String("free twice"))
                pools[1 - stick] += line;
        }
        QStringList sticks;
        for (int i = 0; i < 2; ++i)
            sticks << makeStick(folder, QString::number(i),
                                {{QStringLiteral("production.ini"), "[SN]\nmode=1\n" + pools[i]},
                                 {QStringLiteral("production_done.txt"), markers[i]}});
        const QString list = folder.filePath(QStringLiteral("issued"));
        writeFile(list, round % 2 == 0 ? issued : "[SN]\nmode=1\n" + issued);

        const AuditResult result = audit(sticks, {list});
        const SerialAudit &sn = result.groups[SnIndex];
        QCOMPARE(sn.free, expected.value(QStringLiteral("free")));
        QCOMPARE(sn.done, expected.value(QStringLiteral("done")));
        QCOMPARE(serials(sn.duplicate), expected.value(QStringLiteral("duplicate")));
        QCOMPARE(serials(sn.missing), expected.value(QStringLiteral("missing")));
        QCOMPARE(serials(sn.foreign), expected.value(QStringLiteral("foreign")));
        QVERIFY(!result.isClean());
    }
}

void TestStick::auditOfOddMarkers_data()
{
    QTest::addColumn<QByteArray>("marker");
    QTest::addColumn<QString>("expected"); ///< done SN; done SK; torn
    QTest::newRow("both groups") << QByteArray("A1, K1\r\nA2, K2\r\n") << "A1 A2;K1 K2;";
    QTest::newRow("an SK alone, of a unit that had its SN") << QByteArray("K1\r\n") << ";K1;";
    QTest::newRow("cut off within a value") << QByteArray("A1, K1\r\nA2, K") << "A1;K1;A2, K";
    QTest::newRow("cut off before its end") << QByteArray("A1, K1") << ";;A1, K1";
    QTest::newRow("zeros for what was lost")
        << QByteArray("A1, K1\r\nA2\0\0\0\r\n", 15) << "A1;K1;A2";
    QTest::newRow("edited by hand") << QByteArray("A1, K1\n\n  \r\nA2") + "\n"
                                    << "A1 A2;K1;";
    QTest::newRow("three values") << QByteArray("A1, A2, K1\r\n") << ";;A1, A2, K1";
}

void TestStick::auditOfOddMarkers()
{
    QFETCH(QByteArray, marker);
    QFETCH(QString, expected);
    const QTemporaryDir folder;
    const QString issued = folder.filePath(QStringLiteral("issued.ini"));
    writeFile(issued, "[SN]\nA1\nA2\n[SK]\nK1\nK2\n");
    const QString stick =
        makeStick(folder, QStringLiteral("stick"),
                  {{QStringLiteral("production.ini"), "[SN]\nmode=1\n[SK]\nmode=1\n"},
                   {QStringLiteral("production_done.txt"), marker}});

    const AuditResult result = audit({stick}, {issued});
    QStringList torn;
    for (const DoubtfulLine &line : result.torn)
        torn << QString(line.text).remove(QChar(0));
    const QStringList found{result.groups[SnIndex].done.join(QLatin1Char(' ')),
                            result.groups[SkIndex].done.join(QLatin1Char(' ')),
                            torn.join(QLatin1Char(' '))};
    QCOMPARE(found.join(QLatin1Char(';')), expected);
}

void TestStick::splitDealsOutEverything()
{
    QByteArray content = "[Panel]\nmode=1\nsize=8 ; \xE4\xBD\xA0\n[SN/A]\nB\n"
                         "[SK]\nmode=1\nlength=4\n[SN]\nmode=1\nlength=5\nstartwith=\"A,C\"\n";
    for (int i = 1000; i < 1100; ++i)
        content += QByteArray(i % 3 == 0 ? "B" : "A") + QByteArray::number(i) + "=1 ; note\n";
    const production::SettingsMap map = mapOf(content);
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
                usable += it.key().startsWith(QLatin1String("SN/A1"));
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

void TestStick::exitCodes_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    const auto row = [](const char *name, const char *line, int exitCode) {
        QTest::newRow(name) << QString::fromLatin1(line).split(QLatin1Char(' '), Qt::SkipEmptyParts)
                            << exitCode;
    };
    row("nothing to say", "check --low 1 good.ini", 0);
    row("findings", "check good.ini", 1);
    row("findings as JSON", "check --json good.ini", 1);
    row("one file is not there", "check good.ini none.ini", 2);
    row("a folder for a file", "show .", 2);
    row("unreadable for show", "show bad.ini", 1);
    row("unreadable for format", "format bad.ini", 1);
    row("unreadable for split", "split --sticks 1 --into new bad.ini", 1);
    row("shown", "show good.ini", 0);
    row("duplicates", "audit stick stick", 1);
    row("no duplicates", "audit stick", 0);
    row("an issued list that is not there", "audit --issued none stick", 2);
    row("more sticks than entries", "split --sticks 5 --into new good.ini", 2);
    row("help", "--help", 0);
    row("help for a command", "split --help", 0);
    row("no command", "", 2);
    row("no such command", "repair good.ini", 2);
    row("option of another command", "show --low 1 good.ini", 2);
    row("a number that is none", "check --low few good.ini", 2);
    row("two files for one", "show good.ini good.ini", 2);
}

void TestStick::exitCodes()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    const QTemporaryDir folder;
    const QByteArray good = "[SN]\nmode=1\nA1\n";
    writeFile(folder.filePath(QStringLiteral("good.ini")), good);
    writeFile(folder.filePath(QStringLiteral("bad.ini")), good + "[SK\n");
    makeStick(folder, QStringLiteral("stick"), {{QStringLiteral("production.ini"), good}});
    QProcess program;
    program.setWorkingDirectory(folder.path());
    program.start(QStringLiteral(PRODUCTION_STICK), arguments);
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), exitCode);
    // What failed is told on standard error, and never among the results.
    QCOMPARE(program.readAllStandardError().isEmpty(),
             exitCode == 0 || (exitCode == 1 && !arguments.contains(QLatin1String("bad.ini"))));
    QVERIFY(!QFileInfo::exists(folder.filePath(QStringLiteral("new"))));
    if (arguments.contains(QLatin1String("--json")))
        QVERIFY(QJsonDocument::fromJson(program.readAllStandardOutput()).isObject());
}

void TestStick::looksWithoutATrace()
{
    const QTemporaryDir folder;
    const QString stick = makeStick(folder, QStringLiteral("stick"),
                                    {{QStringLiteral("production.ini"), "[SN]\nmode=1\nA1\n"},
                                     {QStringLiteral("production_done.txt"), "A0\r\n"}});
    const QString file = stick + QStringLiteral("/production.ini");
    // An access time before the modification is one that every file system would renew.
    const timespec old[2] = {{1000, 0}, {2000, 0}};
    for (const QString &path : {file, stick + QStringLiteral("/production_done.txt"), stick})
        QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(path).constData(), old, 0), 0);

    const QStringList before = traces(stick);
    QCOMPARE(run({QStringLiteral("check"), stick}).exitCode, 1);
    QCOMPARE(run({QStringLiteral("audit"), stick}).exitCode, 0);
    QCOMPARE(run({QStringLiteral("show"), file}).exitCode, 0);
    QCOMPARE(run({QStringLiteral("format"), file}).exitCode, 0);
    QCOMPARE(traces(stick), before);
}

void TestStick::dryRunOfTheBench()
{
    const QTemporaryDir folder;
    const QString stick = makeStick(folder, QStringLiteral("stick"),
                                    {{QStringLiteral("production.ini"), "[SK]\nmode=2\nK1\n"},
                                     {QStringLiteral("production_done.txt"), "K0\r\n"}});
    const QString unit = makeStick(folder, QStringLiteral("unit"),
                                   {{QStringLiteral("unit.ini"), "[Production]\nSK=\"K0\"\n"}});
    const QStringList before = traces(stick, false) + traces(unit, false);
    QProcess bench;
    bench.start(QStringLiteral(PRODUCTION_BENCH),
                {QStringLiteral("--dry-run"), QStringLiteral("--stick"), stick,
                 QStringLiteral("--unit"), unit});
    QVERIFY(bench.waitForFinished());
    QCOMPARE(bench.exitCode(), 0);
    QVERIFY(bench.readAllStandardOutput().contains("taken: K1"));
    QCOMPARE(readFile(stick + QStringLiteral("/production.ini")), QByteArray("[SK]\nmode=2\nK1\n"));
    QCOMPARE(traces(stick, false) + traces(unit, false), before);
}

void TestStick::splitOverwritesNothing()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("master.ini"));
    const QByteArray content = "[SK]\nmode=1\nK1\nK2\n";
    writeFile(file, content);
    const QString into = folder.filePath(QStringLiteral("sticks"));
    const QStringList arguments{QStringLiteral("split"),
                                QStringLiteral("--sticks"),
                                QStringLiteral("2"),
                                QStringLiteral("--into"),
                                into,
                                file};
    const QString second = into + QStringLiteral("/stick-2");
    QDir().mkpath(second);
    QCOMPARE(run(arguments).exitCode, 2);
    QCOMPARE(QDir(into).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("stick-2")));

    QDir().rmdir(second);
    QCOMPARE(run(arguments).exitCode, 0);
    QCOMPARE(QDir(into).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList({QStringLiteral("stick-1"), QStringLiteral("stick-2")}));
    QCOMPARE(readFile(second + QStringLiteral("/production.ini")),
             QByteArray("[SK]\r\nmode=1\r\nK2\r\n"));
    QCOMPARE(readFile(file), content);
}

void TestStick::showAndFormat()
{
    const QString file = source + QStringLiteral("/tests/corpus/worked-example.ini");
    const QJsonObject shown =
        QJsonDocument::fromJson(run({QStringLiteral("show"), QStringLiteral("--json"), file}).out)
            .object();
    QCOMPARE(shown.value(QLatin1String("readable")), QJsonValue(true));
    const QJsonArray keys = shown.value(QLatin1String("keys")).toArray();
    const production::SettingsMap map = mapOf(readFile(file));
    QCOMPARE(keys.size(), map.size());
    int i = 0;
    for (auto it = map.cbegin(); it != map.cend(); ++it, ++i) {
        QCOMPARE(keys[i].toObject().value(QLatin1String("key")).toString(), it.key());
        QCOMPARE(keys[i].toObject().value(QLatin1String("value")).toVariant(), it.value());
    }
    const QByteArray formatted = run({QStringLiteral("format"), file}).out;
    QVERIFY(!formatted.isEmpty());
    QCOMPARE(mapOf(formatted), map);
}

QTEST_GUILESS_MAIN(TestStick)
#include "tst_stick.moc"
