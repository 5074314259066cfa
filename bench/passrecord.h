#pragma once

#include "call.h"
#include "pools.h"
#include "unitdata.h"

#include <QStringList>
#include <QVector>

#include <mutex>

namespace bench {

/// A serial pool of a production file, before and after a pass.
struct PoolChange
{
    QString group; ///< "SN" or "SK"
    int before = 0;
    int after = 0;
    QStringList taken; ///< entries that are gone from the file
};

/// A message that the operator has seen.
struct Popup
{
    int code = 0;
    QString text;
};

/// What a pass has left behind on the unit and on the stick.
struct PassResult
{
    QString configurationFile; ///< empty when no stick held one
    QVector<UnitValue> stored; ///< area by area, each key with its last value
    bool fileGone = false; ///< the file was used up, or its stick pulled
    QVector<PoolChange> pools; ///< the pools that the file had, unless it is gone
    QString markerLine; ///< the last line of the stick's completion marker; may be empty
    bool markerGrown = false; ///< that line is from this pass
    bool pulled = false; ///< the stick went before the pass was over
};

/// The data that @p call stores on the unit; nothing for any other call.
std::optional<UnitValue> storedValue(const Call &call);

/**
 * Collects what one pass changes.
 *
 * An observer of the head unit: note() is called in any thread; everything else in the main
 * thread.
 */
class PassRecord
{
public:
    /// A pass begins on @p configurationFile, which lies on the stick @p stick (none: the flash).
    void begin(const QString &configurationFile, const QString &stick);

    void note(const Call &call);

    /// What has changed since begin().
    PassResult result() const;

    /// What the unit has told the operator since it was switched on.
    QVector<Popup> told() const;

private:
    QVector<PoolChange> poolChanges() const;
    QString markerPath() const;

    QString m_configurationFile;
    QString m_stick;
    QVector<Pool> m_poolsBefore;
    qint64 m_markerSizeBefore = 0;

    mutable std::mutex m_mutex; ///< protects the members below
    QVector<UnitValue> m_stored;
    QVector<Popup> m_told;
};

} // namespace bench
