#include "unitdata.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryFile>
#include <QUrl>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace bench {

namespace {

const QLatin1String fileName("unit.ini");
const QLatin1String temporarySuffix(".new");

QString systemError()
{
    return qt_error_string(errno);
}

/// The value as JSON, which keeps text, numbers, bools and lists apart.
QString toJson(const QVariant &value)
{
    const QJsonDocument document(QJsonArray{QJsonValue::fromVariant(value)});
    const QByteArray array = document.toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

QVariant fromJson(const QString &text, bool *ok)
{
    const QByteArray array = "[" + text.toUtf8() + "]";
    const QJsonArray values = QJsonDocument::fromJson(array).array();
    *ok = values.size() == 1;
    return *ok ? values.first().toVariant() : QVariant();
}

/// A whole number in the one form in which it is written; everything else is text.
std::optional<qlonglong> plainNumber(const QString &text)
{
    bool ok = false;
    const qlonglong number = text.toLongLong(&ok);
    if (!ok || QString::number(number) != text)
        return std::nullopt;
    return number;
}

bool hasControlCharacter(const QString &text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.category() == QChar::Other_Control; });
}

/// Whether @p text, written without quotes, is read as the same text.
bool isPlainText(const QString &text)
{
    return !text.isEmpty() && text == text.trimmed() && !hasControlCharacter(text)
        && !text.startsWith(QLatin1Char('"')) && !text.startsWith(QLatin1Char('['))
        && text != QLatin1String("true") && text != QLatin1String("false") && !plainNumber(text);
}

QString valueToText(const QVariant &value)
{
    const bool isText = value.userType() == QMetaType::QString;
    return isText && isPlainText(value.toString()) ? value.toString() : toJson(value);
}

QVariant valueFromText(const QString &text, bool *ok)
{
    *ok = true;
    if (text.startsWith(QLatin1Char('"')) || text.startsWith(QLatin1Char('[')))
        return fromJson(text, ok);
    if (text == QLatin1String("true") || text == QLatin1String("false"))
        return text == QLatin1String("true");
    if (const auto number = plainNumber(text))
        return *number;
    return text;
}

QByteArray keyToText(const QString &key)
{
    return QUrl::toPercentEncoding(key, "()/+,:@!");
}

/**
 * Replaces the file at @p path by @p content, for good: when this returns true, the new content
 * is on the disk; when it returns false, or the process dies, the old file is untouched.
 *
 * Not QSaveFile, whose commit() goes on when the last of its buffered data cannot be written.
 */
bool replaceFile(const QString &path, const QByteArray &content, QString *error)
{
    QFile file(path + temporarySuffix);
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)
        && file.write(content) == content.size();
    if (!written) {
        *error = file.errorString();
        file.remove();
        return false;
    }
    const bool replaced = ::fsync(file.handle()) == 0
        && ::rename(QFile::encodeName(file.fileName()).constData(),
                    QFile::encodeName(path).constData())
            == 0;
    if (!replaced) {
        *error = systemError();
        file.remove();
    }
    return replaced;
}

} // namespace

QString areaName(Area area)
{
    switch (area) {
    case Area::Factory:
        return QStringLiteral("Factory");
    case Area::Runtime:
        return QStringLiteral("Runtime");
    case Area::Production:
        return QStringLiteral("Production");
    case Area::User:
        return QStringLiteral("User");
    }
    Q_UNREACHABLE();
}

std::optional<Area> areaFromName(const QString &name)
{
    for (Area area : areas) {
        if (areaName(area) == name)
            return area;
    }
    return std::nullopt;
}

UnitData::~UnitData()
{
    if (m_lock >= 0)
        ::close(m_lock);
}

void UnitData::setDirectory(const QString &directory)
{
    m_directory = QDir(directory).absolutePath();
    m_path = m_directory + QLatin1Char('/') + fileName;
}

bool UnitData::open(const QString &directory, QString *error)
{
    setDirectory(directory);
    if (!QDir().mkpath(m_directory)) {
        *error = cannotBeCreated();
        return false;
    }
    // A unit that cannot store is found out now and not in the middle of a pass.
    return lock(error) && read(error) && store({}, error);
}

