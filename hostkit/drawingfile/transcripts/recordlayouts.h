// Layouts of the records of binary drawings, as data: one for each kind, for all forms.
#pragma once

namespace hostkit {

// Each text holds layouts one after the other. A layout begins with "@ NAME CODE KIND": CODE is the fixed
// number of the kind, "class" where the drawing's classes number it, or "part" of others; KIND is E for
// entities, O for other objects, P for parts. Lines that follow:
//
//   [18+] [-15] [21-24]: only from, up to, or between the forms 15 (2000), 18 (2004), 21, 24, 27, 32
//
//   BD name[n] ? cond: a field by its bit code, n times, where the condition holds
//
//   let name = expression; use PART; if cond: else: for n: while cond: with what is indented below
//
// Codes of fields: B BB RC RS RL RLL RD BS BL BLL BD and 2BD 3BD 2RD 3RD as usual; BT thickness, BE
// direction; DD 2DD 3DD and 2DDCHAIN, the first raw and each further one by the one before; TV a text; CMC,
// CMCX, ENC colours; H2 H3 H4 H5 references, kept behind the data; HD a handle within the data; EED extended
// data; X n name raw bytes; COUNTZ bytes up to a zero; SAB a body's binary data; HREST all references that
// are left; OPAQUE all that is left. INDEX counts the innermost loop.
extern const char* const entitiesLayouts;
extern const char* const annotationsLayouts;
extern const char* const tablesLayouts;
extern const char* const objectsLayouts;
extern const char* const leadersLayouts;
extern const char* const visualsLayouts;
extern const char* const headerLayouts;

} // namespace hostkit
