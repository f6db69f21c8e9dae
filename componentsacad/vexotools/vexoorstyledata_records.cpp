// Records of the drawing's tables as items of a style, and back.
#include "vexoorstyledata.h"

#include "afxwin.h"
#include "cvxlogentry.h"
#include "dbapserv.h"
#include "dbdatabase.h"
#include "dbsymtb.h"
#include "moduledatabase.h"
#include "tchar.h"
#include "vexodatabasetools.h"
#include "vexosmartlock.h"
#include "vexosmartopen.h"

#include <memory>

namespace {

constexpr Adesk::UInt8 backwardBit = 2;
constexpr Adesk::UInt8 upsideDownBit = 4;
constexpr int mostDashes = 50;
constexpr wchar_t blankAndQuote[] = L" \"";

// A text that the record hands out for the caller to free.
template <class Record>
Acad::ErrorStatus takeText(const Record& record, Acad::ErrorStatus (Record::*getter)(wchar_t*&) const,
                           CString& text) {
    wchar_t* copy = nullptr;
    const Acad::ErrorStatus status = (record.*getter)(copy);
    if (status == Acad::eOk) text = copy;
    acutDelString(copy);
    return status;
}

template <class Record>
Acad::ErrorStatus takeName(const Record& record, CString& name) {
    const wchar_t* text = nullptr;
    const Acad::ErrorStatus status = record.getName(text);
    if (status == Acad::eOk) name = text;
    return status;
}

template <class Record>
Acad::ErrorStatus openStatus(const AcDbObjectId& id, const VEXOSmartOpen<Record>& record) {
    return id.isNull() || !id.isValid() ? Acad::eInvalidInput : record.status();
}

template <class Value>
void addPart(VEXOORStyleData& data, const CString& key, const wchar_t* part, const Value& value) {
    CString full = key + part;
    data.AddItem(full, value);
}

int asInteger(bool value) { return value ? 1 : 0; }

CString dashesOf(const AcDbLinetypeTableRecord& record) {
    CString description;
    description.Format(L"%d", record.numDashes());
    for (int i = 0; i < record.numDashes(); ++i) description.AppendFormat(L" %f", record.dashLengthAt(i));
    return description;
}

// Bits that the record has not are not set: a style's text is never turned upside down by loading it.
void keepFlag(AcDbTextStyleTableRecord& record, Adesk::UInt8 bit, bool isWanted) {
    record.setFlagBits(static_cast<Adesk::UInt8>(record.flagBits() & (isWanted ? bit : 0)));
}

// What stands before the next blank, which the rest loses. False without a blank.
bool cutToken(CString& rest, CString& token) {
    const int blank = rest.Find(L' ');
    if (blank < 0) return false;
    token = rest.Left(blank).Trim();
    rest = rest.Mid(blank).Trim();
    return true;
}

bool isListed(CComboBox* combo, const CString& name) {
    return combo && combo->SendMessageW(CB_FINDSTRING, static_cast<WPARAM>(-1),
                                        reinterpret_cast<LPARAM>(name.GetString())) != CB_ERR;
}

// The lock is gone again when the table is opened; a running command's own lets the record in.
template <class Table, class Record>
Acad::ErrorStatus addToTable(AcDbObjectId tableId, std::unique_ptr<Record> record) {
    const VEXOSmartOpen<Table> table(tableId, AcDb::kForWrite, false);
    if (table.status() != Acad::eOk || table->add(record.get()) != Acad::eOk) return Acad::eInvalidInput;
    record.release()->close();
    return Acad::eOk;
}

void touchLock() { const VEXOSmartLock lock; }

} // namespace

// --- From a drawing ----------------------------------------------------------------------------------------

