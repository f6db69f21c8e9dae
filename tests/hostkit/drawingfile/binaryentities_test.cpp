// Entities that other programs wrote in other ways than records have them, made into binary records and told
// as groups again.
#include "drawingencoding.h"
#include "drawingsofothers.h"
#include "exchangeoutline.h"
#include "groupscanner.h"
#include "recordtranscription.h"
#include "visualstyleforms.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>

using namespace hostkit;

namespace {

using Groups = std::vector<std::pair<int, std::string>>;

/// "8 0|100 AcDbLine|10 1" as groups of a drawing.
std::string groupLines(const std::string& groups) {
    std::string lines;
    std::istringstream stream(groups);
    for (std::string group; std::getline(stream, group, '|');) {
        const std::size_t blank = group.find(' ');
        lines += group.substr(0, blank) + "\n" + (blank == std::string::npos ? "" : group.substr(blank + 1)) +
                 "\n";
    }
    return lines;
}

std::string drawingWith(const std::string& entity, int form) {
    const auto block = [](const std::string& name, const std::string& handle) {
        return "0 BLOCK|5 " + handle + "1|330 " + handle + "|100 AcDbEntity|8 0|100 AcDbBlockBegin|2 " +
               name + "|70 0|10 0|20 0|30 0|3 " + name + "|0 ENDBLK|5 " + handle + "2|330 " + handle +
               "|100 AcDbEntity|8 0|100 AcDbBlockEnd|";
    };
    const auto table = [](const std::string& name, const std::string& handle, const std::string& entries) {
        return "0 TABLE|2 " + name + "|5 " + handle + "|100 AcDbSymbolTable|70 1|" + entries + "0 ENDTAB|";
    };
    const auto entry = [](const std::string& kind, const std::string& handle, const std::string& owner,
                          const std::string& mark, const std::string& name) {
        return "0 " + kind + "|5 " + handle + "|330 " + owner + "|100 AcDbSymbolTableRecord|100 AcDb" + mark +
               "TableRecord|2 " + name + "|70 0|";
    };
    return groupLines(
        "0 SECTION|2 HEADER|9 $ACADVER|1 AC10" + std::to_string(form) +
        "|9 $HANDSEED|5 FFF|0 ENDSEC|0 SECTION|2 TABLES|" +
        table("LTYPE", "5",
              entry("LTYPE", "14", "5", "Linetype", "ByBlock") +
                  entry("LTYPE", "15", "5", "Linetype", "ByLayer") +
                  entry("LTYPE", "16", "5", "Linetype", "Continuous")) +
        table("LAYER", "2", entry("LAYER", "10", "2", "Layer", "0") + "62 7|6 Continuous|") +
        table("STYLE", "3", entry("STYLE", "11", "3", "TextStyle", "Standard") + "41 1|3 txt|") +
        table("BLOCK_RECORD", "1",
              entry("BLOCK_RECORD", "1F", "1", "Block", "*Model_Space") +
                  entry("BLOCK_RECORD", "1B", "1", "Block", "*Paper_Space") +
                  entry("BLOCK_RECORD", "30", "1", "Block", "STAIR")) +
        "0 ENDSEC|0 SECTION|2 BLOCKS|" + block("*Model_Space", "1F") + block("*Paper_Space", "1B") +
        block("STAIR", "30") + "0 ENDSEC|0 SECTION|2 ENTITIES|" + entity +
        "|0 ENDSEC|0 SECTION|2 OBJECTS|0 DICTIONARY|5 C|330 0|100 AcDbDictionary|0 ENDSEC|0 EOF");
}

/// The entity of handle 100, as the record that was made of it tells its groups.
Groups throughRecord(const std::string& entity, int form) {
    EncodedDrawing encoded;
    const auto version = static_cast<DrawingVersion>(1000 + form);
    const std::string drawing = drawingWith(entity, form);
    EXPECT_TRUE(encodeDrawing(ExchangeOutline(drawing), version, 30, {}, encoded));
    BinaryContainer container;
    container.version = version;
    container.sections["AcDb:AcDbObjects"] = encoded.objects;
    RecordReading reading(container, encoded.classes);
    RecordNames names;
    names.add("LAYER", "0", 0x10);
    names.add("STYLE", "Standard", 0x11);
    names.add("BLOCK_RECORD", "STAIR", 0x30);
    const DrawingStyle style{DrawingText(CodePage::utf8), version, "\n"};
    RecordTranscription transcription(reading, names, style);
    std::string text;
    RecordFields fields;
    for (const ObjectPlace& place : encoded.places)
        if (place.handle == 0x100 && reading.read(place.offset, fields)) {
            EXPECT_TRUE(transcription.append(fields, {}, text));
        }
    Groups groups;
    std::istringstream stream(text);
    for (std::string code, value; std::getline(stream, code) && std::getline(stream, value);) {
        value.erase(0, std::min(value.find_first_not_of(' '), value.size()));
        groups.emplace_back(std::stoi(code), value);
    }
    return groups;
}

std::string told(const Groups& groups, int code) {
    std::string values;
    for (const auto& [own, value] : groups)
        if (own == code) values += (values.empty() ? "" : ",") + value;
    return values;
}

const std::string head = "|5 100|330 1F|100 AcDbEntity|8 0|";

} // namespace

