// Stand-in for the host's control classes. Covers buttons, edits, labels, lists, check lists and combo boxes; leaves out sliders, trees and owner drawing.
#pragma once

#include "cwnd.h"
#include "desktop.h"

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

/// Items are counted from 0. LB_ERR where an index or a text is not there.
class CListBox : public CWnd {
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, int id);
    int AddString(const wchar_t* text);
    int InsertString(int index, const wchar_t* text);
    int DeleteString(int index) { return call(LB_DELETESTRING, index); }
    void ResetContent() { SendMessageW(LB_RESETCONTENT); }
    int GetCount() const { return call(LB_GETCOUNT); }
    int GetCurSel() const { return call(LB_GETCURSEL); }
    int SetCurSel(int index) { return call(LB_SETCURSEL, index); }
    int SelectString(int after, const wchar_t* start);
    int FindStringExact(int after, const wchar_t* text) const;
    int GetTextLen(int index) const { return call(LB_GETTEXTLEN, index); }
    /// Empty where there is no such item.
    void GetText(int index, CString& text) const;
    int SetItemData(int index, DWORD_PTR data);
    DWORD_PTR GetItemData(int index) const;

protected:
    int call(UINT message, int index = 0) const;
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

class CComboBox : public CWnd {
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, int id);
    int AddString(const wchar_t* text);
    int InsertString(int index, const wchar_t* text);
    int DeleteString(int index) { return call(CB_DELETESTRING, index); }
    void ResetContent() { SendMessageW(CB_RESETCONTENT); }
    int GetCount() const { return call(CB_GETCOUNT); }
    int GetCurSel() const { return call(CB_GETCURSEL); }
    int SetCurSel(int index) { return call(CB_SETCURSEL, index); }
    int SelectString(int after, const wchar_t* start);
    int FindStringExact(int after, const wchar_t* text) const;
    int GetLBTextLen(int index) const { return call(CB_GETLBTEXTLEN, index); }
    void GetLBText(int index, CString& text) const;
    int SetItemData(int index, DWORD_PTR data);
    DWORD_PTR GetItemData(int index) const;

private:
    int call(UINT message, int index = 0) const;
};
