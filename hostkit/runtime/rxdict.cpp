#include "rxdict.h"

#include <utility>

AcRxObject* AcRxDictionary::at(const wchar_t* key) const {
    const auto found = m_entries.find(std::wstring_view(key));
    return found == m_entries.end() ? nullptr : found->second;
}

AcRxObject* AcRxDictionary::atPut(const wchar_t* key, AcRxObject* object) {
    return std::exchange(m_entries[key], object);
}

AcRxObject* AcRxDictionary::remove(const wchar_t* key) {
    const auto found = m_entries.find(std::wstring_view(key));
    if (found == m_entries.end()) return nullptr;
    AcRxObject* object = found->second;
    m_entries.erase(found);
    return object;
}

AcRxDictionary* acrxClassDictionary() {
    static AcRxDictionary dictionary;
    return &dictionary;
}
