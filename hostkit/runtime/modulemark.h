// Stand-in for the host's version check of modules. Covers the mark that every module bears and the loader reads; leaves out which versions might go together.
#pragma once

// Raised by hand with every change of a class that modules see: its members, their order, its virtual
// functions, the arguments of what is exported. A module of another number is refused.
#ifndef HOSTKIT_INTERFACE
#define HOSTKIT_INTERFACE 12
#endif
#define HOSTKIT_VERSION "10.1"

#define HOSTKIT_MARK_TEXT_OF(number) #number
#define HOSTKIT_MARK_TEXT(number) HOSTKIT_MARK_TEXT_OF(number)
/// What stands in front of the version, the interface's number and the compiler's, and what behind them.
#define HOSTKIT_MARK_START "@(#)module of the portable host, "
#define HOSTKIT_MARK_END ";"
#define HOSTKIT_MODULE_MARK                                                                                  \
    HOSTKIT_MARK_START "version " HOSTKIT_VERSION " interface " HOSTKIT_MARK_TEXT(                           \
        HOSTKIT_INTERFACE) " compiler " HOSTKIT_MARK_TEXT(__GXX_ABI_VERSION) HOSTKIT_MARK_END

// Whoever includes rxdefs.h, as every entry point must, bears the mark; the many copies of one module are
// one.
extern "C" [[gnu::weak, gnu::visibility("default")]] const char hostkitModuleMark[];
// NOLINTNEXTLINE(misc-definitions-in-headers)
[[gnu::used]] const char hostkitModuleMark[] = HOSTKIT_MODULE_MARK;
