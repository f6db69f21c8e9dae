#include "cstring.h"

#include "casefold.h"
#include "textencoding.h"

#include <algorithm>
#include <cwchar>

namespace {

std::wstring_view viewOf(const wchar_t* text) { return text ? std::wstring_view(text) : std::wstring_view(); }
std::string_view viewOf(const char* text) { return text ? std::string_view(text) : std::string_view(); }
std::size_t atLeastZero(int count) { return count > 0 ? static_cast<std::size_t>(count) : 0; }
int positionOrMinusOne(std::size_t position) {
    return position == std::wstring::npos ? -1 : static_cast<int>(position);
}

} // namespace

// --- Construction ------------------------------------------------------------------------------------------

CString::CString(const wchar_t* text)
    : m_text(viewOf(text)) {}
CString::CString(const wchar_t* text, int length)
    : m_text(text ? std::wstring(text, atLeastZero(length)) : std::wstring()) {}
CString::CString(wchar_t character, int repeat)
    : m_text(atLeastZero(repeat), character) {}
CString::CString(const char* ansiText)
    : m_text(hostkit::wideFromAnsi(viewOf(ansiText))) {}

CString& CString::operator=(const wchar_t* text) {
    m_text = std::wstring(viewOf(text)); // the text may point into this one
    return *this;
}

CString& CString::operator=(wchar_t character) {
    m_text.assign(1, character);
    return *this;
}

CString& CString::operator=(const char* ansiText) {
    m_text = hostkit::wideFromAnsi(viewOf(ansiText));
    return *this;
}

wchar_t CString::GetAt(int index) const {
    return index >= 0 && index < GetLength() ? m_text[static_cast<std::size_t>(index)] : L'\0';
}

void CString::SetAt(int index, wchar_t character) {
    if (index >= 0 && index < GetLength()) m_text[static_cast<std::size_t>(index)] = character;
}

CString& CString::operator+=(const CString& text) {
    m_text += text.m_text;
    return *this;
}

CString& CString::operator+=(const wchar_t* text) {
    m_text.append(viewOf(text));
    return *this;
}

CString& CString::operator+=(wchar_t character) {
    m_text += character;
    return *this;
}

void CString::Append(const wchar_t* text, int length) {
    if (text) m_text.append(text, atLeastZero(length));
}

// --- Pieces ------------------------------------------------------------------------------------------------

CString CString::Left(int count) const {
    return CString(std::wstring_view(m_text).substr(0, atLeastZero(count)));
}

CString CString::Mid(int first) const { return Mid(first, GetLength()); }

CString CString::Mid(int first, int count) const {
    const std::size_t start = std::min(atLeastZero(first), m_text.size());
    return CString(std::wstring_view(m_text).substr(start, atLeastZero(count)));
}

CString CString::Right(int count) const {
    const std::size_t taken = std::min(atLeastZero(count), m_text.size());
    return CString(std::wstring_view(m_text).substr(m_text.size() - taken));
}

CString CString::SpanIncluding(const wchar_t* set) const {
    return CString(
        std::wstring_view(m_text).substr(0, std::min(m_text.find_first_not_of(viewOf(set)), m_text.size())));
}

CString CString::SpanExcluding(const wchar_t* set) const {
    return CString(
        std::wstring_view(m_text).substr(0, std::min(m_text.find_first_of(viewOf(set)), m_text.size())));
}

CString CString::Tokenize(const wchar_t* set, int& start) const {
    const std::wstring_view separators = viewOf(set);
    const std::size_t from =
        start < 0 ? std::wstring::npos : m_text.find_first_not_of(separators, atLeastZero(start));
    if (from == std::wstring::npos) {
        start = -1;
        return {};
    }
    const std::size_t to = std::min(m_text.find_first_of(separators, from), m_text.size());
    start = static_cast<int>(std::min(to + 1, m_text.size()));
    return CString(std::wstring_view(m_text).substr(from, to - from));
}

// --- Search ------------------------------------------------------------------------------------------------

int CString::Find(const wchar_t* text, int start) const {
    if (!text || start < 0 || start > GetLength()) return -1;
    return positionOrMinusOne(m_text.find(text, static_cast<std::size_t>(start)));
}

int CString::Find(wchar_t character, int start) const {
    if (start < 0 || start > GetLength()) return -1;
    return positionOrMinusOne(m_text.find(character, static_cast<std::size_t>(start)));
}

int CString::ReverseFind(wchar_t character) const { return positionOrMinusOne(m_text.rfind(character)); }

int CString::FindOneOf(const wchar_t* set) const {
    return positionOrMinusOne(m_text.find_first_of(viewOf(set)));
}

// --- Editing -----------------------------------------------------------------------------------------------

