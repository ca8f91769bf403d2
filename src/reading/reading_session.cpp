#include "reading/reading_session.h"

#include "core/funzioni_mm.h"
#include "reading/answer_keys.h"

#include <algorithm>
#include <utility>

namespace {

const QLatin1String kRightSound("rok.wav");
const QLatin1String kWrongSound("rko.wav");

}  // namespace

ReadingSession::ReadingSession(Runtime& runtime, FunzioniMM& funzioniMM, QString noteFolder,
                               ReadingDisplay& display)
    : runtime_(runtime),
      funzioniMM_(funzioniMM),
      noteFolder_(std::move(noteFolder)),
      display_(display) {}

void ReadingSession::chooseDifficulty(std::size_t item) {
    stepRange_.chooseItem(item);
    display_.Nascondinote();
    if (running_ && !automaticLoop_)
        Mostranota();
}

void ReadingSession::start() {
    if (active())
        return;
    correct_ = 0;
    wrong_ = 0;
    shown_ = 0;
    conta_ = 0;
    keysDown_.fill(false);
    pianoPresses_.assign(pianoKeys_.begin(), pianoKeys_.end());
    startTime_ = runtime_.dateTime();
    running_ = true;
    stepRange_.forgetClicks();
    display_.sessionStarted();
    showCounts();
    if (mode_ == ReadingMode::Normale)
        Mostranota();
    else
        runAutomatic();
}

void ReadingSession::stop() {
    if (!running_)
        return;
    running_ = false;
    if (!automaticLoop_)
        finish();
}

void ReadingSession::answer(int degree) {
    if (takesAnswers())
        judge(degree - 1, isAsked(degree - 1));
}

void ReadingSession::keyDown(int note) {
    pianoKeys_.insert(note);
    if (automaticLoop_)
        pianoPresses_.push_back(note);
    else if (takesAnswers())
        judge(pitch::degreeOf(note), isKeyOfNote(note));
}

bool ReadingSession::isKeyOfNote(int note) const {
    const int asked = pitch::noteNumberOfStep(staff_step::diatonicPosition(stepOnShow_));
    return exactOctave_ ? note == asked : (note - asked) % pitch::kSemitones == 0;
}

void ReadingSession::judge(std::optional<int> degree, bool right) {
    if (right)
        confirmRightAnswer();
    display_.answerJudged(degree, verdictOf(right));
    checkAnswer(right);
}

void ReadingSession::checkAnswer(bool right) {
    if (right) {
        ++correct_;
        ++conta_;
        Mostranota();
    } else {
        funzioniMM_.PlaySoundFile(noteFolder_ + kWrongSound, true);
        ++wrong_;
    }
    showCounts();
}

void ReadingSession::Mostranota() {
    display_.Nascondinote();
    stepOnShow_ = drawStep();
    display_.showNote(stepOnShow_);
}

int ReadingSession::drawStep() {
    const difficulty::StepRange range = stepRange_.range();
    int step = 0;
    do {
        step = funzioniMM_.random().between(static_cast<std::int16_t>(range.lower),
                                            static_cast<std::int16_t>(range.upper));
    } while (!staff_step::carriesNote(step));
    return step;
}

/// Without its sound file a right answer is silent: the next note confirms it as well, and the
/// default sound of the system could be taken for a mistake. Elsewhere a missing file gives the
/// default sound: in the automatic mode nothing else tells of a right answer, and a wrong one must
/// be heard.
void ReadingSession::confirmRightAnswer() {
    // Where the file is missing, the default sound would be that of a wrong answer, whose file is
    // then missing too; silence tells them apart.
    if (answerWithNote_)
        funzioniMM_.PlayNoteIndex(staff_step::soundingNote(stepOnShow_));
    else
        funzioniMM_.PlaySoundFile(noteFolder_ + kRightSound, false);
}

void ReadingSession::runAutomatic() {
    automaticLoop_ = true;
    bool stoppedInPass = false;
    while (running_) {
        const Instant noteStart = runtime_.now();
        Mostranota();
        conta_ = ++shown_;
        answered_ = false;
        showCounts();
        stoppedInPass = takeAnswers(noteStart);
    }
    // A stop between a note's last pass and this point, as while the next note is being shown,
    // takes one wrong answer back, even where there is none. That is how the drill has always
    // counted and the statistics are defined by it; a stop that a pass has seen takes nothing back.
    if (!stoppedInPass)
        --wrong_;
    finish();
    automaticLoop_ = false;
}

/// Lets the user answer until the note's time is over, by the speed as it is then; true if the
/// session was stopped meanwhile.
bool ReadingSession::takeAnswers(Instant noteStart) {
    const auto noteEnd = [&] { return noteStart + secondsToInstant(period_); };
    while (runtime_.now() < noteEnd()) {
        runtime_.pump(noteEnd());
        if (!running_ || runtime_.held(kKeyEscape) || runtime_.ending()) {
            running_ = false;
            return true;
        }
        pollKeys();
        showCounts();
    }
    return false;
}

void ReadingSession::pollKeys() {
    for (std::size_t degree = 0; degree < keysDown_.size(); ++degree) {
        const auto& keys = answer_keys::kPolled[degree];
        const bool down = std::any_of(keys.begin(), keys.end(),
                                      [this](KeyCode key) { return runtime_.held(key); });
        const bool fresh = down && !keysDown_[degree];
        keysDown_[degree] = down;
        if (down && !answered_)
            judgePolled(static_cast<int>(degree), isAsked(static_cast<int>(degree)), fresh);
    }
    pollPianoKeys();
}

void ReadingSession::pollPianoKeys() {
    for (const int note : std::exchange(pianoPresses_, {})) {
        if (!answered_)
            judgePolled(pitch::degreeOf(note), isKeyOfNote(note), true);
    }
    for (const int note : pianoKeys_) {
        if (!answered_ && isKeyOfNote(note))
            judgePolled(pitch::degreeOf(note), true, false);
    }
}

/// A key that stays down answers its own note whenever that is shown, but counts as a wrong answer
/// only once for each press.
void ReadingSession::judgePolled(std::optional<int> degree, bool right, bool freshlyPressed) {
    if (right) {
        funzioniMM_.PlaySoundFile(noteFolder_ + kRightSound, true);
        ++correct_;
        answered_ = true;
    } else if (freshlyPressed) {
        funzioniMM_.PlaySoundFile(noteFolder_ + kWrongSound, true);
        ++wrong_;
    }
    if (right || freshlyPressed)
        display_.answerJudged(degree, verdictOf(right));
}

bool ReadingSession::isAsked(int degree) const {
    return staff_step::degree(stepOnShow_) == degree;
}

void ReadingSession::finish() {
    funzioniMM_.PlayNoteIndex(FunzioniMM::kSilence);
    display_.Nascondinote();
    const std::int64_t seconds = std::max<qint64>(0, startTime_.secsTo(runtime_.dateTime()));
    display_.sessionStopped({mode_, correct_, wrong_, shown_, seconds});
}

void ReadingSession::showCounts() {
    display_.showCounts(conta_, wrong_);
}
