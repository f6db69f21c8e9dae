// Stand-in for the host's transaction manager of a document. Covers what a drawing's own manager does; leaves out graphics, which nobody draws here.
#pragma once

#include "dbtrans.h"

class AcTransactionManager : public AcDbTransactionManager {
public:
    using AcDbTransactionManager::AcDbTransactionManager;
};
