#include "rows.h"

#include "files.h"
#include "groups.h"
#include "meter.h"
#include "reader.h"
#include "serials.h"

#include <QSettings>

namespace {

bool read(QIODevice &device, production::SettingsMap &map)
{
    production::KeyComments unused;
    return production::readSettings(device, map, unused);
}

bool refuseToWrite(QIODevice &, const production::SettingsMap &)
{
    return false;
}

/// Measures @p work on a file that QSettings holds open.
template <typename Work>
void measureOpen(benchmark::State &state, Work work)
{
    FileGenerator files(int(state.range(0)));
    const QSettings::Format format =
        QSettings::registerFormat(QStringLiteral("ini"), read, refuseToWrite, Qt::CaseSensitive);
    QSettings settings(files.makeFile(), format);
    Meter meter(state);
    for (auto _ : state)
        meter.measure([&] { work(settings); });
}

void childKeys(benchmark::State &state)
{
    measureOpen(state, [](QSettings &settings) {
        settings.beginGroup(production::serial::snGroup);
        benchmark::DoNotOptimize(settings.childKeys());
        settings.endGroup();
    });
}

void choosing(benchmark::State &state)
{
    measureOpen(state, [&](QSettings &settings) {
        if (chooseSerial(settings) != QString::fromLatin1(firstSerial()))
            state.SkipWithError("the serial chosen is not the first");
    });
}

} // namespace

const Row rows::childKeys = {"child-keys", "childKeys() alone", ::childKeys};
const Row rows::choosing = {"choosing", "choosing, childKeys() included", ::choosing};
