#include "composer/any_melody.h"
#include "composer/exchange/melody_builder.h"
#include "composer/exchange/musicxml_reader.h"
#include "composer/exchange/musicxml_writer.h"
#include "composer/exchange/score_heading.h"
#include "composer/exchange/zip_archive.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>

namespace {

QByteArray measure(const QString& content) {
    const QString note =
        "<note><pitch><step>C</step><octave>4</octave></pitch>"
        "<duration>2</duration></note>";
    return QString(
               "<score-partwise><part id='a'><measure number='1'><attributes><divisions>2"
               "</divisions></attributes></measure><measure number='2'>%1</measure></part>"
               "</score-partwise>")
        .arg(QString(content).replace('$', note))
        .toUtf8();
}

}  // namespace

/// What no tag is although it begins like one, with what would be many attributes in a tag.
QByteArrayList noTags() {
    QByteArrayList all{"<!-- don't <a b='", "<![CDATA[ <!-- \" ", "<?print <!-- '", "<!--"};
    const QByteArrayList ends{"-->", "]]>", "?>", "-->"};
    for (qsizetype i = 0; i < all.size(); ++i)
        all[i] += QByteArray(60, '=') + ends[i];
    return all;
}

/// What a program that writes as this one does gives back is the same melody; only a rest that is
/// written as several comes back as several.
TEST(MusicXml, BringsEveryMelodyBack) {
    std::mt19937 random(4);
    for (int round = 0; round < 500; ++round) {
        std::vector<int> units;
        const Melody melody = anyMelody(random, units);
        const score::BarView view = score::barsOf(melody, anyNotation(random));
        if (!view.unwritable.empty())
            continue;
        std::vector<MelodyEntry> wanted;
        for (const score::Bar& bar : view.bars) {
            for (const score::WrittenNote& note : bar.notes) {
                if (note.isRest())
                    wanted.push_back(MelodyEntry::make(0, note.value.units() / 96.0, "p", ','));
                else if (!note.tiedBack)
                    wanted.push_back(melody.entry(note.entry));
            }
        }
        const ScoreHeading heading{"<&\x01\">", 20 + round % 231, round % 128};
        const QByteArray between = noTags()[round / 2 % 4];
        const QByteArray written =
            musicxml::write(view, heading).replace("<note>", between + "<note>");
        imported::Score score =
            musicxml::read(round % 2 ? written : musicxml::writeCompressed(view, heading));
        ASSERT_EQ(imported::entriesOf(score, ','), wanted);
        ASSERT_EQ(score.tempo, heading.tempo);
        ASSERT_EQ(score.program, heading.program);
        ASSERT_TRUE(score.leftOut.empty());
    }
}

/// Damaged and hostile files: whatever is read can be a melody.
TEST(MusicXml, OutlivesDamagedFiles) {
    std::mt19937 random(5U + testing::UnitTest::GetInstance()->random_seed());
    const QByteArray more =
        "<|>|\"|<note>|</note>|<chord/>|<grace/>|-1|0|99999999999|&b;|<sound dacapo='yes'/>|"
        "<backup><duration>96</duration></backup>|<ending number='1,2' type='start'/>|"
        "<barline><repeat direction='backward' times='9'/></barline>|"
        "<!DOCTYPE a [<!ENTITY b 'c'>]>|";
    const QByteArrayList parts = (more + QByteArray(4000, '<')).split('|');
    for (int round = 0; round < 800; ++round) {
        std::vector<int> units;
        const score::BarView view = score::barsOf(anyMelody(random, units), anyNotation(random));
        QByteArray bytes = musicxml::write(view, {"a", 60, 0});
        const bool packs = round % 3 == 0;
        const auto damage = [&] {
            const auto at = static_cast<qsizetype>(random() % bytes.size());
            const auto what = random() % 3;
            if (what == 0)
                bytes[at] = static_cast<char>(random());
            else if (what == 1)
                bytes.remove(at, static_cast<qsizetype>(random() % 60));
            else
                bytes.insert(at, parts[static_cast<qsizetype>(random() % parts.size())]);
        };
        for (auto count = packs ? 0 : random() % 4 + 1; count > 0; --count)
            damage();
        if (packs) {
            bytes = zip_archive::write({{"a.xml", bytes}});
            damage();
        }
        imported::Score score = musicxml::read(bytes);
        for (const MelodyEntry& entry : imported::entriesOf(score, '.'))
            ASSERT_TRUE(entry.noteNumber() == 0 || pitch::isPlayable(entry.noteNumber()));
    }
}

