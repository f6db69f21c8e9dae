// Single faults, each put into a sound drawing: the check finds that fault, at that record and line, and no
// other. The drawings and the faults are texts in the folder audit, written by hand and not by the writer.
#include "binaryform.h"
#include "drawingaudit.h"
#include "faulttexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>

using namespace drawingtest;
using namespace hostkit;

namespace {

std::size_t lineAt(const std::string& text, std::size_t place) {
    const std::string drawing = drawingOf(text.substr(0, place));
    return static_cast<std::size_t>(std::count(drawing.begin(), drawing.end(), '\n')) + 1;
}

std::string narrowed(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t each : text) bytes += each < 128 ? static_cast<char>(each) : '?';
    return bytes;
}

std::string told(const std::string& kind, const std::string& type, AcDbHandleValue handle, std::size_t line) {
    std::ostringstream text;
    text << kind << " | " << type << " " << std::hex << handle << std::dec << " | line " << line << " | ";
    return text.str();
}

std::vector<std::string> findingsIn(const std::string& drawing) {
    std::vector<std::string> texts;
    for (const AuditFinding& each : auditDrawingText(drawing).findings)
        texts.push_back(told(narrowed(auditCheckName(each.check)) +
                                 (each.severity == AuditSeverity::kFault ? " fault" : " remark"),
                             narrowed(each.type), each.handle, each.line) +
                        narrowed(each.text));
    return texts;
}

/// The begin of the finding that is wanted in this record of the changed text.
std::string wanted(const std::string& text, const std::string& kind, const std::string& record,
                   const std::string& group) {
    const std::size_t begin = beginOf(text, record);
    const std::size_t place = group == "."   ? begin
                              : group == "$" ? text.find_last_of(" \n", text.size() - 2) + 1
                              : group == "-" ? 0
                                             : placeOf(text, group, begin);
    const std::size_t line = group == "-" ? 0 : lineAt(text, place);
    if (record == ".") return told(kind, "", 0, line);
    const std::string type = text.substr(begin + 2, text.find_first_of(" \n", begin) - begin - 2);
    const bool hasHandle = record.starts_with("5=") || record.starts_with("105=");
    return told(kind, type, hasHandle ? std::stoull(record.substr(record.find('=') + 1), nullptr, 16) : 0,
                line);
}

void expectFault(const std::string& sound, const std::string& fault) {
    SCOPED_TRACE(fault);
    const std::vector<std::string> parts = split(fault, " | ");
    const std::string text = changedText(sound, parts.at(1), parts.at(2));
    const std::vector<std::string> found = findingsIn(drawingOf(text));
    for (std::size_t i = 3; i + 3 < parts.size(); i += 4) {
        const std::string begin = wanted(text, parts[i], parts[i + 1], parts[i + 2]);
        EXPECT_TRUE(std::any_of(found.begin(), found.end(),
                                [&](const std::string& each) {
                                    return each.starts_with(begin) &&
                                           each.find(parts[i + 3], begin.size()) != std::string::npos;
                                }))
            << "wanted\n"
            << begin << parts[i + 3] << "\nfound\n"
            << joined(found);
    }
    EXPECT_EQ(found.size(), (parts.size() - 3) / 4) << joined(found);
}

/// The findings where other groups stand in place of those, in the text of 2013.
std::string findingsWith(const std::string& groups, const std::string& others) {
    std::string text = contentOf("sound.txt");
    text.replace(placeOf(text, groups), groups.size(), others);
    return joined(findingsIn(drawingOf(text)));
}

} // namespace

TEST(AuditFaults, theSoundDrawingsHaveNone) {
    EXPECT_EQ(joined(findingsIn(drawingOf(contentOf("sound.txt")))), "");
    EXPECT_EQ(joined(findingsIn(drawingOf(contentOf("soundr12.txt")))), "");
    EXPECT_EQ(joined(findingsIn(" \r\n\r\n" + drawingOf(contentOf("soundr12.txt")))), "")
        << "blank lines in front";
    EXPECT_EQ(auditDrawingText(drawingOf(contentOf("soundr12.txt"))).objects, 14u);
}

TEST(AuditFaults, eachIsFoundAlone) { EXPECT_GT(forEachFault(expectFault), 150u); }

TEST(AuditFaults, binaryDrawingsAreCheckedAsText) {
    std::string text = contentOf("sound.txt");
    text.replace(placeOf(text, "40=5.0"), 6, "40=-5.0");
    std::string binary;
    ASSERT_FALSE(binaryFromText(drawingOf(text), DrawingVersion::k2013, binary));
    EXPECT_EQ(findingsIn(binary), findingsIn(drawingOf(text)));
    const std::vector<std::string> cut = findingsIn(binary.substr(0, binary.size() / 2 + 1));
    ASSERT_EQ(cut.size(), 1u);
    EXPECT_NE(cut[0].find("structure fault"), std::string::npos) << cut[0];
}

