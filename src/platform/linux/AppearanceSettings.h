#pragma once

#include "platform/Appearance.h"

#include <QVariant>

#include <array>
#include <optional>

/// What a desktop's settings say about its look: their values as they came, of whatever type, and what they
/// mean together. A value that is absent or of another type than its setting has says nothing.
class AppearanceSettings
{
public:
    /// The settings that count:
    /// - of the XDG Desktop Portal, "org.freedesktop.portal.Settings": org.freedesktop.appearance
    ///   color-scheme (1: dark, 2: light) and reduced-motion (1: reduced);
    /// - of desktops that have had a switch of their own before that: org.gnome.desktop.interface
    ///   enable-animations, a truth value, and org.kde.kdeglobals.KDE AnimationDurationFactor, a number, of
    ///   late written as text.
    enum class Setting { ColorScheme, ReducedMotion, EnableAnimations, AnimationDurationFactor };
    static constexpr int SettingCount = 4;

    struct Name {
        QString nameSpace;
        QString key;
        bool operator==(const Name &other) const = default;
    };
    static Name nameOf(Setting setting);
    /// Nothing for a setting that does not count.
    static std::optional<Setting> settingOf(const Name &name);

    /// An invalid value: the setting is absent.
    void set(Setting setting, const QVariant &value);
    /// All of them are absent.
    void clear();

    /// Nothing without a preference.
    std::optional<Appearance::ColorScheme> colorScheme() const;
    /// False when any of the settings says so.
    bool hasAnimations() const;

private:
    const QVariant &value(Setting setting) const;

    std::array<QVariant, SettingCount> m_values;
};
