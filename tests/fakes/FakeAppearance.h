#pragma once

#include "platform/Appearance.h"

/// A desktop whose look a test sets; the test calls `onChanged`, too.
class FakeAppearance : public Appearance
{
public:
    ColorScheme scheme = ColorScheme::Light;
    bool isAnimated = true;

    ColorScheme colorScheme() const override { return scheme; }
    bool hasAnimations() const override { return isAnimated; }
};
