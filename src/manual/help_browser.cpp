#include "manual/help_browser.h"

#include "manual/help_pages.h"
#include "platform/user_text.h"
#include "widgets/announcement.h"
#include "widgets/appearance.h"

#include <QAbstractTextDocumentLayout>
#include <QAccessible>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QWheelEvent>

#include <algorithm>

namespace {

using appearance::mixed;

constexpr int kMargin = 18;
constexpr int kSmallest = -4;
constexpr int kLargest = 12;

QString nameOf(const QColor& colour) {
    return colour.name(QColor::HexRgb);
}

}  // namespace

HelpBrowser::HelpBrowser(QWidget* parent) : QTextBrowser(parent) {
    setOpenExternalLinks(true);
    document()->setDocumentMargin(kMargin);
}

/// The pages' own style sheet is for printing; here they take the colours of the palette.
QString HelpBrowser::styleSheetOfPage() const {
    const QColor text = palette().color(QPalette::Text);
    const QColor base = palette().color(QPalette::Base);
    const QColor accent = palette().color(QPalette::Link);
    return UserText::tr(
               "h1, h2, h3 { color: %1 } a { color: %1 } p, li { line-height: 130% }"
               "th { background-color: %2 } code, kbd { background-color: %2 }"
               "div.nota { background-color: %3; margin-top: 8px; margin-bottom: 8px }"
               "table { border-collapse: collapse; border-color: %4; border-style: solid;"
               " margin-top: 6px; margin-bottom: 6px }"
               "td, th { border: 1px solid %4; padding: 4px 8px }"
               "p.figura { line-height: 100% } p.piede { color: %5 }")
        .arg(nameOf(accent), nameOf(mixed(text, base, 0.09)), nameOf(mixed(accent, base, 0.13)),
             nameOf(mixed(text, base, 0.25)), nameOf(mixed(text, base, 0.65)));
}

QImage HelpBrowser::fitted(const QImage& picture) const {
    const qreal ratio = devicePixelRatioF();
    const int room = std::max(100, viewport()->width() - 2 * kMargin - 4);
    const int width = std::min(picture.width(), room);
    QImage scaled = picture.scaledToWidth(qRound(width * ratio), Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(ratio);
    return scaled;
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name) {
    if (type == QTextDocument::StyleSheetResource)
        return styleSheetOfPage();
    QVariant loaded = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource)
        return loaded;
    const QImage picture = QImage::fromData(loaded.toByteArray());
    if (picture.isNull())
        return loaded;
    pictures_.insert(name, picture);
    return fitted(picture);
}

void HelpBrowser::doSetSource(const QUrl& name, QTextDocument::ResourceType type) {
    if (name.adjusted(QUrl::RemoveFragment) != source().adjusted(QUrl::RemoveFragment)) {
        // The document would keep those that were fitted, whatever the width when they come again.
        for (auto it = pictures_.constBegin(); it != pictures_.constEnd(); ++it)
            document()->addResource(QTextDocument::ImageResource, it.key(), QVariant());
        pictures_.clear();
    }
    QTextBrowser::doSetSource(name, type);
    if (hasFocus())
        announce(documentTitle());
}

/// A screen reader follows a cursor in the text; without one the arrow keys scroll the page.
void HelpBrowser::focusInEvent(QFocusEvent* event) {
    setTextInteractionFlags(QAccessible::isActive()
                                ? Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard
                                : Qt::TextInteractionFlags(Qt::TextBrowserInteraction));
    QTextBrowser::focusInEvent(event);
}

bool HelpBrowser::focusNextPrevChild(bool next) {
    const bool found = QTextBrowser::focusNextPrevChild(next);
    if (found && hasFocus())
        announce(UserText::tr("%1, collegamento").arg(textCursor().selectedText()));
    return found;
}

void HelpBrowser::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
    if (plain && event->key() == Qt::Key_H)
        goToHeading(!event->modifiers().testFlag(Qt::ShiftModifier));
    else
        QTextBrowser::keyPressEvent(event);
}

/// The next heading after the cursor, or the one before it, at the upper edge.
void HelpBrowser::goToHeading(bool next) {
    const auto step = [next](const QTextBlock& block) {
        return next ? block.next() : block.previous();
    };
    QTextBlock block = step(textCursor().block());
    while (block.isValid() && block.blockFormat().headingLevel() == 0)
        block = step(block);
    if (!block.isValid()) {
        announce(next ? UserText::tr("Nessun altro titolo")
                      : UserText::tr("Nessun titolo prima di questo"));
        return;
    }
    setTextCursor(QTextCursor(block));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect().top());
    announce(UserText::tr("%1, titolo di livello %2")
                 .arg(block.text())
                 .arg(block.blockFormat().headingLevel()));
}

void HelpBrowser::resizeEvent(QResizeEvent* event) {
    if (event->size().width() != event->oldSize().width() && !pictures_.isEmpty()) {
        for (auto it = pictures_.constBegin(); it != pictures_.constEnd(); ++it)
            document()->addResource(QTextDocument::ImageResource, it.key(), fitted(it.value()));
        document()->markContentsDirty(0, document()->characterCount());
    }
    QTextBrowser::resizeEvent(event);
}

void HelpBrowser::markWords(const QStringList& words) {
    QList<QTextEdit::ExtraSelection> marks;
    int first = document()->characterCount();
    const QString text = HelpPages::folded(document()->toPlainText());
    for (const QString& word : words) {
        for (qsizetype place = text.indexOf(word); place >= 0;
             place = text.indexOf(word, place + word.size())) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = QTextCursor(document());
            mark.cursor.setPosition(static_cast<int>(place));
            mark.cursor.setPosition(static_cast<int>(place + word.size()), QTextCursor::KeepAnchor);
            mark.format.setBackground(QColor(0xFF, 0xD8, 0x4D));
            mark.format.setForeground(Qt::black);
            marks << mark;
            first = std::min(first, static_cast<int>(place));
        }
    }
    setExtraSelections(marks);
    if (marks.isEmpty())
        return;
    QTextCursor cursor(document());
    cursor.setPosition(first);
    setTextCursor(cursor);
    verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect().top() -
                                  viewport()->height() / 3);
}

void HelpBrowser::zoomBy(int steps) {
    const int wanted = std::clamp(zoom_ + steps, kSmallest, kLargest);
    zoomIn(wanted - zoom_);
    zoom_ = wanted;
}

void HelpBrowser::resetZoom() {
    zoomBy(-zoom_);
}

void HelpBrowser::wheelEvent(QWheelEvent* event) {
    if (event->modifiers() != Qt::ControlModifier) {
        QTextBrowser::wheelEvent(event);
        return;
    }
    zoomBy(event->angleDelta().y() > 0 ? 1 : -1);
    event->accept();
}
