#include "update/Replacement.h"

#include <string>
#include <system_error>

#include "platform/Failure.h"
#include "platform/ProgramFiles.h"
#include "platform/WholeFile.h"

namespace fs = std::filesystem;

namespace {

// The record is one file under one of three names; a rename leads from one state to the next.
constexpr const char* preparing = "BNLUpdate.preparing";  // new files are being written beside their places
constexpr const char* placing = "BNLUpdate.placing";      // all are safe on the disk, the former ones too
constexpr const char* undoing = "BNLUpdate.undoing";      // one could not be placed: the former ones come back

constexpr std::size_t longestRecord = 1024 * 1024;  // bytes

/// A place, and whether a file stood there before.
struct Place {
    fs::path target;
    bool hadFormer = false;

    fs::path New() const { return Beside(".bnl-new"); }
    fs::path Former() const { return Beside(".bnl-old"); }

private:
    fs::path Beside(const char* ending) const { return fs::path(target).concat(ending); }
};

/// Makes one change after the other; a failure of the file system is raised with its file's name.
class Disk {
public:
    explicit Disk(const StepHook& step) : step_(step) {}

    void Rename(const fs::path& from, const fs::path& to)
    {
        Step();
        Check(RenameOver(from, to), to);
    }
    void Remove(const fs::path& path)
    {
        Step();
        std::error_code error;
        fs::remove(path, error);
        Check(error, path);
    }
    /// The copy is on the disk when the call returns.
    void Copy(const fs::path& from, const fs::path& to)
    {
        Step();
        Check(CopyOver(from, to), to);
        Step();
        SyncToDisk(to);
    }
    void TakePermissions(const fs::path& from, const fs::path& to)
    {
        std::error_code error;
        const fs::file_status status = fs::status(from, error);
        if (!error) fs::permissions(to, status.permissions(), error);
        Check(error, to);
    }
    void Write(const fs::path& path, const std::string& bytes)
    {
        Step();
        WriteWholeFile(path, bytes);
    }
    void Sync(const fs::path& directory)
    {
        Step();
        SyncToDisk(directory);
    }

private:
    void Step() const
    {
        if (step_) step_();
    }
    static void Check(const std::error_code& error, const fs::path& path)
    {
        if (error) throw Failure{FailureFromError(error), path.filename().string() + ": " + error.message()};
    }

    const StepHook& step_;
};

/// Paths may hold any character but a zero byte.
std::string Record(const std::vector<Place>& places)
{
    std::string bytes;
    for (const Place& place : places) bytes += (place.hadFormer ? "1" : "0") + place.target.string() + '\0';
    return bytes;
}

std::vector<Place> PlacesOf(const std::string& record)
{
    std::vector<Place> places;
    for (std::size_t at = 0; at < record.size();) {
        const std::size_t end = record.find('\0', at);
        if (end == std::string::npos) break;  // cut off while it was written: no file was touched yet
        places.push_back({PathOf(record.substr(at + 1, end - at - 1)), record[at] == '1'});
        at = end + 1;
    }
    return places;
}

void RemoveCopies(Disk& disk, const std::vector<Place>& places)
{
    for (const Place& place : places) {
        disk.Remove(place.New());
        disk.Remove(place.Former());
    }
}

/// Every new file beside its place, every former one beside it too.
void Prepare(Disk& disk, const std::vector<PlacedFile>& files, const std::vector<Place>& places)
{
    for (std::size_t at = 0; at < files.size(); ++at) {
        const Place& place = places[at];
        disk.Copy(files[at].Source, place.New());
        if (!place.hadFormer) continue;
        disk.TakePermissions(place.target, place.New());
        disk.Copy(place.target, place.Former());
        disk.TakePermissions(place.target, place.Former());
    }
    for (const Place& place : places) disk.Sync(place.target.parent_path());
}

/// May be begun again at any point.
void PutInPlace(Disk& disk, const std::vector<Place>& places)
{
    for (const Place& place : places)
        if (Exists(place.New())) disk.Rename(place.New(), place.target);
    for (const Place& place : places) disk.Sync(place.target.parent_path());
    RemoveCopies(disk, places);
}

/// May be begun again at any point too: a former file that isn't there any more is back in its place.
void PutBack(Disk& disk, const std::vector<Place>& places)
{
    for (const Place& place : places) {
        // What stands in the place of a file that was never placed is somebody else's.
        const bool placed = !Exists(place.New()) && fs::is_regular_file(place.target);
        if (!place.hadFormer && placed)
            disk.Remove(place.target);
        else if (Exists(place.Former()))
            disk.Rename(place.Former(), place.target);
    }
    for (const Place& place : places) disk.Sync(place.target.parent_path());
    RemoveCopies(disk, places);
}

void Undo(Disk& disk, const fs::path& directory, const char* state, const std::vector<Place>& places)
{
    if (state == placing) disk.Rename(directory / placing, directory / undoing);
    disk.Sync(directory);
    PutBack(disk, places);
    disk.Remove(directory / undoing);
}

/// The files stand all in their places, or Failure is raised and the former ones do.
void PlaceAll(Disk& disk, const fs::path& directory, const std::vector<Place>& places)
{
    try {
        PutInPlace(disk, places);
    } catch (const Failure&) {
        Undo(disk, directory, placing, places);
        throw;
    }
    disk.Remove(directory / placing);
}

std::vector<Place> PlacesFor(const std::vector<PlacedFile>& files)
{
    std::vector<Place> places;
    for (const PlacedFile& file : files) places.push_back({file.Target, Exists(file.Target)});
    return places;
}

}  // namespace

void ReplaceFiles(const fs::path& directory, const std::vector<PlacedFile>& files, const StepHook& step)
{
    Disk disk(step);
    const std::vector<Place> places = PlacesFor(files);
    try {
        disk.Write(directory / preparing, Record(places));
        disk.Sync(directory);
        Prepare(disk, files, places);
        disk.Rename(directory / preparing, directory / placing);
        disk.Sync(directory);
    } catch (const Failure&) {
        RemoveCopies(disk, places);
        disk.Remove(directory / preparing);
        throw;
    }
    PlaceAll(disk, directory, places);
}

Leftover FinishReplacement(const fs::path& directory, const StepHook& step)
{
    Disk disk(step);
    const auto placesOf = [&](const char* state) { return PlacesOf(ReadWholeFile(directory / state, longestRecord)); };
    if (Exists(directory / placing)) {
        PlaceAll(disk, directory, placesOf(placing));
        return Leftover::Finished;
    }
    if (Exists(directory / undoing)) {
        Undo(disk, directory, undoing, placesOf(undoing));
        return Leftover::Undone;
    }
    if (!Exists(directory / preparing)) return Leftover::None;
    RemoveCopies(disk, placesOf(preparing));
    disk.Remove(directory / preparing);
    return Leftover::Undone;
}
