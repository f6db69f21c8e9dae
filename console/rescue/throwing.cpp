// The program's own throw: the C++ library's, with a note of where it was.
#include "rescue.h"

#include <dlfcn.h>
#include <typeinfo>

extern "C" [[noreturn]] void __cxa_throw(void* thrown, std::type_info* type, void (*destroy)(void*)) {
    using Throw = void (*)(void*, std::type_info*, void (*)(void*));
    static const auto next = reinterpret_cast<Throw>(dlsym(RTLD_NEXT, "__cxa_throw"));
    rescue::noteThrow();
    next(thrown, type, destroy);
    __builtin_unreachable();
}
