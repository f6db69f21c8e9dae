#include "faultpoints.h"

#include "replacednew.h"

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

std::atomic<bool> isArmed = false;
std::atomic<std::size_t> counts[faults::sortCount];
faults::Sort failingSort = faults::Sort::kHostCall;
std::size_t failingNumber = faults::never;
bool tellsCallers = false;
std::atomic<const char*> failedName = nullptr;
std::atomic<std::int64_t> blocks = 0;

bool isDue(faults::Sort sort, const char* name) {
    if (!isArmed.load(std::memory_order_relaxed)) return false;
    const std::size_t number = counts[static_cast<std::size_t>(sort)]++;
    if (sort != failingSort || number != failingNumber) return false;
    failedName = name;
    if (tellsCallers) {
        void* callers[40];
        backtrace_symbols_fd(callers, backtrace(callers, 40), STDOUT_FILENO);
    }
    return true;
}

// The platform's own function behind one that stands in for it here.
template <class Function>
Function* behind(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool fails(const char* name, int error) {
    if (!isDue(faults::Sort::kFileOperation, name)) return false;
    errno = error;
    return true;
}

} // namespace

namespace faults {

void arm(Sort sort, std::size_t number) {
    for (auto& each : counts) each = 0;
    failingSort = sort;
    failingNumber = number;
    failedName = nullptr;
    isArmed = true;
}
void tellCallers() {
    void* callers[1];
    backtrace(callers, 1); // loads what it needs
    tellsCallers = true;
}
void disarm() { isArmed = false; }
std::size_t count(Sort sort) { return counts[static_cast<std::size_t>(sort)]; }
const char* failed() { return failedName; }
std::int64_t liveBlocks() { return blocks; }

} // namespace faults

void replacednew::beforeAllocation() {
    if (isDue(faults::Sort::kAllocation, "new")) throw std::bad_alloc();
}
void replacednew::afterAllocation() { ++blocks; }
void replacednew::beforeRelease() { --blocks; }

// The operations of files that the layers call. Those that give back (close, unlink) do not fail.
extern "C" {

int open(const char* path, int flags, ...) {
    static auto* const next = behind<int(const char*, int, ...)>("open");
    std::va_list rest;
    va_start(rest, flags);
    const unsigned mode = va_arg(rest, unsigned);
    va_end(rest);
    return fails("open", EMFILE) ? -1 : next(path, flags, mode);
}
ssize_t read(int file, void* buffer, std::size_t size) {
    static auto* const next = behind<ssize_t(int, void*, std::size_t)>("read");
    return fails("read", EIO) ? -1 : next(file, buffer, size);
}
ssize_t write(int file, const void* buffer, std::size_t size) {
    static auto* const next = behind<ssize_t(int, const void*, std::size_t)>("write");
    return fails("write", ENOSPC) ? -1 : next(file, buffer, size);
}
ssize_t writev(int file, const iovec* parts, int count) {
    static auto* const next = behind<ssize_t(int, const iovec*, int)>("writev");
    return fails("writev", ENOSPC) ? -1 : next(file, parts, count);
}
int fsync(int file) {
    static auto* const next = behind<int(int)>("fsync");
    return fails("fsync", EIO) ? -1 : next(file);
}
int ftruncate(int file, off_t size) noexcept {
    static auto* const next = behind<int(int, off_t)>("ftruncate");
    return fails("ftruncate", EIO) ? -1 : next(file, size);
}
int fstat(int file, struct stat* status) noexcept {
    static auto* const next = behind<int(int, struct stat*)>("fstat");
    return fails("fstat", EIO) ? -1 : next(file, status);
}
int fchmod(int file, mode_t mode) noexcept {
    static auto* const next = behind<int(int, mode_t)>("fchmod");
    return fails("fchmod", EPERM) ? -1 : next(file, mode);
}
int mkdir(const char* path, mode_t mode) noexcept {
    static auto* const next = behind<int(const char*, mode_t)>("mkdir");
    return fails("mkdir", ENOSPC) ? -1 : next(path, mode);
}
int rename(const char* from, const char* to) noexcept {
    static auto* const next = behind<int(const char*, const char*)>("rename");
    return fails("rename", EACCES) ? -1 : next(from, to);
}
int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
    static auto* const next = behind<int(int, const char*, int, const char*, unsigned)>("renameat2");
    return fails("renameat2", EACCES) ? -1 : next(fromFolder, from, toFolder, to, flags);
}
DIR* opendir(const char* path) {
    static auto* const next = behind<DIR*(const char*)>("opendir");
    return fails("opendir", EMFILE) ? nullptr : next(path);
}
std::FILE* fdopen(int file, const char* mode) noexcept {
    static auto* const next = behind<std::FILE*(int, const char*)>("fdopen");
    return fails("fdopen", ENOMEM) ? nullptr : next(file, mode);
}
std::FILE* fopen(const char* path, const char* mode) {
    static auto* const next = behind<std::FILE*(const char*, const char*)>("fopen");
    return fails("fopen", EMFILE) ? nullptr : next(path, mode);
}

