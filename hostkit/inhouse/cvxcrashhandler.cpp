#include "cvxcrashhandler.h"

CVxCrashHandler::CVxCrashHandler(wchar_t* /*text*/, int /*code*/) {}

CVxCrashHandler::~CVxCrashHandler() = default;

int CVxCrashHandler::mov_rax_0() { return 0; }
