// What the diagnostics draw: the dial, the colours, options in groups, the search in the terminal.

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <cmath>

#include "desktop/Binder.h"
#include "desktop/Dial.h"
#include "desktop/FindBar.h"
#include "desktop/Looks.h"
#include "tests/desktop/RealWindow.h"

namespace {

void Press(QWidget& widget, int key, Qt::KeyboardModifiers held = Qt::NoModifier, const QString& text = {})
{
    QKeyEvent press(QEvent::KeyPress, key, held, text);
    QApplication::sendEvent(&widget, &press);
}

void AwaitActive(QWidget& window)
{
    window.activateWindow();
    QElapsedTimer waited;
    waited.start();
    while (!window.isActiveWindow() && waited.elapsed() < 10000) QApplication::processEvents();
    ASSERT_TRUE(window.isActiveWindow());
}

QPalette DarkPalette()
{
    QPalette dark(QColor(0xee, 0xee, 0xee), QColor(0x38, 0x38, 0x38), QColor(0x45, 0x45, 0x45),
                  QColor(0x1a, 0x1a, 0x1a), QColor(0x24, 0x24, 0x24), QColor(0xee, 0xee, 0xee), Qt::white,
                  QColor(0x1e, 0x1e, 0x1e), QColor(0x2b, 0x2b, 0x2b));
    dark.setColor(QPalette::Highlight, QColor(0x3d, 0x8b, 0xd9));
    return dark;
}

/// Where the pointer of one of the three discs stands: the middle of what is drawn in its colour, from the middle of
/// the disc.
QPointF PointerOn(Dial& dial, int disc, const QColor& color)
{
    const QImage image = dial.grab().toImage();
    const int column = image.width() / 3;
    double x = 0, y = 0, count = 0, top = image.height(), bottom = 0;
    for (int row = 0; row < image.height(); ++row)
        for (int at = disc * column; at < (disc + 1) * column; ++at) {
            const QColor seen = image.pixelColor(at, row);
            if (seen.rgb() == dial.palette().color(QPalette::Base).rgb()) {
                top = std::min(top, static_cast<double>(row));
                bottom = std::max(bottom, static_cast<double>(row));
            }
            if (seen.rgb() != color.rgb()) continue;
            x += at;
            y += row;
            ++count;
        }
    return count == 0 ? QPointF() : QPointF(x / count - (disc + 0.5) * column, y / count - (top + bottom) / 2);
}

TEST(Dial, points_where_the_antenna_is_to_look_in_light_and_dark)
{
    for (const QPalette& palette : {QApplication::palette(), DarkPalette()}) {
        Dial dial;
        dial.setPalette(palette);
        dial.resize(600, 260);
        const QColor light = palette.color(QPalette::Active, QPalette::Highlight);
        EXPECT_EQ(PointerOn(dial, 0, light), QPointF()) << "nothing is known yet";
        dial.Show(Dial::Angles{135, 40, 0});
        const QPointF southEast = PointerOn(dial, 0, light);
        EXPECT_GT(southEast.x(), 5);
        EXPECT_GT(southEast.y(), 5);
        dial.Show(Dial::Angles{270, 40, 0});
        const QPointF west = PointerOn(dial, 0, light);
        EXPECT_LT(west.x(), -5);
        EXPECT_LT(std::abs(west.y()), 3);
    }
}

TEST(Dial, says_in_words_what_it_shows)
{
    Dial dial;
    EXPECT_TRUE(dial.accessibleDescription().contains("press Calculate"));
    dial.Show(Dial::Angles{220.7888, 32.7563, -29.2422});
    for (const char* words : {"Azimuth 220.8", "elevation 32.8 degrees above", "skew 29.2 degrees clockwise"})
        EXPECT_TRUE(dial.accessibleDescription().contains(words)) << dial.accessibleDescription().toStdString();
    EXPECT_FALSE(dial.accessibleDescription().contains("can't be seen"));
    dial.Show(Dial::Angles{82.6, -16.5, 47.8});
    for (const char* words : {"16.5 degrees below the horizon", "47.8 degrees counter-clockwise",
                              "Below the horizon: this satellite can't be seen from here."})
        EXPECT_TRUE(dial.accessibleDescription().contains(words)) << dial.accessibleDescription().toStdString();
    dial.Show(Dial::Angles{NAN, INFINITY, 0});
    EXPECT_TRUE(dial.accessibleDescription().contains("press Calculate")) << "what is no number points nowhere";
}

struct SmallForm {
    Form Self{"small", "A small window"};
    Control txtNumber{Self, "txtNumber"};
    Control optNorth{Self, "optNorth", "North"}, optSouth{Self, "optSouth", "South"};
    ControlArray optEast{Self, "optEast", {"East"}};
};

class SmallWindow : public testing::Test {
protected:
    SmallWindow()
    {
        form.optNorth.Group = form.optSouth.Group = "Latitude";
        auto* box = new QVBoxLayout(&window);
        box->addWidget(&number);
        number.setObjectName("txtNumber");
        for (auto [option, name] : {std::pair(&north, "optNorth"), {&south, "optSouth"}, {&east, "optEast_0"}}) {
            option->setObjectName(name);
            option->setAutoExclusive(false);
            box->addWidget(option);
        }
    }
    void Attach()
    {
        binder.Attach(form.Self, window);
        form.Self.Visible = true;
        binder.Paint();
        AwaitActive(window);
    }

