#pragma once

#include <QLabel>

/// A degree of the scale, as " IV    Sottodominante". The numeral and the name stand in columns in
/// every font, though the blanks between them are as many as a font of its own would need.
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
