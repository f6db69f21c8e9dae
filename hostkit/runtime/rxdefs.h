// Stand-in for the host's module messages. Covers the messages that a loaded module hears and its answers; leaves out those of the host's other module kinds.
#pragma once

#include "modulemark.h"

class AcRx {
public:
    enum AppMsgCode {
        kNullMsg = 0,
        kInitAppMsg = 1,
        kUnloadAppMsg = 2,
        kLoadDwgMsg = 3,
        kUnloadDwgMsg = 4,
        kInvkSubrMsg = 5,
        kCfgMsg = 6,
        kEndMsg = 7,
        kQuitMsg = 8,
        kSaveMsg = 9
    };
    enum AppRetCode { kRetOK = 0, kRetError = 3 };
};
