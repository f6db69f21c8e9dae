// Stand-in for the host's control classes. Covers buttons, edits, labels, lists, check lists and combo boxes; leaves out sliders, trees and owner drawing.
#pragma once

#include "cwnd.h"
#include "desktop.h"
#include "itemlist.h"

class CStatic : public CWnd {
public:
    BOOL Create(const wchar_t* text, DWORD style, const RECT& rect, CWnd* parent, int id = 0xFFFF);
    HICON SetIcon(HICON icon);
    HICON GetIcon() const;
};

class CButton : public CWnd {
public:
    BOOL Create(const wchar_t* text, DWORD style, const RECT& rect, CWnd* parent, int id);
    int GetCheck() const { return static_cast<int>(SendMessageW(BM_GETCHECK)); }
    void SetCheck(int check) { SendMessageW(BM_SETCHECK, static_cast<WPARAM>(check)); }
};

class CEdit : public CWnd {
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, int id);
    void SetSel(int first, int last) { SendMessageW(EM_SETSEL, static_cast<WPARAM>(first), last); }
    void ReplaceSel(const wchar_t* text) { SendMessageW(EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(text)); }
    void LimitText(int characters) { SendMessageW(EM_LIMITTEXT, static_cast<WPARAM>(characters)); }
};

namespace hostkit {

/// What lists and combo boxes share. Items are counted from 0. LB_ERR, which is CB_ERR, where an index or a
/// text is not there, and without a window.
template <const ItemMessages& messages>
class ItemControl : public CWnd {
public:
    int AddString(const wchar_t* text);
    int InsertString(int index, const wchar_t* text);
    int DeleteString(int index) { return call(messages.remove, index); }
    void ResetContent() { SendMessageW(messages.clear); }
    int GetCount() const { return call(messages.count); }
    int GetCurSel() const { return call(messages.selected); }
    int SetCurSel(int index) { return call(messages.select, index); }
    int SelectString(int after, const wchar_t* start);
    int FindStringExact(int after, const wchar_t* text) const;
    int SetItemData(int index, DWORD_PTR data);
    DWORD_PTR GetItemData(int index) const;

protected:
    int call(UINT message, int index = 0, LPARAM lParam = 0) const;
    void itemText(int index, CString& text) const;
};
extern template class ItemControl<listMessages>;
extern template class ItemControl<comboMessages>;

} // namespace hostkit

class CListBox : public hostkit::ItemControl<hostkit::listMessages> {
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, int id);
    int GetTextLen(int index) const { return call(LB_GETTEXTLEN, index); }
    /// Empty where there is no such item.
    void GetText(int index, CString& text) const { itemText(index, text); }
};

/// A list whose items have marks. A click in an item's mark, or Space, changes it and gives CLBN_CHKCHANGE.
class CCheckListBox : public CListBox {
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, int id);
    int GetCheck(int index) const;
    void SetCheck(int index, int check);

protected:
    void PreSubclassWindow() override { SendMessageW(hostkit::listTakeMarks); }
};

class CComboBox : public hostkit::ItemControl<hostkit::comboMessages> {
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, int id);
    int GetLBTextLen(int index) const { return call(CB_GETLBTEXTLEN, index); }
    /// Empty where there is no such item.
    void GetLBText(int index, CString& text) const { itemText(index, text); }
};
