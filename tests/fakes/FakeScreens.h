#pragma once

#include "platform/Screens.h"

/// A desktop with the screen that a test gives it, or none.
class FakeScreens : public Screens
{
public:
    std::optional<QRect> frame = QRect(0, 0, 1920, 1080);

    std::optional<QRect> visibleFrame() const override { return frame; }
};
