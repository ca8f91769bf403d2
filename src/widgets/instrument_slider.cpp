#include "widgets/instrument_slider.h"

#include "core/instruments.h"
#include "widgets/announcement.h"

#include <chrono>

namespace {

using namespace std::chrono_literals;

/// Longer than from one repeat of a held key to the next.
constexpr auto kRests = 300ms;

}  // namespace

InstrumentSlider::InstrumentSlider(QWidget* parent) : QSlider(parent) {
    setRange(0, instruments::kCount - 1);
    resting_.setSingleShot(true);
    resting_.setInterval(kRests);
    connect(this, &QSlider::valueChanged, &resting_, qOverload<>(&QTimer::start));
    connect(&resting_, &QTimer::timeout, this, &InstrumentSlider::sayName);
}

/// Where it only follows another control, that one has spoken.
void InstrumentSlider::sayName() const {
    if (hasFocus())
        announce(instruments::InstrumentName(value()));
}
