#include "rows.h"

#include "files.h"
#include "groups.h"
#include "meter.h"
#include "reader.h"
#include "serials.h"
#include "writer.h"

#include <QFile>
#include <QSettings>

#include <glib.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>
#include <unistd.h>

using production::KeyComments;
using production::SettingsMap;

namespace {

void prepareNothing(const QString &)
{
}

/// Each iteration takes the first serial of a fresh file, for which @p prepare may make ready.
template <typename Take>
void measureTaking(benchmark::State &state, SerialLine line, Take take,
                   void (*prepare)(const QString &) = prepareNothing)
{
    FileGenerator files(int(state.range(0)), line);
    QString path;
    {
        Meter meter(state);
        for (auto _ : state) {
            path = files.makeFile();
            prepare(path);
            meter.measure([&] { take(path); });
        }
    }
    const QByteArray left = contentOf(path);
    if (left.contains(firstSerial()) || left.count("\nHU") != state.range(0) - 1)
        state.SkipWithError("the file left behind is not the pool without its first serial");
}

void takeThroughSettings(const QString &path, QSettings::Format format)
{
    QSettings settings(path, format);
    const std::optional<QString> serial = chooseSerial(settings);
    if (!serial)
        return;
    settings.beginGroup(production::serial::snGroup);
    settings.remove(*serial);
    settings.endGroup();
    settings.sync();
}

KeyComments keyComments;

bool read(QIODevice &device, SettingsMap &map)
{
    return production::readSettings(device, map, keyComments);
}

bool write(QIODevice &device, const SettingsMap &map)
{
    return production::writeSettings(device, map, keyComments);
}

void takeOne(benchmark::State &state)
{
    const QSettings::Format format =
        QSettings::registerFormat(QStringLiteral("ini"), read, write, Qt::CaseSensitive);
    measureTaking(state, SerialLine::Bare,
                  [=](const QString &path) { takeThroughSettings(path, format); });
}

void takeOneIniFormat(benchmark::State &state)
{
    measureTaking(state, SerialLine::WithEqualsSign,
                  [](const QString &path) { takeThroughSettings(path, QSettings::IniFormat); });
}

// Qt's own machinery: what is read and written stands ready, so that only QSettings has work.
SettingsMap readyMap;
QByteArray readyText;

bool handOver(QIODevice &, SettingsMap &map)
{
    map.swap(readyMap);
    return true;
}

bool writeReady(QIODevice &device, const SettingsMap &)
{
    return device.write(readyText) == readyText.size();
}

void makeReady(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    readyMap.clear();
    read(file, readyMap);
    readyText = contentOf(path).replace(firstSerial() + "\r\n", "");
}

void takeOneQt(benchmark::State &state)
{
    const QSettings::Format format =
        QSettings::registerFormat(QStringLiteral("ini"), handOver, writeReady, Qt::CaseSensitive);
    measureTaking(
        state, SerialLine::Bare, [=](const QString &path) { takeThroughSettings(path, format); },
        makeReady);
}

/// One pass over the bytes and no regard for anything else that a file may hold.
void takeFromBytes(const QString &path)
{
    const QByteArray content = contentOf(path);
    const std::string_view text(content.constData(), size_t(content.size()));
    std::string_view smallest;
    for (size_t begin = text.find("HU0000"); begin < text.size();) {
        const size_t end = text.find('\n', begin) + 1;
        const std::string_view line = text.substr(begin, end - begin);
        if (smallest.empty() || line < smallest)
            smallest = line;
        begin = end;
    }

    const char *const after = smallest.data() + smallest.size();
    QFile file(path + QLatin1String(".new"));
    file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    file.write(text.data(), smallest.data() - text.data());
    file.write(after, text.data() + text.size() - after);
    ::fdatasync(file.handle());
    ::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(path).constData());
}

void takeOneBytes(benchmark::State &state)
{
    measureTaking(state, SerialLine::Bare, takeFromBytes);
}

bool isPoolEntry(const char *key, const char *const *prefixes, size_t length)
{
    return strlen(key) == length
        && (g_str_has_prefix(key, prefixes[0]) || g_str_has_prefix(key, prefixes[1]));
}

void takeWithGlib(const QString &path)
{
    const QByteArray fileName = QFile::encodeName(path);
    const std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)> file(g_key_file_new(),
                                                                      g_key_file_unref);
    if (!g_key_file_load_from_file(file.get(), fileName.constData(), G_KEY_FILE_KEEP_COMMENTS,
                                   nullptr))
        return;

    const char *const prefixes[] = {"HU0", "HU1"};
    const auto length = size_t(g_key_file_get_integer(file.get(), "SN", "length", nullptr));
    const std::unique_ptr<char *, decltype(&g_strfreev)> keys(
        g_key_file_get_keys(file.get(), "SN", nullptr, nullptr), g_strfreev);
    const char *smallest = nullptr;
    for (char **key = keys.get(); *key != nullptr; ++key) {
        if (isPoolEntry(*key, prefixes, length)
            && (smallest == nullptr || strcmp(*key, smallest) < 0))
            smallest = *key;
    }

    if (smallest != nullptr && g_key_file_remove_key(file.get(), "SN", smallest, nullptr))
        g_key_file_save_to_file(file.get(), fileName.constData(), nullptr);
}

void takeOneGlib(benchmark::State &state)
{
    measureTaking(state, SerialLine::WithEqualsSign, takeWithGlib);
}

} // namespace

const Row rows::takeOne = {"take-one", "take one", ::takeOne};
const Row rows::takeOneIniFormat = {"take-one-ini", "take one, QSettings::IniFormat",
                                    ::takeOneIniFormat};
const Row rows::takeOneGlib = {"take-one-glib", "take one, GLib's GKeyFile", ::takeOneGlib};
const Row rows::takeOneQt = {"take-one-qt", "take one, Qt's machinery alone", ::takeOneQt};
const Row rows::takeOneBytes = {"take-one-bytes", "take one, the bytes alone", ::takeOneBytes};
