#include "recordlayout.h"

#include "layouttext.h"
#include "recordlayouts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace hostkit {
namespace {

using namespace layouttext;

const Sources& allSources() {
    static const Sources sources = [] {
        Sources all;
        for (const char* text : {entitiesLayouts, annotationsLayouts, tablesLayouts, objectsLayouts,
                                 leadersLayouts, visualsLayouts, headerLayouts})
            addSources(text, all);
        return all;
    }();
    return sources;
}

constexpr std::array<std::pair<std::string_view, FieldCode>, 33> codes{
    {{"B", FieldCode::bit},
     {"BB", FieldCode::twoBits},
     {"RC", FieldCode::rawByte},
     {"RS", FieldCode::rawShort},
     {"RL", FieldCode::rawLong},
     {"RLL", FieldCode::rawLongLong},
     {"RD", FieldCode::rawDouble},
     {"BS", FieldCode::bitShort},
     {"BL", FieldCode::bitLong},
     {"BLL", FieldCode::bitLongLong},
     {"BD", FieldCode::bitDouble},
     {"BT", FieldCode::thickness},
     {"BE", FieldCode::direction},
     {"2BD", FieldCode::bitPoint2},
     {"3BD", FieldCode::bitPoint3},
     {"2RD", FieldCode::rawPoint2},
     {"3RD", FieldCode::rawPoint3},
     {"DD", FieldCode::standardDouble},
     {"2DD", FieldCode::standardPoint2},
     {"3DD", FieldCode::standardPoint3},
     {"2DDCHAIN", FieldCode::standardChain},
     {"TV", FieldCode::text},
     {"CMC", FieldCode::color},
     {"CMCX", FieldCode::longColor},
     {"ENC", FieldCode::entityColor},
     {"H", FieldCode::reference},
     {"HD", FieldCode::ownHandle},
     {"EED", FieldCode::extendedData},
     {"X", FieldCode::bytes},
     {"COUNTZ", FieldCode::zeroEnded},
     {"SAB", FieldCode::bodyData},
     {"HREST", FieldCode::references},
     {"OPAQUE", FieldCode::opaque}}};

/// Makes the steps of one record of one form.
class Compiling {
public:
    Compiling(int form, RecordLayout& layout)
        : m_form(form)
        , m_layout(layout) {
        m_layout.loopSlot = slotOf("INDEX");
        m_layout.colorReferenceSlot = slotOf("color_ref");
    }

    void use(std::string_view part) {
        const auto found = allSources().find(part);
        if (found == allSources().end()) throw std::logic_error("no layout: " + std::string(part));
        if (std::count(m_open.begin(), m_open.end(), part) == deepest) {
            LayoutStep step;
            step.code = FieldCode::tooDeep;
            return m_layout.steps.push_back(std::move(step));
        }
        m_open.push_back(part);
        block(found->second.lines, 0, found->second.lines.size());
        m_open.pop_back();
    }

private:
    std::uint16_t slotOf(std::string_view name) {
        std::string whole =
            name == "INDEX" || name == "color_ref" ? std::string(name) : m_prefix + std::string(name);
        return m_layout.addSlot(whole);
    }
    LayoutExpression expression(std::string_view text) {
        return LayoutExpression(text, [this](std::string_view name) { return slotOf(name); });
    }

    void block(const std::vector<Line>& lines, std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end;) {
            std::size_t next = i + 1;
            while (next < end && lines[next].indent > lines[i].indent) ++next;
            std::string_view text = lines[i].text;
            if (belongsTo(m_form, text)) line(lines, i, next, text);
            i = next;
        }
    }

    void line(const std::vector<Line>& lines, std::size_t at, std::size_t next, std::string_view text) {
        if (text.ends_with(':')) {
            text.remove_suffix(1);
            const std::size_t step = m_layout.steps.size();
            head(text);
            block(lines, at + 1, next);
            m_layout.steps[step].end = static_cast<std::uint16_t>(m_layout.steps.size());
        } else if (text.starts_with("use ")) {
            std::string_view part = text.substr(4);
            const std::string own(trimmed(takeUntil(part, " as ")));
            const std::string before = m_prefix;
            if (!trimmed(part).empty()) m_prefix.append(trimmed(part)).append(".");
            use(own);
            m_prefix = before;
        } else if (text.starts_with("let ")) {
            std::string_view rest = text.substr(4);
            LayoutStep step;
            step.kind = LayoutStep::Kind::let;
            step.slot = slotOf(trimmed(takeUntil(rest, "=")));
            step.condition = expression(trimmed(rest));
            m_layout.steps.push_back(std::move(step));
        } else {
            field(text);
        }
    }

