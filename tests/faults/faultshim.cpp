#include "faultshim.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <utility>
#include <vector>

using faults::Verdict;

namespace {

/// Known by device and inode: a directory keeps them when it is renamed or unmounted.
std::vector<std::pair<dev_t, ino_t>> watchedDirectories;
std::array<std::atomic<bool>, 4096> watchedFiles{}; // by descriptor
faults::Judge currentJudge;
bool isLikeFat = false;
std::atomic<bool> watching{false};
thread_local bool judging = false;

/// The function that this library stands before.
template <typename Function>
Function *next(Function *, const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

bool isWatchedDirectory(int at, const std::string &path)
{
    struct stat found;
    const auto begin = watchedDirectories.cbegin();
    const auto end = watchedDirectories.cend();
    return fstatat(at, path.c_str(), &found, 0) == 0
        && std::find(begin, end, std::pair(found.st_dev, found.st_ino)) != end;
}

/// Whether @p path is a watched directory or stands in one.
bool isWatched(int at, const std::string &path)
{
    if (!watching || judging)
        return false;
    const int savedError = errno;
    const size_t slash = path.rfind('/');
    const std::string parent = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const bool watched = isWatchedDirectory(at, parent) || isWatchedDirectory(at, path);
    errno = savedError;
    return watched;
}

bool isWatched(int descriptor)
{
    return watching && !judging && descriptor >= 0 && size_t(descriptor) < watchedFiles.size()
        && watchedFiles[size_t(descriptor)];
}

void remember(int descriptor, bool watched)
{
    if (descriptor >= 0 && size_t(descriptor) < watchedFiles.size())
        watchedFiles[size_t(descriptor)] = watched;
}

[[noreturn]] void cut()
{
    kill(getpid(), SIGKILL);
    for (;;)
        pause();
}

Verdict ask(const char *call)
{
    const int savedError = errno;
    judging = true;
    const Verdict verdict = currentJudge(call);
    judging = false;
    if (verdict.fault == Verdict::Cut)
        cut();
    errno = verdict.fault == Verdict::Fail ? verdict.error : savedError;
    return verdict;
}

/// Makes the call unless it is watched and must fail; errno then says why.
template <typename Function, typename... Arguments>
int callUnlessDenied(bool watched, const char *call, Function *function, const char *name,
                     Arguments... arguments)
{
    if (watched && ask(call).fault == Verdict::Fail)
        return -1;
    return next(function, name)(arguments...);
}

int openFile(int at, const char *path, int flags, va_list arguments)
{
    const bool unnamed = (flags & O_TMPFILE) == O_TMPFILE;
    const mode_t mode = unnamed || (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    const bool watched = isWatched(at, path);
    if (watched && unnamed && isLikeFat) {
        errno = EOPNOTSUPP;
        return -1;
    }
    const int descriptor =
        callUnlessDenied(watched, "open", &openat64, "openat64", at, path, flags, mode);
    remember(descriptor, watched);
    return descriptor;
}

/**
 * FAULT_DIRECTORIES names what is watched, FAULT_CUT the point at which the process ends:
 * every call that changes storage is one, the middle of a write is another. FAULT_FAT is 1 for a
 * stick with FAT.
 */
bool watchAsTheEnvironmentSays()
{
    const char *const directories = std::getenv("FAULT_DIRECTORIES");
    const char *const point = std::getenv("FAULT_CUT");
    const char *const fat = std::getenv("FAULT_FAT");
    if (directories == nullptr || point == nullptr || fat == nullptr)
        return false;
    const auto judge = [cutPoint = std::atoi(point)](const char *call) -> Verdict {
        static std::atomic<int> count{0};
        if (std::strcmp(call, "read") != 0 && ++count == cutPoint)
            return {Verdict::Cut, 0};
        if (std::strcmp(call, "write") == 0 && ++count == cutPoint)
            return {Verdict::TornCut, 0};
        return {};
    };
    faults::watch(directories, judge, std::atoi(fat) != 0);
    unsetenv("LD_PRELOAD"); // the shell commands of the process are not its own calls
    return true;
}

const bool preloaded = watchAsTheEnvironmentSays(); // before main(), behind all it needs

} // namespace

void faults::watch(const std::string &directories, const Judge &judge, bool likeFat)
{
    watching = false;
    currentJudge = judge;
    isLikeFat = likeFat;
    watchedDirectories.clear();
    std::istringstream names(directories);
    for (std::string name; std::getline(names, name, ':');) {
        struct stat found;
        if (stat(name.c_str(), &found) == 0)
            watchedDirectories.emplace_back(found.st_dev, found.st_ino);
    }
    watching = judge != nullptr;
}

extern "C" {

int openat64(int at, const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const int descriptor = openFile(at, path, flags, arguments);
    va_end(arguments);
    return descriptor;
}

int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const int descriptor = openFile(AT_FDCWD, path, flags, arguments);
    va_end(arguments);
    return descriptor;
}

int openat(int at, const char *path, int flags, ...) __attribute__((alias("openat64")));
int open(const char *path, int flags, ...) __attribute__((alias("open64")));

int close(int descriptor)
{
    remember(descriptor, false);
    return next(&close, "close")(descriptor);
}

ssize_t read(int descriptor, void *data, size_t size)
{
    const Verdict verdict = isWatched(descriptor) ? ask("read") : Verdict();
    if (verdict.fault == Verdict::Fail)
        return -1;
    const bool whole = verdict.fault != Verdict::Short;
    return next(&read, "read")(descriptor, data, whole ? size : std::min<size_t>(size, 100));
}

ssize_t write(int descriptor, const void *data, size_t size)
{
    const Verdict verdict = isWatched(descriptor) ? ask("write") : Verdict();
    if (verdict.fault == Verdict::Fail)
        return -1;
    const bool whole = verdict.fault == Verdict::None;
    const ssize_t written = next(&write, "write")(descriptor, data, whole ? size : (size + 1) / 2);
    if (verdict.fault == Verdict::TornCut)
        cut();
    return written;
}

int fsync(int descriptor)
{
    return callUnlessDenied(isWatched(descriptor), "flush", &fsync, "fsync", descriptor);
}

int fdatasync(int descriptor)
{
    return callUnlessDenied(isWatched(descriptor), "flush", &fdatasync, "fdatasync", descriptor);
}

int linkat(int fromAt, const char *from, int toAt, const char *to, int flags)
{
    return callUnlessDenied(isWatched(toAt, to), "link", &linkat, "linkat", fromAt, from, toAt, to,
                            flags);
}

int link(const char *from, const char *to)
{
    return linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int renameat2(int fromAt, const char *from, int toAt, const char *to, unsigned flags)
{
    return callUnlessDenied(isWatched(toAt, to), "rename", &renameat2, "renameat2", fromAt, from,
                            toAt, to, flags);
}

int rename(const char *from, const char *to)
{
    return renameat2(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int unlink(const char *path)
{
    return callUnlessDenied(isWatched(AT_FDCWD, path), "unlink", &unlink, "unlink", path);
}

} // extern "C"
