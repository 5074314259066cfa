#include "interception.h"

#include "meter.h"

#include <atomic>
#include <ctime>
#include <mutex>

#include <dlfcn.h>
#include <pthread.h>

namespace interception {

namespace {

std::mutex mutex;
FlushTime spentInFlushes{0, 0};
std::function<void()> commandHook;
std::atomic<int> threads{0};

template <typename Function>
Function *libraryFunction(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

template <typename Flush>
int timed(Flush flush)
{
    const double wall = clockSeconds(CLOCK_MONOTONIC);
    const double cpu = clockSeconds(CLOCK_THREAD_CPUTIME_ID);
    const int result = flush();
    const std::lock_guard<std::mutex> lock(mutex);
    spentInFlushes.cpu += clockSeconds(CLOCK_THREAD_CPUTIME_ID) - cpu;
    spentInFlushes.wall += clockSeconds(CLOCK_MONOTONIC) - wall;
    return result;
}

} // namespace

FlushTime flushTime()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return spentInFlushes;
}

int threadsStarted()
{
    return threads;
}

void setCommandHook(std::function<void()> hook)
{
    const std::lock_guard<std::mutex> lock(mutex);
    commandHook = std::move(hook);
}

} // namespace interception

extern "C" {

int fsync(int descriptor)
{
    static const auto function = interception::libraryFunction<int(int)>("fsync");
    return interception::timed([=] { return function(descriptor); });
}

int fdatasync(int descriptor)
{
    static const auto function = interception::libraryFunction<int(int)>("fdatasync");
    return interception::timed([=] { return function(descriptor); });
}

int system(const char *)
{
    std::function<void()> hook;
    {
        const std::lock_guard<std::mutex> lock(interception::mutex);
        hook = interception::commandHook;
    }
    if (hook)
        hook();
    return 0;
}

int pthread_create(pthread_t *thread, const pthread_attr_t *attributes, void *(*start)(void *),
                   void *argument)
{
    static const auto function =
        interception::libraryFunction<decltype(pthread_create)>("pthread_create");
    ++interception::threads;
    return function(thread, attributes, start, argument);
}

} // extern "C"
