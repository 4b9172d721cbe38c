// Preloaded into the program under test: counts its file calls below one folder, writes
// them to a log, and lets one of them fail, or stops or kills the program before it. Only
// the calls on paths below the folder, and on descriptors that were opened there, count,
// so the numbers are the same from run to run.
//
//   KAVU_FAULT_ROOT     the folder
//   KAVU_FAULT_LOG      file to which a line is appended for each call: its number, name,
//                       kind of access, path and second path, separated by tabs; and behind
//                       a call on a file that does not exist its number and "missing"
//   KAVU_FAULT_AT       number of the call that fails, from 1
//   KAVU_FAULT_ERRNO    the error it fails with
//   KAVU_FAULT_SHORT    if set, a failing write writes half of its bytes and the next write
//                       to the same descriptor fails; a killed one writes half and dies
//   KAVU_FAULT_PERSIST  a folder: from KAVU_FAULT_AT on every call that changes something in it
//                       fails, as on a disk that has died; with ENOSPC deleting still works
//   KAVU_FAULT_KILL_AT  number of the call in front of which the program is killed
//   KAVU_FAULT_STOP_AT  number of the call in front of which the program stops itself
//
// A line is in the log before its call is made.
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

enum class Verdict { Pass, Fail, Half };

struct Descriptor {
    bool tracked = false;
    bool failsNext = false;
    char access = '-';
    std::string path;
};

constexpr std::size_t kDescriptors = 1024;

struct Shim {
    std::string root;
    std::string persist;
    long failAt = 0;
    long killAt = 0;
    long stopAt = 0;
    int code = 0;
    bool half = false;
    int log = -1;
    long count = 0;
    std::array<Descriptor, kDescriptors> descriptors;
};

long numberFrom(const char* name) {
    const char* const text = std::getenv(name);
    return text == nullptr ? 0 : std::atol(text);
}

/// Made at the first call, which may come before any constructor, and never destroyed.
Shim& shim() {
    static Shim* const instance = [] {
        auto* made = new Shim;
        if (const char* const root = std::getenv("KAVU_FAULT_ROOT")) {
            made->root = std::string(root) + "/";
        }
        if (const char* const folder = std::getenv("KAVU_FAULT_PERSIST")) {
            made->persist = folder;
        }
        made->failAt = numberFrom("KAVU_FAULT_AT");
        made->killAt = numberFrom("KAVU_FAULT_KILL_AT");
        made->stopAt = numberFrom("KAVU_FAULT_STOP_AT");
        made->code = static_cast<int>(numberFrom("KAVU_FAULT_ERRNO"));
        made->half = std::getenv("KAVU_FAULT_SHORT") != nullptr;
        if (const char* const log = std::getenv("KAVU_FAULT_LOG")) {
            made->log = static_cast<int>(::syscall(
                SYS_openat, AT_FDCWD, log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666));
        }
        return made;
    }();
    return *instance;
}

template <typename Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

bool isBelowRoot(const char* path) {
    const auto& root = shim().root;
    return !root.empty() && std::strncmp(path, root.c_str(), root.size()) == 0;
}

Descriptor* descriptorOf(int number) {
    if (number < 0 || static_cast<std::size_t>(number) >= kDescriptors) {
        return nullptr;
    }
    auto& found = shim().descriptors[static_cast<std::size_t>(number)];
    return found.tracked ? &found : nullptr;
}

void track(int number, const char* path, char access) {
    if (number >= 0 && static_cast<std::size_t>(number) < kDescriptors) {
        shim().descriptors[static_cast<std::size_t>(number)] = {true, false, access, path};
    }
}

void writeLog(const char* name, char access, const char* path, const char* second) {
    auto& state = shim();
    if (state.log < 0) {
        return;
    }
    const std::string line = std::to_string(state.count) + "\t" + name + "\t" + access + "\t" +
                             path + "\t" + second + "\n";
    (void)::syscall(SYS_write, state.log, line.data(), line.size());
}

/// Passes a result on; the log is told of a file that is not there.
template <typename Result>
Result resulting(const char* path, Result result) {
    auto& state = shim();
    if (result == Result(-1) && errno == ENOENT && state.log >= 0 && isBelowRoot(path)) {
        const std::string line = std::to_string(state.count) + "\tmissing\n";
        (void)::syscall(SYS_write, state.log, line.data(), line.size());
        errno = ENOENT;
    }
    return result;
}

