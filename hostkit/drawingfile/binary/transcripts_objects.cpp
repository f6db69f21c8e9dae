#include "recordtranscripts.h"

namespace hostkit {

const char* const objectTranscripts = R"(
@ XRECORD
100 AcDbXrecord
280 cloning
1 data xrecord
)";

} // namespace hostkit
