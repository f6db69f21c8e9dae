#include "dblayout.h"

#include "assignfield.h"
#include "dbaccess.h"
#include "dbblocktablerecord.h"
#include "fielditems.h"
#include "fieldtable.h"
#include "ownederasure.h"

#include <initializer_list>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbLayout, AcDbObject, L"LAYOUT")

Acad::ErrorStatus AcDbLayout::setLayoutName(const wchar_t* name) {
    return hostkit::assignIf(name && *name, *this, m_name, name ? name : L"");
}

Acad::ErrorStatus AcDbLayout::setBlockTableRecordId(AcDbObjectId id) {
    return hostkit::assignField(*this, m_blockId, id);
}

Acad::ErrorStatus AcDbLayout::setTabOrder(int order) {
    return hostkit::assignIf(order >= 0 && order <= 32767, *this, m_tabOrder,
                             static_cast<Adesk::Int16>(order));
}

double AcDbLayout::plotSetting(short code, double otherwise) const {
    GroupWalker walker(m_plotSettings);
    AcDbDxfGroup group;
    while (walker.next(group))
        if (group.code == code)
            return group.kind == AcDb::GroupKind::kReal ? group.real : static_cast<double>(group.integer);
    return otherwise;
}

void AcDbLayout::getPlotPaperSize(double& width, double& height) const {
    width = plotSetting(44, 0.0);
    height = plotSetting(45, 0.0);
}

void AcDbLayout::getPlotPaperMargins(double& left, double& bottom, double& right, double& top) const {
    left = plotSetting(40, 0.0);
    bottom = plotSetting(41, 0.0);
    right = plotSetting(42, 0.0);
    top = plotSetting(43, 0.0);
}

void AcDbLayout::getPlotOrigin(double& x, double& y) const {
    x = plotSetting(46, 0.0);
    y = plotSetting(47, 0.0);
}

void AcDbLayout::getCustomPrintScale(double& numerator, double& denominator) const {
    numerator = plotSetting(142, 1.0);
    denominator = plotSetting(143, 1.0);
}

AcDbLayout::PlotPaperUnits AcDbLayout::plotPaperUnits() const {
    const double told = plotSetting(72, 1.0);
    return told == 0.0 ? kInches : told == 2.0 ? kPixels : kMillimeters;
}

AcDbLayout::PlotRotation AcDbLayout::plotRotation() const {
    const double told = plotSetting(73, 0.0);
    return told >= 1.0 && told <= 3.0 ? static_cast<PlotRotation>(static_cast<int>(told)) : k0degrees;
}

namespace {

/// The block whose sheet this is; null where the two do not agree.
AcDbBlockTableRecord* ownBlock(const AcDbLayout& layout) {
    auto* block = hostkit::DatabaseAccess::objectOf<AcDbBlockTableRecord>(layout.getBlockTableRecordId());
    return block && block->getLayoutId() == layout.objectId() ? block : nullptr;
}

} // namespace

Acad::ErrorStatus AcDbLayout::subErase(Adesk::Boolean erasing) {
    const AcDbBlockTableRecord* block = erasing ? ownBlock(*this) : nullptr;
    const bool isStanding = block && (block->objectId() == database()->modelSpaceId() ||
                                      block->objectId() == database()->paperSpaceId());
    return isStanding ? Acad::eCannotBeErasedByCaller : AcDbObject::subErase(erasing);
}

