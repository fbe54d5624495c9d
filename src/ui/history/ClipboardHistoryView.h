#pragma once

#include "base/NotificationCenter.h"
#include "ui/history/HistoryListModel.h"

#include <QObject>

#include <functional>

/// The content of the history panel: the list, the highlighted row and what the keys do with them.
class ClipboardHistoryView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application's controller")
    Q_PROPERTY(HistoryListModel *filteredItems READ filteredItems CONSTANT)
    Q_PROPERTY(int selectedIndex READ selectedIndex NOTIFY selectedIndexChanged)

public:
    using ItemSelected = std::function<void(const std::shared_ptr<ClipboardItem> &)>;

    /// Everything must outlive it. `onItemSelected` may be empty.
    ClipboardHistoryView(ModelContext &modelContext, NotificationCenter &notifications, const Clock &clock,
        ItemSelected onItemSelected);

    HistoryListModel *filteredItems() { return &m_filteredItems; }
    /// The highlighted row; it may be beyond the list when that has shrunk.
    int selectedIndex() const { return m_selectedIndex; }

    /// A key that the list has the focus for; whether it was taken. `key` is a Qt::Key.
    Q_INVOKABLE bool handleKey(int key);
    /// A click on a row: highlights and pastes it.
    Q_INVOKABLE void selectAndPaste(int row);

    /// Back to the state in which the panel opens.
    void resetState();

Q_SIGNALS:
    void selectedIndexChanged();
    /// The list shows its beginning again.
    void wasReset();

private:
    void moveSelection(int distance);
    void setSelectedIndex(int index);
    void pasteSelected();

    HistoryListModel m_filteredItems;
    ItemSelected m_onItemSelected;
    int m_selectedIndex = 0;
    std::unique_ptr<NotificationCenter::Observer> m_panelWillShow;
};
