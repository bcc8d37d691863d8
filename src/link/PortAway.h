#pragma once
// A port that goes under the program: the plug was pulled, or the antenna that its adapter lives on lost its power.
// While it is away the link's clock stands still: no tick is spent, nothing is sent, no mode changes. What was in
// flight counts as unanswered when it is back.

struct Failure;

bool IsPortAway();

/// True for a failure that a port raises when it is gone or closed.
bool IsOfPort(const Failure& failure);

/// What such a failure means: the port has gone; or it was never open, which is told.
void OnPortFailure();

/// The port has failed: it is closed, and the form tells what has gone, since when, and what to do. An antenna whose
/// power was asked to be cut takes its USB port with it; nothing is told of that.
void NotePortLoss();

/// Looks once a second for the port; when it is back the work goes on where it stood.
void LookForPort();

/// The port is open again, under whichever number: the form is as it was.
void EndPortAway();

/// For SetNavCmds, ahead of and behind its work: while the port is away Cancel is on and Next is off, whatever they are
/// to be when it is back.
void ReleaseNavigation();
void HoldNavigation();
