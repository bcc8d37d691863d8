#include "desktop/NetUpdater.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>

#include "desktop/Looks.h"
#include "desktop/Minisign.h"
#include "platform/Failure.h"
#include "platform/ProgramFiles.h"
#include "text/Text.h"

namespace {

constexpr int refused = 1;  // the code for whatever comes with words
constexpr qint64 longestSignature = 4096;

QByteArray ReadAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::string_view View(const QByteArray& bytes) { return {bytes.constData(), static_cast<std::size_t>(bytes.size())}; }

/// Everything that is to be known of a list ahead of believing it; the keys lie in `directory`. Raises SignatureError
/// or UpdateListError.
UpdateList Judged(const QByteArray& list, const QByteArray& signature, const QString& directory, std::int32_t oldest)
{
    const QByteArray keys = ReadAll(directory + u"/BNLUpdate.pub"_qs);
    if (keys.isEmpty())
        throw SignatureError("there is no public key (BNLUpdate.pub) in " + directory.toStdString() +
                             ". Please copy the key that came with the program there");
    VerifySignature(View(list), View(signature), ReadPublicKeys(View(keys)));
    UpdateList judged = ReadUpdateList(View(list));
    if (judged.Revision < oldest)
        throw SignatureError("the list on the server (revision " + std::to_string(judged.Revision) +
                             ") is older than the library of this program (revision " + std::to_string(oldest) + ")");
    const std::string today = QDate::currentDate().toString(Qt::ISODate).toStdString();
    if (judged.Expires < today)
        throw SignatureError("the list on the server has expired on " + judged.Expires +
                             ". The date of this computer is " + today +
                             "; if that is wrong, please set the clock and check again");
    return judged;
}

QString Size(qint64 bytes) { return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat); }

}  // namespace

NetUpdater::NetUpdater(QString directory, QString program)
    : directory_(std::move(directory)), program_(std::move(program)), staging_(directory_)
{
    QFile::remove(program_ + u".bnl-run"_qs);  // the program that this one has replaced, where it couldn't go at once
}

NetUpdater::~NetUpdater() = default;

// --- which files
// ---------------------------------------------------------------------------------------------------------

bool NetUpdater::IsProgram(const UpdateFile& file) const
{
    return text::Equal(file.Name, QFileInfo(program_).fileName().toStdString());
}

std::filesystem::path NetUpdater::TargetOf(const UpdateFile& file) const
{
    const QString path = IsProgram(file) ? program_ : directory_ + u'/' + QString::fromStdString(file.Name);
    return PathOf(path.toStdString());
}

bool NetUpdater::IsNew(const UpdateFile& file) const
{
    const QString path = QString::fromStdString(TargetOf(file).string());
    return QFileInfo(path).size() != file.Size || Sha256Of(path) != file.Sha256;
}

/// A program that a package has installed is the package's to replace.
bool NetUpdater::MayWrite(const UpdateFile& file) const
{
    return !IsProgram(file) || (QFileInfo(program_).isWritable() && QFileInfo(QFileInfo(program_).path()).isWritable());
}

std::vector<UpdateFile> NetUpdater::NewFiles() const
{
    std::vector<UpdateFile> files;
    std::copy_if(list_.Files.begin(), list_.Files.end(), std::back_inserter(files),
                 [this](const UpdateFile& file) { return IsNew(file) && MayWrite(file); });
    return files;
}

std::string NetUpdater::LeftOut() const
{
    for (const UpdateFile& file : list_.Files)
        if (IsNew(file) && !MayWrite(file))
            return "There is a new version of the program too (" + file.Name +
                   "), but it can't be replaced where it "
                   "is installed; please install the new version's package.";
    return {};
}

std::vector<UpdateItem> NetUpdater::Files() const
{
    std::vector<UpdateItem> items;
    for (const UpdateFile& file : list_.Files) {
        const bool isNew =
            std::any_of(new_.begin(), new_.end(), [&](const auto& one) { return one.Name == file.Name; });
        items.push_back({file.Name, isNew});
    }
    return items;
}

// --- the check
// -----------------------------------------------------------------------------------------------------------

