#include "faultshim.h"
#include "testunit.h"

#include "productioncontrol.h"
#include "productionobject.h"
#include "reader.h"
#include "writer.h"

#include <datasavecontrol.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QSettings>
#include <QThread>
#include <QtTest>

#include <filesystem>
#include <malloc.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

using faults::Verdict;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif
constexpr int poolSize = 12;
constexpr int hangLimit = 20000; // ms; below the half minute that QSettings waits for a lock
const QString configName = "production.ini";
const QString closingPopUp = "1 The USB is unplugged, it has exited production mode.";

QString mountError; ///< Why this process may not mount; empty when it may.

/// Everything, or a selection that is quick enough for every build.
bool isExhaustive()
{
    return qEnvironmentVariable("PRODUCTION_FAULTS") == "all";
}

int step(int quick)
{
    return isExhaustive() ? 1 : quick;
}

QByteArray pool(const char *prefix, int first, int count)
{
    QByteArray lines;
    for (int i = first; i < count; ++i)
        lines += prefix + QByteArray::number(i).rightJustified(7, '0')
            + (i % 2 == 0 ? "\r\n" : "        ; second shift\r\n");
    return lines;
}

/**
 * A production file as a unit writes it, out of which the first @p sn and @p sk serials are taken:
 * a rewrite changes nothing but the line that goes.
 */
QByteArray productionFile(int sn = 0, int sk = 0, int snCount = poolSize)
{
    return "[General]\r\n                ; pools of line 4\r\n\r\n"
           "[BT]\r\nmode=1\r\nadv_power=4\r\n\r\n"
           "[CANBUS]\r\nmode=1          ; bus test\r\n\r\n"
           "[SK]\r\nmode=1\r\n"
        + pool("K", sk, poolSize) + "\r\n[SN]\r\nmode=1\r\nlength=8\r\n"
        + "startwith=\"S,Z\" ; one text\r\n                ; first batch\r\n"
        + pool("S", sn, snCount);
}

struct Taken
{
    int sn;
    int sk;
};

/// How many serials are gone from the file; nothing when it is no such file byte for byte.
std::optional<Taken> takenFrom(const QByteArray &file)
{
    const Taken taken{poolSize - file.count("\nS0"), poolSize - file.count("\nK0")};
    if (file != productionFile(taken.sn, taken.sk))
        return std::nullopt;
    return taken;
}

/// The place of a stored serial in its pool; -1 for none.
int serialNumber(const QVariant &stored)
{
    return stored.toString().isEmpty() ? -1 : stored.toString().mid(1).toInt();
}

/// What the runs of one row have shown.
struct Figures
{
    int runs = 0;
    int duplicates = 0;
    int unreadable = 0;
    int losses = 0;
    QStringList faults;

    void fault(const QString &run, const QString &what) { faults << run + ": " + what; }
};

/// Prints the row's figures and fails the test when there was a fault.
void report(const Figures &figures, const QString &text)
{
    QVERIFY(figures.runs > 2);
    qInfo("%s: %d runs, %s", QTest::currentDataTag(), figures.runs, qUtf8Printable(text));
    QVERIFY2(figures.faults.isEmpty(), qUtf8Printable(figures.faults.mid(0, 20).join('\n')));
}

void reportCuts(const Figures &figures)
{
    QVERIFY(figures.runs > 5);
    report(figures,
           "%1 duplicates, %2 unreadable files, %3 serials lost".arg(figures.duplicates)
               .arg(figures.unreadable)
               .arg(figures.losses));
}

/// A production line: one stick, and units that are processes of their own and can be cut.
class Line
{
public:
    enum End { Completed, Cut, Broken };

    explicit Line(bool likeFat)
        : likeFat(likeFat)
    {
        QDir(folder.path()).mkdir("stick");
        writeFile(stickFile(), productionFile());
    }

