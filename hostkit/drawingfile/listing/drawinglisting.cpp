#include "drawinglisting.h"

#include "drawingversion.h"
#include "objectwriting.h"

#include "dbblocktable.h"
#include "dbopaque.h"
#include "fieldtable.h"
#include "groupcodes.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr short textCode = 1;
constexpr short textPartCode = 3;
constexpr short nameCode = 2;
constexpr short firstPointCode = 10;
constexpr short fitPointCode = 11;
constexpr short elevationCode = 38;
constexpr short bulgeCode = 42;
constexpr short hatchPathCountCode = 91;

/// Gathers what an entity files, so that the list says the same as a file.
class ListingFiler final : public AcDbDxfFiler {
public:
    struct Group {
        short code = 0;
        std::array<double, 3> point = {};
        long long integer = 0;
        std::wstring text;
    };

    explicit ListingFiler(AcDbDatabase* database)
        : m_database(database) {}

    std::vector<Group> groups;

    /// An object within the record has groups of its own, which say the same again.
    void begin() {
        groups.clear();
        resetFilerStatus();
        m_isEmbedded = false;
    }

    AcDb::FilerType filerType() const override { return AcDb::kBagFiler; }
    AcDbDatabase* database() const override { return m_database; }
    AcDb::AcDbDwgVersion dwgVersion() const override { return AcDb::kDHL_1032; }
    void writeText(short code, std::wstring_view text) override {
        m_isEmbedded = m_isEmbedded || code == embeddedObjectCode;
        add({code, {}, 0, std::wstring(text)});
    }
    void writeReal(short code, double value) override { add({code, {value, 0.0, 0.0}, 0, {}}); }
    void writePoint(short code, const double* coordinates, int dimension) override {
        Group group;
        group.code = code;
        std::copy_n(coordinates, dimension, group.point.begin());
        add(std::move(group));
    }
    void writeInteger(short code, Adesk::Int64 value) override { add({code, {}, value, {}}); }
    void writeHandle(short code, Adesk::UInt64 handle) override {
        add({code, {}, static_cast<long long>(handle), {}});
    }
    void writeBinary(short, const void*, std::size_t) override {}
    void writeSubclassMark(const wchar_t*) override {}

    const Group* find(short code) const {
        const auto found = std::find_if(groups.begin(), groups.end(),
                                        [code](const Group& group) { return group.code == code; });
        return found == groups.end() ? nullptr : &*found;
    }

private:
    void add(Group group) {
        if (!m_isEmbedded) groups.push_back(std::move(group));
    }

    AcDbDatabase* m_database;
    bool m_isEmbedded = false;
};

/// Which groups of a kind are its vertices.
enum class VertexRule : unsigned char { kPlace, kEnds, kCorners, kPolyline, kSpline, kParts };

VertexRule ruleOf(std::wstring_view type) {
    if (type == L"LINE") return VertexRule::kEnds;
    if (type == L"SOLID" || type == L"TRACE" || type == L"3DFACE") return VertexRule::kCorners;
    if (type == L"LWPOLYLINE") return VertexRule::kPolyline;
    if (type == L"SPLINE") return VertexRule::kSpline;
    return type == L"POLYLINE" ? VertexRule::kParts : VertexRule::kPlace;
}

class Lister {
public:
    Lister(const AcDbDatabase& database, DrawingListing& listing)
        : m_filer(const_cast<AcDbDatabase*>(&database))
        , m_listing(listing) {}

    void listBlock(const AcDbBlockTableRecord& block) {
        for (const AcDbObjectId id : block.entities()) {
            const auto* const entity = DatabaseAccess::objectOf<AcDbEntity>(id);
            if (entity && !entity->isErased()) listEntity(*entity, block.name());
        }
    }

private:
    void listEntity(const AcDbEntity& entity, const std::wstring& space) {
        const SubentityList* const parts = partsOf(entity);
        const std::size_t own = m_listing.entities.size();
        const VertexRule rule = ruleOf(addCommon(entity, space).type);
        if (rule != VertexRule::kParts) addVertices(rule, m_listing.entities[own]);
        for (std::size_t place = 0; parts && place < parts->count(); ++place) {
            const auto* const part = DatabaseAccess::objectOf<AcDbEntity>(parts->idAt(place));
            if (!part || part->isErased()) continue;
            if (rule == VertexRule::kParts)
                addVertexOf(*part, m_listing.entities[own]);
            else
                addVertices(VertexRule::kPlace, addCommon(*part, space));
        }
    }

    ListedEntity& addCommon(const AcDbEntity& entity, const std::wstring& space) {
        gather(entity);
        ListedEntity& listed = m_listing.entities.emplace_back();
        listed.type = entity.dxfName() ? entity.dxfName() : L"";
        if (const ListingFiler::Group* const layer = m_filer.find(8)) listed.layer = layer->text;
        wchar_t handle[17] = {};
        (void)entity.handle().getIntoAsciiBuffer(handle);
        listed.handle = handle;
        listed.space = space;
        addTexts(listed);
        if (entity.extendedData()) addExtendedData(*entity.extendedData(), listed);
        return listed;
    }

