#pragma once
// The lamp of the command line, of which there are two on one spot: green while enabled, grey otherwise.

#include <QWidget>

class Lamp : public QWidget {
    Q_OBJECT

public:
    explicit Lamp(QWidget* parent);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
