#include "widgets/QtStripChart.h"

#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace vantrel {

namespace {

constexpr int Gap = 6; ///< Pixels between texts and lines.
constexpr double CurveWidth = 1.8;
constexpr float FaintShare = 0.2F;
constexpr int MostTimeMarks = 8;

/// For a light ground and for a dark one; apart for eyes that see red and green alike, too.
constexpr std::array<std::array<QColor, 2>, 4> Colours{{{QColor(0, 90, 181), QColor(120, 180, 255)},
                                                        {QColor(192, 64, 0), QColor(255, 160, 90)},
                                                        {QColor(0, 120, 90), QColor(90, 220, 180)},
                                                        {QColor(140, 40, 150), QColor(230, 150, 240)}}};
constexpr std::array Patterns{Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};

/// "09:05:07".
QString ClockText(double secondsOfDay) {
    constexpr qint64 day = 86'400;
    constexpr qint64 hour = 3600;
    constexpr qint64 minute = 60;
    const auto whole = static_cast<qint64>(std::llround(secondsOfDay)) % day;
    const auto two = [](qint64 number) { return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')); };
    return two(whole / hour) + u':' + two(whole / minute % minute) + u':' + two(whole % minute);
}

/// The points of one column of pixels: where the line enters and leaves, and how far it goes up and down in between.
struct PixelColumn {
    int pixel;
    double x, low, high, last;
};

} // namespace

ChartScale ValueScale(double low, double high, int most) {
    if (high - low < 1) {
        low = low > 0 ? low - 1 : std::floor(low);
        high += 1;
    }
    double step = 1;
    constexpr std::array factors{2.0, 2.5, 2.0}; // 1, 2, 5, 10
    for (std::size_t i = 0; std::ceil(high / step) - std::floor(low / step) > std::max(most, 2); ++i)
        step *= factors.at(i % factors.size());
    return {std::floor(low / step) * step, std::ceil(high / step) * step, step};
}

double TimeStep(double span, int most) {
    constexpr std::array steps{1.0,   2.0,   5.0,    10.0,   15.0,   30.0,    60.0,    120.0,  300.0,
                               600.0, 900.0, 1800.0, 3600.0, 7200.0, 14400.0, 21600.0, 43200.0};
    const auto* found = std::ranges::find_if(steps, [&](double step) { return span / step <= std::max(most, 1); });
    return found == steps.end() ? span : *found;
}

QtStripChart::QtStripChart(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("chart"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void QtStripChart::SetCurves(std::vector<StripCurve> curves) {
    curves_ = std::move(curves);
    curves_.resize(std::min(curves_.size(), Colours.size()));
    update();
}

void QtStripChart::SetTimes(double from, double to) {
    from_ = from;
    to_ = std::max(to, from + 1);
    update();
}

void QtStripChart::SetTitles(const QString& time, const QString& value) {
    timeTitle_ = time;
    valueTitle_ = value;
    update();
}

QImage QtStripChart::Picture() { return grab().toImage(); }

QSize QtStripChart::sizeHint() const {
    const QFontMetrics font = fontMetrics();
    return {90 * font.averageCharWidth(), 22 * font.height()};
}

QSize QtStripChart::minimumSizeHint() const {
    const QFontMetrics font = fontMetrics();
    return {50 * font.averageCharWidth(), 10 * font.height()};
}

double QtStripChart::Field::X(double at) const { return area.left() + (at - from) / (to - from) * area.width(); }

double QtStripChart::Field::Y(double value) const {
    return area.bottom() - (value - values.low) / (values.high - values.low) * area.height();
}

bool QtStripChart::IsEmpty() const {
    return std::ranges::all_of(curves_, [](const StripCurve& curve) { return curve.points.empty(); });
}

ChartScale QtStripChart::ScaleOfValues(double height) const {
    double low = 0;
    double high = 0;
    bool any = false;
    for (const StripCurve& curve : curves_) {
        for (const StripPoint& point : curve.points) {
            low = any ? std::min(low, point.value) : point.value;
            high = any ? std::max(high, point.value) : point.value;
            any = true;
        }
    }
    return ValueScale(low, high, static_cast<int>(height / (2.5 * fontMetrics().height())));
}

QtStripChart::Field QtStripChart::LayOut() const {
    const QFontMetrics font = fontMetrics();
    // Legend and value title above; marks and title of the time below.
    const int top = 2 * (font.height() + Gap) + font.height() / 2;
    const int bottom = 2 * (font.height() + Gap);
    Field field{{}, ScaleOfValues(std::max(height() - top - bottom, 1)), from_, to_};
    const auto width = [&](double value) { return font.horizontalAdvance(QString::number(std::llround(value))); };
    // Half of a time mark may stand beside either end.
    const int right = font.horizontalAdvance(ClockText(0)) / 2 + Gap;
    const int left = std::max(std::max(width(field.values.low), width(field.values.high)) + 2 * Gap, right);
    field.area = QRectF(left, top, std::max(QWidget::width() - left - right, 1), std::max(height() - top - bottom, 1));
    return field;
}

QColor QtStripChart::Faint() const {
    const QColor base = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    const auto between = [](float from, float to) { return from + FaintShare * (to - from); };
    return QColor::fromRgbF(between(base.redF(), text.redF()), between(base.greenF(), text.greenF()),
                            between(base.blueF(), text.blueF()));
}

QPen QtStripChart::CurvePen(std::size_t index) const {
    const bool dark = palette().color(QPalette::Base).lightness() < 128;
    QPen pen(Colours.at(index).at(dark ? 1 : 0), CurveWidth, Patterns.at(index));
    pen.setJoinStyle(Qt::RoundJoin);
    return pen;
}

void QtStripChart::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    const Field field = LayOut();
    DrawLegend(painter);
    DrawTimeAxis(painter, field);
    if (IsEmpty()) {
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(field.area, Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
        return;
    }
    DrawValueAxis(painter, field);
    painter.setClipRect(field.area.adjusted(-1, -CurveWidth, 1, CurveWidth));
    for (std::size_t i = 0; i < curves_.size(); ++i)
        DrawCurve(painter, field, i);
}

void QtStripChart::DrawLegend(QPainter& painter) const {
    const QFontMetrics font = fontMetrics();
    const int sample = 4 * font.averageCharWidth();
    int x = Gap;
    for (std::size_t i = 0; i < curves_.size(); ++i) {
        if (curves_[i].name.isEmpty()) continue;
        painter.setPen(CurvePen(i));
        const double middle = Gap + font.height() / 2.0;
        painter.drawLine(QPointF(x, middle), QPointF(x + sample, middle));
        x += sample + Gap;
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(x, Gap + font.ascent(), curves_[i].name);
        x += font.horizontalAdvance(curves_[i].name) + 3 * Gap;
    }
}

void QtStripChart::DrawValueAxis(QPainter& painter, const Field& field) const {
    const QFontMetrics font = fontMetrics();
    for (double value = field.values.low; value <= field.values.high; value += field.values.step) {
        const double y = field.Y(value);
        painter.setPen(QPen(Faint(), 1));
        painter.drawLine(QPointF(field.area.left(), y), QPointF(field.area.right(), y));
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(QRectF(0, y - font.height() / 2.0, field.area.left() - Gap, font.height()),
                         Qt::AlignRight | Qt::AlignVCenter, QString::number(std::llround(value)));
    }
    painter.drawText(Gap, Gap + font.height() + Gap + font.ascent(), valueTitle_);
}

void QtStripChart::DrawTimeAxis(QPainter& painter, const Field& field) const {
    const QFontMetrics font = fontMetrics();
    const int mark = font.horizontalAdvance(ClockText(0)) + 3 * Gap;
    const int most = std::min(MostTimeMarks, static_cast<int>(field.area.width() / mark));
    const double step = TimeStep(field.to - field.from, most);
    // At whole times of the clock.
    const double first = std::ceil((field.from + origin_) / step) * step - origin_;
    for (double at = first; at <= field.to; at += step) {
        const double x = field.X(at);
        painter.setPen(QPen(Faint(), 1));
        painter.drawLine(QPointF(x, field.area.top()), QPointF(x, field.area.bottom()));
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(QRectF(x - mark / 2.0, field.area.bottom() + Gap / 2.0, mark, font.height()), Qt::AlignCenter,
                         ClockText(at + origin_));
    }
    painter.setPen(QPen(palette().color(QPalette::Text), 1));
    painter.drawLine(field.area.bottomLeft(), field.area.bottomRight());
    painter.drawLine(field.area.topLeft(), field.area.bottomLeft());
    painter.drawText(QRectF(field.area.left(), height() - font.height() - Gap / 2.0, field.area.width(), font.height()),
                     Qt::AlignCenter, timeTitle_);
}

void QtStripChart::DrawCurve(QPainter& painter, const Field& field, std::size_t index) const {
    QPainterPath path;
    QPainterPath alone; // A point without a line is a dot.
    PixelColumn column{-1, 0, 0, 0, 0};
    const auto leave = [&] {
        if (column.low == column.high) return;
        for (const double y : {column.low, column.high, column.last})
            path.lineTo(column.x, y);
    };
    const std::vector<StripPoint>& points = curves_[index].points;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double x = field.X(points[i].at);
        const double y = field.Y(points[i].value);
        const bool leadsOn = i + 1 < points.size() && points[i + 1].joined;
        if (!points[i].joined) {
            leave();
            column = {-1, 0, 0, 0, 0};
            path.moveTo(x, y);
            if (!leadsOn) alone.addEllipse(QPointF(x, y), CurveWidth, CurveWidth);
            continue;
        }
        // Thousands of points in one column of pixels would be drawn on top of each other.
        if (const int at = static_cast<int>(x); at == column.pixel) {
            column.low = std::max(column.low, y);
            column.high = std::min(column.high, y);
            column.last = y;
        } else {
            leave();
            path.lineTo(x, y);
            column = {at, x, y, y, y};
        }
    }
    leave();
    const QPen pen = CurvePen(index);
    painter.strokePath(path, pen);
    painter.fillPath(alone, pen.color());
}

} // namespace vantrel
