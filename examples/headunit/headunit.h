#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <mutex>

/// What this head unit's services work on.
struct HeadUnit
{
    std::mutex mutex; ///< Guards sticks and productionData, which the module's worker uses as well.
    QStringList sticks; ///< Mount directories.
    QMap<QString, QVariant> productionData;
    std::function<void(int code)> onPopUp; ///< UI thread.
};

HeadUnit &headUnit();

/// Ends the application's start: every module has been loaded.
void reportModulesStarted();

/// Takes every stick out.
void unplugAll();
