#include "PanelScene.h"

#include "store/Seeding.h"
#include "support/TestImages.h"
#include "ui/history/HistoryModule.h"
#include "ui/history/RowPictures.h"
#include "ui/style/SymbolProvider.h"

#include <QLinearGradient>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>

namespace
{

constexpr QSize PanelSize(680, 640);
constexpr QRgb Backdrop = 0xff6c8299;
constexpr auto ImageName = "screenshot-harbour.png";
constexpr auto ImageSize = "1920×1080";

QByteArray harbour()
{
    QImage image(1920, 1080, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient gradient(0, 0, 1920, 1080);
    gradient.setColorAt(0, QColor(40, 95, 120));
    gradient.setColorAt(0.55, QColor(80, 65, 120));
    gradient.setColorAt(1, QColor(240, 140, 40));
    painter.fillRect(image.rect(), gradient);
    painter.end();
    return testimages::encoded(image);
}

} // namespace

PanelScene::~PanelScene() = default;

void PanelScene::setAppearance(Appearance::ColorScheme scheme)
{
    m_appearance.scheme = scheme;
    m_appearance.isAnimated = false;
}

void PanelScene::addDefaults()
{
    seedDefaultCategories(&m_store.container());
    seedDefaultTemplates(&m_store.container());
}

void PanelScene::add(const QByteArray &content, ClipboardItemType type, const QString &application,
    qint64 secondsAgo, bool isPinned)
{
    FixedClock clock;
    clock.advanceBy(-1000 * secondsAgo);
    const bool isImage = type == ClipboardItemType::Image;
    m_store.context().insert(std::make_shared<ClipboardItem>(content, type,
        isImage ? std::optional(harbour()) : std::nullopt,
        application.isEmpty() ? std::nullopt : std::optional(application), std::nullopt, isPinned, clock));
}

void PanelScene::addSamples()
{
    add("ssh -L 5432:db.internal:5432 bastion.example.net\npsql -h localhost -U app orders",
        ClipboardItemType::Text, QStringLiteral("Text Editor"), 20, true);
    add("https://docs.example.org/guides/clipboard?section=selections#owners", ClipboardItemType::Url,
        QStringLiteral("Web Browser"), 250);
    add(QByteArray("/home/ann/Pictures/") + ImageName, ClipboardItemType::Image, QStringLiteral("Screenshot"),
        7500);
    add("SELECT id, total FROM orders WHERE paid_at IS NULL\nORDER BY created_at DESC LIMIT 20;",
        ClipboardItemType::Text, QStringLiteral("Terminal"), 90'000);
    add("/home/ann/Documents/harbour-report.pdf", ClipboardItemType::File, QStringLiteral("Files"), 190'000);
    add("eggs", ClipboardItemType::Text, QStringLiteral("Notes"), 200'000);
    add("oat milk", ClipboardItemType::Text, QStringLiteral("Notes"), 200'100);
    add("two lemons", ClipboardItemType::Text, QStringLiteral("Notes"), 200'200);
}

void PanelScene::addText(const QByteArray &content, const QString &application)
{
    m_clock.advanceBy(1000);
    m_store.context().insert(std::make_shared<ClipboardItem>(content, ClipboardItemType::Text, std::nullopt,
        application.isEmpty() ? std::nullopt : std::optional(application), std::nullopt, false, m_clock));
}

void PanelScene::addCategories(const QStringList &names)
{
    for (const QString &name : names)
        addCategory(name);
}

void PanelScene::addAssigned(const QByteArray &content, const QString &application, const QString &category)
{
    const QUuid id = addCategory(category)->id();
    HistoryViewFixture::add(Entry{content, ClipboardItemType::Text, application, id, false});
}

void PanelScene::show()
{
    QQmlEngine &engine = *m_window->engine();
    ASSERT_NO_FATAL_FAILURE(settle(engine));
    ASSERT_TRUE(m_store.context().save());
    m_view = makeView();
    registerHistoryModule();
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    installSymbols(engine);
    m_themeDriver = std::make_unique<ThemeDriver>(engine, m_appearance);
    installRowPictures(engine, *m_view->filteredItems(), m_store.filePath());
    QQmlComponent component(
        &engine, QUrl(QStringLiteral("qrc:/qt/qml/Larkspool/History/ClipboardHistory.qml")));
    ASSERT_TRUE(component.isReady()) << component.errorString().toStdString();
    m_content.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
        {{QStringLiteral("view"), QVariant::fromValue(m_view.get())}})));
    ASSERT_TRUE(m_content);
    m_window->setColor(QColor::fromRgb(Backdrop));
    m_window->resize(PanelSize);
    m_content->setParentItem(m_window->contentItem());
    m_content->setSize(PanelSize);
    m_content->setFocus(true);
    m_window->show();
    waitUntilActive();
}

void PanelScene::passTime()
{
    m_queue.advanceBy(std::chrono::seconds(1));
}

QRectF PanelScene::cardOf(const QString &text) const
{
    const QQuickItem *found = nullptr;
    visitVisible([&](const QQuickItem &item) {
        if (textOf(item) == text)
            found = &item;
    });
    while (found && !found->inherits("CardFace")) {
        const QQuickItem *face = nullptr;
        for (const QQuickItem *const child : found->childItems()) {
            if (child->inherits("CardFace"))
                face = child;
        }
        found = face ? face : found->parentItem();
    }
    return found ? found->mapRectToScene({QPointF(), found->size()}) : QRectF();
}

bool PanelScene::isComplete() const
{
    bool hasImage = false;
    bool hasImageSize = false;
    bool isHighlightInSight = true;
    visitVisible([&](const QQuickItem &item) {
        // The list follows the highlight in a turn of its own.
        const bool isHighlighted = item.inherits("CardFace") && item.parentItem()->parentItem() &&
            item.parentItem()->parentItem()->property("isSelected").toBool();
        if (isHighlighted) {
            const QRectF card = item.mapRectToScene({QPointF(), item.size()});
            isHighlightInSight = QRectF(QPointF(), PanelSize).contains(card);
        }
        hasImage = hasImage || textOf(item) == QString::fromUtf8(ImageName);
        hasImageSize = hasImageSize || textOf(item) == QString::fromUtf8(ImageSize);
    });
    return PictureScene::isComplete() && isHighlightInSight && hasImage == hasImageSize;
}
