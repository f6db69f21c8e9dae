#include "recordtranscripts.h"

namespace hostkit {

const char* const tableTranscripts = R"(
)";

} // namespace hostkit
