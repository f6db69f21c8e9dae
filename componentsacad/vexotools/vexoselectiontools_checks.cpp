#include "vexoacadsystemtools.h"
#include "vexodatabasetools.h"
#include "vexolayertools.h"
#include "vexolayertools_internal.h"
#include "vexoselectiontools.h"
#include "vexoselectiontools_internal.h"
#include "vexosmartopen.h"
#include "vexouitools.h"

#include "aced.h"
#include "cvxlogentry.h"
#include "cvxtoolsresoverride.h"
#include "dbapserv.h"
#include "dbdatabase.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "gebndblock3d.h"
#include "moduleinstance.h"
#include "moduleprompts.h"
#include "vexoboundblockprotocol.h"
#include "vexodomainprotocol.h"
#include "vexosmartpointer.h"

#include <unordered_set>
#include <vector>

namespace vexo {
namespace {

constexpr unsigned int wrongSelection = 14002;
constexpr unsigned int andWord = 14003;
constexpr unsigned int areNotCompatible = 14004;
constexpr unsigned int choiceOfElements = 14029;
constexpr std::wstring_view applicationPrefix = L"VEXO";
constexpr std::wstring_view repartitionSuffix = L"REPARTITION";

std::vector<CString> splitDomains(const wchar_t* domains) {
    constexpr std::wstring_view separator = L"||";
    std::vector<CString> names;
    if (!domains) return names;
    std::wstring_view rest = domains;
    for (;;) {
        const std::size_t end = rest.find(separator);
        names.push_back(std::wstring(rest.substr(0, end)).c_str());
        if (end == std::wstring_view::npos) return names;
        rest.remove_prefix(end + separator.size());
    }
}

bool hasDomain(const std::vector<CString>& domains, const CString& domain) {
    for (const CString& each : domains)
        if (each.CompareNoCase(domain) == 0) return true;
    return false;
}

// Null where the class has none, or something else in its place.
template <class Protocol>
Protocol* protocolOf(const AcDbObject& object) {
    AcRxObject* found = object.queryX(Protocol::desc());
    return found && found->isKindOf(Protocol::desc()) ? static_cast<Protocol*>(found) : nullptr;
}

// False for an object that no domain is asked of.
bool getDomain(AcDbObjectId id, CString& domain) {
    const VEXOSmartOpen<AcDbObject> object(id, AcDb::kForNotify, false);
    if (object.status() != Acad::eOk) return false;
    const auto* entity = AcDbEntity::cast(object.object());
    if (entity && entity->visibility() == AcDb::kInvisible) return false;
    auto* protocol = protocolOf<VEXODomainProtocol>(*object);
    return protocol && protocol->getDomain(entity, domain) == Acad::eOk;
}

std::vector<CString> refusedDomains(const AcDbObjectIdArray& ids, const std::vector<CString>& allowed) {
    std::vector<CString> refused;
    for (const AcDbObjectId id : ids) {
        CString domain;
        if (getDomain(id, domain) && !hasDomain(allowed, domain) && !hasDomain(refused, domain))
            refused.push_back(domain);
    }
    return refused;
}

CString refusalOf(const std::vector<CString>& domains) {
    CString text;
    for (std::size_t i = 0; i < domains.size(); ++i) {
        const bool isLast = i + 1 == domains.size();
        if (i > 0) text += isLast ? L" " + promptText(andWord) + L" " : CString(L", ");
        text += domains[i];
    }
    text += L" " + promptText(areNotCompatible);
    return text.Left(1).MakeUpper() + text.Mid(1);
}

const wchar_t* dxfNameOf(const AcDbObject& object) {
    const wchar_t* name = object.isA()->dxfName();
    return name ? name : L"";
}
bool isApplicationEntity(std::wstring_view dxfName) { return dxfName.starts_with(applicationPrefix); }
bool isRepartition(std::wstring_view dxfName) {
    return isApplicationEntity(dxfName) && dxfName.ends_with(repartitionSuffix);
}

// Its DXF name; false where it cannot be opened.
bool getDxfName(AcDbObjectId id, std::wstring& name) {
    const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForRead, false);
    if (entity.status() != Acad::eOk) return false;
    name = dxfNameOf(*entity);
    return true;
}

// Removes the entities that open and whose DXF name is not wanted, in one pass.
template <class Wanted>
void keepByName(AcDbObjectIdArray& ids, Wanted wanted) {
    int kept = 0;
    for (int i = 0; i < ids.length(); ++i) {
        std::wstring name;
        if (!getDxfName(ids[i], name) || wanted(name)) ids[kept++] = ids[i];
    }
    ids.setLogicalLength(kept);
}

// Calls accept(first, name) for each application entity behind the first.
template <class Accept>
bool holdsBehindFirst(const AcDbObjectIdArray& ids, const std::wstring& first, Accept accept) {
    for (int i = 1; i < ids.length(); ++i) {
        std::wstring name;
        if (!getDxfName(ids[i], name)) return false;
        if (isApplicationEntity(name) && !accept(first, name)) return false;
    }
    return true;
}

// The whole drawing by a filter.
AcDbObjectIdArray idsOfWholeDrawing(const resbuf* filter) {
    AcDbObjectIdArray ids;
    struct Set {
        ~Set() { acedSSFree(name); }
        ads_name name = {0, 0};
    } set;
    if (acedSSGet(L"_X", nullptr, nullptr, filter, set.name) == RTNORM)
        VEXOSelectionTools::enameSetToObjIds(set.name, ids);
    return ids;
}

// An entity to look at, where it is shown, and the blocks that it stands in.
struct PlacedEntity {
    AcDbObjectId id;
    AcGeMatrix3d matrix;
    std::vector<AcDbObjectId> blocks{};
};

void appendContents(const AcDbBlockReference& reference, const PlacedEntity& placed,
                    std::vector<PlacedEntity>& work) {
    const AcDbObjectId block = reference.blockTableRecord();
    for (const AcDbObjectId around : placed.blocks)
        if (around == block) return;
    AcDbObjectIdArray contents;
    getBlockContents(reference, contents);
    PlacedEntity inner{{}, placed.matrix * reference.blockTransform(), placed.blocks};
    inner.blocks.push_back(block);
    for (const AcDbObjectId id : contents) {
        inner.id = id;
        work.push_back(inner);
    }
}

bool meetsBox(const AcDbEntity& entity, const AcGeMatrix3d& matrix, const AcGeBoundBlock3d& box) {
    auto* protocol = protocolOf<VEXOBoundBlockProtocol>(entity);
    AcGeBoundBlock3d block;
    if (!protocol || protocol->getBoundBlock(entity.objectId(), block) != Acad::eOk) return false;
    block.transformBy(matrix);
    return !block.isDisjoint(box);
}

} // namespace

