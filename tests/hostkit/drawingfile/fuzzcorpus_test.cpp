// What the fuzzer starts from, and what it has found, changed in every way that the fuzzer knows.
#include "db2dpolyline.h"
#include "db2dvertex.h"
#include "drawinginvariants.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>

using namespace drawinginvariants;

namespace {

std::size_t
forEachDrawing(const char* folder,
               const std::function<void(const std::string& name, const std::string& bytes)>& visit) {
    std::size_t readable = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(VEXO_SOURCE_DIR "/fuzz/" + std::string(folder))) {
        SCOPED_TRACE(entry.path());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        readable += read(bytes) != nullptr;
        visit(entry.path().filename().string(), bytes);
    }
    return readable;
}

TEST(FuzzCorpus, holdsWhatAllDrawingsHold) {
    const std::size_t readable = forEachDrawing("corpus/drawing", [](const auto&, const auto& bytes) {
        EXPECT_EQ(brokenBySaving(bytes), "");
        EXPECT_EQ(brokenByForms(bytes), "");
        for (const Edit edit : {Edit::moveAll, Edit::eraseEverySecond})
            for (const std::size_t choice : {0u, 1u})
                EXPECT_EQ(brokenByEdit(bytes, edit, choice), "") << int(edit);
        for (std::size_t record = 0; record < 40; ++record)
            EXPECT_EQ(brokenByEdit(bytes, Edit::renameOne, record), "") << "record " << record;
    });
    EXPECT_GE(readable, 5u);
}

// Records in any order, in a block, in both spaces and in two sections of entities.
std::string randomSequence(std::mt19937& random) {
    const std::string records[] = {
        "INSERT\n2\nB\n", "INSERT\n2\nB\n66\n1\n", "POLYLINE\n66\n1\n", "REBAR\n", "LINE\n",
        "VERTEX\n",       "ATTRIB\n2\nT\n",        "SEQEND\n"};
    const auto some = [&](bool hasSpaces) {
        std::string text;
        for (std::size_t count = random() % 12; count > 0; --count) {
            const std::string& record = records[random() % std::size(records)];
            // Where records may be in a sheet, its mark makes the part of another.
            text += "0\n" + record + "8\n0\n" + (hasSpaces && random() % 3 == 0 ? "67\n1\n" : "");
        }
        return text;
    };
    std::string text = "0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n2\nB\n0\nENDBLK\n0\nBLOCK\n2\nC\n" + some(false);
    text += "0\nENDBLK\n0\nBLOCK\n2\nD\n" + some(false) + "0\nENDBLK\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n" +
            some(true) + "0\nENDSEC\n";
    text += "0\nSECTION\n2\nENTITIES\n" + some(true) + "0\nENDSEC\n0\nEOF\n";
    return text;
}

TEST(StrayParts, areTakenByNoContainerWhateverGoes) {
    std::mt19937 random(20);
    for (int round = 0; round < 400; ++round) {
        const std::string bytes = randomSequence(random);
        SCOPED_TRACE(bytes);
        ASSERT_EQ(brokenBySaving(bytes), "");
        for (const std::size_t choice : {0u, 1u})
            ASSERT_EQ(brokenByEdit(bytes, Edit::eraseEverySecond, choice), "") << choice;
        const auto database = read(bytes);
        ASSERT_TRUE(database);
        WriteOptions options;
        options.tellPort = false;
        options.version = DrawingVersion::k2000;
        std::string newer;
        ASSERT_EQ(writeDrawingToMemory(*database, newer, options), Acad::eOk);
        const auto again = read(newer);
        ASSERT_TRUE(again);
        ASSERT_EQ(entitiesAsText(*again), entitiesAsText(*database));
    }
}

// One gets its end with a new part, one becomes a container of another kind in R12.
TEST(StrayParts, areTakenByNoContainerThatIsNew) {
    const auto database =
        read("0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n2\n"
             "B\n0\nENDBLK\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nPOLYLINE\n0\nVERTEX\n0\nLINE\n0\nVERTEX\n"
             "0\nLINE\n0\nACAD_TABLE\n2\nB\n0\nLINE\n0\nSEQEND\n0\nENDSEC\n0\nEOF\n");
    ASSERT_TRUE(database);
    apply(*database, Edit::eraseEverySecond, 0);
    AcDbObjectPointer<AcDb2dPolyline> polyline(entitiesOf(*database).front(), AcDb::kForWrite);
    ASSERT_TRUE(polyline.object());
    auto* const vertex = new AcDb2dVertex;
    ASSERT_EQ(polyline->appendVertex(vertex), Acad::eOk);
    vertex->close();
    polyline.close();
    std::string text = entitiesAsText(*database);
    for (const DrawingVersion form : {DrawingVersion::k2000, DrawingVersion::kR12}) {
        if (form == DrawingVersion::kR12)
            text.replace(text.find("ACAD_TABLE"), 27, "INSERT 0 *Model_Space 1");
        WriteOptions options;
        options.tellPort = false;
        options.version = form;
        std::string bytes;
        ASSERT_EQ(writeDrawingToMemory(*database, bytes, options), Acad::eOk);
        const auto again = read(bytes);
        ASSERT_TRUE(again);
        EXPECT_EQ(entitiesAsText(*again), text);
    }
}

} // namespace
