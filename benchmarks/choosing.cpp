#include "rows.h"

#include "files.h"
#include "groups.h"
#include "meter.h"
#include "reader.h"
#include "serials.h"

#include <QSettings>

#include <algorithm>

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

QSettings::Format formatToRead()
{
    return QSettings::registerFormat(QStringLiteral("ini"), read, refuseToWrite, Qt::CaseSensitive);
}

/// Sorts what childKeys() sorts, which is in order already.
void sorting(benchmark::State &state)
{
    FileGenerator files(int(state.range(0)));
    QSettings settings(files.makeFile(), formatToRead());
    settings.beginGroup(production::serial::snGroup);
    QStringList keys = settings.childKeys();
    Meter meter(state);
    for (auto _ : state)
        meter.measure([&] { std::sort(keys.begin(), keys.end()); });
}

/// Measures @p work on a file that QSettings holds open.
template <typename Work>
void measureOpen(benchmark::State &state, Work work)
{
    FileGenerator files(int(state.range(0)));
    QSettings settings(files.makeFile(), formatToRead());
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

const Row rows::sorting = {"sorting", "sorting the keys, std::sort()", ::sorting};
const Row rows::childKeys = {"child-keys", "childKeys() alone", ::childKeys};
const Row rows::choosing = {"choosing", "choosing, childKeys() included", ::choosing};
