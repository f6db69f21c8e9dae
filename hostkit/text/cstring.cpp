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
    : text_(viewOf(text)) {}
CString::CString(const wchar_t* text, int length)
    : text_(text ? std::wstring(text, atLeastZero(length)) : std::wstring()) {}
CString::CString(wchar_t character, int repeat)
    : text_(atLeastZero(repeat), character) {}
CString::CString(const char* ansiText)
    : text_(hostkit::wideFromAnsi(viewOf(ansiText))) {}

CString& CString::operator=(const wchar_t* text) {
    text_ = std::wstring(viewOf(text)); // the text may point into this one
    return *this;
}

CString& CString::operator=(wchar_t character) {
    text_.assign(1, character);
    return *this;
}

CString& CString::operator=(const char* ansiText) {
    text_ = hostkit::wideFromAnsi(viewOf(ansiText));
    return *this;
}

wchar_t CString::GetAt(int index) const {
    return index >= 0 && index < GetLength() ? text_[static_cast<std::size_t>(index)] : L'\0';
}

void CString::SetAt(int index, wchar_t character) {
    if (index >= 0 && index < GetLength()) text_[static_cast<std::size_t>(index)] = character;
}

CString& CString::operator+=(const CString& text) {
    text_ += text.text_;
    return *this;
}

CString& CString::operator+=(const wchar_t* text) {
    text_.append(viewOf(text));
    return *this;
}

CString& CString::operator+=(wchar_t character) {
    text_ += character;
    return *this;
}

void CString::Append(const wchar_t* text, int length) {
    if (text) text_.append(text, atLeastZero(length));
}

// --- Pieces ------------------------------------------------------------------------------------------------

CString CString::Left(int count) const {
    return CString(std::wstring_view(text_).substr(0, atLeastZero(count)));
}

CString CString::Mid(int first) const { return Mid(first, GetLength()); }

CString CString::Mid(int first, int count) const {
    const std::size_t start = std::min(atLeastZero(first), text_.size());
    return CString(std::wstring_view(text_).substr(start, atLeastZero(count)));
}

CString CString::Right(int count) const {
    const std::size_t taken = std::min(atLeastZero(count), text_.size());
    return CString(std::wstring_view(text_).substr(text_.size() - taken));
}

CString CString::SpanIncluding(const wchar_t* set) const {
    return CString(
        std::wstring_view(text_).substr(0, std::min(text_.find_first_not_of(viewOf(set)), text_.size())));
}

CString CString::SpanExcluding(const wchar_t* set) const {
    return CString(
        std::wstring_view(text_).substr(0, std::min(text_.find_first_of(viewOf(set)), text_.size())));
}

CString CString::Tokenize(const wchar_t* set, int& start) const {
    const std::wstring_view separators = viewOf(set);
    const std::size_t from =
        start < 0 ? std::wstring::npos : text_.find_first_not_of(separators, atLeastZero(start));
    if (from == std::wstring::npos) {
        start = -1;
        return {};
    }
    const std::size_t to = std::min(text_.find_first_of(separators, from), text_.size());
    start = static_cast<int>(std::min(to + 1, text_.size()));
    return CString(std::wstring_view(text_).substr(from, to - from));
}

// --- Search ------------------------------------------------------------------------------------------------

int CString::Find(const wchar_t* text, int start) const {
    if (!text || start < 0 || start > GetLength()) return -1;
    return positionOrMinusOne(text_.find(text, static_cast<std::size_t>(start)));
}

int CString::Find(wchar_t character, int start) const {
    if (start < 0 || start > GetLength()) return -1;
    return positionOrMinusOne(text_.find(character, static_cast<std::size_t>(start)));
}

int CString::ReverseFind(wchar_t character) const { return positionOrMinusOne(text_.rfind(character)); }

int CString::FindOneOf(const wchar_t* set) const {
    return positionOrMinusOne(text_.find_first_of(viewOf(set)));
}

// --- Editing -----------------------------------------------------------------------------------------------

int CString::Replace(const wchar_t* oldText, const wchar_t* newText) {
    const std::wstring from(viewOf(oldText));
    const std::wstring to(viewOf(newText));
    if (from.empty()) return 0;
    std::wstring result;
    int count = 0;
    std::size_t at = 0;
    for (std::size_t hit; (hit = text_.find(from, at)) != std::wstring::npos; at = hit + from.size(), ++count)
        result.append(text_, at, hit - at).append(to);
    if (count == 0) return 0;
    result.append(text_, at, std::wstring::npos);
    text_ = std::move(result);
    return count;
}

