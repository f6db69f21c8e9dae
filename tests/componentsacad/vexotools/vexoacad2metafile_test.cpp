#include "drawingparts.h"
#include "hosttest.h"
#include "metafilewalk.h"
#include "temporaryfolder.h"
#include "vexoacad2metafile.h"
#include "vexodatabasetools.h"

#include "afxwin.h"
#include "dbents.h"
#include "dbhatch.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbray.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace {

using metafiletest::Record;
using metafiletest::Walked;
using Data = std::vector<std::int32_t>;
constexpr double pi = std::numbers::pi;

enum Types : std::uint32_t {
    moveTo = 27,
    lineTo = 54,
    arc = 45,
    polygon16 = 86,
    font = 82,
    textOut = 84,
    brush = 39
};

class Metafile : public hostkit::HostTest {
protected:
    /// The records of that type in a picture of the entities at scale 1.
    std::vector<Data> drawn(const std::vector<AcDbEntity*>& entities, std::uint32_t type) {
        AcArray<void*> list;
        for (AcDbEntity* each : entities) list.append(each);
        EXPECT_TRUE(VEXODatabaseTools::ExportEntitiesInWMF(list, m_file.wstring().c_str(), 1.0, 7.0));
        std::vector<Data> found;
        for (const Record& each : Walked::ofFile(m_file).records)
            if (each.type == type) found.push_back(each.data);
        return found;
    }
    Data last(AcDbEntity& entity, std::uint32_t type, std::size_t from, std::size_t count) {
        const std::vector<Data> all = drawn({&entity}, type);
        if (all.empty()) return {};
        const auto begin = all.back().begin() + static_cast<std::ptrdiff_t>(from);
        return {begin, begin + static_cast<std::ptrdiff_t>(count)};
    }

    TemporaryFolder m_folder;
    std::filesystem::path m_file = m_folder.path() / "a.emf";
};

TEST_F(Metafile, StrokesStandAtTheIntegerPartsWithYTurnedOver) {
    AcDbLine line({1.9, 2.9, 5.0}, {-3.9, 1e12, 0.0});
    EXPECT_EQ(drawn({&line}, moveTo), (std::vector<Data>{{1, -2}}));
    EXPECT_EQ(drawn({&line}, lineTo), (std::vector<Data>{{-3, INT32_MIN}}));
    AcDbArc quarter({10, 20, 0}, 8, 0, pi / 2);
    EXPECT_EQ(drawn({&quarter}, arc), (std::vector<Data>{{2, -28, 17, -13, 18, -20, 10, -28}}));
    AcDbArc behind({10, 20, 0}, -AcGeVector3d::kZAxis, 8, 0, pi / 2);
    const Data swapped = last(behind, arc, 4, 4);
    EXPECT_EQ(swapped, (Data{10, -28, 2, -20})) << "its end first";

    AcDbPolyline contour(3);
    const AcGePoint2d corners[] = {{0.5, 0.5}, {10.5, 0.5}, {10.5, 10.5}};
    for (unsigned i = 0; i < 3; ++i) contour.addVertexAt(i, corners[i], i == 1 ? 1.0 : i == 2 ? 1e-11 : 0.0);
    EXPECT_EQ(drawn({&contour}, lineTo), (std::vector<Data>{{10, 0}}));
    contour.setClosed(true);
    EXPECT_EQ(drawn({&contour}, lineTo), (std::vector<Data>{{10, 0}, {0, 0}}));
    EXPECT_EQ(drawn({&contour}, arc), (std::vector<Data>{{5, -10, 14, -1, 10, 0, 10, -10}}));
}

TEST_F(Metafile, OtherCurvesAreStrokesOfEqualSteps) {
    AcDbCircle circle({0, 0, 0}, AcGeVector3d::kZAxis, 5000);
    const std::vector<Data> to = drawn({&circle}, lineTo), from = drawn({&circle}, moveTo);
    ASSERT_GE(to.size(), 99u);
    ASSERT_LE(to.size(), 100u);
    for (std::size_t i = 0; i < to.size(); ++i) {
        const double angle = 2 * pi * static_cast<double>(i + 1) / 100;
        EXPECT_NEAR(to[i][0], 5000 * std::cos(angle), 1.001) << i;
        EXPECT_NEAR(to[i][1], -5000 * std::sin(angle), 1.001) << i;
        EXPECT_EQ(from[i], i > 0 ? to[i - 1] : (Data{5000, 0}));
    }
    AcDbRay ray;
    AcDbLine mark({0, 0, 0}, {1, 1, 0});
    EXPECT_EQ(drawn({&mark, nullptr, &ray}, lineTo).size(), 1u) << "no end parameter";
}

