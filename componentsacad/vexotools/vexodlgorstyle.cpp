#include "vexodlgorstyle.h"

#include "cvxlogentry.h"
#include "cvxtoolsresoverride.h"
#include "moduleinstance.h"
#include "moduleprompts.h"
#include "vexodlgorstylesavefile.h"
#include "vexoregistrytools.h"

namespace {

constexpr unsigned int loadFilePrompt = 14069;
constexpr unsigned int selectPrompt = 14070;
constexpr wchar_t stylesPattern[] = L"*.ORStyle";
constexpr DWORD saveFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT;
constexpr DWORD openFlags = OFN_FILEMUSTEXIST | OFN_OVERWRITEPROMPT;

CString bracketed(unsigned int prompt) { return L"<" + vexo::promptText(prompt) + L">"; }
CString loadFileEntry() { return bracketed(loadFilePrompt); }
CString selectEntryText() { return bracketed(selectPrompt); }

// Without a separator at its end; empty where there is none.
CString stylesDirectory() {
    CString directory;
    VEXORegistryTools::GetPathSupportStylesDir(directory, false);
    return directory.TrimRight(L'\\');
}

} // namespace

BEGIN_MESSAGE_MAP(VEXODlgORStyle, CDialog)
ON_BN_CLICKED(VEXODlgORStyle::IDC_BUTTON_SAVE, &VEXODlgORStyle::OnButtonSave)
ON_CBN_SELCHANGE(VEXODlgORStyle::IDC_COMBO_STYLES, &VEXODlgORStyle::OnSelchangeComboStyles)
ON_CBN_DROPDOWN(VEXODlgORStyle::IDC_COMBO_STYLES, &VEXODlgORStyle::OnDropdownStyles)
ON_CBN_CLOSEUP(VEXODlgORStyle::IDC_COMBO_STYLES, &VEXODlgORStyle::OnCloseUpComboStyles)
ON_WM_HELPINFO()
END_MESSAGE_MAP()

VEXODlgORStyle::VEXODlgORStyle(CWnd* parent)
    : CDialog(IDD, parent)
    , m_extension(L".ORStyle") {}

BOOL VEXODlgORStyle::Create(CWnd* parent) {
    CVxLogEntry entry(L"VEXODlgORStyle::Create");
    CVxToolsResOverride resources(vexo::moduleInstance());
    return CDialog::Create(IDD, parent);
}

BOOL VEXODlgORStyle::OnInitDialog() {
    CVxLogEntry entry(L"VEXODlgORStyle::OnInitDialog");
    CDialog::OnInitDialog();
    VxPrompts::setDialogPrompts(*this, IDD, getModulePromptsProjectName());
    InitControls();
    return TRUE;
}

void VEXODlgORStyle::DoDataExchange(CDataExchange* exchange) {
    CVxLogEntry entry(L"VEXODlgORStyle::DoDataExchange");
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_COMBO_STYLES, m_styles);
}

void VEXODlgORStyle::InitControls() {
    CVxLogEntry entry(L"VEXODlgORStyle::InitControls");
    FillStyles();
}

Acad::ErrorStatus VEXODlgORStyle::SetEntityType(const CString& entityType) {
    CVxLogEntry entry(L"VEXODlgORStyle::SetEntityType");
    m_entityType = entityType;
    return Acad::eOk;
}

void VEXODlgORStyle::setPrefix(const CString& prefix) {
    CVxLogEntry entry(L"VEXODlgORStyle::setPrefix");
    m_prefix = prefix;
    if (m_data) m_data->setPrefix(prefix);
}

void VEXODlgORStyle::SetORStyleData(VEXOORStyleData*& data) {
    CVxLogEntry entry(L"VEXODlgORStyle::SetORStyleData");
    m_data = data;
    if (m_data && !m_prefix.IsEmpty()) m_data->setPrefix(m_prefix);
}

// --- The list ----------------------------------------------------------------------------------------------

void VEXODlgORStyle::FillStyles() {
    CVxLogEntry entry(L"VEXODlgORStyle::FillStyles");
    CVxToolsResOverride resources(vexo::moduleInstance());
    ClearStyleNames();
    const CString directory = stylesDirectory();
    if (directory.IsEmpty()) return;
    if (SetCurrentDirectoryW(directory)) addStylesOfDirectory(directory);
    m_styles.AddString(loadFileEntry());
    m_selected = selectEntryText();
    m_styles.SetCurSel(m_styles.AddString(m_selected));
}

void VEXODlgORStyle::addStylesOfDirectory(const CString& directory) {
    CFileFind finder;
    BOOL isMore = finder.FindFile(stylesPattern);
    while (isMore) {
        isMore = finder.FindNextFileW();
        const CString path = directory + L"\\" + finder.GetFileName();
        CStdioFile file;
        if (finder.IsDirectory() || !file.Open(path, CFile::modeRead | CFile::shareDenyNone)) continue;
        CString name;
        if (isOfEntityType(file) && GetStyleNameFromFile(&file, name) == Acad::eOk) AddStyleName(name, path);
    }
}

void VEXODlgORStyle::AddStyleName(const CString& name, const CString& path) {
    CVxLogEntry entry(L"VEXODlgORStyle::AddStyleName");
    if (m_files.insert_or_assign(name, path).second) m_styles.AddString(name);
}

void VEXODlgORStyle::ClearStyleNames() {
    CVxLogEntry entry(L"VEXODlgORStyle::ClearStyleNames");
    m_files.clear();
    m_styles.ResetContent();
}

