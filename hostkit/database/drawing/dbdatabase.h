// Stand-in for the host's AcDbDatabase. Covers objects by id and handle, the tables, the root dictionary, header variables, files and the source bytes; leaves out external references and wblock.
#pragma once

#include "dbmaindefs.h"
#include "dbobject.h"

#include "acadstrc.h"
#include "dbcolor.h"
#include "dbid.h"
#include "gepnt3d.h"

#include <memory>
#include <string>

class AcDbBlockTable;
class AcDbTransactionManager;
class AcDbDictionary;
class AcDbDimStyleTable;
class AcDbDimStyleTableRecord;
class AcDbLayerTable;
class AcDbLinetypeTable;
class AcDbRegAppTable;
class AcDbSymbolTable;
class AcDbTextStyleTable;
class AcDbUCSTable;
class AcDbViewTable;
class AcDbViewportTable;
struct SecurityParams;
namespace hostkit {
class HeaderVariables;
struct DatabaseContents;
struct DrawingSource;
} // namespace hostkit

/// A drawing: it owns its objects, gives them ids and handles, and frees them when it goes. It may be used by
/// one thread at a time.
class AcDbDatabase : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcDbDatabase)

public:
    /// With buildDefaultDrawing what every drawing has: the nine tables with their standing records, both
    /// spaces with their layouts, the root dictionary. Without, nothing: a reader fills it.
    explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    ~AcDbDatabase() override;
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;

    // Objects.

    /// Takes an object that has no place in a table, a block or a dictionary of this drawing. The object is
    /// open for write afterwards. eAlreadyInDb, eNullObjectPointer, eLockViolation.
    Acad::ErrorStatus addAcDbObject(AcDbObject* object);
    Acad::ErrorStatus addAcDbObject(AcDbObjectId& id, AcDbObject* object);
    /// The id of a handle. eUnknownHandle unless createIfNotFound, which reserves an id without an object;
    /// eNullHandle.
    Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound, const AcDbHandle& handle,
                                      Adesk::UInt32 xRefId = 0);
    /// What a drawing file names as the next handle: nobody's, and above every one in use or named, but for
    /// those of the last 2^32, which no drawing comes to by counting and a damaged one may name. New objects
    /// get it, and once it has come to those, the lowest handles that are free.
    AcDbHandle handseed() const;
    /// Never lowered below what is in use. eOutOfRange, and nothing changes, for one of the last 2^32.
    Acad::ErrorStatus setHandseed(const AcDbHandle& handle);
    /// Whether objects may be opened for write, or added, now: always in a drawing of no document; in one of
    /// a document as long as somebody holds a lock for writing on it. Where it is false, all requests for
    /// writing that would be granted give eLockViolation; what is open for write stays so.
    bool mayWrite() const { return m_mayWrite; }
    /// Resident objects, erased ones included.
    Adesk::Int32 approxNumObjects() const;
    /// Objects that are open in any way; what a test looks at when it ends.
    int numOpenObjects() const;

    // Undo and transactions.

    /// Whether what is done now can be taken back by undo: so in a drawing of a document, off in another one
    /// until someone turns it on. cancel and transactions do not depend on it.
    bool undoRecording() const;
    /// What is done while it is off stays when undo takes back what was done around it.
    void disableUndoRecording(bool disable);
    /// Never null.
    AcDbTransactionManager* transactionManager() const;

    // Tables and dictionaries.

    AcDbObjectId blockTableId() const;
    AcDbObjectId layerTableId() const;
    AcDbObjectId textStyleTableId() const;
    AcDbObjectId linetypeTableId() const;
    AcDbObjectId viewTableId() const;
    AcDbObjectId UCSTableId() const;
    AcDbObjectId viewportTableId() const;
    AcDbObjectId regAppTableId() const;
    AcDbObjectId dimStyleTableId() const;
    AcDbObjectId namedObjectsDictionaryId() const;
    AcDbObjectId layoutDictionaryId() const;
    AcDbObjectId groupDictionaryId() const;

    /// Opens the table for the caller to close.
    Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbViewTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbUCSTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbViewportTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbRegAppTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getDimStyleTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dictionary,
                                                AcDb::OpenMode mode = AcDb::kForRead);

    // Records that every drawing has; null ids in a drawing that lacks them.

    AcDbObjectId byLayerLinetype() const;
    AcDbObjectId byBlockLinetype() const;
    AcDbObjectId continuousLinetype() const;
    AcDbObjectId layerZero() const;
    AcDbObjectId modelSpaceId() const;
    AcDbObjectId paperSpaceId() const;
    AcDbObjectId textStyleStandard() const;
    AcDbObjectId dimStyleStandard() const;
    /// The space that new entities go into: by the header's TILEMODE model space, else paper space.
    AcDbObjectId currentSpaceId() const;

    // Purging.

    /// Takes out of the list what must not be erased: what anything else in the drawing refers to, objects of
    /// the list among it, so that who erases what is left and asks again comes to the end of it; what every
    /// drawing needs (layer 0, the standing linetypes, Standard, spaces, what the header names as current);
    /// and what is no layer, linetype, text style, dimension style, block, application name, group, style of
    /// multilines, tables or multileaders, or material. Erases nothing. References are pointers hard and soft
    /// in fields, groups that no class reads and extended data, and names, also those in records of unknown
    /// kinds; an owner and a reactor are none. The order of what stays is kept. Stands in the layer of
    /// drawing files, which a program has to link. eWasOpenForWrite, and the list stays, while an object is
    /// open for write.
    Acad::ErrorStatus purge(AcDbObjectIdArray& ids) const;

    // Header variables, by the meaning that other members give them; the whole store is header().

    AcDbObjectId clayer() const;
    /// eInvalidInput: no layer of this drawing.
    Acad::ErrorStatus setClayer(AcDbObjectId layer);
    AcDbObjectId celtype() const;
    Acad::ErrorStatus setCeltype(AcDbObjectId linetype);
    AcDbObjectId textstyle() const;
    Acad::ErrorStatus setTextstyle(AcDbObjectId style);
    AcDbObjectId dimstyle() const;
    Acad::ErrorStatus setDimstyle(AcDbObjectId style);
    /// The variables of dimensions as the header has them, and as the current style has them where the header
    /// does not or has a value that cannot be; as a style of no drawing, which belongs to the caller.
    Acad::ErrorStatus getDimstyleData(AcDbDimStyleTableRecord*& record) const;
    /// What the record has otherwise goes into the header; the current style stays as it is. Records of
    /// another drawing stand for those of this one that have their names; a standing arrow is made where it
    /// is missing. eNullObjectPointer; eNotThatKindOfClass; eKeyNotFound: no record of that name, and nothing
    /// is set.
    Acad::ErrorStatus setDimstyleData(const AcDbDimStyleTableRecord* record);
    Acad::ErrorStatus setDimstyleData(AcDbObjectId record);
    AcCmColor cecolor() const;
    Acad::ErrorStatus setCecolor(const AcCmColor& color);
    AcDb::LineWeight celweight() const;
    double celtscale() const;
    double ltscale() const;
    double textsize() const;
    /// The unit of lengths by its number in the header, 0 for none (INSUNITS).
    Adesk::Int16 insunits() const;
    Acad::ErrorStatus setInsunits(Adesk::Int16 unit);
    Adesk::Int16 measurement() const;
    Adesk::Int16 lunits() const;
    Adesk::Int16 luprec() const;
    Adesk::Int16 aunits() const;
    Adesk::Int16 auprec() const;
    double angbase() const;
    bool angdir() const;
    bool tilemode() const;
    AcGePoint3d extmin() const;
    AcGePoint3d extmax() const;
    AcGePoint3d limmin() const;
    AcGePoint3d limmax() const;
    AcGePoint3d insbase() const;
    /// The user coordinate system of model space in world coordinates; the axes have unit length and are
    /// perpendicular. A header without one, or with axes that are parallel, of no length or no numbers, has
    /// the world's.
    AcGePoint3d ucsorg() const;
    AcGeVector3d ucsxdir() const;
    AcGeVector3d ucsydir() const;
    /// Likewise of paper space.
    AcGePoint3d pucsorg() const;
    AcGeVector3d pucsxdir() const;
    AcGeVector3d pucsydir() const;
    hostkit::HeaderVariables& header();
    const hostkit::HeaderVariables& header() const;

    // Origin.

    /// The file that the drawing was read from; eFileNotFound, and an empty text, for a new one. The text
    /// lives with the drawing.
    Acad::ErrorStatus getFilename(const wchar_t*& name) const;
    const wchar_t* originalFileName() const;
    AcDb::AcDbDwgVersion originalFileVersion() const;
    /// Reads a drawing of any form into this one, which was made without default objects and holds nothing
    /// yet. What is told of a damaged drawing goes to the port. The statuses of hostkit::readDrawing;
    /// eInvalidInput for a drawing that holds something. Passwords are not known: a drawing that asks for one
    /// gives eNotApplicable. Nothing is shared with other programs, so that the mode does not matter.
    Acad::ErrorStatus readDwgFile(const wchar_t* fileName, AcDb::OpenMode mode = AcDb::kForRead,
                                  bool allowCodePageConversion = false, const wchar_t* password = nullptr);
    /// Writes a binary drawing in that form, whatever the name's ending, in one step: under the name stands
    /// either what stood there before or the whole new drawing. With `backsUp`, what stood there keeps
    /// standing beside it with the ending ".bak", in place of an older one of that name. What is open for
    /// write is written as it stands, so that a failing program can save. The drawing's own file name stays.
    ///
    /// eInvalidInput: a null name, or a form that binary drawings are not written in (before 2000, and 2007);
    /// eNotApplicable: security parameters, which are not known; the statuses of hostkit::writeDrawing but
    /// eWasOpenForWrite. A failure goes to the port.
    Acad::ErrorStatus saveAs(const wchar_t* fileName, bool backsUp = true,
                             AcDb::AcDbDwgVersion version = AcDb::kDHL_CURRENT,
                             const SecurityParams* security = nullptr) const;
    /// The bytes that the drawing was read from; null for a new one.
    std::shared_ptr<const hostkit::DrawingSource> source() const;

private:
    friend class hostkit::DatabaseAccess;
    friend class AcDbObject;
    template <typename Table>
    Acad::ErrorStatus openTable(Table*& table, AcDbObjectId id, AcDb::OpenMode mode);
    Acad::ErrorStatus setCurrent(const wchar_t* variable, short code, AcDbObjectId table,
                                 AcDbObjectId record);
    Adesk::Int16 smallInteger(const wchar_t* variable, Adesk::Int16 otherwise) const;

    std::unique_ptr<hostkit::DatabaseContents> m_contents;
    bool m_mayWrite = true;
};
