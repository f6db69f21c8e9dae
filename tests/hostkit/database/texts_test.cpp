#include "drawingparts.h"

#include "dbattdef.h"
#include "dbattribute.h"
#include "dbmtext.h"
#include "dbtext.h"
#include "entitymotions.h"

#include <cmath>
#include <limits>

namespace {

using motions::boxOf;
using motions::isNear;

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

/// Five letters of height 10: 6, 4, 3, 2 and 5 sixths of it wide, the blank of 2 behind the last one left
/// out.
AcDbText fiveLetters() { return AcDbText({100.0, 50.0, 7.0}, L"%%d1,.0", AcDbObjectId(), 10.0); }

std::wstring taken(wchar_t* text) {
    const std::wstring copy = text;
    acutDelString(text);
    return copy;
}

TEST(Texts, CodesCountAsTheLettersThatAreSeen) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"%%c12", L"\u230012"}, {L"%%D%%p%%C", L"\u00B0\u00B1\u2300"},
        {L"%%%", L"%"},          {L"%%utitle%%u", L"title"},
        {L"%%049%%46", L"1."},   {L"%%007", L""},
        {L"\\U+002C1", L",1"}};
    const auto width = [](const wchar_t* text) {
        return AcDbText({}, text, AcDbObjectId(), 5.0).estimatedWidth();
    };
    for (const auto& [text, seen] : cases) EXPECT_EQ(width(text), width(seen)) << drawingtest::narrow(text);
    for (const wchar_t* other : {L"50%", L"%%", L"%%x", L"\\U+00Ex"})
        EXPECT_GT(width(other), 4.0 * static_cast<double>(wcslen(other))) << "every letter counts";
    EXPECT_EQ(width(L""), 0.0);
}

// What other programs filed of centred texts: twice the way from the start to the middle, in heights.
TEST(Texts, WidthsOfSavedTexts) {
    AcDbDatabase database;
    const AcDbObjectId sans = drawingtest::addRecord<AcDbTextStyleTable>(database, L"Sans");
    AcDbObjectPointer<AcDbTextStyleTableRecord>(sans, AcDb::kForWrite)->setFileName(L"arial.ttf");
    const struct {
        AcDbObjectId style;
        const wchar_t* text;
        double width;
    } cases[] = {{sans, L"%%u2 CAR GARAGE", 10.4802},
                 {sans, L"%%uBATH", 3.7258},
                 {sans, L"%%uBEDROOM 2", 8.3834},
                 {sans, L"%%uCOVERED", 6.9086},
                 {sans, L"21/04/2020", 6.9918},
                 {{}, L"-", 4.0 / 6},
                 {{}, L"Blatt", 25.0 / 6},
                 {{}, L"Datum", 28.0 / 6},
                 {{}, L"Zust.", 24.0 / 6},
                 {{}, L"\u00C4nderungen", 58.0 / 6}};
    for (const auto& [style, text, width] : cases)
        EXPECT_NEAR(AcDbText({}, text, style, 1.0).estimatedWidth(), width, 0.001)
            << drawingtest::narrow(text);
}

TEST(Texts, BoxByAlignmentAndGeneration) {
    struct Case {
        AcDb::TextHorzMode horizontal;
        AcDb::TextVertMode vertical;
        bool backward, upsideDown;
        double left, bottom; // from the alignment point
    };
    const Case cases[] = {{AcDb::kTextLeft, AcDb::kTextBase, false, false, 0.0, 0.0},
                          {AcDb::kTextLeft, AcDb::kTextBase, true, false, -30.0, 0.0},
                          {AcDb::kTextLeft, AcDb::kTextBase, true, true, -30.0, -10.0},
                          {AcDb::kTextCenter, AcDb::kTextBase, false, false, -15.0, 0.0},
                          {AcDb::kTextRight, AcDb::kTextBottom, false, false, -30.0, 0.0},
                          {AcDb::kTextRight, AcDb::kTextTop, true, false, 0.0, -10.0},
                          {AcDb::kTextMid, AcDb::kTextBase, false, true, -15.0, -5.0},
                          {AcDb::kTextLeft, AcDb::kTextVertMid, false, false, 0.0, -5.0},
                          {AcDb::kTextCenter, AcDb::kTextTop, false, true, -15.0, 0.0}};
    for (const Case& c : cases) {
        AcDbText text = fiveLetters();
        const AcGePoint3d anchor = text.position();
        text.setHorizontalMode(c.horizontal);
        text.setVerticalMode(c.vertical);
        text.mirrorInX(c.backward);
        text.mirrorInY(c.upsideDown);
        const AcGePoint3d low = anchor + AcGeVector3d(c.left, c.bottom, 0.0);
        EXPECT_TRUE(isNear(boxOf(text), AcDbExtents(low, low + AcGeVector3d(30.0, 10.0, 0.0))))
            << c.horizontal << " " << c.vertical << " " << c.backward << c.upsideDown;
    }
}

