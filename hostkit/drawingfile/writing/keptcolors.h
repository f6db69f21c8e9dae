// True colours in forms without them: entities and layers; leaves out colours within texts and hatches.
#pragma once

#include "drawingrecord.h"
#include "groupblock.h"

#include "dbcolor.h"

#include <optional>
#include <string_view>

class AcDbObject;

namespace hostkit {

class DrawingText;

// Forms before 2004 have no true colours. There an object has the nearest index as its colour, and the true
// one in its extended data, under an application of its own: 1001 VEXO_TRUE_COLOR, 1071 0xRRGGBB. Who reads
// the drawing gets the true colour back for as long as the index is still its nearest: a program that knows
// nothing of it and gives another colour has its way. Applications never see these data.

inline constexpr const wchar_t* trueColorApplication = L"VEXO_TRUE_COLOR";

/// Of an entity or a layer that has one.
std::optional<AcCmEntityColor> trueColorOf(const AcDbObject& object);
/// Gives the object, which is in no drawing yet, the true colour that its record keeps; one that the record
/// has by itself stays.
void takeKeptColor(const DrawingRecord& record, const DrawingText& text, AcDbObject& object);
/// Takes that colour out of the extended data that were read with it: it is the object's own by now.
void dropTakenColor(const AcDbObject& object, GroupBlock& data);
/// The extended data with that colour kept in them, in place of one from before; without one where none is
/// given, or no room is left. True where they differ from the object's own.
bool keepColor(const AcDbObject& object, const std::optional<AcCmEntityColor>& color, GroupBlock& data);

/// A careless program's file may have true colours in a form that knows none: the object's record, or that of
/// what it is a copy of, then stays as it is.
bool isColorKeptByItself(const AcDbObject& object, std::string_view sourceBytes);

} // namespace hostkit
