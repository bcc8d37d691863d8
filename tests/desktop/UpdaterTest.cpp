// The updater against a real web server on this machine, with lists signed by the real minisign.

#include <gtest/gtest.h>

#include <QDate>
#include <QEventLoop>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTimer>

#include "desktop/NetUpdater.h"
#include "tests/desktop/UpdateSite.h"

namespace fs = std::filesystem;

namespace {

constexpr int patienceMs = 700;

class ServerOfUpdates : public testing::Test, public UpdateSite {
protected:
    ServerOfUpdates() : home(Path("home"))
    {
        fs::create_directories(home);
        fs::copy_file(Key(), home / "BNLUpdate.pub");
    }

    /// Runs what is asked of the updater to its event; its words, "ok" without any, or "replaced" and so on.
    std::string Await(const std::function<void(Updater&)>& act)
    {
        if (!updater_) {
            updater_ = std::make_unique<NetUpdater>(QString::fromStdString(home.string()),
                                                    QString::fromStdString((home / "burnline").string()));
            updater_->SetPatience(patienceMs);
        }
        QEventLoop loop;
        std::string told = "no event";
        const auto tell = [&](const std::string& words) {
            told = words;
            loop.quit();
        };
        const auto result = [&](int code, const std::string& words) {
            tell(code == 0 ? "ok" : std::to_string(code) + " " + words);
        };
        updater_->CheckDone = [&, tell](int found, int code, const std::string& words) {
            tell(code == 0 ? std::to_string(found) + " new" + words : std::to_string(code) + " " + words);
        };
        updater_->DownloadDone = updater_->ReplaceDone = result;
        updater_->PrevDownload = [tell] { tell("previous"); };
        updater_->Closing = [tell] { tell("closing"); };
        QTimer::singleShot(0, &loop, [&] { act(*updater_); });
        QTimer::singleShot(20000, &loop, &QEventLoop::quit);
        loop.exec();
        return told;
    }
    std::string Check(const std::string& manner = "well", std::int32_t revision = 1, const std::string& scheme = "http")
    {
        return Await([=, this](Updater& one) { one.Check(Url(manner, scheme), revision); });
    }
    std::string Download()
    {
        return Await([](Updater& one) { one.Download(); });
    }
    std::string Replace()
    {
        return Await([](Updater& one) { one.Replace(); });
    }
    std::string Previous(std::int32_t revision = 1)
    {
        return Await([=](Updater& one) {
            one.LookForPrevious(revision);
            if (one.CheckDone) QTimer::singleShot(0, [&one] { one.DownloadDone(1, "nothing"); });
        });
    }
    /// Names in the program's directory that a refused list must not have changed.
    std::size_t FilesAtHome() const { return std::distance(fs::directory_iterator(home), fs::directory_iterator()); }

