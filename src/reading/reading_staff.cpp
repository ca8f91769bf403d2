#include "reading/reading_staff.h"

#include "platform/user_text.h"
#include "reading/regolo.h"
#include "widgets/appearance.h"
#include "widgets/music_font.h"
#include "widgets/parts_accessible.h"
#include "widgets/verdict_badge.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// In staff spaces.
constexpr double kBraceRoom = 2.6;
constexpr double kNoteRoom = 1.5;
constexpr double kNarrowest = 19;  ///< the width that all marks need beside the ruler
constexpr double kVerdictSize = 2.2;
constexpr double kVerdictDistance = 1.2;  ///< from the note's ledger lines to its right

/// In pixels.
constexpr int kPadding = 8;
constexpr int kRulerWidth = 44;

constexpr double kNoteColumn = 0.56;  ///< the notes' share of the way from left to right
constexpr double kPointedShare = 0.55;

engraving::Note noteAt(int step) {
    return {.position = staff_layout::positionOnStave(step)};
}

/// Describes the staff when it is asked. A description that is set would change while the staff has
/// the focus, and screen readers are not ready for that.
class StaffAccessible : public PartsAccessible {
public:
    explicit StaffAccessible(ReadingStaff* staff)
        : PartsAccessible(staff, QAccessible::Graphic), staff_(staff) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Description ? staff_->inWords() : PartsAccessible::text(kind);
    }

private:
    ReadingStaff* staff_;
};

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
    if (className != QLatin1String(ReadingStaff::staticMetaObject.className()))
        return nullptr;
    return new StaffAccessible(qobject_cast<ReadingStaff*>(object));
}

}  // namespace

/// One note with its stem and ledger lines.
class NotePicture : public QWidget {
public:
    NotePicture(int step, const MusicFont& font, QWidget* parent)
        : QWidget(parent), step_(step), font_(font) {
        setObjectName(QStringLiteral("n%1").arg(step));
        setAccessibleName(staff_step::placeInWords(step));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

    int step() const { return step_; }

    /// The stave and the head's left edge, in the parent's coordinates. The head comes to stand in
    /// the middle of the picture.
    void setPlace(const engraving::Stave& stave, qreal x) {
        stave_ = stave;
        x_ = x;
        const engraving::Note note = noteAt(step_);
        const qreal room = kNoteRoom * stave.space;
        const qreal width = engraving::headWidth(note.duration) * stave.space;
        const qreal reach =
            std::abs(stave.y(engraving::stemEnd(note)) - stave.y(note.position)) + room;
        const qreal y = stave.y(note.position);
        setGeometry(QRectF(x - room, y - reach, width + 2 * room, 2 * reach).toAlignedRect());
        update();
    }

    void setVerdict(Verdict verdict) {
        if (std::exchange(verdict_, verdict) != verdict)
            update();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.translate(-pos());
        painter.setPen(verdict_ == Verdict::None ? palette().color(QPalette::Text)
                                                 : VerdictBadge::inkOf(verdict_, palette()));
        engraving::drawNote(painter, font_, engraving::onPixels(painter, stave_), x_,
                            noteAt(step_));
    }

private:
    int step_;
    const MusicFont& font_;
    engraving::Stave stave_;
    qreal x_ = 0;
    Verdict verdict_ = Verdict::None;
};

ReadingStaff::ReadingStaff(QWidget* parent)
    : QWidget(parent),
      font_(MusicFont::shared()),
      ruler_(new Regolo(this)),
      verdict_(new VerdictBadge(this)) {
    QAccessible::installFactory(makeInterface);
    setAccessibleName(UserText::tr("Pentagramma"));
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);

    constexpr auto kSteps = staff_step::all();
    std::transform(kSteps.begin(), kSteps.end(), notes_.begin(),
                   [this](int step) { return new NotePicture(step, font_, this); });
    connect(ruler_, &Regolo::pointed, this, [this](std::optional<int> step) {
        pointed_ = step;
        update();
    });
    hideNotes();
}

