#include "ui/history/RowPictures.h"
#include "fakes/FixedClock.h"
#include "support/TemporaryStore.h"
#include "support/TestImages.h"
#include "support/Waiting.h"
#include "ui/history/HistoryListModel.h"
#include "ui/history/HistoryModule.h"
#include "ui/style/SymbolProvider.h"

#include <QFile>
#include <QIcon>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>

#include <gtest/gtest.h>

#include <mutex>

/// The pictures of rows, from a store to the window.
namespace
{

constexpr auto ListOfRows = R"(
import QtQuick
import Larkspool.History
ListView {
    id: list
    required property HistoryListModel rows
    width: 600
    height: 400
    model: rows
    delegate: ClipboardItemRow { width: list.width }
}
)";

/// What Qt says meanwhile.
class Warnings
{
public:
    Warnings()
    {
        lines().clear();
        m_previous = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &line) {
            const std::lock_guard lock(mutex());
            lines().append(line);
        });
    }
    ~Warnings() { qInstallMessageHandler(m_previous); }
    Warnings(const Warnings &) = delete;
    Warnings &operator=(const Warnings &) = delete;

    QStringList all() const
    {
        const std::lock_guard lock(mutex());
        return lines();
    }

private:
    static QStringList &lines()
    {
        static QStringList lines;
        return lines;
    }
    static std::mutex &mutex()
    {
        static std::mutex mutex;
        return mutex;
    }
    QtMessageHandler m_previous;
};

class RowPictures : public ::testing::Test
{
protected:
    RowPictures()
    {
        registerHistoryModule();
        QIcon::setThemeName(QStringLiteral("no such theme"));
        m_window.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
        installSymbols(*m_window.engine());
        installRowPictures(*m_window.engine(), m_rows, m_store.filePath());
        QQmlComponent component(m_window.engine());
        component.setData(ListOfRows, QUrl());
        m_list.reset(qobject_cast<QQuickItem *>(
            component.createWithInitialProperties({{QStringLiteral("rows"), QVariant::fromValue(&m_rows)}})));
        EXPECT_TRUE(m_list) << component.errorString().toStdString();
        m_list->setParentItem(m_window.contentItem());
        m_window.resize(600, 400);
        m_window.show();
    }

    std::shared_ptr<ClipboardItem> add(
        const QByteArray &content, ClipboardItemType type, std::optional<QByteArray> image = std::nullopt)
    {
        m_clock.advanceBy(1000);
        const auto item = std::make_shared<ClipboardItem>(
            content, type, std::move(image), std::nullopt, std::nullopt, false, m_clock);
        m_store.context().insert(item);
        return item;
    }
    static void collect(QQuickItem *item, const char *type, QList<QQuickItem *> &found)
    {
        for (QQuickItem *const child : item->childItems()) {
            if (!child->isVisible())
                continue;
            if (child->inherits(type))
                found.append(child);
            collect(child, type, found);
        }
    }
    /// The picture of the only entry, beside its texts; null when there is none.
    QQuickItem *picture(qreal side) const
    {
        QList<QQuickItem *> images;
        collect(m_list.get(), "QQuickImage", images);
        for (QQuickItem *const image : images) {
            const bool isSymbol =
                image->property("source").toString().startsWith(QStringLiteral("image://symbol"));
            if (!isSymbol && image->width() == side)
                return image;
        }
        return nullptr;
    }
    QStringList texts() const
    {
        QList<QQuickItem *> items;
        collect(m_list.get(), "QQuickText", items);
        QStringList texts;
        for (const QQuickItem *const item : items)
            texts.append(item->property("text").toString());
        return texts;
    }
    bool isShown(qreal side) const
    {
        const QQuickItem *const image = picture(side);
        return image && image->implicitWidth() > 0;
    }
    QColor pixel(const QQuickItem &item)
    {
        const QPoint middle = item.mapToScene({item.width() / 2, item.height() / 2}).toPoint();
        return m_window.grabWindow().pixelColor(middle);
    }

    TemporaryStore m_store;
    FixedClock m_clock;
    HistoryListModel m_rows{m_store.context(), m_clock};
    QQuickView m_window;
    std::unique_ptr<QQuickItem> m_list;
};

