#include "crashreport.h"

#include "timelimit.h"

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <iterator>
#include <unistd.h>

namespace crashreport {

const int FaultSignals::numbers[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};

namespace {

constexpr std::string_view texts[] = {
    "memory that is not its own was used (SIGSEGV)", "memory that is not there was used (SIGBUS)",
    "a whole number was divided by zero, or the like (SIGFPE)",
    "an instruction that the processor does not know (SIGILL)", "the code gave up (SIGABRT)"};
static_assert(std::size(texts) == FaultSignals::count);

struct sigaction g_earlier[FaultSignals::count];
constexpr std::size_t longestName = 1024;
char g_who[longestName];
volatile std::size_t g_length = 0;
int g_depth = 0;
// A fault of a stack that is used up needs another one.
alignas(std::max_align_t) char g_stack[65536];

void name(std::string_view who) {
    g_length = 0;
    const std::size_t length = std::min(who.size(), longestName);
    std::copy_n(who.data(), length, g_who);
    g_length = length;
}

int placeOf(int signal) {
    const int* const found =
        std::find(std::begin(FaultSignals::numbers), std::end(FaultSignals::numbers), signal);
    return static_cast<int>(found - FaultSignals::numbers);
}

// Whoever had the signal before comes next: the system, which ends the program, or a sanitizer's report.
void onFault(int number, siginfo_t* info, void*) {
    say("\nvexohost: ");
    say(who());
    say(" crashed: ");
    say(textOf(number));
    say("\n");
    sigaction(number, &g_earlier[placeOf(number)], nullptr);
    // A fault of the processor happens again as soon as this returns; a signal that was sent does not.
    if (info->si_code <= 0) raise(number);
}

} // namespace

std::string_view who() {
    return g_length > 0 ? std::string_view(g_who, g_length) : std::string_view("the program");
}

std::string_view textOf(int signal) {
    const int place = placeOf(signal);
    return place < FaultSignals::count ? texts[place] : std::string_view();
}

void say(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
        if (written <= 0) return; // nobody listens
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void installLastWord() {
    stack_t stack{};
    stack.ss_sp = g_stack;
    stack.ss_size = sizeof g_stack;
    sigaltstack(&stack, nullptr);
    struct sigaction action {};
    action.sa_sigaction = onFault;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (int i = 0; i < FaultSignals::count; ++i) sigaction(FaultSignals::numbers[i], &action, &g_earlier[i]);
}

Scope::Scope(std::string_view who)
    : m_earlier(g_who, g_length) {
    name(who);
    if (g_depth++ == 0) timelimit::begin();
}

Scope::~Scope() {
    if (--g_depth == 0) timelimit::end();
    name(m_earlier);
}

} // namespace crashreport
