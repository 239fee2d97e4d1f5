#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QVariantList>

class QQuickTextDocument;
class QTextDocument;

/// One page of the help: Markdown, laid out in the colours of the theme into the text item of the
/// help window. Positions count characters of the laid-out text. GUI thread.
class HelpPage final : public QObject
{
    Q_OBJECT
    /// In the page's order: {title, level, anchor, position}; the anchor is as web sites make it.
    Q_PROPERTY(QVariantList headings READ headings NOTIFY laidOut)

public:
    /// Lays out the page about `topic`, in English if there is none in `language`. `theme` is the
    /// object that documents know as `ux`; `width` limits pictures, in pixels. Returns
    /// false and shows a note if there is no such page.
    Q_INVOKABLE bool show(const QString &topic, const QString &language, QQuickTextDocument *target,
                          QObject *theme, qreal width);

    QVariantList headings() const { return found; }

    /// The position of the heading with this anchor; -1 if there is none.
    Q_INVOKABLE int positionOf(const QString &anchor) const;

    /// The next occurrence of `text` from `position` on, ignoring case and wrapping around:
    /// {start, end}, empty if there is none.
    Q_INVOKABLE QVariantMap find(const QString &text, int position, bool backward) const;

Q_SIGNALS:
    void laidOut();

private:
    void collectHeadings();

    QPointer<QTextDocument> document;
    QVariantList found;
};
