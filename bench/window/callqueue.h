#pragma once

#include "../call.h"

#include <QObject>
#include <QVector>

#include <mutex>

namespace bench {

/**
 * Carries the calls that the head unit's observers see, in any thread, to the main thread, where
 * this object lives.
 *
 * A standard mutex guards the way, which the thread sanitizer sees; what Qt's queued connections do
 * for their arguments it does not.
 */
class CallQueue : public QObject
{
    Q_OBJECT

public:
    /// Any thread; called() follows from the event loop.
    void add(const Call &call);

public slots:
    /// Delivers what has been added so far.
    void deliver();

signals:
    void called(const bench::Call &call);

private:
    std::mutex m_mutex; ///< protects m_waiting
    QVector<Call> m_waiting;
};

} // namespace bench
