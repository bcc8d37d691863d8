#pragma once
// The boards as STEP_2 offers them.

#include <string>
#include <vector>

struct OfferedBoard {
    std::string name;
    int type;
    int table;  // 0: cboBoardToFlash, 1: cboOtherBoard, -1: an option
    int index;  // the entry of the list, or the option
};

/// All of them, in the order of the form.
std::vector<OfferedBoard> AllBoards();

/// The board that is meant by a name or the number of its type; one that is told by its version reply is asked for as
/// "RF board". Null, with words that say why, when there is none, or more than one.
const OfferedBoard* FindBoard(const std::vector<OfferedBoard>& boards, const std::string& wanted, std::string& why);

/// Chooses it on STEP_2.
void PressBoard(const OfferedBoard& board);
