#include "recordedpass.h"

#include <datasavecontrol.h>

#include <QDir>
#include <QProcess>
#include <QtTest>

#include <sys/fsuid.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

const QString configName = "/production.ini";
const QString markerName = "/production_done.txt";

/// File permissions bind this thread and those it starts while the object lives, root's too.
class OrdinaryUser
{
public:
    OrdinaryUser() { setfsuid(geteuid() == 0 ? nobody : geteuid()); }
    ~OrdinaryUser()
    {
        setfsuid(geteuid());
        prctl(PR_SET_DUMPABLE, 1); // for the leak sanitizer, which looks into its own process
    }
    Q_DISABLE_COPY(OrdinaryUser)

private:
    static constexpr uid_t nobody = 65534;
};

/// Runs @p commands of the shell in @p directory; root again where this process is.
void shell(const QString &directory, const QString &commands)
{
    QProcess process;
    process.setWorkingDirectory(directory);
    process.start("/bin/sh", {"-c", commands});
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s: %s", qUtf8Printable(commands), process.readAllStandardError().constData());
}

/// Every file of a directory with its size, sorted.
QStringList listing(const QString &directory)
{
    QStringList files;
    const auto filter = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    for (const QFileInfo &file : QDir(directory).entryInfoList(filter, QDir::Name))
        files << file.fileName() + ' ' + QString::number(file.size());
    return files;
}

} // namespace

/// Which file a pass takes, and what becomes of the pass, of the file and of the marker.
class TestPass : public QObject
{
    Q_OBJECT

private slots:
    void discovery_data();
    void discovery();
    void completionMarker_data();
    void completionMarker();
    void badFile_data();
    void badFile();
    void failedRewrite_data();
    void failedRewrite();
    void rewriteKeepsComments();
};

void TestPass::discovery_data()
{
    QTest::addColumn<QString>("files"); // on the sticks a and b, which are reported in this order
    QTest::addColumn<int>("used"); // number of the file, 0 for none
    QTest::addColumn<bool>("silent");
    QTest::addColumn<bool>("given"); // the path of the file that is to be used
    const auto row = [](const char *name, const QString &files, int used, bool silent,
                        bool given = false) {
        QTest::newRow(name) << files << used << silent << given;
    };
    row("ordinary before serial file", "a/production_sn.ini a/production.ini", 2, false);
    row("system before ordinary file", "a/production.ini a/production_sys.ini", 2, true);
    row("first stick before better name", "a/production_sn.ini b/production_sys.ini", 1, false);
    row("stick without a file is passed over", "a/notes.txt b/production_sn.ini", 2, false);
    row("other letter case is another file", "a/Production.ini", 0, false);
    row("given system file", "a/production.ini a/production_sys.ini", 2, true, true);
    row("given file, end of the name counts", "a/my_production_sys.ini", 1, true, true);
    row("given file, other letter case is ordinary", "a/Production_sys.ini", 1, false, true);
}

void TestPass::discovery()
{
    QFETCH(QString, files);
    QFETCH(int, used);
    QFETCH(bool, silent);
    QFETCH(bool, given);
    TestUnit unit;
    const QStringList paths = files.split(' ');
    QString stick;
    for (int number = 1; number <= paths.size(); ++number) {
        const QString path = unit.makeStick("[BT]\nmode=1\nadv_power=" + QByteArray::number(number),
                                            paths[number - 1].mid(2), paths[number - 1].left(1));
        if (!unit.headUnit().sticks().contains(path))
            unit.plug(path);
        if (number == used)
            stick = path;
    }
    const QString file = used == 0 ? QString() : stick + paths[used - 1].mid(1);
    const RecordedPass pass(unit, given ? file : QString());

    QCOMPARE(unit.stored(bench::Area::Factory, "adv_power").toInt(), used);
    QCOMPARE(pass.worker.currentState(), used != 0 ? Done : Ready);
    QCOMPARE(pass.events.contains("finished()"), used == 0);
    QCOMPARE(pass.events.filter("message(").isEmpty(), silent || used == 0);
    QCOMPARE(DataSaveControl::productionMode, used != 0 && !silent);
    if (used != 0) {
        QCOMPARE(pass.worker.isConfigurationDevice(stick), !given);
        QCOMPARE(QFile::exists(file), !silent); // a system file is used once
    }
}

void TestPass::completionMarker_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after"); // two units later
    const auto row = [](const char *name, const QByteArray &file, const QByteArray &before,
                        const QByteArray &after, const QString &fileName = "production.ini") {
        QTest::newRow(name) << fileName << file << before << after;
    };
    row("a line for each unit, SN first", "[SK]\nmode=1\nK1\nK2\n[SN]\nmode=1\nA1\nA2\n", "",
        "A1, K1\r\nA2, K2\r\n");
    row("pool that runs dry", "[SN]\nmode=1\nA1\n", "old", "oldA1\r\n", "production_sn.ini");
    row("Latin-1", "[SN]\nmode=2\n\xC3\x84\n\xE5\xBA\x8F\n", "", "\xC4\r\n?\r\n");
    row("nothing taken, not created", "[SN]\nmode=3\nA1\n", "", "");
    row("system file", "[SN]\nmode=1\nA1\n", "", "", "production_sys.ini");
    row("system file with nothing to do", "[SN]\nmode=0\n", "", "", "production_sys.ini");
}

