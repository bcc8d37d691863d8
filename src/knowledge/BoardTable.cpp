#include "knowledge/BoardTable.h"

#include <array>

namespace {

// clang-format off
//                                    boot leg     main leg       flash file     boot loader  fold
constexpr BlockLayout oldRF          {144, 528,    1024, 32256,   0, 131072,     0, 131072,   32768};
constexpr BlockLayout small          {512, 2048,   6208, 65024,   6208, 131072,  128, 4224,   0};
constexpr BlockLayout records        {0, 0,        8320, 8320,    8320, 2097152, 0, 0,        32768};
// clang-format on

/// The boot area's file of some boards; it is never a board's own.
constexpr const char* bootAreaFile = "DVBDSS.HEX";

constexpr std::array<Board, 22> boards{{
    {.type = 0,
     .group = BoardGroup::Line,
     .name = "Main board",
     .banner = "MAIN BOARD. ",
     .capture = Capture::Main,
     .renamesSatellites = true},
    {.type = 1,
     .group = BoardGroup::Block,
     .name = "RF board",
     .banner = "RF BOARD. ",
     .hasOldLoader = true,
     .capture = Capture::RF,
     .numbersSatellites = true,
     .bootFile = BootFile::NewRF,
     .layout = &oldRF,
     .foldsSecondFile = true,
     .secondFile = bootAreaFile},
    {.type = 2,
     .group = BoardGroup::Line,
     .name = "CORA Main board",
     .banner = "CORA MAIN BOARD. ",
     .searchText = "CORA MAIN BOARD",
     .list = BoardList::SingleCable,
     .takesFlasha = true,
     .slowReset = true,
     .choosesPort = true,
     .capture = Capture::Main},
    {.type = 3,
     .group = BoardGroup::Block,
     .name = "CORA Motor Controller board",
     .banner = "CORA MOTOR CONTROLLER BOARD. ",
     .searchText = "CORA MOTOR CONTROLLER BOARD",
     .list = BoardList::SingleCable,
     .slowReset = true,
     .retriesFlash = false,
     .choosesPort = true,
     .capture = Capture::FirstLine,
     .bootFile = BootFile::RFOrMotor,
     .layout = &small,
     .fallBack = FallBack::Always,
     .foldsSecondFile = true},
    {.type = 4,
     .group = BoardGroup::Block,
     .name = "CORA RF board",
     .banner = "CORA RF board. ",
     .searchText = "CORA RF BOARD",
     .list = BoardList::SingleCable,
     .slowReset = true,
     .retriesFlash = false,
     .choosesPort = true,
     .capture = Capture::FirstLine,
     .numbersSatellites = true,
     .bootFile = BootFile::RFOrMotor,
     .layout = &small,
     .fallBack = FallBack::Always,
     .secondFile = bootAreaFile},
    {.type = 5,
     .group = BoardGroup::Line,
     .name = "DUNE ST/DX Main board",
     .banner = "DUNE ST/DUNE DX MAIN BOARD. ",
     .searchText = "DUNE ST/DUNE DX MAIN BOARD",
     .list = BoardList::SingleCable,
     .takesFlasha = true,
     .slowReset = true,
     .choosesPort = true,
     .capture = Capture::Main},
    {.type = 6,
     .group = BoardGroup::Block,
     .name = "DUNE-ALDA ST/DX Motor Controller board",
     .banner = "DUNE-ALDA ST/DUNE-ALDA DX MOTOR CONTROLLER BOARD. ",
     .searchText = "DUNE-ALDA ST/DUNE-ALDA DX MOTOR CONTROLLER BOARD",
     .list = BoardList::SingleCable,
     .slowReset = true,
     .retriesFlash = false,
     .choosesPort = true,
     .capture = Capture::FirstLine,
     .bootFile = BootFile::RFOrMotor,
     .layout = &small,
     .fallBack = FallBack::Once,
     .foldsSecondFile = true},
    {.type = 7,
     .group = BoardGroup::Line,
     .name = "ALDA ST/DX Main board",
     .banner = "ALDA ST/ALDA DX MAIN BOARD. ",
     .searchText = "ALDA ST/ALDA DX MAIN BOARD",
     .list = BoardList::SingleCable,
     .takesFlasha = true,
     .slowReset = true,
     .choosesPort = true,
     .capture = Capture::Main},
    {.type = 8,
     .group = BoardGroup::Line,
     .name = "ERIS Main board",
     .banner = "ERIS MAIN BOARD. ",
     .searchText = "ERIS MAIN BOARD",
     .list = BoardList::SingleCable,
     .takesFlasha = true,
     .slowReset = true,
     .choosesPort = true,
     .capture = Capture::Main},
    {.type = 9,
     .group = BoardGroup::Block,
     .name = "FJOR ST/FJOR DX/ERIS Motor Controller board",
     .banner = "FJOR ST/FJOR DX/ERIS MOTOR CONTROLLER BOARD. ",
     .searchText = "FJOR ST/FJOR DX/ERIS MOTOR CONTROLLER BOARD",
     .list = BoardList::SingleCable,
     .slowReset = true,
     .retriesFlash = false,
     .choosesPort = true,
     .capture = Capture::FirstLine,
     .bootFile = BootFile::RFOrMotor,
     .layout = &small,
     .fallBack = FallBack::Always,
     .foldsSecondFile = true},
    {.type = 10,
     .group = BoardGroup::Line,
     .name = "FJOR ST/DX Main board",
     .banner = "FJOR ST/FJOR DX MAIN BOARD. ",
     .searchText = "FJOR ST/FJOR DX MAIN BOARD",
     .list = BoardList::SingleCable,
     .takesFlasha = true,
     .slowReset = true,
     .choosesPort = true,
     .capture = Capture::Main},
    {.type = 11,
     .group = BoardGroup::Block,
     .name = "BRIX/FJOR-DUNE-ALDA ST/FJOR-DUNE-ALDA DX/ERIS RF board",
     .banner = "BRIX/FJOR-DUNE-ALDA ST/FJOR-DUNE-ALDA DX/ERIS RF BOARD. ",
     .searchText = "BRIX/FJOR-DUNE-ALDA ST/FJOR-DUNE-ALDA DX/ERIS RF BOARD",
     .list = BoardList::SingleCable,
     .slowReset = true,
     .retriesFlash = false,
     .choosesPort = true,
     .capture = Capture::FirstLine,
     .numbersSatellites = true,
     .bootFile = BootFile::RFOrMotor,
     .layout = &small,
     .fallBack = FallBack::Always,
     .secondFile = bootAreaFile},
    {.type = 12,
     .group = BoardGroup::Line,
     .name = "BRIX Main board",
     .banner = "BRIX MAIN BOARD. ",
     .searchText = "BRIX MAIN BOARD",
     .list = BoardList::SingleCable,
     .takesFlasha = true,
     .slowReset = true,
     .choosesPort = true,
     .capture = Capture::Main},
    {.type = 13,
     .group = BoardGroup::Block,
     .name = "BRIX Motor Controller board",
     .banner = "BRIX MOTOR CONTROLLER BOARD. ",
     .searchText = "BRIX MOTOR CONTROLLER BOARD",
     .list = BoardList::SingleCable,
     .slowReset = true,
     .retriesFlash = false,
     .choosesPort = true,
     .capture = Capture::FirstLine,
     .bootFile = BootFile::RFOrMotor,
     .layout = &small,
     .fallBack = FallBack::Always,
     .foldsSecondFile = true},
    {.type = 14,
     .group = BoardGroup::Line,
     .name = "Motiquad ADCU board",
     .banner = "Motiquad ADCU BOARD. ",
     .searchText = "ADCU",
     .list = BoardList::Other,
     .link = "38400,N,8,1",
     .paced = false,
     .holdsNoParams = true},
    {.type = 15,
     .group = BoardGroup::Block,
     .name = "Roaming Tuner",
     .banner = "ROAMING TUNER. ",
     .searchText = "TOSA RECEIVER BOARD",
     .list = BoardList::Other,
     .choosesPort = true,
     .hasUSBPort = true,
     .capture = Capture::FirstLine,
     .anyTextIsRestart = true,
     .bootFile = BootFile::RF6,
     .layout = &small,
     .foldsSecondFile = true},
    {.type = 16,
     .group = BoardGroup::Block,
     .name = "Dockside Link Box",
     .banner = "DOCKSIDE LINK BOX. ",
     .searchText = " DOCKSIDE LINK BOX BOARD",
     .list = BoardList::Other,
     .choosesPort = true,
     .hasUSBPort = true,
     .capture = Capture::FirstLine,
     .anyTextIsRestart = true,
     .bootFile = BootFile::RF6,
     .layout = &small,
     .foldsSecondFile = true},
    {.type = 17,
     .group = BoardGroup::Line,
     .name = "KELP Control Panel board",
     .banner = "KELP CONTROL PANEL BOARD. ",
     .searchText = "KELP Unit",
     .list = BoardList::Other,
     .bareLines = true,
     .holdsNoParams = true},
    {.type = 18,
     .group = BoardGroup::Line,
     .name = "HOLM/JARL MCU board",
     .banner = "HOLM/JARL MCU BOARD. ",
     .searchText = "HOLMMCU",
     .list = BoardList::Other,
     .bareLines = true,
     .holdsNoParams = true},
    {.type = 19,
     .group = BoardGroup::Line,
     .name = "JARL GLTV MCU board",
     .banner = "JARL GLTV MCU BOARD",
     .searchText = "JARLGLMCU",
     .list = BoardList::Other,
     .bareLines = true,
     .holdsNoParams = true},
    {.type = 20,
     .group = BoardGroup::Block,
     .name = "RF board",
     .banner = "RF BOARD. ",
     .capture = Capture::RF,
     .numbersSatellites = true,
     .bootFile = BootFile::RF6,
     .layout = &small,
     .secondFile = bootAreaFile},
    {.type = 21,
     .group = BoardGroup::MultiStage,
     .name = "RF board",
     .banner = "RF BOARD. ",
     .asksSpeed = true,
     .capture = Capture::RF,
     .numbersSatellites = true,
     .extraCommonWait = 15,
     .layout = &records},
}};

constexpr Board noBoard{.type = NoBoard, .group = BoardGroup::None, .name = "", .banner = "", .searchText = ""};

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
    return type >= 0 && type < static_cast<int>(boards.size()) ? boards[static_cast<std::size_t>(type)] : noBoard;
}

bool IsMainBoard(int type) { return BoardOf(type).capture == Capture::Main; }

bool HasVersions(int type) { return BoardOf(type).searchText == nullptr; }

bool TellsMainVersion(int type) { return HasVersions(type) && BoardOf(type).group == BoardGroup::Line; }

bool TellsRFVersion(int type) { return HasVersions(type) && BoardOf(type).group != BoardGroup::Line; }

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
    return NoBoard;
}
