#include "filtertext.h"

#include "casefold.h"
#include "groupcodes.h"
#include "groupkinds.h"
#include "numbertext.h"

namespace hostkit {

using AcDb::GroupKind;

namespace {

bool isTextKind(GroupKind kind) { return kind == GroupKind::kText || kind == GroupKind::kHandle; }

class FilterTextReader {
public:
    explicit FilterTextReader(std::wstring_view text)
        : m_text(text) {}

    FilterReading read() {
        return resultOf(readList() &&
                        (m_at == m_text.size() || fail(L"a group in parentheses is expected here")));
    }
    FilterReading readStart(std::size_t& length) {
        const bool isRead = !isNext(L'(') || readList();
        length = m_at;
        return resultOf(isRead);
    }

private:
    FilterReading resultOf(bool isRead) {
        FilterReading result;
        if (isRead) {
            result.list = m_list.take();
        } else {
            result.problem = std::move(m_problem);
            result.position = m_position;
        }
        return result;
    }
    bool readList();
    bool readGroup();
    bool readValue(short code);
    bool readPoint(resbuf& record);
    bool readApplications();
    bool readInteger(resbuf& record, GroupKind kind);
    bool readReal(double& value);
    bool readText(std::wstring& text);
    bool readClosing(const wchar_t* behindWhat);

    bool fail(std::wstring problem, std::size_t position);
    bool fail(std::wstring problem) { return fail(std::move(problem), m_at); }
    void skipBlanks();
    /// The next sign is that one, which is taken then.
    bool take(wchar_t sign);
    bool isNext(wchar_t sign);
    /// Up to a blank, a parenthesis or a quotation mark.
    std::wstring_view takeWord();
    void appendText(short type, const std::wstring& text) {
        m_list.append(type).resval.rstring = acutNewString(text.c_str());
    }

