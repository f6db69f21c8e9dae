#include "dialogtext.h"

#include <algorithm>

namespace vexo {

namespace {

CRect placeIn(const CWnd& dialog, const CWnd& control) {
    CRect place;
    control.GetWindowRect(place);
    dialog.ScreenToClient(static_cast<RECT*>(place));
    return place;
}

CSize neededBeyond(CWnd& label, const CRect& place) {
    CString text;
    label.GetWindowTextW(text);
    CClientDC dc(&label);
    CRect needed(0, 0, place.Width(), 0);
    dc.DrawTextW(text, needed,
                 DT_CALCRECT | DT_WORDBREAK | (label.GetStyle() & SS_NOPREFIX ? DT_NOPREFIX : 0u));
    return {std::max<LONG>(needed.Width() - place.Width(), 0),
            std::max<LONG>(needed.Height() - place.Height(), 0)};
}

} // namespace

void growForText(CWnd& dialog, int labelId) {
    CWnd* label = dialog.GetDlgItem(labelId);
    if (!label) return;
    CRect place = placeIn(dialog, *label);
    const CSize more = neededBeyond(*label, place);
    if (more.cx == 0 && more.cy == 0) return;
    for (CWnd* each = dialog.GetWindow(GW_CHILD); each; each = each->GetWindow(GW_HWNDNEXT)) {
        CRect at = placeIn(dialog, *each);
        if (each == label || at.top < place.bottom) continue;
        const bool isPushed = (each->GetStyle() & BS_TYPEMASK) <= BS_DEFPUSHBUTTON;
        at.OffsetRect(isPushed ? more.cx : 0, more.cy);
        each->MoveWindow(at);
    }
    place.right += more.cx;
    place.bottom += more.cy;
    label->MoveWindow(place);
    CRect window;
    dialog.GetWindowRect(window);
    window.right += more.cx;
    window.bottom += more.cy;
    dialog.MoveWindow(window);
    dialog.CenterWindow();
}

} // namespace vexo
