// The satellites by the names of older antenna software and by those of the software that replaces it.

#include <array>

#include "knowledge/Utilities.h"
#include "text/Text.h"

namespace {

struct SatName {
    const char* oldName;
    const char* newName;
};

// Most new names are a short mark and the orbital position, but that is no rule to compute by.
constexpr SatName satNames[] = {
    {"NONE", "NONE"},         {"AM2", "AM80E"},        {"AM22", "AME53E"},      {"AM3", "AM140E"},
    {"AMC3", "AMC87W"},       {"ARABSAT", "ARAB26E"},  {"ASIASAT", "ASA122E"},  {"ASTRA1", "AST19E"},
    {"ASTRA2N", "ASTN28E"},   {"ASTRA2S", "ASTS28E"},  {"DSS_72", "DTV72W"},    {"DSS_101", "DTV101W"},
    {"DSS_110", "DTV110W"},   {"DSS_119", "DTV119W"},  {"EB", "TELB63W"},       {"ECHO_61", "DSH61W"},
    {"ECHO_110", "DSH110W"},  {"ECHO_119", "DSH119W"}, {"EUTEL_W3A", "ETL7E"},  {"EXPRESSVU", "EXVU82W"},
    {"EXPRESSTV", "EXVU91W"}, {"GALAXY3CN", "GLX95W"}, {"HISPASAT", "HSPE30W"}, {"HOTBIRD", "HBD13E"},
    {"HOTBIRDWB", "HBDW13E"}, {"IS10", "ITE68E"},      {"IS4B", "ISAT93E"},     {"NILESAT", "NILE7W"},
    {"NSS6", "NSSI95B"},      {"OPTUS_B1", "OPT160E"}, {"OPTUS_C1", "OPT156E"}, {"PAS_9", "INT58W"},
    {"SINOSAT", "SIN110E"},   {"SIRIUS", "SIRI5E"},    {"ST1", "ST88E"},        {"THOR", "THOR1W"},
    {"TURKSAT1C", "TRK42E"},  {"USER1", "USER1"},      {"USER2", "USER2"},
};

}  // namespace

std::string SatNameNew(const std::string& old)
{
    for (const SatName& name : satNames)
        if (text::Equal(name.oldName, old)) return name.newName;
    return old;
}
