#pragma once
// The updater over the internet: fetches the signed list and what is new of it, and puts it in place.

#include <QByteArray>
#include <QElapsedTimer>
#include <QProgressBar>
#include <QProgressDialog>
#include <QUrl>
#include <filesystem>
#include <memory>

#include "desktop/Fetch.h"
#include "desktop/Staging.h"
#include "platform/Updater.h"
#include "update/Replacement.h"
#include "update/UpdateList.h"

class NetUpdater : public Updater {
public:
    /// `directory` is the program's. `program` is its executable, which a list may replace too.
    NetUpdater(QString directory, QString program);
    ~NetUpdater() override;

    void Check(const std::string& url, std::int32_t revision) override;
    void Download() override;
    void Replace() override;
    void DiscardDownload() override { staging_.Discard(); }
    void Stop() override;
    void LookForPrevious(std::int32_t revision) override;

    std::vector<UpdateItem> Files() const override;
    std::vector<UpdateMessage> Messages() const override { return list_.Messages; }
    std::int32_t Revision() const override { return list_.Revision; }

    /// Behind the end of the program: the files whose replacement wanted it gone take their places. True when the
    /// program is to be started again; `problem` takes what went wrong.
    bool ReplaceAfterEnd(QString& problem);

    /// How long a server may be silent, ms.
    void SetPatience(int ms) { fetch_.SetPatience(ms); }

    /// The window over which the progress of a download is shown; null: it isn't.
    QWidget* window = nullptr;

private:
    bool IsProgram(const UpdateFile& file) const;
    std::filesystem::path TargetOf(const UpdateFile& file) const;
    bool IsNew(const UpdateFile& file) const;
    std::string LeftOut() const;
    std::vector<UpdateFile> NewFiles() const;
    bool MayWrite(const UpdateFile& file) const;

    void JudgeList(const QByteArray& signature);
    void OpenProgress();
    void CancelDownload();
    void DownloadNext();
    bool IsThere(const UpdateFile& file);
    void TakeFile(const UpdateFile& file, const Fetched& fetched);
    void ShowProgress(const UpdateFile& file, qint64 arrived);
    void EndDownload(int code, const QString& problem);
    std::vector<PlacedFile> Placed() const;

    const QString directory_, program_;
    Staging staging_;
    Fetch fetch_;
    QUrl listUrl_;
    std::int32_t oldestRevision_ = 0;
    QByteArray listBytes_, signatureBytes_;
    UpdateList list_;
    std::vector<UpdateFile> new_;  // of the list, not yet in place

    std::size_t next_ = 0;  // of new_, while they are downloaded
    bool again_ = false;    // the file that is downloaded was wrong once already
    qint64 doneBytes_ = 0, allBytes_ = 0;
    qint64 beganAt_ = 0;       // what was there already of the file that is downloaded
    qint64 fetchedBytes_ = 0;  // of the files before it, without what was there already
    QElapsedTimer sinceStart_;
    std::unique_ptr<QProgressDialog> progress_;
    QProgressBar* bar_ = nullptr;  // the dialog's
    bool replaceAfterEnd_ = false;
};
