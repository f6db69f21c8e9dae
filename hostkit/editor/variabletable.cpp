#include "variabletable.h"

#include "adscodes.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace hostkit {
namespace {

constexpr auto session = VariablePlace::session;
constexpr auto settings = VariablePlace::settings;
constexpr auto header = VariablePlace::header;
constexpr double positive = std::numeric_limits<double>::min();
constexpr double largest = std::numeric_limits<double>::max();

} // namespace

const VariableRow variableRows[] = {
    {L"ACADVER", RTSTR, session, true, 0, 0, 0, L"18.0", 0},
    {L"REFEDITNAME", RTSTR, session, true, 0, 0, 0, L"", 0},
    {L"CMDECHO", RTSHORT, session, false, 0, 1, 1, nullptr, 0},
    {L"EXPERT", RTSHORT, session, false, 0, 5, 0, nullptr, 0},
    {L"NOMUTT", RTSHORT, session, false, 0, 1, 0, nullptr, 0},
    {L"USERS1", RTSTR, session, false, 0, 0, 0, L"", 0},
    {L"USERS2", RTSTR, session, false, 0, 0, 0, L"", 0},
    {L"USERS3", RTSTR, session, false, 0, 0, 0, L"", 0},
    {L"USERS4", RTSTR, session, false, 0, 0, 0, L"", 0},
    {L"USERS5", RTSTR, session, false, 0, 0, 0, L"", 0},
    {L"ATTDIA", RTSHORT, settings, false, 0, 1, 0, nullptr, 0},
    {L"ATTREQ", RTSHORT, settings, false, 0, 1, 1, nullptr, 0},
    {L"FILEDIA", RTSHORT, settings, false, 0, 1, 1, nullptr, 0},
    {L"OSMODE", RTSHORT, settings, false, 0, 32767, 0, nullptr, 0},
    {L"PICKADD", RTSHORT, settings, false, 0, 2, 1, nullptr, 0},
    {L"PICKFIRST", RTSHORT, settings, false, 0, 1, 1, nullptr, 0},
    {L"SAVETIME", RTSHORT, settings, false, 0, 600, 10, nullptr, 0},
    {L"STARTUP", RTSHORT, settings, false, 0, 1, 0, nullptr, 0},
    {L"ANGBASE", RTREAL, header, false, 0, 0, 0, nullptr, 50},
    {L"ANGDIR", RTSHORT, header, false, 0, 1, 0, nullptr, 70},
    {L"ATTMODE", RTSHORT, header, false, 0, 2, 1, nullptr, 70},
    {L"AUNITS", RTSHORT, header, false, 0, 4, 0, nullptr, 70},
    {L"AUPREC", RTSHORT, header, false, 0, 8, 0, nullptr, 70},
    {L"CELTSCALE", RTREAL, header, false, positive, largest, 1, nullptr, 40},
    {L"CELTYPE", RTSTR, header, false, 0, 0, 0, L"ByLayer", 6},
    {L"CELWEIGHT", RTSHORT, header, false, -3, 211, -1, nullptr, 370},
    {L"CLAYER", RTSTR, header, false, 0, 0, 0, L"0", 8},
    {L"DIMSCALE", RTREAL, header, false, 0, largest, 1, nullptr, 40},
    {L"DIMSTYLE", RTSTR, header, false, 0, 0, 0, L"Standard", 2},
    {L"ELEVATION", RTREAL, header, false, 0, 0, 0, nullptr, 40},
    {L"FILLMODE", RTSHORT, header, false, 0, 1, 1, nullptr, 70},
    {L"INSUNITS", RTSHORT, header, false, 0, 24, 0, nullptr, 70},
    {L"LTSCALE", RTREAL, header, false, positive, largest, 1, nullptr, 40},
    {L"LUNITS", RTSHORT, header, false, 1, 5, 2, nullptr, 70},
    {L"LUPREC", RTSHORT, header, false, 0, 8, 4, nullptr, 70},
    {L"MEASUREMENT", RTSHORT, header, false, 0, 1, 0, nullptr, 70},
    {L"MIRRTEXT", RTSHORT, header, false, 0, 1, 0, nullptr, 70},
    {L"ORTHOMODE", RTSHORT, header, false, 0, 1, 0, nullptr, 70},
    {L"PDMODE", RTSHORT, header, false, 0, 100, 0, nullptr, 70},
    {L"PDSIZE", RTREAL, header, false, 0, 0, 0, nullptr, 40},
    {L"PLINEWID", RTREAL, header, false, 0, largest, 0, nullptr, 40},
    {L"PSLTSCALE", RTSHORT, header, false, 0, 1, 1, nullptr, 70},
    {L"TEXTSIZE", RTREAL, header, false, positive, largest, 2.5, nullptr, 40},
    {L"TEXTSTYLE", RTSTR, header, false, 0, 0, 0, L"Standard", 7},
    {L"THICKNESS", RTREAL, header, false, 0, 0, 0, nullptr, 39},
    {L"TRACEWID", RTREAL, header, false, 0, largest, 1, nullptr, 40},
    {L"USERI1", RTSHORT, header, false, 0, 0, 0, nullptr, 70},
    {L"USERI2", RTSHORT, header, false, 0, 0, 0, nullptr, 70},
    {L"USERI3", RTSHORT, header, false, 0, 0, 0, nullptr, 70},
    {L"USERI4", RTSHORT, header, false, 0, 0, 0, nullptr, 70},
    {L"USERI5", RTSHORT, header, false, 0, 0, 0, nullptr, 70},
    {L"USERR1", RTREAL, header, false, 0, 0, 0, nullptr, 40},
    {L"USERR2", RTREAL, header, false, 0, 0, 0, nullptr, 40},
    {L"USERR3", RTREAL, header, false, 0, 0, 0, nullptr, 40},
    {L"USERR4", RTREAL, header, false, 0, 0, 0, nullptr, 40},
    {L"USERR5", RTREAL, header, false, 0, 0, 0, nullptr, 40},
};
const std::size_t variableRowCount = std::size(variableRows);

bool isKeptByHost(std::wstring_view variable) {
    constexpr std::wstring_view names[] = {
        L"ACADMAINTVER", L"DWGCODEPAGE", L"EXTMAX",   L"EXTMIN",  L"FINGERPRINTGUID", L"LASTSAVEDBY",
        L"PEXTMAX",      L"PEXTMIN",     L"PUCSNAME", L"PUCSORG", L"PUCSXDIR",        L"PUCSYDIR",
        L"UCSNAME",      L"UCSORG",      L"UCSXDIR",  L"UCSYDIR", L"VERSIONGUID"};
    return variable.starts_with(L"TD") || std::binary_search(std::begin(names), std::end(names), variable);
}

} // namespace hostkit
