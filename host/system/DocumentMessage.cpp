#include "DocumentMessage.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QUrl>

namespace {

constexpr int LongestText = 4096; ///< Characters of one message of a script.

} // namespace

QString DocumentMessage::placed() const
{
    return QStringLiteral("%1:%2: ").arg(QUrl::fromLocalFile(file).toString()).arg(line) + text;
}

std::optional<DocumentMessage> DocumentMessage::fromWarning(const QString &warning)
{
    // A URL, a line and perhaps a column come first.
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
    // Messages of scripts have file and line in their context. Warnings of the engine have them in
    // the text and come without a category, but so do console.assert, trace and count.
    if (qstrcmp(context.category, "default") == 0) {
        if (auto warning = fromWarning(text))
            return warning;
    }
    const QUrl source(QString::fromUtf8(context.file));
    if (!source.isLocalFile() || context.line < 1)
        return std::nullopt;
    const QString shown =
        text.size() > LongestText ? text.left(LongestText) + QStringLiteral("...") : text;
    return DocumentMessage{source.toLocalFile(), context.line, shown, true};
}