void NetUpdater::Check(const std::string& url, std::int32_t revision)
{
    Stop();
    list_ = {};
    new_.clear();
    oldestRevision_ = revision;
    listUrl_ = QUrl(Words(url));
    if (listUrl_.scheme() != u"http" && listUrl_.scheme() != u"https")
        return CheckDone(0, refused, "the address of the list is neither http nor https: " + url);
    fetch_.Progress = nullptr;
    fetch_.ToMemory(listUrl_, static_cast<qint64>(MaxUpdateListLength), [this](const Fetched& list) {
        if (!list.ok) return CheckDone(0, list.unreachable ? UPDATE_UNREACHABLE : refused, list.problem.toStdString());
        listBytes_ = list.bytes;
        QUrl signature = listUrl_;
        signature.setPath(listUrl_.path() + u".minisig"_qs);
        fetch_.ToMemory(signature, longestSignature, [this](const Fetched& fetched) {
            if (fetched.ok) return JudgeList(fetched.bytes);
            if (fetched.unreachable) return CheckDone(0, UPDATE_UNREACHABLE, fetched.problem.toStdString());
            CheckDone(0, refused, "the list has no signature: " + fetched.problem.toStdString());
        });
    });
}

void NetUpdater::JudgeList(const QByteArray& signature)
{
    signatureBytes_ = signature;
    try {
        list_ = Judged(listBytes_, signature, directory_, oldestRevision_);
    } catch (const UpdateListError& error) {
        return CheckDone(0, refused, std::string("the list of updates is no such list: ") + error.what());
    } catch (const SignatureError& error) {
        return CheckDone(0, refused, std::string("the list of updates is refused: ") + error.what());
    }
    new_ = NewFiles();
    CheckDone(static_cast<int>(new_.size()), 0, LeftOut());
}

void NetUpdater::Stop()
{
    fetch_.Stop();
    progress_.reset();
}

void NetUpdater::LookForPrevious(std::int32_t revision)
{
    const auto kept = staging_.Finished();
    if (!kept) return;
    try {
        list_ = Judged(kept->list, kept->signature, directory_, revision);
    } catch (const std::exception&) {
        return staging_.Discard();  // whatever it is, it isn't to be trusted
    }
    new_ = NewFiles();
    const bool whole =
        std::all_of(new_.begin(), new_.end(), [this](const auto& file) { return staging_.IsWhole(file); });
    if (new_.empty() || !whole) return staging_.Discard();
    PrevDownload();
}

// --- the download
// --------------------------------------------------------------------------------------------------------

void NetUpdater::Download()
{
    if (!staging_.Prepare(new_))
        return DownloadDone(refused, "the directory for downloads can't be made in " + directory_.toStdString());
    next_ = 0;
    again_ = false;
    doneBytes_ = allBytes_ = fetchedBytes_ = 0;
    for (const UpdateFile& file : new_) allBytes_ += file.Size;
    if (window) OpenProgress();
    sinceStart_.start();
    DownloadNext();
}

void NetUpdater::OpenProgress()
{
    progress_ = std::make_unique<QProgressDialog>(window);
    progress_->setObjectName(u"updateProgress"_qs);
    progress_->setWindowTitle(u"QEL Burnline Assistant - Check for Updates"_qs);
    progress_->setWindowModality(Qt::ApplicationModal);
    // The bar is moved by itself: the dialog's own way handles events, and a Cancel in the middle of arriving bytes
    // would take away the reply and the dialog that are at work.
    bar_ = new QProgressBar;
    bar_->setRange(0, 1000);
    progress_->setBar(bar_);
    QObject::connect(progress_.get(), &QProgressDialog::canceled, progress_.get(), [this] { CancelDownload(); });
    progress_->show();
}

void NetUpdater::CancelDownload()
{
    fetch_.Stop();
    EndDownload(refused, u"the download was cancelled. What has arrived is kept; the next one goes on there"_qs);
}

void NetUpdater::DownloadNext()
{
    while (next_ < new_.size() && IsThere(new_[next_])) doneBytes_ += new_[next_++].Size;
    if (next_ == new_.size()) {
        if (staging_.Finish(listBytes_, signatureBytes_)) return EndDownload(0, {});
        return EndDownload(refused, u"the disk takes no more"_qs);
    }
    const UpdateFile file = new_[next_];
    beganAt_ = QFileInfo(staging_.PartOf(file)).size();
    fetch_.Progress = [this, file](qint64 arrived) { ShowProgress(file, arrived); };
    ShowProgress(file, beganAt_);
    const QUrl address = listUrl_.resolved(QUrl(QString::fromStdString(file.Address)));
    if (address.scheme() != u"http" && address.scheme() != u"https")
        return EndDownload(refused, u"an address that is neither http nor https: "_qs + address.toString());
    fetch_.ToFile(address, file.Size, staging_.PartOf(file),
                  [this, file](const Fetched& fetched) { TakeFile(file, fetched); });
}

