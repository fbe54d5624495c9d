#include "platform/linux/AppearanceSettings.h"

namespace
{

constexpr qint64 Dark = 1;
constexpr qint64 Light = 2;
constexpr qint64 Reduced = 1;

bool isInteger(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

std::optional<qint64> integer(const QVariant &value)
{
    return isInteger(value) ? std::optional(value.toLongLong()) : std::nullopt;
}

std::optional<double> number(const QVariant &value)
{
    if (!isInteger(value) && value.typeId() != QMetaType::Double && value.typeId() != QMetaType::QString)
        return std::nullopt;
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace

AppearanceSettings::Name AppearanceSettings::nameOf(Setting setting)
{
    switch (setting) {
    case Setting::ColorScheme:
        return {QStringLiteral("org.freedesktop.appearance"), QStringLiteral("color-scheme")};
    case Setting::ReducedMotion:
        return {QStringLiteral("org.freedesktop.appearance"), QStringLiteral("reduced-motion")};
    case Setting::EnableAnimations:
        return {QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("enable-animations")};
    case Setting::AnimationDurationFactor:
        break;
    }
    return {QStringLiteral("org.kde.kdeglobals.KDE"), QStringLiteral("AnimationDurationFactor")};
}

std::optional<AppearanceSettings::Setting> AppearanceSettings::settingOf(const Name &name)
{
    for (int i = 0; i < SettingCount; ++i) {
        const auto setting = static_cast<Setting>(i);
        if (nameOf(setting) == name)
            return setting;
    }
    return std::nullopt;
}

void AppearanceSettings::set(Setting setting, const QVariant &value)
{
    m_values.at(static_cast<size_t>(setting)) = value;
}

void AppearanceSettings::clear()
{
    m_values = {};
}

const QVariant &AppearanceSettings::value(Setting setting) const
{
    return m_values.at(static_cast<size_t>(setting));
}

std::optional<Appearance::ColorScheme> AppearanceSettings::colorScheme() const
{
    const auto scheme = integer(value(Setting::ColorScheme));
    if (scheme == Dark)
        return Appearance::ColorScheme::Dark;
    if (scheme == Light)
        return Appearance::ColorScheme::Light;
    return std::nullopt;
}

bool AppearanceSettings::hasAnimations() const
{
    const QVariant &enabled = value(Setting::EnableAnimations);
    const bool isOff = enabled.typeId() == QMetaType::Bool && !enabled.toBool();
    const auto factor = number(value(Setting::AnimationDurationFactor));
    const bool isImmediate = factor && *factor <= 0;
    return integer(value(Setting::ReducedMotion)) != Reduced && !isOff && !isImmediate;
}