void VEXODlgORStyle::AddAndSelectItem(const CString& name, const CString& path) {
    CVxLogEntry entry(L"VEXODlgORStyle::AddAndSelectItem");
    AddStyleName(name, path);
    m_selected = name;
    m_styles.SetCurSel(m_styles.FindStringExact(-1, name));
}

// The list is searched by the start of the text, as the platform does it: of "Mur" and "Mur 20" the first one
// in the list is taken for "Mur".
void VEXODlgORStyle::selectEntry(const CString& text) { m_styles.SelectString(-1, text); }

void VEXODlgORStyle::OnDropdownStyles() {
    CVxLogEntry entry(L"VEXODlgORStyle::OnDropdownStyles");
    const int index = m_styles.FindStringExact(-1, selectEntryText());
    if (index >= 0) m_styles.DeleteString(index);
    UpdateData(TRUE);
}

void VEXODlgORStyle::OnCloseUpComboStyles() {
    CVxLogEntry entry(L"VEXODlgORStyle::OnCloseUpComboStyles");
    if (m_styles.GetCurSel() >= 0) return;
    m_selected = selectEntryText();
    m_styles.SetCurSel(m_styles.AddString(m_selected));
}

void VEXODlgORStyle::OnSelchangeComboStyles() {
    CVxLogEntry entry(L"VEXODlgORStyle::OnSelchangeComboStyles");
    UpdateData(TRUE);
    const int index = m_styles.GetCurSel();
    if (index < 0) return;
    CString text;
    m_styles.GetLBText(index, text);
    if (text == loadFileEntry()) return loadFromFile();
    m_selected = text;
    const auto style = m_files.find(text);
    if (style == m_files.end()) return;
    LoadStyleFromFile(style->second);
    if (m_data) m_data->UpdateControlsFromData();
}

// --- Files -------------------------------------------------------------------------------------------------

CString VEXODlgORStyle::fileFilter() const {
    return L"Ordane Style (*" + m_extension + L")|*" + m_extension + L"||";
}

void VEXODlgORStyle::loadFromFile() {
    if (m_lastDirectory.IsEmpty()) m_lastDirectory = stylesDirectory();
    if (m_lastDirectory.IsEmpty()) return;
    SetCurrentDirectoryW(m_lastDirectory);
    CFileDialog dialog(TRUE, m_extension, nullptr, openFlags, fileFilter(), this);
    dialog.m_ofn.lpstrInitialDir = m_lastDirectory;
    if (dialog.DoModal() == IDOK) {
        const CString path = dialog.GetPathName();
        m_lastDirectory = path.Left(path.GetLength() - dialog.GetFileName().GetLength());
        if (LoadStyleFromFile(path) == Acad::eOk) {
            m_data->UpdateControlsFromData();
            return AddAndSelectItem(m_data->getStyleName(), path);
        }
    }
    if (m_selected == selectEntryText()) m_styles.AddString(m_selected);
    selectEntry(m_selected);
}

void VEXODlgORStyle::OnButtonSave() {
    CVxLogEntry entry(L"VEXODlgORStyle::OnButtonSave");
    CVxToolsResOverride resources(vexo::moduleInstance());
    VEXODlgORStyleSaveFile nameBox(this);
    if (nameBox.DoModal() != IDOK) return;
    const CString directory = stylesDirectory();
    if (directory.IsEmpty()) return;
    if (GetFileAttributesW(directory) == INVALID_FILE_ATTRIBUTES) CreateDirectoryW(directory, nullptr);
    CFileDialog dialog(FALSE, m_extension, nullptr, saveFlags, fileFilter(), this);
    dialog.m_ofn.lpstrInitialDir = directory;
    if (dialog.DoModal() == IDOK) saveStyle(nameBox.getStyleName(), dialog.GetPathName());
}

bool VEXODlgORStyle::writeStyle(const CString& name, CStdioFile& file) {
    try {
        if (m_data) {
            m_data->WriteDataFromControls();
            m_data->setEntityType(m_entityType);
            m_data->setStyleName(name);
            m_data->WriteDataToFile(&file);
        }
        file.Close();
        return true;
    } catch (CFileException* error) {
        error->Delete();
        return false;
    } catch (...) {
        return false;
    }
}

// Beside the file first: a disk that fills takes nothing away.
void VEXODlgORStyle::saveStyle(const CString& name, const CString& path) {
    const CString beside = path + L".new";
    bool isSaved = false;
    {
        CStdioFile file;
        if (!file.Open(beside, CFile::modeCreate | CFile::modeWrite | CFile::shareDenyWrite)) return;
        isSaved = writeStyle(name, file);
    }
    if (isSaved && MoveFileExW(beside, path, MOVEFILE_REPLACE_EXISTING)) return AddAndSelectItem(name, path);
    DeleteFileW(beside);
}

// --- Keys of the dialog ------------------------------------------------------------------------------------

// The bar stays with its sheet: Enter and Escape do not close it.
void VEXODlgORStyle::OnOK() { CVxLogEntry entry(L"VEXODlgORStyle::OnOK"); }
void VEXODlgORStyle::OnCancel() { CVxLogEntry entry(L"VEXODlgORStyle::OnCancel"); }

BOOL VEXODlgORStyle::OnHelpInfo(HELPINFO*) {
    CVxLogEntry entry(L"VEXODlgORStyle::OnHelpInfo");
    return TRUE;
}
