// Stand-in for the host's in-house trace record. Covers the scoped record and its timeline; leaves out call arguments.
#pragma once

#include "tracefile.h"

/// The first local of a tool: names the call for as long as the record lives. With tracing off it costs a
/// test of one flag. With tracing on, the call's start and end go to the timeline that hostkit::TraceFile
/// writes; a record that was built before tracing began, or ends after it stopped, leaves no half entry.
class CVxLogEntry {
public:
    /// functionName is a literal of the form L"Class::method" and outlives the record. Null leaves no entry.
    explicit CVxLogEntry(const wchar_t* functionName)
        : m_functionName(hostkit::traceActive ? functionName : nullptr) {
        if (m_functionName) [[unlikely]]
            m_token = hostkit::traceBegin(m_functionName);
    }
    virtual ~CVxLogEntry() {
        if (m_functionName) [[unlikely]]
            hostkit::traceEnd(m_token);
    }
    CVxLogEntry(const CVxLogEntry&) = delete;
    CVxLogEntry& operator=(const CVxLogEntry&) = delete;

private:
    const wchar_t* m_functionName;
    unsigned m_token = 0;
};
