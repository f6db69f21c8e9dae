// The variables of dimensions as they act in one dimension: those of its style with its overrides.
#pragma once

#include "dbid.h"

#include "adesk.h"

#include <string>

namespace hostkit {

/// All variables under the host's names. A value that no record gives is the imperial default that stands
/// here, whatever the units of the drawing. Lengths are as they are kept, without dimscale, in drawing units
/// of the sheet; angles in radians.
struct DimensionVariables {
    // Texts.
    std::wstring dimpost;
    std::wstring dimapost;
    // Lengths and factors.
    double dimscale = 1.0; ///< 0: by the layout
    double dimasz = 0.18;
    double dimexo = 0.0625;
    double dimdli = 0.38;
    double dimexe = 0.18;
    double dimrnd = 0.0;
    double dimdle = 0.0;
    double dimtp = 0.0;
    double dimtm = 0.0;
    double dimfxlen = 1.0;
    double dimjogang = 0.7853981633974483; ///< radians
    double dimtxt = 0.18;
    double dimcen = 0.09;
    double dimtsz = 0.0;
    double dimaltf = 25.4;
    double dimlfac = 1.0;
    double dimtvp = 0.0;
    double dimtfac = 1.0;
    double dimgap = 0.09;
    double dimaltrnd = 0.0;
    // Counts, choices and switches.
    Adesk::Int16 dimtfill = 0;
    Adesk::Int16 dimtfillclr = 0; ///< index
    bool dimtol = false;
    bool dimlim = false;
    bool dimtih = true;
    bool dimtoh = true;
    bool dimse1 = false;
    bool dimse2 = false;
    Adesk::Int16 dimtad = 0;
    Adesk::Int16 dimzin = 0;
    Adesk::Int16 dimazin = 0;
    Adesk::Int16 dimarcsym = 0;
    bool dimalt = false;
    Adesk::Int16 dimaltd = 2;
    bool dimtofl = false;
    bool dimsah = false;
    bool dimtix = false;
    bool dimsoxd = false;
    Adesk::Int16 dimclrd = 0; ///< index: 0 by block, 256 by layer
    Adesk::Int16 dimclre = 0;
    Adesk::Int16 dimclrt = 0;
    Adesk::Int16 dimadec = 0; ///< -1: dimdec
    Adesk::Int16 dimdec = 4;
    Adesk::Int16 dimtdec = 4;
    Adesk::Int16 dimaltu = 2;
    Adesk::Int16 dimalttd = 2;
    Adesk::Int16 dimaunit = 0;
    Adesk::Int16 dimfrac = 0;
    Adesk::Int16 dimlunit = 2;
    wchar_t dimdsep = L'.';
    Adesk::Int16 dimtmove = 0;
    Adesk::Int16 dimjust = 0;
    bool dimsd1 = false;
    bool dimsd2 = false;
    Adesk::Int16 dimtolj = 1;
    Adesk::Int16 dimtzin = 0;
    Adesk::Int16 dimaltz = 0;
    Adesk::Int16 dimalttz = 0;
    bool dimupt = false;
    Adesk::Int16 dimatfit = 3;
    bool dimfxlenOn = false;
    bool dimtxtdirection = false;
    // Records; null is the standing one (text style), the filled closed arrow, by block (linetypes).
    AcDbObjectId dimtxsty;
    AcDbObjectId dimldrblk;
    AcDbObjectId dimblk;
    AcDbObjectId dimblk1;
    AcDbObjectId dimblk2;
    AcDbObjectId dimltype;
    AcDbObjectId dimltex1;
    AcDbObjectId dimltex2;
    // Lineweights: -2 by block, -1 by layer.
    Adesk::Int16 dimlwd = -2;
    Adesk::Int16 dimlwe = -2;

    /// What lengths are multiplied by. A style that takes its scale from the layout has it as an override of
    /// each dimension; where there is none it is 1, also for styles that are marked as annotative: no drawing
    /// at hand shows what a current annotation scale makes of a block, so it has no part here.
    double scale() const { return dimscale == 0.0 ? 1.0 : dimscale; }
};

} // namespace hostkit
