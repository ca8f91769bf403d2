#include "composer/exchange/musicxml_writer.h"

#include "composer/exchange/musicxml_names.h"
#include "composer/exchange/score_heading.h"
#include "composer/exchange/zip_archive.h"
#include "composer/score/bar_view.h"
#include "core/instruments.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace musicxml {
namespace {

using score::BarView;
using score::WrittenNote;

constexpr const char* kDocumentType =
    "<!DOCTYPE score-partwise PUBLIC \"-//Recordare//DTD MusicXML 4.0 Partwise//EN\" "
    "\"http://www.musicxml.org/dtds/partwise.dtd\">";

const QString kPartId = QStringLiteral("P1");
const QString kInstrumentId = QStringLiteral("P1-I1");
const QString kScoreFile = QStringLiteral("score.musicxml");

/// Below this mean the notes stand better on a bass staff.
constexpr int kLowestTrebleMean = pitch::kMiddleC - 3;

/// The names of the accidentals from the double flat to the double sharp.
constexpr std::array<const char*, 5> kAccidentals{"flat-flat", "flat", "natural", "sharp",
                                                  "double-sharp"};
constexpr int kDoubleFlat = -2;

QString utf8(const char* text) {
    return QString::fromUtf8(text);
}

/// A file's name may hold what XML cannot.
QString forXml(const QString& text) {
    QString kept;
    for (const char32_t c : text.toUcs4()) {
        const bool isControl = c < U' ' && c != U'\t';
        const bool isNone = c == 0xFFFE || c == 0xFFFF || (c >= 0xD800 && c < 0xE000);
        if (!isControl && !isNone)
            kept += QString::fromUcs4(&c, 1);
    }
    return kept;
}

bool standsOnTreble(const BarView& view) {
    qint64 sum = 0;
    qint64 count = 0;
    for (const score::Bar& bar : view.bars) {
        for (const WrittenNote& note : bar.notes) {
            sum += note.note;
            count += note.isRest() ? 0 : 1;
        }
    }
    return sum >= kLowestTrebleMean * count;
}

class Writer {
public:
    explicit Writer(QByteArray& bytes) : xml_(&bytes) {
        xml_.setAutoFormatting(true);
        xml_.setAutoFormattingIndent(1);
    }

    void writeScore(const BarView& view, const ScoreHeading& heading) {
        xml_.writeStartDocument();
        xml_.writeDTD(utf8(kDocumentType));
        start(kRoot);
        xml_.writeAttribute(QStringLiteral("version"), QStringLiteral("4.0"));
        writeHeader(heading);
        start("part");
        xml_.writeAttribute(QStringLiteral("id"), kPartId);
        for (std::size_t i = 0; i < view.bars.size(); ++i)
            writeBar(view, i, heading.tempo);
        xml_.writeEndDocument();
    }

private:
    void start(const char* name) { xml_.writeStartElement(utf8(name)); }
    void end() { xml_.writeEndElement(); }
    void empty(const char* name) { xml_.writeEmptyElement(utf8(name)); }
    void text(const char* name, const QString& content) {
        xml_.writeTextElement(utf8(name), content);
    }
    void number(const char* name, int content) { text(name, QString::number(content)); }
    void typed(const char* name, bool starts) {
        empty(name);
        xml_.writeAttribute(QStringLiteral("type"), utf8(starts ? "start" : "stop"));
    }

    void writeHeader(const ScoreHeading& heading) {
        const QString instrument = instruments::InstrumentName(heading.program);
        start("work");
        text("work-title", forXml(heading.title));
        end();
        start("identification");
        start("encoding");
        text("software", QStringLiteral("Cantavista"));
        end();
        end();
        start("part-list");
        start("score-part");
        xml_.writeAttribute(QStringLiteral("id"), kPartId);
        text("part-name", instrument);
        start("score-instrument");
        xml_.writeAttribute(QStringLiteral("id"), kInstrumentId);
        text("instrument-name", instrument);
        end();
        start("midi-instrument");
        xml_.writeAttribute(QStringLiteral("id"), kInstrumentId);
        number("midi-channel", 1);
        number("midi-program", heading.program + 1);
        end();
        end();
        end();
    }

