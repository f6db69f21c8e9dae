#include "rescue.h"

#include "callstack.h"
#include "crashreport.h"
#include "cvxcrashhandler.h"
#include "dbapserv.h"
#include "exitcodes.h"
#include "interrupt.h"
#include "librarywork.h"
#include "rescueport.h"
#include "reservememory.h"
#include "textencoding.h"
#include "timelimit.h"
#include "tracefile.h"
#include "workers.h"

#include <atomic>
#include <csetjmp>
#include <csignal>
#include <cstring>
#include <ctime>
#include <cxxabi.h>
#include <exception>
#include <memory>
#include <new>
#include <sys/mman.h>
#include <sys/resource.h>
#include <termios.h>
#include <ucontext.h>
#include <unistd.h>

namespace rescue {
namespace {

using crashreport::say;

constexpr std::size_t stackSize = std::size_t{8} << 20;
constexpr std::size_t faultStackSize = std::size_t{128} << 10;
constexpr std::size_t leastReserve = std::size_t{32} << 20;
constexpr std::size_t reserveForByte = 12; ///< of a drawing's file
constexpr std::size_t mostReserve = std::size_t{16} << 30;
constexpr std::size_t shareOfLimit = 6; ///< where the process may have so much memory and no more
constexpr int secondsForRescue = 60;
constexpr std::size_t mostCalls = 24;
constexpr std::size_t longestText = 1024;

enum class Stage : unsigned char { working, failing, rescuing };

struct Calls {
    const void* addresses[mostCalls];
    std::size_t count = 0;
    const wchar_t* traced[16];
    std::size_t tracedCount = 0;

