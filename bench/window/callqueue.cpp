#include "callqueue.h"

namespace bench {

void CallQueue::add(const Call &call)
{
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_waiting.append(call);
    }
    // By name: a functor would be handed over in ways that the thread sanitizer cannot follow.
    QMetaObject::invokeMethod(this, "deliver", Qt::QueuedConnection);
}

void CallQueue::deliver()
{
    QVector<Call> calls;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        calls.swap(m_waiting);
    }
    for (const Call &call : qAsConst(calls))
        emit called(call);
}

} // namespace bench