TEST(Texts, BoxOfSlantedFittedAndEmptyTexts) {
    AcDbText slanted = fiveLetters();
    ASSERT_EQ(slanted.setOblique(std::atan(0.5)), Acad::eOk);
    ASSERT_EQ(slanted.setWidthFactor(2.0), Acad::eOk);
    EXPECT_TRUE(isNear(boxOf(slanted), AcDbExtents({100.0, 50.0, 7.0}, {165.0, 60.0, 7.0})));

    AcDbText fitted = fiveLetters();
    ASSERT_EQ(fitted.setHorizontalMode(AcDb::kTextFit), Acad::eOk);
    ASSERT_EQ(fitted.setAlignmentPoint({100.0, 90.0, 7.0}), Acad::eOk);
    EXPECT_TRUE(isNear(boxOf(fitted), AcDbExtents({90.0, 50.0, 7.0}, {100.0, 90.0, 7.0})));

    AcDbText empty({1.0, 2.0, 3.0}, L"%%u%%u", AcDbObjectId(), 4.0);
    AcDbExtents kept({0.0, 0.0, 0.0}, {1.0, 1.0, 1.0});
    EXPECT_EQ(empty.getGeomExtents(kept), Acad::eInvalidExtents);
    EXPECT_TRUE(isNear(kept, AcDbExtents({0.0, 0.0, 0.0}, {1.0, 1.0, 1.0})));
}

TEST(Texts, PositionFollowsTheAlignmentPoint) {
    AcDbText text = fiveLetters();
    ASSERT_EQ(text.setHorizontalMode(AcDb::kTextRight), Acad::eOk);
    EXPECT_TRUE(isNear(text.alignmentPoint(), {100.0, 50.0, 7.0}));
    EXPECT_TRUE(isNear(text.position(), {70.0, 50.0, 7.0}));
    ASSERT_EQ(text.setRotation(AcGe::kPi / 2.0), Acad::eOk);
    EXPECT_TRUE(isNear(text.position(), {100.0, 20.0, 7.0}));
    ASSERT_EQ(text.setTextString(L"0,"), Acad::eOk);
    EXPECT_TRUE(isNear(text.position(), {100.0, 40.0, 7.0}));
    ASSERT_EQ(text.setNormal({0.0, 0.0, -2.0}), Acad::eOk);
    EXPECT_TRUE(isNear(text.alignmentPoint(), {100.0, 50.0, 7.0}));
}