bool UnitData::canBeOpened(const QString &directory, QString *error)
{
    UnitData data;
    data.setDirectory(directory);
    QString existing = data.m_directory;
    while (!QFileInfo::exists(existing))
        existing = QFileInfo(existing).path();
    const bool isNew = existing != data.m_directory;
    if (!QFileInfo(existing).isDir()) {
        *error = data.cannotBeCreated();
        return false;
    }
    if (!isNew && (!data.lock(error) || !data.read(error)))
        return false;
    // Only a try tells: the kernel's own folders take no file from root either.
    QTemporaryFile file(existing + QLatin1Char('/') + fileName + temporarySuffix);
    if (file.open())
        return true;
    *error = isNew ? data.cannotBeCreated() : data.cannotBeWritten(file.errorString());
    return false;
}

QString UnitData::cannotBeCreated() const
{
    return tr("The unit directory %1 cannot be created; name a folder that can.").arg(m_directory);
}

QString UnitData::cannotBeWritten(const QString &reason) const
{
    return tr("The unit's data %1 cannot be written: %2; make room and see to the rights, or name "
              "another unit directory.")
        .arg(m_path, reason);
}

/// A unit without data is a new one.
bool UnitData::read(QString *error)
{
    QFile file(m_path);
    if (!file.exists())
        return true;
    if (file.open(QIODevice::ReadOnly))
        return parse(file.readAll(), error);
    *error = tr("The unit's data %1 cannot be read: %2; see to the rights, or name another unit "
                "directory.")
                 .arg(m_path, file.errorString());
    return false;
}

/**
 * A lock on the directory itself: it leaves no file behind and the kernel drops it with the
 * process, however that ends.
 */
bool UnitData::lock(QString *error)
{
    m_lock = ::open(QFile::encodeName(m_directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_lock < 0) {
        *error = tr("The unit directory %1 cannot be opened: %2; see to the rights, or name "
                    "another.")
                     .arg(m_directory, systemError());
        return false;
    }
    if (::flock(m_lock, LOCK_EX | LOCK_NB) == 0)
        return true;
    *error = tr("The unit directory %1 is in use by another bench; end that one or name another "
                "directory.")
                 .arg(m_directory);
    return false;
}

bool UnitData::store(const QVector<UnitValue> &values, QString *error)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    Sections changed = m_sections;
    for (const UnitValue &value : values)
        changed[size_t(value.area)].insert(value.key, value.value);

    QString reason;
    if (!replaceFile(m_path, toText(changed), &reason)) {
        *error = cannotBeWritten(reason);
        return false;
    }
    ::fsync(m_lock); // the new name in the directory; where that fails, the old file is still whole
    m_sections = changed;
    return true;
}

QVariant UnitData::value(Area area, const QString &key, const QVariant &defaultValue) const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_sections[size_t(area)].value(key, defaultValue);
}

QVector<UnitValue> UnitData::values() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    QVector<UnitValue> values;
    for (Area area : areas) {
        const auto &section = m_sections[size_t(area)];
        for (auto it = section.begin(); it != section.end(); ++it)
            values.append({area, it.key(), it.value()});
    }
    return values;
}

QByteArray UnitData::toText(const Sections &sections)
{
    QByteArray text;
    for (Area area : areas) {
        text += '[' + areaName(area).toUtf8() + "]\n";
        const auto &section = sections[size_t(area)];
        for (auto it = section.begin(); it != section.end(); ++it)
            text += keyToText(it.key()) + '=' + valueToText(it.value()).toUtf8() + '\n';
        text += '\n';
    }
    return text;
}

bool UnitData::parse(const QByteArray &text, QString *error)
{
    std::optional<Area> area;
    const QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines.at(i).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char(';'))
            || line.startsWith(QLatin1Char('#')))
            continue;

        bool ok = true;
        const int separator = line.indexOf(QLatin1Char('='));
        if (line.startsWith(QLatin1Char('['))) {
            area = line.endsWith(QLatin1Char(']')) ? areaFromName(line.mid(1, line.size() - 2))
                                                   : std::nullopt;
            ok = area.has_value();
        } else if (!area || separator < 1) {
            ok = false;
        } else {
            const QString key = QUrl::fromPercentEncoding(line.left(separator).toUtf8());
            m_sections[size_t(*area)].insert(key,
                                             valueFromText(line.mid(separator + 1).trimmed(), &ok));
        }
        if (!ok) {
            *error = tr("%1:%2: not a line of a unit's data (mend it, or remove the file for a new "
                        "unit): %3")
                         .arg(m_path, QString::number(i + 1), line);
            return false;
        }
    }
    return true;
}

} // namespace bench
