#pragma once

#include <QGuiApplication>

/// The key that does in a layout from left to right what this one does in the layout as it is: from right to
/// left the arrows to the sides, `left` and `right`, change places. Keys are those of any one table of codes.
template<class Key>
Key inReadingDirection(Key key, Key left, Key right)
{
    if (QGuiApplication::layoutDirection() != Qt::RightToLeft)
        return key;
    return key == left ? right : key == right ? left : key;
}