TEST_F(RowPictures, ArriveInARowThatIsThereAlready)
{
    const Warnings warnings;
    add("Image", ClipboardItemType::Image, testimages::plain({1920, 1080}, Qt::red));
    ASSERT_TRUE(waitUntil([this] { return texts().contains(QStringLiteral("Image")); }));
    EXPECT_FALSE(picture(80));
    ASSERT_TRUE(m_store.context().save());
    ASSERT_TRUE(waitUntil([this] { return isShown(80); }));
    EXPECT_EQ(pixel(*picture(80)), QColor(Qt::red));
    EXPECT_TRUE(waitUntil([this] { return texts().contains(QStringLiteral("1920×1080")); }));
    EXPECT_EQ(warnings.all(), QStringList());
}

TEST_F(RowPictures, LeaveNoPlaceWhenThereIsNone)
{
    add("Image", ClipboardItemType::Image, QByteArray(3000, 'x'));
    ASSERT_TRUE(m_store.context().save());
    const Warnings warnings;
    // Once the bytes have been tried, and their number is known.
    ASSERT_TRUE(waitUntil([this] { return texts().contains(QStringLiteral("2 KB")) && !picture(80); }));
    QList<QQuickItem *> previews;
    collect(m_list.get(), "QQuickText", previews);
    for (const QQuickItem *const text : previews) {
        if (text->property("text").toString() == QStringLiteral("Image")) {
            EXPECT_EQ(text->mapToItem(m_list.get(), {}).x(), 76 + 14);
        }
    }
    EXPECT_EQ(warnings.all(), QStringList());
}

TEST_F(RowPictures, OfAFileWithoutAnIconAreOurOwnSymbol)
{
    const Warnings warnings;
    add("/nowhere/report.pdf", ClipboardItemType::File);
    const auto symbols = [this] {
        QList<QQuickItem *> images;
        collect(m_list.get(), "QQuickImage", images);
        QStringList names;
        for (const QQuickItem *const image : images)
            names.append(image->property("name").toString() + QStringLiteral(" %1").arg(image->width()));
        return names;
    };
    ASSERT_TRUE(waitUntil([&symbols] { return symbols().contains(QStringLiteral("doc 40")); }));
    EXPECT_EQ(warnings.all(), QStringList());
}

TEST_F(RowPictures, GoWithTheirEntry)
{
    const auto item = add("Image", ClipboardItemType::Image, testimages::plain({64, 48}, Qt::red));
    ASSERT_TRUE(m_store.context().save());
    ASSERT_TRUE(waitUntil([this] { return isShown(80); }));
    m_store.context().remove(item);
    ASSERT_TRUE(m_store.context().save());
    add("Image", ClipboardItemType::Image, testimages::plain({64, 48}, Qt::blue));
    ASSERT_TRUE(m_store.context().save());
    EXPECT_TRUE(waitUntil([this] { return isShown(80) && pixel(*picture(80)) == QColor(Qt::blue); }));
}

TEST_F(RowPictures, ThatAreStillOnTheirWayWhenTheWindowGoesDoNoHarm)
{
    for (int i = 0; i < 3; ++i)
        add("Image", ClipboardItemType::Image, testimages::plain({3000, 3000}, Qt::red));
    ASSERT_TRUE(m_store.context().save());
    EXPECT_TRUE(waitUntil([this] { return m_window.isExposed(); }));
}

/// What this process has in memory, in bytes.
qint64 residentMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    EXPECT_TRUE(status.open(QIODevice::ReadOnly));
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.simplified().split(' ')[1].toLongLong() * 1024;
    }
    ADD_FAILURE() << "no VmRSS";
    return 0;
}

TEST_F(RowPictures, ThatAreNotShownAnyMoreAreNotAllKept)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer keeps what is freed";
#endif
    const auto item = add("Image", ClipboardItemType::Image, testimages::plain({64, 48}, Qt::red));
    ASSERT_TRUE(m_store.context().save());
    ASSERT_TRUE(waitUntil([this] { return isShown(80); }));
    QQuickItem *const image = picture(80);
    const QString source = image->property("source").toString();
    constexpr int Pictures = 1500;
    const qint64 before = residentMemory();
    for (int i = 0; i < Pictures; ++i) {
        // Another roundness is another picture, for every cache on the way.
        image->setProperty("source", QUrl(QStringLiteral("%1%2").arg(source).arg(i)));
        ASSERT_TRUE(waitUntil([image] { return image->property("status").toInt() == 1; }));
    }
    constexpr qint64 AllOfThem = Pictures * 80 * 80 * 4;
    EXPECT_LT(residentMemory() - before, AllOfThem / 2);
}

} // namespace
