#include "transcript.h"

#include "layouttext.h"
#include "recordlayout.h"
#include "recordtranscripts.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace hostkit {
namespace {

using namespace layouttext;
using Line = TranscriptLine;

const Sources& allSources() {
    static const Sources sources = [] {
        Sources all;
        for (const char* text :
             {entityTranscripts, annotationTranscripts, tableTranscripts, objectTranscripts,
              leaderTranscripts, cellTranscripts, styleTranscripts, headerTranscripts})
            addSources(text, all);
        return all;
    }();
    return sources;
}

constexpr std::array<std::pair<std::string_view, Line::Conversion>, 11> conversions{
    {{"deg", Line::Conversion::degrees},
     {"name", Line::Conversion::name},
     {"arrow", Line::Conversion::arrow},
     {"color", Line::Conversion::color},
     {"indexcolor", Line::Conversion::indexColor},
     {"layercolor", Line::Conversion::layerColor},
     {"longcolor", Line::Conversion::longColor},
     {"weight", Line::Conversion::weight},
     {"pieces", Line::Conversion::pieces},
     {"hex", Line::Conversion::digits},
     {"julian", Line::Conversion::julian}}};

/// Where names are looked for that a transcript does not tell, by their group.
constexpr std::array<std::pair<int, std::string_view>, 5> usualTables{
    {{2, "BLOCK_RECORD"}, {3, "DIMSTYLE"}, {6, "LTYPE"}, {7, "STYLE"}, {8, "LAYER"}}};

std::uint8_t ordinatesOf(FieldCode code) {
    switch (code) {
    case FieldCode::bitPoint2:
    case FieldCode::rawPoint2:
    case FieldCode::standardPoint2:
    case FieldCode::standardChain:
        return 2;
    case FieldCode::bitPoint3:
    case FieldCode::rawPoint3:
    case FieldCode::standardPoint3:
    case FieldCode::direction:
        return 3;
    default:
        return 1;
    }
}

class Compiling {
public:
    Compiling(int form, RecordLayout& layout, Transcript& transcript)
        : m_form(form)
        , m_layout(layout)
        , m_transcript(transcript)
        , m_lines(transcript.lines) {}

    void use(std::string_view part) {
        const auto found = allSources().find(part);
        if (found == allSources().end()) fault("no transcript", part);
        if (std::count(m_open.begin(), m_open.end(), part) == deepest) return;
        m_open.push_back(found->first);
        block(found->second.lines, 0, found->second.lines.size());
        m_open.pop_back();
    }

    [[nodiscard]] bool isNone() const { return m_isNone; }

private:
    [[noreturn]] void fault(std::string_view what, std::string_view text) const {
        throw std::logic_error(m_layout.name + ": " + std::string(what) + ": " + std::string(text));
    }

    std::uint16_t slotOf(std::string_view name) {
        if (std::uint16_t ordinate = 0; findOrdinate(name, ordinate)) return ordinate;
        return m_layout.addSlot(name == "INDEX" ? std::string(name) : m_prefix + std::string(name));
    }
    /// "ins.y" of a point that is a field.
    bool findOrdinate(std::string_view name, std::uint16_t& slot) {
        if (name.size() < 3 || name[name.size() - 2] != '.') return false;
        const char letter = name.back();
        const std::string point = m_prefix + std::string(name.substr(0, name.size() - 2));
        if (letter < 'x' || letter > 'z' || !m_layout.findSlot(point, slot)) return false;
        const RecordLayout::SlotField& field = m_layout.fieldAt(slot);
        const int ordinate = letter - 'x';
        if (!field.isField || ordinatesOf(field.code) <= ordinate) return false;
        slot = static_cast<std::uint16_t>(slot + ordinate);
        return true;
    }
    LayoutExpression expression(std::string_view text) {
        return LayoutExpression(text, [this](std::string_view name) { return slotOf(name); });
    }

    using Texts = std::vector<layouttext::Line>;

    void block(const Texts& lines, std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end;) {
            std::size_t next = i + 1;
            while (next < end && lines[next].indent > lines[i].indent) ++next;
            std::string_view text = lines[i].text;
            if (belongsTo(m_form, text)) line(lines, i, next, text);
            i = next;
        }
    }

    static bool begins(std::string_view text, std::string_view word) { return text.starts_with(word); }

