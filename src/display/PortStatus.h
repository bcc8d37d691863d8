#pragma once
// The port's state on the form.

#include <string>

/// Words of the port's label; `needsAttention` makes them bold on white.
void ShowPortStatus(const std::string& words, bool needsAttention, const std::string& toolTip = {});

/// What to do about the port.
void ShowPortAdvice(const std::string& words);

/// The advice has been followed, or is needed no more.
void HidePortAdvice();

/// The menu's item of the current port loses its check mark.
void UncheckPort();
