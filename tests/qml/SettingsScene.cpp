#include "SettingsScene.h"

#include "store/Seeding.h"
#include "ui/settings/SettingsModule.h"
#include "ui/style/SymbolProvider.h"

#include <QCoreApplication>

SettingsScene::~SettingsScene() = default;

void SettingsScene::setAppearance(Appearance::ColorScheme scheme)
{
    m_appearance.scheme = scheme;
    m_appearance.isAnimated = false;
}

void SettingsScene::addDefaults()
{
    seedDefaultCategories(&m_store.container());
}

void SettingsScene::addCategory(const QString &name)
{
    const auto order = m_store.context().fetchCount<ClipCategory>();
    m_store.context().insert(std::make_shared<ClipCategory>(
        name, QStringLiteral("#33B873"), QStringLiteral("tag.fill"), order, false));
}

void SettingsScene::show()
{
    ASSERT_NO_FATAL_FAILURE(settle(m_engine));
    ASSERT_TRUE(m_store.context().save());
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0.0"));
    registerSettingsModule();
    m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    installSymbols(m_engine);
    m_themeDriver = std::make_unique<ThemeDriver>(m_engine, m_appearance);
    m_window = std::make_unique<SettingsWindow>(m_engine,
        std::make_unique<SettingsView>(SettingsView::Surroundings{.defaults = m_defaults,
            .notifications = m_notifications,
            .events = m_events,
            .loginItem = m_loginItem,
            .modelContext = &m_store.context(),
            .onRecording = [](auto) {},
            .openPage = [](const QUrl &) {}}));
    m_window->makeKeyAndOrderFront();
    waitUntilActive();
}

void SettingsScene::choose(const char *tab)
{
    click(placeOf(shown("SettingsTabBar", tab)));
    // Nothing is under the mouse.
    moveMouse({2, 398});
}

void SettingsScene::type(const QString &text)
{
    for (const QChar character : text)
        press(Qt::Key_unknown, Qt::NoModifier, character);
}
