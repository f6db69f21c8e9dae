#include "recordpictures.h"

#include "drawingfiles.h"
#include "drawnpaths.h"

#include "dbaccess.h"
#include "dbopaque.h"
#include "entitycoordinates.h"
#include "entitypicking.h"

#include <cmath>
#include <numbers>
#include <sstream>

using namespace hostkit;
using namespace drawingtest;
using drawntest::Recorder;

namespace {

/// Groups as "code=value", apart by blanks.
std::string groupsOf(const std::string& notation) {
    std::istringstream words(notation);
    std::string text;
    for (std::string word; words >> word;) {
        const std::size_t sign = word.find('=');
        text += group(std::stoi(word.substr(0, sign)), word.substr(sign + 1));
    }
    return text;
}

std::string drawingWith(const std::string& records) {
    const std::string block1 = "0=TABLE 2=BLOCK_RECORD 70=1 0=BLOCK_RECORD 5=B1 2=*T1 0=ENDTAB";
    const std::string line = "0=LINE 8=0 10=0 20=0 11=4 21=2 ";
    const std::string definition = "0=ATTDEF 5=A1 8=0 10=0 20=0 40=1 1=x 3=p 2=T 70=0";
    const std::string table = "0=ACAD_TABLE 8=0 100=AcDbBlockReference 10=0 20=0 100=AcDbTable 2=";
    const std::string objects =
        "0=DICTIONARY 5=C 330=0 100=AcDbDictionary 3=ACAD_WIPEOUT_VARS 350=E2 "
        "0=MLINESTYLE 5=E1 100=AcDbMlineStyle 2=S 70=1043 62=6 71=2 49=1 62=1 49=-1 62=5 "
        "0=WIPEOUTVARIABLES 5=E2 330=C 100=AcDbWipeoutVariables 70=0";
    return header("AC1027") + section("TABLES", groupsOf(block1)) +
           section("BLOCKS", block("*T1", groupsOf(line + definition)) +
                                 block("*T2", groupsOf(table + "*T3")) +
                                 block("*T3", groupsOf(table + "*T2 " + line))) +
           section("ENTITIES", groupsOf(records)) + section("OBJECTS", groupsOf(objects)) + group(0, "EOF");
}

std::unique_ptr<AcDbDatabase> reading(const std::string& records) {
    return openDrawingFromMemory(drawingWith(records), L"records.dxf", nullptr, quietReading);
}

/// The pictures of the entities of model space that have no class.
std::vector<Recorder> picturesOf(const std::string& records) {
    std::vector<Recorder> pictures;
    const auto database = reading(records);
    EXPECT_TRUE(database) << records.substr(0, 400);
    const auto* const space =
        database ? DatabaseAccess::objectOf<AcDbBlockTableRecord>(database->modelSpaceId()) : nullptr;
    for (const AcDbObjectId id : space ? space->entities() : std::vector<AcDbObjectId>())
        if (auto* const entity = DatabaseAccess::objectOf<AcDbOpaqueEntity>(id))
            entity->worldDraw(&pictures.emplace_back());
    return pictures;
}

Recorder pictureOf(const std::string& record) {
    const std::vector<Recorder> pictures = picturesOf(record);
    EXPECT_EQ(pictures.size(), 1u) << record;
    return pictures.empty() ? Recorder() : pictures.front();
}

struct RecordCase {
    const char* record;
    const char* marks;
    double length; ///< of straight strokes and sides of areas
    double box[4]; ///< left, low, right, high
};

// Arrows of the standing style are 0.18 long and a third as wide.
#define LEADER_START "0=LEADER 8=0 100=AcDbLeader 3=Standard 71=1 "
#define LEADER_POINTS "10=0 20=0 30=0 10=10 20=0 30=0 10=10 20=5 30=0 "
#define CONTEXT_START "0=MULTILEADER 8=0 100=AcDbMLeader 270=2 300=CONTEXT_DATA{ 40=1 41=2 140=3 145=1 "
#define CONTEXT_END(LINE, BRANCH)                                                                            \
    "302=LEADER{ 290=1 291=1 10=10 20=10 30=0 11=1 21=0 31=0 40=5 304=LEADER_LINE{ 10=0 20=10 30=0 " LINE    \
    "305=} " BRANCH "303=} 301=} 170=1 91=-1023410173 291=1 42=9 "
#define CONTEXT_TEXT "12=16 22=11 32=0 11=0 21=0 31=1 13=1 23=0 33=0 "
#define CONTEXT_BLOCK "290=0 296=1 341=B1 15=20 25=20 35=0 16=2 26=2 36=2 46=1.5707963267948966 "
#define UNDERLINED "1001=ACAD 1000=DSTYLE 1002={ 1070=77 1070=1 1002=}"
#define MESH_VERTEX(x, y, flags)                                                                             \
    "0=VERTEX 8=0 100=AcDbVertex 100=AcDbPolygonMeshVertex 10=" #x " 20=" #y " 30=0 70=" #flags " "
#define FACE_VERTEX(x, y)                                                                                    \
    "0=VERTEX 8=0 100=AcDbVertex 100=AcDbPolyFaceMeshVertex 10=" #x " 20=" #y " 30=0 70=192 "
#define SEQUENCE_END "0=SEQEND 8=0"

const RecordCase recordCases[] = {
    // The stroke begins at the base of the arrow.
    {LEADER_START "73=3 " LEADER_POINTS, "sa", 15.244966, {0, -0.03, 10, 5}},
    {LEADER_START "73=3 10=0 20=0 30=0 10=0.35 20=0 30=0", "s", 0.35, {0, 0, 0.35, 0}},
    {LEADER_START "71=0 77=3 " LEADER_POINTS, "s", 15, {0, 0, 10, 5}},
    {LEADER_START "72=1 10=0 20=0 30=0 10=5 20=0 30=0 10=10 20=0 30=0", "sa", 0.424966, {0, -0.03, 10, 0.03}},
    {LEADER_START "210=0 220=0 230=1 " LEADER_POINTS
                  "1001=ACAD 1000=DSTYLE 1002={ 1070=41 1040=2 1070=40 1040=1.5 1070=176 1070=4 1002=}",
     "s4a4",
     19.082763,
     {0, -0.5, 10, 5}},
    // A text above the line is underlined, to the side that the record says.
    {LEADER_START "73=0 74=0 41=3 " LEADER_POINTS UNDERLINED, "sa", 18.334966, {0, -0.03, 13.09, 5}},
    {LEADER_START "73=0 74=1 41=3 211=0 221=1 231=0 " LEADER_POINTS UNDERLINED,
     "sa",
     18.334966,
     {0, -0.03, 10, 5}},
    {CONTEXT_START "290=1 304=AB " CONTEXT_TEXT CONTEXT_END("91=0 ", "") "292=0",
     "s3a3s3l",
     19.082763,
     {0, 9.5, 15, 10.5}},
    // A gap of 2 in the line, told backwards, and one of 1 in the landing.
    {CONTEXT_START "290=1 304=AB " CONTEXT_TEXT CONTEXT_END("90=0 11=7 21=10 31=0 12=5 22=10 32=0 91=0 ",
                                                            "12=12 22=10 32=0 13=13 23=10 33=0 ") "292=0",
     "s3a3s3l",
     16.082763,
     {0, 9.5, 15, 10.5}},
    // The paper hides what is within half a text height around the letters, which are 10/3 by 2.
    {CONTEXT_START "290=1 304=AB 141=1.5 291=1 292=1 " CONTEXT_TEXT CONTEXT_END("91=0 ", "") "292=0",
     "s3a3s3gl",
     37.749430,
     {0, 8, 20.333333, 12}},
    // The landing runs on under the text, and the line has an arrow of its own size; without landing.
    {CONTEXT_START "290=1 174=5 304=AB " CONTEXT_TEXT CONTEXT_END("40=6 ", ""),
     "s3a3s3l",
     28.498859,
     {0, 9, 20.333333, 11}},
    {CONTEXT_START "290=1 304=AB " CONTEXT_TEXT CONTEXT_END("", "271=1 "),
     "s3a3l",
     14.082763,
     {0, 9.5, 10, 10.5}},
    // Of a path that is not shown the contents are, here within a frame: letters 2 high, and the gap around.
    {CONTEXT_START "290=1 304=H " CONTEXT_TEXT CONTEXT_END("", "") "170=0 292=1",
     "ls",
     14.666667,
     {15, 8, 18.333333, 12}},
    {CONTEXT_START CONTEXT_BLOCK CONTEXT_END("", "") "330=A1 177=1 44=0 302=W",
     "s3a3s3sl",
     28.027035,
     {0, 9.5, 20, 28}},
    // Filled, with joints and both caps, the end's a half circle; the first element has a break.
    {"0=MLINE 8=0 100=AcDbMline 2=S 340=E1 40=1 70=1 71=1 72=2 73=2 10=0 20=0 30=0 210=0 220=0 230=1 "
     "11=0 21=0 31=0 12=1 22=0 32=0 13=0 23=1 33=0 74=4 41=1 41=0 41=3 41=5 75=0 74=2 41=-1 41=0 75=0 "
     "11=10 21=0 31=0 12=1 22=0 32=0 13=0 23=1 33=0 74=2 41=1 41=0 75=0 74=2 41=-1 41=0 75=0",
     "a6s1s5s1s1",
     44,
     {0, -1, 11, 1}},
    // No distances are told: they follow from the style's offsets, which begin at the bottom.
    {"0=MLINE 8=0 100=AcDbMline 2=S 340=E1 40=2 70=2 71=13 72=2 73=2 10=0 20=0 30=0 "
     "11=0 21=0 31=0 12=1 22=0 32=0 13=0 23=1 33=0 11=10 21=0 31=0 12=1 22=0 32=0 13=0 23=1 33=0",
     "a6s1s5",
     48,
     {0, 0, 10, 4}},
    // A net of three rows, closed in their direction, where the first row is shown again.
    {"0=POLYLINE 8=0 100=AcDbPolygonMesh 66=1 70=17 71=3 72=2 " MESH_VERTEX(0, 0, 64) MESH_VERTEX(0, 5, 64)
         MESH_VERTEX(9, 0, 64) MESH_VERTEX(9, 5, 64) MESH_VERTEX(4, 7, 64) MESH_VERTEX(4, 8, 64) SEQUENCE_END,
     "s",
     61.495535,
     {0, 0, 9, 8}},
    // Of a smoothed one the frame is not shown.
    {"0=POLYLINE 8=0 100=AcDbPolygonMesh 66=1 70=52 71=9 72=9 73=2 74=3 " MESH_VERTEX(99, 99, 80)
         MESH_VERTEX(0, 0, 72) MESH_VERTEX(3, 0, 72) MESH_VERTEX(3, 4, 72) MESH_VERTEX(0, 0, 72)
             MESH_VERTEX(3, 0, 72) MESH_VERTEX(3, 4, 72) SEQUENCE_END,
     "s",
     24,
     {0, 0, 3, 4}},
    {"0=POLYLINE 8=0 100=AcDbPolygonMesh 66=1 70=16 71=3 72=3 " MESH_VERTEX(0, 0, 64) SEQUENCE_END,
     "",
     0,
     {}},
    // Two triangles share an edge; one edge is not seen.
    {"0=POLYLINE 8=0 100=AcDbPolyFaceMesh 66=1 70=64 71=4 72=2 " FACE_VERTEX(0, 0) FACE_VERTEX(8, 0)
         FACE_VERTEX(8, 6)
             FACE_VERTEX(0, 6) "0=VERTEX 8=0 100=AcDbFaceRecord 10=0 20=0 30=0 70=128 71=1 72=2 73=3 "
                               "0=VERTEX 8=0 100=AcDbFaceRecord 10=0 20=0 30=0 70=128 71=1 72=3 "
                               "73=-4 74=0 " SEQUENCE_END,
     "s",
     32,
     {0, 0, 8, 6}},
    {"0=MESH 8=0 100=AcDbSubDMesh 71=2 72=1 91=0 92=4 10=0 20=0 30=0 10=8 20=0 30=0 10=8 20=6 30=0 10=0 20=6 "
     "30=0 "
     "93=8 90=3 90=0 90=1 90=2 90=3 90=0 90=2 90=3 94=0 95=0 90=0",
     "s",
     38,
     {0, 0, 8, 6}},
    // A parabola: its end points and the corner between them.
    {"0=HELIX 8=0 100=AcDbSpline 70=0 71=2 72=6 73=3 40=0 40=0 40=0 40=1 40=1 40=1 10=0 20=0 30=0 10=4 20=8 "
     "30=0 "
     "10=8 20=0 30=0 100=AcDbHelix 10=99 20=99 30=0 40=9 41=3",
     "s",
     0,
     {0, 0, 8, 16.0 / 3}},
    // Boxes at least twice as wide as letters are high, three times around their texts.
    {"0=TOLERANCE 8=0 100=AcDbFcf 3=Standard 10=5 20=5 30=0 1={\\Fgdt;j}%%v1%%v^JA 11=0 21=1 31=0",
     "lslsls",
     4.32,
     {4.82, 5, 5.54, 5.72}},
    // The first groups are the table's, the later ones those of its cells.
    {"0=ACAD_TABLE 8=0 100=AcDbBlockReference 2=*T1 10=10 20=20 30=0 100=AcDbTable 11=0 21=1 31=0 2=none "
     "10=0 20=0",
     "s",
     4.472136,
     {8, 20, 10, 24}},
    {"0=ACAD_TABLE 8=0 100=AcDbBlockReference 10=1 20=1 100=AcDbTable 343=B1", "s", 4.472136, {1, 1, 5, 3}},
    // Two tables show each other.
    {"0=ACAD_TABLE 8=0 100=AcDbBlockReference 10=1 20=1 100=AcDbTable 2=*T2", "s", 4.472136, {1, 1, 5, 3}},
    {"0=LARGE_RADIAL_DIMENSION 8=0 100=AcDbDimension 2=*T1 10=3 20=3 30=0 12=100 22=1 32=0 210=0 220=0 "
     "230=-1",
     "s",
     4.472136,
     {-100, 1, -96, 3}},
    {"0=IMAGE 8=0 100=AcDbRasterImage 10=1 20=2 30=0 11=0 21=0.5 31=0 12=-0.5 22=0 32=0 13=8 23=4 280=0 "
     "91=2 14=0 24=0 14=1 24=1",
     "s",
     12,
     {-1, 2, 1, 6}},
    // Pixels count downwards from the top.
    {"0=IMAGE 8=0 100=AcDbRasterImage 10=0 20=0 30=0 11=1 21=0 31=0 12=0 22=1 32=0 13=8 23=4 280=1 91=2 "
     "14=0.5 "
     "24=-0.5 14=2.5 24=0.5",
     "s",
     6,
     {1, 3, 3, 4}},
    // The drawing shows no frames of wipeouts.
    {"0=WIPEOUT 8=0 100=AcDbWipeout 10=0 20=0 30=0 11=10 21=0 31=0 12=0 22=10 32=0 13=1 23=1 280=1 91=4 "
     "14=-0.5 24=0.5 14=0.5 24=0.5 14=0.5 24=-0.3 14=-0.5 24=0.5",
     "g",
     30.806248,
     {0, 0, 10, 8}},
    {"0=DWFUNDERLAY 8=0 100=AcDbUnderlayReference 10=5 20=5 30=0 41=2 42=3 43=1 50=90 280=3 11=1 21=1 11=2 "
     "21=3",
     "s",
     16,
     {-4, 7, 2, 9}},
    {"0=PDFUNDERLAY 8=0 100=AcDbUnderlayReference 10=5 20=5 30=0 41=2 42=3", "s", 5, {4, 3.5, 6, 6.5}},
    {"0=OLE2FRAME 8=0 100=AcDbOle2Frame 70=2 3=Paint 10=1 20=9 30=0 11=6 21=2 31=0 71=2",
     "s",
     24,
     {1, 2, 6, 9}},
    {"0=SHAPE 8=0 100=AcDbShape 10=1 20=1 30=0 40=2 2=MARK 41=3 50=90", "s", 28.649111, {-1, 1, 1, 7}},
    {"0=UNHEARD 8=0 100=AcDbUnheard 10=1 20=1 30=0", "", 0, {}},
};

bool isNear(double value, double wanted) { return std::abs(value - wanted) < 1e-4; }

} // namespace

