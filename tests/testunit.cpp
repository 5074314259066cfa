#include "testunit.h"

#include "configurationfiles.h"
#include "productioncontrol.h"
#include "productionobject.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPointer>
#include <QProcess>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int patience = 30000; // ms; only ever spent by a test that fails

QPointer<ProductionControl> control;

std::mutex warningsMutex;
QStringList warnings;

void takeWarning(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    const std::lock_guard<std::mutex> lock(warningsMutex);
    if (type == QtWarningMsg)
        warnings << text;
}

template <typename Condition>
bool waitFor(Condition condition)
{
    const QDeadlineTimer deadline(patience);
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::yieldCurrentThread();
    }
    return condition();
}

} // namespace

TestUnit::Hand::Hand(TestUnit &unit)
    : unit(unit)
{
}

bool TestUnit::Hand::event(QEvent *event)
{
    if (event->type() != QEvent::User)
        return QObject::event(event);
    std::unique_lock<std::mutex> lock(unit.mutex);
    const QString stick = unit.toUnplug;
    lock.unlock(); // unplugging is recorded
    unit.unplug(stick);
    lock.lock();
    unit.toUnplug.clear();
    unit.unplugged.notify_one();
    return true;
}

TestUnit::TestUnit(bench::HeadUnitConfig config)
{
    createUnit(std::move(config));
}

TestUnit::~TestUnit()
{
    delete control;
    waitForEnd();
}

void TestUnit::createUnit(bench::HeadUnitConfig config)
{
    if (config.unitDirectory.isEmpty())
        config.unitDirectory =
            folder.filePath(QStringLiteral("unit-%1").arg(QString::number(++unitNumber)));
    QString error;
    unit = bench::HeadUnit::create(config, &error);
    if (!unit)
        qFatal("%s", qUtf8Printable(error));
    unit->observe([this](const bench::Call &call) {
        const std::lock_guard<std::mutex> lock(mutex);
        recorded.append(call);
    });
}

void TestUnit::replaceUnit(bench::HeadUnitConfig config)
{
    Q_ASSERT(!moduleExists());
    unit.reset();
    recorded.clear();
    createUnit(std::move(config));
}

QString TestUnit::makeStick(const QByteArray &content, const QString &fileName,
                            const QString &stickName)
{
    const QString stick = folder.filePath(stickName);
    QDir().mkpath(stick);
    if (!writeFile(production::filePath(stick, fileName), content))
        qFatal("cannot write a stick");
    return stick;
}

void TestUnit::plug(const QString &stick)
{
    QString error;
    if (!unit->plug(stick, &error))
        qFatal("%s", qUtf8Printable(error));
}

void TestUnit::unplug(const QString &stick)
{
    QString error;
    if (!unit->unplug(stick, &error))
        qFatal("%s", qUtf8Printable(error));
}

void TestUnit::unplugFromHook(const QString &stick)
{
    if (QThread::currentThread() == hand.thread())
        return unplug(stick);
    std::unique_lock<std::mutex> lock(mutex);
    toUnplug = stick;
    QCoreApplication::postEvent(&hand, new QEvent(QEvent::User));
    unplugged.wait(lock, [this] { return toUnplug.isEmpty(); });
}

ProductionControl *TestUnit::startModule()
{
    control = ProductionControl::getInstance();
    unit->startAllModules();
    return control;
}

bool TestUnit::waitForPass()
{
    ProductionObject *const worker = ProductionObject::ins;
    if (worker == nullptr)
        return waitForEnd();
    // Deleted behind start() in the same queue, so when that has returned. A lambda queued there
    // would do, were it not for the thread sanitizer, which cannot see how Qt hands it over.
    const QPointer<QObject> marker = new QObject;
    QEventLoop loop;
    QObject::connect(marker, SIGNAL(destroyed(QObject *)), &loop, SLOT(quit()));
    QObject::connect(worker, SIGNAL(destroyed(QObject *)), &loop, SLOT(quit()));
    QTimer::singleShot(patience, &loop, SLOT(quit()));
    marker->moveToThread(worker->thread());
    marker->deleteLater();
    loop.exec();
    QCoreApplication::processEvents();
    if (!moduleExists())
        delete marker;
    return marker.isNull();
}

bool TestUnit::waitForEnd()
{
    return waitFor([this] { return !moduleExists(); });
}

bool TestUnit::runPass(const QString &stick)
{
    plug(stick);
    startModule();
    return waitForPass();
}

bool TestUnit::moduleExists() const
{
    return !control.isNull() || ProductionObject::ins != nullptr;
}

QVector<bench::Call> TestUnit::calls() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    QVector<bench::Call> own = recorded;
    own.detach(); // Qt shares the records by a count that the thread sanitizer cannot follow.
    return own;
}

QVector<bench::Call> TestUnit::calls(QLatin1String name) const
{
    QVector<bench::Call> named;
    const QVector<bench::Call> all = calls();
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(named),
                 [&](const bench::Call &call) { return call.name == name; });
    return named;
}

QStringList TestUnit::popUps() const
{
    QStringList texts;
    const QVector<bench::Call> shown = calls(bench::calls::showMessage);
    for (const bench::Call &call : shown)
        texts << call.args[1].toString() + ' ' + call.args[0].toString();
    return texts;
}

QVariant TestUnit::stored(bench::Area area, const QString &key) const
{
    return unit->data().value(area, key, QVariant());
}

QString plugFile(TestUnit &unit, const QByteArray &content)
{
    const QString stick = unit.makeStick(content);
    unit.plug(stick);
    return stick;
}

QString callText(const bench::Call &call)
{
    const QJsonDocument arguments(QJsonArray::fromVariantList(call.args));
    QString text = QString::fromUtf8(arguments.toJson(QJsonDocument::Compact)).replace('"', '\'');
    return call.name.section("::", -1) + '(' + text.mid(1, text.size() - 2) + ')';
}

Warnings::Warnings()
    : previous(qInstallMessageHandler(takeWarning))
{
    const std::lock_guard<std::mutex> lock(warningsMutex);
    warnings.clear();
}

Warnings::~Warnings()
{
    qInstallMessageHandler(previous);
}

QStringList Warnings::texts() const
{
    const std::lock_guard<std::mutex> lock(warningsMutex);
    return warnings;
}

int threadCount()
{
    return int(QDir("/proc/self/task").count()) - 2; // without "." and ".."
}

QByteArray withLineEnds(const QString &text)
{
    return text.toUtf8().replace("\n", "\r\n");
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
}

void addTextCases(const QString &path)
{
    QTest::addColumn<QStringList>("parts");
    const QString text = '\n' + QString::fromUtf8(readFile(path));
    const QStringList cases = text.split("\n=== ", Qt::SkipEmptyParts);
    if (cases.isEmpty())
        qFatal("no cases in '%s'", qUtf8Printable(path));
    for (const QString &textCase : cases) {
        QString content = textCase.section('\n', 1);
        content.replace("␣", " ");
        content.replace("␍", "\r");
        QTest::newRow(qUtf8Printable(textCase.section('\n', 0, 0))) << content.split("---\n");
    }
}

Outcome runProgram(const QString &program, const QString &folder, const QString &arguments)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, arguments.split(' ', Qt::SkipEmptyParts));
    process.setStandardInputFile(QProcess::nullDevice());
    if (!process.waitForFinished(2 * patience) || process.exitStatus() != QProcess::NormalExit)
        return {-1, {}, process.errorString().toUtf8()};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}
