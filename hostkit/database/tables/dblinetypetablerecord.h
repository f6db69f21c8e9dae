// Stand-in for the host's AcDbLinetypeTableRecord. Covers the description and the dashes with their shapes and texts as kept; leaves out drawing them.
#pragma once

#include "dbsymboltablerecord.h"
#include "groupblock.h"

#include <vector>

class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord)

public:
    AcDbLinetypeTableRecord() = default;
    AcDbLinetypeTableRecord(const AcDbLinetypeTableRecord&) = default;

    const std::wstring& comments() const { return m_comments; }
    Acad::ErrorStatus comments(wchar_t*& text) const;
    Acad::ErrorStatus setComments(const wchar_t* text);
    /// In drawing units, at scale 1.
    double patternLength() const { return m_patternLength; }
    Acad::ErrorStatus setPatternLength(double length);
    int numDashes() const { return static_cast<int>(m_dashes.size()); }
    /// Cuts, or fills with zero dashes. eInvalidInput below 0 and above 12.
    Acad::ErrorStatus setNumDashes(int count);
    /// Above 0 a dash, below 0 a gap, 0 a dot. 0 for an index that is none.
    double dashLengthAt(int index) const;
    Acad::ErrorStatus setDashLengthAt(int index, double length);

    AcRxObject* clone() const override { return new AcDbLinetypeTableRecord(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    /// ByLayer, ByBlock and Continuous stay.
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    struct Filing;
    /// One dash with what stands on it (group 74 and those that follow it).
    struct Dash {
        double length = 0.0;
        hostkit::GroupBlock shape;
    };
    std::wstring m_comments;
    double m_patternLength = 0.0;
    Adesk::Int16 m_alignment = 65;
    std::vector<Dash> m_dashes;
};
