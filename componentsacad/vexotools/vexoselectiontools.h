#pragma once

#include "acadstrc.h"
#include "acarray.h"
#include "adsdef.h"
#include "afx.h"
#include "cstringlist.h"
#include "dbid.h"
#include "dbmaindefs.h"
#include "gemat3d.h"

class AcDbEntity;
class AcGeBoundBlock3d;
class AcRxClass;

/// Entities from the user: one, several, nested ones, with or without a keyword, from the implied selection
/// or by a prompt, checked against domains and a filter; and simple questions about a selection. Selection
/// sets of the host are turned into arrays of ids at once and freed on every path.
///
/// Operations that give an int give the host's codes: RTNORM (5100), RTNONE (5000) where not exactly one
/// entity is left, RTERROR (-5001) for an empty result, any other (a cancel, a keyword) as it comes from the
/// host, with the outputs as they were. They prompt, so they are called from a command.
///
/// Domains are names, separated by "||"; null means that any will do. An entity's domain is what the protocol
/// extension VEXODomainProtocol of its class says, compared without regard to case; entities without the
/// protocol, invisible ones, and those that cannot be opened for notify have none and pass.
///
/// An application entity is one whose class' DXF name begins with "VEXO"; a repartition is one whose DXF name
/// also ends in "REPARTITION", both with regard to case.
class VEXOSelectionTools {
public:
    enum eSelect {
        eSelectOne = 0,     ///< one entity is wanted
        eSelectSeveral = 1, ///< several are wanted
        eSelectAny = 2      ///< whatever the implied selection holds
    };

    // -----------------------------------------------------------------------------------------------------------------
    // Asking the user (vexoselectiontools.cpp)
    // -----------------------------------------------------------------------------------------------------------------

    /// Appends the entities of a selection set, which stays the caller's.
    static void enameSetToObjIds(const ads_name set, AcDbObjectIdArray& ids);
    /// The implied selection, which stays; emptied first.
    static void getSelectionIds(AcDbObjectIdArray& ids);

    /// Lets the user pick one entity and opens it for the caller to close; null, with a line on the command
    /// line, when nothing was picked or it cannot be opened. A null prompt is the library's own. The second
    /// text is read by no one.
    static AcDbEntity* selectEntity(AcDbObjectId& id, AcDb::OpenMode mode, const wchar_t* prompt,
                                    const wchar_t* unused = nullptr);
    /// Honours the implied selection first: it is taken where the kind is eSelectAny, where one is wanted and
    /// one is there, or where several are wanted and two or more are there. It is then checked against the
    /// domains, which the user hears of, and reduced by the filter. One that is not taken leads to a prompt
    /// for one entity, also without `prompting`. Where nothing is implied the user is asked behind the
    /// message, for one entity or several; without `prompting` nothing is done, and the result is that of
    /// looking for an implied selection. A prompt for one appends one id, a null one when the user breaks
    /// off. Gives the status of the last selection.
    static int selectEntity(const CString& message, const resbuf* filter, eSelect kind,
                            AcDbObjectIdArray& ids, const wchar_t* domains, bool prompting);
    /// One way of selecting, without a prompt text. RTNORM, with the entity, when the filter leaves exactly
    /// one, else RTNONE. `domainResult`, where it is given, becomes the answer of the domain check (false
    /// without domains); an entity that it refuses is given all the same.
    static int selectSingleEntity(const resbuf* filter, AcDbObjectId& id, const wchar_t* domains,
                                  bool* domainResult, bool display);
    /// The first entity of one way of selecting. The domain check speaks as for several; the filter reduces
    /// nothing that the caller sees.
    static int selectSingleEntity(const wchar_t* prompt, const resbuf* filter, AcDbObjectId& id,
                                  const wchar_t* domains);
    /// The same with keywords, as for acedInitGet; RTKWORD, and acedGetInput tells which.
    static int selectSingleEntityKword(const wchar_t* prompt, AcDbObjectId& id, const CString& keywords);
    /// Appends what is selected; a selection that the domain check refuses is told and stays. What the filter
    /// leaves of all that the array holds then is the result.
    static int selectMultipleEntities(const resbuf* filter, AcDbObjectIdArray& ids, const wchar_t* domains);
    /// The same with a prompt; with `single` one way of selecting.
    static int selectMultipleEntities(const wchar_t* prompt, const resbuf* filter, AcDbObjectIdArray& ids,
                                      const wchar_t* domains, bool single);
    /// Appends the innermost entities of picks into references, one also several times. Filter and domains
    /// are not looked at.
    static int selectNestedEntities(const resbuf* filter, AcDbObjectIdArray& ids, const wchar_t* domains);
    /// The implied selection that the filter leaves; emptied first. It is used up unless it is empty.
    static int verifyImpliedSelection(AcDbObjectIdArray& ids, const resbuf* filter);

    // -----------------------------------------------------------------------------------------------------------------
    // Questions about a selection (vexoselectiontools_checks.cpp)
    // -----------------------------------------------------------------------------------------------------------------

    /// Whether all are of the allowed domains and, with checkHomogeneity, of one class
    /// (isSelectionHomogenous). With display the user hears of it: of domains in a box for eSelectOne, else
    /// on the command line, each refused one once. False outside a command, and nothing is told.
    static bool checkSelectionSet(AcDbObjectIdArray ids, eSelect kind, const wchar_t* domains, bool display,
                                  bool checkHomogeneity, const AcRxClass* wanted, bool allowDerived);
    /// Those of the ids that the filter takes in the whole drawing, in their order.
    static AcDbObjectIdArray filterSelectionSet(const resbuf* filter, AcDbObjectIdArray ids);
    /// All are of the class, or derived from it where that is allowed; without a class, of the first one's.
    /// True for none, false when one cannot be opened.
    static bool isSelectionHomogenous(const AcDbObjectIdArray& ids, const AcRxClass* wanted,
                                      bool allowDerived);
    /// Makes the entities of other types on layers that are on invisible, or visible with hide 0. What lies
    /// on layers that are off keeps its state, so that a later call does not reveal it. The type is a pattern
    /// of a filter.
    static void HideExcept(const wchar_t* type, int hide);
    /// The flag is read by no one.
    static void DisplayGenericMultipleSelectionMessage(bool unused);
    /// At least one application entity, and not only repartitions.
    static bool isOneVEXOEntity(const AcDbObjectIdArray& ids);
    /// Removes what is no application entity; what cannot be opened stays, here and below.
    static void getOnlyVEXOEntities(AcDbObjectIdArray& ids);
    /// Application entities behind the first one are repartitions, with sameClass of the first one's DXF
    /// name; a single entity is one itself. Other entities pass, and of several the first one is not asked:
    /// callers select foreign contours along with them. False for none, and when one cannot be opened.
    static bool areOnlyRepartitions(const AcDbObjectIdArray& ids, bool sameClass);
    /// Application entities behind the first one have its DXF name; a single entity is an application entity.
    /// Other entities pass. False for none, and when one cannot be opened.
    static bool areSameTypeOfBars(const AcDbObjectIdArray& ids);
    /// Removes what has none of these DXF names, without regard to case.
    static void filterEntitiesByName(AcDbObjectIdArray& ids, const CStringArray& names);
    /// Appends the entities of the working database's model space, those in references too, whose block
    /// (VEXOBoundBlockProtocol) meets the box, each with the matrix that takes it to its place. A block
    /// within itself is left out.
    static void getAdiacentElements(const AcGeBoundBlock3d& box, AcDbObjectIdArray& ids,
                                    AcArray<AcGeMatrix3d>& matrices);
};
