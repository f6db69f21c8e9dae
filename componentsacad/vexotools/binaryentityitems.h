#pragma once

#include "entityitems.h"

#include "dbfiler.h"

namespace vexo {

/// Items of a record into a binary filer.
class BinaryItemWriter final : public EntityItems {
public:
    explicit BinaryItemWriter(AcDbDwgFiler& filer)
        : m_filer(filer) {}

    bool isReading() const override { return false; }
    bool isGood() const override { return true; } // a filer that has failed takes nothing more
    Acad::ErrorStatus status() const override { return m_filer.filerStatus(); }
    void refuse(const wchar_t*, int) override {}

    void item(Adesk::Int32& value) override { (void)m_filer.writeInt32(value); }
    void item(Adesk::Int16& value) override { (void)m_filer.writeInt16(value); }
    void item(double& value) override { (void)m_filer.writeDouble(value); }
    void item(AcGePoint2d& value) override { (void)m_filer.writePoint2d(value); }
    void item(AcGePoint3d& value) override { (void)m_filer.writePoint3d(value); }
    void item(AcGeVector2d& value) override { (void)m_filer.writeVector2d(value); }
    void item(AcGeVector3d& value) override { (void)m_filer.writeVector3d(value); }
    void item(CString& value) override { (void)m_filer.writeString(value); }

private:
    AcDbDwgFiler& m_filer;
};

/// Items of a record out of a binary filer.
class BinaryItemReader final : public EntityItems {
public:
    explicit BinaryItemReader(AcDbDwgFiler& filer)
        : m_filer(filer)
        , m_status(filer.filerStatus()) {}

    bool isReading() const override { return true; }
    bool isGood() const override { return m_status == Acad::eOk; }
    Acad::ErrorStatus status() const override { return m_status; }
    void refuse(const wchar_t*, int) override {
        m_filer.setFilerStatus(Acad::eDwgObjectImproperlyRead);
        m_status = m_filer.filerStatus();
    }

    void item(Adesk::Int32& value) override { read(&AcDbDwgFiler::readInt32, value); }
    void item(Adesk::Int16& value) override { read(&AcDbDwgFiler::readInt16, value); }
    void item(double& value) override { read(&AcDbDwgFiler::readDouble, value); }
    void item(AcGePoint2d& value) override { read(&AcDbDwgFiler::readPoint2d, value); }
    void item(AcGePoint3d& value) override { read(&AcDbDwgFiler::readPoint3d, value); }
    void item(AcGeVector2d& value) override { read(&AcDbDwgFiler::readVector2d, value); }
    void item(AcGeVector3d& value) override { read(&AcDbDwgFiler::readVector3d, value); }
    void item(CString& value) override {
        wchar_t* text = nullptr;
        read(&AcDbDwgFiler::readString, text);
        if (text) value = text;
        acutDelString(text);
    }

private:
    template <class Read, class Value>
    void read(Read reading, Value& value) {
        if (isGood()) m_status = (m_filer.*reading)(&value);
    }

    AcDbDwgFiler& m_filer;
    Acad::ErrorStatus m_status;
};

} // namespace vexo
