#include "widgets/QtIcons.h"

#include <QColor>
#include <QGuiApplication>
#include <QIconEngine>
#include <QLinearGradient>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPolygonF>
#include <QStyle>

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace vantrel {

namespace {

/// Every icon is drawn on a square of this many units.
constexpr double GridSide = 24;

QColor Mix(const QColor& one, const QColor& other, double share) {
    const auto mixed = [share](int from, int to) { return qRound(from + (to - from) * share); };
    return {mixed(one.red(), other.red()), mixed(one.green(), other.green()), mixed(one.blue(), other.blue())};
}

struct Inks {
    QColor line;
    QColor paper;
    QColor grey;
    QColor blue;
    QColor green;
    QColor amber;
    QColor red;
};

Inks InksFor(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const bool dark = window.lightness() < text.lightness();
    if (mode == QIcon::Disabled) {
        const QColor fill = Mix(window, text, dark ? 0.16 : 0.12);
        return {Mix(window, text, dark ? 0.38 : 0.36), Mix(window, text, 0.02), fill, fill, fill, fill, fill};
    }
    if (dark) {
        return {Mix(text, window, 0.08), Mix(window, text, 0.16), Mix(window, text, 0.38), QColor(0x4D9CF0),
                QColor(0x43A768),        QColor(0xE8A93A),        QColor(0xE8705F)};
    }
    return {Mix(text, window, 0.2), QColor(Qt::white), Mix(window, text, 0.22), QColor(0x2F7FD8),
            QColor(0x3C9A5B),       QColor(0xF0B23E),  QColor(0xD9523F)};
}

using Points = std::initializer_list<QPointF>;

/// Draws in grid units; upright and level edges land on whole pixels, so that they are sharp at every size, and what is
/// symmetrical about the middle stays so.
class Sketch {
public:
    Sketch(QPainter& painter, double side, const Inks& colours)
        : inks(colours), painter_(painter), scale_(side / GridSide), width_(std::max(1.0, std::round(side / 22))),
          shift_(std::fmod(width_, 2) == 1 ? 0.5 : 0) {
        painter_.setRenderHint(QPainter::Antialiasing);
    }

    const Inks inks;

    /// A closed shape with an outline.
    void Shape(Points points, const QColor& fill) {
        painter_.setPen(Pen(inks.line));
        painter_.setBrush(fill);
        painter_.drawPolygon(OnPixels(points));
    }
    void Box(double left, double top, double right, double bottom, const QColor& fill) {
        Shape({{left, top}, {right, top}, {right, bottom}, {left, bottom}}, fill);
    }
    /// A box of one colour, as large as if it had an outline.
    void Bar(double left, double top, double right, double bottom, const QColor& fill) {
        const QPointF half(width_ / 2, width_ / 2);
        painter_.fillRect(QRectF(OnPixel({left, top}) - half, OnPixel({right, bottom}) + half), fill);
    }
    void Line(Points points, const QColor& ink) {
        painter_.setPen(Pen(ink));
        painter_.drawPolyline(OnPixels(points));
    }

    // Without regard to pixels, for what has no level edge.
    void Disc(QPointF centre, double radius, const QColor& fill) {
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(fill);
        painter_.drawEllipse(centre * scale_, radius * scale_, radius * scale_);
    }
    void Ring(QPointF centre, double radius, double width, const QColor& ink) {
        painter_.setPen(QPen(ink, width * scale_));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawEllipse(centre * scale_, radius * scale_, radius * scale_);
    }
    void Plane(Points points, const QColor& fill) {
        QPolygonF shape;
        for (const QPointF& point : points)
            shape << point * scale_;
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(fill);
        painter_.drawPolygon(shape);
    }
    void Stroke(Points points, double width, const QColor& ink) {
        QPolygonF line;
        for (const QPointF& point : points)
            line << point * scale_;
        painter_.setPen(QPen(ink, width * scale_, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter_.drawPolyline(line);
    }
    /// The rounded square that a program's icon stands on.
    void Tile(const QColor& top, const QColor& bottom) {
        QLinearGradient fill(0, 0, 0, GridSide * scale_);
        fill.setColorAt(0, top);
        fill.setColorAt(1, bottom);
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(fill);
        const double margin = std::round(0.5 * scale_);
        const double side = GridSide * scale_ - 2 * margin;
        painter_.drawRoundedRect(QRectF(margin, margin, side, side), 5 * scale_, 5 * scale_);
    }

private:
    [[nodiscard]] QPen Pen(const QColor& ink) const {
        QPen pen(ink, width_, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
        // A right angle keeps its corner, an acute one gets no thorn.
        pen.setMiterLimit(1);
        return pen;
    }
    [[nodiscard]] QPointF OnPixel(QPointF point) const {
        const double middle = std::round(GridSide / 2 * scale_);
        const auto pixel = [&](double unit) { return middle + std::round((unit - GridSide / 2) * scale_) + shift_; };
        return {pixel(point.x()), pixel(point.y())};
    }
    [[nodiscard]] QPolygonF OnPixels(Points points) const {
        QPolygonF placed;
        for (const QPointF& point : points)
            placed << OnPixel(point);
        return placed;
    }

    QPainter& painter_;
    double scale_;
    double width_;
    double shift_; ///< Puts the middle of a line of odd width on the middle of a pixel.
};

void DrawNew(Sketch& on) {
    on.Shape({{4.5, 1.5}, {13.5, 1.5}, {19.5, 7.5}, {19.5, 22}, {4.5, 22}}, on.inks.paper);
    on.Shape({{13.5, 1.5}, {19.5, 7.5}, {13.5, 7.5}}, on.inks.grey);
}

void DrawOpen(Sketch& on) {
    on.Shape({{1.5, 4}, {8, 4}, {10.5, 7}, {19.5, 7}, {19.5, 20}, {1.5, 20}}, on.inks.paper);
    on.Shape({{1.5, 20}, {6, 11}, {22.5, 11}, {19.5, 20}}, on.inks.amber);
}

void DrawSave(Sketch& on) {
    on.Shape({{2, 2}, {18.5, 2}, {22, 5.5}, {22, 22}, {2, 22}}, on.inks.blue);
    on.Box(6, 2, 17, 8.5, on.inks.paper);
    on.Bar(13, 4.5, 13.5, 6.5, on.inks.line);
    on.Box(6, 13.5, 18, 22, on.inks.paper);
    on.Line({{9, 17}, {15, 17}}, on.inks.line);
}

void DrawPrint(Sketch& on) {
    on.Box(6, 1.5, 18, 9, on.inks.paper);
    on.Box(1.5, 8, 22.5, 17, on.inks.grey);
    on.Box(6, 13.5, 18, 22, on.inks.paper);
    on.Line({{9, 16.5}, {15, 16.5}}, on.inks.line);
    on.Line({{9, 19.3}, {15, 19.3}}, on.inks.line);
    on.Bar(19, 10.5, 20, 11, on.inks.green);
}

void DrawOfflineEdit(Sketch& on) {
    on.Line({{2, 22}, {9, 22}}, on.inks.line);
    on.Line({{15, 22}, {22, 22}}, on.inks.line);
    on.Shape({{4, 18}, {5.5, 12.5}, {16.5, 1.5}, {20.5, 5.5}, {9.5, 16.5}}, on.inks.amber);
    on.Shape({{14, 4}, {16.5, 1.5}, {20.5, 5.5}, {18, 8}}, on.inks.red);
}

/// The board that both transfers have to do with.
void DrawBoardBelow(Sketch& on) {
    on.Box(1.5, 15, 22.5, 22, on.inks.green);
    on.Bar(4.5, 18, 6, 19, on.inks.paper);
    on.Bar(18, 18, 19.5, 19, on.inks.paper);
}

void DrawUpload(Sketch& on) {
    DrawBoardBelow(on);
    on.Shape({{12, 1.5}, {19, 8.5}, {15, 8.5}, {15, 18}, {9, 18}, {9, 8.5}, {5, 8.5}}, on.inks.blue);
}

void DrawDownload(Sketch& on) {
    DrawBoardBelow(on);
    on.Shape({{12, 18.5}, {5, 11.5}, {9, 11.5}, {9, 1.5}, {15, 1.5}, {15, 11.5}, {19, 11.5}}, on.inks.amber);
}

void DrawTargetBoard(Sketch& on) {
    for (const double middle : {6, 12, 18})
        on.Bar(middle - 1, 19, middle + 1, 22, on.inks.amber);
    on.Box(1.5, 3, 22.5, 18, on.inks.green);
    on.Box(7.5, 7, 16.5, 14, on.inks.grey);
    on.Bar(4, 5.5, 4.6, 6.1, on.inks.paper);
    on.Bar(19.4, 14.9, 20, 15.5, on.inks.paper);
}

void DrawCommunication(Sketch& on) {
    on.Line({{12, 8}, {12, 15.5}}, on.inks.line);
    on.Line({{4.5, 15.5}, {4.5, 12}, {19.5, 12}, {19.5, 15.5}}, on.inks.line);
    on.Box(7.5, 1.5, 16.5, 8, on.inks.blue);
    on.Box(1.5, 15.5, 6.75, 22, on.inks.green);
    on.Box(9.25, 15.5, 14.75, 22, on.inks.green);
    on.Box(17.25, 15.5, 22.5, 22, on.inks.green);
}

void DrawProgram(Sketch& on) {
    on.Tile(Mix(on.inks.blue, Qt::black, 0.1), Mix(on.inks.blue, Qt::black, 0.5));
    on.Stroke({{5.7, 6.5}, {12, 17.8}, {18.3, 6.5}}, 2.6, Qt::white);
    on.Disc({5.7, 6.5}, 3, Qt::white);
    on.Disc({18.3, 6.5}, 3, Qt::white);
    on.Disc({12, 17.8}, 3.4, on.inks.amber);
}

void DrawLampGood(Sketch& on) { on.Disc({12, 12}, 8, on.inks.green); }

void DrawLampBad(Sketch& on) {
    on.Plane({{12, 0.5}, {23.5, 12}, {12, 23.5}, {0.5, 12}}, on.inks.red);
    on.Stroke({{12, 6.5}, {12, 13}}, 2.6, Qt::white);
    on.Disc({12, 17.3}, 1.6, Qt::white);
}

void DrawLampOff(Sketch& on) {
    on.Ring({12, 12}, 7.5, 2.2, on.inks.line);
    on.Stroke({{8.5, 12}, {15.5, 12}}, 2.2, on.inks.line);
}

void DrawLampUnknown(Sketch& on) { on.Ring({12, 12}, 4.5, 2.2, on.inks.grey); }

void Draw(ProgramIcon icon, Sketch& on) {
    switch (icon) {
    case ProgramIcon::New:
        return DrawNew(on);
    case ProgramIcon::Open:
        return DrawOpen(on);
    case ProgramIcon::Save:
        return DrawSave(on);
    case ProgramIcon::Print:
        return DrawPrint(on);
    case ProgramIcon::OfflineEdit:
        return DrawOfflineEdit(on);
    case ProgramIcon::Upload:
        return DrawUpload(on);
    case ProgramIcon::Download:
        return DrawDownload(on);
    case ProgramIcon::TargetBoard:
        return DrawTargetBoard(on);
    case ProgramIcon::Communication:
        return DrawCommunication(on);
    case ProgramIcon::Program:
        return DrawProgram(on);
    case ProgramIcon::LampGood:
        return DrawLampGood(on);
    case ProgramIcon::LampBad:
        return DrawLampBad(on);
    case ProgramIcon::LampOff:
        return DrawLampOff(on);
    case ProgramIcon::LampUnknown:
        return DrawLampUnknown(on);
    }
}

class ProgramIconEngine final : public QIconEngine {
public:
    explicit ProgramIconEngine(ProgramIcon icon) : icon_(icon) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
        // In the device's own pixels, or half of the edges would fall between two of them at a scale of 1.5.
        const double ratio = painter->device()->devicePixelRatio();
        const double side = std::floor(std::min(rect.width(), rect.height()) * ratio);
        const QRectF pixels(QPointF(rect.topLeft()) * ratio, QSizeF(rect.size()) * ratio);
        painter->save();
        painter->scale(1 / ratio, 1 / ratio);
        painter->translate((pixels.center() - QPointF(side, side) / 2).toPoint());
        Sketch sketch(*painter, side, InksFor(mode));
        Draw(icon_, sketch);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return drawn;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new ProgramIconEngine(icon_); }

private:
    ProgramIcon icon_;
};

} // namespace

QIcon IconOf(ProgramIcon icon) { return QIcon(new ProgramIconEngine(icon)); }

QSize LampSize(const QWidget& widget) {
    const int side = std::max(widget.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &widget),
                              widget.fontMetrics().ascent());
    return {side, side};
}

QColor LampColor(ProgramIcon lamp) {
    const Inks inks = InksFor(QIcon::Normal);
    if (lamp == ProgramIcon::LampGood) return inks.green;
    if (lamp == ProgramIcon::LampBad) return inks.red;
    return lamp == ProgramIcon::LampOff ? inks.line : inks.grey;
}

} // namespace vantrel
