#pragma once

#include <functional>

/// How the user wants things to look. Main thread only.
class Appearance
{
public:
    enum class ColorScheme { Light, Dark };

    virtual ~Appearance() = default;

    /// As the desktop has it; before it has told, and where it has no preference, as the toolkit's palette
    /// is.
    virtual ColorScheme colorScheme() const = 0;
    /// Whether things may move: yes, unless the desktop tells otherwise.
    virtual bool hasAnimations() const = 0;

    /// One of them has changed. Called from the event loop; what the desktop has set before the start may
    /// come this way as well.
    std::function<void()> onChanged;
};
