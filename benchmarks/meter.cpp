#include "meter.h"

#include <QFile>

namespace {

/// The most memory that the process ever held, in bytes. Unlike ru_maxrss, its parent's not
/// counted.
double peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    const QByteArray field("VmHWM:");
    const int begin = text.indexOf(field) + field.size();
    return 1024 * text.mid(begin, text.indexOf("kB", begin) - begin).trimmed().toDouble();
}

} // namespace

double clockSeconds(clockid_t clock)
{
    timespec time;
    clock_gettime(clock, &time);
    return double(time.tv_sec) + 1e-9 * double(time.tv_nsec);
}

Meter::Meter(benchmark::State &state)
    : state(state)
{
}

Meter::~Meter()
{
    using benchmark::Counter;
    state.counters["flush"] = Counter(flush, Counter::kAvgIterations);
    state.counters["threads"] = threads;
    state.counters["peak"] = peakMemory();
}

double Meter::workTime()
{
    return clockSeconds(CLOCK_PROCESS_CPUTIME_ID) - interception::flushTime().cpu;
}
