#pragma once

#include "cvxcrashhandler.h"

class AcDbBlockTable;
class AcDbDictionary;
class AcDbEntity;
class AcDbObject;

/// The last rescue of the working drawing when the application has failed. Making one is all of it: every
/// object that was left open is closed, then the drawing is saved as "Recovered" with the local date and time
/// (Recovered2026-03-01-174502.dwg) in the recover directory (VEXORegistryTools::GetPathRecoverDir), as a
/// binary drawing of the form 2010. The outcome is not reported, nothing is shown, and no member leaves a
/// trace record. Two rescues within one second have one name; the earlier drawing then has the ending ".bak".
///
/// Each step that fails is passed over: without a working drawing nothing is done; without a data path, or
/// where the recover directory is a file or cannot be made (its parent must be there), all is closed and
/// nothing saved. What stays open is saved as it stands: a block table or root dictionary that is open for
/// write, with all within it; what somebody has open for notify, or a transaction holds; erased objects and
/// records of the other tables, which no walk comes to.
class VEXOCrashHandler : public CVxCrashHandler {
public:
    /// The arguments go to the base unread.
    VEXOCrashHandler(wchar_t* text = nullptr, int code = 0);
    /// A copy rescues nothing again.
    VEXOCrashHandler(const VEXOCrashHandler& other);
    VEXOCrashHandler& operator=(const VEXOCrashHandler& other);
    ~VEXOCrashHandler() override;

private:
    /// Closes each entry, then walks it if it is a dictionary. One whose walk has begun already, as that of a
    /// dictionary that holds itself, is passed over.
    void DictionaryRecursiveParsingForClose(AcDbDictionary* dictionary);
    /// Closes each record, then its entities.
    void BlockTableParsingForClose(AcDbBlockTable* table);
    /// The object is open for notify by the walk; at most 256 opens of others end, then the walk's own.
    void CloseOpenedEntity(AcDbEntity* entity);
    void CloseOpenedObject(AcDbObject* object);
};
