#include "faultshim.h"
#include "testunit.h"

#include "productioncontrol.h"
#include "productionobject.h"

#include <datasavecontrol.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QSettings>
#include <QtTest>

#include <filesystem>
#include <iterator>
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

const QString unreadable = "the file is neither old nor new";
const QString duplicate = "given twice";

/// What the runs of one row have shown.
class Figures
{
public:
    void begin(const QString &name)
    {
        run = name;
        ++runs;
    }

    void demand(bool holds, const QString &otherwise)
    {
        if (!holds)
            faults << run + ": " + otherwise;
    }

    int count(const QString &fault) const { return faults.filter(fault).size(); }

    /// Prints the row's figures and fails the test when there was a fault.
    void report(const QString &text) const
    {
        QVERIFY(runs > 2);
        qInfo("%s: %d runs, %s", QTest::currentDataTag(), runs, qUtf8Printable(text));
        QVERIFY2(faults.isEmpty(), qUtf8Printable(faults.mid(0, 20).join('\n')));
    }

private:
    QString run;
    int runs = 0;
    QStringList faults;
};

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

    /// Another line that is now what @p other is.
    Line(const Line &other)
        : cuts(other.cuts)
        , likeFat(other.likeFat)
        , units(other.units)
    {
        std::filesystem::copy(other.folder.path().toStdString(), folder.path().toStdString(),
                              std::filesystem::copy_options::recursive);
    }

    /// Switches the next unit on and cuts it at @p cutPoint.
    End cutNext(int cutPoint)
    {
        cuts << QString::number(cutPoint);
        units << "unit" + QString::number(units.size());
        return run(units.last(), cutPoint);
    }

    /// The next unit, and then the one that was cut last, must run through without a word.
    void complete(Figures &figures)
    {
        const QString cut = units.last();
        units << "next";
        for (const QString &unit : {units.last(), cut}) {
            const End end = run(unit, 0);
            figures.demand(end == Completed && errors.isEmpty(), unit + ' ' + errors);
            figures.demand(serial(unit, "SN") >= 0 && serial(unit, "SK") >= 0, unit + " has none");
        }
    }

    /// Judges stick and units together; returns how many serials are missing.
    int check(Figures &figures) const
    {
        const std::optional<Taken> taken = takenFrom(readFile(stickFile()));
        figures.demand(taken.has_value(), unreadable);
        if (!taken)
            return 0;
        const int lost = checkPool("SN", taken->sn, figures) + checkPool("SK", taken->sk, figures);
        figures.demand(lost <= cuts.size(), QString::number(lost) + " serials lost");
        return lost;
    }

    /// The points at which units were cut.
    const QStringList &cutPoints() const { return cuts; }

    QString errors; ///< How the last unit ended, and what it wrote to its log.

private:
    /// Runs the unit's pass; 0 cuts it nowhere.
    End run(const QString &unit, int cutPoint)
    {
        QDir(folder.path()).mkdir(unit);
        QProcess bench;
        bench.setStandardOutputFile(QProcess::nullDevice());
        const QString stick = folder.filePath("stick");
        bench.start("env",
                    {"LD_PRELOAD=" SHIM_LIBRARY, QString("FAULT_FAT=%1").arg(likeFat),
                     "FAULT_DIRECTORIES=" + stick + ':' + folder.filePath(unit),
                     QString("FAULT_CUT=%1").arg(cutPoint),
                     "GCOV_PREFIX=" + folder.path(), // a cut would spoil the counts of all
                     BENCH_PROGRAM, "--unit", folder.filePath(unit), "--stick", stick,
                     "--unplug-when-done"});
        const bool ended = bench.waitForFinished(hangLimit);
        errors = QString::fromUtf8(bench.readAllStandardError()) + (ended ? "" : "hangs");
        const bool exited = bench.exitStatus() == QProcess::NormalExit;
        if (ended && exited && bench.exitCode() == 0)
            return Completed;
        return ended && !exited && bench.exitCode() == SIGKILL ? Cut : Broken;
    }

    int checkPool(const QString &name, int taken, Figures &figures) const
    {
        QSet<int> stored;
        for (const QString &unit : units) {
            const int number = serial(unit, name);
            figures.demand(!stored.contains(number) && number < taken,
                           QString("%1 %2 ").arg(name).arg(number) + duplicate);
            if (number >= 0)
                stored.insert(number);
        }
        return taken - stored.size();
    }

    int serial(const QString &unit, const QString &name) const
    {
        const QSettings data(folder.filePath(unit + "/unit.ini"), QSettings::IniFormat);
        return serialNumber(data.value("Production/" + name));
    }

    QString stickFile() const { return folder.filePath("stick/" + configName); }

    QTemporaryDir folder;
    QStringList cuts;
    const bool likeFat;
    QStringList units;
};

