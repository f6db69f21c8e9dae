// Stand-in for the host's statuses. Covers the values that contracts fix and those the kit itself returns; leaves out the rest of the enumeration.
#pragma once

/// One line a status: name and number. Numbers below are those that callers compare with or store; where no
/// contract fixes a number, the kit's own stands.
#define HOSTKIT_STATUS_TABLE(X)                                                                              \
    X(eOk, 0)                                                                                                \
    X(eNotImplementedYet, 1)                                                                                 \
    X(eNotApplicable, 2)                                                                                     \
    X(eInvalidInput, 3)                                                                                      \
    X(eAmbiguousInput, 4)                                                                                    \
    X(eAmbiguousOutput, 5)                                                                                   \
    X(eOutOfMemory, 6)                                                                                       \
    X(eBufferTooSmall, 7)                                                                                    \
    X(eInvalidOpenState, 8)                                                                                  \
    X(eEntityInInactiveLayout, 9)                                                                            \
    X(eHandleExists, 10)                                                                                     \
    X(eNullHandle, 11)                                                                                       \
    X(eBrokenHandle, 12)                                                                                     \
    X(eUnknownHandle, 13)                                                                                    \
    X(eHandleInUse, 14)                                                                                      \
    X(eNullObjectPointer, 15)                                                                                \
    X(eNullObjectId, 16)                                                                                     \
    X(eNullBlockName, 17)                                                                                    \
    X(eContainerNotEmpty, 18)                                                                                \
    X(eNullEntityPointer, 20)                                                                                \
    X(eIllegalEntityType, 21)                                                                                \
    X(eKeyNotFound, 22)                                                                                      \
    X(eDuplicateKey, 23)                                                                                     \
    X(eInvalidIndex, 24)                                                                                     \
    X(eDuplicateIndex, 25)                                                                                   \
    X(eAlreadyInDb, 26)                                                                                      \
    X(eOutOfDisk, 27)                                                                                        \
    X(eDeletedEntry, 28)                                                                                     \
    X(eInvalidExtents, 29)                                                                                   \
    X(eNegativeValueNotAllowed, 30)                                                                          \
    X(eOutOfRange, 31)                                                                                       \
    X(eNoDatabase, 32)                                                                                       \
    X(eInvalidKey, 33)                                                                                       \
    X(eInvalidSymbolTableName, 34)                                                                           \
    X(eInvalidResBuf, 35)                                                                                    \
    X(eInvalidDxfCode, 36)                                                                                   \
    X(eXdataSizeExceeded, 37)                                                                                \
    X(eRegappIdNotFound, 38)                                                                                 \
    X(eCannotBeErasedByCaller, 39)                                                                           \
    X(eCannotScaleNonUniformly, 40)                                                                          \
    X(eEndOfFile, 41)                                                                                        \
    X(eEndOfObject, 42)                                                                                      \
    X(eNotInDatabase, 43)                                                                                    \
    X(eDegenerateGeometry, 44)                                                                               \
    X(eNoIntersections, 45)                                                                                  \
    X(eNotThatKindOfClass, 46)                                                                               \
    X(eFileNotFound, 47)                                                                                     \
    X(eFileAccessErr, 48)                                                                                    \
    X(eFilerError, 49)                                                                                       \
    X(eBadDxfSequence, 50)                                                                                   \
    X(eDwgObjectImproperlyRead, 51)                                                                          \
    X(eNotInBlock, 52)                                                                                       \
    X(eLockViolation, 53)                                                                                    \
    X(eOnLockedLayer, 55)                                                                                    \
    X(eLockChangeInProgress, 54)                                                                             \
    X(eNotOpenForRead, 78)                                                                                   \
    X(eNotOpenForWrite, 79)                                                                                  \
    X(eNotInTransaction, 80)                                                                                 \
    X(eWasErased, 81)                                                                                        \
    X(eWasOpenForRead, 82)                                                                                   \
    X(eWasOpenForWrite, 83)                                                                                  \
    X(eWasOpenForNotify, 84)                                                                                 \
    X(eAtMaxReaders, 85)                                                                                     \
    X(eWasNotErased, 86)                                                                                     \
    X(ePermanentlyErased, 87)                                                                                \
    X(eIsWriteProtected, 88)                                                                                 \
    X(eWasOpenForUndo, 89)                                                                                   \
    X(eNoActiveTransactions, 90)                                                                             \
    X(eNotTopTransaction, 91)                                                                                \
    X(eTransactionOpenWhileCommandEnded, 92)                                                                 \
    X(eInProcessOfCommitting, 93)                                                                            \
    X(eNotNewlyCreated, 94)                                                                                  \
    X(eCyclicReference, 95)                                                                                  \
    X(eLayerInUse, 96)                                                                                       \
    X(eNotAllowedForThisProxy, 97)                                                                           \
    X(eUndoOperationNotAvailable, 98)                                                                        \
    X(eCannotExtrudeRegion, 150)                                                                             \
    X(eNoArcFromInput, 154)                                                                                  \
    X(eMakeMeProxy, 301)                                                                                     \
    X(eNoDocument, 330)                                                                                      \
    X(eNotFromThisDocument, 331)                                                                             \
    X(eNullPtr, 335)                                                                                         \
    X(eUserBreak, 336)                                                                                       \
    X(eModuleNotFound, 340)                                                                                  \
    X(eModuleLoadFailed, 341)                                                                                \
    X(eModuleEntryMissing, 342)                                                                              \
    X(eModuleAttachFailed, 343)                                                                              \
    X(eModuleLocked, 344)                                                                                    \
    X(eUnknownCommand, 345)                                                                                  \
    X(eCommandFailed, 346)

class Acad {
public:
    enum ErrorStatus {
#define HOSTKIT_STATUS_VALUE(name, number) name = number,
        HOSTKIT_STATUS_TABLE(HOSTKIT_STATUS_VALUE)
#undef HOSTKIT_STATUS_VALUE
    };
};

/// The status's own name, for example L"eKeyNotFound"; L"eUnknownStatus" for a number that the table lacks.
/// The text is constant and is never freed.
const wchar_t* acadErrorStatusText(Acad::ErrorStatus status);
