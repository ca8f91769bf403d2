#include "widgets/instrument_list.h"

#include "core/instruments.h"
#include "platform/key_codes.h"
#include "platform/user_text.h"
#include "widgets/announcement.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <array>

namespace {

constexpr int kProgramRole = Qt::UserRole;
constexpr int kHeading = -1;  ///< in the place of a program
constexpr int kMargin = 8;
constexpr int kLines = 18;
constexpr int kLetters = 62;

/// Headings are disabled, so that the keys pass them by, but do not look it.
class ItemPainting : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state |= QStyle::State_Enabled;
    }
};

int programOf(const QListWidgetItem& item) {
    return item.data(kProgramRole).toInt();
}

/// "40-Violin · Violino"; a name that is the same in both languages stands there once.
QString captionInBoth(int program) {
    const QString caption = instruments::caption(program);
    const QString italian = instruments::italianName(program);
    const bool same =
        instruments::InstrumentName(program).compare(italian, Qt::CaseInsensitive) == 0;
    return same ? caption : caption + QStringLiteral(" · ") + italian;
}

bool movesInList(int key) {
    constexpr std::array kKeys{Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown};
    return std::find(kKeys.begin(), kKeys.end(), key) != kKeys.end();
}

}  // namespace

InstrumentList::InstrumentList(QWidget* parent)
    : QFrame(parent, Qt::Popup),
      search_(new QLineEdit),
      list_(new QListWidget),
      nothingFound_(new QLabel) {
    setObjectName(QStringLiteral("instrumentList"));
    setFrameShape(QFrame::StyledPanel);
    search_->setObjectName(QStringLiteral("txtCerca"));
    search_->setPlaceholderText(UserText::tr("Cerca per nome o famiglia"));
    search_->setAccessibleName(UserText::tr("Cerca uno strumento"));
    search_->setClearButtonEnabled(true);
    list_->setObjectName(QStringLiteral("lstStrumenti"));
    list_->setAccessibleName(UserText::tr("Strumenti"));
    list_->setUniformItemSizes(true);
    list_->setItemDelegate(new ItemPainting(list_));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->addWidget(search_);
    column->addWidget(list_, 1);
    column->addWidget(nothingFound_, 1);
    nothingFound_->setObjectName(QStringLiteral("lblNessuno"));
    nothingFound_->setAlignment(Qt::AlignCenter);
    nothingFound_->setWordWrap(true);
    fill();
    search_->installEventFilter(this);
    connect(search_, &QLineEdit::textChanged, this, &InstrumentList::showFound);
    connect(search_, &QLineEdit::returnPressed, this, [this] { choose(list_->currentItem()); });
    connect(list_, &QListWidget::itemClicked, this, &InstrumentList::choose);
    connect(list_, &QListWidget::itemActivated, this, &InstrumentList::choose);
}

void InstrumentList::fill() {
    for (int program = 0; program < instruments::kCount; ++program) {
        if (program % instruments::kProgramsInFamily == 0) {
            auto* heading = new QListWidgetItem(
                instruments::familyName(program / instruments::kProgramsInFamily), list_);
            heading->setData(kProgramRole, kHeading);
            heading->setFlags(Qt::NoItemFlags);
            QFont bold = list_->font();
            bold.setBold(true);
            heading->setFont(bold);
        }
        auto* item = new QListWidgetItem(QStringLiteral("   ") + captionInBoth(program), list_);
        item->setData(kProgramRole, program);
    }
}

void InstrumentList::open(const QWidget& control, int program) {
    // A window of its own does not take the larger type of the one that opens it.
    setFont(control.font());
    search_->clear();
    showFound({});
    for (int row = 0; row < list_->count(); ++row) {
        if (programOf(*list_->item(row)) == program)
            list_->setCurrentRow(row);
    }
    const QFontMetrics metrics = fontMetrics();
    const QRect screen = control.screen()->availableGeometry();
    resize(QSize(kLetters * metrics.averageCharWidth(), kLines * metrics.height())
               .expandedTo(minimumSizeHint())
               .boundedTo(screen.size()));
    QRect place(control.mapToGlobal(QPoint(0, control.height())), size());
    if (place.bottom() > screen.bottom())
        place.moveBottom(control.mapToGlobal(QPoint()).y());
    place.moveRight(std::min(place.right(), screen.right()));
    place.moveLeft(std::max(place.left(), screen.left()));
    place.moveTop(std::max(place.top(), screen.top()));
    move(place.topLeft());
    create();
    // What is typed here is no music.
    windowHandle()->setProperty(kKeepsKeys, true);
    show();
    search_->setFocus();
    list_->scrollToItem(list_->currentItem(), QAbstractItemView::PositionAtCenter);
}

/// A heading stands above what is left of its family. The first instrument found becomes the chosen
/// one, unless the one before is still there.
void InstrumentList::showFound(const QString& words) {
    const std::vector<int> found = instruments::find(words);
    QListWidgetItem* heading = nullptr;
    QListWidgetItem* first = nullptr;
    for (int row = 0; row < list_->count(); ++row) {
        QListWidgetItem* item = list_->item(row);
        const int program = programOf(*item);
        const bool shown = std::binary_search(found.begin(), found.end(), program);
        item->setHidden(!shown);
        if (program == kHeading)
            heading = item;
        if (!shown)
            continue;
        heading->setHidden(false);
        if (!first)
            first = item;
    }
    showNothingFound(!first, words);
    const QListWidgetItem* current = list_->currentItem();
    if (!current || current->isHidden())
        list_->setCurrentItem(first);
    if (list_->currentItem())
        list_->scrollToItem(list_->currentItem());
}

void InstrumentList::showNothingFound(bool nothing, const QString& words) {
    list_->setHidden(nothing);
    nothingFound_->setVisible(nothing);
    if (!nothing)
        return;
    nothingFound_->setText(
        UserText::tr("Nessuno strumento con «%1»:\nprova una parte del nome, un numero da 0 a 127 "
                     "o una famiglia.")
            .arg(words.trimmed()));
    announce(nothingFound_->text());
}

void InstrumentList::choose(const QListWidgetItem* item) {
    if (!item || item->isHidden() || programOf(*item) == kHeading)
        return;
    hide();
    Q_EMIT programChosen(programOf(*item));
}

/// The keys that move in the list do so while the line has the focus.
bool InstrumentList::eventFilter(QObject* /*target*/, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !movesInList(static_cast<QKeyEvent*>(event)->key()))
        return false;
    QCoreApplication::sendEvent(list_, event);
    return true;
}
