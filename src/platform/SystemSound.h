#pragma once

/// A short sound of the desktop's event sound facility. Main thread only.
class SystemSound
{
public:
    virtual ~SystemSound() = default;

    /// Plays the navigation click, without waiting for it; a click that still sounds is not waited for
    /// either. Silent, and without a word, where there is no sound. Where the desktop cannot keep up with the
    /// clicks, some are left out.
    virtual void playNavigationClick() = 0;
};
