#include "vexoselectiontools.h"

#include "vexoacadsystemtools.h"

#include "acdocman.h"
#include "aced.h"
#include "acedinpt.h"
#include "cvxlogentry.h"
#include "dbent.h"
#include "dbopen.h"
#include "moduleprompts.h"

namespace vexo {
namespace {

constexpr unsigned int selectPrompt = 14000;
constexpr unsigned int nothingSelected = 14001;

// A selection set that is freed with its scope, whether or not one was made.
class SelectedSet {
public:
    SelectedSet() = default;
    ~SelectedSet() { free(); }
    SelectedSet(const SelectedSet&) = delete;
    SelectedSet& operator=(const SelectedSet&) = delete;

    int get(const wchar_t* mode, const void* first, const void* second, const resbuf* filter) {
        return acedSSGet(mode, first, second, filter, m_name);
    }
    void free() {
        acedSSFree(m_name);
        m_name[0] = m_name[1] = 0;
    }
    Adesk::Int32 length() const {
        Adesk::Int32 length = 0;
        acedSSLength(m_name, &length);
        return length;
    }
    void appendTo(AcDbObjectIdArray& ids) const { VEXOSelectionTools::enameSetToObjIds(m_name, ids); }
    AcDbObjectIdArray ids() const {
        AcDbObjectIdArray ids;
        appendTo(ids);
        return ids;
    }
    const std::intptr_t* name() const { return m_name; }

private:
    ads_name m_name = {0, 0};
};

// The two prompts of the host's form.
struct PromptPair {
    explicit PromptPair(const wchar_t* prompt = nullptr)
        : texts{prompt ? prompt : L"", prompt ? prompt : L""} {}
    const wchar_t* texts[2];
};

int firstOf(const AcDbObjectIdArray& ids, AcDbObjectId& id, int status) {
    if (ids.isEmpty()) return RTERROR;
    id = ids[0];
    return status;
}

bool isAccepted(VEXOSelectionTools::eSelect kind, Adesk::Int32 implied) {
    switch (kind) {
    case VEXOSelectionTools::eSelectAny:
        return true;
    case VEXOSelectionTools::eSelectOne:
        return implied == 1;
    default:
        return implied > 1;
    }
}

void checkDomains(const AcDbObjectIdArray& ids, VEXOSelectionTools::eSelect kind, const wchar_t* domains) {
    if (domains) VEXOSelectionTools::checkSelectionSet(ids, kind, domains, true, false, nullptr, false);
}

int appendSingle(const resbuf* filter, AcDbObjectIdArray& ids, const wchar_t* domains) {
    AcDbObjectId id;
    const int status = VEXOSelectionTools::selectSingleEntity(filter, id, domains, nullptr, true);
    ids.append(id);
    return status;
}

int selectSeveral(const wchar_t* mode, const PromptPair& prompts, const resbuf* filter,
                  AcDbObjectIdArray& ids, const wchar_t* domains) {
    {
        SelectedSet set;
        const int status = set.get(mode, prompts.texts, nullptr, nullptr);
        if (status != RTNORM) return status;
        set.appendTo(ids);
        checkDomains(ids, VEXOSelectionTools::eSelectSeveral, domains);
    }
    if (filter) ids = VEXOSelectionTools::filterSelectionSet(filter, ids);
    return ids.isEmpty() ? RTERROR : RTNORM;
}

// Both switches of a document for picks into references, as they were before when the scope ends.
class NestedPicks {
public:
    NestedPicks()
        : m_document(acDocManagerPtr() ? acDocManagerPtr()->curDocument() : nullptr)
        , m_allowed(setAllowDuplicateSelection(m_document, true)) {
        if (m_document) m_document->inputPointManager()->turnOnSubentitySelection();
    }
    ~NestedPicks() {
        setAllowDuplicateSelection(m_document, m_allowed);
        if (m_document) m_document->inputPointManager()->turnOffSubentitySelection();
    }
    NestedPicks(const NestedPicks&) = delete;
    NestedPicks& operator=(const NestedPicks&) = delete;

private:
    AcApDocument* m_document;
    bool m_allowed;
};

void appendInnermost(const SelectedSet& set, int index, AcDbObjectIdArray& ids) {
    resbuf* list = nullptr;
    if (acedSSNameX(&list, set.name(), index) != RTNORM) return;
    const resbuf* record = list;
    while (record && record->restype != RTENAME) record = record->rbnext;
    AcDbObjectId id;
    if (record && acdbGetObjectId(id, record->resval.rlname) == Acad::eOk) ids.append(id);
    acutRelRb(list);
}

} // namespace
} // namespace vexo