    const fs::path home;
    std::unique_ptr<NetUpdater> updater_;
};

TEST_F(ServerOfUpdates, brings_what_is_new_and_nothing_else)
{
    const std::string big(300000, 'x');
    WriteAll(home / "SAME.HEX", "the same");
    WriteAll(home / "OTHER.HEX", "the former");
    Publish(Offer("SAME.HEX", "the same"));
    EXPECT_EQ(Check(), "0 new");
    EXPECT_EQ(Check("here"), "0 new") << "by a redirect within the host";

    Publish(Offer("SAME.HEX", "the same") + Offer("OTHER.HEX", "the newer one") + Offer("BIG.S19", big) +
            "message 3 <b>Read</b> this\n");
    ASSERT_EQ(Check(), "2 new");
    EXPECT_EQ(updater_->Messages().at(0).Text, "<b>Read</b> this");
    EXPECT_EQ(Download(), "ok");
    EXPECT_EQ(ReadAll(home / "OTHER.HEX"), "the former") << "nothing changes before all are there";
    EXPECT_EQ(Replace(), "ok");
    EXPECT_EQ(ReadAll(home / "OTHER.HEX"), "the newer one");
    EXPECT_EQ(ReadAll(home / "BIG.S19"), big);
    EXPECT_EQ(Check(), "0 new");
    EXPECT_EQ(updater_->Revision(), 5);
    EXPECT_EQ(FilesAtHome(), 4u) << "no staging is left";
}

TEST_F(ServerOfUpdates, is_filled_by_the_tool_that_makes_lists)
{
    for (const char* name : {"F61118AC.HEX", "Release notes & more.htm"}) WriteAll(web / name, name);
    const QString directory = QString::fromStdString(web.string());
    for (int revision = 1; revision <= 2; ++revision)
        Execute(u"" SOURCE_DIR "/tools/make-update-list"_qs, {directory, "--message", "Two  lines\nof news"});
    Sign("BNLUpdate.txt");
    for (const char* end : {"", ".minisig"})
        fs::rename(web / (std::string("BNLUpdate.txt") + end), web / (std::string("list.txt") + end));
    ASSERT_EQ(Check(), "2 new");
    EXPECT_EQ(updater_->Revision(), 2);
    EXPECT_EQ(updater_->Messages().at(0).Text, "Two lines of news");
    EXPECT_EQ(Download(), "ok");
    EXPECT_EQ(Replace(), "ok");
    EXPECT_EQ(ReadAll(home / "Release notes & more.htm"), "Release notes & more.htm");
}

TEST_F(ServerOfUpdates, goes_on_where_a_download_was_cut_off)
{
    const std::string bytes = std::string(100000, 'a') + std::string(100000, 'b');
    Publish(Offer("A.HEX", bytes, "cut"));
    ASSERT_EQ(Check(), "1 new");
    EXPECT_TRUE(Download().starts_with("1 A.HEX: ")) << "cut in the middle";
    Publish(Offer("A.HEX", bytes, "broken"));
    ASSERT_EQ(Check(), "1 new");
    EXPECT_TRUE(Download().starts_with("1 A.HEX: ")) << "out of order for a while";
    const std::string lines = Offer("A.HEX", bytes);
    Publish(lines);
    ASSERT_EQ(Check(), "1 new");
    EXPECT_EQ(Download(), "ok");
    EXPECT_NE(Requests().find("/well/A.HEX bytes=100000-"), std::string::npos) << Requests();

    // Refused today, found again at the next start, as long as the list is to be trusted.
    updater_.reset();
    EXPECT_EQ(Previous(), "previous");
    EXPECT_EQ(Replace(), "ok");
    EXPECT_EQ(ReadAll(home / "A.HEX"), bytes);
    updater_.reset();
    EXPECT_EQ(Previous(), "1 nothing");

    // All has arrived and the program ended ahead of looking at it: the server isn't asked again.
    fs::remove(home / "A.HEX");
    fs::create_directories(home / "BNLUpdate.staging");
    WriteAll(home / "BNLUpdate.staging" / (Digest(bytes) + ".part"), bytes);
    ASSERT_EQ(Check(), "1 new");
    const std::string before = Requests();
    EXPECT_EQ(Download(), "ok");
    EXPECT_EQ(Requests(), before);
    EXPECT_EQ(Replace(), "ok");

    // What is there of a part is of another file: the server is asked for the whole once more.
    fs::remove(home / "A.HEX");
    fs::create_directories(home / "BNLUpdate.staging");
    WriteAll(home / "BNLUpdate.staging" / (Digest(bytes) + ".part"), "nonsense");
    ASSERT_EQ(Check(), "1 new");
    EXPECT_EQ(Download(), "ok");
    Publish(Offer("B.HEX", bytes, "whole"));
    WriteAll(home / "BNLUpdate.staging" / (Digest(bytes) + ".part"), bytes.substr(0, 1000));
    fs::remove(home / "BNLUpdate.staging" / Digest(bytes));
    ASSERT_EQ(Check(), "1 new");
    EXPECT_EQ(Download(), "ok") << "a server that knows no parts";
    EXPECT_EQ(Replace(), "ok");
    EXPECT_EQ(ReadAll(home / "B.HEX"), bytes);
}

TEST_F(ServerOfUpdates, that_fails_is_told_in_words_and_changes_nothing)
{
    Publish(Offer("A.HEX", "a"));
    fs::rename(web / "list.txt", web / "away");
    EXPECT_NE(Check().find("answers \"404"), std::string::npos);
    fs::rename(web / "away", web / "list.txt");
    EXPECT_NE(Check("broken").find("answers \"500"), std::string::npos);
    EXPECT_EQ(Check("elsewhere").substr(0, 49), "1 the server points to another place, which isn't");
    EXPECT_TRUE(Check("cut").starts_with("1 "));
    EXPECT_TRUE(Check("silent").starts_with("30006 ")) << "it fell silent";
    EXPECT_NE(Check("endless").find("more than was announced"), std::string::npos) << "a list of 10 GB";

    for (const char* manner : {"endless", "silent", "broken", "elsewhere", "cut"}) {
        Publish(Offer("A.HEX", std::string(50000, 'a') + manner, manner));
        ASSERT_EQ(Check(), "1 new");
        EXPECT_TRUE(Download().starts_with("1 A.HEX: ")) << manner;
    }
    Publish(Line("A.HEX", "announced", "../well/A.HEX"));
    ASSERT_EQ(Check(), "1 new");
    EXPECT_TRUE(Download().starts_with("1 A.HEX: "));
    WriteAll(web / "A.HEX", "of-length");
    EXPECT_NE(Download().find("isn't the file that was signed"), std::string::npos);
    Publish(Line("A.HEX", "a", "file:///etc/passwd"));
    ASSERT_EQ(Check(), "1 new");
    EXPECT_NE(Download().find("neither http nor https"), std::string::npos);
    EXPECT_FALSE(fs::exists(home / "A.HEX"));
    GoAway();
    EXPECT_TRUE(Check().starts_with("30006 ")) << "nobody is there";
}

TEST_F(ServerOfUpdates, is_believed_only_with_a_whole_signature_of_its_own_key)
{
    const std::string line = Offer("A.HEX", "a");
    const auto refuses = [this](const std::string& why) {
        const std::string told = Check();
        EXPECT_NE(told.find(why), std::string::npos) << told;
        EXPECT_FALSE(fs::exists(home / "BNLUpdate.staging"));
    };
    Publish(line);
    const std::string list = ReadAll(web / "list.txt"), signature = ReadAll(web / "list.txt.minisig");
    EXPECT_EQ(Check(), "1 new");

    WriteAll(web / "list.txt", list + line);
    refuses("wrong");
    WriteAll(web / "list.txt", list);
    std::string altered = signature;
    altered[altered.find("trusted comment: ", 20) + 18] ^= 1;
    WriteAll(web / "list.txt.minisig", altered);
    refuses("wrong");
    WriteAll(web / "list.txt.minisig", signature + "more\n");
    refuses("no signature of minisign");
    WriteAll(web / "list.txt.minisig", "<script>");
    refuses("no signature of minisign");
    fs::remove(web / "list.txt.minisig");
    refuses("has no signature");

    Publish(line + Offer("B.HEX", "b"));
    WriteAll(web / "list.txt", list);
    refuses("wrong");
    Publish(line, 5, "2999-12-31", {"-l"});
    refuses("only prehashed");
    std::string flipped = ReadAll(web / "list.txt.minisig");
    flipped[flipped.find('\n') + 1 + 2] = 'Q';  // base64 of "Ed..." begins with "RW", of "ED..." with "RU"
    flipped.replace(flipped.find('\n') + 1, 2, "RU");
    WriteAll(web / "list.txt.minisig", flipped);
    refuses("the list of updates is refused");
    MakeKey("foreign");
    Publish(line, 5, "2999-12-31", {}, "foreign");
    refuses("another key");
    // The next key beside the current one.
    WriteAll(home / "BNLUpdate.pub", ReadAll(Path("own.pub")) + ReadAll(Path("foreign.pub")));
    EXPECT_EQ(Check(), "1 new");
    WriteAll(home / "BNLUpdate.pub", "untrusted comment: no key\nRWQ\n");
    refuses("no file of public keys");
    fs::remove(home / "BNLUpdate.pub");
    refuses("no public key");
}

TEST_F(ServerOfUpdates, is_not_believed_when_its_list_is_old_or_names_what_it_must_not)
{
    const std::string line = Offer("A.HEX", "a");
    Publish(line, 5);
    EXPECT_EQ(Check("well", 5), "1 new");
    EXPECT_NE(Check("well", 6).find("older than the library of this program (revision 6)"), std::string::npos);
    Publish(line, 5, "2026-01-01");
    const std::string told = Check();
    EXPECT_NE(told.find("has expired on 2026-01-01"), std::string::npos) << told;
    EXPECT_NE(told.find(QDate::currentDate().toString(Qt::ISODate).toStdString()), std::string::npos) << told;
    for (const char* name :
         {"..%2Fx", "a%5Cb", "C:x", "NUL.txt", "Burnline.ini", "BNLUpdate.pub", "%3Cscript%3E", "a%00b"}) {
        Publish(line + Line(name, "a", "../well/A.HEX"));
        EXPECT_NE(Check().find("line 6: "), std::string::npos) << name;
    }
    EXPECT_EQ(FilesAtHome(), 1u) << "nothing but the key";
}

TEST_F(ServerOfUpdates, with_an_expired_certificate_is_refused)
{
    const QString key = QString::fromStdString(Path("web.key")), certificate = QString::fromStdString(Path("web.pem"));
    const QString request = QString::fromStdString(Path("web.csr")), settings = QString::fromStdString(Path("ca.cnf"));
    WriteAll(Path("ca.cnf"), "[ca]\ndefault_ca=own\n[own]\ndatabase=" + Path("index") + "\nserial=" + Path("serial") +
                                 "\nnew_certs_dir=" + Path("") +
                                 "\ndefault_md=sha256\npolicy=any\nx509_extensions=host\n[any]\ncommonName=supplied\n"
                                 "[host]\nsubjectAltName=IP:127.0.0.1\nbasicConstraints=CA:TRUE\n");
    Execute(u"openssl"_qs,
            {"req", "-newkey", "rsa:2048", "-nodes", "-keyout", key, "-out", request, "-subj", "/CN=test"});
    Publish(Offer("A.HEX", "a"));
    for (const auto& [end, expected] : {std::pair("21990101000000Z", "1 new"), std::pair("20210101000000Z", "1 ")}) {
        WriteAll(Path("index"), "");
        WriteAll(Path("serial"), "01\n");
        Execute(u"openssl"_qs, {"ca", "-batch", "-selfsign", "-config", settings, "-in", request, "-keyfile", key,
                                "-out", certificate, "-startdate", "20200101000000Z", "-enddate", end});
        Start({certificate, key});
        // Trusted like that of a known authority: what is wrong with the second one is its date alone.
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        trusting.setCaCertificates(QSslCertificate::fromPath(certificate));
        QSslConfiguration::setDefaultConfiguration(trusting);
        const std::string told = Check("well", 1, "https");
        EXPECT_EQ(told.substr(0, std::string(expected).size()), expected) << told;
        EXPECT_EQ(Requests().find("list.txt") != std::string::npos, end[1] == '1') << "asked for the list";
        WriteAll(web / "requests.log", "");
    }
}

TEST_F(ServerOfUpdates, replaces_the_program_itself_when_it_has_ended)
{
    WriteAll(home / "burnline", "the former program");
    fs::permissions(home / "burnline", fs::perms::owner_all);
    Publish(Offer("burnline", "the new program") + Offer("A.HEX", "a"));
    ASSERT_EQ(Check(), "2 new");
    ASSERT_EQ(Download(), "ok");
    EXPECT_EQ(Replace(), "closing");
    EXPECT_EQ(ReadAll(home / "burnline"), "the former program");
    QString problem;
    EXPECT_TRUE(updater_->ReplaceAfterEnd(problem));
    EXPECT_EQ(problem, QString());
    EXPECT_EQ(ReadAll(home / "burnline"), "the new program");
    EXPECT_EQ(fs::status(home / "burnline").permissions(), fs::perms::owner_all);
    EXPECT_EQ(ReadAll(home / "A.HEX"), "a");
    EXPECT_FALSE(updater_->ReplaceAfterEnd(problem)) << "once";
}

}  // namespace
