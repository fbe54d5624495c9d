import QtQuick
import Larkspool.History

/// The combine panel's state as a card.
CombinePanelCard {
    id: root

    /// It may end before the card does, which then shows nothing.
    required property CombinePanel panel

    title: panel?.title ?? ""
    templateNames: panel?.templates ?? null
    highlightedIndex: panel?.effectiveTemplateIndex ?? -1
    preview: panel?.previewBeginning ?? ""
    isPreviewShortened: panel?.isPreviewShortened ?? false

    onChoose: index => root.panel.selectedTemplateIndex = index
    onPaste: root.panel.paste()
    onCancel: root.panel.cancel()
}
