// Curves over time: axes, a legend, and nothing else. Drawn here: the plotting libraries for this toolkit are licensed
// so that an MIT program with a static Windows build cannot have them. Knows Qt and nothing of what its curves mean.
#pragma once

#include <QColor>
#include <QImage>
#include <QString>
#include <QWidget>

#include <vector>

class QPainter;

namespace vantrel {

/// Where the marks of an axis stand: at the multiples of `step` from `low` to `high`.
struct ChartScale {
    double low;
    double high;
    double step;
};
/// Whole marks around a range of values, at most `most` steps of 1, 2 or 5 times a power of ten, none below 1.
[[nodiscard]] ChartScale ValueScale(double low, double high, int most);
/// The distance of time marks, in seconds, so that at most `most` of them lie in `span` seconds: of a clock's face.
[[nodiscard]] double TimeStep(double span, int most);

struct StripPoint {
    double at; ///< Seconds, from any moment.
    double value;
    bool joined; ///< A line leads here from the point before.
};
struct StripCurve {
    QString name;
    std::vector<StripPoint> points;
};

/// Curves differ in colour and in the pattern of their line. Colours and fonts are the theme's.
class QtStripChart final : public QWidget {
public:
    explicit QtStripChart(QWidget* parent = nullptr);

    /// At most four.
    void SetCurves(std::vector<StripCurve> curves);
    /// What the time axis shows, in seconds as the points have them.
    void SetTimes(double from, double to);
    /// Seconds since midnight at which the points' 0 lies, for the marks of the time axis.
    void SetOrigin(double secondsOfDay) { origin_ = secondsOfDay; }
    void SetTitles(const QString& time, const QString& value);
    /// Stands in the middle while there is nothing to draw.
    void SetEmptyText(const QString& text) { emptyText_ = text; }
    /// As it stands on the screen, at the screen's resolution.
    [[nodiscard]] QImage Picture();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// The field of the curves, and what of time and value it shows.
    struct Field {
        QRectF area;
        ChartScale values;
        [[nodiscard]] double X(double at) const;
        [[nodiscard]] double Y(double value) const;
        double from;
        double to;
    };
    [[nodiscard]] bool IsEmpty() const;
    [[nodiscard]] ChartScale ScaleOfValues(double height) const;
    [[nodiscard]] Field LayOut() const;
    void DrawLegend(QPainter& painter) const;
    void DrawValueAxis(QPainter& painter, const Field& field) const;
    void DrawTimeAxis(QPainter& painter, const Field& field) const;
    void DrawCurve(QPainter& painter, const Field& field, std::size_t index) const;
    [[nodiscard]] QPen CurvePen(std::size_t index) const;
    [[nodiscard]] QColor Faint() const;

    std::vector<StripCurve> curves_;
    double from_ = 0;
    double to_ = 1;
    double origin_ = 0;
    QString timeTitle_;
    QString valueTitle_;
    QString emptyText_;
};

} // namespace vantrel
