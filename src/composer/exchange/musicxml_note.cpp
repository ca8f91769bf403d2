#include "composer/exchange/musicxml_note.h"

#include "composer/exchange/musicxml_names.h"
#include "composer/exchange/xml_cursor.h"

#include <algorithm>
#include <cmath>

namespace musicxml {
namespace {

using imported::LeftOut;

constexpr int kMostDots = 4;
constexpr int kLargestTuplet = 64;

class NoteReader {
public:
    explicit NoteReader(XmlCursor& xml) : xml_(xml) {}

    NoteElement read() {
        while (xml_.enterNext())
            readChild(xml_.name());
        note_.typeTicks = typeTicks();
        return note_;
    }

private:
    void readChild(QStringView name) {
        if (name == u"pitch")
            readPitch();
        else if (name == u"duration")
            note_.duration = number(-1);
        else if (name == u"voice")
            note_.voice = static_cast<int>(std::clamp(number(0), 0.0, 1e6));
        else if (name == u"type")
            readType();
        else if (name == u"time-modification")
            readTuplet();
        else if (name == u"notations")
            readNotations();
        else
            readSign(name);
    }

    void readSign(QStringView name) {
        if (name == u"tie")
            takeTie();
        note_.grace |= name == u"grace";
        note_.cue |= name == u"cue";
        note_.chord |= name == u"chord";
        note_.rest |= name == u"rest";
        note_.unpitched |= name == u"unpitched";
        dots_ += name == u"dot" ? 1 : 0;
        if (name == u"lyric")
            leaveOut(LeftOut::Lyrics);
        xml_.leave();
    }

    double number(double otherwise) {
        bool isNumber = false;
        const double number = xml_.takeText().toDouble(&isNumber);
        return isNumber && std::isfinite(number) ? number : otherwise;
    }

    void readPitch() {
        constexpr double kOctaves = 10;
        constexpr double kMostAlter = 3;
        constexpr std::array<int, pitch::kDegrees> kSemitonesOf{0, 2, 4, 5, 7, 9, 11};
        double octave = -1;
        double alter = 0;
        const char* step = kSteps.end();
        while (xml_.enterNext()) {
            if (xml_.name() == u"step") {
                const QString text = xml_.takeText();
                step = std::find_if(kSteps.begin(), kSteps.end(),
                                    [&text](char c) { return text == QLatin1Char(c); });
            } else if (xml_.name() == u"alter") {
                alter = number(kMostAlter + 1);
            } else if (xml_.name() == u"octave") {
                octave = number(-1);
            } else {
                xml_.leave();
            }
        }
        const bool isPitch = step != kSteps.end() && octave >= 0 && octave < kOctaves &&
                             std::abs(alter) <= kMostAlter && alter == std::round(alter);
        if (isPitch) {
            note_.pitch = (static_cast<int>(octave) + 1) * pitch::kSemitones +
                          kSemitonesOf[static_cast<std::size_t>(step - kSteps.begin())] +
                          static_cast<int>(alter);
        }
    }

    /// Types that this program does not write can be read as well.
    void readType() {
        const QString text = xml_.takeText();
        constexpr std::array<const char*, 2> kOthers{"breve", "256th"};
        constexpr std::array<std::int64_t, 2> kOtherShares{2, -64};
        constexpr std::int64_t kQuarter = imported::kTicksPerQuarter;
        for (std::size_t i = 0; i < kTypes.size(); ++i) {
            if (text == QString::fromUtf8(kTypes[i]))
                ticks_ = static_cast<std::int64_t>(note_values::kWritten[i].quarters * kQuarter);
        }
        for (std::size_t i = 0; i < kOthers.size(); ++i) {
            const std::int64_t share = kOtherShares[i];
            if (text == QString::fromUtf8(kOthers[i]))
                ticks_ = share > 0 ? share * 4 * kQuarter : kQuarter / -share;
        }
    }

    void readTuplet() {
        while (xml_.enterNext()) {
            if (xml_.name() == u"actual-notes")
                actual_ = number(0);
            else if (xml_.name() == u"normal-notes")
                normal_ = number(0);
            else
                xml_.leave();
        }
    }

    void readNotations() {
        while (xml_.enterNext()) {
            const QStringView name = xml_.name();
            if (name == u"articulations") {
                readArticulations();
                continue;
            }
            if (name == u"tied")
                takeTie();
            else if (name == u"ornaments" || name == u"arpeggiate" || name == u"glissando")
                leaveOut(LeftOut::Ornaments);
            else if (name == u"slur" || name == u"slide")
                leaveOut(LeftOut::Slurs);
            else if (name == u"dynamics")
                leaveOut(LeftOut::Dynamics);
            else if (name != u"tuplet")
                leaveOut(LeftOut::Others);
            xml_.leave();
        }
    }

    void readArticulations() {
        while (xml_.enterNext()) {
            const auto* const row = std::find_if(
                kArticulations.begin(), kArticulations.end(), [this](const Articulation& a) {
                    return xml_.name() == QString::fromUtf8(a.element);
                });
            if (row != kArticulations.end() && note_.letter == 'n')
                note_.letter = row->letter;
            else
                leaveOut(LeftOut::Articulations);
            xml_.leave();
        }
    }

    /// The tie that sounds and the one that is drawn say the same; some files have but one of them.
    void takeTie() {
        const QString type = xml_.attribute("type");
        note_.tieStarts |= type == QLatin1String("start");
        note_.tieStops |= type == QLatin1String("stop");
    }

    void leaveOut(LeftOut what) { note_.leftOut.push_back(what); }

    std::optional<std::int64_t> typeTicks() const {
        std::int64_t ticks = ticks_;
        for (int dot = 1; dot <= std::min(dots_, kMostDots); ++dot) {
            if ((ticks_ >> dot) << dot != ticks_)
                return std::nullopt;
            ticks += ticks_ >> dot;
        }
        const auto actual =
            static_cast<std::int64_t>(std::clamp(actual_, 0.0, 1.0 + kLargestTuplet));
        const auto normal =
            static_cast<std::int64_t>(std::clamp(normal_, 0.0, 1.0 + kLargestTuplet));
        const bool isTuplet = actual > 0 && normal > 0 && actual <= kLargestTuplet &&
                              normal <= kLargestTuplet && ticks * normal % actual == 0;
        if (ticks == 0 || !isTuplet)
            return std::nullopt;
        return ticks * normal / actual;
    }

    XmlCursor& xml_;
    NoteElement note_;
    std::int64_t ticks_ = 0;  ///< of the type alone
    int dots_ = 0;
    double actual_ = 1;
    double normal_ = 1;
};

}  // namespace

NoteElement readNote(XmlCursor& xml) {
    return NoteReader(xml).read();
}

}  // namespace musicxml