    /// Switches the unit on and runs its pass; 0 cuts it nowhere.
    End run(const QString &unit, int cutPoint = 0)
    {
        QDir(folder.path()).mkdir(unit);
        units.insert(unit);
        QProcess bench;
        bench.setProcessEnvironment(environment(unit, cutPoint));
        bench.setStandardOutputFile(QProcess::nullDevice());
        bench.start(QStringLiteral(BENCH_PROGRAM),
                    {"--unit", folder.filePath(unit), "--stick", folder.filePath("stick"),
                     "--unplug-when-done"});
        const bool ended = bench.waitForFinished(hangLimit);
        errors = QString::fromUtf8(bench.readAllStandardError());
        if (!ended)
            errors += "hangs";
        if (ended && bench.exitStatus() == QProcess::NormalExit && bench.exitCode() == 0)
            return Completed;
        const bool killed =
            bench.exitStatus() == QProcess::CrashExit && bench.exitCode() == SIGKILL;
        return ended && killed ? Cut : Broken;
    }

    /// A pass that must run through without a word in the log.
    void complete(const QString &unit, const QString &when, Figures &figures)
    {
        if (run(unit) != Completed || !errors.isEmpty())
            figures.fault(when, QStringLiteral("the pass of unit %1: %2").arg(unit, errors));
        completed.insert(unit);
    }

    /// Judges stick and units together; returns how many serials are missing.
    int check(int cuts, const QString &when, Figures &figures) const
    {
        const std::optional<Taken> taken = takenFrom(readFile(stickFile()));
        if (!taken) {
            ++figures.unreadable;
            figures.fault(when, "the file is neither old nor new");
            return 0;
        }
        const int lost =
            checkPool("SN", taken->sn, when, figures) + checkPool("SK", taken->sk, when, figures);
        if (lost > cuts)
            figures.fault(when, QStringLiteral("%1 serials lost").arg(lost));
        return lost;
    }

    /// Makes this line what @p other is.
    void copy(const Line &other)
    {
        std::filesystem::remove_all(folder.path().toStdString());
        std::filesystem::copy(other.folder.path().toStdString(), folder.path().toStdString(),
                              std::filesystem::copy_options::recursive);
        units = other.units;
    }

    QString errors; ///< How the last unit ended, and what it wrote to its log.

private:
    QProcessEnvironment environment(const QString &unit, int cutPoint) const
    {
        QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
        result.insert("LD_PRELOAD", QStringLiteral(SHIM_LIBRARY));
        result.insert("FAULT_DIRECTORIES", folder.filePath("stick") + ':' + folder.filePath(unit));
        result.insert("FAULT_CUT", QString::number(cutPoint));
        if (likeFat)
            result.insert("FAULT_FAT", "1");
        const QString asan = "ASAN_OPTIONS";
        result.insert(asan, result.value(asan) + ":verify_asan_link_order=0");
        return result;
    }

    int checkPool(const QString &name, int taken, const QString &when, Figures &figures) const
    {
        QSet<int> stored;
        for (const QString &unit : units) {
            const QSettings data(folder.filePath(unit + "/unit.ini"), QSettings::IniFormat);
            const int number = serialNumber(data.value("Production/" + name));
            if (stored.contains(number) || number >= taken) {
                ++figures.duplicates;
                figures.fault(when, QStringLiteral("%1 %2 given twice").arg(name).arg(number));
            }
            if (number >= 0)
                stored.insert(number);
            else if (completed.contains(unit))
                figures.fault(when, QStringLiteral("unit %1 has no %2").arg(unit, name));
        }
        return taken - stored.size();
    }

    QString stickFile() const { return folder.filePath("stick/" + configName); }

    QTemporaryDir folder;
    bool likeFat;
    QSet<QString> units;
    QSet<QString> completed;
};

/// Gathers the warnings of all threads while it lives.
class Warnings
{
public:
    Warnings()
        : previous(qInstallMessageHandler(&Warnings::take))
    {
        const std::lock_guard<std::mutex> lock(mutex);
        texts.clear();
    }
    ~Warnings() { qInstallMessageHandler(previous); }
    Q_DISABLE_COPY(Warnings)

    bool contain(const QString &text) const
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return texts.contains(text);
    }

