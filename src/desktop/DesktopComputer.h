#pragma once
// The computer as the core sees it, on a desktop with windows.

#include <memory>

#include "desktop/Binder.h"
#include "desktop/HelpWindow.h"
#include "host/HostComputer.h"

class DesktopComputer : public HostComputer {
public:
    /// `directory` is the program's.
    DesktopComputer(const std::string& directory, Binder& binder, CaughtFailure& caught, Ports& ports,
                    SerialLink& link);

    Answer MsgBox(const std::string& words, Buttons buttons, Icon icon, const std::string& title,
                  Answer standard) override;
    void ShowModal(Form& form) override;
    std::vector<std::string> OpenDialog(const FileDialog& dialog) override;
    std::optional<std::string> SaveDialog(const FileDialog& dialog) override;
    void ShowHelp(int topic, const std::string& section) override;
    void CloseHelp() override;
    bool InternetConnected() override;

private:
    void Show() override { binder_.Paint(); }
    void ShowInTurn() override { binder_.PaintInTurn(); }
    void ShowOverdue() override { binder_.PaintOverdue(); }
    QWidget* PrepareDialog();

    Binder& binder_;
    std::unique_ptr<HelpWindow> help_;  // made when it is asked for
};