/// A system file has no marker; it is used up, and nothing is shown of it.
void TestPass::completionMarker()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    const bool silent = fileName == "production_sys.ini";
    TestUnit unit;
    const QString stick = unit.makeStick(file, fileName);
    if (!before.isEmpty())
        QVERIFY(writeFile(stick + markerName, before));
    for (int units = 0; units < 2; ++units) {
        unit.plug(stick);
        const bool shown = RecordedPass(unit).events.contains("message('成功进入生产模式。',6)");
        QCOMPARE(shown, !silent);
        unit.replaceUnit();
    }
    QCOMPARE(readFile(stick + markerName), after);
    QCOMPARE(QFile::exists(stick + markerName), !after.isEmpty());
    QCOMPARE(QFile::exists(stick + '/' + fileName), !silent);
}

void TestPass::badFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("commands"); // of the shell, on the stick
    const auto row = [](const char *name, const QByteArray &content, const char *commands = "") {
        QTest::newRow(name) << content << QString::fromLatin1(commands);
    };
    const QByteArray pool = "[SN]\nmode=1\nA1\n";
    QByteArray junk;
    for (int i = 0; i < 5000; ++i)
        junk += char(i * 7919 >> 3);
    row("empty", "");
    row("nothing but a byte-order mark", "\xEF\xBB\xBF");
    row("directory", "", "rm production.ini; mkdir production.ini");
    row("pipe, which nobody writes to", "", "rm production.ini; mkfifo production.ini");
    row("unreadable", pool, "chmod 000 production.ini");
    row("binary junk", junk);
    row("pool behind a header without its end", pool + "[CANBUS\nmode=1\n");
    row("pool before a backslash at a line's end", "a=1\\\n" + pool);
    row("one line of 50 MB", QByteArray(50 * 1024 * 1024, 'x'));
}

void TestPass::badFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, commands);
    const OrdinaryUser user;
    TestUnit unit;
    const QString stick = unit.makeStick(content);
    shell(stick, commands);
    const QStringList before = listing(stick);
    unit.plug(stick);
    const RecordedPass pass(unit); // not limited in time, which a sanitizer may need
    QCOMPARE(pass.transcript(),
             "message('未进入任何生产测试项，请核对配置文件。',8)\n"
             "canbus(false,0)\ndirectionKey(false)\nfinished()\n");
    QCOMPARE(listing(stick), before);
    shell(stick, "chmod -f 644 production.ini; test -f production.ini || rm -r production.ini");
    QCOMPARE(readFile(stick + configName), content);
}

void TestPass::failedRewrite_data()
{
    QTest::addColumn<QString>("commands"); // of the shell, on the stick, once the file is open
    QTest::newRow("file gone") << "rm production.ini";
    QTest::newRow("stick gone") << "rm -r \"$PWD\"";
    QTest::newRow("stick write-protected") << "chmod 444 production.ini; chmod 555 .";
    QTest::newRow("file write-protected") << "chmod 444 production.ini";
    QTest::newRow("lock of somebody else") << "mkdir production.ini.lock";
    QTest::newRow("file no longer readable") << "echo '[CANBUS' >> production.ini";
}

/// The unit takes its serial all the same; the log says that the pool still has it.
void TestPass::failedRewrite()
{
    QFETCH(QString, commands);
    const OrdinaryUser user;
    const Warnings warnings;
    TestUnit unit;
    const QByteArray file = "[Panel]\nmode=1\nsize=8\n[SN]\nmode=1\nA1\nA2\n";
    const QString takesA1 = "message('A1',10)";
    const QString stick = plugFile(unit, file);
    QStringList before;
    {
        const RecordedPass pass(unit, {}, [&](ProductionObject &, const QString &event) {
            if (event != "saveFactoryData('DisplaySize','8',true)")
                return;
            shell(stick, commands);
            before = listing(stick);
        });
        QVERIFY(pass.events.contains(takesA1));
        QCOMPARE(pass.worker.currentState(), Done);
    }
    QCOMPARE(unit.stored(bench::Area::Production, "SN").toString(), "A1");
    QCOMPARE(warnings.texts().size(), 1);
    QVERIFY(warnings.texts().first().startsWith(stick + configName + ": not rewritten"));
    QStringList after = listing(stick);
    after.removeOne("production_done.txt 4");
    QCOMPARE(after, before);
    if (QDir(stick).exists())
        shell(stick, "chmod 755 .");

    // What could not be written must not be made up for on the next stick.
    unit.unplug(stick);
    unit.replaceUnit();
    unit.plug(unit.makeStick(file, configName.mid(1), "other"));
    const RecordedPass next(unit);
    QVERIFY(next.events.contains(takesA1));
}

/// Qt answers a second open of an unchanged file from its cache, without reading the comments.
void TestPass::rewriteKeepsComments()
{
    TestUnit unit;
    const QString stick = plugFile(unit, "[SN]\nmode=1 ; once\n; of the pool\nA1\nA2 # second\n");
    unit.headUnit().data().store({{bench::Area::Production, "SN", "OLD"}}, nullptr);
    QVERIFY(RecordedPass(unit).events.contains("message('OLD',12)")); // reads only
    unit.replaceUnit();
    unit.plug(stick);
    QVERIFY(RecordedPass(unit).events.contains("message('A1',10)"));
    QCOMPARE(readFile(stick + configName),
             withLineEnds("[SN]\nmode=1          ; once\n                ; of the pool\n"
                          "A2              # second\n"));
}

QTEST_GUILESS_MAIN(TestPass)
#include "tst_pass.moc"
