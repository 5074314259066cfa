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

constexpr int programLimit = 60000; // ms; only a hanging program ever takes that long

const QByteArray serialFile = "[SN]\nmode=1\nAB01\nAB02\n[BT]\nmode=1\nadv_power=4\n";

bool ownNamespace = false; ///< not without root

bool pull(const QString &directory)
{
    return ::umount2(QFile::encodeName(directory).constData(), MNT_DETACH) == 0;
}

int run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished(programLimit) ? process.exitCode() : -1;
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
    QVERIFY(mount(QStringLiteral("tmpfs"), m_folder->path()));
}

void MediaTest::cleanup()
{
    if (ownNamespace)
        pull(m_folder->path()); // and whatever is mounted below
}

bool MediaTest::mount(const QString &type, const QString &directory)
{
    QDir().mkpath(directory);
    if (type == QLatin1String("tmpfs"))
        return ::mount("none", QFile::encodeName(directory).constData(), "tmpfs", 0, nullptr) == 0;
    QFile image(path(type));
    if (!image.exists()
        && (!image.open(QIODevice::WriteOnly) || !image.resize(4 << 20)
            || run(QStringLiteral("mkfs.") + type, {image.fileName()}) != 0))
        return false;
    return run(QStringLiteral("mount"),
               {QStringLiteral("-t"), type, QStringLiteral("-o"), QStringLiteral("loop"),
                image.fileName(), directory})
        == 0;
}

void MediaTest::mountsComeAndGo()
{
    const QString tmpfs = QStringLiteral("tmpfs");
    const QString early = path(QStringLiteral("media/early"));
    const QString late = path(QStringLiteral("media/user/my stick"));
    QVERIFY(mount(tmpfs, early));
    QVERIFY(QFile::link(path(QStringLiteral("media")), path(QStringLiteral("link"))));

    bench::MountWatcher watcher({path(QStringLiteral("link"))});
    QString error;
    QVERIFY2(watcher.open(&error), qPrintable(error));
    QCOMPARE(watcher.mounts(), QStringList{early});

    QSignalSpy mounted(&watcher, &bench::MountWatcher::mounted);
    QSignalSpy unmounted(&watcher, &bench::MountWatcher::unmounted);
    QVERIFY(mount(tmpfs, path(QStringLiteral("media-else/stick"))));
    QVERIFY(mount(tmpfs, late));
    QTRY_COMPARE(mounted, QList<QVariantList>{{late}});
    QFile inUse(early + QStringLiteral("/file"));
    QVERIFY(inUse.open(QIODevice::WriteOnly));
    QVERIFY(pull(early));
    QTRY_COMPARE(unmounted, QList<QVariantList>{{early}});
    QCOMPARE(watcher.mounts(), QStringList{late});
}

void MediaTest::pulledWhen_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("call"); // before which it is pulled; empty: after the pass

    const QString ext4 = QStringLiteral("ext4");
    QTest::newRow("before the rewrite's sync") << ext4 << QString(bench::calls::system);
    QTest::newRow("while storing") << ext4 << QString(bench::calls::saveProductionData);
    QTest::newRow("in the last group") << ext4 << QString(bench::calls::saveFactoryData);
    QTest::newRow("after the pass") << ext4 << QString();
    QTest::newRow("vfat, while storing")
        << QStringLiteral("vfat") << QString(bench::calls::saveProductionData);
    QTest::newRow("gone with its data") << QStringLiteral("tmpfs") << QString(bench::calls::system);
}

void MediaTest::pulledWhen()
{
    QFETCH(QString, type);
    QFETCH(QString, call);
    const QString stick = path(QStringLiteral("media/stick"));
    const QString file = stick + QStringLiteral("/production.ini");
    if (!mount(type, stick))
        QSKIP("this machine cannot make or mount such a file system");
    QVERIFY(writeFile(file, serialFile));

    bench::MountWatcher watcher({path(QStringLiteral("media"))});
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

    QVERIFY(unit.popUps().last().contains(QStringLiteral("unplugged")));
    QVERIFY(QDir(stick).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    QCOMPARE(unit.stored(bench::Area::Production, QStringLiteral("SN")).toString(),
             QStringLiteral("AB01"));
    QVERIFY(mount(type, stick)); // as the next unit finds it
    QVERIFY(!readFile(file).contains("AB01"));
    QCOMPARE(readFile(file).contains("AB02"), type != QLatin1String("tmpfs"));
}

void MediaTest::programTakesStickAfterStick()
{
    const QString stick = path(QStringLiteral("media/stick"));
    if (!mount(QStringLiteral("ext4"), stick))
        QSKIP("this machine cannot make or mount such a file system");
    QVERIFY(writeFile(stick + QStringLiteral("/production.ini"), serialFile));
    QVERIFY(pull(stick));

    QProcess bench;
    QByteArray output;
    const auto outputHas = [&](const QByteArray &text) {
        while (!output.contains(text) && bench.waitForReadyRead(programLimit))
            output += bench.readAllStandardOutput();
        const bool found = output.contains(text);
        output = output.mid(output.indexOf(text) + text.size());
        return found;
    };
    bench.start(QStringLiteral(BENCH_PROGRAM),
                {QStringLiteral("--loop"), QStringLiteral("--media"), path(QStringLiteral("media")),
                 QStringLiteral("--unit"), path(QStringLiteral("units"))});
    for (const char *serial : {"SN AB01", "SN AB02"}) {
        QVERIFY(outputHas("Waiting for the next stick"));
        QVERIFY(mount(QStringLiteral("ext4"), stick));
        QVERIFY(outputHas("The pass over"));
        QVERIFY(pull(stick));
        QVERIFY(outputHas(": in order"));
        QVERIFY(outputHas(serial));
    }
    bench.write("quit\n");
    QVERIFY(bench.waitForFinished(programLimit));
    QCOMPARE(bench.exitCode(), 0);
    QCOMPARE(QDir(path(QStringLiteral("units"))).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
             QStringList({QStringLiteral("unit-001"), QStringLiteral("unit-002")}));
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
