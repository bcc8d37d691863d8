#pragma once
// Searching in the terminal: a line under the text, opened by Ctrl+F. Enter goes on, Shift+Enter goes back, Escape
// closes.

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QWidget>

class FindBar : public QWidget {
    Q_OBJECT

public:
    explicit FindBar(QWidget* parent);

    /// The text that is searched; to be told once.
    void SearchIn(QPlainTextEdit& box) { box_ = &box; }

    /// Shows the bar with what is marked in the text, and takes the keyboard.
    void Open();
    /// Hides the bar and gives the keyboard back to who had it. The hit stays marked.
    void Close();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Way { Here, Next, Previous };
    void Find(Way way);
    void Tell(const QString& words);
    QPushButton* MakeButton(const QString& name, const QString& caption, const QString& tip);

    QPlainTextEdit* box_ = nullptr;
    QLineEdit* wanted_;
    QLabel* result_;
    QPointer<QWidget> before_;  // had the keyboard
};
