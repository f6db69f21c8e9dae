// Dimension styles, overrides and the blocks of dimensions, as drawings hold them.

#include "completedimensions.h"
#include "dbaccess.h"
#include "dbdim.h"
#include "dbdimstyletable.h"
#include "dbline.h"
#include "dbmtext.h"
#include "drawingaudit.h"
#include "drawingfiles.h"
#include "drawingparts.h"
#include "drawingpicture.h"
#include "paragraphlayout.h"
#include "undohistory.h"

#include <random>

using namespace hostkit;
using namespace drawingtest;

namespace {

template <typename Value>
void giveAny(Value& value, const DimensionVariable& variable, std::mt19937& random) {
    if constexpr (std::is_same_v<Value, std::wstring>) {
        value = L"v" + std::to_wstring(random() % 100) + L"<>";
    } else if constexpr (std::is_same_v<Value, double>) {
        value = (variable.least < 0.0 ? -1.0 : 1.0) * static_cast<double>(random() % 1000 + 1) / 8.0;
    } else if constexpr (!std::is_same_v<Value, AcDbObjectId>) {
        const auto least = static_cast<int>(variable.least);
        const int count = static_cast<int>(variable.most) - least + 1;
        value = static_cast<Value>(least + static_cast<int>(random() % static_cast<unsigned>(count)));
    }
}

DimensionVariables anyVariables(const AcDbDatabase& drawing, std::mt19937& random) {
    DimensionVariables variables;
    for (const DimensionVariable& variable : dimensionVariableTable())
        if (random() % 4 != 0)
            std::visit([&](auto member) { giveAny(variables.*member, variable, random); }, variable.member);
    variables.dimtxsty = drawing.textStyleStandard();
    return variables;
}

bool areEqual(const DimensionVariables& one, const DimensionVariables& other, short& different) {
    for (const DimensionVariable& variable : dimensionVariableTable()) {
        different = variable.code;
        const bool isEqual = std::visit(
            [&](auto member) {
                if constexpr (std::is_same_v<decltype(member), AcDbObjectId DimensionVariables::*>)
                    return (one.*member).handle() == (other.*member).handle();
                else
                    return one.*member == other.*member;
            },
            variable.member);
        // A weight need not be one of the enumeration for a file.
        if (!isEqual) return false;
    }
    return true;
}

AcDbObjectId addStyle(AcDbDatabase& drawing, const wchar_t* name) {
    return addRecord<AcDbDimStyleTable>(drawing, name);
}

AcDbObjectId addDimension(AcDbDatabase& drawing, AcDbObjectId style = AcDbObjectId::kNull) {
    return appendToModelSpace(
        drawing, new AcDbRotatedDimension(0.0, AcGePoint3d(0.0, 0.0, 0.0), AcGePoint3d(40.0, 5.0, 0.0),
                                          AcGePoint3d(40.0, 15.0, 0.0), nullptr, style));
}

AcDbObjectId idOfStyle(const AcDbDatabase& drawing, const wchar_t* name) {
    return DatabaseAccess::objectOf<AcDbDimStyleTable>(drawing.dimStyleTableId())->find(name);
}

// The first dimension of model space.
AcDbRotatedDimension& dimensionOf(const AcDbDatabase& drawing) {
    const auto* space = DatabaseAccess::objectOf<AcDbBlockTableRecord>(drawing.modelSpaceId());
    for (const AcDbObjectId id : space->entities())
        if (auto* dimension = DatabaseAccess::objectOf<AcDbRotatedDimension>(id)) return *dimension;
    throw std::runtime_error("no dimension");
}

int blocksInFile(const AcDbDatabase& drawing) {
    const auto again = openDrawingFromMemory(saved(drawing, DrawingVersion::k2013), L"again");
    int count = 0;
    DatabaseAccess::forEachObject(*again, [&](AcDbObject& object) {
        const auto* const block = AcDbBlockTableRecord::cast(&object);
        count += block && block->name().starts_with(L"*D");
    });
    return count;
}

/// Whether the text holds the lines, whatever ends and indents them.
bool holds(const std::string& text, std::string_view part) {
    std::string plain;
    for (const char c : text)
        if (c != '\r' && !(c == ' ' && (plain.empty() || plain.back() == '\n'))) plain += c;
    return plain.find(part) != std::string::npos;
}

} // namespace

