#pragma once

#include "platform/desktop/held_input.h"
#include "platform/printing.h"

class Runtime;

/// Printing by the toolkit, whose part for it is opened at the first use. The end of the program
/// closes the dialogue, and from then on nothing is printed.
class QtPrinting : public Printing {
public:
    explicit QtPrinting(const Runtime& runtime) : runtime_(runtime) {}

    Outcome print(const QString& title, const PaintPages& paintPages) override;

private:
    const Runtime& runtime_;
    HeldInput heldInput_;
};