TEST(MusicXml, SaysWhatItRefusesAndWhere) {
    const std::pair<const char*, const char*> cases[] = {
        {"$<note><chord/><pitch><step>E</step><octave>4</octave></pitch></note>",
         "parte 1, battuta 2: accordo"},
        {"$<backup><duration>1</duration></backup>$", "battuta 2: più voci"},
        {"<attributes><transpose><octave-change>3</octave-change></transpose></attributes>$",
         "5 ottave"},
        {"<attributes><staves>3</staves></attributes>$", "più di due"},
        {"<note><unpitched/><duration>2</duration></note>", "senza altezza"},
        {"<note><pitch><step>E</step><alter>0.5</alter><octave>4</octave></pitch><duration>2"
         "</duration></note>",
         "non è un semitono"},
        {"<note><rest/><duration>0.0001</duration></note>", "durata"},
        {"$</measure></part><part><measure>$", "ha 2 parti"},
        {"<!-- <!ENTITY -->", "non è un file MusicXML"},
        {"$<barline><repeat direction='backward' times='31'/></barline><sound dacapo='yes'/>", ""},
        {"$", ""},
    };
    for (const auto& [content, fault] : cases) {
        imported::Score score = musicxml::read(measure(content));
        const auto entries = imported::entriesOf(score, '.');
        const QString faults = score.faults.join(' ');
        EXPECT_TRUE(*fault ? faults.contains(fault) : faults.isEmpty()) << faults.toStdString();
        EXPECT_EQ(entries.empty(), *fault != 0);
    }
    // Attributes, depth and packed zeros without end.
    QByteArray tag = "<a";
    for (int i = 0; i < 40; ++i)
        tag += " a" + QByteArray::number(i) + "='>'";
    QByteArrayList hostile{QByteArray("<score-partwise>").repeated(100),
                           QByteArray(musicxml::kLargestFile + 1, ' '),
                           zip_archive::write({{"a.xml", QByteArray(40 << 20, ' ')}}),
                           measure("$<!--" + QString(70'000, u'=') + "-->"),
                           "<!DOCTYPE score-partwise SYSTEM '<!--'>" + measure("$" + tag + "/>"),
                           "<?xml version='1.0' encoding='x-nessuna'?>" + measure("$")};
    for (const QByteArray& noTag : noTags())
        hostile << measure("$" + noTag + tag + "/>");
    for (const QByteArray& bytes : hostile)
        EXPECT_FALSE(musicxml::read(bytes).faults.isEmpty()) << bytes.left(200).toStdString();
}

/// What is heard of a note's and a bar's elements, as "note:quarters" and letter, with the tempo
/// and what stays out.
TEST(MusicXml, ReadsWhatOtherProgramsWrite) {
    const QString note = "<note><pitch><step>B</step>%1<octave>3</octave></pitch>%2</note>";
    const auto lasting = [&note](const char* duration) { return note.arg("", duration); };
    const std::pair<QString, const char*> cases[] = {
        {note.arg("<alter>-2</alter>", "<duration>1</duration>"), "57:0.5n | 0 |"},
        {"<attributes><transpose><chromatic>-2</chromatic><octave-change>1</octave-change>"
         "</transpose></attributes>$",
         "70:1n | 0 |"},
        {lasting("<duration>1</duration><type>eighth</type><time-modification><actual-notes>3"
                 "</actual-notes><normal-notes>2</normal-notes></time-modification>"),
         "59:0.333333n | 0 |"},
        {lasting("<duration>1</duration><type>eighth</type><dot/>"), "59:0.75n | 0 |"},
        {lasting("<duration>0</duration><type>128th</type>"), "59:0.03125n | 0 |"},
        {lasting("<duration>15.5</duration><type>breve</type>"), "59:8n | 0 |"},
        {lasting("<duration>2</duration><tie type='start'/>") +
             lasting("<duration>1</duration><notations><tied type='stop'/><articulations>"
                     "<staccato/></articulations></notations>") +
             lasting("<duration>2</duration><notations><articulations><tenuto/><accent/>"
                     "</articulations></notations>"),
         "59:1.5n 59:1t | 0 | 4"},
        {"$<backup><duration>2</duration></backup><note><rest/><duration>2</duration><voice>2"
         "</voice></note>",
         "60:1n | 0 |"},
        {"<forward><duration>3</duration></forward>$", "0:1.5p 60:1n | 0 |"},
        {"<direction><direction-type><metronome><beat-unit>quarter</beat-unit><beat-unit-dot/>"
         "<per-minute>80</per-minute></metronome></direction-type><sound tempo='120.5'/>"
         "</direction>$<sound tempo='90'/>",
         "60:1n | 120 | 6"},
        {"<note><grace/></note><note><cue/><duration>2</duration></note><harmony/>" +
             lasting("<duration>2</duration><lyric/><notations><slur/><dynamics/></notations>") +
             "<direction><direction-type><words/></direction-type></direction>",
         "0:1p 59:1n | 0 | 0 8 1 2 3 5"},
    };
    for (const auto& [content, wanted] : cases) {
        imported::Score score = musicxml::read(measure(content));
        QString heard;
        for (const MelodyEntry& entry : imported::entriesOf(score, '.'))
            heard += QString("%1:%2").arg(entry.noteNumber()).arg(entry.quarters()) +
                     entry.attribute + ' ';
        heard += QString("| %1 |").arg(score.tempo.value_or(0));
        for (const imported::LeftOut what : score.leftOut)
            heard += QString(" %1").arg(static_cast<int>(what));
        EXPECT_EQ(heard, wanted) << content.toStdString();
    }
}

/// Bars by their letters; before a bar "|" starts a repeat, "1" to "3" an ending and "$" is the
/// segno, "@" the coda; behind it ":" ends a repeat, "0" is da capo, "s" dal segno, "c" to the
/// coda, "f" fine.
TEST(PlayOrder, WritesRepeatsOut) {
    const QString ending = "<barline location='left'><ending number='%1' type='start'/></barline>";
    const std::map<char, QString> elements{
        {'|', "<barline location='left'><repeat direction='forward'/></barline>"},
        {'$', "<barline location='left'><segno/></barline>"},
        {'@', "<sound coda='a'/>"},
        {'1', ending.arg("1")},
        {'2', ending.arg("2")},
        {'3', ending.arg("3, 31")},
        {':', "<barline><repeat direction='backward'/></barline>"},
        {'0', "<sound dacapo='yes'/>"},
        {'s', "<direction><sound dalsegno='a'/></direction>"},
        {'c', "<sound tocoda='a'/>"},
        {'f', "<sound fine='yes'/>"}};
    const std::pair<const char*, const char*> cases[] = {
        {"AB:C", "ABABC"},       {"A|BC:D:", "ABCBCDD"}, {"|A1B:2C|D1E:2F", "ABACDEDF"},
        {"A1B:2C:3D", "ABACAD"}, {"ABfC0", "ABCAB"},     {"A$BcCs@D", "ABCBD"},
        {"|A1B:2C0", "ABACAC"},  {"A:Bf:C0", "AABBCAB"}, {"A$B1C:2DfEs", "ABCABDEBD"},
    };
    const QString end = "<barline><ending type='stop'/></barline></measure>";
    for (const auto& [signs, wanted] : cases) {
        QString bars, before;
        for (const char c : std::string(signs)) {
            if (elements.contains(c)) {
                (std::strchr("|123$@", c) ? before : bars) += elements.at(c);
                continue;
            }
            bars += bars.isEmpty() ? QString() : end;
            bars += QString(
                        "<measure number='%1'>%2<note><pitch><step>%1</step><octave>4</octave>"
                        "</pitch><duration>1</duration></note>")
                        .arg(QChar(c), std::exchange(before, {}));
        }
        imported::Score score = musicxml::read(
            ("<score-partwise><part>" + bars + end + "</part></score-partwise>").toUtf8());
        std::string played;
        for (const MelodyEntry& entry : imported::entriesOf(score, '.'))
            played += "C D EF G A B"[entry.noteNumber() % 12];
        EXPECT_EQ(played, wanted) << signs;
    }
}
