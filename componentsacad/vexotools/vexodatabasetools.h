#pragma once

#include "acadstrc.h"
#include "acarray.h"
#include "adesk.h"
#include "afx.h"
#include "dbid.h"
#include "dbmaindefs.h"

class AcApDocument;
class AcDbDatabase;
class AcDbDictionary;
class AcDbEntity;
class AcDbObject;
class AcGePoint3d;
class VEXOSmartLock;

/// Where the application keeps its data in a drawing, and how it gets there.
class VEXODatabaseTools {
public:
    // -----------------------------------------------------------------------------------------------------------------
    // Dictionary tree (vexodatabasetools.cpp)
    // -----------------------------------------------------------------------------------------------------------------
    //
    // Below the drawing's named-object dictionary (level 0) stands one dictionary a service (level 1) under a
    // fixed name: "VEXO_SERVICES", "VEXO_INFO", "VEXO_REP_STYLES", "VEXO_MOULD_REFERENCE", or any other that
    // a caller passes; its entries are level 2. Names are the host's: compared without regard to case.
    //
    // int results are 1 for success and 0 for failure unless told otherwise. A null database is the host's
    // working database, but for isExistInfoObjectDictionary. Nothing is shown, level 0 is closed on every
    // path, and no open is tried twice. Locks are taken before anything is opened, and for writing only.

    /// The level 1 dictionary of that name, open in `mode` for the caller to close; null when it is missing,
    /// open elsewhere, no dictionary, or there is no database. For write, and with `create` not 0, a missing
    /// one is made; a new "VEXO_SERVICES" (in any case) is stamped with the integer 1 under application
    /// "ORDANE", key "VEXO_SERVICES". For write a document lock is held during the call alone, whether it
    /// could be had or not: callers that go on writing hold their own.
    static AcDbDictionary* openDictionary(const wchar_t* name, AcDb::OpenMode mode, AcDbDatabase* database,
                                          int create);
    /// The same in the document's database; a missing one is always made for write, and never stamped. Null
    /// for a null document.
    static AcDbDictionary* openDictionary(const wchar_t* name, AcDb::OpenMode mode, AcApDocument* document);
    /// The form that hands out its lock. For write, `lock` becomes a guard on the current document (not on
    /// the database's own), and a lock that cannot be had is a failure. Nothing is stamped. On failure the
    /// guard is deleted and `lock` set to null, but for one case that callers handle: a missing dictionary
    /// that was not made, or an entry that is no dictionary, leaves the guard in `lock`. So delete `lock`
    /// whenever it is not null, also after a null result, and only after closing the dictionary. For read,
    /// success leaves `lock` alone.
    static AcDbDictionary* openDictionary2(const wchar_t* name, AcDb::OpenMode mode, VEXOSmartLock*& lock,
                                           AcDbDatabase* database, int create);

    /// Puts the object into the level 1 dictionary of that name, which is made where it is missing. A null
    /// key lets the host name the entry ("*"). The object is closed, and the dictionary too with
    /// `closeDictionary`. 0, with the object untouched, only when the dictionary cannot be had; a refused
    /// object (a key that is taken) gives 1 and shows in `id` alone, which stays as it was. A refused object
    /// that was new is still the caller's.
    static int appendToDictionary(const wchar_t* dictionaryName, AcDbObject* object, AcDbObjectId& id,
                                  AcDbDatabase* database, bool closeDictionary, const wchar_t* key);
    /// The same for a dictionary that is open for write, and stays open. 0 for null or one that is not.
    static int appendToDictionary(AcDbDictionary* dictionary, AcDbObject* object, AcDbObjectId& id,
                                  const wchar_t* key);
    /// The same in the document's database.
    static int appendToDictionary(const wchar_t* dictionaryName, AcDbObject* object, AcDbObjectId& id,
                                  AcApDocument* document, const wchar_t* key, int closeDictionary);

    /// Opens an entry for the caller to close; untouched after 0. For write a document lock is held during
    /// the call alone.
    static int getFromDictionary(const wchar_t* dictionaryName, const wchar_t* key, AcDbObject*& object,
                                 AcDb::OpenMode mode, AcDbDatabase* database);
    /// An entry's id; untouched after 0.
    static int getFromDictionary(const wchar_t* dictionaryName, const wchar_t* key, AcDbObjectId& id,
                                 AcDbDatabase* database);
    /// The ids of all entries in the dictionary's order; the array is emptied first. A dictionary that cannot
    /// be opened gives 1 and no ids; 0 only when the host gives no iterator.
    static int getFromDictionary(const wchar_t* dictionaryName, AcDbObjectIdArray& ids,
                                 AcDbDatabase* database);
    /// In an open dictionary; the database is not consulted. 0 for null.
    static int getFromDictionary(AcDbDictionary* dictionary, const wchar_t* key, AcDbObjectId& id,
                                 AcDbDatabase* database);
    /// 1 when the key is there. `id` becomes the entry's, or null when the key is missing; without the
    /// dictionary it stays as it was.
    static int isEntryInDictionary(const wchar_t* dictionaryName, const wchar_t* key, AcDbObjectId& id,
                                   AcDbDatabase* database);

