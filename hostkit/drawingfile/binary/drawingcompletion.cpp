#include "drawingcompletion.h"

#include "byteedits.h"
#include "encodinglists.h"
#include "groupformat.h"
#include "visualstyleforms.h"

#include <algorithm>
#include <array>

namespace hostkit {
namespace {

/// Adds to one drawing what it lacks.
class Completion {
public:
    Completion(const ExchangeOutline& outline, DrawingVersion version, const DrawingText& coding)
        : m_outline(outline)
        , m_edits(outline.text)
        , m_version(version) {
        m_style.newline = outline.text.find("\r\n") == std::string_view::npos ? "\n" : "\r\n";
        m_style.version = version;
        m_style.text = coding;
    }

    std::string run() {
        if (m_outline.objects.empty()) return {};
        const OutlinedRecord& root = m_outline.objects.front();
        m_entries = entriesIn(root.in(m_outline.text));
        m_root = root.handle;
        m_next = m_outline.highestHandle() + 1;
        const std::string_view seed = headerValueIn(m_outline, "$HANDSEED");
        m_next = std::max(m_next, handleFromText(seed).value_or(0));
        lines();
        plotStyles();
        emptyDictionary("ACAD_GROUP");
        emptyDictionary("ACAD_PLOTSETTINGS");
        if (m_version >= DrawingVersion::k2004) {
            emptyDictionary("ACAD_MATERIAL");
            emptyDictionary("ACAD_COLOR");
        }
        const bool hasOthers = visualStyles();
        const bool hasNewApplications = applications();
        if (m_objects.empty() && !hasOthers && !hasNewApplications) return {};
        m_edits.insert(root.offset + root.length, m_rootEntries + m_objects);
        return m_edits.apply();
    }

private:
    [[nodiscard]] bool has(std::string_view name) const {
        return std::any_of(m_entries.begin(), m_entries.end(),
                           [&](const auto& entry) { return entry.first == name; });
    }

    void group(int code, std::string_view value) { appendGroup(code, value, m_style, m_objects); }
    void handle(int code, std::uint64_t value) { appendHandle(code, value, m_style, m_objects); }
    void whole(int code, int value) { appendInteger(code, value, m_style, m_objects); }

    void head(std::string_view kind, std::uint64_t own, std::uint64_t owner) {
        group(0, kind);
        handle(5, own);
        group(102, "{ACAD_REACTORS");
        handle(330, owner);
        group(102, "}");
        handle(330, owner);
    }

    std::uint64_t dictionary(std::string_view name, std::string_view kind = "DICTIONARY") {
        const std::uint64_t own = m_next++;
        appendGroup(3, name, m_style, m_rootEntries);
        appendHandle(350, own, m_style, m_rootEntries);
        head(kind, own, m_root);
        group(100, "AcDbDictionary");
        whole(281, 1);
        return own;
    }

    void emptyDictionary(std::string_view name) {
        if (!has(name)) (void)dictionary(name);
    }

    /// Extended data refer to the records of their applications. False where all are there.
    bool applications() {
        const OutlinedTable* const table = m_outline.table("APPID");
        if (!table) return false;
        const RecordNames names = namesIn(m_outline, m_style.text);
        std::string records;
        for (const std::string& name : m_outline.applications) {
            if (names.handleOfValue("APPID", name)) continue;
            appendGroup(0, "APPID", m_style, records);
            appendHandle(5, m_next++, m_style, records);
            appendHandle(330, table->head.handle, m_style, records);
            appendGroup(100, "AcDbSymbolTableRecord", m_style, records);
            appendGroup(100, "AcDbRegAppTableRecord", m_style, records);
            appendGroup(2, name, m_style, records);
            appendInteger(70, 0, m_style, records);
        }
        const OutlinedRecord& last = table->records.empty() ? table->head : table->records.back();
        m_edits.insert(last.offset + last.length, records);
        return !records.empty();
    }

    void lines() {
        if (has("ACAD_MLINESTYLE")) return;
        const std::uint64_t own = dictionary("ACAD_MLINESTYLE"), style = m_next++;
        group(3, "Standard");
        handle(350, style);
        head("MLINESTYLE", style, own);
        group(100, "AcDbMlineStyle");
        group(2, "STANDARD");
        whole(70, 0);
        group(3, "");
        whole(62, 256);
        for (const int code : {51, 52}) appendReal(code, 90.0, m_style, m_objects);
        whole(71, 2);
        for (const double offset : {0.5, -0.5}) {
            appendReal(49, offset, m_style, m_objects);
            whole(62, 256);
            group(6, "BYLAYER");
        }
    }

