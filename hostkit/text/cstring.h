// Stand-in for the host's CString. Covers the wide text class with its searching, editing, formatting and buffer access; leaves out string resources.
#pragma once

#include "textformat.h"

#include <compare>
#include <concepts>
#include <cstdarg>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

/// Wide text by value. Positions and lengths are counted in characters; a position outside the text is
/// answered, never followed: characters there read as 0, pieces come out shorter or empty. A null pointer
/// given as text is the empty text. Case folds accented letters, the same in every locale. Narrow text is in
/// the ANSI code page (Windows-1252).
class CString {
public:
    CString() noexcept = default;
    CString(const CString&) = default;
    CString(CString&&) noexcept = default;
    CString(const wchar_t* text);
    /// The first length characters of text, which has that many.
    CString(const wchar_t* text, int length);
    CString(wchar_t character, int repeat);
    explicit CString(wchar_t character)
        : CString(character, 1) {}
    explicit CString(const char* ansiText);
    explicit CString(std::wstring_view text)
        : m_text(text) {}
    explicit CString(std::wstring&& text) noexcept
        : m_text(std::move(text)) {}
    ~CString() = default;

    CString& operator=(const CString&) = default;
    CString& operator=(CString&&) noexcept = default;
    CString& operator=(const wchar_t* text);
    CString& operator=(wchar_t character);
    CString& operator=(const char* ansiText);

    int GetLength() const { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }
    wchar_t GetAt(int index) const;
    /// Does nothing outside the text.
    void SetAt(int index, wchar_t character);
    template <std::integral Index>
    wchar_t operator[](Index index) const {
        return GetAt(static_cast<int>(index));
    }
    operator const wchar_t*() const { return m_text.c_str(); }
    const wchar_t* GetString() const { return m_text.c_str(); }
    std::wstring_view view() const { return m_text; }

    CString& operator+=(const CString& text);
    CString& operator+=(const wchar_t* text);
    CString& operator+=(wchar_t character);
    void Append(const wchar_t* text) { *this += text; }
    void Append(const wchar_t* text, int length);
    void AppendChar(wchar_t character) { *this += character; }

    CString Left(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Right(int count) const;
    /// The longest start made only of (only without) characters of the set.
    CString SpanIncluding(const wchar_t* set) const;
    CString SpanExcluding(const wchar_t* set) const;
    /// The next piece between characters of the set from start on; start moves behind it, or becomes -1 with
    /// an empty result when there is none left.
    CString Tokenize(const wchar_t* set, int& start) const;

    /// The position, or -1. An empty text is found at start.
    int Find(const wchar_t* text, int start = 0) const;
    int Find(wchar_t character, int start = 0) const;
    int ReverseFind(wchar_t character) const;
    int FindOneOf(const wchar_t* set) const;

    /// How many were replaced (removed). An empty old text replaces nothing.
    int Replace(const wchar_t* oldText, const wchar_t* newText);
    int Replace(wchar_t oldCharacter, wchar_t newCharacter);
    int Remove(wchar_t character);
    /// The new length. An index beyond the end inserts at the end.
    int Insert(int index, const wchar_t* text);
    int Insert(int index, wchar_t character);
    int Delete(int index, int count = 1);
    void Truncate(int length);

    CString& TrimLeft();
    CString& TrimLeft(wchar_t character);
    CString& TrimLeft(const wchar_t* set);
    CString& TrimRight();
    CString& TrimRight(wchar_t character);
    CString& TrimRight(const wchar_t* set);
    CString& Trim();
    CString& Trim(wchar_t character);
    CString& Trim(const wchar_t* set);
    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();

    /// By character codes; negative, 0, positive.
    int Compare(const wchar_t* other) const;
    int CompareNoCase(const wchar_t* other) const;

    /// See hostkit::formatText for the conversions. A CString is given to %s as it stands. The text itself
    /// may be among the arguments.
    template <class... Arguments>
    void Format(const wchar_t* format, const Arguments&... arguments) {
        const hostkit::FormatArgument list[] = {argumentOf(arguments)..., hostkit::FormatArgument()};
        m_text = hostkit::formatText(format, list, sizeof...(arguments));
    }
    template <class... Arguments>
    void AppendFormat(const wchar_t* format, const Arguments&... arguments) {
        const hostkit::FormatArgument list[] = {argumentOf(arguments)..., hostkit::FormatArgument()};
        m_text += hostkit::formatText(format, list, sizeof...(arguments));
    }
    void FormatV(const wchar_t* format, va_list arguments);

    /// A buffer of at least minimumLength characters and a terminator, holding the text. Until ReleaseBuffer
    /// the text is used through the buffer alone. ReleaseBuffer sets the length, by the terminator when it is
    /// negative.
    wchar_t* GetBuffer(int minimumLength = 0);
    wchar_t* GetBufferSetLength(int length);
    void ReleaseBuffer(int length = -1);
    void Preallocate(int length);

    friend bool operator==(const CString& a, const CString& b) { return a.m_text == b.m_text; }
    friend bool operator==(const CString& a, const wchar_t* b) { return a.Compare(b) == 0; }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) {
        return a.m_text <=> b.m_text;
    }
    friend std::strong_ordering operator<=>(const CString& a, const wchar_t* b) { return a.Compare(b) <=> 0; }

private:
    static hostkit::FormatArgument argumentOf(const CString& text) { return {text.GetString()}; }
    template <class Value>
    static hostkit::FormatArgument argumentOf(const Value& value) {
        return {value};
    }

    std::wstring m_text;
};

CString operator+(const CString& a, const CString& b);
CString operator+(const CString& a, const wchar_t* b);
CString operator+(const wchar_t* a, const CString& b);
CString operator+(const CString& a, wchar_t b);
CString operator+(wchar_t a, const CString& b);

using CStringW = CString;

template <>
struct std::hash<CString> {
    std::size_t operator()(const CString& text) const noexcept {
        return std::hash<std::wstring_view>()(text.view());
    }
};
