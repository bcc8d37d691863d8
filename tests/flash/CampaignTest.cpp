// Flashes of every unit with faults by chance: where the program says that all is well, the antenna holds what srec_cat
// makes of the files and the parameters that it held before; and it says something in the end.
//
// The long form: BURNLINE_CAMPAIGN=10000 core-tests --gtest_filter='Campaign*'
// One session alone, with its log: BURNLINE_CAMPAIGN_SEED=<its number>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <numeric>
#include <set>

#include "forms/frmWizard.h"
#include "knowledge/BoardTable.h"
#include "link/Mode.h"
#include "persistence/INIUtilities.h"
#include "platform/Failure.h"
#include "session/Wizard.h"
#include "simulator/AnyFault.h"
#include "tests/flash/FlashFiles.h"
#include "tests/flash/FlashFixture.h"
#include "tests/flash/Walker.h"
#include "text/Text.h"

namespace fs = std::filesystem;

namespace {

#if defined(_WIN32) || defined(__SANITIZE_ADDRESS__)
constexpr std::size_t usualSessions = 200;  // the same core at a fraction of its speed
#else
constexpr std::size_t usualSessions = 2000;
#endif

/// What goes wrong around the antenna: its power goes or its port, it says a line that nobody asked for.
constexpr std::array worldly{"power", "port", "says"};

std::string NameOf(const std::string& words) { return text::Split(words, " ").front(); }
bool IsOfWorld(const std::string& name) { return std::find(worldly.begin(), worldly.end(), name) != worldly.end(); }

/// A fault from some time behind the begin of a phase on.
struct Fault {
    std::string words;
    Phase phase = Phase::Free;
    double after = 0;  // seconds
};

/// What a phase of an undisturbed flash comes to.
struct Share {
    double seconds = 0;
    std::size_t heard = 0, said = 0;  // bytes
};

/// All flash files, large ones.
const fs::path& Home()
{
    static const TempDirectory made(fs::exists("/dev/shm") ? "/dev/shm" : fs::temp_directory_path());
    static const bool written = (WriteProgramFiles(made.path, false, true), true);
    return written ? made.path : made.path;
}

/// Goes through a flash as a careful user does: what the window asks for, and no more.
class Technician : public Walker {
public:
    Technician(const Road& road, bool fast) : Walker(road, Home())
    {
        if (fast) SetSetting(SETTING_USE_FAST_BAUD, "True");
        pc.onBox = [this](const Box& box) { pc.answers = {AnswerTo(box)}; };
        pc.antenna().report = [this](const std::string& words) {
            reports.push_back(words);
            heard += pc.antenna().TakeHeard();
        };
    }

    /// From the choice of the board to the end; behind a success the antenna is switched off and on once more.
    void Flash(const std::vector<Fault>& faults)
    {
        constexpr double patience = 7200;  // seconds; what takes longer has no end
        if (!ToBoards()) throw std::runtime_error("no way to the choice of the board");
        pc.timeLimit = pc.now + 2 * patience;
        end_ = pc.now + patience;
        for (const Fault& fault : faults) Await(fault);
        Look();
        PressBoard(road_.unit->board);
        try {
            pc.RunUntil([this] { return over_ || IsExitRequested(); }, 2 * patience);
        } catch (const Failure&) {
            ReportFailure("Main");  // as the loop does, which then ends
        }
        const std::string& words = frmWizard.lblPickAntennaInfo.Caption;
        withoutParameters = text::Holds(words, "you may set parameters manually");
        succeeded = pc.BoxWasShown("Parameter Upload Successful") ||
                    (ShownStep() == STEP_FINISHED && text::Holds(words, "Software updated successfully"));
        told = told || ShownStep() == STEP_FINISHED;
        for (const bool on : {false, true}) {
            if (!succeeded) return;
            pc.RunFor(15);  // what was sent last still arrives
            Switch(on);
        }
        pc.RunFor(15);
    }