/// A call of the kit as the list has it.
struct HostCall {
    const char* name;
    void* kit; ///< the kit's own, once it was asked for
};

/// Of the stubs below: where the call goes, or null where it fails.
void* faultsTarget(HostCall* call) {
    if (!call->kit) call->kit = dlsym(RTLD_NEXT, call->name);
    return isDue(faults::Sort::kHostCall, call->name) ? nullptr : call->kit;
}
}

// One stub a call, under the call's own name: what others link to finds it first. The arguments stay where
// they are, so that no signature need be known. Those that open give a null pointer with their status.
asm(R"(
    .macro HOST_STUB symbol
        .pushsection .rodata
    1:  .asciz "\symbol"
        .popsection
        .pushsection .data
        .balign 16
    2:  .quad 1b, 0
        .popsection
        .pushsection .text
        .globl \symbol
        .type \symbol, @function
    \symbol:
        .cfi_startproc
        push %rdi
        push %rsi
        push %rdx
        push %rcx
        push %r8
        push %r9
        push %rax
        .cfi_adjust_cfa_offset 56
        sub $128, %rsp
        .cfi_adjust_cfa_offset 128
        movups %xmm0, (%rsp)
        movups %xmm1, 16(%rsp)
        movups %xmm2, 32(%rsp)
        movups %xmm3, 48(%rsp)
        movups %xmm4, 64(%rsp)
        movups %xmm5, 80(%rsp)
        movups %xmm6, 96(%rsp)
        movups %xmm7, 112(%rsp)
        lea 2b(%rip), %rdi
        call faultsTarget
        mov %rax, %r11
        movups (%rsp), %xmm0
        movups 16(%rsp), %xmm1
        movups 32(%rsp), %xmm2
        movups 48(%rsp), %xmm3
        movups 64(%rsp), %xmm4
        movups 80(%rsp), %xmm5
        movups 96(%rsp), %xmm6
        movups 112(%rsp), %xmm7
        add $128, %rsp
        .cfi_adjust_cfa_offset -128
        pop %rax
        pop %r9
        pop %r8
        pop %rcx
        pop %rdx
        pop %rsi
        pop %rdi
        .cfi_adjust_cfa_offset -56
        test %r11, %r11
        je 3f
        jmp *%r11
    3:
    .endm
    .macro HOST_STUB_END symbol
        ret
        .cfi_endproc
        .size \symbol, . - \symbol
        .popsection
    .endm
    .macro HOST_CALL symbol, way
        HOST_STUB \symbol
        .ifc \way, status
            mov $6, %eax
        .endif
        .ifc \way, opening
            movq $0, (%rdi)
            mov $6, %eax
        .endif
        .ifc \way, result
            mov $-5001, %eax
        .endif
        .ifc \way, nothing
            xor %eax, %eax
        .endif
        HOST_STUB_END \symbol
    .endm
    .include "hostcalls.inc"
)");
