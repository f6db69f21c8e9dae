#include "interrupt.h"

#include "exitcodes.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace interrupt {
namespace {

volatile std::sig_atomic_t g_stopRequested = 0;
volatile std::sig_atomic_t g_endRequested = 0;
int g_pipe[2] = {-1, -1};

void wakePrompt() {
    const int earlier = errno;
    if (g_pipe[1] >= 0 && write(g_pipe[1], "!", 1) < 0) {
        // The flag alone is enough for all but a waiting prompt, which the signal itself wakes.
    }
    errno = earlier;
}

void onSignal(int number) {
    if (isRequested()) _exit(exitcode::interrupted);
    (number == SIGTERM ? g_endRequested : g_stopRequested) = 1;
    wakePrompt();
}

} // namespace

void install() {
    if (g_pipe[0] < 0 && pipe2(g_pipe, O_CLOEXEC | O_NONBLOCK) != 0) g_pipe[0] = g_pipe[1] = -1;
    struct sigaction action {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

bool isRequested() { return g_stopRequested != 0 || g_endRequested != 0; }
bool isEndRequested() { return g_endRequested != 0; }

void request() {
    g_stopRequested = 1;
    wakePrompt();
}

void withdraw() {
    if (g_endRequested) return;
    char dropped[16];
    while (g_pipe[0] >= 0 && read(g_pipe[0], dropped, sizeof dropped) > 0) {
    }
    g_stopRequested = 0;
}

int descriptor() { return g_pipe[0]; }

} // namespace interrupt