Acad::ErrorStatus VEXOORStyleData::AddItemTextStyle(CString& key, const AcDbObjectId& id) {
    CVxLogEntry entry(L"VEXOORStyleData::AddItemTextStyle");
    const VEXOSmartOpen<AcDbTextStyleTableRecord> record(id, AcDb::kForRead, false);
    CString name, font, bigFont;
    Acad::ErrorStatus status = openStatus(id, record);
    if (status == Acad::eOk) status = takeName(*record, name);
    if (status == Acad::eOk) status = takeText(*record, &AcDbTextStyleTableRecord::fileName, font);
    if (status == Acad::eOk) status = takeText(*record, &AcDbTextStyleTableRecord::bigFontFileName, bigFont);
    if (status != Acad::eOk) return status;
    AddItem(key, name);
    addPart(*this, key, L"Font", font);
    addPart(*this, key, L"BigFont", bigFont);
    addPart(*this, key, L"Height", record->textSize());
    addPart(*this, key, L"UpsideDown", asInteger((record->flagBits() & upsideDownBit) != 0));
    addPart(*this, key, L"BackWards", asInteger((record->flagBits() & backwardBit) != 0));
    addPart(*this, key, L"Vertical", asInteger(record->isVertical()));
    addPart(*this, key, L"WidthFactor", record->xScale());
    addPart(*this, key, L"ObliqueAngle", record->obliquingAngle());
    return Acad::eOk;
}

Acad::ErrorStatus VEXOORStyleData::AddItemLineType(CString& key, const AcDbObjectId& id) {
    CVxLogEntry entry(L"VEXOORStyleData::AddItemLineType");
    const VEXOSmartOpen<AcDbLinetypeTableRecord> record(id, AcDb::kForRead, false);
    CString name;
    Acad::ErrorStatus status = openStatus(id, record);
    if (status == Acad::eOk) status = takeName(*record, name);
    if (status != Acad::eOk) return status;
    AddItem(key, name);
    addPart(*this, key, L"Description", dashesOf(*record));
    addPart(*this, key, L"PatternLength", record->patternLength());
    return Acad::eOk;
}

Acad::ErrorStatus VEXOORStyleData::AddItemDimStyle(CString& key, const AcDbObjectId& id) {
    CVxLogEntry entry(L"VEXOORStyleData::AddItemDimStyle");
    const VEXOSmartOpen<AcDbDimStyleTableRecord> record(id, AcDb::kForRead, false);
    CString name;
    Acad::ErrorStatus status = openStatus(id, record);
    if (status == Acad::eOk) status = takeName(*record, name);
    if (status == Acad::eOk) AddItem(key, name);
    return status;
}

// --- Into a record -----------------------------------------------------------------------------------------

Acad::ErrorStatus VEXOORStyleData::GetTextStyle(CString& key, AcDbTextStyleTableRecord* record) {
    CVxLogEntry entry(L"VEXOORStyleData::GetTextStyle");
    VEXOORStyleDataItem item;
    if (!record || GetItem(key, item) != Acad::eOk) return Acad::eInvalidInput;
    record->setName(item.text());
    if (GetItem(key + L"Font", item) != Acad::eOk) return Acad::eInvalidInput;
    record->setFileName(item.text());
    const auto has = [&](const wchar_t* part) { return GetItem(key + part, item) == Acad::eOk; };
    if (has(L"BigFont")) record->setBigFontFileName(item.text());
    if (has(L"Height")) record->setTextSize(item.real());
    if (has(L"UpsideDown")) keepFlag(*record, upsideDownBit, item.integer() != 0);
    if (has(L"BackWards")) keepFlag(*record, backwardBit, item.integer() != 0);
    if (has(L"Vertical")) record->setIsVertical(item.integer() != 0);
    if (has(L"WidthFactor")) record->setXScale(item.real());
    if (has(L"ObliqueAngle")) record->setObliquingAngle(item.real());
    return Acad::eOk;
}

