#include "vhtmlitemdelegate.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QPainter>
#include <QTextCursor>
#include <QTextDocument>
#include <QtMath>

#include <memory>

namespace {
const int s_documentMargin = 2;

void setUpDocument(QTextDocument* document, const QString& html, const QFont& font)
{
    document->setDefaultTextOption(QTextOption());
    document->setHtml(html);
    document->setDefaultFont(font);
    document->setDocumentMargin(s_documentMargin);
}

// Removes everything from position @p keep to the end of the document.
void truncate(QTextDocument* document, int keep)
{
    QTextCursor cursor(document);
    cursor.movePosition(QTextCursor::End);
    cursor.setPosition(keep, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

// Cuts the document to the longest beginning that is at most @p limit wide. Bisection rather than
// deleting one character at a time: a long cell would otherwise be laid out once per character.
void cutToWidth(QTextDocument* document, qreal limit)
{
    int fits = 0;
    int tooWide = document->characterCount() - 1;
    while (tooWide - fits > 1) {
        const int middle = fits + (tooWide - fits) / 2;
        const std::unique_ptr<QTextDocument> probe(document->clone());
        truncate(probe.get(), middle);
        if (probe->size().width() <= limit) {
            fits = middle;
        } else {
            tooWide = middle;
            // Later probes then copy and lay out only what can still be kept.
            truncate(document, tooWide);
        }
    }
    truncate(document, fits);
}
} // namespace

VHtmlItemDelegate::VHtmlItemDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{
}

void VHtmlItemDelegate::layoutCellDocument(
    QTextDocument* document, const QString& html, const QFont& font, int width)
{
    setUpDocument(document, html, font);
    // A cell shows one line: the document is as wide as its text. QTextDocument::adjustSize() would
    // rewrap the text into a box of several lines, which pushes its end below the row.
    document->setTextWidth(-1);
    if (document->isEmpty() || document->size().width() <= width)
        return;
    const QString ellipsis = QStringLiteral("...");
    cutToWidth(document, width - QFontMetrics(font).horizontalAdvance(ellipsis));
    QTextCursor cursor(document);
    cursor.movePosition(QTextCursor::End);
    // In the default format, so that the ellipsis is as wide as measured (and never part of a link).
    cursor.insertText(ellipsis, QTextCharFormat());
}

QString VHtmlItemDelegate::anchorAt(QString html, const QPoint& point) const
{
    QTextDocument document;
    // Laid out as a cell lays it out, so that a point over a painted link finds that link.
    setUpDocument(&document, html, document.defaultFont());
    return document.documentLayout()->anchorAt(point);
}

void VHtmlItemDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem opt = option;
    initStyleOption(&opt, index);
    if (opt.text.isEmpty()) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyle* style = opt.widget ? opt.widget->style() : QApplication::style();

    QTextDocument document;
    layoutCellDocument(&document, opt.text, opt.font, opt.rect.width());

    opt.text.clear();
    style->drawControl(QStyle::CE_ItemViewItem, &opt, painter, opt.widget);

    const QRect textRect = style->subElementRect(QStyle::SE_ItemViewItemText, &opt, opt.widget);
    // A document larger than the text rectangle starts at its top left, so that its first line shows.
    const QSize size = document.size().toSize().boundedTo(textRect.size());
    const QRect documentRect = QStyle::alignedRect(opt.direction, opt.displayAlignment, size, textRect);
    painter->save();
    painter->translate(documentRect.topLeft());
    // Clipped to the cell: a document taller or wider than the cell never paints over its neighbours.
    document.drawContents(painter, QRectF(opt.rect.translated(-documentRect.topLeft())));
    painter->restore();
}

QSize VHtmlItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem opt = option;
    initStyleOption(&opt, index);
    QTextDocument document;
    setUpDocument(&document, opt.text, opt.font);
    document.setTextWidth(opt.rect.width());
    return QSize(QStyledItemDelegate::sizeHint(option, index).width(), qCeil(document.size().height()));
}
