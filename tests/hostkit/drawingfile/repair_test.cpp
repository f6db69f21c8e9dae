// Repair: each single fault that the check knows is gone afterwards, in the text and in the open drawing, and
// drawings of others that were cut or have lost lines are recovered.
#include "auditscanner.h"
#include "dbdatabase.h"
#include "drawingaudit.h"
#include "drawingfiles.h"
#include "drawingfix.h"
#include "drawingrecovery.h"
#include "faulttexts.h"
#include "undohistory.h"

#include <algorithm>
#include <cstdlib>
#include <random>
#include <set>

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

/// What an object of the repaired record would be, another class than it was.
bool changesClass(const std::string& fault) {
    return fault.starts_with("real for an integer") || fault.starts_with("record of another table");
}

void expectFixed(AcDbDatabase& database, bool isFaulty, bool keepsFields) {
    const std::string before = saved(database);
    database.disableUndoRecording(false);
    beginUndoGroup(database, L"AUDIT FIX");
    RepairReport report;
    EXPECT_EQ(fixDrawing(database, report), Acad::eOk);
    endUndoGroup(database);
    const std::string after = saved(database);
    EXPECT_EQ(faultsIn(after), "") << wordsOf(report);
    EXPECT_EQ(after == before, !isFaulty);
    if (!isFaulty) return;
    // What the objects hold is what their records say.
    const auto again = openDrawingFromMemory(after, L"test", nullptr, quietReading);
    ASSERT_TRUE(again) << wordsOf(report);
    if (keepsFields) {
        EXPECT_EQ(saved(database, fromFields), saved(*again, fromFields)) << wordsOf(report);
    }
    UndoReport undone;
    EXPECT_EQ(undoLastGroup(database, undone), Acad::eOk);
    EXPECT_TRUE(saved(database) == before);
    EXPECT_EQ(redoLastGroup(database, undone), Acad::eOk);
    EXPECT_TRUE(saved(database) == after);
}

} // namespace

// The text alone first; then the drawing that is open, by one step that can be taken back and done again.
TEST(Repair, leavesNoneOfTheSingleFaults) {
    std::size_t fixed = 0;
    forEachFault([&](const std::string& sound, const std::string& fault) {
        SCOPED_TRACE(fault);
        const std::vector<std::string> parts = split(fault, " | ");
        const std::string text = drawingOf(changedText(sound, parts.at(1), parts.at(2)));
        const bool isFaulty = auditDrawingText(text).faultCount() > 0;
        RepairReport report;
        const std::string repaired = repairDrawingText(text, report);
        EXPECT_EQ(faultsIn(repaired), "") << wordsOf(report);
        EXPECT_TRUE(report.isClean());
        EXPECT_EQ(report.notes.empty(), !isFaulty) << wordsOf(report);
        EXPECT_TRUE(isFaulty || repaired == text);
        EXPECT_TRUE(openDrawingFromMemory(repaired, L"test", nullptr, quietReading)) << wordsOf(report);
        if (const auto database = openDrawingFromMemory(text, L"test", nullptr, quietReading)) {
            expectFixed(*database, isFaulty, !changesClass(fault));
            ++fixed;
        }
    });
    EXPECT_GT(fixed, 120u);
}

// What can be told of a record stays, and what others gave it is found again.
TEST(Repair, keepsWhatCanBeTold) {
    constexpr const char* rows[][3] = {
        {"5=41", "40=5.0 -> 40=-5.0", "48=2.0 100=AcDbCircle 10=0.0 20=0.0 30=0.0 40=5.0 "},
        {"5=54", "8=0 -> 8", "0=POINT 5=54 330=1F 100=AcDbEntity 8=0 100=AcDbPoint 10=0.0 "},
        {"5=65", "350=69 -> 350=ABCD", "3=RECOVERED_69 350=69 "},
        {"5=65", "350=69 -> 350=ABCD", "0=XRECORD 5=69 330=60 "},
        {"5=67", "71=1 10=0.0 20=0.0 11=12.0 21=9.0 330=16 -> 71=one 10=0.0 20=0.0 11=12.0 21=9.0 330=ABCD",
         "11=12.0 21=9.0 330=16 "},
    };
    for (const auto& [record, change, wanted] : rows) {
        RepairReport report;
        const std::string repaired =
            repairDrawingText(drawingOf(changedText(contentOf("sound.txt"), record, change)), report);
        std::string groups;
        AuditScanner scanner(repaired);
        for (AuditGroup group; scanner.next(group) == AuditScan::kGroup;)
            (groups += std::to_string(group.code) + "=").append(group.value) += ' ';
        EXPECT_NE(groups.find(wanted), std::string::npos) << change << "\n" << groups;
    }
    const std::string sound = drawingOf(contentOf("sound.txt"));
    RecoveryReport report;
    const auto database = recoverDrawing(sound.substr(0, sound.find("TABLES")), L"test", report);
    ASSERT_TRUE(database);
    EXPECT_NE(saved(*database).find("*Model_Space"), std::string::npos) << "what every drawing has";
}

