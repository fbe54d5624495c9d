#include "ui/history/ClipboardHistoryView.h"

#include "base/Notifications.h"

ClipboardHistoryView::ClipboardHistoryView(ModelContext &modelContext, NotificationCenter &notifications,
    const Clock &clock, ItemSelected onItemSelected)
    : m_filteredItems(modelContext, clock)
    , m_onItemSelected(std::move(onItemSelected))
{
    m_panelWillShow = notifications.addObserver(notification::panelWillShow(), [this] { resetState(); });
}

bool ClipboardHistoryView::handleKey(int key)
{
    switch (key) {
    case Qt::Key_Down:
        moveSelection(1);
        return true;
    case Qt::Key_Up:
        moveSelection(-1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        pasteSelected();
        return true;
    default:
        return false;
    }
}

void ClipboardHistoryView::selectAndPaste(int row)
{
    setSelectedIndex(row);
    pasteSelected();
}

void ClipboardHistoryView::resetState()
{
    setSelectedIndex(0);
    m_filteredItems.refreshAges();
    Q_EMIT wasReset();
}

void ClipboardHistoryView::moveSelection(int distance)
{
    const int index = m_selectedIndex + distance;
    if (index >= 0 && index < m_filteredItems.rowCount())
        setSelectedIndex(index);
}

void ClipboardHistoryView::setSelectedIndex(int index)
{
    if (index == m_selectedIndex)
        return;
    m_selectedIndex = index;
    Q_EMIT selectedIndexChanged();
}

void ClipboardHistoryView::pasteSelected()
{
    const auto item = m_filteredItems.item(m_selectedIndex);
    if (item && m_onItemSelected)
        m_onItemSelected(item);
}