/// A text in its own plane is at these corners; whatever moves the text must move its box by the corners.
TEST(Texts, LettersAreWhereTheirImagesAre) {
    motions::Random random(20);
    for (const AcDb::TextHorzMode mode :
         {AcDb::kTextLeft, AcDb::kTextCenter, AcDb::kTextMid, AcDb::kTextAlign}) {
        for (const motions::Motion& first : motions::all()) {
            for (const motions::Motion& second : motions::all()) {
                AcDbText text({5.0, 3.0, 2.0}, L"four", AcDbObjectId(), random.between(1.0, 8.0));
                text.setHorizontalMode(mode);
                if (mode == AcDb::kTextAlign) text.setAlignmentPoint({25.0, 3.0, 2.0});
                const AcDbExtents flat = boxOf(text);
                const AcGePoint3d low = flat.minPoint(), high = flat.maxPoint();
                ASSERT_EQ(text.transformBy(first.matrix), Acad::eOk);
                ASSERT_EQ(text.transformBy(second.matrix), Acad::eOk);
                const AcDbExtents wanted = boxOf({low, {high.x, low.y, low.z}, {low.x, high.y, low.z}, high},
                                                 second.matrix * first.matrix);
                EXPECT_TRUE(isNear(boxOf(text), wanted)) << first.name << ", " << second.name << ", " << mode;
            }
        }
    }
}

TEST(Texts, MirrorTurnsTheLettersRoundAndKeepsTheSideOfTheNormal) {
    AcDbText text = fiveLetters();
    ASSERT_EQ(text.transformBy(motions::stretch(-1.0, 1.0, 1.0)), Acad::eOk);
    EXPECT_TRUE(text.isMirroredInX());
    EXPECT_NEAR(text.rotation(), 0.0, 1e-12);
    EXPECT_EQ(text.normal(), AcGeVector3d::kZAxis);
    EXPECT_EQ(text.transformBy(motions::stretch(1.0, 0.0, 1.0)), Acad::eInvalidInput);
    EXPECT_EQ(text.height(), 10.0);
}

TEST(Texts, SettersRefuseWhatATextCannotHave) {
    AcDbText text = fiveLetters();
    const AcGePoint3d nowhere(kNoNumber, 0.0, 0.0);
    EXPECT_EQ(text.setPosition(nowhere), Acad::eInvalidInput);
    EXPECT_EQ(text.setAlignmentPoint(nowhere), Acad::eInvalidInput);
    EXPECT_EQ(text.setNormal({0.0, 0.0, 0.0}), Acad::eInvalidInput);
    for (const double bad : {0.0, -1.0, kNoNumber}) {
        EXPECT_EQ(text.setHeight(bad), Acad::eInvalidInput);
        EXPECT_EQ(text.setWidthFactor(bad), Acad::eInvalidInput);
    }
    EXPECT_EQ(text.setRotation(HUGE_VAL), Acad::eInvalidInput);
    EXPECT_EQ(text.setOblique(1.5), Acad::eInvalidInput);
    EXPECT_EQ(text.setTextString(nullptr), Acad::eInvalidInput);
    EXPECT_EQ(text.setHorizontalMode(static_cast<AcDb::TextHorzMode>(6)), Acad::eInvalidInput);
    EXPECT_EQ(text.setVerticalMode(static_cast<AcDb::TextVertMode>(-1)), Acad::eInvalidInput);
    EXPECT_TRUE(text.isDefaultAlignment());
    EXPECT_TRUE(isNear(boxOf(text), boxOf(fiveLetters())));
    EXPECT_EQ(text.text(), fiveLetters().text());
}

TEST(Paragraphs, PlainTextHasNoCodes) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"one\\Ptwo\nthree", L"one\ntwo\nthree"},
        {L"{\\fArial|b1|i0;bold} {\\H2.5x;\\C1;high}", L"bold high"},
        {L"\\A1;\\pi1,l2;a\\~b\\\\c\\{d\\}", L"a\u00A0b\\c{d}"},
        {L"\\S1/2; \\S+0.1^-0.2; \\S3#4;", L"1/2 +0.1 -0.2 3/4"},
        {L"\\Lunder\\l %%c12 \\U+00B2", L"under \u230012 \u00B2"},
        {L"^Itab^J^ ^M", L"\ttab\n^"},
        {L"\\H2.5 never closed", L""},
        {L"lone \\", L"lone \\"},
        {L"\\S1/2", L"1/2"},
        {L"6'-10{\\H0.7x;\\S1#2;}\" R\\S1/2;", L"6'-10 1/2\" R1/2"},
        {L"\\q", L"\\q"},
        {L"", L""}};
    for (const auto& [contents, plain] : cases) {
        AcDbMText text;
        ASSERT_EQ(text.setContents(contents), Acad::eOk);
        EXPECT_EQ(text.plainText(), plain);
        EXPECT_EQ(taken(text.contents()), contents);
    }
}

