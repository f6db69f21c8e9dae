// Stand-in for the host's selection functions. Covers selection sets, picking by prompt and by call, the implied and the previous selection, picks within inserts; leaves out highlighting, dragging, grips and call-backs.
#pragma once

#include "acdbads.h"
#include "adscodes.h"
#include "adsdef.h"

class AcApDocument;

// --- Selection sets
// -----------------------------------------------------------------------------------------
//
// A set is a list of entities of the current drawing, each once, in the order in which they came. Its name
// belongs to whoever got it, who frees it with acedSSFree; names are not used again, so that a freed one
// names nothing. Results: RTNORM, or RTERROR for null, what is no set or no entity, and a place that is none;
// nothing is set then.

/// Selects into a new set. RTNORM with at least one entity in it; RTERROR when nothing was selected, for a
/// mode or a filter that is none (hostkit::SelectionFilter says what one is), without a drawing, and for a
/// prompt without a running command; of prompts also RTCAN (the user breaks off), RTREJ (an answer of a
/// script that is none) and RTKWORD (acedGetInput tells which). Only RTNORM makes a set.
///
/// The mode is a method with options behind it, "_C", "_X", "_:S:$". An underscore in front means nothing,
/// nor do capitals. Points are in the user coordinate system.
///   null or ""   with a first point, what a pick there meets; else the implied selection, if there is one
///   and
///                PICKFIRST is 1, which is used up by it; else the user is asked
///   I, P, L      the implied selection, which stays; the previous one; the last entity that can be seen
///   X            the whole drawing: all sheets and model space, whatever can be seen of it, in drawing
///   order, one
///                space after the other; no contents of blocks
///   A            the current space, without what is invisible or on layers that are frozen or locked; what
///   is
///                on layers that are off counts
///   W, C, B      within, or touched by, the window of two corners; B (box) touches where the second one lies
///   to
///                the left of the first
///   WP, CP, F    within, or touched by, the polygon, or crossed by the fence, of a record list of points
///   (RTPOINT,
///                RT3DPOINT)
///   G            the members of the group of that name (a text as `first`)
///   .            the pick at the first point
/// What is picked by its place is seen: not on layers that are off or frozen, not invisible, in the current
/// space. Locked layers count. Without a method, options ask the user:
///   :S           one way of selecting is asked for, not more; with "+." in front a pick that misses ends it
///   :$           `first` is an array of two prompts, for adding and for removing, shown as they stand
///   :K           `second` is a text of keywords, as for acedInitGet; they come before the prompt's own words
///   :N           picks go into references: the innermost entities are selected. So it is while the input
///   point
///                manager's switch is on
///   :D           an entity may come several times. So it is with setAllowDuplicateSelection
///   :E           a pick takes all that it meets, not the topmost alone
///   :L           nothing on locked layers
///   :P           no viewports
///   :U, :V       mean nothing here
int acedSSGet(const wchar_t* mode, const void* first, const void* second, const resbuf* filter, ads_name set);

/// The number of entities in it.
int acedSSLength(const ads_name set, Adesk::Int32* length);
/// The entity at a place, counted from 0.
int acedSSName(const ads_name set, int index, ads_name entity);
/// How the entity at a place was selected, as a list that belongs to the caller (acutRelRb): RTSHORT 0 by
/// other means, 1 a pick, 2 a window, 3 a crossing, 4 a fence; RTENAME the entity; RTSHORT 0. Behind a pick,
/// between RTLB and RTLE, RTSHORT 0 and RT3DPOINT the point, in the world. Behind a pick that went into
/// references, first RTENAME each of them, the innermost first, and four RT3DPOINT: the three columns of the
/// matrix from the innermost block to the world, and its origin.
int acedSSNameX(resbuf** list, const ads_name set, int index);
/// Both null: a new empty set. The set null: a new set of that entity. Else the entity comes into the set,
/// where it is not in it yet, and `result` is that set.
int acedSSAdd(const ads_name entity, const ads_name set, ads_name result);
/// RTERROR for an entity that is not in it.
int acedSSDel(const ads_name entity, const ads_name set);
/// RTNORM for an entity that is in it; RTERROR for one that is not.
int acedSSMemb(const ads_name entity, const ads_name set);
/// RTERROR, and nothing is done, for a name that names none, so that callers free on every path.
int acedSSFree(const ads_name set);

/// Makes the entities of the second set the implied selection, or none with null. The sets stay the caller's.
/// The first set is for grips, which there are none of; it is looked at where the second one is null.
///
/// The implied selection belongs to the current document. A command with ACRX_CMD_USEPICKSET finds it; it is
/// gone when that command has ended, unless it has ACRX_CMD_REDRAW. Any other command drops it as it starts.
int acedSSSetFirst(const ads_name gripSet, const ads_name pickSet);
/// The implied selection as a record (RTPICKS, acutRelRb) with a new set (acedSSFree), or null where there is
/// none. The first is for grips, and always null. Either may be null.
int acedSSGetFirst(resbuf** gripSet, resbuf** pickSet);

// --- Single entities
// ----------------------------------------------------------------------------------------
//
// A point is asked for and what a pick there meets is given; the point is in the user coordinate system.
// "Last" and a handle are answers too. RTNORM; RTNONE for Enter; RTKWORD for one of acedInitGet's; RTERROR
// when nothing was hit, with nothing set; RTCAN, RTREJ as in aced.h.

/// The topmost entity of the current space. A null prompt is the host's own.
int acedEntSel(const wchar_t* prompt, ads_name entity, ads_point point);
/// The innermost entity: what stands in a block, also several deep. With a pick flag other than 0 the point
/// is given and nobody is asked. The matrix, if one is wanted, takes the innermost block to the world, its
/// fourth column the origin. The list, if one is wanted, belongs to the caller: RTENAME of each reference and
/// dimension around it, the innermost first; null for an entity of the space itself.
int acedNEntSelP(const wchar_t* prompt, ads_name entity, ads_point point, int pickFlag, ads_matrix matrix,
                 resbuf** containers);

/// Whether selections of the document may hold an entity several times; the earlier state. False for null.
bool setAllowDuplicateSelection(AcApDocument* document, bool allow);