TEST_F(Metafile, TextsAreCentredInTheFaceOfTheFontFile) {
    const AcDbObjectId style = drawingtest::addRecord<AcDbTextStyleTable>(database(), L"Plan");
    drawingtest::change<AcDbTextStyleTableRecord>(style, [](AcDbTextStyleTableRecord& record) {
        record.setFileName(L"simplex.shx.ttf");
        EXPECT_EQ(record.setFont(L"Other", true, true, 204, 34), Acad::eOk);
    });
    AcDbText text({10.7, -4.2, 0}, L"B\u00E9ton", style, 2.5, pi / 6);
    text.setHorizontalMode(AcDb::kTextRight);
    const Data made = last(text, font, 1, 16);
    EXPECT_EQ((Data{made[0], made[1], made[2], made[3], made[4], made[5]}), (Data{3, 0, 299, 299, 700, 1}));
    EXPECT_EQ((Data{made[7], made[8], made[12]}), (Data{'s' | 'i' << 16, 'm' | 'p' << 16, 'f'}))
        << "simplex.ttf";
    EXPECT_EQ(last(text, textOut, 9, 1), Data{5}) << "units";
    EXPECT_EQ(last(text, 22, 0, 1), Data{0x1E});

    AcDbMText paragraph;
    paragraph.setTextStyle(style);
    paragraph.setLocation({-7.9, 3.9, 0});
    paragraph.setTextHeight(0.8);
    paragraph.setDirection({0, 1, 0});
    paragraph.setContents(L"first\\Psecond");
    EXPECT_EQ(last(paragraph, font, 1, 3), (Data{0, 0, 900}));
    EXPECT_EQ(last(paragraph, textOut, 7, 3), (Data{-7, -3, 5}));
    CString contents = L"before";
    VEXOAcad2MetaFile drawing;
    EXPECT_FALSE(drawing.GetTextContetns(nullptr, contents));
    EXPECT_TRUE(contents.IsEmpty());
    AcDbLine other;
    contents = L"before";
    EXPECT_TRUE(drawing.GetTextContetns(&other, contents));
    EXPECT_TRUE(contents.IsEmpty());
    AcDbText plain({0, 0, 0}, L"x", AcDbObjectId::kNull, 1.0);
    EXPECT_EQ(drawn({&plain}, textOut).size(), 1u) << "the standard style";
}

TEST_F(Metafile, TheCurrentFontGivesTheWeightOfStylesThatAreNotBold) {
    CMetaFileDC dc;
    ASSERT_TRUE(dc.CreateEnhanced(nullptr, m_file.wstring().c_str(), nullptr, nullptr));
    const HDC attributes = CreateCompatibleDC(nullptr);
    dc.SetAttribDC(attributes);
    LOGFONTW current;
    current.lfWeight = 300;
    CFont own;
    own.CreateFontIndirect(&current);
    SelectObject(attributes, own.GetSafeHandle());
    const AcDbObjectId style = drawingtest::addRecord<AcDbTextStyleTable>(database(), L"Plan");
    AcDbText text({0, 0, 0}, L"x", style, 1.0);
    for (const bool isBold : {false, true}) {
        drawingtest::change<AcDbTextStyleTableRecord>(
            style, [&](AcDbTextStyleTableRecord& record) { record.setFont(L"Any", isBold, false, 0, 0); });
        VEXOAcad2MetaFile().DrawTextW(dc, &text);
    }
    EXPECT_EQ(GetCurrentObject(attributes, OBJ_FONT), own.GetSafeHandle());
    DeleteEnhMetaFile(dc.CloseEnhanced());
    DeleteDC(attributes);
    std::vector<int> weights;
    for (const Record& each : Walked::ofFile(m_file).records)
        if (each.type == font) weights.push_back(each.data[5]);
    EXPECT_EQ(weights, (std::vector<int>{300, 300, 700}))
        << "the first text, the font that comes back, the second text";
}

