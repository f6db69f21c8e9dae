#include "pickindex.h"

#include "blockholding.h"
#include "dbaccess.h"
#include "dbblockreference.h"
#include "dbdim.h"
#include "stubpool.h"

#include <algorithm>
#include <limits>

namespace hostkit {

namespace {

constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();
/// Blocks with fewer entities are looked at one by one.
constexpr std::size_t fewEntities = 48;

bool isOpenForWrite(const AcDbStub& stub) { return (stub.openMode & (kOpenForWrite | kHeldForWrite)) != 0; }

void insertSorted(std::vector<std::uint32_t>& numbers, std::uint32_t number) {
    const auto place = std::lower_bound(numbers.begin(), numbers.end(), number);
    if (place == numbers.end() || *place != number) numbers.insert(place, number);
}

void eraseSorted(std::vector<std::uint32_t>& numbers, std::uint32_t number) {
    const auto place = std::lower_bound(numbers.begin(), numbers.end(), number);
    if (place != numbers.end() && *place == number) numbers.erase(place);
}

} // namespace

// --- One block ---------------------------------------------------------------------------------------------

void PickIndex::Contents::set(std::uint32_t position, const SearchBox& box) {
    if (!endless.empty()) eraseSorted(endless, position);
    if (isEndless(box)) insertSorted(endless, position);
    tree.set(position, box);
}

void PickIndex::Contents::forgetFrom(std::uint32_t position) {
    for (; known > position; --known) {
        tree.remove(known - 1);
        eraseSorted(endless, known - 1);
        eraseSorted(holders, known - 1);
    }
}

std::uint32_t PickIndex::positionOf(const AcDbStub* stub) const {
    const std::size_t index = StubPool::indexOf(stub);
    return index < m_positions.size() ? m_positions[index] : nowhere;
}

void PickIndex::setPosition(const AcDbStub* stub, std::uint32_t position) {
    const std::size_t index = StubPool::indexOf(stub);
    if (index >= m_positions.size()) m_positions.resize(index + index / 8 + 1, nowhere);
    m_positions[index] = position;
}

void PickIndex::build(const AcDbBlockTableRecord& block, Contents& contents) {
    const std::vector<AcDbObjectId>& entities = block.entities();
    contents.known = static_cast<std::uint32_t>(entities.size());
    contents.endless.clear();
    contents.holders.clear();
    contents.waiting.clear();
    const std::size_t stubs = DatabaseAccess::stubCount(m_database);
    if (m_positions.size() < stubs) m_positions.resize(stubs, nowhere);
    std::uint32_t looked = 0;
    contents.tree.build(contents.known, [&](std::uint32_t position) {
        const auto* entity = DatabaseAccess::objectOf<AcDbEntity>(entities[position]);
        const SearchBox box = entity ? ofPart(*entity, block) : emptyBox();
        if (position < looked) return box;
        looked = position + 1;
        setPosition(entities[position].stub(), position);
        if (isEndless(box)) contents.endless.push_back(position);
        if (entity && mayShowBlock(*entity)) contents.holders.push_back(position);
        return box;
    });
}

bool PickIndex::mayShowBlock(const AcDbEntity& entity) const {
    return entity.isKindOf(AcDbBlockReference::desc()) || entity.isKindOf(AcDbDimension::desc()) ||
           (!m_drawn.empty() && m_drawn.count(entity.objectId().stub()) > 0);
}

bool PickIndex::showsAnyOf(const AcDbEntity& holder, const Blocks& blocks) const {
    const auto* shown = DatabaseAccess::objectOf<AcDbBlockTableRecord>(shownBlock(holder));
    if (shown) return blocks.count(shown) > 0;
    const auto drawn = m_drawn.find(holder.objectId().stub());
    return drawn != m_drawn.end() && std::any_of(drawn->second.begin(), drawn->second.end(),
                                                 [&](const auto* block) { return blocks.count(block) > 0; });
}

void PickIndex::noteDrawn(const AcDbEntity& entity, const BlockList& blocks) {
    m_drawn[entity.objectId().stub()] = blocks;
}

// What the list lost at its end goes. False where it lost something else.
bool PickIndex::takeTail(const AcDbBlockTableRecord& block, Contents& contents) {
    constexpr std::uint32_t longestTail = 1000;
    const std::vector<AcDbObjectId>& entities = block.entities();
    std::uint32_t kept = contents.known;
    const std::uint32_t least = kept - std::min(kept, longestTail);
    while (kept > 0 && (kept > entities.size() || positionOf(entities[kept - 1].stub()) != kept - 1))
        if (--kept < least) return false;
    contents.forgetFrom(kept);
    return true;
}

void PickIndex::setAnew(const AcDbBlockTableRecord& block, Contents& contents, std::uint32_t position) {
    const auto* entity = DatabaseAccess::objectOf<AcDbEntity>(block.entities()[position]);
    contents.set(position, entity ? ofPart(*entity, block) : emptyBox());
    if (entity && mayShowBlock(*entity)) insertSorted(contents.holders, position);
}

void PickIndex::catchUp(const AcDbBlockTableRecord& block, Contents& contents) {
    const std::vector<AcDbObjectId>& entities = block.entities();
    const bool hasGrownMuch = entities.size() > contents.known + contents.known / 2 + fewEntities;
    if (hasGrownMuch || !takeTail(block, contents)) return build(block, contents);
    std::vector<std::uint32_t> waiting;
    waiting.swap(contents.waiting);
    for (const std::uint32_t position : waiting)
        if (position < contents.known) setAnew(block, contents, position);
    while (contents.known < entities.size()) {
        const std::uint32_t position = contents.known++;
        setPosition(entities[position].stub(), position);
        setAnew(block, contents, position);
    }
}

PickIndex::Contents& PickIndex::contentsOf(const AcDbBlockTableRecord& block) {
    std::unique_ptr<Contents>& contents = m_contents[&block];
    if (contents) {
        catchUp(block, *contents);
    } else {
        auto made = std::make_unique<Contents>(); // building may come by the block again
        build(block, *made);
        contents = std::move(made);
    }
    return *contents;
}

bool PickIndex::findNear(const AcDbBlockTableRecord& block, const std::function<bool(const SearchBox&)>& near,
                         std::vector<std::uint32_t>& positions) {
    if (block.entities().size() < fewEntities && m_contents.count(&block) == 0) return false;
    const Contents& contents = contentsOf(block);
    positions = contents.endless;
    contents.tree.forEach([&](const CoarseBox& box) { return near(contents.tree.exact(box)); },
                          [&](std::uint32_t position) { positions.push_back(position); });
    std::sort(positions.begin(), positions.end());
    return true;
}

SearchBox PickIndex::ofContents(const AcDbBlockTableRecord& block) {
    if (block.entities().size() < fewEntities) return PickBoxes::ofContents(block);
    const Contents& contents = contentsOf(block);
    return contents.endless.empty() ? contents.tree.bounds() : endlessBox();
}

// --- Changes -----------------------------------------------------------------------------------------------

PickIndex::PickIndex(AcDbDatabase& database)
    : m_database(database) {
    DatabaseAccess::display(database).add(*this);
}

PickIndex::~PickIndex() { DatabaseAccess::display(m_database).remove(*this); }

PickIndex& PickIndex::upToDate(AcDbDatabase& database) {
    std::unique_ptr<PickIndex>& index = DatabaseAccess::picking(database);
    if (!index) index = std::make_unique<PickIndex>(database);
    index->catchUp();
    return *index;
}

void PickIndex::noteShown(const AcDbBlockTableRecord& inner, const AcDbBlockTableRecord& outer) {
    m_users[&inner].insert(&outer);
}

void PickIndex::note(const AcDbStub* stub) {
    constexpr std::size_t most = 100000;
    if (m_isDropped || (!m_changed.empty() && m_changed.back() == stub)) return;
    m_changed.push_back(stub);
    if (m_changed.size() <= most + m_positions.size() / 4) return;
    drop();
    m_isDropped = true;
}

void PickIndex::drop() {
    m_contents.clear();
    m_users.clear();
    m_drawn.clear();
    m_positions = {};
    m_changed = {};
    forgetAll();
}

void PickIndex::changeBegins(const AcDbObject& object) { note(object.objectId().stub()); }

// What is open was told of before.
void PickIndex::startAnew() {
    m_isDropped = false;
    for (std::size_t i = 0, count = DatabaseAccess::stubCount(m_database); i < count; ++i)
        if (const AcDbStub* stub = DatabaseAccess::stubAt(m_database, i); isOpenForWrite(*stub)) note(stub);
}

void PickIndex::catchUp() {
    if (m_isDropped) startAnew();
    if (m_changed.empty()) return;
    std::vector<const AcDbStub*> stubs;
    stubs.swap(m_changed);
    std::sort(stubs.begin(), stubs.end());
    stubs.erase(std::unique(stubs.begin(), stubs.end()), stubs.end());
    Blocks changed;
    std::vector<const AcDbStub*> entities;
    for (const AcDbStub* stub : stubs) {
        collect(*stub, changed, entities);
        if (isOpenForWrite(*stub)) m_changed.push_back(stub);
    }
    forgetUsersOf(changed);
    markHolders(changed);
    for (const AcDbStub* entity : entities) mark(*entity);
    for (const AcDbBlockTableRecord* block : changed)
        if (m_contents.count(block) > 0) (void)contentsOf(*block);
    for (const AcDbStub* entity : entities) dropUnplaced(*entity);
}

void PickIndex::collect(const AcDbStub& stub, Blocks& changed, std::vector<const AcDbStub*>& entities) {
    if (!stub.object) return;
    if (const auto* block = AcDbBlockTableRecord::cast(stub.object)) {
        changed.insert(block);
    } else if (stub.object->isKindOf(AcDbEntity::desc())) {
        const auto [entity, around] = standingEntity(*stub.object);
        if (!around) return;
        changed.insert(around);
        entities.push_back(entity->objectId().stub());
    }
}

// The boxes of the blocks, and of all that shows them, however far up, are not what they were.
void PickIndex::forgetUsersOf(Blocks& changed) {
    std::vector<const AcDbBlockTableRecord*> waiting(changed.begin(), changed.end());
    while (!waiting.empty()) {
        const AcDbBlockTableRecord* block = waiting.back();
        waiting.pop_back();
        forget(*block);
        const auto users = m_users.find(block);
        if (users == m_users.end()) continue;
        for (const AcDbBlockTableRecord* user : users->second)
            if (changed.insert(user).second) waiting.push_back(user);
    }
}

// What in the changed blocks shows one of them.
void PickIndex::markHolders(const Blocks& changed) {
    for (const AcDbBlockTableRecord* user : changed) {
        const auto found = m_contents.find(user);
        if (found == m_contents.end()) continue;
        Contents& contents = *found->second;
        for (const std::uint32_t position : contents.holders) {
            if (position >= user->entities().size()) continue;
            const auto* holder = DatabaseAccess::objectOf<AcDbEntity>(user->entities()[position]);
            if (holder && showsAnyOf(*holder, changed)) contents.waiting.push_back(position);
        }
    }
}

bool PickIndex::isPlaced(const AcDbStub& stub, const AcDbBlockTableRecord& block) const {
    const std::uint32_t position = positionOf(&stub);
    const std::vector<AcDbObjectId>& entities = block.entities();
    return position < entities.size() && entities[position].stub() == &stub;
}

void PickIndex::mark(const AcDbStub& stub) {
    const auto [entity, block] = standingEntity(*stub.object);
    const auto found = m_contents.find(block);
    if (found == m_contents.end() || !isPlaced(stub, *block)) return;
    const std::uint32_t position = positionOf(&stub);
    if (position < found->second->known) found->second->waiting.push_back(position);
}

// What is new has its place by now; where an entity has none, the list is not the one that was known.
void PickIndex::dropUnplaced(const AcDbStub& stub) {
    const auto [entity, block] = standingEntity(*stub.object);
    const auto found = m_contents.find(block);
    if (found == m_contents.end() || (stub.flags & kStubTakenBack) || isPlaced(stub, *block)) return;
    m_contents.erase(found);
}

std::size_t PickIndex::bytes() const {
    std::size_t sum = m_positions.capacity() * sizeof(std::uint32_t);
    for (const auto& [block, contents] : m_contents)
        sum += contents->tree.bytes() +
               (contents->endless.capacity() + contents->holders.capacity()) * sizeof(std::uint32_t);
    return sum;
}

} // namespace hostkit
