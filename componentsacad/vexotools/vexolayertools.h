#pragma once

#include "acadstrc.h"
#include "acarray.h"
#include "afx.h"
#include "cstringlist.h"
#include "dbid.h"
#include "gemat3d.h"

#include <vector>

class AcDbBlockReference;
class AcDbDatabase;

/// The layers of a drawing: making, finding, renaming, deleting, switching, and what lies on them.
///
/// A layer is active when it is on and thawed; activating sets both, deactivating neither. A null database is
/// the host's working one unless told otherwise. Nothing is shown and nothing raised; output arguments stay
/// as they were on failure. Lists are appended to unless they are said to be emptied first, and what cannot
/// be opened is left out of them.
///
/// activateLayers, lockLayer and freezeLayer lock the document for their length; all others that write rely
/// on the caller's command.
class VEXOLayerTools {
public:
    // -----------------------------------------------------------------------------------------------------------------
    // Layers by name (vexolayertools.cpp)
    // -----------------------------------------------------------------------------------------------------------------

    /// Finds the layer of that name, or makes it: continuous linetype, thawed, unlocked, on unless `on` is 0,
    /// in the colour of that index (65535: the host's own). A layer that is there stays as it is. With
    /// makeCurrent not 0 it becomes the database's current layer. False, with a null id, for a name that the
    /// host refuses: the name goes to the host as it is given.
    static bool addLayer(const wchar_t* name, AcDbObjectId& id, AcDbDatabase* database, int on,
                         int makeCurrent, unsigned short colorIndex);
    /// The same under the first free one of "name", "name-1", "name-2" ... of the working database.
    static bool addNewLayer(const wchar_t* name, AcDbObjectId& id, AcDbDatabase* database, int on,
                            int makeCurrent, unsigned short colorIndex);
    /// In the working database.
    static bool existLayer(const CString& name, AcDbObjectId& id);
    /// Null where there is none.
    static AcDbObjectId getLayerId(const wchar_t* name);
    static void setLayerCurrent(const AcDbObjectId& layer);

    /// Trailing blanks and line feeds of the new name are cut, it ends at 255 characters, and digits are put
    /// behind it while the working database has a layer of that name. The present name in other case is no
    /// new name: eOk, and nothing is set. Else the status of the open or of the host's setName.
    static Acad::ErrorStatus renameLayer(const CString& newName, const AcDbObjectId& layer);
    /// Replaces all occurrences in the layer's name, with regard to case. True when there were any, whether
    /// the host took the new name or not. An empty old text occurs nowhere.
    static bool replaceTextFromLayerName(const AcDbObjectId& layer, const CString& oldText,
                                         const CString& newText);

    /// Emptied first. Here a null database gives nothing.
    static void getAllLayers(AcDbObjectIdArray& ids, AcDbDatabase* database);
    static void getAllLayersName(CStringList& names, AcDbObjectIdArray& ids);
    /// Names of the given layers, with their ids in step.
    static void getSelectLayersName(const AcDbObjectIdArray& layers, CStringList& names,
                                    AcDbObjectIdArray& ids);
    /// Of the working database: those that are on, whether frozen or not.
    static void getAllActiveLayers(AcDbObjectIdArray& ids);
    static void getLokedLayers(AcDbObjectIdArray& ids);
    /// Frozen and off at once.
    static void getFrozenAndOffLayers(AcDbObjectIdArray& ids);
    static void getAllFrozenLayers(AcDbObjectIdArray& ids, AcDbDatabase* database);

    // -----------------------------------------------------------------------------------------------------------------
    // States and display (vexolayertools_states.cpp)
    // -----------------------------------------------------------------------------------------------------------------

    /// Switches and thaws, or the opposite, and redraws what lies on an activated layer. Always false, also
    /// when it was done: callers ignore it.
    static bool activateLayer(bool activate, const AcDbObjectId& layer);
    /// An empty list means layer 0 of the working database. Both states are set where either is not as
    /// wanted. Those that were not active yet are redrawn when they are activated; nothing is redrawn
    /// otherwise.
    static void activateLayers(bool activate, const AcDbObjectIdArray& layers);
    /// All layers of the working database.
    static void activateAllLayers(bool activate);
    /// True hides the listed layers and shows all others of the working database, false the opposite. Layer
    /// "0" is left alone unless it is listed. What is redrawn afterwards are the layers that were just
    /// hidden.
    static void activateLayersExclusively(bool hideListed, const AcDbObjectIdArray& layers);
    /// Not off; whether it is frozen is not asked. False for one that cannot be opened.
    static bool isLayerActive(const AcDbObjectId& layer);
    /// True for one that cannot be opened.
    static bool isFrozenLayer(const AcDbObjectId& layer);
    static bool isLockedLayer(const AcDbObjectId& layer);
    /// The state before; false for one that cannot be opened.
    static bool lockLayer(const AcDbObjectId& layer, bool lock);
    /// Without a lock on the document. Invalid ids are left out.
    static void lockLayers(const AcDbObjectIdArray& layers, bool lock);
    /// eNullPtr (335) for an invalid id; the status of the lock on the layer's own drawing, or of the open.
    static Acad::ErrorStatus freezeLayer(const AcDbObjectId& layer, bool freeze);
    static void freezeLayers(const AcDbObjectIdArray& layers, bool freeze);

