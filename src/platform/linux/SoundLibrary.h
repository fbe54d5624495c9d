#pragma once

#include <canberra.h>

/// libcanberra, the desktops' event sound facility, loaded when the first of these is made: it brings the
/// sound server's libraries along, which a program that has not played anything yet need not hold in memory.
/// Any thread.
class SoundLibrary
{
public:
    SoundLibrary();

    /// False when it is not installed; then none of the functions may be called.
    bool isLoaded() const { return m_isLoaded; }

    // As <canberra.h> describes them. From `open` on they may wait for the sound server.
    decltype(&ca_context_create) createContext = nullptr;
    decltype(&ca_context_set_driver) setDriver = nullptr;
    decltype(&ca_context_change_props) changeProperties = nullptr;
    decltype(&ca_context_open) open = nullptr;
    decltype(&ca_context_play) play = nullptr;
    decltype(&ca_context_destroy) destroyContext = nullptr;

private:
    bool m_isLoaded;
};
