#pragma once
// What the core expects of whoever fetches new program and flash files: it checks a signed list, downloads what is new
// and puts it in place. Each operation returns at once; what came of it is told by an event, on the one thread.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// News for the user that came with a list.
struct UpdateMessage {
    std::int32_t Number = 0;
    std::string Text;  // HTML
};

/// A file of the list. New: it isn't in its place yet, or another one is.
struct UpdateItem {
    std::string Name;
    bool IsNew = false;
};

// Error codes that the program tells apart. 0 is none; any other comes with words.
inline constexpr int UPDATE_UNREACHABLE = 30006;  // the server can't be reached
inline constexpr int UPDATE_RESTARTING = 30012;   // taken over by the restart; not a failure

class Updater {
public:
    virtual ~Updater() = default;

    /// Fetches and judges the list at `url`; one of a revision below `revision` is refused. A check, or a download,
    /// that is still under way is dropped without an event.
    virtual void Check(const std::string& url, std::int32_t revision) = 0;
    /// Downloads what is new of the list that was checked.
    virtual void Download() = 0;
    /// Puts the downloaded files in place, all or none.
    virtual void Replace() = 0;
    /// Deletes what was downloaded.
    virtual void DiscardDownload() = 0;
    /// Drops whatever is under way; no event comes of it.
    virtual void Stop() = 0;
    /// PrevDownload comes at once when a finished download of an earlier run lies ready that is still to be trusted.
    virtual void LookForPrevious(std::int32_t revision) = 0;

    // --- of the list that was checked last ---------------------------------------------------------------------------
    virtual std::vector<UpdateItem> Files() const = 0;
    virtual std::vector<UpdateMessage> Messages() const = 0;
    virtual std::int32_t Revision() const = 0;

    // --- events ------------------------------------------------------------------------------------------------------
    // Words without an error code tell what the list offers and this updater may not replace.
    std::function<void(int newFiles, int errorCode, const std::string& errorText)> CheckDone;
    std::function<void(int errorCode, const std::string& errorText)> DownloadDone;
    std::function<void(int errorCode, const std::string& errorText)> ReplaceDone;
    std::function<void()> PrevDownload;  // a finished download of an earlier run lies ready
    std::function<void()> Closing;       // the program itself is to be replaced and has to end
};

/// The one updater; null where there is none.
inline Updater* updater = nullptr;
