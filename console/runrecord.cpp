#include "runrecord.h"

#include "commandoutput.h"
#include "consoletext.h"
#include "escaping.h"

#include <ctime>
#include <fstream>
#include <sys/resource.h>

namespace {

constexpr std::size_t mostProblems = 100;

// getrusage counts what the starting program had before it became this one; the system's own figure does not.
long peakKilobytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (long peak = 0; word == "VmHWM:" && status >> peak) return peak;
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

std::string fixed(double seconds) {
    char text[64];
    std::snprintf(text, sizeof text, "%.4f", seconds);
    return text;
}

void appendCommand(const RunRecord::Command& command, std::string& json) {
    appendField("command", command.line, json += '{');
    appendField("status", acadErrorStatusText(command.status), json += ',');
    appendField("reason", command.reason, json += ',');
    json += ",\"seconds\":" + fixed(command.seconds) + '}';
}

} // namespace

void RunRecord::addProblem(std::wstring_view text) {
    if (++m_problemCount <= mostProblems) m_problems.emplace_back(text);
}

std::string RunRecord::json(std::wstring_view drawing, int exitCode) const {
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - m_start;
    std::string json = "{";
    appendField("version", VEXO_VERSION, json);
    appendField("drawing", drawing, json += ',');
    json += ",\"exitCode\":" + std::to_string(exitCode) + ",\"seconds\":" + fixed(seconds.count()) +
            ",\"processorSeconds\":" + fixed(static_cast<double>(std::clock()) / CLOCKS_PER_SEC) +
            ",\"peakKilobytes\":" + std::to_string(peakKilobytes()) + ",\"commands\":[";
    for (const Command& each : m_commands) {
        if (&each != &m_commands.front()) json += ',';
        appendCommand(each, json);
    }
    json += "],\"problemCount\":" + std::to_string(m_problemCount) + ",\"problems\":[";
    for (const std::wstring& each : m_problems) {
        if (&each != &m_problems.front()) json += ',';
        hostkit::appendJsonText(each, json);
    }
    return json + "]}\n";
}