    /// Whether the drawing has the dictionary "VEXO_INFO". Here null is no database, and false.
    static bool isExistInfoObjectDictionary(AcDbDatabase* database);
    /// The build version that the first stamped entry of "VEXO_INFO" carries (application "ORDANE", key
    /// "ORDANE"). eInvalidInput without the dictionary, without entries and when the last entry has no stamp;
    /// the status of its open when that failed. `version` is untouched unless eOk.
    static Acad::ErrorStatus getOrdaneBuildVersion(int& version, AcDbDatabase* database);

    /// Appends a new entity to the block of that name, which is made where it is missing. The entity stays
    /// open for the caller to close; after 0 it is still the caller's. No lock is taken.
    static int appendEntity(AcDbEntity* entity, const wchar_t* blockName, AcDbObjectId& id,
                            AcDbDatabase* database);
    /// The same in the working database, under a lock on the current document. 3 for a null entity. An entity
    /// that is in a drawing already counts as success; `id` then stays as it was.
    static int appendEntity(AcDbEntity* entity, const wchar_t* blockName, AcDbObjectId& id);

    // Walks. Each empties its array first and gives what is not erased, in the drawing's order; 0, and no
    // ids, when the database or the block cannot be had.

    /// The entities of all blocks, the spaces among them. A block that cannot be opened is left out.
    static int getFromBlockTable(AcDbObjectIdArray& ids, AcDbDatabase* database);
    /// The entities of the block of that name.
    static int getFromBlockTable(AcDbObjectIdArray& ids, const wchar_t* blockName, AcDbDatabase* database);
    /// The entities of model space.
    static int getFromModelSpace(AcDbObjectIdArray& ids, AcDbDatabase* database);
    /// The record of that name in the table that the word names: "APPID", "BLOCK", "DIMSTYLE", "LAYER",
    /// "LTYPE", "STYLE", "UCS", "VIEW" or "VPORT", in any case. A null id for another word or a missing
    /// record.
    static AcDbObjectId getFromSymbolTable(const wchar_t* tableWord, const wchar_t* name,
                                           AcDbDatabase* database = nullptr);

    // -----------------------------------------------------------------------------------------------------------------
    // Extended data (vexodatabasetools_xdata.cpp)
    // -----------------------------------------------------------------------------------------------------------------
    //
    // Small named values on an object, in the extended data of one application; the application's own is
    // "ORDANE". An entry is a 1000 record with the key and the records of the value behind it: 1070 for an
    // int, 1071 for a long or a long ptr, 1040, 1010, 1000 for a string, 1071 with the number of elements and
    // one 1071 each for a long array, nothing for a simple string. Drawings of customers hold this form; it
    // stays.
    //
    // Nothing in a block tells kinds apart, nor a key from a string value: keys are compared with every 1000
    // record, exactly and with regard to case, and the first one counts. Values are read as what is asked
    // for, whatever code they stand under; of a text, or beyond the width that was filed, a number has no
    // meaning.
    //
    // Widths are those of a drawing: 16 bits for an int (70000 reads back as 4464), 32 for a long, and for a
    // long ptr the low 32, without their sign. Replacing a value keeps the code it stood under: an int over a
    // double changes the low 16 bits of the double.
    //
    // Getters put the preset (-1, -1.0, the origin, an empty text) into the value first and leave it there
    // when they give false. Scalar setters give true once the object is open for write, also where the
    // drawing refuses the data (more than 16,383 bytes an object; an application that cannot be registered,
    // or an object of another drawing than the working one, where applications are registered): callers that
    // need to know read the value back.
    //
    // The object is open, for write in setters, and the caller holds the document's lock. A null object,
    // application or key gives false. Damaged blocks are followed to their end only: a key without a value
    // counts as not there for getters and is refused with false by setters, and an array ends where a text
    // begins, whatever its count says. A setter that would put a number over a text, or a text over a number,
    // refuses with false and changes nothing.

