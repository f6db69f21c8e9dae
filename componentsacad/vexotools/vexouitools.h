#pragma once

#include "acadstrc.h"
#include "afx.h"
#include "gepnt3d.h"
#include "windows.h"

#include <vector>

class AcDbMText;
class CComboBox;
class CComboBoxEx;
class CImageList;
class CMenu;
class CWnd;

/// How the library speaks to the user in boxes, and what its dialogs share. A null window, list, menu or text
/// does nothing.
class VEXOUITools {
public:
    /// A box for a host status: "ARX ERROR: <the status's name>, file: <file>", exclamation icon, one button,
    /// no owner. eOk shows nothing. The application calls it; the library does not.
    static void dlgErrorAlert(Acad::ErrorStatus status, const CString& file);

    /// A box with the text of that id in the project's string table (an unknown id gives an empty text). The
    /// caption is the product's name; the owner is the given window or, with none, the host's main window.
    /// `flags` and the result are those of the platform's MessageBoxW.
    static int MessageBoxW(unsigned int id, const wchar_t* project, unsigned int flags,
                           const CWnd* owner = nullptr);
    /// The same with a text of the caller's own.
    static int MessageBoxW(const CString& text, unsigned int flags, const CWnd* owner = nullptr);

    /// Tells that a command cannot run in the current step and which one it needs (or which two of them),
    /// with the information icon. The steps are those of getStringFromStepMode.
    static void DisplayInvalidStep(int current, int needed);
    static void DisplayInvalidStep(int current, int first, int second);
    /// 0 "MODELE", 1 "DESSIN", 2 "DOCUMENT", any other "AUCUN".
    static CString getStringFromStepMode(int mode);

    /// Adds an item with the icon of that number from the module of the current resource scope (without one,
    /// this module), before the item `index` or, with -1, at the end. The icon goes into the list that the
    /// combo box shows; an unknown one leaves the item without image. The item's index, or -1.
    static int AddItemComboBoxEx(CComboBoxEx* combo, CImageList* images, CString text, unsigned int iconId,
                                 int index);
    /// 1 with the item's text, which is empty where there is no such item; 0, with the text as it was, for an
    /// index below 0.
    static int GetSafeLBText(const CComboBox& combo, const int& index, CString& text);
    /// Hides each control whose entry is true and shows the others. A control without an entry, or null, is
    /// left alone.
    static void hideControls(std::vector<CWnd*> controls, std::vector<bool> hidden);
    /// Appends the item `id` with this module's text `textId`; and the second one, when its id is not 0.
    static void appendOptions(CMenu* menu, int id, int textId, int id2 = 0, int textId2 = 0);

    /// Moves the paragraph to the location and lets the user edit it in the host's editor. Meanwhile the
    /// window and the windows around it are hidden and the host's frame is disabled; afterwards all is as it
    /// was. A null window leaves the windows alone.
    static void EditMTextUsingInteractiveAcedEdit(AcDbMText* text, CWnd* window, AcGePoint3d location);
};
