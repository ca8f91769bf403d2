#include "command/command_line.h"

#include "core/instruments.h"
#include "platform/user_text.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

using Action = CommandLine::Action;

/// What may stand beside an action.
enum Option : unsigned { Output = 1, Instrument = 2, Bars = 4, PaperSize = 8, System = 16 };

struct ActionName {
    const char* name;
    Action action;
    int leastFiles;
    int mostFiles;
    unsigned options = 0;

    bool takes(Option option) const { return (options & option) != 0; }
};
constexpr int kAnyNumber = 1'000'000;
constexpr auto kActions = std::to_array<ActionName>({
    {"check", Action::Check, 1, kAnyNumber},
    {"render", Action::Render, 1, 1, Output | Instrument},
    {"export-midi", Action::ExportMidi, 1, 1, Output | Instrument},
    {"export-pdf", Action::ExportPdf, 1, 1, Output | Bars | PaperSize},
    {"export-system", Action::ExportSystem, 1, 1, Output | Bars | PaperSize | System},
    {"export-musicxml", Action::ExportMusicXml, 1, 1, Output | Instrument | Bars},
    {"export-braille", Action::ExportBraille, 1, 1, Output | Bars},
    {"import", Action::Import, 1, 1, Output},
    {"list-devices", Action::ListDevices, 0, 0},
});

const QString kHelp = QStringLiteral("help");
const QString kVersion = QStringLiteral("version");
const QString kOutput = QStringLiteral("output");
const QString kInstrument = QStringLiteral("instrument");
const QString kMetre = QStringLiteral("metre");
const QString kKey = QStringLiteral("key");
const QString kPaper = QStringLiteral("paper");
const QString kSystem = QStringLiteral("system");

/// Options that the windows' toolkit takes for itself, with one dash or two.
struct ToolkitOption {
    const char* name;
    bool hasValue;
};
constexpr std::array<ToolkitOption, 19> kToolkitOptions{{{"display", true},
                                                         {"dograb", false},
                                                         {"geometry", true},
                                                         {"icon", true},
                                                         {"name", true},
                                                         {"nograb", false},
                                                         {"platform", true},
                                                         {"platformpluginpath", true},
                                                         {"platformtheme", true},
                                                         {"plugin", true},
                                                         {"qwindowgeometry", true},
                                                         {"qwindowicon", true},
                                                         {"qwindowtitle", true},
                                                         {"reverse", false},
                                                         {"session", true},
                                                         {"style", true},
                                                         {"stylesheet", true},
                                                         {"sync", false},
                                                         {"title", true}}};

const ToolkitOption* toolkitOption(const QString& argument) {
    const QString name =
        argument.mid(argument.startsWith(QLatin1String("--")) ? 2 : 1).section(u'=', 0, 0);
    const auto* const found =
        std::find_if(kToolkitOptions.begin(), kToolkitOptions.end(),
                     [&name](const ToolkitOption& o) { return name == QString::fromUtf8(o.name); });
    return found == kToolkitOptions.end() ? nullptr : found;
}

CommandLine misused(const QString& fault) {
    CommandLine line;
    line.fault = fault;
    return line;
}

void addOptions(QCommandLineParser& parser) {
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("h"), kHelp}));
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("v"), kVersion}));
    for (const ActionName& action : kActions)
        parser.addOption(QCommandLineOption(QString::fromUtf8(action.name)));
    parser.addOption({{QStringLiteral("o"), kOutput}, {}, QStringLiteral("file")});
    parser.addOption({kInstrument, {}, QStringLiteral("n")});
    parser.addOption({kMetre, {}, QStringLiteral("n/n")});
    parser.addOption({kKey, {}, QStringLiteral("n")});
    parser.addOption({kPaper, {}, QStringLiteral("name")});
    parser.addOption({kSystem, {}, QStringLiteral("n")});
}

QString syntaxFault(const QCommandLineParser& parser, const QStringList& arguments) {
    const QStringList unknown = parser.unknownOptionNames();
    if (!unknown.isEmpty()) {
        const QString& name = unknown.front();
        return UserText::tr("opzione sconosciuta: %1%2")
            .arg(name.size() > 1 ? QStringLiteral("--") : QStringLiteral("-"), name);
    }
    if (arguments.back().startsWith(u'-'))
        return UserText::tr("manca il valore dopo %1").arg(arguments.back());
    return UserText::tr("un'opzione ha un valore che non prende");
}

/// What is wrong with the files and options given beside an action; empty if nothing is.
QString contentFault(const QCommandLineParser& parser, const ActionName& action) {
    const qsizetype files = parser.positionalArguments().size();
    const QString name = QStringLiteral("--") + QString::fromUtf8(action.name);
    if (files < action.leastFiles)
        return UserText::tr("%1: manca il file della melodia").arg(name);
    if (files > action.mostFiles)
        return UserText::tr("%1: troppi file").arg(name);
    const bool writes = action.takes(Output);
    if (writes && parser.value(kOutput).isEmpty())
        return UserText::tr("%1: manca il file da scrivere (-o)").arg(name);
    if (!writes && (parser.isSet(kOutput) || parser.isSet(kInstrument)))
        return UserText::tr("%1: -o e --instrument non servono").arg(name);
    if (!action.takes(Instrument) && parser.isSet(kInstrument))
        return UserText::tr("%1: --instrument non serve").arg(name);
    if (!action.takes(Bars) && (parser.isSet(kMetre) || parser.isSet(kKey)))
        return UserText::tr("%1: --metre e --key non servono").arg(name);
    if (!action.takes(PaperSize) && parser.isSet(kPaper))
        return UserText::tr("%1: --paper non serve").arg(name);
    if (!action.takes(System) && parser.isSet(kSystem))
        return UserText::tr("%1: --system non serve").arg(name);
    return {};
}