int CString::Replace(const wchar_t* oldText, const wchar_t* newText) {
    const std::wstring from(viewOf(oldText));
    const std::wstring to(viewOf(newText));
    if (from.empty()) return 0;
    std::wstring result;
    int count = 0;
    std::size_t at = 0;
    for (std::size_t hit; (hit = m_text.find(from, at)) != std::wstring::npos;
         at = hit + from.size(), ++count)
        result.append(m_text, at, hit - at).append(to);
    if (count == 0) return 0;
    result.append(m_text, at, std::wstring::npos);
    m_text = std::move(result);
    return count;
}

int CString::Replace(wchar_t oldCharacter, wchar_t newCharacter) {
    const auto count = std::count(m_text.begin(), m_text.end(), oldCharacter);
    if (oldCharacter == newCharacter) return 0;
    std::replace(m_text.begin(), m_text.end(), oldCharacter, newCharacter);
    return static_cast<int>(count);
}

int CString::Remove(wchar_t character) { return static_cast<int>(std::erase(m_text, character)); }

int CString::Insert(int index, const wchar_t* text) {
    m_text.insert(std::min(atLeastZero(index), m_text.size()), std::wstring(viewOf(text)));
    return GetLength();
}

int CString::Insert(int index, wchar_t character) {
    m_text.insert(std::min(atLeastZero(index), m_text.size()), 1, character);
    return GetLength();
}

int CString::Delete(int index, int count) {
    const std::size_t start = atLeastZero(index);
    if (start < m_text.size()) m_text.erase(start, atLeastZero(count));
    return GetLength();
}

void CString::Truncate(int length) {
    if (length < GetLength()) m_text.resize(atLeastZero(length));
}

CString& CString::TrimLeft() {
    m_text.erase(m_text.begin(), std::find_if_not(m_text.begin(), m_text.end(), hostkit::isWhiteSpace));
    return *this;
}

CString& CString::TrimLeft(wchar_t character) {
    const wchar_t set[2] = {character, 0};
    return TrimLeft(set);
}

CString& CString::TrimLeft(const wchar_t* set) {
    m_text.erase(0, m_text.find_first_not_of(viewOf(set)));
    return *this;
}

CString& CString::TrimRight() {
    m_text.erase(std::find_if_not(m_text.rbegin(), m_text.rend(), hostkit::isWhiteSpace).base(),
                 m_text.end());
    return *this;
}

CString& CString::TrimRight(wchar_t character) {
    const wchar_t set[2] = {character, 0};
    return TrimRight(set);
}

CString& CString::TrimRight(const wchar_t* set) {
    const std::size_t last = m_text.find_last_not_of(viewOf(set));
    m_text.erase(last == std::wstring::npos ? 0 : last + 1);
    return *this;
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }
CString& CString::Trim(wchar_t character) { return TrimRight(character).TrimLeft(character); }
CString& CString::Trim(const wchar_t* set) { return TrimRight(set).TrimLeft(set); }

CString& CString::MakeUpper() {
    for (wchar_t& character : m_text) character = hostkit::upperCase(character);
    return *this;
}

CString& CString::MakeLower() {
    for (wchar_t& character : m_text) character = hostkit::foldCase(character);
    return *this;
}

CString& CString::MakeReverse() {
    std::reverse(m_text.begin(), m_text.end());
    return *this;
}

// --- Comparison, formatting, buffers -----------------------------------------------------------------------

int CString::Compare(const wchar_t* other) const {
    const int order = std::wstring_view(m_text).compare(viewOf(other));
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

int CString::CompareNoCase(const wchar_t* other) const {
    return hostkit::compareFolded(m_text, viewOf(other));
}

void CString::FormatV(const wchar_t* format, va_list arguments) {
    m_text = hostkit::formatText(format, arguments);
}

wchar_t* CString::GetBuffer(int minimumLength) {
    m_text.resize(std::max(m_text.size(), atLeastZero(minimumLength)));
    return m_text.data();
}

wchar_t* CString::GetBufferSetLength(int length) {
    m_text.resize(atLeastZero(length));
    return m_text.data();
}

void CString::ReleaseBuffer(int length) {
    m_text.resize(length < 0 ? wcsnlen(m_text.data(), m_text.size())
                             : std::min(atLeastZero(length), m_text.size()));
}

void CString::Preallocate(int length) { m_text.reserve(atLeastZero(length)); }

CString operator+(const CString& a, const CString& b) { return CString(a) += b; }
CString operator+(const CString& a, const wchar_t* b) { return CString(a) += b; }
CString operator+(const wchar_t* a, const CString& b) { return CString(a) += b; }
CString operator+(const CString& a, wchar_t b) { return CString(a) += b; }
CString operator+(wchar_t a, const CString& b) { return CString(a) += b; }
