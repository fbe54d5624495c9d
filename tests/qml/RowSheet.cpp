#include "fakes/FixedClock.h"
#include "store/ModelContainer.h"
#include "support/Waiting.h"
#include "ui/history/HistoryListModel.h"
#include "ui/history/HistoryModule.h"
#include "ui/history/RowPictures.h"
#include "ui/style/SymbolProvider.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QIcon>
#include <QLinearGradient>
#include <QPainter>
#include <QPalette>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

/// Draws rows of every kind, dark and light, selected, hovered and plain, for eyes to judge; and measures how
/// long the list takes to draw a frame while the highlight moves.
namespace
{

struct Sample {
    const char *content;
    ClipboardItemType type;
    const char *sourceApp;
    qint64 secondsAgo;
    bool isPinned = false;
};

const std::vector<Sample> Samples{
    {"ssh -L 5432:db.internal:5432 bastion.example.net\npsql -h localhost -U app orders",
        ClipboardItemType::Text, "Text Editor", 20, true},
    {"https://docs.example.org/guides/clipboard?section=selections#owners", ClipboardItemType::Url,
        "Web Browser", 250},
    {"/home/ann/Pictures/screenshot-harbour.png", ClipboardItemType::Image, "Screenshot", 7500},
    {"SELECT id, total FROM orders WHERE paid_at IS NULL\nORDER BY created_at DESC LIMIT 20;",
        ClipboardItemType::Text, "Terminal", 90000},
    {"/home/ann/Documents/report-of-the-third-quarter.pdf", ClipboardItemType::File, "Files", 190000},
    {"Dear all,\n\nplease find below what we agreed on. The harbour opens on Monday; until then the boats "
     "stay where "
     "they are, and nobody sails. There is more to say, but not in four lines of a card, which is all that "
     "there is "
     "for it, however long the letter may be in the end, as it is with letters of this kind.\nYours\nAnn",
        ClipboardItemType::RichText, "Mail", 300000},
    {"مرحبا بالعالم\nهذا نص من اليمين إلى اليسار", ClipboardItemType::Text, nullptr, 700000},
    {"Image (24 KB)", ClipboardItemType::Image, "An application with a very long name indeed", 8000000},
    {"\x01\x02tab\there\x1b[31m "
     "Z\xcc\xb4\xcc\xb5\xcc\xb6\xcc\x80\xcc\x81\xcc\x82\xcc\x83\xcc\x84\xcc\x85\xcc\x86"
     "algo \xe2\x80\xaegpj.exe\r\nnext",
        ClipboardItemType::Text, "odd", 40},
};

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
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return bytes;
}

void fill(ModelContext &context, int copies)
{
    auto category = std::make_shared<ClipCategory>(
        QStringLiteral("Work"), QStringLiteral("#E84855"), QStringLiteral("tag.fill"), 0, false);
    context.insert(category);
    for (int copy = 0; copy < copies; ++copy) {
        for (const Sample &sample : Samples) {
            FixedClock clock;
            clock.advanceBy(-1000 * (sample.secondsAgo + copy * 10'000'000));
            const bool isImage = sample.type == ClipboardItemType::Image;
            auto item = std::make_shared<ClipboardItem>(sample.content, sample.type,
                isImage ? std::optional(harbour()) : std::nullopt,
                sample.sourceApp ? std::optional(QString::fromUtf8(sample.sourceApp)) : std::nullopt,
                std::nullopt, sample.isPinned && copy == 0, clock);
            if (sample.secondsAgo == 300000)
                item->setCategoryId(category->id());
            context.insert(item);
        }
    }
    (void)context.save();
}

void setDark(bool isDark)
{
    QPalette palette;
    palette.setColor(QPalette::Window, isDark ? QColor(0x20, 0x20, 0x24) : QColor(0xf0, 0xf0, 0xf0));
    QGuiApplication::setPalette(palette);
}

void moveMouse(QQuickWindow &window, const QPointF &place)
{
    QMouseEvent move(
        QEvent::MouseMove, place, window.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &move);
}

/// Runs the event loop for what moves and for pictures that are on their way.
void settle(std::chrono::milliseconds time)
{
    (void)waitUntil([] { return false; }, time);
}

QImage shot(QQuickView &view)
{
    settle(std::chrono::milliseconds(900));
    return view.grabWindow();
}

/// What this thread has computed so far, in milliseconds; what others do on the machine does not count.
double computed()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

void measure(QQuickView &view)
{
    std::vector<double> times;
    double begun = 0;
    // From the animations' step on to the finished frame.
    QObject::connect(
        &view, &QQuickWindow::afterAnimating, &view, [&begun] { begun = computed(); }, Qt::DirectConnection);
    QObject::connect(
        &view, &QQuickWindow::afterRendering, &view, [&] { times.push_back(computed() - begun); },
        Qt::DirectConnection);
    for (int index = 0; index < 60; ++index) {
        view.rootObject()->setProperty("selectedIndex", index);
        settle(std::chrono::milliseconds(200));
    }
    std::sort(times.begin(), times.end());
    const auto at = [&times](double share) { return times[size_t(share * double(times.size() - 1))]; };
    std::printf("%zu frames: median %.2f ms, 95%% %.2f ms, 99%% %.2f ms, longest %.2f ms\n", times.size(),
        at(0.5), at(0.95), at(0.99), times.back());
}

} // namespace

int main(int argumentCount, char **arguments)
{
    // As the program does.
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argumentCount, arguments);
    if (argumentCount < 2) {
        std::fputs("usage: row_sheet <folder>|--measure\n", stderr);
        return 2;
    }
    QIcon::setThemeName(QStringLiteral("Adwaita"));
    registerHistoryModule();
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("larkspool/larkspool.sqlite"));
    auto container = ModelContainer::open(path);
    const QString target = QString::fromLocal8Bit(arguments[1]);
    const bool isMeasure = target == QStringLiteral("--measure");
    fill(container.value()->mainContext(), isMeasure ? 10 : 1);
    const FixedClock clock;
    HistoryListModel rows(container.value()->mainContext(), clock);
    QQuickView view;
    view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    installSymbols(*view.engine());
    installRowPictures(*view.engine(), rows, path);
    setDark(true);
    view.setInitialProperties({{QStringLiteral("rows"), QVariant::fromValue(&rows)}});
    view.setSource(QUrl::fromLocalFile(QStringLiteral(ROW_SHEET)));
    view.show();
    if (isMeasure) {
        settle(std::chrono::milliseconds(1000));
        measure(view);
        return 0;
    }
    for (const bool isDark : {true, false}) {
        setDark(isDark);
        const QString name = target + (isDark ? QStringLiteral("/dark-") : QStringLiteral("/light-"));
        view.rootObject()->setProperty("selectedIndex", 0);
        moveMouse(view, {600, 240});
        shot(view).save(name + QStringLiteral("first.png"));
        view.rootObject()->setProperty("selectedIndex", 5);
        shot(view).save(name + QStringLiteral("middle.png"));
        view.rootObject()->setProperty("selectedIndex", 8);
        shot(view).save(name + QStringLiteral("last.png"));
    }
    return 0;
}
