// Stand-in for the host's table calls on record lists. Covers looking a symbol record up, registering applications, entities by name, and asking to see one again; leaves out walking a table and entities' record lists.
#pragma once

#include "acadstrc.h"
#include "adsdef.h"
#include "dbid.h"

/// The record of that name in the working drawing as a list that belongs to the caller (acutRelRb): its type,
/// then the groups of its text form. The table's word is APPID, BLOCK, DIMSTYLE, LAYER, LTYPE, STYLE, UCS,
/// VIEW or VPORT; words and names are compared without regard to case. Null for an unknown word, a missing or
/// erased record, and without a drawing. Tables are not walked here: setNext has no effect.
resbuf* acdbTblSearch(const wchar_t* tableName, const wchar_t* name, int setNext);
/// Registers an application in the working drawing. RTNORM; RTERROR for a name that no record can have, one
/// that is registered already, a table that cannot be opened for write, and without a drawing.
int acdbRegApp(const wchar_t* application);
/// The name by which record lists know an object, and back. eNullObjectId for a null one, eInvalidInput for
/// the name of a selection set, with the other side untouched.
Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id);
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);
/// Asks to see the entity drawn again, as AcDbEntity::draw does; of a vertex or an attribute the one that
/// owns it. RTNORM; RTERROR for a name that is no entity's, or an erased one's.
int acdbEntUpd(const ads_name name);
