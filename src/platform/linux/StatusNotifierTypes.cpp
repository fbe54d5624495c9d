#include "platform/linux/StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QtEndian>

StatusNotifierPixmap StatusNotifierPixmap::of(const QImage &image)
{
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    StatusNotifierPixmap pixmap{plain.width(), plain.height(), QByteArray(plain.sizeInBytes(), '\0')};
    // Four bytes a pixel leave no gap at the end of a row.
    qToBigEndian<quint32>(plain.constBits(), qsizetype(plain.width()) * plain.height(), pixmap.pixels.data());
    return pixmap;
}

QDBusArgument &operator<<(QDBusArgument &argument, const StatusNotifierPixmap &pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, StatusNotifierPixmap &pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const StatusNotifierToolTip &toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.pixmaps << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, StatusNotifierToolTip &toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.pixmaps >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

void registerStatusNotifierTypes()
{
    qDBusRegisterMetaType<StatusNotifierPixmap>();
    qDBusRegisterMetaType<StatusNotifierPixmaps>();
    qDBusRegisterMetaType<StatusNotifierToolTip>();
}
