// From the board at hand to the plan of its flash: the row of the antenna table, its files, its commands.

#include "knowledge/BoardTable.h"
#include "knowledge/RowSearch.h"
#include "knowledge/RowTable.h"
#include "knowledge/Utilities.h"
#include "knowledge/VersionReply.h"
#include "platform/ProgramFiles.h"
#include "text/Text.h"

namespace {

/// Main boards' software that goes with any older RF board behind them.
constexpr std::string_view rf5CompatibleFile = "F61118T1.HEX";

/// The two upgrades of a JARL system: with the satellite library, and without.
constexpr const char* libraryFile = "F61293A.HEX";
constexpr const char* plainFile = "F61236A.HEX";

/// The type that a row is flashed as: its words tell it, or it is the board that was chosen.
int TypeOf(const FlashConfig& config, const BoardChoice& choice, const Reading& reading)
{
    if (!choice.pickedRow) return reading.told.value_or(choice.iBoardType);
    const auto row = static_cast<std::size_t>(*choice.pickedRow);
    return BoardTypeOf(GroupOf(config, choice.iBoardType).AntennaTable.at(row)).value_or(choice.iBoardType);
}

/// The loader that goes into the boot area of a Block board along with its software.
std::string BootloaderFile(const FlashConfig& config, const Board& board, bool usb)
{
    switch (board.bootFile) {
    case BootFile::NewRF: return config.sNewRFBootloaderFile;
    case BootFile::RFOrMotor: return config.sRFOrMotorBootloaderFile;
    case BootFile::RF6: return board.hasUSBPort && usb ? config.sDeluxeUSBBootloaderFile : config.sRF6BootloaderFile;
    case BootFile::None: break;
    }
    return {};
}

/// What the board is called in the table: its own words, or those of its version reply.
std::string SearchText(const Board& board, const Reading& reading)
{
    std::string words = board.searchText != nullptr    ? board.searchText
                        : TellsMainVersion(board.type) ? reading.sMainVersion
                                                       : reading.sRFVersion;
    words = text::Replace(text::Replace(words, "\r", ""), "\n", "");
    const std::size_t family = text::Find(words, "DVB/DSS");
    return TellsRFVersion(board.type) && family > 0 ? text::Mid(words, family) : words;
}

/// Null when the table doesn't know the board.
const AntennaRecord* RowOf(const FlashConfig& config, const BoardChoice& choice, const Board& board,
                           const Reading& reading)
{
    const std::vector<AntennaRecord>& table = GroupOf(config, choice.iBoardType).AntennaTable;
    if (choice.pickedRow) return &table.at(static_cast<std::size_t>(*choice.pickedRow));
    const RowFound found = FindRow(table, SearchText(board, reading), TellsRFVersion(board.type));
    return found.fits ? &table[static_cast<std::size_t>(found.row)] : nullptr;
}

void TakeRow(const AntennaRecord& row, FlashPlan& plan)
{
    const RowFiles files = ReadRow(row, plan.iBoardType);
    plan.row = row;
    plan.facts = FactsOf(row);
    plan.facts.bareLines |= BoardOf(plan.iBoardType).bareLines;
    plan.facts.returnBehindCommand |= BoardOf(plan.iBoardType).bareLines;
    plan.sBoardSignOn = text::Trim(row.SignOn);
    plan.stages.front().sFlashCmd = text::Trim(row.FlashCmd);
    plan.stages.front().sFlashFile = files.FlashFile;
    plan.sFlashFileName = files.SecondFlashFile;
    plan.FirstFile = files.FirstFile;
    plan.SecondFile = files.SecondFile;
    plan.iLinePauseTicks = files.PauseTicks;
    plan.sPreflashCmds = CommandsOf(row.PreflashLine);
    plan.sPostflashCmds = CommandsOf(row.PostflashLine);
}

/// A JARL system with a newer RF board may get the satellite library. What is known of its versions is the main board's
/// business alone.
bool MayHaveLibrary(const Reading& reading)
{
    if (!text::Holds(reading.sMainVersion, "QEL JARL") || text::Holds(reading.sMainVersion, "QEL JARL GL"))
        return false;
    return IsRF7Family(reading.sRFVersion) || text::Holds(reading.sRFVersion, "DVB/DSS 6A");
}

/// The main board's software must go with the RF board that is in the antenna already.
void FitFileToRFBoard(const FlashConfig& config, const Reading& reading, FlashPlan& plan)
{
    std::string& file = plan.stages.front().sFlashFile;
    if (IsRF5Family(reading.sRFVersion) && plan.facts.needsRF5File)
        file = config.sRF5CompatibleMainFile.empty() ? std::string(rf5CompatibleFile) : config.sRF5CompatibleMainFile;
    if (!reading.bPCBVersionA2) return;
    const std::string family = text::Left(file, 6);
    if (text::Holds(file, "F61102"))
        file = family + "S.HEX";
    else if (text::Holds(file, "F61118"))
        file = family + "L.HEX";
}

/// The model decides, where the reply doesn't tell enough.
void FitFileToModel(FlashPlan& plan)
{
    const std::optional<std::string>& model = plan.answers.modelFile;
    std::string& file = plan.stages.front().sFlashFile;
    // Nothing was read, so the user has to know; without a model it is the file that goes with any RF board.
    if (plan.bSkipParams && plan.facts.needsRF5File) {
        plan.asksModel = ModelList::RF;
        if (model && model->empty()) file = rf5CompatibleFile;
    }
    const ModelChoice* choice = ModelChoiceOf(plan.row);
    if (choice == nullptr || plan.sFlashFileName.empty() || BoardOf(plan.iBoardType).group != BoardGroup::Block) return;
    plan.asksModel = choice->list;
    if (model) file = ResolveFlashFile(model->empty() ? choice->defaultFile : *model);
}

/// A part of board 21 that is flashed behind its first one.
struct LaterStage {
    const char* banner;
    const char* part;
    const char* command;
    const char* family;
};
constexpr LaterStage fpga{"FPGA. ", "FPGA", "PGM_RF7_FPGA", "F61340A.S19"};
constexpr LaterStage processor{"ACQUISITION PROCESSOR. ", "Acquisition Processor", "PGM_RF7_BAPI", "F61357A.S19"};

/// The stage is due when its newest file is newer than what the antenna has told, in the order of texts; one that told
/// nothing gets it in any case.
void AddStage(FlashPlan& plan, const LaterStage& stage, const std::string& told, const std::string& done)
{
    const std::string file = FindLatestFile(stage.family);
    if (file.empty() || (told != "0" && text::Compare(told, RevisionOfFile(file)) >= 0)) return;
    plan.stages.push_back(
        {stage.banner, done, "Power cycle to start " + std::string(stage.part) + " flash!", stage.command, file});
}

void AddLaterStages(FlashPlan& plan, const Reading& reading)
{
    AddStage(plan, fpga, reading.sFPGARev, "Main flash complete!  ");
    const bool behindFPGA = plan.stages.size() > 1;
    AddStage(plan, processor, reading.sBAPIRev, behindFPGA ? "FPGA flash complete! " : "Main flash complete! ");
}

}  // namespace

