#include "console/Lists.h"

#include <QFileInfo>
#include <QJsonArray>
#include <set>

#include "console/Boards.h"
#include "flash/FileIO.h"
#include "flash/FileReport.h"
#include "flash/FlashMainboard.h"
#include "flash/FlashRFBoard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/RowTable.h"
#include "knowledge/Utilities.h"
#include "knowledge/VersionReply.h"
#include "platform/ProgramFiles.h"
#include "session/Session.h"
#include "session/Wizard.h"
#include "text/Text.h"

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
    const std::vector<OfferedBoard> boards = AllBoards();
    std::string why;
    const OfferedBoard* board = FindBoard(boards, options.board, why);
    if (board == nullptr) voice.Complain("refused", why);
    // A number may mean a board that only its version reply tells from other RF boards.
    if (board != nullptr && text::IsNumeric(options.board)) return static_cast<int>(text::Val(options.board));
    return board == nullptr ? -1 : board->type;
}

/// What was read of a file, whether it is sound or not.
void TellMap(const std::string& file, const std::string& shown, Voice& voice)
{
    const auto copy = FlashFileNamed(file);
    if (!copy) return;
    const std::string revision = RevisionOfFile(QFileInfo(Words(shown)).fileName().toStdString());
    const auto size = static_cast<qint64>(copy->bytes.size());
    std::string words = shown + ": " + text::Num(size) + " bytes, revision " + (revision.empty() ? "-" : revision) +
                        "\nSHA-256 " + copy->sha256;
    QJsonArray ranges;
    for (const DataRange& range : ReportOn(copy->bytes, KindOf(file)).map.Ranges()) {
        const auto last = range.end - 1;
        const auto bytes = static_cast<qint64>(range.end - range.first);
        const auto hex = [](std::uint64_t address) { return text::Hex(static_cast<std::uint32_t>(address), 6); };
        words += "\n  " + hex(range.first) + " to " + hex(last) + "  " + text::Num(bytes) + " bytes";
        ranges.append(QJsonObject{
            {"first", static_cast<qint64>(range.first)}, {"last", static_cast<qint64>(last)}, {"bytes", bytes}});
    }
    voice.Tell("map", words,
               {{"size", size}, {"sha256", Words(copy->sha256)}, {"revision", Words(revision)}, {"ranges", ranges}});
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
    for (const OfferedBoard& board : AllBoards()) {
        const std::string type = std::to_string(board.type);
        voice.Tell("board", (type.size() < 2 ? " " : "") + type + "  " + board.name,
                   {{"type", board.type}, {"name", Words(board.name)}});
    }
    return END_DONE;
}

int ListAntennas(const Options& options, Voice& voice)
{
    const int wanted = BoardTypeWanted(options, NoBoard, voice);
    if (wanted < 0) return END_USAGE;
    const std::vector<int> types = options.board.empty() ? std::vector<int>{0, 1} : std::vector<int>{wanted};
    const std::optional<FlashConfig> config = ReadFlashConfig();
    if (!config) {
        voice.Complain("refused", "There is no FLASHCFG.TXT in " + computer->ProgramDirectory() + ".");
        return END_BAD_FILE;
    }
    std::set<std::string> listed;
    for (const int type : types) {
        const GroupConfig& group = GroupOf(*config, type);
        for (const AntennaRecord& row : group.AntennaTable) {
            if (row.AntennaName.empty()) break;
            if (CanBePicked(row, false) && listed.insert(row.AntennaName).second)
                voice.Tell("antenna", row.AntennaName, {{"name", Words(row.AntennaName)}});
        }
        if (group.problem) voice.Complain("refused", group.problem->what);
    }
    return END_DONE;
}

int CheckFile(const Options& options, ConsoleComputer& console, Voice& voice)
{
    const bool records = text::Equal(text::Right(options.file, 4), ".S19");
    const int type = BoardTypeWanted(options, records ? NoBoard : 0, voice);
    if (type < 0) return END_USAGE;
    const QFileInfo own(Words(options.file));
    const std::string file = own.isFile() ? own.absoluteFilePath().toStdString() : options.file;
    if (!ProgramFileExists(file)) {
        voice.Complain("refused", "There is no file " + options.file + ".");
        return END_BAD_FILE;
    }
    bool tested = false;
    Session.flash = {};
    Guarded("CheckFile", [&] {
        if (BoardOf(type).group == BoardGroup::None)
            CheckS19Records(file);
        else
            CheckFlashFile(file, type, 0);
        tested = true;
    });
    console.TellForms();
    voice.EndProgress();
    TellMap(file, options.file, voice);
    for (const std::string& warning : Session.flash.warnings) voice.Complain("warning", "Warning: " + warning + ".");
    if (!Session.flash.refusal.empty()) voice.Complain("refused", Session.flash.refusal + ".");
    if (!tested || Session.flash.bFlashFileBad) return END_BAD_FILE;
    voice.Tell("checked", options.file + " passed the integrity test.");
    if (Session.flash.warnings.empty() || options.acceptWarnings || !options.yes) return END_DONE;
    voice.Complain("refused", "With --yes it is flashed only with --accept-warnings.");
    return END_BAD_FILE;
}