/// The ruler is deleted after this part of the staff. It loses its focus then and reports that,
/// which would reach members that are gone.
ReadingStaff::~ReadingStaff() {
    ruler_->disconnect(this);
}

void ReadingStaff::showNote(int step) {
    for (NotePicture* note : notes_) {
        if (note->step() == step) {
            note->setVisible(true);
            shown_ = step;
        }
    }
}

void ReadingStaff::hideNotes() {
    for (NotePicture* note : notes_)
        note->setVisible(false);
    shown_.reset();
}

QString ReadingStaff::inWords() const {
    return shown_ ? staff_step::placeInWords(*shown_) : UserText::tr("Nessuna nota");
}

void ReadingStaff::showVerdict(const std::optional<ReadingVerdict::Shown>& shown) {
    for (NotePicture* note : notes_) {
        const bool judged = shown && shown->onShow && shown->step == note->step();
        note->setVerdict(judged ? shown->verdict : Verdict::None);
    }
    if (shown)
        verdict_->showAt(*this, verdictPlace(shown->step), shown->verdict);
    else
        verdict_->hide();
}

QRect ReadingStaff::verdictPlace(int step) const {
    const engraving::Stave& stave = staveOf(step);
    const double size = kVerdictSize * stave.space;
    const double y = stave.y(staff_layout::positionOnStave(step)) - size / 2;
    return QRectF(noteX_ - kVerdictDistance * stave.space - size,
                  std::clamp(y, 0.0, height() - size), size, size)
        .toAlignedRect();
}

bool ReadingStaff::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::ScreenChangeInternal)
        arrange();
    return handled;
}

void ReadingStaff::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QColor textColour = palette().color(QPalette::Text);
    const QColor card = palette().color(QPalette::Base);
    appearance::paintCard(painter, *this);

    const engraving::Stave treble = engraving::onPixels(painter, treble_);
    const engraving::Stave bass = engraving::onPixels(painter, bass_);
    if (pointed_) {
        painter.setPen(
            appearance::mixed(palette().color(QPalette::Highlight), card, kPointedShare));
        engraving::drawNote(painter, font_, staff_step::isTreble(*pointed_) ? treble : bass, noteX_,
                            noteAt(*pointed_));
    }
    painter.setPen(textColour);
    engraving::drawGrandStaff(painter, font_, treble, bass);
}

void ReadingStaff::resizeEvent(QResizeEvent* /*event*/) {
    arrange();
}

void ReadingStaff::arrange() {
    const double staffWidth = width() - kRulerWidth - 2.0 * kPadding;
    const double staffHeight = height() - 2.0 * kPadding;
    const double wanted =
        std::min(staffHeight * 2 / staff_layout::kHeight, staffWidth / kNarrowest);
    const qreal space = engraving::wholePixelSpace(wanted, devicePixelRatioF());

    staff_layout::Scale scale;
    scale.halfSpace = space / 2;
    scale.top = (height() - staff_layout::kHeight * scale.halfSpace) / 2;

    treble_.left = kPadding + kBraceRoom * space;
    treble_.right = kPadding + staffWidth;
    treble_.space = space;
    bass_ = treble_;
    treble_.bottomLine = scale.y(staff_layout::placeOf(staff_step::kTrebleBottomLine));
    bass_.bottomLine = scale.y(staff_layout::placeOf(staff_step::kBassBottomLine));
    noteX_ = treble_.left + kNoteColumn * (treble_.right - treble_.left);

    for (NotePicture* note : notes_)
        note->setPlace(staveOf(note->step()), noteX_);
    ruler_->setGeometry(width() - kPadding - kRulerWidth, 0, kRulerWidth, height());
    ruler_->setScale(scale);
    update();
}

const engraving::Stave& ReadingStaff::staveOf(int step) const {
    return staff_step::isTreble(step) ? treble_ : bass_;
}
