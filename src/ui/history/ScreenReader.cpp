#include "ui/history/ScreenReader.h"

#include <QAccessible>

#include <algorithm>
#include <utility>

namespace
{

bool isFocused(const QPointer<QQuickItem> &item)
{
    const QAccessibleInterface *const known = item ? QAccessible::queryAccessibleInterface(item) : nullptr;
    return known && known->state().focused;
}

} // namespace

ScreenReader::ScreenReader(QObject *parent)
    : QObject(parent)
{
}

void ScreenReader::follow(QQuickItem *item)
{
    if (!QAccessible::isActive())
        return;
    // Later: a reader has to hear first that the window is active.
    if (m_items.empty())
        QMetaObject::invokeMethod(this, &ScreenReader::report, Qt::QueuedConnection);
    m_items.emplace_back(item);
}

void ScreenReader::report()
{
    const auto items = std::exchange(m_items, {});
    const auto focused = std::find_if(items.rbegin(), items.rend(), isFocused);
    if (focused == items.rend())
        return;
    QAccessibleEvent event(focused->data(), QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}
