#pragma once

#include <QThread>

class ProductionObject;

/**
 * The thread that the worker lives in; ends when told to quit() and the pass has returned.
 *
 * On its way out it hands the worker to the thread that this object belongs to. The worker is
 * deleted through this object's destroyed() signal, and a deferred deletion is only carried out by
 * an object's own thread while that has an event loop.
 */
class WorkerThread : public QThread
{
    Q_OBJECT

public:
    /// @p worker has been, or will be, moved to this thread and must outlive it.
    WorkerThread(ProductionObject *worker, QObject *parent);

protected:
    /// Serves the worker's events until quit(), then hands the worker back.
    void run() override;

private:
    ProductionObject *const worker;
};
