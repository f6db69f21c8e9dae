// Stand-in for the host's class macros. Covers declaration and definition of run-time classes with and without a drawing name; leaves out versioned proxies.
#pragma once

#include "rxclass.h"

/// In the class: desc, isA, cast, rxInit. `desc` is null until rxInit has run; classes of the kit run theirs
/// at load.
#define ACRX_DECLARE_MEMBERS(CLASS)                                                                          \
public:                                                                                                      \
    static AcRxClass* desc() { return s_classDescription; }                                                  \
    AcRxClass* isA() const override { return s_classDescription; }                                           \
    static CLASS* cast(const AcRxObject* object) {                                                           \
        return object && object->isKindOf(s_classDescription)                                                \
                   ? static_cast<CLASS*>(const_cast<AcRxObject*>(object))                                    \
                   : nullptr;                                                                                \
    }                                                                                                        \
    static void rxInit();                                                                                    \
    static void rxExit();                                                                                    \
                                                                                                             \
private:                                                                                                     \
    static AcRxClass* s_classDescription;                                                                    \
                                                                                                             \
public:

#define HOSTKIT_DEFINE_CLASS(CLASS, PARENT, DXF_NAME, APP, CONSTRUCTOR)                                      \
    HOSTKIT_DEFINE_CLASS_WITH_VALUES(CLASS, PARENT, DXF_NAME, APP, CONSTRUCTOR, nullptr)
#define HOSTKIT_DEFINE_CLASS_WITH_VALUES(CLASS, PARENT, DXF_NAME, APP, CONSTRUCTOR, COPY_VALUES)             \
    AcRxClass* CLASS::s_classDescription = nullptr;                                                          \
    void CLASS::rxInit() {                                                                                   \
        if (s_classDescription) return;                                                                      \
        PARENT::rxInit();                                                                                    \
        s_classDescription = new AcRxClass(L"" #CLASS, DXF_NAME, PARENT::desc(), CONSTRUCTOR, APP);          \
        s_classDescription->setValueCopier(COPY_VALUES);                                                     \
    }                                                                                                        \
    void CLASS::rxExit() {                                                                                   \
        deleteAcRxClass(s_classDescription);                                                                 \
        s_classDescription = nullptr;                                                                        \
    }

/// For an application's classes: the module calls CLASS::rxInit() when it is loaded and CLASS::rxExit() (or
/// deleteAcRxClass(CLASS::desc())) when it leaves.
#define ACRX_NO_CONS_DEFINE_MEMBERS(CLASS, PARENT)                                                           \
    HOSTKIT_DEFINE_CLASS(CLASS, PARENT, nullptr, nullptr, nullptr)
#define ACRX_CONS_DEFINE_MEMBERS(CLASS, PARENT, VERSION)                                                     \
    HOSTKIT_DEFINE_CLASS(CLASS, PARENT, nullptr, nullptr, [] { return static_cast<AcRxObject*>(new CLASS); })
#define ACRX_DXF_DEFINE_MEMBERS(CLASS, PARENT, DWG_VERSION, MAINTENANCE, PROXY_FLAGS, DXF_NAME, APP)         \
    HOSTKIT_DEFINE_CLASS(CLASS, PARENT, L"" #DXF_NAME, L"" #APP,                                             \
                         [] { return static_cast<AcRxObject*>(new CLASS); })

/// For the kit's own classes: as above, known from load to the end of the process, and with their assignment
/// as the way in which a drawing keeps and restores their values.
#define HOSTKIT_KIT_CLASS(CLASS, PARENT, DXF_NAME)                                                           \
    HOSTKIT_DEFINE_CLASS_WITH_VALUES(                                                                        \
        CLASS, PARENT, DXF_NAME, L"kit", [] { return static_cast<AcRxObject*>(new CLASS); },                 \
        HOSTKIT_VALUE_COPIER(CLASS))                                                                         \
    HOSTKIT_REGISTER_AT_LOAD(CLASS)
#define HOSTKIT_KIT_ABSTRACT_CLASS(CLASS, PARENT)                                                            \
    HOSTKIT_DEFINE_CLASS_WITH_VALUES(CLASS, PARENT, nullptr, L"kit", nullptr, HOSTKIT_VALUE_COPIER(CLASS))   \
    HOSTKIT_REGISTER_AT_LOAD(CLASS)
/// For a class of the kit whose objects are not in drawings.
#define HOSTKIT_KIT_CLASS_WITHOUT_VALUES(CLASS, PARENT)                                                      \
    HOSTKIT_DEFINE_CLASS(CLASS, PARENT, nullptr, L"kit", nullptr)                                            \
    HOSTKIT_REGISTER_AT_LOAD(CLASS)
#define HOSTKIT_VALUE_COPIER(CLASS)                                                                          \
    [](AcRxObject& to, const AcRxObject& from) { static_cast<CLASS&>(to) = static_cast<const CLASS&>(from); }
#define HOSTKIT_REGISTER_AT_LOAD(CLASS)                                                                      \
    namespace {                                                                                              \
    const struct CLASS##Registration {                                                                       \
        CLASS##Registration() { CLASS::rxInit(); }                                                           \
        ~CLASS##Registration() { CLASS::rxExit(); }                                                          \
    } CLASS##Registered;                                                                                     \
    }
