#include "ccontrols.h"

namespace {

LPARAM argument(const wchar_t* text) { return reinterpret_cast<LPARAM>(text ? text : L""); }

} // namespace

BOOL CStatic::Create(const wchar_t* text, DWORD style, const RECT& rect, CWnd* parent, int id) {
    return CreateEx(0, L"STATIC", text, style | WS_CHILD, rect, parent, id);
}
HICON CStatic::SetIcon(HICON icon) {
    return reinterpret_cast<HICON>(SendMessageW(STM_SETICON, reinterpret_cast<WPARAM>(icon)));
}
HICON CStatic::GetIcon() const { return reinterpret_cast<HICON>(SendMessageW(STM_GETICON)); }

BOOL CButton::Create(const wchar_t* text, DWORD style, const RECT& rect, CWnd* parent, int id) {
    return CreateEx(0, L"BUTTON", text, style | WS_CHILD, rect, parent, id);
}

BOOL CEdit::Create(DWORD style, const RECT& rect, CWnd* parent, int id) {
    return CreateEx(0, L"EDIT", L"", style | WS_CHILD, rect, parent, id);
}

// --- Lists and combo boxes ---------------------------------------------------------------------------------

namespace hostkit {

template <const ItemMessages& messages>
int ItemControl<messages>::call(UINT message, int index, LPARAM lParam) const {
    return m_hWnd ? static_cast<int>(SendMessageW(message, static_cast<WPARAM>(index), lParam))
                  : static_cast<int>(LB_ERR);
}
template <const ItemMessages& messages>
int ItemControl<messages>::AddString(const wchar_t* text) {
    return call(messages.add, 0, argument(text));
}
template <const ItemMessages& messages>
int ItemControl<messages>::InsertString(int index, const wchar_t* text) {
    return call(messages.insert, index, argument(text));
}
template <const ItemMessages& messages>
int ItemControl<messages>::SelectString(int after, const wchar_t* start) {
    return call(messages.selectText, after, argument(start));
}
template <const ItemMessages& messages>
int ItemControl<messages>::FindStringExact(int after, const wchar_t* text) const {
    return call(messages.findWhole, after, argument(text));
}
template <const ItemMessages& messages>
int ItemControl<messages>::SetItemData(int index, DWORD_PTR data) {
    return call(messages.setData, index, static_cast<LPARAM>(data));
}
// Not cut to an int: the data may be a pointer.
template <const ItemMessages& messages>
DWORD_PTR ItemControl<messages>::GetItemData(int index) const {
    return static_cast<DWORD_PTR>(SendMessageW(messages.data, static_cast<WPARAM>(index)));
}
template <const ItemMessages& messages>
void ItemControl<messages>::itemText(int index, CString& text) const {
    const int length = call(messages.textLength, index);
    if (length < 0) return text.Empty();
    call(messages.text, index, reinterpret_cast<LPARAM>(text.GetBuffer(length)));
    text.ReleaseBuffer(length);
}
template class ItemControl<listMessages>;
template class ItemControl<comboMessages>;

} // namespace hostkit

BOOL CListBox::Create(DWORD style, const RECT& rect, CWnd* parent, int id) {
    return CreateEx(0, L"LISTBOX", L"", style | WS_CHILD, rect, parent, id);
}

BOOL CCheckListBox::Create(DWORD style, const RECT& rect, CWnd* parent, int id) {
    return CListBox::Create(style | LBS_NOTIFY, rect, parent, id);
}
int CCheckListBox::GetCheck(int index) const {
    return static_cast<int>(SendMessageW(hostkit::listGetMark, static_cast<WPARAM>(index)));
}
void CCheckListBox::SetCheck(int index, int check) {
    SendMessageW(hostkit::listSetMark, static_cast<WPARAM>(index), check);
}

BOOL CComboBox::Create(DWORD style, const RECT& rect, CWnd* parent, int id) {
    return CreateEx(0, L"COMBOBOX", L"", style | WS_CHILD, rect, parent, id);
}
