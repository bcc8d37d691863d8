#pragma once
// Between forms and windows: paints what the core changed, and tells the core what the user did.

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <deque>
#include <functional>
#include <map>
#include <vector>

#include "desktop/ShownControl.h"
#include "forms/Control.h"
#include "host/CaughtFailure.h"

class QButtonGroup;

class QListWidget;

class Binder : public QObject {
    Q_OBJECT

public:
    explicit Binder(CaughtFailure& caught);

    /// Shows a form in a window. Every control is shown by the widget or menu entry whose objectName is its name; a
    /// control without one is not shown.
    void Attach(Form& form, QWidget& window);
    QWidget* WindowOf(const Form& form) const;

    /// Paints everything that has changed, now.
    void Paint();
    /// The same, but at most some fifteen times a second while changes pour in; what is put off comes by itself.
    void PaintInTurn();
    /// For those who ask for events in the middle of other work: paints only what has waited for a while.
    void PaintOverdue();

    /// The user acts: the handler runs, and what it changed is painted at once.
    void Act(const std::function<void()>& handler);

    /// Called after each painting.
    std::function<void()> Painted;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Bound {
        Form* form;
        QWidget* window;
        std::size_t controls = 0;  // so many of the form's controls have been looked up
        std::deque<ShownControl> shown;
    };
    void BindNew(Bound& bound);
    void Bind(Bound& bound, Control& control);
    void Bind(Bound& bound, Control& control, QWidget& widget);
    void ConnectWidget(Bound& bound, Control& control, QWidget& widget);
    void ConnectOption(Bound& bound, Control& control, QWidget& option);
    void ConnectList(Control& control, QListWidget& list);
    QButtonGroup* GroupOf(Bound& bound, const Control& option);
    void PaintForm(Form& form, QWidget& window);
    void Touch(Control& control);
    void Click(Control& control);

    CaughtFailure& caught_;
    std::deque<Bound> bound_;
    std::map<QObject*, Control*> lines_;  // the boxes of one line, whose keys the core sees
    unsigned long paintedRevision_ = 0;
    QElapsedTimer sincePaint_;
    double paintsLeft_;  // of the burst that is allowed before the rate holds
    QTimer later_;
};
