#include "eartraining/exercise_panel.h"

#include "platform/user_text.h"
#include "widgets/action_icon.h"
#include "widgets/appearance.h"

#include <QPushButton>

#include <utility>

namespace {

constexpr double kPromptAccent = 0.22;  ///< the share of the accent in the prompt's background

}  // namespace

QColor promptColour(const QPalette& palette) {
    return appearance::mixed(palette.color(QPalette::Highlight), palette.color(QPalette::Window),
                             kPromptAccent);
}

ExercisePanel::ExercisePanel(EarExercise& exercise, MenuItem menuItem, QWidget* parent)
    : QGroupBox(parent), exercise_(exercise), menuItem_(std::move(menuItem)) {}

void ExercisePanel::setButtons(QPushButton& start, QPushButton& hearAgain) {
    startButton_ = &start;
    setActionIcon(start, ActionIcon::Play);
    hearAgainButton_ = &hearAgain;
    hearAgain.setText(UserText::tr("Riascolta (F4)"));
    hearAgain.setToolTip(UserText::tr("Suona di nuovo ciò che va riconosciuto"));
    hearAgain.setEnabled(false);
    connect(&start, &QPushButton::clicked, this, [this] { exercise_.startOrStop(); });
    connect(&hearAgain, &QPushButton::clicked, this, &ExercisePanel::hearAgainClicked);
}

/// A disabled button would pass the focus on to the first answer.
void ExercisePanel::enableHearAgain(bool on) {
    if (!on && hearAgainButton_->hasFocus())
        focusStart();
    hearAgainButton_->setEnabled(on);
}

void ExercisePanel::showState() {
    setVisible(exercise_.visible());
    startButton_->setVisible(exercise_.startVisible());
    if (exercise_.running() != showsRunning_)
        showRunning(exercise_.running());
}

void ExercisePanel::focusStart() {
    startButton_->setFocus();
}

void ExercisePanel::showRunning(bool running) {
    showsRunning_ = running;
    setActionIcon(*startButton_, running ? ActionIcon::Stop : ActionIcon::Play);
    startButton_->setText(running ? UserText::tr("Stop") : UserText::tr("Start"));
    QPalette colours = startButton_->palette();
    colours.setColor(QPalette::Button,
                     running ? promptColour(palette()) : palette().color(QPalette::Button));
    startButton_->setPalette(colours);
}