TEST(DimensionStyles, EveryValueComesBackFromEveryForm) {
    std::mt19937 random(5);
    AcDbDatabase drawing;
    AcDbObjectId ids[] = {addStyle(drawing, L"A"), addStyle(drawing, L"B"), addStyle(drawing, L"C")};
    for (const AcDbObjectId id : ids) {
        change<AcDbDimStyleTableRecord>(id, [&](AcDbDimStyleTableRecord& style) {
            style.putVariables(anyVariables(drawing, random));
            EXPECT_EQ(style.setDimblk1(L"DOT"), Acad::eOk);
            EXPECT_EQ(style.setDimltex1(drawing.continuousLinetype()), Acad::eOk);
        });
    }
    for (const DrawingVersion version : {DrawingVersion::k2010, DrawingVersion::k2018}) {
        const auto again = openDrawingFromMemory(saved(drawing, version), L"again");
        ASSERT_TRUE(again);
        for (const wchar_t* name : {L"A", L"B", L"C"}) {
            const auto* one = DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(idOfStyle(drawing, name));
            const auto* other = DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(idOfStyle(*again, name));
            short different = 0;
            EXPECT_TRUE(areEqual(one->variables(), other->variables(), different)) << "group " << different;
        }
    }
    // An older form names the arrow's block, which stands behind the tables.
    const auto old = openDrawingFromMemory(saved(drawing, DrawingVersion::kR12), L"old");
    ASSERT_TRUE(old);
    const auto* style = DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(idOfStyle(*old, L"A"));
    const AcDbObjectId arrow = style->variables().dimblk1;
    ASSERT_TRUE(arrow.isResident());
    EXPECT_EQ(DatabaseAccess::objectOf<AcDbBlockTableRecord>(arrow)->name(), L"_Dot");
}

// Spelled as its block is, the name follows that; another spelling stays as it was read.
TEST(DimensionStyles, ANamedArrowFollowsItsBlock) {
    AcDbDatabase drawing;
    change<AcDbDimStyleTableRecord>(addStyle(drawing, L"Own"), [](AcDbDimStyleTableRecord& style) {
        EXPECT_EQ(style.setDimblk(L"_Dot"), Acad::eOk);
    });
    const std::string bytes = saved(drawing, DrawingVersion::kR12);
    for (const std::string given : {"_Dot", "_DOT"}) {
        std::string spelled = bytes;
        const std::size_t place = spelled.find("_Dot");
        ASSERT_NE(place, spelled.npos);
        spelled.replace(place, given.size(), given);
        const auto old = openDrawingFromMemory(spelled, L"old");
        ASSERT_TRUE(old);
        const AcDbObjectId style = idOfStyle(*old, L"Own");
        const AcDbObjectId arrow =
            DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(style)->variables().dimblk;
        ASSERT_TRUE(arrow.isResident());
        change<AcDbDimStyleTableRecord>(
            style, [](AcDbDimStyleTableRecord& each) { EXPECT_EQ(each.setDimtxt(0.5), Acad::eOk); });
        EXPECT_TRUE(holds(saved(*old, DrawingVersion::kR12), "\n5\n" + given + "\n"));
        change<AcDbBlockTableRecord>(
            arrow, [](AcDbBlockTableRecord& block) { EXPECT_EQ(block.setName(L"Round"), Acad::eOk); });
        const std::string renamed = given == "_Dot" ? "Round" : given;
        EXPECT_TRUE(holds(saved(*old, DrawingVersion::kR12), "\n5\n" + renamed + "\n"));
    }
}

