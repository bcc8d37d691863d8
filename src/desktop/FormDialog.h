#pragma once
// A dialog around a form. The core decides when it goes; closing it only asks.

#include <QDialog>

class FormDialog : public QDialog {
public:
    using QDialog::QDialog;

    /// Escape and the window's close button: tells `rejected` and stays open.
    void reject() override { emit rejected(); }
    /// As large as its content when it appears, lists unscrolled, as far as the screen has room.
    void setVisible(bool visible) override;
};
