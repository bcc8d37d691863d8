#pragma once
// The six tabs of the diagnostics, as they are drawn: narrow windows put their columns below each other.

#include <QWidget>
#include <memory>

namespace Ui {
class DiagnosticsPage;
}

class DiagnosticsPage : public QWidget {
    Q_OBJECT

public:
    explicit DiagnosticsPage(QWidget* parent = nullptr);
    ~DiagnosticsPage() override;

    /// Draws the calculated angles once more when they have changed.
    void ShowAngles();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void GiveTabsKeys();
    void MakeEasyToHit();

    std::unique_ptr<Ui::DiagnosticsPage> ui_;
};
