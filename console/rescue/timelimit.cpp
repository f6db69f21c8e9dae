#include "timelimit.h"

#include "interrupt.h"

#include <cmath>
#include <csignal>
#include <ctime>
#include <unistd.h>

#ifndef sigev_notify_thread_id
#define sigev_notify_thread_id _sigev_un._tid
#endif

namespace timelimit {
namespace {

constexpr double grace = 0.5;

double g_seconds = 0;
timer_t g_timer;
volatile std::sig_atomic_t g_isOver = 0;

void startTimer(double seconds) {
    itimerspec until{};
    until.it_value.tv_sec = static_cast<time_t>(seconds);
    until.it_value.tv_nsec = static_cast<long>((seconds - std::floor(seconds)) * 1e9);
    timer_settime(g_timer, 0, &until, nullptr);
}

} // namespace

bool set(double seconds) {
    sigevent event{};
    event.sigev_notify = SIGEV_THREAD_ID;
    event.sigev_signo = SIGALRM;
    event.sigev_notify_thread_id = gettid();
    if (timer_create(CLOCK_MONOTONIC, &event, &g_timer) != 0) return false;
    g_seconds = seconds;
    return true;
}

void begin() {
    if (g_seconds > 0 && !g_isOver) startTimer(g_seconds);
}

void end() {
    if (g_seconds > 0) startTimer(0);
}

bool isOver() { return g_isOver != 0; }

double seconds() { return g_seconds; }

bool isUpForGood() {
    if (g_isOver) return true;
    g_isOver = 1;
    interrupt::request();
    startTimer(grace);
    return false;
}

} // namespace timelimit