int CString::Replace(wchar_t oldCharacter, wchar_t newCharacter) {
    const auto count = std::count(text_.begin(), text_.end(), oldCharacter);
    if (oldCharacter == newCharacter) return 0;
    std::replace(text_.begin(), text_.end(), oldCharacter, newCharacter);
    return static_cast<int>(count);
}

int CString::Remove(wchar_t character) { return static_cast<int>(std::erase(text_, character)); }

int CString::Insert(int index, const wchar_t* text) {
    text_.insert(std::min(atLeastZero(index), text_.size()), std::wstring(viewOf(text)));
    return GetLength();
}

int CString::Insert(int index, wchar_t character) {
    text_.insert(std::min(atLeastZero(index), text_.size()), 1, character);
    return GetLength();
}

int CString::Delete(int index, int count) {
    const std::size_t start = atLeastZero(index);
    if (start < text_.size()) text_.erase(start, atLeastZero(count));
    return GetLength();
}

void CString::Truncate(int length) {
    if (length < GetLength()) text_.resize(atLeastZero(length));
}

CString& CString::TrimLeft() {
    text_.erase(text_.begin(), std::find_if_not(text_.begin(), text_.end(), hostkit::isWhiteSpace));
    return *this;
}

CString& CString::TrimLeft(wchar_t character) {
    const wchar_t set[2] = {character, 0};
    return TrimLeft(set);
}

CString& CString::TrimLeft(const wchar_t* set) {
    text_.erase(0, text_.find_first_not_of(viewOf(set)));
    return *this;
}

CString& CString::TrimRight() {
    text_.erase(std::find_if_not(text_.rbegin(), text_.rend(), hostkit::isWhiteSpace).base(), text_.end());
    return *this;
}

CString& CString::TrimRight(wchar_t character) {
    const wchar_t set[2] = {character, 0};
    return TrimRight(set);
}

CString& CString::TrimRight(const wchar_t* set) {
    const std::size_t last = text_.find_last_not_of(viewOf(set));
    text_.erase(last == std::wstring::npos ? 0 : last + 1);
    return *this;
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }
CString& CString::Trim(wchar_t character) { return TrimRight(character).TrimLeft(character); }
CString& CString::Trim(const wchar_t* set) { return TrimRight(set).TrimLeft(set); }

CString& CString::MakeUpper() {
    for (wchar_t& character : text_) character = hostkit::upperCase(character);
    return *this;
}

CString& CString::MakeLower() {
    for (wchar_t& character : text_) character = hostkit::foldCase(character);
    return *this;
}

CString& CString::MakeReverse() {
    std::reverse(text_.begin(), text_.end());
    return *this;
}

// --- Comparison, formatting, buffers -----------------------------------------------------------------------

int CString::Compare(const wchar_t* other) const {
    const int order = std::wstring_view(text_).compare(viewOf(other));
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

int CString::CompareNoCase(const wchar_t* other) const {
    return hostkit::compareFolded(text_, viewOf(other));
}

void CString::FormatV(const wchar_t* format, va_list arguments) {
    text_ = hostkit::formatText(format, arguments);
}

wchar_t* CString::GetBuffer(int minimumLength) {
    text_.resize(std::max(text_.size(), atLeastZero(minimumLength)));
    return text_.data();
}

wchar_t* CString::GetBufferSetLength(int length) {
    text_.resize(atLeastZero(length));
    return text_.data();
}

void CString::ReleaseBuffer(int length) {
    text_.resize(length < 0 ? wcsnlen(text_.data(), text_.size())
                            : std::min(atLeastZero(length), text_.size()));
}

void CString::Preallocate(int length) { text_.reserve(atLeastZero(length)); }

CString operator+(const CString& a, const CString& b) { return CString(a) += b; }
CString operator+(const CString& a, const wchar_t* b) { return CString(a) += b; }
CString operator+(const wchar_t* a, const CString& b) { return CString(a) += b; }
CString operator+(const CString& a, wchar_t b) { return CString(a) += b; }
CString operator+(wchar_t a, const CString& b) { return CString(a) += b; }
