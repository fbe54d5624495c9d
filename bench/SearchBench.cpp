#include "bench/HistoryFixture.h"
#include "fakes/FakeLocalEvents.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeSystemSound.h"
#include "fakes/ManualMainQueue.h"
#include "ui/history/ClipboardHistoryView.h"

#include <benchmark/benchmark.h>

#include <QElapsedTimer>

#include <algorithm>
#include <cstring>

namespace
{

constexpr int TextCount = 10'000;
constexpr qsizetype TextSize = 1024;

/// Words of a language in which most letters are ASCII, of one in which none is, and what is typed in each:
/// found in all texts, in a few and in none.
struct Language {
    QString filler;
    QStringList searches;
};

Language language(int64_t number)
{
    if (number == 0) {
        return {QStringLiteral("The quick brown fox jumps over the lazy dog. "),
            {QStringLiteral("fox jumps"), QStringLiteral("entry 4711"), QStringLiteral("larkspur")}};
    }
    return {QStringLiteral("Съешь же ещё этих мягких французских булок. "),
        {QStringLiteral("ещё этих"), QStringLiteral("entry 4711"), QStringLiteral("жаворонок")}};
}

class Panel
{
public:
    explicit Panel(const Language &language)
        : m_history(0, 0)
        , m_view({.modelContext = m_history.context(),
                     .pasteboard = m_pasteboard,
                     .notifications = m_notifications,
                     .defaults = m_defaults,
                     .events = m_events,
                     .sound = m_sound,
                     .queue = m_queue,
                     .clock = m_clock},
              {})
    {
        for (int number = 0; number < TextCount; ++number) {
            QByteArray text = "Entry " + QByteArray::number(number) + ' ';
            while (text.size() < TextSize)
                text += language.filler.toUtf8();
            m_history.context().insert(std::make_shared<ClipboardItem>(
                text, ClipboardItemType::Text, std::nullopt, QStringLiteral("Editor"), std::nullopt, false));
        }
    }
    ModelContext &context() { return m_history.context(); }
    ClipboardHistoryView &view() { return m_view; }

private:
    History m_history;
    FakePasteboard m_pasteboard;
    UserDefaults m_defaults{QString()};
    FakeLocalEvents m_events;
    FakeSystemSound m_sound;
    ManualMainQueue m_queue;
    NotificationCenter m_notifications;
    SystemClock m_clock;
    ClipboardHistoryView m_view;
};

/// The beginnings of the searches, as a hand types them.
QStringList keystrokes(const Language &language)
{
    QStringList typed;
    for (const QString &search : language.searches) {
        for (qsizetype length = 1; length <= search.size(); ++length)
            typed.append(search.left(length));
    }
    return typed;
}

double percentile95(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() * 95 / 100];
}

double millisecondsOf(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// A keystroke of a search, to the updated list, and a plain search of memory for the same bytes in the same
/// texts, letter case as it stands: the 95th percentiles, in milliseconds, and their quotient.
void searchKeystroke(benchmark::State &state)
{
    const Language words = language(state.range(0));
    Panel panel(words);
    const auto items = panel.context().fetch<ClipboardItem>();
    const QStringList typed = keystrokes(words);
    panel.view().setSearchText(QStringLiteral("warm"));
    std::vector<double> searches;
    std::vector<double> scans;
    for (auto step : state) {
        for (const QString &text : typed) {
            QElapsedTimer timer;
            timer.start();
            panel.view().setSearchText(text);
            searches.push_back(millisecondsOf(timer));
            timer.start();
            const QByteArray bytes = text.toUtf8();
            int found = 0;
            for (const auto &item : items) {
                const QByteArrayView content = item->contentHead();
                found += memmem(content.data(), static_cast<size_t>(content.size()), bytes.constData(),
                             static_cast<size_t>(bytes.size())) != nullptr;
            }
            benchmark::DoNotOptimize(found);
            scans.push_back(millisecondsOf(timer));
        }
    }
    const double search = percentile95(searches);
    const double scan = percentile95(scans);
    state.counters["search"] = search;
    state.counters["scan"] = scan;
    state.counters["ratio"] = search / scan;
}
BENCHMARK(searchKeystroke)->Arg(0)->Arg(1)->Iterations(10);

/// The first keystroke since the panel was opened.
void firstKeystroke(benchmark::State &state)
{
    const Language words = language(state.range(0));
    Panel panel(words);
    for (auto step : state) {
        panel.view().setSearchText(words.searches.front().left(1));
        state.PauseTiming();
        panel.view().resetState();
        state.ResumeTiming();
    }
}
BENCHMARK(firstKeystroke)->Arg(0)->Arg(1)->Iterations(20)->Unit(benchmark::kMillisecond);

} // namespace
