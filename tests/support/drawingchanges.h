#pragma once

#include "actrans.h"
#include "db2dpolyline.h"
#include "db2dvertex.h"
#include "dbblockreference.h"
#include "dbdict.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "headervariables.h"

#include <gtest/gtest.h>

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
        line = append(new AcDbLine({0, 0, 0}, {1, 0, 0}));
        AcGePoint3dArray points;
        for (int i = 0; i < 4; ++i) points.append(AcGePoint3d(i, i * i, 0));
        polyline = append(new AcDb2dPolyline(AcDb::k2dSimplePoly, points, 0.0, false));
        layer = addLayer(L"Walls");
        dictionary = enter(database.namedObjectsDictionaryId(), L"VEXO_TEST", new AcDbDictionary);
        record = enter(dictionary, L"first", new AcDbXrecord);
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
    AcDbObjectId append(AcDbEntity* entity, AcDbObjectId block = {}) {
        AcDbObjectPointer<AcDbBlockTableRecord> space(block.isNull() ? database.modelSpaceId() : block,
                                                      AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(Acad::eOk, space->appendAcDbEntity(id, entity));
        EXPECT_EQ(Acad::eOk, entity->close());
        return id;
    }
    /// Another one each time.
    std::wstring freshName(const wchar_t* start) const {
        return start + std::to_wstring(database.handseed().value());
    }
    AcDbObjectId addLayer(const wchar_t* name) {
        AcDbSymbolTablePointer<AcDbLayerTable> table(&database, AcDb::kForWrite);
        auto* added = new AcDbLayerTableRecord;
        EXPECT_EQ(Acad::eOk, added->setName(name));
        AcDbObjectId id;
        EXPECT_EQ(Acad::eOk, table->add(id, added));
        EXPECT_EQ(Acad::eOk, added->close());
        return id;
    }
    AcDbObjectId enter(AcDbObjectId into, const wchar_t* name, AcDbObject* object) {
        AcDbObjectPointer<AcDbDictionary> opened(into, AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(Acad::eOk, opened->setAt(name, object, id));
        EXPECT_EQ(Acad::eOk, object->close());
        return id;
    }
    template <typename T, typename Change>
    void change(AcDbObjectId id, Change&& apply, bool openErased = false) {
        AcDbObjectPointer<T> opened(id, AcDb::kForWrite, openErased);
        ASSERT_EQ(Acad::eOk, opened.openStatus());
        apply(*opened);
    }
};

struct Change {
    const char* name;
    std::function<void(Drawing&)> apply;
    bool isFree = false; ///< needs nothing that another change may have taken away
};

inline void setText(AcDbObject& object, const wchar_t* text) {
    resbuf* list = acutBuildList(1001, L"ACAD", 1000, text, 0);
    EXPECT_EQ(Acad::eOk, object.setXData(list));
    acutRelRb(list);
}

/// Every way in which a drawing can change, each by itself.
inline const std::vector<Change>& changes() {
    static const std::vector<Change> all = {
        {"values",
         [](Drawing& d) {
             d.change<AcDbLine>(d.line, [](AcDbLine& line) {
                 line.setEndPoint({7, 8, 9});
                 line.setColorIndex(3);
                 line.setLayer(L"Walls");
             });
         }},
        {"values, twice, in two opens",
         [](Drawing& d) {
             for (int i = 0; i < 2; ++i)
                 d.change<AcDbLine>(d.line, [i](AcDbLine& line) { line.setEndPoint({double(i), 5, 5}); });
         }},
        {"extended data",
         [](Drawing& d) { d.change<AcDbLine>(d.line, [](AcDbLine& line) { setText(line, L"text"); }); }},
        {"extension dictionary",
         [](Drawing& d) {
             d.change<AcDbLine>(d.line, [](AcDbLine& line) { line.createExtensionDictionary(); });
         }},
        {"reactors",
         [](Drawing& d) {
             d.change<AcDbLine>(d.line, [&](AcDbLine& line) { line.addPersistentReactor(d.layer); });
         }},
        {"a new entity",
         [](Drawing& d) {
             d.append(new AcDbLine({1, 1, 1}, {2, 2, 2}));
         },
         true},
        {"an entity that is new, changed and erased",
         [](Drawing& d) {
             const AcDbObjectId id = d.append(new AcDbLine({1, 1, 1}, {2, 2, 2}));
             d.change<AcDbLine>(id, [](AcDbLine& line) { line.setEndPoint({3, 3, 3}); });
             d.change<AcDbLine>(id, [](AcDbLine& line) { line.erase(); });
         },
         true},
        {"an erased entity",
         [](Drawing& d) { d.change<AcDbLine>(d.line, [](AcDbLine& line) { line.erase(); }); }},
        {"an entity that is erased, restored and changed",
         [](Drawing& d) {
             d.change<AcDbLine>(d.line, [](AcDbLine& line) { line.erase(); });
             d.change<AcDbLine>(
                 d.line,
                 [](AcDbLine& line) {
                     line.erase(false);
                     line.setStartPoint({4, 4, 4});
                 },
                 true);
         }},
        {"an erased polyline with its vertices",
         [](Drawing& d) { d.change<AcDb2dPolyline>(d.polyline, [](AcDb2dPolyline& p) { p.erase(); }); }},
        {"a polyline with another vertex",
         [](Drawing& d) {
             d.change<AcDb2dPolyline>(d.polyline, [](AcDb2dPolyline& p) {
                 auto* vertex = new AcDb2dVertex({9, 9, 0});
                 AcDbObjectId id;
                 EXPECT_EQ(Acad::eOk, p.appendVertex(id, vertex));
                 vertex->close();
             });
         }},
        {"a polyline moved with its vertices",
         [](Drawing& d) {
             d.change<AcDb2dPolyline>(d.polyline, [](AcDb2dPolyline& p) {
                 EXPECT_EQ(Acad::eOk, p.transformBy(AcGeMatrix3d::translation({5, 5, 0})));
             });
         }},
        {"a new layer that becomes the current one",
         [](Drawing& d) {
             EXPECT_EQ(Acad::eOk, d.database.setClayer(d.addLayer(d.freshName(L"New").c_str())));
         },
         true},
        {"a renamed current layer",
         [](Drawing& d) {
             EXPECT_EQ(Acad::eOk, d.database.setClayer(d.layer));
             d.change<AcDbLayerTableRecord>(d.layer, [](AcDbLayerTableRecord& layer) {
                 EXPECT_EQ(Acad::eOk, layer.setName(L"Renamed"));
             });
         }},
        {"a layer erased and its name given to another",
         [](Drawing& d) {
             d.change<AcDbLayerTableRecord>(d.layer, [](AcDbLayerTableRecord& layer) { layer.erase(); });
             d.addLayer(L"WALLS");
         }},
        {"a new block with an entity, and an insertion of it",
         [](Drawing& d) {
             AcDbObjectId id;
             {
                 AcDbSymbolTablePointer<AcDbBlockTable> table(&d.database, AcDb::kForWrite);
                 auto* block = new AcDbBlockTableRecord;
                 EXPECT_EQ(Acad::eOk, block->setName(d.freshName(L"Column").c_str()));
                 EXPECT_EQ(Acad::eOk, table->add(id, block));
                 block->close();
             }
             d.append(new AcDbLine({0, 0, 0}, {1, 1, 0}), id);
             d.append(new AcDbBlockReference({2, 2, 0}, id));
         },
         true},
        {"new entries of a dictionary",
         [](Drawing& d) {
             d.enter(d.dictionary, L"second", new AcDbXrecord);
             d.enter(d.dictionary, L"*", new AcDbXrecord);
         }},
        {"a renamed entry",
         [](Drawing& d) {
             d.change<AcDbDictionary>(d.dictionary, [](AcDbDictionary& dictionary) {
                 EXPECT_EQ(Acad::eOk, dictionary.setName(L"first", L"renamed"));
             });
         }},
        {"an entry taken out and its name given to another",
         [](Drawing& d) {
             d.change<AcDbDictionary>(d.dictionary, [](AcDbDictionary& dictionary) {
                 EXPECT_EQ(Acad::eOk, dictionary.remove(L"first"));
             });
             d.enter(d.dictionary, L"FIRST", new AcDbXrecord);
         }},
        {"an erased dictionary with its entries",
         [](Drawing& d) {
             d.change<AcDbDictionary>(d.dictionary, [](AcDbDictionary& dictionary) { dictionary.erase(); });
         }},
        {"another content of a record",
         [](Drawing& d) {
             d.change<AcDbXrecord>(d.record, [](AcDbXrecord& record) {
                 resbuf* list = acutBuildList(1, L"text", 90, 5, 0);
                 EXPECT_EQ(Acad::eOk, record.setFromRbChain(*list));
                 acutRelRb(list);
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

/// All changes that are possible, in a random order.
inline void applyAll(Drawing& drawing, std::uint32_t seed) {
    std::vector<Change> order = changes();
    std::mt19937 random(seed);
    std::shuffle(order.begin(), order.end(), random);
    for (const Change& change : order)
        if (isPossible(drawing, change)) change.apply(drawing);
}

} // namespace drawingtest
