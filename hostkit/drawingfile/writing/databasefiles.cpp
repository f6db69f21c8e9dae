// The members of a drawing that read and write its files: they stand here, where files are known.
#include "drawingreader.h"
#include "drawingwriter.h"
#include "recordreader.h"

#include "dbdatabase.h"

Acad::ErrorStatus AcDbDatabase::readDwgFile(const wchar_t* fileName, AcDb::OpenMode, bool, const wchar_t*) {
    if (!fileName || !*fileName) return Acad::eInvalidInput;
    return hostkit::readDrawing(*this, fileName);
}

Acad::ErrorStatus AcDbDatabase::saveAs(const wchar_t* fileName, bool backsUp, AcDb::AcDbDwgVersion version,
                                       const SecurityParams* security) const {
    if (!fileName || !*fileName) return Acad::eInvalidInput;
    if (security) return Acad::eNotApplicable;
    hostkit::WriteOptions options;
    options.version = hostkit::versionOfFiler(version);
    if (hostkit::filerVersion(*options.version) != version) return Acad::eInvalidInput;
    options.coding = hostkit::DrawingCoding::kDrawing;
    options.writesOpenObjects = true;
    options.keepsBackup = backsUp;
    return hostkit::writeDrawing(*this, fileName, options);
}