TEST(DimensionStyles, SettersRefuseWhatCannotBe) {
    AcDbDatabase drawing;
    AcDbDimStyleTableRecord style;
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(style.setDimtxt(none), Acad::eInvalidInput);
    EXPECT_EQ(style.setDimtxt(-1.0), Acad::eOutOfRange);
    EXPECT_EQ(style.setDimdec(9), Acad::eOutOfRange);
    EXPECT_EQ(style.setDimdec(70000), Acad::eOutOfRange);
    EXPECT_EQ(style.setDimtxsty(drawing.layerZero()), Acad::eNotThatKindOfClass);
    EXPECT_EQ(style.setDimtxsty(drawing.textStyleStandard()), Acad::eOk);
    EXPECT_EQ(style.setDimblk(L"no such arrow"), Acad::eNoDatabase);
    EXPECT_EQ(style.dimtxt(), 0.18);
    EXPECT_EQ(style.dimdec(), 4);
    EXPECT_STREQ(style.dimpost(), L"");
}

TEST(DimensionOverrides, StandInTheDataOfTheHost) {
    AcDbDatabase drawing;
    const AcDbObjectId style = addStyle(drawing, L"Own");
    const AcDbObjectId id = addDimension(drawing, style);
    change<AcDbDimension>(id, [&](AcDbDimension& dimension) {
        resbuf* const list = acutBuildList(1001, L"ACAD", 1000, L"OTHER", 1070, 7, 0);
        EXPECT_EQ(dimension.setXData(list), Acad::eOk);
        acutRelRb(list);
        EXPECT_EQ(dimension.setDimlfac(2.5), Acad::eOk);
        EXPECT_EQ(dimension.setDimpost(L"<> m"), Acad::eOk);
        EXPECT_EQ(dimension.setDimblk(AcDbObjectId::kNull), Acad::eOk);
        EXPECT_EQ(dimension.setDimlfac(4.0), Acad::eOk);
        EXPECT_EQ(dimension.setDimpost(std::wstring(256, L'x').c_str()), Acad::eInvalidInput);
        EXPECT_EQ(dimension.setDimdec(99), Acad::eOutOfRange);
    });
    const std::string bytes = saved(drawing, DrawingVersion::k2013);
    EXPECT_TRUE(holds(bytes, "1001\nACAD\n1000\nOTHER\n1070\n7\n1000\nDSTYLE\n1002\n{\n1070\n144\n1040\n4.0\n"
                             "1070\n3\n1000\n<> m\n1070\n342\n1005\n0\n1002\n}\n"));
    const auto again = openDrawingFromMemory(bytes, L"again");
    ASSERT_TRUE(again);
    const AcDbRotatedDimension& dimension = dimensionOf(*again);
    EXPECT_EQ(dimension.dimlfac(), 4.0);
    EXPECT_STREQ(dimension.dimpost(), L"<> m");
    EXPECT_EQ(dimension.dimdec(), 4);
    AcDbDimStyleTableRecord* data = nullptr;
    ASSERT_EQ(dimension.getDimstyleData(data), Acad::eOk);
    EXPECT_EQ(data->dimlfac(), 4.0);
    EXPECT_EQ(data->setDimlfac(1.0), Acad::eOk);
    EXPECT_EQ(data->setDimtad(3), Acad::eOk);
    change<AcDbDimension>(dimension.objectId(), [&](AcDbDimension& each) {
        EXPECT_EQ(each.setDimstyleData(data), Acad::eOk);
        EXPECT_EQ(each.dimlfac(), 1.0);
        EXPECT_EQ(each.dimtad(), 3);
        EXPECT_STREQ(each.dimpost(), L"<> m");
        EXPECT_EQ(each.removeOverrides(), Acad::eOk);
        EXPECT_EQ(each.dimtad(), 0);
        EXPECT_NE(each.extendedData(), nullptr) << "what is no override stays";
    });
    delete data;
}

