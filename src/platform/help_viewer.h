#pragma once

#include <QString>

/// Shows the compiled help file.
class HelpViewer {
public:
    virtual ~HelpViewer() = default;

    /// Opens the help file, or says that there is none.
    virtual void show(const QString& helpFile) = 0;
};
