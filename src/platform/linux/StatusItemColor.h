#pragma once

#include <QColor>

/// The colour of a status item in a tray that does not tell its own foreground. The accent (#ff8c00),
/// darkened until it stands out from light and from dark panels alike: 3:1 or more against #f0f0f0 and
/// #2d2d2d.
inline constexpr QColor StatusItemColor(0xd4, 0x6c, 0x00);
