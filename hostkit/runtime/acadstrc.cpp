#include "acadstrc.h"

const wchar_t* acadErrorStatusText(Acad::ErrorStatus status) {
    switch (status) {
#define HOSTKIT_STATUS_TEXT(name, number)                                                                    \
    case Acad::name:                                                                                         \
        return L"" #name;
        HOSTKIT_STATUS_TABLE(HOSTKIT_STATUS_TEXT)
#undef HOSTKIT_STATUS_TEXT
    }
    return L"eUnknownStatus";
}
