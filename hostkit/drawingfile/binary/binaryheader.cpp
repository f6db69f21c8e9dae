#include "binaryheader.h"

#include "recordencoding.h"
#include "sectionframe.h"
#include "textencoding.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hostkit {
namespace {

const char* const sectionName = "AcDb:Header";

const RecordLayout& layoutOf(DrawingVersion version) {
    return *RecordLayouts::of(version).byName("HEADER-VARS");
}

/// What a condition may name: numbers alone.
double numberOf(const HeaderValue& value) {
    if (const auto* const whole = std::get_if<std::int64_t>(&value)) return static_cast<double>(*whole);
    if (const auto* const real = std::get_if<double>(&value)) return *real;
    return 0.0;
}

class HeaderReading {
public:
    HeaderReading(ByteSpan bytes, const FramedStreams& streams, DrawingVersion version)
        : m_isWide(isUtf8(version))
        , m_hasLongColors(version >= DrawingVersion::k2004)
        , m_hasTexts(streams.textBegin < streams.textEnd)
        , m_data(bytes, streams.dataBegin, streams.dataEnd)
        , m_text(bytes, streams.textBegin, streams.textEnd)
        , m_references(bytes, streams.referencesBegin, streams.end) {}

    /// False at damage.
    [[nodiscard]] bool run(const RecordLayout& layout, BinaryHeader& out) {
        std::vector<double> numbers(layout.slots, 0.0);
        for (const LayoutStep& step : layout.steps) {
            if (!step.condition.empty() && !step.condition.holds(numbers)) continue;
            HeaderValue value = read(step.code);
            if (m_data.failed() || m_text.failed() || reference().failed()) return false;
            numbers[step.slot] = numberOf(value);
            out.values.insert_or_assign(step.name, std::move(value));
        }
        if (!m_isWide) return true;
        if (m_data.left() > 0 || m_text.left() > 0) return false;
        for (const char* const name : {"key23", "key24", "key25", "key26"})
            out.values.insert_or_assign(name, std::int64_t{m_references.bitShort()});
        return !m_references.failed();
    }

private:
    BitReader& reference() { return m_isWide ? m_references : m_data; }

    HeaderValue read(FieldCode code) {
        switch (code) {
        case FieldCode::bit:
            return std::int64_t{m_data.bit()};
        case FieldCode::rawByte:
            return std::int64_t{m_data.rawByte()};
        case FieldCode::bitShort:
            return std::int64_t{m_data.bitShort()};
        case FieldCode::bitLong:
            return std::int64_t{m_data.bitLong()};
        case FieldCode::bitLongLong:
            return static_cast<std::int64_t>(m_data.bitLongLong());
        case FieldCode::bitDouble:
            return m_data.bitDouble();
        case FieldCode::rawPoint2:
            return point(2, [&] { return m_data.rawDouble(); });
        case FieldCode::bitPoint3:
            return point(3, [&] { return m_data.bitDouble(); });
        case FieldCode::text:
            return text();
        case FieldCode::color:
            return color();
        case FieldCode::ownHandle:
            return HeaderReference{m_data.handle().resolved(0)};
        case FieldCode::reference:
            return HeaderReference{reference().handle().resolved(0)};
        default:
            m_data.fail(); // no code that variables have
            return std::int64_t{0};
        }
    }

    template <class Next>
    static std::array<double, 3> point(std::size_t count, Next next) {
        std::array<double, 3> ordinates{};
        for (std::size_t i = 0; i < count; ++i) ordinates[i] = next();
        return ordinates;
    }

    std::string text() {
        std::string text;
        if (m_isWide && !m_hasTexts) return text; // all are empty
        BitReader& stream = m_isWide ? m_text : m_data;
        const auto count = static_cast<std::uint16_t>(stream.bitShort());
        std::wstring wide;
        for (unsigned i = 0; i < count && !stream.failed(); ++i) {
            if (!m_isWide)
                text += static_cast<char>(stream.rawByte());
            else
                appendUnit(wide, stream.rawShort());
        }
        return m_isWide ? utf8FromWide(wide) : text;
    }