    bool succeeded = false, withoutParameters = false, endless = false, told = false;
    std::map<Phase, Share> shares;
    std::vector<std::string> reports;                 // of the antenna
    std::string heard;                                // by it
    std::size_t sentBefore = 0, receivedAtErase = 0;  // bytes ahead of the flash, and of its erase
    std::map<std::string, int> struck;                // faults of the world

private:
    Answer AnswerTo(const Box& box)
    {
        told = told || box.icon == Icon::Critical || box.icon == Icon::Exclamation;
        if (box.buttons == Buttons::YesNo) return Answer::No;
        if (box.buttons != Buttons::RetryCancel) return Answer::OK;
        if (++questions_ == 2) pc.antenna().SetFault("clear", why_);  // the cable was looked after
        return questions_ <= 4 ? Answer::Retry : Answer::Cancel;
    }

    void Await(const Fault& fault)
    {
        if (PhaseNow() != fault.phase) return pc.At(0.05, [this, fault] { Await(fault); });
        pc.At(fault.after, [this, fault] { Let(fault.words); });
    }

    void Let(const std::string& words)
    {
        const std::string name = NameOf(words);
        const double seconds = text::Val(text::Mid(words, name.size() + 2)) / 1000;
        if (!IsOfWorld(name)) {
            if (!pc.antenna().SetFault(words, why_)) throw std::invalid_argument(words + ": " + why_);
            return;
        }
        if (!pc.antenna().IsPowered() || pc.deviceGone) return;
        ++struck[name];
        if (name == "says") pc.antenna().Print("STATUS OK", pc.now);
        if (name == "power") Switch(false), pc.At(seconds, [this] { Switch(true); });
        if (name == "port") pc.deviceGone = true, pc.At(seconds, [this] { Switch(pc.antenna().IsPowered()); });
    }

    void Measure()
    {
        Share& share = shares[PhaseNow()];
        share.seconds += lookEvery;
        share.heard += pc.sent.size() - sent_;
        share.said += pc.received.size() - received_;
        sent_ = pc.sent.size(), received_ = pc.received.size();
        if (ShownStep() < STEP_5) sentBefore = sent_;
        erased_ = erased_ || PhaseNow() >= Phase::Erasing;
        if (!erased_) receivedAtErase = received_;
        const bool powered = pc.antenna().IsPowered();
        switched_ = PhaseNow() == Phase::Writing ? 0 : switched_ + (wasPowered_ && !powered ? 1 : 0);
        wasPowered_ = powered;
        off_ = powered ? 0 : off_ + 1;
    }

    void Look()
    {
        if (over_) return;
        pc.At(lookEvery, [this] { Look(); });
        Measure();
        endless = pc.now > end_;
        over_ = endless || ShownStep() == STEP_FINISHED;
        if (endless) SetExitRequested(true);  // whatever waits now
        if (over_) return;
        if (off_ == 60) Switch(true);  // nobody leaves it off for ever
        const std::string words = frmWizard.txtStatus.Text() + frmWizard.txtParamsSent.Text();
        const bool waits = text::Holds(frmWizard.lblCommPortStatus.Caption(), "Waiting on");
        ChoosePort();
        if (text::Holds(words, "CLICK BACK TO TRY AGAIN") || text::Holds(words, "CLICK CANCEL BUTTON") ||
            readings_ > 5 || switched_ > 20) {
            told = true;
            Press(frmWizard.cmdNav[0]);
        } else if (ShownStep() == STEP_3 && Press(frmWizard.cmdRetryGetVersions)) {
            ++readings_;
        } else if (frmWizard.lblRedoCOMMPort.Visible() && frmWizard.mnuCommPort.Enabled() && !pc.deviceGone) {
            Press(frmWizard.mnuCommPort_Item[1]);
        } else if (frmWizard.cmdNav[2].Enabled()) {
            pressedAt_ = pc.now;
            Press(frmWizard.cmdNav[2]);
            pressedAt_ = never;
        } else if (waits && frmWizard.txtSendCmd.Enabled() && !frmWizard.txtSendCmd.Locked()) {
            frmWizard.txtSendCmd.KeyPress('\r');
        }
    }