private:
    static void take(QtMsgType type, const QMessageLogContext &, const QString &text)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (type == QtWarningMsg)
            texts += text + '\n';
    }

    static inline std::mutex mutex;
    static inline QString texts;
    const QtMessageHandler previous;
};

/// A small file system in memory, mounted at a folder of its own.
class SmallStick
{
public:
    explicit SmallStick(const QString &path, const char *options = "size=1m")
        : path(path)
    {
        QDir().mkpath(path);
        mounted = ::mount("none", path.toUtf8().constData(), "tmpfs", 0, options) == 0;
    }
    ~SmallStick() { detach(); }
    Q_DISABLE_COPY(SmallStick)

    void detach()
    {
        if (mounted)
            ::umount2(path.toUtf8().constData(), MNT_DETACH);
        mounted = false;
    }

    /// Writes the file, and another one that leaves only @p bytes.
    void fill(const QByteArray &content, qint64 bytes) const
    {
        const QString filler = path + "/filler";
        QFile::remove(filler);
        writeFile(path + '/' + configName, content);
        struct statvfs system = {};
        ::statvfs(path.toUtf8().constData(), &system);
        writeFile(filler, QByteArray(int(qint64(system.f_bavail * system.f_bsize) - bytes), 'x'));
    }

    const QString path;
    bool mounted = false;
};

/// Unplugs @p stick unless that has been done already.
void pull(TestUnit &unit, const QString &stick)
{
    if (unit.headUnit().sticks().contains(stick))
        unit.unplug(stick);
}

/**
 * One life of the module: plugs the stick, runs the pass, unplugs. @p judge is asked about every
 * storage call on @p directories, and told of every call on the platform by a null name. Returns
 * whether everything ended.
 */
bool live(TestUnit &unit, const QString &stick, const QStringList &directories,
          const faults::Judge &judge, bool likeFat = true)
{
    std::vector<std::string> names;
    for (const QString &directory : directories)
        names.push_back(directory.toStdString());
    unit.headUnit().setBeforeCall([&judge](const bench::Call &) { judge(nullptr); });
    faults::watch(names, judge, likeFat);
    const bool returned = unit.runPass(stick);
    faults::watch({}, nullptr);
    unit.headUnit().setBeforeCall(nullptr);
    pull(unit, stick);
    return unit.waitForEnd() && returned;
}

/// How a stick goes.
enum class Pull {
    Folder, ///< An empty mount point stays.
    FolderAndMountPoint,
    Mount, ///< A real mount is lazily unmounted.
};

/// Takes the stick at @p path away under the feet of the pass.
void pullStick(Pull pull, const QString &path, std::optional<SmallStick> &mount)
{
    if (pull == Pull::Mount)
        mount->detach();
    else
        QDir().rename(path, path + "-pulled");
    if (pull == Pull::Folder)
        QDir().mkdir(path);
}

int countEntries(const char *directory)
{
    return QDir(QLatin1String(directory))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
        .size();
}

/// What makes a file of many parts; how many serials are taken from it is the second number.
using FileMaker = QByteArray (*)(int count, int taken);

QByteArray fileOfSections(int count, int taken)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += "[A" + QByteArray::number(i + 1000000) + "]\r\nkey=1\r\n\r\n";
    return text + "[SN]\r\nmode=1\r\n" + pool("S", taken, poolSize);
}

QByteArray fileOfKilobytes(int count, int taken)
{
    QByteArray text = "[A]\r\n";
    for (int i = 0; i < count; ++i)
        text += "key" + QByteArray::number(i + 1000000) + '=' + QByteArray(1000, 'x') + "\r\n";
    return text + "\r\n[SN]\r\nmode=1\r\n" + pool("S", taken, poolSize);
}

QByteArray fileOfOneLine(int count, int taken)
{
    return "[A]\r\nkey=" + QByteArray(count, 'x') + "\r\n\r\n[SN]\r\nmode=1\r\n"
        + pool("S", taken, poolSize);
}

QByteArray fileOfEntries(int count, int taken)
{
    return "[SN]\r\nmode=1\r\n" + pool("S", taken, count);
}

