// Stand-in for the host's record list. Covers resbuf, its making and freeing; leaves out binary chunks' own allocator.
#pragma once

#include "adesk.h"
#include "adscodes.h"

struct ads_binary {
    short clen;
    char* buf;
};

union ads_u_val {
    ads_real rreal;
    ads_point rpoint;
    short rint;
    wchar_t* rstring; ///< owned by the record; from acutNewString
    ads_name rlname;
    Adesk::Int32 rlong;
    Adesk::Int64 mnInt64;
    Adesk::IntPtr mnLongPtr;
    ads_binary rbinary;
};

/// One record of a singly linked list: a group code or value type, and a value in the field that goes with
/// it.
struct resbuf {
    resbuf* rbnext;
    short restype;
    ads_u_val resval;
};

/// A record of that type with a zero value, linked to nothing; freed with acutRelRb.
resbuf* acutNewRb(int type);
/// Frees a whole list with its texts and binaries. Null is allowed. Returns RTNORM.
int acutRelRb(resbuf* list);
/// A list from (type, value)... closed by type 0: texts as const wchar_t*, reals as double, points as const
/// double*, 16-bit and boolean values as int, 32-bit values as int (cut to 32 bits), 64-bit values as
/// Adesk::Int64, handles as text (group 5, 105, 1005, 320 to 369 ...), RTENAME as ads_name. List marks (RTLB,
/// RTLE, RTNIL, RTT, RTNONE) take no value. Null for an empty call or an unknown type.
resbuf* acutBuildList(int type, ...);
/// A copy that belongs to the caller; null gives null. Freed with acutDelString or acutDelBuffer.
wchar_t* acutNewString(const wchar_t* text);
void acutDelString(wchar_t*& text);
/// Frees a text that the kit handed out and sets the pointer to null.
void acutDelBuffer(wchar_t*& text);
