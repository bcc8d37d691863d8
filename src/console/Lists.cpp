#include "console/Lists.h"

#include <QFileInfo>
#include <algorithm>

#include "console/Boards.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "forms/frmPickAntennaDialog.h"
#include "frame/SessionState.h"
#include "frame/Wizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "platform/ProgramFiles.h"
#include "text/Text.h"
#include "wizard/Choosers.h"

namespace {

QString Words(const std::string& words) { return QString::fromStdString(words); }

const char* StateOf(int state)
{
    switch (state) {
    case PORT_USABLE: return "free";
    case PORT_IN_USE: return "in use";
    case PORT_FORBIDDEN: return "forbidden";
    default: return "faulty";
    }
}

/// The board of the command line, or `standard`; -1, and told, when there is no such board.
int BoardTypeWanted(const Options& options, int standard, Voice& voice)
{
    if (options.board.empty()) return standard;
    const std::vector<BoardChoice> boards = AllBoards();
    std::string why;
    const BoardChoice* board = FindBoard(boards, options.board, why);
    if (board == nullptr) voice.Complain("refused", why);
    // A number may mean a board that only its version reply tells from other RF boards.
    if (board != nullptr && text::IsNumeric(options.board)) return static_cast<int>(text::Val(options.board));
    return board == nullptr ? -1 : board->type;
}

bool LoadConfigFor(int boardType)
{
    Session.iBoardType = boardType;
    Session.bFlashConfigLoaded = false;
    return ReadFlashConfig() == 0;
}

}  // namespace

int ListPorts(ConsoleComputer& console, Voice& voice)
{
    bool any = false;
    for (int port = 1; port <= LastCommPort; ++port) {
        const int state = console.TestCommPort(port);
        if (state == PORT_MISSING) continue;
        any = true;
        const PortInfo info = console.DescribeCommPort(port);
        const std::string name = "COM" + text::Num(port);
        voice.Tell(
            "port",
            name + "  " + StateOf(state) + "  " + info.toolTip + (info.remedy.empty() ? "" : "\n      " + info.remedy),
            {{"port", Words(name)}, {"state", StateOf(state)}, {"device", Words(info.toolTip)}});
    }
    if (!any) voice.Complain("refused", "There is no serial port. Plug in a USB-to-serial adapter.");
    return any ? END_DONE : END_NO_PORT;
}

int ListBoards(Voice& voice)
{
    for (const BoardChoice& board : AllBoards()) {
        const std::string type = std::to_string(board.type);
        voice.Tell("board", (type.size() < 2 ? " " : "") + type + "  " + board.name,
                   {{"type", board.type}, {"name", Words(board.name)}});
    }
    return END_DONE;
}

int ListAntennas(const Options& options, Voice& voice)
{
    const int wanted = BoardTypeWanted(options, 22, voice);
    if (wanted < 0) return END_USAGE;
    // One of each group: the configuration is read for a group at a time.
    const std::vector<int> types = options.board.empty() ? std::vector<int>{0, 1, 21} : std::vector<int>{wanted};
    std::vector<std::string> listed;
    for (const int type : types) {
        if (!LoadConfigFor(type)) {
            voice.Complain("refused", "There is no FLASHCFG.TXT in " + computer->ProgramDirectory() + ".");
            return END_BAD_FILE;
        }
        cmdPickAntenna_Click();
        for (const std::string& name : frmPickAntennaDialog.lstAntennas.List()) {
            if (std::find(listed.begin(), listed.end(), name) != listed.end()) continue;
            listed.push_back(name);
            voice.Tell("antenna", name, {{"name", Words(name)}});
        }
        CloseChoosers();
    }
    return END_DONE;
}

int CheckFile(const Options& options, ConsoleComputer& console, Voice& voice)
{
    const bool records = text::Equal(text::Right(options.file, 4), ".S19");
    const int type = BoardTypeWanted(options, records ? 22 : 0, voice);
    if (type < 0) return END_USAGE;
    Session.iBoardType = type;
    const QFileInfo own(Words(options.file));
    const std::string file = own.isFile() ? own.absoluteFilePath().toStdString() : options.file;
    if (!ProgramFileExists(file)) {
        voice.Complain("refused", "There is no file " + options.file + ".");
        return END_BAD_FILE;
    }
    bool tested = false;
    Session.bFlashFileBad = false;
    Guarded("CheckFile", [&] {
        if (BoardOf(type).group == BoardGroup::None)
            CheckS19Records(file);
        else
            CheckFlashFile(file);
        tested = true;
    });
    console.TellForms();
    if (!tested || Session.bFlashFileBad) return END_BAD_FILE;
    voice.EndProgress();
    voice.Tell("checked", options.file + " passed the integrity test.");
    return END_DONE;
}