/// A line of /proc/self/status in KiB: "VmRSS" what is resident now, "VmHWM" the most there was.
qint64 memory(const char *name)
{
    const QByteArray status = readFile("/proc/self/status");
    const int at = status.indexOf(name) + int(qstrlen(name)) + 1;
    return status.mid(at, status.indexOf("kB", at) - at).trimmed().toLongLong();
}

} // namespace

Q_DECLARE_METATYPE(FileMaker)
Q_DECLARE_METATYPE(Pull)

/// Cuts, failing storage, full and pulled sticks: what a production line does to the module.
class TestFaults : public QObject
{
    Q_OBJECT

private slots:
    void everyCut_data() { addStickKinds(); }
    void everyCut();
    void everyPairOfCuts_data() { addStickKinds(); }
    void everyPairOfCuts();
    void everyError_data();
    void everyError();
    void fullStick_data();
    void fullStick();
    void writerWithoutFlushFailsOnFullStick();
    void pulledAtEveryStep_data();
    void pulledAtEveryStep();
    void leftover_data();
    void leftover();
    void manyLives_data();
    void manyLives();
    void limits_data();
    void limits();
    void memoryPerEntry();

private:
    static void addStickKinds();
};

void TestFaults::addStickKinds()
{
    QTest::addColumn<bool>("likeFat");
    QTest::newRow("stick with FAT") << true;
    QTest::newRow("stick with unnamed temporary files") << false;
}

/// A unit is cut, the next one completes, then the first is switched on again and completes too.
void TestFaults::everyCut()
{
    QFETCH(bool, likeFat);
    Figures figures;
    for (int point = 1;; point += step(7)) {
        const QString when = QStringLiteral("cut at %1").arg(point);
        Line line(likeFat);
        const Line::End end = line.run("first", point);
        if (end == Line::Completed)
            break;
        ++figures.runs;
        if (end == Line::Broken) {
            figures.fault(when, line.errors);
            break;
        }
        line.check(1, when, figures);
        line.complete("second", when, figures);
        line.complete("first", when, figures);
        figures.losses += line.check(1, when, figures);
    }
    reportCuts(figures);
}

/// Two units are cut one after the other, and the third completes.
void TestFaults::everyPairOfCuts()
{
    QFETCH(bool, likeFat);
    Figures figures;
    for (int first = 1;; first += step(17)) {
        Line cutOnce(likeFat);
        if (cutOnce.run("first", first) == Line::Completed)
            break;
        for (int second = 1;; second += step(19)) {
            const QString when = QStringLiteral("cuts at %1 and %2").arg(first).arg(second);
            Line line(likeFat);
            line.copy(cutOnce);
            const Line::End end = line.run("second", second);
            if (end == Line::Completed)
                break;
            ++figures.runs;
            if (end == Line::Broken) {
                figures.fault(when, line.errors);
                break;
            }
            line.check(2, when, figures);
            line.complete("third", when, figures);
            figures.losses += line.check(2, when, figures);
        }
    }
    reportCuts(figures);
}

void TestFaults::everyError_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("persists");
    const auto fail = int(Verdict::Fail);
    QTest::newRow("EIO") << fail << EIO << false;
    QTest::newRow("ENOSPC") << fail << ENOSPC << false;
    QTest::newRow("EROFS") << fail << EROFS << false;
    QTest::newRow("ENODEV") << fail << ENODEV << false;
    QTest::newRow("short") << int(Verdict::Short) << 0 << false;
    QTest::newRow("short, then ENOSPC") << int(Verdict::Short) << ENOSPC << true;
    QTest::newRow("short, then EIO") << int(Verdict::Short) << EIO << true;
    QTest::newRow("EIO from there on") << fail << EIO << true;
    QTest::newRow("ENODEV from there on") << fail << ENODEV << true;
}

