#pragma once

#include <QString>

#include <cstdint>

enum class ReadingMode { Normale, Automatico };

/// The numbers of a finished session and the texts in which they are shown.
struct ReadingStatistics {
    ReadingMode mode = ReadingMode::Normale;
    int correct = 0;
    int wrong = 0;
    int shown = 0;             ///< notes shown; counts in the automatic mode only
    std::int64_t seconds = 0;  ///< time taken

    /// Whether nothing was answered, so that nothing is worth showing.
    bool empty() const { return correct + wrong == 0; }

    QString rightAnswers() const;  ///< `Lresatte`
    QString wrongAnswers() const;  ///< `Lrerrate`
    QString answersGiven() const;  ///< `Ridate`, mode "normale"
    QString notesShown() const;    ///< `Lnmostrate`, mode "automatico"
    QString percentage() const;
    QString timeTaken() const;  ///< `Tempoimp`

    /// All of it as it is said: "Risposte esatte: 3. Risposte errate: 1. 75%. 1 minuto e 5
    /// secondi".
    QString inWords() const;

private:
    /// What the right answers are counted against.
    int outOf() const { return mode == ReadingMode::Normale ? correct + wrong : shown; }
};
