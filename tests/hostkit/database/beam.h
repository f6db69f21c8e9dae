// A class as an application makes it: its own field goes through its filing, behind those of its parent.
#pragma once

#include "dbfiler.h"
#include "dbline.h"

namespace drawingtest {

class Beam : public AcDbLine {
    ACRX_DECLARE_MEMBERS(Beam)

public:
    double load() const { return m_load; }
    void setLoad(double load) {
        if (assertWriteEnabled() == Acad::eOk) m_load = load;
    }
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        if (!isFiled) return Acad::eNotImplementedYet;
        const Acad::ErrorStatus status = AcDbLine::dwgOutFields(filer);
        return status == Acad::eOk ? filer->writeDouble(m_load) : status;
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        Acad::ErrorStatus status = assertWriteEnabled();
        if (status == Acad::eOk) status = AcDbLine::dwgInFields(filer);
        return status == Acad::eOk ? filer->readDouble(&m_load) : status;
    }
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override {
        ++textCalls;
        return AcDbLine::dxfOutFields(filer);
    }

    static inline bool isFiled = true;
    mutable int textCalls = 0;

private:
    double m_load = 1.0;
};

/// The class is known for as long as this stands. Drawings with beams go before it.
struct BeamApplication {
    explicit BeamApplication(bool filesBeams = true) {
        Beam::rxInit();
        Beam::isFiled = filesBeams;
    }
    ~BeamApplication() { Beam::rxExit(); }
};

} // namespace drawingtest
