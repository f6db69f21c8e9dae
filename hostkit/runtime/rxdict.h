// Stand-in for the host's run-time dictionaries. Covers named entries, walking them, the class dictionary and the system registry; leaves out ordered and case-sensitive variants.
#pragma once

#include "casefold.h"
#include "rxboiler.h"
#include "rxditer.h"

#include <string>
#include <unordered_map>

/// Objects by name, without regard to case. The dictionary owns none of them.
class AcRxDictionary : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcRxDictionary)

public:
    AcRxDictionary() = default;
    AcRxObject* at(const wchar_t* key) const;
    /// Returns the entry that `object` replaces, or null.
    AcRxObject* atPut(const wchar_t* key, AcRxObject* object);
    AcRxObject* remove(const wchar_t* key);
    std::size_t numEntries() const { return m_entries.size(); }
    /// The caller deletes it.
    AcRxDictionaryIterator* newIterator() const;

    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

private:
    std::unordered_map<std::wstring, AcRxObject*, hostkit::FoldedHash, hostkit::FoldedEqual> m_entries;
};

/// Every class that is known now, by class name. It belongs to the process, as the code of the classes does.
AcRxDictionary* acrxClassDictionary();
/// The services of the current host by name; "DynamicLinker" is the module loader. Null when there is no
/// host.
AcRxDictionary* acrxSysRegistry();
