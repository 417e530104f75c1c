// Linked into the converter: the n-th call of one kind fails as if the system had refused it, once.
//   FAULT=<kind>:<n>     kind: open, write, close, rename or alloc, counted from the start of main, outside of the
//   console
//                        and of the system's own files, in the libraries too; 0 fails none
//                        renames: the n-th rename and all behind it
//                        term: the request to end, SIGTERM, comes at the n-th of all these but allocations, which
//                        succeed
//   FAULT_COUNT=<file>   gets the number of calls of that kind
#ifndef _GNU_SOURCE
#define _GNU_SOURCE
#endif
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

std::atomic<bool> counting{false};
std::atomic<long> calls{0};
long failing = 0;
char kind[16] = "";

template <typename Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

thread_local bool threadStarts = false;  ///< the sanitizer looks at its stack, and may not fail

bool fails(const char* what) {
    if (!counting || threadStarts) return false;
    if (std::strcmp(kind, "term") == 0 && std::strcmp(what, "alloc") != 0 && ++calls == failing) {
        kill(getpid(), SIGTERM);
        usleep(20000);  // the program's own thread takes it
    }
    if (std::strcmp(kind, "renames") == 0) return std::strcmp(what, "rename") == 0 && ++calls >= failing && failing > 0;
    return std::strcmp(what, kind) == 0 && ++calls == failing;
}

/// The system's files (of memory, of code pages, of libraries) are no inputs or outputs.
bool ofSystem(const char* name) {
    for (const char* folder : {"/proc/", "/sys/", "/usr/", "/lib", "/etc/", "/dev/"})
        if (std::strncmp(name, folder, std::strlen(folder)) == 0) return true;
    return false;
}

bool ofConsole(int file) { return file <= 2; }

int (*mainOfProgram)(int, char**, char**);

int countedMain(int argc, char** argv, char** environment) {
    if (const char* fault = std::getenv("FAULT")) std::sscanf(fault, "%15[a-z]:%ld", kind, &failing);
    counting = true;
    const int status = mainOfProgram(argc, argv, environment);
    counting = false;
    if (const char* name = std::getenv("FAULT_COUNT"))
        if (std::FILE* const file = std::fopen(name, "w")) {
            std::fprintf(file, "%ld\n", calls.load());
            std::fclose(file);
        }
    return status;
}

int failedWith(int error) {
    errno = error;
    return -1;
}

}  // namespace

extern "C" {

int __libc_start_main(int (*program)(int, char**, char**), int argc, char** argv, void (*init)(), void (*fini)(),
                      void (*loaderEnd)(), void* stackEnd) {
    mainOfProgram = program;
    using Start = int(int (*)(int, char**, char**), int, char**, void (*)(), void (*)(), void (*)(), void*);
    return real<Start>("__libc_start_main")(countedMain, argc, argv, init, fini, loaderEnd, stackEnd);
}

int pthread_getattr_np(pthread_t thread, pthread_attr_t* attributes) {
    threadStarts = true;
    const int status = real<int(pthread_t, pthread_attr_t*)>("pthread_getattr_np")(thread, attributes);
    threadStarts = false;
    return status;
}

std::FILE* fopen(const char* name, const char* mode) {
    if (!ofSystem(name) && fails("open")) return failedWith(EIO), nullptr;
    return real<std::FILE*(const char*, const char*)>("fopen")(name, mode);
}
std::FILE* fopen64(const char* name, const char* mode) {
    if (!ofSystem(name) && fails("open")) return failedWith(EIO), nullptr;
    return real<std::FILE*(const char*, const char*)>("fopen64")(name, mode);
}
std::FILE* fdopen(int file, const char* mode) {
    if (fails("open")) return failedWith(EMFILE), nullptr;
    return real<std::FILE*(int, const char*)>("fdopen")(file, mode);
}

static int openWith(const char* function, const char* name, int flags, std::va_list rest) {
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    if (!ofSystem(name) && fails("open")) return failedWith(EIO);
    return real<int(const char*, int, ...)>(function)(name, flags, mode);
}
int open(const char* name, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const int file = openWith("open", name, flags, rest);
    va_end(rest);
    return file;
}
int open64(const char* name, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const int file = openWith("open64", name, flags, rest);
    va_end(rest);
    return file;
}

ssize_t write(int file, const void* bytes, std::size_t count) {
    if (!ofConsole(file) && fails("write")) return failedWith(ENOSPC);
    return real<ssize_t(int, const void*, std::size_t)>("write")(file, bytes, count);
}
ssize_t pwrite(int file, const void* bytes, std::size_t count, off_t at) {
    if (fails("write")) return failedWith(ENOSPC);
    return real<ssize_t(int, const void*, std::size_t, off_t)>("pwrite")(file, bytes, count, at);
}
ssize_t pwrite64(int file, const void* bytes, std::size_t count, off64_t at) {
    if (fails("write")) return failedWith(ENOSPC);
    return real<ssize_t(int, const void*, std::size_t, off64_t)>("pwrite64")(file, bytes, count, at);
}
std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count, std::FILE* stream) {
    if (!ofConsole(fileno(stream)) && fails("write")) return failedWith(ENOSPC), 0;
    return real<std::size_t(const void*, std::size_t, std::size_t, std::FILE*)>("fwrite")(bytes, size, count, stream);
}

