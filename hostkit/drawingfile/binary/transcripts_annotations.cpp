#include "recordtranscripts.h"

namespace hostkit {

const char* const annotationTranscripts = R"(
)";

} // namespace hostkit
