#include "platform/linux/media_command.h"

#include <QRegularExpression>

std::optional<MediaCommand> MediaCommand::parse(const QString& text) {
    static const QRegularExpression kOpen(
        QStringLiteral(R"re(^\s*OPEN\s+"?(.+?)"?\s+ALIAS\s+(\S+)\s*$)re"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression kOther(QStringLiteral(R"re(^\s*(PLAY|CLOSE)\s+(\S+)\s*$)re"),
                                           QRegularExpression::CaseInsensitiveOption);
    if (const auto open = kOpen.match(text); open.hasMatch())
        return MediaCommand{Verb::Open, open.captured(2), open.captured(1)};
    const auto other = kOther.match(text);
    if (!other.hasMatch())
        return std::nullopt;
    const bool play = other.captured(1).compare(QLatin1String("PLAY"), Qt::CaseInsensitive) == 0;
    return MediaCommand{play ? Verb::Play : Verb::Close, other.captured(2), {}};
}
