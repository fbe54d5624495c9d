#pragma once

#include "base/Lifetime.h"
#include "base/MainQueue.h"
#include "platform/LocalEvents.h"
#include "ui/history/TemplateListModel.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

/// Combines entries into one text by a template that the user chooses, and shows beforehand what comes of it.
/// Main thread only.
///
/// 1. It is made with the entries; their texts are read then, and not again.
/// 2. `appear` makes the preview and starts to listen to keys.
/// 3. `disappear`, or its end, stops listening. What a key has started and not finished is dropped.
///
/// Both callbacks may end the panel.
class CombinePanel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the history view")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(TemplateListModel *templates READ templates CONSTANT)
    Q_PROPERTY(int selectedTemplateIndex READ selectedTemplateIndex WRITE setSelectedTemplateIndex NOTIFY
            selectedTemplateIndexChanged)
    Q_PROPERTY(int effectiveTemplateIndex READ effectiveTemplateIndex NOTIFY effectiveTemplateIndexChanged)
    Q_PROPERTY(QString previewBeginning READ previewBeginning NOTIFY previewChanged)
    Q_PROPERTY(bool isPreviewShortened READ isPreviewShortened NOTIFY previewChanged)

public:
    using Items = std::vector<std::shared_ptr<ClipboardItem>>;
    using OnPaste = std::function<void(const QString &text)>;
    using OnCancel = std::function<void()>;

    /// Views get no more of a preview than this many UTF-16 units and line feeds: as much as they lay out
    /// within a frame.
    static constexpr qsizetype LongestBeginning = 4000;
    static constexpr qsizetype MostLineFeeds = 100;

    /// What happens around it; all of it must outlive it.
    struct Surroundings {
        ModelContext &modelContext;
        LocalEvents &events;
        MainQueue &queue;
    };
    /// The entries in the order in which they are combined. The callbacks may be empty.
    CombinePanel(const Surroundings &surroundings, const Items &items, OnPaste onPaste, OnCancel onCancel);

    void appear();
    void disappear() { m_shown.reset(); }
    /// Whether it listens to keys.
    bool isShown() const { return m_shown.has_value(); }

    QString title() const;
    /// One for each entry.
    const QStringList &itemTexts() const { return m_itemTexts; }

    TemplateListModel *templates() { return &m_templates; }
    /// Negative while none has been chosen.
    int selectedTemplateIndex() const { return m_selectedTemplateIndex; }
    /// Makes the preview anew when it is another one.
    void setSelectedTemplateIndex(int index);
    /// The first template that is called "New Line", or else the first.
    int defaultTemplateIndex() const;
    /// The chosen one, or else the default.
    int effectiveTemplateIndex() const;
    /// Null when there is none with the effective index.
    std::shared_ptr<PasteTemplate> selectedTemplate() const;

    /// The combined text as it will be pasted. It stays as it is when templates change.
    const QString &preview() const { return m_preview; }
    /// What views show of it.
    const QString &previewBeginning() const { return m_previewBeginning; }
    bool isPreviewShortened() const { return m_previewBeginning.size() < m_preview.size(); }

    Q_INVOKABLE void paste();
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void selectedTemplateIndexChanged();
    void effectiveTemplateIndexChanged();
    void previewChanged();

private:
    /// What is there only while the panel is shown.
    struct Shown {
        std::unique_ptr<LocalEvents::Monitor> keyMonitor;
        Lifetime lifetime;
    };

    void updatePreview();
    QString combined() const;
    LocalEventFate handleKey(quint16 keyCode);
    void selectNextTemplate();
    void selectPreviousTemplate();

    LocalEvents &m_events;
    MainQueue &m_queue;
    const QStringList m_itemTexts;
    OnPaste m_onPaste;
    OnCancel m_onCancel;
    TemplateListModel m_templates;
    int m_selectedTemplateIndex = -1;
    QString m_preview;
    QString m_previewBeginning;
    std::optional<Shown> m_shown;
};
