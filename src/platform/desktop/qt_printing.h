#pragma once

#include "platform/printing.h"

class HeldInput;
class Runtime;

/// Printing by the toolkit, whose part for it is opened at the first use. The end of the program
/// closes the dialogue, and from then on nothing is printed.
class QtPrinting : public Printing {
public:
    QtPrinting(const Runtime& runtime, HeldInput& heldInput)
        : runtime_(runtime), heldInput_(heldInput) {}

    Readiness readiness() override;
    Outcome print(const QString& title, const PaintPages& paintPages) override;

private:
    const Runtime& runtime_;
    HeldInput& heldInput_;
};
