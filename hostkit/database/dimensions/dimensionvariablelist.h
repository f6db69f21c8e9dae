// The variables of dimensions, once: name, name in a setter, group code, kind, least and greatest value.
#pragma once

#include "dbcolor.h"
#include "dbid.h"
#include "dbmaindefs.h"

#include <limits>

namespace hostkit {

/// What a variable is for its callers.
namespace variabletypes {
using text = const wchar_t*;
using real = double;
using angle = double; ///< radians
using integer = int;
using flag = bool;
using color = AcCmColor;
using character = wchar_t;
using weight = AcDb::LineWeight;
using block = AcDbObjectId;
using textStyle = AcDbObjectId;
using linetype = AcDbObjectId;

constexpr double most = std::numeric_limits<double>::max();
} // namespace variabletypes

} // namespace hostkit

// In the order in which records have them.
// clang-format off
#define HOSTKIT_DIMENSION_VARIABLES(V)                      \
    V(dimpost, Dimpost, 3, text, 0, 0)                      \
    V(dimapost, Dimapost, 4, text, 0, 0)                    \
    V(dimscale, Dimscale, 40, real, 0, most)                \
    V(dimasz, Dimasz, 41, real, 0, most)                    \
    V(dimexo, Dimexo, 42, real, 0, most)                    \
    V(dimdli, Dimdli, 43, real, 0, most)                    \
    V(dimexe, Dimexe, 44, real, 0, most)                    \
    V(dimrnd, Dimrnd, 45, real, 0, most)                    \
    V(dimdle, Dimdle, 46, real, 0, most)                    \
    V(dimtp, Dimtp, 47, real, -most, most)                  \
    V(dimtm, Dimtm, 48, real, -most, most)                  \
    V(dimfxlen, Dimfxlen, 49, real, 0, most)                \
    V(dimjogang, Dimjogang, 50, angle, 0, most)             \
    V(dimtxt, Dimtxt, 140, real, 0, most)                   \
    V(dimcen, Dimcen, 141, real, -most, most)               \
    V(dimtsz, Dimtsz, 142, real, 0, most)                   \
    V(dimaltf, Dimaltf, 143, real, 0, most)                 \
    V(dimlfac, Dimlfac, 144, real, -most, most)             \
    V(dimtvp, Dimtvp, 145, real, -most, most)               \
    V(dimtfac, Dimtfac, 146, real, 0, most)                 \
    V(dimgap, Dimgap, 147, real, -most, most)               \
    V(dimaltrnd, Dimaltrnd, 148, real, 0, most)             \
    V(dimtfill, Dimtfill, 69, integer, 0, 2)                \
    V(dimtfillclr, Dimtfillclr, 70, color, 0, 256)          \
    V(dimtol, Dimtol, 71, flag, 0, 1)                       \
    V(dimlim, Dimlim, 72, flag, 0, 1)                       \
    V(dimtih, Dimtih, 73, flag, 0, 1)                       \
    V(dimtoh, Dimtoh, 74, flag, 0, 1)                       \
    V(dimse1, Dimse1, 75, flag, 0, 1)                       \
    V(dimse2, Dimse2, 76, flag, 0, 1)                       \
    V(dimtad, Dimtad, 77, integer, 0, 4)                    \
    V(dimzin, Dimzin, 78, integer, 0, 15)                   \
    V(dimazin, Dimazin, 79, integer, 0, 3)                  \
    V(dimarcsym, Dimarcsym, 90, integer, 0, 2)              \
    V(dimalt, Dimalt, 170, flag, 0, 1)                      \
    V(dimaltd, Dimaltd, 171, integer, 0, 8)                 \
    V(dimtofl, Dimtofl, 172, flag, 0, 1)                    \
    V(dimsah, Dimsah, 173, flag, 0, 1)                      \
    V(dimtix, Dimtix, 174, flag, 0, 1)                      \
    V(dimsoxd, Dimsoxd, 175, flag, 0, 1)                    \
    V(dimclrd, Dimclrd, 176, color, 0, 256)                 \
    V(dimclre, Dimclre, 177, color, 0, 256)                 \
    V(dimclrt, Dimclrt, 178, color, 0, 256)                 \
    V(dimadec, Dimadec, 179, integer, -1, 8)                \
    V(dimdec, Dimdec, 271, integer, 0, 8)                   \
    V(dimtdec, Dimtdec, 272, integer, 0, 8)                 \
    V(dimaltu, Dimaltu, 273, integer, 1, 8)                 \
    V(dimalttd, Dimalttd, 274, integer, 0, 8)               \
    V(dimaunit, Dimaunit, 275, integer, 0, 4)               \
    V(dimfrac, Dimfrac, 276, integer, 0, 2)                 \
    V(dimlunit, Dimlunit, 277, integer, 1, 6)               \
    V(dimdsep, Dimdsep, 278, character, 0, 32767)           \
    V(dimtmove, Dimtmove, 279, integer, 0, 2)               \
    V(dimjust, Dimjust, 280, integer, 0, 4)                 \
    V(dimsd1, Dimsd1, 281, flag, 0, 1)                      \
    V(dimsd2, Dimsd2, 282, flag, 0, 1)                      \
    V(dimtolj, Dimtolj, 283, integer, 0, 2)                 \
    V(dimtzin, Dimtzin, 284, integer, 0, 15)                \
    V(dimaltz, Dimaltz, 285, integer, 0, 15)                \
    V(dimalttz, Dimalttz, 286, integer, 0, 15)              \
    V(dimupt, Dimupt, 288, flag, 0, 1)                      \
    V(dimatfit, Dimatfit, 289, integer, 0, 3)               \
    V(dimfxlenOn, DimfxlenOn, 290, flag, 0, 1)              \
    V(dimtxtdirection, Dimtxtdirection, 294, flag, 0, 1)    \
    V(dimtxsty, Dimtxsty, 340, textStyle, 0, 0)             \
    V(dimldrblk, Dimldrblk, 341, block, 0, 0)               \
    V(dimblk, Dimblk, 342, block, 0, 0)                     \
    V(dimblk1, Dimblk1, 343, block, 0, 0)                   \
    V(dimblk2, Dimblk2, 344, block, 0, 0)                   \
    V(dimltype, Dimltype, 345, linetype, 0, 0)              \
    V(dimltex1, Dimltex1, 346, linetype, 0, 0)              \
    V(dimltex2, Dimltex2, 347, linetype, 0, 0)              \
    V(dimlwd, Dimlwd, 371, weight, -3, 211)                 \
    V(dimlwe, Dimlwe, 372, weight, -3, 211)
// clang-format on