    void line(const Texts& lines, std::size_t at, std::size_t next, std::string_view text) {
        if (text.ends_with(':')) {
            text.remove_suffix(1);
            const std::size_t own = m_lines.size();
            head(text);
            block(lines, at + 1, next);
            m_lines[own].end = static_cast<std::uint16_t>(m_lines.size());
            if (m_lines[own].kind == Line::Kind::loop) findFirstCode(own);
        } else if (text.starts_with("use ")) {
            std::string_view part = text.substr(4);
            const std::string own(trimmed(takeUntil(part, " as ")));
            const std::string before = m_prefix;
            if (!trimmed(part).empty()) m_prefix.append(trimmed(part)).append(".");
            use(own);
            m_prefix = before;
        } else if (text == "none") {
            m_isNone = true;
        } else if (text == "changed") {
            m_transcript.canBeNew = false;
        } else if (begins(text, "needs ") || begins(text, "bars ")) {
            Transcript::Need need;
            need.isBarred = begins(text, "bars ");
            takeUntil(text, " ");
            need.code = static_cast<short>(numberOf(takeUntil(text, " "), 0));
            need.value = trimmed(text);
            m_transcript.needs.push_back(std::move(need));
        } else if (begins(text, "read ") || begins(text, "write ") || begins(text, "new ")) {
            Line line;
            line.kind = begins(text, "read ") ? Line::Kind::read : Line::Kind::write;
            line.isForNew = begins(text, "new ");
            takeUntil(text, " ");
            const std::string_view name = trimmed(takeUntil(text, " = "));
            line.parts.push_back(part(name));
            line.slot = line.parts[0].slot;
            line.expression = expression(trimmed(text));
            m_lines.push_back(std::move(line));
        } else {
            group(text);
        }
    }

    void head(std::string_view text) {
        Line line;
        const std::string_view word = takeUntil(text, " ");
        text = trimmed(text);
        if (word == "else") {
            line.kind = Line::Kind::otherwise;
        } else if (word == "if") {
            line.kind = Line::Kind::condition;
            line.condition = expression(text);
        } else if (word == "forwards") {
            line.kind = Line::Kind::condition;
            line.condition = expression("1");
            line.isForwardsAlone = true;
        } else if (word == "for") {
            line.kind = Line::Kind::loop;
            line.isStrict = text.ends_with(" next");
            if (line.isStrict) text = trimmed(text.substr(0, text.size() - 4));
            line.condition = expression(text);
            if (std::uint16_t counted = 0; line.condition.isName(counted)) line.countSlot = counted;
            const std::string loop = m_prefix + "for " + withoutBlanks(text);
            line.hasLayoutLoop = m_layout.findSlot(loop, line.slot);
        } else {
            fault("no block", word);
        }
        m_lines.push_back(std::move(line));
    }

    void group(std::string_view text) {
        const std::string whole(text);
        Line line;
        const std::string_view digits = takeUntil(text, " ");
        line.code = static_cast<short>(numberOf(digits, -1));
        if (line.code < 0) fault("no group code", whole);
        text = trimmed(text);
        if (text.starts_with('\'')) {
            line.kind = Line::Kind::fixed;
            text.remove_prefix(1);
            line.text = takeUntil(text, "'");
            condition(text, line);
        } else if (line.code == 100) {
            line.kind = Line::Kind::mark;
            std::string_view mark = text;
            line.text = trimmed(takeUntil(mark, " ? "));
            if (!trimmed(mark).empty()) line.condition = expression(trimmed(mark));
        } else {
            const std::string_view rest = condition(text, line);
            const std::string_view value = standard(rest, line);
            if (value.starts_with("bits "))
                bits(value.substr(5), line);
            else if (value.starts_with('('))
                computed(value, line);
            else
                fields(value, line);
        }
        m_lines.push_back(std::move(line));
    }

    /// Takes " ? condition" off.
    std::string_view condition(std::string_view text, Line& line) {
        for (const std::string_view sign : {" ?> ", " ? "})
            if (const std::size_t at = text.rfind(sign); at != std::string_view::npos) {
                line.condition = expression(trimmed(text.substr(at + sign.size())));
                line.isForwardsAlone = sign == " ?> ";
                return trimmed(text.substr(0, at));
            }
        return text;
    }

    /// Takes " = value" off.
    std::string_view standard(std::string_view text, Line& line) {
        for (const std::string_view sign : {" = ", " ~ "}) {
            const std::size_t at = text.rfind(sign);
            if (at == std::string_view::npos) continue;
            line.presence = sign == " = " ? Line::Presence::unlessStandard : Line::Presence::always;
            std::string_view value = trimmed(text.substr(at + sign.size()));
            if (value.starts_with('\'')) {
                value.remove_prefix(1);
                line.text = takeUntil(value, "'");
                line.hasStandardText = true;
            } else {
                while (!value.empty()) {
                    const std::string_view one = trimmed(takeUntil(value, ","));
                    line.standard.push_back(expression(one).value({}));
                }
            }
            return trimmed(text.substr(0, at));
        }
        return text;
    }

    void bits(std::string_view text, Line& line) {
        line.kind = Line::Kind::bits;
        while (!text.empty()) {
            std::string_view one = takeUntil(text, " ");
            const bool isInverted = one.starts_with('!');
            if (isInverted) one.remove_prefix(1);
            Line::Part made = part(takeUntil(one, ":"));
            made.isInverted = isInverted;
            made.mask = static_cast<std::int64_t>(expression(one).value({}));
            line.parts.push_back(made);
        }
    }

    void computed(std::string_view text, Line& line) {
        line.kind = Line::Kind::computed;
        const std::size_t close = text.rfind(')');
        line.expression = expression(text.substr(0, close + 1));
        std::string_view rest = trimmed(text.substr(close + 1));
        if (!rest.starts_with("as ")) return;
        rest.remove_prefix(3);
        line.parts.push_back(part(takeUntil(rest, " ")));
        line.slot = line.parts[0].slot;
        convert(trimmed(takeUntil(rest, " ")), rest, line);
    }

