// libqm_torture: linked before the C library, or preloaded, it lets the k-th allocation or system call fail.
// What the libraries of kExcused ask for is neither counted nor refused.
#include "torture.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <ifaddrs.h>
#include <initializer_list>
#include <iterator>
#include <link.h>
#include <new>
#include <poll.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>
#include <unwind.h>

#define INITIAL_EXEC __attribute__((tls_model("initial-exec"))) // such variables need no memory

extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
}

namespace {

using qm::test::Failing;
using qm::test::Torture;

// They ask on behalf of whoever called them.
constexpr std::string_view kTransparent[] = {"libqm_torture.", "libc.so",  "libstdc++.",
                                             "libgcc_s.",      "ld-linux", "libm.so"};
// Fontconfig, expat by which it reads its files, and FreeType follow null pointers where memory is exhausted.
// HarfBuzz keeps what it could not make as something that is not there, and has no word for it.
constexpr std::string_view kExcused[] = {"libfontconfig.", "libexpat.", "libfreetype.", "libharfbuzz."};

Torture g_own;
Torture* g_torture = &g_own;
bool g_serving = false; // and not yet in a child
thread_local INITIAL_EXEC bool t_inside = false;
thread_local INITIAL_EXEC long t_live = 0;

template <std::size_t N> bool is_one_of(const char* path, const std::string_view (&names)[N]) {
    const char* slash = std::strrchr(path, '/');
    const std::string_view name = slash ? slash + 1 : path;
    return std::ranges::any_of(names, [&](std::string_view one) { return name.starts_with(one); });
}

// The innermost caller that asks for itself says whether it may be refused.
_Unwind_Reason_Code judge(_Unwind_Context* context, void* excused) {
    dl_find_object object;
    void* const at = reinterpret_cast<void*>(_Unwind_GetIP(context) - 1);
    if (_dl_find_object(at, &object) != 0) return _URC_NO_REASON;
    const char* path = object.dlfo_link_map->l_name;
    if (is_one_of(path, kTransparent)) return _URC_NO_REASON;
    *static_cast<bool*>(excused) = is_one_of(path, kExcused);
    return _URC_END_OF_STACK;
}

bool is_excused() {
    bool excused = false;
    _Unwind_Backtrace(judge, &excused);
    return excused;
}

// For whoever mends what was found: says where it happens.
void trace() {
    if (!std::getenv("QM_TORTURE_TRACE")) return;
    void* frames[64];
    ::backtrace_symbols_fd(frames, ::backtrace(frames, std::size(frames)), STDERR_FILENO);
}

// Whether this one fails.
bool strikes(Failing what) {
    Torture& t = *g_torture;
    if (t.what.load(std::memory_order_relaxed) != what || t_inside || g_serving) return false;
    if (const pid_t thread = t.thread; thread != 0 && thread != ::gettid()) return false;
    t_inside = true;
    const bool excused = is_excused();
    t_inside = false;
    if (excused) return false;
    const long number = ++t.seen;
    if (number == t.to_fail.at) trace();
    return number == t.to_fail.at || (t.to_fail.lasting && number > t.to_fail.at);
}

bool out_of_memory() {
    if (!strikes(Failing::allocations)) return false;
    errno = ENOMEM;
    return true;
}

void* counted(void* memory) {
    if (memory) ++t_live;
    return memory;
}

constexpr int kShort = -1; // carries a byte

// 0, kShort, or the error with which the call fails now.
int fault(const char* name, std::initializer_list<int> ways) {
    if (!strikes(Failing::calls)) return 0;
    Torture& t = *g_torture;
    t.ways = static_cast<int>(ways.size());
    const int error = ways.begin()[t.to_fail.way % t.ways];
    t.error = error == kShort ? 0 : error;
    std::snprintf(t.name, sizeof t.name, "%s", name);
    if (error != kShort) errno = error;
    return error;
}

template <class Function> Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

void note_sent(const void* data, ssize_t size) {
    if (const pid_t thread = g_torture->thread; thread == 0 || thread != ::gettid()) return;
    unsigned sum = g_torture->sent;
    for (ssize_t i = 0; i < size; ++i) sum = sum * 31 + static_cast<const unsigned char*>(data)[i];
    g_torture->sent = sum;
}

void serve(int (*main)(int, char**, char**), int argc, char** argv, char** environment) {
    for (;;) {
        if (::sem_wait(&g_torture->go) != 0) continue;
        const pid_t child = ::fork();
        if (child == 0) break;
        g_torture->child = child;
        ::waitpid(child, &g_torture->status, 0);
        ::sem_post(&g_torture->done);
    }
    g_serving = false;
    std::exit(main(argc, argv, environment));
}

int (*g_main)(int, char**, char**);

int main_again(int argc, char** argv, char** environment) {
    if (const char* at =
            std::getenv("QM_TORTURE_AT")) // for a debugger: the number, and - when all that follow fail
        g_torture->arm({Failing::allocations, std::atol(at), std::strchr(at, '-') != nullptr}, 0);
    if (!g_serving) return g_main(argc, argv, environment);
    serve(g_main, argc, argv, environment);
    return 0;
}

[[gnu::constructor]] void share() {
    const char* descriptor = std::getenv("QM_TORTURE");
    if (!descriptor) return;
    void* memory =
        ::mmap(nullptr, sizeof(Torture), PROT_READ | PROT_WRITE, MAP_SHARED, std::atoi(descriptor), 0);
    if (memory == MAP_FAILED) std::abort();
    ::close(std::atoi(descriptor));
    g_torture = static_cast<Torture*>(memory);
    g_serving = std::getenv("QM_TORTURE_AGAIN") != nullptr;
    ::unsetenv("LD_PRELOAD"); // nobody that is started from here is meant
}

} // namespace