    void gather(const AcDbEntity& entity) {
        m_filer.begin();
        (void)entity.dxfOutFields(&m_filer);
    }

    // A dimension's style and an attribute's prompt have the code of a long text's parts, which only
    // paragraphs have.
    void addTexts(ListedEntity& listed) {
        const bool isParagraph = listed.type == L"MTEXT";
        for (const ListingFiler::Group& group : m_filer.groups) {
            if (group.code == textCode || (isParagraph && group.code == textPartCode))
                listed.text += group.text;
            if (group.code == nameCode && listed.name.empty()) listed.name = group.text;
            if (group.code == hatchPathCountCode && listed.type == L"HATCH")
                listed.paths = static_cast<std::size_t>(group.integer);
        }
    }

    static void addVertex(const std::array<double, 3>& point, ListedEntity& listed) {
        listed.vertices.push_back({point[0], point[1], point[2], 0.0});
    }

    void addVertices(VertexRule rule, ListedEntity& listed) {
        const ListingFiler::Group* const elevation = m_filer.find(elevationCode);
        const bool hasControlPoints = m_filer.find(firstPointCode) != nullptr;
        const short splineCode = hasControlPoints ? firstPointCode : fitPointCode;
        for (const ListingFiler::Group& group : m_filer.groups) {
            const bool isPlace = group.code == firstPointCode;
            switch (rule) {
            case VertexRule::kPlace:
                if (isPlace) return addVertex(group.point, listed);
                break;
            case VertexRule::kEnds:
                if (isPlace || group.code == firstPointCode + 1) addVertex(group.point, listed);
                break;
            case VertexRule::kCorners:
                if (group.code >= firstPointCode && group.code <= firstPointCode + 3)
                    addVertex(group.point, listed);
                break;
            case VertexRule::kSpline:
                if (group.code == splineCode) addVertex(group.point, listed);
                break;
            case VertexRule::kPolyline:
                if (isPlace)
                    addVertex({group.point[0], group.point[1], elevation ? elevation->point[0] : 0.0},
                              listed);
                else if (group.code == bulgeCode && !listed.vertices.empty())
                    listed.vertices.back()[3] = group.point[0];
                break;
            case VertexRule::kParts:
                return;
            }
        }
    }

    void addVertexOf(const AcDbEntity& part, ListedEntity& listed) {
        gather(part);
        const ListingFiler::Group* const place = m_filer.find(firstPointCode);
        if (!place) return;
        addVertex(place->point, listed);
        if (const ListingFiler::Group* const bulge = m_filer.find(bulgeCode))
            listed.vertices.back()[3] = bulge->point[0];
    }

    static void addExtendedData(const GroupBlock& data, ListedEntity& listed) {
        GroupWalker walker(data);
        AcDbDxfGroup group;
        while (walker.next(group)) {
            if (group.code == applicationCode) {
                listed.extendedData.emplace_back(group.text, std::vector<ListedValue>());
                continue;
            }
            if (listed.extendedData.empty()) continue;
            ListedValue value{group.code, {}};
            if (group.kind == AcDb::GroupKind::kPoint)
                value.value = std::array<double, 3>{group.point[0], group.point[1], group.point[2]};
            else if (group.kind == AcDb::GroupKind::kReal)
                value.value = group.real;
            else if (group.kind == AcDb::GroupKind::kInt16 || group.kind == AcDb::GroupKind::kInt32)
                value.value = static_cast<long long>(group.integer);
            else
                value.value = std::wstring(group.text);
            listed.extendedData.back().second.push_back(std::move(value));
        }
    }

    ListingFiler m_filer;
    DrawingListing& m_listing;
};

int rankOf(const AcDbBlockTableRecord& block) {
    if (equalFolded(block.name(), L"*Model_Space")) return 0;
    return block.isLayout() ? 1 : 2;
}

} // namespace

DrawingListing listDrawing(const AcDbDatabase& database) {
    DrawingListing listing;
    const DrawingVersion version = versionOfFiler(database.originalFileVersion());
    const std::string_view name = nameOfVersion(version);
    listing.version.assign(name.begin(), name.end());
    const AcDbObject* const table = DatabaseAccess::object(database.blockTableId());
    if (!table) return listing;
    std::vector<const AcDbBlockTableRecord*> blocks;
    for (const AcDbObjectId id : static_cast<const AcDbSymbolTable*>(table)->records()) {
        const auto* const block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        if (block && !block->isErased()) blocks.push_back(block);
    }
    std::stable_sort(blocks.begin(), blocks.end(),
                     [](const auto* left, const auto* right) { return rankOf(*left) < rankOf(*right); });
    Lister lister(database, listing);
    for (const AcDbBlockTableRecord* const block : blocks) lister.listBlock(*block);
    return listing;
}

} // namespace hostkit
