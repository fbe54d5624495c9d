#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickTextDocument>
#include <QtQml/qqmlregistration.h>

/// Gives all lines of a text editor's document one height, which the editor itself has no property for. For a
/// document that the user does not edit: what is done here is among what can be undone.
class LineHeight : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument *document READ document WRITE setDocument NOTIFY changed REQUIRED)
    Q_PROPERTY(qreal pixels READ pixels WRITE setPixels NOTIFY changed REQUIRED)

public:
    explicit LineHeight(QObject *parent = nullptr);

    QQuickTextDocument *document() const { return m_document; }
    void setDocument(QQuickTextDocument *document);
    qreal pixels() const { return m_pixels; }
    void setPixels(qreal pixels);

Q_SIGNALS:
    void changed();

private:
    void apply();

    QPointer<QQuickTextDocument> m_document;
    qreal m_pixels = 0;
};
