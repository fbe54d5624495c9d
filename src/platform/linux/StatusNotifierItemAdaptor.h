#pragma once

#include "platform/StatusBar.h"
#include "platform/linux/StatusNotifierTypes.h"

#include <QDBusAbstractAdaptor>

/// A status item as trays see it on the bus: the interface org.kde.StatusNotifierItem (freedesktop.org,
/// "StatusNotifierItem"), whose names are in capitals. It has no property `Menu`, so a tray calls ContextMenu
/// instead of looking for one.
class StatusNotifierItemAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(StatusNotifierPixmaps IconPixmap READ iconPixmap)
    Q_PROPERTY(StatusNotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ isMenu)

public:
    /// `parent` is the object that is put on the bus.
    StatusNotifierItemAdaptor(QObject *parent, StatusItemButton button, std::function<void()> action);

    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const { return QStringLiteral("larkspool"); }
    QString title() const { return m_button.accessibilityDescription; }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    /// None: a themed symbol takes the panel's colour in some trays, and stays dark on dark in others.
    QString iconName() const { return {}; }
    /// Drawn anew for each tray that asks.
    StatusNotifierPixmaps iconPixmap() const;
    StatusNotifierToolTip toolTip() const { return {{}, {}, title(), {}}; }
    bool isMenu() const { return false; }

public Q_SLOTS:
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString &orientation);
    /// Comes before Activate where the desktop wants a proof that it was the user's doing.
    void ProvideXdgActivationToken(const QString &token);

private:
    void act();

    StatusItemButton m_button;
    std::function<void()> m_action;
};
