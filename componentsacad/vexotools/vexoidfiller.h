#pragma once

#include "acarray.h"
#include "dbfiler.h"

/// A binary filer that forgets what it is given but for the ids: an object's dwgOut into it tells what the
/// object refers to. Null ids are gathered too. Nothing can be read from it: eNotApplicable.
class VEXOIdFiller : public AcDbDwgFiler {
public:
    /// In the order of filing, of every kind of reference.
    const AcDbObjectIdArray& ids() const { return m_ids; }

    AcDb::FilerType filerType() const override { return AcDb::kIdFiler; }
    Acad::ErrorStatus filerStatus() const override { return m_status; }
    void resetFilerStatus() override { m_status = Acad::eOk; }
    void setFilerStatus(Acad::ErrorStatus status) override { m_status = status; }
    Acad::ErrorStatus seek(Adesk::Int64, int) override { return Acad::eNotApplicable; }
    Adesk::Int64 tell() const override { return 0; }

    Acad::ErrorStatus readInt16(Adesk::Int16*) override { return refuse(); }
    Acad::ErrorStatus readInt32(Adesk::Int32*) override { return refuse(); }
    Acad::ErrorStatus readInt64(Adesk::Int64*) override { return refuse(); }
    Acad::ErrorStatus readBool(bool*) override { return refuse(); }
    Acad::ErrorStatus readDouble(double*) override { return refuse(); }
    Acad::ErrorStatus readString(wchar_t**) override { return refuse(); }
    Acad::ErrorStatus readPoint2d(AcGePoint2d*) override { return refuse(); }
    Acad::ErrorStatus readPoint3d(AcGePoint3d*) override { return refuse(); }
    Acad::ErrorStatus readVector2d(AcGeVector2d*) override { return refuse(); }
    Acad::ErrorStatus readVector3d(AcGeVector3d*) override { return refuse(); }
    Acad::ErrorStatus readScale3d(AcGeScale3d*) override { return refuse(); }
    Acad::ErrorStatus readBytes(void*, Adesk::UInt32) override { return refuse(); }
    Acad::ErrorStatus readSoftPointerId(AcDbObjectId*) override { return refuse(); }
    Acad::ErrorStatus readHardPointerId(AcDbObjectId*) override { return refuse(); }
    Acad::ErrorStatus readSoftOwnershipId(AcDbObjectId*) override { return refuse(); }
    Acad::ErrorStatus readHardOwnershipId(AcDbObjectId*) override { return refuse(); }

    Acad::ErrorStatus writeInt16(Adesk::Int16) override { return m_status; }
    Acad::ErrorStatus writeInt32(Adesk::Int32) override { return m_status; }
    Acad::ErrorStatus writeInt64(Adesk::Int64) override { return m_status; }
    Acad::ErrorStatus writeBool(bool) override { return m_status; }
    Acad::ErrorStatus writeDouble(double) override { return m_status; }
    Acad::ErrorStatus writeString(const wchar_t*) override { return m_status; }
    Acad::ErrorStatus writePoint2d(const AcGePoint2d&) override { return m_status; }
    Acad::ErrorStatus writePoint3d(const AcGePoint3d&) override { return m_status; }
    Acad::ErrorStatus writeVector2d(const AcGeVector2d&) override { return m_status; }
    Acad::ErrorStatus writeVector3d(const AcGeVector3d&) override { return m_status; }
    Acad::ErrorStatus writeScale3d(const AcGeScale3d&) override { return m_status; }
    Acad::ErrorStatus writeBytes(const void*, Adesk::UInt32) override { return m_status; }
    Acad::ErrorStatus writeSoftPointerId(AcDbObjectId id) override { return gather(id); }
    Acad::ErrorStatus writeHardPointerId(AcDbObjectId id) override { return gather(id); }
    Acad::ErrorStatus writeSoftOwnershipId(AcDbObjectId id) override { return gather(id); }
    Acad::ErrorStatus writeHardOwnershipId(AcDbObjectId id) override { return gather(id); }

private:
    Acad::ErrorStatus gather(AcDbObjectId id) {
        m_ids.append(id);
        return m_status;
    }
    Acad::ErrorStatus refuse() { return m_status = Acad::eNotApplicable; }

    AcDbObjectIdArray m_ids;
    Acad::ErrorStatus m_status = Acad::eOk;
};
