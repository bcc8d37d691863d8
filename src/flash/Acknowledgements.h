#pragma once
// What the answers of the line or record in flight add up to. Each time it is sent it owes one answer; until all that
// it owes have come, or can come no more, nothing new goes out: so each answer belongs to what is in flight.

#include <string>

/// Answers that one piece of text holds.
struct Answers {
    int acknowledged = 0;
    int refused = 0;
};

enum class Standing {
    Unanswered,  // none has come, or not all of them: more may come
    In,          // the antenna has it
    Refused,     // it hasn't: each answer that came is a refusal
};

/// The next line or record is in flight from here on.
void BeginUnit();

/// It is sent; one more answer is owed.
void NoteSend();

/// Adds what has come. What nobody owes, like an answer that the line has doubled, is dropped. The first answer that
/// took longer than a second is told.
Standing NoteAnswers(const Answers& answers);

/// The same for a line or record. An answer that comes before its line can have left may be that of the line before,
/// doubled: it counts only when no other one follows for a moment.
Standing NoteLineAnswers(const Answers& answers);

/// How it stands when nothing more is waited for.
Standing StandingNow();

/// True while answers are owed that may still come.
bool IsAnswerOwed();

/// How long an answer may take, in ticks of 100 ms: `usual` ticks, or longer behind an answer of this flash that was
/// slower.
short PatienceTicks(short usual);

/// How long the line has to be quiet until what is still owed counts as lost: longer than the slowest answer of this
/// flash, and a second at least.
short QuietTicks();
