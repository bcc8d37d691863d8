#pragma once
// A web server on this machine with a list of updates on it, signed by the real minisign.

#include <QCryptographicHash>
#include <QProcess>
#include <QTemporaryDir>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "tests/desktop/ChildProcess.h"
#include "tests/desktop/ProgramHome.h"

inline std::string Digest(const std::string& bytes)
{
    return QCryptographicHash::hash(QByteArray::fromStdString(bytes), QCryptographicHash::Sha256).toHex().toStdString();
}

inline void Execute(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        throw std::runtime_error((program + u" failed: "_qs + process.readAllStandardError()).toStdString());
}

class UpdateSite {
public:
    UpdateSite() : web(Path("web"))
    {
        std::filesystem::create_directories(web);
        MakeKey("own");
        Start({});
    }

    /// With a certificate and its key: over https.
    void Start(const QStringList& certificate)
    {
        server_ = std::make_unique<ChildProcess>();
        server_->Start(u"" SOURCE_DIR "/tests/desktop/update-server.py"_qs,
                       QStringList{QString::fromStdString(web.string())} + certificate);
        port_ = server_->ReadLine(10000).value();
    }
    void GoAway() { server_.reset(); }

    std::string Path(const std::string& name) const { return temp_.path().toStdString() + "/" + name; }

    /// The public half of the key that signs.
    std::string Key() const { return Path("own.pub"); }

    void MakeKey(const std::string& name)
    {
        Execute(u"minisign"_qs, {"-G", "-W", "-f", "-p", QString::fromStdString(Path(name + ".pub")), "-s",
                                 QString::fromStdString(Path(name + ".key"))});
    }

    /// The list as the server sends it in one of its manners: see update-server.py.
    std::string Url(const std::string& manner, const std::string& scheme = "http") const
    {
        return scheme + "://127.0.0.1:" + port_ + "/" + manner + "/list.txt";
    }

    /// A file on the server, and its line.
    std::string Offer(const std::string& name, const std::string& bytes, const std::string& manner = "well")
    {
        WriteAll(web / name, bytes);
        return Line(name, bytes, "../" + manner + "/" + name);
    }
    static std::string Line(const std::string& name, const std::string& bytes, const std::string& address)
    {
        return "file " + Digest(bytes) + " " + std::to_string(bytes.size()) + " " + name + " " + address + "\n";
    }

    void Sign(const std::string& list, const std::string& key = "own", const QStringList& more = {})
    {
        Execute(u"minisign"_qs, QStringList{"-S", "-s", QString::fromStdString(Path(key + ".key")), "-m",
                                            QString::fromStdString((web / list).string())} +
                                    more);
    }

    void Publish(const std::string& lines, int revision = 5, const std::string& expires = "2999-12-31",
                 const QStringList& more = {}, const std::string& key = "own")
    {
        WriteAll(web / "list.txt", "burnline-updates 1\nproduct burnline\nrevision " + std::to_string(revision) +
                                       "\nexpires " + expires + "\n" + lines);
        Sign("list.txt", key, more);
    }

    /// What it was asked for: a path and a range in each line.
    std::string Requests() const { return ReadAll(web / "requests.log"); }

private:
    QTemporaryDir temp_;
    std::unique_ptr<ChildProcess> server_;
    std::string port_;

public:
    const std::filesystem::path web;
};
