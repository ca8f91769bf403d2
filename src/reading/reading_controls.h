#pragma once

#include "reading/reading_statistics.h"

#include <QWidget>

#include <memory>

namespace Ui {
class ReadingControls;
}

/// The right half of the drill: difficulty, start, counters, speed and the statistics.
class ReadingControls : public QWidget {
    Q_OBJECT

public:
    explicit ReadingControls(QWidget* parent = nullptr);
    ~ReadingControls() override;

    Ui::ReadingControls& ui() { return *ui_; }

    void showSpeed(int notesPerMinute);
    void showSpeedControls(bool on);
    void showStatistics(const ReadingStatistics& statistics);
    void hideStatistics();

private:
    std::unique_ptr<Ui::ReadingControls> ui_;
};