namespace {

std::vector<std::string> linesOf(const std::string& bytes) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size() - 1) + 1;
        lines.push_back(bytes.substr(at, end - at));
        at = end;
    }
    return lines;
}

std::string trimmed(const std::string& line) {
    const std::size_t first = line.find_first_not_of(" \t\r\n");
    return first == std::string::npos ? "" : line.substr(first, line.find_last_not_of(" \t\r\n") + 1 - first);
}

/// The kinds and handles of the entities that end before that line; without polylines whose vertices do not.
std::multiset<std::string> entitiesBefore(const std::vector<std::string>& lines, std::size_t end) {
    std::multiset<std::string> found;
    std::string section, type, handle, polyline;
    std::size_t at = 0;
    while (at < lines.size() && trimmed(lines[at]).empty()) ++at;
    for (; at + 1 < std::min(end, lines.size()); at += 2) {
        const std::string code = trimmed(lines[at]);
        const std::string value = trimmed(lines[at + 1]);
        if (code == "0") {
            const bool isEntity = (section == "ENTITIES" || section == "BLOCKS") && !type.empty() &&
                                  type != "BLOCK" && type != "ENDBLK" && type != "SECTION" &&
                                  type != "SEQEND";
            if (isEntity) found.insert(type + " " + handle);
            if (isEntity && type == "POLYLINE") polyline = type + " " + handle;
            if (type == "VERTEX") polyline.clear();
            type = value;
            handle.clear();
        }
        if (code == "2" && type == "SECTION") section = value;
        if (code == "5" && handle.empty()) handle = value;
    }
    if (const auto unfinished = found.find(polyline); unfinished != found.end()) found.erase(unfinished);
    return found;
}

enum class Damage { kCut, kLost, kDoubled };

struct DamagedText {
    std::string bytes;
    std::size_t line; ///< the first one that is not as it was
};

DamagedText damaged(const std::string& bytes, Damage damage, std::mt19937& random) {
    if (damage == Damage::kCut) {
        const std::string cut =
            bytes.substr(0, std::uniform_int_distribution<std::size_t>(0, bytes.size() - 1)(random));
        return {cut, linesOf(cut).size() - (cut.empty() || cut.back() == '\n' ? 0 : 1)};
    }
    std::vector<std::string> lines = linesOf(bytes);
    const std::size_t line = std::uniform_int_distribution<std::size_t>(0, lines.size() - 1)(random);
    lines[line] = damage == Damage::kLost ? "" : lines[line] + lines[line];
    std::string result;
    for (const std::string& each : lines) result += each;
    return {result, line};
}

} // namespace

// At so many places a kind as the variable VEXO_DAMAGES says.
TEST_F(DrawingsOfOthers, areRecoveredWithAllBeforeTheDamage) {
    const char* const wanted = std::getenv("VEXO_DAMAGES");
    const int places = wanted ? std::atoi(wanted) : 2;
    forEach([&](AcDbDatabase& sound) {
        WriteOptions asText = quietWriting;
        asText.coding = DrawingCoding::kText;
        const std::string bytes = saved(sound, asText);
        std::mt19937 random(4711);
        for (const Damage damage : {Damage::kCut, Damage::kLost, Damage::kDoubled})
            for (int place = 0; place < places; ++place) {
                const DamagedText text = damaged(bytes, damage, random);
                RecoveryReport report;
                const auto database = recoverDrawing(text.bytes, L"test", report);
                SCOPED_TRACE(testing::Message() << static_cast<int>(damage) << " in line " << text.line + 1);
                ASSERT_TRUE(database || text.bytes.size() < 100);
                if (!database) continue;
                EXPECT_EQ(auditDrawing(*database).faultCount(), 0u) << wordsOf(report.repairs);
                const std::string recovered = saved(*database);
                const auto before = entitiesBefore(linesOf(bytes), text.line);
                const auto behind = entitiesBefore(linesOf(recovered), std::string::npos);
                EXPECT_TRUE(std::includes(behind.begin(), behind.end(), before.begin(), before.end()))
                    << wordsOf(report.repairs);
            }
    });
}
