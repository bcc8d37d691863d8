#pragma once
// Where the antenna is to look, as a picture: azimuth on a compass, elevation against the horizon, skew of the dish.

#include <QString>
#include <QWidget>
#include <optional>

class QPainter;

class Dial : public QWidget {
    Q_OBJECT

public:
    /// Degrees: azimuth from north over east, elevation above the horizon, skew counter-clockwise as one sees it from
    /// behind the dish.
    struct Angles {
        double azimuth, elevation, skew;
        bool operator==(const Angles&) const = default;
    };

    explicit Dial(QWidget* parent = nullptr);

    /// Nothing, or what is no number: the dials stand empty.
    void Show(const std::optional<Angles>& angles);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void DrawAzimuth(QPainter& painter, const QRectF& disc) const;
    void DrawElevation(QPainter& painter, const QRectF& disc) const;
    void DrawSkew(QPainter& painter, const QRectF& disc) const;
    QString WordsBelow() const;
    QColor Ink(double share) const;

    std::optional<Angles> angles_;
};
