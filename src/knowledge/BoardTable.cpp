#include "knowledge/BoardTable.h"

#include <array>

#include "frame/SessionState.h"

namespace {

using enum BoardGroup;
using enum FallBack;

// clang-format off
//                                    boot leg     main leg       flash file     boot loader  fold
constexpr BlockLayout oldRF          {144, 528,    1024, 32256,   0, 131072,     0, 131072,   32768};
constexpr BlockLayout small          {512, 2048,   6208, 65024,   6208, 131072,  128, 4224,   0};
constexpr BlockLayout records        {0, 0,        8320, 8320,    8320, 2097152, 0, 0,        32768};
// clang-format on

// clang-format off
constexpr std::array<Board, 23> boards{{
    // type group    name in the log                banner                                     words that pick its row                              capture             flasha  slow   retry  noPar  plain  layout, fall back
    { 0, Line,       "Main board",                  "MAIN BOARD. ",                            nullptr,                                             Capture::Main,      false,  false, true,  false, false},
    { 1, Block,      "RF board",                    "RF BOARD. ",                              nullptr,                                             Capture::RF,        false,  false, true,  false, false, &oldRF},
    { 2, Line,       "CORA Main board",             "CORA MAIN BOARD. ",                       "CORA MAIN BOARD",                                   Capture::Main,      true,   true,  true,  false, false},
    { 3, Block,      "CORA Motor Controller board", "CORA MOTOR CONTROLLER BOARD. ",           "CORA MOTOR CONTROLLER BOARD",                       Capture::FirstLine, false,  true,  false, false, false, &small, Always},
    { 4, Block,      "CORA RF board",               "CORA RF board. ",                         "CORA RF BOARD",                                     Capture::FirstLine, false,  true,  false, false, false, &small, Always},
    { 5, Line,       "DUNE ST/DX Main board",       "DUNE ST/DUNE DX MAIN BOARD. ",            "DUNE ST/DUNE DX MAIN BOARD",                        Capture::Main,      true,   true,  true,  false, false},
    { 6, Block,      "DUNE-ALDA ST/DX Motor Controller board",
                                                    "DUNE-ALDA ST/DUNE-ALDA DX MOTOR CONTROLLER BOARD. ",
                                                                                               "DUNE-ALDA ST/DUNE-ALDA DX MOTOR CONTROLLER BOARD",  Capture::FirstLine, false,  true,  false, false, false, &small, Once},
    { 7, Line,       "ALDA ST/DX Main board",       "ALDA ST/ALDA DX MAIN BOARD. ",            "ALDA ST/ALDA DX MAIN BOARD",                        Capture::Main,      true,   true,  true,  false, false},
    { 8, Line,       "ERIS Main board",             "ERIS MAIN BOARD. ",                       "ERIS MAIN BOARD",                                   Capture::Main,      true,   true,  true,  false, false},
    { 9, Block,      "FJOR ST/FJOR DX/ERIS Motor Controller board",
                                                    "FJOR ST/FJOR DX/ERIS MOTOR CONTROLLER BOARD. ",
                                                                                               "FJOR ST/FJOR DX/ERIS MOTOR CONTROLLER BOARD",       Capture::FirstLine, false,  true,  false, false, false, &small, Always},
    {10, Line,       "FJOR ST/DX Main board",       "FJOR ST/FJOR DX MAIN BOARD. ",            "FJOR ST/FJOR DX MAIN BOARD",                        Capture::Main,      true,   true,  true,  false, false},
    {11, Block,      "BRIX/FJOR-DUNE-ALDA ST/FJOR-DUNE-ALDA DX/ERIS RF board",
                                                    "BRIX/FJOR-DUNE-ALDA ST/FJOR-DUNE-ALDA DX/ERIS RF BOARD. ",
                                                                                               "BRIX/FJOR-DUNE-ALDA ST/FJOR-DUNE-ALDA DX/ERIS RF BOARD",
                                                                                                                                                    Capture::FirstLine, false,  true,  false, false, false, &small, Always},
    {12, Line,       "BRIX Main board",             "BRIX MAIN BOARD. ",                       "BRIX MAIN BOARD",                                   Capture::Main,      true,   true,  true,  false, false},
    {13, Block,      "BRIX Motor Controller board", "BRIX MOTOR CONTROLLER BOARD. ",           "BRIX MOTOR CONTROLLER BOARD",                       Capture::FirstLine, false,  true,  false, false, false, &small, Always},
    {14, Line,       "Motiquad ADCU board",         "Motiquad ADCU BOARD. ",                   "ADCU",                                              Capture::None,      false,  false, true,  true,  false},
    {15, Block,      "Roaming Tuner",               "ROAMING TUNER. ",                         "TOSA RECEIVER BOARD",                               Capture::FirstLine, false,  false, true,  false, false, &small},
    {16, Block,      "Dockside Link Box",           "DOCKSIDE LINK BOX. ",                     " DOCKSIDE LINK BOX BOARD",                          Capture::FirstLine, false,  false, true,  false, false, &small},
    {17, Line,       "KELP Control Panel board",    "KELP CONTROL PANEL BOARD. ",              "KELP Unit",                                         Capture::None,      false,  false, true,  true,  true},
    {18, Line,       "HOLM/JARL MCU board",         "HOLM/JARL MCU BOARD. ",                   "HOLMMCU",                                           Capture::None,      false,  false, true,  true,  true},
    {19, Line,       "JARL GLTV MCU board",         "JARL GLTV MCU BOARD",                     "JARLGLMCU",                                         Capture::None,      false,  false, true,  true,  true},
    {20, Block,      "RF board",                    "RF BOARD. ",                              nullptr,                                             Capture::RF,        false,  false, true,  false, false, &small},
    {21, MultiStage, "RF board",                    "RF BOARD. ",                              nullptr,                                             Capture::RF,        false,  false, true,  false, false, &records},
    {22, None,       "",                            "",                                        "",                                                  Capture::None,      false,  false, false, false, false},
}};
// clang-format on

constexpr std::array<const char*, 27> singleBoards{
    "CORA Antenna Main board",    "CORA Motor Controller board",    "CORA RF board",
    "DUNE DX Antenna Main board", "DUNE DX Motor Controller board", "DUNE DX RF board",
    "DUNE ST Antenna Main board", "DUNE ST Motor Controller",       "DUNE ST RF board",
    "ERIS Antenna Main board",    "ERIS Motor Controller board",    "ERIS RF board",
    "FJOR DX Antenna Main board", "FJOR DX Motor Controller board", "FJOR DX RF board",
    "FJOR ST Antenna Main board", "FJOR ST Motor Controller board", "FJOR ST RF board",
    "ALDA DX Antenna Main board", "ALDA DX Motor Controller board", "ALDA DX RF board",
    "ALDA ST Antenna Main board", "ALDA ST Motor Controller board", "ALDA ST RF board",
    "BRIX Antenna Main board",    "BRIX Motor Controller board",    "BRIX RF board",
};

constexpr std::array<const char*, 7> otherBoards{
    "Motiquad ADCU",      "HOLM MCU",          "JARL MCU",      "JARL GLTV MCU",
    "KELP Control Panel", "Dockside Link Box", "Roaming Tuner",
};

// clang-format off
/// iBoardType of each entry of the two lists.
constexpr std::array singleBoardTypes{
    2,  3,  4,             // CORA
    5,  6, 11,  5, 6, 11,  // DUNE DX, ST
    8,  9, 11,             // ERIS
    10, 9, 11, 10, 9, 11,  // FJOR DX, ST
    7,  6, 11,  7, 6, 11,  // ALDA DX, ST
    12, 13, 11,            // BRIX
};
constexpr std::array otherBoardTypes{14, 18, 18, 19, 17, 16, 15};
// clang-format on
static_assert(singleBoardTypes.size() == singleBoards.size() && otherBoardTypes.size() == otherBoards.size());

}  // namespace

