#pragma once

#include "platform/x11/X11Connection.h"

#include <QStringList>

#include <initializer_list>

/// A hand on the keyboard of the test's X server: presses keys with XTEST, by evdev code, and changes
/// layouts. Each call is over when the server has done it.
class KeyRobot
{
public:
    KeyRobot();
    ~KeyRobot();

    void down(int evdevCode);
    void up(int evdevCode);
    /// Presses all in order, then releases them in reverse.
    void chord(std::initializer_list<int> evdevCodes);

    /// Runs setxkbmap; false when it fails.
    bool setLayout(const QStringList &arguments);
    /// Gives the keys of one modifier to another, which has none (XCB_MAP_INDEX_*); false when the server
    /// refuses.
    bool moveModifier(int from, int to);
    /// Makes a group of the layout the active one.
    void lockGroup(int group);
    /// Locks and unlocks modifiers, as their lock keys do: bits of the core protocol (XCB_MOD_MASK_*).
    void lockModifiers(int bits);

private:
    void fake(int type, int evdevCode);
    void sync();

    std::unique_ptr<X11Connection> m_connection;
};
