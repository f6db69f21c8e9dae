#include "vexoorstyledata.h"

#include "cvxlogentry.h"
#include "vexoconversiontools.h"

#include <cstring>

VEXOORStyleData& VEXOORStyleData::operator=(const VEXOORStyleData& other) {
    CVxLogEntry entry(L"VEXOORStyleData::operator=");
    m_items = other.m_items;
    m_entityType = other.m_entityType;
    m_styleName = other.m_styleName;
    m_sheet = other.m_sheet;
    m_page = other.m_page;
    return *this;
}

Acad::ErrorStatus VEXOORStyleData::WriteDataFromControls() {
    CVxLogEntry entry(L"VEXOORStyleData::WriteDataFromControls");
    return Acad::eNotImplementedYet;
}

Acad::ErrorStatus VEXOORStyleData::UpdateControlsFromData() {
    CVxLogEntry entry(L"VEXOORStyleData::UpdateControlsFromData");
    return Acad::eNotImplementedYet;
}

// --- Files -------------------------------------------------------------------------------------------------

namespace {

CString lineOf(const VEXOORStyleDataItem& item) {
    CString line;
    switch (item.m_kind) {
    case VEXOORStyleDataItem::kReal:
        line.Format(L"%s = %.12f\n", item.m_key, item.real());
        break;
    case VEXOORStyleDataItem::kInteger:
        line.Format(L"%s = %d\n", item.m_key, item.integer());
        break;
    default:
        line.Format(L"%s = \"%s\"\n", item.m_key, item.text());
        break;
    }
    return line;
}

} // namespace

void VEXOORStyleData::writeLines(CStdioFile& file) const {
    CString line = L"[" + m_entityType + L"]\n";
    file.WriteString(VEXOConversionTools::StringUnicodeToAnsi(line));
    line.Format(L"%s = \"%s\"\n", styleNameKey, m_styleName);
    file.WriteString(VEXOConversionTools::StringUnicodeToAnsi(line));
    VEXOORStyleDataItem item;
    for (const KeptItem& each : m_items) {
        each.copyTo(item);
        file.WriteString(VEXOConversionTools::StringUnicodeToAnsi(lineOf(item)));
    }
}

void VEXOORStyleData::WriteDataToFile(CStdioFile* file) {
    CVxLogEntry entry(L"VEXOORStyleData::WriteDataToFile");
    if (!file || m_entityType.IsEmpty() || m_styleName.IsEmpty()) return;
    try {
        writeLines(*file);
    } catch (CFileException* error) {
        error->Delete();
    } catch (...) {
        return;
    }
}

void VEXOORStyleData::ReadDataFromFile(CStdioFile*) {
    CVxLogEntry entry(L"VEXOORStyleData::ReadDataFromFile");
}

// --- Items -------------------------------------------------------------------------------------------------

VEXOORStyleData::KeptItem::KeptItem(const VEXOORStyleDataItem& item)
    : m_key(item.m_key)
    , m_value(reinterpret_cast<const char*>(item.m_value), item.usedSize())
    , m_kind(item.m_kind) {}

void VEXOORStyleData::KeptItem::copyTo(VEXOORStyleDataItem& item) const {
    item.m_key = m_key;
    std::memcpy(item.m_value, m_value.data(), m_value.size());
    item.m_kind = m_kind;
}

void VEXOORStyleData::addUnder(CString& key, VEXOORStyleDataItem& item) {
    if (key.IsEmpty()) return;
    if (key.Find(m_prefix) < 0) key = m_prefix + key;
    item.m_key = key;
    m_items.emplace_back(item);
}

void VEXOORStyleData::AddItem(CString& key, const double& value) {
    CVxLogEntry entry(L"VEXOORStyleData::AddItem");
    VEXOORStyleDataItem item;
    item.setReal(value);
    addUnder(key, item);
}

void VEXOORStyleData::AddItem(CString& key, const int& value) {
    CVxLogEntry entry(L"VEXOORStyleData::AddItem");
    VEXOORStyleDataItem item;
    item.setInteger(value);
    addUnder(key, item);
}

void VEXOORStyleData::AddItem(CString& key, const CString& value) {
    CVxLogEntry entry(L"VEXOORStyleData::AddItem");
    VEXOORStyleDataItem item;
    item.setText(value);
    addUnder(key, item);
}

void VEXOORStyleData::AddItem(VEXOORStyleDataItem& item) {
    CVxLogEntry entry(L"VEXOORStyleData::AddItem");
    m_items.emplace_back(item);
}

Acad::ErrorStatus VEXOORStyleData::GetItem(CString key, VEXOORStyleDataItem& item) {
    CVxLogEntry entry(L"VEXOORStyleData::GetItem");
    const CString wanted = m_prefix + key;
    for (const KeptItem& each : m_items) {
        if (each.m_key != wanted) continue;
        each.copyTo(item);
        return Acad::eOk;
    }
    return Acad::eInvalidInput;
}

AcArray<VEXOORStyleDataItem> VEXOORStyleData::GetItems() {
    CVxLogEntry entry(L"VEXOORStyleData::GetItems");
    AcArray<VEXOORStyleDataItem> items(static_cast<int>(m_items.size()), 8);
    VEXOORStyleDataItem item;
    for (const KeptItem& each : m_items) {
        each.copyTo(item);
        items.append(item);
    }
    return items;
}

void VEXOORStyleData::ClearItems() {
    CVxLogEntry entry(L"VEXOORStyleData::ClearItems");
    m_items.clear();
}

// --- What else it holds ------------------------------------------------------------------------------------

Acad::ErrorStatus VEXOORStyleData::setEntityType(const CString& entityType) {
    CVxLogEntry entry(L"VEXOORStyleData::setEntityType");
    m_entityType = entityType;
    return Acad::eOk;
}

Acad::ErrorStatus VEXOORStyleData::setStyleName(const CString& styleName) {
    CVxLogEntry entry(L"VEXOORStyleData::setStyleName");
    m_styleName = styleName;
    return Acad::eOk;
}

Acad::ErrorStatus VEXOORStyleData::setPrefix(const CString& prefix) {
    CVxLogEntry entry(L"VEXOORStyleData::setPrefix");
    m_prefix = prefix;
    return Acad::eOk;
}
