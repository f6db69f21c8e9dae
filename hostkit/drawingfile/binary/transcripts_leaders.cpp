#include "recordtranscripts.h"

namespace hostkit {

const char* const leaderTranscripts = R"(
)";

} // namespace hostkit
