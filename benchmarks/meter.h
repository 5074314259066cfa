#pragma once

#include "interception.h"

#include <benchmark/benchmark.h>

#include <ctime>

/// Reading of a clock of clock_gettime(), in seconds.
double clockSeconds(clockid_t clock);

/**
 * Measures one row: the CPU time of the whole process without its flushes to the disk is the time
 * of an iteration; flush time, threads started and the process's peak memory are counters beside
 * it. The counters are set when the meter goes.
 */
class Meter
{
public:
    explicit Meter(benchmark::State &state);
    ~Meter();

    /// Runs @p work as one iteration.
    template <typename Work>
    void measure(Work work);

private:
    /// CPU time of the process outside of flushes, in seconds.
    static double workTime();

    benchmark::State &state;
    double flush = 0; ///< seconds, of all iterations
    int threads = 0;
};

template <typename Work>
void Meter::measure(Work work)
{
    const int threadsBefore = interception::threadsStarted();
    const double flushBefore = interception::flushTime().wall;
    const double workBefore = workTime();
    work();
    state.SetIterationTime(workTime() - workBefore);
    flush += interception::flushTime().wall - flushBefore;
    threads += interception::threadsStarted() - threadsBefore;
}
