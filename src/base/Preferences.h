#pragma once

#include <QLatin1String>

/// A preference: the key that it is stored under, and what it is when nothing is stored.
template<class T>
struct Preference {
    QLatin1String key;
    T defaultValue;
};

/// Every preference of the user.
namespace preference
{

/// Of these three nothing but the settings takes notice yet.
inline constexpr Preference<int> MaxHistoryCount{QLatin1String("maxHistoryCount"), 500};
inline constexpr Preference<bool> ShowSourceApp{QLatin1String("showSourceApp"), true};
inline constexpr Preference<bool> PlaySoundOnCopy{QLatin1String("playSoundOnCopy"), false};

inline constexpr Preference<bool> LaunchAtLogin{QLatin1String("launchAtLogin"), false};
inline constexpr Preference<bool> PlaySoundOnNavigate{QLatin1String("playSoundOnNavigate"), true};
/// "#RRGGBB"; of the border around the highlighted row.
inline constexpr Preference<QLatin1String> BorderColorHex{
    QLatin1String("borderColorHex"), QLatin1String("#FF8C00")};
/// The key that opens the category search: "tab" or "slash".
inline constexpr Preference<QLatin1String> CategorySearchKey{
    QLatin1String("categorySearchKey"), QLatin1String("tab")};

/// The global hot key, a `KeyCombo` as JSON; absent until the user has recorded one.
inline constexpr QLatin1String HotkeyCombo("hotkeyCombo");

} // namespace preference
