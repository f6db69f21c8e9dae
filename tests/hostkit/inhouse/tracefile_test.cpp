#include "cvxlogentry.h"
#include "temporaryfolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

struct TraceTest : testing::Test {
    TemporaryFolder folder;
    std::string file = folder / "trace.json";
    std::string content() const { return folder.read("trace.json"); }

    // (phase, name, thread) of each event; the test's own reading of the one-event-a-line form.
    struct Event {
        char phase;
        std::string name;
        int thread;
        double time;
    };
    std::vector<Event> events() const {
        static const std::regex form(
            R"form(\{"name":"(.*)","ph":"(.)","ts":([0-9.]+),"pid":[0-9]+,"tid":([0-9]+)\},?)form");
        std::vector<Event> list;
        std::istringstream lines(content());
        std::smatch parts;
        for (std::string line; std::getline(lines, line);)
            if (std::regex_match(line, parts, form))
                list.push_back({parts.str(2)[0], parts[1], std::stoi(parts[4]), std::stod(parts[3])});
        return list;
    }
};

void inner() { CVxLogEntry entry(L"Tools::inner"); }
void outer() {
    CVxLogEntry entry(L"Tools::outer");
    inner();
    inner();
}

TEST_F(TraceTest, CallsNestOnTheirThread) {
    {
        hostkit::TraceFile trace(file);
        ASSERT_TRUE(trace.isOpen());
        outer();
        std::thread(outer).join();
    }
    std::map<int, std::string> calls;
    double last = 0;
    for (const Event& event : events()) {
        calls[event.thread] += event.phase == 'B' ? event.name + "(" : ")";
        EXPECT_GE(event.time, last);
        last = event.time;
    }
    const std::string each = "Tools::outer(Tools::inner()Tools::inner())";
    EXPECT_EQ(calls, (std::map<int, std::string>{{1, each}, {2, each}}));
}

TEST_F(TraceTest, NumbersBecomeAGraph) {
    hostkit::traceCount(L"shown", 1); // tracing is off
    hostkit::TraceFile trace(file);
    outer();
    hostkit::traceCount(L"shown", -12345678901);
    ASSERT_TRUE(trace.close());
    const std::string end = ",\"args\":{\"value\":-12345678901}}\n]\n";
    EXPECT_TRUE(content().ends_with(end)) << content();
    EXPECT_NE(content().find(R"({"name":"shown","ph":"C","ts":)"), std::string::npos);
    EXPECT_EQ(events().size(), 6U) << "calls are as before";
}

TEST_F(TraceTest, RecordsThatOutliveATraceLeaveNoHalfEntry) {
    auto trace = std::make_unique<hostkit::TraceFile>(file);
    auto running = std::make_unique<CVxLogEntry>(L"Tools::running");
    EXPECT_TRUE(trace->close());
    const std::string closed = content();
    auto before = std::make_unique<CVxLogEntry>(L"Tools::before"); // tracing is off
    hostkit::TraceFile second(file);
    running.reset();
    before.reset();
    CVxLogEntry nameless(nullptr);
    hostkit::TraceFile whileOneLives(file + ".other");
    EXPECT_FALSE(whileOneLives.isOpen());
    EXPECT_TRUE(second.close());
    EXPECT_EQ(closed.substr(0, 2), "[\n");
    EXPECT_EQ(closed.substr(closed.size() - 3), "\n]\n");
    EXPECT_EQ(content(), "[\n]\n");
    EXPECT_FALSE(std::filesystem::exists(file + ".other"));
}

TEST_F(TraceTest, AFileThatCannotBeMadeOrFilledIsTold) {
    hostkit::TraceFile nowhere("/no/such/folder/trace.json");
    EXPECT_FALSE(nowhere.isOpen());
    outer(); // tracing stays off
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full";
    hostkit::TraceFile full("/dev/full");
    ASSERT_TRUE(full.isOpen());
    outer();
    EXPECT_FALSE(full.close());
}

} // namespace