/// Each storage call on stick and unit fails in turn.
void TestFaults::everyError()
{
    QFETCH(int, fault);
    QFETCH(int, error);
    QFETCH(bool, persists);
    Figures figures;
    int kept = 0;
    // Twice the points: those of a stick with FAT, then those of one without.
    for (int point = 1, likeFat = 1;; point += step(9)) {
        const Warnings warnings;
        const QTemporaryDir folder;
        bench::HeadUnitConfig config;
        config.unitDirectory = folder.path();
        TestUnit unit(config);
        const QString stick = unit.makeStick(productionFile());
        std::atomic<int> count{0};
        const auto judge = [&](const char *call) -> Verdict {
            const int number = call == nullptr ? 0 : ++count;
            const bool moves =
                number > 0 && (call == QByteArray("write") || call == QByteArray("read"));
            if (number == point)
                return {Verdict::Fault(fault), error};
            if (number > point && persists && (fault == Verdict::Fail || moves))
                return {Verdict::Fail, error};
            return {};
        };
        const bool ended = live(unit, stick, {stick, folder.path()}, judge, likeFat != 0);
        if (count < point) {
            if (likeFat-- == 0)
                break;
            point = 1 - step(9);
            continue;
        }
        ++figures.runs;
        const QString when = QStringLiteral("call %1").arg(point);
        if (!ended)
            figures.fault(when, "no end");
        const std::optional<Taken> taken = takenFrom(readFile(stick + '/' + configName));
        if (!taken) {
            figures.fault(when, "the file is neither old nor new");
            continue;
        }
        const int sn = serialNumber(unit.stored(bench::Area::Production, "SN"));
        const int sk = serialNumber(unit.stored(bench::Area::Production, "SK"));
        const bool stillInPool = sn >= taken->sn || sk >= taken->sk;
        if (stillInPool && !warnings.contain(configName + ": not rewritten"))
            figures.fault(when, "no word in the log of the failed rewrite");
        kept += stillInPool ? 1 : 0;
    }
    report(figures,
           QStringLiteral("%1 kept a stored serial in the pool, with a warning").arg(kept));
}

void TestFaults::fullStick_data()
{
    QTest::addColumn<int>("poolBytes");
    for (const int kib : {1, 4, 8, 12, 15, 16, 17, 24, 32, 64, 128, 256})
        QTest::addRow("pool of %d KiB", kib) << kib * 1024;
}

/// A stick with 0 to 64 KiB left: the file is whole, old or new.
void TestFaults::fullStick()
{
    QFETCH(int, poolBytes);
    if (!mountError.isEmpty())
        QSKIP(qUtf8Printable(mountError));
    Figures figures;
    const QByteArray before = productionFile(0, 0, poolBytes / 20);
    const QByteArray after = productionFile(1, 1, poolBytes / 20);
    const QByteArray snOnly = productionFile(1, 0, poolBytes / 20);
    int rewritten = 0;
    for (int left = 0; left <= 64; left += isExhaustive() || left < 8 ? 4 : 28) {
        TestUnit unit;
        const QTemporaryDir folder;
        const SmallStick stick(folder.filePath("stick"));
        QVERIFY(stick.mounted);
        stick.fill(before, left * 1024);
        const Warnings warnings;
        ++figures.runs;
        const QString when = QStringLiteral("%1 KiB left").arg(left);
        if (!live(unit, stick.path, {}, [](const char *) { return Verdict(); }))
            figures.fault(when, "no end");
        const QByteArray file = readFile(stick.path + '/' + configName);
        if (file != before && file != after && file != snOnly)
            figures.fault(when,
                          QStringLiteral("%1 bytes of %2").arg(file.size()).arg(before.size()));
        if (file == before && !warnings.contain("not rewritten"))
            figures.fault(when, "no word in the log");
        rewritten += file == before ? 0 : 1;
    }
    report(figures, QStringLiteral("%1 rewritten").arg(rewritten));
}

