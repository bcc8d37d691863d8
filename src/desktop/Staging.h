#pragma once
// Where downloads wait until all of them are there and right: a directory beside the files that they will replace.

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "update/UpdateList.h"

/// SHA-256 of a file in lower-case hexadecimal; empty when it can't be read.
std::string Sha256Of(const QString& path);

class Staging {
public:
    explicit Staging(const QString& programDirectory);

    /// Makes the directory and clears out what belongs to none of these files. False when it can't be made.
    bool Prepare(const std::vector<UpdateFile>& files);

    /// Where a file arrives, and where it stands when it is whole. Names of a server are never used.
    QString PartOf(const UpdateFile& file) const { return Path(file, ".part"); }
    QString WholeOf(const UpdateFile& file) const { return Path(file, ""); }

    bool IsWhole(const UpdateFile& file) const;
    /// A file that has arrived becomes a whole one. False, and it is gone, when its content isn't the announced one.
    bool Accept(const UpdateFile& file);

    /// All files are there: the list that tells what they are is kept with them.
    bool Finish(const QByteArray& list, const QByteArray& signature);
    struct Kept {
        QByteArray list, signature;
    };
    std::optional<Kept> Finished() const;

    void Discard();

private:
    QString Path(const UpdateFile& file, const char* suffix) const;

    QString directory_;
};