// The block is no part of the layout, so cancel would not bring it back: it goes when cancel is past.
Acad::ErrorStatus AcDbLayout::subClose() {
    const Acad::ErrorStatus status = AcDbObject::subClose();
    if (const AcDbBlockTableRecord* block = ownBlock(*this))
        hostkit::eraseWithOwner(block->objectId(), isErased());
    return status;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbLayout::Filing {
    static constexpr GroupField<AcDbLayout> groups[] = {
        textField<&AcDbLayout::m_name>(1),
        integerField<&AcDbLayout::m_tabOrder>(71),
        idField<&AcDbLayout::m_blockId>(330),
    };

    static Acad::ErrorStatus readAll(AcDbDxfFiler& filer, GroupBlock& block) {
        block.clear();
        AcDbDxfGroup group;
        for (;;) {
            const Acad::ErrorStatus status = filer.readItem(group);
            if (status == Acad::eEndOfObject) return Acad::eOk;
            if (status != Acad::eOk) return status;
            if (isStorable(group))
                block.append(group);
            else
                filer.rejectItem();
        }
    }

    /// Groups that a new record gets and one that was read without does not.
    template <class Value>
    static void writeStandard(AcDbDxfFiler& filer, std::initializer_list<short> codes, const Value& value) {
        for (const short code : codes) {
            filer.markOptional();
            filer.writeItem(code, value);
        }
    }

    /// A page without a printer, as readers want to find one.
    static void writeStandardPlotSettings(AcDbDxfFiler& filer) {
        writeStandard(filer, {1}, L"");
        writeStandard(filer, {2}, L"none_device");
        writeStandard(filer, {4, 6}, L"");
        writeStandard(filer, {40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 140, 141}, 0.0);
        writeStandard(filer, {142, 143}, 1.0);
        writeStandard(filer, {70}, 688);
        writeStandard(filer, {72, 73}, 0);
        writeStandard(filer, {74}, 5);
        writeStandard(filer, {7}, L"");
        writeStandard(filer, {75}, 16);
        writeStandard(filer, {147}, 1.0);
        writeStandard(filer, {148, 149}, 0.0);
    }

    /// Limits, insertion base, extents (empty) and coordinate system.
    static void writeStandardRest(AcDbDxfFiler& filer) {
        constexpr double far = 1e20;
        writeStandard(filer, {10}, AcGePoint2d(0.0, 0.0));
        writeStandard(filer, {11}, AcGePoint2d(12.0, 9.0));
        writeStandard(filer, {12}, AcGePoint3d(0.0, 0.0, 0.0));
        writeStandard(filer, {14}, AcGePoint3d(far, far, far));
        writeStandard(filer, {15}, AcGePoint3d(-far, -far, -far));
        writeStandard(filer, {146}, 0.0);
        writeStandard(filer, {13}, AcGePoint3d(0.0, 0.0, 0.0));
        writeStandard(filer, {16}, AcGePoint3d(1.0, 0.0, 0.0));
        writeStandard(filer, {17}, AcGePoint3d(0.0, 1.0, 0.0));
        writeStandard(filer, {76}, 0);
    }
};

Acad::ErrorStatus AcDbLayout::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbObject::dxfInFields(filer);
    // Both parts have the name's code: a record without marks is the layout's alone.
    if (status == Acad::eOk && filer->hasSubclassMarks() && filer->atSubclassData(L"AcDbPlotSettings"))
        status = Filing::readAll(*filer, m_plotSettings);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbLayout")) return status;
    m_rest.clear();
    return readFields(*filer, Filing::groups, *this, [this](const AcDbDxfGroup& group) {
        if (!isStorable(group)) return false;
        m_rest.append(group);
        return true;
    });
}

Acad::ErrorStatus AcDbLayout::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbPlotSettings");
    if (m_plotSettings.isEmpty())
        Filing::writeStandardPlotSettings(*filer);
    else
        writeBlock(*filer, m_plotSettings);
    filer->writeSubclassMark(L"AcDbLayout");
    const auto& [name, order, block] = Filing::groups;
    name.write(*this, name, *filer);
    if (m_rest.isEmpty()) Filing::writeStandard(*filer, {70}, 1);
    order.write(*this, order, *filer);
    if (m_rest.isEmpty())
        Filing::writeStandardRest(*filer);
    else
        writeBlock(*filer, m_rest);
    block.write(*this, block, *filer);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbLayout)