/// Cuts the next unit of the line at each of its points, and another one after that, until
/// @p units are cut; then the line goes on. Returns how many serials were lost in all.
int cutAtEveryPoint(const Line &before, int units, int stepWidth, Figures &figures)
{
    int losses = 0;
    for (int point = 1;; point += stepWidth) {
        Line line(before);
        const Line::End end = line.cutNext(point);
        if (end == Line::Completed)
            return losses;
        figures.begin("cuts at " + line.cutPoints().join(", "));
        figures.demand(end == Line::Cut, line.errors);
        if (end == Line::Broken)
            return losses;
        line.check(figures);
        if (units > 1) {
            losses += cutAtEveryPoint(line, units - 1, stepWidth, figures);
        } else {
            line.complete(figures);
            losses += line.check(figures);
        }
    }
}

/// A small file system in memory, mounted at a folder of its own.
class SmallStick
{
public:
    explicit SmallStick(const QString &path)
        : path(path)
    {
        QDir().mkpath(path);
        mounted = ::mount("none", qUtf8Printable(path), "tmpfs", 0, "size=1m") == 0;
    }
    ~SmallStick() { detach(); }
    Q_DISABLE_COPY(SmallStick)

    void detach()
    {
        if (mounted)
            ::umount2(qUtf8Printable(path), MNT_DETACH);
        mounted = false;
    }

    /// Writes the file, and another one that leaves only @p bytes.
    void fill(const QByteArray &content, qint64 bytes) const
    {
        writeFile(path + '/' + configName, content);
        struct statvfs system = {};
        ::statvfs(qUtf8Printable(path), &system);
        writeFile(path + "/filler",
                  QByteArray(int(qint64(system.f_bavail * system.f_bsize) - bytes), 'x'));
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
bool live(TestUnit &unit, const QString &stick, const QString &directories,
          const faults::Judge &judge, bool likeFat = true)
{
    unit.headUnit().setBeforeCall([&judge](const bench::Call &) { judge(nullptr); });
    faults::watch(directories.toStdString(), judge, likeFat);
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

bool tellsOfFailedRewrite(const Warnings &warnings)
{
    return !warnings.texts().filter(configName + ": not rewritten").isEmpty();
}

qsizetype descriptorCount()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

/// What this process has in memory, in KiB.
qint64 residentMemory()
{
    return readFile("/proc/self/statm").split(' ')[1].toLongLong() * sysconf(_SC_PAGESIZE) / 1024;
}

QByteArray numbered(int count, const QByteArray &before, const QByteArray &after)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += before + QByteArray::number(i + 1000000) + after;
    return text;
}

} // namespace

Q_DECLARE_METATYPE(Pull)

/// Cuts, failing storage, full and pulled sticks: what a production line does to the module.
class TestFaults : public QObject
{
    Q_OBJECT

private slots:
    void everyCut_data();
    void everyCut();
    void everyError_data();
    void everyError();
    void fullStick_data();
    void fullStick();
    void pulledAtEveryStep_data();
    void pulledAtEveryStep();
    void leftover_data();
    void leftover();
    void manyLives_data();
    void manyLives();
    void limits_data();
    void limits();
};

void TestFaults::everyCut_data()
{
    QTest::addColumn<bool>("likeFat");
    QTest::addColumn<int>("units"); // that are cut, one after the other
    QTest::newRow("one unit, stick with FAT") << true << 1;
    QTest::newRow("one unit, stick with unnamed temporary files") << false << 1;
    QTest::newRow("two units, stick with FAT") << true << 2;
    QTest::newRow("two units, stick with unnamed temporary files") << false << 2;
}

void TestFaults::everyCut()
{
    QFETCH(bool, likeFat);
    QFETCH(int, units);
    Figures figures;
    const int lost = cutAtEveryPoint(Line(likeFat), units, step(units == 1 ? 7 : 18), figures);
    figures.report(QString("%1 duplicates, %2 unreadable files, %3 serials lost")
                       .arg(figures.count(duplicate))
                       .arg(figures.count(unreadable))
                       .arg(lost));
}

void TestFaults::everyError_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("persists");
    QTest::newRow("EIO") << int(Verdict::Fail) << EIO << false;
    QTest::newRow("ENOSPC") << int(Verdict::Fail) << ENOSPC << false;
    QTest::newRow("EROFS") << int(Verdict::Fail) << EROFS << false;
    QTest::newRow("ENODEV") << int(Verdict::Fail) << ENODEV << false;
    QTest::newRow("short") << int(Verdict::Short) << 0 << false;
    QTest::newRow("short, then ENOSPC") << int(Verdict::Short) << ENOSPC << true;
    QTest::newRow("short, then EIO") << int(Verdict::Short) << EIO << true;
    QTest::newRow("EIO from there on") << int(Verdict::Fail) << EIO << true;
    QTest::newRow("ENODEV from there on") << int(Verdict::Fail) << ENODEV << true;
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
            const QByteArray name(call);
            if (number == point)
                return {Verdict::Fault(fault), error};
            if (number > point && persists
                && (fault == Verdict::Fail || name == "write" || name == "read"))
                return {Verdict::Fail, error};
            return {};
        };
        const bool ended = live(unit, stick, stick + ':' + folder.path(), judge, likeFat != 0);
        if (count < point) {
            if (likeFat-- == 0)
                break;
            point = 1 - step(9);
            continue;
        }
        figures.begin(QString("call %1").arg(point));
        figures.demand(ended, "no end");
        const std::optional<Taken> taken = takenFrom(readFile(stick + '/' + configName));
        figures.demand(taken.has_value(), "the file is neither old nor new");
        if (!taken)
            continue;
        const int sn = serialNumber(unit.stored(bench::Area::Production, "SN"));
        const int sk = serialNumber(unit.stored(bench::Area::Production, "SK"));
        const bool stillInPool = sn >= taken->sn || sk >= taken->sk;
        figures.demand(!stillInPool || persists, "a passing error keeps the serial in the pool");
        figures.demand(!stillInPool || tellsOfFailedRewrite(warnings), "no word in the log");
        kept += stillInPool ? 1 : 0;
    }
    figures.report(QString("%1 kept a stored serial in the pool, with a warning").arg(kept));
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
    const QByteArrayList whole = {before, productionFile(1, 0, poolBytes / 20),
                                  productionFile(1, 1, poolBytes / 20)};
    int rewritten = 0;
    for (int left = 0; left <= 64; left += isExhaustive() || left < 8 ? 4 : 28) {
        TestUnit unit;
        const QTemporaryDir folder;
        const SmallStick stick(folder.filePath("stick"));
        QVERIFY(stick.mounted);
        stick.fill(before, left * 1024);
        const Warnings warnings;
        const auto file = [&] { return readFile(stick.path + '/' + configName); };
        // A second rewrite would mend what the first one spoiled.
        std::atomic<bool> alwaysWhole{true};
        const auto onCall = [&](const char *) -> Verdict {
            if (!whole.contains(file()))
                alwaysWhole = false;
            return {};
        };
        figures.begin(QString("%1 KiB left").arg(left));
        figures.demand(live(unit, stick.path, {}, onCall), "no end");
        figures.demand(alwaysWhole && whole.contains(file()), "the file is neither old nor new");
        const bool kept = file() == before;
        figures.demand(!kept || tellsOfFailedRewrite(warnings), "no word in the log");
        rewritten += kept ? 0 : 1;
    }
    figures.report(QString("%1 rewritten").arg(rewritten));
}

