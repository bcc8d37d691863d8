#include "flash/Acknowledgements.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "display/Display.h"
#include "persistence/Logs.h"
#include "platform/Computer.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "text/Text.h"

namespace {

constexpr double lateSeconds = 1;
constexpr double ticksASecond = 10;
constexpr short mostTicks = 300;

int Came() { return Session.attempt.iAcknowledged + Session.attempt.iRefused; }

/// Answers come in the order of the sends. While some are missing it isn't known whose answer came, so that only a unit
/// that has all of them tells how slow the antenna is.
void NoteSlowness()
{
    const double slowest =
        *std::max_element(Session.attempt.answeredAfter.begin(), Session.attempt.answeredAfter.end());
    Session.flash.slowestAnswer = std::max(Session.flash.slowestAnswer, slowest);
    if (slowest <= lateSeconds || Session.flash.bLateTold) return;
    Session.flash.bLateTold = true;
    const long tenths = std::lround(slowest * 10);
    const std::string words = "The antenna answers late, after " + text::Num(tenths / 10) + "." +
                              text::Num(tenths % 10) + " s. It is waited for as long from now on.";
    StatusTextUpdate(words);
    WriteLogLine("++>" + words);
}

}  // namespace

void BeginUnit()
{
    Session.attempt.iAcknowledged = Session.attempt.iRefused = 0;
    Session.attempt.bEarly = false;
    Session.attempt.sentAt.clear();
    Session.attempt.answeredAfter.clear();
}

/// True when the unit can't have left yet, on a line that takes its time: nothing has come so early but now and then.
bool IsTooEarly()
{
    constexpr int fewest = 10, often = 10;
    constexpr double surely = 0.7;
    constexpr double bitsAByte = 10;
    if (Session.attempt.sentAt.size() != 1) return false;
    const double speed = text::Val(MSComm1->Settings());
    const double leaves = static_cast<double>(Session.attempt.vCurrentLine.size()) * bitsAByte / std::max(speed, 1.0);
    const bool early = computer->Seconds() - Session.attempt.sentAt.front() < leaves * surely;
    ++(early ? Session.flash.iEarly : Session.flash.iTimely);
    return early && Session.flash.iTimely >= fewest + often * (Session.flash.iEarly - 1);
}

void NoteSend() { Session.attempt.sentAt.push_back(computer->Seconds()); }

bool IsAnswerOwed() { return Came() < static_cast<int>(Session.attempt.sentAt.size()); }

Standing NoteAnswers(const Answers& answers)
{
    if (!IsAnswerOwed()) return Standing::Unanswered;
    const bool single = Session.attempt.sentAt.size() == 1;
    // To a line that was sent once, "$" counts whatever stands behind it.
    const int refused = single && answers.acknowledged > 0 ? 0 : answers.refused;
    for (int answer = 0; answer < answers.acknowledged + refused && IsAnswerOwed(); ++answer) {
        const auto which = static_cast<std::size_t>(Came());
        Session.attempt.answeredAfter.push_back(computer->Seconds() - Session.attempt.sentAt[which]);
        ++(answer < answers.acknowledged ? Session.attempt.iAcknowledged : Session.attempt.iRefused);
    }
    if (IsAnswerOwed()) return Standing::Unanswered;
    NoteSlowness();
    return StandingNow();
}

Standing NoteLineAnswers(const Answers& answers)
{
    const bool wasEarly = std::exchange(Session.attempt.bEarly, false);
    if (!wasEarly && answers.acknowledged > 0 && IsTooEarly()) {
        Session.attempt.bEarly = true;
        return Standing::Unanswered;
    }
    return NoteAnswers(answers);
}

Standing StandingNow()
{
    if (Session.attempt.bEarly || Session.attempt.iAcknowledged > 0) return Standing::In;
    return Session.attempt.iRefused > 0 ? Standing::Refused : Standing::Unanswered;
}

short PatienceTicks(short usual)
{
    const double slowest = std::ceil(Session.flash.slowestAnswer * ticksASecond) + 5;
    return Session.flash.slowestAnswer > lateSeconds ? static_cast<short>(std::clamp<double>(slowest, usual, mostTicks))
                                                     : usual;
}

short QuietTicks()
{
    constexpr double moment = 0.2;
    if (Session.attempt.bEarly)
        return static_cast<short>(std::ceil((Session.flash.slowestAnswer + moment) * ticksASecond));
    // An answer to a unit that was sent more than once may be to the first send.
    constexpr double longest = 20, margin = 1.5;
    const double sent = Session.attempt.sentAt.empty() ? computer->Seconds() : Session.attempt.sentAt.front();
    const double atMost = std::min(computer->Seconds() - sent, longest);
    const double quiet = std::max(lateSeconds, margin * std::max(Session.flash.slowestAnswer, atMost));
    return static_cast<short>(std::min<double>(std::ceil(quiet * ticksASecond) + 1, mostTicks));
}
