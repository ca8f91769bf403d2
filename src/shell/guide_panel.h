#pragma once

#include <QWidget>

#include <vector>

class QAction;

/// Names what else there is, with its shortcuts, in a place that would be empty; a click does it.
/// It asks for no height: where it does not fit as a whole, nothing is shown.
class GuidePanel : public QWidget {
    Q_OBJECT

public:
    struct Row {
        QAction* item;  ///< of the menu; the row is disabled with it
        QString keys;
    };

    explicit GuidePanel(QWidget* parent = nullptr);

    /// To be called once.
    void setRows(const QString& title, const std::vector<Row>& rows);

    /// Where the Tab key leaves the guide, once it has rows.
    QWidget& lastControl() const { return *lastControl_; }

    /// Whether the place is free for the guide.
    void setWanted(bool wanted);

    QSize sizeHint() const override { return minimumSizeHint(); }
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void arrange();

    QWidget* content_;
    QWidget* lastControl_ = nullptr;
    bool wanted_ = true;
};
