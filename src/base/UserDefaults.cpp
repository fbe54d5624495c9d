#include "base/UserDefaults.h"

#include <QFile>
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
    // JSON that somebody wrote by hand, without the quotes and escapes that an INI reader wants around it.
    if (const QByteArray written = writtenValue(key); written.startsWith('{'))
        return written;
    return settings.value(key).toByteArray();
}

QString UserDefaults::string(const QString &key, const QString &defaultValue) const
{
    const QVariant value = QSettings(m_filePath, QSettings::IniFormat).value(key);
    return value.typeId() == QMetaType::QString ? value.toString() : defaultValue;
}

bool UserDefaults::boolean(const QString &key, bool defaultValue) const
{
    const QString value = string(key, QString());
    if (value == QLatin1String("true") || value == QLatin1String("1"))
        return true;
    if (value == QLatin1String("false") || value == QLatin1String("0"))
        return false;
    return defaultValue;
}

QByteArray UserDefaults::writtenValue(const QString &key) const
{
    QFile file(m_filePath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    const QByteArray name = key.toUtf8();
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        const qsizetype sign = line.indexOf('=');
        if (sign > 0 && line.first(sign).trimmed() == name)
            return line.sliced(sign + 1).trimmed();
    }
    return {};
}