    void head(std::string_view text) {
        LayoutStep step;
        const std::string_view word = takeUntil(text, " ");
        step.kind = word == "if"      ? LayoutStep::Kind::condition
                    : word == "else"  ? LayoutStep::Kind::otherwise
                    : word == "for"   ? LayoutStep::Kind::loop
                    : word == "while" ? LayoutStep::Kind::whilst
                                      : throw std::logic_error("no block: " + std::string(word));
        if (step.kind != LayoutStep::Kind::otherwise) step.condition = expression(trimmed(text));
        if (step.kind == LayoutStep::Kind::loop || step.kind == LayoutStep::Kind::whilst)
            step.slot = slotOf(std::string(word) + " " + withoutBlanks(text));
        m_layout.steps.push_back(std::move(step));
    }

    void field(std::string_view text) {
        LayoutStep step;
        std::string_view own = takeUntil(text, " ? ");
        if (!trimmed(text).empty()) step.condition = expression(trimmed(text));
        std::string_view code = takeUntil(own, " ");
        if (code == "H*") code = "H";
        if (code.size() == 2 && code[0] == 'H' && code[1] >= '2' && code[1] <= '5') {
            step.referenceCode = static_cast<std::uint8_t>(code[1] - '0');
            code = "H";
        }
        const auto found =
            std::find_if(codes.begin(), codes.end(), [&](const auto& entry) { return entry.first == code; });
        if (found == codes.end()) throw std::logic_error("no code: " + std::string(code));
        step.code = found->second;
        own = trimmed(own);
        if (step.code == FieldCode::bytes) step.count = expression(takeUntil(own, " "));
        name(own, step);
        step.mayBeRelative = step.name == "owner" || step.name == "prev" || step.name == "next";
        m_layout.fieldAt(step.slot) = {true, step.code, 0};
        if (std::uint16_t counted = 0; step.isArray() && step.count.isName(counted))
            m_layout.fieldAt(step.slot).countSlot = counted;
        m_layout.steps.push_back(std::move(step));
    }

    /// name, name(standard, ...), name[count]
    void name(std::string_view text, LayoutStep& step) {
        if (const std::size_t open = text.find('['); open != std::string_view::npos) {
            step.count = expression(text.substr(open + 1, text.rfind(']') - open - 1));
            text = text.substr(0, open);
        }
        if (const std::size_t open = text.find('('); open != std::string_view::npos) {
            std::string_view list = text.substr(open + 1, text.rfind(')') - open - 1);
            while (!list.empty()) step.standard.push_back(expression(trimmed(takeUntil(list, ","))));
            text = text.substr(0, open);
        }
        step.name = m_prefix + std::string(trimmed(text));
        step.slot = slotOf(trimmed(text));
    }

    static constexpr std::ptrdiff_t deepest = 4; ///< parts within themselves

    int m_form;
    RecordLayout& m_layout;
    std::vector<std::string_view> m_open; ///< parts that are being used
    std::string m_prefix;                 ///< of the names of a part that is used under a name
};

constexpr std::array<std::pair<std::string_view, std::string_view>, 8> otherNames{
    {{"ACDBPLACEHOLDER", "PLACEHOLDER"},
     {"LWPLINE", "LWPOLYLINE"},
     {"DICTIONARYWDFLT", "ACDBDICTIONARYWDFLT"},
     {"PDFREFERENCE", "PDFUNDERLAY"}}};

} // namespace

