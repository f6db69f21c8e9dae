// A module whose commands fail for good: FAIL with a word for how.
#include "acdocman.h"
#include "aced.h"
#include "actrans.h"
#include "cvxcrashhandler.h"
#include "cvxlogentry.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "rxdlinkr.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

// Left open, as the guards of a command do not come to close it.
AcDbLine& openLine() {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(
        acDocManagerPtr()->curDocument()->database()->modelSpaceId(), AcDb::kForWrite);
    auto* const line = new AcDbLine(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 5, 6));
    line->setDatabaseDefaults();
    space->appendAcDbEntity(line);
    return *line;
}

[[gnu::noinline]] void useNull() {
    const CVxLogEntry entry(L"failing::useNull");
    volatile int* volatile nothing = nullptr;
    *nothing = 1;
}

void divide() {
    volatile int whole = 1000, zero = 0;
    whole = whole / zero;
}

#if defined(__clang__)
[[clang::optnone]]
#else
[[gnu::optimize("O0")]]
#endif
int useStack(int depth) {
    volatile char room[4096] = {};
    return room[0] + (depth < 0 ? 0 : useStack(depth + 1));
}

void allocate() {
    for (std::vector<std::unique_ptr<char[]>> all;;) {
        all.push_back(std::make_unique<char[]>(std::size_t{1} << 20));
        std::memset(all.back().get(), 1, std::size_t{1} << 20);
    }
}

// The same where nothing gives it back.
void leak() {
    for (;;) {
        auto* const lost = new char[std::size_t{1} << 16];
        static_cast<volatile char*>(lost)[0] = 1;
    }
}

// What the allocator keeps beside its blocks.
void tearHeap() {
    auto* const block = static_cast<unsigned char*>(std::malloc(24));
    volatile unsigned char* const before = block - 8;
    before[0] = 0x13;
    std::free(block);
}

// Asks for memory and gives it back for ever, so that a signal comes within the allocator.
void churn() {
    for (std::size_t size = 1;; size = size * 7 % 65537) {
        void* volatile block = std::malloc(size);
        std::free(block);
    }
}

void loop() {
    volatile bool isEndless = true;
    while (isEndless) {
    }
}

void loopPolitely() {
    while (!acedUsrBrk()) usleep(1000);
}

void failInThread() {
    std::thread other(useNull);
    other.join();
}

void throwText() { throw std::runtime_error("the beam is gone"); }
void throwNumber() { throw 5; }
void throwBeyond() noexcept { throwText(); } // NOLINT(bugprone-exception-escape)

using Action = void (*)();
template <Action action>
void failRescue() {
    hostkit::setCrashHandlerBuilder([](wchar_t*, int) { action(); });
    useNull();
}

void fail() {
    const std::pair<const wchar_t*, Action> ways[] = {{L"NULL", useNull},
                                                      {L"DIVIDE", divide},
                                                      {L"ABORT", std::abort},
                                                      {L"ILL", [] { raise(SIGILL); }},
                                                      {L"BUS", [] { raise(SIGBUS); }},
                                                      {L"RECURSE", [] { acutPrintf(L"%d", useStack(0)); }},
                                                      {L"ALLOCATE", allocate},
                                                      {L"LEAK", leak},
                                                      {L"TEAR", tearHeap},
                                                      {L"CHURN", churn},
                                                      {L"LOOP", loop},
                                                      {L"POLITE", loopPolitely},
                                                      {L"THREAD", failInThread},
                                                      {L"THROW", throwText},
                                                      {L"THROWNUMBER", throwNumber},
                                                      {L"THROWBEYOND", throwBeyond},
                                                      {L"RESCUENULL", failRescue<useNull>},
                                                      {L"RESCUETHROW", failRescue<throwText>},
                                                      {L"RESCUELOOP", failRescue<loop>}};
    CString how;
    acedGetString(0, L"How: ", how);
    openLine();
    for (const auto& [word, way] : ways)
        if (how == word) way();
}

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    if (message == AcRx::kInitAppMsg) {
        acrxDynamicLinker->unlockApplication(packet);
        acedRegCmds->addCommand(L"FAILING", L"FAIL", L"", 0, fail);
        if (std::getenv("FAILING_AT_LOADING")) useNull();
    }
    if (message == AcRx::kUnloadAppMsg) {
        acedRegCmds->removeGroup(L"FAILING");
        if (std::getenv("FAILING_AT_LEAVING")) useNull();
    }
    return AcRx::kRetOK;
}
