// Repair: each single fault that the check knows is gone afterwards, and nothing else of the drawing is.
#include "dbdatabase.h"
#include "drawingaudit.h"
#include "drawingfiles.h"
#include "drawingrepair.h"
#include "faulttexts.h"

#include <algorithm>

using namespace drawingtest;
using namespace hostkit;

namespace {

std::string wordsOf(const RepairReport& report) {
    constexpr const char* outcomes[] = {"repaired", "lost", "left"};
    std::string words;
    for (const RepairNote& each : report.notes) {
        words += outcomes[static_cast<int>(each.outcome)];
        (words += ' ').append(each.type.begin(), each.type.end());
        (words += ": ").append(each.text.begin(), each.text.end());
        words += '\n';
    }
    return words;
}

std::string faultsIn(const std::string& text) {
    std::string words;
    for (const AuditFinding& each : auditDrawingText(text).findings)
        if (each.severity == AuditSeverity::kFault) words.append(each.text.begin(), each.text.end()) += '\n';
    return words;
}

} // namespace

TEST(Repair, leavesNoneOfTheSingleFaults) {
    std::size_t lost = 0;
    forEachFault([&](const std::string& sound, const std::string& fault) {
        SCOPED_TRACE(fault);
        const std::vector<std::string> parts = split(fault, " | ");
        const std::string text = drawingOf(changedText(sound, parts.at(1), parts.at(2)));
        RepairReport report;
        const std::string repaired = repairDrawingText(text, report);
        EXPECT_EQ(faultsIn(repaired), "") << wordsOf(report);
        EXPECT_TRUE(report.isClean());
        EXPECT_TRUE(openDrawingFromMemory(repaired, L"test", nullptr, quietReading)) << wordsOf(report);
        const auto before = auditDrawingText(text);
        EXPECT_EQ(report.notes.empty(), before.faultCount() == 0) << wordsOf(report);
        EXPECT_TRUE(before.faultCount() > 0 || repaired == text);
        lost += report.count(RepairOutcome::kLost) > 0;
        if (getenv("SHOW")) std::cout << fault << "\n   => " << wordsOf(report);
    });
    std::cout << lost << "\n";
}
