#include "MarkdownStyle.h"

#include <QtCore/QObject>
#include <QtCore/QVariant>
#include <QtGui/QFontDatabase>
#include <QtGui/QImageReader>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QTextFrame>
#include <QtGui/QTextTable>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

QColor colorOf(const QObject &theme, const char *name)
{
    return theme.property(name).value<QColor>();
}

bool isCode(const QTextBlock &block)
{
    return block.blockFormat().hasProperty(QTextFormat::BlockCodeLanguage);
}

bool hasPicture(const QTextBlock &block)
{
    return block.text().contains(QChar(QChar::ObjectReplacementCharacter));
}

QTextCursor wholeOf(const QTextBlock &block)
{
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    return cursor;
}

/// Sets the height of an empty line that only separates a frame from its surroundings.
void setHeight(const QTextBlock &block, qreal height)
{
    if (!block.isValid() || !block.text().isEmpty())
        return;
    QTextBlockFormat format;
    format.setLineHeight(height, QTextBlockFormat::FixedHeight);
    QTextCursor(block).setBlockFormat(format);
}

/// The sizes that the Markdown reader sets would win over pixels.
void setPixelSize(QTextCharFormat &format, int size)
{
    format.clearProperty(QTextFormat::FontSizeAdjustment);
    format.clearProperty(QTextFormat::FontPointSize);
    format.setProperty(QTextFormat::FontPixelSize, size);
}

QTextCursor cellCursor(const QTextTable &table, int row, int column)
{
    const QTextTableCell cell = table.cellAt(row, column);
    QTextCursor cursor = cell.firstCursorPosition();
    cursor.setPosition(cell.lastPosition(), QTextCursor::KeepAnchor);
    return cursor;
}

} // namespace

MarkdownStyle::MarkdownStyle(const QObject &theme, QString folder, qreal pictureWidth)
    : folder(std::move(folder))
    , pictureWidth(pictureWidth)
    , codeFamily(QFontDatabase::systemFont(QFontDatabase::FixedFont).family())
    , textColor(colorOf(theme, "textLightColor").darker(112))
    , strongColor(colorOf(theme, "textLightColor"))
    , linkColor(colorOf(theme, "accentColor"))
    , lineColor(colorOf(theme, "itemBackgroundColor2"))
    , codeBackground(colorOf(theme, "itemBackgroundColor3"))
    , headingSizes{theme.property("h1FontSize").toInt(), theme.property("h2FontSize").toInt(),
                   theme.property("h3FontSize").toInt()}
    , codeSize(theme.property("h4FontSize").toInt())
    , spacing(theme.property("spacing").toReal())
{
    textFont.setFamily(theme.property("primaryFontFamily").toString());
    textFont.setPixelSize(theme.property("textFontSize").toInt());
}

void MarkdownStyle::apply(QTextDocument &document) const
{
    document.setDefaultFont(textFont);
    document.setDocumentMargin(0);
    // One edit, or the document would be laid out after each change.
    QTextCursor whole(&document);
    whole.beginEditBlock();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        styleBlock(block);
        styleFragments(block);
    }
    frameCode(document);
    const QList<QTextFrame *> frames = document.rootFrame()->childFrames();
    for (QTextFrame *frame : frames) {
        if (auto *table = qobject_cast<QTextTable *>(frame))
            styleTable(*table);
    }
    whole.endEditBlock();
}

void MarkdownStyle::styleBlock(const QTextBlock &block) const
{
    QTextCursor cursor = wholeOf(block);
    QTextBlockFormat format = block.blockFormat();
    QTextCharFormat characters;
    characters.setForeground(textColor);
    const int level = format.headingLevel();
    if (level > 0) {
        format.setTopMargin(level == 1 ? 0 : (level == 2 ? 4 : 3) * spacing);
        format.setBottomMargin(spacing);
        characters.setForeground(strongColor);
    } else if (isCode(block)) {
        format.setTopMargin(0);
        format.setBottomMargin(0);
        format.setLeftMargin(0);
        format.setIndent(0);
        format.setLineHeight(120, QTextBlockFormat::ProportionalHeight);
        QTextCharFormat empty; // Decides the height of a line without text.
        setPixelSize(empty, codeSize);
        empty.setFontFamily(codeFamily);
        cursor.setBlockCharFormat(empty);
    } else if (cursor.currentTable() == nullptr) {
        format.setTopMargin(0);
        format.setBottomMargin(block.textList() != nullptr ? spacing / 2 : 1.25 * spacing);
        if (!hasPicture(block))
            format.setLineHeight(130, QTextBlockFormat::ProportionalHeight);
    } else {
        format.setTopMargin(0);
        format.setBottomMargin(0);
    }
    cursor.setBlockFormat(format);
    cursor.mergeCharFormat(characters);
}