void TestFaults::pulledAtEveryStep_data()
{
    QTest::addColumn<Pull>("pull");
    QTest::addColumn<bool>("reportedAtOnce"); // or after the pass
    QTest::newRow("mount point left, reported at once") << Pull::Folder << true;
    QTest::newRow("mount point left, reported late") << Pull::Folder << false;
    QTest::newRow("mount point gone, reported at once") << Pull::FolderAndMountPoint << true;
    QTest::newRow("mount point gone, reported late") << Pull::FolderAndMountPoint << false;
    QTest::newRow("real mount, reported at once") << Pull::Mount << true;
    QTest::newRow("real mount, reported late") << Pull::Mount << false;
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
            if (reportedAtOnce)
                unit.unplugFromHook(path);
            lastStep.start();
            return {};
        };
        const bool ended = live(unit, path, path, onStep);
        if (count < point)
            break;
        slowest = std::max(slowest, lastStep.elapsed());
        figures.begin(QString("step %1").arg(point));
        figures.demand(ended, "no end");
        figures.demand(QFileInfo::exists(path) == (pull != Pull::FolderAndMountPoint)
                           && QDir(path).isEmpty(),
                       "something was created at the mount point");
        figures.demand(!DataSaveControl::productionMode, "production mode is still on");
        const QStringList popUps = unit.popUps();
        const int closing = popUps.count(closingPopUp);
        // A pass that finds nothing more on its stick may end by itself before the going is
        // reported.
        const bool byItself = popUps.filter(QRegularExpression("^8 ")).size() == 1;
        figures.demand(closing == 1 || (closing == 0 && byItself), popUps.join(" | "));
    }
    figures.demand(!isExhaustive() || slowest <= 2000, "slow to end");
    figures.report(QString("at most %1 ms from the pull to the end").arg(slowest));
}