int close(int file) {
    const int closed = real<int(int)>("close")(file);
    return !ofConsole(file) && fails("close") ? failedWith(EIO) : closed;
}
int fclose(std::FILE* stream) {
    const bool failed = !ofConsole(fileno(stream)) && fails("close");
    const int closed = real<int(std::FILE*)>("fclose")(stream);
    return failed ? failedWith(EIO) : closed;
}
int rename(const char* from, const char* to) {
    if (fails("rename")) return failedWith(EIO);
    return real<int(const char*, const char*)>("rename")(from, to);
}
}

namespace {

// dlsym takes memory itself before the first answer is there.
alignas(16) char early[1U << 16];
std::atomic<std::size_t> earlyUsed{0};
thread_local bool resolving = false;

void* earlyBlock(std::size_t size) { return early + earlyUsed.fetch_add((size + 15U) & ~std::size_t{15}); }
bool isEarly(void* block) { return block >= early && block < early + sizeof early; }

template <typename Function>
Function* resolved(std::atomic<Function*>& known, const char* name) {
    if (Function* const found = known) return found;
    if (resolving) return nullptr;
    resolving = true;
    known = real<Function>(name);
    resolving = false;
    return known;
}

std::atomic<void* (*)(std::size_t)> realMalloc;
std::atomic<void* (*)(std::size_t, std::size_t)> realCalloc;
std::atomic<void* (*)(void*, std::size_t)> realRealloc;
std::atomic<void (*)(void*)> realFree;

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
    const auto function = resolved(realMalloc, "malloc");
    if (function == nullptr) return earlyBlock(size);
    if (fails("alloc")) return failedWith(ENOMEM), nullptr;
    return function(size);
}
void* calloc(std::size_t count, std::size_t size) {
    const auto function = resolved(realCalloc, "calloc");
    if (function == nullptr) return earlyBlock(count * size);
    if (fails("alloc")) return failedWith(ENOMEM), nullptr;
    return function(count, size);
}
void* realloc(void* block, std::size_t size) {
    const auto function = resolved(realRealloc, "realloc");
    if (function == nullptr || isEarly(block)) {
        void* const moved = malloc(size);
        if (moved != nullptr && block != nullptr) std::memcpy(moved, block, size);
        return moved;
    }
    if (fails("alloc")) return failedWith(ENOMEM), nullptr;
    return function(block, size);
}
void free(void* block) {
    if (block == nullptr || isEarly(block)) return;
    if (const auto function = resolved(realFree, "free")) function(block);
}
}

// The address sanitizer has its own of these; here every block goes the way above.
namespace {
void* newBlock(std::size_t size) { return malloc(size == 0 ? 1 : size); }
}  // namespace

void* operator new(std::size_t size) {
    void* const block = newBlock(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return newBlock(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return newBlock(size); }
void operator delete(void* block) noexcept { free(block); }
void operator delete[](void* block) noexcept { free(block); }
void operator delete(void* block, std::size_t) noexcept { free(block); }
void operator delete[](void* block, std::size_t) noexcept { free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { free(block); }
