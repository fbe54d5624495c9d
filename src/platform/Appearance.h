#pragma once

#include <functional>

/// How the user wants things to look. Main thread only.
class Appearance
{
public:
    enum class ColorScheme { Light, Dark };

    virtual ~Appearance() = default;

    virtual ColorScheme colorScheme() const = 0;
    /// Whether things may move.
    virtual bool hasAnimations() const = 0;

    /// One of them has changed.
    std::function<void()> onChanged;
};