// Letters here have two thirds of their height as width, and half of that between them.
TEST(RecordPictures, showWhatTheirRecordsSay) {
    for (const RecordCase& each : recordCases) {
        SCOPED_TRACE(each.record);
        const Recorder picture = pictureOf(each.record);
        EXPECT_EQ(picture.marks, each.marks);
        EXPECT_TRUE(isNear(picture.length, each.length)) << picture.length;
        double box[4] = {1e9, 1e9, -1e9, -1e9};
        for (const AcGePoint3d& point : picture.points) {
            box[0] = std::min(box[0], point.x);
            box[1] = std::min(box[1], point.y);
            box[2] = std::max(box[2], point.x);
            box[3] = std::max(box[3], point.y);
        }
        for (int side = 0; side < 4 && !picture.points.empty(); ++side)
            EXPECT_TRUE(isNear(box[side], each.box[side])) << side << ": " << box[side];
    }
}

// A box of what is drawn is the box of the entity, a window around it takes the entity, a smaller one does
// not, and every stroke is touched where it runs.
TEST(RecordPictures, areMeasuredAndPickedAsTheyAreDrawn) {
    for (const RecordCase& each : recordCases) {
        SCOPED_TRACE(each.record);
        const auto database = reading(each.record);
        const auto* const space = DatabaseAccess::objectOf<AcDbBlockTableRecord>(database->modelSpaceId());
        const auto& entity = *DatabaseAccess::objectOf<AcDbEntity>(space->entities().front());
        AcDbExtents box;
        const bool isDrawn = *each.marks != '\0';
        ASSERT_EQ(entity.getGeomExtents(box), isDrawn ? Acad::eOk : Acad::eInvalidExtents);
        const auto picks = [&](double left, double low, double right, double high, PickMode mode) {
            return isPicked(entity, {}, PickRegion::box({left, low}, {right, high}), mode);
        };
        EXPECT_EQ(picks(-1e6, -1e6, 1e6, 1e6, PickMode::inside), isDrawn);
        if (!isDrawn) continue;
        const AcGePoint3d low = box.minPoint(), high = box.maxPoint();
        const double edge = 1e-3;
        EXPECT_TRUE(picks(low.x - edge, low.y - edge, high.x + edge, high.y + edge, PickMode::inside));
        EXPECT_FALSE(picks(low.x + edge, low.y - edge, high.x + edge, high.y + edge, PickMode::inside));
        EXPECT_FALSE(picks(low.x - edge, low.y - edge, high.x + edge, high.y - edge, PickMode::inside));
        EXPECT_FALSE(picks(high.x + edge, low.y, high.x + 1.0, high.y, PickMode::touching));
        const Recorder picture = pictureOf(each.record);
        for (const PicturePath& path : picture.paths)
            for (const auto& run : chordsOf(path, 1e-9))
                for (std::size_t i = 1; i < run.size(); ++i) {
                    const AcGePoint3d middle = run[i - 1] + (run[i] - run[i - 1]) / 2.0;
                    EXPECT_TRUE(picks(middle.x - 1e-6, middle.y - 1e-6, middle.x + 1e-6, middle.y + 1e-6,
                                      PickMode::touching));
                }
        if (std::string(each.marks).find('l') != std::string::npos) continue; // letters are beside
        const AcDbExtents drawn = picture.box();
        EXPECT_LT((low - drawn.minPoint()).length() + (high - drawn.maxPoint()).length(), 1e-6);
    }
}