    static void appendUnit(std::wstring& wide, std::uint16_t unit) {
        const bool isLow = unit >= 0xDC00 && unit < 0xE000;
        if (isLow && !wide.empty() && wide.back() >= 0xD800 && wide.back() < 0xDC00)
            wide.back() = static_cast<wchar_t>(0x10000 + ((wide.back() - 0xD800) << 10) + (unit - 0xDC00));
        else
            wide += static_cast<wchar_t>(unit);
    }

    HeaderColor color() {
        HeaderColor color{m_data.bitShort(), 0, {}, {}};
        if (!m_hasLongColors) return color;
        color.value = static_cast<std::uint32_t>(m_data.bitLong());
        const unsigned names = m_data.rawByte();
        if (names & 1) color.name = text();
        if (names & 2) color.book = text();
        return color;
    }

    bool m_isWide, m_hasLongColors, m_hasTexts;
    BitReader m_data, m_text, m_references;
};

/// As a new drawing has it, where that is neither zero nor nothing.
struct Standard {
    std::string_view name;
    HeaderValue value;
};

const std::vector<Standard>& standards() {
    using Whole = std::int64_t;
    using Point = std::array<double, 3>;
    constexpr double farAway = 1.0e20;
    constexpr double fileUnits = 412148564080.0;
    constexpr double quarterTurn = std::numbers::pi / 2;
    static const std::vector<Standard> all{
        {"unk1", fileUnits},
        {"unk2", 1.0},
        {"unk3", 1.0},
        {"unk4", 1.0},
        {"unk5", std::string("m")},
        {"unk9", Whole{24}},
        {"DIMASO", Whole{1}},
        {"DIMSHO", Whole{1}},
        {"REGENMODE", Whole{1}},
        {"FILLMODE", Whole{1}},
        {"PSLTSCALE", Whole{1}},
        {"USRTIMER", Whole{1}},
        {"WORLDVIEW", Whole{1}},
        {"TILEMODE", Whole{1}},
        {"VISRETAIN", Whole{1}},
        {"PROXYGRAPHICS", Whole{1}},
        {"TREEDEPTH", Whole{3020}},
        {"LUNITS", Whole{2}},
        {"LUPREC", Whole{4}},
        {"ATTMODE", Whole{1}},
        {"SPLINESEGS", Whole{8}},
        {"SURFU", Whole{6}},
        {"SURFV", Whole{6}},
        {"SURFTYPE", Whole{6}},
        {"SURFTAB1", Whole{6}},
        {"SURFTAB2", Whole{6}},
        {"SPLINETYPE", Whole{6}},
        {"SHADEDGE", Whole{3}},
        {"SHADEDIF", Whole{70}},
        {"MAXACTVP", Whole{64}},
        {"ISOLINES", Whole{4}},
        {"TEXTQLTY", Whole{50}},
        {"LTSCALE", 1.0},
        {"TEXTSIZE", 2.5},
        {"TRACEWID", 1.0},
        {"SKETCHINC", 1.0},
        {"FACETRES", 0.5},
        {"CMLSCALE", 1.0},
        {"CELTSCALE", 1.0},
        {"MENU", std::string(".")},
        {"CECOLOR", HeaderColor{256, 0, {}, {}}},
        {"PEXTMIN", Point{farAway, farAway, farAway}},
        {"PEXTMAX", Point{-farAway, -farAway, -farAway}},
        {"PLIMMAX", Point{12.0, 9.0, 0.0}},
        {"PUCSXDIR", Point{1.0, 0.0, 0.0}},
        {"PUCSYDIR", Point{0.0, 1.0, 0.0}},
        {"EXTMIN", Point{farAway, farAway, farAway}},
        {"EXTMAX", Point{-farAway, -farAway, -farAway}},
        {"LIMMAX", Point{12.0, 9.0, 0.0}},
        {"UCSXDIR", Point{1.0, 0.0, 0.0}},
        {"UCSYDIR", Point{0.0, 1.0, 0.0}},
        {"DIMSCALE", 1.0},
        {"DIMASZ", 0.18},
        {"DIMEXO", 0.0625},
        {"DIMDLI", 0.38},
        {"DIMEXE", 0.18},
        {"DIMFXL", 1.0},
        {"DIMJOGANG", quarterTurn / 2},
        {"DIMTFILLCLR", HeaderColor{0, 0, {}, {}}},
        {"DIMTIH", Whole{1}},
        {"DIMTOH", Whole{1}},
        {"DIMTXT", 0.18},
        {"DIMCEN", 0.09},
        {"DIMALTF", 25.4},
        {"DIMLFAC", 1.0},
        {"DIMTFAC", 1.0},
        {"DIMGAP", 0.09},
        {"DIMALTD", Whole{2}},
        {"DIMCLRD", HeaderColor{0, 0, {}, {}}},
        {"DIMCLRE", HeaderColor{0, 0, {}, {}}},
        {"DIMCLRT", HeaderColor{0, 0, {}, {}}},
        {"DIMDEC", Whole{4}},
        {"DIMTDEC", Whole{4}},
        {"DIMALTU", Whole{2}},
        {"DIMALTTD", Whole{2}},
        {"DIMLUNIT", Whole{2}},
        {"DIMDSEP", Whole{'.'}},
        {"DIMTOLJ", Whole{1}},
        {"DIMATFIT", Whole{3}},
        {"DIMALTMZF", 100.0},
        {"DIMMZF", 100.0},
        {"DIMLWD", Whole{-2}},
        {"DIMLWE", Whole{-2}},
        {"TSTACKALIGN", Whole{1}},
        {"TSTACKSIZE", Whole{70}},
        {"FLAGS", Whole{0x2A1D}},
        {"INSUNITS", Whole{1}},
        {"SORTENTS", Whole{127}},
        {"DIMASSOC", Whole{2}},
        {"OBSCUREDCOLOR", Whole{257}},
        {"INTERSECTIONCOLOR", Whole{257}},
        {"STEPSPERSEC", 2.0},
        {"STEPSIZE", 6.0},
        {"3DDWFPREC", 2.0},
        {"LENSLENGTH", 50.0},
        {"SOLIDHIST", Whole{1}},
        {"SHOWHIST", Whole{1}},
        {"PSOLWIDTH", 0.25},
        {"PSOLHEIGHT", 4.0},
        {"LOFTANG1", quarterTurn},
        {"LOFTANG2", quarterTurn},
        {"LOFTPARAM", Whole{7}},
        {"LOFTNORMALS", Whole{1}},
        {"LATITUDE", 37.795},
        {"LONGITUDE", -122.394},
        {"TIMEZONE", Whole{-8000}},
        {"LIGHTGLYPHDISPLAY", Whole{1}},
        {"TILEMODELIGHTSYNCH", Whole{1}},
        {"DWFFRAME", Whole{2}},
        {"unk21", Whole{1}},
        {"INTERFERECOLOR", HeaderColor{1, 0, {}, {}}},
    };
    return all;
}

template <class Kind>
const Kind* valueIn(const BinaryHeader& header, std::string_view name) {
    const auto found = header.values.find(name);
    if (found != header.values.end())
        if (const auto* const value = std::get_if<Kind>(&found->second)) return value;
    const auto standard = std::ranges::find(standards(), name, &Standard::name);
    return standard == standards().end() ? nullptr : std::get_if<Kind>(&standard->value);
}

ValueRun runOf(const std::string& text) { return {text.data(), 0, text.size()}; }

/// What bit codes have a place for.
double finite(double value) { return std::isfinite(value) ? value : 0.0; }

void setColor(const HeaderColor& color, std::uint16_t slot, RecordScope& scope) {
    ValueColor& own = scope.add(slot).color = {};
    own.index = color.index;
    own.value = color.value;
    own.hasValue = color.value != 0;
    for (unsigned i = 0; i < 2; ++i)
        if (const std::optional<std::string>& name = i == 0 ? color.name : color.book)
            scope.add(static_cast<std::uint16_t>(slot + 1 + i)).run = runOf(*name);
}

/// The variable at its place in a record; one that is missing and has no standard stays zero.
void setVariable(const BinaryHeader& header, const LayoutStep& step, RecordScope& scope) {
    RecordValue value;
    switch (step.code) {
    case FieldCode::text:
        if (const auto* const text = valueIn<std::string>(header, step.name))
            value.run = runOf(*text);
        else
            value.run = {"", 0, 0};
        break;
    case FieldCode::color:
        if (const auto* const color = valueIn<HeaderColor>(header, step.name))
            setColor(*color, step.slot, scope);
        return;
    case FieldCode::bitDouble:
        value.real[0] = finite(header.real(step.name, numberOf(standardHeaderValue(step.name))));
        break;
    case FieldCode::bitPoint3:
    case FieldCode::rawPoint2:
        if (const auto* const point = valueIn<std::array<double, 3>>(header, step.name))
            std::ranges::transform(*point, value.real, finite);
        break;
    case FieldCode::reference:
    case FieldCode::ownHandle:
        value.reference = {step.referenceCode, header.handle(step.name)};
        break;
    default:
        value.whole =
            header.whole(step.name, static_cast<std::int64_t>(numberOf(standardHeaderValue(step.name))));
    }
    scope.add(step.slot) = value;
}

} // namespace

