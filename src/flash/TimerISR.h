#pragma once

/// One tick of 100 ms: counts the wait of the link down and acts, by mode, when it has run out. A failure is told.
void TimerHandler();
