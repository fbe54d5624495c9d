#include "PanelScene.h"

#include "store/Seeding.h"
#include "support/TestImages.h"
#include "support/Waiting.h"
#include "ui/history/HistoryModule.h"
#include "ui/history/RowPictures.h"
#include "ui/style/SymbolProvider.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QLinearGradient>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QStyleHints>

namespace
{

constexpr QSize PanelSize(680, 640);
constexpr QRgb Backdrop = 0xff6c8299;
constexpr auto ImageName = "screenshot-harbour.png";
constexpr auto ImageSize = "1920×1080";

/// The same on every machine.
void chooseFonts()
{
    QGuiApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
    ASSERT_EQ(QFontInfo(QGuiApplication::font()).family(), QStringLiteral("DejaVu Sans"));
    ASSERT_EQ(QFontInfo(QFont(QStringLiteral("monospace"))).family(), QStringLiteral("DejaVu Sans Mono"))
        << "FONTCONFIG_FILE is to be tests/qml/fonts.conf, as ctest sets it";
}

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

template<class Visit>
void visitVisible(const QQuickItem &item, const Visit &visit)
{
    for (const QQuickItem *const child : item.childItems()) {
        if (!child->isVisible())
            continue;
        visit(*child);
        visitVisible(*child, visit);
    }
}

QString textOf(const QQuickItem &item)
{
    return item.inherits("QQuickText") ? item.property("text").toString() : QString();
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
    ASSERT_NO_FATAL_FAILURE(chooseFonts());
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    // A cursor that blinks is not always to be seen.
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    QIcon::setThemeName(QStringLiteral("no such theme"));
    ASSERT_TRUE(m_store.context().save());
    m_view = makeView();
    registerHistoryModule();
    QQmlEngine &engine = *m_window.engine();
    QObject::connect(&engine, &QQmlEngine::warnings, &m_window, [](const QList<QQmlError> &warnings) {
        for (const QQmlError &warning : warnings)
            ADD_FAILURE() << warning.toString().toStdString();
    });
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    installSymbols(engine);
    installRowPictures(engine, *m_view->filteredItems(), m_store.filePath());
    QQmlComponent component(
        &engine, QUrl(QStringLiteral("qrc:/qt/qml/Larkspool/History/ClipboardHistory.qml")));
    ASSERT_TRUE(component.isReady()) << component.errorString().toStdString();
    m_content.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
        {{QStringLiteral("view"), QVariant::fromValue(m_view.get())}})));
    ASSERT_TRUE(m_content);
    m_window.setColor(QColor::fromRgb(Backdrop));
    m_window.resize(PanelSize);
    m_content->setParentItem(m_window.contentItem());
    m_content->setSize(PanelSize);
    m_content->setFocus(true);
    m_window.show();
    m_window.requestActivate();
    ASSERT_TRUE(waitUntil([this] { return m_window.isExposed() && m_window.isActive(); }));
}

void PanelScene::passTime()
{
    m_queue.advanceBy(std::chrono::seconds(1));
}

void PanelScene::moveMouse(const QPointF &place)
{
    QMouseEvent move(
        QEvent::MouseMove, place, m_window.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &move);
}

void PanelScene::click(const QPointF &place, Qt::MouseButton button)
{
    const QPointF global = m_window.mapToGlobal(place);
    QMouseEvent press(QEvent::MouseButtonPress, place, global, button, button, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, place, global, button, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &release);
}

void PanelScene::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(&m_window, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    QCoreApplication::sendEvent(&m_window, &release);
}

QPointF PanelScene::placeOf(const QString &text) const
{
    QList<QPointF> places;
    visitVisible(*m_content, [&](const QQuickItem &item) {
        if (textOf(item) == text)
            places.append(item.mapToScene({item.width() / 2, item.height() / 2}));
    });
    EXPECT_EQ(places.size(), 1) << text.toStdString();
    return places.value(0);
}

QRectF PanelScene::cardOf(const QString &text) const
{
    const QQuickItem *found = nullptr;
    visitVisible(*m_content, [&](const QQuickItem &item) {
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
    constexpr int Ready = 1;
    bool isEveryPictureReady = true;
    bool hasImage = false;
    bool hasImageSize = false;
    bool isHighlightInSight = true;
    visitVisible(*m_content, [&](const QQuickItem &item) {
        if (item.inherits("QQuickImage") && !item.property("source").toString().isEmpty())
            isEveryPictureReady = isEveryPictureReady && item.property("status").toInt() == Ready;
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
    return isEveryPictureReady && isHighlightInSight && hasImage == hasImageSize;
}

QImage PanelScene::picture()
{
    QImage latest;
    const bool isSteady = waitUntil([this, &latest] {
        const QImage previous = std::exchange(latest, m_window.grabWindow());
        return isComplete() && latest == previous;
    });
    EXPECT_TRUE(isSteady);
    return latest.convertToFormat(QImage::Format_RGB32);
}
