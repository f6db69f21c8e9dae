#include "stringtable.h"

#include <iterator>

namespace {

// The module's French texts, ids 14000 to 14114; ids that are no texts (icons, templates) are left out.
const hostkit::StringTableEntry frenchTexts[] = {
    {14000, L"\nSélectionnez un élément : "},
    {14001, L"Rien n'a été sélectionné !\n"},
    {14002, L"Sélection incorrecte !"},
    {14003, L"et"},
    {14004, L"ne sont pas compatible avec cette commande !"},
    {14005, L"les éléments de ferraillage"},
    {14006, L"les éléments de coffrage"},
    {14007, L"les éléments d'habillage"},
    {14008, L"les éléments des contours de coffrage"},
    {14009, L"Eléments de ferraillage"},
    {14010, L"Eléments de coffrage"},
    {14011, L"Eléments d'habillage"},
    {14012, L"Eléments des contours de coffrage"},
    {14013, L"Des informations importantes sont manquantes.\n"
            L"Il est fortement conseillé de réinstaller le programme."},
    {14020, L"Quitter l'application"},
    {14022, L"AUCUN"},
    {14023, L"MODELE"},
    {14024, L"DESSIN"},
    {14025, L"DOCUMENT"},
    {14026, L"Ordane Dalle"},
    {14027, L"Commande invalide en mode %s.\nActivez le mode %s pour exécuter la commande."},
    {14028, L"Commande invalide en mode %s.\nActivez le mode %s ou le mode %s pour exécuter la commande."},
    {14029, L"Choix des éléments :"},
    {14058, L"&Oui"},
    {14059, L"&Non"},
    {14060, L"&Ok"},
    {14061, L"A&nnuler"},
    {14062, L"Nom du fichier :"},
    {14063, L"Enregistrer"},
    {14064, L"Ne plus afficher ce message"},
    {14067, L"Avertissement"},
    {14069, L"Charger un style depuis un fichier..."},
    {14070, L"Sélectionner un style"},
    {14071, L"Le nom du style n'est pas valide."},
    {14072, L"Le style sélectionné n'est pas compatible avec ce type d'objet."},
    {14073, L"Le fichier sélectionné ne contient pas de style Ordane Dalle."},
    {14074, L"Nom du style :"},
    {14110, L"Invalid file name!"},
};

const hostkit::StringTable table{frenchTexts, std::size(frenchTexts)};

} // namespace

/// What the prompt access of the base library looks up in this module.
extern "C" const hostkit::StringTable* getModuleStringTable() { return &table; }
