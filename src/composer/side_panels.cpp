#include "composer/side_panels.h"

#include "composer/panels/bookmark_panel.h"
#include "composer/panels/browser_panel.h"
#include "ui_frmComposer.h"

#include <QEvent>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

namespace {

constexpr int kLeastLines = 10;  ///< of text that are in view at least

}  // namespace

SidePanels::SidePanels(Ui::frmComposer& ui)
    : ui_(ui), browser_(new BrowserPanel), bookmarks_(new BookmarkPanel) {
    for (QWidget* panel : std::initializer_list<QWidget*>{browser_, bookmarks_}) {
        ui_.sidePanels->addWidget(panel);
        panel->hide();
    }
    fit();
    ui_.side->installEventFilter(this);
    ui_.sideContent->installEventFilter(this);
    showEditFrame(false);
    connect(browser_, &BrowserPanel::hideRequested, this, [this] { showBrowser(false); });
    connect(bookmarks_, &BookmarkPanel::hideRequested, this, [this] { showBookmarks(false); });
}

/// Another type makes the panels wider; they have their new size afterwards, those that are hidden
/// once they are shown.
bool SidePanels::eventFilter(QObject* /*target*/, QEvent* event) {
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutRequest)
        QMetaObject::invokeMethod(this, &SidePanels::fit, Qt::QueuedConnection);
    return false;
}

void SidePanels::fit() {
    const int content =
        std::max({ui_.frmModifica->sizeHint().width(), browser_->minimumSizeHint().width(),
                  bookmarks_->minimumSizeHint().width()});
    ui_.side->setFixedWidth(content + ui_.side->style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    ui_.side->setMinimumHeight(kLeastLines * ui_.side->fontMetrics().height());
}

void SidePanels::showHint(bool emptyMelody) {
    ui_.lblGuida->setText(
        emptyMelody
            ? tr("Per scrivere la prima nota scegli il suo valore, poi clicca un tasto del "
                 "pianoforte o il pentagramma e premi «Ins. Nota», oppure il tasto Invio.")
            : tr("Qui puoi cambiare una nota già inserita: cliccala sul pentagramma, "
                 "oppure scorri la melodia con le frecce «Passo passo» o con i tasti ← e →."));
}

void SidePanels::showEditFrame(bool on) {
    showPanel(*ui_.frmModifica, on);
}

void SidePanels::showBrowser(bool on) {
    showPanel(*browser_, on);
}

void SidePanels::showBookmarks(bool on) {
    showPanel(*bookmarks_, on);
}

/// From its upper edge on, where there is not enough room for the whole of it.
void SidePanels::reveal(QWidget& panel) {
    if (panel.height() > ui_.side->viewport()->height())
        ui_.side->verticalScrollBar()->setValue(panel.y());
    else
        ui_.side->ensureWidgetVisible(&panel, 0, 0);
}

void SidePanels::showPanel(QWidget& panel, bool on) {
    const bool opens = on && panel.isHidden();
    panel.setVisible(on);
    // It has its place in the column once that is laid out.
    if (opens)
        QMetaObject::invokeMethod(
            this, [this, &panel] { reveal(panel); }, Qt::QueuedConnection);
    const bool anyOpen =
        !ui_.frmModifica->isHidden() || !browser_->isHidden() || !bookmarks_->isHidden();
    ui_.lblGuida->setVisible(!anyOpen);
}
