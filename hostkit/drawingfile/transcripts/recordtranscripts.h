// How the fields of binary records stand as groups of the exchange form, as data: one transcript for each
// kind of record, read in both directions.
#pragma once

namespace hostkit {

// Each text holds transcripts one after the other. A transcript begins with "@ NAME", the name of the
// record's layout or of a part; behind a bar the record's name in the exchange form where it is another:
//
//   @ ACDBDICTIONARYWDFLT
//   @ VERTEX_2D | VERTEX
//   @ DATATABLE | [-15] ACDBDATATABLE
//
// Handle, extension dictionary, reactors, owner, the common part of entities and extended data are written
// before and behind by themselves. Lines follow in the order in which the groups are written:
//
//   100 AcDbLine                a mark. Backwards, the lines up to the next mark find their groups behind it,
//                               or in all that is left where the record lacks it
//   300 'CONTEXT_DATA{'         a fixed group; of the code 101 a mark, behind which nothing is found where
//                               the record lacks it
//   40 radius                   the field of that name; a point fills the codes 10, 20, 30, as far as it goes
//   10 x1,y1,z1                 ordinates put together from several fields, in turn
//   40 knots*                   all elements of a field that repeats, a group each
//   10 pts[]                    its element at INDEX, within a "for"
//   70 bits closed:1 flags:0x7E !plain:128      numbers as bits of one group; "!": set where the field is 0.
//                               A mask of several bits takes those bits of the number as they stand
//   70 (kind + 32) as g70       computed; backwards the group's value becomes g70, for "write". A word may
//                               follow, and a standard: "as g370 weight ~ -3"
//
// Behind the value how it is converted, one of
//
//   deg                         radians in the record, degrees in the group
//   name                        a reference that the group tells by the name of its record; backwards the
//   name LAYER                  kind tells where to look: LAYER LTYPE STYLE DIMSTYLE BLOCK_RECORD UCS VIEW
//                               VPORT APPID, or MLINESTYLE, PLOTSTYLE and so on for dictionaries ACAD_...
//   arrow                       a reference to a block of an arrow, by its name without the underscore
//   color                       a colour of the long or short form, as this group and those 358 and 368 above
//   indexcolor                  the same, as its index alone
//   layercolor                  of "62 color,off": the same as color, below zero where the name behind is 1
//   longcolor                   a colour as the number of its long form (method and value), in one group
//   weight                      the index of a line weight, as its hundredths of a millimetre
//   pieces 3                    a long text: 250 characters in each group 3 before, the rest in this one
//   hex                         bytes, as groups of 127 in hexadecimal digits
//   julian                      a date of two fields, day and milliseconds, as days
//
// or a word of kinds that convert themselves (transcriptnatives.cpp). References without a word
// are handles. Then
//
//   = 0                         left out where it has this value; taken where the group is missing
//   ~ 0                         always written; taken where the group is missing
//   ? condition                 only where it holds, in both directions: on names that are known by then
//   ?> condition                the same forwards alone
//
// Points and arrays have one standard for all numbers or one each ("= 0,0,1"), texts one in quotes
// ("= 'Standard'"). Numbers are compared as the group has them: degrees, weights, indices of colours.
//
//   if / else: for / for n:     with what is indented below, as in layouts. "for n" goes over the layout's
//                               loop with that count, or, where there is none, counts INDEX alone. Backwards
//                               a pass begins at its first line's code and ends before the next such group;
//                               it stops at n where n is known by then, and sets n where n is a field by
//                               itself
//   forwards:                   what is indented below is written, and looked for in no direction
//   none                        the record has no transcript: behind the forms for which that holds
//   changed                     the groups tell too little for a new record: one that was binary may be
//                               changed
//   needs 177 2; bars 304       a new record must have such a group, or none: where forms differ in more than
//                               the groups that they have
//   use PART                    the transcript of a part
//   use PART as p               the same where its layout is used so: all its fields are then p.NAME
//   read NAME = expression      forwards alone
//   write NAME = expression     backwards alone: fields that no group tells. Those that neither groups nor
//                               "write" tell stay as they are in the record that is changed, else are 0
//   new NAME = expression       as "write", where no record is changed. A colour takes the number of its long
//                               form, a point the ordinates of the point that is the expression
//
// In expressions NAME.x, NAME.y and NAME.z are the ordinates of a point.
//
// [18+] and its like stand before a line as in layouts.
extern const char* const entityTranscripts;     ///< common shapes, texts, inserts, polylines, dimensions
extern const char* const annotationTranscripts; ///< paragraphs, leaders, hatches, viewports, images, solids
extern const char* const tableTranscripts;      ///< records of tables
extern const char* const objectTranscripts;     ///< dictionaries, layouts, styles and other objects
extern const char* const leaderTranscripts;     ///< leaders and tables of several cells
extern const char* const cellTranscripts;       ///< fields, contents of tables
extern const char* const styleTranscripts;      ///< styles of leaders, tables and views, materials
extern const char* const headerTranscripts;     ///< variables of the header

} // namespace hostkit