TEST_F(Metafile, HatchesFillEachLoopAndCloseByTheLoopsPlace) {
    AcDbHatch hatch;
    hatch.setPattern(AcDbHatch::kPreDefined, L"SOLID");
    for (double x = 0; x < 4; ++x) {
        AcGePoint2dArray corners;
        for (const AcGePoint2d& corner : {AcGePoint2d(x, 0), AcGePoint2d(x + 100, 0), AcGePoint2d(x, 50)})
            corners.append(corner);
        hatch.appendLoop(AcDbHatch::kPolyline, corners, AcGeDoubleArray());
    }
    const AcDbObjectId layer = drawingtest::addRecord<AcDbLayerTable>(database(), L"Fill");
    hatch.setLayer(layer);
    const auto colourOf = [&](Adesk::UInt16 own, Adesk::UInt16 ofLayer) {
        drawingtest::change<AcDbLayerTableRecord>(layer, [&](AcDbLayerTableRecord& record) {
            AcCmColor color;
            color.setColorIndex(ofLayer);
            record.setColor(color);
        });
        hatch.setColorIndex(own);
        return last(hatch, brush, 2, 1);
    };
    EXPECT_EQ(colourOf(256, 1), Data{0x0000FF});
    EXPECT_EQ(colourOf(5, 1), Data{0xFF0000});
    EXPECT_EQ(colourOf(256, 7), Data{0});
    const std::vector<Data> filled = drawn({&hatch}, polygon16);
    ASSERT_EQ(filled.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(filled[i][4], i == 2 ? 6 : 3) << i;
    EXPECT_EQ((Data(filled[1].begin() + 5, filled[1].end())), (Data{1, 101, 1 | -50 * 65536}));

    AcDbHatch round;
    round.setPattern(AcDbHatch::kPreDefined, L"SOLID");
    AcGePoint2dArray ends;
    ends.append(AcGePoint2d(0, 0));
    ends.append(AcGePoint2d(100, 0));
    AcGeDoubleArray bulges;
    bulges.append(1.0);
    bulges.append(0.0);
    round.appendLoop(AcDbHatch::kPolyline, ends, bulges);
    EXPECT_EQ(last(round, polygon16, 4, 1), Data{11}) << "ten of the arc, one of its chord";
}

TEST_F(Metafile, ThePictureHasTheAspectAndAMarginOfFivePerCent) {
    std::mt19937 random(5);
    const auto number = [&](double range) {
        return range * (static_cast<double>(random() % 20001) / 10000 - 1);
    };
    for (int round = 0; round < 60; ++round) {
        const double far = round % 2 ? 1e6 : 0.0, stretch = std::exp(number(3));
        std::vector<AcDbLine> lines;
        for (int i = 0; i < 5; ++i)
            lines.emplace_back(AcGePoint3d(far + number(50) * stretch, number(50), 0),
                               AcGePoint3d(far + number(50) * stretch, round % 10 ? number(50) : 0, 0));
        if (round % 10 == 0) lines = {AcDbLine({far, 3, 0}, {far + 17, 3, 0})};
        AcArray<void*> list;
        for (AcDbLine& line : lines) list.append(&line);
        const double aspect = std::exp(number(1.5)) * (round % 3 ? 1 : -1);
        ASSERT_TRUE(
            VEXODatabaseTools::ExportEntitiesInWmfEx(list, m_file.wstring().c_str(), std::abs(aspect)));
        AcDbExtents box;
        for (const AcDbLine& line : lines) {
            box.addPoint(line.startPoint());
            box.addPoint(line.endPoint());
        }
        const double width = box.maxPoint().x - box.minPoint().x,
                     height = box.maxPoint().y - box.minPoint().y;
        EXPECT_NEAR(std::hypot(width, lines.size() == 1 ? width : height), 100, 1e-6);
        const std::vector<int> bounds = Walked::ofFile(m_file).bounds();
        const double shown[] = {static_cast<double>(bounds[2] - bounds[0]),
                                static_cast<double>(bounds[3] - bounds[1])};
        EXPECT_NEAR(shown[0], shown[1] * std::abs(aspect), 2 * (1 + std::abs(aspect))) << round;
        const double byWidth = shown[0] - 1.1 * width, byHeight = shown[1] - 1.1 * height;
        EXPECT_LE(std::min(std::abs(byWidth), std::abs(byHeight)), 2) << round;
        EXPECT_GE(shown[0], width - 2);
        EXPECT_GE(shown[1], height - 2);
    }
}

TEST_F(Metafile, WhatCannotBeMadeIsFalseAndTheEntitiesStayScaled) {
    AcDbLine line({0, 0, 0}, {10, 0, 0});
    AcArray<void*> none, list;
    list.append(&line);
    list.append(nullptr);
    const CString file = m_file.wstring().c_str(),
                  nowhere = (m_folder.path() / "no" / "a.emf").wstring().c_str();
    EXPECT_FALSE(VEXODatabaseTools::ExportEntitiesInWMF(none, file, 1, 1));
    EXPECT_FALSE(VEXODatabaseTools::ExportEntitiesInWmfEx(none, file, 1));
    for (const double aspect : {0.0, 9e-11, std::nan("")})
        EXPECT_FALSE(VEXODatabaseTools::ExportEntitiesInWmfEx(list, file, aspect)) << aspect;
    AcDbRay endless;
    AcArray<void*> boxless;
    boxless.append(&endless);
    EXPECT_FALSE(VEXODatabaseTools::ExportEntitiesInWMF(boxless, file, 1, 1));
    EXPECT_FALSE(std::filesystem::exists(m_file));
    EXPECT_FALSE(VEXODatabaseTools::ExportEntitiesInWMF(list, nowhere, 2, 1));
    EXPECT_EQ(line.startPoint().x, -5);
    EXPECT_FALSE(VEXODatabaseTools::ExportEntitiesInWMF(list, L"/dev/full", 1, 1));
    AcDbLine point({3, 4, 0}, {3, 4, 0});
    AcArray<void*> dot;
    dot.append(&point);
    EXPECT_TRUE(VEXODatabaseTools::ExportEntitiesInWmfEx(dot, file, 1)) << "nothing to scale by: it stays";
    EXPECT_EQ(point.startPoint().x, 3);
}

} // namespace