void VEXOSelectionTools::enameSetToObjIds(const ads_name set, AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOSelectionTools::enameSetToObjIds");
    Adesk::Int32 length = 0;
    if (acedSSLength(set, &length) != RTNORM) return;
    for (Adesk::Int32 i = 0; i < length; ++i) {
        ads_name name;
        AcDbObjectId id;
        if (acedSSName(set, i, name) == RTNORM && acdbGetObjectId(id, name) == Acad::eOk) ids.append(id);
    }
}

void VEXOSelectionTools::getSelectionIds(AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOSelectionTools::getSelectionIds");
    ids.removeAll();
    vexo::SelectedSet set;
    if (set.get(L"_I", nullptr, nullptr, nullptr) == RTNORM) set.appendTo(ids);
}

AcDbEntity* VEXOSelectionTools::selectEntity(AcDbObjectId& id, AcDb::OpenMode mode, const wchar_t* prompt,
                                             const wchar_t*) {
    CVxLogEntry entry(L"VEXOSelectionTools::selectEntity");
    const CString text = prompt ? CString(prompt) : vexo::promptText(vexo::selectPrompt);
    ads_name name = {0, 0};
    ads_point point;
    const int picked = acedEntSel(text, name, point);
    if (picked != RTNORM) {
        acutPrintf(vexo::promptText(vexo::nothingSelected), picked);
        return nullptr;
    }
    AcDbObjectId found;
    Acad::ErrorStatus status = acdbGetObjectId(found, name);
    if (status != Acad::eOk) {
        acutPrintf(L"Either acdbGetObjectId or ads_entsel failed: Entity name <%lx,%lx>, error %d.\n",
                   name[0], name[1], static_cast<int>(status));
        return nullptr;
    }
    AcDbEntity* entity = nullptr;
    status = acdbOpenAcDbEntity(entity, found, mode);
    if (status != Acad::eOk) {
        acutPrintf(L"acdbOpenObject failed with error %d.\n", static_cast<int>(status));
        return nullptr;
    }
    id = found;
    return entity;
}

int VEXOSelectionTools::selectEntity(const CString& message, const resbuf* filter, eSelect kind,
                                     AcDbObjectIdArray& ids, const wchar_t* domains, bool prompting) {
    CVxLogEntry entry(L"VEXOSelectionTools::selectEntity");
    vexo::SelectedSet implied;
    const int status = implied.get(L"_I", nullptr, nullptr, nullptr);
    const Adesk::Int32 count = status == RTNORM ? implied.length() : 0;
    if (count == 0) {
        if (!prompting) return status;
        VEXOAcadSystemTools::cmdLineMsg(message, false, false);
        return kind == eSelectOne ? vexo::appendSingle(filter, ids, domains)
                                  : selectMultipleEntities(filter, ids, domains);
    }
    if (!vexo::isAccepted(kind, count)) return vexo::appendSingle(filter, ids, domains);
    implied.appendTo(ids);
    vexo::checkDomains(ids, kind, domains);
    if (filter) ids = filterSelectionSet(filter, ids);
    return status;
}

