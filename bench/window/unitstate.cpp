#include "unitstate.h"

#include "../platform/moduleregistry.h"

#include <algorithm>

namespace bench {

namespace {

const QLatin1String stepTableKey("PanelLightStepValueList");

QVector<int> numbers(const QVariant &list)
{
    QVector<int> numbers;
    const QStringList texts = list.toStringList();
    for (const QString &text : texts)
        numbers.append(text.toInt());
    return numbers;
}

} // namespace

void UnitState::apply(const Call &call)
{
    const QVariantList &args = call.args;
    if (call.name == calls::showMessage) {
        popups.append({args.at(1).toInt(), args.at(0).toString()});
    } else if (const auto value = storedValue(call)) {
        store(*value);
    } else if (call.name == calls::setUserLevel) {
        dayLevel = args.at(0).toInt();
    } else if (call.name == calls::setIllLevel) {
        nightLevel = args.at(0).toInt();
    } else if (call.name == calls::canbusTestMode) {
        canbus.on = args.at(0).toBool();
        canbus.index = args.at(1).toInt();
    } else if (call.name == calls::mcuTestMode) {
        keys.on = args.at(0).toBool();
    } else if (call.name == calls::dataSeen) {
        InterfaceTest &test = args.at(0).toString() == canbusModuleName ? canbus : keys;
        test.dataSeen = test.dataSeen || test.on;
    } else if (call.name == calls::plugged || call.name == calls::unplugged) {
        setPlugged(args.at(0).toString(), call.name == calls::plugged);
    }
}

void UnitState::setPlugged(const QString &directory, bool plugged)
{
    auto stick = std::find_if(sticks.begin(), sticks.end(), [&](const StickState &other) {
        return other.directory == directory;
    });
    if (stick == sticks.end()) {
        sticks.append(StickState{directory, plugged, {}, {}});
        return;
    }
    stick->plugged = plugged;
}

void UnitState::store(const UnitValue &value)
{
    if (value.area == Area::Factory && value.key == stepTableKey) {
        stepTable = numbers(value.value);
        stepTableFromFile = true;
    }
    const auto known = std::find_if(stored.begin(), stored.end(), [&](const StoredValue &other) {
        return other.now.area == value.area && other.now.key == value.key;
    });
    if (known == stored.end()) {
        const auto place =
            std::find_if(stored.begin(), stored.end(),
                         [&](const StoredValue &other) { return other.now.area > value.area; });
        stored.insert(place, {value, StoredValue::Added, {}});
        return;
    }
    if (known->change == StoredValue::Kept || known->change == StoredValue::Confirmed) {
        known->before = known->now.value;
        known->change =
            known->before == value.value ? StoredValue::Confirmed : StoredValue::Replaced;
    }
    known->now = value;
}

} // namespace bench
