#include "workers.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

std::atomic<bool> g_isAlone = false;

} // namespace

unsigned hostkit::workersOfMachine() {
    return g_isAlone ? 1U : std::max(1U, std::thread::hardware_concurrency());
}

void hostkit::workAlone() { g_isAlone = true; }
