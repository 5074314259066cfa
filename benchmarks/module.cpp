#include "rows.h"

#include "bench/headunit.h"
#include "files.h"
#include "meter.h"

#include <productioncontrol.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QLibrary>
#include <QTemporaryDir>

#include <atomic>
#include <memory>

namespace {

/// The module's library, loaded as the head unit loads it.
ProductionControl *moduleInstance()
{
    QLibrary library(QStringLiteral(PRODUCTION_LIBRARY));
    const auto getInstance = reinterpret_cast<ProductionControl *(*)()>(
        library.resolve("_ZN17ProductionControl11getInstanceEv"));
    if (getInstance == nullptr)
        qFatal("%s", qUtf8Printable(library.errorString()));
    return getInstance();
}

std::unique_ptr<bench::HeadUnit> makeUnit(const QTemporaryDir &directory)
{
    bench::HeadUnitConfig config;
    config.unitDirectory = directory.path();
    QString error;
    auto unit = bench::HeadUnit::create(config, &error);
    if (!unit)
        qFatal("%s", qUtf8Printable(error));
    return unit;
}

/// Everything that is queued, the deletion of objects included.
void handleEvents()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// "sync" runs three times after the rewrite of the pool and after the completion marker.
constexpr int commandsOfPass = 6;

/// From the start of all modules until the control object is gone; the stick is pulled at the end.
void runPass(bench::HeadUnit &unit, const QString &stick)
{
    QEventLoop untilGone;
    std::atomic<int> commands{0};
    interception::setCommandHook([&] {
        if (++commands != commandsOfPass)
            return;
        QMetaObject::invokeMethod(&untilGone, [&] {
            QString ignored;
            unit.unplug(stick, &ignored);
        });
    });
    ProductionControl *const control = moduleInstance();
    QObject::connect(control, &QObject::destroyed, &untilGone, &QEventLoop::quit);
    unit.startAllModules();
    untilGone.exec();
    handleEvents();
    interception::setCommandHook({});
}

void pass(benchmark::State &state)
{
    FileGenerator files(int(state.range(0)));
    Meter meter(state);
    for (auto _ : state) {
        const QTemporaryDir unitDirectory;
        const auto unit = makeUnit(unitDirectory);
        const QString file = files.makeFile();
        const QString stick = QFileInfo(file).path();
        QString error;
        unit->plug(stick, &error);
        meter.measure([&] { runPass(*unit, stick); });
        const QVariant taken =
            unit->data().value(bench::Area::Production, QStringLiteral("SN"), {});
        if (taken.toByteArray() != firstSerial() || contentOf(file).contains(firstSerial()))
            state.SkipWithError("the first serial has not gone from the stick to the unit");
    }
}

/// Needs a process in which the library is not loaded yet, so there is one iteration.
void boot(benchmark::State &state)
{
    const QTemporaryDir unitDirectory;
    const auto unit = makeUnit(unitDirectory);
    Meter meter(state);
    for (auto _ : state) {
        bool gone = false;
        meter.measure([&] {
            QObject::connect(moduleInstance(), &QObject::destroyed, [&] { gone = true; });
            unit->startAllModules();
            handleEvents();
        });
        if (!gone)
            state.SkipWithError("the module has found something to do");
    }
}

} // namespace

const Row rows::pass = {"pass", "whole pass through the module", ::pass};
const Row rows::boot = {"boot", "normal boot", ::boot};