    /// Lets the host draw the model space's entities on that layer anew, locked or not, but for generated
    /// dimensions (application "ORDANE", key "Dimension generated by VEXODimension", not 0). Without reuse,
    /// or with an empty array, the array becomes the ids of model space; a series of calls hands the same
    /// array on.
    static void redrawLayerEntities(const wchar_t* name, AcDbObjectIdArray& ids, const bool& reuse);
    /// The same by acdbEntUpd for the layers of the list that are on and thawed; generated dimensions too.
    static void redrawLayerEntities(const AcDbObjectIdArray& layers);

    // -----------------------------------------------------------------------------------------------------------------
    // What lies on layers (vexolayertools_entities.cpp)
    // -----------------------------------------------------------------------------------------------------------------

    /// Deletes the layer, which is unlocked first, and its entities; or moves them, wherever they stand in
    /// the layer's drawing, to layer 0. False, and nothing done, for an invalid id, layer 0 and the current
    /// layer; false also when an entity could not be erased or moved: the layer stays then, unlocked.
    static bool delLayer(const AcDbObjectId& layer, bool eraseEntities);
    /// As delLayer on each gives; the drawing is walked once.
    static void delLayers(const AcDbObjectIdArray& layers, bool eraseEntities);
    /// Erases all entities on it in all blocks of the working database. False when a block or an entity could
    /// not be opened (but for an entity that was erased meanwhile), or one could not be written; the others
    /// are erased.
    static bool emptyLayer(const AcDbObjectId& layer);
    /// False for an empty list; else whether emptyLayer on each gives true. The drawing is walked once.
    static bool emptyLayers(const AcDbObjectIdArray& layers);

    /// Of all sheets and model space, without what stands in blocks. 0 for an invalid id.
    static long getEntityCountOnLayer(const AcDbObjectId& layer);
    /// In all blocks of the database. -1 when a block cannot be opened; an entity that cannot is not counted.
    static long getEntityCountOnLayerEx(const AcDbObjectId& layer, AcDbDatabase* database);
    /// Emptied first. Of all sheets and model space; for a layer whose name holds a bracket of all blocks.
    /// False for an invalid id.
    static bool getEntitiesFromLayer(const AcDbObjectId& layer, AcDbObjectIdArray& ids);
    /// Of all blocks of the layer's drawing, each once. True.
    static bool getEntitiesFromLayerEx(const AcDbObjectId& layer, AcDbObjectIdArray& ids);
    /// Emptied first. Of all blocks of the first layer's drawing. True.
    static bool getEntitiesFromLayers(const AcDbObjectIdArray& layers, AcDbObjectIdArray& ids);

    // Model space, with what its references show. A block that is inserted within itself is left out there.

    /// The entities of model space on the layer, and for its block references what recursiveGetBlockEntities
    /// gives.
    static void recursiveGetEntitiesFromLayer(const AcDbObjectId& layer, AcDbObjectIdArray& ids,
                                              const AcDbObjectIdArray& filter);
    static void recursiveGetEntitiesFromLayers(const AcDbObjectIdArray& layers, AcDbObjectIdArray& ids,
                                               const AcDbObjectIdArray& filter);
    /// For each entity in the reference's block, and in blocks within it, whose layer is in the filter: the
    /// id of the layer, not that of the entity. The Ex form gives entities. Null does nothing.
    static void recursiveGetBlockEntities(const AcDbBlockReference* reference, AcDbObjectIdArray& ids,
                                          const AcDbObjectIdArray& filter);
    /// The entities, each with a matrix in step: the identity for those of model space, else as below.
    static void recursiveGetEntitiesFromLayersEx(const AcDbObjectIdArray& layers, AcDbObjectIdArray& ids,
                                                 const AcDbObjectIdArray& filter,
                                                 std::vector<AcGeMatrix3d>& matrices);
    /// The matrix takes in the reference's block transform and runs on: entities behind a reference, and
    /// references beside it, have the transforms of those before them in it. Callers know, and it stays.
    static void recursiveGetBlockEntitiesEx(const AcDbBlockReference* reference, AcDbObjectIdArray& ids,
                                            const AcDbObjectIdArray& filter, AcGeMatrix3d& matrix,
                                            std::vector<AcGeMatrix3d>& matrices);
};
