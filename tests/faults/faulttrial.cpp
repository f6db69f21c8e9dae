#include "faulttrial.h"

#include "builtincommands.h"
#include "consolestate.h"
#include "drawingreader.h"
#include "drawingwriter.h"
#include "librarylocation.h"
#include "testhost.h"
#include "textencoding.h"
#include "undohistory.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <sstream>

namespace {

ConsoleState g_console;

std::string withPlaces(std::string line, const std::string& drawing, const std::string& folder) {
    for (const auto& [place, text] : {std::pair{std::string("$D"), drawing}, {std::string("$F"), folder}})
        for (std::size_t at = 0; (at = line.find(place, at)) != std::string::npos; at += text.size())
            line.replace(at, place.size(), text);
    return line;
}

std::vector<std::string> filesOf(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& each : std::filesystem::directory_iterator(folder))
        names.push_back(each.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

// Handles that were given and taken back are not given again.
std::string withoutSeed(std::string text) {
    const std::size_t at = text.find("$HANDSEED");
    if (at == std::string::npos) return text;
    const std::size_t value = text.find('\n', text.find('\n', at) + 1) + 1;
    return text.erase(value, text.find('\n', value) - value);
}

std::string firstDifference(const std::string& left, const std::string& right) {
    std::size_t at = 0;
    while (at < left.size() && at < right.size() && left[at] == right[at]) ++at;
    const auto line = std::count(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(at), '\n') + 1;
    const std::size_t start = at > 60 ? at - 60 : 0;
    std::string text = "line " + std::to_string(line) + ": [" + left.substr(start, 120) + "] for [" +
                       right.substr(start, 120) + "]";
    std::replace(text.begin(), text.end(), '\n', '|');
    return text;
}

} // namespace

ConsoleState& consoleState() { return g_console; }

namespace faults {

struct Stage::Parts {
    hostkit::TestHost session;
    std::wstring command{};
    hostkit::CommandResult result{};
    std::string written{}; ///< the drawing as it is now
};

Stage::Stage(const Case& each, const std::string& drawing, const std::string& folder)
    : m_case(each)
    , m_folder(folder)
    , m_parts(new Parts) {
    hostkit::TestHost& session = m_parts->session;
    hostkit::Host& host = session.host();
    session.port().buttons = {1, 1, 1};
    registerBuiltinCommands(host.commands());
    const auto load = [&](const std::wstring& file) {
        if (host.runtime().linker().loadModule(file.c_str()) != Acad::eOk)
            m_refusal += hostkit::utf8FromWide(host.runtime().linker().lastProblem());
    };
    load(hostkit::wideFromUtf8(VEXO_BINARY_DIR "/lib/VEXOTools10.so"));
    if (!each.module.empty()) load(hostkit::wideFromUtf8(VEXO_BINARY_DIR "/lib/" + each.module + ".so"));
    if (host.openDocument(hostkit::wideFromUtf8(drawing)) != Acad::eOk)
        m_refusal += drawing + " cannot be opened";
    std::istringstream lines(each.prepare);
    for (std::string line; std::getline(lines, line);)
        (void)host.run(hostkit::wideFromUtf8(withPlaces(line, drawing, folder)));
    m_parts->command = hostkit::wideFromUtf8(withPlaces(each.command, drawing, folder));
    session.port().printed.clear();
    session.port().problems.clear();
}

Stage::~Stage() { delete m_parts; }

std::string Stage::text() {
    hostkit::WriteOptions options;
    options.tellPort = false;
    options.threads = 1;
    options.coding = hostkit::DrawingCoding::kText;
    hostkit::WriteReport report;
    m_parts->written.clear();
    if (hostkit::writeDrawingToMemory(m_parts->session.database(), m_parts->written, options, &report) !=
        Acad::eOk)
        return "cannot be saved: " + hostkit::utf8FromWide(report.message);
    return withoutSeed(m_parts->written);
}

bool Stage::isReadAgain() const {
    hostkit::ReadOptions quiet;
    quiet.tellPort = false;
    return hostkit::openDrawingFromMemory(m_parts->written, L"again", nullptr, quiet) != nullptr;
}

Reference Stage::runWhole() {
    Reference reference;
    reference.before = text();
    (void)isReadAgain(); // what reading makes at its first use is there then
    arm(Sort::kHostCall, never);
    m_parts->result = m_parts->session.host().run(m_parts->command);
    disarm();
    for (std::size_t sort = 0; sort < sortCount; ++sort)
        reference.counts[sort] = count(static_cast<Sort>(sort));
    reference.printed = m_parts->session.port().printed;
    reference.hasFailed = m_parts->result.status != Acad::eOk;
    if (reference.hasFailed) m_refusal = hostkit::utf8FromWide(m_parts->result.reason);
    reference.after = text();
    (void)isReadAgain();
    reference.files = filesOf(m_folder);
    return reference;
}

Trial Stage::run(Sort sort, std::size_t number, const Reference& reference) {
    Trial trial;
    const std::int64_t before = liveBlocks();
    arm(sort, number);
    try {
        m_parts->result = m_parts->session.host().run(m_parts->command);
    } catch (...) {
        disarm();
        trial.problem = "the command ended with an exception that nobody caught";
        return trial;
    }
    disarm();
    const bool wasReached = failed() != nullptr;
    trial.problem = judge(trial, reference);
    if (trial.problem.empty()) trial.problem = judgeFiles(reference);
    if (!trial.problem.empty()) {
        trial.outcome = Outcome::kWrong;
        return trial;
    }
    if (!wasReached && number != never) trial.outcome = Outcome::kNotReached;
    m_refusal = {};
    delete m_parts;
    m_parts = nullptr;
    const std::int64_t left = liveBlocks() - before;
    if (number == never) trial.problem = std::to_string(left);
    if (number != never && left > reference.blocks) {
        trial.problem = std::to_string(left - reference.blocks) + " blocks of memory are lost";
        trial.outcome = Outcome::kWrong;
    }
    return trial;
}

std::string Stage::judge(Trial& trial, const Reference& reference) {
    hostkit::TestHost& session = m_parts->session;
    std::string problem;
    for (const std::wstring& each : session.leftovers())
        problem += "left behind: " + hostkit::utf8FromWide(each) + "; ";
    if (!problem.empty()) return problem;
    if (!session.host().documents().curDocument()) return "no drawing is open any more";
    const std::string now = text();
    if (m_parts->written.empty()) return "the drawing " + now;
    trial.outcome = now == reference.before  ? Outcome::kAsBefore
                    : now == reference.after ? Outcome::kAsAfter
                                             : Outcome::kPartly;
    const bool hasTold = m_parts->result.status != Acad::eOk || !session.port().problems.empty();
    trial.isSilent = !hasTold && (now != reference.after || session.port().printed != reference.printed);
    if (!isReadAgain()) return "the drawing cannot be read again";
    if (now == reference.before) return {};
    if (m_case.isUndone) return judgeUndo(reference);
    if (now != reference.after && !m_case.opens)
        return "the drawing is neither as before nor as after: " + firstDifference(now, reference.before);
    return {};
}

std::string Stage::judgeUndo(const Reference& reference) {
    hostkit::UndoReport report;
    AcDbDatabase& database = m_parts->session.database();
    if (hostkit::undoLastGroup(database, report) != Acad::eOk) return "there is nothing to take back";
    const std::string now = text();
    return now == reference.before
               ? std::string()
               : "U brings back something else, " + firstDifference(now, reference.before);
}

// A file is there whole or not at all; nothing else may be.
std::string Stage::judgeFiles(const Reference& reference) const {
    for (const std::string& name : filesOf(m_folder))
        if (!std::binary_search(reference.files.begin(), reference.files.end(), name))
            return "it left the file " + name;
    return {};
}

void clearFolder(const std::string& folder) {
    for (const auto& each : std::filesystem::directory_iterator(folder))
        std::filesystem::remove_all(each.path());
}

} // namespace faults
