#include "modelerstore.h"

#include "dbaccess.h"
#include "dbmodelergeometry.h"
#include "groupscanner.h"
#include "modelercontent.h"
#include "recordreader.h"

#include <unordered_map>

namespace hostkit {

namespace {

constexpr std::string_view bodySchema = "AcDb3DSolid_ASM_Data";
constexpr std::string_view bodyColumn = "ASM_Data", pictureColumn = "Thumbnail_Data";
constexpr std::size_t bytesOfLine = 127;
constexpr std::int64_t pictureSchema = 0, usualSchema = 1; ///< where newSection puts the schema of bodies

/// A record of a body as it stands.
struct StoredBody {
    std::uint64_t handle = 0;
    std::size_t begin = 0, end = 0;
    std::size_t size = 0;    ///< that it says
    std::string_view digits; ///< the 310 groups, with their codes
};

struct Store {
    std::vector<StoredBody> bodies;
    std::int64_t schema = usualSchema;
    bool hasSchema = false;
    std::size_t firstRecord = 0; ///< 0 where there is none
};

/// Reads one record after the other; codes before the first one are the section's own.
class StoreReader {
public:
    StoreReader(std::string_view bytes, std::size_t begin, std::size_t end)
        : m_bytes(bytes.substr(0, end))
        , m_scanner(m_bytes, begin) {}

    Store run() {
        RawGroup group;
        while (m_scanner.next(group) == ScanResult::kGroup) {
            if (group.code == 0) finish(m_scanner.offsetOf(group.start));
            if (group.code == 0)
                begin(group);
            else if (m_isSchema)
                readSchema(group);
            else if (m_isRecord)
                readRecord(group);
        }
        finish(m_scanner.offset());
        return std::move(m_store);
    }

private:
    void begin(const RawGroup& group) {
        m_isSchema = group.is(0, "ACDSSCHEMA");
        m_isRecord = group.is(0, "ACDSRECORD");
        if (m_isRecord && m_store.firstRecord == 0) m_store.firstRecord = m_scanner.offsetOf(group.start);
        m_body = {};
        m_body.begin = m_scanner.offsetOf(group.start);
        m_isBody = m_hasIndex = false;
        m_digitsBegin = nullptr;
    }
    // Its index stands before its name.
    void readSchema(const RawGroup& group) {
        if (group.code == 90 && !m_hasIndex) {
            m_index = integerFromText(group.value).value_or(-1);
            m_hasIndex = true;
        }
        if (group.code != 1 || m_store.hasSchema || withoutBlanks(group.value) != bodySchema) return;
        m_store.schema = m_index;
        m_store.hasSchema = true;
    }
    void readRecord(const RawGroup& group) {
        if (group.code == 320) m_body.handle = handleFromText(group.value).value_or(0);
        if (group.code == 2) m_isBody = withoutBlanks(group.value) == bodyColumn;
        if (!m_isBody) return;
        if (group.code == 94)
            m_body.size = static_cast<std::size_t>(integerFromText(group.value).value_or(0));
        if (group.code != 310) return;
        if (!m_digitsBegin) m_digitsBegin = group.start;
        m_body.digits = {m_digitsBegin, static_cast<std::size_t>(m_scanner.position() - m_digitsBegin)};
    }
    void finish(std::size_t end) {
        m_body.end = end;
        if (m_isRecord && m_isBody && m_body.handle != 0) m_store.bodies.push_back(m_body);
        m_isRecord = false;
    }

