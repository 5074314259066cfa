// Real sticks: file systems that are mounted and pulled, in a mount namespace of the test's own.

#include "testunit.h"

#include "bench/mountwatcher.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <sched.h>
#include <sys/mount.h>

namespace {

const QByteArray serialFile = "[SN]\nmode=1\nAB01\nAB02\n[BT]\nmode=1\nadv_power=4\n";

bool ownNamespace = false; ///< not without root

bool pull(const QString &directory)
{
    return ::umount2(QFile::encodeName(directory).constData(), MNT_DETACH) == 0;
}

} // namespace

class MediaTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void mountsComeAndGo();
    void pulledWhen_data();
    void pulledWhen();
    void programTakesStickAfterStick();
    void unitsFlashIsNoStick();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    /// Mounts the file system @p type, the same one each time but for tmpfs; false when this
    /// machine has none.
    bool mount(const QString &type, const QString &directory);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void MediaTest::init()
{
    if (!ownNamespace)
        QSKIP("mounting takes root");
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(mount("tmpfs", m_folder->path()));
}

void MediaTest::cleanup()
{
    if (ownNamespace)
        pull(m_folder->path()); // and whatever is mounted below
}

bool MediaTest::mount(const QString &type, const QString &directory)
{
    QDir().mkpath(directory);
    if (type == "tmpfs")
        return ::mount("none", QFile::encodeName(directory).constData(), "tmpfs", 0, nullptr) == 0;
    const auto run = [this](const QString &program, const QString &arguments) {
        return runProgram(program, m_folder->path(), arguments).exitCode == 0;
    };
    QFile image(path(type));
    if (!image.exists()
        && (!image.open(QIODevice::WriteOnly) || !image.resize(4 << 20)
            || !run("mkfs." + type, image.fileName())))
        return false;
    return run("mount", "-o loop -t " + type + ' ' + image.fileName() + ' ' + directory);
}

void MediaTest::mountsComeAndGo()
{
    const QString early = path("media/early");
    const QString late = path("media/user/my stick");
    QVERIFY(mount("tmpfs", early));
    QVERIFY(QFile::link(path("media"), path("link")));

    bench::MountWatcher watcher({path("link")});
    QString error;
    QVERIFY2(watcher.open(&error), qPrintable(error));
    QCOMPARE(watcher.mounts(), QStringList{early});

    QSignalSpy mounted(&watcher, &bench::MountWatcher::mounted);
    QSignalSpy unmounted(&watcher, &bench::MountWatcher::unmounted);
    QVERIFY(mount("tmpfs", path("media-else/stick")));
    QVERIFY(mount("tmpfs", late));
    QTRY_COMPARE(mounted, QList<QVariantList>{{late}});
    QFile inUse(early + "/file");
    QVERIFY(inUse.open(QIODevice::WriteOnly));
    QVERIFY(pull(early));
    QTRY_COMPARE(unmounted, QList<QVariantList>{{early}});
    QCOMPARE(watcher.mounts(), QStringList{late});
}

void MediaTest::pulledWhen_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("call"); // before which it is pulled; empty: after the pass
    const auto row = [](const char *name, const char *type, const QString &call) {
        QTest::newRow(name) << type << call;
    };
    row("before the rewrite's sync", "ext4", bench::calls::system);
    row("while storing", "ext4", bench::calls::saveProductionData);
    row("in the last group", "ext4", bench::calls::saveFactoryData);
    row("after the pass", "ext4", {});
    row("vfat, while storing", "vfat", bench::calls::saveProductionData);
    row("gone with its data", "tmpfs", bench::calls::system);
}

void MediaTest::pulledWhen()
{
    QFETCH(QString, type);
    QFETCH(QString, call);
    const QString stick = path("media/stick");
    const QString file = stick + "/production.ini";
    if (!mount(type, stick))
        QSKIP("this machine cannot make or mount such a file system");
    QVERIFY(writeFile(file, serialFile));

    bench::MountWatcher watcher({path("media")});
    QString error;
    QVERIFY(watcher.open(&error));
    TestUnit unit;
    connect(&watcher, &bench::MountWatcher::unmounted, this,
            [&](const QString &directory) { unit.unplug(directory); });
    std::atomic<bool> pulled{false}; // asked in both threads
    unit.headUnit().setBeforeCall([&](const bench::Call &next) {
        if (!pulled && next.name == call)
            pulled = pull(stick);
    });
    QVERIFY(unit.runPass(watcher.mounts().value(0)));
    QVERIFY(call.isEmpty() ? pull(stick) : pulled.load());
    QVERIFY(unit.waitForEnd());
    unit.headUnit().setBeforeCall({});

    QVERIFY(unit.popUps().last().contains("unplugged"));
    QVERIFY(QDir(stick).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    QCOMPARE(unit.stored(bench::Area::Production, "SN").toString(), "AB01");
    QVERIFY(mount(type, stick)); // as the next unit finds it
    QVERIFY(!readFile(file).contains("AB01"));
    QCOMPARE(readFile(file).contains("AB02"), type != "tmpfs");
}

void MediaTest::programTakesStickAfterStick()
{
    const QString stick = path("media/stick");
    if (!mount("ext4", stick))
        QSKIP("this machine cannot make or mount such a file system");
    QVERIFY(writeFile(stick + "/production.ini", serialFile));
    QVERIFY(pull(stick));

    QProcess bench;
    QByteArray output;
    const auto outputHas = [&](const QByteArray &text) {
        while (!output.contains(text) && bench.waitForReadyRead())
            output += bench.readAllStandardOutput();
        const bool found = output.contains(text);
        output = output.mid(output.indexOf(text) + text.size());
        return found;
    };
    bench.start(BENCH_PROGRAM, {"--loop", "--media", path("media"), "--unit", path("units")});
    for (const char *serial : {"SN AB01", "SN AB02"}) {
        QVERIFY(outputHas("Waiting for the next stick"));
        QVERIFY(mount("ext4", stick));
        QVERIFY(outputHas("The pass over"));
        QVERIFY(pull(stick));
        QVERIFY(outputHas(": in order"));
        QVERIFY(outputHas(serial));
    }
    bench.write("quit\n");
    QVERIFY(bench.waitForFinished());
    QCOMPARE(bench.exitCode(), 0);
    QCOMPARE(QDir(path("units")).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
             QStringList({"unit-001", "unit-002"}));
}

void MediaTest::unitsFlashIsNoStick()
{
    QVERIFY(mount("tmpfs", "/media"));
    QVERIFY(QDir().mkpath("/media/cdrom") && QDir().mkdir(path("flash")));
    QVERIFY(writeFile(path("flash/production_sys.ini"), "[BT]\nmode=1\nadv_power=9\n"));
    const Outcome outcome = runProgram(BENCH_PROGRAM, m_folder->path(),
                                       "--media /media --flash flash --unplug-when-done");
    QVERIFY(pull("/media"));
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.out.contains("adv_power = 9"), outcome.err.constData());
    QVERIFY2(!outcome.out.contains("plugged"), outcome.out.constData());
}

int main(int argc, char *argv[])
{
    // Before a second thread exists.
    ownNamespace = ::unshare(CLONE_NEWNS) == 0
        && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    const QCoreApplication application(argc, argv);
    MediaTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_media.moc"