    SmallForm form;
    QWidget window;
    QLineEdit number{&window};
    QRadioButton north{&window}, south{&window}, east{&window};
    CaughtFailure caught;
    Binder binder{caught};
};

TEST_F(SmallWindow, lets_only_the_options_of_one_group_exclude_each_other_and_the_form_clear_them)
{
    Attach();
    east.click();
    north.click();
    EXPECT_TRUE(north.isChecked() && east.isChecked()) << "one frame, two groups";
    north.setFocus();
    Press(north, Qt::Key_Down);
    EXPECT_TRUE(south.isChecked() && !north.isChecked() && east.isChecked()) << "the arrow keys walk through a group";
    EXPECT_TRUE(form.optSouth.Value == 1 && form.optNorth.Value == 0);

    form.optSouth.Value = 0;
    binder.Paint();
    EXPECT_FALSE(south.isChecked());
    SelectOption(form.Self, form.optNorth);
    binder.Paint();
    EXPECT_TRUE(north.isChecked() && !south.isChecked());
}

TEST_F(SmallWindow, shows_a_field_that_is_no_number_readably_and_then_as_it_was)
{
    for (const QPalette& palette : {QApplication::palette(), DarkPalette()}) {
        window.setPalette(palette);
        Attach();
        form.txtNumber.BackColor = PaleYellow;
        binder.Paint();
        const QColor back = number.palette().color(QPalette::Base), ink = number.palette().color(QPalette::Text);
        EXPECT_EQ(back, ToColor(PaleYellow));
        EXPECT_GE(Contrast(back, ink), 4.5);
        form.txtNumber.BackColor = Standard;
        binder.Paint();
        EXPECT_EQ(number.palette().color(QPalette::Base), palette.color(QPalette::Base));
        EXPECT_EQ(number.palette().color(QPalette::Text), palette.color(QPalette::Text));
    }
}

TEST_F(SmallWindow, keeps_the_commands_of_the_keyboard_from_a_field_that_refuses_letters)
{
    std::string offered;
    form.txtNumber.KeyPress = [&offered](int key) {
        offered += static_cast<char>(key);
        return key < '0' || key > '9';
    };
    Attach();
    number.setText("42");
    Press(number, Qt::Key_A, Qt::ControlModifier, "a");
    EXPECT_EQ(number.selectedText(), "42");
    Press(number, Qt::Key_Delete, Qt::NoModifier, "\x7f");
    EXPECT_EQ(number.text(), "");
    Press(number, Qt::Key_X, Qt::NoModifier, "x");
    Press(number, Qt::Key_7, Qt::NoModifier, "7");
    EXPECT_EQ(number.text(), "7");
    EXPECT_EQ(offered, "x7") << "what types no character is none of the form's business";
}

class SearchedText : public testing::Test {
protected:
    SearchedText()
    {
        auto* box = new QVBoxLayout(&window);
        box->addWidget(&text);
        box->addWidget(&bar);
        box->addWidget(&command);
        bar.SearchIn(text);
        text.setReadOnly(true);
        text.setPlainText(">STATE = TRACKING\n==>GPS\n>state\n");
        window.show();
        AwaitActive(window);
        command.setFocus();
    }
    QLineEdit& Wanted() { return *bar.findChild<QLineEdit*>("txtFind"); }
    void Type(const QString& words)
    {
        Wanted().clear();
        for (const QChar letter : words) Press(Wanted(), letter.toUpper().unicode(), Qt::NoModifier, letter);
    }
    std::string Result() { return bar.findChild<QLabel*>("lblFound")->text().toStdString(); }
    int Marked() { return text.textCursor().selectionStart(); }

