#include "simulator/Units.h"

#include <algorithm>
#include <cctype>

namespace sim {

bool SameWord(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::toupper(x) == std::toupper(y); });
}

const std::vector<Unit>& Units()
{
    using enum Lines;
    using enum StartUp;
    using enum Position;
    using enum Keeps;
    using enum Loader;
    static const char* const mainResets = "FLASHA FLASHX ZAP";
    static const char* const rfResets = "FLASHR FLASHX FLASHA ZAP";
    static constexpr Areas oldRF{144, 528, 1024, 32256}, small{512, 2048, 6208, 65024};

    // No word of a version comes twice: the program counts equal words to find the antenna's row.
    // clang-format off
    static const std::vector<Unit> units{
        // type name        version                        RF version            sign-on                   command       resets       satellites                      baud   lines         ready  start-up    position erase keeps
        { 0, "NEVA",       "QEL Orbimaster NEVA Ver 4.07", "V3.14 DVB/DSS 6",    "MAIN BOOT READY",        "PGM_MAIN",   mainResets, "DSS_101,DSS_119",              9600, Ordinary,     false, SwitchTest, Words,  4.0, OfMainBoard},
        { 0, "MAKO",       "QEL Orbimaster MAKO Ver 3.52", "V2.08 DVB/DSS 5",    "MAIN BOOT READY",        "PGM_MAIN",   mainResets, "ECHO_119,ECHO_110",            9600, Ordinary,     false, SwitchTest, Words,  4.0, OfMainBoard},
        { 0, "OPAL",       "QEL Orbimaster OPAL Ver 1.12", "PCB Version A.2",    "MAIN BOOT READY",        "PGM_MAIN",   mainResets, "DSS_101,NONE",                 9600, Ordinary,     false, SwitchTest, Words,  4.0, OfMainBoard},
        { 0, "RIGA",       "QEL Orbimaster RIGA Ver 5.01", "V3.14 DVB/DSS 6 MA", "MAIN BOOT READY",        "PGM_MAIN",   mainResets, "HOTBIRDWB,ASTRA1,ASTRA2S",     9600, Ordinary,     false, SwitchTest, Words,  4.0, OfMainBoard},
        { 0, "HOLM",       "QEL HOLM 3.02 REV C",          "V3.02 DVB/DSS 6 MA", "HOLM BOOT READY",        "PGM_HOLM",   mainResets, "HOTBIRD,ASTRA1",               9600, Strict,       true,  FogError,   Words,  6.0, OfMainBoard},
        { 0, "HOLMSS",     "QEL HOLMSS 3.04 REV A",        "V3.02 DVB/DSS 6 MA", "HOLM BOOT READY",        "PGM_HOLM",   mainResets, "HOTBIRD,ASTRA1",               9600, Strict,       true,  FogError,   Words,  6.0, OfMainBoard},
        { 0, "JARL",       "QEL JARL 1.23 REV A",          "V3.20 DVB/DSS 6 MA", "JARL BOOT READY",        "PGM_JARL",   mainResets, "HOTBIRD,THOR",                 9600, Strict,       true,  FogError,   Commas, 6.0, OfMainBoard},
        { 0, "JARL 6A",    "QEL JARL 1.25 REV B",          "V4.01 DVB/DSS 6A",   "JARL BOOT READY",        "PGM_JARL",   mainResets, "HOTBIRD,THOR",                 9600, Strict,       true,  FogError,   Commas, 6.0, OfMainBoard},
        { 0, "JARL GL",    "QEL JARL GL 2.10 REV A",       "V4.02 DVB/DSS 6A GL", "JARL BOOT READY",       "PGM_JARLGL", mainResets, "HBD13E,THOR1W",                9600, ReturnBehind, false, SwitchTest, Commas, 6.0, OfMainBoard},
        { 2, "CORA",       "QEL CORA Ver 2.20",            "V1.07 DVB/DSS 4",    "CORA BOOT READY",        "PGM_CORA",   mainResets, "ECHO_119,NONE",                9600, Ordinary,     false, SwitchTest, Words,  4.0, OfMainBoard},
        { 5, "DUNE",       "QEL DUNE ST Ver 2.31",         "V2.01 DVB/DSS 5",    "DUNE BOOT READY",        "PGM_DUNE",   mainResets, "DSS_101,DSS_119",              9600, Ordinary,     false, SwitchTest, Words,  4.0, OfMainBoard},
        { 7, "ALDA",       "QEL ALDA DX Ver 2.44",         "V2.01 DVB/DSS 5",    "ALDA BOOT READY",        "PGM_ALDA",   mainResets, "DSS_101,DSS_119,DSS_110",      9600, Ordinary,     false, SwitchTest, Words,  4.0, OfMainBoard},
        { 8, "ERIS",       "QEL ERIS Ver 1.09",            "V2.01 DVB/DSS 5",    "ERIS BOOT READY",        "PGM_ERIS",   mainResets, "ECHO_119,ECHO_110",            9600, Ordinary,     false, SwitchTest, Words,  4.0, OfMainBoard},
        {10, "FJOR",       "QEL FJOR DX Ver 2.18",         "V2.01 DVB/DSS 5",    "FJOR BOOT READY",        "PGM_FJOR",   mainResets, "ASTRA1,ASTRA2S",               9600, Ordinary,     false, SwitchTest, Words,  4.0, OfMainBoard},
        {12, "BRIX",       "QEL BRIX Ver 1.30",            "V2.01 DVB/DSS 5",    "BRIX BOOT READY",        "PGM_BRIX",   mainResets, "DSS_101,NONE",                 9600, Ordinary,     false, SwitchTest, Words,  4.0, OfMainBoard},
        {14, "ADCU",       "QEL ADCU Ver 1.16",            "",                   "ADCU BOOT READY",        "PGM_ADCU",   "",         "",                            38400, Ordinary,     false, Banner,     Words,  3.0, Nothing},
        {17, "KELP",       "QEL KELP Ver 1.04",            "",                   "KELP BOOT READY",        "PGM_KELP",   "",         "",                             9600, Strict,       false, Banner,     Words,  3.0, Nothing},
        {18, "HOLM MCU",   "QEL HOLMMCU Ver 2.02",         "",                   "HOLM MCU BOOT READY",    "PGM_HMCU",   "",         "",                             9600, Strict,       false, Banner,     Words,  3.0, Nothing},
        {19, "JARL GLTV",  "QEL JARLGLMCU Ver 2.05",       "",                   "JARL GL MCU BOOT READY", "PGM_JGMCU",  "",         "",                             9600, Strict,       false, Banner,     Words,  3.0, Nothing},

        // Boards that take blocks. "OLD" are those whose boot area has no room yet, or whose boot loader has to be replaced.
        // type name            version                       -   sign-on                 command         resets    satellites  baud  lines     ready  start-up position erase keeps     loader     areas    boot area
        { 1, "RF5",              "RF V2.05 DVB/DSS 5",         "", "RF LOADER 2 READY",    "PGM_RF2",      rfResets, "12,7,31",  9600, Ordinary, false, Banner,  Words,   3.0,  OfRFBoard, Blocks,    &oldRF,  true},
        { 1, "RF2 OLD",          "RF V1.31 DVB/DSS 2",         "", "RF BOOT READY",        "PGM_RF",       rfResets, "5,19",     9600, Ordinary, false, Banner,  Words,   3.0,  OfRFBoard, OldBlocks, &oldRF,  true},
        { 1, "RF4 STACKED",      "RF V1.44 DVB/DSS 4 STACKED", "", "RF LOADER 2 READY",    "PGM_RF2",      rfResets, "5,19",     9600, Ordinary, false, Banner,  Words,   3.0,  OfRFBoard, Blocks,    &oldRF,  true},
        { 3, "CORA MOTOR",       "QEL CORAMOT Ver 1.12",       "", "MOTOR BOOT READY",     "PGM_CORAMOT",  "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  true},
        { 3, "CORA MOTOR OLD",   "QEL CORAMOT Ver 1.02",       "", "MOTOR BOOT READY",     "PGM_CORAMOT",  "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  false},
        { 4, "CORA RF",          "QEL CORARF Ver 1.12",        "", "SMALL RF BOOT READY",  "PGM_CORARF",   "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  true},
        { 4, "CORA RF OLD",      "QEL CORARF Ver 1.02",        "", "SMALL RF BOOT READY",  "PGM_CORARF",   "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  false},
        { 6, "DUNE MOTOR",       "QEL DUNEMOT Ver 1.12",       "", "MOTOR BOOT READY",     "PGM_DUNEMOT",  "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  true},
        { 6, "DUNE MOTOR OLD",   "QEL DUNEMOT Ver 1.02",       "", "MOTOR BOOT READY",     "PGM_DUNEMOT",  "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  false},
        { 9, "FJOR MOTOR",       "QEL FJORMOT Ver 1.12",       "", "MOTOR BOOT READY",     "PGM_FJORMOT",  "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  true},
        { 9, "FJOR MOTOR OLD",   "QEL FJORMOT Ver 1.02",       "", "MOTOR BOOT READY",     "PGM_FJORMOT",  "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  false},
        {11, "BRIX RF",          "QEL BRIXRF Ver 1.12",        "", "SMALL RF BOOT READY",  "PGM_BRIXRF",   "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  true},
        {11, "BRIX RF OLD",      "QEL BRIXRF Ver 1.02",        "", "SMALL RF BOOT READY",  "PGM_BRIXRF",   "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  false},
        {13, "BRIX MOTOR",       "QEL BRIXMOT Ver 1.12",       "", "MOTOR BOOT READY",     "PGM_BRIXMOT",  "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  true},
        {13, "BRIX MOTOR OLD",   "QEL BRIXMOT Ver 1.02",       "", "MOTOR BOOT READY",     "PGM_BRIXMOT",  "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  false},
        {15, "TOSA",             "QEL TOSA Ver 2.01",          "", "TOSA BOOT READY",      "PGM_TOSA",     "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  true},
        {16, "DOCKSIDE",         "QEL DOCKSIDE Ver 2.04",      "", "LINK BOOT READY",      "PGM_LINK",     "",       "",         9600, Ordinary, false, Banner,  Words,   3.0,  Nothing,   Blocks,    &small,  true},
        {20, "RF6",              "RF V3.14 DVB/DSS 6",         "", "RF6 BOOT READY",       "PGM_RF6",      rfResets, "12,7,31",  9600, Ordinary, false, Banner,  Words,   3.0,  OfRFBoard, Blocks,    &small,  true},
        {20, "RF6 LM",           "RF V3.11 DVB/DSS LM",        "", "RF6 BOOT READY",       "PGM_RF6",      rfResets, "5,19",     9600, Ordinary, false, Banner,  Words,   3.0,  OfRFBoard, Blocks,    &small,  true},
        {20, "RF6A",             "RF V4.01 DVB/DSS 6A",        "", "RF6A BOOT READY",      "PGM_RF6A",     rfResets, "12,7,31",  9600, Ordinary, false, Banner,  Words,   3.0,  OfRFBoard, Blocks,    &small,  true},
        {20, "RF6A GL",          "RF V4.02 DVB/DSS 6A GL",     "", "RF6A BOOT READY",      "PGM_RF6A",     rfResets, "5,19",     9600, Ordinary, false, Banner,  Words,   3.0,  OfRFBoard, Blocks,    &small,  true},

        // The board of three parts; the revisions of the newest files are B.
        // type name            version                       -   sign-on                 command         resets    satellites  baud  lines     ready  start-up position erase keeps     loader     -        -     FPGA BAPI
        {21, "RF7",              "RF V7.01 DVB/DSS 7",         "", "RF7 BOOT READY",       "PGM_RF7",      rfResets, "12,7,31",  9600, Ordinary, false, Banner,  Words,   3.0,  OfRFBoard, SRecords,  nullptr, true, "A", "A"},
        {21, "RF7 MA",           "RF V7.02 DVB/DSS 7 MA",      "", "RF7 BOOT READY",       "PGM_RF7",      rfResets, "12,7,31",  9600, Ordinary, false, Banner,  Words,   3.0,  OfRFBoard, SRecords,  nullptr, true, "A", "B"},
        {21, "RF7 GL",           "RF V7.03 DVB/DSS 7 GL",      "", "RF7 BOOT READY",       "PGM_RF7",      rfResets, "5,19",     9600, Ordinary, false, Banner,  Words,   3.0,  OfRFBoard, SRecords,  nullptr, true, "B", "A"},
        {21, "RF7 NEW",          "RF V7.04 DVB/DSS 7",         "", "RF7 BOOT READY",       "PGM_RF7",      rfResets, "5,19",     9600, Ordinary, false, Banner,  Words,   3.0,  OfRFBoard, SRecords,  nullptr, true, "B", "B"},
        {21, "RF7 MUTE",         "RF V6.98 DVB/DSS 7",         "", "RF7 BOOT READY",       "PGM_RF7",      rfResets, "5,19",     9600, Ordinary, false, Banner,  Words,   3.0,  OfRFBoard, SRecords,  nullptr, true, nullptr, nullptr},
    };
    // clang-format on
    return units;
}

const Unit* FindUnit(int board, std::string_view name)
{
    for (const Unit& unit : Units()) {
        if (unit.board == board && (name.empty() || SameWord(unit.name, name))) return &unit;
    }
    return nullptr;
}

}  // namespace sim
