// Stand-in for the host's AcDbDeepCloneFiler. Covers a copy of an object's fields through memory; leaves out the walk over what the object owns and the translation of ids.
#pragma once

#include "memorydwgfiler.h"

/// dwgOutFields of one object, seek(0, 0), dwgInFields of another of its class: the second has the fields of
/// the first. References stay those of the first; what it owns stays its own.
class AcDbDeepCloneFiler : public hostkit::MemoryDwgFiler {
public:
    explicit AcDbDeepCloneFiler(AcDbDatabase* database = nullptr)
        : MemoryDwgFiler(AcDb::kDeepCloneFiler, database) {}
};
