#include "composer/exchange/musicxml_reader.h"

#include "composer/exchange/musicxml_bar_reader.h"
#include "composer/exchange/musicxml_names.h"
#include "composer/exchange/play_order.h"
#include "composer/exchange/xml_cursor.h"
#include "composer/exchange/zip_archive.h"
#include "core/instruments.h"
#include "platform/user_text.h"

#include <algorithm>

namespace musicxml {
namespace {

/// The score's file in an archive: the first that its container names, or the first score at all.
QByteArray scoreOf(const std::vector<zip_archive::File>& files) {
    QString wanted;
    for (const zip_archive::File& file : files) {
        if (file.name != QString::fromUtf8(kContainer))
            continue;
        XmlCursor xml(file.bytes);
        while (wanted.isEmpty() && xml.enterNext()) {
            while (xml.enterNext()) {
                while (xml.enterNext()) {
                    if (wanted.isEmpty() && xml.name() == u"rootfile")
                        wanted = xml.attribute("full-path");
                    xml.leave();
                }
            }
        }
    }
    const auto found =
        std::find_if(files.begin(), files.end(), [&wanted](const zip_archive::File& file) {
            return wanted.isEmpty() ? file.name != QString::fromUtf8(kContainer)
                                    : file.name == wanted;
        });
    return found == files.end() ? QByteArray() : found->bytes;
}

class ScoreReader {
public:
    explicit ScoreReader(const QByteArray& bytes) : xml_(bytes) {}

    imported::Score read() {
        if (!xml_.enterNext() || !isScore()) {
            if (score_.faults.isEmpty())
                score_.faults += UserText::tr("non è un file MusicXML valido");
            return score_;
        }
        while (xml_.enterNext()) {
            if (xml_.name() == u"part-list")
                readPartList();
            else if (xml_.name() == u"part")
                readPart();
            else
                xml_.leave();
        }
        if (xml_.failed())
            score_.faults = {UserText::tr("non è un file MusicXML valido")};
        else if (parts_ > 1)
            score_.faults.prepend(UserText::tr("ha %1 parti").arg(parts_));
        return score_;
    }

private:
    bool isScore() {
        if (xml_.name() == QLatin1String("score-timewise"))
            score_.faults += UserText::tr("è un MusicXML ordinato per battute, non per parti");
        return xml_.name() == QString::fromUtf8(kRoot);
    }

    void readPartList() {
        while (xml_.enterNext()) {
            if (xml_.name() != u"score-part") {
                xml_.leave();
                continue;
            }
            while (xml_.enterNext()) {
                if (xml_.name() == u"midi-instrument")
                    readInstrument();
                else
                    xml_.leave();
            }
        }
    }

    void readInstrument() {
        while (xml_.enterNext()) {
            if (xml_.name() != u"midi-program") {
                xml_.leave();
                continue;
            }
            const int program = xml_.takeText().toInt() - 1;
            if (!score_.program && program >= 0 && program < instruments::kCount)
                score_.program = program;
        }
    }

    /// Further parts are only counted.
    void readPart() {
        ++parts_;
        BarReader bars(xml_, score_);
        while (xml_.enterNext()) {
            const bool isBar = parts_ == 1 && xml_.name() == u"measure";
            if (isBar && score_.bars.size() < imported::kMostBarsPlayed)
                bars.readBar();
            else
                xml_.leave();
        }
        if (score_.bars.size() == imported::kMostBarsPlayed)
            score_.faults = {UserText::tr("ha troppe battute")};
    }

    XmlCursor xml_;
    imported::Score score_;
    int parts_ = 0;
};

imported::Score refused(const QString& fault) {
    imported::Score score;
    score.faults += fault;
    return score;
}

}  // namespace

imported::Score read(const QByteArray& bytes) {
    if (bytes.size() > kLargestFile)
        return refused(UserText::tr("è troppo grande"));
    if (!zip_archive::isArchive(bytes))
        return ScoreReader(bytes).read();
    const auto files = zip_archive::read(
        bytes, {QStringLiteral(".xml"), QStringLiteral(".musicxml")}, kLargestFile);
    if (!files)
        return refused(UserText::tr("l'archivio è danneggiato o troppo grande"));
    return ScoreReader(scoreOf(*files)).read();
}

}  // namespace musicxml
