#pragma once

#include "production_export.h"

#include <usbcontrol.h>

#include <QObject>
#include <QString>

class ProductionObject;
class QThread;

/**
 * The module's entry object: decides at start-up whether the unit enters production mode, runs the
 * worker in a thread of its own and handles what worker and platform report.
 *
 * Lives in the application's UI thread, where every function is called. It deletes itself when
 * there is nothing (more) to do; the host never needs to.
 */
class PRODUCTION_EXPORT ProductionControl : public QObject
{
    Q_OBJECT

public:
    /// The one live instance, made by the first call; after its end a call makes a new one.
    static ProductionControl *getInstance();

    /// For getInstance(), and for hosts that want a parent; the new object is the one live
    /// instance.
    explicit ProductionControl(QObject *parent = nullptr);

    /**
     * Waits at most a second for the worker thread. When a pass still holds it, the thread is let
     * go: it and the worker delete themselves in this thread's event loop once the pass returns.
     */
    ~ProductionControl() override;

    /// Whether a pass is running or has finished and the stick is still plugged.
    bool isInProductionModel() const;

    /// Makes the worker and its thread with all connections; does nothing when there is one.
    void init();

signals:
    /// For the "canbus" module: interface test of the bus with index @p canId on or off.
    void canbusEntryProductionTestMode(bool entry, int canId);
    /// For the "mcu" module: direction-key test on or off.
    void directionKeyEntryProductionTestMode(bool entry);
    /// For the host's use; the module never emits it.
    void initHicar();
    /// Asks the worker for a pass over the file @p path, or over what the devices carry if empty.
    void startExe(QString path);

private slots:
    void onDeviceMounted(MediaType mt, QString dev);
    void onDeviceUnmounted(MediaType mt, QString dev);
    void onAllModuleReady();
    void checkUSB();
    void onCanbusDataReady();
    void onDirKeyDataReady();
    void onLightStepRangeChanged();
    void onUserLightLevelChagned(int level);
    void onIllLightLevelChagned(int level);
    void onMessage(QString msg, int type);
    void onFinished();

private:
    void startWorkerThread();
    void connectWorker();
    void connectUsb();
    void connectCanbus();
    void connectMcu();
    void showTestPassed();
    void deliverQueued();
    void stopWorkerThread();
    void releaseWorkerThread();

    static ProductionControl *ins;

    ProductionObject *worker = nullptr; ///< Deleted when workerThread is destroyed.
    QThread *workerThread = nullptr;
};