    std::string_view m_bytes;
    GroupScanner m_scanner;
    Store m_store;
    StoredBody m_body;
    const char* m_digitsBegin = nullptr;
    std::int64_t m_index = -1;
    bool m_isSchema = false, m_isRecord = false, m_isBody = false, m_hasIndex = false;
};

int digitOf(char c) {
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                  : -1;
}

// Nothing where the digits are damaged or are not as many as the record says.
std::optional<std::string> bytesOf(const StoredBody& body) {
    std::string bytes;
    bytes.reserve(std::min(body.size, body.digits.size() / 2));
    GroupScanner scanner(body.digits);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup) {
        const std::string_view digits = withoutBlanks(group.value);
        if (group.code != 310 || digits.size() % 2 != 0) return {};
        for (std::size_t place = 0; place < digits.size(); place += 2) {
            const int high = digitOf(digits[place]), low = digitOf(digits[place + 1]);
            if (high < 0 || low < 0) return {};
            bytes += static_cast<char>(high << 4 | low);
        }
    }
    if (bytes.size() != body.size || bytes.empty()) return {};
    return bytes;
}

void appendRecord(std::int64_t schema, std::uint64_t handle, std::string_view data, const DrawingStyle& style,
                  std::string& bytes, std::string_view column = bodyColumn) {
    appendGroup(0, "ACDSRECORD", style, bytes);
    appendInteger(90, schema, style, bytes);
    appendGroup(2, "AcDbDs::ID", style, bytes);
    appendInteger(280, 10, style, bytes);
    appendHandle(320, handle, style, bytes);
    appendGroup(2, column, style, bytes);
    appendInteger(280, 15, style, bytes);
    appendInteger(94, static_cast<std::int64_t>(data.size()), style, bytes);
    constexpr char digits[] = "0123456789ABCDEF";
    std::string line;
    for (; !data.empty(); data.remove_prefix(std::min(bytesOfLine, data.size()))) {
        line.clear();
        for (const char c : data.substr(0, bytesOfLine)) {
            line += digits[static_cast<unsigned char>(c) >> 4];
            line += digits[static_cast<unsigned char>(c) & 15];
        }
        appendGroup(310, line, style, bytes);
    }
}

/// The columns of the six schemas that every store has.
struct Column {
    int code;
    std::string_view value;
};

void appendColumns(std::initializer_list<Column> columns, const DrawingStyle& style, std::string& bytes) {
    for (const Column& column : columns) appendGroup(column.code, column.value, style, bytes);
}

void appendDataSchema(std::string_view index, std::string_view name, std::string_view column,
                      const DrawingStyle& style, std::string& bytes) {
    appendColumns({{0, "ACDSSCHEMA"},
                   {90, index},
                   {1, name},
                   {2, "AcDbDs::ID"},
                   {280, "10"},
                   {91, "8"},
                   {2, column},
                   {280, "15"},
                   {91, "0"}},
                  style, bytes);
    for (const Column& attribute : {Column{2, "AcDbDs::TreatedAsObjectData"}, Column{3, "AcDbDs::Legacy"}}) {
        const std::string_view number = attribute.code == 2 ? "2" : "3";
        appendColumns(
            {{101, "ACDSRECORD"}, {95, index}, {90, number}, {2, attribute.value}, {280, "1"}, {291, "1"}},
            style, bytes);
    }
    appendColumns(
        {{101, "ACDSRECORD"}, {1, "AcDbDs::ID"}, {90, "4"}, {2, "AcDs:Indexable"}, {280, "1"}, {291, "1"}},
        style, bytes);
    appendColumns({{101, "ACDSRECORD"},
                   {1, "AcDbDs::ID"},
                   {90, "5"},
                   {2, "AcDbDs::HandleAttribute"},
                   {280, "7"},
                   {282, "1"}},
                  style, bytes);
}

void appendSchemas(const DrawingStyle& style, std::string& bytes) {
    appendDataSchema("0", "AcDb_Thumbnail_Schema", pictureColumn, style, bytes);
    appendDataSchema("1", bodySchema, bodyColumn, style, bytes);
    appendColumns({{0, "ACDSSCHEMA"},
                   {90, "2"},
                   {1, "AcDbDs::TreatedAsObjectDataSchema"},
                   {2, "AcDbDs::TreatedAsObjectData"},
                   {280, "1"},
                   {91, "0"}},
                  style, bytes);
    appendColumns({{0, "ACDSSCHEMA"},
                   {90, "3"},
                   {1, "AcDbDs::LegacySchema"},
                   {2, "AcDbDs::Legacy"},
                   {280, "1"},
                   {91, "0"}},
                  style, bytes);
    appendColumns({{0, "ACDSSCHEMA"},
                   {90, "4"},
                   {1, "AcDbDs::IndexedPropertySchema"},
                   {2, "AcDs:Indexable"},
                   {280, "1"},
                   {91, "0"}},
                  style, bytes);
    appendColumns({{0, "ACDSSCHEMA"},
                   {90, "5"},
                   {1, "AcDbDs::HandleAttributeSchema"},
                   {2, "AcDbDs::HandleAttribute"},
                   {280, "7"},
                   {91, "1"},
                   {284, "1"}},
                  style, bytes);
}

std::string sectionOf(std::string_view records, const DrawingStyle& style) {
    std::string bytes;
    if (records.empty()) return bytes;
    appendGroup(0, "SECTION", style, bytes);
    appendGroup(2, modelerStoreSection, style, bytes);
    appendInteger(70, 2, style, bytes);
    appendInteger(71, 2, style, bytes);
    appendSchemas(style, bytes);
    bytes += records;
    appendGroup(0, "ENDSEC", style, bytes);
    return bytes;
}

template <class Visit>
void forEachBody(const AcDbDatabase& database, Visit&& visit) {
    DatabaseAccess::forEachObject(database, [&](const AcDbObject& object) {
        const auto* const entity = AcDbModelerGeometry::cast(&object);
        if (entity && ModelerFiling::content(*entity)) visit(*entity, *ModelerFiling::content(*entity));
    });
}

} // namespace