// Whoever takes a style from another drawing has its values, and records of its own by their names.
TEST(DimensionStyles, TheirDataGoIntoAnotherDrawing) {
    std::mt19937 random(6);
    AcDbDatabase source;
    AcDbDatabase drawing;
    const AcDbObjectId id = addStyle(source, L"A");
    const AcDbObjectId own = addStyle(drawing, L"A");
    const AcDbObjectId dimension = addDimension(drawing);
    using Holder = std::unique_ptr<AcDbDimStyleTableRecord>;
    for (int round = 0; round < 20; ++round) {
        change<AcDbDimStyleTableRecord>(id, [&](AcDbDimStyleTableRecord& style) {
            style.putVariables(anyVariables(source, random));
            EXPECT_EQ(style.setDimblk(round % 2 ? L"" : L"Open30"), Acad::eOk);
            EXPECT_EQ(style.setDimltex1(source.continuousLinetype()), Acad::eOk);
        });
        ASSERT_EQ(drawing.setDimstyleData(id), Acad::eOk);
        change<AcDbDimStyleTableRecord>(
            own, [&](AcDbDimStyleTableRecord& each) { ASSERT_EQ(each.setDimstyleData(id), Acad::eOk); });
        change<AcDbDimension>(dimension,
                              [&](AcDbDimension& each) { ASSERT_EQ(each.setDimstyleData(id), Acad::eOk); });
        const std::string bytes = saved(drawing, DrawingVersion::k2018);
        EXPECT_TRUE(round > 0 ||
                    (holds(bytes, "\n$DIMFXL\n40\n") && holds(bytes, "\n$DIMLTEX1\n6\nContinuous\n") &&
                     holds(bytes, "\n$DIMBLK\n1\nOpen30\n")));
        const auto again = openDrawingFromMemory(bytes, L"again");
        ASSERT_TRUE(again);
        AcDbDimStyleTableRecord* given[4] = {};
        ASSERT_EQ(DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(id)->getDimstyleData(given[0]),
                  Acad::eOk);
        ASSERT_EQ(again->getDimstyleData(given[1]), Acad::eOk);
        ASSERT_EQ(DatabaseAccess::objectOf<AcDbDimStyleTableRecord>(idOfStyle(*again, L"A"))
                      ->getDimstyleData(given[2]),
                  Acad::eOk);
        ASSERT_EQ(dimensionOf(*again).getDimstyleData(given[3]), Acad::eOk);
        const Holder holders[] = {Holder(given[0]), Holder(given[1]), Holder(given[2]), Holder(given[3])};
        for (int holder = 1; holder < 4; ++holder) {
            DimensionVariables wanted = given[0]->variables();
            const DimensionVariables found = given[holder]->variables();
            EXPECT_EQ(found.dimblk.isNull(), round % 2 != 0);
            EXPECT_EQ(found.dimltex1, again->continuousLinetype());
            wanted.dimblk = found.dimblk;
            wanted.dimltex1 = found.dimltex1;
            wanted.dimtxsty = found.dimtxsty;
            short different = 0;
            EXPECT_TRUE(areEqual(wanted, found, different)) << holder << " group " << different;
        }
    }
    change<AcDbDimStyleTableRecord>(id, [&](AcDbDimStyleTableRecord& style) {
        EXPECT_EQ(style.setDimblk(addRecord<AcDbBlockTable>(source, L"ONLY THERE")), Acad::eOk);
    });
    EXPECT_EQ(drawing.setDimstyleData(id), Acad::eKeyNotFound);
    EXPECT_EQ(drawing.setDimstyleData(drawing.layerZero()), Acad::eNotThatKindOfClass);
}

TEST(DimensionStyles, AChildOfTheFamilyIsTaken) {
    AcDbDatabase drawing;
    const AcDbObjectId style = addStyle(drawing, L"Own");
    const AcDbObjectId child = addStyle(drawing, L"Own$4");
    EXPECT_EQ(
        AcDbRadialDimension(AcGePoint3d(), AcGePoint3d(1.0, 0.0, 0.0), 0.0, nullptr, style).dimensionStyle(),
        child);
    EXPECT_EQ(AcDbDiametricDimension(AcGePoint3d(), AcGePoint3d(1.0, 0.0, 0.0), 0.0, nullptr, style)
                  .dimensionStyle(),
              style);
}

