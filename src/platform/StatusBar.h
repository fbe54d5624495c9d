#pragma once

#include <QColor>
#include <QImage>
#include <QString>

#include <functional>
#include <memory>

/// What a status item shows.
struct StatusItemButton {
    QString accessibilityDescription;
    /// Draws the symbol in a square of so many pixels, in one colour on nothing. Called for the sizes and
    /// colours that a tray wants, at any time while the item lives, on the main thread. A null picture where
    /// there is no symbol.
    std::function<QImage(int pixels, const QColor &color)> image;
};

/// An item in the status bar; destroying it takes it out.
class StatusItem
{
public:
    virtual ~StatusItem() = default;
};

/// The desktop's status bar (tray, notification area).
///
/// Life cycle: 1. made by loadStatusBar(); 2. `statusItem`, whose result shows in whatever tray there is, now
/// or later, and in one at a time: it moves to a tray that comes, and waits for one when its own goes; the
/// bar may go before its items. Without any tray nothing is shown, and nothing is wrong. Main thread only;
/// nothing waits for a tray.
class StatusBar
{
public:
    virtual ~StatusBar() = default;

    /// An item as wide as its button. A click, or what a tray or a screen reader has in its place, runs
    /// `action` on the main thread, from the event loop: it may destroy the item. It has no menu.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> statusItem(
        StatusItemButton button, std::function<void()> action) = 0;
};
