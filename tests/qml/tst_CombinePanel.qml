import QtQuick
import QtTest
import Larkspool.History
import Larkspool.Style

TestCase {
    id: testCase

    name: "CombinePanel"
    when: windowShown
    width: 640
    height: 600
    visible: true

    ListModel {
        id: templates
    }

    Component {
        id: cardComponent

        CombinePanelCard {
            title: "Combine 3 items"
            templateNames: templates
            highlightedIndex: 1
            preview: "eggs\noat milk\ntwo lemons"
        }
    }

    SignalSpy {
        id: choices

        signalName: "choose"
    }

    SignalSpy {
        id: pastes

        signalName: "paste"
    }

    SignalSpy {
        id: cancels

        signalName: "cancel"
    }

    function init() {
        failOnWarning(/.?/)
        offer(["Comma", "New Line", "Space"])
    }

    function offer(names) {
        templates.clear()
        for (const name of names)
            templates.append({name: name})
    }

    /// A card that is laid out.
    function makeCard(properties) {
        const card = createTemporaryObject(cardComponent, testCase, properties)
        for (const spy of [choices, pastes, cancels]) {
            spy.target = card
            spy.clear()
        }
        waitForRendering(card)
        return card
    }

    /// Every item in the card that the condition holds of, in order.
    function items(item, condition) {
        let found = condition(item) ? [item] : []
        for (let i = 0; i < item.children.length; ++i) {
            if (item.children[i].visible)
                found = found.concat(items(item.children[i], condition))
        }
        return found
    }

    function withRole(card, role) {
        return items(card, item => item.Accessible.role === role)
    }

    function named(card, name) {
        return items(card, item => item.Accessible.name === name && item.Accessible.role === Accessible.Button)[0]
    }

    function chips(card) {
        return withRole(card, Accessible.Button).filter(button => button.Accessible.checkable)
    }

    function showing(card, text) {
        return items(card, item => item.text === text && item.font !== undefined)[0]
    }

    function preview(card) {
        return items(card, item => item instanceof TextEdit)[0]
    }

    /// The nearest view around an item that scrolls.
    function scroller(item) {
        let around = item.parent
        while (!(around instanceof Flickable))
            around = around.parent
        return around
    }

    /// Whether nothing of the item is outside the other one.
    function isInside(item, other) {
        const corner = item.mapToItem(other, 0, 0)
        return corner.x >= 0 && corner.y >= 0 && corner.x + item.width <= other.width
                && corner.y + item.height <= other.height
    }

    // What it shows

    function test_showsTitleHelpTemplatesPreviewAndButtons() {
        const card = makeCard()
        compare(card.width, 560)
        for (const text of ["Combine 3 items", "← → templates  |  ↩ Paste  |  Esc Cancel", "Comma", "New Line", "Space",
                "eggs\noat milk\ntwo lemons", "Cancel", "Paste ↩"])
            verify(showing(card, text), text)
    }

    function test_theSizesOfTheText_data() {
        return [
            {tag: "Combine 3 items", size: 13}, {tag: "← → templates  |  ↩ Paste  |  Esc Cancel", size: 9},
            {tag: "Comma", size: 11}, {tag: "eggs\noat milk\ntwo lemons", size: 11}, {tag: "Cancel", size: 12},
            {tag: "Paste ↩", size: 12}
        ]
    }

    function test_theSizesOfTheText(data) {
        compare(showing(makeCard(), data.tag).font.pixelSize, data.size)
    }

    function test_everythingIsInsideTheCardAndNothingOverlaps() {
        const card = makeCard()
        const parts = [showing(card, card.title)].concat(chips(card), [preview(card), named(card, "Cancel")])
        for (const part of parts)
            verify(isInside(part, card), part)
        const bottom = item => item.mapToItem(card, 0, item.height).y
        const top = item => item.mapToItem(card, 0, 0).y
        for (let i = 1; i < parts.length; ++i)
            verify(top(parts[i]) >= bottom(parts[i - 1]) || top(parts[i]) === top(parts[i - 1]))
    }

    function test_aBrightRingIsAroundTheFill() {
        const card = makeCard({x: 40, y: 40})
        const picture = grabImage(testCase)
        const middle = 40 + Math.floor(card.height / 2)
        const bottom = 40 + Math.round(card.height)
        // The line lies on the edge: there is some of it on both sides.
        for (const [x, y] of [[39, middle], [40, middle], [599, middle], [600, middle], [300, 39], [300, 40],
                [300, bottom - 1], [300, bottom]])
            compare(`${picture.pixel(x, y)} at ${x}, ${y}`, `#ff8c00 at ${x}, ${y}`)
        compare(`${picture.pixel(48, middle)}`, `${Theme.combineFill}`)
        compare(`${picture.pixel(300, 44)}`, `${Theme.combineFill}`)
    }

    function test_aGlowIsAroundTheCard() {
        const card = makeCard({x: 40, y: 40})
        const picture = grabImage(testCase)
        const paper = picture.blue(1, 1)
        const middle = 40 + Math.floor(card.height / 2)
        const bottom = 40 + Math.round(card.height)
        const strength = (x, y) => Math.abs(picture.blue(x, y) - paper)
        verify(strength(36, middle) > 10)
        verify(strength(603, middle) > 10)
        // It lies a little below the card.
        verify(strength(300, bottom + 4) > strength(300, 35))
        verify(strength(300, 35) > 0)
        // It ends softly.
        verify(strength(20, middle) <= 2)
        compare(strength(5, middle), 0)
    }

    function test_markupIsShownAsItIs() {
        offer(["<b>bold</b>"])
        const card = makeCard({preview: "<i>slanted</i>", title: "<u>under</u>"})
        for (const text of ["<b>bold</b>", "<i>slanted</i>", "<u>under</u>"])
            verify(showing(card, text), text)
        compare(preview(card).length, "<i>slanted</i>".length)
    }

    // Templates

    function test_theHighlightedTemplateIsOrangeAndWhite() {
        const card = makeCard()
        compare(chips(card).map(chip => Qt.colorEqual(chip.color, "#ff8c00")), [false, true, false])
        verify(Qt.colorEqual(showing(card, "New Line").color, "white"))
        card.highlightedIndex = 2
        compare(chips(card).map(chip => Qt.colorEqual(chip.color, "#ff8c00")), [false, false, true])
        verify(!Qt.colorEqual(showing(card, "New Line").color, "white"))
    }

    function test_aClickOnATemplateChoosesIt() {
        const card = makeCard()
        mouseClick(chips(card)[2])
        mouseClick(chips(card)[0])
        compare(choices.count, 2)
        compare(choices.signalArguments.map(list => list[0]), [2, 0])
    }

    function test_templatesWrap() {
        offer(Array.from({length: 20}, (_, i) => "Template " + i))
        const card = makeCard()
        const rows = new Set(chips(card).map(chip => chip.y))
        verify(rows.size > 1)
        for (const chip of chips(card))
            verify(isInside(chip, card), chip.Accessible.name)
    }

    function test_templatesThatHaveRoomDoNotScroll() {
        offer(Array.from({length: 20}, (_, i) => "Template " + i))
        for (const index of [19, 0, 12]) {
            const card = makeCard({highlightedIndex: index})
            const view = scroller(chips(card)[0])
            verify(view.contentHeight <= view.height)
            compare(view.contentY, 0)
        }
    }

    function test_manyTemplatesScrollAndTheHighlightedOneIsInSight() {
        offer(Array.from({length: 300}, (_, i) => "Template " + i))
        const card = makeCard({highlightedIndex: 299})
        verify(card.height < 500)
        const view = scroller(chips(card)[0])
        verify(view.contentHeight > view.height)
        for (const index of [299, 0, 150, 151, 299]) {
            card.highlightedIndex = index
            verify(isInside(chips(card)[index], view), index)
        }
    }

    function test_aLongNameIsShownWhole() {
        const name = "A name that goes on ".repeat(12).trim()
        offer(["Short", name, "x".repeat(150)])
        const card = makeCard()
        for (const chip of chips(card)) {
            const label = items(chip, item => item.text === chip.Accessible.name)[0]
            verify(isInside(chip, chip.parent))
            verify(isInside(label, chip))
            verify(label.contentWidth <= label.width)
            verify(!label.truncated)
        }
        verify(showing(card, name).lineCount > 1)
    }

    function test_withoutTemplatesThereIsNoGap() {
        const height = makeCard().height
        offer([])
        const card = makeCard({highlightedIndex: 0})
        compare(chips(card).length, 0)
        verify(card.height < height - 22)
    }

    function test_aTemplateThatComesIsShown() {
        const card = makeCard()
        templates.insert(0, {name: "Bullet List"})
        compare(chips(card).map(chip => chip.Accessible.name), ["Bullet List", "Comma", "New Line", "Space"])
    }

    // The preview

    function test_aLongPreviewScrollsInABoxOf120() {
        const card = makeCard({preview: "line\n".repeat(100)})
        const view = scroller(preview(card))
        compare(view.height, 120)
        verify(view.contentHeight > 1000)
        mouseWheel(view, 50, 50, 0, -240)
        tryVerify(() => view.contentY > 0)
    }

    function test_aShortPreviewTakesNoMoreRoomThanItNeeds() {
        const card = makeCard({preview: "eggs"})
        const view = scroller(preview(card))
        verify(view.height < 50)
        verify(isInside(preview(card), view))
    }

    function test_aLongLineWraps() {
        const card = makeCard({preview: "x".repeat(500)})
        verify(preview(card).lineCount > 1)
        verify(preview(card).contentWidth <= preview(card).width)
    }

    function test_anotherPreviewIsShownFromItsBeginning() {
        const card = makeCard({preview: "line\n".repeat(100)})
        const view = scroller(preview(card))
        view.contentY = 200
        card.preview = "other\n".repeat(100)
        compare(view.contentY, 0)
    }

    function test_theMouseSelectsInThePreview() {
        const card = makeCard()
        const text = preview(card)
        mouseDrag(text, 1, 5, 200, 0)
        compare(text.selectedText, "eggs")
    }

    function test_theMouseSelectsInAPreviewThatScrolls() {
        const card = makeCard({preview: "line\n".repeat(100)})
        const text = preview(card)
        mousePress(text, 1, 5)
        for (let y = 5; y < 60; y += 5)
            mouseMove(text, 100, y)
        mouseRelease(text, 100, 60)
        verify(text.selectedText.split("\n").length > 2, text.selectedText)
        compare(scroller(text).contentY, 0)
    }

    function test_thePreviewCannotBeEdited() {
        const text = preview(makeCard())
        text.forceActiveFocus()
        keyClick("x")
        compare(text.text, "eggs\noat milk\ntwo lemons")
    }

    function test_aShortenedPreviewSaysSo() {
        const note = card => items(card, item => item.text === "Only the beginning. All of it will be pasted.")
        compare(note(makeCard()).length, 0)
        compare(note(makeCard({isPreviewShortened: true})).length, 1)
    }

    // Buttons

    function test_theButtonsPasteAndCancel() {
        const card = makeCard()
        mouseClick(named(card, "Paste ↩"))
        compare([pastes.count, cancels.count], [1, 0])
        mouseClick(named(card, "Cancel"))
        compare([pastes.count, cancels.count], [1, 1])
        compare(choices.count, 0)
    }

    function test_whatIsBelowGetsNothing() {
        let heard = 0
        const below = Qt.createQmlObject("import QtQuick; MouseArea { anchors.fill: parent; hoverEnabled: true }", testCase)
        below.clicked.connect(() => ++heard)
        below.wheel.connect(() => ++heard)
        const card = makeCard()
        for (const [x, y] of [[5, 5], [card.width / 2, 4], [300, card.height - 20]]) {
            mouseClick(card, x, y)
            mouseWheel(card, x, y, 0, 120)
            mouseMove(card, x, y)
            verify(!below.containsMouse)
        }
        compare(heard, 0)
        below.destroy()
    }

    // Accessibility

    function test_isADialogThatIsCalledByItsTitle() {
        const card = makeCard()
        compare(card.Accessible.role, Accessible.Dialog)
        compare(card.Accessible.name, "Combine 3 items")
    }

    function test_templatesAreButtonsOfWhichOneIsChecked() {
        const card = makeCard()
        compare(chips(card).map(chip => chip.Accessible.name), ["Comma", "New Line", "Space"])
        compare(chips(card).map(chip => chip.Accessible.checked), [false, true, false])
    }

    function test_aScreenReaderPressesButtons() {
        const card = makeCard()
        chips(card)[2].Accessible.pressAction()
        named(card, "Paste ↩").Accessible.pressAction()
        named(card, "Cancel").Accessible.pressAction()
        compare([choices.count, pastes.count, cancels.count], [1, 1, 1])
        compare(choices.signalArguments[0][0], 2)
    }

    function test_thePreviewIsText() {
        const card = makeCard()
        const texts = withRole(card, Accessible.StaticText).filter(item => item.Accessible.name === card.preview)
        compare(texts.length, 1)
    }
}
