#include "tablestylenative.h"

#include "fieldtable.h"
#include "recordtranscription.h"
#include "transcriptnatives.h"
#include "transcriptvalues.h"

#include <array>
#include <string>

namespace hostkit {
namespace {

constexpr std::uint32_t byBlock = 0xC1000000U, noColor = 0xC8000000U, trueColor = 0xC2000000U;
constexpr std::size_t borderCount = 6;

/// Groups of borders in their order: top, inside horizontal, bottom, left, inside vertical, right.
constexpr std::array<int, borderCount> edges{1, 32, 4, 8, 16, 2};

struct Border {
    std::int64_t weight = -2;
    bool isShown = true;
    std::uint32_t color = byBlock;
};

struct Row {
    std::uint64_t textStyle = 0;
    double height = 0.18;
    std::int64_t alignment = 5, dataType = 512, unitType = 0;
    std::uint32_t color = byBlock, fill = noColor;
    bool isFilled = false;
    std::string_view format;
    std::array<Border, borderCount> borders;
};

struct Style {
    std::string_view description;
    double horizontalMargin = 0.06, verticalMargin = 0.06;
    std::vector<Row> rows;
};

std::uint32_t colorOfIndex(std::int64_t index) {
    return index == 256 ? 0xC0000000U
           : index == 0 ? byBlock
                        : 0xC3000000U | (static_cast<std::uint32_t>(index) & 0xFF);
}

double realOf(const RecordGroup& group) { return realFromText(group.value).value_or(0.0); }
std::int64_t wholeOf(const RecordGroup& group) { return integerFromText(group.value).value_or(0); }

/// A colour by its index, or by the group of the true colour behind.
bool takeColor(const RecordGroup& group, int code, std::uint32_t& color) {
    constexpr int trueColorShift = 358;
    if (group.code == code)
        color = colorOfIndex(wholeOf(group));
    else if (group.code == code + trueColorShift)
        color = trueColor | (static_cast<std::uint32_t>(wholeOf(group)) & 0xFFFFFF);
    else
        return false;
    return true;
}

bool takeBorder(const RecordGroup& group, Row& row) {
    constexpr int weightCode = 274, shownCode = 284, borderColorCode = 64;
    for (std::size_t i = 0; i < borderCount; ++i) {
        const int shift = static_cast<int>(i);
        Border& border = row.borders[i];
        if (takeColor(group, borderColorCode + shift, border.color)) return true;
        if (group.code == weightCode + shift) {
            border.weight = wholeOf(group);
            return true;
        }
        if (group.code == shownCode + shift) {
            border.isShown = wholeOf(group) != 0;
            return true;
        }
    }
    return false;
}

void takeOfRow(const RecordGroup& group, Row& row) {
    if (takeColor(group, 62, row.color) || takeColor(group, 63, row.fill) || takeBorder(group, row)) return;
    switch (group.code) {
    case 140:
        row.height = realOf(group);
        break;
    case 170:
        row.alignment = wholeOf(group);
        break;
    case 283:
        row.isFilled = wholeOf(group) != 0;
        break;
    case 90:
        row.dataType = wholeOf(group);
        break;
    case 91:
        row.unitType = wholeOf(group);
        break;
    case 1:
        row.format = group.value;
        break;
    default:
        break;
    }
}

Style styleOf(NativeInput& input) {
    Style style;
    for (const RecordGroup* const group : input.takeAll()) {
        if (group->code == 7) {
            style.rows.emplace_back().textStyle = input.names().handleOf("STYLE", group->value);
        } else if (!style.rows.empty()) {
            takeOfRow(*group, style.rows.back());
        } else if (group->code == 3) {
            style.description = group->value;
        } else if (group->code == 40) {
            style.horizontalMargin = realOf(*group);
        } else if (group->code == 41) {
            style.verticalMargin = realOf(*group);
        }
    }
    constexpr std::size_t rowCount = 3;
    style.rows.resize(rowCount);
    return style;
}

/// Puts values into a record or one pass of its loops.
class Filling {
public:
    Filling(NativeInput& input, RecordScope& scope)
        : m_input(input)
        , m_scope(scope) {}