std::int64_t BinaryHeader::whole(std::string_view name, std::int64_t otherwise) const {
    const auto found = values.find(name);
    if (found == values.end()) return otherwise;
    if (const auto* const value = std::get_if<std::int64_t>(&found->second)) return *value;
    const auto* const value = std::get_if<double>(&found->second);
    constexpr double most = 9.0e18;
    return value && *value >= -most && *value <= most ? static_cast<std::int64_t>(*value) : otherwise;
}

double BinaryHeader::real(std::string_view name, double otherwise) const {
    const auto found = values.find(name);
    if (found == values.end()) return otherwise;
    if (const auto* const value = std::get_if<double>(&found->second)) return *value;
    const auto* const value = std::get_if<std::int64_t>(&found->second);
    return value ? static_cast<double>(*value) : otherwise;
}

std::array<double, 3> BinaryHeader::point(std::string_view name) const {
    const auto found = values.find(name);
    const auto* const value =
        found == values.end() ? nullptr : std::get_if<std::array<double, 3>>(&found->second);
    return value ? *value : std::array<double, 3>{};
}

std::string_view BinaryHeader::text(std::string_view name) const {
    const auto found = values.find(name);
    const auto* const value = found == values.end() ? nullptr : std::get_if<std::string>(&found->second);
    std::string_view text = value ? std::string_view(*value) : std::string_view();
    while (!text.empty() && text.back() == 0) text.remove_suffix(1);
    return text;
}