bool isOnDeadDisk(std::string_view path) {
    const auto& folder = shim().persist;
    return path == folder || (path.starts_with(folder) && path[folder.size()] == '/');
}

/// Whether a call fails for a fault that began earlier.
bool failsStill(std::string_view name, char access, const char* path, const char* second) {
    const auto& state = shim();
    if (state.persist.empty() || state.failAt == 0 || state.count < state.failAt ||
        !(isOnDeadDisk(path) || isOnDeadDisk(second))) {
        return false;
    }
    constexpr std::array<std::string_view, 9> kChanging = {
        "write", "fsync", "ftruncate", "truncate", "rename", "link", "mkdir", "chmod", "chown"};
    const bool isDeleting = name == "unlink" || name == "rmdir";
    return (isDeleting && state.code != ENOSPC) || (name == "open" && access == 'w') ||
           std::find(kChanging.begin(), kChanging.end(), name) != kChanging.end();
}

/// Counts a call and tells what is to become of it.
Verdict enter(const char* name, char access, const char* path, const char* second = "") {
    auto& state = shim();
    ++state.count;
    writeLog(name, access, path, second);
    const bool write = std::strcmp(name, "write") == 0;
    if (state.count == state.killAt) {
        if (state.half && write) {
            return Verdict::Half;
        }
        ::kill(::getpid(), SIGKILL);
    }
    if (state.count == state.stopAt) {
        ::kill(::getpid(), SIGSTOP);
    }
    if (!state.persist.empty()) {
        // A call that is made sets the number itself, if it has one to set.
        if (!failsStill(name, access, path, second)) {
            return Verdict::Pass;
        }
        errno = state.code;
        return Verdict::Fail;
    }
    if (state.count != state.failAt) {
        return Verdict::Pass;
    }
    if (state.half && write) {
        return Verdict::Half;
    }
    errno = state.code;
    return Verdict::Fail;
}

bool failsOn(const char* name, const char* path, char access = '-', const char* second = "") {
    return (isBelowRoot(path) || isBelowRoot(second)) &&
           enter(name, access, path, second) == Verdict::Fail;
}

bool failsOn(const char* name, int number) {
    const auto* const found = descriptorOf(number);
    return found != nullptr && enter(name, found->access, found->path.c_str()) == Verdict::Fail;
}

template <typename Call>
ssize_t writing(int number, std::size_t size, const Call& call) {
    auto* const found = descriptorOf(number);
    if (found == nullptr) {
        return call(size);
    }
    const bool fails = found->failsNext;
    found->failsNext = false;
    const Verdict verdict = enter("write", found->access, found->path.c_str());
    if (fails || verdict == Verdict::Fail) {
        errno = shim().code;
        return -1;
    }
    if (verdict == Verdict::Half) {
        const ssize_t written = size > 1 ? call(size / 2) : 0;
        if (shim().count == shim().killAt) {
            ::kill(::getpid(), SIGKILL);
        }
        if (written <= 0) {
            errno = shim().code;
            return -1;
        }
        found->failsNext = true;
        return written;
    }
    return call(size);
}

char accessOf(int flags) {
    if ((flags & O_DIRECTORY) != 0) {
        return 'd';
    }
    return (flags & O_ACCMODE) == O_RDONLY ? 'r' : 'w';
}

template <typename Call>
int opening(const char* path, int flags, const Call& call) {
    if (!isBelowRoot(path)) {
        return call();
    }
    if (enter("open", accessOf(flags), path) == Verdict::Fail) {
        return -1;
    }
    const int number = resulting(path, call());
    track(number, path, accessOf(flags));
    return number;
}

template <typename Entry>
Entry* readingFolder(DIR* folder, const char* name) {
    if (failsOn("readdir", ::dirfd(folder))) {
        return nullptr;
    }
    return real<Entry*(DIR*)>(name)(folder);
}

}  // namespace

// The third argument of open is there when a file may be made.
#define KAVU_MODE_OF(flags)                                 \
    mode_t mode = 0;                                        \
    if (((flags) & (O_CREAT | O_TMPFILE)) != 0) {           \
        va_list arguments;                                  \
        va_start(arguments, flags);                         \
        mode = static_cast<mode_t>(va_arg(arguments, int)); \
        va_end(arguments);                                  \
    }