void TestFaults::leftover_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("ahead"); // seconds
    const QByteArray ownProcess = QByteArray::number(QCoreApplication::applicationPid()) + '\n'
        + QCoreApplication::applicationName().toUtf8() + '\n' + QSysInfo::machineHostName().toUtf8()
        + '\n';
    const QByteArray foreign = "4711\nproduction-bench\nanother-host\n";
    const auto row = [](const char *name, const QByteArray &content,
                        const QString &entry = configName + ".lock",
                        int ahead = 0) { QTest::newRow(name) << content << entry << ahead; };
    row("empty", "");
    row("foreign host", foreign);
    row("garbage", QByteArray("\xff\x00garbage", 9));
    row("live process of the same name", ownProcess);
    row("time in the future", foreign, configName + ".lock", 86400);
    row("directory", "", configName + ".lock/below");
    row("temporary copy", "half of a pool", configName + ".AbCdEf");
}

/// What another unit left on the stick neither delays the pass nor is lost.
void TestFaults::leftover()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, entry);
    QFETCH(int, ahead);
    TestUnit unit;
    const QString stick = unit.makeStick(productionFile());
    const QString path = stick + '/' + entry;
    QVERIFY(QDir().mkpath(QFileInfo(path).path()) && writeFile(path, content));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite)
            && file.setFileTime(QDateTime::currentDateTime().addSecs(ahead),
                                QFileDevice::FileModificationTime));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(unit.runPass(stick));
    const qint64 duration = timer.elapsed();
    qInfo("%s: the pass took %lld ms", QTest::currentDataTag(), duration);
    QVERIFY(duration < (isExhaustive() ? 1000 : hangLimit));
    QCOMPARE(readFile(stick + '/' + configName), productionFile(1, 1));
    const bool isLock = entry.contains(".lock");
    QCOMPARE(QFileInfo::exists(stick + '/' + configName + ".lock"), false);
    QCOMPARE(readFile(path), isLock ? QByteArray() : content);
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
    const int threads = threadCount();
    qsizetype descriptors = 0;
    qint64 halfwayMemory = 0;
    Figures figures;
    for (int life = 0; life < lives; ++life) {
        QTRY_COMPARE(threadCount(), threads);
        if (life == 3)
            descriptors = descriptorCount();
        if (life == lives / 2)
            halfwayMemory = residentMemory();
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
        figures.begin(QString("life %1, moment %2").arg(life).arg(moment));
        figures.demand(live(unit, stick, stick, onStep), "no end");
        figures.demand(ends == 1 && finished <= 1 && (finished == 1 || applicationEnds),
                       QString("%1 ends, %2 times finished").arg(ends).arg(finished));
        figures.demand(!DataSaveControl::productionMode || applicationEnds,
                       "production mode is still on");
    }
    const qint64 growth = residentMemory() - halfwayMemory;
    QTRY_COMPARE(threadCount(), threads);
    QCOMPARE(descriptorCount(), descriptors);
    figures.demand(!isExhaustive() || isSanitized || growth <= 1024, "memory grows");
    figures.report(QString("%1 KiB more memory after the second half").arg(growth));
}

void TestFaults::limits_data()
{
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<int>("entries");
    const auto row = [](const char *name, const QByteArray &begin, int entries = poolSize) {
        QTest::newRow(name) << begin << entries;
    };
    row("line of a million characters", "[A]\r\nkey=" + QByteArray(1000000, 'x') + "\r\n\r\n");
    row("10,000 sections", numbered(10000, "[A", "]\r\nkey=1\r\n\r\n"));
    row("100,000 entries", "", 100000);
    if (!isExhaustive())
        return;
    row("100,000 sections", numbered(100000, "[A", "]\r\nkey=1\r\n\r\n"));
    row("a million entries", "", 1000000);
    const QByteArray value = '=' + QByteArray(1000, 'x') + "\r\n";
    row("100 MB", "[A]\r\n" + numbered(100000, "key", value) + "\r\n");
}

/// Large files take their time and memory, and are rewritten like any other.
void TestFaults::limits()
{
    QFETCH(QByteArray, begin);
    QFETCH(int, entries);
    const auto fileWithout = [&](int taken) {
        return begin + "[SN]\r\nmode=1\r\nstartwith=S\r\n" + pool("S", taken, entries);
    };
    TestUnit unit;
    const QString stick = unit.makeStick(fileWithout(0));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(unit.runPass(stick));
    qInfo("%s: %lld ms", QTest::currentDataTag(), timer.elapsed());
    QCOMPARE(unit.stored(bench::Area::Production, "SN").toString(), "S0000000");
    QVERIFY(readFile(stick + '/' + configName) == fileWithout(1));
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

    qputenv("ASAN_OPTIONS",
            qgetenv("ASAN_OPTIONS") + ":verify_asan_link_order=0"); // of the benches
    if (isExhaustive())
        qputenv("QTEST_FUNCTION_TIMEOUT", "7200000"); // ms
    QLoggingCategory::setFilterRules("default.debug=false");
    const QCoreApplication application(argc, argv);
    TestFaults test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_faults.moc"