RecordLayouts::RecordLayouts(DrawingVersion version) {
    const int form = static_cast<int>(version) % 100;
    for (const auto& [name, source] : allSources()) {
        const bool isCommon = name == "COMMON-ENTITY" || name == "COMMON-OBJECT";
        if (source.kind == "P" && !isCommon && name != "HEADER-VARS") continue;
        auto layout = std::make_unique<RecordLayout>();
        layout->name = name;
        layout->number = static_cast<unsigned>(numberOf(source.code, 0));
        layout->isEntity = source.kind == "E" || name == "COMMON-ENTITY";
        Compiling compiling(form, *layout);
        if (source.kind != "P") compiling.use(layout->isEntity ? "COMMON-ENTITY" : "COMMON-OBJECT");
        compiling.use(name);
        layout->findCommonSlots();
        layout->hasTranscript = compileTranscript(form, *layout, layout->transcript);
        if (layout->number) m_byNumber[layout->number] = layout.get();
        m_byName[name] = std::move(layout);
    }
    m_commonEntity = m_byName.at("COMMON-ENTITY").get();
    m_commonObject = m_byName.at("COMMON-OBJECT").get();
}

const RecordLayouts& RecordLayouts::of(DrawingVersion version) {
    static std::mutex making;
    static std::map<DrawingVersion, std::unique_ptr<RecordLayouts>> made;
    const std::lock_guard lock(making);
    std::unique_ptr<RecordLayouts>& layouts = made[version];
    if (!layouts) layouts.reset(new RecordLayouts(version));
    return *layouts;
}

void RecordLayout::findCommonSlots() {
    const std::pair<std::string_view, std::uint16_t*> wanted[] = {{"handle", &common.handle},
                                                                  {"nreact", &common.reactorCount},
                                                                  {"noxdic", &common.noExtension},
                                                                  {"entmode", &common.mode},
                                                                  {"nolinks", &common.noLinks},
                                                                  {"prev", &common.previous},
                                                                  {"next", &common.next},
                                                                  {"matflags", &common.materialRule},
                                                                  {"psflags", &common.plotStyleRule},
                                                                  {"has_fullvs", &common.hasStyle},
                                                                  {"has_graphic", &common.hasPicture},
                                                                  {"gsize", &common.pictureSize},
                                                                  {"hasattr", &common.hasAttributes},
                                                                  {"xdic", &common.extensionDictionary},
                                                                  {"reactors", &common.reactors},
                                                                  {"owner", &common.owner},
                                                                  {"eed", &common.extendedData},
                                                                  {"layer", &common.layer},
                                                                  {"ltflags", &common.linetypeRule},
                                                                  {"ltype", &common.linetype},
                                                                  {"material", &common.material},
                                                                  {"color", &common.color},
                                                                  {"colorbook", &common.colorBook},
                                                                  {"lweight", &common.weight},
                                                                  {"ltscale", &common.scale},
                                                                  {"invisible", &common.hidden},
                                                                  {"graphic", &common.picture},
                                                                  {"plotstyle", &common.plotStyle},
                                                                  {"shadow", &common.shadow},
                                                                  {"fullvs", &common.style}};
    for (const auto& [field, slot] : wanted) (void)findSlot(field, *slot);
}

std::uint16_t RecordLayout::addSlot(std::string_view field) {
    const auto [at, isNew] = slotNames.try_emplace(std::string(field), slots);
    if (isNew) slots = static_cast<std::uint16_t>(slots + 3); // a point takes three
    return at->second;
}

RecordLayout::SlotField& RecordLayout::fieldAt(std::uint16_t slot) {
    if (slotFields.size() <= slot) slotFields.resize(std::max<std::size_t>(slots, slot + 1U));
    return slotFields[slot];
}

bool RecordLayout::findSlot(std::string_view field, std::uint16_t& slot) const {
    const auto found = slotNames.find(field);
    if (found == slotNames.end()) return false;
    slot = found->second;
    return true;
}

const RecordLayout* RecordLayouts::byNumber(unsigned number) const {
    const auto found = m_byNumber.find(number);
    return found == m_byNumber.end() ? nullptr : found->second;
}

const RecordLayout* RecordLayouts::byName(std::string_view name) const {
    for (const auto& [other, own] : otherNames)
        if (name == other && !other.empty()) name = own;
    const auto found = m_byName.find(name);
    return found == m_byName.end() ? nullptr : found->second.get();
}

} // namespace hostkit
