#include "ui/history/CombinePanel.h"

#include "ui/history/CombineText.h"
#include "ui/style/ReadingDirection.h"

#include <algorithm>

namespace
{

/// The template that is the default.
const QLatin1String NewLine("New Line");
/// The template whose texts are numbered, which templates cannot say by themselves.
const QLatin1String Numbered("Numbered");

constexpr quint16 LeftCode = 123;
constexpr quint16 RightCode = 124;

QStringList textsOf(const CombinePanel::Items &items)
{
    QStringList texts;
    texts.reserve(std::ssize(items));
    for (const auto &item : items)
        texts.append(combine::textOf(item->type(), item->contentUtf8()));
    return texts;
}

} // namespace

CombinePanel::CombinePanel(
    const Surroundings &surroundings, const Items &items, OnPaste onPaste, OnCancel onCancel)
    : m_events(surroundings.events)
    , m_queue(surroundings.queue)
    , m_itemTexts(textsOf(items))
    , m_onPaste(std::move(onPaste))
    , m_onCancel(std::move(onCancel))
    , m_templates(surroundings.modelContext)
{
    m_templates.onChanged = [this] { Q_EMIT effectiveTemplateIndexChanged(); };
}

void CombinePanel::appear()
{
    if (m_shown)
        return;
    updatePreview();
    m_shown.emplace();
    m_shown->keyMonitor =
        m_events.addKeyDownMonitor([this](const LocalKeyEvent &event) { return handleKey(event.keyCode); });
}

QString CombinePanel::title() const
{
    //: The title of the panel that makes one text of several entries.
    return tr("Combine %n items", "", static_cast<int>(m_itemTexts.size()));
}

void CombinePanel::setSelectedTemplateIndex(int index)
{
    if (index == m_selectedTemplateIndex)
        return;
    m_selectedTemplateIndex = index;
    Q_EMIT selectedTemplateIndexChanged();
    Q_EMIT effectiveTemplateIndexChanged();
    updatePreview();
}

int CombinePanel::defaultTemplateIndex() const
{
    const auto &templates = m_templates.rows();
    const auto found = std::ranges::find_if(
        templates, [](const auto &pasteTemplate) { return pasteTemplate->name() == NewLine; });
    return found == templates.end() ? 0 : static_cast<int>(found - templates.begin());
}

int CombinePanel::effectiveTemplateIndex() const
{
    return m_selectedTemplateIndex >= 0 ? m_selectedTemplateIndex : defaultTemplateIndex();
}

std::shared_ptr<PasteTemplate> CombinePanel::selectedTemplate() const
{
    return m_templates.record(effectiveTemplateIndex());
}

void CombinePanel::paste()
{
    // Copies: the panel may end meanwhile.
    const QString text = m_preview;
    if (const auto onPaste = m_onPaste)
        onPaste(text);
}

void CombinePanel::cancel()
{
    if (const auto onCancel = m_onCancel)
        onCancel();
}

void CombinePanel::updatePreview()
{
    // First, so that two long texts are not there at a time.
    m_preview.clear();
    m_preview = combined();
    m_previewBeginning = combine::beginning(m_preview, LongestBeginning, MostLineFeeds);
    Q_EMIT previewChanged();
}

QString CombinePanel::combined() const
{
    const auto selected = selectedTemplate();
    if (!selected)
        return m_itemTexts.join(QLatin1Char('\n'));
    return selected->name() == Numbered ? combine::numbered(m_itemTexts) : selected->combine(m_itemTexts);
}

LocalEventFate CombinePanel::handleKey(quint16 keyCode)
{
    struct Key {
        quint16 code;
        void (CombinePanel::*action)();
    };
    static constexpr Key Keys[] = {
        {36, &CombinePanel::paste},  // Return
        {53, &CombinePanel::cancel}, // Escape
        {RightCode, &CombinePanel::selectNextTemplate},
        {LeftCode, &CombinePanel::selectPreviousTemplate},
    };
    const quint16 code = inReadingDirection(keyCode, LeftCode, RightCode);
    const auto *const key = std::ranges::find(Keys, code, &Key::code);
    if (key == std::end(Keys))
        return LocalEventFate::PassedOn;
    // Later: what the action closes may be where the event is being handled.
    m_queue.async(m_shown->lifetime.guard([this, action = key->action] { (this->*action)(); }));
    return LocalEventFate::Consumed;
}

void CombinePanel::selectNextTemplate()
{
    if (const int count = m_templates.rowCount(); count > 0)
        setSelectedTemplateIndex((effectiveTemplateIndex() + 1) % count);
}

void CombinePanel::selectPreviousTemplate()
{
    if (const int count = m_templates.rowCount(); count > 0) {
        const int index = effectiveTemplateIndex();
        setSelectedTemplateIndex(index >= 1 ? index - 1 : count - 1);
    }
}
