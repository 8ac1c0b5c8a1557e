// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reliability/filecalls.h"

#include <cerrno>
#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace lumora {

namespace {

using Kind = FileCall::Kind;

struct Watching
{
    std::mutex lock;
    std::optional<FileWatch> watch;
    std::map<int, std::string> openFiles;
};

Watching &watching()
{
    static auto *const state = new Watching; // other threads may outlive main()
    return *state;
}

thread_local bool isOwnCall = false;

bool isBelow(const std::string &path, const std::string &folder)
{
    return path.compare(0, folder.size(), folder) == 0 && (path.size() == folder.size() || path[folder.size()] == '/');
}

/// Whether the call is to be seen; gives it the name of its file.
bool concerns(const Watching &state, FileCall &call)
{
    if (!state.watch || isOwnCall)
        return false;
    if (call.handle >= 0) {
        const auto file = state.openFiles.find(call.handle);
        if (file == state.openFiles.end())
            return false;
        call.path = file->second;
        return true;
    }
    return isBelow(call.path, state.watch->folder) || isBelow(call.to, state.watch->folder);
}

void note(Watching &state, FileCall &call, int result)
{
    if (call.kind == Kind::open) {
        call.handle = result;
        state.openFiles[result] = call.path;
    } else if (call.kind == Kind::close) {
        state.openFiles.erase(call.handle);
    } else if (call.kind == Kind::write) {
        call.data = call.data.first(result);
    }
    state.watch->after(call);
}

/// Makes the call, where nothing is to be done instead. A watched call excludes others, so that they have an order.
template <typename Real>
auto made(FileCall call, Real real) -> decltype(real())
{
    Watching &state = watching();
    std::unique_lock lock(state.lock, std::defer_lock);
    if (isOwnCall) // which holds it
        return real();
    lock.lock();
    if (!concerns(state, call)) {
        lock.unlock();
        return real();
    }
    isOwnCall = true;
    const int refusal = state.watch->before(call);
    if (refusal != 0 && call.kind == Kind::close) {
        real(); // a file that failed to close is closed
        state.openFiles.erase(call.handle);
    }
    const auto result = refusal != 0 ? -1 : real();
    int error = refusal != 0 ? refusal : errno;
    if (result >= 0)
        note(state, call, int(result));
    isOwnCall = false;
    errno = error;
    return result;
}

/// Makes the call with the function of this name that this program would have without ours.
template <typename Function, typename... Arguments>
auto passedOn(const char *name, const FileCall &call, Arguments... arguments)
{
    auto *const real = reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
    return made(call, [&] { return real(arguments...); });
}

FileCall about(Kind kind, const char *path)
{
    return {.kind = kind, .path = path};
}

FileCall about(Kind kind, int handle)
{
    return {.kind = kind, .handle = handle};
}

FileCall written(int handle, const void *data, size_t size, off_t offset)
{
    return {.kind = Kind::write,
            .handle = handle,
            .offset = offset,
            .data = QByteArrayView(static_cast<const char *>(data), qsizetype(size))};
}

FileCall renamed(const char *from, const char *to)
{
    return {.kind = Kind::rename, .path = from, .to = to};
}

/// The name of a file that is given by its folder and its name there, or by its number in /proc.
FileCall linked(const char *from, const char *to)
{
    FileCall call{.kind = Kind::link, .path = from, .to = to};
    constexpr const char *ownFiles = "/proc/self/fd/";
    if (call.path.rfind(ownFiles, 0) == 0)
        call.handle = std::stoi(call.path.substr(std::char_traits<char>::length(ownFiles)));
    return call;
}

} // namespace

FileWatching::FileWatching(FileWatch watch)
{
    Watching &state = watching();
    const std::lock_guard lock(state.lock);
    state.watch = std::move(watch);
    state.openFiles.clear();
}

FileWatching::~FileWatching()
{
    Watching &state = watching();
    const std::lock_guard lock(state.lock);
    state.watch.reset();
}

} // namespace lumora

using namespace lumora;

