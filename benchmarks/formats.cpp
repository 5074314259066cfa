#include "rows.h"

#include "files.h"
#include "meter.h"
#include "plainformat.h"
#include "reader.h"
#include "writer.h"

#include <QFile>
#include <QSaveFile>

using production::KeyComments;
using production::SettingsMap;

namespace {

using Read = bool(QIODevice &, SettingsMap &, KeyComments &);
using Write = bool(QIODevice &, const SettingsMap &, const KeyComments &);

/// What a file holds, and whether it could be read.
struct Content
{
    explicit Content(const QString &path, Read read = production::readSettings)
    {
        QFile file(path);
        readable = file.open(QIODevice::ReadOnly) && read(file, map, comments);
    }

    bool operator==(const Content &other) const
    {
        return readable == other.readable && map == other.map && comments == other.comments;
    }

    SettingsMap map;
    KeyComments comments;
    bool readable;
};

FileGenerator commentedFiles(const benchmark::State &state)
{
    return FileGenerator(int(state.range(0)), SerialLine::Bare, SerialComments::OneInTen);
}

void measureReader(benchmark::State &state, Read read)
{
    FileGenerator files = commentedFiles(state);
    const QString path = files.makeFile();
    {
        Meter meter(state);
        for (auto _ : state) {
            QFile file(path);
            file.open(QIODevice::ReadOnly);
            SettingsMap map;
            KeyComments comments;
            meter.measure([&] { read(file, map, comments); });
        }
    }
    if (!(Content(path, read) == Content(path, plainformat::read)))
        state.SkipWithError("the reader's result differs from the plain reader's");
}

/// Writes as QSettings has it done, up to the moment in which the file would take its place.
bool writeTo(QSaveFile &file, const Content &content, Write write)
{
    return write(file, content.map, content.comments) && file.flush();
}

QByteArray writtenFile(const QString &path, const Content &content, Write write)
{
    QSaveFile file(path);
    file.open(QIODevice::WriteOnly);
    writeTo(file, content, write);
    file.commit();
    return contentOf(path);
}

void measureWriter(benchmark::State &state, Write write)
{
    FileGenerator files = commentedFiles(state);
    const QString path = files.makeFile();
    const Content content(path);
    {
        Meter meter(state);
        for (auto _ : state) {
            QSaveFile file(path);
            file.open(QIODevice::WriteOnly);
            meter.measure([&] { writeTo(file, content, write); });
        }
    }
    if (writtenFile(path, content, write) != writtenFile(path, content, plainformat::write))
        state.SkipWithError("the writer's result differs from the plain writer's");
}

} // namespace

const Row rows::reader = {"reader", "reader", [](benchmark::State &state) {
                              measureReader(state, production::readSettings);
                          }};
const Row rows::plainReader = {
    "reader-plain", "reader, plainly written",
    [](benchmark::State &state) { measureReader(state, plainformat::read); }};
const Row rows::writer = {"writer", "writer", [](benchmark::State &state) {
                              measureWriter(state, production::writeSettings);
                          }};
const Row rows::plainWriter = {
    "writer-plain", "writer, plainly written",
    [](benchmark::State &state) { measureWriter(state, plainformat::write); }};