/// A program that ended at the wrong moment may have left a file that has arrived without looking at it.
bool NetUpdater::IsThere(const UpdateFile& file)
{
    if (QFileInfo(staging_.PartOf(file)).size() >= std::max<qint64>(file.Size, 1)) staging_.Accept(file);
    return staging_.IsWhole(file);
}

void NetUpdater::TakeFile(const UpdateFile& file, const Fetched& fetched)
{
    const QString name = QString::fromStdString(file.Name);
    if (!fetched.ok) return EndDownload(refused, name + u": "_qs + fetched.problem);
    if (staging_.Accept(file)) {
        again_ = false;
        fetchedBytes_ += file.Size - beganAt_;
        return DownloadNext();
    }
    // What was there of an earlier download may have been of another file: once more, from its beginning.
    const bool continued = beganAt_ > 0 && !again_;
    again_ = true;
    if (continued) return DownloadNext();
    EndDownload(refused, name + u": what the server sends isn't the file that was signed"_qs);
}

void NetUpdater::ShowProgress(const UpdateFile& file, qint64 arrived)
{
    if (!progress_) return;
    const qint64 done = doneBytes_ + arrived;
    const double seconds = static_cast<double>(std::max<qint64>(sinceStart_.elapsed(), 1)) / 1000;
    const double speed = static_cast<double>(std::max<qint64>(fetchedBytes_ + arrived - beganAt_, 0)) / seconds;
    QString words = QString(u"%1 (file %2 of %3)\n%4 of %5"_qs)
                        .arg(QString::fromStdString(file.Name), QString::number(next_ + 1),
                             QString::number(new_.size()), Size(done), Size(allBytes_));
    if (speed > 1 && seconds > 1)
        words += QString(u", %1 a second, %2 s left"_qs)
                     .arg(Size(static_cast<qint64>(speed)))
                     .arg(static_cast<qint64>(static_cast<double>(allBytes_ - done) / speed) + 1);
    progress_->setLabelText(words);
    bar_->setValue(allBytes_ > 0 ? static_cast<int>(done * bar_->maximum() / allBytes_) : 0);
}

void NetUpdater::EndDownload(int code, const QString& problem)
{
    if (progress_) {
        progress_->hide();  // it goes no sooner than the boxes that come now
        progress_->disconnect();
        progress_.release()->deleteLater();  // it may be the one that calls
    }
    DownloadDone(code, problem.toStdString());
}

// --- the replacement
// -----------------------------------------------------------------------------------------------------

std::vector<PlacedFile> NetUpdater::Placed() const
{
    std::vector<PlacedFile> files;
    for (const UpdateFile& file : new_) files.push_back({PathOf(staging_.WholeOf(file).toStdString()), TargetOf(file)});
    return files;
}

void NetUpdater::Replace()
{
    for (const UpdateFile& file : new_)
        if (!staging_.IsWhole(file)) {
            staging_.Discard();
            return ReplaceDone(refused, file.Name + " was altered after its download; please check for updates again");
        }
    if (std::any_of(new_.begin(), new_.end(), [this](const auto& file) { return IsProgram(file); })) {
        replaceAfterEnd_ = true;
        return Closing();
    }
    QString problem;
    replaceAfterEnd_ = true;
    ReplaceAfterEnd(problem);
    ReplaceDone(problem.isEmpty() ? 0 : refused, problem.toStdString());
}

bool NetUpdater::ReplaceAfterEnd(QString& problem)
{
    if (!replaceAfterEnd_) return false;
    replaceAfterEnd_ = false;
    try {
        ReplaceFiles(PathOf(directory_.toStdString()), Placed());
        staging_.Discard();
    } catch (...) {
        std::string words;
        FailureNumber(words);
        problem = Words(words) + u" Every file is as it was before"_qs;
    }
    return true;
}
