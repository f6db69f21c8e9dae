#include "builtincommands.h"

#include "auditcommand.h"
#include "capturecommand.h"
#include "casefold.h"
#include "dictcommand.h"
#include "drawingcommands.h"
#include "helpcommand.h"
#include "inventorycommands.h"
#include "listcommands.h"
#include "metafilecommand.h"
#include "plotcommand.h"
#include "purgecommand.h"
#include "selectioncommands.h"
#include "undocommand.h"
#include "variablecommands.h"
#include "xdatacommand.h"

namespace {

constexpr Adesk::Int32 ofSession = ACRX_CMD_SESSION | ACRX_CMD_NO_UNDO_MARKER;
constexpr Adesk::Int32 noStep = keepsSelection | ACRX_CMD_NO_UNDO_MARKER;

constexpr CommandDescription described[] = {
    {L"HELP", helpCommand, L"[COMMAND]", L"this list, or all that is known of one command", L""},
    {L"OPEN", openCommand, L"FILE [DISCARD]", L"opens a drawing in place of the one that is open",
     L"Changes that are not saved are asked about; in a script DISCARD drops them.", ofSession},
    {L"RECOVER", recoverCommand, L"FILE [DISCARD]",
     L"opens what can be had of a damaged drawing, in place of the one that is open",
     L"It lists what was repaired and what was lost. The drawing has no file of its own; SAVEAS gives it "
     L"one.",
     ofSession},
    {L"NEW", newCommand, L"[DISCARD]", L"begins an empty drawing in place of the one that is open",
     L"Changes that are not saved are asked about; in a script DISCARD drops them.", ofSession},
    {L"SAVE", saveCommand, L"", L"saves the drawing to its own file",
     L"That is the file it was opened from, which is replaced; of a new drawing the one that SAVEAS gave "
     L"it."},
    {L"SAVEAS", saveAsCommand, L"FILE [OVERWRITE] [FIELDS] [TEXT | BINARY | DWG] [R12 | 2000 ... 2018]",
     L"saves the drawing to another file, in any form",
     L"A file that is there, the opened one too, is replaced only with OVERWRITE. FIELDS writes every record "
     L"anew."},
    {L"SELECT", selectCommand, L"[(CODE . VALUE)...] [WAY]... [TABLE | JSON [FILE [OVERWRITE]]]",
     L"selects entities for the next commands",
     L"Ways are points, W x,y x,y, C x,y x,y, F, WP, CP, ALL, L, P, G, handles, R and A; ? at the prompt "
     L"lists them. "
     L"Only what the groups in parentheses fit is taken: (0 . \"LINE,ARC\") (8 . \"WALL*\").",
     noStep},
    {L"ERASE", eraseCommand, L"[WAY]...", L"erases what is selected",
     L"Or what is selected now, by the ways of SELECT.", ACRX_CMD_USEPICKSET},
    {L"CHPROP", changePropertiesCommand, L"[WAY... \"\"] [LAYER NAME | COLOR COLOUR | LTYPE NAME]...",
     L"gives what is selected another layer, colour or linetype",
     L"Or what is selected now, by the ways of SELECT; \"\" is Enter, behind which the properties stand.",
     ACRX_CMD_USEPICKSET},
    {L"LIST", listCommand, L"[SELECTED] [TABLE | JSON [FILE [OVERWRITE]]]",
     L"all entities of the drawing, or those selected", L""},
    {L"LAYERS", layersCommand, L"", L"the layers with their number of entities and state", L""},
    {L"XDATA", xdataCommand, L"HANDLE [TABLE | JSON [FILE [OVERWRITE]]]", L"the extended data of an object",
     L"Application by application; HANDLE is the hexadecimal number that LIST shows."},
    {L"DICT", dictCommand, L"[CONTENTS] [TABLE | JSON [FILE [OVERWRITE]]]", L"the tree of dictionaries",
     L"With CONTENTS what stands in their records, too."},
    {L"AUDIT", auditCommand, L"[OF FILE | FIX] [TABLE | JSON [FILE [OVERWRITE]]]",
     L"checks the drawing, or a file, or repairs the drawing",
     L"The text as which the drawing would be saved, or a file as it is; fails where it has faults. FIX "
     L"repairs "
     L"the faults and lists what was repaired and what had to go."},
    {L"PURGE", purgeCommand, L"[LIST] [TABLE | JSON [FILE [OVERWRITE]]]",
     L"lists what nothing in the drawing uses, and erases it",
     L"Layers, linetypes, styles, blocks, application names, empty groups, materials, and what only these "
     L"use. With LIST it lists alone."},
    {L"PLOT", plotCommand,
     L"FILE.svg [OVERWRITE] [WIDTH HEIGHT] [WINDOW X,Y X,Y] [SCALE 1:N] [VIEW ISO | X,Y,Z] "
     L"[LAYOUT NAME] [LAYERS NAMES] [WEIGHTS] [BACKGROUND COLOUR] [SELECTED] [FILL LAYER]...",
     L"a picture of the drawing",
     L"The page is WIDTH by HEIGHT millimetres, 20 to 5000. WINDOW shows what lies in a box, VIEW the "
     L"lines of the model from a direction, without those behind solids, LAYOUT a sheet "
     L"with its viewports, LAYERS only these (* and ? and commas). WEIGHTS draws lines as broad as they are. "
     L"The background is WHITE, BLACK, NONE or #RRGGBB. Closed curves of the layers behind FILL are "
     L"filled; with SELECTED the selection stands on a band of colour."},
    {L"CAPTURE", captureCommand, L"[WAY... \"\"] [TABLE | JSON [FILE [OVERWRITE]]]",
     L"what the selected entities draw, part by part",
     L"As the library captures it for tools that want simple entities; selected now, or by the ways of "
     L"SELECT."},
    {L"EXPLODE", explodeCommand, L"[WAY]...", L"takes apart what is selected",
     L"Blocks, dimensions, paragraphs, hatches; entities of applications become what they draw. Or what is "
     L"selected "
     L"now, by the ways of SELECT.",
     ACRX_CMD_USEPICKSET},
    {L"METAFILE", metafileCommand, L"FILE.emf [OVERWRITE] [ASPECT A | SCALE S] [SELECTED [WAY]...]",
     L"an enhanced metafile of the drawing, or of what is selected",
     L"By the library's tools, on copies. With SCALE a drawing unit is S pixels; with ASPECT the picture is "
     L"A times as "
     L"wide as high and 100 pixels across, margins aside; else it is 4000 pixels across."},
    {L"U", uCommand, L"", L"takes back the last command that changed the drawing", L"", noStep},
    {L"UNDO", undoCommand, L"[COUNT]", L"takes back the last commands that changed the drawing",
     L"COUNT commands, 1 where none is given.", noStep},
    {L"REDO", redoCommand, L"[COUNT]", L"does again what U or UNDO took back",
     L"COUNT commands, 1 where none is given; any change in between forgets them.", noStep},
    {L"SETVAR", setVariableCommand, L"[NAME [VALUE]]", L"shows or sets a system variable",
     L"Without a name, or with ?, lists all. Points are x,y,z; . is the empty text."},
    {L"VERSION", versionCommand, L"", L"the versions of host and kit, and the product's key", L""},
    {L"MODULES", modulesCommand, L"[PROCESS]", L"the loaded modules in the order of loading",
     L"With PROCESS all files that the program has code from."},
    {L"COMMANDS", commandsCommand, L"", L"all commands with their groups, local names and flags", L""},
    {L"MSPACE", nullptr, L"", L"makes the model current on a sheet", L"Needs TILEMODE 0."},
    {L"PSPACE", nullptr, L"", L"makes the sheet itself current", L"Needs TILEMODE 0."},
    {L"CUILOAD", nullptr, L"FILE", L"loads a menu file", L""},
    {L"CUIUNLOAD", nullptr, L"GROUP", L"takes a menu group away again", L""},
    {L"QUIT", quitCommand, L"", L"ends the program",
     L"In a terminal changes that are not saved are asked about; else nothing is saved but by --output.",
     noStep},
};

} // namespace

std::span<const CommandDescription> describedCommands() { return described; }

const CommandDescription* descriptionOf(std::wstring_view globalName) {
    for (const CommandDescription& each : described)
        if (hostkit::equalFolded(each.name, globalName)) return &each;
    return nullptr;
}

bool isOwnCommand(const AcEdCommand& command) {
    return hostkit::equalFolded(command.commandGroup(), L"CONSOLE") ||
           hostkit::equalFolded(command.commandGroup(), L"HOST");
}

void registerBuiltinCommands(AcEdCommandStack& stack) {
    for (const CommandDescription& each : described)
        if (each.function) stack.addCommand(L"CONSOLE", each.name, each.name, each.flags, each.function);
}