int VEXOSelectionTools::selectSingleEntity(const resbuf* filter, AcDbObjectId& id, const wchar_t* domains,
                                           bool* domainResult, bool display) {
    CVxLogEntry entry(L"VEXOSelectionTools::selectSingleEntity");
    vexo::SelectedSet set;
    const vexo::PromptPair prompts;
    const int status = set.get(L"_:S:$", prompts.texts, nullptr, nullptr);
    if (status != RTNORM) return status;
    AcDbObjectIdArray selected = set.ids();
    const bool isAllowed =
        domains && checkSelectionSet(selected, eSelectOne, domains, display, false, nullptr, false);
    if (domainResult) *domainResult = isAllowed;
    set.free();
    if (filter) selected = filterSelectionSet(filter, selected);
    if (selected.length() != 1) return RTNONE;
    id = selected[0];
    return RTNORM;
}

int VEXOSelectionTools::selectSingleEntity(const wchar_t* prompt, const resbuf* filter, AcDbObjectId& id,
                                           const wchar_t* domains) {
    CVxLogEntry entry(L"VEXOSelectionTools::selectSingleEntity");
    vexo::SelectedSet set;
    const vexo::PromptPair prompts(prompt);
    const int status = set.get(L"_:$:S", prompts.texts, nullptr, nullptr);
    if (status != RTNORM) return status;
    const AcDbObjectIdArray selected = set.ids();
    vexo::checkDomains(selected, eSelectSeveral, domains);
    set.free();
    const int result = vexo::firstOf(selected, id, status);
    if (filter) filterSelectionSet(filter, selected);
    return result;
}

int VEXOSelectionTools::selectSingleEntityKword(const wchar_t* prompt, AcDbObjectId& id,
                                                const CString& keywords) {
    CVxLogEntry entry(L"VEXOSelectionTools::selectSingleEntityKword");
    vexo::SelectedSet set;
    const vexo::PromptPair prompts(prompt);
    const int status = set.get(L"_:$:S:K", prompts.texts, keywords.GetString(), nullptr);
    return status == RTNORM ? vexo::firstOf(set.ids(), id, status) : status;
}

int VEXOSelectionTools::selectMultipleEntities(const resbuf* filter, AcDbObjectIdArray& ids,
                                               const wchar_t* domains) {
    CVxLogEntry entry(L"VEXOSelectionTools::selectMultipleEntities");
    return vexo::selectSeveral(L"_:$", vexo::PromptPair(), filter, ids, domains);
}

int VEXOSelectionTools::selectMultipleEntities(const wchar_t* prompt, const resbuf* filter,
                                               AcDbObjectIdArray& ids, const wchar_t* domains, bool single) {
    CVxLogEntry entry(L"VEXOSelectionTools::selectMultipleEntities");
    return vexo::selectSeveral(single ? L"_:$:S" : L"_:$", vexo::PromptPair(prompt), filter, ids, domains);
}

int VEXOSelectionTools::selectNestedEntities(const resbuf*, AcDbObjectIdArray& ids, const wchar_t*) {
    CVxLogEntry entry(L"VEXOSelectionTools::selectNestedEntities");
    const vexo::NestedPicks nested;
    vexo::SelectedSet set;
    const int status = set.get(L"_:n", nullptr, nullptr, nullptr);
    if (status != RTNORM) return status;
    for (Adesk::Int32 i = 0, length = set.length(); i < length; ++i) vexo::appendInnermost(set, i, ids);
    return ids.isEmpty() ? RTERROR : status;
}

int VEXOSelectionTools::verifyImpliedSelection(AcDbObjectIdArray& ids, const resbuf* filter) {
    CVxLogEntry entry(L"VEXOSelectionTools::verifyImpliedSelection");
    ids.removeAll();
    vexo::SelectedSet set;
    const int status = set.get(L"_I", nullptr, nullptr, filter);
    if (status == RTNORM) set.appendTo(ids);
    set.free();
    vexo::SelectedSet usedUp;
    if (!ids.isEmpty()) usedUp.get(nullptr, nullptr, nullptr, nullptr);
    return status;
}
