#pragma once

#include <QByteArray>
#include <QPaintDevice>
#include <QSize>
#include <QString>

#include <memory>

/// A page of which an SVG picture is made. It takes what music is painted with: filled and stroked
/// paths of one colour, and texts, which stay texts.
class SvgPage : public QPaintDevice {
public:
    /// So large in units, of which so many are an inch.
    SvgPage(const QString& title, const QSize& units, int unitsPerInch);
    ~SvgPage() override;

    QPaintEngine* paintEngine() const override;

    /// The picture, once the painter has ended.
    QByteArray picture() const;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class Engine;

    QSize units_;
    int unitsPerInch_;
    std::unique_ptr<Engine> engine_;
};