AcDbMText twoLines() {
    AcDbMText text;
    text.setLocation({10.0, 20.0, 3.0});
    text.setTextHeight(3.0);
    text.setContents(L"ten of themX\\Pabcde"); // 12 and 5 letters: 35 wide, 3 + 5 high
    return text;
}

TEST(Paragraphs, BoxHangsOnTheAttachmentPoint) {
    for (int place = AcDbMText::kTopLeft; place <= AcDbMText::kBottomRight; ++place) {
        AcDbMText text = twoLines();
        ASSERT_EQ(text.setAttachment(static_cast<AcDbMText::AttachmentPoint>(place)), Acad::eOk);
        const int column = (place - 1) % 3, row = (place - 1) / 3;
        const AcGePoint3d low(10.0 - 35.0 * column / 2.0, 12.0 + 8.0 * row / 2.0, 3.0);
        EXPECT_TRUE(isNear(boxOf(text), AcDbExtents(low, low + AcGeVector3d(35.0, 8.0, 0.0)))) << place;
    }
    AcDbMText turned = twoLines();
    ASSERT_EQ(turned.setRotation(AcGe::kPi / 2.0), Acad::eOk);
    EXPECT_TRUE(isNear(boxOf(turned), AcDbExtents({10.0, 20.0, 3.0}, {18.0, 55.0, 3.0})));
    AcDbMText blank = twoLines();
    ASSERT_EQ(blank.setContents(L"\\P\\P"), Acad::eOk);
    AcDbExtents box;
    EXPECT_EQ(blank.getGeomExtents(box), Acad::eInvalidExtents);
    EXPECT_EQ(blank.actualHeight(), 0.0);
}

TEST(Paragraphs, LinesBreakAtTheBox) {
    const std::pair<double, std::vector<std::wstring>> cases[] = {
        {0.0, {L"ten of themX", L"abcde"}},         {35.1, {L"ten of themX", L"abcde"}},
        {34.9, {L"ten of", L"themX", L"abcde"}},    {14.1, {L"ten", L"of", L"themX", L"abcde"}},
        {0.1, {L"ten", L"of", L"themX", L"abcde"}}, {1e300, {L"ten of themX", L"abcde"}}};
    for (const auto& [width, expected] : cases) {
        AcDbMText text = twoLines();
        ASSERT_EQ(text.setWidth(width), Acad::eOk);
        std::vector<std::wstring> lines;
        AcDbExtents together;
        for (const auto& line : motions::partsOf<AcDbText>(text)) {
            lines.push_back(line->text());
            together.addExt(boxOf(*line));
        }
        EXPECT_EQ(lines, expected) << width;
        EXPECT_TRUE(isNear(together, boxOf(text))) << width;
    }
}

TEST(Paragraphs, MoveWithTheirPlaneAndComeBack) {
    for (const motions::Motion& motion : motions::all()) {
        AcDbMText text = twoLines();
        ASSERT_EQ(text.setRotation(0.3), Acad::eOk);
        text.setWidth(9.1);
        const AcGeVector3d x(std::cos(0.3), std::sin(0.3), 0.0), y(-x.y, x.x, 0.0);
        const double width = text.actualWidth(), height = text.actualHeight();
        const AcGePoint3d corner = text.location();
        const Acad::ErrorStatus status = text.transformBy(motion.matrix);
        ASSERT_EQ(status, motion.keepsShape ? Acad::eOk : Acad::eCannotScaleNonUniformly) << motion.name;
        const AcGeMatrix3d matrix = motion.keepsShape ? motion.matrix : AcGeMatrix3d();
        const AcDbExtents wanted =
            boxOf({corner, corner + x * width, corner - y * height, corner + x * width - y * height}, matrix);
        EXPECT_TRUE(isNear(boxOf(text), wanted)) << motion.name;
        ASSERT_EQ(text.transformBy(matrix.inverse()), Acad::eOk);
        EXPECT_NEAR(std::remainder(text.rotation() - 0.3, AcGe::kTwoPi), 0.0, 1e-12) << motion.name;
        EXPECT_NEAR(text.textHeight(), 3.0, 1e-12);
        EXPECT_TRUE(text.normal().isEqualTo(AcGeVector3d::kZAxis)) << motion.name;
    }
}

