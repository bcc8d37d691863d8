#include "desktop/Fetch.h"

#include <QNetworkProxyFactory>
#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr int patienceMs = 30000;
constexpr int partOfAFile = 206, wrongRange = 416;

bool IsUnreachable(QNetworkReply::NetworkError error)
{
    constexpr std::array errors{
        QNetworkReply::ConnectionRefusedError,
        QNetworkReply::HostNotFoundError,
        QNetworkReply::TimeoutError,
        QNetworkReply::OperationCanceledError,  // Qt's word for the time limit
        QNetworkReply::TemporaryNetworkFailureError,
        QNetworkReply::NetworkSessionFailedError,
        QNetworkReply::UnknownNetworkError,
        QNetworkReply::ProxyConnectionRefusedError,
        QNetworkReply::ProxyNotFoundError,
        QNetworkReply::ProxyTimeoutError,
    };
    return std::find(errors.begin(), errors.end(), error) != errors.end();
}

int StatusOf(const QNetworkReply& reply) { return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(); }

/// "bytes 1234-9999/10000": where the part begins; -1 when that isn't told.
qint64 BeginningOf(const QByteArray& contentRange)
{
    const QByteArray range = contentRange.mid(6);
    bool whole = false;
    const qint64 beginning = range.left(range.indexOf('-')).toLongLong(&whole);
    return contentRange.startsWith("bytes ") && whole ? beginning : -1;
}

}  // namespace

Fetch::Fetch()
{
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    SetPatience(patienceMs);
    network_.setRedirectPolicy(QNetworkRequest::UserVerifiedRedirectPolicy);
}

Fetch::~Fetch() { Stop(); }

void Fetch::ToMemory(const QUrl& url, qint64 limit, Done done)
{
    Stop();
    Start(url, limit, std::move(done));
}

void Fetch::ToFile(const QUrl& url, qint64 limit, const QString& path, Done done)
{
    Stop();
    file_.setFileName(path);
    if (!file_.open(QIODevice::ReadWrite)) {
        done({false, false, path + u": "_qs + file_.errorString(), {}});
        return;
    }
    file_.seek(file_.size());
    Start(url, limit, std::move(done));
}

void Fetch::Start(const QUrl& url, qint64 limit, Done done)
{
    constexpr qint64 buffer = 256 * 1024;  // what a server may send ahead of being judged
    url_ = url;
    done_ = std::move(done);
    limit_ = limit;
    bytes_.clear();
    problem_.clear();
    had_ = arrived_ = file_.isOpen() ? file_.size() : 0;
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setRawHeader("Accept-Encoding", "identity");  // lengths are those of the files
    if (had_ > 0) request.setRawHeader("Range", "bytes=" + QByteArray::number(had_) + '-');
    reply_ = network_.get(request);
    reply_->setReadBufferSize(buffer);
    connect(reply_, &QNetworkReply::metaDataChanged, this, &Fetch::TakeAnswer);
    connect(reply_, &QNetworkReply::readyRead, this, &Fetch::TakeBytes);
    connect(reply_, &QNetworkReply::redirected, this, &Fetch::JudgeRedirect);
    connect(reply_, &QNetworkReply::finished, this, &Fetch::End);
}

void Fetch::Stop()
{
    if (reply_) {
        reply_->disconnect(this);
        reply_->abort();
        reply_->deleteLater();
        reply_ = nullptr;
    }
    file_.close();
    done_ = nullptr;
}

/// A server that sends the whole file although a part was asked for begins the file anew.
void Fetch::TakeAnswer()
{
    if (!file_.isOpen() || had_ == 0) return;
    const int status = StatusOf(*reply_);
    const bool goesOn = status == partOfAFile && BeginningOf(reply_->rawHeader("Content-Range")) == had_;
    // A redirect, or a server that is out of order for a while, takes nothing of what is there.
    if (goesOn || status / 100 != 2) return;
    had_ = arrived_ = 0;
    file_.resize(0);
    file_.seek(0);
}

void Fetch::TakeBytes()
{
    if (StatusOf(*reply_) / 100 != 2) {
        reply_->readAll();  // the words of an error page are nobody's file
        return;
    }
    const QByteArray bytes = reply_->readAll();
    arrived_ += bytes.size();
    if (arrived_ > limit_) return Refuse(u"the server sends more than was announced or is allowed"_qs);
    if (!file_.isOpen())
        bytes_ += bytes;
    else if (file_.write(bytes) != bytes.size() || !file_.flush())
        return Refuse(file_.fileName() + u": "_qs + file_.errorString());
    if (Progress) Progress(arrived_);
}

void Fetch::JudgeRedirect(const QUrl& to)
{
    const bool sameHost = to.host() == url_.host() && to.scheme() == u"http";
    if (to.scheme() != u"https" && !sameHost)
        return Refuse(u"the server points to another place, which isn't followed: "_qs + to.toString());
    url_ = to;
    emit reply_->redirectAllowed();
}

void Fetch::Refuse(const QString& problem)
{
    problem_ = problem;
    reply_->abort();
}

/// Why the answer is of no use, in words; empty when it is all that was asked for.
QString Fetch::ProblemOf(const QNetworkReply& reply) const
{
    if (!problem_.isEmpty()) return problem_;
    const int status = StatusOf(reply);
    if (status >= 300)
        return QString(u"the server answers \"%1 %2\" for %3"_qs)
            .arg(QString::number(status), reply.attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString(),
                 reply.url().toString());
    if (reply.error() == QNetworkReply::OperationCanceledError) return u"the server has fallen silent"_qs;
    if (reply.error() != QNetworkReply::NoError) return reply.errorString();
    // Where Qt has to ask a second time, a connection that then ends in the middle is no error to it.
    const QVariant announced = reply.header(QNetworkRequest::ContentLengthHeader);
    if (announced.isValid() && arrived_ - had_ < announced.toLongLong())
        return u"the connection was cut off in the middle"_qs;
    return {};
}

void Fetch::End()
{
    if (problem_.isEmpty() && reply_->error() == QNetworkReply::NoError) TakeBytes();
    Fetched fetched;
    fetched.problem = ProblemOf(*reply_);
    fetched.ok = fetched.problem.isEmpty();
    fetched.unreachable = problem_.isEmpty() && IsUnreachable(reply_->error());
    if (fetched.ok) fetched.bytes = bytes_;
    // Asked for what lies behind the file's end: what is there is of no use.
    if (StatusOf(*reply_) == wrongRange && file_.isOpen()) file_.resize(0);
    const Done done = std::exchange(done_, nullptr);
    Stop();
    if (done) done(fetched);
}
