#include "cvxlogentry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

struct TraceTest : testing::Test {
    std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("vexo_trace_" + std::to_string(getpid()) + ".json");
    void TearDown() override { std::filesystem::remove(file); }

    std::string content() const {
        std::ostringstream text;
        text << std::ifstream(file).rdbuf();
        return text.str();
    }
    // (phase, name, thread) of each event; the test's own reading of the one-event-a-line form.
    struct Event {
        char phase;
        std::string name;
        int thread;
        double time;
    };
    std::vector<Event> events() const {
        std::vector<Event> list;
        std::ifstream lines(file);
        for (std::string line; std::getline(lines, line);) {
            char name[128] = "";
            Event event{};
            int process = 0;
            if (std::sscanf(line.c_str(), R"({"name":"%127[^"]","ph":"%c","ts":%lf,"pid":%d,"tid":%d})", name,
                            &event.phase, &event.time, &process, &event.thread) != 5 &&
                std::sscanf(line.c_str(), R"({"name":"","ph":"%c","ts":%lf,"pid":%d,"tid":%d})", &event.phase,
                            &event.time, &process, &event.thread) != 4)
                continue;
            event.name = name;
            list.push_back(event);
        }
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
        hostkit::TraceFile trace(file.string());
        ASSERT_TRUE(trace.isOpen());
        outer();
        std::thread(outer).join();
    }
    const auto list = events();
    ASSERT_EQ(list.size(), 12u);
    std::vector<std::vector<std::string>> open(3);
    double last = 0;
    for (const Event& event : list) {
        ASSERT_TRUE(event.thread == 1 || event.thread == 2);
        auto& stack = open[static_cast<std::size_t>(event.thread)];
        if (event.phase == 'B') {
            EXPECT_EQ(event.name, stack.empty() ? "Tools::outer" : "Tools::inner");
            stack.push_back(event.name);
        } else {
            ASSERT_FALSE(stack.empty());
            stack.pop_back();
        }
        EXPECT_GE(event.time, last);
        last = event.time;
    }
    EXPECT_TRUE(open[1].empty() && open[2].empty());
}

TEST_F(TraceTest, RecordsThatOutliveATraceLeaveNoHalfEntry) {
    auto trace = std::make_unique<hostkit::TraceFile>(file.string());
    auto running = std::make_unique<CVxLogEntry>(L"Tools::running");
    EXPECT_TRUE(trace->close());
    const std::string closed = content();
    auto before = std::make_unique<CVxLogEntry>(L"Tools::before"); // tracing is off
    hostkit::TraceFile second(file.string());
    running.reset();
    before.reset();
    CVxLogEntry nameless(nullptr);
    hostkit::TraceFile whileOneLives(file.string() + ".other");
    EXPECT_FALSE(whileOneLives.isOpen());
    EXPECT_TRUE(second.close());
    EXPECT_EQ(closed.substr(0, 2), "[\n");
    EXPECT_EQ(closed.substr(closed.size() - 3), "\n]\n");
    EXPECT_EQ(content(), "[\n]\n");
    EXPECT_FALSE(std::filesystem::exists(file.string() + ".other"));
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