void getBlockContents(const AcDbBlockReference& reference, AcDbObjectIdArray& ids) {
    CString name;
    {
        const VEXOSmartOpen<AcDbBlockTableRecord> block(reference.blockTableRecord(), AcDb::kForRead, false);
        if (block.status() == Acad::eOk) name = block->name().c_str();
    }
    VEXODatabaseTools::getFromBlockTable(ids, name, reference.database());
}

} // namespace vexo

bool VEXOSelectionTools::checkSelectionSet(AcDbObjectIdArray ids, eSelect kind, const wchar_t* domains,
                                           bool display, bool checkHomogeneity, const AcRxClass* wanted,
                                           bool allowDerived) {
    CVxLogEntry entry(L"VEXOSelectionTools::checkSelectionSet");
    if (!VEXOAcadSystemTools::isCommandActive()) return false;
    bool isGood = true;
    if (checkHomogeneity && !isSelectionHomogenous(ids, wanted, allowDerived)) {
        if (display) acutPrintf(L"\n%s", vexo::promptText(vexo::wrongSelection));
        isGood = false;
    }
    const std::vector<CString> refused = vexo::refusedDomains(ids, vexo::splitDomains(domains));
    if (refused.empty()) return isGood;
    if (!display) return false;
    const CString text = vexo::refusalOf(refused);
    if (kind == eSelectOne)
        VEXOUITools::MessageBoxW(text, MB_ICONEXCLAMATION, nullptr);
    else
        acutPrintf(L"\n%s", text);
    return false;
}

AcDbObjectIdArray VEXOSelectionTools::filterSelectionSet(const resbuf* filter, AcDbObjectIdArray ids) {
    CVxLogEntry entry(L"VEXOSelectionTools::filterSelectionSet");
    vexo::SortedIds found(vexo::idsOfWholeDrawing(filter));
    AcDbObjectIdArray kept;
    for (const AcDbObjectId id : ids)
        if (found.has(id)) kept.append(id);
    return kept;
}

bool VEXOSelectionTools::isSelectionHomogenous(const AcDbObjectIdArray& ids, const AcRxClass* wanted,
                                               bool allowDerived) {
    CVxLogEntry entry(L"VEXOSelectionTools::isSelectionHomogenous");
    for (const AcDbObjectId id : ids) {
        const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForRead, false);
        if (entity.status() != Acad::eOk) return false;
        const AcRxClass* own = entity->isA();
        if (!wanted) wanted = own;
        if (allowDerived ? !own->isDerivedFrom(wanted) : own != wanted) return false;
    }
    return true;
}

