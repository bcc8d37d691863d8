#pragma once
// Reads the forms as a user does, and tells what is new on them.

#include <deque>
#include <string>
#include <vector>

#include "console/Voice.h"
#include "forms/Control.h"

class Reporter {
public:
    explicit Reporter(Voice& voice);

    /// A board is being written.
    static bool IsTransfer();

    /// Tells what has changed since the last look.
    void Look();

private:
    /// A text that grows by lines.
    struct Growing {
        const Control& box;
        const char* event;
        int firstStep;  // ahead of it the text isn't in view, and what it asks for would come too early
        std::size_t told = 0;
    };
    /// A text that is replaced.
    struct Replaced {
        const Control& label;
        const char* event;
        int step;              // where it is in view; -1: everywhere
        bool oneSentence;      // told in one line
        std::string standing;  // what always stands there and is no news
        std::string told = {};
    };

    void TellStep();
    void TellNewLines(Growing& text);
    void TellReplaced(Replaced& text);
    void TellParameters();
    void ShowProgress();
    void EndTransfer();
    Progress TransferNow();

    Voice& voice_;
    unsigned long seen_ = 0;
    std::string lastLine_;
    int step_ = -1;
    bool parametersTold_ = false;
    std::vector<Growing> growing_;
    std::vector<Replaced> replaced_;

    /// Bytes sent at a moment, for the rate.
    struct Sample {
        double seconds;
        long bytes;
    };
    std::deque<Sample> samples_;
    bool inTransfer_ = false;
    bool isUpgrade_ = false;  // and it is the boot loader's
};