    static constexpr double lookEvery = 0.5;
    std::string why_;
    bool over_ = false, erased_ = false, wasPowered_ = false;
    double end_ = 0;
    int questions_ = 0, readings_ = 0;
    int off_ = 0;       // looks at an antenna without power
    int switched_ = 0;  // how often its switch was used since anything was written
    std::size_t sent_ = 0, received_ = 0;
};

// --- what the antenna ought to hold ----------------------------------------------------------------------------------

/// What srec_cat makes of files that are laid one over the other, the last one on top.
const std::string& JudgedFiles(const std::vector<std::string>& files, std::size_t size)
{
    static std::map<std::vector<std::string>, std::string> judged;
    std::string& image = judged[files];
    std::string input;
    for (const std::string& file : files) {
        if (!image.empty() || file.empty()) continue;
        const std::string top = Quoted(Home() / file) + (text::Right(file, 4) == ".HEX" ? " -Intel " : " -Motorola ");
        input = input.empty() ? top : "'(' " + input + "-exclude -within " + top + "')' " + top;
    }
    if (image.empty()) image = Judged("'(' " + input + "')'", size);
    return image;
}

/// Each memory that the plan fills: as it ought to be, as it is, and its file.
struct Judgement {
    std::string wanted, held, file;
};

std::vector<Judgement> Memories(const sim::Antenna& antenna)
{
    const FlashPlan& plan = *Session.plan;
    const auto held = [](const sim::Memory& memory) {
        const auto image = memory.Image();
        return std::string(image.begin(), image.end());
    };
    std::vector<Judgement> all;
    const sim::Areas* areas = antenna.Kind().areas;
    for (const FlashStage& stage : plan.stages) {
        const int part = text::Holds(stage.sFlashCmd, "FPGA") ? 2 : (text::Holds(stage.sFlashCmd, "BAPI") ? 3 : 1);
        const std::string& file = stage.sFlashFile;
        if (!areas) all.push_back({JudgedFiles({file}, 0), held(antenna.Stage(part)), file});
    }
    if (!areas) return all;
    const std::string& image =
        JudgedFiles({plan.stages[0].sFlashFile, plan.sFlashFileName, plan.sNewRFBootloaderFile}, 131072);
    std::string wanted(areas->mainEnd, '\xFF');
    for (const auto& [from, to] : {std::pair{areas->bootStart, areas->bootEnd}, {areas->mainStart, areas->mainEnd}})
        std::copy(&image[from], &image[to], &wanted[from]);
    all.push_back({wanted, held(antenna.Flash()), ""});
    if (antenna.BootImage().BytesWritten() == 0) return all;
    const std::string& loader = JudgedFiles({Session.config->sBootloaderUpgradeFile}, 131072);
    all.push_back({std::string(1024, '\xFF') + loader.substr(1024, 32256 - 1024), held(antenna.BootImage()), "new"});
    return all;
}

// --- what the protocol itself can't show -----------------------------------------------------------------------------

constexpr const char* cancelled = "changes that cancel out in a block's sum";
constexpr const char* sound = "a line or record changed into another sound one";
constexpr const char* inUpgrade =
    "bytes changed on their way into a new boot loader, whose blocks are answered by \"$\"";
constexpr const char* echoBack = "a value changed on its way out, and its echo changed back";
constexpr const char* cut = "power that goes between the last acknowledgement and its being kept";
constexpr const char* misread = "a value changed on its way in, to another whole one";

std::ptrdiff_t Differing(std::string_view a, std::string_view b)
{
    const std::size_t both = std::min(a.size(), b.size());
    return std::inner_product(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(both), b.begin(),
                              static_cast<std::ptrdiff_t>(std::max(a.size(), b.size()) - both), std::plus(),
                              std::not_equal_to());
}

/// Every block's sum is right though its bytes are not.
bool SumsAreRight(const std::string& wanted, const std::string& held)
{
    for (std::size_t at = 0; at < std::max(held.size(), wanted.size()); at += 64)
        if (wanted.size() != held.size() ||
            (std::accumulate(&held[at], &held[at] + 64, 0) - std::accumulate(&wanted[at], &wanted[at] + 64, 0)) % 256)
            return false;
    return true;
}

/// Lines were heard that are sound, though not the file's; nothing is wrong but what they write, and what the lines in
/// whose places they stood would have written.
bool LinesWereSound(std::string wanted, const std::string& held, const std::string& heard, const std::string& file)
{
    const auto forget = [&](const std::string& line) {
        std::string why;
        const auto hex = sim::ReadHexRecord(line, why);
        const auto record = sim::ReadSRecord(line, why);
        const std::size_t from = hex ? hex->address : (record ? record->address : wanted.size());
        const std::size_t size = hex ? hex->data.size() : (record ? record->data.size() : 0);
        for (std::size_t at = from; at < std::min({from + size, wanted.size(), held.size()}); ++at)
            wanted[at] = held[at];
        return hex || record;
    };
    const std::vector<std::string> lines = text::Split(text::Replace(file, "\n", ""), "\r");
    for (const std::string& line : text::Split(text::Replace(heard, "\n", ""), "\r"))
        for (const std::string& other : lines)
            if (other.size() == line.size() && other != line && Differing(other, line) < 7 && forget(line))
                forget(other);
    return wanted == held;
}

/// The last setting of a parameter: the command, and what the antenna answered.
std::pair<std::string, std::string> LastSetting(const Technician& technician, const std::string& word)
{
    std::pair<std::string, std::string> last;
    for (const std::string& report : technician.reports) {
        const std::size_t end = report.find("\": >");
        if (end != std::string::npos && text::StartsWith(text::Upper(report), "\"" + word + ",") &&
            !text::Holds(report, "ERROR"))
            last = {report.substr(1, end - 1), report.substr(end + 4) + "\r\n"};
    }
    return last;
}

/// The command that sets a parameter, up to its first comma.
std::string WordOf(const std::string& parameter)
{
    const std::string word = text::Split(parameter, ",").front();
    return word == "CALUP" || word == "SERNUM" ? "=" + word : word;
}

/// Why nobody could have seen that a parameter has another value; empty when one could.
std::string UnshownOf(const std::string& word, const Technician& technician, const std::string& right)
{
    const auto [command, wrong] = LastSetting(technician, word);
    if (command.empty() || right.empty()) return {};
    if (technician.pc.sent.find(command + "\r", technician.sentBefore) != std::string::npos) return {};
    const std::string received = technician.pc.received.substr(technician.receivedAtErase);
    return text::Holds(received, right) && !text::Holds(received, wrong) ? echoBack : "";
}

/// The lines that told the parameters ahead of the flash, by the word of their commands.
std::multimap<std::string, std::string> LinesRead()
{
    std::multimap<std::string, std::string> lines;
    for (const CapturedParameter& parameter : Session.captured.parameters)
        lines.emplace(text::Split(parameter.sCommand, ",").front(), parameter.sLine);
    return lines;
}

/// A parameter was read from a whole line that said something else than the antenna did.
bool WasMisread(const std::string& word, const std::multimap<std::string, std::string>& right,
                const std::string& received)
{
    const std::multimap<std::string, std::string> read = LinesRead();
    const auto [from, to] = read.equal_range(word);
    return std::any_of(from, to, [&](const auto& line) {
        return std::find(right.begin(), right.end(), line) == right.end() && text::Holds(received, line.second + "\r");
    });
}

// --- one session -----------------------------------------------------------------------------------------------------

struct Undisturbed {
    std::map<Phase, Share> shares;
    std::size_t units = 1;
    std::string row;
    std::vector<std::string> commands;
    std::vector<std::pair<std::string, std::string>> parameters;
    std::map<std::string, std::string> told;  // how the antenna confirms them, by their words
    std::multimap<std::string, std::string> read;
};

struct Verdict {
    enum End { Success, Apart, Told, FalseSuccess, WithoutEnd, WithoutWord } end = Success;
    std::string wrong, cause, log;
    std::set<std::string> unshown;
    std::map<std::string, int> struck;

