#pragma once
// Where the user is on the road of a flash: a column of eight stations, the present one lit, those behind it ticked.
// Narrow windows show the stations without their names.

#include <QStringList>
#include <QWidget>

class Road : public QWidget {
    Q_OBJECT

public:
    explicit Road(QWidget* parent);

    /// The step shown, 1 to 8; 0 is beside the road, no station is lit then.
    void SetStep(int step);
    void SetCompact(bool compact);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    int StationHeight() const;
    int StationAt(int y) const;
    void DrawStation(class QPainter& painter, int station) const;

    const QStringList names_;
    int step_ = 0;
    bool compact_ = false;
};