extern "C" {

int open(const char* path, int flags, ...) {
    KAVU_MODE_OF(flags)
    return opening(path, flags,
                   [&] { return real<int(const char*, int, ...)>("open")(path, flags, mode); });
}
int open64(const char* path, int flags, ...) {
    KAVU_MODE_OF(flags)
    return opening(path, flags,
                   [&] { return real<int(const char*, int, ...)>("open64")(path, flags, mode); });
}
int openat(int folder, const char* path, int flags, ...) {
    KAVU_MODE_OF(flags)
    return opening(path, flags, [&] {
        return real<int(int, const char*, int, ...)>("openat")(folder, path, flags, mode);
    });
}
int openat64(int folder, const char* path, int flags, ...) {
    KAVU_MODE_OF(flags)
    return opening(path, flags, [&] {
        return real<int(int, const char*, int, ...)>("openat64")(folder, path, flags, mode);
    });
}
int creat(const char* path, mode_t mode) {
    return opening(path, O_WRONLY,
                   [&] { return real<int(const char*, mode_t)>("creat")(path, mode); });
}
// What a hardened build calls in place of open and read.
int __open_2(const char* path, int flags) {
    return opening(path, flags,
                   [&] { return real<int(const char*, int)>("__open_2")(path, flags); });
}
int __open64_2(const char* path, int flags) {
    return opening(path, flags,
                   [&] { return real<int(const char*, int)>("__open64_2")(path, flags); });
}
ssize_t __read_chk(int number, void* to, std::size_t count, std::size_t size) {
    if (failsOn("read", number)) {
        return -1;
    }
    return real<ssize_t(int, void*, std::size_t, std::size_t)>("__read_chk")(number, to, count,
                                                                             size);
}

ssize_t read(int number, void* to, std::size_t count) {
    if (failsOn("read", number)) {
        return -1;
    }
    return real<ssize_t(int, void*, std::size_t)>("read")(number, to, count);
}
ssize_t pread(int number, void* to, std::size_t count, off_t at) {
    if (failsOn("read", number)) {
        return -1;
    }
    return real<ssize_t(int, void*, std::size_t, off_t)>("pread")(number, to, count, at);
}
ssize_t write(int number, const void* from, std::size_t count) {
    return writing(number, count, [&](std::size_t size) {
        return real<ssize_t(int, const void*, std::size_t)>("write")(number, from, size);
    });
}
ssize_t pwrite(int number, const void* from, std::size_t count, off_t at) {
    return writing(number, count, [&](std::size_t size) {
        return real<ssize_t(int, const void*, std::size_t, off_t)>("pwrite")(number, from, size,
                                                                             at);
    });
}
off_t lseek(int number, off_t at, int whence) __THROW {
    return failsOn("lseek", number) ? -1
                                    : real<off_t(int, off_t, int)>("lseek")(number, at, whence);
}
int close(int number) {
    auto* const found = descriptorOf(number);
    const bool fails = failsOn("close", number);
    if (found != nullptr) {
        found->tracked = false;
    }
    const int code = errno;
    const int closed = real<int(int)>("close")(number);
    if (!fails) {
        return closed;
    }
    // As the system does it: the descriptor is gone, and the error is told.
    errno = code;
    return -1;
}
int fsync(int number) {
    return failsOn("fsync", number) ? -1 : real<int(int)>("fsync")(number);
}
int fdatasync(int number) {
    return failsOn("fdatasync", number) ? -1 : real<int(int)>("fdatasync")(number);
}
int sync_file_range(int number, off64_t from, off64_t count, unsigned flags) {
    return failsOn("sync_file_range", number) ? -1
                                              : real<int(int, off64_t, off64_t, unsigned)>(
                                                    "sync_file_range")(number, from, count, flags);
}
int ftruncate(int number, off_t size) __THROW {
    return failsOn("ftruncate", number) ? -1 : real<int(int, off_t)>("ftruncate")(number, size);
}
int flock(int number, int operation) __THROW {
    return failsOn("flock", number) ? -1 : real<int(int, int)>("flock")(number, operation);
}

int rename(const char* from, const char* to) __THROW {
    return failsOn("rename", from, 'w', to)
               ? -1
               : real<int(const char*, const char*)>("rename")(from, to);
}
int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) __THROW {
    return failsOn("rename", from, 'w', to)
               ? -1
               : real<int(int, const char*, int, const char*, unsigned)>("renameat2")(
                     fromFolder, from, toFolder, to, flags);
}
int link(const char* from, const char* to) __THROW {
    return failsOn("link", from, 'r', to) ? -1
                                          : real<int(const char*, const char*)>("link")(from, to);
}
int truncate(const char* path, off_t size) __THROW {
    return failsOn("truncate", path, 'w') ? -1
                                          : real<int(const char*, off_t)>("truncate")(path, size);
}
int unlink(const char* path) __THROW {
    return failsOn("unlink", path, 'w') ? -1
                                        : resulting(path, real<int(const char*)>("unlink")(path));
}
int mkdir(const char* path, mode_t mode) __THROW {
    return failsOn("mkdir", path, 'w') ? -1 : real<int(const char*, mode_t)>("mkdir")(path, mode);
}
int rmdir(const char* path) __THROW {
    return failsOn("rmdir", path, 'w') ? -1 : real<int(const char*)>("rmdir")(path);
}
int chmod(const char* path, mode_t mode) __THROW {
    return failsOn("chmod", path, 'w') ? -1 : real<int(const char*, mode_t)>("chmod")(path, mode);
}
int chown(const char* path, uid_t owner, gid_t group) __THROW {
    return failsOn("chown", path, 'w')
               ? -1
               : real<int(const char*, uid_t, gid_t)>("chown")(path, owner, group);
}
char* realpath(const char* path, char* resolved) __THROW {
    if (failsOn("realpath", path)) {
        return nullptr;
    }
    return real<char*(const char*, char*)>("realpath")(path, resolved);
}
char* __realpath_chk(const char* path, char* resolved, std::size_t size) __THROW {
    if (failsOn("realpath", path)) {
        return nullptr;
    }
    return real<char*(const char*, char*, std::size_t)>("__realpath_chk")(path, resolved, size);
}
int access(const char* path, int how) __THROW {
    return failsOn("access", path)
               ? -1
               : resulting(path, real<int(const char*, int)>("access")(path, how));
}

