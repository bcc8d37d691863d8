#pragma once
// A technician who goes through the wizard by what its forms show, with one antenna after the other in one run of the
// program, and keeps account of what was shown, what each antenna heard and what it holds in the end.

#include <random>
#include <string>
#include <vector>

#include "simulator/Units.h"
#include "tests/VirtualComputer.h"
#include "tests/flash/Pages.h"

/// An antenna and the way its flash goes: USB and the satellite library are offered for some of them alone.
struct Road {
    enum Way { RS232, USB, Library };
    const sim::Unit* unit;
    Way way;
    std::string Name() const;
};

/// Every simulated unit, and those with a second way twice.
const std::vector<Road>& Roads();

class Walker {
public:
    /// The program is started, with the road's antenna at its port, in a directory with all flash files.
    explicit Walker(const Road& road, const std::filesystem::path& home = {});

    /// Another antenna, unused, takes the place of the present one and starts.
    void Plug(const Road& road);

    /// To the choice of the board, from wherever; false when there is no way.
    bool ToBoards();

    /// From the choice of the board to the last step, all noted. One that falters leaves a query unanswered, and its
    /// transfer fails once.
    Account Flash(const Road& road, bool falters = false);

    /// Does one thing after the other, each named by a letter of the table in the source. `next` is the antenna that
    /// comes afterwards.
    void Do(const std::string& moves, const Road& next);

    /// `presses` times anything that is on but what ends the program, with any antenna in between. A flash that is
    /// begun gets an antenna that fits and goes to its end. `trail` becomes what was pressed.
    void Roam(unsigned seed, int presses, std::string& trail);

    VirtualComputer pc;

protected:
    void ChoosePort();
    void Switch(bool on);

    static constexpr double never = 1e12;
    Road road_;
    bool usb_ = false;
    double pressedAt_ = never;  // when the press that hasn't come back yet was made, seconds

private:
    bool Next(double seconds);
    void Finish();
    void Watch(int turn);
    void Connect(const Road& road);
    void SetFault(const std::string& words);
    void FailTransfer(int times);
    void Stroll();
    void PressAnything();
    void PressOrChoose(Form& form, Control& control);
    bool BeginFlash();
    std::size_t Random(std::size_t below) { return random_() % below; }

    int turn_ = 0;   // of the watch over the antenna's switch; an older one ends
    int asked_ = 0;  // how often in a row it saw the power asked for, twice a second
    Account account_;
    std::mt19937 random_;
    int presses_ = 0;  // that Roam has left
    std::string* trail_ = nullptr;
    int held_ = 0;  // how often in a row a flash let nothing be pressed
    Form* modal_ = nullptr;
};