// What a table of texts cannot hold.
TEST(AuditFaults, longAndForeignTexts) {
    const auto expectOnly = [](const std::string& findings, const std::string& words) {
        EXPECT_NE(findings.find(words), std::string::npos) << findings;
        EXPECT_EQ(std::count(findings.begin(), findings.end(), '\n'), 1) << findings;
    };
    const auto longText = [](const std::string& code, std::size_t size) {
        return code + "=" + std::string(size, 'A');
    };
    EXPECT_EQ(findingsWith("1=Plate", longText("1", 2049)), "");
    expectOnly(findingsWith("1=Plate", longText("1", 2050)), "record remark | TEXT 50 ");
    expectOnly(findingsWith("1=Plate", "1=Pl\xE4te"), "no valid UTF-8");
    EXPECT_EQ(findingsWith("1=Plate", "1=Pl\xC3\xA4te"), "");
    EXPECT_EQ(findingsWith("2=UCS", "2=UCS"), "");
    EXPECT_EQ(findingsWith("1000=mark", longText("1000", 255)), "");
    expectOnly(findingsWith("1000=mark", longText("1000", 256)), "above 255");
    EXPECT_EQ(findingsWith("1000=mark", longText("1004", 254)), "");
    expectOnly(findingsWith("1000=mark", longText("1004", 256)), "above 127");
}

// Two bytes of code, and the value as a drawing's binary form holds it.
TEST(AuditFaults, sizeOfExtendedData) {
    constexpr std::size_t application = 2 + 2 + 2 * 6; // ORDANE
    const std::pair<const char*, std::size_t> kinds[] = {{"1000=B\xC3\xA9ton", 2 + 2 + 2 * 5},
                                                         {"1010=1.0 1020=2.0 1030=3.0", 2 + 24},
                                                         {"1040=2.5", 2 + 8},
                                                         {"1070=7", 2 + 2},
                                                         {"1071=70000", 2 + 4},
                                                         {"1005=41", 2 + 8},
                                                         {"1004=00FFAA", 2 + 2 + 3}};
    const std::string sound = contentOf("sound.txt");
    const std::size_t begin = placeOf(sound, "1000=mark");
    for (const auto& [groups, size] : kinds) {
        const std::size_t most = (16383 - application) / size;
        for (const std::size_t count : {most, most + 1}) {
            std::string data;
            for (std::size_t i = 0; i < count; ++i) (data += groups) += ' ';
            std::string text = sound;
            text.replace(begin, text.find('\n', begin) - begin, data);
            const std::string found = joined(findingsIn(drawingOf(text)));
            const std::string told =
                "it has " + std::to_string(application + count * size) + " bytes of extended data";
            EXPECT_EQ(found.find(told) != std::string::npos, count > most) << groups << "\n" << found;
            EXPECT_EQ(found.empty(), count == most) << groups << "\n" << found;
        }
    }
}

// Names are one however they are spelled.
TEST(AuditFaults, namesByOtherSpellings) {
    for (const auto& [inTable, inEntity] :
         {std::pair{"B\xC3\xA9ton", "B\\U+00C9TON"}, std::pair{"\\U+4E2D", "\xE4\xB8\xAD"},
          std::pair{"slab", "SLAB"}}) {
        std::string text = contentOf("sound.txt");
        const std::string layer = "2=Slab";
        text.replace(placeOf(text, layer), layer.size(), std::string("2=") + inTable);
        for (const std::string code : {"8=", "1003="})
            text.replace(placeOf(text, code + "Slab"), code.size() + 4, code + inEntity);
        EXPECT_EQ(joined(findingsIn(drawingOf(text))), "");
    }
}

// A line that is lost or doubled shifts code and value against each other; nothing of that may pass unseen.
TEST(AuditFaults, anyLostAndAnyDoubledLineIsFound) {
    for (const char* const sound : {"sound.txt", "soundr12.txt"}) {
        const std::string bytes = drawingOf(contentOf(sound));
        const std::size_t endMark = bytes.rfind("EOF");
        for (std::size_t begin = 0; begin < endMark;) {
            const std::string line = bytes.substr(begin, bytes.find('\n', begin) + 1 - begin);
            std::string lost = bytes;
            lost.erase(begin, line.size());
            EXPECT_GT(auditDrawingText(lost).faultCount(), 0u) << "without " << line << " at " << begin;
            std::string doubled = bytes;
            doubled.insert(begin, line);
            EXPECT_GT(auditDrawingText(doubled).faultCount(), 0u) << "twice " << line << " at " << begin;
            begin += line.size();
        }
    }
}

// Whatever the bytes, the check comes to an end, and a drawing that was cut is not called whole.
TEST(AuditFaults, anyBytesAreSurvived) {
    const std::string sound = drawingOf(contentOf("sound.txt"));
    std::mt19937 random(11);
    for (int round = 0; round < 300; ++round) {
        EXPECT_GT(auditDrawingText(sound.substr(0, random() % sound.rfind("EOF"))).faultCount(), 0u);
        std::string damaged = sound;
        for (int i = 0; i < 5; ++i) damaged[random() % damaged.size()] = static_cast<char>(random());
        (void)auditDrawingText(damaged);
    }
    for (const auto& entry : std::filesystem::directory_iterator(VEXO_SOURCE_DIR "/fuzz/corpus/drawing")) {
        std::ifstream file(entry.path(), std::ios::binary);
        (void)auditDrawingText(std::string{std::istreambuf_iterator<char>(file), {}});
    }
}
