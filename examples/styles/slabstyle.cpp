#include "slabstyle.h"

#include "aced.h"
#include "stylepage.h"
#include "vexodatabasetools.h"

namespace {

constexpr wchar_t textStyleKey[] = L"PositionTextStyle";
constexpr wchar_t lineTypeKey[] = L"Linetype";
constexpr wchar_t dimensionStyleKey[] = L"DimensionStyleRepStyle8";
constexpr wchar_t coverKey[] = L"Cover1";
constexpr wchar_t widthKey[] = L"Width";
constexpr wchar_t justificationKey[] = L"Justification";

StylePage& pageOf(const SlabStyle& style) { return static_cast<StylePage&>(*style.getMainPropertyPage()); }

AcDbObjectId record(const wchar_t* table, const CString& name) {
    return VEXODatabaseTools::getFromSymbolTable(table, name);
}

// Selects the record that the style names, which is listed anew where it was just made.
void show(CComboBox& list, const CString& name, Acad::ErrorStatus made) {
    if (made == Acad::eOk) list.AddString(name);
    const int index = list.FindStringExact(-1, name);
    if (index < 0) return (void)acutPrintf(L"\"%s\" could not be made in this drawing\n", name);
    list.SetCurSel(index);
    if (made == Acad::eOk) acutPrintf(L"\"%s\" was made\n", name);
}

} // namespace

Acad::ErrorStatus SlabStyle::WriteDataFromControls() {
    const Settings settings = pageOf(*this).settings();
    ClearItems();
    // A key becomes the full one when it is used.
    CString key = textStyleKey;
    AddItemTextStyle(key, record(L"STYLE", settings.textStyle));
    AddItemLineType(key = lineTypeKey, record(L"LTYPE", settings.lineType));
    AddItemDimStyle(key = dimensionStyleKey, record(L"DIMSTYLE", settings.dimensionStyle));
    AddItem(key = coverKey, settings.cover);
    AddItem(key = widthKey, settings.width);
    AddItem(key = justificationKey, settings.justification);
    return Acad::eOk;
}

Acad::ErrorStatus SlabStyle::UpdateControlsFromData() {
    StylePage& page = pageOf(*this);
    VEXOORStyleDataItem item;
    if (GetItem(textStyleKey, item) == Acad::eOk)
        show(page.textStyles(), item.text(), CreateTextStyleIfNeeded(&page.textStyles(), textStyleKey));
    if (GetItem(lineTypeKey, item) == Acad::eOk)
        show(page.lineTypes(), item.text(), CreateLineTypeIfNeeded(&page.lineTypes(), lineTypeKey));
    if (GetItem(dimensionStyleKey, item) == Acad::eOk)
        show(page.dimensionStyles(), item.text(), VEXOORStyleData::nothingTried);
    if (GetItem(coverKey, item) == Acad::eOk) page.showNumber(editCover, item.real());
    if (GetItem(widthKey, item) == Acad::eOk) page.showNumber(editWidth, item.real());
    if (GetItem(justificationKey, item) == Acad::eOk) page.showNumber(editJustification, item.integer());
    return Acad::eOk;
}
