#pragma once

#include <QString>

class Score;
struct EarPrompt;

/// What is said in ear training to those who do not see the window.
class EarSpeech {
public:
    /// The instruction, unless it was the last one said.
    QString prompt(const EarPrompt& prompt);
    /// The last instruction once more.
    QString promptAgain() const { return prompt_; }
    /// Another exercise was chosen: its instruction is said even if it is the same.
    void forgetPrompt() { prompt_.clear(); }

    static QString inWords(const Score& score);

private:
    QString prompt_;
};