    void plotStyles() {
        if (has("ACAD_PLOTSTYLENAME")) return;
        const std::uint64_t own = dictionary("ACAD_PLOTSTYLENAME", "ACDBDICTIONARYWDFLT");
        const std::uint64_t normal = m_next++;
        group(3, "Normal");
        handle(350, normal);
        group(100, "AcDbDictionaryWithDefault");
        handle(340, normal);
        head("ACDBPLACEHOLDER", normal, own);
    }

    /// Whether some had the groups of another form.
    bool visualStyles() {
        bool hasOthers = false;
        for (const OutlinedRecord& object : m_outline.objects) {
            const std::string_view record = object.in(m_outline.text);
            if (valueIn(record, 0) != "VISUALSTYLE") continue;
            const std::string made = visualStyleInForm(record, m_style);
            if (made.empty()) continue;
            m_edits.replace(object.offset, object.offset + object.length, made);
            hasOthers = true;
        }
        return hasOthers;
    }

    const ExchangeOutline& m_outline;
    ByteEdits m_edits;
    DrawingVersion m_version;
    DrawingStyle m_style;
    std::vector<std::pair<std::string_view, std::uint64_t>> m_entries;
    std::string m_rootEntries, m_objects;
    std::uint64_t m_root = 0, m_next = 0;
};

struct UsualClass {
    std::string_view dxfName, className;
    int proxyFlags;
};

// Flags as programs usually have them: what may be done to an object whose class is not there.
constexpr std::array<UsualClass, 34> usualClasses{
    {{"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault", 0},
     {"ACDBPLACEHOLDER", "AcDbPlaceHolder", 0},
     {"LAYOUT", "AcDbLayout", 0},
     {"DICTIONARYVAR", "AcDbDictionaryVar", 0},
     {"TABLESTYLE", "AcDbTableStyle", 4095},
     {"MATERIAL", "AcDbMaterial", 1153},
     {"VISUALSTYLE", "AcDbVisualStyle", 4095},
     {"SCALE", "AcDbScale", 1153},
     {"MLEADERSTYLE", "AcDbMLeaderStyle", 4095},
     {"CELLSTYLEMAP", "AcDbCellStyleMap", 1152},
     {"MULTILEADER", "AcDbMLeader", 1025},
     {"MESH", "AcDbSubDMesh", 0},
     {"SORTENTSTABLE", "AcDbSortentsTable", 0},
     {"WIPEOUT", "AcDbWipeout", 2175},
     {"WIPEOUTVARIABLES", "AcDbWipeoutVariables", 0},
     {"DIMASSOC", "AcDbDimAssoc", 0},
     {"ACAD_TABLE", "AcDbTable", 1025},
     {"TABLECONTENT", "AcDbTableContent", 1152},
     {"TABLEGEOMETRY", "AcDbTableGeometry", 1152},
     {"RASTERVARIABLES", "AcDbRasterVariables", 0},
     {"IMAGEDEF", "AcDbRasterImageDef", 0},
     {"IMAGEDEF_REACTOR", "AcDbRasterImageDefReactor", 1},
     {"IMAGE", "AcDbRasterImage", 2175},
     {"DBCOLOR", "AcDbColor", 0},
     {"PDFDEFINITION", "AcDbPdfDefinition", 1153},
     {"PDFUNDERLAY", "AcDbPdfReference", 4095},
     {"SPATIAL_FILTER", "AcDbSpatialFilter", 0},
     {"ARC_DIMENSION", "AcDbArcDimension", 1025},
     {"LARGE_RADIAL_DIMENSION", "AcDbRadialDimensionLarge", 1025},
     {"PLOTSETTINGS", "AcDbPlotSettings", 0},
     {"FIELD", "AcDbField", 1152},
     {"FIELDLIST", "AcDbFieldList", 1152},
     {"SUN", "AcDbSun", 1153},
     {"LIGHT", "AcDbLight", 1153}}};

} // namespace

std::string completedDrawing(const ExchangeOutline& outline, DrawingVersion version,
                             const DrawingText& coding) {
    return Completion(outline, version, coding).run();
}

BinaryClass usualClass(std::string_view dxfName, bool isEntity) {
    BinaryClass made;
    made.dxfName = made.className = dxfName;
    made.application = "AcDb";
    made.isEntity = isEntity;
    for (const UsualClass& usual : usualClasses)
        if (usual.dxfName == dxfName) {
            made.className = usual.className;
            made.proxyFlags = usual.proxyFlags;
        }
    return made;
}

} // namespace hostkit