    void Wrong(const std::string& kind, const std::string& what, const std::string& unshownBy)
    {
        wrong += kind + ": " + what + "; ";
        if (!unshownBy.empty()) unshown.insert(unshownBy);
        if (unshownBy.empty() && !text::Holds(cause, kind)) cause += " " + kind;
        end = unshownBy.empty() ? FalseSuccess : std::max(end, Apart);
    }
};

const std::string ends[] = {"success",        "success, but what is wrong can't be shown",
                            "failure, told",  "FALSE SUCCESS",
                            "WITHOUT AN END", "WITHOUT A WORD"};

/// The antenna prints a number as it was entered: 0.00102 is 0.001020.
bool IsSameValue(const std::string& one, const std::string& other)
{
    char *end = nullptr, *otherEnd = nullptr;
    const double number = std::strtod(one.c_str(), &end), otherNumber = std::strtod(other.c_str(), &otherEnd);
    return one == other || (*end == 0 && *otherEnd == 0 && end != one.c_str() && number == otherNumber);
}

void Judge(Technician& technician, const Undisturbed& undisturbed, Verdict& verdict)
{
    const sim::Antenna& antenna = technician.pc.antenna();
    const bool blocks = antenna.Kind().areas != nullptr;
    const std::string& row = Session.plan->row.AntennaName;
    if (row != undisturbed.row) verdict.Wrong("row", row, "");
    for (const auto& [wanted, held, file] : Memories(antenna)) {
        if (wanted == held) continue;
        std::string unshown;
        if (file == "new" && text::Holds(technician.pc.sent, "PGM_908OK" + wanted.substr(1024))) unshown = inUpgrade;
        if (blocks && SumsAreRight(wanted, held)) unshown = cancelled;
        if (!blocks && LinesWereSound(wanted, held, technician.heard, ReadFile(Home() / file))) unshown = sound;
        verdict.Wrong("memory", std::to_string(Differing(wanted, held)) + " bytes " + file, unshown);
    }
    // The power may go behind the last acknowledgement, before the last line is kept.
    const bool late = verdict.wrong.empty() && technician.struck.contains("power");
    if (!antenna.HasSoftware()) verdict.Wrong("software", antenna.StateWords(), late ? cut : "");
    const auto held = Preserved(antenna);
    for (std::size_t at = 0; at < undisturbed.parameters.size() && !technician.withoutParameters; ++at) {
        const auto& [name, value] = undisturbed.parameters[at];
        if (!IsSameValue(held.at(at).second, value)) {
            const std::string word = WordOf(name);
            std::string unshown = UnshownOf(word, technician, undisturbed.told.at(word));
            if (WasMisread(word, undisturbed.read, technician.pc.received)) unshown = misread;
            verdict.Wrong("parameter", name + " is " + held[at].second + " in place of " + value, unshown);
        }
    }
}

const Undisturbed& UndisturbedOf(const Road& road)
{
    static std::map<std::string, Undisturbed> all;
    Undisturbed& one = all[road.Name()];
    if (!one.row.empty()) return one;
    Technician technician(road, false);
    const sim::Parameters before = technician.pc.antenna().Held();
    technician.Flash({});
    one.shares = technician.shares;
    one.units = static_cast<std::size_t>(std::max(technician.pc.antenna().GoodLines(), 1));
    one.row = Session.plan->row.AntennaName;
    one.read = LinesRead();
    for (const std::string& command : Session.plan->sPreflashCmds)
        if (!command.empty() && command.find(' ') == std::string::npos) one.commands.push_back(command);
    Verdict verdict;
    Judge(technician, one, verdict);
    EXPECT_TRUE(technician.succeeded && verdict.wrong.empty()) << road.Name() << verdict.wrong << technician.pc.Log();
    one.parameters = Preserved(technician.pc.antenna());
    for (const auto& [name, value] : one.parameters) {
        one.told[WordOf(name)] = LastSetting(technician, WordOf(name)).second;
        EXPECT_TRUE(road.way == Road::Library || before.Value(name) == value) << road.Name() << " " << name << value;
    }
    return one;
}

struct FlashSession {
    explicit FlashSession(std::size_t seed)
        : road(Roads()[seed % Roads().size()]), undisturbed(UndisturbedOf(road)), dice(seed)
    {
        for (int count = dice.Of(std::array{1, 1, 1, 2, 3}); count > 0; --count) faults.push_back(AnyFault());
    }

