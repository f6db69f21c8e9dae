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
    {L"ACADVER", RTSTR, 0, session, true, 0, 0, 0, L"18.0"},
    {L"REFEDITNAME", RTSTR, 0, session, true, 0, 0, 0, L""},
    {L"CMDECHO", RTSHORT, 0, session, false, 0, 1, 1, nullptr},
    {L"EXPERT", RTSHORT, 0, session, false, 0, 5, 0, nullptr},
    {L"NOMUTT", RTSHORT, 0, session, false, 0, 1, 0, nullptr},
    {L"USERS1", RTSTR, 0, session, false, 0, 0, 0, L""},
    {L"USERS2", RTSTR, 0, session, false, 0, 0, 0, L""},
    {L"USERS3", RTSTR, 0, session, false, 0, 0, 0, L""},
    {L"USERS4", RTSTR, 0, session, false, 0, 0, 0, L""},
    {L"USERS5", RTSTR, 0, session, false, 0, 0, 0, L""},
    {L"ATTDIA", RTSHORT, 0, settings, false, 0, 1, 0, nullptr},
    {L"ATTREQ", RTSHORT, 0, settings, false, 0, 1, 1, nullptr},
    {L"FILEDIA", RTSHORT, 0, settings, false, 0, 1, 1, nullptr},
    {L"OSMODE", RTSHORT, 0, settings, false, 0, 32767, 0, nullptr},
    {L"PICKADD", RTSHORT, 0, settings, false, 0, 2, 1, nullptr},
    {L"PICKAUTO", RTSHORT, 0, settings, false, 0, 1, 1, nullptr},
    {L"PICKBOX", RTSHORT, 0, settings, false, 0, 50, 3, nullptr},
    {L"PICKFIRST", RTSHORT, 0, settings, false, 0, 1, 1, nullptr},
    {L"SAVETIME", RTSHORT, 0, settings, false, 0, 600, 10, nullptr},
    {L"STARTUP", RTSHORT, 0, settings, false, 0, 1, 0, nullptr},
    {L"ANGBASE", RTREAL, 50, header, false, 0, 0, 0, nullptr},
    {L"ANGDIR", RTSHORT, 70, header, false, 0, 1, 0, nullptr},
    {L"ATTMODE", RTSHORT, 70, header, false, 0, 2, 1, nullptr},
    {L"AUNITS", RTSHORT, 70, header, false, 0, 4, 0, nullptr},
    {L"AUPREC", RTSHORT, 70, header, false, 0, 8, 0, nullptr},
    {L"CELTSCALE", RTREAL, 40, header, false, positive, largest, 1, nullptr},
    {L"CELTYPE", RTSTR, 6, header, false, 0, 0, 0, L"ByLayer"},
    {L"CELWEIGHT", RTSHORT, 370, header, false, -3, 211, -1, nullptr},
    {L"CLAYER", RTSTR, 8, header, false, 0, 0, 0, L"0"},
    {L"DIMSCALE", RTREAL, 40, header, false, 0, largest, 1, nullptr},
    {L"DIMSTYLE", RTSTR, 2, header, false, 0, 0, 0, L"Standard"},
    {L"ELEVATION", RTREAL, 40, header, false, 0, 0, 0, nullptr},
    {L"FILLMODE", RTSHORT, 70, header, false, 0, 1, 1, nullptr},
    {L"INSUNITS", RTSHORT, 70, header, false, 0, 24, 0, nullptr},
    {L"LTSCALE", RTREAL, 40, header, false, positive, largest, 1, nullptr},
    {L"LUNITS", RTSHORT, 70, header, false, 1, 5, 2, nullptr},
    {L"LUPREC", RTSHORT, 70, header, false, 0, 8, 4, nullptr},
    {L"MEASUREMENT", RTSHORT, 70, header, false, 0, 1, 0, nullptr},
    {L"MIRRTEXT", RTSHORT, 70, header, false, 0, 1, 0, nullptr},
    {L"ORTHOMODE", RTSHORT, 70, header, false, 0, 1, 0, nullptr},
    {L"PDMODE", RTSHORT, 70, header, false, 0, 100, 0, nullptr},
    {L"PDSIZE", RTREAL, 40, header, false, 0, 0, 0, nullptr},
    {L"PLINEWID", RTREAL, 40, header, false, 0, largest, 0, nullptr},
    {L"PSLTSCALE", RTSHORT, 70, header, false, 0, 1, 1, nullptr},
    {L"TEXTSIZE", RTREAL, 40, header, false, positive, largest, 2.5, nullptr},
    {L"TEXTSTYLE", RTSTR, 7, header, false, 0, 0, 0, L"Standard"},
    {L"THICKNESS", RTREAL, 39, header, false, 0, 0, 0, nullptr},
    {L"TRACEWID", RTREAL, 40, header, false, 0, largest, 1, nullptr},
    {L"USERI1", RTSHORT, 70, header, false, 0, 0, 0, nullptr},
    {L"USERI2", RTSHORT, 70, header, false, 0, 0, 0, nullptr},
    {L"USERI3", RTSHORT, 70, header, false, 0, 0, 0, nullptr},
    {L"USERI4", RTSHORT, 70, header, false, 0, 0, 0, nullptr},
    {L"USERI5", RTSHORT, 70, header, false, 0, 0, 0, nullptr},
    {L"USERR1", RTREAL, 40, header, false, 0, 0, 0, nullptr},
    {L"USERR2", RTREAL, 40, header, false, 0, 0, 0, nullptr},
    {L"USERR3", RTREAL, 40, header, false, 0, 0, 0, nullptr},
    {L"USERR4", RTREAL, 40, header, false, 0, 0, 0, nullptr},
    {L"USERR5", RTREAL, 40, header, false, 0, 0, 0, nullptr},
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