DIR* opendir(const char* path) {
    if (failsOn("opendir", path, 'd')) {
        return nullptr;
    }
    DIR* const folder = real<DIR*(const char*)>("opendir")(path);
    if (folder != nullptr && isBelowRoot(path)) {
        track(::dirfd(folder), path, 'd');
    }
    return folder;
}
struct dirent* readdir(DIR* folder) {
    return readingFolder<struct dirent>(folder, "readdir");
}
struct dirent64* readdir64(DIR* folder) {
    return readingFolder<struct dirent64>(folder, "readdir64");
}
int closedir(DIR* folder) {
    if (auto* const found = descriptorOf(::dirfd(folder))) {
        found->tracked = false;
    }
    return real<int(DIR*)>("closedir")(folder);
}

int stat(const char* path, struct stat* info) __THROW {
    return failsOn("stat", path)
               ? -1
               : resulting(path, real<int(const char*, struct stat*)>("stat")(path, info));
}
int stat64(const char* path, struct stat64* info) __THROW {
    return failsOn("stat", path)
               ? -1
               : resulting(path, real<int(const char*, struct stat64*)>("stat64")(path, info));
}
int lstat(const char* path, struct stat* info) __THROW {
    return failsOn("lstat", path)
               ? -1
               : resulting(path, real<int(const char*, struct stat*)>("lstat")(path, info));
}
int lstat64(const char* path, struct stat64* info) __THROW {
    return failsOn("lstat", path)
               ? -1
               : resulting(path, real<int(const char*, struct stat64*)>("lstat64")(path, info));
}
int fstat(int number, struct stat* info) __THROW {
    return failsOn("fstat", number) ? -1 : real<int(int, struct stat*)>("fstat")(number, info);
}
int fstat64(int number, struct stat64* info) __THROW {
    return failsOn("fstat", number) ? -1 : real<int(int, struct stat64*)>("fstat64")(number, info);
}

}  // extern "C"
