#pragma once

#include <QGroupBox>

class QLayout;

/// A page of the reference sheets: a card with its caption as a heading above a line.
class Sheet : public QGroupBox {
    Q_OBJECT

public:
    explicit Sheet(QWidget* parent = nullptr);

protected:
    /// Gives the page its layout, with room for the heading and even margins.
    void setPage(QLayout* page);

    void paintEvent(QPaintEvent* event) override;
};
