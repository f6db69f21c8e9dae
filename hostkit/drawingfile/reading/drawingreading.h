// Drawing input at work: one reading with its state; leaves out what callers see, which is drawingreader.h.
#pragma once

#include "drawingprogress.h"
#include "drawingreader.h"
#include "drawingrecord.h"
#include "groupscanner.h"
#include "recordhead.h"
#include "recordkinds.h"
#include "recordreader.h"

#include "dbaccess.h"
#include "dbsource.h"
#include "headervariables.h"

#include <memory>
#include <optional>
#include <string>

namespace hostkit {

/// One reading. All members that can meet a fatal problem give false then, with the problem in the report.
class DrawingReading {
public:
    DrawingReading(AcDbDatabase& database, std::shared_ptr<DrawingSource> source, ReadReport& report,
                   const ReadOptions& options);
    bool run();

private:
    void tellTranscription();
    bool checkForm();
    void findVersion();
    bool readSections();
    bool readSection(const RawGroup& opening);
    bool readUnknownSection(const RawGroup& opening);
    bool readHeader();
    bool addHeaderGroup(const RawGroup& group);

    bool readTables(const RawGroup& opening);
    void addStandingLinetypes();
    bool readTable(std::size_t offset);
    bool readTableHead(TableKind kind);
    bool readTableRecord(TableKind kind);
    AcDbSymbolTable& tableOf(TableKind kind);
    AcDbSymbolTableRecord& impliedRecord(TableKind kind, std::wstring_view name);

    bool readBlocks(const RawGroup& opening);
    void addBlocksByName();
    bool readBlock();
    AcDbBlockTableRecord& blockNamed(std::wstring_view name);
    bool readEntities(const RawGroup& opening);
    bool takeEntity(AcDbBlockTableRecord& block);
    bool takePart();
    void closeContainer();
    AcDbBlockTableRecord& spaceOf(const DrawingRecord& record);
    void giveLayer(AcDbEntity& entity);

    bool readObjects(const RawGroup& opening);
    bool finish();
    bool checkBlockCycles();
    void rememberGiven();

    /// Reads head and fields of the present record. Where the fields are damaged, an opaque object comes back
    /// that keeps the record as it stands.
    std::unique_ptr<AcDbObject> withFields(std::unique_ptr<AcDbObject> object);
    /// Adds what was read to the drawing, with extended data and place. Null after a fatal problem.
    AcDbObject* addRead(std::unique_ptr<AcDbObject> object, AcDbObjectId owner);
    std::wstring faultInRecord() const;
    bool readFieldsInto(AcDbObject& object);
    AcDbObjectId add(AcDbObject* object, std::uint64_t handle, AcDbObjectId owner);
    void attachHead(AcDbObject& object);
    void attachExtendedData(AcDbObject& object);
    void makeRoomForHandles();

    bool next(RawGroup& group);
    bool nextRecord(const RawGroup& first);
    bool fail(Acad::ErrorStatus status, const char* place, std::wstring reason);
    void warn(const char* place, std::wstring reason);
    void tell(const char* place, std::wstring reason, bool isFatal);
    std::wstring shown(std::string_view value) const;

    AcDbDatabase& m_database;
    std::shared_ptr<DrawingSource> m_source;
    ReadReport& m_report;
    const ReadOptions& m_options;
    GroupScanner m_scanner;
    ProgressStage m_progress; // by the bytes of the source
    DrawingVersion m_version = DrawingVersion::kR12;
    ApplicationClasses m_applications{};
    RecordReader m_filer;
    DrawingRecord m_record;
    RecordHead m_head;
    HeaderVariables::Variable* m_variable = nullptr;
    AcDbEntity* m_container = nullptr; // whose parts may follow
    AcDbBlockTableRecord* m_modelSpace = nullptr;
    AcDbBlockTableRecord* m_paperSpace = nullptr;
    bool m_handlesAreCounted = false;
    bool m_hasRoot = false;
};

} // namespace hostkit
