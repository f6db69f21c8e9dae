// Stand-in for the host's AcDbMInsertBlock. Covers the insertion in rows and columns; leaves out nothing.
#pragma once

#include "dbblockreference.h"

#include <algorithm>

/// A block put in rows and columns, along the axes of the rotated reference; the scale factors do not scale
/// the spacings.
class AcDbMInsertBlock : public AcDbBlockReference {
    ACRX_DECLARE_MEMBERS(AcDbMInsertBlock)

public:
    AcDbMInsertBlock() = default;
    AcDbMInsertBlock(const AcDbMInsertBlock&) = default;

    Adesk::UInt16 columns() const { return static_cast<Adesk::UInt16>(m_columns); }
    Adesk::UInt16 rows() const { return static_cast<Adesk::UInt16>(m_rows); }
    /// eInvalidInput for 0 and above 32767.
    Acad::ErrorStatus setColumns(Adesk::UInt16 columns);
    Acad::ErrorStatus setRows(Adesk::UInt16 rows);
    double columnSpacing() const { return m_columnSpacing; }
    Acad::ErrorStatus setColumnSpacing(double spacing);
    double rowSpacing() const { return m_rowSpacing; }
    Acad::ErrorStatus setRowSpacing(double spacing);
    void getCopySpread(AcGeVector3d& columns, AcGeVector3d& rows) const override;
    AcRxObject* clone() const override { return new AcDbMInsertBlock(*this); }

protected:
    /// The spacings follow, along the axes that the reference has afterwards.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    /// A file may say 0 for 1.
    int copyCount() const override { return std::max<int>(1, m_columns) * std::max<int>(1, m_rows); }
    AcGeMatrix3d copyTransform(int index) const override;
    const wchar_t* subclassMark() const override { return L"AcDbMInsertBlock"; }
    bool readArrayGroup(const AcDbDxfGroup& group, AcDbDxfFiler& filer) override;
    void writeArrayGroups(AcDbDxfFiler& filer) const override;

private:
    AcGeVector3d columnAxis() const;
    AcGeVector3d rowAxis() const;

    struct Filing;
    Adesk::Int16 m_columns = 1;
    Adesk::Int16 m_rows = 1;
    double m_columnSpacing = 0.0;
    double m_rowSpacing = 0.0;
};
