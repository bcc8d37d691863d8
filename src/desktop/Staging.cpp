#include "desktop/Staging.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <algorithm>

namespace {

constexpr const char* listName = "list";
constexpr const char* signatureName = "list.minisig";

bool Write(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

QByteArray Read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(static_cast<qint64>(MaxUpdateListLength) + 1) : QByteArray();
}

}  // namespace

std::string Sha256Of(const QString& path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file)) return {};
    return hash.result().toHex().toStdString();
}

Staging::Staging(const QString& programDirectory) : directory_(programDirectory + u"/BNLUpdate.staging"_qs) {}

QString Staging::Path(const UpdateFile& file, const char* suffix) const
{
    return directory_ + u'/' + QString::fromStdString(file.Sha256) + QString::fromLatin1(suffix);
}

bool Staging::Prepare(const std::vector<UpdateFile>& files)
{
    if (!QDir().mkpath(directory_)) return false;
    for (const QString& name : QDir(directory_).entryList(QDir::Files | QDir::Hidden)) {
        const bool wanted = std::any_of(files.begin(), files.end(), [&](const UpdateFile& file) {
            return name.startsWith(QString::fromStdString(file.Sha256));
        });
        if (!wanted) QFile::remove(directory_ + u'/' + name);
    }
    return true;
}

bool Staging::IsWhole(const UpdateFile& file) const { return Sha256Of(WholeOf(file)) == file.Sha256; }

bool Staging::Accept(const UpdateFile& file)
{
    const QString part = PartOf(file), whole = WholeOf(file);
    if (Sha256Of(part) == file.Sha256) {
        QFile::remove(whole);
        return QFile::rename(part, whole);
    }
    QFile::remove(part);
    return false;
}

bool Staging::Finish(const QByteArray& list, const QByteArray& signature)
{
    // The list comes last: with it the download counts as finished.
    return Write(directory_ + u'/' + signatureName, signature) && Write(directory_ + u'/' + listName, list);
}

std::optional<Staging::Kept> Staging::Finished() const
{
    const QString list = directory_ + u'/' + listName;
    if (!QFile::exists(list)) return std::nullopt;
    return Kept{Read(list), Read(directory_ + u'/' + signatureName)};
}

void Staging::Discard() { QDir(directory_).removeRecursively(); }
