#include "ui/style/ThemeDriver.h"

#include "platform/Appearance.h"

#include <QQmlEngine>

namespace
{

/// The type of the theme, for every engine. The toolkit itself would know of it only once a file that uses it
/// is there.
int themeType()
{
    static const int type = qmlRegisterSingletonType(
        QUrl(QStringLiteral("qrc:/qt/qml/Larkspool/Style/Theme.qml")), "Larkspool.Style", 1, 0, "Theme");
    return type;
}

} // namespace

ThemeDriver::ThemeDriver(QQmlEngine &engine, Appearance &appearance)
    : m_appearance(appearance)
    , m_theme(engine.singletonInstance<QObject *>(themeType()))
{
    appearance.onChanged = [this] { apply(); };
    apply();
}

ThemeDriver::~ThemeDriver()
{
    m_appearance.onChanged = nullptr;
}

void ThemeDriver::apply()
{
    if (!m_theme)
        return;
    m_theme->setProperty("isDark", m_appearance.colorScheme() == Appearance::ColorScheme::Dark);
    m_theme->setProperty("animated", m_appearance.hasAnimations());
}
