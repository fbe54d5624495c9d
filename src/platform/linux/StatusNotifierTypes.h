#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>

/// What org.kde.StatusNotifierItem has in its properties besides plain types.

/// A picture on the wire, (iiay): 32 bits a pixel, alpha, red, green and blue in network byte order, colours
/// not multiplied with alpha.
struct StatusNotifierPixmap {
    static StatusNotifierPixmap of(const QImage &image);

    int width = 0;
    int height = 0;
    QByteArray pixels;
};
using StatusNotifierPixmaps = QList<StatusNotifierPixmap>;

/// (sa(iiay)ss): an icon by name or as pictures, a title, and a text.
struct StatusNotifierToolTip {
    QString iconName;
    StatusNotifierPixmaps pixmaps;
    QString title;
    QString text;
};

Q_DECLARE_METATYPE(StatusNotifierPixmap)
Q_DECLARE_METATYPE(StatusNotifierToolTip)

QDBusArgument &operator<<(QDBusArgument &argument, const StatusNotifierPixmap &pixmap);
const QDBusArgument &operator>>(const QDBusArgument &argument, StatusNotifierPixmap &pixmap);
QDBusArgument &operator<<(QDBusArgument &argument, const StatusNotifierToolTip &toolTip);
const QDBusArgument &operator>>(const QDBusArgument &argument, StatusNotifierToolTip &toolTip);

/// Makes the types known to QtDBus; needed once before one is sent or read, harmless again.
void registerStatusNotifierTypes();
