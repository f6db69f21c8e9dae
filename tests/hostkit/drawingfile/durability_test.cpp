// A save that is killed leaves the old drawing or the new one, and what else it leaves the next save removes.

#include "drawingfiles.h"
#include "drawingparts.h"
#include "sampledrawing.h"

#include "dbpoint.h"
#include "headervariables.h"
#include "temporaryfolder.h"

#include <chrono>
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace hostkit;
using namespace drawingtest;

namespace {

using Clock = std::chrono::steady_clock;

// Large enough that a save takes many writes.
std::unique_ptr<AcDbDatabase> largeDrawing() {
    auto database = sampleDrawing();
    for (int i = 0; i < 8000; ++i) appendToModelSpace(*database, new AcDbPoint(AcGePoint3d(i, 0.1 * i, 0)));
    return database;
}

// A child process that says when it begins to save. Its files may have so many bytes: the write that goes
// beyond them kills it.
class SavingChild {
public:
    SavingChild(const AcDbDatabase& database, const std::string& file, rlim_t bytes = RLIM_INFINITY) {
        int ends[2];
        if (pipe(ends) != 0) return;
        m_process = fork();
        if (m_process == 0) {
            (void)!write(ends[1], "s", 1);
            const rlimit size{bytes, RLIM_INFINITY};
            const rlimit noCore{0, 0};
            setrlimit(RLIMIT_CORE, &noCore);
            setrlimit(RLIMIT_FSIZE, &size);
            _exit(writeDrawing(database, wide(file)) == Acad::eOk ? 0 : 1);
        }
        char mark = 0;
        m_hasBegun = m_process > 0 && read(ends[0], &mark, 1) == 1;
        close(ends[0]);
        close(ends[1]);
    }
    bool hasBegun() const { return m_hasBegun; }
    void killNow() const { kill(m_process, SIGKILL); }
    // True for a save that came to its end.
    bool wait() const {
        int status = 0;
        return waitpid(m_process, &status, 0) == m_process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

private:
    pid_t m_process = -1;
    bool m_hasBegun = false;
};

} // namespace

class Durability : public testing::Test {
protected:
    void SetUp() override {
        drawing = largeDrawing();
        before = saved(*drawing);
        drawing->header().setReal(L"LTSCALE", 12.5);
        after = saved(*drawing);
        ASSERT_NE(before, after);
    }
    const TemporaryFolder folder;
    const std::string file = folder / "drawing.dxf";
    std::unique_ptr<AcDbDatabase> drawing;
    std::string before;
    std::string after;
};

TEST_F(Durability, aSaveKilledWhileItWritesLeavesTheOldDrawing) {
    constexpr std::size_t places = 24;
    for (std::size_t place = 0; place < places; ++place) {
        SCOPED_TRACE(place);
        const std::size_t written = after.size() * place / places;
        folder.write("drawing.dxf", before);
        const SavingChild child(*drawing, file, written);
        ASSERT_TRUE(child.hasBegun());
        ASSERT_FALSE(child.wait());
        EXPECT_TRUE(folder.read("drawing.dxf") == before);
        EXPECT_EQ(folder.count(), 2u) << "the file at work, and not that of the save before";
    }
    EXPECT_TRUE(openDrawing(wide(file))) << "what was left behind does not disturb";
    EXPECT_EQ(writeDrawing(*drawing, wide(file)), Acad::eOk);
    EXPECT_TRUE(folder.read("drawing.dxf") == after);
    EXPECT_EQ(folder.count(), 1u) << "the next save has taken it away";
}

TEST_F(Durability, aSaveKilledAtAnyMomentLeavesTheOldDrawingOrTheNewOne) {
    const Clock::time_point begin = Clock::now();
    {
        const SavingChild whole(*drawing, folder / "other.dxf");
        ASSERT_TRUE(whole.hasBegun());
        ASSERT_TRUE(whole.wait());
    }
    const std::chrono::nanoseconds duration = Clock::now() - begin;
    constexpr int moments = 60;
    for (int moment = 0; moment < moments; ++moment) {
        folder.write("drawing.dxf", before);
        const SavingChild child(*drawing, file);
        ASSERT_TRUE(child.hasBegun());
        std::this_thread::sleep_for(duration * moment / moments);
        child.killNow();
        const bool isSaved = child.wait();
        const std::string found = folder.read("drawing.dxf");
        ASSERT_TRUE(found == before || found == after)
            << "moment " << moment << ", " << found.size() << " bytes";
        ASSERT_TRUE(!isSaved || found == after) << "a save that was told as done stands";
        ASSERT_LE(folder.count(), 3u) << "the save before has left its file";
    }
}