std::string ResolveFlashFile(const std::string& name)
{
    if (name.empty()) return name;
    const std::string latest = FindLatestFile(name);
    return latest.empty() ? name : latest;
}

int BoardInHand() { return TypeOf(*Session.config, Session.choice, Session.reading); }

std::string BoardNameForLog()
{
    const Board& board = BoardOf(Session.plan->iBoardType);
    switch (board.list) {
    case BoardList::SingleCable: return BoardName(board.type, 0);
    case BoardList::Other: return BoardName(board.type, 1);
    case BoardList::Option: break;
    }
    return Session.plan->row.AntennaName;
}

FlashPlan ResolveBoard(const FlashConfig& config, const BoardChoice& choice, const Reading& reading,
                       const PlanAnswers& answers)
{
    FlashPlan plan;
    plan.iBoardType = TypeOf(config, choice, reading);
    plan.answers = answers;
    const Board& board = BoardOf(plan.iBoardType);
    plan.bSkipParams = choice.pickedRow || board.holdsNoParams;
    plan.bUSBLink = choice.bUSBLink;
    plan.paced = board.paced;
    plan.tellsWholeDegrees = text::Holds(reading.sMainVersion, "QEL JARL");
    plan.sNewRFBootloaderFile = BootloaderFile(config, board, choice.bUSBLink);
    plan.stages.front().banner = board.banner;
    const AntennaRecord* row = RowOf(config, choice, board, reading);
    if (row == nullptr) return plan;

    TakeRow(*row, plan);
    std::string& file = plan.stages.front().sFlashFile;
    plan.offersLibrary = TellsMainVersion(plan.iBoardType) && MayHaveLibrary(reading);
    if (answers.upgradeToGLTV) file = *answers.upgradeToGLTV ? libraryFile : plainFile;
    file = ResolveFlashFile(file);
    FitFileToRFBoard(config, reading, plan);
    FitFileToModel(plan);
    if (answers.flashFile) {
        file = *answers.flashFile;
        if (board.secondFile != nullptr && ProgramFileExists(board.secondFile)) plan.sFlashFileName = board.secondFile;
    }
    if (board.group == BoardGroup::MultiStage) AddLaterStages(plan, reading);
    if (answers.skipParameters) plan.bSkipParams = true;
    return plan;
}