    std::wstring_view m_text;
    std::size_t m_at = 0;
    RecordListMaker m_list;
    std::wstring m_problem;
    std::size_t m_position = 0;
};

bool FilterTextReader::fail(std::wstring problem, std::size_t position) {
    m_problem = std::move(problem);
    m_position = position;
    return false;
}

void FilterTextReader::skipBlanks() {
    while (m_at < m_text.size() && isWhiteSpace(m_text[m_at])) ++m_at;
}

bool FilterTextReader::isNext(wchar_t sign) {
    skipBlanks();
    return m_at < m_text.size() && m_text[m_at] == sign;
}

bool FilterTextReader::take(wchar_t sign) {
    const bool isThere = isNext(sign);
    if (isThere) ++m_at;
    return isThere;
}

std::wstring_view FilterTextReader::takeWord() {
    skipBlanks();
    const std::size_t begin = m_at;
    while (m_at < m_text.size() && !isWhiteSpace(m_text[m_at]) &&
           std::wstring_view(L"()\"").find(m_text[m_at]) == std::wstring_view::npos)
        ++m_at;
    return m_text.substr(begin, m_at - begin);
}

/// The groups, in parentheses of their own or without.
bool FilterTextReader::readList() {
    take(L'\'');
    const std::size_t begin = m_at;
    const bool isEnclosed = take(L'(') && (isNext(L'(') || isNext(L')'));
    if (!isEnclosed) m_at = begin;
    while (isNext(L'('))
        if (!readGroup()) return false;
    if (isEnclosed && !take(L')')) return fail(L"the list is not closed by a parenthesis");
    skipBlanks();
    return true;
}

bool FilterTextReader::readGroup() {
    take(L'(');
    skipBlanks();
    const std::size_t begin = m_at;
    const std::wstring_view word = takeWord();
    int code = 0;
    if (!parseInteger(word, code)) return fail(L"a group begins with its code, a whole number", begin);
    if (code < operatorCode || code > lastGroupCode || AcDb::groupKind(code) == GroupKind::kBinary ||
        (code < 0 && code != operatorCode && code != extendedDataCode))
        return fail(L"there is no group " + std::wstring(word) + L" in a filter", begin);
    if (code == extendedDataCode) return readApplications();
    return readValue(static_cast<short>(code)) && readClosing(L"the value");
}

bool FilterTextReader::readClosing(const wchar_t* behindWhat) {
    return take(L')') || fail(std::wstring(L"a closing parenthesis is expected behind ") + behindWhat);
}

bool FilterTextReader::readApplications() {
    m_list.append(extendedDataCode);
    if (!isNext(L'(')) return fail(L"the name of an application in parentheses is expected here");
    while (take(L'(')) {
        std::wstring name;
        if (!readText(name) || !readClosing(L"the name of an application")) return false;
        appendText(applicationCode, name);
    }
    return readClosing(L"the names of applications");
}

bool FilterTextReader::readValue(short code) {
    const std::size_t begin = m_at;
    if (takeWord() != L".") m_at = begin;
    const GroupKind kind = AcDb::groupKind(code);
    if (isTextKind(kind)) {
        std::wstring text;
        if (!readText(text)) return false;
        appendText(code, text);
        return true;
    }
    resbuf& record = m_list.append(code);
    if (kind == GroupKind::kPoint) return readPoint(record);
    return kind == GroupKind::kReal ? readReal(record.resval.rreal) : readInteger(record, kind);
}

bool FilterTextReader::readPoint(resbuf& record) {
    double* const point = record.resval.rpoint;
    return readReal(point[0]) && readReal(point[1]) && (isNext(L')') || readReal(point[2]));
}

bool FilterTextReader::readReal(double& value) {
    skipBlanks();
    const std::size_t begin = m_at;
    return parseReal(takeWord(), value) || fail(L"a number is expected here", begin);
}

bool FilterTextReader::readInteger(resbuf& record, GroupKind kind) {
    skipBlanks();
    const std::size_t begin = m_at;
    long long value = 0;
    if (!parseInteger(takeWord(), value)) return fail(L"a whole number is expected here", begin);
    bool fits = true;
    if (kind == GroupKind::kInt64)
        record.resval.mnInt64 = value;
    else if (kind == GroupKind::kInt32)
        fits = value == (record.resval.rlong = static_cast<Adesk::Int32>(value));
    else
        fits = value == (record.resval.rint = static_cast<short>(value));
    return fits || fail(L"the number is too large for its group", begin);
}

bool FilterTextReader::readText(std::wstring& text) {
    if (!isNext(L'"')) return fail(L"a text in quotation marks is expected here");
    const std::size_t begin = m_at++;
    for (; m_at < m_text.size() && m_text[m_at] != L'"'; ++m_at) {
        const wchar_t next = m_at + 1 < m_text.size() ? m_text[m_at + 1] : L'\0';
        if (m_text[m_at] == L'\\' && (next == L'"' || next == L'\\')) ++m_at;
        if (m_text[m_at] == L'\0') return fail(L"a text cannot hold the character 0");
        text += m_text[m_at];
    }
    if (m_at == m_text.size()) return fail(L"the text is not closed by a quotation mark", begin);
    ++m_at;
    return true;
}

// Writing.

std::wstring quoted(const wchar_t* text) {
    std::wstring result = L"\"";
    for (; text && *text; ++text) {
        if (*text == L'"' || *text == L'\\') result += L'\\';
        result += *text;
    }
    return result + L'"';
}

std::wstring valueText(short code, const ads_u_val& value) {
    switch (AcDb::groupKind(code)) {
    case GroupKind::kText:
    case GroupKind::kHandle:
        return L" . " + quoted(value.rstring);
    case GroupKind::kReal:
        return L" . " + formatReal(value.rreal);
    case GroupKind::kPoint:
        return L' ' + formatReal(value.rpoint[0]) + L' ' + formatReal(value.rpoint[1]) + L' ' +
               formatReal(value.rpoint[2]);
    case GroupKind::kInt64:
        return L" . " + std::to_wstring(value.mnInt64);
    case GroupKind::kInt32:
        return L" . " + std::to_wstring(value.rlong);
    default:
        return L" . " + std::to_wstring(value.rint);
    }
}

/// Moves `record` behind the names.
std::wstring applicationsText(const resbuf*& record) {
    std::wstring text = L"(-3";
    if (record->resval.rstring) text += L" (" + quoted(record->resval.rstring) + L')';
    for (record = record->rbnext; record && record->restype == applicationCode; record = record->rbnext)
        text += L" (" + quoted(record->resval.rstring) + L')';
    return text + L')';
}

} // namespace

FilterReading readFilterText(std::wstring_view text) { return FilterTextReader(text).read(); }

FilterReading readFilterStart(std::wstring_view text, std::size_t& length) {
    return FilterTextReader(text).readStart(length);
}

std::wstring writeFilterText(const resbuf* list) {
    std::wstring text;
    for (const resbuf* record = list; record;) {
        if (!text.empty()) text += L' ';
        if (record->restype == extendedDataCode) {
            text += applicationsText(record);
            continue;
        }
        const short code = record->restype == RTDXF0 ? short{0} : record->restype;
        text += L'(' + std::to_wstring(code) + valueText(code, record->resval) + L')';
        record = record->rbnext;
    }
    return text;
}

} // namespace hostkit
