#pragma once
// The help: its pages, their contents list, a search over all of them.

#include <QLineEdit>
#include <QListWidget>
#include <QToolButton>
#include <QWidget>
#include <vector>

#include "desktop/PageView.h"

class HelpWindow : public QWidget {
    Q_OBJECT

public:
    /// `folder` holds the pages and contents.txt, their order.
    explicit HelpWindow(const QString& folder);

    /// Opens the page of a topic, at its section; an unknown one opens the first page.
    void ShowTopic(int topic, const QString& section = {});

    /// The folder of the help: in the program's directory, beside the program, or where packages put it.
    static QString FindFolder(const QString& programDirectory);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Page {
        QString file, title, text;
    };
    struct Place {
        QString file, anchor;
        bool operator==(const Place&) const = default;
    };

    void ReadPages();
    void Build();
    QToolButton* MakeButton(const char* name, const QString& caption, const QString& tip, void (HelpWindow::*act)());
    void List();
    void Choose();
    void Open(const Place& place);
    void Show();
    void Back();
    void Forward();
    void Larger() { page_->zoomIn(); }
    void Smaller() { page_->zoomOut(); }

    const QString folder_;
    std::vector<Page> pages_;
    std::vector<Place> visited_;
    std::size_t here_ = 0;  // of visited_

    QLineEdit* wanted_;
    QListWidget* contents_;
    PageView* page_;
    QToolButton *back_, *forward_;
};
