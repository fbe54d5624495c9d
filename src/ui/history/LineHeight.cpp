#include "ui/history/LineHeight.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

LineHeight::LineHeight(QObject *parent)
    : QObject(parent)
{
}

void LineHeight::setDocument(QQuickTextDocument *document)
{
    if (document == m_document)
        return;
    if (m_document)
        disconnect(m_document->textDocument(), nullptr, this, nullptr);
    m_document = document;
    if (m_document)
        connect(m_document->textDocument(), &QTextDocument::contentsChanged, this, &LineHeight::apply);
    apply();
    Q_EMIT changed();
}

void LineHeight::setPixels(qreal pixels)
{
    if (pixels == m_pixels)
        return;
    m_pixels = pixels;
    apply();
    Q_EMIT changed();
}

void LineHeight::apply()
{
    QTextDocument *const text = m_document ? m_document->textDocument() : nullptr;
    // A new text has new blocks, the last one too.
    if (!text || m_pixels <= 0 || text->lastBlock().blockFormat().lineHeight() == m_pixels)
        return;
    QTextBlockFormat format;
    format.setLineHeight(m_pixels, QTextBlockFormat::FixedHeight);
    QTextCursor cursor(text);
    cursor.select(QTextCursor::Document);
    cursor.mergeBlockFormat(format);
}
