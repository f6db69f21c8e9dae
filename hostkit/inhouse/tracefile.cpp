#include "tracefile.h"

#include <chrono>
#include <cstdio>
#include <map>
#include <mutex>
#include <thread>
#include <unistd.h>

namespace hostkit {

bool traceActive = false;

namespace {

using Clock = std::chrono::steady_clock;

struct ThreadTrack {
    int number;
    std::size_t depth = 0;
};

// Everything about the running trace; guarded by the mutex, since geometry may be called on any thread.
struct Trace {
    std::FILE* file = nullptr;
    Clock::time_point start;
    unsigned generation = 0;
    bool first = true;
    bool intact = true;
    std::map<std::thread::id, ThreadTrack> threads;
};

std::mutex g_mutex;
Trace g_trace;

ThreadTrack& track() {
    const auto [it, isNew] = g_trace.threads.try_emplace(
        std::this_thread::get_id(), ThreadTrack{static_cast<int>(g_trace.threads.size()) + 1});
    return it->second;
}

// Names of calls are plain identifiers; a character outside them, or one that JSON would read, becomes '?'.
std::string narrowName(const wchar_t* name) {
    std::string text;
    for (; *name; ++name)
        text +=
            *name >= L' ' && *name < 127 && *name != L'"' && *name != L'\\' ? static_cast<char>(*name) : '?';
    return text;
}

void write(const char* phase, const std::string& name, int thread) {
    const auto since = std::chrono::duration<double, std::micro>(Clock::now() - g_trace.start).count();
    const int written = std::fprintf(
        g_trace.file, "%s{\"name\":\"%s\",\"ph\":\"%s\",\"ts\":%.3f,\"pid\":%d,\"tid\":%d}",
        g_trace.first ? "[\n" : ",\n", name.c_str(), phase, since, static_cast<int>(getpid()), thread);
    g_trace.first = false;
    if (written < 0) g_trace.intact = false;
}

} // namespace

unsigned traceBegin(const wchar_t* name) {
    const std::lock_guard lock(g_mutex);
    if (!g_trace.file) return 0;
    ThreadTrack& own = track();
    ++own.depth;
    write("B", narrowName(name), own.number);
    return g_trace.generation;
}

void traceEnd(unsigned token) {
    const std::lock_guard lock(g_mutex);
    if (!g_trace.file || token != g_trace.generation) return;
    ThreadTrack& own = track();
    --own.depth;
    write("E", "", own.number);
}

TraceFile::TraceFile(const std::string& path) {
    const std::lock_guard lock(g_mutex);
    if (g_trace.file) return;
    std::FILE* file = std::fopen(path.c_str(), "w");
    if (!file) return;
    const unsigned generation = g_trace.generation + 1;
    g_trace = Trace{};
    g_trace.file = file;
    g_trace.start = Clock::now();
    g_trace.generation = generation;
    traceActive = true;
    m_open = true;
}

TraceFile::~TraceFile() { close(); }

bool TraceFile::close() {
    if (!m_open) return true;
    m_open = false;
    const std::lock_guard lock(g_mutex);
    traceActive = false;
    for (auto& [id, own] : g_trace.threads)
        for (; own.depth > 0; --own.depth) write("E", "", own.number);
    bool intact = g_trace.intact;
    intact = std::fputs(g_trace.first ? "[\n]\n" : "\n]\n", g_trace.file) >= 0 && intact;
    intact = std::fclose(g_trace.file) == 0 && intact;
    g_trace.file = nullptr;
    g_trace.threads.clear();
    return intact;
}

} // namespace hostkit