/// Without the flush a nearly full stick truncates the pool and reports success.
void TestFaults::writerWithoutFlushFailsOnFullStick()
{
    if (!mountError.isEmpty())
        QSKIP(qUtf8Printable(mountError));
    static production::KeyComments comments;
    const QSettings::Format format = QSettings::registerFormat(
        "unflushed",
        [](QIODevice &device, QSettings::SettingsMap &map) {
            return production::readSettings(device, map, comments);
        },
        [](QIODevice &device, const QSettings::SettingsMap &map) {
            QByteArray text;
            QBuffer buffer(&text);
            return buffer.open(QIODevice::WriteOnly)
                && production::writeSettings(buffer, map, comments)
                && device.write(text) == text.size();
        });
    const QTemporaryDir folder;
    const SmallStick stick(folder.filePath("stick"));
    QVERIFY(stick.mounted);
    const QByteArray before = productionFile(0, 0, 400);
    stick.fill(before, 4096);
    const QString path = stick.path + '/' + configName;
    QSettings settings(path, format);
    settings.remove("SN/S0000000");
    settings.sync();
    QCOMPARE(settings.status(), QSettings::NoError);
    QVERIFY(readFile(path).size() < productionFile(1, 0, 400).size());
}

void TestFaults::pulledAtEveryStep_data()
{
    QTest::addColumn<Pull>("pull");
    QTest::addColumn<bool>("reportedAtOnce");
    QTest::newRow("mount point left, reported at once") << Pull::Folder << true;
    QTest::newRow("mount point left, reported after the pass") << Pull::Folder << false;
    QTest::newRow("mount point gone, reported at once") << Pull::FolderAndMountPoint << true;
    QTest::newRow("mount point gone, reported after the pass")
        << Pull::FolderAndMountPoint << false;
    QTest::newRow("real mount, reported at once") << Pull::Mount << true;
    QTest::newRow("real mount, reported after the pass") << Pull::Mount << false;
}

/// The stick goes at each storage call and at each call on the platform.
void TestFaults::pulledAtEveryStep()
{
    QFETCH(Pull, pull);
    QFETCH(bool, reportedAtOnce);
    if (pull == Pull::Mount && !mountError.isEmpty())
        QSKIP(qUtf8Printable(mountError));
    Figures figures;
    qint64 slowest = 0;
    QElapsedTimer lastStep;
    for (int point = 1;; point += step(7)) {
        const QTemporaryDir folder;
        TestUnit unit;
        const QString path = folder.filePath("stick");
        QDir().mkpath(path);
        std::optional<SmallStick> mount;
        if (pull == Pull::Mount)
            mount.emplace(path);
        writeFile(path + '/' + configName, productionFile());

        std::atomic<int> count{0};
        const auto onStep = [&](const char *) -> Verdict {
            if (++count != point)
                return {};
            pullStick(pull, path, mount);
            if (reportedAtOnce && QThread::currentThread() == thread())
                unit.unplug(path);
            else if (reportedAtOnce)
                unit.unplugFromHook(path);
            lastStep.start();
            return {};
        };
        const bool ended = live(unit, path, {path}, onStep);
        if (count < point)
            break;
        ++figures.runs;
        slowest = std::max(slowest, lastStep.elapsed());
        const QString when = QStringLiteral("step %1").arg(point);
        if (!ended)
            figures.fault(when, "no end");
        const bool mountPointLeft = pull != Pull::FolderAndMountPoint;
        if (QFileInfo::exists(path) != mountPointLeft || !QDir(path).isEmpty())
            figures.fault(when, "something was created at the mount point");
        if (DataSaveControl::productionMode)
            figures.fault(when, "production mode is still on");
        const QStringList popUps = unit.popUps();
        const int closing = popUps.count(closingPopUp);
        // A pass that finds nothing more on a stick ends by itself: the going may be reported after
        // that, or before the pass has said on which stick its file is.
        const bool byItself = popUps.filter(QRegularExpression("^8 ")).size() == 1;
        if (closing != 1 && !(closing == 0 && byItself))
            figures.fault(when, popUps.join(" | "));
    }
    if (isExhaustive() && slowest > 2000)
        figures.fault("all", QStringLiteral("an end took %1 ms").arg(slowest));
    report(figures, QStringLiteral("at most %1 ms from the pull to the end").arg(slowest));
}

