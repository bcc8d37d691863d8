#pragma once
// The antenna as it is seen: a power switch, a lamp, what it holds, what happened, and what may go wrong.

#include <QWidget>
#include <functional>
#include <string>

#include "simulator/program/AntennaLoop.h"

class QCheckBox;
class QGridLayout;
class QLabel;
class QListWidget;
class QSpinBox;
class QTableWidget;

class AntennaWindow : public QWidget {
public:
    /// `command` takes the lines that the buttons stand for.
    AntennaWindow(const sim::Unit& unit, const std::string& port, std::function<void(const std::string&)> command);

    void Show(const AntennaView& view);
    void AddEvent(double seconds, const std::string& words);

private:
    QWidget* MakeHead(const sim::Unit& unit, const std::string& port);
    QWidget* MakeFaults();
    void ShowParameters(const AntennaView& view);

    std::function<void(const std::string&)> command_;
    QCheckBox* chkPower_;
    QLabel* lblLamp_;
    QLabel* lblState_;
    QLabel* lblFlashed_;
    QLabel* lblFaults_;
    QTableWidget* tblParameters_;
    QListWidget* lstEvents_;
    QSpinBox* spnLine_;
};
