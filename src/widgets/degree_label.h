#pragma once

#include <QLabel>

/// A label that shows a degree of the scale, as " IV    Sottodominante". The numeral and the name
/// are painted in columns, which the blanks of the text would give in one font only.
class DegreeLabel : public QLabel {
    Q_OBJECT

public:
    explicit DegreeLabel(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int nameColumn() const;
    QString numeral() const;
    QString name() const;
};
