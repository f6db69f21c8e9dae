#include "beam.h"

namespace drawingtest {

ACRX_DXF_DEFINE_MEMBERS(Beam, AcDbLine, 0, 0, 0, VEXO_TEST_BEAM, TEST)

} // namespace drawingtest
