#pragma once

#include "drawingparts.h"
#include "drawingpicture.h"

#include "actrans.h"
#include "db2dpolyline.h"
#include "db2dvertex.h"
#include "dbblockreference.h"
#include "dbline.h"
#include "headervariables.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace drawingtest {

/// A drawing with a line, an old-style polyline, a layer, a dictionary with a record.
struct Drawing {
    std::unique_ptr<AcDbDatabase> owned;
    AcDbDatabase& database;
    AcDbObjectId line;
    AcDbObjectId polyline;
    AcDbObjectId layer;
    AcDbObjectId dictionary;
    AcDbObjectId record;

    Drawing()
        : owned(std::make_unique<AcDbDatabase>())
        , database(*owned) {
        line = appendToModelSpace(database, new AcDbLine({0, 0, 0}, {1, 0, 0}));
        const AcGePoint3dArray points = pointsOf({{0, 0, 0}, {1, 1, 0}, {2, 4, 0}, {3, 9, 0}});
        polyline = appendToModelSpace(database, new AcDb2dPolyline(AcDb::k2dSimplePoly, points, 0.0, false));
        layer = addRecord<AcDbLayerTable>(database, L"Walls");
        dictionary = enter(database.namedObjectsDictionaryId(), L"VEXO_TEST", new AcDbDictionary);
        record = enter(dictionary, L"first");
    }
    /// One that was made as above, saved and read.
    explicit Drawing(std::unique_ptr<AcDbDatabase> read)
        : owned(std::move(read))
        , database(*owned) {
        AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForRead);
        line = space->entities().at(0);
        polyline = space->entities().at(1);
        layer = AcDbSymbolTablePointer<AcDbLayerTable>(&database, AcDb::kForRead)->find(L"Walls");
        AcDbObjectPointer<AcDbDictionary>(database.namedObjectsDictionaryId(), AcDb::kForRead)
            ->getAt(L"VEXO_TEST", dictionary);
        AcDbObjectPointer<AcDbDictionary>(dictionary, AcDb::kForRead)->getAt(L"first", record);
    }
    ~Drawing() {
        EXPECT_EQ(0, database.numOpenObjects());
        EXPECT_EQ(0, manager().numActiveTransactions());
    }
    AcDbTransactionManager& manager() { return *database.transactionManager(); }
    /// Another one each time.
    std::wstring freshName(const wchar_t* start) const {
        return start + std::to_wstring(database.handseed().value());
    }
};

struct Change {
    const char* name;
    std::function<void(Drawing&)> apply;
    bool isFree = false; ///< needs nothing that another change may have taken away
};

inline void setText(AcDbObject& object, const wchar_t* text) {
    EXPECT_EQ(Acad::eOk, object.setXData(List(acutBuildList(1001, L"ACAD", 1000, text, 0)).get()));
}