Acad::ErrorStatus VEXOORStyleData::GetLineType(CString& key, AcDbLinetypeTableRecord* record) {
    CVxLogEntry entry(L"VEXOORStyleData::GetLineType");
    VEXOORStyleDataItem item;
    if (!record || GetItem(key, item) != Acad::eOk) return Acad::eInvalidInput;
    record->setName(item.text());
    if (GetItem(key + L"PatternLength", item) == Acad::eOk) record->setPatternLength(item.real());
    if (GetItem(key + L"Description", item) != Acad::eOk) return Acad::eOk;
    int count = 0;
    double dashes[mostDashes];
    if (FillDashVectorFromDescription(item.text(), count, dashes) != Acad::eOk ||
        record->setNumDashes(count) != Acad::eOk)
        return Acad::eInvalidInput;
    for (int i = 0; i < count; ++i) record->setDashLengthAt(i, dashes[i]);
    return Acad::eOk;
}

Acad::ErrorStatus VEXOORStyleData::FillDashVectorFromDescription(CString description, int& count,
                                                                 double* dashes) {
    CVxLogEntry entry(L"VEXOORStyleData::FillDashVectorFromDescription");
    CString rest = description.Trim(blankAndQuote);
    CString token;
    if (!dashes || !cutToken(rest, token)) return Acad::eInvalidInput;
    const int wanted = _wtoi(token);
    if (wanted > mostDashes) return Acad::eInvalidInput;
    for (int i = 0; i < wanted; ++i) {
        const bool isLast = i == wanted - 1;
        if (cutToken(rest, token) == isLast) return Acad::eInvalidInput;
        dashes[i] = _wtof(isLast ? rest : token);
    }
    count = wanted;
    return Acad::eOk;
}

Acad::ErrorStatus VEXOORStyleData::GetDimStyle(CString& key, AcDbObjectId& id) {
    CVxLogEntry entry(L"VEXOORStyleData::GetDimStyle");
    VEXOORStyleDataItem item;
    const Acad::ErrorStatus status = GetItem(key, item);
    if (status != Acad::eOk) return status;
    const AcDbObjectId found =
        VEXODatabaseTools::getFromSymbolTable(L"DIMSTYLE", item.text(), vexo::workingDatabase());
    if (found.isNull() || !found.isValid()) return Acad::eKeyNotFound;
    id = found;
    return Acad::eOk;
}

// --- Into a drawing ----------------------------------------------------------------------------------------

Acad::ErrorStatus VEXOORStyleData::CreateTextStyleIfNeeded(CComboBox* combo, CString key) {
    CVxLogEntry entry(L"VEXOORStyleData::CreateTextStyleIfNeeded");
    VEXOORStyleDataItem item;
    if (GetItem(key, item) != Acad::eOk || isListed(combo, item.text())) return nothingTried;
    auto record = std::make_unique<AcDbTextStyleTableRecord>();
    if (GetTextStyle(key, record.get()) != Acad::eOk) return Acad::eInvalidInput;
    touchLock();
    AcDbDatabase* const database = vexo::workingDatabase();
    if (!database) return Acad::eInvalidInput;
    return addToTable<AcDbTextStyleTable>(database->textStyleTableId(), std::move(record));
}

Acad::ErrorStatus VEXOORStyleData::CreateLineTypeIfNeeded(CComboBox* combo, CString key) {
    CVxLogEntry entry(L"VEXOORStyleData::CreateLineTypeIfNeeded");
    VEXOORStyleDataItem item;
    if (GetItem(key, item) != Acad::eOk || isListed(combo, item.text())) return nothingTried;
    auto record = std::make_unique<AcDbLinetypeTableRecord>();
    if (GetLineType(key, record.get()) != Acad::eOk) return Acad::eInvalidInput;
    touchLock();
    AcDbDatabase* const database = vexo::workingDatabase();
    if (!database) return Acad::eInvalidInput;
    return addToTable<AcDbLinetypeTable>(database->linetypeTableId(), std::move(record));
}
