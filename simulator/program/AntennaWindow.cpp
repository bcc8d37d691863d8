#include "simulator/program/AntennaWindow.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr int mostEvents = 500;

struct FaultButton {
    const char* objectName;
    const char* caption;
    const char* command;  // "%" stands for the line of the spin box
    const char* tip;
};

constexpr FaultButton faultButtons[] = {
    {"btnSilent", "Lose line or block", "fault silent %", "The line is lost and not answered"},
    {"btnRefuse", "Refuse line", "fault refuse %", "The line is answered with \"1\""},
    {"btnWrongEcho", "Wrong echo", "fault wrong-echo %", "The block is echoed wrongly"},
    {"btnLag", "Lag", "fault lag", "Late answers, texts in pieces, lines ahead of the sign-on"},
    {"btnPowerLost", "Power lost at line", "fault power-lost %", "The power goes when the line comes"},
    {"btnDeaf", "Deaf from line on", "fault silent % always", "The line and all behind it stay unanswered"},
    {"btnNoise", "Noise", "fault noise", "A wrong byte beside every answer to a line"},
    {"btnSlow", "Slow answers", "fault slow 800", "Every answer comes 0.8 s late"},
    {"btnNoSignOn", "No sign-on", "fault no-sign-on", "The boot loader starts without a word, once"},
    {"btnNoEraseEnd", "Endless erase", "fault no-erase-end", "The next erase never ends"},
    {"btnPortGone", "Pull the cable", "fault port-gone", "The port vanishes for five seconds"},
    {"btnClear", "All well again", "fault clear", "No fault any more"},
};

QLabel* NamedLabel(const char* objectName, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(objectName);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

}  // namespace

AntennaWindow::AntennaWindow(const sim::Unit& unit, const std::string& port,
                             std::function<void(const std::string&)> command)
    : command_(std::move(command))
{
    setObjectName("AntennaWindow");
    setWindowTitle("Simulated antenna");
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeHead(unit, port));

    tblParameters_ = new QTableWidget(0, 2, this);
    tblParameters_->setObjectName("tblParameters");
    tblParameters_->setAccessibleName("Parameters that the antenna holds");
    tblParameters_->setHorizontalHeaderLabels({"Parameter", "Value"});
    tblParameters_->horizontalHeader()->setStretchLastSection(true);
    tblParameters_->verticalHeader()->hide();
    tblParameters_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    tblParameters_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tblParameters_->setVisible(unit.keeps != sim::Keeps::Nothing);
    column->addWidget(tblParameters_, 3);

    lstEvents_ = new QListWidget(this);
    lstEvents_->setObjectName("lstEvents");
    lstEvents_->setAccessibleName("What happened");
    lstEvents_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    column->addWidget(lstEvents_, 3);
    column->addWidget(MakeFaults());
    resize(420, 640);
}

QWidget* AntennaWindow::MakeHead(const sim::Unit& unit, const std::string& port)
{
    auto* head = new QWidget(this);
    auto* grid = new QGridLayout(head);
    grid->setContentsMargins(0, 0, 0, 0);
    auto* name = NamedLabel("lblUnit", head);
    QFont font = name->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.3);
    name->setFont(font);
    name->setText(QString("%1  (board type %2)").arg(unit.name).arg(unit.board));
    auto* where = NamedLabel("lblPort", head);
    where->setText(QString("on %1 at %2 baud").arg(QString::fromStdString(port)).arg(unit.baud));

    chkPower_ = new QCheckBox("&Power", head);
    chkPower_->setObjectName("chkPower");
    chkPower_->setAccessibleName("Power switch of the antenna");
    connect(chkPower_, &QCheckBox::clicked, this, [this](bool on) { command_(on ? "power on" : "power off"); });
    lblLamp_ = new QLabel(head);
    lblLamp_->setObjectName("lblLamp");
    lblLamp_->setFixedSize(18, 18);
    lblState_ = NamedLabel("lblState", head);
    lblFlashed_ = NamedLabel("lblFlashed", head);

    grid->addWidget(name, 0, 0, 1, 3);
    grid->addWidget(where, 1, 0, 1, 3);
    grid->addWidget(chkPower_, 2, 0);
    grid->addWidget(lblLamp_, 2, 1);
    grid->addWidget(lblState_, 2, 2);
    grid->addWidget(lblFlashed_, 3, 0, 1, 3);
    grid->setColumnStretch(2, 1);
    if (unit.board == 17) {
        auto* update = new QCheckBox("&Update mode", head);
        update->setObjectName("chkUpdate");
        update->setChecked(true);
        connect(update, &QCheckBox::clicked, this, [this](bool on) { command_(on ? "update on" : "update off"); });
        grid->addWidget(update, 4, 0, 1, 3);
    }
    return head;
}

