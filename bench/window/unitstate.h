#pragma once

#include "../call.h"
#include "../passrecord.h"

#include <QStringList>
#include <QVector>

#include <optional>

namespace bench {

/// One of the two interfaces that the factory tests.
struct InterfaceTest
{
    bool present = true; ///< the unit has the module
    bool on = false; ///< the test mode
    bool dataSeen = false; ///< while the test mode was on
    int index = 0; ///< what the module is asked to test; the CAN bus only
};

/// How much a serial pool still holds.
struct PoolLevel
{
    QString group;
    int count;
};

struct StickState
{
    QString directory;
    bool plugged = false;
    QString configurationFile; ///< empty when there is none
    QVector<PoolLevel> pools;
};

/// A value that the unit stores, and what this pass has done to it.
struct StoredValue
{
    enum Change { Kept, Added, Replaced, Confirmed };

    UnitValue now;
    Change change = Kept;
    QVariant before; ///< where it has been replaced
};

/// All that the window shows of a unit and its sticks; plain data, brought up to date by the calls.
struct UnitState
{
    enum Stage {
        Missing, ///< it could not be placed
        Off,
        Running,
        Waiting, ///< the pass is over; the stick is to be unplugged
        Ended,
    };

    Stage stage = Missing;
    QString name;
    std::optional<PassResult> pass; ///< once it is over
    QVector<Popup> popups;
    std::optional<int> dayLevel; ///< 0 to 255, as is the night's
    std::optional<int> nightLevel;
    QVector<int> stepTable; ///< a backlight value, 0 to 255, for each step
    bool stepTableFromFile = false;
    InterfaceTest canbus;
    InterfaceTest keys;
    QVector<StickState> sticks;
    QVector<StoredValue> stored; ///< area by area

    void apply(const Call &call);

private:
    void setPlugged(const QString &directory, bool plugged);
    void store(const UnitValue &value);
};

} // namespace bench
