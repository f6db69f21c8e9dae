#include "afxwin.h"
#include "metafilewalk.h"
#include "scriptedport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <iterator>
#include <numbers>
#include <random>
#include <set>

namespace {

using namespace hostkit;
using metafiletest::Record;
using metafiletest::Walked;

struct Screen : ScriptedPort {
    ScreenSize size;
    ScreenSize screenSize() const override { return size; }
};

Walked closed(HDC dc) {
    const HENHMETAFILE metafile = CloseEnhMetaFile(dc);
    std::string bytes(GetEnhMetaFileBits(metafile, 0, nullptr), '\0');
    GetEnhMetaFileBits(metafile, static_cast<UINT>(bytes.size()), reinterpret_cast<BYTE*>(bytes.data()));
    DeleteEnhMetaFile(metafile);
    return Walked(std::move(bytes));
}

Walked recorded(const std::function<void(HDC)>& draw) {
    const HDC dc = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    draw(dc);
    return closed(dc);
}

class Metafiles : public testing::Test {
protected:
    Screen m_port;
    ScopedPort m_use{m_port};
};

TEST_F(Metafiles, EachCallGivesItsRecordAndTheStartStateIsSelectedFirst) {
    const Walked walked = recorded([](HDC dc) {
        MoveToEx(dc, 3, -4, nullptr);
        LineTo(dc, 70000, 5);
        Arc(dc, 30, 40, 10, 20, 1, 2, 3, 4);
        Arc(dc, 30, 40, 30, 20, 1, 2, 3, 4);
        const POINT points[] = {{1, 2}, {-32768, 32767}, {5, 6}};
        Polygon(dc, points, 3);
        const POINT far[] = {{1, 2}, {0, 32768}};
        Polyline(dc, far, 2);
        EXPECT_FALSE(Polygon(dc, points, 1));
        EXPECT_FALSE(FillRect(dc, nullptr, nullptr));
        TextOutW(dc, 1, 2, L"", 0);
        EXPECT_EQ(SetTextAlign(dc, 1), GDI_ERROR);
        EXPECT_EQ(SetTextAlign(dc, TA_CENTER | TA_BASELINE), 0u);
        SetBkMode(dc, TRANSPARENT);
        SelectObject(dc, GetStockObject(BLACK_BRUSH));
        Polygon(dc, points, 3);
        SelectObject(dc, GetStockObject(WHITE_BRUSH));
        LineTo(dc, 0, 0);
        LineTo(dc, 0, 0);
    });
    EXPECT_EQ(walked.types(),
              (std::vector<std::uint32_t>{1, 37, 37, 27, 54, 45, 86, 4, 22, 18, 37, 86, 37, 37, 54, 54, 14}));
    using Data = std::vector<std::int32_t>;
    const std::int32_t stock = INT32_MIN;
    const Data expected[] = {{stock + 7},
                             {stock},
                             {3, -4},
                             {70000, 5},
                             {10, 20, 29, 39, 1, 2, 3, 4},
                             {-32768, 2, 5, 32767, 3, 0x20001, 0x7FFF8000, 0x60005},
                             {0, 2, 1, 32768, 2, 1, 2, 0, 32768},
                             {30},
                             {1}};
    EXPECT_EQ(walked.records[13].data, Data{stock + 7})
        << "the pen again, of which a filling in its colour made some lose sight";
    EXPECT_EQ(walked.records.back().data, (Data{0, 16, 20}));
    for (std::size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(walked.records[i + 1].data, expected[i]) << i;
    EXPECT_EQ(walked.handles(), 1);
}

// Frames and bounds as other recorders of the format wrote them.
TEST_F(Metafiles, BoundsAndFrameAreThoseOfKnownRecordings) {
    struct Case {
        int pixels[2];
        ScreenSize size;
        RECT drawn;
        std::vector<int> frame;
    };
    const Case cases[] = {
        {{1024, 768}, {270000, 203000}, {8, 8, 238, 143}, {211, 211, 6275, 3780}},
        {{1280, 800}, {320000, 240000}, {-1, 0, 1010, 607}, {-25, 0, 25250, 18210}},
        {{1024, 768}, {320000, 240000}, {74, -711, 326, -515}, {2313, -22219, 10188, -16094}}};
    for (const Case& each : cases) {
        m_port.metrics = {{SM_CXSCREEN, each.pixels[0]}, {SM_CYSCREEN, each.pixels[1]}};
        m_port.size = each.size;
        const RECT& box = each.drawn;
        const Walked walked = recorded([&](HDC dc) {
            MoveToEx(dc, box.left, box.bottom, nullptr);
            LineTo(dc, box.right, box.top);
            MoveToEx(dc, 9999, 9999, nullptr);
        });
        EXPECT_EQ(walked.bounds(), (std::vector<int>{box.left, box.top, box.right, box.bottom}));
        EXPECT_EQ(walked.frame(), each.frame);
    }
    EXPECT_EQ(recorded([](HDC) {}).bounds(), (std::vector<int>{0, 0, -1, -1}));
    const auto wide = [](HDC dc) {
        const HPEN pen = CreatePen(PS_SOLID, 3, 0);
        SelectObject(dc, pen);
        DeleteObject(pen);
        LineTo(dc, INT32_MAX, 10);
    };
    EXPECT_EQ(recorded(wide).bounds(), (std::vector<int>{-3, -3, INT32_MAX, 13})) << "cut, not turned over";
}

TEST_F(Metafiles, BoundsOfArcsAreThoseOfTheirPoints) {
    std::mt19937 random(3);
    const auto number = [&](int range) {
        return static_cast<int>(random() % static_cast<unsigned>(range)) - range / 2;
    };
    for (int round = 0; round < 300; ++round) {
        const RECT box{number(400), number(400), 1000 + number(400), 1000 + number(400)};
        const double x = (box.left + box.right) / 2.0, y = (box.top + box.bottom) / 2.0;
        const double radii[] = {x - box.left, y - box.top};
        const double first = number(1000) / 100.0, sweep = (random() % 620 + 2) / 100.0;
        const auto at = [&](double angle) {
            return POINT{static_cast<LONG>(std::lround(x + radii[0] * std::cos(angle))),
                         static_cast<LONG>(std::lround(y - radii[1] * std::sin(angle)))};
        };
        const POINT start = at(first), end = at(first + sweep);
        const Walked walked = recorded([&](HDC dc) {
            Arc(dc, box.left, box.top, box.right, box.bottom, start.x, start.y, end.x, end.y);
        });
        std::vector<int> expected{INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN};
        for (int i = 0; i <= 2000; ++i) {
            const POINT point = at(first + sweep * i / 2000);
            expected = {std::min(expected[0], point.x), std::min(expected[1], point.y),
                        std::max(expected[2], point.x), std::max(expected[3], point.y)};
        }
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_NEAR(walked.bounds()[i], expected[i], 1) << "round " << round;
    }
    EXPECT_EQ(recorded([](HDC dc) { Arc(dc, 0, 0, 100, 50, 100, 25, 200, 25); }).bounds(),
              (std::vector<int>{0, 0, 100, 50}))
        << "one ray is all around";
}

TEST_F(Metafiles, ObjectsTakeTheLowestFreeIndexAtTheirFirstSelection) {
    std::mt19937 random(11);
    std::vector<std::pair<HGDIOBJ, int>> objects;
    std::set<int> taken;
    std::vector<std::vector<std::int32_t>> expected;
    int highest = 0;
    const Walked walked = recorded([&](HDC dc) {
        for (int round = 0; round < 400; ++round) {
            if (objects.empty() || random() % 3 == 0)
                objects.emplace_back(CreateSolidBrush(random() % 255), 0);
            const std::size_t which = random() % objects.size();
            auto& [object, index] = objects[which];
            if (random() % 3) {
                if (index == 0)
                    for (index = 1; taken.contains(index); ++index) {
                    }
                if (taken.insert(index).second) expected.push_back({39, index});
                expected.push_back({37, index});
                highest = std::max(highest, index);
                SelectObject(dc, object);
            } else {
                DeleteObject(object);
                if (taken.erase(index)) expected.push_back({40, index});
                objects.erase(objects.begin() + static_cast<std::ptrdiff_t>(which));
            }
        }
    });
    for (auto& [object, index] : objects) DeleteObject(object);
    std::vector<std::vector<std::int32_t>> found;
    for (std::size_t i = 3; i + 1 < walked.records.size(); ++i)
        found.push_back({static_cast<std::int32_t>(walked.records[i].type), walked.records[i].data[0]});
    EXPECT_EQ(found, expected);
    EXPECT_EQ(walked.handles(), highest + 1);
}

TEST_F(Metafiles, TextsHaveTheirFontAdvancesAndCell) {
    LOGFONTW font;
    font.lfHeight = -17;
    font.lfWeight = 700;
    std::wcscpy(font.lfFaceName, L"Beton");
    const auto cellAt = [&](int tenths, UINT align) {
        font.lfEscapement = tenths;
        CMetaFileDC dc;
        dc.CreateEnhanced(nullptr, nullptr, nullptr, nullptr);
        CFont own;
        own.CreateFontIndirect(&font);
        dc.SelectObject(&own);
        dc.SetTextAlign(align);
        dc.TextOutW(100, 200, L"a\U0001F600b");
        const Walked walked = closed(dc.Detach());
        const Record& made = walked.records[3];
        EXPECT_EQ(made.type, 82u);
        EXPECT_EQ(made.data.size(), 90u);
        EXPECT_EQ((std::vector<int>{made.data[1], made.data[3], made.data[5]}),
                  (std::vector<int>{-17, tenths, 700}));
        EXPECT_EQ(made.data[8], L'B' | L'e' << 16);
        const Record& text = walked.records[6];
        EXPECT_EQ(text.type, 84u);
        EXPECT_EQ((std::vector<int>(text.data.begin() + 7, text.data.begin() + 18)),
                  (std::vector<int>{100, 200, 4, 76, 0, 0, 0, -1, -1, 84, L'a' | 0xD83D << 16}));
        int width = 0;
        for (std::size_t i = 19; i < text.data.size(); ++i) width += text.data[i];
        EXPECT_EQ(text.data.size(), 23u);
        EXPECT_NEAR(width, textWidth({17, true, false}, L"a\U0001F600b"), 2);
        EXPECT_EQ((std::vector<int>(text.data.begin(), text.data.begin() + 4)), walked.bounds());
        std::vector<int> cell = walked.bounds();
        cell.push_back(width);
        return cell;
    };
    const FontFace face{17, true, false};
    const std::vector<int> level = cellAt(0, TA_CENTER | TA_BASELINE), right = cellAt(0, TA_RIGHT | TA_TOP);
    const int width = level[4];
    EXPECT_EQ(level, (std::vector<int>{100 - (width + 1) / 2, 200 - face.ascent(),
                                       100 - (width + 1) / 2 + width - 1, 200 + face.descent() - 1, width}));
    EXPECT_EQ(right, (std::vector<int>{100 - width, 200, 99, 200 + face.height() - 1, width}));
    EXPECT_EQ(cellAt(900, TA_CENTER | TA_BASELINE),
              (std::vector<int>{100 - face.ascent(), 200 - width / 2, 100 + face.descent(),
                                200 + (width + 1) / 2, width}));
}

TEST_F(Metafiles, AttributesAreAskedOfTheOtherContextAndSelectedInBoth) {
    CMetaFileDC dc;
    ASSERT_TRUE(dc.CreateEnhanced(nullptr, nullptr, nullptr, L"Maker\0Picture\0"));
    const HDC memory = CreateCompatibleDC(nullptr);
    dc.SetAttribDC(memory);
    EXPECT_EQ(CreateDCW(L"PRINTER", nullptr, nullptr, nullptr), nullptr);
    EXPECT_EQ(dc.GetCurrentObject(OBJ_FONT), GetStockObject(SYSTEM_FONT));
    const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    EXPECT_EQ(dc.SelectObject(brush), GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(GetCurrentObject(memory, OBJ_BRUSH), brush);
    LOGBRUSH logical;
    EXPECT_EQ(GetObjectW(brush, sizeof logical, &logical), static_cast<int>(sizeof logical));
    EXPECT_EQ(logical.lbColor, 0x030201u);
    dc.MoveTo(1, 2);
    dc.LineTo(3, 4);
    EXPECT_EQ(memory->position.y, 4);
    DeleteObject(brush);
    EXPECT_EQ(GetCurrentObject(memory, OBJ_BRUSH), GetStockObject(WHITE_BRUSH));
    DeleteDC(memory);
    const Walked walked = closed(dc.Detach());
    EXPECT_EQ(walked.types(), (std::vector<std::uint32_t>{1, 37, 37, 39, 37, 27, 54, 40, 14}));
    EXPECT_EQ((std::vector<int>{walked.word(60), walked.word(64), walked.word(4)}),
              (std::vector<int>{15, 108, 140}));
    EXPECT_EQ(walked.bytes.substr(108, 10), std::string("M\0a\0k\0e\0r\0", 10));
}

TEST_F(Metafiles, AFileStandsWholeOrNotAtAll) {
    namespace fs = std::filesystem;
    std::string name = (fs::temp_directory_path() / "vexo-metafile-XXXXXX").string();
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    const fs::path file = fs::path(name) / "a.emf";
    const auto make = [](const fs::path& path) {
        return CreateEnhMetaFileW(nullptr, path.wstring().c_str(), nullptr, nullptr);
    };
    for (const fs::path& bad : {fs::path(name), fs::path(name) / "none" / "a.emf", fs::path()})
        EXPECT_EQ(make(bad), nullptr) << bad;
    HDC dc = make(file);
    LineTo(dc, 10, 20);
    EXPECT_FALSE(fs::exists(file));
    const HENHMETAFILE metafile = CloseEnhMetaFile(dc);
    EXPECT_TRUE(DeleteEnhMetaFile(metafile));
    EXPECT_EQ(Walked::ofFile(file).bounds(), (std::vector<int>{0, 0, 10, 20}));
    EXPECT_TRUE(DeleteDC(make(file))) << "dropped";
    dc = make("/dev/full");
    ASSERT_NE(dc, nullptr);
    EXPECT_EQ(CloseEnhMetaFile(dc), nullptr);
    EXPECT_EQ(std::distance(fs::directory_iterator(name), {}), 1);
    fs::remove_all(name);
}

} // namespace
