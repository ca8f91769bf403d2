#pragma once

#include <QWidget>

#include <array>
#include <cstdint>

class Lamp;

/// 20 round lamps in one row or two, `lblPuls_0` … `lblPuls_19`. The fewer are visible, the larger
/// they are, up to the widget's height. A screen reader is told each lamp's number and colour.
class LampRow : public QWidget {
    Q_OBJECT

public:
    static constexpr int kCount = 20;

    explicit LampRow(QWidget* parent = nullptr);

    /// Makes the first `count` lamps visible and the others not.
    void setVisibleLamps(int count);

    /// Gives a lamp 0..19 a colour 0x00BBGGRR; any other lamp is ignored.
    void setColour(int lamp, std::uint32_t colour);
    void setAllColours(std::uint32_t colour);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void arrange();

    std::array<Lamp*, kCount> lamps_;
    int visible_ = kCount;
};