TEST(Paragraphs, DirectionAndRotationAreTwoWordsForOneThing) {
    AcDbMText text = twoLines();
    ASSERT_EQ(text.setDirection({0.0, 5.0, 0.0}), Acad::eOk);
    EXPECT_NEAR(text.rotation(), AcGe::kPi / 2.0, 1e-15);
    ASSERT_EQ(text.setRotation(AcGe::kPi), Acad::eOk);
    EXPECT_TRUE(text.direction().isEqualTo({-1.0, 0.0, 0.0}));
    ASSERT_EQ(text.setDirection({0.0, 0.0, 1.0}), Acad::eOk);
    ASSERT_EQ(text.setNormal({0.0, 0.0, 1.0}), Acad::eOk);
    EXPECT_NEAR(text.direction().dotProduct(text.normal()), 0.0, 1e-15);
    EXPECT_EQ(text.setDirection({0.0, 0.0, 0.0}), Acad::eInvalidInput);
    EXPECT_EQ(text.setAttachment(static_cast<AcDbMText::AttachmentPoint>(0)), Acad::eInvalidInput);
    EXPECT_EQ(text.setFlowDirection(static_cast<AcDbMText::FlowDirection>(2)), Acad::eInvalidInput);
    EXPECT_EQ(text.setWidth(-1.0), Acad::eInvalidInput);
    EXPECT_EQ(text.setTextHeight(0.0), Acad::eInvalidInput);
    EXPECT_EQ(text.setLineSpacingFactor(0.2), Acad::eInvalidInput);
    EXPECT_EQ(text.setContents(nullptr), Acad::eInvalidInput);
}

template <typename Attribute>
void checkTagAndFlags() {
    Attribute attribute;
    for (const wchar_t* bad : {static_cast<const wchar_t*>(nullptr), L"", L"TWO WORDS", L"TAB\t"})
        EXPECT_EQ(attribute.setTag(bad), Acad::eInvalidInput);
    ASSERT_EQ(attribute.setTag(L"MARK"), Acad::eOk);
    EXPECT_EQ(attribute.setTag(L"A B"), Acad::eInvalidInput);
    EXPECT_EQ(taken(attribute.tag()), L"MARK");
    EXPECT_EQ(attribute.setPreset(true), Acad::eOk);
    EXPECT_EQ(attribute.setInvisible(true), Acad::eOk);
    EXPECT_EQ(attribute.setPreset(false), Acad::eOk);
    EXPECT_EQ(attribute.setVerifiable(true), Acad::eOk);
    const std::unique_ptr<Attribute> copy = motions::copyOf(attribute);
    EXPECT_TRUE(copy->isInvisible() && copy->isVerifiable());
    EXPECT_FALSE(copy->isPreset() || copy->isConstant());
    EXPECT_EQ(copy->tagName(), L"MARK");
}

TEST(Attributes, TagsAndFlags) {
    checkTagAndFlags<AcDbAttribute>();
    checkTagAndFlags<AcDbAttributeDefinition>();
}

TEST(Attributes, ADefinitionIsAsWideAsItsTag) {
    const auto widthOf = [](auto attribute) {
        attribute.setTag(L"NUMBER");
        attribute.setTextString(L"1");
        attribute.setHeight(10.0);
        return attribute.estimatedWidth();
    };
    EXPECT_NEAR(widthOf(AcDbAttributeDefinition()), 340.0 / 6.0, 1e-12);
    EXPECT_NEAR(widthOf(AcDbAttribute()), 20.0 / 6.0, 1e-12);
}

} // namespace
