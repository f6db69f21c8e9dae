// Stand-in for the host's device context class and its drawing objects. Covers recording, measuring, painting and client contexts and enhanced metafiles; leaves out the older metafiles and showing one.
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
    BOOL CreateFontIndirect(const LOGFONTW* font) { return Attach(CreateFontIndirectW(font)); }
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

/// A device context by its handles; does not own them. What is drawn goes to the one for output (m_hDC); what
/// is asked goes to the one for attributes. Selections, colours and the alignment go to both, and the answer
/// is that of the one for attributes. The two are one, but for metafiles.
class CDC {
    template <class Function, class Argument>
    auto inBoth(Function function, Argument argument) {
        auto before = function(m_hDC, argument);
        if (m_hAttribDC != m_hDC && m_hAttribDC) before = function(m_hAttribDC, argument);
        return before;
    }

public:
    CDC() = default;
    virtual ~CDC() = default;
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;
    static std::unique_ptr<CDC> FromHandle(HDC dc);

    /// For output and attributes. FALSE for null.
    BOOL Attach(HDC dc);
    /// Neither has a context then; gives that of output.
    HDC Detach();
    void SetAttribDC(HDC dc) { m_hAttribDC = dc; }
    void ReleaseAttribDC() { m_hAttribDC = nullptr; }

    HDC GetSafeHdc() const { return m_hDC; }
    HGDIOBJ SelectObject(HGDIOBJ object) { return inBoth(::SelectObject, object); }
    HGDIOBJ SelectObject(const CGdiObject* object) {
        return SelectObject(object ? object->GetSafeHandle() : nullptr);
    }
    HGDIOBJ SelectStockObject(int number) { return SelectObject(GetStockObject(number)); }
    COLORREF SetTextColor(COLORREF color) { return inBoth(::SetTextColor, color); }
    COLORREF SetBkColor(COLORREF color) { return inBoth(::SetBkColor, color); }
    int SetBkMode(int mode) { return inBoth(::SetBkMode, mode); }
    UINT SetTextAlign(UINT align) { return inBoth(::SetTextAlign, align); }
    HGDIOBJ GetCurrentObject(UINT kind) const { return ::GetCurrentObject(m_hAttribDC, kind); }
    CSize GetTextExtent(const CString& text) const;
    BOOL GetTextMetrics(TEXTMETRICW* metrics) const { return GetTextMetricsW(m_hAttribDC, metrics); }

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
    /// The position moves in both.
    BOOL LineTo(int x, int y);
    BOOL Arc(const RECT* box, POINT start, POINT end) {
        return box &&
               ::Arc(m_hDC, box->left, box->top, box->right, box->bottom, start.x, start.y, end.x, end.y);
    }
    BOOL Polygon(const POINT* points, int count) { return ::Polygon(m_hDC, points, count); }
    BOOL DrawIcon(int x, int y, HICON icon) { return ::DrawIcon(m_hDC, x, y, icon); }
    BOOL DrawState(POINT at, SIZE size, HICON icon, UINT flags, HBRUSH brush = nullptr) {
        return ::DrawStateW(m_hDC, brush, reinterpret_cast<LPARAM>(icon), at.x, at.y, size.cx, size.cy,
                            flags | DST_ICON);
    }

    HDC m_hDC = nullptr;
    HDC m_hAttribDC = nullptr;
};

/// Records an enhanced metafile. Attributes are asked of the recording itself until SetAttribDC gives another
/// context. A recording that was not closed is dropped, and makes no file.
class CMetaFileDC : public CDC {
public:
    CMetaFileDC() = default;
    ~CMetaFileDC() override { ::DeleteDC(Detach()); }

    /// As CreateEnhMetaFileW.
    BOOL CreateEnhanced(const CDC* reference, const wchar_t* file, const RECT* frame,
                        const wchar_t* description) {
        return Attach(
            CreateEnhMetaFileW(reference ? reference->GetSafeHdc() : nullptr, file, frame, description));
    }
    /// As CloseEnhMetaFile; the object has no contexts then.
    HENHMETAFILE CloseEnhanced() { return CloseEnhMetaFile(Detach()); }
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
