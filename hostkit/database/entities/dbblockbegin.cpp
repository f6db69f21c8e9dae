#include "dbblockbegin.h"

#include "dbaccess.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbBlockBegin::Filing {
    using Block = AcDbBlockTableRecord;
    static constexpr short nameCode = 2;
    static constexpr short secondNameCode = 3;
    static constexpr short flagsCode = 70;
    static constexpr short originCode = 10;
    static constexpr short pathCode = 1;
    static constexpr short commentsCode = 4;

    /// The block's record has the name; a second one that is another is none of it.
    static bool readGroup(Block& block, const AcDbDxfGroup& group, std::wstring& name) {
        switch (group.code) {
        case nameCode:
            name = group.text;
            return true;
        case secondNameCode:
            return equalFolded(name, group.text);
        case flagsCode:
            block.m_dxfFlags = static_cast<Adesk::Int16>(group.integer);
            return block.m_dxfFlags == group.integer;
        case originCode:
            block.m_origin.set(group.point[0], group.point[1], group.point[2]);
            return true;
        case pathCode:
            block.m_pathName = group.text;
            return true;
        case commentsCode:
            block.m_comments = group.text;
            return true;
        default:
            return false;
        }
    }

    /// R12 has other names for the spaces.
    static std::wstring_view filedName(const Block& block, const AcDbDxfFiler& filer) {
        if (!filer.isR12Form()) return block.name();
        if (equalFolded(block.name(), L"*Model_Space")) return L"$MODEL_SPACE";
        return equalFolded(block.name(), L"*Paper_Space") ? std::wstring_view(L"$PAPER_SPACE") : block.name();
    }

    /// A space keeps the name that it was read with; other blocks have theirs to the letter.
    static void writeName(short code, const Block& block, AcDbDxfFiler& filer) {
        const std::wstring_view name = filedName(block, filer);
        if (block.isLayout())
            filer.writeRecordName(code, block.objectId(), name);
        else
            filer.writeText(code, name);
    }

    static void write(const Block& block, AcDbDxfFiler& filer) {
        writeName(nameCode, block, filer);
        filer.writeInteger(flagsCode, block.m_dxfFlags);
        filer.writeItem(originCode, block.m_origin);
        filer.markOptional();
        writeName(secondNameCode, block, filer);
        if (block.m_pathName.empty()) filer.markOptional();
        filer.writeText(pathCode, block.m_pathName);
        if (block.m_comments.empty()) filer.markDefault();
        filer.writeText(commentsCode, block.m_comments);
    }
};

// Without an owner the groups are read all the same, and belong to no block.
Acad::ErrorStatus AcDbBlockBegin::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbBlockBegin")) return status;
    AcDbBlockTableRecord nobody;
    auto* const owner = DatabaseAccess::objectOf<AcDbBlockTableRecord>(ownerId());
    AcDbBlockTableRecord& block = owner ? *owner : nobody;
    AcDbDxfGroup group;
    std::wstring name;
    for (;;) {
        const Acad::ErrorStatus read = filer->readItem(group);
        if (read == Acad::eEndOfObject) return Acad::eOk;
        if (read != Acad::eOk) return read;
        if (!Filing::readGroup(block, group, name)) filer->rejectItem();
    }
}

Acad::ErrorStatus AcDbBlockBegin::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    const auto* const block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(ownerId());
    if (!block) return Acad::eNotInDatabase;
    filer->writeSubclassMark(L"AcDbBlockBegin");
    Filing::write(*block, *filer);
    return filer->filerStatus();
}
