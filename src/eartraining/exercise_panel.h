#pragma once

#include "eartraining/ear_exercise.h"

#include <QGroupBox>

#include <vector>

class QPushButton;
struct Exercises;

/// The colour of the prompt, which the start button of a running exercise takes as well.
QColor promptColour(const QPalette& palette);

/// The controls of an exercise. The exercise says whether the panel and its start button are
/// visible; the button reads "Stop" while the exercise runs. A derived panel shows what else there
/// is.
class ExercisePanel : public QGroupBox {
    Q_OBJECT

public:
    /// The exercise's item in the window's menu.
    struct MenuItem {
        const char* name;
        QString text;
    };

    ExercisePanel(EarExercise& exercise, MenuItem menuItem, QWidget* parent);

    EarExercise& exercise() const { return exercise_; }
    const MenuItem& menuItem() const { return menuItem_; }

    virtual void showState();
    void focusStart();
    void enableHearAgain(bool on);

    /// The button on which an answer is given; nothing for one that is given on the keyboard.
    virtual QWidget* answerControl(int answer) const = 0;

Q_SIGNALS:
    void hearAgainClicked();

protected:
    /// To be called once, by the constructor, with the buttons of the form.
    void setButtons(QPushButton& start, QPushButton& hearAgain);

private:
    void showRunning(bool running);

    EarExercise& exercise_;
    MenuItem menuItem_;
    QPushButton* startButton_ = nullptr;
    QPushButton* hearAgainButton_ = nullptr;
    bool showsRunning_ = false;
};

/// A panel for each of the exercises, in the order of the window's menu.
std::vector<ExercisePanel*> makePanels(Exercises& exercises, QWidget* parent);
