#include "cdc.h"

#include "cwnd.h"

BOOL CGdiObject::Attach(HGDIOBJ object) {
    if (!object) return FALSE;
    DeleteObject();
    m_hObject = object;
    return TRUE;
}

HGDIOBJ CGdiObject::Detach() { return std::exchange(m_hObject, nullptr); }

BOOL CGdiObject::DeleteObject() { return ::DeleteObject(Detach()); }

BOOL CGdiObject::CreateStockObject(int number) { return Attach(GetStockObject(number)); }

BOOL CFont::CreatePointFont(int tenths, const wchar_t*) {
    constexpr int dots = 96;
    constexpr int tenthsOfInch = 720;
    return tenths > 0 &&
           Attach(CreateSizedFont(-(tenths * dots + tenthsOfInch / 2) / tenthsOfInch, 400, false));
}

BOOL CBrush::CreateSolidBrush(COLORREF color) { return Attach(::CreateSolidBrush(color)); }

CPen::CPen(int style, int width, COLORREF color) { Attach(CreatePen(style, width, color)); }

std::unique_ptr<CDC> CDC::FromHandle(HDC dc) {
    auto object = std::make_unique<CDC>();
    object->Attach(dc);
    return object;
}

BOOL CDC::Attach(HDC dc) {
    m_hDC = m_hAttribDC = dc;
    return dc ? TRUE : FALSE;
}

HDC CDC::Detach() {
    m_hAttribDC = nullptr;
    return std::exchange(m_hDC, nullptr);
}

CSize CDC::GetTextExtent(const CString& text) const {
    SIZE size{};
    GetTextExtentPoint32W(m_hAttribDC, text, text.GetLength(), &size);
    return size;
}

void CDC::FillSolidRect(const RECT* rect, COLORREF color) {
    const CBrush brush(color);
    ::FillRect(m_hDC, rect, brush);
}

CPoint CDC::MoveTo(int x, int y) {
    POINT before{};
    MoveToEx(m_hDC, x, y, &before);
    if (m_hAttribDC != m_hDC) MoveToEx(m_hAttribDC, x, y, &before);
    return before;
}

BOOL CDC::LineTo(int x, int y) {
    if (m_hAttribDC != m_hDC) MoveToEx(m_hAttribDC, x, y, nullptr);
    return ::LineTo(m_hDC, x, y);
}

CPaintDC::CPaintDC(CWnd* window)
    : m_window(window->GetSafeHwnd()) {
    Attach(BeginPaint(m_window));
}
CPaintDC::~CPaintDC() { EndPaint(m_window, m_hDC); }

CClientDC::CClientDC(CWnd* window)
    : m_window(window ? window->GetSafeHwnd() : nullptr) {
    Attach(GetDC(m_window));
}
CClientDC::~CClientDC() { ReleaseDC(m_window, m_hDC); }