TEST(DimensionBlocks, ASaveMakesThoseThatAreMissingOnce) {
    AcDbDatabase drawing;
    drawing.disableUndoRecording(false);
    const std::string empty = pictureOf(drawing);
    beginUndoGroup(drawing, L"DIM");
    const AcDbObjectId id = addDimension(drawing);
    endUndoGroup(drawing);
    EXPECT_EQ(completeDimensions(drawing), 1);
    EXPECT_EQ(completeDimensions(drawing), 0);
    const AcDbObjectId block = dimensionOf(drawing).dimBlockId();
    ASSERT_TRUE(block.isResident());
    const std::string bytes = saved(drawing, DrawingVersion::k2013);
    EXPECT_TRUE(auditDrawingText(bytes).findings.empty());
    const auto again = openDrawingFromMemory(bytes, L"again");
    ASSERT_TRUE(again);
    EXPECT_EQ(completeDimensions(*again), 0);
    EXPECT_EQ(saved(*again, DrawingVersion::k2013), bytes);
    // A change takes the block away, and the next save makes another in its place.
    change<AcDbRotatedDimension>(id, [](AcDbRotatedDimension& dimension) {
        EXPECT_EQ(dimension.setXLine2Point({60.0, 0.0, 0.0}), Acad::eOk);
    });
    EXPECT_EQ(completeDimensions(drawing), 1);
    double measured = 0.0;
    EXPECT_EQ(dimensionOf(drawing).measurement(measured), Acad::eOk);
    EXPECT_EQ(measured, 60.0);
    EXPECT_TRUE(block.isErased());
    EXPECT_EQ(blocksInFile(drawing), 1);
    UndoReport report;
    while (undoGroupCount(drawing) > 0) ASSERT_EQ(undoLastGroup(drawing, report), Acad::eOk);
    EXPECT_EQ(pictureOf(drawing), empty);
}

// It goes when the last that shows it changed; what is erased may come back and shows it then.
TEST(DimensionBlocks, ABlockStaysForOthersThatShowIt) {
    for (const bool isErased : {false, true}) {
        AcDbDatabase drawing;
        const AcDbObjectId ids[] = {addDimension(drawing), addDimension(drawing)};
        EXPECT_EQ(completeDimensions(drawing), 2);
        const AcDbObjectId block = dimensionOf(drawing).dimBlockId();
        change<AcDbDimension>(ids[1],
                              [&](AcDbDimension& each) { EXPECT_EQ(each.setDimBlockId(block), Acad::eOk); });
        if (isErased) {
            EXPECT_EQ(erase(ids[1]), Acad::eOk);
        }
        for (const AcDbObjectId id : ids) {
            if (id.isErased()) continue;
            change<AcDbDimension>(
                id, [](AcDbDimension& each) { EXPECT_EQ(each.setDimensionText(L"text"), Acad::eOk); });
            EXPECT_EQ(completeDimensions(drawing), 1);
            EXPECT_EQ(block.isErased(), id == ids[1]);
        }
    }
}

TEST(DimensionBlocks, ANamedBlockStays) {
    AcDbDatabase drawing;
    const AcDbObjectId block = addRecord<AcDbBlockTable>(drawing, L"OWN");
    change<AcDbDimension>(addDimension(drawing), [&](AcDbDimension& each) {
        EXPECT_EQ(each.setDimBlockId(block), Acad::eOk);
        EXPECT_EQ(each.setDimensionText(L"text"), Acad::eOk);
    });
    EXPECT_EQ(completeDimensions(drawing), 1);
    EXPECT_FALSE(block.isErased());
}

