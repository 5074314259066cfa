#pragma once

#include <functional>

/**
 * What the process asks of the system at the borders that a measurement must see apart. The program
 * puts itself before the C library's fsync(), fdatasync(), system() and pthread_create(), for all
 * libraries of the process. Any thread.
 */
namespace interception {

/// Time spent in flushes to the disk since the process began, in seconds.
struct FlushTime
{
    double wall;
    double cpu; ///< of the threads that flushed
};

FlushTime flushTime();

int threadsStarted();

/// system() runs no command and tells @p hook instead, in the calling thread. The last hook counts.
void setCommandHook(std::function<void()> hook);

} // namespace interception
