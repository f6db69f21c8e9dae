#pragma once

#include "acadstrc.h"
#include "afxdlgs.h"
#include "vexoorstyledata.h"

#include <map>
#include <unordered_map>

/// The bar of styles that an application's sheet carries: a list of the styles on disk for one type of
/// objects, with the entry that loads one from any file, and a button that saves the sheet's settings as a
/// style. Made by Create within the sheet; it lives as long as that. It reads the files (VEXOORStyleData
/// tells their form), since its table of keys decides which lines are understood.
///
/// The types of objects that have keys are "Autosurf", "BMRepartition" and "DwgStyle"; the keys of the last
/// one begin with the data's prefix, so that a style is only understood with the prefix that it was saved
/// with.
class VEXODlgORStyle : public CDialog {
public:
    enum { IDD = 14068, IDC_COMBO_STYLES = 1001, IDC_BUTTON_SAVE = 1002 };

    explicit VEXODlgORStyle(CWnd* parent = nullptr);

    /// Within the parent, at the corner of its client area. Fills the list.
    BOOL Create(CWnd* parent);

    /// What stands between the brackets of a file's first line; exact, with its letter case. eOk.
    CString GetEntityType() const { return m_entityType; }
    Acad::ErrorStatus SetEntityType(const CString& entityType);
    /// With its point. ".ORStyle" at first, which is what the list is made of, whatever is set here.
    void setFileExtensionName(const CString& extension) { m_extension = extension; }
    /// Passed on to the style data, now or when it is set; an empty one then leaves the data its own.
    void setPrefix(const CString& prefix);
    /// Not owned; has to live as long as it is set.
    void SetORStyleData(VEXOORStyleData*& data);

    /// Lists the styles of the styles directory (VEXORegistryTools::GetPathSupportStylesDir) that are of the
    /// entity type, by the head of each "*.ORStyle" file there, then the entry that loads a file and the one
    /// that says that none is chosen, which is selected. A file that cannot be opened, of another type or
    /// without a name is left out. Makes the styles directory the current one. Where there is no such path,
    /// the list stays empty.
    void FillStyles();
    /// Of two styles of one name the last file counts, and the list has one entry.
    void AddStyleName(const CString& name, const CString& path);
    /// The list too.
    void ClearStyleNames();
    /// Adds the style where it is not there, and selects it.
    void AddAndSelectItem(const CString& name, const CString& path);
    /// Reads the file into the style data. eInvalidInput on every failure: what cannot be opened is not told;
    /// a file without the head of a style, or without a name, and a style of another type are told in a box.
    /// The items that were there stay, unless it came as far as reading the new ones.
    Acad::ErrorStatus LoadStyleFromFile(const CString& path);

    void OnOK() override;
    void OnCancel() override;

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void InitControls();
    /// Asks for a name, then for a file, and writes the style: beside the file, whose place it takes when it
    /// is whole. What cannot be written leaves the list and the file as they were.
    void OnButtonSave();
    /// Loads what was chosen. The data takes its values over (UpdateControlsFromData) after a style of the
    /// list in any case, after a file only where it could be read. Without one the selection goes back.
    void OnSelchangeComboStyles();
    /// The entry that says that none is chosen stands only in the closed list.
    void OnDropdownStyles();
    void OnCloseUpComboStyles();
    /// The bar has no help of its own; what is around it is not asked.
    BOOL OnHelpInfo(HELPINFO* info);
    DECLARE_MESSAGE_MAP()

private:
    using KeyKinds = std::unordered_map<CString, int>;
    struct KeyTable;

    Acad::ErrorStatus readHead(CStdioFile& file);
    Acad::ErrorStatus readStyle(CStdioFile& file);
    /// eInvalidIndex for a null file and one without a name.
    Acad::ErrorStatus GetStyleNameFromFile(CStdioFile* file, CString& name);
    Acad::ErrorStatus FillItemsFromFile(CStdioFile* file);
    /// Key and value lose the punctuation and the blanks around them. eInvalidInput without "=", eNullPtr
    /// where nothing is left of one of them.
    Acad::ErrorStatus GetKeyAndValueFromString(const CString& line, CString& key, CString& value);
    /// eInvalidInput without "=" and for a key that the table has not; eNullPtr for a number without a value.
    Acad::ErrorStatus GetItemFromString(const CString& line, VEXOORStyleDataItem& item,
                                        const KeyKinds& kinds);
    /// eOk.
    Acad::ErrorStatus ExcludeCharsFromString(CString& text, const CString& chars);
    /// The keys of the entity type, each with its kind. eInvalidInput without style data.
    Acad::ErrorStatus GetKeyMapToType(KeyKinds& keys);
    void AddTextStyleToMap(const CString& key, KeyKinds& keys);
    void AddLineTypeToMap(const CString& key, KeyKinds& keys);
    void AddDimStyleToMap(const CString& key, KeyKinds& keys);

    void addStylesOfDirectory(const CString& directory);
    bool isOfEntityType(CStdioFile& file) const;
    CString fileFilter() const;
    bool writeStyle(const CString& name, CStdioFile& file);
    void saveStyle(const CString& name, const CString& path);
    void loadFromFile();
    void selectEntry(const CString& text);

    CString m_entityType;
    CString m_extension;
    CString m_prefix;
    VEXOORStyleData* m_data = nullptr;
    std::map<CString, CString> m_files; ///< by the style's name
    CString m_selected;                 ///< the entry to go back to
    CString m_lastDirectory;            ///< of loading from a file
    CComboBox m_styles;
};
