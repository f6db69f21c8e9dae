#pragma once

#include "acadstrc.h"
#include "acarray.h"
#include "dbid.h"
#include "vexoorstyledataitem.h"

#include <string>
#include <vector>

class AcDbLinetypeTableRecord;
class AcDbTextStyleTableRecord;
class CComboBox;
class CPropertyPage;
class CPropertySheet;

/// One style of one type of objects: the settings of a dialog under a name, as they travel from drawing to
/// drawing in a file. An application's dialog derives from it and overrides the two functions that move
/// values between its controls and the items. VEXODlgORStyle reads the files, as it knows which keys there
/// are.
///
/// A file is text in the ANSI code page, a line each:
///     [Type]
///     StyleName = "Mine"
///     keyHeight = 2.500000000000
///     keyVertical = 0
///     keyFont = "txt.shx"
/// Nothing is escaped: a quotation mark within a value goes into the file and is lost on reading.
///
/// Besides plain values a style carries records of the drawing's tables: a text style and a linetype whole,
/// so that they can be made in a drawing that lacks them, a dimension style by its name.
class VEXOORStyleData {
public:
    /// Of the two functions that make records: there was nothing to make.
    static constexpr auto nothingTried = static_cast<Acad::ErrorStatus>(260);

    /// The key of a file's name line.
    static constexpr wchar_t styleNameKey[] = L"StyleName";
    /// What keys and names lose on reading.
    static constexpr wchar_t punctuation[] = L"\":;,.?=";

    VEXOORStyleData() = default;
    VEXOORStyleData(const VEXOORStyleData&) = default;
    virtual ~VEXOORStyleData() = default;
    /// All but the prefix: an assigned style keeps its own.
    VEXOORStyleData& operator=(const VEXOORStyleData& other);

    /// Called before a style is written, to fill the items, and after one was read. The base does nothing and
    /// gives eNotImplementedYet.
    virtual Acad::ErrorStatus WriteDataFromControls();
    virtual Acad::ErrorStatus UpdateControlsFromData();

    // --- Files ---------------------------------------------------------------------------------------------

    /// Writes all of it, with 12 decimals for a real and 6 for the dashes of a linetype. Nothing, and nothing
    /// is told, without a file, an entity type or a style name; what the file throws ends it in silence.
    void WriteDataToFile(CStdioFile* file);
    /// Does nothing: the dialog reads.
    void ReadDataFromFile(CStdioFile* file);

    // --- Items ---------------------------------------------------------------------------------------------

    /// Puts the prefix in front of the key, unless it stands anywhere within it already, and appends the
    /// item: the key becomes the full one in place. An empty key stores nothing. Texts become names (kind 2),
    /// cut at 255 characters.
    void AddItem(CString& key, const double& value);
    void AddItem(CString& key, const int& value);
    void AddItem(CString& key, const CString& value);
    /// As it stands, without a prefix.
    void AddItem(VEXOORStyleDataItem& item);
    /// The first item of the prefix and that key, exactly; eInvalidInput, with the item as it was, where
    /// there is none. The prefix is always put in front, so that a key that AddItem has made full is not
    /// found.
    Acad::ErrorStatus GetItem(CString key, VEXOORStyleDataItem& item);
    /// A copy, in the order in which they were added.
    AcArray<VEXOORStyleDataItem> GetItems();
    void ClearItems();

    // --- Records of tables ---------------------------------------------------------------------------------

    /// Adds the items that a record consists of, under the key and keys that begin with it. eInvalidInput for
    /// a null or invalid id; the status of an open or of a text that cannot be had.
    Acad::ErrorStatus AddItemTextStyle(CString& key, const AcDbObjectId& id);
    Acad::ErrorStatus AddItemLineType(CString& key, const AcDbObjectId& id);
    /// The name alone.
    Acad::ErrorStatus AddItemDimStyle(CString& key, const AcDbObjectId& id);

    /// Fills the record from the items of the key. eInvalidInput without a record, a name or a font; all else
    /// is taken where it is there. The marks for backward and upside-down text never come on in a new record:
    /// both are only kept where they are set already.
    Acad::ErrorStatus GetTextStyle(CString& key, AcDbTextStyleTableRecord* record);
    /// eInvalidInput without a record or a name, and for a description that FillDashVectorFromDescription
    /// refuses, which is what AddItemLineType writes for a linetype without dashes, or that has more dashes
    /// than the record takes; name and length are set then. Without a description the record gets no dashes.
    Acad::ErrorStatus GetLineType(CString& key, AcDbLinetypeTableRecord* record);
    /// The drawing's dimension style of the name in the item: GetItem's status, or eKeyNotFound where there
    /// is none. None is made.
    Acad::ErrorStatus GetDimStyle(CString& key, AcDbObjectId& id);
    /// Reads "2 0.5 -0.25": the number of dashes, then just as many lengths, between single blanks or more.
    /// `dashes` has room for 50. eInvalidInput for anything else, more than 50 among it.
    Acad::ErrorStatus FillDashVectorFromDescription(CString description, int& count, double* dashes);

    /// Makes the record of the key's items in the working drawing. `nothingTried` where there is no such
    /// item, or the combo box lists a text that begins with its name, in any case ("Arial2b" hides "Arial2");
    /// without a combo box nothing is searched. eInvalidInput where it cannot be filled or added. The lock
    /// that it takes is given back before the table is opened, so it needs a running command, which holds
    /// one.
    Acad::ErrorStatus CreateTextStyleIfNeeded(CComboBox* combo, CString key);
    Acad::ErrorStatus CreateLineTypeIfNeeded(CComboBox* combo, CString key);

    // --- What else it holds --------------------------------------------------------------------------------

    /// Those with a status give eOk.
    Acad::ErrorStatus setEntityType(const CString& entityType);
    Acad::ErrorStatus setStyleName(const CString& styleName);
    CString getStyleName() const { return m_styleName; }
    Acad::ErrorStatus setPrefix(const CString& prefix);
    CString getPrefix() const { return m_prefix; }
    /// Where the dialog's controls are, for the two overridden functions; not owned.
    void setMainPropertySheet(CPropertySheet* sheet) { m_sheet = sheet; }
    CPropertySheet* getMainPropertySheet() const { return m_sheet; }
    void setMainPropertyPage(CPropertyPage* page) { m_page = page; }
    CPropertyPage* getMainPropertyPage() const { return m_page; }

private:
    /// An item with as much of its value as its kind uses: an item itself takes a kilobyte, and a style of
    /// 100,000 of them a hundred megabytes.
    struct KeptItem {
        explicit KeptItem(const VEXOORStyleDataItem& item);
        void copyTo(VEXOORStyleDataItem& item) const;

        CString m_key;
        std::string m_value; ///< its first bytes
        int m_kind;
    };

    void addUnder(CString& key, VEXOORStyleDataItem& item);
    void writeLines(CStdioFile& file) const;

    std::vector<KeptItem> m_items;
    CString m_entityType;
    CString m_styleName;
    CPropertySheet* m_sheet = nullptr;
    CPropertyPage* m_page = nullptr;
    CString m_prefix;
};
