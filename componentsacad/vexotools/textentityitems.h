#pragma once

#include "entityitems.h"

#include "dbfiler.h"

#include <memory>

namespace vexo {

/// The group codes of items in a text filer: the order alone tells the items apart.
namespace itemcodes {
constexpr short text = 1;
constexpr short point = 10; ///< points and vectors, those of a plane too
constexpr short real = 40;
constexpr short int16 = 70;
constexpr short int32 = 90;
} // namespace itemcodes

/// Items of a record into a text filer.
class TextItemWriter final : public EntityItems {
public:
    explicit TextItemWriter(AcDbDxfFiler& filer)
        : m_filer(filer) {}

    bool isReading() const override { return false; }
    bool isGood() const override { return true; } // a filer that has failed takes nothing more
    Acad::ErrorStatus status() const override { return m_filer.filerStatus(); }
    void refuse(const wchar_t*, int) override {}

    void item(Adesk::Int32& value) override { (void)m_filer.writeInt32(itemcodes::int32, value); }
    void item(Adesk::Int16& value) override { (void)m_filer.writeInt16(itemcodes::int16, value); }
    void item(double& value) override { (void)m_filer.writeDouble(itemcodes::real, value); }
    void item(AcGePoint2d& value) override { (void)m_filer.writePoint2d(itemcodes::point, value); }
    void item(AcGePoint3d& value) override { (void)m_filer.writePoint3d(itemcodes::point, value); }
    void item(AcGeVector2d& value) override { (void)m_filer.writeVector2d(itemcodes::point, value); }
    void item(AcGeVector3d& value) override { (void)m_filer.writeVector3d(itemcodes::point, value); }
    void item(CString& value) override { (void)m_filer.writeString(itemcodes::text, value); }

private:
    AcDbDxfFiler& m_filer;
};

/// Items of a record out of a text filer. A group of another code than the one that is due, and the end of
/// the record, stop the reading: the group goes back, and the filer fails with eBadDxfSequence and a text
/// that names the code.
class TextItemReader final : public EntityItems {
public:
    explicit TextItemReader(AcDbDxfFiler& filer);

    bool isReading() const override { return true; }
    bool isGood() const override { return m_isGood; }
    Acad::ErrorStatus status() const override { return m_filer.filerStatus(); }
    void refuse(const wchar_t* format, int value) override;

    void item(Adesk::Int32& value) override;
    void item(Adesk::Int16& value) override;
    void item(double& value) override;
    void item(AcGePoint2d& value) override;
    void item(AcGePoint3d& value) override;
    void item(AcGeVector2d& value) override;
    void item(AcGeVector3d& value) override;
    void item(CString& value) override;

private:
    struct Release {
        void operator()(resbuf* record) const { acutRelRb(record); }
    };
    /// The next group is in the record, and is the one that is due.
    bool read(short code);

    AcDbDxfFiler& m_filer;
    std::unique_ptr<resbuf, Release> m_record;
    bool m_isGood;
};

} // namespace vexo