QWidget* AntennaWindow::MakeFaults()
{
    auto* box = new QGroupBox("What may go wrong", this);
    auto* column = new QVBoxLayout(box);
    auto* row = new QHBoxLayout;
    auto* caption = new QLabel("&Line or block", box);
    spnLine_ = new QSpinBox(box);
    spnLine_->setObjectName("spnLine");
    spnLine_->setRange(1, 100000);
    spnLine_->setValue(100);
    caption->setBuddy(spnLine_);
    row->addWidget(caption);
    row->addWidget(spnLine_);
    row->addStretch();
    column->addLayout(row);

    auto* grid = new QGridLayout;
    int place = 0;
    for (const FaultButton& fault : faultButtons) {
        auto* button = new QPushButton(fault.caption, box);
        button->setObjectName(fault.objectName);
        button->setToolTip(fault.tip);
        connect(button, &QPushButton::clicked, this, [this, words = std::string(fault.command)] {
            QString line = QString::fromStdString(words);
            command_(line.replace('%', QString::number(spnLine_->value())).toStdString());
        });
        grid->addWidget(button, place / 2, place % 2);
        ++place;
    }
    column->addLayout(grid);
    lblFaults_ = NamedLabel("lblFaults", box);
    lblFaults_->setWordWrap(true);
    column->addWidget(lblFaults_);
    return box;
}

void AntennaWindow::Show(const AntennaView& view)
{
    const QSignalBlocker quiet(chkPower_);
    chkPower_->setChecked(view.powered);
    const char* colour = !view.powered ? "#6b6b6b" : view.software ? "#2fb344" : "#f59f00";
    lblLamp_->setStyleSheet(QString("background: %1; border: 1px solid palette(mid); border-radius: 9px;").arg(colour));
    lblLamp_->setAccessibleName(!view.powered ? "Lamp: off" : view.software ? "Lamp: green" : "Lamp: amber");
    lblState_->setText(QString::fromStdString(view.port ? view.state : view.state + ", the port is gone"));
    lblFlashed_->setText(view.software && view.bytesFlashed == 0 ? QString("Software: as delivered")
                                                                 : QString("Software: %1, %2 bytes flashed")
                                                                       .arg(view.software ? "in place" : "none")
                                                                       .arg(view.bytesFlashed));
    QStringList faults;
    for (const std::string& fault : view.faults) faults << QString::fromStdString(fault);
    lblFaults_->setText(faults.isEmpty() ? "No fault set" : "Set: " + faults.join(", "));
    ShowParameters(view);
}

void AntennaWindow::ShowParameters(const AntennaView& view)
{
    tblParameters_->setRowCount(static_cast<int>(view.parameters.size()));
    int row = 0;
    for (const auto& [name, value] : view.parameters) {
        int column = 0;
        for (const std::string& text : {name, value}) {
            auto* item = tblParameters_->item(row, column);
            if (!item) tblParameters_->setItem(row, column, item = new QTableWidgetItem);
            item->setText(QString::fromStdString(text));
            ++column;
        }
        ++row;
    }
    tblParameters_->resizeColumnToContents(0);
}

void AntennaWindow::AddEvent(double seconds, const std::string& words)
{
    const bool atEnd = lstEvents_->verticalScrollBar()->value() == lstEvents_->verticalScrollBar()->maximum();
    lstEvents_->addItem(QString("%1  %2").arg(seconds, 0, 'f', 1).arg(QString::fromStdString(words)));
    if (lstEvents_->count() > mostEvents) delete lstEvents_->takeItem(0);
    if (atEnd) lstEvents_->scrollToBottom();
}