// What a program may add or leave out changes nothing.
TEST(RecordPictures, areTheSameFromRecordsOfOtherWriters) {
    for (const RecordCase& each : recordCases) {
        const std::string record = each.record;
        const bool needsMarks = record.starts_with("0=HELIX");
        std::string bare, padded;
        std::istringstream words(record);
        for (std::string word; words >> word;) {
            if (needsMarks || !word.starts_with("100=")) bare += word + ' ';
            // Coordinates of a point stand together.
            const int code = std::stoi(word);
            const bool isInPoint = (code >= 20 && code < 40) || (code >= 220 && code < 240);
            if (!isInPoint && code > 0 && code < 1000) padded += "999=note ";
            padded += word + ' ';
            if (code == 100) padded += "102={OTHER 10=77 330=0 40=9 102=} ";
        }
        const Recorder picture = pictureOf(record);
        for (const std::string& other : {bare, padded}) {
            const Recorder same = pictureOf(other);
            EXPECT_EQ(same.marks, picture.marks) << other;
            EXPECT_EQ(same.points, picture.points) << other;
        }
    }
}

// Each group missing, each the last one of its record, and each with a value that it should not have: what is
// drawn then is finite, and no more than the groups that are there.
TEST(RecordPictures, areSoundFromDamagedRecords) {
    constexpr const char* values[] = {"2147483647", "-9", "nan", "1e308", "-1e70", "}", "E1"};
    for (const RecordCase& each : recordCases) {
        std::vector<std::string> words;
        std::istringstream all(each.record);
        for (std::string word; all >> word;) words.push_back(word);
        std::string damaged;
        for (std::size_t place = 2; place < words.size(); ++place) {
            std::string before, after;
            for (std::size_t i = 0; i < words.size(); ++i)
                if (i != place) (i < place ? before : after) += words[i] + ' ';
            if (words[place].starts_with("0=")) continue;
            damaged += before + before + after;
            for (const char* value : values)
                damaged +=
                    before + words[place].substr(0, words[place].find('=') + 1) + value + ' ' + after + ' ';
        }
        for (const Recorder& picture : picturesOf(damaged)) {
            EXPECT_LT(picture.points.size(), 100u) << each.record;
            for (const AcGePoint3d& point : picture.points) ASSERT_TRUE(isFinite(point)) << each.record;
        }
    }
}
