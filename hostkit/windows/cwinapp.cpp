#include "cwinapp.h"

IDispatch* CWinApp::GetIDispatch(BOOL) { return nullptr; }
