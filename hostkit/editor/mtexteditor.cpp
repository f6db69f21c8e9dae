#include "mtexteditor.h"

#include "aced.h"
#include "dbmtext.h"
#include "markupreader.h"

namespace hostkit {
namespace {

constexpr DWORD windowStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr RECT windowPlace{0, 0, 420, 240};
constexpr RECT editPlace{10, 10, 404, 170};
constexpr RECT okPlace{240, 180, 315, 202};
constexpr RECT cancelPlace{325, 180, 400, 202};

// The other codes stay as they are written.
CString withNewLines(const CString& coded) {
    std::wstring text;
    MarkupReader reader(coded.GetString(), MarkupReader::Extent::paragraphs);
    while (const auto piece = reader.next()) text += piece->source == L"\\P" ? L"\n" : piece->source;
    return CString(text.c_str());
}

CString withCodes(CString text) {
    text.Replace(L"\n", L"\\P");
    return text;
}

} // namespace

MTextEditor::MTextEditor(CString contents)
    : m_contents(std::move(contents)) {}

bool MTextEditor::makeControls() {
    const DWORD edit = WS_VISIBLE | WS_BORDER | WS_TABSTOP | ES_MULTILINE | ES_WANTRETURN;
    if (!m_edit.Create(edit, editPlace, this, IDC_CONTENTS)) return false;
    if (!m_ok.Create(L"OK", WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON, okPlace, this, IDOK)) return false;
    if (!m_cancel.Create(L"Annuler", WS_VISIBLE | WS_TABSTOP, cancelPlace, this, IDCANCEL)) return false;
    m_edit.SetWindowTextW(withNewLines(m_contents));
    m_edit.SetFocus();
    return true;
}

int MTextEditor::DoModal() {
    const HWND owner = adsw_acadMainWnd();
    const bool disablesOwner = ::IsWindowEnabled(owner);
    int result = -1;
    if (!CreateEx(WS_EX_CONTROLPARENT, L"#32770", L"Texte", windowStyle, windowPlace, CWnd::FromHandle(owner),
                  0))
        return result;
    if (disablesOwner) ::EnableWindow(owner, FALSE);
    if (makeControls()) {
        CenterWindow();
        ShowWindow(SW_SHOW);
        result = RunModalLoop();
    }
    if (disablesOwner) ::EnableWindow(owner, TRUE);
    DestroyWindow();
    return result;
}

void MTextEditor::OnOK() {
    CString text;
    m_edit.GetWindowTextW(text);
    m_contents = withCodes(std::move(text));
    EndModalLoop(IDOK);
}

} // namespace hostkit

int acedEditMTextInteractive(AcDbMText* text, bool, bool) {
    if (!text) return RTERROR;
    hostkit::MTextEditor editor(CString(text->rawContents().c_str()));
    const int answer = editor.DoModal();
    if (answer != IDOK) return answer < 0 ? RTERROR : RTCAN;
    return text->setContents(editor.contents()) == Acad::eOk ? RTNORM : RTERROR;
}