TEST(BinaryEntities, groupsOfOthersFindTheirFields) {
    const struct {
        std::string what, entity;
        std::map<int, std::string> expected; ///< values of all groups of the code
    } cases[] = {
        {"a layer that no table has",
         "0 POINT|5 100|330 1F|100 AcDbEntity|8 GONE|100 AcDbPoint|10 1|20 2|30 3",
         {{8, "0"}, {10, "1.0"}, {30, "3.0"}}},
        {"a style that no table has",
         "0 TEXT" + head + "100 AcDbText|10 1|20 2|30 0|40 2|1 hi|7 GONE|100 AcDbText",
         {{1, "hi"}, {7, ""}}},
        {"an array of inserts by its counts alone",
         "0 INSERT" + head + "100 AcDbBlockReference|2 STAIR|10 1|20 2|30 3|42 2|70 3|71 4|44 5",
         {{2, "STAIR"}, {41, ""}, {42, "2.0"}, {43, ""}, {70, "3"}, {71, "4"}, {44, "5.0"}}},
        {"an insert of one scale",
         "0 INSERT" + head + "100 AcDbBlockReference|2 STAIR|10 1|20 2|30 3|41 2|42 2|43 2",
         {{41, "2.0"}, {42, "2.0"}, {43, "2.0"}}},
        {"no mark but the common one",
         "0 ARC" + head + "10 1|20 2|30 3|40 4|50 0|51 90",
         {{40, "4.0"}, {50, "0.0"}, {51, "90.0"}}},
        {"a paragraph turned in a plane of its own",
         "0 MTEXT" + head + "100 AcDbMText|10 1|20 2|30 3|40 2|1 hi|210 0|220 0|230 -1|50 180",
         {{11, "1.0"}, {230, "-1.0"}}},
        {"a slant in the class of all dimensions",
         "0 DIMENSION" + head +
             "100 AcDbDimension|10 0|20 5|30 0|11 1|21 1|31 0|70 32|52 60|100 AcDbAlignedDimension|13 0|23 "
             "0|33 0|"
             "14 9|24 0|34 0|50 0|100 AcDbRotatedDimension",
         {{52, "60.0"}, {70, "32"}}},
        {"widths at two corners of three",
         "0 LWPOLYLINE" + head +
             "100 AcDbPolyline|90 3|70 129|10 0|20 0|40 1|41 2|10 1|20 0|10 1|20 1|40 3|42 1",
         {{70, "129"}, {43, ""}, {40, "1.0,0.0,3.0"}, {41, "2.0,0.0,0.0"}, {42, "1.0"}}},
        {"a line that leaves the plane at its end",
         "0 LINE" + head + "100 AcDbLine|10 1|20 2|30 0|11 3|21 4|31 5",
         {{30, "0.0"}, {31, "5.0"}}},
        {"a definition of an attribute, set to the top of its point",
         "0 ATTDEF" + head +
             "100 AcDbText|10 1|20 2|30 0|40 2|1 hi|72 1|11 5|21 6|31 0|100 AcDbAttributeDefinition|3 "
             "which|2 TAG|"
             "70 8|74 3",
         {{72, "1"}, {74, "3"}, {11, "5.0"}, {70, "8"}, {3, "which"}}},
        {"a hatch of one polygon",
         "0 HATCH" + head +
             "100 AcDbHatch|10 0|20 0|30 1|2 SOLID|70 1|71 0|91 1|92 2|72 0|73 1|93 2|10 1|20 2|10 3|20 4|97 "
             "0|75 0|"
             "76 1|98 1|10 7|20 8",
         {{10, "0.0,1.0,3.0,7.0"}, {30, "1.0"}, {98, "1"}}},
    };
    for (const auto& [what, entity, expected] : cases)
        for (const int form : {15, 18, 24, 32}) {
            const Groups groups = throughRecord(entity, form);
            for (const auto& [code, value] : expected)
                EXPECT_EQ(told(groups, code), value) << what << ", form " << form << ", group " << code;
        }
}

