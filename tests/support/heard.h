#pragma once

#include "widgets/announcer.h"

#include <QStringList>

#include <utility>

/// What is announced while this exists.
class Heard : public QObject {
public:
    Heard() {
        connect(&Announcer::shared(), &Announcer::given, this,
                [this](const QString& text) { texts_ << text; });
    }

    /// The texts since the last call.
    QStringList take() { return std::exchange(texts_, {}); }

private:
    QStringList texts_;
};