std::uint64_t BinaryHeader::handle(std::string_view name) const {
    const auto found = values.find(name);
    const auto* const value = found == values.end() ? nullptr : std::get_if<HeaderReference>(&found->second);
    return value ? value->handle : 0;
}

HeaderValue standardHeaderValue(std::string_view name) {
    const auto& all = standards();
    const auto found = std::ranges::find(all, name, &Standard::name);
    return found == all.end() ? HeaderValue(std::int64_t{0}) : found->value;
}

BinaryHeader readHeader(BinaryContainer& container) {
    BinaryHeader header;
    const FramedStreams streams = findStreams(container, sectionName, headerMark);
    if (!streams.found()) return header;
    HeaderReading reading(container.section(sectionName), streams, container.version);
    if (!reading.run(layoutOf(container.version), header))
        container.addFault(20, sectionName, L"the header variables do not end where they have to");
    return header;
}

std::vector<std::uint8_t> writeHeader(const BinaryContainer& form, const BinaryHeader& header) {
    const RecordLayout& layout = layoutOf(form.version);
    const bool isWide = isUtf8(form.version);
    RecordScope scope;
    for (const LayoutStep& step : layout.steps) setVariable(header, step, scope);
    RecordEncoding encoding(form.version);
    if (!isWide) encoding.putReferencesAmongData();
    static_cast<void>(encoding.run(layout, 0, scope)); // there are no loops whose passes could be missing
    BitWriter behind;
    if (isWide)
        for (const char* const name : {"key23", "key24", "key25", "key26"})
            behind.bitShort(static_cast<std::int16_t>(header.whole(name)));
    return framedSection(form, headerMark, encoding.data(), encoding.text(), encoding.references(), behind);
}

} // namespace hostkit
