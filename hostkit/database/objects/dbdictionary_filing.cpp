#include "dbdictionary.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbDictionary::Filing {
    static constexpr GroupField<AcDbDictionary> groups[] = {
        integerField<&AcDbDictionary::m_treatElementsAsHard>(280, 0),
        integerField<&AcDbDictionary::m_mergeStyle>(281),
    };
    static constexpr short nameCode = 3;
    static constexpr short softCode = 350;
    static constexpr short hardCode = 360;
};

// Entries are pairs of a name and a handle. A handle without a name before it, or a name that no handle
// follows, is left to the file. What has the name of an entry before it gets another one, so that it is not
// lost.
Acad::ErrorStatus AcDbDictionary::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbDictionary")) return status;
    std::wstring name;
    bool hasName = false;
    const std::size_t earlier = m_entries.size();
    return readFields(*filer, Filing::groups, *this, [&](const AcDbDxfGroup& group) {
        if (group.code == Filing::nameCode) {
            name = group.text;
            return hasName = true;
        }
        if ((group.code != Filing::softCode && group.code != Filing::hardCode) || !hasName) return false;
        hasName = false;
        // R13 and R14 tell hard ownership by the code alone.
        if (group.code == Filing::hardCode) m_treatElementsAsHard = true;
        const std::size_t place = placeOf(name);
        put(place == NameIndex::none || place < earlier ? name : nameBeside(name), filer->objectIdOf(group));
        return true;
    });
}

Acad::ErrorStatus AcDbDictionary::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbDictionary");
    const auto& [hard, style] = Filing::groups;
    if (m_treatElementsAsHard) filer->markOptional();
    hard.write(*this, hard, *filer);
    if (m_mergeStyle == AcDb::kDrcIgnore) filer->markOptional();
    style.write(*this, style, *filer);
    for (const Entry& entry : m_entries) {
        if (!filer->files(entry.id)) continue;
        filer->writeText(Filing::nameCode, entry.name);
        filer->writeItem(m_treatElementsAsHard ? Filing::hardCode : Filing::softCode, entry.id);
    }
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbDictionary)
