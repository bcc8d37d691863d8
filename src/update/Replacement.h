#pragma once
// Puts downloaded files into their places, all or none: whatever happens in between, even an empty battery, leaves the
// former set or the new one.

#include <filesystem>
#include <functional>
#include <vector>

/// A file that is to take a place, and where it stands now. Both stay on the same disk or not, as they like.
struct PlacedFile {
    std::filesystem::path Source;
    std::filesystem::path Target;
};

/// What was found of a replacement that an earlier run didn't end.
enum class Leftover { None, Finished, Undone };

/// Called between any two changes of the disk; for tests that end the program there.
using StepHook = std::function<void()>;

/// Puts every file into its place. `directory` keeps the record of the replacement while it lasts. Permissions of a
/// former file are kept. Raises Failure, with everything as it was before, when one of them can't be placed.
void ReplaceFiles(const std::filesystem::path& directory, const std::vector<PlacedFile>& files,
                  const StepHook& step = {});

/// Ends what an earlier run began: once every new file was safe on the disk it is finished, before that undone. Called
/// ahead of everything that reads the files. Raises Failure when it can't; then the next call tries again.
Leftover FinishReplacement(const std::filesystem::path& directory, const StepHook& step = {});
