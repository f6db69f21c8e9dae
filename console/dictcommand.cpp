#include "dictcommand.h"

#include "acdocman.h"
#include "aced.h"
#include "commandoutput.h"
#include "consoletext.h"
#include "dbaccess.h"
#include "dbxrecrd.h"
#include "host.h"
#include "jsontext.h"
#include "modulecommand.h"

#include <algorithm>

namespace {

using hostkit::DatabaseAccess;

/// One entry of a dictionary with what hangs below it.
struct Node {
    std::wstring name;
    AcDbObjectId id;
    const AcDbObject* object; ///< null where the entry has none
    int depth;
    bool isCut; ///< a dictionary that is not gone into: it holds itself, or stands too deep
};

/// A drawing may nest dictionaries as it likes; a person reads so many levels.
constexpr int deepest = 32;

/// The tree as a list, parents before their entries.
class TreeWalk {
public:
    explicit TreeWalk(const AcDbDatabase& database) {
        add(L"Named objects", database.namedObjectsDictionaryId(), 0);
    }
    std::vector<Node> nodes;

private:
    void add(std::wstring name, AcDbObjectId id, int depth) {
        const AcDbObject* const object = DatabaseAccess::object(id);
        const auto* const dictionary = AcDbDictionary::cast(object);
        const bool isAbove = std::find(m_path.begin(), m_path.end(), id) != m_path.end();
        nodes.push_back({std::move(name), id, object, depth, dictionary && (isAbove || depth >= deepest)});
        if (!dictionary || nodes.back().isCut) return;
        m_path.push_back(id);
        AcDbDictionaryIterator iterator(*dictionary);
        for (bool more = !iterator.done(); more; more = iterator.next())
            add(iterator.name(), iterator.objectId(), depth + 1);
        m_path.pop_back();
    }
    std::vector<AcDbObjectId> m_path;
};

const wchar_t* className(const Node& node) { return node.object ? node.object->dxfName() : L"missing"; }

std::wstring remarkOn(const Node& node) {
    if (node.isCut) return node.depth >= deepest ? L"deeper ones are left out" : L"it holds itself";
    const auto* const dictionary = AcDbDictionary::cast(node.object);
    return dictionary ? std::to_wstring(dictionary->numEntries()) : L"";
}

const hostkit::GroupBlock* contentsOf(const Node& node) {
    const auto* const record = AcDbXrecord::cast(node.object);
    return record ? &record->groups() : nullptr;
}

std::wstring valueText(const AcDbDxfGroup& group) {
    switch (group.kind) {
    case AcDb::GroupKind::kPoint:
        return numberText(group.point[0]) + L", " + numberText(group.point[1]) + L", " +
               numberText(group.point[2]);
    case AcDb::GroupKind::kReal:
        return numberText(group.real);
    case AcDb::GroupKind::kInt16:
    case AcDb::GroupKind::kInt32:
    case AcDb::GroupKind::kInt64:
    case AcDb::GroupKind::kBool:
        return std::to_wstring(group.integer);
    default:
        return onOneLine(std::wstring(group.text));
    }
}

void printTree(const TreeWalk& tree, bool withContents) {
    std::vector<std::vector<std::wstring>> rows = {{L"Name", L"Handle", L"Class", L"Entries"}};
    const auto indented = [](int depth, std::wstring text) {
        return std::wstring(static_cast<std::size_t>(depth) * 2, L' ') + std::move(text);
    };
    for (const Node& node : tree.nodes) {
        if (acedUsrBrk()) return;
        rows.push_back(
            {indented(node.depth, node.name), handleText(node.id.handle()), className(node), remarkOn(node)});
        const hostkit::GroupBlock* const contents = withContents ? contentsOf(node) : nullptr;
        if (!contents) continue;
        hostkit::GroupWalker walker(*contents);
        for (AcDbDxfGroup group; walker.next(group);)
            rows.push_back(
                {indented(node.depth + 1, padLeft(std::to_wstring(group.code), 4) + L": " + valueText(group)),
                 L"", L"", L""});
    }
    printTable(rows, "lllr");
    acutPrintf(L"%d entries\n", static_cast<int>(tree.nodes.size()) - 1);
}

// The nodes from `place` on that stand at its depth, with what hangs below them; the place behind them.
std::size_t appendSiblings(const std::vector<Node>& nodes, std::size_t place, bool withContents,
                           std::string& json) {
    const int depth = nodes[place].depth;
    for (std::string_view separator; place < nodes.size() && nodes[place].depth == depth; separator = ",\n") {
        const Node& node = nodes[place];
        json += separator;
        json += '{';
        appendField("name", node.name, json);
        appendField("handle", handleText(node.id.handle()), json += ',');
        appendField("class", className(node), json += ',');
        if (node.isCut) json += ",\"cut\":true";
        const hostkit::GroupBlock* const contents = withContents ? contentsOf(node) : nullptr;
        if (contents) hostkit::appendJsonGroups(*contents, json += ",\"contents\":");
        ++place;
        if (AcDbDictionary::cast(node.object) && !node.isCut) {
            json += ",\"entries\":[";
            if (place < nodes.size() && nodes[place].depth > depth)
                place = appendSiblings(nodes, place, withContents, json);
            json += ']';
        }
        json += '}';
    }
    return place;
}

} // namespace

void dictCommand() {
    const AcApDocument* const document = documentOrFail();
    if (!document) return;
    bool withContents = false;
    bool asJson = false;
    for (;;) {
        CString word;
        acedInitGet(0, L"Contents Table Json");
        const int answer = acedGetKword(L"[Contents/Table/Json] <Table>: ", word);
        if (answer == RTNONE) break;
        if (answer != RTNORM)
            return hostkit::failCommand(Acad::eInvalidInput, L"the answers are CONTENTS, and TABLE or JSON");
        withContents = withContents || word == L"Contents";
        asJson = word == L"Json";
        if (word != L"Contents") break;
    }
    const TreeWalk tree(*document->database());
    if (!asJson) return printTree(tree, withContents);
    std::string json;
    appendSiblings(tree.nodes, 0, withContents, json);
    offerText(json);
}
