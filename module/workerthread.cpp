#include "workerthread.h"

#include "productionobject.h"

#include <QCoreApplication>

WorkerThread::WorkerThread(ProductionObject *worker, QObject *parent)
    : QThread(parent)
    , worker(worker)
{
}

void WorkerThread::run()
{
    exec();
    // A pass that was asked for but has not begun must not run in the application's thread.
    QCoreApplication::removePostedEvents(worker, QEvent::MetaCall);
    worker->moveToThread(thread());
}