void TestFaults::leftover_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("ahead");
    const QString lock = configName + ".lock";
    const QByteArray ownName = QCoreApplication::applicationName().toUtf8();
    const QByteArray ownProcess = QByteArray::number(QCoreApplication::applicationPid()) + '\n'
        + ownName + '\n' + QSysInfo::machineHostName().toUtf8() + '\n';
    const QByteArray foreign = "4711\nproduction-bench\nanother-host\n";
    QTest::newRow("empty") << QByteArray() << lock << 0;
    QTest::newRow("foreign host") << foreign << lock << 0;
    QTest::newRow("garbage") << QByteArray("\xff\x00garbage", 9) << lock << 0;
    QTest::newRow("live process of the same name") << ownProcess << lock << 0;
    QTest::newRow("time in the future") << foreign << lock << 86400;
    QTest::newRow("directory") << QByteArray() << lock + "/below" << 0;
    QTest::newRow("no lock") << QByteArray() << QString() << 0;
}

/// What another unit left on the stick neither delays the pass nor is lost.
void TestFaults::leftover()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, entry);
    QFETCH(int, ahead);
    TestUnit unit;
    const QString stick = unit.makeStick(productionFile());
    const QString lock = stick + '/' + configName + ".lock";
    const QString temporary = stick + '/' + configName + ".AbCdEf";
    QVERIFY(writeFile(temporary, "half of a pool"));
    if (!entry.isEmpty()) {
        const QString path = stick + '/' + entry;
        QVERIFY(QDir().mkpath(QFileInfo(path).path()) && writeFile(path, content));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite)
                && file.setFileTime(QDateTime::currentDateTime().addSecs(ahead),
                                    QFileDevice::FileModificationTime));
    }
    QElapsedTimer timer;
    timer.start();
    QVERIFY(unit.runPass(stick));
    const qint64 duration = timer.elapsed();
    qInfo("%s: the pass took %lld ms", QTest::currentDataTag(), duration);
    QVERIFY(duration < (isExhaustive() ? 1000 : hangLimit));
    QCOMPARE(readFile(stick + '/' + configName), productionFile(1, 1));
    QVERIFY(!QFileInfo::exists(lock));
    QCOMPARE(readFile(temporary), QByteArray("half of a pool"));
}

void TestFaults::manyLives_data()
{
    QTest::addColumn<bool>("applicationEnds");
    QTest::newRow("unplugged at any moment") << false;
    QTest::newRow("application ends at any moment") << true;
}

/// Many lives of the module in one process, each ended at a random step: nothing adds up.
void TestFaults::manyLives()
{
    QFETCH(bool, applicationEnds);
    const int lives = isExhaustive() ? 1000 : 100;
    const quint32 seed = qEnvironmentVariableIsSet("PRODUCTION_FAULTS_SEED")
        ? qEnvironmentVariable("PRODUCTION_FAULTS_SEED").toUInt()
        : QRandomGenerator::global()->generate();
    qInfo("PRODUCTION_FAULTS_SEED=%u", seed);
    QRandomGenerator random(seed);

    const QTemporaryDir folder;
    bench::HeadUnitConfig config;
    config.unitDirectory = folder.path();
    TestUnit unit(config);
    const int threads = countEntries("/proc/self/task");
    int descriptors = 0;
    qint64 halfwayMemory = 0;
    Figures figures;
    for (int life = 0; life < lives; ++life) {
        // A thread that has told its end may not be gone yet.
        QTRY_COMPARE(countEntries("/proc/self/task"), threads);
        if (life == 3)
            descriptors = countEntries("/proc/self/fd");
        if (life == lives / 2)
            halfwayMemory = memory("VmRSS");
        QFile::remove(folder.filePath("unit.ini"));
        unit.replaceUnit(config);
        const QString stick = unit.makeStick(productionFile());
        QPointer<ProductionControl> control = ProductionControl::getInstance();
        std::atomic<int> finished{0};
        int ends = 0;
        connect(control, &ProductionControl::startExe, this, [&] {
            connect(
                ProductionObject::ins, &ProductionObject::finished, this, [&] { ++finished; },
                Qt::DirectConnection);
        });
        connect(control, &QObject::destroyed, this, [&] { ++ends; });

        const int moment = int(random.bounded(90));
        std::atomic<int> count{0};
        const auto onStep = [&](const char *) -> Verdict {
            if (++count == moment && applicationEnds)
                control->deleteLater();
            else if (count == moment)
                QMetaObject::invokeMethod(
                    this, [&] { pull(unit, stick); }, Qt::QueuedConnection);
            return {};
        };
        const bool ended = live(unit, stick, {stick}, onStep);
        ++figures.runs;
        const QString when = QStringLiteral("life %1, moment %2").arg(life).arg(moment);
        if (!ended || ends != 1 || finished > 1 || (finished == 0 && !applicationEnds))
            figures.fault(when,
                          QStringLiteral("%1 ends, %2 times finished").arg(ends).arg(finished));
        if (DataSaveControl::productionMode && !applicationEnds)
            figures.fault(when, "production mode is still on");
    }
    const qint64 growth = memory("VmRSS") - halfwayMemory;
    QTRY_COMPARE(countEntries("/proc/self/task"), threads);
    QCOMPARE(countEntries("/proc/self/fd"), descriptors);
    if (isExhaustive() && !isSanitized && growth > 1024)
        figures.fault("end", "memory grows");
    report(figures, QStringLiteral("%1 KiB more memory after the second half").arg(growth));
}

