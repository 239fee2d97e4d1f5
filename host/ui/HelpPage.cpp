#include "HelpPage.h"

#include "MarkdownStyle.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtQuick/QQuickTextDocument>

namespace {

/// The anchor that web sites make of a title: lower case, no punctuation, a hyphen for each space.
QString anchorOf(const QString &title)
{
    static const QRegularExpression others(QStringLiteral("[^\\w\\- ]"),
                                           QRegularExpression::UseUnicodePropertiesOption);
    QString anchor = title.toLower();
    anchor.remove(others);
    return anchor.replace(QLatin1Char(' '), QLatin1Char('-'));
}

} // namespace

bool HelpPage::show(const QString &topic, const QString &language, QQuickTextDocument *target,
                    QObject *theme, qreal width)
{
    if (target == nullptr || theme == nullptr)
        return false;
    QFile file(QStringLiteral(":/help/%1.%2.md").arg(topic, language));
    if (!file.exists())
        file.setFileName(QStringLiteral(":/help/%1.md").arg(topic));
    const bool opened = file.open(QIODevice::ReadOnly);
    found.clear(); // Their positions no longer hold.
    Q_EMIT laidOut();
    document = target->textDocument();
    document->setUndoRedoEnabled(false);
    // One edit, or the view would lay out the page after each paragraph. The style is a
    // second one, since the tables exist only after this.
    document->clear();
    QTextCursor whole(document);
    whole.beginEditBlock();
    document->setMarkdown(opened ? QString::fromUtf8(file.readAll())
                                 : tr("There is no help on this topic."),
                          QTextDocument::MarkdownDialectGitHub);
    whole.endEditBlock();
    MarkdownStyle(*theme, QFileInfo(file).path(), width).apply(*document);
    collectHeadings();
    Q_EMIT laidOut();
    return opened;
}

void HelpPage::collectHeadings()
{
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level == 0)
            continue;
        found += QVariantMap{{QStringLiteral("title"), block.text()},
                             {QStringLiteral("level"), level},
                             {QStringLiteral("anchor"), anchorOf(block.text())},
                             {QStringLiteral("position"), block.position()}};
    }
}

int HelpPage::positionOf(const QString &anchor) const
{
    for (const QVariant &heading : found) {
        const QVariantMap map = heading.toMap();
        if (map.value(QStringLiteral("anchor")) == anchor)
            return map.value(QStringLiteral("position")).toInt();
    }
    return -1;
}

QVariantMap HelpPage::find(const QString &text, int position, bool backward) const
{
    if (document == nullptr || text.isEmpty())
        return {};
    const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    QTextCursor cursor = document->find(text, position, flags);
    if (cursor.isNull())
        cursor = document->find(text, backward ? document->characterCount() - 1 : 0, flags);
    if (cursor.isNull())
        return {};
    return {{QStringLiteral("start"), cursor.selectionStart()},
            {QStringLiteral("end"), cursor.selectionEnd()}};
}
