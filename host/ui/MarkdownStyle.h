#pragma once

#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QTextFormat>

#include <array>

class QObject;
class QTextBlock;
class QTextDocument;
class QTextTable;

/// Gives a document read from Markdown the fonts and colours of the host's windows.
class MarkdownStyle
{
public:
    /// `theme` is the object that documents know as `ux`. Pictures are loaded from `folder`
    /// and shrunk to a width of `pictureWidth` pixels.
    MarkdownStyle(const QObject &theme, QString folder, qreal pictureWidth);

    void apply(QTextDocument &document) const;

private:
    void styleBlock(const QTextBlock &block) const;
    void styleFragments(const QTextBlock &block) const;
    QTextImageFormat fitted(QTextImageFormat picture) const;
    void frameCode(QTextDocument &document) const;
    int headingSize(int level) const;
    void styleTable(QTextTable &table) const;

    QString folder;
    qreal pictureWidth;
    QFont textFont;
    QString codeFamily;
    QColor textColor;
    QColor strongColor;
    QColor linkColor;
    QColor lineColor;
    QColor codeBackground;
    std::array<int, 3> headingSizes;
    int codeSize;
    qreal spacing;
};
