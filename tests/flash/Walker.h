#pragma once
// A technician who goes through the wizard by what its forms show, with one antenna after the other in one run of the
// program, and keeps account of what was shown, what each antenna heard and what it holds in the end.

#include <functional>
#include <string>
#include <vector>

#include "simulator/Units.h"
#include "tests/VirtualComputer.h"

/// An antenna and the way its flash goes: USB and the satellite library are only offered for some of them.
struct Road {
    enum Way { RS232, USB, Library };
    const sim::Unit* unit;
    Way way;
    std::string Name() const;
};

/// Every simulated unit, and those with a second way twice.
const std::vector<Road>& Roads();

/// What one antenna's road from the choice of its board to the last step comes to.
struct Account {
    std::string heard;               // all bytes that the program wrote
    std::size_t planned = 0;         // how many of them before STEP_3 was left
    std::vector<std::string> pages;  // each step as it was entered and as it was left, each dialog and each box
    std::string kept;                // the antenna's memory, then its parameters
    bool finished = false;
};

/// What differs first in the pages, in the bytes and in the antenna; empty when nothing does.
std::string Difference(const Account& fresh, const Account& second);

class Walker {
public:
    /// The program is started, with the road's antenna at its port.
    explicit Walker(const Road& road);

    /// Another antenna, unused, takes the place of the present one and starts.
    void Plug(const Road& road);

    /// To the choice of the board, from wherever; false when there is no way.
    bool ToBoards();

    /// From the choice of the board to the last step, all noted.
    Account Flash(const Road& road);

    VirtualComputer pc;

private:
    bool Next(double seconds);
    void Finish(double seconds);
    void Look(const std::string& when);
    void Watch(int turn);
    void Switch(bool on);

    Road road_;
    bool usb_ = false;
    int turn_ = 0;   // of the watch over the antenna's switch; an older one ends
    int asked_ = 0;  // how often in a row it saw the power asked for, twice a second
    Account account_;
    std::function<void(Form&)> answer_;
};

/// The step that is shown.
int ShownStep();
