// Stand-in for the host's filers. Covers the text filer's groups, the binary filer's items and their errors; leaves out progress and 8-bit items.
#pragma once

#include "dbdxfgroup.h"
#include "dbmaindefs.h"

#include "acadstrc.h"
#include "adsdef.h"
#include "dbid.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "gevec2d.h"
#include "gevec3d.h"

#include <string>
#include <string_view>

class AcDbDatabase;

/// Groups in and out of a record in the form of the text drawing. One filer is either read from or written
/// to; the operations of the other direction give eNotApplicable (reading) or set it as the filer's status
/// (writing).
///
/// A class reads in `dxfInFields` with readItem until eEndOfObject, and hands what it does not know to
/// rejectItem: the filer remembers it and a later writing puts it back. It writes in `dxfOutFields`. Both
/// call their parent class first.
class AcDbDxfFiler {
public:
    virtual ~AcDbDxfFiler() = default;
    AcDbDxfFiler(const AcDbDxfFiler&) = delete;
    AcDbDxfFiler& operator=(const AcDbDxfFiler&) = delete;

    virtual AcDb::FilerType filerType() const = 0;
    /// The drawing that ids and names are looked up in; null for a filer that serves objects of no drawing.
    virtual AcDbDatabase* database() const { return nullptr; }
    /// The drawing form that is read or written.
    virtual AcDb::AcDbDwgVersion dwgVersion() const { return AcDb::kDHL_CURRENT; }
    /// No subclass marks, no handles of owners, no true colours.
    bool isR12Form() const { return dwgVersion() <= AcDb::kDHL_1009; }
    /// Of the record that is read: some programs leave the marks out, others put them into the R12 form.
    virtual bool hasSubclassMarks() const { return !isR12Form(); }

    Acad::ErrorStatus filerStatus() const { return m_status; }
    void resetFilerStatus();
    /// Keeps the first failure: a later one does not replace it. eOk is ignored.
    void setError(Acad::ErrorStatus status);
    /// As above, with a text in the manner of wprintf that says why.
    void setError(Acad::ErrorStatus status, const wchar_t* format, ...);
    const std::wstring& errorMessage() const { return m_message; }

    // Reading.

    /// The next group of the record. eEndOfObject at its end (the group stays untouched); a failure otherwise
    /// is the filer's status as well. Texts in the group live until the next readItem.
    virtual Acad::ErrorStatus readItem(AcDbDxfGroup& group);
    /// The last group comes again with the next readItem. One level only.
    virtual void pushBackItem() {}
    /// The class does not know the last group; it is kept for writing.
    virtual void rejectItem() {}
    /// The next group is the subclass mark of that name (it is read then), or the form has no subclass marks.
    /// Else nothing is read.
    virtual bool atSubclassData(const wchar_t* name);
    /// As above for a class whose groups stand behind the one mark or the other, by their writer. They are
    /// those of the part `name`.
    virtual bool atEitherSubclass(const wchar_t* name, const wchar_t* other) {
        return atSubclassData(name) || atSubclassData(other);
    }
    virtual bool atEndOfObject() { return true; }
    virtual bool atExtendedData() { return false; }
    /// The object that a handle or pointer group means. Null for handle 0 and for one that no object of the
    /// drawing has, once reading is over; while a drawing is read the id comes before the object.
    virtual AcDbObjectId objectIdOf(const AcDbDxfGroup& group);
    /// An angle group in radians; a drawing file has degrees.
    virtual double angleOf(const AcDbDxfGroup& group) const;
    /// True where the group came as an id and not as the name of a record; the id may be null.
    virtual bool recordOf(const AcDbDxfGroup&, AcDbObjectId&) const { return false; }
    /// The next group as a record of a list; the record's own link stays as it is. A text is from
    /// acutNewString and belongs to the record; an old text of the record is not freed. Handles come as text,
    /// codes 330 to 369 too.
    Acad::ErrorStatus readResBuf(resbuf* record);
    /// readItem, with the caller's expectation: false, the item pushed back, and eBadDxfSequence as the
    /// status, when another code comes.
    bool readExpected(short code, AcDbDxfGroup& group);

    // Writing. What fails is told by filerStatus.

    /// Whether what is written will have the object, so that a list may name it. A drawing's file does not
    /// get what its reader gave to the drawing (layouts, dictionaries) until somebody changes it.
    virtual bool files(AcDbObjectId object) const { return !object.isNull() && !object.isErased(); }

