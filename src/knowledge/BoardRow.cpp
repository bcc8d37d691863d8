#include "knowledge/BoardRow.h"

#include <limits>
#include <stdexcept>

#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "knowledge/Utilities.h"
#include "text/Text.h"

namespace {

FileArguments Arguments(const std::string& size, const std::string& offset, const std::string& check)
{
    // A row may end ahead of numbers that its board has no use for.
    const auto number = [](const std::string& field) { return field.empty() ? 0 : text::ToLong(field); };
    return {number(size), number(offset), number(check)};
}

/// "DELAYXMIT 12": a pause of 12 ticks between two lines.
std::int16_t PauseIn(const std::string& extra)
{
    if (extra.empty()) return 0;
    const std::int32_t ticks = text::ToLong(text::Mid(extra, std::string_view("DELAYXMIT").size() + 1));
    if (ticks < 0 || ticks > std::numeric_limits<std::int16_t>::max())
        throw std::overflow_error("a pause of " + text::Num(ticks) + " ticks");
    return static_cast<std::int16_t>(ticks);
}

bool TakesLines(int boardType) { return BoardOf(boardType).group == BoardGroup::Line; }

}  // namespace

BoardRow ReadRow(const AntennaRecord& row, int boardType)
{
    BoardRow read;
    read.FirstFile = Arguments(row.ImageSize, row.AddressOffset, row.CheckValue);
    read.FlashFile = text::Trim(row.FlashFiles);
    if (TakesLines(boardType)) {
        read.PauseTicks = PauseIn(row.Extra1);
        return read;
    }
    const std::size_t colon = row.FlashFiles.find(':');
    if (colon == std::string::npos) return read;
    read.FlashFile = text::Trim(row.FlashFiles.substr(0, colon));
    read.SecondFlashFile = text::Trim(row.FlashFiles.substr(colon + 1));
    read.SecondFile = Arguments(row.Extra1, row.Extra2, row.Extra3);
    return read;
}

void TakeRow(const AntennaRecord& row)
{
    const BoardRow read = ReadRow(row, Session.iBoardType);
    if (TakesLines(Session.iBoardType)) {
        Session.iLinePauseTicks = read.PauseTicks;
        Session.iDelayTicks = read.PauseTicks;
        if (read.PauseTicks > 0) frmWizard.Timer2.Enabled = true;
    }
    Session.sFlashFile = read.FlashFile;
    Session.sFlashFileName = read.SecondFlashFile;
    Session.FirstFile = read.FirstFile;
    Session.SecondFile = read.SecondFile;
    Session.sBoardSignOn = text::Trim(row.SignOn);
    Session.sFlashCmd = text::Trim(row.FlashCmd);
    Session.sPreflashCmds = CommandsOf(row.PreflashLine);
    Session.iPreflashCmdIdx = 0;
    Session.sPostflashCmds = CommandsOf(row.PostflashLine);
    Session.iPostflashCmdIdx = 0;
}
