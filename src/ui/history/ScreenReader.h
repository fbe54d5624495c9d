#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

#include <vector>

/// Tells screen readers what the keys go to where the keyboard focus does not: to the highlighted row of a
/// list, or to a chip. Of the keyboard focus they hear from the toolkit.
///
/// The bridge to AT-SPI passes "focused" on only with an event of the focus, and Qt Quick sends that for the
/// keyboard focus alone.
class ScreenReader : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    explicit ScreenReader(QObject *parent = nullptr);

    /// The item's Accessible.focused has changed, or what it shows has. In a later turn of the event loop,
    /// the last item of this turn that is focused then is reported to have the focus.
    Q_INVOKABLE void follow(QQuickItem *item);

private:
    void report();

    std::vector<QPointer<QQuickItem>> m_items;
};
