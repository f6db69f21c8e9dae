#include "textcodes.h"

#include "casefold.h"
#include "dbcolor.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

namespace {

constexpr double stackedHeight = 0.7;
constexpr double raised = 0.4; // text heights
constexpr double lowered = -0.2;
constexpr int deepestNesting = 200;

bool isDigit(wchar_t character) { return character >= L'0' && character <= L'9'; }

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

// The characters of "%%" codes, shared by both kinds of text. Gives how much of the text it took; 0 for no
// code.
class PercentCodes {
public:
    static std::size_t take(std::wstring_view text, TextRun& run, bool& isSwitch) {
        isSwitch = false;
        if (text.size() < 3 || text[0] != L'%' || text[1] != L'%') return 0;
        const wchar_t code = hostkit::foldCase(text[2]);
        if (code == L'c') return add(run, L'\u2300');
        if (code == L'd') return add(run, L'\u00B0');
        if (code == L'p') return add(run, L'\u00B1');
        if (code == L'%') return add(run, L'%');
        if (isDigit(code)) return addByNumber(text, run);
        bool* flag = code == L'u'   ? &run.isUnderlined
                     : code == L'o' ? &run.isOverlined
                     : code == L'k' ? &run.isStruckOut
                                    : nullptr;
        isSwitch = flag != nullptr;
        return isSwitch ? 3 : 0;
    }
    static void apply(wchar_t code, TextRun& run) {
        code = hostkit::foldCase(code);
        bool& flag = code == L'u' ? run.isUnderlined : code == L'o' ? run.isOverlined : run.isStruckOut;
        flag = !flag;
    }

private:
    static std::size_t add(TextRun& run, wchar_t character) {
        run.text += character;
        return 3;
    }
    static std::size_t addByNumber(std::wstring_view text, TextRun& run) {
        unsigned number = 0;
        std::size_t length = 2;
        for (; length < 5 && length < text.size() && isDigit(text[length]); ++length)
            number = number * 10 + static_cast<unsigned>(text[length] - L'0');
        if (number >= 32) run.text += static_cast<wchar_t>(number);
        return length;
    }
};

// Reads the codes of a text of several lines. The state that braces save is the run's form.
class ParagraphReader {
public:
    ParagraphReader(std::wstring_view text, const TextDefaults& defaults)
        : m_text(text)
        , m_defaults(defaults)
        , m_run(emptyRun(defaults)) {
        m_paragraphs.emplace_back();
    }

    std::vector<Paragraph> read() {
        while (m_position < m_text.size()) readOne();
        endRun();
        return std::move(m_paragraphs);
    }

private:
    void readOne() {
        const wchar_t character = m_text[m_position];
        bool isSwitch = false;
        if (const std::size_t length = PercentCodes::take(m_text.substr(m_position), m_run, isSwitch)) {
            if (isSwitch) {
                endRun();
                PercentCodes::apply(m_text[m_position + 2], m_run);
            }
            m_position += length;
            return;
        }
        ++m_position;
        if (character == L'\\' && m_position < m_text.size()) return readCode(m_text[m_position++]);
        if (character == L'^' && m_position < m_text.size()) return readCaret(m_text[m_position++]);
        if (character == L'{') return openGroup();
        if (character == L'}') return closeGroup();
        if (character == L'\n') return endParagraph();
        if (character == L'\t')
            m_run.text += L"    ";
        else if (character >= L' ')
            m_run.text += character;
    }

    void readCode(wchar_t code) {
        switch (code) {
        case L'P':
        case L'N':
        case L'X':
            return endParagraph();
        case L'~':
            m_run.text += L'\u00A0';
            return;
        case L'\\':
        case L'{':
        case L'}':
            m_run.text += code;
            return;
        case L'L':
        case L'l':
            return setFlag(&TextRun::isUnderlined, code == L'L');
        case L'O':
        case L'o':
            return setFlag(&TextRun::isOverlined, code == L'O');
        case L'K':
        case L'k':
            return setFlag(&TextRun::isStruckOut, code == L'K');
        case L'S':
            return readStack();
        case L'H':
            return readHeight();
        case L'C':
            return readIndexColor();
        case L'c':
            return readTrueColor();
        case L'f':
        case L'F':
            return readFont();
        case L'p':
            return readParagraphForm();
        case L'A':
        case L'W':
        case L'Q':
        case L'T':
            argument();
            return;
        default:
            m_run.text += L'\\';
            m_run.text += code;
            return;
        }
    }

    void readCaret(wchar_t code) {
        if (code == L'I')
            m_run.text += L"    ";
        else if (code == L'J')
            endParagraph();
        else if (code == L' ')
            m_run.text += L'^';
        else if (code != L'M')
            (m_run.text += L'^') += code;
    }