    /// The group written next holds the value that a reader takes where the group is missing. A drawing's
    /// filer writes it only where it stood in the object's record before, also when markOptional is called as
    /// well; other filers write it like any.
    virtual void markDefault() {}
    /// The group written next belongs into a new record, and into one that had it; an older record of the
    /// object that did without it stays without.
    virtual void markOptional() {}
    /// The group written next came with that form: an older one has it only where it was read with it.
    void markSince(AcDb::AcDbDwgVersion first) {
        if (dwgVersion() < first) markDefault();
    }
    virtual void writeText(short code, std::wstring_view text);
    virtual void writeReal(short code, double value);
    /// Radians. A drawing file gets degrees; filers that serve one process keep the value to the bit.
    virtual void writeAngle(short code, double radians);
    /// The code is that of x; y and z follow with code + 10 and + 20.
    virtual void writePoint(short code, const double* coordinates, int dimension);
    /// For 16-, 32- and 64-bit codes alike; the code's kind says how many places it has.
    virtual void writeInteger(short code, Adesk::Int64 value);
    virtual void writeHandle(short code, Adesk::UInt64 handle);
    /// The kind of reference is the code's, see writeItem.
    virtual void writeId(short code, AcDbObjectId id);
    /// A reference to a symbol record, which a drawing file has by its name; an empty name is not written.
    virtual void writeRecordName(short code, AcDbObjectId record, std::wstring_view name);
    virtual void writeBinary(short code, const void* bytes, std::size_t size);
    /// Code 100. Begins the part of that class; a record of a form without subclass marks does not show it.
    virtual void writeSubclassMark(const wchar_t* name);

    /// A group as it was read, by its kind.
    void writeGroup(const AcDbDxfGroup& group);

    void writeItem(short code, const wchar_t* text) { writeText(code, text ? std::wstring_view(text) : L""); }
    void writeItem(short code, std::wstring_view text) { writeText(code, text); }
    void writeItem(short code, const std::wstring& text) { writeText(code, text); }
    void writeItem(short code, double value) { writeReal(code, value); }
    void writeItem(short code, bool value) { writeInteger(code, value); }
    void writeItem(short code, Adesk::Int16 value) { writeInteger(code, value); }
    void writeItem(short code, Adesk::UInt16 value) { writeInteger(code, value); }
    void writeItem(short code, Adesk::Int32 value) { writeInteger(code, value); }
    void writeItem(short code, Adesk::UInt32 value) { writeInteger(code, value); }
    void writeItem(short code, Adesk::Int64 value) { writeInteger(code, value); }
    void writeItem(short code, const AcDbHandle& handle) { writeHandle(code, handle.value()); }
    /// The kind of reference is the code's: 320 to 329 none, 330 to 339 soft pointer, 340 to 349 hard
    /// pointer, 350 to 359 soft owner, 360 to 369 hard owner.
    void writeItem(short code, const AcDbObjectId& id) { writeId(code, id); }
    void writeItem(short code, const AcGePoint3d& point) { writePoint(code, &point.x, 3); }
    void writeItem(short code, const AcGeVector3d& vector) { writePoint(code, &vector.x, 3); }
    void writeItem(short code, const AcGePoint2d& point) { writePoint(code, &point.x, 2); }
    void writeItem(short code, const AcGeVector2d& vector) { writePoint(code, &vector.x, 2); }

    // The same under the names of the width.
    Acad::ErrorStatus writeString(short code, const wchar_t* text) { return writeItem(code, text), m_status; }
    Acad::ErrorStatus writeInt16(short code, Adesk::Int16 v) { return writeInteger(code, v), m_status; }
    Acad::ErrorStatus writeInt32(short code, Adesk::Int32 v) { return writeInteger(code, v), m_status; }
    Acad::ErrorStatus writeInt64(short code, Adesk::Int64 v) { return writeInteger(code, v), m_status; }
    Acad::ErrorStatus writeBool(short code, bool v) { return writeInteger(code, v), m_status; }
    Acad::ErrorStatus writeDouble(short code, double v) { return writeReal(code, v), m_status; }
    Acad::ErrorStatus writePoint2d(short code, const AcGePoint2d& v) { return writeItem(code, v), m_status; }
    Acad::ErrorStatus writePoint3d(short code, const AcGePoint3d& v) { return writeItem(code, v), m_status; }
    Acad::ErrorStatus writeVector2d(short code, const AcGeVector2d& v) {
        return writeItem(code, v), m_status;
    }
    Acad::ErrorStatus writeVector3d(short code, const AcGeVector3d& v) {
        return writeItem(code, v), m_status;
    }
    Acad::ErrorStatus writeObjectId(short code, AcDbObjectId id) { return writeItem(code, id), m_status; }
    /// A record of a list by its own code.
    Acad::ErrorStatus writeResBuf(const resbuf& record);

protected:
    AcDbDxfFiler() = default;
    Acad::ErrorStatus m_status = Acad::eOk;
    std::wstring m_message;
};

