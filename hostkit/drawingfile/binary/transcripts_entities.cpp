#include "recordtranscripts.h"

namespace hostkit {

const char* const entityTranscripts = R"(
@ LINE
100 AcDbLine
39 thickness = 0
10 x1,y1,z1
11 x2,y2,z2
210 ext = 0,0,1
write zzero = z1 == 0 && z2 == 0
@ CIRCLE
100 AcDbCircle
39 thickness = 0
10 center
40 radius
210 ext = 0,0,1
)";

} // namespace hostkit