void readModelerStore(AcDbDatabase& database, std::string_view section) {
    for (const StoredBody& body : StoreReader(section, 0, section.size()).run().bodies) {
        auto* const entity =
            AcDbModelerGeometry::cast(DatabaseAccess::object(DatabaseAccess::find(database, body.handle)));
        if (!entity) continue;
        if (std::optional<std::string> bytes = bytesOf(body))
            ModelerFiling::setContent(*entity, std::make_shared<const ModelerContent>(std::move(*bytes)));
    }
}

void editModelerStore(const AcDbDatabase& database, std::string_view source,
                      const DrawingStructure& structure, const DrawingStyle& style,
                      const std::function<bool(std::uint64_t)>& leavesFile, ByteEdits& edits) {
    const NamedSpan* const section = structure.section(modelerStoreSection);
    const Store store = section ? StoreReader(source, section->begin, section->closing).run() : Store();
    std::unordered_map<std::uint64_t, const StoredBody*> stored;
    for (const StoredBody& body : store.bodies) stored[body.handle] = &body;
    const AcDb::AcDbDwgVersion version = filerVersion(style.version);
    std::string added, text;
    for (const StoredBody& body : store.bodies) {
        const auto* const entity =
            AcDbModelerGeometry::cast(DatabaseAccess::object(DatabaseAccess::find(database, body.handle)));
        const bool isEmptied = entity && !ModelerFiling::content(*entity) && entity->isChangedSinceRead();
        if (leavesFile(body.handle) || isEmptied) edits.replace(body.begin, body.end, {});
    }
    forEachBody(database, [&](const AcDbModelerGeometry& entity, const ModelerContent& content) {
        const std::uint64_t handle = entity.handle().value();
        if (leavesFile(handle)) return;
        const std::string data = content.dataFor(version);
        const auto found = stored.find(handle);
        if (data.empty() || (found != stored.end() && data == bytesOf(*found->second))) return;
        text.clear();
        appendRecord(store.schema, handle, data, style, found == stored.end() ? added : text);
        if (found != stored.end()) edits.replace(found->second->begin, found->second->end, text);
    });
    if (added.empty()) return;
    if (!section) return edits.insert(structure.endMark, sectionOf(added, style));
    if (store.hasSchema) return edits.insert(section->closing, added);
    // Without a schema of bodies the store was kept for other things: schemas stand before the records, under
    // numbers of their own.
    added.clear();
    forEachBody(database, [&](const AcDbModelerGeometry& entity, const ModelerContent& content) {
        constexpr std::int64_t freeSchema = 6;
        const std::string data = content.dataFor(version);
        if (!leavesFile(entity.handle().value()) && !data.empty())
            appendRecord(freeSchema, entity.handle().value(), data, style, added);
    });
    std::string schema;
    appendDataSchema("6", bodySchema, bodyColumn, style, schema);
    edits.insert(store.firstRecord != 0 ? store.firstRecord : section->closing, schema);
    edits.insert(section->closing, added);
}

std::string modelerStoreOf(std::span<const ModelerStoreItem> items, const DrawingStyle& style) {
    std::string records;
    for (const ModelerStoreItem& item : items)
        appendRecord(item.isPicture ? pictureSchema : usualSchema, item.handle, item.data, style, records,
                     item.isPicture ? pictureColumn : bodyColumn);
    return sectionOf(records, style);
}

std::string newModelerStore(const AcDbDatabase& database, const DrawingStyle& style) {
    std::string records;
    forEachBody(database, [&](const AcDbModelerGeometry& entity, const ModelerContent& content) {
        const std::string data = content.dataFor(filerVersion(style.version));
        if (!entity.isErased() && !data.empty())
            appendRecord(usualSchema, entity.handle().value(), data, style, records);
    });
    return sectionOf(records, style);
}

} // namespace hostkit
