#pragma once

#include "core/verdict.h"
#include "reading/reading_statistics.h"

#include <QString>

#include <chrono>
#include <optional>

/// What is said in the reading drill to those who do not see it. A note is told by its place, never
/// by its name, which is what the drill asks for.
class ReadingSpeech {
public:
    /// What follows an answer is said when the notes of its sound are over, which last 194 and
    /// 214 ms.
    static constexpr std::chrono::milliseconds kAfterSound{220};

    /// A session begins. In the automatic mode everything is said in fewer words, for its pace.
    void start(ReadingMode mode);

    /// A new note is on show. In the automatic mode its clef is named only when it changes.
    QString note(int step);
    QString verdict(Verdict verdict) const;

    /// The note on show once more; nothing while there is none.
    QString noteAgain() const;
    /// The counters `conta` and `er`, as last shown.
    void count(int conta, int er);
    QString counts() const;
    QString stop(const ReadingStatistics& statistics);

private:
    ReadingMode mode_ = ReadingMode::Normale;
    std::optional<int> step_;
    int conta_ = 0;
    int er_ = 0;
};