    void capture(const void* from) {
        count = callstack::capture(addresses, mostCalls, from);
        tracedCount = std::min(hostkit::openTracedCalls(traced, std::size(traced)), std::size(traced));
    }
};

struct Failure {
    int code = 0;
    char what[longestText] = "";
    char who[longestText] = "";
    Calls calls;
};

volatile Stage g_stage = Stage::working;
std::atomic<bool> g_isHandedOver = false; ///< another thread has failed
bool g_isInstalled = false;
bool g_hasDrawings = true;
pid_t g_mainThread = 0;
Failure g_failure;
Failure g_thrown; ///< what noteThrow keeps
sigjmp_buf g_sayingEnd;
volatile bool g_isSaying = false;
ucontext_t g_rescueContext;
std::unique_ptr<RescuePort> g_port;
termios g_terminal; ///< as it was when the program began; the editing of lines changes it
bool g_isTerminal = false;

void keep(char (&place)[longestText], std::string_view text, std::string_view more = {}) {
    const std::size_t length = text.copy(place, longestText - 1);
    place[length + more.copy(place + length, longestText - 1 - length)] = '\0';
}

// Does what a failing program can say of itself; a fault in it ends it, and all else goes on.
template <class Work>
void tryToSay(Work&& work) {
    if (sigsetjmp(g_sayingEnd, 1) == 0) {
        g_isSaying = true;
        work();
    }
    g_isSaying = false;
}

// --- The report ----------------------------------------------------------------------------------------

void sayHexadecimal(std::uintptr_t number) {
    char text[20];
    char* at = text + sizeof text;
    do *--at = "0123456789abcdef"[number % 16];
    while ((number /= 16) != 0);
    say("0x");
    say(std::string_view(at, static_cast<std::size_t>(text + sizeof text - at)));
}

void sayPlace(const callstack::Place& place) {
    say(place.module);
    say(": ");
    if (place.function[0]) {
        int status = 0;
        char* const readable = abi::__cxa_demangle(place.function, nullptr, nullptr, &status);
        say(readable ? readable : place.function);
        std::free(readable);
    }
    say("+");
    sayHexadecimal(place.offset);
}

bool isOfProgram(const callstack::Place& place) {
    char program[callstack::Place::longest];
    const ssize_t length = readlink("/proc/self/exe", program, sizeof program);
    return length > 0 &&
           std::string_view(place.module) == std::string_view(program, static_cast<std::size_t>(length));
}

// A function that calls itself is told once; what the program itself does in between is its own affair.
void sayCalls(const Calls& calls) {
    callstack::Place last;
    for (std::size_t i = 0; i < calls.count; ++i) {
        // A call returns behind it.
        const char* const address = static_cast<const char*>(calls.addresses[i]) - (i > 0 ? 1 : 0);
        callstack::Place place;
        if (!callstack::find(address, place)) {
            if (i > 0) break; // the end of the stack
            say("  in no module, at ");
            sayHexadecimal(reinterpret_cast<std::uintptr_t>(address));
            say("\n");
            continue;
        }
        if (isOfProgram(place)) continue;
        const bool isAgain = place.function[0] && std::strcmp(place.module, last.module) == 0 &&
                             std::strcmp(place.function, last.function) == 0;
        if (isAgain) continue;
        say(last.module[0] ? "  called by " : "  in ");
        sayPlace(place);
        say("\n");
        last = place;
    }
    for (std::size_t i = calls.tracedCount; i-- > 0;) {
        say("  traced call ");
        for (const wchar_t* at = calls.traced[i]; *at; ++at) {
            const char letter = *at < 128 ? static_cast<char>(*at) : '?';
            say(std::string_view(&letter, 1));
        }
        say("\n");
    }
}

void report(const Failure& failure) {
    g_stage = Stage::failing;
    say("\nvexohost: ");
    say(failure.who);
    say(failure.what);
    say("\n");
    tryToSay([&] { sayCalls(failure.calls); });
}

// --- The rescue ----------------------------------------------------------------------------------------

int sayNotRescued(std::string_view reason) {
    say("vexohost: the drawing is not rescued: ");
    say(reason);
    say("\n");
    return exitcode::notRescued;
}

int buildHandler(const Failure& failure) {
    const AcDbHostApplicationServices* const services = acdbHostApplicationServices();
    if (!g_hasDrawings || !services || !services->workingDatabase()) return sayNotRescued("none is open");
    if (!g_port || g_port->recoverDirectory().empty())
        return sayNotRescued("no place for recovered drawings is known");
    const hostkit::ScopedPort scope(*g_port);
    g_port->makePlace();
    std::wstring text = hostkit::wideFromUtf8(failure.who) + hostkit::wideFromUtf8(failure.what);
    if (!hostkit::buildCrashHandler(text.data(), failure.code))
        return sayNotRescued("the library's part that saves it is missing");
    const std::string file = g_port->recovered();
    if (file.empty()) {
        const std::string reason = g_port->recoverDirectory() + ": it could not be saved there";
        return sayNotRescued(reason);
    }
    say("vexohost: the drawing as it was then is recovered in ");
    say(file);
    say("\n");
    return exitcode::rescued;
}

int rescueDrawing(const Failure& failure) {
    g_stage = Stage::rescuing;
    hostkit::traceActive = false;
    alarm(secondsForRescue);
    int code = exitcode::notRescued;
    try {
        code = buildHandler(failure);
    } catch (const std::bad_alloc&) {
        sayNotRescued("there is not enough memory");
    } catch (...) {
        sayNotRescued("its saving threw an exception");
    }
    alarm(0);
    return code;
}

// On a stack of its own, so that the failed one and that of the fault are left alone.
void rescueAndEnd() {
    reservememory::use();
    hostkit::workAlone();
    report(g_failure);
    const int code = rescueDrawing(g_failure);
    if (g_isTerminal) tcsetattr(STDIN_FILENO, TCSANOW, &g_terminal);
    _exit(code);
}

[[noreturn]] void leaveForRescue() {
    setcontext(&g_rescueContext);
    _exit(exitcode::notRescued);
}

// --- Failures ------------------------------------------------------------------------------------------

const void* placeOfFault(const void* context) {
    const auto& machine = static_cast<const ucontext_t*>(context)->uc_mcontext;
#if defined(__x86_64__)
    return reinterpret_cast<const void*>(machine.gregs[REG_RIP]);
#elif defined(__aarch64__)
    return reinterpret_cast<const void*>(machine.pc);
#else
    (void)machine;
    return nullptr;
#endif
}

[[noreturn]] void onSecondFailure(int number) {
    if (g_isSaying) siglongjmp(g_sayingEnd, 1);
    sayNotRescued(number == SIGALRM ? std::string_view("it took longer than a minute")
                                    : crashreport::textOf(number));
    _exit(exitcode::notRescued);
}

// A drawing belongs to the main thread: whoever fails hands over to it and waits for the end.
[[noreturn]] void handOver(int number, const void* place) {
    if (!g_isHandedOver.exchange(true)) g_failure.calls.capture(place);
    tgkill(getpid(), g_mainThread, number);
    for (;;) pause();
}

// No failure of the rescue: the time limit of what has failed already, and a sender who has lost patience.
bool isFromOutside(const siginfo_t& info) {
    const bool isSent = info.si_code == SI_USER || info.si_code == SI_QUEUE;
    return info.si_code == SI_TIMER || (isSent && info.si_pid != getpid());
}

void onFault(int number, siginfo_t* info, void* context) {
    if (gettid() != g_mainThread) handOver(number, placeOfFault(context));
    if (number == SIGALRM && g_stage == Stage::working && timelimit::seconds() == 0) {
        // Nobody's here: it does what it would without us.
        signal(SIGALRM, SIG_DFL);
        raise(SIGALRM);
    }
    if (g_stage != Stage::working && isFromOutside(*info)) return;
    if (g_stage != Stage::working) onSecondFailure(number);
    if (number == SIGALRM && !timelimit::isUpForGood()) {
        keep(g_thrown.who, crashreport::who());
        return;
    }
    g_stage = Stage::failing;
    g_failure.code = number;
    keep(g_failure.who, crashreport::who());
    if (number == SIGALRM)
        keep(g_failure.what, " took too long (--timeout)");
    else
        keep(g_failure.what, " crashed: ", crashreport::textOf(number));
    // The stack may be what is torn.
    if (!g_isHandedOver) tryToSay([=] { g_failure.calls.capture(placeOfFault(context)); });
    leaveForRescue();
}

void describeException(std::exception_ptr thrown, char (&what)[longestText]) {
    try {
        std::rethrow_exception(std::move(thrown));
    } catch (const std::bad_alloc&) {
        keep(what, " ran out of memory");
    } catch (const std::exception& fault) {
        keep(what, " threw an exception that nobody took: ", fault.what());
    } catch (...) {
        keep(what, " threw what is no exception");
    }
}

void onTerminate() {
    if (gettid() != g_mainThread || g_stage != Stage::working) std::abort();
    g_failure = g_thrown;
    g_stage = Stage::failing;
    g_failure.code = SIGABRT;
    keep(g_failure.who, crashreport::who());
    keep(g_failure.what, " gave up");
    if (const std::exception_ptr thrown = std::current_exception()) describeException(thrown, g_failure.what);
    leaveForRescue();
}

// A command is to have what it needs under a limit, too.
std::size_t reserveFor(std::size_t wanted) {
    rlimit limit{};
    const bool isLimited = getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
    return std::min(wanted,
                    isLimited ? static_cast<std::size_t>(limit.rlim_cur) / shareOfLimit : mostReserve);
}

// --- Preparation ---------------------------------------------------------------------------------------

void* newStack(std::size_t size) {
    constexpr std::size_t guard = 4096;
    void* const place = mmap(nullptr, size + guard, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK | MAP_NORESERVE, -1, 0);
    if (place == MAP_FAILED) return nullptr;
    mprotect(place, guard, PROT_NONE);
    return static_cast<char*>(place) + guard;
}

bool prepareStacks() {
    stack_t stack{};
    stack.ss_size = faultStackSize;
    stack.ss_sp = newStack(faultStackSize);
    void* const own = newStack(stackSize);
    if (!stack.ss_sp || !own || sigaltstack(&stack, nullptr) != 0 || getcontext(&g_rescueContext) != 0)
        return false;
    g_rescueContext.uc_stack.ss_sp = own;
    g_rescueContext.uc_stack.ss_size = stackSize;
    g_rescueContext.uc_link = nullptr;
    makecontext(&g_rescueContext, rescueAndEnd, 0);
    return true;
}

} // namespace

void install() {
    g_mainThread = gettid();
    if (!prepareStacks()) return crashreport::installLastWord();
    (void)reservememory::setAside(reserveFor(leastReserve));
    struct sigaction action {};
    action.sa_sigaction = onFault;
    // A fault within the handling of one comes again.
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER | SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : crashreport::FaultSignals::numbers) sigaction(number, &action, nullptr);
    sigaction(SIGALRM, &action, nullptr);
    std::set_terminate(onTerminate);
    g_isTerminal = tcgetattr(STDIN_FILENO, &g_terminal) == 0;
    g_isInstalled = true;
}

bool isInstalled() { return g_isInstalled; }

void prepare() {
    if (!g_isInstalled) return;
    g_port = std::make_unique<RescuePort>();
    if (const LibraryWork* const work = findLibraryWork()) hostkit::setCrashHandlerBuilder(work->rescue);
    // What is made at the first use is made now: the zone of time, and what the unwinding needs.
    tzset();
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    g_thrown.calls.capture(nullptr);
    g_thrown.calls.count = 0;
}

void expect(std::size_t bytes) {
    if (g_isInstalled) (void)reservememory::setAside(reserveFor(leastReserve + bytes * reserveForByte));
}

void endDrawings() { g_hasDrawings = false; }

int afterFailure(const std::string& what) {
    g_failure = g_thrown;
    if (!g_failure.who[0]) keep(g_failure.who, crashreport::who());
    keep(g_failure.what, what);
    reservememory::giveBack();
    report(g_failure);
    const int code = rescueDrawing(g_failure);
    g_stage = Stage::working;
    return code;
}

void noteThrow() {
    if (!g_isInstalled || g_stage != Stage::working || gettid() != g_mainThread) return;
    keep(g_thrown.who, crashreport::who());
    g_thrown.calls.capture(nullptr);
}

} // namespace rescue
