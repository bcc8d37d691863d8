#pragma once
// The main window around its form: the road at the left, the state of the port in the status bar, keys and closing.

#include <QLabel>
#include <QMainWindow>
#include <memory>

#include "desktop/Binder.h"
#include "host/CaughtFailure.h"

namespace Ui {
class frmWizard;
}

class WizardWindow : public QMainWindow {
    Q_OBJECT

public:
    WizardWindow(Binder& binder, CaughtFailure& caught);
    ~WizardWindow() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    /// The keys of all windows pass here ahead of the controls.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowStep(int step);
    void ShowPortState();
    void NoteFocus(QWidget* old, QWidget* now);
    void KeepFocus();
    void FitToScreen();

    Binder& binder_;
    CaughtFailure& caught_;
    std::unique_ptr<Ui::frmWizard> ui_;
    QLabel portState_;
    bool leadOn_ = false;  // the focus waits for the button that leads on
};
