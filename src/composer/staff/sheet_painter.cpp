#include "composer/staff/sheet_painter.h"

#include "composer/staff/sheet_music.h"
#include "widgets/svg_page.h"

#include <QBuffer>
#include <QImage>
#include <QPageLayout>
#include <QPageRanges>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <vector>

namespace sheet_painter {
namespace {

constexpr double kMargin = 15;           ///< millimetres
constexpr double kPictureMargin = 2;     ///< millimetres
constexpr int kResolution = 1200;        ///< of what is drawn with lines, in dots an inch
constexpr int kPictureResolution = 300;  ///< of what is printed as it is
constexpr double kMillimetresPerInch = 25.4;

QPageSize pageSizeOf(Paper paper) {
    return QPageSize(paper == Paper::A4 ? QPageSize::A4 : QPageSize::Letter);
}

/// As it stands on the pages of this paper.
SheetMusic musicOf(const MelodySheet& sheet, Paper paper) {
    const QSizeF page = pageSizeOf(paper).size(QPageSize::Millimeter);
    return {sheet, page - QSizeF(2 * kMargin, 2 * kMargin)};
}

/// Those that are wanted; without ranges all.
std::vector<std::size_t> pagesOf(const SheetMusic& music, const QPageRanges& wanted) {
    std::vector<std::size_t> pages;
    for (std::size_t page = 0; page < music.pages(); ++page) {
        if (wanted.isEmpty() || wanted.contains(static_cast<int>(page) + 1))
            pages.push_back(page);
    }
    return pages;
}

/// A system with a margin, in pixels or units of this resolution.
struct Picture {
    const SheetMusic music;
    std::size_t system;
    int resolution;

    double unitsPerMillimetre() const { return resolution / kMillimetresPerInch; }

    QSize size() const {
        const QSizeF margins(2 * kPictureMargin, 2 * kPictureMargin);
        return ((music.sizeOf(system) + margins) * unitsPerMillimetre()).toSize();
    }

    void paint(QPainter& painter) const {
        const double margin = kPictureMargin * unitsPerMillimetre();
        painter.translate(margin, margin);
        music.paintSystem(painter, system, unitsPerMillimetre());
    }
};

}  // namespace

bool paint(QPagedPaintDevice& device, const MelodySheet& sheet, bool lastPageFirst) {
    const QMarginsF least(kMargin, kMargin, kMargin, kMargin);
    const QMarginsF chosen = device.pageLayout().margins(QPageLayout::Millimeter);
    device.setPageMargins(chosen | least, QPageLayout::Millimeter);
    const double unitsPerMillimetre = device.logicalDpiX() / kMillimetresPerInch;
    const SheetMusic music(sheet, QSizeF(device.width(), device.height()) / unitsPerMillimetre);
    std::vector<std::size_t> pages = pagesOf(music, device.pageRanges());
    if (pages.empty())
        return false;
    if (lastPageFirst)
        std::reverse(pages.begin(), pages.end());
    QPainter painter(&device);
    if (!painter.isActive())
        return false;
    for (const std::size_t& page : pages) {
        if (&page != &pages.front() && !device.newPage())
            return false;
        music.paintPage(painter, page, unitsPerMillimetre);
    }
    return painter.end();
}

QByteArray pdf(const MelodySheet& sheet, Paper paper) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(sheet.title);
    writer.setCreator(QStringLiteral("Cantavista"));
    writer.setResolution(kResolution);
    writer.setPageSize(pageSizeOf(paper));
    if (!paint(writer, sheet))
        bytes.clear();
    return bytes;
}

std::size_t systemsOf(const MelodySheet& sheet, Paper paper) {
    return musicOf(sheet, paper).systems();
}

QByteArray systemPng(const MelodySheet& sheet, Paper paper, std::size_t system) {
    const Picture picture{musicOf(sheet, paper), system, kPictureResolution};
    QImage image(picture.size(), QImage::Format_Grayscale8);
    const int dotsPerMetre = qRound(picture.unitsPerMillimetre() * 1000);
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    image.fill(Qt::white);
    QPainter painter(&image);
    picture.paint(painter);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray systemSvg(const MelodySheet& sheet, Paper paper, std::size_t system) {
    const Picture picture{musicOf(sheet, paper), system, kResolution};
    SvgPage page(sheet.title, picture.size(), picture.resolution);
    QPainter painter(&page);
    picture.paint(painter);
    painter.end();
    return page.picture();
}

}  // namespace sheet_painter
