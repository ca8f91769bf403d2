#include "manual/help_window.h"

#include "platform/key_codes.h"
#include "platform/user_text.h"
#include "ui_help_window.h"
#include "widgets/announcement.h"

#include <QEvent>
#include <QGuiApplication>
#include <QKeySequence>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QUrl>
#include <QWindow>

namespace {

constexpr QSize kSize(960, 640);
constexpr QSize kWindowFrame(8, 40);
constexpr int kContentsWidth = 260;
constexpr int kFileRole = Qt::UserRole;

}  // namespace

HelpWindow::HelpWindow(const QString& folder)
    : ui_(std::make_unique<Ui::HelpWindow>()), pages_(folder) {
    ui_->setupUi(this);
    // The program ends with its main window, whether the manual is open or not.
    setAttribute(Qt::WA_QuitOnClose, false);
    ui_->parti->setStretchFactor(1, 1);
    ui_->parti->setSizes({kContentsWidth, kSize.width() - kContentsWidth});
    ui_->risultati->hide();
    ui_->lblTrovate->hide();
    // The line edit creates its clear button itself.
    if (auto* clear = ui_->txtCerca->findChild<QToolButton*>())
        clear->setAccessibleName(UserText::tr("Cancella la ricerca"));
    fillContents();
    connectControls();
    addShortcuts();
    if (!pages_.pages().empty())
        openPage(pages_.pages().front().file);
}

HelpWindow::~HelpWindow() = default;

void HelpWindow::fillContents() {
    QTreeWidgetItem* section = nullptr;
    for (const HelpPage& page : pages_.pages()) {
        if (!page.section.isEmpty() && (!section || section->text(0) != page.section)) {
            section = new QTreeWidgetItem(ui_->contenuti, {page.section});
            section->setFlags(Qt::ItemIsEnabled);
            QFont font = ui_->contenuti->font();
            font.setBold(true);
            section->setFont(0, font);
        }
        auto* item = section ? new QTreeWidgetItem(section, {page.title})
                             : new QTreeWidgetItem(ui_->contenuti, {page.title});
        item->setData(0, kFileRole, page.file);
    }
    ui_->contenuti->expandAll();
}

void HelpWindow::connectControls() {
    HelpBrowser& browser = *ui_->pagina;
    connect(ui_->cmdIndietro, &QToolButton::clicked, &browser, &QTextBrowser::backward);
    connect(ui_->cmdAvanti, &QToolButton::clicked, &browser, &QTextBrowser::forward);
    connect(ui_->cmdInizio, &QToolButton::clicked, this,
            [this] { openPage(pages_.pages().front().file); });
    connect(ui_->cmdRiduci, &QToolButton::clicked, this, [this] { ui_->pagina->zoomBy(-1); });
    connect(ui_->cmdIngrandisci, &QToolButton::clicked, this, [this] { ui_->pagina->zoomBy(1); });
    connect(&browser, &QTextBrowser::backwardAvailable, ui_->cmdIndietro, &QWidget::setEnabled);
    connect(&browser, &QTextBrowser::forwardAvailable, ui_->cmdAvanti, &QWidget::setEnabled);
    connect(&browser, &QTextBrowser::sourceChanged, this,
            [this](const QUrl& url) { selectInContents(url.fileName()); });
    connect(ui_->contenuti, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item && item->data(0, kFileRole).isValid())
            openPage(item->data(0, kFileRole).toString());
    });
    connect(ui_->txtCerca, &QLineEdit::textChanged, this, &HelpWindow::search);
    connect(ui_->txtCerca, &QLineEdit::returnPressed, this, [this] {
        if (ui_->risultati->count() > 0)
            ui_->risultati->setCurrentRow(0);
    });
    connect(ui_->risultati, &QListWidget::currentRowChanged, this, &HelpWindow::openMatch);
    connect(ui_->risultati, &QListWidget::itemClicked, this,
            [this] { openMatch(ui_->risultati->currentRow()); });
}

