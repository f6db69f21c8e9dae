#include "textcodes.h"

#include "casefold.h"
#include "dbcolor.h"
#include "markupreader.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

namespace {

using hostkit::MarkupPiece;
using hostkit::MarkupReader;

constexpr double stackedHeight = 0.7;
constexpr double raised = 0.4; // text heights
constexpr double lowered = -0.2;
constexpr std::size_t deepestNesting = 200;

TextRun emptyRun(const TextDefaults& defaults) {
    TextRun run;
    run.rgb = defaults.rgb;
    run.isBold = defaults.isBold;
    run.isItalic = defaults.isItalic;
    run.family = defaults.family;
    return run;
}

// The face that a browser has for a font of a drawing; empty where the default will do.
std::wstring familyOf(std::wstring_view font) {
    const std::wstring name = hostkit::foldCase(font);
    const auto has = [&](const wchar_t* part) { return name.find(part) != std::wstring::npos; };
    if (has(L"times") || has(L"romant") || has(L"garamond") || has(L"georgia"))
        return L"Times New Roman, serif";
    if (has(L"courier") || has(L"consol") || has(L"mono")) return L"Courier New, monospace";
    return {};
}

bool TextRun::*lineMarkOf(wchar_t code) {
    return code == L'L' || code == L'l'   ? &TextRun::isUnderlined
           : code == L'O' || code == L'o' ? &TextRun::isOverlined
                                          : &TextRun::isStruckOut;
}

// Makes runs of the pieces of a text. The state that braces save is the run's form.
class RunMaker {
public:
    RunMaker(const TextDefaults& defaults, std::wstring_view tab)
        : m_defaults(defaults)
        , m_tab(tab)
        , m_run(emptyRun(defaults))
        , m_paragraphs(1) {}

    std::vector<Paragraph> make(MarkupReader& reader) {
        while (const auto piece = reader.next()) take(*piece);
        endRun();
        return std::move(m_paragraphs);
    }

private:
    void take(const MarkupPiece& piece) {
        using Kind = MarkupPiece::Kind;
        if (piece.kind == Kind::letters) return addLetters(piece.text);
        if (piece.kind == Kind::stack) return addStack(piece.text);
        if (piece.kind == Kind::form) return setForm(piece.code, piece.text);
        endRun();
        if (piece.kind == Kind::lineEnd) return endParagraph();
        if (piece.kind == Kind::groupBegin) return openGroup();
        if (piece.kind == Kind::groupEnd) return closeGroup();
        bool& isMarked = m_run.*lineMarkOf(piece.code);
        isMarked = !isMarked;
    }

    void addLetters(std::wstring_view letters) {
        for (const wchar_t letter : letters) {
            if (letter == L'\t') m_run.text += m_tab;
            if (letter >= L' ') m_run.text += letter;
        }
    }

    void setForm(wchar_t code, std::wstring_view argument) {
        const std::wstring value(argument);
        switch (code) {
        case L'H':
            return setHeight(value.c_str());
        case L'C':
            return setIndexColor(std::wcstol(value.c_str(), nullptr, 10));
        case L'c':
            return setTrueColor(std::wcstoul(value.c_str(), nullptr, 10));
        case L'f':
        case L'F':
            return setFont(argument);
        case L'p':
            return setAlignment(hostkit::alignmentAskedBy(argument));
        case L'L':
        case L'O':
        case L'K':
        case L'l':
        case L'o':
        case L'k':
            endRun();
            m_run.*lineMarkOf(code) = code < L'a';
            return;
        default:
            return;
        }
    }

    void setHeight(const wchar_t* value) {
        wchar_t* end = nullptr;
        const double number = std::wcstod(value, &end);
        if (!(number > 0.0) || !std::isfinite(number)) return;
        endRun();
        if (*end == L'x' || *end == L'X')
            m_run.heightFactor *= number;
        else if (m_defaults.height > 0.0)
            m_run.heightFactor = number / m_defaults.height;
        m_run.heightFactor = std::clamp(m_run.heightFactor, 0.01, 100.0);
    }

    void setIndexColor(long index) {
        endRun();
        const bool isIndex = index > 0 && index < 256 && index != AcCmEntityColor::kACIforeground;
        m_run.rgb = isIndex ? AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt16>(index))
                    : index == AcCmEntityColor::kACIforeground ? 0
                                                               : m_defaults.rgb;
    }

