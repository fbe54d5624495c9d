#include "ui/history/ScreenReader.h"

#include <QAccessible>

#include <utility>

ScreenReader::ScreenReader(QObject *parent)
    : QObject(parent)
{
}

void ScreenReader::follow(QQuickItem *item)
{
    if (!QAccessible::isActive())
        return;
    const bool isScheduled = !m_item.isNull();
    m_item = item;
    // Later: a reader has to hear first that the window is active.
    if (!isScheduled)
        QMetaObject::invokeMethod(this, &ScreenReader::report, Qt::QueuedConnection);
}

void ScreenReader::report()
{
    const QPointer<QQuickItem> item = std::exchange(m_item, nullptr);
    const QAccessibleInterface *const known = item ? QAccessible::queryAccessibleInterface(item) : nullptr;
    if (!known || !known->state().focused)
        return;
    QAccessibleEvent event(item, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}