    /// Something from any phase on, at its begin or later.
    Fault AnyFault()
    {
        std::vector<std::pair<Phase, Share>> shares(undisturbed.shares.begin(), undisturbed.shares.end());
        std::erase_if(shares, [](const auto& share) { return share.first == Phase::Free; });
        const auto& [phase, share] = dice.Of(shares);
        const auto moment = [&] {
            return static_cast<double>(dice.Below(static_cast<std::size_t>(share.seconds * 1000))) / 1000;
        };
        if (dice.Below(8) == 0)
            return {dice.Of(worldly) + (" " + std::to_string(200 + dice.Spread(60000))), phase, moment()};
        sim::Reach reach{undisturbed.units, share.heard, share.said, 20, undisturbed.commands, phase == Phase::Reading};
        if (phase == Phase::Writing) reach.answers = reach.units;
        const std::string words = sim::AnyFault(*road.unit, reach, dice);
        return {words, phase, dice.Below(3) == 0 ? moment() : 0};
    }

    Verdict Outcome()
    {
        Verdict verdict;
        Technician technician(road, road.unit->board == 21 && dice.Below(2) == 0);
        try {
            technician.Flash(faults);
            if (technician.succeeded)
                Judge(technician, undisturbed, verdict);
            else
                verdict.end =
                    technician.endless ? Verdict::WithoutEnd : (technician.told ? Verdict::Told : Verdict::WithoutWord);
        } catch (const std::exception& failure) {
            verdict.end = Verdict::WithoutWord;
            verdict.wrong = failure.what();
        }
        const sim::Antenna& antenna = technician.pc.antenna();
        if (verdict.end == Verdict::WithoutEnd) {
            verdict.cause = " in mode " + text::Num(Session.link.iCommMode);
            verdict.wrong =
                Page("").substr(0, 7) + frmWizard.lblFlashStatus[0].Caption() + ", antenna: " + antenna.StateWords();
        }
        constexpr std::array kinds{" (lines)", " (blocks)", " (old blocks)", " (records)"};
        verdict.cause = ends[verdict.end] + verdict.cause + kinds.at(static_cast<std::size_t>(road.unit->loader));
        verdict.struck = antenna.SetFaults().Struck();
        verdict.struck.insert(technician.struck.begin(), technician.struck.end());
        verdict.log = technician.pc.Log();
        return verdict;
    }

