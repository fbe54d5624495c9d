#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

/// Tells screen readers what the keys go to where the keyboard focus does not: to the highlighted row of a list,
/// or to a chip. Toolkit and reader learn of the keyboard focus by themselves.
///
/// The bridge to AT-SPI passes on a state of "focused" only together with an event of the focus, and Qt Quick sends
/// that for the keyboard focus alone.
class ScreenReader : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    explicit ScreenReader(QObject *parent = nullptr);

    /// Reports the focus on the item in a later turn of the event loop, when its Accessible.focused is true then.
    /// Of several items in one turn, only the last one counts.
    Q_INVOKABLE void follow(QQuickItem *item);

private:
    void report();

    QPointer<QQuickItem> m_item;
};
