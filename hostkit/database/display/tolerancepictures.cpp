// Pictures of geometric tolerances.

#include "acgi.h"
#include "dbmtext.h"
#include "dbopaque.h"
#include "dimensionvariables.h"
#include "leaderlines.h"
#include "pathgeometry.h"
#include "recordcursor.h"
#include "recordpictures.h"

#include <algorithm>
#include <string_view>

namespace hostkit {

namespace {

constexpr double boxHeight = 2.0;  // in text heights
constexpr double roomBeside = 0.5; // on each side of a text, in text heights

struct ToleranceRecord {
    std::wstring style;
    std::wstring text;
    AcGePoint3d origin; ///< left, in the middle of the first row
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    AcGeVector3d direction = AcGeVector3d::kXAxis;
};

ToleranceRecord readTolerance(const AcDbOpaqueEntity& entity) {
    ToleranceRecord tolerance;
    for (RecordCursor group(entity); group.next();) {
        if (group.code() == 1) tolerance.text = group.text();
        if (group.code() == 3) tolerance.style = group.text();
        if (group.code() == 10) tolerance.origin = group.point();
        if (group.code() == 11) tolerance.direction = group.vector();
        if (group.code() == 210) tolerance.normal = group.vector();
    }
    return tolerance;
}

// What the letters a to z of the symbol font show.
constexpr wchar_t symbolLetters[] =
    L"\u2220\u27C2\u23E5\u2313\u25CB\u2225\u232D\u2197\u232F\u2316\u2312\u24C1\u24C2"
    L"\u2300\u25A1\u24C5\u2104\u25CE\u24C8\u2330\u23E4\u2334\u2335\u21A7\u2332\u2333";

// Each "{\Fgdt;...}", in either case of the F, becomes its symbols.
std::wstring withSymbols(const std::wstring& text) {
    constexpr std::wstring_view begins[] = {L"{\\Fgdt;", L"{\\fgdt;"};
    std::wstring shown;
    for (std::size_t i = 0; i < text.size();) {
        const std::wstring_view rest = std::wstring_view(text).substr(i);
        if (!rest.starts_with(begins[0]) && !rest.starts_with(begins[1])) {
            shown += text[i++];
            continue;
        }
        const std::size_t end = std::min(text.find(L'}', i), text.size());
        for (i += begins[0].size(); i < end; ++i)
            shown += text[i] >= L'a' && text[i] <= L'z' ? symbolLetters[text[i] - L'a'] : text[i];
        i = end + 1;
    }
    return shown;
}

std::vector<std::wstring> splitAt(const std::wstring& text, std::wstring_view mark) {
    std::vector<std::wstring> parts;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t to = std::min(text.find(mark, from), text.size());
        parts.push_back(text.substr(from, to - from));
        from = to + mark.size();
    }
    return parts;
}

class ToleranceDrawer {
public:
    ToleranceDrawer(AcGiWorldDraw& draw, const AcDbEntity& entity, const ToleranceRecord& tolerance,
                    const DimensionVariables& style)
        : m_draw(draw)
        , m_entity(entity)
        , m_style(style)
        , m_height(style.dimtxt * style.scale())
        , m_normal(tolerance.normal.normal())
        , m_x(tolerance.direction.normal())
        , m_y(m_normal.crossProduct(m_x))
        , m_place(tolerance.origin) {}

    bool isSound() const { return m_height > 0.0 && !m_y.isZeroLength(); }

    void drawRow(const std::wstring& row) {
        double along = 0.0;
        for (const std::wstring& cell : splitAt(row, L"%%v"))
            if (!cell.empty()) along = drawCell(cell, along);
        m_place -= m_y * (boxHeight * m_height);
    }

private:
    // The place where the next one begins.
    double drawCell(const std::wstring& cell, double from) {
        AcDbMText text;
        (void)text.setNormal(m_normal);
        (void)text.setDirection(m_x);
        (void)text.setTextHeight(m_height);
        (void)text.setAttachment(AcDbMText::kMiddleLeft);
        (void)text.setTextStyle(m_style.dimtxsty);
        (void)text.setContents(cell.c_str());
        (void)text.setLocation(m_place + m_x * (from + roomBeside * m_height));
        const double to = from + std::max(text.actualWidth(), m_height) + 2.0 * roomBeside * m_height;
        setColor(m_style.dimclrt);
        text.worldDraw(&m_draw);
        setColor(m_style.dimclrd);
        const AcGeVector3d half = m_y * (boxHeight * m_height / 2.0);
        PicturePath box;
        box.moveTo(m_place + m_x * from - half);
        box.lineTo(m_place + m_x * to - half);
        box.lineTo(m_place + m_x * to + half);
        box.lineTo(m_place + m_x * from + half);
        box.close();
        drawPath(m_draw, box);
        return to;
    }

    void setColor(Adesk::Int16 color) {
        setLook(m_draw.subEntityTraits(), m_entity);
        if (color != AcCmEntityColor::kACIbyBlock)
            m_draw.subEntityTraits().setColor(static_cast<Adesk::UInt16>(color));
    }

    AcGiWorldDraw& m_draw;
    const AcDbEntity& m_entity;
    const DimensionVariables& m_style;
    double m_height;
    AcGeVector3d m_normal;
    AcGeVector3d m_x;
    AcGeVector3d m_y;
    AcGePoint3d m_place;
};

} // namespace

void drawTolerance(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    const ToleranceRecord tolerance = readTolerance(entity);
    const DimensionVariables style = styleOfRecord(entity, tolerance.style);
    ToleranceDrawer drawer(draw, entity, tolerance, style);
    if (!drawer.isSound()) return;
    for (const std::wstring& row : splitAt(withSymbols(tolerance.text), L"\n")) drawer.drawRow(row);
}

} // namespace hostkit
