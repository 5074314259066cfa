#pragma once

#include <QCoreApplication>
#include <QMap>
#include <QString>
#include <QVariant>
#include <QVector>

#include <array>
#include <mutex>
#include <optional>

namespace bench {

/// The kinds of persistent data that a unit keeps; each is a section of its file.
enum class Area { Factory, Runtime, Production, User };

inline constexpr std::array<Area, 4> areas{Area::Factory, Area::Runtime, Area::Production,
                                           Area::User};

QString areaName(Area area);
std::optional<Area> areaFromName(const QString &name);

/// One stored value of a unit.
struct UnitValue
{
    Area area;
    QString key;
    QVariant value;
};

/**
 * The persistent data of one unit: the file `unit.ini` in the unit's directory.
 *
 * Every store replaces the file as a whole, so that a power cut or a full disk leaves the old or
 * the new one. Thread-safe after open(). The directory belongs to this object, and to no other
 * process, until the object is destroyed.
 */
class UnitData
{
    Q_DECLARE_TR_FUNCTIONS(UnitData)
    Q_DISABLE_COPY(UnitData)

public:
    UnitData() = default;
    ~UnitData();

    /**
     * Takes the unit in @p directory, which is created when it is missing.
     *
     * On failure returns false with a sentence for the user in @p error; an existing file is
     * left as it is.
     */
    bool open(const QString &directory, QString *error);

    /// Whether open() would succeed, of which nothing stays; if not, with the same sentence.
    static bool canBeOpened(const QString &directory, QString *error);

    /// Stores all of @p values at once. On failure nothing is stored, on disk or here.
    bool store(const QVector<UnitValue> &values, QString *error);

    /// The stored value, or @p defaultValue when there is none.
    QVariant value(Area area, const QString &key, const QVariant &defaultValue) const;

    /// Everything that is stored, area by area.
    QVector<UnitValue> values() const;

private:
    using Sections = std::array<QMap<QString, QVariant>, areas.size()>;

    static QByteArray toText(const Sections &sections);
    void setDirectory(const QString &directory);
    bool lock(QString *error);
    bool read(QString *error);
    bool parse(const QByteArray &text, QString *error);
    QString cannotBeCreated() const;
    QString cannotBeWritten(const QString &reason) const;

    QString m_directory;
    QString m_path;
    int m_lock = -1; ///< descriptor of the directory, which carries the lock

    mutable std::mutex m_mutex; ///< protects m_sections and the file
    Sections m_sections;
};

} // namespace bench