// A save tells what was measured; along another direction it is not so any more.
TEST(DimensionBlocks, WhatWasMeasuredHoldsForItsDirection) {
    using Set = Acad::ErrorStatus (*)(AcDbDimension&);
    const std::pair<AcDbDimension*, Set> cases[] = {
        {new AcDbRotatedDimension(0.0, {}, {40.0, 5.0, 0.0}, {40.0, 15.0, 0.0}),
         [](AcDbDimension& each) { return each.setRotation(AcGe::kPi / 2.0); }},
        {new AcDbRotatedDimension(0.0, {}, {40.0, 5.0, 0.0}, {40.0, 15.0, 0.0}),
         [](AcDbDimension& each) { return each.setNormal(AcGeVector3d::kXAxis); }},
        {new AcDbOrdinateDimension(true, {40.0, 5.0, 0.0}, {40.0, 15.0, 0.0}),
         [](AcDbDimension& each) { return each.setHorizontalRotation(-AcGe::kPi / 2.0); }}};
    AcDbDatabase drawing;
    for (const auto& [dimension, turn] : cases) {
        const AcDbObjectId id = appendToModelSpace(drawing, dimension);
        EXPECT_EQ(completeDimensions(drawing), 1);
        change<AcDbDimension>(id, [turn = turn](AcDbDimension& each) {
            double measured = 0.0;
            EXPECT_EQ(each.measurement(measured), Acad::eOk);
            EXPECT_NEAR(measured, 40.0, 1e-12);
            EXPECT_EQ(turn(each), Acad::eOk);
            EXPECT_EQ(each.measurement(measured), Acad::eOk);
            EXPECT_NEAR(measured, 5.0, 1e-12);
        });
        EXPECT_EQ(completeDimensions(drawing), 1);
    }
}

// The arrow would show the block that shows the arrow.
TEST(DimensionBlocks, AnArrowThatHoldsTheDimensionIsNone) {
    AcDbDatabase drawing;
    const AcDbObjectId arrow = addRecord<AcDbBlockTable>(drawing, L"ARROW");
    const AcDbObjectId id = append(arrow, new AcDbAlignedDimension(AcGePoint3d(), AcGePoint3d(10.0, 0.0, 0.0),
                                                                   AcGePoint3d(10.0, 2.0, 0.0)));
    change<AcDbDimension>(
        id, [&](AcDbDimension& dimension) { EXPECT_EQ(dimension.setDimblk(arrow), Acad::eOk); });
    EXPECT_EQ(completeDimensions(drawing), 1);
    EXPECT_TRUE(openDrawingFromMemory(saved(drawing, DrawingVersion::k2013), L"again"));
}

// Figures by hand: the line lies at y = 15, arrows of 0.18, from 0 to 40.
TEST(DimensionBlocks, TheLineRunsBetweenPartsOfItsText) {
    struct Case {
        const wchar_t* text;
        double gap;
        const wchar_t* contents;
        bool isAbove;
        bool isBelow;
    };
    const Case cases[] = {{L"<>\\X{\\C1;low}", 0.09, L"\\A1;40.0000\\P{\\C1;low}", true, true},
                          {L"up,\\P<>\\Xlow\\Xlower", 0.3, L"\\A1;up,\\P40.0000\\Plow\\Plower", true, true},
                          {L"<>\\X ", 0.09, L"\\A1;40.0000", true, false},
                          {L"\\X<>", 0.09, L"\\A1;40.0000", false, true}};
    for (const Case& each : cases) {
        AcDbDatabase drawing;
        change<AcDbDimension>(addDimension(drawing), [&](AcDbDimension& dimension) {
            EXPECT_EQ(dimension.setDimensionText(each.text), Acad::eOk);
            EXPECT_EQ(dimension.setDimgap(each.gap), Acad::eOk);
        });
        AcDbVoidPtrArray parts;
        ASSERT_EQ(dimensionOf(drawing).explode(parts), Acad::eOk);
        int lines = 0;
        for (int i = 0; i < parts.length(); ++i) {
            const std::unique_ptr<AcDbEntity> part(static_cast<AcDbEntity*>(parts[i]));
            if (const auto* line = AcDbLine::cast(part.get()))
                lines += std::abs(line->startPoint().distanceTo(line->endPoint()) - 39.64) < 1e-9;
            const auto* text = AcDbMText::cast(part.get());
            if (!text) continue;
            EXPECT_EQ(text->rawContents(), each.contents);
            const ParagraphLayout layout = text->layout();
            const double top = text->location().y + text->topOf(layout) - 15.0;
            const std::size_t above = each.text[0] == L'u' ? 2 : 1;
            const ParagraphLine& upper = layout.lines[above - 1];
            const ParagraphLine& lower = layout.lines[each.isAbove && each.isBelow ? above : 0];
            EXPECT_NEAR(top + upper.base + upper.bottom, each.gap, each.isAbove ? 1e-9 : HUGE_VAL);
            EXPECT_NEAR(top + lower.base + lower.top, -each.gap, each.isBelow ? 1e-9 : HUGE_VAL);
        }
        EXPECT_EQ(lines, 1) << "unbroken";
    }
}