/// Every way in which a drawing can change, each by itself.
inline const std::vector<Change>& changes() {
    static const std::vector<Change> all = {
        {"values",
         [](Drawing& d) {
             change<AcDbLine>(d.line, [](AcDbLine& line) {
                 line.setEndPoint({7, 8, 9});
                 line.setColorIndex(3);
                 line.setLayer(L"Walls");
             });
         }},
        {"values, twice, in two opens",
         [](Drawing& d) {
             for (int i = 0; i < 2; ++i)
                 change<AcDbLine>(d.line, [i](AcDbLine& line) { line.setEndPoint({double(i), 5, 5}); });
         }},
        {"extended data",
         [](Drawing& d) { change<AcDbLine>(d.line, [](AcDbLine& line) { setText(line, L"text"); }); }},
        {"extension dictionary",
         [](Drawing& d) {
             change<AcDbLine>(d.line, [](AcDbLine& line) { line.createExtensionDictionary(); });
         }},
        {"reactors",
         [](Drawing& d) {
             change<AcDbLine>(d.line, [&](AcDbLine& line) { line.addPersistentReactor(d.layer); });
         }},
        {"a new entity",
         [](Drawing& d) {
             appendToModelSpace(d.database, new AcDbLine({1, 1, 1}, {2, 2, 2}));
         },
         true},
        {"an entity that is new, changed and erased",
         [](Drawing& d) {
             const AcDbObjectId id = appendToModelSpace(d.database, new AcDbLine({1, 1, 1}, {2, 2, 2}));
             change<AcDbLine>(id, [](AcDbLine& line) { line.setEndPoint({3, 3, 3}); });
             erase(id);
         },
         true},
        {"an erased entity", [](Drawing& d) { erase(d.line); }},
        {"an entity that is erased, restored and changed",
         [](Drawing& d) {
             erase(d.line);
             change<AcDbLine>(
                 d.line,
                 [](AcDbLine& line) {
                     line.erase(false);
                     line.setStartPoint({4, 4, 4});
                 },
                 true);
         }},
        {"an erased polyline with its vertices", [](Drawing& d) { erase(d.polyline); }},
        {"a polyline with another vertex",
         [](Drawing& d) {
             change<AcDb2dPolyline>(d.polyline, [](AcDb2dPolyline& p) {
                 auto* vertex = new AcDb2dVertex({9, 9, 0});
                 AcDbObjectId id;
                 EXPECT_EQ(Acad::eOk, p.appendVertex(id, vertex));
                 vertex->close();
             });
         }},
        {"a polyline moved with its vertices",
         [](Drawing& d) {
             change<AcDb2dPolyline>(d.polyline, [](AcDb2dPolyline& p) {
                 EXPECT_EQ(Acad::eOk, p.transformBy(AcGeMatrix3d::translation({5, 5, 0})));
             });
         }},
        {"a new layer that becomes the current one",
         [](Drawing& d) {
             EXPECT_EQ(Acad::eOk,
                       d.database.setClayer(addRecord<AcDbLayerTable>(d.database, d.freshName(L"New"))));
         },
         true},
        {"a renamed current layer",
         [](Drawing& d) {
             EXPECT_EQ(Acad::eOk, d.database.setClayer(d.layer));
             change<AcDbLayerTableRecord>(d.layer, [](AcDbLayerTableRecord& layer) {
                 EXPECT_EQ(Acad::eOk, layer.setName(L"Renamed"));
             });
         }},
        {"a layer erased and its name given to another",
         [](Drawing& d) {
             erase(d.layer);
             addRecord<AcDbLayerTable>(d.database, L"WALLS");
         }},
        {"a new block with an entity, and an insertion of it",
         [](Drawing& d) {
             const AcDbObjectId id = addRecord<AcDbBlockTable>(d.database, d.freshName(L"Column"));
             append(id, new AcDbLine({0, 0, 0}, {1, 1, 0}));
             appendToModelSpace(d.database, new AcDbBlockReference({2, 2, 0}, id));
         },
         true},
        {"new entries of a dictionary",
         [](Drawing& d) {
             enter(d.dictionary, L"second");
             enter(d.dictionary, L"*");
         }},
        {"a renamed entry",
         [](Drawing& d) {
             change<AcDbDictionary>(d.dictionary, [](AcDbDictionary& dictionary) {
                 EXPECT_EQ(Acad::eOk, dictionary.setName(L"first", L"renamed"));
             });
         }},
        {"an entry taken out and its name given to another",
         [](Drawing& d) {
             change<AcDbDictionary>(d.dictionary, [](AcDbDictionary& dictionary) {
                 EXPECT_EQ(Acad::eOk, dictionary.remove(L"first"));
             });
             enter(d.dictionary, L"FIRST");
         }},
        {"an erased dictionary with its entries", [](Drawing& d) { erase(d.dictionary); }},
        {"another content of a record",
         [](Drawing& d) {
             change<AcDbXrecord>(d.record, [](AcDbXrecord& record) {
                 EXPECT_EQ(Acad::eOk, record.setFromRbChain(*List(acutBuildList(1, L"text", 90, 5, 0))));
             });
         }},
        {"header variables, a new one too",
         [](Drawing& d) {
             EXPECT_EQ(Acad::eOk, d.database.setInsunits(6));
             d.database.header().setReal(L"USERR1", 2.5);
         },
         true},
    };
    return all;
}

/// Whether a change can be made after others.
inline bool isPossible(Drawing& d, const Change& change) {
    if (change.isFree) return true;
    for (const AcDbObjectId id : {d.line, d.polyline, d.layer, d.dictionary, d.record})
        if (id.isErased()) return false;
    return AcDbObjectPointer<AcDbDictionary>(d.dictionary, AcDb::kForRead)->has(L"first") &&
           d.database.clayer() != d.layer;
}

/// All changes that are possible one after the other, in a random order; `apply` makes each.
template <class Apply>
void forEachPossible(Drawing& drawing, std::uint32_t seed, Apply&& apply) {
    std::vector<Change> order = changes();
    std::shuffle(order.begin(), order.end(), std::mt19937(seed));
    for (const Change& change : order)
        if (isPossible(drawing, change)) apply(change);
}
inline void applyAll(Drawing& drawing, std::uint32_t seed) {
    forEachPossible(drawing, seed, [&](const Change& change) { change.apply(drawing); });
}

} // namespace drawingtest