    void writeBar(const BarView& view, std::size_t index, int tempo) {
        start("measure");
        xml_.writeAttribute(QStringLiteral("number"), QString::number(index + 1));
        if (index == 0) {
            writeAttributes(view);
            writeTempo(tempo);
        }
        for (const WrittenNote& note : view.bars[index].notes)
            writeNote(note);
        if (index + 1 == view.bars.size()) {
            start("barline");
            xml_.writeAttribute(QStringLiteral("location"), QStringLiteral("right"));
            text("bar-style", QStringLiteral("light-heavy"));
            end();
        }
        end();
    }

    void writeAttributes(const BarView& view) {
        const score::Key& key = view.notation.key;
        const score::Metre metre = view.notation.metre.value_or(score::Metre{});
        const bool treble = standsOnTreble(view);
        start("attributes");
        number("divisions", score::kUnitsPerQuarter);
        start("key");
        number("fifths", key.fifths);
        text("mode", utf8(key.minor ? "minor" : "major"));
        end();
        start("time");
        number("beats", metre.beats);
        number("beat-type", metre.beatValue);
        end();
        start("clef");
        text("sign", utf8(treble ? "G" : "F"));
        number("line", treble ? 2 : 4);
        end();
        end();
    }

    void writeTempo(int tempo) {
        start("direction");
        xml_.writeAttribute(QStringLiteral("placement"), QStringLiteral("above"));
        start("direction-type");
        start("metronome");
        text("beat-unit", QStringLiteral("quarter"));
        number("per-minute", tempo);
        end();
        end();
        empty("sound");
        xml_.writeAttribute(QStringLiteral("tempo"), QString::number(tempo));
        end();
    }

    void writeNote(const WrittenNote& note) {
        start("note");
        if (note.isRest())
            empty("rest");
        else
            writePitch(note.spelling);
        number("duration", note.value.units());
        if (note.tiedBack)
            typed("tie", false);
        if (note.tiedOn)
            typed("tie", true);
        number("voice", 1);
        text("type", utf8(kTypes[static_cast<std::size_t>(note.value.value)]));
        if (note.value.dotted)
            empty("dot");
        if (note.accidental)
            text("accidental",
                 utf8(kAccidentals[static_cast<std::size_t>(*note.accidental - kDoubleFlat)]));
        if (note.value.triplet) {
            start("time-modification");
            number("actual-notes", 3);
            number("normal-notes", 2);
            end();
        }
        writeNotations(note);
        end();
    }

    void writePitch(const score::Spelling& spelling) {
        start("pitch");
        text("step", QString(QLatin1Char(kSteps[static_cast<std::size_t>(spelling.degree)])));
        if (spelling.alter != 0)
            number("alter", spelling.alter);
        number("octave", spelling.octave);
        end();
    }

    void writeNotations(const WrittenNote& note) {
        const auto* const articulation = std::find_if(
            kArticulations.begin(), kArticulations.end(),
            [&note](const auto& row) { return note.letter && row.letter == note.letter->letter; });
        const bool articulated = !note.isRest() && articulation != kArticulations.end();
        if (!note.tiedBack && !note.tiedOn && !note.groupStarts && !note.groupEnds && !articulated)
            return;
        start("notations");
        if (note.tiedBack)
            typed("tied", false);
        if (note.tiedOn)
            typed("tied", true);
        if (note.groupStarts) {
            typed("tuplet", true);
            xml_.writeAttribute(QStringLiteral("bracket"), QStringLiteral("yes"));
        }
        if (note.groupEnds)
            typed("tuplet", false);
        if (articulated) {
            start("articulations");
            empty(articulation->element);
            end();
        }
        end();
    }

    QXmlStreamWriter xml_;
};

QByteArray container() {
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("container"));
    xml.writeStartElement(QStringLiteral("rootfiles"));
    xml.writeEmptyElement(QStringLiteral("rootfile"));
    xml.writeAttribute(QStringLiteral("full-path"), kScoreFile);
    xml.writeAttribute(QStringLiteral("media-type"),
                       QStringLiteral("application/vnd.recordare.musicxml+xml"));
    xml.writeEndDocument();
    return bytes;
}

}  // namespace

QByteArray write(const BarView& view, const ScoreHeading& heading) {
    QByteArray bytes;
    Writer(bytes).writeScore(view, heading);
    return bytes;
}

QByteArray writeCompressed(const BarView& view, const ScoreHeading& heading) {
    return zip_archive::write(
        {{utf8(kContainer), container()}, {kScoreFile, write(view, heading)}});
}

}  // namespace musicxml
