#include "acgidrawable.h"

HOSTKIT_KIT_CLASS_WITHOUT_VALUES(AcGiDrawable, AcRxObject)
