#include "platform/linux/StatusNotifierBar.h"

#include "platform/linux/StatusNotifierItem.h"

namespace platform
{
namespace
{

class MovingItem : public StatusItem
{
public:
    MovingItem(const StatusItemButton &button, const std::function<void()> &action,
        std::shared_ptr<StatusBar> older, const QString &busAddress)
        : m_button(button)
        , m_action(action)
        , m_older(std::move(older))
        , m_item(button, action, busAddress, [this](bool isShown) { onShown(isShown); })
    {
    }

private:
    void onShown(bool isShown)
    {
        if (isShown)
            m_olderItem.reset();
        else if (m_older && !m_olderItem)
            m_olderItem = m_older->statusItem(m_button, m_action);
    }

    StatusItemButton m_button;
    std::function<void()> m_action;
    std::shared_ptr<StatusBar> m_older;
    std::unique_ptr<StatusItem> m_olderItem;
    StatusNotifierItem m_item;
};

class StatusNotifierBar : public StatusBar
{
public:
    StatusNotifierBar(std::unique_ptr<StatusBar> older, QString busAddress)
        : m_older(std::move(older))
        , m_busAddress(std::move(busAddress))
    {
    }

    std::unique_ptr<StatusItem> statusItem(StatusItemButton button, std::function<void()> action) override
    {
        return std::make_unique<MovingItem>(button, action, m_older, m_busAddress);
    }

private:
    std::shared_ptr<StatusBar> m_older;
    QString m_busAddress;
};

} // namespace

std::unique_ptr<StatusBar> makeStatusNotifierBar(std::unique_ptr<StatusBar> older, const QString &busAddress)
{
    return std::make_unique<StatusNotifierBar>(std::move(older), busAddress);
}

} // namespace platform
