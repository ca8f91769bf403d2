#pragma once

#include <QString>

#include <functional>

class QPagedPaintDevice;

/// Paper from the machine's printers.
class Printing {
public:
    virtual ~Printing() = default;

    enum class Readiness {
        Ready,
        NoPrinter,
        NotInstalled,  ///< this installation of the program cannot print
    };

    /// Whether it can be printed, before a user is asked anything.
    virtual Readiness readiness() = 0;

    enum class Outcome {
        Printed,    ///< the pages were given to the printer
        Cancelled,  ///< by the user
        Failed,
    };

    /// Paints all pages that the device's own choice of pages holds; false if it cannot.
    using PaintPages = std::function<bool(QPagedPaintDevice& device, bool lastPageFirst)>;

    /// Where it is ready, asks for printer, paper and pages, and prints what is painted under a
    /// title.
    virtual Outcome print(const QString& title, const PaintPages& paintPages) = 0;
};