// Lines of text are kept in blocks of bytes, and cut into groups of 255 characters.
TEST(BinaryEntities, bodiesOfManyBlocksKeepTheirText) {
    std::string entity = "0 BODY" + head + "100 AcDbModelerGeometry|70 1", expected;
    for (unsigned line = 0; line < 200; ++line) {
        const std::string text = "line " + std::to_string(line * 7919) + std::string(line % 240, 'x') + "^ y";
        entity += "|1 " + text;
        expected += "\n" + text;
    }
    for (const unsigned more : {300U, 77U}) {
        entity += "|3 " + std::string(more, 'z');
        expected += std::string(more, 'z');
    }
    for (const int form : {15, 18, 24}) {
        std::string text;
        for (const auto& [code, value] : throughRecord(entity, form))
            if (code == 1 || code == 3) text += (code == 1 ? "\n" : "") + value;
        EXPECT_EQ(text, expected) << "form " << form;
    }
}

namespace {

/// Visual styles of a text drawing by their names.
std::map<std::string, std::string> visualStylesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    std::map<std::string, std::string> found;
    if (text.empty()) return found;
    for (const OutlinedRecord& object : ExchangeOutline(text).objects)
        if (valueIn(object.in(text), 0) == "VISUALSTYLE")
            found[std::string(valueIn(object.in(text), 2))] = object.in(text);
    return found;
}

/// The groups of the class, without the data of applications behind.
Groups ownGroups(const std::string& record) {
    Groups groups;
    GroupScanner scanner(record);
    bool isInside = false;
    for (RawGroup group; scanner.next(group) == ScanResult::kGroup && group.code != 1001;) {
        if (isInside) groups.emplace_back(group.code, withoutBlanks(group.value));
        isInside = isInside || group.is(100, "AcDbVisualStyle");
    }
    return groups;
}

} // namespace

// The same drawing, saved by another program in each form.
TEST(VisualStyles, HaveTheGroupsOfEachForm) {
    const auto named = visualStylesOf(drawingsOfOthers() / "binary/sample_AC1024.dxf");
    const auto listed = visualStylesOf(drawingsOfOthers() / "binary/sample_AC1027.dxf");
    const auto unnamed = visualStylesOf(drawingsOfOthers() / "binary/sample_AC1021.dxf");
    if (named.empty() || listed.empty() || unnamed.empty()) GTEST_SKIP() << "no drawings of others";
    for (const auto& [name, record] : named) {
        SCOPED_TRACE(name);
        DrawingStyle older, newer;
        older.version = DrawingVersion::k2010;
        newer.version = DrawingVersion::k2013;
        EXPECT_EQ(ownGroups(visualStyleInForm(record, newer)), ownGroups(listed.at(name)));
        EXPECT_EQ(ownGroups(visualStyleInForm(listed.at(name), older)), ownGroups(record));
        // Up to 2007 nothing is told of the marks, which some have other than usual.
        const auto withoutMarks = [](Groups groups) {
            std::erase_if(groups, [](const auto& group) { return group.first == 176; });
            return groups;
        };
        EXPECT_EQ(withoutMarks(ownGroups(visualStyleInForm(unnamed.at(name), older))),
                  withoutMarks(ownGroups(record)));
        EXPECT_EQ(visualStyleInForm(record, older), "");
    }
}
