#include "commandinput.h"

#include "hostport.h"

#include <algorithm>

namespace hostkit {
namespace {

// A command that goes on asking a line that is used up would never end: after so many answers of Enter it is
// told that nobody is there.
constexpr int entersBeforeEnd = 1000;

bool isBlank(wchar_t character) {
    return character == L' ' || character == L'\t' || character == L'\r' || character == L'\n';
}

} // namespace

void CommandInput::skipBlanks() {
    while (m_position < m_line.size() && isBlank(m_line[m_position])) ++m_position;
}

bool CommandInput::nextWord(std::wstring& word, bool wholeLine) {
    skipBlanks();
    if (m_position == m_line.size()) return false;
    word.clear();
    m_isUnclosed = false;
    if (m_line[m_position] != L'"') {
        const std::size_t start = m_position;
        while (m_position < m_line.size() && (wholeLine || !isBlank(m_line[m_position]))) ++m_position;
        word = m_line.substr(start, m_position - start);
        while (!word.empty() && isBlank(word.back())) word.pop_back();
        return true;
    }
    for (++m_position; m_position < m_line.size(); ++m_position) {
        if (m_line[m_position] == L'"') {
            const bool isDoubled = m_position + 1 < m_line.size() && m_line[m_position + 1] == L'"';
            if (!isDoubled) break;
            ++m_position;
        }
        word += m_line[m_position];
    }
    m_isUnclosed = m_position == m_line.size();
    if (!m_isUnclosed) ++m_position;
    return true;
}

Answer CommandInput::next(std::wstring_view prompt, bool wholeLine) {
    Answer answer;
    if (nextWord(answer.text, wholeLine)) {
        answer.kind = Answer::Kind::word;
        return answer;
    }
    if (m_more == MoreInput::none) {
        answer.kind = ++m_enters <= entersBeforeEnd ? Answer::Kind::enter : Answer::Kind::end;
        return answer;
    }
    std::wstring line;
    switch (currentPort()->readLine(prompt, line)) {
    case Input::cancelled:
        answer.kind = Answer::Kind::cancelled;
        return answer;
    case Input::end:
        answer.kind = Answer::Kind::end;
        return answer;
    case Input::line:
        break;
    }
    m_line = std::move(line);
    m_position = 0;
    answer.kind = nextWord(answer.text, wholeLine) ? Answer::Kind::word : Answer::Kind::enter;
    return answer;
}

void CommandInput::skip(std::size_t characters) {
    skipBlanks();
    m_position = std::min(m_position + characters, m_line.size());
}

std::wstring_view CommandInput::rest() const {
    std::size_t start = m_position;
    while (start < m_line.size() && isBlank(m_line[start])) ++start;
    return std::wstring_view(m_line).substr(start);
}

std::wstring unclosedMark(std::wstring_view word) {
    return L"a quotation mark is not closed: \"" + std::wstring(word);
}

std::wstring quotedWord(std::wstring_view word) {
    const bool isPlain = !word.empty() && word.find_first_of(L" \t\r\n\"") == std::wstring_view::npos;
    if (isPlain) return std::wstring(word);
    std::wstring text = L"\"";
    for (const wchar_t character : word) {
        if (character == L'"') text += L'"';
        text += character;
    }
    return text + L'"';
}

} // namespace hostkit
