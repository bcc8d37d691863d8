#pragma once
// One file from a web server, into memory or into a file on the disk.

#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <functional>
#include <memory>

/// What came of it. Unreachable: no server was there to answer, or it fell silent.
struct Fetched {
    bool ok = false;
    bool unreachable = false;
    QString problem;   // in words, when it isn't ok
    QByteArray bytes;  // when it was fetched into memory
};

/// Fetches one file at a time. Proxies of the system are used; a redirect is followed to https or within the same
/// host; 30 s without a byte end it.
class Fetch : public QObject {
    Q_OBJECT

public:
    Fetch();
    ~Fetch() override;

    using Done = std::function<void(const Fetched&)>;
    /// More than `limit` bytes are stopped as they arrive.
    void ToMemory(const QUrl& url, qint64 limit, Done done);
    /// Goes on behind what the file holds already where the server can do that, else begins anew.
    void ToFile(const QUrl& url, qint64 limit, const QString& path, Done done);
    /// Ends what is under way; `done` isn't called any more.
    void Stop();

    /// How long a server may be silent, ms.
    void SetPatience(int ms) { network_.setTransferTimeout(ms); }

    /// Called as bytes arrive: how many there are of this file by now.
    std::function<void(qint64)> Progress;

private:
    void Start(const QUrl& url, qint64 limit, Done done);
    void TakeAnswer();
    void TakeBytes();
    void JudgeRedirect(const QUrl& to);
    void Refuse(const QString& problem);
    QString ProblemOf(const QNetworkReply& reply) const;
    void End();

    QNetworkAccessManager network_;
    QNetworkReply* reply_ = nullptr;
    QUrl url_;    // the one that is answering, behind redirects
    QFile file_;  // open while fetching to a file
    QByteArray bytes_;
    qint64 limit_ = 0, had_ = 0, arrived_ = 0;
    QString problem_;  // found while bytes arrived
    Done done_;
};