    QWidget window;
    QPlainTextEdit text{&window};
    FindBar bar{&window};
    QLineEdit command{&window};
};

TEST_F(SearchedText, is_stepped_through_by_enter_and_shift_enter_and_told_in_words)
{
    command.setText("GO");
    bar.Open();
    Type("state");
    EXPECT_EQ(Marked(), 1);
    EXPECT_EQ(Result(), "Hit 1 of 2") << "upper and lower case are the same";
    Press(Wanted(), Qt::Key_Return);
    EXPECT_EQ(Marked(), 26);
    Press(Wanted(), Qt::Key_Return);
    EXPECT_EQ(Marked(), 1) << "behind the last hit comes the first";
    Press(Wanted(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Marked(), 26);
    Type("nowhere");
    EXPECT_EQ(Result(), "Not found");
    EXPECT_EQ(command.text(), "GO");
    Press(Wanted(), Qt::Key_Escape);
    EXPECT_FALSE(bar.isVisible());
    EXPECT_EQ(window.focusWidget(), &command);
}

TEST_F(SearchedText, keeps_the_hit_while_the_antenna_goes_on_talking)
{
    bar.Open();
    Type("gps");
    ASSERT_EQ(text.textCursor().selectedText(), "GPS");
    const int hit = Marked();
    for (int line = 0; line < 500; ++line) AppendLines(text, "GPS LOCK\n");
    EXPECT_EQ(Marked(), hit);
    EXPECT_EQ(text.textCursor().selectedText(), "GPS");
    Press(Wanted(), Qt::Key_Return);
    EXPECT_EQ(Result(), "Hit 2 of 501") << "what came since is searched too";

    text.setPlainText("an empty window begins anew");
    Press(Wanted(), Qt::Key_Return);
    EXPECT_EQ(Result(), "Not found");
}

TEST_F(RealWindow, moves_the_antenna_and_finds_its_answer_by_keys_alone)
{
    StartAntenna(0);
    StartWizard();
    AwaitPortReady();
    wizard->PressKey("Ctrl+Alt+D");
    wizard->WaitUntil("the diagnostics", [&] { return wizard->See("fraStep_0").visible; });
    EXPECT_FALSE(wizard->See("road").visible);
    wizard->PressKey("Alt+2");
    wizard->WaitUntil("the second tab", [&] { return wizard->See("cmdUp").visible; });
    wizard->Focus("cmdHalt");
    wizard->PressKey("Ctrl+Up");
    wizard->WaitForText("Text1", "==>8");
    wizard->Focus("txtSendCmd");
    wizard->PressKey("Ctrl+Right");
    wizard->WaitForText("Text1", "==>6");
    wizard->PressKey("Alt+D");
    wizard->WaitForText("Text1", "==>2");
    wizard->PressKey("Ctrl+F");
    wizard->WaitUntil("the search", [&] { return wizard->See("findBar").visible; });
    wizard->Type("==>8");
    wizard->WaitForText("lblFound", "Hit 1 of 1");
    wizard->PressKey("Escape");
    wizard->WaitUntil("no search", [&] { return !wizard->See("findBar").visible; });
    wizard->Click("cmdNav_2");
    wizard->WaitUntil("STEP_INTRO", [&] { return wizard->See("fraStep_1").visible; });
    EXPECT_TRUE(wizard->See("road").visible);
}

}  // namespace
