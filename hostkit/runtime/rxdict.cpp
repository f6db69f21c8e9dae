#include "rxdict.h"

#include <algorithm>
#include <utility>

HOSTKIT_KIT_CLASS_WITHOUT_VALUES(AcRxDictionary, AcRxObject)

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

AcRxDictionaryIterator* AcRxDictionary::newIterator() const {
    std::vector<AcRxDictionaryIterator::Entry> entries(m_entries.begin(), m_entries.end());
    std::sort(entries.begin(), entries.end(), [](const auto& first, const auto& second) {
        const int order = hostkit::compareFolded(first.first, second.first);
        return order < 0 || (order == 0 && first.first < second.first);
    });
    return new AcRxDictionaryIterator(std::move(entries));
}

AcRxDictionary* acrxClassDictionary() {
    static AcRxDictionary dictionary;
    return &dictionary;
}
