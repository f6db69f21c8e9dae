#pragma once

#include "dbent.h"
#include "plotlook.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

struct LibraryWork;

/// Copies of entities of a drawing for tools that know curves, texts and hatches alone: what consists of
/// others is taken apart until such pieces are left. Nothing of the drawing is changed.
class PictureCopies {
public:
    /// By entities on layers that are not shown, and invisible ones, nothing is added.
    PictureCopies(AcDbDatabase& database, const LibraryWork& work)
        : m_looks(database)
        , m_work(work) {}

    /// False once a break of the user, or too many pieces, ended the work.
    bool add(const std::vector<AcDbObjectId>& ids);
    /// Entities of the drawing that something was taken of.
    std::size_t count() const { return m_count; }
    /// Entities and pieces that cannot be taken apart and draw nothing, and hatches too dense for lines, by
    /// kind.
    const std::map<std::wstring, std::size_t>& missing() const { return m_missing; }
    /// Blocks within blocks went on too far; the rest is left out.
    bool isCut() const { return m_isCut; }
    AcArray<void*> list() const;

private:
    bool isShown(const AcDbEntity& entity);
    void addPiece(std::unique_ptr<AcDbEntity> piece, int depth);
    void takeApart(AcDbEntity& entity, int depth);
    void keep(std::unique_ptr<AcDbEntity> copy);

    LookTable m_looks;
    const LibraryWork& m_work;
    std::vector<std::unique_ptr<AcDbEntity>> m_copies;
    std::map<std::wstring, std::size_t> m_missing;
    std::size_t m_count = 0;
    bool m_isCut = false;
};
