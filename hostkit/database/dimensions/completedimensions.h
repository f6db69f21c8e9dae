// Blocks of dimensions that lack one, made before a drawing is saved; leaves out when that is.
#pragma once

class AcDbDatabase;

namespace hostkit {

/// Every dimension whose looks were set here, so that it has no block, gets one: "*D" and the next free
/// number, with what its layout shows, the layer of its points where it is missing, and its measurement and
/// text place as the layout has them. An anonymous block "*D..." that showed
/// it before and that no other dimension or reference shows, erased or not, is erased; one of which somebody
/// has the record open stays. Dimensions that came without a block and whose looks nobody set stay as they
/// are, moved or not; so do those that give no figure, and those that are open. What is made is a change
/// as any other, which undo takes back; no document's lock is asked. The number of new blocks.
int completeDimensions(AcDbDatabase& database);

} // namespace hostkit
