#include "tracefile.h"

#include "atomicfile.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
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
    std::unique_ptr<AtomicFile> file;
    std::string buffer;
    std::string processAndThread; // the same in every event up to the thread's number
    Clock::time_point start;
    unsigned generation = 0;
    bool first = true;
    std::map<std::thread::id, ThreadTrack> threads;
};

std::mutex g_mutex;
Trace g_trace;

// Of one thread, in one trace; only it looks at them.
struct OpenCalls {
    static constexpr std::size_t mostNamed = 64;
    const wchar_t* names[mostNamed];
    std::size_t depth = 0;
    unsigned generation = 0;
};
thread_local OpenCalls t_open;

void nameOpenCall(const wchar_t* name) {
    if (t_open.generation != g_trace.generation) t_open.depth = 0;
    t_open.generation = g_trace.generation;
    if (t_open.depth < OpenCalls::mostNamed) t_open.names[t_open.depth] = name;
    ++t_open.depth;
}

ThreadTrack& track() {
    const auto [it, isNew] = g_trace.threads.try_emplace(
        std::this_thread::get_id(), ThreadTrack{static_cast<int>(g_trace.threads.size()) + 1});
    return it->second;
}

constexpr std::size_t bufferSize = 1 << 16;

void flush() {
    g_trace.file->write(g_trace.buffer);
    g_trace.buffer.clear();
}

void putNumber(long long value) {
    char digits[24];
    g_trace.buffer.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

// Names of calls are plain identifiers; a character outside them, or one that JSON would read, becomes '?'.
void putName(const wchar_t* name) {
    for (; *name; ++name) {
        const bool isPlain = *name >= L' ' && *name < 127 && *name != L'"' && *name != L'\\';
        g_trace.buffer += isPlain ? static_cast<char>(*name) : '?';
    }
}

void putMicroseconds(long long nanoseconds) {
    putNumber(nanoseconds / 1000);
    const auto rest = static_cast<int>(nanoseconds % 1000);
    g_trace.buffer += '.';
    for (const int digit : {rest / 100, rest / 10 % 10, rest % 10})
        g_trace.buffer += static_cast<char>('0' + digit);
}

void write(char phase, const wchar_t* name, int thread, std::optional<long long> value = {}) {
    const auto since =
        std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now() - g_trace.start).count();
    std::string& text = g_trace.buffer;
    text += g_trace.first ? "[\n{\"name\":\"" : ",\n{\"name\":\"";
    putName(name);
    (text += "\",\"ph\":\"") += phase;
    text += "\",\"ts\":";
    putMicroseconds(since);
    text += g_trace.processAndThread;
    putNumber(thread);
    if (value) {
        text += ",\"args\":{\"value\":";
        putNumber(*value);
        text += '}';
    }
    text += '}';
    g_trace.first = false;
    if (text.size() >= bufferSize) flush();
}

} // namespace

unsigned traceBegin(const wchar_t* name) {
    const std::lock_guard lock(g_mutex);
    if (!g_trace.file) return 0;
    ThreadTrack& own = track();
    ++own.depth;
    nameOpenCall(name);
    write('B', name, own.number);
    return g_trace.generation;
}

void traceEnd(unsigned token) {
    const std::lock_guard lock(g_mutex);
    if (!g_trace.file || token != g_trace.generation) return;
    ThreadTrack& own = track();
    --own.depth;
    --t_open.depth;
    write('E', L"", own.number);
}

std::size_t openTracedCalls(const wchar_t** names, std::size_t room) {
    std::copy_n(t_open.names, std::min({room, t_open.depth, OpenCalls::mostNamed}), names);
    return t_open.depth;
}

void traceCount(const wchar_t* name, long long value) {
    const std::lock_guard lock(g_mutex);
    if (g_trace.file) write('C', name, track().number, value);
}

TraceFile::TraceFile(const std::string& path) {
    const std::lock_guard lock(g_mutex);
    if (g_trace.file) return;
    auto file = std::make_unique<AtomicFile>(path);
    if (!file->isGood()) return;
    const unsigned generation = g_trace.generation + 1;
    g_trace = Trace{};
    g_trace.file = std::move(file);
    g_trace.start = Clock::now();
    g_trace.generation = generation;
    g_trace.processAndThread = ",\"pid\":" + std::to_string(getpid()) + ",\"tid\":";
    traceActive = true;
    m_open = true;
}

TraceFile::~TraceFile() { close(); }

bool TraceFile::close() { return end(true); }

void TraceFile::discard() { end(false); }

bool TraceFile::end(bool isWanted) {
    if (!m_open) return true;
    m_open = false;
    const std::lock_guard lock(g_mutex);
    traceActive = false;
    for (auto& [id, own] : g_trace.threads)
        for (; own.depth > 0; --own.depth) write('E', L"", own.number);
    g_trace.buffer += g_trace.first ? "[\n]\n" : "\n]\n";
    flush();
    const bool intact = isWanted && g_trace.file->commit();
    g_trace.file.reset();
    g_trace.threads.clear();
    return intact;
}

} // namespace hostkit
