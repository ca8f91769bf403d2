#include "widgets/svg_page.h"

#include <QFontInfo>
#include <QPaintEngine>
#include <QPainterPath>
#include <QPen>
#include <QTransform>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr double kPointsPerInch = 72;

QString number(double value, int decimals = 1) {
    return QString::number(value, 'f', decimals);
}

QString pointOf(const QPainterPath::Element& element) {
    return number(element.x) + QLatin1Char(' ') + number(element.y);
}

/// A file's name may hold what XML cannot.
QString forXml(QString text) {
    return text.removeIf([](QChar c) { return c < QLatin1Char(' ') || c.unicode() >= 0xFFFE; });
}

/// As SVG writes a path.
QString dataOf(const QPainterPath& path) {
    QString data;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.type == QPainterPath::MoveToElement)
            data += QLatin1Char('M');
        else if (element.type == QPainterPath::LineToElement)
            data += QLatin1Char('L');
        else if (element.type == QPainterPath::CurveToElement)
            data += QLatin1Char('C');
        else
            data += QLatin1Char(' ');
        data += pointOf(element);
    }
    return data;
}

}  // namespace

/// Writes one element for each path and text, with the painter's transformation worked in.
class SvgPage::Engine : public QPaintEngine {
public:
    Engine(const QString& title, const QSize& units, int unitsPerInch)
        : QPaintEngine(AllFeatures), unitsPerInch_(unitsPerInch), xml_(&picture_) {
        const auto millimetres = [unitsPerInch](int length) {
            return number(length * kMillimetresPerInch / unitsPerInch, 2) + QStringLiteral("mm");
        };
        xml_.setAutoFormatting(true);
        xml_.setAutoFormattingIndent(1);
        xml_.writeStartDocument();
        xml_.writeStartElement(QStringLiteral("svg"));
        xml_.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
        attribute("width", millimetres(units.width()));
        attribute("height", millimetres(units.height()));
        attribute("viewBox", QStringLiteral("0 0 %1 %2").arg(units.width()).arg(units.height()));
        xml_.writeTextElement(QStringLiteral("title"), forXml(title));
    }

    QByteArray picture() const { return picture_; }

    bool begin(QPaintDevice* /*device*/) override { return true; }

    bool end() override {
        xml_.writeEndDocument();
        return true;
    }

    void updateState(const QPaintEngineState& now) override {
        transform_ = now.transform();
        pen_ = now.pen();
        brush_ = now.brush();
        font_ = now.font();
    }

    void drawPath(const QPainterPath& path) override {
        xml_.writeEmptyElement(QStringLiteral("path"));
        attribute("d", dataOf(transform_.map(path)));
        const bool isFilled = brush_.style() != Qt::NoBrush;
        attribute("fill", isFilled ? brush_.color().name() : QStringLiteral("none"));
        if (path.fillRule() == Qt::OddEvenFill)
            attribute("fill-rule", QStringLiteral("evenodd"));
        if (pen_.style() == Qt::NoPen)
            return;
        attribute("stroke", pen_.color().name());
        attribute("stroke-width", number(std::max(1.0, pen_.widthF() * scale())));
        attribute("stroke-linejoin", QStringLiteral("round"));
        attribute("stroke-linecap", QStringLiteral("round"));
    }

    void drawRects(const QRectF* rects, int count) override {
        for (int i = 0; i < count; ++i) {
            QPainterPath path;
            path.addRect(rects[i]);
            drawPath(path);
        }
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        QPainterPath path(points[0]);
        for (int i = 1; i < count; ++i)
            path.lineTo(points[i]);
        if (mode != PolylineMode)
            path.closeSubpath();
        drawPath(path);
    }

    void drawTextItem(const QPointF& at, const QTextItem& item) override {
        const QPointF place = transform_.map(at);
        const QFontInfo font(item.font());
        const double size = item.font().pointSizeF() > 0
                                ? item.font().pointSizeF() * unitsPerInch_ / kPointsPerInch
                                : item.font().pixelSize();
        xml_.writeStartElement(QStringLiteral("text"));
        attribute("x", number(place.x()));
        attribute("y", number(place.y()));
        attribute("font-family", font.family() + QStringLiteral(", sans-serif"));
        attribute("font-size", number(size * scale()));
        attribute("font-weight", QString::number(font.weight()));
        attribute("fill", pen_.color().name());
        xml_.writeCharacters(forXml(item.text()));
        xml_.writeEndElement();
    }

    /// Pictures are not part of what is painted.
    void drawPixmap(const QRectF& /*to*/, const QPixmap& /*pixmap*/,
                    const QRectF& /*from*/) override {}

    Type type() const override { return User; }

private:
    void attribute(const char* name, const QString& value) {
        xml_.writeAttribute(QString::fromUtf8(name), value);
    }

    double scale() const { return std::sqrt(std::abs(transform_.determinant())); }

    int unitsPerInch_;
    QByteArray picture_;
    QXmlStreamWriter xml_;
    QTransform transform_;
    QPen pen_;
    QBrush brush_;
    QFont font_;
};

SvgPage::SvgPage(const QString& title, const QSize& units, int unitsPerInch)
    : units_(units),
      unitsPerInch_(unitsPerInch),
      engine_(std::make_unique<Engine>(title, units, unitsPerInch)) {}

SvgPage::~SvgPage() = default;

QPaintEngine* SvgPage::paintEngine() const {
    return engine_.get();
}

QByteArray SvgPage::picture() const {
    return engine_->picture();
}

int SvgPage::metric(PaintDeviceMetric metric) const {
    switch (metric) {
        case PdmWidth:
            return units_.width();
        case PdmHeight:
            return units_.height();
        case PdmWidthMM:
            return qRound(units_.width() * kMillimetresPerInch / unitsPerInch_);
        case PdmHeightMM:
            return qRound(units_.height() * kMillimetresPerInch / unitsPerInch_);
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return unitsPerInch_;
        default:
            return QPaintDevice::metric(metric);
    }
}