// The calls of the C library that Qt, SQLite and this program make about files.
#pragma GCC visibility push(default)
extern "C" {

int open(const char *path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    FileCall call = about(Kind::open, path);
    call.flags = flags;
    return passedOn<decltype(open)>("open", call, path, flags, mode);
}

int open64(const char *path, int flags, ...) __attribute__((alias("open"))); // the same where files are large anyway

ssize_t read(int handle, void *data, size_t size)
{
    return passedOn<decltype(read)>("read", about(Kind::read, handle), handle, data, size);
}

ssize_t pread64(int handle, void *data, size_t size, off64_t offset)
{
    return passedOn<decltype(pread64)>("pread64", about(Kind::read, handle), handle, data, size, offset);
}

ssize_t pwrite64(int handle, const void *data, size_t size, off64_t offset)
{
    return passedOn<decltype(pwrite64)>("pwrite64", written(handle, data, size, offset), handle, data, size, offset);
}

ssize_t write(int handle, const void *data, size_t size)
{
    const off_t offset = ::lseek(handle, 0, SEEK_CUR); // negative for a pipe, which is not watched
    return passedOn<decltype(write)>("write", written(handle, data, size, offset), handle, data, size);
}

int fsync(int handle)
{
    return passedOn<decltype(fsync)>("fsync", about(Kind::sync, handle), handle);
}

int fdatasync(int handle)
{
    return passedOn<decltype(fdatasync)>("fdatasync", about(Kind::sync, handle), handle);
}

int ftruncate64(int handle, off64_t size) noexcept
{
    FileCall call = about(Kind::truncate, handle);
    call.offset = size;
    return passedOn<decltype(ftruncate64)>("ftruncate64", call, handle, size);
}

int rename(const char *from, const char *to) noexcept
{
    return passedOn<decltype(rename)>("rename", renamed(from, to), from, to);
}

int renameat2(int folder, const char *from, int toFolder, const char *to, unsigned flags) noexcept
{
    return passedOn<decltype(renameat2)>("renameat2", renamed(from, to), folder, from, toFolder, to, flags);
}

int link(const char *from, const char *to) noexcept
{
    return passedOn<decltype(link)>("link", linked(from, to), from, to);
}

int linkat(int folder, const char *from, int toFolder, const char *to, int flags) noexcept
{
    return passedOn<decltype(linkat)>("linkat", linked(from, to), folder, from, toFolder, to, flags);
}

int unlink(const char *path) noexcept
{
    return passedOn<decltype(unlink)>("unlink", about(Kind::remove, path), path);
}

int mkdir(const char *path, mode_t mode) noexcept
{
    return passedOn<decltype(mkdir)>("mkdir", about(Kind::makeFolder, path), path, mode);
}

int close(int handle)
{
    return passedOn<decltype(close)>("close", about(Kind::close, handle), handle);
}

int stat64(const char *path, struct stat64 *facts) noexcept
{
    return passedOn<int(const char *, struct stat64 *)>("stat64", about(Kind::ask, path), path, facts);
}

int lstat64(const char *path, struct stat64 *facts) noexcept
{
    return passedOn<int(const char *, struct stat64 *)>("lstat64", about(Kind::ask, path), path, facts);
}

int fstat64(int handle, struct stat64 *facts) noexcept
{
    return passedOn<int(int, struct stat64 *)>("fstat64", about(Kind::ask, handle), handle, facts);
}

int statx(int folder, const char *path, int flags, unsigned mask, struct statx *facts) noexcept
{
    const FileCall call = *path != 0 ? about(Kind::ask, path) : about(Kind::ask, folder);
    return passedOn<int(int, const char *, int, unsigned, struct statx *)>("statx", call, folder, path, flags, mask,
                                                                           facts);
}

int access(const char *path, int mode) noexcept
{
    return passedOn<decltype(access)>("access", about(Kind::ask, path), path, mode);
}

int fchmod(int handle, mode_t mode) noexcept
{
    return passedOn<decltype(fchmod)>("fchmod", about(Kind::permissions, handle), handle, mode);
}

/// SQLite's locks.
int fcntl64(int handle, int command, ...)
{
    va_list rest;
    va_start(rest, command);
    void *const argument = va_arg(rest, void *);
    va_end(rest);
    const bool isLock = command == F_SETLK || command == F_SETLKW;
    const FileCall call = about(Kind::lock, isLock ? handle : -1);
    return passedOn<decltype(fcntl64)>("fcntl64", call, handle, command, argument);
}
}
#pragma GCC visibility pop
