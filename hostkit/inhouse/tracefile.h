// Timeline of traced calls: a file in the trace-event JSON form that a profiler opens; leaves out sampling.
#pragma once

#include <cstddef>
#include <string>

namespace hostkit {

/// Whether calls are being traced now. Read at every call, written by TraceFile only.
extern bool traceActive;

/// The start of a call on this thread; the result goes to traceEnd. Safe on any thread.
unsigned traceBegin(const wchar_t* name);
/// Ignored when the trace that gave the token has ended.
void traceEnd(unsigned token);

/// The calls that run on this thread now, as far as they are traced, the outermost first: their number, and
/// the names of as many as there is room for. Takes no lock, so that a failing process may ask.
std::size_t openTracedCalls(const wchar_t** names, std::size_t room);

/// A number as it is from now on, which the timeline shows as a graph of that name. Dropped while nothing is
/// traced.
void traceCount(const wchar_t* name, long long value);

/// Traces from its construction to its end. One at a time: a second one while the first lives stays closed.
/// The file is an array of trace events, one a line: "B" and "E" for the start and end of a call and "C"
/// for a number, in microseconds since tracing began, with the process and a number for the thread. Calls
/// that are still running at the end are closed there, so that the file always nests. It stands under its
/// name once the trace is closed, whole (atomicfile.h); a pipe gets it as it grows.
class TraceFile {
public:
    /// `path` is in the file system's own bytes. isOpen() tells whether the file could be made.
    explicit TraceFile(const std::string& path);
    ~TraceFile();
    TraceFile(const TraceFile&) = delete;
    TraceFile& operator=(const TraceFile&) = delete;

    bool isOpen() const { return m_open; }
    /// False when some of it could not be written (a full disk, say). Closes the file; the destructor then
    /// has nothing left to do.
    bool close();
    /// Ends the trace without a file; what stood there stays.
    void discard();

private:
    bool end(bool isWanted);

    bool m_open = false;
};

} // namespace hostkit
