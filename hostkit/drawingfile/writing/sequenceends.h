// Ends of sequences: what keeps a stray vertex, attribute or end apart from the container before it; leaves
// out the parts that a container owns.
#pragma once

#include "byteedits.h"
#include "objectwriting.h"

#include "dbsource.h"

#include <string>

namespace hostkit {

/// VERTEX, ATTRIB or SEQEND: directly behind a container without a SEQEND a reader takes the record for a
/// part of it, whoever owns it. Where nobody does it is kept as an entity of its block, a stray one.
bool isOfPartKind(const AcDbEntity& entity);
/// Whether the entity's new record ends with a SEQEND: a reference does when it has attributes, a record of
/// an unknown kind when it has parts, a polyline always.
bool needsSequenceEnd(const AcDbEntity& entity);
/// The drawing's own record of the end, or one made for the file.
bool writeSequenceEnd(const AcDbEntity& owner, ObjectWriting& objects, std::string& bytes);
/// Whether the entity is a container whose new record ends without a SEQEND.
bool hasOpenSequence(const AcDbEntity& entity);
/// Ends, in the bytes of a file, the open sequences that stray records come to stand behind when what stood
/// between is left out. As read, none does, so that nothing is added where nothing was left out. False where
/// a record cannot be written.
bool endBeforeStrays(const AcDbDatabase& database, const DrawingSource& source, ObjectWriting& objects,
                     ByteEdits& edits);

} // namespace hostkit