std::optional<score::Metre> metreOf(const QString& text) {
    for (const score::Metre& metre : score::kMetres) {
        if (text == QStringLiteral("%1/%2").arg(metre.beats).arg(metre.beatValue))
            return metre;
    }
    return std::nullopt;
}

/// "-3" is the major key with three flats, "2m" the minor key with two sharps.
std::optional<score::Key> keyOf(QString text) {
    score::Key key;
    key.minor = text.endsWith(u'm');
    if (key.minor)
        text.chop(1);
    bool isNumber = false;
    key.fifths = text.toInt(&isNumber);
    const bool isKey = isNumber && std::abs(key.fifths) <= score::Key::kMostSigns;
    return isKey ? std::optional(key) : std::nullopt;
}

/// Reads metre and key; answers what is wrong with them.
QString readNotation(const QCommandLineParser& parser, Action action, score::Notation& notation) {
    const bool hasNoBars =
        action != Action::ExportMusicXml && parser.value(kMetre) == QLatin1String("none");
    if (hasNoBars) {
        notation.metre.reset();
    } else if (parser.isSet(kMetre)) {
        notation.metre = metreOf(parser.value(kMetre));
        if (!notation.metre)
            return UserText::tr("--metre: serve 2/4, 3/4, 4/4 o 6/8, o none (non per MusicXML)");
    }
    if (parser.isSet(kKey)) {
        const std::optional<score::Key> key = keyOf(parser.value(kKey));
        if (!key)
            return UserText::tr("--key: serve un numero da -7 a 7, con \"m\" per il minore");
        notation.key = *key;
    }
    return {};
}

/// Reads what a sheet is printed on, and which of its systems is wanted; answers what is wrong.
QString readSheet(const QCommandLineParser& parser, CommandLine& line) {
    if (parser.isSet(kPaper)) {
        const QString paper = parser.value(kPaper).toLower();
        if (paper != QLatin1String("a4") && paper != QLatin1String("letter"))
            return UserText::tr("--paper: serve a4 o letter");
        line.paper = paper == QLatin1String("a4") ? Paper::A4 : Paper::Letter;
    }
    if (parser.isSet(kSystem)) {
        bool isNumber = false;
        line.system = parser.value(kSystem).toInt(&isNumber);
        if (!isNumber || line.system < 1)
            return UserText::tr("--system: serve un numero da 1 in su");
    }
    return {};
}

}  // namespace

bool CommandLine::writes(const char* suffix) const {
    return QFileInfo(output).suffix().compare(QString::fromUtf8(suffix), Qt::CaseInsensitive) == 0;
}

bool CommandLine::isCommand(const QStringList& arguments) {
    int files = 0;
    bool onlyFiles = false;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (onlyFiles || !argument.startsWith(u'-')) {
            ++files;
            continue;
        }
        onlyFiles = argument == QLatin1String("--");
        const ToolkitOption* const option = toolkitOption(argument);
        if (!onlyFiles && !option)
            return true;
        if (option && option->hasValue && !argument.contains(u'='))
            ++i;
    }
    return files > 1;
}

CommandLine CommandLine::parse(const QStringList& arguments) {
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(arguments))
        return misused(syntaxFault(parser, arguments));
    CommandLine line;
    if (parser.isSet(kHelp) || parser.isSet(kVersion)) {
        line.action = parser.isSet(kHelp) ? Action::Help : Action::Version;
        return line;
    }
    const auto isSet = [&parser](const ActionName& entry) {
        return parser.isSet(QString::fromUtf8(entry.name));
    };
    if (std::count_if(kActions.begin(), kActions.end(), isSet) != 1)
        return misused(UserText::tr("serve un comando, e uno solo"));
    const ActionName& action = *std::find_if(kActions.begin(), kActions.end(), isSet);
    if (const QString fault = contentFault(parser, action); !fault.isEmpty())
        return misused(fault);
    if (parser.isSet(kInstrument)) {
        bool isNumber = false;
        line.instrument = parser.value(kInstrument).toInt(&isNumber);
        if (!isNumber || *line.instrument < 0 || *line.instrument >= instruments::kCount)
            return misused(UserText::tr("--instrument: serve un numero da 0 a 127"));
    }
    if (const QString fault = readNotation(parser, action.action, line.notation); !fault.isEmpty())
        return misused(fault);
    if (const QString fault = readSheet(parser, line); !fault.isEmpty())
        return misused(fault);
    line.action = action.action;
    line.files = parser.positionalArguments();
    line.output = parser.value(kOutput);
    if (line.action == Action::ExportSystem && !line.writes("svg") && !line.writes("png"))
        return misused(UserText::tr("--export-system: il nome del file finisce in .svg o .png"));
    return line;
}