    void whole(std::string_view name, std::int64_t value) const {
        RecordValue made;
        made.whole = value;
        m_scope.set(m_input.slotOf(name), made);
    }
    void real(std::string_view name, double value) const {
        RecordValue made;
        made.real[0] = value;
        m_scope.set(m_input.slotOf(name), made);
    }
    void text(std::string_view name, std::string_view value) const {
        std::string plain;
        appendUnescaped(value, plain);
        RecordValue made;
        made.run = m_input.kept(std::move(plain));
        m_scope.set(m_input.slotOf(name), made);
    }
    void color(std::string_view name, std::uint32_t value) const {
        RecordValue made;
        made.color = {};
        made.color.index = 0;
        made.color.value = value;
        made.color.hasValue = true;
        m_scope.set(m_input.slotOf(name), made);
    }
    void reference(std::string_view name, std::uint64_t handle) const {
        RecordValue made;
        made.reference = {0, handle};
        m_scope.set(m_input.slotOf(name), made);
    }
    [[nodiscard]] std::vector<RecordValue>& array(std::string_view name) const {
        return m_scope.array(m_input.slotOf(name));
    }
    [[nodiscard]] Filling pass(std::string_view loop) const {
        return {m_input, RecordScope::addPass(m_scope.loop(m_input.slotOf(loop)))};
    }

private:
    NativeInput& m_input;
    RecordScope& m_scope;
};

void fillBorders(const Filling& cells, const Row& row) {
    constexpr double spacing = 0.045;
    cells.whole("nborders", borderCount);
    for (int edge = 1; edge < 1 << borderCount; edge <<= 1) {
        std::size_t place = 0;
        while (edges[place] != edge) ++place;
        const Border& border = row.borders[place];
        const Filling made = cells.pass("for nborders");
        made.whole("edge", edge);
        made.whole("btype", 1);
        made.color("bcolor", border.color);
        made.whole("blw", border.weight);
        made.whole("binvis", !border.isShown);
        made.real("bspacing", spacing);
    }
}

void fillCells(const Filling& cells, const Style& style, const Row& row) {
    constexpr std::int64_t kind = 5;
    cells.whole("cstype", kind);
    cells.whole("hasdata", 1);
    cells.color("bgcolor", row.isFilled ? row.fill : noColor);
    cells.whole("layoutflags", 1);
    cells.whole("datatype", row.dataType);
    cells.whole("unittype", row.unitType);
    cells.text("format", row.format);
    cells.real("scale", 1.0);
    cells.whole("align", row.alignment);
    cells.color("ccolor", row.color);
    cells.reference("textstyle", row.textStyle);
    cells.real("textheight", row.height);
    cells.whole("marginflags", 1);
    const double h = style.horizontalMargin, v = style.verticalMargin;
    for (const double margin : {v, h, v, h, 3 * h, 3 * v})
        cells.array("margins").emplace_back().real[0] = margin;
}

void fillRow(const Filling& record, const Style& style, int number) {
    struct Kind {
        std::string_view name;
        std::size_t row; ///< among the groups' rows
        std::int64_t kind, merging;
    };
    constexpr std::array<Kind, 3> kinds{{{"_TITLE", 1, 1, 0x8000}, {"_HEADER", 2, 1, 0}, {"_DATA", 0, 2, 0}}};
    const Kind& kind = kinds[static_cast<std::size_t>(number) - 1];
    const Filling cells = record.pass("for ncs");
    cells.whole("index", number);
    fillCells(cells, style, style.rows[kind.row]);
    cells.whole("mergeflags", kind.merging);
    fillBorders(cells, style.rows[kind.row]);
    cells.whole("csid", number);
    cells.whole("csclass", kind.kind);
    cells.text("csname", kind.name);
}

} // namespace

void readTableStyle(NativeInput& input) {
    if (input.original()) return; // one that was binary knows more
    const Style style = styleOf(input);
    const Filling record(input, input.recordScope());
    record.text("description", style.description);
    constexpr std::int64_t lastNumber = 101, wholeTable = 4, dataClass = 2;
    record.whole("unk2", lastNumber);
    Row table;
    table.alignment = 1;
    fillCells(record, style, table);
    record.whole("csid", wholeTable);
    record.whole("csclass", dataClass);
    record.text("csname", "Table");
    record.whole("ncs", 3);
    for (int number = 1; number <= 3; ++number) fillRow(record, style, number);
}

} // namespace hostkit
