#pragma once

#include "reference/key_page.h"
#include "widgets/sheet.h"

#include <array>

class KeyButton;
class QGridLayout;

/// A key's signature on two staves above its names. For screen readers it is a picture that is
/// described, not a group of texts that say the same once more.
class KeyPicture : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;
};

/// The page of the keys: a button for each key and one for the degrees, and beside them what the
/// buttons show.
class KeySheet : public Sheet {
    Q_OBJECT

public:
    explicit KeySheet(QWidget* parent = nullptr);

    void Ton_Click(int index);

protected:
    /// The name beside a button clicks it too.
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void addButton(QGridLayout& buttons, int index);
    QWidget* makePicture(int index);
    QWidget* makeDegrees();
    QWidget* makeHint();
    void render();

    KeyPage page_;
    std::array<KeyButton*, KeyPage::kButtons + 1> ton_{};  ///< from 1
    std::array<QWidget*, KeyPage::kButtons + 1> shown_{};  ///< what each button shows, from 1
    QWidget* hint_ = nullptr;
};
