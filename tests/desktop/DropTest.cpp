// Files that are dropped on the window.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include "desktop/Desktop.h"
#include "forms/frmWizard.h"
#include "tests/desktop/ProgramHome.h"
#include "tests/platform/posix/Restrictions.h"

namespace fs = std::filesystem;

namespace {

class DroppedFiles : public testing::Test {
protected:
    DroppedFiles()
    {
        qputenv("BURNLINE_HOME", QByteArray::fromStdString(home.Path("").string()));
        desktop = std::make_unique<Desktop>();
        frmWizard.mnuUpdate.Enabled = true;
        fs::permissions(stick.Path("."), fs::perms::all);  // for whoever the test will be
        for (const char* name : {"A.HEX", "B.S19"}) WriteAll(stick.Path(name), std::string("new ") + name);
        QObject::connect(&answers, &QTimer::timeout, [this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            boxes.push_back(box->text().toStdString());
            box->button(QMessageBox::Ok)->click();
        });
        answers.start(1);
    }

    /// False when the window doesn't take them. Comes back when what it began has ended.
    bool Drop(const std::vector<fs::path>& paths)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const fs::path& path : paths) urls << QUrl::fromLocalFile(QString::fromStdString(path.string()));
        data.setUrls(urls);
        boxes.clear();
        QDragEnterEvent enter({9, 9}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QApplication::sendEvent(&desktop->Window(), &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent drop({9, 9}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&desktop->Window(), &drop);
        EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
        EXPECT_TRUE(boxes.empty()) << "no box as long as the one that the files come from waits";
        // Behind the import, which is queued by now.
        bool done = false;
        QTimer::singleShot(0, &answers, [&done] { done = true; });
        QElapsedTimer waited;
        for (waited.start(); !done && waited.elapsed() < 10000;) QApplication::processEvents();
        return done;
    }

    const ProgramHome home, stick;
    std::unique_ptr<Desktop> desktop;
    QTimer answers;
    std::vector<std::string> boxes;
};

TEST_F(DroppedFiles, are_imported_one_or_many_over_those_that_are_there)
{
    WriteAll(home.Path("B.S19"), "the former");
    ASSERT_TRUE(Drop({stick.Path("A.HEX")}));
    EXPECT_EQ(home.Bytes("A.HEX"), "new A.HEX");
    EXPECT_EQ(home.Bytes("B.S19"), "the former");
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0], "QEL Burnline Assistant has updated its flash file library.");

    WriteAll(stick.Path("A.HEX"), "newer still");
    ASSERT_TRUE(Drop({stick.Path("A.HEX"), stick.Path("B.S19")}));
    EXPECT_EQ(home.Bytes("A.HEX"), "newer still");
    EXPECT_EQ(home.Bytes("B.S19"), "new B.S19");
    EXPECT_EQ(boxes.size(), 1u);
    EXPECT_EQ(stick.Bytes("B.S19"), "new B.S19") << "copied, not moved";
}

TEST_F(DroppedFiles, that_cannot_be_copied_are_named_and_nothing_changes)
{
    WriteAll(home.Path("A.HEX"), "the former");
    ASSERT_TRUE(Drop({home.Path("A.HEX"), stick.Path("B.S19")}));
    ASSERT_EQ(boxes.size(), 2u) << "and the message that always comes";
    EXPECT_NE(boxes[1].find("A.HEX: it is in that directory already"), std::string::npos) << boxes[1];
    EXPECT_EQ(boxes[1].find("B.S19"), std::string::npos);
    EXPECT_EQ(home.Bytes("A.HEX"), "the former");
    EXPECT_EQ(home.Bytes("B.S19"), "new B.S19");

    fs::permissions(home.Path("."), static_cast<fs::perms>(0555));
    {
        const OrdinaryUser user;
        ASSERT_TRUE(user.IsValid());
        ASSERT_TRUE(Drop({stick.Path("A.HEX")}));
    }
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_NE(boxes[1].find(stick.Path("A.HEX").string() + ": Permission denied"), std::string::npos) << boxes[1];
    EXPECT_EQ(home.Bytes("A.HEX"), "the former");
}

TEST_F(DroppedFiles, are_refused_while_the_files_of_the_program_are_in_use)
{
    frmWizard.mnuUpdate.Enabled = false;
    EXPECT_FALSE(Drop({stick.Path("A.HEX")}));
    EXPECT_FALSE(fs::exists(home.Path("A.HEX")));
    EXPECT_TRUE(boxes.empty());
}

}  // namespace
