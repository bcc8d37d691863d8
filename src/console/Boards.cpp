#include "console/Boards.h"

#include <algorithm>

#include "console/Choices.h"
#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "text/Text.h"

std::vector<OfferedBoard> AllBoards()
{
    std::vector<OfferedBoard> boards;
    for (const int option : {0, 1}) boards.push_back({frmWizard.optBoardToFlash[option].Caption, option, -1, option});
    for (const int table : {0, 1})
        for (int index = 1; !BoardName(index, static_cast<unsigned>(table)).empty(); ++index)
            boards.push_back({BoardName(index, static_cast<unsigned>(table)),
                              BoardTypeOf(index, static_cast<unsigned>(table)), table, index});
    return boards;
}

const OfferedBoard* FindBoard(const std::vector<OfferedBoard>& boards, const std::string& wanted, std::string& why)
{
    if (text::IsNumeric(wanted)) {
        constexpr int rfBoard = 1;
        const double number = text::Val(wanted);
        const bool toldByReply = number == 20 || number == 21;
        const auto found = std::find_if(boards.begin(), boards.end(), [&](const OfferedBoard& board) {
            return board.type == (toldByReply ? rfBoard : number);
        });
        if (found != boards.end()) return &*found;
        why = "There is no board of type " + wanted + "; types are 0 to 21.";
        return nullptr;
    }
    std::vector<std::string> names;
    for (const OfferedBoard& board : boards) names.push_back(board.name);
    const int meant = EntryMeant(wanted, names);
    if (meant >= 0) return &boards[static_cast<std::size_t>(meant)];
    why = meant == -2 ? "More than one board's name holds \"" + wanted + "\"; --list-boards has them all."
                      : "There is no board \"" + wanted + "\"; --list-boards has them all.";
    return nullptr;
}

void PressBoard(const OfferedBoard& board)
{
    if (board.table == 0)
        frmWizard.cboBoardToFlash.Select(board.index);
    else if (board.table == 1)
        frmWizard.cboOtherBoard.Select(board.index);
    else
        SelectOption(frmWizard.Self, frmWizard.optBoardToFlash[board.index]);
}
