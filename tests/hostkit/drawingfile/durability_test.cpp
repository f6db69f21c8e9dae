// A save that is killed leaves the old drawing or the new one, and what else it leaves the next save removes.

#include "drawingfiles.h"
#include "drawingparts.h"
#include "sampledrawing.h"

#include "dbpoint.h"
#include "headervariables.h"
#include "temporaryfolder.h"

#include <chrono>
#include <csignal>
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

// A child process that says when it begins to save.
class SavingChild {
public:
    SavingChild(const AcDbDatabase& database, const std::string& file) {
        int ends[2];
        if (pipe(ends) != 0) return;
        m_process = fork();
        if (m_process == 0) {
            (void)!write(ends[1], "s", 1);
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

TEST(Durability, aSaveKilledAtAnyMomentLeavesTheOldDrawingOrTheNewOne) {
    const TemporaryFolder folder;
    const std::string file = folder / "drawing.dxf";
    const auto database = largeDrawing();
    const std::string before = saved(*database);
    database->header().setReal(L"LTSCALE", 12.5);
    const std::string after = saved(*database);
    ASSERT_NE(before, after);

    const Clock::time_point begin = Clock::now();
    {
        const SavingChild whole(*database, folder / "other.dxf");
        ASSERT_TRUE(whole.hasBegun());
        ASSERT_TRUE(whole.wait());
    }
    const std::chrono::nanoseconds duration = Clock::now() - begin;
    constexpr int moments = 100;
    constexpr std::size_t drawings = 2; // the one at work and the other
    int old = 0;
    int leftBehind = 0;
    for (int moment = 0; moment < moments; ++moment) {
        folder.write("drawing.dxf", before);
        const SavingChild child(*database, file);
        ASSERT_TRUE(child.hasBegun());
        std::this_thread::sleep_for(duration * moment / (moments - 2));
        if (moment < moments - 1) child.killNow();
        const bool isSaved = child.wait();
        const std::string found = folder.read("drawing.dxf");
        ASSERT_TRUE(found == before || found == after)
            << "moment " << moment << ", " << found.size() << " bytes";
        ASSERT_TRUE(!isSaved || found == after) << "a save that was told as done stands";
        ASSERT_LE(folder.count(), drawings + 1) << "the save before has left its file";
        leftBehind += folder.count() > drawings;
        ASSERT_TRUE(isSaved || moment < moments - 1);
        old += found == before;
    }
    EXPECT_EQ(folder.count(), drawings) << "the last save is whole";
    EXPECT_GT(leftBehind, 0) << "no kill came while the new file was written";
    EXPECT_GT(old, 0) << "no kill came in time: the drawing is too small";
    EXPECT_TRUE(openDrawing(wide(file))) << "what was left behind does not disturb";
    RecordProperty("old", old);
}
