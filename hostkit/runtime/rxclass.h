// Stand-in for the host's run-time classes. Covers names, ancestry, creation and protocol extensions; leaves out class versions and proxies' class records.
#pragma once

#include "rxobject.h"

#include <string>
#include <vector>

/// What the host knows of a class at run time. One lives for each class from its rxInit on; a module that
/// leaves takes its own along (deleteAcRxClass).
class AcRxClass : public AcRxObject {
public:
    using Constructor = AcRxObject* (*)();
    using ValueCopier = void (*)(AcRxObject& to, const AcRxObject& from);

    AcRxClass(const wchar_t* name, const wchar_t* dxfName, AcRxClass* parent, Constructor constructor,
              const wchar_t* applicationName = nullptr);
    ~AcRxClass() override;
    AcRxClass(const AcRxClass&) = delete;
    AcRxClass& operator=(const AcRxClass&) = delete;

    static AcRxClass* desc();
    AcRxClass* isA() const override { return desc(); }
    /// Null for null and for an object that is no class.
    static AcRxClass* cast(const AcRxObject* object) {
        return object && object->isKindOf(desc()) ? static_cast<AcRxClass*>(const_cast<AcRxObject*>(object))
                                                  : nullptr;
    }

    const wchar_t* name() const { return m_name.c_str(); }
    /// The record name in a drawing, or null for a class that has none.
    const wchar_t* dxfName() const { return m_dxfName.empty() ? nullptr : m_dxfName.c_str(); }
    const wchar_t* appName() const { return m_applicationName.c_str(); }
    AcRxClass* myParent() const { return m_parent; }
    bool isDerivedFrom(const AcRxClass* other) const {
        return other && other->m_depth < m_ancestors.size() && m_ancestors[other->m_depth] == other;
    }
    /// A new object that belongs to the caller; null for an abstract class.
    AcRxObject* create() const { return m_constructor ? m_constructor() : nullptr; }

    /// Gives one object of this class the values of another, bit for bit; null for classes of applications,
    /// which have their filing.
    ValueCopier valueCopier() const { return m_valueCopier; }
    void setValueCopier(ValueCopier copier) { m_valueCopier = copier; }

    /// Puts a protocol object on this class; returns the one it replaces, or null. The class does not own it.
    AcRxObject* addX(AcRxClass* protocol, AcRxObject* implementation);
    /// The protocol object on this very class, without its ancestors.
    AcRxObject* getX(const AcRxClass* protocol) const;
    AcRxObject* delX(AcRxClass* protocol);
    /// As getX, then on the classes above.
    AcRxObject* findX(const AcRxClass* protocol) const;

private:
    std::wstring m_name;
    std::wstring m_dxfName;
    std::wstring m_applicationName;
    AcRxClass* m_parent;
    Constructor m_constructor;
    ValueCopier m_valueCopier = nullptr;
    std::size_t m_depth;
    std::vector<const AcRxClass*> m_ancestors; // from the root to this class itself
    std::vector<std::pair<const AcRxClass*, AcRxObject*>> m_protocols;
};

inline bool AcRxObject::isKindOf(const AcRxClass* wanted) const { return isA()->isDerivedFrom(wanted); }

/// Takes a module's class out of the class dictionary and frees it. Null is allowed.
void deleteAcRxClass(AcRxClass* cls);
/// Kept for modules that call it after their rxInit calls; ancestry is always complete here.
void acrxBuildClassHierarchy();
