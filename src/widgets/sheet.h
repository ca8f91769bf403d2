#pragma once

#include <QGroupBox>

class QLayout;

/// A page that looks printed: a light card with its caption as a heading over a rule.
class Sheet : public QGroupBox {
    Q_OBJECT

public:
    explicit Sheet(QWidget* parent = nullptr);

protected:
    /// Gives the page its layout, with room for the heading and even margins.
    void setPage(QLayout* page);

    void paintEvent(QPaintEvent* event) override;
};
