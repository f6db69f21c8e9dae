#include "rxclass.h"

#include "rxdict.h"

#include <utility>

AcRxClass* AcRxObject::desc() {
    rxInit();
    static AcRxClass* description = static_cast<AcRxClass*>(acrxClassDictionary()->at(L"AcRxObject"));
    return description;
}

void AcRxObject::rxInit() { static AcRxClass root(L"AcRxObject", nullptr, nullptr, nullptr); }

AcRxClass* AcRxObject::isA() const { return desc(); }

AcRxObject* AcRxObject::queryX(const AcRxClass* protocol) const { return isA()->findX(protocol); }

AcRxClass* AcRxClass::desc() {
    static AcRxClass description(L"AcRxClass", nullptr, AcRxObject::desc(), nullptr);
    return &description;
}

AcRxClass::AcRxClass(const wchar_t* name, const wchar_t* dxfName, AcRxClass* parent, Constructor constructor,
                     const wchar_t* applicationName)
    : m_name(name)
    , m_dxfName(dxfName ? dxfName : L"")
    , m_applicationName(applicationName ? applicationName : L"")
    , m_parent(parent)
    , m_constructor(constructor)
    , m_depth(parent ? parent->m_depth + 1 : 0) {
    if (parent) m_ancestors = parent->m_ancestors;
    m_ancestors.push_back(this);
    acrxClassDictionary()->atPut(name, this);
}

AcRxClass::~AcRxClass() {
    AcRxDictionary* dictionary = acrxClassDictionary();
    if (dictionary->at(m_name.c_str()) == this) dictionary->remove(m_name.c_str());
}

AcRxObject* AcRxClass::addX(AcRxClass* protocol, AcRxObject* implementation) {
    for (auto& [known, object] : m_protocols)
        if (known == protocol) return std::exchange(object, implementation);
    m_protocols.emplace_back(protocol, implementation);
    return nullptr;
}

AcRxObject* AcRxClass::getX(const AcRxClass* protocol) const {
    for (const auto& [known, object] : m_protocols)
        if (known == protocol) return object;
    return nullptr;
}

AcRxObject* AcRxClass::delX(AcRxClass* protocol) {
    for (auto it = m_protocols.begin(); it != m_protocols.end(); ++it) {
        if (it->first != protocol) continue;
        AcRxObject* object = it->second;
        m_protocols.erase(it);
        return object;
    }
    return nullptr;
}

AcRxObject* AcRxClass::findX(const AcRxClass* protocol) const {
    for (const AcRxClass* cls = this; cls; cls = cls->m_parent)
        if (AcRxObject* object = cls->getX(protocol)) return object;
    return nullptr;
}

void deleteAcRxClass(AcRxClass* cls) { delete cls; }

void acrxBuildClassHierarchy() {}