    const Road& road;
    const Undisturbed& undisturbed;
    sim::Dice dice;
    std::vector<Fault> faults;
};

TEST(PortAway, CostsTimeAndNothingElseWheneverItGoes)
{
    std::size_t turn = 0;
    for (std::size_t road = 0; road < Roads().size(); ++road)
        for (const auto& [phase, share] : UndisturbedOf(Roads()[road]).shares) {
            if (phase == Phase::Free || (usualSessions < 1000 && road % 8 > 0)) continue;
            constexpr std::array away{300, 3000, 30000, 300000};  // milliseconds
            constexpr std::array behind{0.0, 0.5, 0.95};          // of the phase
            FlashSession session(road);
            session.faults = {{"port " + std::to_string(away[turn % away.size()]), phase,
                               share.seconds * behind[turn % behind.size()]}};
            const Verdict verdict = session.Outcome();
            // A block can't be sent again, and six boards get no second try in the same run: they say so.
            const bool mayFail = !BoardOf(session.road.unit->board).retriesFlash && phase >= Phase::Resetting;
            EXPECT_TRUE(verdict.end == Verdict::Success || (mayFail && verdict.end == Verdict::Told))
                << session.road.Name() << " " << session.faults[0].words << " " << session.faults[0].after
                << " s behind " << static_cast<int>(phase) << verdict.cause << verdict.wrong
                << text::Right(verdict.log, 1500);
            ++turn;
        }
}

std::size_t Wanted(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? 0 : static_cast<std::size_t>(std::atoi(value));
}

std::string Names(const std::map<std::string, int>& counted)
{
    std::string names;
    for (const auto& [name, count] : counted) names += (names.empty() ? "" : ", ") + name + " " + std::to_string(count);
    return names;
}

TEST(Campaign, FinishedIsSaidOfAnAntennaThatIsRightAndOfNoOther)
{
    constexpr const char* phases[] = {"free",    "reading", "talking", "saving",   "resetting",
                                      "erasing", "writing", "failed",  "restoring"};
    const std::size_t only = Wanted("BURNLINE_CAMPAIGN_SEED"), wanted = Wanted("BURNLINE_CAMPAIGN");
    std::map<std::string, int> endings, unshown, struck;
    std::map<std::string, std::multimap<std::size_t, std::string>>
        causes;  // each with its sessions, the shortest first
    for (std::size_t seed = std::max<std::size_t>(only, 1); seed <= (only > 0     ? only
                                                                     : wanted > 0 ? wanted
                                                                                  : usualSessions);
         ++seed) {
        FlashSession session(seed);
        const Verdict verdict = session.Outcome();
        ++endings[ends[verdict.end]];
        for (const std::string& name : verdict.unshown) ++unshown[name];
        for (const auto& [name, times] : verdict.struck) ++struck[name];
        if (only == 0 && (verdict.end == Verdict::Success || verdict.end == Verdict::Told)) continue;
        auto& sessions = causes[verdict.cause];
        sessions.emplace(session.faults.size(), std::to_string(seed) + " (" + Names(verdict.struck) + ")");
        std::cout << "BURNLINE_CAMPAIGN_SEED=" << seed << " " << session.road.Name() << ": " << verdict.cause << " "
                  << verdict.wrong;
        for (const Fault& fault : session.faults)
            std::cout << "\n    fault " << fault.words << " (" << fault.after << " s behind the begin of "
                      << phases[static_cast<int>(fault.phase)] << ")";
        std::cout << "\n";
        if (sessions.size() == 1) std::cout << text::Right(verdict.log, only > 0 ? verdict.log.size() : 400) << "\n";
    }
    std::cout << Names(endings) << "\nfaults, by the sessions in which they struck: " << Names(struck)
              << "\nnot to be shown by the protocol: " << Names(unshown) << "\n";
    for (const auto& [cause, sessions] : causes) {
        std::cout << sessions.size() << " x " << cause << ":";
        for (auto [at, left] = std::pair{sessions.begin(), 10}; at != sessions.end() && left > 0; ++at, --left)
            std::cout << " " << at->second;
        std::cout << std::endl;
    }
    for (const int end : {Verdict::FalseSuccess, Verdict::WithoutEnd, Verdict::WithoutWord})
        EXPECT_EQ(0, endings[ends[end]]) << ends[end];
    std::vector<std::string> names = sim::AnyFaultNames();
    names.insert(names.end(), worldly.begin(), worldly.end());
    for (const std::string& name : names)
        EXPECT_TRUE(only > 0 || usualSessions < 1000 || struck[name] > 0) << name << " has never struck";
}

}  // namespace
