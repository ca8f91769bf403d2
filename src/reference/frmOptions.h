#pragma once

#include <QDialog>

#include <array>
#include <memory>

class QPushButton;
class Sheet;

namespace Ui {
class frmOptions;
}

/// The reference sheets: note values, keys and intervals, one page at a time.
class frmOptions : public QDialog {
    Q_OBJECT

public:
    explicit frmOptions(QWidget* parent);
    ~frmOptions() override;

    void cmdSel_Click(int index);
    void cmdOk_Click();

protected:
    void showEvent(QShowEvent* event) override;

private:
    static constexpr int kPages = 3;

    void Form_Load();
    void Form_Activate();
    void showPage(int page, bool shown);
    Sheet& Frame1(int page) const;
    QPushButton& cmdSel(int index) const;

    std::unique_ptr<Ui::frmOptions> ui_;
    int page_ = 0;  ///< 1 to 3; 0 until the window is shown
};
