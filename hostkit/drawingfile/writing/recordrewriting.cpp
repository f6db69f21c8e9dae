#include "recordrewriting.h"

#include "dbarc.h"
#include "dbblockbegin.h"
#include "dbblockreference.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbface.h"
#include "dbline.h"
#include "dbpoint.h"
#include "dbpolyline.h"
#include "dbsequenceend.h"
#include "dbsolid.h"
#include "dbsymboltable.h"
#include "dbsymboltablerecord.h"
#include "dbtext.h"
#include "keptcolors.h"
#include "workers.h"

#include <algorithm>
#include <exception>
#include <system_error>
#include <thread>

namespace hostkit {

namespace {

// Below so many records a thread costs more than it gains.
constexpr std::size_t recordsWorthAThread = 2000;
constexpr unsigned mostThreads = 8;

bool isOfTheKit(const AcDbObject& object) { return object.isA()->valueCopier() != nullptr; }

/// The most frequent kinds have the same groups in every form from 2000 on, or ones that the transfer from
/// form to form leaves out; a true colour is kept elsewhere before 2004.
bool isSameInEveryForm(const AcDbObject& object) {
    static const std::unordered_set<const AcRxClass*> same{
        AcDbArc::desc(),         AcDbBlockReference::desc(), AcDbCircle::desc(), AcDbEllipse::desc(),
        AcDbFace::desc(),        AcDbLine::desc(),           AcDbPoint::desc(),  AcDbPolyline::desc(),
        AcDbSequenceEnd::desc(), AcDbSolid::desc(),          AcDbText::desc()};
    return same.contains(object.isA()) && !trueColorOf(object);
}

/// The records of a range of the drawing's objects, rewritten on one thread.
class Share {
public:
    Share(const RewritingRules& rules, ObjectWriting& objects, std::size_t begin, std::size_t end)
        : m_rules(rules)
        , m_objects(objects)
        , m_rewriting(rules, objects)
        , m_begin(begin)
        , m_end(end) {}

    void run() noexcept {
        try {
            makeRoom();
            m_isGood = forEach([this](const AcDbObject& object) {
                if (isOfTheKit(object)) return m_rewriting.rewrite(object);
                m_ofApplications.push_back(&object);
                return true;
            });
        } catch (...) {
            m_failure = std::current_exception();
        }
    }

    /// What run left; on the thread that the applications know.
    bool finish() {
        if (m_failure) std::rethrow_exception(m_failure);
        return m_isGood && std::all_of(m_ofApplications.begin(), m_ofApplications.end(),
                                       [this](const AcDbObject* each) { return m_rewriting.rewrite(*each); });
    }

    RecordRewriting& rewriting() { return m_rewriting; }
    const ObjectWriting& objects() const { return m_objects; }

private:
    template <class F>
    bool forEach(F&& f) {
        for (std::size_t place = m_begin; place < m_end; ++place) {
            const AcDbObject* const object = DatabaseAccess::stubAt(m_rules.database, place)->object;
            if (object && !f(*object)) return false;
        }
        return true;
    }

    void makeRoom() {
        std::size_t count = 0;
        std::size_t size = 0;
        const bool takesAll = m_rules.scope != RewritingScope::kChanged || m_rules.changes.hasRenamed();
        forEach([&](const AcDbObject& object) {
            if (!takesAll && !object.isChangedSinceRead()) return true;
            ++count;
            size += object.sourceSpan().length;
            return true;
        });
        m_rewriting.reserve(count, size + size / 8);
    }

    const RewritingRules& m_rules;
    ObjectWriting& m_objects;
    RecordRewriting m_rewriting;
    std::size_t m_begin;
    std::size_t m_end;
    std::vector<const AcDbObject*> m_ofApplications;
    bool m_isGood = true;
    std::exception_ptr m_failure;
};

// The caller's own thread takes the first share.
void runAll(std::vector<std::unique_ptr<Share>>& shares) {
    std::vector<std::jthread> threads;
    std::size_t started = 1;
    try {
        for (; started < shares.size(); ++started)
            threads.emplace_back([&share = *shares[started]] { share.run(); });
    } catch (const std::system_error&) {
        // A machine that gives no more threads: the caller's does the rest.
    }
    shares.front()->run();
    for (; started < shares.size(); ++started) shares[started]->run();
}

} // namespace

bool isWrittenAgain(RewritingScope scope, const AcDbObject& object) {
    return scope == RewritingScope::kEverything ||
           (scope == RewritingScope::kOtherForm && !isSameInEveryForm(object));
}

bool RecordRewriting::mustBeWritten(const AcDbObject& object) const {
    if (isWrittenAgain(m_rules.scope, object) || object.differsFromSource() ||
        m_rules.holders.contains(&object))
        return true;
    if (m_rules.changes.hasRenamed() &&
        (object.isKindOf(AcDbEntity::desc()) || object.isKindOf(AcDbSymbolTableRecord::desc())))
        return true;
    // The opening record of a block files the block's own fields.
    const AcDbObject* const block =
        object.isKindOf(AcDbBlockBegin::desc()) ? DatabaseAccess::object(object.ownerId()) : nullptr;
    return (block && block->isChangedSinceRead()) ||
           m_objects.mustFollow(m_rules.source.bytes, object.sourceSpan());
}

bool RecordRewriting::rewrite(const AcDbObject& object) {
    const SourceSpan span = object.sourceSpan();
    if (span.isEmpty()) return true;
    if (isLeftOut(object)) {
        m_edits.replace(span.offset, span.offset + span.length, {});
        return true;
    }
    if (object.isKindOf(AcDbSymbolTable::desc()) || !mustBeWritten(object)) {
        ++m_recordsCopied;
        m_objects.passRecord();
        return true;
    }
    m_text.clear();
    if (!m_objects.writeMerged(object, m_rules.source.bytes, span, m_rules.scope == RewritingScope::kChanged,
                               m_text))
        return false;
    m_edits.replace(span.offset, span.offset + span.length, m_text);
    return true;
}

std::size_t threadsFor(const AcDbDatabase& database, unsigned wanted) {
    const std::size_t count = DatabaseAccess::stubCount(database);
    const std::size_t machine = std::min<std::size_t>(workersOfMachine(), mostThreads);
    return std::clamp<std::size_t>(wanted ? wanted : std::min(machine, count / recordsWorthAThread), 1,
                                   std::max<std::size_t>(count, 1));
}

bool rewriteRecords(const RewritingRules& rules, ObjectWriting& objects, std::size_t threads,
                    ByteEdits& edits, std::size_t& recordsCopied) {
    const std::size_t count = DatabaseAccess::stubCount(rules.database);
    std::vector<std::unique_ptr<ObjectWriting>> siblings;
    std::vector<std::unique_ptr<Share>> shares;
    objects.countProgressBy(threads);
    for (std::size_t share = 0; share < threads; ++share) {
        if (share > 0) siblings.push_back(objects.makeSibling());
        shares.push_back(std::make_unique<Share>(rules, share > 0 ? *siblings.back() : objects,
                                                 count * share / threads, count * (share + 1) / threads));
    }
    runAll(shares);
    objects.countProgressBy(1);
    for (const std::unique_ptr<Share>& share : shares) {
        const bool isGood = share->finish();
        if (&share->objects() != &objects) objects.take(share->objects());
        if (!isGood) return false;
        recordsCopied += share->rewriting().recordsCopied();
        edits.take(std::move(share->rewriting().edits()));
    }
    return true;
}

} // namespace hostkit
