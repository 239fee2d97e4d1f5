#include "DocumentMessage.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QUrl>

QString DocumentMessage::placed() const
{
    return QStringLiteral("%1:%2: ").arg(QUrl::fromLocalFile(file).toString()).arg(line) + text;
}

std::optional<DocumentMessage> DocumentMessage::fromWarning(const QString &warning)
{
    // The place is a URL with a line and perhaps a column behind it.
    static const QRegularExpression form(QStringLiteral("^(file:.*?):(\\d+)(?::\\d+)?: (.*)$"),
                                         QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(warning);
    if (!match.hasMatch())
        return std::nullopt;
    return DocumentMessage{QUrl(match.captured(1)).toLocalFile(), match.captured(2).toInt(),
                           match.captured(3), false};
}

std::optional<DocumentMessage> DocumentMessage::fromLog(const QMessageLogContext &context,
                                                        const QString &text)
{
    // Scripts log in categories of their own; the engine doesn't, and puts the place into the text.
    if (qstrcmp(context.category, "default") == 0)
        return fromWarning(text);
    const QUrl source(QString::fromUtf8(context.file));
    if (!source.isLocalFile())
        return std::nullopt;
    return DocumentMessage{source.toLocalFile(), context.line, text, true};
}