/// Items in and out of a stream of the binary drawing's kind: the order alone tells them apart. A failed read
/// gives the filer's status and leaves the value as it was.
class AcDbDwgFiler {
public:
    virtual ~AcDbDwgFiler() = default;
    AcDbDwgFiler(const AcDbDwgFiler&) = delete;
    AcDbDwgFiler& operator=(const AcDbDwgFiler&) = delete;

    virtual AcDb::FilerType filerType() const = 0;
    virtual AcDbDatabase* database() const { return nullptr; }
    virtual Acad::ErrorStatus filerStatus() const = 0;
    virtual void resetFilerStatus() = 0;
    virtual void setFilerStatus(Acad::ErrorStatus status) = 0;

    /// Where the next item is read or written. Method 0 counts from the start, 1 from here, 2 from the end.
    /// eNotApplicable for filers that only go forward; eInvalidInput for a place outside the stream.
    virtual Acad::ErrorStatus seek(Adesk::Int64 offset, int method) = 0;
    virtual Adesk::Int64 tell() const = 0;

    virtual Acad::ErrorStatus readInt16(Adesk::Int16* value) = 0;
    virtual Acad::ErrorStatus readInt32(Adesk::Int32* value) = 0;
    virtual Acad::ErrorStatus readInt64(Adesk::Int64* value) = 0;
    virtual Acad::ErrorStatus readBool(bool* value) = 0;
    virtual Acad::ErrorStatus readDouble(double* value) = 0;
    /// The text is from acutNewString and belongs to the caller.
    virtual Acad::ErrorStatus readString(wchar_t** text) = 0;
    virtual Acad::ErrorStatus readPoint2d(AcGePoint2d* value) = 0;
    virtual Acad::ErrorStatus readPoint3d(AcGePoint3d* value) = 0;
    virtual Acad::ErrorStatus readVector2d(AcGeVector2d* value) = 0;
    virtual Acad::ErrorStatus readVector3d(AcGeVector3d* value) = 0;
    virtual Acad::ErrorStatus readScale3d(AcGeScale3d* value) = 0;
    virtual Acad::ErrorStatus readBytes(void* bytes, Adesk::UInt32 count) = 0;
    virtual Acad::ErrorStatus readSoftPointerId(AcDbObjectId* id) = 0;
    virtual Acad::ErrorStatus readHardPointerId(AcDbObjectId* id) = 0;
    virtual Acad::ErrorStatus readSoftOwnershipId(AcDbObjectId* id) = 0;
    virtual Acad::ErrorStatus readHardOwnershipId(AcDbObjectId* id) = 0;

    virtual Acad::ErrorStatus writeInt16(Adesk::Int16 value) = 0;
    virtual Acad::ErrorStatus writeInt32(Adesk::Int32 value) = 0;
    virtual Acad::ErrorStatus writeInt64(Adesk::Int64 value) = 0;
    virtual Acad::ErrorStatus writeBool(bool value) = 0;
    virtual Acad::ErrorStatus writeDouble(double value) = 0;
    virtual Acad::ErrorStatus writeString(const wchar_t* text) = 0;
    virtual Acad::ErrorStatus writePoint2d(const AcGePoint2d& value) = 0;
    virtual Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) = 0;
    virtual Acad::ErrorStatus writeVector2d(const AcGeVector2d& value) = 0;
    virtual Acad::ErrorStatus writeVector3d(const AcGeVector3d& value) = 0;
    virtual Acad::ErrorStatus writeScale3d(const AcGeScale3d& value) = 0;
    virtual Acad::ErrorStatus writeBytes(const void* bytes, Adesk::UInt32 count) = 0;
    virtual Acad::ErrorStatus writeSoftPointerId(AcDbObjectId id) = 0;
    virtual Acad::ErrorStatus writeHardPointerId(AcDbObjectId id) = 0;
    virtual Acad::ErrorStatus writeSoftOwnershipId(AcDbObjectId id) = 0;
    virtual Acad::ErrorStatus writeHardOwnershipId(AcDbObjectId id) = 0;

protected:
    AcDbDwgFiler() = default;
};