TEST(DimensionBlocks, TheGroundOfATextHidesTheLine) {
    const std::pair<int, const char*> cases[] = {
        {0, "AcDbMText"}, {1, "90\n2\n63\n5\n45\n1.25\n"}, {2, "90\n1\n63\n5\n45\n1.25\n"}};
    for (const auto& [fill, groups] : cases) {
        AcDbDatabase drawing;
        change<AcDbDimension>(addDimension(drawing), [fill = fill](AcDbDimension& dimension) {
            AcCmColor color;
            EXPECT_EQ(color.setColorIndex(5), Acad::eOk);
            EXPECT_EQ(dimension.setDimtfill(fill), Acad::eOk);
            EXPECT_EQ(dimension.setDimtfillclr(color), Acad::eOk);
        });
        EXPECT_EQ(completeDimensions(drawing), 1);
        const std::string bytes = saved(drawing, DrawingVersion::k2010);
        EXPECT_TRUE(holds(bytes, groups)) << fill;
        const auto again = openDrawingFromMemory(bytes, L"again");
        ASSERT_TRUE(again);
        DatabaseAccess::forEachObject(*again, [&, fill = fill](AcDbObject& object) {
            AcGePoint3d letters[4];
            AcGePoint3d ground[4];
            const auto* const text = AcDbMText::cast(&object);
            if (!text) return;
            EXPECT_EQ(text->groundBox(ground), fill != 0);
            EXPECT_EQ(text->useBackgroundColorOn(), fill == 1);
            if (fill == 0) return;
            EXPECT_EQ(text->backgroundFillColor().colorIndex(), 5);
            ASSERT_TRUE(text->letterBox(letters));
            EXPECT_NEAR(letters[0].distanceTo(ground[0]), 0.25 * 0.18 * std::sqrt(2.0), 1e-9);
            EXPECT_NEAR(letters[2].distanceTo(ground[2]), 0.25 * 0.18 * std::sqrt(2.0), 1e-9);
        });
    }
}

TEST(DimensionBlocks, WhatAnExplosionGivesIsTheBlock) {
    AcDbDatabase drawing;
    const AcDbObjectId id = addDimension(drawing);
    AcDbVoidPtrArray laidOut;
    AcDbVoidPtrArray copied;
    ASSERT_EQ(dimensionOf(drawing).explode(laidOut), Acad::eOk);
    EXPECT_EQ(completeDimensions(drawing), 1);
    ASSERT_EQ(dimensionOf(drawing).explode(copied), Acad::eOk);
    ASSERT_EQ(laidOut.length(), copied.length());
    for (int i = 0; i < laidOut.length(); ++i) {
        const std::unique_ptr<AcDbEntity> one(static_cast<AcDbEntity*>(laidOut[i]));
        const std::unique_ptr<AcDbEntity> other(static_cast<AcDbEntity*>(copied[i]));
        EXPECT_EQ(one->isA(), other->isA());
        EXPECT_FALSE(one->color().isByBlock());
        AcDbExtents box;
        AcDbExtents same;
        EXPECT_EQ(one->getGeomExtents(box), other->getGeomExtents(same));
        EXPECT_TRUE(box.minPoint().isEqualTo(same.minPoint()) && box.maxPoint().isEqualTo(same.maxPoint()));
    }
    EXPECT_TRUE(id.isResident());
}
