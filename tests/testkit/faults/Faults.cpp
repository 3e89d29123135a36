#include "testkit/faults/Faults.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/uio.h>
#include <unistd.h>

using faults::Call;

namespace {

std::atomic<bool> armed = false;
std::atomic<bool> nameless = true;
std::mutex mutex; // of all below
std::string watched;
Call failing;
int left = 0;
int failure = 0;
bool came = false;
std::string noted;

template <typename Function>
Function *real(Function *, const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

/// What an open file of a number is, or a link of the system's to it.
std::string linkTarget(const std::string &link)
{
    char buffer[PATH_MAX];
    const ssize_t length = ::readlink(link.c_str(), buffer, sizeof buffer);
    return length > 0 ? std::string(buffer, static_cast<std::size_t>(length)) : std::string();
}

bool isWatched(std::string path)
{
    if (path.rfind("/proc/self/fd/", 0) == 0)
        path = linkTarget(path);
    return path.rfind(watched, 0) == 0 && (path.size() == watched.size() || path[watched.size()] == '/');
}

bool fails(Call call, bool concerned)
{
    if (!concerned)
        return false;
    noted += faults::Names[static_cast<int>(call)];
    noted += ' ';
    if (call != failing || left == 0 || --left > 0)
        return false;
    came = true;
    errno = failure;
    return true;
}

bool failsFor(Call call, const char *path)
{
    if (!armed)
        return false;
    const std::lock_guard lock(mutex);
    return fails(call, path && isWatched(path));
}

bool failsFor(Call call, int descriptor)
{
    if (!armed || descriptor < 0)
        return false;
    const int before = errno;
    const std::lock_guard lock(mutex);
    const bool result = fails(call, isWatched(linkTarget("/proc/self/fd/" + std::to_string(descriptor))));
    if (!result)
        errno = before;
    return result;
}

bool opensNot(const char *path, int flags)
{
    if ((flags & O_TMPFILE) == O_TMPFILE && !nameless) {
        errno = EOPNOTSUPP;
        return true;
    }
    return failsFor(Call::Open, path);
}

mode_t modeOf(int flags, va_list arguments)
{
    return (flags & O_CREAT) || (flags & O_TMPFILE) == O_TMPFILE ? va_arg(arguments, mode_t) : 0;
}

} // namespace

void faults::arm(const std::string &folder, Call call, int n, int error)
{
    const std::lock_guard lock(mutex);
    watched = folder;
    failing = call;
    left = n;
    failure = error;
    came = false;
    noted.clear();
    armed = true;
}

bool faults::disarm()
{
    const std::lock_guard lock(mutex);
    armed = false;
    return came;
}

std::string faults::calls()
{
    const std::lock_guard lock(mutex);
    return noted;
}

void faults::refuseNameless(bool refuse)
{
    nameless = !refuse;
}

// The calls themselves, under each name that libraries know them by.
extern "C" {

#define OPEN_LIKE(NAME)                                                                                      \
    int NAME(const char *path, int flags, ...)                                                               \
    {                                                                                                        \
        static const auto next = real(&NAME, #NAME);                                                         \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t mode = modeOf(flags, arguments);                                                        \
        va_end(arguments);                                                                                   \
        return opensNot(path, flags) ? -1 : next(path, flags, mode);                                         \
    }
#define OPENAT_LIKE(NAME)                                                                                    \
    int NAME(int folder, const char *path, int flags, ...)                                                   \
    {                                                                                                        \
        static const auto next = real(&NAME, #NAME);                                                         \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t mode = modeOf(flags, arguments);                                                        \
        va_end(arguments);                                                                                   \
        return opensNot(path, flags) ? -1 : next(folder, path, flags, mode);                                 \
    }
/// A call that gives `failed` where it fails; `subject` is the path or the descriptor that it concerns.
#define CALL_LIKE(RESULT, NAME, CALL, SUBJECT, FAILED, PARAMETERS, ARGUMENTS)                                \
    RESULT NAME PARAMETERS                                                                                   \
    {                                                                                                        \
        static const auto next = real(&NAME, #NAME);                                                         \
        return failsFor(Call::CALL, SUBJECT) ? FAILED : next ARGUMENTS;                                      \
    }

OPEN_LIKE(open)
OPEN_LIKE(open64)
OPENAT_LIKE(openat)
OPENAT_LIKE(openat64)
int __open_2(const char *path, int flags);
int __open64_2(const char *path, int flags);
CALL_LIKE(int, __open_2, Open, path, -1, (const char *path, int flags), (path, flags))
CALL_LIKE(int, __open64_2, Open, path, -1, (const char *path, int flags), (path, flags))
CALL_LIKE(FILE *, fopen, Open, path, nullptr, (const char *path, const char *mode), (path, mode))
CALL_LIKE(FILE *, fopen64, Open, path, nullptr, (const char *path, const char *mode), (path, mode))

CALL_LIKE(ssize_t, write, Write, file, -1, (int file, const void *bytes, size_t count), (file, bytes, count))
CALL_LIKE(ssize_t, pwrite, Write, file, (errno == 0 ? ssize_t(count) : -1),
          (int file, const void *bytes, size_t count, off_t at), (file, bytes, count, at))
CALL_LIKE(ssize_t, pwrite64, Write, file, (errno == 0 ? ssize_t(count) : -1),
          (int file, const void *bytes, size_t count, off64_t at), (file, bytes, count, at))
CALL_LIKE(ssize_t, copy_file_range, Write, to, -1,
          (int from, off64_t *begin, int to, off64_t *at, size_t count, unsigned flags),
          (from, begin, to, at, count, flags))
CALL_LIKE(ssize_t, writev, Write, file, -1, (int file, const iovec *parts, int count), (file, parts, count))

CALL_LIKE(int, fsync, Flush, file, -1, (int file), (file))
CALL_LIKE(int, fdatasync, Flush, file, -1, (int file), (file))

CALL_LIKE(int, rename, Rename, from, -1, (const char *from, const char *to), (from, to))
CALL_LIKE(int, renameat, Rename, from, -1, (int one, const char *from, int other, const char *to),
          (one, from, other, to))
CALL_LIKE(int, renameat2, Rename, from, -1,
          (int one, const char *from, int other, const char *to, unsigned flags),
          (one, from, other, to, flags))
CALL_LIKE(int, link, Link, to, -1, (const char *from, const char *to), (from, to))
CALL_LIKE(int, linkat, Link, to, -1, (int one, const char *from, int other, const char *to, int flags),
          (one, from, other, to, flags))

CALL_LIKE(int, ftruncate, Truncate, file, -1, (int file, off_t size), (file, size))
CALL_LIKE(int, ftruncate64, Truncate, file, -1, (int file, off64_t size), (file, size))
CALL_LIKE(void *, mmap, Map, file, MAP_FAILED,
          (void *at, size_t size, int protection, int flags, int file, off_t offset),
          (at, size, protection, flags, file, offset))
CALL_LIKE(void *, mmap64, Map, file, MAP_FAILED,
          (void *at, size_t size, int protection, int flags, int file, off64_t offset),
          (at, size, protection, flags, file, offset))

int pthread_create(pthread_t *thread, const pthread_attr_t *attributes, void *(*run)(void *), void *argument)
{
    static const auto next = real(&pthread_create, "pthread_create");
    if (armed) {
        const std::lock_guard lock(mutex);
        if (fails(Call::Thread, true))
            return errno;
    }
    return next(thread, attributes, run, argument);
}
}
