#include "ccontrols.h"

namespace {

LPARAM argument(const wchar_t* text) { return reinterpret_cast<LPARAM>(text ? text : L""); }

// An empty text where there is no such item.
void itemText(const CWnd& list, UINT lengthMessage, UINT textMessage, int index, CString& text) {
    const auto length = static_cast<int>(list.SendMessageW(lengthMessage, static_cast<WPARAM>(index)));
    if (length < 0) {
        text.Empty();
        return;
    }
    list.SendMessageW(textMessage, static_cast<WPARAM>(index),
                      reinterpret_cast<LPARAM>(text.GetBuffer(length)));
    text.ReleaseBuffer(length);
}

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

// --- Lists -------------------------------------------------------------------------------------------------

BOOL CListBox::Create(DWORD style, const RECT& rect, CWnd* parent, int id) {
    return CreateEx(0, L"LISTBOX", L"", style | WS_CHILD, rect, parent, id);
}

int CListBox::call(UINT message, int index) const {
    return m_hWnd ? static_cast<int>(SendMessageW(message, static_cast<WPARAM>(index)))
                  : static_cast<int>(LB_ERR);
}

int CListBox::AddString(const wchar_t* text) {
    return static_cast<int>(SendMessageW(LB_ADDSTRING, 0, argument(text)));
}
int CListBox::InsertString(int index, const wchar_t* text) {
    return static_cast<int>(SendMessageW(LB_INSERTSTRING, static_cast<WPARAM>(index), argument(text)));
}
int CListBox::SelectString(int after, const wchar_t* start) {
    return static_cast<int>(SendMessageW(LB_SELECTSTRING, static_cast<WPARAM>(after), argument(start)));
}
int CListBox::FindStringExact(int after, const wchar_t* text) const {
    return static_cast<int>(SendMessageW(LB_FINDSTRINGEXACT, static_cast<WPARAM>(after), argument(text)));
}
void CListBox::GetText(int index, CString& text) const {
    itemText(*this, LB_GETTEXTLEN, LB_GETTEXT, index, text);
}
int CListBox::SetItemData(int index, DWORD_PTR data) {
    return static_cast<int>(
        SendMessageW(LB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data)));
}
DWORD_PTR CListBox::GetItemData(int index) const {
    return static_cast<DWORD_PTR>(SendMessageW(LB_GETITEMDATA, static_cast<WPARAM>(index)));
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

// --- Combo boxes -------------------------------------------------------------------------------------------

BOOL CComboBox::Create(DWORD style, const RECT& rect, CWnd* parent, int id) {
    return CreateEx(0, L"COMBOBOX", L"", style | WS_CHILD, rect, parent, id);
}

int CComboBox::call(UINT message, int index) const {
    return m_hWnd ? static_cast<int>(SendMessageW(message, static_cast<WPARAM>(index)))
                  : static_cast<int>(CB_ERR);
}

int CComboBox::AddString(const wchar_t* text) {
    return static_cast<int>(SendMessageW(CB_ADDSTRING, 0, argument(text)));
}
int CComboBox::InsertString(int index, const wchar_t* text) {
    return static_cast<int>(SendMessageW(CB_INSERTSTRING, static_cast<WPARAM>(index), argument(text)));
}
int CComboBox::SelectString(int after, const wchar_t* start) {
    return static_cast<int>(SendMessageW(CB_SELECTSTRING, static_cast<WPARAM>(after), argument(start)));
}
int CComboBox::FindStringExact(int after, const wchar_t* text) const {
    return static_cast<int>(SendMessageW(CB_FINDSTRINGEXACT, static_cast<WPARAM>(after), argument(text)));
}
void CComboBox::GetLBText(int index, CString& text) const {
    itemText(*this, CB_GETLBTEXTLEN, CB_GETLBTEXT, index, text);
}
int CComboBox::SetItemData(int index, DWORD_PTR data) {
    return static_cast<int>(
        SendMessageW(CB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data)));
}
DWORD_PTR CComboBox::GetItemData(int index) const {
    return static_cast<DWORD_PTR>(SendMessageW(CB_GETITEMDATA, static_cast<WPARAM>(index)));
}