void TestFaults::limits_data()
{
    QTest::addColumn<FileMaker>("makeFile");
    QTest::addColumn<int>("count");
    QTest::newRow("a line of a million characters") << &fileOfOneLine << 1000000;
    if (!isExhaustive()) {
        QTest::newRow("10,000 sections") << &fileOfSections << 10000;
        return;
    }
    QTest::newRow("100,000 sections") << &fileOfSections << 100000;
    QTest::newRow("a million entries") << &fileOfEntries << 1000000;
    QTest::newRow("100 MB") << &fileOfKilobytes << 100000;
}

/// Large files take their time and memory, and are rewritten like any other.
void TestFaults::limits()
{
    QFETCH(FileMaker, makeFile);
    QFETCH(int, count);
    TestUnit unit;
    const QString stick = unit.makeStick(makeFile(count, 0));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(unit.runPass(stick));
    qInfo("%s: %lld ms", QTest::currentDataTag(), timer.elapsed());
    QCOMPARE(unit.stored(bench::Area::Production, "SN").toString(), "S0000000");
    QVERIFY(readFile(stick + '/' + configName) == makeFile(count, 1));
}

/// What a pass takes at most grows with the file and no faster.
void TestFaults::memoryPerEntry()
{
    if (!isExhaustive() || isSanitized)
        QSKIP("only in the full run, without sanitizers");
    QVector<double> perEntry;
    for (const int entries : {100000, 1000000}) {
        TestUnit unit;
        const QString stick = unit.makeStick(fileOfEntries(entries, 0));
        malloc_trim(0);
        QVERIFY(writeFile("/proc/self/clear_refs", "5")); // forgets the peak
        const qint64 before = memory("VmRSS");
        QVERIFY(unit.runPass(stick));
        perEntry << double(memory("VmHWM") - before) * 1024 / entries;
        qInfo("%d entries: %.0f bytes each", entries, perEntry.last());
    }
    QVERIFY(perEntry.last() < perEntry.first() * 1.5);
}

int main(int argc, char **argv)
{
    // A mount namespace of its own must be entered before there is a second thread.
    if (unshare(CLONE_NEWNS) != 0
        || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        mountError = "mounting takes root: " + qt_error_string(errno);
    // The kill of a process leaves the system's caches alone, so the module's "sync" commands
    // would only flush what else the machine does.
    const QTemporaryDir commands;
    QFile::link("/bin/true", commands.filePath("sync"));
    qputenv("PATH", commands.path().toUtf8() + ':' + qgetenv("PATH"));
    if (qEnvironmentVariableIsEmpty("TMPDIR") && QFileInfo("/dev/shm").isWritable())
        qputenv("TMPDIR", "/dev/shm");

    if (isExhaustive())
        qputenv("QTEST_FUNCTION_TIMEOUT", "7200000"); // ms
    QLoggingCategory::setFilterRules("default.debug=false");
    const QCoreApplication application(argc, argv);
    TestFaults test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_faults.moc"
