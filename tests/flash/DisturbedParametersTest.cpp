// The parameters come back, whatever the line does to the commands and replies that read, restore and compare them.

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "forms/frmWizard.h"
#include "persistence/INIUtilities.h"
#include "session/Session.h"
#include "tests/flash/Walker.h"
#include "text/Text.h"

namespace {

struct Disturbance {
    const char* name;
    void (*spoil)(std::string& reply, VirtualComputer& pc);
};

void SayLater(VirtualComputer& pc, double seconds, const std::string& words)
{
    pc.At(seconds, [&pc, words] { pc.Say(words); });
}

// clang-format off
const Disturbance disturbances[] = {
    {"twice", [](std::string& reply, VirtualComputer& pc) { SayLater(pc, 0.7, reply); }},
    {"lost", [](std::string& reply, VirtualComputer&) { reply.clear(); }},
    {"not ended", [](std::string& reply, VirtualComputer&) { reply.resize(reply.size() - 2); }},
    {"in two pieces", [](std::string& reply, VirtualComputer& pc) {
         SayLater(pc, 0.7, reply.substr(reply.size() - 4));
         reply.resize(reply.size() - 4);
     }},
    {"label damaged", [](std::string& reply, VirtualComputer&) { reply[5] = '~'; }},
    {"value damaged", [](std::string& reply, VirtualComputer&) { reply[reply.size() - 3] = '~'; }},
    {"behind another line", [](std::string& reply, VirtualComputer&) { reply = "\r\n>Searching\r\n" + reply; }},
    {"refused", [](std::string& reply, VirtualComputer&) { reply = "\r\n>BIASAZ: ILLEGAL VALUE\r\n"; }},
    {"value altered on its way to the antenna", nullptr},
};
// clang-format on

/// Stands between the program and its antenna. Each command has its reply disturbed once, in turn by each kind; or the
/// commands that begin so have it always, in one mode, by the same kind.
class BadLine {
public:
    BadLine(VirtualComputer& pc, std::size_t turn, int mode = 0, std::string always = {})
        : pc_(pc), turn_(turn), onlyMode_(mode), always_(std::move(always))
    {
        pc.onSent = [this](std::string& bytes) { Send(bytes); };
        pc.onHeard = [this](std::string& bytes) { Hear(bytes); };
    }
    ~BadLine() { pc_.onSent = pc_.onHeard = nullptr; }

private:
    void Send(std::string& bytes)
    {
        mode_ = Session.link.iCommMode;
        kind_ = nullptr;
        if (mode_ != STATE_PREFLASH && mode_ != STATE_POSTFLASH && mode_ != STATE_READ_BACK) return;
        reply_.clear();
        const bool first = seen_.insert(std::to_string(mode_) + bytes).second;
        if (onlyMode_ == 0 && first) kind_ = &disturbances[(turn_ + seen_.size()) % std::size(disturbances)];
        if (onlyMode_ == mode_ && text::StartsWith(bytes, always_)) kind_ = &disturbances[turn_];
        char& last = bytes[bytes.size() - 2];
        if (kind_ != nullptr && kind_->spoil == nullptr && mode_ != STATE_PREFLASH && std::isdigit(last) != 0)
            last = last == '7' ? '8' : '7';
    }
    void Hear(std::string& bytes)
    {
        if (mode_ != Session.link.iCommMode || kind_ == nullptr || kind_->spoil == nullptr) return;
        reply_ += std::exchange(bytes, {});
        if (reply_.size() < 8 || !text::Equal(text::Right(reply_, 2), text::CrLf)) return;
        bytes = std::exchange(reply_, {});
        std::exchange(kind_, nullptr)->spoil(bytes, pc_);
    }

