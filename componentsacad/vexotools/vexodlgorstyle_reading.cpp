// How the bar of styles reads a style's file.
#include "vexodlgorstyle.h"

#include "cvxlogentry.h"
#include "tchar.h"
#include "vexoconversiontools.h"
#include "vexotools.h"
#include "vexouitools.h"

#include <algorithm>
#include <utility>

namespace {

constexpr unsigned int otherTypePrompt = 14072;
constexpr unsigned int noStylePrompt = 14073;

constexpr std::wstring_view punctuation = VEXOORStyleData::punctuation;
constexpr std::wstring_view quotationMark = L"\"";

// Short sets: a look at each character costs less than a call.
bool contains(std::wstring_view set, wchar_t wanted) {
    for (const wchar_t each : set)
        if (each == wanted) return true;
    return false;
}

void keepWithout(std::wstring_view text, std::wstring_view excluded, CString& kept) {
    wchar_t* const characters = kept.GetBuffer(static_cast<int>(text.size()));
    const wchar_t last = excluded.empty() ? L'\0' : *std::max_element(excluded.begin(), excluded.end());
    int count = 0;
    for (const wchar_t each : text)
        if (each > last || !contains(excluded, each)) characters[count++] = each;
    kept.ReleaseBuffer(count);
}

// What stands before the first "=", and the rest as it is; false without one.
bool takeKey(const CString& line, CString& key, std::wstring_view& rest) {
    const std::size_t separator = line.view().find(L'=');
    if (separator == std::wstring_view::npos) return false;
    keepWithout(line.view().substr(0, separator), punctuation, key);
    key.Trim();
    rest = line.view().substr(separator + 1);
    return true;
}

// What stands behind a NUL is no part of a line.
bool readLine(CStdioFile& file, CString& line) {
    if (!file.ReadString(line)) return false;
    const std::size_t end = line.view().find(L'\0');
    if (end != std::wstring_view::npos) line.Truncate(static_cast<int>(end));
    line = VEXOConversionTools::StringAnsiToUnicode(std::move(line));
    return true;
}

void tell(unsigned int prompt, const CWnd& owner) {
    VEXOUITools::MessageBoxW(prompt, getModulePromptsProjectName(), MB_ICONEXCLAMATION, &owner);
}

} // namespace

// The first line alone is looked at: no blank lines before it.
bool VEXODlgORStyle::isOfEntityType(CStdioFile& file) const {
    CString line;
    if (!readLine(file, line)) return false;
    const int at = line.Find(m_entityType);
    return at >= 1 && line[at - 1] == L'[' && line[at + m_entityType.GetLength()] == L']';
}

Acad::ErrorStatus VEXODlgORStyle::LoadStyleFromFile(const CString& path) {
    CVxLogEntry entry(L"VEXODlgORStyle::LoadStyleFromFile");
    try {
        CStdioFile file(path, CFile::modeRead | CFile::shareDenyNone);
        return readStyle(file);
    } catch (CFileException* error) {
        error->Delete();
    } catch (...) {
        return Acad::eInvalidInput;
    }
    return Acad::eInvalidInput;
}

Acad::ErrorStatus VEXODlgORStyle::readStyle(CStdioFile& file) {
    if (readHead(file) != Acad::eOk || !m_data) return Acad::eInvalidInput;
    CString name;
    if (GetStyleNameFromFile(&file, name) != Acad::eOk) {
        tell(noStylePrompt, *this);
        return Acad::eInvalidInput;
    }
    m_data->setStyleName(name);
    return FillItemsFromFile(&file);
}

Acad::ErrorStatus VEXODlgORStyle::readHead(CStdioFile& file) {
    CString line;
    while (readLine(file, line) && line.IsEmpty()) continue;
    line.Trim();
    if (line.GetLength() < 2 || line[0] != L'[' || line[line.GetLength() - 1] != L']') {
        tell(noStylePrompt, *this);
        return Acad::eInvalidInput;
    }
    if (line.Mid(1, line.GetLength() - 2).Trim() == m_entityType) return Acad::eOk;
    tell(otherTypePrompt, *this);
    return Acad::eInvalidInput;
}

Acad::ErrorStatus VEXODlgORStyle::GetStyleNameFromFile(CStdioFile* file, CString& name) {
    CVxLogEntry entry(L"VEXODlgORStyle::GetStyleNameFromFile");
    CString line, key, value;
    while (file && readLine(*file, line)) {
        if (GetKeyAndValueFromString(line, key, value) != Acad::eOk || key != VEXOORStyleData::styleNameKey)
            continue;
        name = value;
        return Acad::eOk;
    }
    return Acad::eInvalidIndex;
}

Acad::ErrorStatus VEXODlgORStyle::FillItemsFromFile(CStdioFile* file) {
    CVxLogEntry entry(L"VEXODlgORStyle::FillItemsFromFile");
    if (!file || !m_data) return Acad::eInvalidInput;
    m_data->ClearItems();
    KeyKinds kinds;
    GetKeyMapToType(kinds);
    VEXOORStyleDataItem item;
    for (CString line; readLine(*file, line);)
        if (GetItemFromString(line, item, kinds) == Acad::eOk) m_data->AddItem(item);
    return Acad::eOk;
}

Acad::ErrorStatus VEXODlgORStyle::GetKeyAndValueFromString(const CString& line, CString& key,
                                                           CString& value) {
    CVxLogEntry entry(L"VEXODlgORStyle::GetKeyAndValueFromString");
    key.Empty();
    value.Empty();
    const int separator = line.Find(L'=');
    if (separator < 0) return Acad::eInvalidInput;
    key = line.Left(separator);
    value = line.Mid(separator + 1);
    for (CString* each : {&key, &value}) {
        ExcludeCharsFromString(*each, CString(punctuation));
        each->Trim();
    }
    return key.IsEmpty() || value.IsEmpty() ? Acad::eNullPtr : Acad::eOk;
}

Acad::ErrorStatus VEXODlgORStyle::GetItemFromString(const CString& line, VEXOORStyleDataItem& item,
                                                    const KeyKinds& kinds) {
    CVxLogEntry entry(L"VEXODlgORStyle::GetItemFromString");
    std::wstring_view rest;
    if (!takeKey(line, item.m_key, rest)) return Acad::eInvalidInput;
    const auto known = kinds.find(item.m_key);
    if (known == kinds.end()) return Acad::eInvalidInput;
    const int kind = known->second;
    const bool isName = kind == VEXOORStyleDataItem::kName, isText = kind == VEXOORStyleDataItem::kText;
    CString value;
    keepWithout(rest, isName ? punctuation : isText ? quotationMark : L"", value);
    value.Trim();
    if (item.m_key.IsEmpty() || (value.IsEmpty() && !isName && !isText)) return Acad::eNullPtr;
    if (kind == VEXOORStyleDataItem::kReal)
        item.setReal(_wtof(value));
    else if (kind == VEXOORStyleDataItem::kInteger)
        item.setInteger(_wtoi(value));
    else
        item.setText(value, static_cast<VEXOORStyleDataItem::Kind>(kind));
    return Acad::eOk;
}

Acad::ErrorStatus VEXODlgORStyle::ExcludeCharsFromString(CString& text, const CString& chars) {
    const CString whole = text;
    keepWithout(whole.view(), chars.view(), text);
    return Acad::eOk;
}
