// Stand-in for the host's device context class and its drawing objects. Covers recording, measuring, painting and client contexts; leaves out metafiles.
#pragma once

#include "atltypes.h"
#include "cstring.h"
#include "wingdi.h"

#include <memory>

class CWnd;

/// A drawing object by its handle. The object made by its own Create functions belongs to it; DeleteObject or
/// the destructor frees it.
class CGdiObject {
public:
    CGdiObject() = default;
    virtual ~CGdiObject() { DeleteObject(); }
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;

    BOOL Attach(HGDIOBJ object);
    HGDIOBJ Detach();
    BOOL DeleteObject();
    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    BOOL CreateStockObject(int number);

    HGDIOBJ m_hObject = nullptr;
};

class CFont : public CGdiObject {
public:
    /// In tenths of a point, at 96 dots an inch. There is one face, so the name is not looked at.
    BOOL CreatePointFont(int tenths, const wchar_t* face);
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
};

class CBrush : public CGdiObject {
public:
    CBrush() = default;
    explicit CBrush(COLORREF color) { CreateSolidBrush(color); }
    BOOL CreateSolidBrush(COLORREF color);
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
};

class CPen : public CGdiObject {
public:
    CPen() = default;
    CPen(int style, int width, COLORREF color);
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
};

/// A device context by its handle; does not own it.
class CDC {
public:
    CDC() = default;
    virtual ~CDC() = default;
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;
    static std::unique_ptr<CDC> FromHandle(HDC dc);

    HDC GetSafeHdc() const { return m_hDC; }
    HGDIOBJ SelectObject(HGDIOBJ object) { return ::SelectObject(m_hDC, object); }
    HGDIOBJ SelectObject(const CGdiObject* object) {
        return ::SelectObject(m_hDC, object ? object->GetSafeHandle() : nullptr);
    }
    HGDIOBJ SelectStockObject(int number) { return ::SelectObject(m_hDC, GetStockObject(number)); }
    COLORREF SetTextColor(COLORREF color) { return ::SetTextColor(m_hDC, color); }
    COLORREF SetBkColor(COLORREF color) { return ::SetBkColor(m_hDC, color); }
    int SetBkMode(int mode) { return ::SetBkMode(m_hDC, mode); }
    CSize GetTextExtent(const CString& text) const;
    BOOL GetTextMetrics(TEXTMETRICW* metrics) const { return GetTextMetricsW(m_hDC, metrics); }

    BOOL TextOutW(int x, int y, const CString& text) {
        return ::TextOutW(m_hDC, x, y, text, text.GetLength());
    }
    int DrawTextW(const CString& text, RECT* rect, UINT format) {
        return ::DrawTextW(m_hDC, text, text.GetLength(), rect, format);
    }
    void FillRect(const RECT* rect, const CBrush* brush) {
        ::FillRect(m_hDC, rect, brush ? static_cast<HBRUSH>(*brush) : nullptr);
    }
    void FillSolidRect(const RECT* rect, COLORREF color);
    BOOL Rectangle(const RECT* rect) {
        return rect && ::Rectangle(m_hDC, rect->left, rect->top, rect->right, rect->bottom);
    }
    CPoint MoveTo(int x, int y);
    BOOL LineTo(int x, int y) { return ::LineTo(m_hDC, x, y); }
    BOOL DrawIcon(int x, int y, HICON icon) { return ::DrawIcon(m_hDC, x, y, icon); }
    BOOL DrawState(POINT at, SIZE size, HICON icon, UINT flags, HBRUSH brush = nullptr) {
        return ::DrawStateW(m_hDC, brush, reinterpret_cast<LPARAM>(icon), at.x, at.y, size.cx, size.cy,
                            flags | DST_ICON);
    }

    HDC m_hDC = nullptr;
};

/// Between BeginPaint and EndPaint of the window.
class CPaintDC : public CDC {
public:
    explicit CPaintDC(CWnd* window);
    ~CPaintDC() override;

private:
    HWND m_window;
};

/// To measure with, outside painting.
class CClientDC : public CDC {
public:
    /// Null measures for the screen.
    explicit CClientDC(CWnd* window);
    ~CClientDC() override;

private:
    HWND m_window;
};
