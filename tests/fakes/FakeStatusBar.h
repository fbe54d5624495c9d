#pragma once

#include "platform/StatusBar.h"

#include <optional>

/// A status bar in memory: tests look at its item and click it.
class FakeStatusBar : public StatusBar
{
public:
    /// Nothing when there is no item.
    const std::optional<StatusItemButton> &button() const { return *m_button; }
    void click() { m_action(); }

    std::unique_ptr<StatusItem> statusItem(StatusItemButton button, std::function<void()> action) override
    {
        *m_button = std::move(button);
        m_action = std::move(action);
        return std::make_unique<Item>(m_button);
    }

private:
    using Button = std::shared_ptr<std::optional<StatusItemButton>>;

    class Item : public StatusItem
    {
    public:
        explicit Item(Button button)
            : m_button(std::move(button))
        {
        }
        ~Item() override { m_button->reset(); }
        Item(const Item &) = delete;
        Item &operator=(const Item &) = delete;

    private:
        Button m_button;
    };

    Button m_button = std::make_shared<std::optional<StatusItemButton>>();
    std::function<void()> m_action;
};
