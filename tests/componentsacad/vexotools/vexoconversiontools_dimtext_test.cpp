#include "vexoconversiontools.h"

#include "drawingparts.h"
#include "hosttest.h"

#include "dbaccess.h"

#include <functional>
#include <limits>
#include <string>

namespace {

using Tools = VEXOConversionTools;

std::string narrow(const CString& text) { return drawingtest::narrow(std::wstring(text.view())); }

/// Arguments of the long form where a case says nothing else.
struct Asked {
    double value = 1.255;
    double scale = 1.0;
    double rounding = 0.0;
    bool smallValues = false;
    int smallDecimals = 1;
    bool smallTrailingZeros = false;
    bool raisedDigits = false;
    bool trimZeros = false;
    bool takePrefix = false;
};

class DimensionTexts : public hostkit::HostTest {
protected:
    using Record = AcDbDimStyleTableRecord;

    /// A style of three decimals and the head of the imperial default.
    AcDbObjectId style(const std::function<void(Record&)>& change = nullptr) {
        const std::wstring name = L"D" + std::to_wstring(++m_count);
        const AcDbObjectId id = drawingtest::addRecord<AcDbDimStyleTable>(database(), name.c_str());
        const AcDbObjectPointer<Record> record(id, AcDb::kForWrite);
        record->setDimdec(3);
        if (change) change(*record);
        return id;
    }
    static std::string plain(double value, AcDbObjectId style) {
        CString text = L"earlier";
        EXPECT_EQ(Tools::getFormatedDimText(value, style, text), Acad::eOk);
        return narrow(text);
    }
    static std::string asked(AcDbObjectId style, const Asked& ask, CString& prefix) {
        CString text = L"earlier";
        EXPECT_EQ(Tools::getFormatedDimText(ask.value, style, ask.scale, ask.rounding, ask.smallValues,
                                            ask.smallDecimals, ask.smallTrailingZeros, ask.raisedDigits, text,
                                            ask.trimZeros, prefix, ask.takePrefix),
                  Acad::eOk);
        return narrow(text);
    }
    static std::string asked(AcDbObjectId style, const Asked& ask) {
        CString prefix = L"kept";
        const std::string text = asked(style, ask, prefix);
        EXPECT_EQ(narrow(prefix), "kept");
        return text;
    }

private:
    int m_count = 0;
};

TEST_F(DimensionTexts, ThePlainFormIsWhatTheDimensionSays) {
    EXPECT_EQ(plain(1.255, style()), "\\A1;1.255");
    EXPECT_EQ(plain(-1.255, style()), "\\A1;1.255");
    EXPECT_EQ(plain(1.255, style([](Record& r) { r.setDimlfac(100.0); })), "\\A1;1.255");
    EXPECT_EQ(plain(1.255, style([](Record& r) { r.setDimpost(L"<> m"), r.setDimtolj(0); })), "1.255 m");
    EXPECT_EQ(plain(37.5, style([](Record& r) { r.setDimlunit(4), r.setDimdec(1), r.setDimfrac(2); })),
              "\\A1;3'-1 1/2\"");
    EXPECT_EQ(plain(1.255, AcDbObjectId()), plain(1.255, database().dimStyleStandard()));
}

TEST_F(DimensionTexts, ThePrefixIsTakenOff) {
    const auto post = [&](const wchar_t* text) { return style([&](Record& r) { r.setDimpost(text); }); };
    EXPECT_EQ(asked(post(L"mm"), {}), "\\A1;1.255mm");
    EXPECT_EQ(asked(post(L"mm"), {.takePrefix = true}), "\\A1;1.255mm");
    EXPECT_EQ(asked(post(L"%%c<> m"), {}), "\\A1;%%c1.255 m");
    CString prefix;
    EXPECT_EQ(asked(post(L"\u00D8<>"), {.takePrefix = true}, prefix), "\\A1;1.255");
    EXPECT_EQ(prefix, CString(L"\u00D8"));
    EXPECT_EQ(asked(post(L"a <> b"), {.takePrefix = true}, prefix), "\\A1;1.255 b");
    EXPECT_EQ(prefix, CString(L"a "));
}

TEST_F(DimensionTexts, RaisedDigitsAndZeros) {
    const AcDbObjectId metres = style();
    EXPECT_EQ(asked(metres, {.raisedDigits = true}), "\\A1;1.25{\\H0.6x;\\S5^;}");
    EXPECT_EQ(asked(metres, {.value = 12.0, .raisedDigits = true}), "\\A1;12.00{\\H0.6x;\\S0^;}");
    EXPECT_EQ(asked(metres, {.value = 12.0, .raisedDigits = true, .trimZeros = true}), "\\A1;12.");
    EXPECT_EQ(asked(metres, {.value = 1.25, .trimZeros = true}), "\\A1;1.25");
    EXPECT_EQ(asked(metres, {.value = 2.0, .trimZeros = true}), "\\A1;2.");
    // Centimetres: one decimal is what stays down of none, and the separator goes with it.
    const auto factor = [&](double lfac) { return style([&](Record& r) { r.setDimlfac(lfac); }); };
    EXPECT_EQ(asked(factor(100.0), {.raisedDigits = true}), "\\A1;125{\\H0.6x;\\S500^;}");
    EXPECT_EQ(asked(factor(10.0), {.raisedDigits = true}), "\\A1;12.5{\\H0.6x;\\S50^;}");
    EXPECT_EQ(asked(factor(1000.0), {.raisedDigits = true}), "\\A1;1255.000") << "nothing to raise";
    EXPECT_EQ(asked(factor(3.0), {.raisedDigits = true}), "\\A1;3.765") << "no whole number of digits";
    const AcDbObjectId comma = style([](Record& r) { r.setDimdsep(L','); });
    EXPECT_EQ(asked(comma, {.raisedDigits = true}), "\\A1;1,25{\\H0.6x;\\S5^;}");
    EXPECT_EQ(asked(comma, {.value = 2.0, .trimZeros = true}), "\\A1;2,000") << "zeros behind a point alone";
    const AcDbObjectId scientific = style([](Record& r) { r.setDimlunit(1); });
    EXPECT_EQ(asked(scientific, {.raisedDigits = true}), "\\A1;1.255E+00");
}

TEST_F(DimensionTexts, RoundingAndSmallValues) {
    // 10 to the power 3 by 1 by 100 is 10: one decimal is left.
    EXPECT_EQ(asked(style(), {.rounding = 100.0}), "\\A1;125.5");
    EXPECT_EQ(asked(style(), {.rounding = 1000.0}), "\\A1;1255");
    EXPECT_EQ(asked(style(), {.scale = 10.0, .rounding = 10.0}), "\\A1;1.255");
    EXPECT_EQ(asked(style(), {.rounding = 1e9}), "\\A1;1255000000");
    EXPECT_EQ(asked(style(), {.value = 0.5, .smallValues = true}), "\\A1;50.0");
    EXPECT_EQ(asked(style(), {.value = 0.5, .smallValues = true, .smallTrailingZeros = true}), "\\A1;50");
    EXPECT_EQ(asked(style(), {.value = 1.0, .smallValues = true}), "\\A1;1.000") << "not below the scale";
    EXPECT_EQ(asked(style(), {.value = 0.5, .rounding = 10.0, .smallValues = true}), "\\A1;5.00");
    const AcDbObjectId fractional = style([](Record& r) { r.setDimlunit(5), r.setDimfrac(2); });
    EXPECT_EQ(asked(fractional, {.value = 0.5, .smallValues = true}), "\\A1;1/2");
}

// With no alignment asked for there is nothing in front of the number, and what ends at the first ";" is
// kept.
TEST_F(DimensionTexts, WhatStandsInFront) {
    const AcDbObjectId bare = style([](Record& r) { r.setDimtolj(0); });
    EXPECT_EQ(asked(bare, {.raisedDigits = true}), "1.25{\\H0.6x;\\S5^;}");
    const AcDbObjectId stacked =
        style([](Record& r) { r.setDimtolj(0), r.setDimlunit(5), r.setDimdec(1), r.setDimpost(L"x<>"); });
    EXPECT_EQ(asked(stacked, {.value = 2.5}), "2{\\H1x;x\\S1/2;}");
    const AcDbObjectId limits = style([](Record& r) { r.setDimtol(true), r.setDimtp(0.1), r.setDimtm(0.2); });
    EXPECT_EQ(asked(limits, {}), "\\A1;1.255{\\H1x;\\S+0.1000^-0.2000;}");
}

TEST_F(DimensionTexts, NothingIsLeftBehind) {
    const AcDbObjectId used = style();
    const std::size_t before = hostkit::DatabaseAccess::stubCount(database());
    const bool wasRecording = database().undoRecording();
    CString prefix;
    for (int i = 0; i < 10; ++i) {
        (void)plain(i, used);
        (void)asked(used, {.value = static_cast<double>(i)}, prefix);
    }
    EXPECT_EQ(hostkit::DatabaseAccess::stubCount(database()), before);
    EXPECT_EQ(database().undoRecording(), wasRecording);
}

TEST_F(DimensionTexts, BadInputGivesAStatusOrAText) {
    const std::wstring longPost(10000, L'{');
    const AcDbObjectId braces = style([&](Record& r) { r.setDimpost(longPost.c_str()); });
    const double none = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    CString text, prefix;
    for (const double value : {0.0, none, infinity, 1e300, 5e-324}) {
        (void)Tools::getFormatedDimText(value, braces, text);
        for (const double scale : {0.0, -1.0, none, 1e-300})
            for (const double rounding : {none, infinity, -1.0, 1e300})
                (void)Tools::getFormatedDimText(value, braces, scale, rounding, true, 99, true, true, text,
                                                true, prefix, true);
        EXPECT_LE(text.GetLength(), 20000);
    }
    EXPECT_EQ(plain(1.5, braces).size(), 10000 + std::string("\\A1;1.500").size());
}

} // namespace
