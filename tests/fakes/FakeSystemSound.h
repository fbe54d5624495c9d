#pragma once

#include "platform/SystemSound.h"

/// Counts the clicks.
class FakeSystemSound : public SystemSound
{
public:
    int clickCount = 0;

    void playNavigationClick() override { ++clickCount; }
};