    // What stands up to the closing semicolon; all the rest where there is none.
    std::wstring_view argument() {
        const std::size_t end = std::min(m_text.find(L';', m_position), m_text.size());
        const std::wstring_view found = m_text.substr(m_position, end - m_position);
        m_position = std::min(end + 1, m_text.size());
        return found;
    }

    void setFlag(bool TextRun::*flag, bool value) {
        endRun();
        m_run.*flag = value;
    }

    void readHeight() {
        const std::wstring value(argument());
        wchar_t* end = nullptr;
        const double number = std::wcstod(value.c_str(), &end);
        if (!(number > 0.0) || !std::isfinite(number)) return;
        endRun();
        if (*end == L'x' || *end == L'X')
            m_run.heightFactor *= number;
        else if (m_defaults.height > 0.0)
            m_run.heightFactor = number / m_defaults.height;
        m_run.heightFactor = std::clamp(m_run.heightFactor, 0.01, 100.0);
    }

    void readIndexColor() {
        const long index = std::wcstol(std::wstring(argument()).c_str(), nullptr, 10);
        endRun();
        const bool isIndex = index > 0 && index < 256 && index != AcCmEntityColor::kACIforeground;
        m_run.rgb = isIndex ? AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt16>(index))
                    : index == AcCmEntityColor::kACIforeground ? 0
                                                               : m_defaults.rgb;
    }

    // The number has blue in its highest byte.
    void readTrueColor() {
        const unsigned long value = std::wcstoul(std::wstring(argument()).c_str(), nullptr, 10);
        endRun();
        m_run.rgb =
            static_cast<std::uint32_t>((value & 0xFF) << 16 | (value & 0xFF00) | (value >> 16 & 0xFF));
    }

    void readFont() {
        const std::wstring_view font = argument();
        endRun();
        m_run.family = familyOf(font.substr(0, font.find(L'|')));
        m_run.isBold = font.find(L"|b1") != std::wstring_view::npos;
        m_run.isItalic = font.find(L"|i1") != std::wstring_view::npos;
    }

    void readParagraphForm() {
        const std::wstring_view form = argument();
        const std::size_t place = form.find(L'q');
        if (place == std::wstring_view::npos || place + 1 >= form.size()) return;
        const wchar_t kind = form[place + 1];
        auto& alignment = m_paragraphs.back().alignment;
        if (kind == L'c') alignment = PlacedText::Anchor::middle;
        if (kind == L'r') alignment = PlacedText::Anchor::end;
        if (kind == L'l' || kind == L'j' || kind == L'd') alignment = PlacedText::Anchor::start;
    }

    void readStack() {
        std::wstring upper;
        std::wstring lower;
        wchar_t divider = 0;
        while (m_position < m_text.size() && m_text[m_position] != L';') {
            wchar_t character = m_text[m_position++];
            const bool isEscaped = character == L'\\' && m_position < m_text.size();
            if (isEscaped) character = m_text[m_position++];
            const bool isDivider =
                !isEscaped && (character == L'/' || character == L'#' || character == L'^');
            if (isDivider && !divider)
                divider = character;
            else
                (divider ? lower : upper) += character;
        }
        if (m_position < m_text.size()) ++m_position;
        if (divider == L'^' && !lower.empty() && lower.front() == L' ') lower.erase(0, 1);
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
        endRun();
        if (m_saved.size() < deepestNesting) m_saved.push_back(m_run);
    }

    void closeGroup() {
        endRun();
        if (m_saved.empty()) return;
        m_run = m_saved.back();
        m_saved.pop_back();
    }

    void endRun() {
        if (!m_run.text.empty()) m_paragraphs.back().runs.push_back(m_run);
        m_run.text.clear();
    }

    void endParagraph() {
        endRun();
        const auto alignment = m_paragraphs.back().alignment;
        m_paragraphs.push_back({{}, alignment});
    }

    std::wstring_view m_text;
    const TextDefaults& m_defaults;
    std::size_t m_position = 0;
    TextRun m_run;
    std::vector<TextRun> m_saved;
    std::vector<Paragraph> m_paragraphs;
};

} // namespace

std::vector<TextRun> runsOfText(std::wstring_view text, const TextDefaults& defaults) {
    std::vector<TextRun> runs;
    TextRun run = emptyRun(defaults);
    const auto endRun = [&] {
        if (!run.text.empty()) runs.push_back(run);
        run.text.clear();
    };
    for (std::size_t i = 0; i < text.size();) {
        bool isSwitch = false;
        const std::size_t length = PercentCodes::take(text.substr(i), run, isSwitch);
        if (isSwitch) {
            endRun();
            PercentCodes::apply(text[i + 2], run);
        }
        if (length == 0 && text[i] >= L' ') run.text += text[i];
        i += std::max<std::size_t>(length, 1);
    }
    endRun();
    return runs;
}

std::vector<Paragraph> paragraphsOfText(std::wstring_view text, const TextDefaults& defaults) {
    return ParagraphReader(text, defaults).read();
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