    VirtualComputer& pc_;
    std::size_t turn_;
    int onlyMode_;
    std::string always_;
    int mode_ = 0;
    std::string reply_;
    std::set<std::string> seen_;
    const Disturbance* kind_ = nullptr;
};

std::size_t Turn(const char* name)
{
    const auto at = std::find_if(std::begin(disturbances), std::end(disturbances),
                                 [&](const Disturbance& one) { return text::Equal(one.name, name); });
    return static_cast<std::size_t>(at - std::begin(disturbances));
}

bool Shows(const Account& account, const std::string& words)
{
    return std::any_of(account.pages.begin(), account.pages.end(),
                       [&](const std::string& page) { return text::Holds(page, words); });
}

const std::vector<Road>& RoadsWithParameters()
{
    static const std::vector<Road> roads = [] {
        std::vector<Road> some = Roads();
        std::erase_if(some, [](const Road& road) { return road.unit->keeps == sim::Keeps::Nothing; });
        return some;
    }();
    return roads;
}

constexpr std::size_t undisturbed = std::size(disturbances);

Account Flashed(const Road& road, std::size_t turn)
{
    Walker walker(road);
    EXPECT_TRUE(walker.ToBoards());
    std::optional<BadLine> line;
    if (turn != undisturbed) line.emplace(walker.pc, turn);
    return walker.Flash(road);
}

TEST(EveryBoardWithParameters, HoldsThemAgainWhateverIsDisturbedOnce)
{
    for (const Road& road : RoadsWithParameters()) {
        const Account fresh = Flashed(road, undisturbed);
        for (std::size_t turn = 0; turn < std::size(disturbances); ++turn) {
            const Account account = Flashed(road, turn);
            EXPECT_TRUE(account.kept == fresh.kept && account.finished && Shows(account, "Upload Successful"))
                << road.Name() << ", turn " << turn << ": " << Difference(fresh, account);
        }
    }
}

/// What is disturbed for ever, and what the user reads then.
struct Hopeless {
    int mode;
    const char *command, *kind, *told, *row;
};

const Hopeless hopeless[] = {
    {STATE_POSTFLASH, "DEBUGON", "refused", "The antenna has not confirmed DEBUGON", "BIASAZ\t1.25\t1.25\tyes"},
    {STATE_POSTFLASH, "BIASAZ,", "value altered on its way to the antenna",
     "BIASAZ is 1.27, it was 1.25: enter BIASAZ,1.25", "BIASAZ\t1.25\t1.27\tno"},
    {STATE_POSTFLASH, "", "lost", "The antenna has not confirmed CLEAREE", "BIASEL\t-0.75\t-0.75\tyes"},
    {STATE_READ_BACK, "", "lost", "BIASEL could not be verified, it was -0.75", "BIASEL\t-0.75\tnot told\tno"},
    {STATE_READ_BACK, "BIASEL", "value damaged", "BIASEL could not be verified, it was -0.75",
     "BIASEL\t-0.75\tnot told\tno"},
    {STATE_READ_BACK, "VERSION", "lost", "does not tell its version any more", "BIASAZ\t1.25\t1.25\tyes"},
    {STATE_PREFLASH, "BIASAZ", "value damaged", "BIASAZ was not read before the flash: enter BIASAZ,<value>",
     "BIASAZ\tnot read\tnot told\tno"},
};

TEST(HopelessParameter, IsToldByNameWithItsCommandAndNeverCalledASuccess)
{
    const Road& road = Roads().front();
    const Account fresh = Flashed(road, undisturbed);
    for (const Hopeless& one : hopeless) {
        Walker walker(road);
        ASSERT_TRUE(walker.ToBoards());
        const BadLine line(walker.pc, Turn(one.kind), one.mode, one.command);
        const Account account = walker.Flash(road);
        EXPECT_TRUE(account.finished && Shows(account, one.told)) << one.told << account.pages.back();
        EXPECT_FALSE(Shows(account, "Upload Successful") || Shows(account, "updated successfully")) << one.told;
        EXPECT_TRUE(Shows(account, "box The software is written and the antenna has restarted, but")) << one.told;
        EXPECT_FALSE(Session.restore.bAllBack || Shows(account, "Finished!"));
        const std::vector<std::string>& rows = frmWizard.tblParameters.List();
        EXPECT_EQ(1, std::count(rows.begin(), rows.end(), one.row)) << one.row;
        EXPECT_TRUE(text::Holds(walker.pc.Log(), one.told));
        EXPECT_TRUE(one.mode != STATE_READ_BACK || account.kept == fresh.kept) << one.told;
    }
}

TEST(HopelessParameter, ErasesNothingWhenTheUserDoesNotGoOnWithoutIt)
{
    // All commands: an antenna that is silent is asked about once.
    for (const char* command : {"BIASAZ", "DEBUGON", ""}) {
        Walker walker(Roads().front());
        ASSERT_TRUE(walker.ToBoards());
        const BadLine line(walker.pc, Turn("lost"), STATE_PREFLASH, command);
        walker.pc.answers = {Answer::No};
        walker.Do("cnnnn", Roads().front());
        walker.pc.RunFor(100);
        ASSERT_EQ(1u, walker.pc.boxes.size());
        EXPECT_TRUE(text::Holds(walker.pc.boxes[0].words, *command == '\0' ? "BIASAZ, BIASEL, GYROSFAZ" : command));
        EXPECT_EQ(Answer::No, walker.pc.boxes[0].standard);
        EXPECT_FALSE(text::Holds(walker.pc.sent, "flasha"));
        EXPECT_TRUE(frmWizard.cmdNav[1].Enabled && Session.link.iCommMode == STATE_IDLE);
    }
}

TEST(EveryUnit, HearsWhatTheSettingsAllow)
{
    for (const Road& road : Roads()) {
        Walker walker(road);
        ASSERT_TRUE(walker.ToBoards());
        SetSetting(SETTING_DRY_RUN, "True");
        walker.pc.sent.clear();
        walker.Do("cnwdionwnwnwnw", road);
        EXPECT_EQ("", walker.pc.sent) << road.Name();
        EXPECT_EQ(STEP_FINISHED, ShownStep());
        EXPECT_FALSE(text::Holds(Page(""), "success") || text::Holds(Page(""), "Finished!")) << road.Name();
    }
    Walker walker(Roads().front());
    ASSERT_TRUE(walker.ToBoards());
    SetSetting(SETTING_COMPARE_PARAMETERS, "False");
    walker.pc.onSent = [](std::string&) { EXPECT_NE(STATE_READ_BACK, Session.link.iCommMode); };
    EXPECT_TRUE(Shows(walker.Flash(Roads().front()), "Upload Successful") && Session.restore.bAllBack);
}

}  // namespace