extern "C" {

#define EXPORT __attribute__((visibility("default")))

EXPORT Torture* torture() { return g_torture; }
EXPORT long torture_live() { return t_live; }

EXPORT int __libc_start_main(int (*main)(int, char**, char**), int argc, char** argv, void (*init)(),
                             void (*fini)(), void (*rtld_fini)(), void* stack_end) {
    g_main = main;
    return next<decltype(__libc_start_main)>("__libc_start_main")(main_again, argc, argv, init, fini,
                                                                  rtld_fini, stack_end);
}

// ---- Allocations ----------------------------------------------------------------------------------------

EXPORT void* malloc(std::size_t size) { return out_of_memory() ? nullptr : counted(__libc_malloc(size)); }

EXPORT void* calloc(std::size_t count, std::size_t size) {
    return out_of_memory() ? nullptr : counted(__libc_calloc(count, size));
}

EXPORT void* realloc(void* memory, std::size_t size) {
    if (size != 0 && out_of_memory()) return nullptr;
    void* const moved = __libc_realloc(memory, size);
    if (!memory) return counted(moved);
    if (size == 0) --t_live;
    return moved;
}

EXPORT void* memalign(std::size_t alignment, std::size_t size) {
    return out_of_memory() ? nullptr : counted(__libc_memalign(alignment, size));
}
EXPORT void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }

EXPORT int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
    void* const made = memalign(alignment, size);
    if (made) *memory = made;
    return made ? 0 : ENOMEM;
}

EXPORT void free(void* memory) {
    if (memory) --t_live;
    __libc_free(memory);
}

// ---- System calls ---------------------------------------------------------------------------------------

