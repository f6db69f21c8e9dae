#include "cvxcrashhandler.h"

#include <atomic>

namespace {

std::atomic<hostkit::CrashHandlerBuilder> g_builder = nullptr;

} // namespace

CVxCrashHandler::CVxCrashHandler(wchar_t* /*text*/, int /*code*/) {}

CVxCrashHandler::~CVxCrashHandler() = default;

int CVxCrashHandler::mov_rax_0() { return 0; }

void hostkit::setCrashHandlerBuilder(CrashHandlerBuilder builder) { g_builder = builder; }

bool hostkit::buildCrashHandler(wchar_t* text, int code) {
    const CrashHandlerBuilder build = g_builder;
    if (build) build(text, code);
    return build != nullptr;
}
