#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class PlaybackPanel;
}

/// Play and stop, the loop, the step arrows with the entry that sounds, and the tempo.
class PlaybackPanel : public QWidget {
    Q_OBJECT

public:
    explicit PlaybackPanel(QWidget* parent = nullptr);
    ~PlaybackPanel() override;

    Ui::PlaybackPanel& ui() { return *ui_; }

    void showPlaying(bool playing);

    /// Shows the tempo without a signal of its scroll bar.
    void showTempo(int tempo);

private:
    std::unique_ptr<Ui::PlaybackPanel> ui_;
};
