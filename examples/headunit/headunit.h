#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

/// What this head unit's services work on. Written by the program while no pass is running.
struct HeadUnit
{
    QStringList sticks; ///< Mount directories.
    QMap<QString, QVariant> productionData;
    std::function<void(int code)> onPopUp; ///< UI thread.
};

HeadUnit &headUnit();

/// Ends the application's start: every module has been loaded.
void reportModulesStarted();

/// Takes every stick out.
void unplugAll();
