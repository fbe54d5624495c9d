#include "base/UserDefaults.h"

#include <QSettings>
#include <QStandardPaths>

UserDefaults::UserDefaults(QString filePath)
    : m_filePath(std::move(filePath))
{
}

QString UserDefaults::defaultFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
        QStringLiteral("/larkspool/larkspool.conf");
}

std::optional<QByteArray> UserDefaults::data(const QString &key) const
{
    const QSettings settings(m_filePath, QSettings::IniFormat);
    if (!settings.contains(key))
        return std::nullopt;
    const QVariant value = settings.value(key);
    // An INI reader takes an unquoted comma for a list; the stored form of a hot key written by hand has one.
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(QLatin1String(", ")).toUtf8();
    return value.toByteArray();
}
