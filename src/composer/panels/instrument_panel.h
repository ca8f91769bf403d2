#pragma once

#include <QWidget>

#include <functional>
#include <memory>

class QMenu;

namespace Ui {
class InstrumentPanel;
}

/// The instrument's slider with its caption, and a menu of all instruments by family.
class InstrumentPanel : public QWidget {
public:
    using ProgramHandler = std::function<void(int program)>;

    explicit InstrumentPanel(QWidget* parent = nullptr);
    ~InstrumentPanel() override;

    void onProgram(ProgramHandler handler);

    /// Shows a program without telling anybody that it changed.
    void showProgram(int program);

private:
    void fillFamily(QMenu& menu, int firstProgram);

    std::unique_ptr<Ui::InstrumentPanel> ui_;
};
