#pragma once
// How the command that restores a parameter is written from the reply that told it. Nothing here knows the session.

#include <optional>
#include <string>

/// What decides about the form of a command beside the reply.
struct UploadFacts {
    int boardType = 0;
    bool isJarl = false;           // the antenna counts its position in whole degrees
    bool satInstallFound = false;  // main boards: satInstallCmd stands; RF boards: a third satellite is to be restored
    std::string satInstallCmd;
};

/// `element` as it is after the reply `captured`; none when that says nothing about `command` (upper case). Replies
/// come as they were captured. Most forms add to the element, so that a parameter told twice is written twice.
std::optional<std::string> UploadCommandFrom(const std::string& command, const std::string& element,
                                             const std::string& captured, const UploadFacts& facts);
