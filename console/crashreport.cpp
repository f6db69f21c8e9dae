#include "crashreport.h"

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <iterator>
#include <unistd.h>

namespace crashreport {
namespace {

struct Fault {
    int number;
    std::string_view text;
    struct sigaction earlier;
};

Fault g_faults[] = {
    {SIGSEGV, "memory that is not its own was used (SIGSEGV)", {}},
    {SIGBUS, "memory that is not there was used (SIGBUS)", {}},
    {SIGFPE, "a whole number was divided by zero, or the like (SIGFPE)", {}},
    {SIGILL, "an instruction that the processor does not know (SIGILL)", {}},
    {SIGABRT, "the code gave up (SIGABRT)", {}},
};

// What the handler reads is there before the fault: a name that is just being changed has no length.
constexpr std::size_t longestName = 1024;
char g_who[longestName];
volatile std::size_t g_length = 0;
// A fault of a stack that is used up needs another one.
alignas(std::max_align_t) char g_stack[65536];

void name(std::string_view who) {
    g_length = 0;
    const std::size_t length = std::min(who.size(), longestName);
    std::copy_n(who.data(), length, g_who);
    g_length = length;
}

void say(std::string_view text) {
    if (write(STDERR_FILENO, text.data(), text.size()) < 0) {
        // Nobody listens; the signal tells the rest.
    }
}

// Only what is safe in a handler is called. Whoever had the signal before comes next: the system, which ends
// the program, or a sanitizer's report.
void onFault(int number, siginfo_t* info, void*) {
    const auto fault = std::find_if(std::begin(g_faults), std::end(g_faults),
                                    [number](const Fault& each) { return each.number == number; });
    say("\nvexohost: ");
    say(g_length > 0 ? std::string_view(g_who, g_length) : std::string_view("the program"));
    say(" crashed: ");
    say(fault->text);
    say("\n");
    sigaction(number, &fault->earlier, nullptr);
    // A fault of the processor happens again as soon as this returns; a signal that was sent does not.
    if (info->si_code <= 0) raise(number);
}

} // namespace

void install() {
    stack_t stack{};
    stack.ss_sp = g_stack;
    stack.ss_size = sizeof g_stack;
    sigaltstack(&stack, nullptr);
    struct sigaction action {};
    action.sa_sigaction = onFault;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (Fault& each : g_faults) sigaction(each.number, &action, &each.earlier);
}

Scope::Scope(std::string_view who)
    : m_earlier(g_who, g_length) {
    name(who);
}

Scope::~Scope() { name(m_earlier); }

} // namespace crashreport