    void fields(std::string_view text, Line& line) {
        std::string_view names = takeUntil(text, " ");
        const std::string_view word = takeUntil(text, " ");
        while (!names.empty()) line.parts.push_back(part(takeUntil(names, ",")));
        convert(word, text, line);
    }

    void convert(std::string_view word, std::string_view text, Line& line) const {
        if (word.empty()) return;
        const auto found = std::find_if(conversions.begin(), conversions.end(),
                                        [&](const auto& entry) { return entry.first == word; });
        line.conversion = found == conversions.end() ? Line::Conversion::native : found->second;
        const std::string_view rest = trimmed(text);
        if (line.conversion == Line::Conversion::native) line.text = word;
        if (line.conversion == Line::Conversion::pieces)
            line.otherCode = static_cast<short>(numberOf(rest, 3));
        if (line.conversion == Line::Conversion::name) line.table = tableOf(rest, line.code);
        if (line.conversion == Line::Conversion::arrow) line.table = "BLOCK_RECORD";
    }

    std::string_view tableOf(std::string_view told, int code) const {
        if (!told.empty()) return told;
        for (const auto& [usual, table] : usualTables)
            if (usual == code) return table;
        fault("no kind of names", told);
    }

    /// name, name[], name*, name@loop
    Line::Part part(std::string_view text) {
        Line::Part made;
        if (text.ends_with("[]")) {
            made.isElement = true;
            text.remove_suffix(2);
        } else if (text.ends_with('*')) {
            made.isAll = true;
            text.remove_suffix(1);
        } else if (const std::size_t at = text.find('@'); at != std::string_view::npos) {
            const std::string loop = m_prefix + "for " + std::string(text.substr(at + 1));
            if (!m_layout.findSlot(loop, made.loopSlot)) fault("no loop", text);
            text = text.substr(0, at);
        }
        made.slot = slotOf(text);
        const RecordLayout::SlotField& field = m_layout.fieldAt(made.slot);
        if (!field.isField) return made;
        made.kind = valueKindOf(static_cast<std::uint8_t>(field.code));
        made.ordinates = ordinatesOf(field.code);
        return made;
    }

    void findFirstCode(std::size_t loop) {
        std::size_t count = 0;
        for (std::size_t i = loop + 1; i < m_lines.size(); ++i) {
            const Line& line = m_lines[i];
            const bool isGroup = line.kind == Line::Kind::field || line.kind == Line::Kind::fixed ||
                                 line.kind == Line::Kind::bits || line.kind == Line::Kind::computed;
            if (!isGroup) continue;
            if (count == 0) m_lines[loop].otherCode = line.code;
            if (count == 0 && line.kind == Line::Kind::fixed) m_lines[loop].text = line.text;
            count += line.code == m_lines[loop].otherCode;
        }
        m_lines[loop].repeatsFirstCode = count > 1;
    }

    static constexpr std::ptrdiff_t deepest = 4; ///< parts within themselves

    int m_form;
    bool m_isNone = false;
    RecordLayout& m_layout;
    Transcript& m_transcript;
    std::vector<Line>& m_lines;
    std::vector<std::string_view> m_open;
    std::string m_prefix;
};

} // namespace

ValueKind valueKindOf(std::uint8_t fieldCode) {
    switch (static_cast<FieldCode>(fieldCode)) {
    case FieldCode::bit:
    case FieldCode::twoBits:
    case FieldCode::rawByte:
    case FieldCode::rawShort:
    case FieldCode::rawLong:
    case FieldCode::rawLongLong:
    case FieldCode::bitShort:
    case FieldCode::bitLong:
    case FieldCode::bitLongLong:
    case FieldCode::zeroEnded:
        return ValueKind::whole;
    case FieldCode::text:
        return ValueKind::text;
    case FieldCode::color:
    case FieldCode::longColor:
    case FieldCode::entityColor:
        return ValueKind::color;
    case FieldCode::reference:
    case FieldCode::references:
    case FieldCode::ownHandle:
        return ValueKind::reference;
    case FieldCode::bytes:
    case FieldCode::bodyData:
    case FieldCode::extendedData:
        return ValueKind::bytes;
    case FieldCode::opaque:
    case FieldCode::tooDeep:
        return ValueKind::none;
    default:
        return ValueKind::real;
    }
}

bool compileTranscript(int form, RecordLayout& layout, Transcript& transcript) {
    const auto found = allSources().find(layout.name);
    if (found == allSources().end()) return false;
    std::string_view name = found->second.kind;
    transcript.recordName = found->second.code == "|" && belongsTo(form, name) ? name : layout.name;
    const bool isOpaque = std::any_of(layout.steps.begin(), layout.steps.end(), [](const LayoutStep& step) {
        return step.kind == LayoutStep::Kind::field && step.code == FieldCode::opaque;
    });
    Compiling compiling(form, layout, transcript);
    if (!isOpaque) compiling.use(layout.name);
    return !isOpaque && !compiling.isNone();
}

} // namespace hostkit