// Fails in one of these ways, or does what it does.
#define CALL(Result, name, parameters, arguments, failure, ...)                                              \
    EXPORT Result name parameters {                                                                          \
        static const auto real = next<Result parameters>(#name);                                             \
        return fault(#name, {__VA_ARGS__}) ? failure : real arguments;                                       \
    }
// The same for calls that may carry less than size.
#define TRANSFER(name, parameters, arguments, ...)                                                           \
    EXPORT ssize_t name parameters {                                                                         \
        static const auto real = next<ssize_t parameters>(#name);                                            \
        const int error = fault(#name, {__VA_ARGS__});                                                       \
        if (error > 0) return -1;                                                                            \
        if (error == kShort && size > 1) size = 1;                                                           \
        const ssize_t carried = real arguments;                                                              \
        AFTER_TRANSFER;                                                                                      \
        return carried;                                                                                      \
    }

CALL(int, socket, (int domain, int type, int protocol), (domain, type, protocol), -1, EMFILE, ENFILE, ENOBUFS,
     EACCES)
CALL(int, bind, (int fd, const sockaddr* at, socklen_t size), (fd, at, size), -1, EADDRINUSE, EACCES, ENOBUFS)
CALL(int, connect, (int fd, const sockaddr* to, socklen_t size), (fd, to, size), -1, ECONNREFUSED,
     EADDRNOTAVAIL, ENETUNREACH, EAGAIN, EACCES, ENOBUFS)
CALL(int, getsockopt, (int fd, int level, int option, void* value, socklen_t* size),
     (fd, level, option, value, size), -1, ENOBUFS)
CALL(int, getifaddrs, (ifaddrs * *list), (list), -1, EMFILE, ENOBUFS)
CALL(int, rename, (const char* from, const char* to), (from, to), -1, EACCES, ENOSPC)
CALL(int, mkdir, (const char* path, mode_t mode), (path, mode), -1, EACCES, ENOSPC)
CALL(FILE*, fopen, (const char* path, const char* mode), (path, mode), nullptr, EMFILE, EACCES)
CALL(FILE*, fopen64, (const char* path, const char* mode), (path, mode), nullptr, EMFILE, EACCES)
CALL(FILE*, fdopen, (int fd, const char* mode), (fd, mode), nullptr, ENOMEM)
CALL(int, mkostemp, (char* path, int flags), (path, flags), -1, EMFILE, EACCES, ENOSPC)
CALL(char*, mkdtemp, (char* path), (path), nullptr, EACCES, ENOSPC)
CALL(int, dup2, (int from, int to), (from, to), -1, EINTR, EMFILE)

#define AFTER_TRANSFER note_sent(data, carried)
TRANSFER(send, (int fd, const void* data, std::size_t size, int flags), (fd, data, size, flags), kShort,
         EINTR, EAGAIN, ENOBUFS, ECONNRESET, EPIPE)
TRANSFER(sendto,
         (int fd, const void* data, std::size_t size, int flags, const sockaddr* to, socklen_t length),
         (fd, data, size, flags, to, length), ENOBUFS, ENETUNREACH, EACCES)
#undef AFTER_TRANSFER
#define AFTER_TRANSFER (void)0
TRANSFER(write, (int fd, const void* data, std::size_t size), (fd, data, size), kShort, EINTR, ENOSPC, EIO)
TRANSFER(read, (int fd, void* data, std::size_t size), (fd, data, size), kShort, EINTR, EIO)
TRANSFER(recv, (int fd, void* data, std::size_t size, int flags), (fd, data, size, flags), kShort, EINTR,
         EAGAIN, ECONNRESET)
TRANSFER(recvfrom, (int fd, void* data, std::size_t size, int flags, sockaddr* from, socklen_t* length),
         (fd, data, size, flags, from, length), EINTR, EAGAIN, ENOBUFS)

// Waits a part of the time where QM_TORTURE_HURRY says which.
EXPORT int poll(pollfd* entries, nfds_t count, int timeout) {
    static const auto real = next<int(pollfd*, nfds_t, int)>("poll");
    static const char* const hurry = std::getenv("QM_TORTURE_HURRY");
    return fault("poll", {EINTR, ENOMEM})
               ? -1
               : real(entries, count, hurry ? timeout / std::atoi(hurry) : timeout);
}

EXPORT ssize_t writev(int fd, const iovec* parts, int count) {
    static const auto real = next<ssize_t(int, const iovec*, int)>("writev");
    const int error = fault("writev", {kShort, EINTR, ENOSPC, EIO});
    if (error > 0) return -1;
    return real(fd, parts, error == kShort ? 1 : count);
}

// A descriptor is closed whatever close says.
EXPORT int close(int fd) {
    static const auto real = next<int(int)>("close");
    const int result = real(fd);
    return fault("close", {EINTR, EIO}) ? -1 : result;
}

#define OPEN(name, parameters, last, ...)                                                                    \
    EXPORT int name parameters {                                                                             \
        static const auto real = next<int parameters>(#name);                                                \
        std::va_list list;                                                                                   \
        va_start(list, last);                                                                                \
        const mode_t mode = last & (O_CREAT | O_TMPFILE) ? va_arg(list, mode_t) : 0;                         \
        va_end(list);                                                                                        \
        return fault(#name, {EMFILE, EACCES, ENOSPC}) ? -1 : real(__VA_ARGS__, last, mode);                  \
    }
OPEN(open, (const char* path, int flags, ...), flags, path)
OPEN(open64, (const char* path, int flags, ...), flags, path)
OPEN(openat, (int folder, const char* path, int flags, ...), flags, folder, path)

EXPORT int fcntl(int fd, int command, ...) {
    static const auto real = next<int(int, int, ...)>("fcntl");
    std::va_list list;
    va_start(list, command);
    void* const argument = va_arg(list, void*);
    va_end(list);
    return fault("fcntl", {EINTR, ENOLCK}) ? -1 : real(fd, command, argument);
}

// Rests are not what is tested.
EXPORT int nanosleep(const timespec*, timespec*) { return 0; }
EXPORT int usleep(useconds_t) { return 0; }
EXPORT int sigtimedwait(const sigset_t*, siginfo_t*, const timespec*) {
    errno = EAGAIN;
    return -1;
}

} // extern "C"