const Board& BoardOf(int type)
{
    return type >= 0 && type < static_cast<int>(boards.size()) ? boards[static_cast<std::size_t>(type)] : boards.back();
}

bool IsMainBoard(int type) { return BoardOf(type).capture == Capture::Main; }

bool HasVersions(int type) { return BoardOf(type).searchText == nullptr; }

std::string BoardName(int index, unsigned table)
{
    const auto at = static_cast<std::size_t>(index - 1);
    if (table == 0 && index >= 1 && at < singleBoards.size()) return singleBoards[at];
    if (table == 1 && index >= 1 && at < otherBoards.size()) return otherBoards[at];
    return {};
}

int BoardTypeOf(int index, unsigned table)
{
    const auto at = static_cast<std::size_t>(index - 1);
    if (table == 0 && index >= 1 && at < singleBoardTypes.size()) return singleBoardTypes[at];
    if (table == 1 && index >= 1 && at < otherBoardTypes.size()) return otherBoardTypes[at];
    return boards.back().type;
}

std::string BoardNameForLog()
{
    const int type = Session.iBoardType;
    if (type >= 2 && type <= 13) return BoardName(type, 0);
    if (type >= 14 && type <= 19) return BoardName(type, 1);
    const auto row = static_cast<std::size_t>(Session.iAntennaIdx);
    return row < Session.AntennaTable.size() ? Session.AntennaTable[row].AntennaName : std::string();
}
