#include "composer/any_melody.h"
#include "composer/exchange/melody_builder.h"
#include "composer/exchange/musicxml_reader.h"
#include "composer/exchange/musicxml_writer.h"
#include "composer/exchange/play_order.h"
#include "composer/exchange/score_heading.h"
#include "composer/exchange/zip_archive.h"

#include <gtest/gtest.h>

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
    std::mt19937 random(5);
    const QByteArrayList parts{"<",
                               ">",
                               "\"",
                               "<note>",
                               "</note>",
                               "<chord/>",
                               "<grace/>",
                               "-1",
                               "0",
                               "99999999999",
                               "<backup><duration>96</duration></backup>",
                               "<barline><repeat direction='backward' times='9'/></barline>",
                               "<ending number='1,2' type='start'/>",
                               "<sound dacapo='yes'/>",
                               "<!DOCTYPE a [<!ENTITY b 'c'>]>",
                               "&b;",
                               QByteArray(4000, '<')};
    for (int round = 0; round < 800; ++round) {
        std::vector<int> units;
        const score::BarView view = score::barsOf(anyMelody(random, units), anyNotation(random));
        QByteArray bytes = musicxml::write(view, {"a", 60, 0});
        const bool packs = round % 3 == 0;
        const auto damage = [&] {
            const auto at = static_cast<qsizetype>(random() % bytes.size());
            switch (random() % 3) {
                case 0:
                    bytes[at] = static_cast<char>(random());
                    break;
                case 1:
                    bytes.remove(at, static_cast<qsizetype>(random() % 60));
                    break;
                default:
                    bytes.insert(at, parts[static_cast<qsizetype>(random() % parts.size())]);
            }
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
                           "<!DOCTYPE score-partwise SYSTEM '<!--'>" + measure("$" + tag + "/>")};
    for (const QByteArray& noTag : noTags())
        hostile << measure("$" + noTag + tag + "/>");
    for (const QByteArray& bytes : hostile)
        EXPECT_FALSE(musicxml::read(bytes).faults.isEmpty()) << bytes.left(200).toStdString();
}

/// Bars by their letters; before a bar "|" starts a repeat, "1" to "3" an ending and "$" is the
/// segno, "@" the coda; behind it ":" ends a repeat, "0" is da capo, "s" dal segno, "c" to the
/// coda, "f" fine.
TEST(PlayOrder, WritesRepeatsOut) {
    const std::pair<const char*, const char*> cases[] = {
        {"AB:C", "ABABC"},       {"A|BC:D:", "ABCBCDD"}, {"|A1B:2C|D1E:2F", "ABACDEDF"},
        {"A1B:2C:3D", "ABACAD"}, {"ABfC0", "ABCAB"},     {"A$BcCs@D", "ABCBD"},
        {"|A1B:2C0", "ABACAC"},  {"A:Bf:C0", "AABBCAB"}, {"A$B1C:2DfEs", "ABCABDEBD"},
    };
    for (const auto& [signs, wanted] : cases) {
        std::vector<imported::Bar> bars;
        std::uint32_t endings = 0;
        imported::BarSigns before;
        for (const char c : std::string(signs)) {
            imported::BarSigns& last = bars.empty() ? before : bars.back().signs;
            switch (c) {
                case '|':
                    before.startsRepeat = true;
                    endings = 0;
                    break;
                case '$':
                    before.segno = true;
                    break;
                case '@':
                    before.coda = true;
                    endings = 0;
                    break;
                case ':':
                    last.timesRepeated = 2;
                    break;
                case '0':
                    last.daCapo = true;
                    break;
                case 's':
                    last.dalSegno = true;
                    break;
                case 'c':
                    last.toCoda = true;
                    break;
                case 'f':
                    last.fine = true;
                    break;
                case '1':
                case '2':
                case '3':
                    endings = 1U << (c - '0');
                    break;
                default:
                    bars.emplace_back();
                    bars.back().number = QChar(c);
                    bars.back().signs = std::exchange(before, {});
                    bars.back().signs.endings = std::exchange(endings, 0);
            }
        }
        std::string played;
        const auto order = imported::playOrder(bars);
        for (const std::size_t bar : order.value())
            played += bars[bar].number.toStdString();
        EXPECT_EQ(played, wanted) << signs;
    }
}