    static bool getIntValueInEntityXData(AcDbObject* object, const wchar_t* application, const wchar_t* key,
                                         int& value);
    /// Opens the entity for write, although it only reads; false when that fails.
    static bool getIntValueInEntityXData(AcDbObjectId id, const wchar_t* application, const wchar_t* key,
                                         int& value);
    static bool setIntValueInEntityXData(AcDbObject* object, const wchar_t* application, const wchar_t* key,
                                         int value);
    /// Opens the entity for write; false when that fails.
    static bool setIntValueInEntityXData(AcDbObjectId id, const wchar_t* application, const wchar_t* key,
                                         int value);
    static bool getLongValueInEntityXData(AcDbObject* object, const wchar_t* application, const wchar_t* key,
                                          long& value);
    static bool setLongValueInEntityXData(AcDbObject* object, const wchar_t* application, const wchar_t* key,
                                          long value);
    static bool getLongPtrValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                             const wchar_t* key, Adesk::Int64& value);
    static bool setLongPtrValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                             const wchar_t* key, Adesk::Int64 value);
    static bool getDoubleValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                            const wchar_t* key, double& value);
    static bool setDoubleValueInEntityXData(AcDbEntity* entity, const wchar_t* application,
                                            const wchar_t* key, double value);
    static bool getPointValueInEntityXData(AcDbEntity* entity, const wchar_t* application, const wchar_t* key,
                                           AcGePoint3d& value);
    static bool setPointValueInEntityXData(AcDbEntity* entity, const wchar_t* application, const wchar_t* key,
                                           const AcGePoint3d& value);
    /// The only getter that looks at the code: a 1000 record gives its text, a 1040 record the real with six
    /// decimals, any other the empty text; true in each case.
    static bool getStringValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                            const wchar_t* key, CString& value);
    static bool setStringValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                            const wchar_t* key, const wchar_t* value);

    /// A key that stands alone: a flag. One that is there already is not written again.
    static bool setSimpleStringValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                  const wchar_t* key);
    static bool hasSimpleStringValueInEntityXData(const AcDbObject* object, const wchar_t* application,
                                                  const wchar_t* key);
    /// Takes away the key and the record behind it, as for an entry of a key and one value: behind a flag
    /// that is the next entry's key, whose values stay. Callers rely on two records going. A key that is the
    /// block's last record is not removed and gives false.
    static bool removeSimpleStringValueInEntityXData(AcDbObject* object, const wchar_t* application,
                                                     const wchar_t* key);

    /// Replaces the elements; entries behind them stay. An empty array is a count of 0. True as for scalars.
    static bool setLongArrayInEntityXData(AcDbEntity* entity, const wchar_t* application, const wchar_t* key,
                                          const AcArray<long>& values);
    /// Appends the elements: the array is not emptied, so that values of several calls add up.
    static bool getLongArrayFromEntityXData(AcDbEntity* entity, const wchar_t* application,
                                            const wchar_t* key, AcArray<long>& values);
    /// One element more; makes the entry where it is missing. False also when the drawing refuses the data.
    static bool addLongValueToArrayInEntityXData(AcDbEntity* entity, const wchar_t* application,
                                                 const wchar_t* key, long value);
    /// Takes away key, count and elements. True also where there is nothing to remove; false when the drawing
    /// refuses.
    static bool removeLongArrayFromEntityXData(AcDbEntity* entity, const wchar_t* application,
                                               const wchar_t* key);
    /// Arrays of 64 bits can be read, as a long array's elements without sign, but not written: false, and
    /// nothing is changed.
    static bool setLongPtrArrayInEntityXData(AcDbEntity* entity, const wchar_t* application,
                                             const wchar_t* key, const AcArray<Adesk::Int64>& values);
    static bool getLongPtrArrayFromEntityXData(AcDbEntity* entity, const wchar_t* application,
                                               const wchar_t* key, AcArray<Adesk::Int64>& values);
    static bool addLongPtrValueToArrayInEntityXData(AcDbEntity* entity, const wchar_t* application,
                                                    const wchar_t* key, Adesk::Int64 value);

    /// Removes the extended data of the first application alone; that of later ones stays. eOk also when
    /// there is none and whatever the drawing says; eInvalidInput for null and an object that is not open for
    /// write.
    static Acad::ErrorStatus clearXData(AcDbObject* object);
    /// The same, but only when some application's data holds a handle (1005); gives the drawing's status.
    static Acad::ErrorStatus clearXDataWithHandle(AcDbObject* object);

    // -----------------------------------------------------------------------------------------------------------------
    // Metafiles (vexodatabasetools_metafile.cpp)
    // -----------------------------------------------------------------------------------------------------------------
    //
    // Pictures of a list of AcDbEntity pointers, nulls allowed, as enhanced metafiles: lines, arcs, light
    // polylines, other curves, texts and hatches (VEXOAcad2MetaFile), in the order of the list; other kinds
    // are left out. What a patterned hatch explodes to is drawn behind the list. A picture has one pixel of
    // the screen to a unit.
    //
    // The entities are scaled in place, about the middle of their common box, and stay so, also where the
    // file cannot be made or written; those that cannot be scaled are drawn as they are. False: an empty
    // list, one that has no box, or a file that cannot be made or written; then no file is there that was not
    // there before.

    /// Scaled by that factor. The second factor has no effect.
    static bool ExportEntitiesInWMF(const AcArray<void*>& entities, const CString& file, double scale,
                                    double secondFactor);
    /// Scaled so that the flat diagonal of the box is 100 units, with two dots that make the picture's width
    /// by its height the aspect: the longer direction has a margin of 5 per cent on either side. A list
    /// without width or height counts as a square. A list that is one point alone has no such scale: callers
    /// keep it out; here it stays as it is. False for an aspect whose square is at most 1e-20.
    static bool ExportEntitiesInWmfEx(const AcArray<void*>& entities, const CString& file, double aspect);

    /// Whether the object refers to a registered application by an id that stands for a record of the
    /// application table and is not the one in the table. False for null.
    static bool XDataAppLies(AcDbObject* object);
    /// A non-resident copy that belongs to the caller: the class' own fields, no extended data. Null when the
    /// class makes no objects or its fields cannot be filed.
    static AcDbObject* cloneWithoutXData(AcDbObject* object);
};