void MarkdownStyle::styleFragments(const QTextBlock &block) const
{
    const int level = block.blockFormat().headingLevel();
    // Collected first, since changing a format may merge fragments.
    std::vector<std::pair<QTextCursor, QTextCharFormat>> changes;
    for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment) {
        const QTextFragment text = fragment.fragment();
        QTextCharFormat format = text.charFormat();
        if (format.isImageFormat()) {
            format = fitted(format.toImageFormat());
        } else if (format.isAnchor()) {
            format.setForeground(linkColor);
            format.setFontUnderline(false);
        } else if (format.hasProperty(QTextFormat::FontFamily)) { // Code, and nothing else.
            format.setFontFamily(codeFamily);
            format.setForeground(strongColor);
            setPixelSize(format, codeSize);
        } else if (level == 0) {
            continue;
        }
        if (level > 0) {
            setPixelSize(format, headingSize(level));
        }
        QTextCursor cursor(block);
        cursor.setPosition(text.position());
        cursor.setPosition(text.position() + text.length(), QTextCursor::KeepAnchor);
        changes.emplace_back(cursor, format);
    }
    for (auto &[cursor, format] : changes)
        cursor.setCharFormat(format);
}

/// Puts each run of code lines into a frame with a background: Qt Quick doesn't draw a block's own.
void MarkdownStyle::frameCode(QTextDocument &document) const
{
    QTextFrameFormat format;
    format.setBackground(codeBackground);
    format.setBorder(1);
    format.setBorderBrush(codeBackground);
    format.setPadding(1.5 * spacing);
    for (QTextBlock first = document.begin(); first.isValid(); first = first.next()) {
        if (!isCode(first))
            continue;
        QTextBlock last = first;
        while (isCode(last.next()))
            last = last.next();
        // The last line read is empty and separates the frame from the text below.
        const QTextBlock end = last.text().isEmpty() && last != first ? last.previous() : last;
        QTextCursor code(first);
        code.setPosition(end.position() + end.length() - 1, QTextCursor::KeepAnchor);
        const QTextFrame *frame = code.insertFrame(format);
        setHeight(document.findBlock(frame->firstPosition() - 1), 1);
        first = document.findBlock(frame->lastPosition() + 1);
        setHeight(first, 1);
        if (isCode(first.next())) {
            first = first.next();
            setHeight(first, 1.5 * spacing);
        }
    }
}

int MarkdownStyle::headingSize(int level) const
{
    return headingSizes[static_cast<std::size_t>(std::clamp(level, 1, 3)) - 1];
}

/// Sets width and height, so that the layout doesn't change once the picture is loaded.
QTextImageFormat MarkdownStyle::fitted(QTextImageFormat picture) const
{
    const QSizeF size = QImageReader(folder + QLatin1Char('/') + picture.name()).size();
    if (size.isEmpty())
        return picture;
    picture.setWidth(std::min(size.width(), pictureWidth));
    picture.setHeight(size.height() * picture.width() / size.width());
    return picture;
}

void MarkdownStyle::styleTable(QTextTable &table) const
{
    QTextTableFormat format = table.format();
    format.setBorder(1);
    format.setBorderBrush(lineColor);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderCollapse(true);
    format.setCellSpacing(0);
    format.setCellPadding(0.75 * spacing);
    format.setTopMargin(spacing / 2);
    format.setBottomMargin(2 * spacing);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    table.setFormat(format);
    for (int column = 0; column < table.columns(); ++column) {
        QTextCharFormat header;
        header.setForeground(strongColor);
        header.setFontWeight(QFont::Bold);
        cellCursor(table, 0, column).mergeCharFormat(header);
    }
    // Names in the first column must not break.
    QTextBlockFormat whole;
    whole.setNonBreakableLines(true);
    for (int row = 0; row < table.rows(); ++row)
        cellCursor(table, row, 0).mergeBlockFormat(whole);
}