void HelpWindow::addShortcuts() {
    const auto add = [this](const QKeySequence& keys, auto handler) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, handler);
    };
    add(Qt::Key_Escape, [this] { close(); });
    add(QKeySequence::Find, [this] {
        ui_->txtCerca->setFocus();
        ui_->txtCerca->selectAll();
    });
    for (const auto key : {Qt::Key_Plus, Qt::Key_Equal})
        add(Qt::CTRL | key, [this] { ui_->pagina->zoomBy(1); });
    add(Qt::CTRL | Qt::Key_Minus, [this] { ui_->pagina->zoomBy(-1); });
    add(Qt::CTRL | Qt::Key_0, [this] { ui_->pagina->resetZoom(); });
    add(Qt::ALT | Qt::Key_Left, [this] { ui_->pagina->backward(); });
    add(Qt::ALT | Qt::Key_Right, [this] { ui_->pagina->forward(); });
    add(Qt::ALT | Qt::Key_Home, [this] { ui_->pagina->home(); });
}

void HelpWindow::showPage(const QString& file) {
    // Where it has the focus, the page tells its title by itself.
    const bool told = ui_->pagina->hasFocus();
    if (!file.isEmpty()) {
        ui_->txtCerca->clear();
        ui_->pagina->setFocus();
        openPage(file);
    }
    show();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
    if (!told)
        announce(ui_->pagina->documentTitle());
}

void HelpWindow::openPage(const QString& file) {
    const QUrl url = QUrl::fromLocalFile(pages_.folder() + QLatin1Char('/') + file);
    if (url != ui_->pagina->source())
        ui_->pagina->setSource(url);
}

/// Links and the button for the previous page change the selection in the contents as well.
void HelpWindow::selectInContents(const QString& file) {
    const QSignalBlocker blocker(ui_->contenuti);
    for (QTreeWidgetItemIterator it(ui_->contenuti); *it; ++it) {
        if ((*it)->data(0, kFileRole).toString() == file)
            ui_->contenuti->setCurrentItem(*it);
    }
    // The list has told screen readers that it has the focus.
    announceCursor(*ui_->pagina, *ui_->pagina);
}

void HelpWindow::search() {
    const QString question = ui_->txtCerca->text();
    const bool asked = !HelpPages::wordsOf(question).isEmpty();
    const QSignalBlocker blocker(ui_->risultati);
    ui_->risultati->clear();
    for (const HelpMatch& match : pages_.search(question)) {
        auto* item =
            new QListWidgetItem(match.title + QLatin1Char('\n') + match.snippet, ui_->risultati);
        item->setData(kFileRole, match.file);
    }
    const int count = ui_->risultati->count();
    ui_->lblTrovate->setText(count == 0   ? UserText::tr("Nessuna pagina trovata")
                             : count == 1 ? UserText::tr("1 pagina trovata")
                                          : UserText::tr("%1 pagine trovate").arg(count));
    ui_->contenuti->setVisible(!asked);
    ui_->risultati->setVisible(asked);
    ui_->lblTrovate->setVisible(asked);
    if (!asked)
        ui_->pagina->markWords({});
}

void HelpWindow::openMatch(int row) {
    const QListWidgetItem* item = ui_->risultati->item(row);
    if (!item)
        return;
    openPage(item->data(kFileRole).toString());
    ui_->pagina->markWords(HelpPages::wordsOf(ui_->txtCerca->text()));
}

bool HelpWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked)
        joinModalWindow();
    return QWidget::event(event);
}

void HelpWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    joinModalWindow();
    windowHandle()->setProperty(kKeepsKeys, true);
    if (sized_)
        return;
    sized_ = true;
    resize(kSize.boundedTo(screen()->availableSize() - kWindowFrame));
}

/// A modal window blocks all windows but those that belong to it.
void HelpWindow::joinModalWindow() {
    if (windowHandle())
        windowHandle()->setTransientParent(QGuiApplication::modalWindow());
}