    // The number has blue in its highest byte.
    void setTrueColor(unsigned long value) {
        endRun();
        m_run.rgb =
            static_cast<std::uint32_t>((value & 0xFF) << 16 | (value & 0xFF00) | (value >> 16 & 0xFF));
    }

    void setFont(std::wstring_view font) {
        endRun();
        m_run.family = familyOf(font.substr(0, font.find(L'|')));
        m_run.isBold = font.find(L"|b1") != std::wstring_view::npos;
        m_run.isItalic = font.find(L"|i1") != std::wstring_view::npos;
    }

    void setAlignment(wchar_t kind) {
        auto& alignment = m_paragraphs.back().alignment;
        if (kind == L'c') alignment = PlacedText::Anchor::middle;
        if (kind == L'r') alignment = PlacedText::Anchor::end;
        if (kind == L'l' || kind == L'j' || kind == L'd') alignment = PlacedText::Anchor::start;
    }

    void addStack(std::wstring_view stack) {
        std::wstring parts[2];
        wchar_t divider = 0;
        while (!stack.empty()) {
            const auto [character, isDivider] = hostkit::takeStackCharacter(stack);
            if (isDivider && !divider)
                divider = character;
            else
                parts[divider ? 1 : 0] += character;
        }
        auto& [upper, lower] = parts;
        if (divider == L'^' && lower.starts_with(L' ')) lower.erase(0, 1);
        addStacked(upper, raised);
        if (divider && divider != L'^') addStacked(L"\u2044", 0.0);
        addStacked(lower, lowered);
    }

    void addStacked(const std::wstring& text, double rise) {
        if (text.empty()) return;
        endRun();
        const TextRun form = m_run;
        m_run.heightFactor *= rise == 0.0 ? 1.0 : stackedHeight;
        m_run.rise = rise;
        m_run.text = text;
        endRun();
        m_run = form;
    }

    void openGroup() {
        if (m_saved.size() < deepestNesting) m_saved.push_back(m_run);
    }

    void closeGroup() {
        if (m_saved.empty()) return;
        m_run = m_saved.back();
        m_saved.pop_back();
    }

    void endRun() {
        if (!m_run.text.empty()) m_paragraphs.back().runs.push_back(m_run);
        m_run.text.clear();
    }

    void endParagraph() {
        const auto alignment = m_paragraphs.back().alignment;
        m_paragraphs.push_back({{}, alignment});
    }

    const TextDefaults& m_defaults;
    std::wstring_view m_tab;
    TextRun m_run;
    std::vector<TextRun> m_saved;
    std::vector<Paragraph> m_paragraphs;
};

} // namespace

std::vector<TextRun> runsOfText(std::wstring_view text, const TextDefaults& defaults) {
    MarkupReader reader(text, MarkupReader::Extent::line);
    return std::move(RunMaker(defaults, L"").make(reader).front().runs);
}

std::vector<Paragraph> paragraphsOfText(std::wstring_view text, const TextDefaults& defaults) {
    MarkupReader reader(text, MarkupReader::Extent::paragraphs);
    return RunMaker(defaults, L"    ").make(reader);
}

std::vector<std::vector<TextRun>> brokenLines(const Paragraph& paragraph, double width) {
    std::vector<std::vector<TextRun>> lines(1);
    if (!(width > 0.0)) {
        lines.front() = paragraph.runs;
        return lines;
    }
    double used = 0.0;
    for (const TextRun& run : paragraph.runs) {
        for (std::size_t start = 0; start < run.text.size();) {
            // A word is taken with the blanks behind it; those may stand out over the width.
            const std::size_t blank = std::min(run.text.find(L' ', start), run.text.size());
            const std::size_t next = std::min(run.text.find_first_not_of(L' ', blank), run.text.size());
            const double wide = estimatedWidth(run.text.substr(start, blank - start)) * run.heightFactor;
            if (used > 0.0 && used + wide > width) {
                lines.emplace_back();
                used = 0.0;
            }
            TextRun piece = run;
            piece.text = run.text.substr(start, next - start);
            used += estimatedWidth(piece.text) * run.heightFactor;
            lines.back().push_back(std::move(piece));
            start = next;
        }
    }
    return lines;
}

std::wstring plainText(const std::vector<TextRun>& runs) {
    std::wstring text;
    for (const TextRun& run : runs) text += run.text;
    return text;
}
