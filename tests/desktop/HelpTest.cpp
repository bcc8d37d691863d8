// The help and the viewer, with the pages that go with the program.

#include <gtest/gtest.h>

#include <QListWidget>
#include <QTemporaryDir>
#include <QToolButton>

#include "desktop/HelpWindow.h"
#include "tests/desktop/ProgramHome.h"

namespace {

template <class Kind>
Kind& Part(QWidget& window, const char* name)
{
    auto* part = window.findChild<Kind*>(QString::fromLatin1(name));
    if (!part) throw std::runtime_error(std::string(name) + " isn't there");
    return *part;
}

TEST(Help, opens_the_page_of_every_step_and_walks_back_and_forward)
{
    HelpWindow help(u"" SOURCE_DIR "/help"_qs);
    auto& page = Part<PageView>(help, "helpPage");
    auto& contents = Part<QListWidget>(help, "helpContents");
    QStringList titles;
    for (int topic = 1010; topic <= 1090; topic += 10) {
        help.ShowTopic(topic);
        titles << page.documentTitle();
        EXPECT_EQ(contents.currentItem()->text(), titles.back());
        EXPECT_GT(page.toPlainText().size(), 400) << topic;
    }
    titles.removeDuplicates();
    EXPECT_EQ(titles.size(), 9);
    Part<QToolButton>(help, "helpBack").click();
    EXPECT_EQ(page.documentTitle(), titles[7]);
    Part<QToolButton>(help, "helpBack").click();
    Part<QToolButton>(help, "helpForward").click();
    EXPECT_EQ(page.documentTitle(), titles[7]);
    help.ShowTopic(4711);
    EXPECT_EQ(page.documentTitle(), contents.item(0)->text());
}

TEST(Help, finds_the_pages_that_hold_all_words)
{
    HelpWindow help(u"" SOURCE_DIR "/help"_qs);
    help.ShowTopic(1020);
    auto& contents = Part<QListWidget>(help, "helpContents");
    const int all = contents.count();
    auto& wanted = Part<QLineEdit>(help, "helpSearch");
    wanted.setText(u"dialout group"_qs);
    ASSERT_GT(contents.count(), 0);
    EXPECT_LT(contents.count(), all);
    contents.setCurrentRow(0);
    EXPECT_TRUE(Part<PageView>(help, "helpPage").toPlainText().contains(u"dialout"_qs));
    wanted.setText(u"xyzzy"_qs);
    EXPECT_EQ(contents.count(), 1);
    EXPECT_EQ(contents.item(0)->text(), u"No page holds these words."_qs);
}

TEST(Viewer, fetches_nothing_from_outside_the_pages_directory)
{
    const QTemporaryDir temp;
    const std::string home = temp.path().toStdString();
    WriteAll(home + "/secret.txt", "secret");
    std::filesystem::create_directories(home + "/pages");
    WriteAll(home + "/pages/style.css", "p {}");
    WriteAll(home + "/pages/log.htm",
             "<script>document.write('run')</script><p>text</p><img src='http://127.0.0.1:9/x.png'>"
             "<link rel=stylesheet href='../secret.txt'><a href='../secret.txt'>out</a><a href='log.htm#end'>in</a>");
    PageView view;
    view.ShowPage(QString::fromStdString(home + "/pages/log.htm"));
    EXPECT_TRUE(view.toPlainText().contains(u"text"_qs));
    EXPECT_FALSE(view.toPlainText().contains(u"run"_qs));
    const auto loads = [&view](const char* name, int type = QTextDocument::StyleSheetResource) {
        return !view.loadResource(type, QUrl(QString::fromLatin1(name))).toByteArray().isEmpty();
    };
    EXPECT_TRUE(loads("style.css"));
    EXPECT_FALSE(loads("../secret.txt"));
    EXPECT_FALSE(loads("style.css", QTextDocument::HtmlResource));
    EXPECT_FALSE(loads("http://127.0.0.1:9/style.css"));
    QStringList wanted;
    QObject::connect(&view, &PageView::PageWanted, [&](const QString& path, const QString&) { wanted << path; });
    emit view.anchorClicked(QUrl(u"../secret.txt"_qs));
    emit view.anchorClicked(QUrl(u"http://127.0.0.1:9/"_qs));
    emit view.anchorClicked(QUrl(u"log.htm#end"_qs));
    EXPECT_EQ(wanted, QStringList(QString::fromStdString(home + "/pages/log.htm")));
    view.ShowPage(QString::fromStdString(home + "/pages/none.htm"));
    EXPECT_TRUE(view.toPlainText().startsWith(u"none.htm isn't in "_qs));
}

}  // namespace
