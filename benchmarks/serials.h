#pragma once

#include <QSettings>

#include <optional>

/// Chooses the next unit's serial in the open @p settings, as the module does.
std::optional<QString> chooseSerial(QSettings &settings);
