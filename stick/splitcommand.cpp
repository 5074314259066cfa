#include "readablefile.h"
#include "split.h"
#include "texts.h"

#include <configurationfiles.h>
#include <writer.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace production;

namespace stick {

namespace {

QString stickName(size_t index)
{
    return QStringLiteral("stick-%1").arg(QString::number(index + 1));
}

/// A unit must find the new files, whatever the source is called.
QString targetName(const QString &source)
{
    const QString name = QFileInfo(source).fileName();
    return configurationFileNames().contains(name) ? name : QStringLiteral("production.ini");
}

/**
 * Writes the new sticks:
 *  1. refuse when one of them is there already;
 *  2. write all of them to a temporary folder beside their places;
 *  3. rename them into place.
 *
 * What fails in 2 leaves nothing behind; a failed renaming takes back those before it.
 */
class StickWriter
{
public:
    StickWriter(const QString &folder, const QString &fileName)
        : m_folder(folder)
        , m_fileName(fileName)
    {
    }

    /// The path of a stick's folder, and of its file.
    QString stickPath(size_t index) const { return m_folder.filePath(stickName(index)); }
    QString filePath(size_t index) const
    {
        return production::filePath(stickPath(index), m_fileName);
    }

    bool write(const std::vector<SettingsMap> &files, const KeyComments &comments, QString &error)
    {
        for (size_t i = 0; i < files.size(); ++i) {
            if (QFileInfo::exists(stickPath(i)) || QFileInfo(stickPath(i)).isSymLink()) {
                error = Texts::tr("%1: is there already, nothing is overwritten").arg(stickPath(i));
                return false;
            }
        }
        if (!m_folder.mkpath(QStringLiteral("."))) {
            error = Texts::tr("%1: cannot be made").arg(m_folder.path());
            return false;
        }
        const QTemporaryDir workshop(m_folder.filePath(QStringLiteral(".split-XXXXXX")));
        if (!workshop.isValid()) {
            error = Texts::tr("%1: %2").arg(m_folder.path(), workshop.errorString());
            return false;
        }
        for (size_t i = 0; i < files.size(); ++i) {
            if (!writeStick(workshop.filePath(stickName(i)), files[i], comments, error))
                return false;
        }
        return moveIntoPlace(QDir(workshop.path()), files.size(), error);
    }

private:
    bool writeStick(const QString &path, const SettingsMap &map, const KeyComments &comments,
                    QString &error)
    {
        QFile file(production::filePath(path, m_fileName));
        if (QDir().mkpath(path) && file.open(QIODevice::WriteOnly)
            && writeSettings(file, map, comments))
            return true;
        error = Texts::tr("%1: cannot be written: %2").arg(file.fileName(), file.errorString());
        return false;
    }

    bool moveIntoPlace(const QDir &workshop, size_t count, QString &error)
    {
        for (size_t i = 0; i < count; ++i) {
            if (QFile::rename(workshop.filePath(stickName(i)), stickPath(i)))
                continue;
            error = Texts::tr("%1: cannot be made").arg(stickPath(i));
            while (i-- > 0)
                QDir(stickPath(i)).removeRecursively();
            return false;
        }
        return true;
    }

    QDir m_folder;
    QString m_fileName;
};

QString shares(const SettingsMap &map)
{
    QStringList texts;
    for (int group = 0; group < SerialGroupCount; ++group) {
        const QString name = serialGroup(group).name;
        const QString prefix = name + QLatin1Char('/');
        QStringList keys;
        for (auto it = map.lowerBound(prefix); it != map.cend() && it.key().startsWith(prefix);
             ++it) {
            if (it.key().indexOf(QLatin1Char('/'), prefix.size()) < 0)
                keys.append(it.key().mid(prefix.size()));
        }
        const QStringList entries = serialPool(serialGroup(group), keys);
        if (!entries.isEmpty())
            texts.append(Texts::tr("%1 %2 entries, %3 to %4")
                             .arg(name, QString::number(entries.size()), printable(entries.first()),
                                  printable(entries.last())));
    }
    return texts.join(QLatin1String("; "));
}

} // namespace

ExitCode runSplit(const Arguments &arguments, Console &console)
{
    const QString path = arguments.paths.first();
    StickWriter writer(arguments.into, targetName(path));
    console.showProgress(Texts::tr("splitting %1").arg(path));
    const ReadFile source = readLikeUnit(path, console);
    if (source.exitCode != NothingToReport)
        return source.exitCode;
    const ScannedFile scanned(source.bytes);
    QString error;
    const auto files = splitPools(source.map, poolsOf(scanned), arguments.sticks, error);
    if (!files || !writer.write(*files, source.comments, error)) {
        console.complain(files ? error : path + QLatin1String(": ") + error);
        return Failed;
    }
    for (size_t i = 0; i < files->size(); ++i)
        console.print(printable(writer.filePath(i)) + QLatin1String(": ") + shares((*files)[i]));
    return NothingToReport;
}

} // namespace stick