void VEXOSelectionTools::HideExcept(const wchar_t* type, int hide) {
    CVxLogEntry entry(L"VEXOSelectionTools::HideExcept");
    if (!type) return;
    AcDbObjectIdArray layers;
    VEXOLayerTools::getAllActiveLayers(layers);
    const vexo::LayerList shown(layers);
    resbuf* const filter = acutBuildList(-4, L"<not", RTDXF0, type, -4, L"not>", 0);
    const AcDbObjectIdArray others = vexo::idsOfWholeDrawing(filter);
    acutRelRb(filter);
    for (const AcDbObjectId id : others) {
        const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForRead, false);
        if (entity.status() != Acad::eOk || !shown.has(entity->layerId())) continue;
        if (entity->upgradeOpen() == Acad::eOk)
            entity->setVisibility(hide != 0 ? AcDb::kInvisible : AcDb::kVisible);
    }
}

void VEXOSelectionTools::DisplayGenericMultipleSelectionMessage(bool) {
    CVxLogEntry entry(L"VEXOSelectionTools::DisplayGenericMultipleSelectionMessage");
    CVxToolsResOverride resources(vexo::moduleInstance());
    acutPrintf(L"%s", vexo::promptText(vexo::choiceOfElements));
}

bool VEXOSelectionTools::isOneVEXOEntity(const AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOSelectionTools::isOneVEXOEntity");
    if (areOnlyRepartitions(ids, false)) return false;
    for (const AcDbObjectId id : ids) {
        std::wstring name;
        if (vexo::getDxfName(id, name) && vexo::isApplicationEntity(name)) return true;
    }
    return false;
}

void VEXOSelectionTools::getOnlyVEXOEntities(AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOSelectionTools::getOnlyVEXOEntities");
    vexo::keepByName(ids, vexo::isApplicationEntity);
}

bool VEXOSelectionTools::areOnlyRepartitions(const AcDbObjectIdArray& ids, bool sameClass) {
    CVxLogEntry entry(L"VEXOSelectionTools::areOnlyRepartitions");
    std::wstring first;
    if (ids.isEmpty() || !vexo::getDxfName(ids[0], first)) return false;
    if (ids.length() == 1) return vexo::isRepartition(first);
    return vexo::holdsBehindFirst(ids, first, [sameClass](const std::wstring& one, const std::wstring& name) {
        return vexo::isRepartition(name) && !(sameClass && name != one);
    });
}

bool VEXOSelectionTools::areSameTypeOfBars(const AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOSelectionTools::areSameTypeOfBars");
    std::wstring first;
    if (ids.isEmpty() || !vexo::getDxfName(ids[0], first)) return false;
    if (ids.length() == 1) return vexo::isApplicationEntity(first);
    return vexo::holdsBehindFirst(
        ids, first, [](const std::wstring& one, const std::wstring& name) { return name == one; });
}

void VEXOSelectionTools::filterEntitiesByName(AcDbObjectIdArray& ids, const CStringArray& names) {
    CVxLogEntry entry(L"VEXOSelectionTools::filterEntitiesByName");
    vexo::keepByName(ids, [&](const std::wstring& name) {
        for (int i = 0; i < static_cast<int>(names.GetSize()); ++i)
            if (names.GetAt(i).CompareNoCase(name.c_str()) == 0) return true;
        return false;
    });
}

void VEXOSelectionTools::getAdiacentElements(const AcGeBoundBlock3d& box, AcDbObjectIdArray& ids,
                                             AcArray<AcGeMatrix3d>& matrices) {
    CVxLogEntry entry(L"VEXOSelectionTools::getAdiacentElements");
    AcDbObjectIdArray modelSpace;
    VEXODatabaseTools::getFromModelSpace(modelSpace, nullptr);
    std::vector<vexo::PlacedEntity> work;
    for (const AcDbObjectId id : modelSpace) work.push_back({id, AcGeMatrix3d()});
    for (std::size_t i = 0; i < work.size(); ++i) {
        const vexo::PlacedEntity placed = work[i];
        const VEXOSmartOpen<AcDbEntity> entity(placed.id, AcDb::kForRead, false);
        if (entity.status() != Acad::eOk) continue;
        if (const auto* reference = AcDbBlockReference::cast(entity.object())) {
            vexo::appendContents(*reference, placed, work);
        } else if (vexo::meetsBox(*entity, placed.matrix, box)) {
            ids.append(placed.id);
            matrices.append(placed.matrix);
        }
    }
}
