import QtQuick
import QtTest
import Larkspool.History
import Larkspool.Style

TestCase {
    id: testCase

    name: "ClipboardItemRow"
    when: windowShown
    width: 700
    height: 400
    visible: true

    Component {
        id: rowComponent

        ClipboardItemRow {
            x: 40
            y: 40
            width: 500
            index: 0
            preview: "ssh bastion"
            title: ""
            folder: ""
            pixelSize: ""
            picture: ""
            typeName: "text"
            categoryColor: "transparent"
            icon: "doc.text"
            label: "TEXT"
            age: "now"
            sourceApp: "Text Editor"
            isPinned: false
        }
    }

    SignalSpy {
        id: pins

        signalName: "pin"
    }

    SignalSpy {
        id: removals

        signalName: "remove"
    }

    SignalSpy {
        id: selections

        signalName: "select"
    }

    SignalSpy {
        id: pastes

        signalName: "paste"
    }

    function init() {
        failOnWarning(/.?/)
        // Away from every row.
        mouseMove(testCase, 690, 390)
        Theme.animated = true
    }

    function makeRow(properties) {
        const row = createTemporaryObject(rowComponent, testCase, properties ?? {})
        for (const spy of [pins, removals, selections, pastes]) {
            spy.target = row
            spy.clear()
        }
        return row
    }

    /// Every item below another one that can be seen and of which the condition holds.
    function seen(item, condition) {
        let found = []
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i]
            if (!child.visible)
                continue
            if (condition(child))
                found.push(child)
            found = found.concat(seen(child, condition))
        }
        return found
    }

    function one(item, condition) {
        const found = seen(item, condition)
        compare(found.length, 1)
        return found[0]
    }

    function isOf(type) {
        return item => item.toString().startsWith(type + "_") || item.toString().startsWith(type + "(")
    }

    function texts(row) {
        return seen(row, item => item.font !== undefined && item.text !== "")
    }

    function words(row) {
        return texts(row).map(text => text.text)
    }

    function textOf(row, words) {
        return one(row, item => item.font !== undefined && item.text === words)
    }

    function button(row, name) {
        return one(row, item => item.Accessible.role === Accessible.Button && item.Accessible.name === name)
    }

    function card(row) {
        return one(row, isOf("CardFace")).parent
    }

    /// Where an item is on the card, whatever the card is scaled by.
    function place(row, item) {
        return item.mapToItem(card(row), 0, 0, item.width, item.height)
    }

    function centre(item) {
        return item.mapToItem(testCase, item.width / 2, item.height / 2)
    }

    // Layout

    function test_isAsHighAsEveryOther() {
        compare(makeRow().height, 130)
    }

    function test_showsPreviewKindAgeAndSource() {
        compare(words(makeRow()).sort(), ["TEXT", "Text Editor", "now", "ssh bastion"].sort())
    }

    function test_theSourceIsLeftOutWhenItIsNotKnown() {
        compare(words(makeRow({sourceApp: ""})).sort(), ["TEXT", "now", "ssh bastion"].sort())
    }

    function test_theFaceHasItsNumbers_data() {
        return [
            {tag: "plain", isSelected: false, width: 1.5, radius: 6, offset: 2, scale: 1},
            {tag: "selected", isSelected: true, width: 3, radius: 12, offset: 3, scale: 1.06}
        ]
    }

    function test_theFaceHasItsNumbers(data) {
        const row = makeRow({isSelected: data.isSelected, selectionColor: "#00c0ff"})
        const face = one(row, isOf("CardFace"))
        compare(place(row, face), Qt.rect(0, 0, 500, 130))
        compare(face.radius, 14)
        compare(face.sidebarWidth, 76)
        compare(face.borderWidth, data.width)
        compare(face.shadowRadius, data.radius)
        compare(face.shadowOffset, data.offset)
        fuzzyCompare(face.shadowColor.a, 0.3, 0.005)
        compare(face.borderColor, data.isSelected ? Qt.color("#00c0ff") : Qt.rgba(0.5, 0.5, 0.5, 0.3))
        compare(Qt.alpha(face.shadowColor, 1), Qt.color(data.isSelected ? "#00c0ff" : "black"))
        fuzzyCompare(card(row).scale, data.scale, 1e-6)
    }

    function test_theBarHasItsPlaces() {
        const row = makeRow()
        const badge = one(row, item => isOf("RoundedBox")(item) && item.width === 32)
        compare(place(row, badge), Qt.rect(22, 10, 32, 32))
        compare(badge.radius, 16)
        const label = textOf(row, "TEXT")
        compare(place(row, label).y, 47)
        compare(label.font.pixelSize, 8)
        compare(label.font.bold, true)
        const age = textOf(row, "now")
        const source = textOf(row, "Text Editor")
        compare([age.font.pixelSize, age.font.weight, source.font.pixelSize], [9, Font.Medium, 7])
        fuzzyCompare(place(row, source).y + source.height, 120, 0.01)
        fuzzyCompare(place(row, age).y + age.height, place(row, source).y - 5, 0.01)
        for (const text of [label, age, source]) {
            compare(place(row, text).x, 4)
            compare(text.width, 68)
            compare(text.horizontalAlignment, Text.AlignHCenter)
        }
    }

    function test_aPreviewHasItsTypeface_data() {
        return [
            {tag: "text", family: Theme.monospaced, size: 13, lines: 4, color: Theme.primaryText},
            {tag: "richText", family: Theme.monospaced, size: 13, lines: 4, color: Theme.primaryText},
            {tag: "url", family: Theme.interfaceFont, size: 12, lines: 3, color: Theme.link}
        ]
    }

    function test_aPreviewHasItsTypeface(data) {
        const row = makeRow({typeName: data.tag})
        const preview = textOf(row, "ssh bastion")
        compare(preview.font.family, data.family)
        compare(preview.font.pixelSize, data.size)
        compare(preview.maximumLineCount, data.lines)
        compare(preview.color, data.color)
        compare(place(row, preview).x, 76 + 14)
        compare(place(row, preview).y, 12)
        compare(preview.width, 500 - 76 - 2 * 14)
    }

    function test_showsNameAndFolderOfAFile() {
        const row = makeRow({typeName: "file", title: "report.pdf", folder: "/home/ann", preview: "/home/ann/report.pdf"})
        verify(!words(row).includes("/home/ann/report.pdf"))
        const name = textOf(row, "report.pdf")
        compare([name.font.pixelSize, name.font.weight], [13, Font.DemiBold])
        compare(textOf(row, "/home/ann").font.pixelSize, 10)
        // 40 for the icon.
        compare(place(row, name).x, 76 + 14 + 40 + 12)
    }

    function test_showsNameFolderAndSizeOfAnImage() {
        const row = makeRow({
            typeName: "image", title: "harbour.png", folder: "/home/ann", pixelSize: "1920×1080",
            picture: "image://symbol/photo"
        })
        const picture = one(row, item => isOf("QQuickImage")(item) && item.width === 80)
        compare(place(row, picture), Qt.rect(90, 12, 80, 80))
        const name = textOf(row, "harbour.png")
        const folder = textOf(row, "/home/ann")
        const size = textOf(row, "1920×1080")
        compare([name.font.pixelSize, name.font.weight], [13, Font.DemiBold])
        compare(folder.font.pixelSize, 10)
        compare([size.font.pixelSize, size.font.weight], [9, Font.Medium])
        compare(place(row, name).x, 90 + 80 + 12)
        tryVerify(() => size.y > folder.y && folder.y > name.y)
        fuzzyCompare(place(row, folder).y - place(row, name).y - name.height, 3, 0.01)
        fuzzyCompare(place(row, size).y - place(row, folder).y - folder.height, 3, 0.01)
        // Beside the middle of the picture.
        fuzzyCompare(place(row, name).y + place(row, size).y + size.height, 2 * (12 + 40), 1)
    }

    function test_nothingTakesThePlaceOfAPictureThatIsNotThere() {
        const row = makeRow({typeName: "image", title: "harbour.png"})
        compare(place(row, textOf(row, "harbour.png")).x, 76 + 14)
    }

    function test_anEntryOfAnotherKindIsShownInTheSameRow() {
        const row = makeRow()
        row.typeName = "file"
        row.title = "report.pdf"
        verify(words(row).includes("report.pdf"))
        verify(!words(row).includes("ssh bastion"))
        row.typeName = "url"
        verify(words(row).includes("ssh bastion"))
        verify(!words(row).includes("report.pdf"))
    }

    // Colours

    function test_theAccentIsTheKindsUnlessACategoryIsAssigned() {
        const row = makeRow({typeName: "url"})
        compare(row.accent, Theme.typeColor("url"))
        row.categoryColor = "#e84855"
        compare(row.accent, Qt.color("#e84855"))
        compare(one(row, isOf("CardFace")).sidebarColor, Theme.sidebar(Qt.color("#e84855")))
        compare(textOf(row, "TEXT").color, Qt.color("#e84855"))
    }

    /// Whether a pixel of a picture is of about a colour.
    function isColor(picture, x, y, color) {
        const near = (a, b) => Math.abs(a - 255 * b) <= 2
        return near(picture.red(x, y), color.r) && near(picture.green(x, y), color.g) && near(picture.blue(x, y), color.b)
    }

    function test_theFaceIsDrawn_data() {
        return [
            {tag: "plain", card: Theme.card, scaleFactor: 1},
            {tag: "smaller", card: Theme.card, scaleFactor: 0.96},
            {tag: "selected", isSelected: true, card: Theme.selectedCard, scaleFactor: 1 / 1.06}
        ]
    }

    function test_theFaceIsDrawn(data) {
        Theme.animated = false
        const row = makeRow({isSelected: data.isSelected ?? false, scaleFactor: data.scaleFactor, preview: ""})
        const scale = data.scaleFactor * (data.isSelected ? 1.06 : 1)
        const picture = grabImage(testCase)
        const at = (x, y) => [Math.round(40 + 250 + (x - 250) * scale), Math.round(40 + 65 + (y - 65) * scale)]
        const expectColor = (x, y, color) => verify(isColor(picture, ...at(x, y), color), `${x}, ${y}`)
        expectColor(6, 60, Theme.sidebar(row.accent))
        expectColor(72, 60, Theme.sidebar(row.accent))
        expectColor(80, 60, data.card)
        expectColor(494, 60, data.card)
        expectColor(6, 120, Theme.sidebar(row.accent))
        // Beyond the round corners there is no card.
        for (const corner of [[1, 1], [1, 129], [499, 1], [499, 129]]) {
            verify(!isColor(picture, ...at(...corner), Theme.sidebar(row.accent)), corner)
            verify(!isColor(picture, ...at(...corner), data.card), corner)
        }
        if (data.isSelected)
            verify(isColor(picture, 40 + 300, 40, Theme.selection) || isColor(picture, 40 + 300, 39, Theme.selection))
    }

    function test_theColourFollowsHoverAndSelection() {
        Theme.animated = false
        const row = makeRow()
        const face = one(row, isOf("CardFace"))
        compare(face.color, Theme.card)
        mouseMove(row, 300, 60)
        tryCompare(face, "color", Theme.hoveredCard)
        row.isSelected = true
        compare(face.color, Theme.selectedCard)
    }

    // What moves

    function test_aHoveredRowGrowsALittleAndShowsItsButtons() {
        const row = makeRow()
        verify(!row.isHovered)
        compare(seen(row, isOf("RowButton")).length, 0)
        mouseMove(row, 300, 60)
        tryCompare(row, "isHovered", true)
        tryCompare(card(row), "scale", 1.01)
        tryVerify(() => seen(row, isOf("RowButton")).length === 2)
        mouseMove(testCase, 690, 390)
        tryCompare(row, "isHovered", false)
        tryCompare(card(row), "scale", 1)
        tryVerify(() => seen(row, isOf("RowButton")).length === 0)
    }

    function test_aSelectedRowShowsItsButtons() {
        compare(seen(makeRow({isSelected: true}), isOf("RowButton")).length, 2)
    }

    function test_theButtonsComeInMovingAndGoWithoutARest() {
        const row = makeRow()
        row.isSelected = true
        const bar = one(row, isOf("RowActions")).parent
        verify(bar.opacity < 1)
        verify(bar.scale < 1 && bar.scale >= 0.8)
        tryCompare(bar, "opacity", 1)
        tryCompare(bar, "scale", 1)
        row.isSelected = false
        verify(bar.opacity > 0)
        tryVerify(() => seen(row, isOf("RowActions")).length === 0)
    }

    function test_nothingMovesWhenThingsMustNot() {
        Theme.animated = false
        compare(Theme.quick, 0)
        const row = makeRow()
        row.isSelected = true
        tryCompare(card(row), "scale", 1.06, 50)
        compare(one(row, isOf("RowActions")).parent.opacity, 1)
    }

    function test_aRowThatIsNotSeenTakesItsScaleAtOnce() {
        const row = makeRow({visible: false})
        row.isSelected = true
        row.visible = true
        fuzzyCompare(card(row).scale, 1.06, 1e-6)
    }

    function test_theListsScaleAndTheRowsOwnAreMultiplied() {
        const row = makeRow({isSelected: true, scaleFactor: 0.96})
        fuzzyCompare(card(row).scale, 0.96 * 1.06, 1e-6)
    }

    function test_aSelectedRowLiesUponItsNeighbours() {
        const plain = makeRow()
        const selected = makeRow({isSelected: true})
        verify(selected.z > plain.z)
    }

    // What the user does

    function test_aClickSelectsAndThenPastes() {
        const row = makeRow()
        let order = []
        row.select.connect(() => order.push("select"))
        row.paste.connect(() => order.push("paste"))
        mouseClick(row, 300, 60)
        compare(order, ["select", "paste"])
        compare(pins.count + removals.count, 0)
    }

    function test_theWholeCardCanBeClicked_data() {
        return [{x: 2, y: 65}, {x: 38, y: 26}, {x: 498, y: 65}, {x: 250, y: 2}, {x: 250, y: 128}]
            .map(place => ({tag: `${place.x}, ${place.y}`, x: place.x, y: place.y}))
    }

    function test_theWholeCardCanBeClicked(data) {
        const row = makeRow()
        mouseClick(row, data.x, data.y)
        compare([selections.count, pastes.count], [1, 1])
    }

    function test_aClickTellsTheKeysThatAreHeld() {
        const row = makeRow()
        mouseClick(row, 300, 60, Qt.LeftButton, Qt.ControlModifier)
        compare(selections.signalArguments[0][0], Qt.ControlModifier)
        mouseClick(row, 300, 60)
        compare(selections.signalArguments[1][0], Qt.NoModifier)
    }

    function test_aButtonIsNotAClickOnTheCard_data() {
        return [
            {tag: "Pin", isPinned: false, spy: pins},
            {tag: "Unpin", isPinned: true, spy: pins},
            {tag: "Delete", isPinned: false, spy: removals}
        ]
    }

    function test_aButtonIsNotAClickOnTheCard(data) {
        const row = makeRow({isSelected: true, isPinned: data.isPinned})
        mouseClick(button(row, data.tag))
        compare(pins.count + removals.count, 1)
        compare(data.spy.count, 1)
        compare(selections.count + pastes.count, 0)
    }

    function test_theButtonsHaveTheirPlaces() {
        const row = makeRow({isSelected: true, isPinned: true})
        const bottom = 130 - 8 - 24
        compare(place(row, button(row, "Delete")), Qt.rect(500 - 14 - 24, bottom, 24, 24))
        compare(place(row, button(row, "Unpin")), Qt.rect(500 - 14 - 24 - 6 - 24, bottom, 24, 24))
    }

    function test_thePinIsMarkedOnlyOfAPinnedEntryAndOnlyWithTheButtons() {
        const isMarker = item => isOf("CardSymbol")(item) && item.name === "pin.fill"
        const row = makeRow({isPinned: true})
        compare(seen(row, isMarker).length, 0)
        row.isSelected = true
        compare(seen(row, isMarker).length, 1)
        row.isPinned = false
        compare(seen(row, isMarker).length, 0)
    }

    function test_aNoticeIsSaidBesideTheButtonsWhileTheEntryIsSelected() {
        const isNotice = item => item.text === "It is too large."
        Theme.animated = false
        const row = makeRow({notice: "It is too large."})
        compare(seen(row, isNotice).length, 0)
        row.isSelected = true
        compare(seen(row, isNotice).length, 1)
        compare(place(row, seen(row, isNotice)[0]).x, 76 + 14)
        row.isPinned = true
        const marker = seen(row, item => isOf("CardSymbol")(item) && item.name === "pin.fill")[0]
        verify(place(row, seen(row, isNotice)[0]).x > place(row, marker).x + place(row, marker).width)
    }

    function test_aLongNoticeEndsBeforeTheButtons() {
        Theme.animated = false
        const row = makeRow({isSelected: true, notice: "Dieser Eintrag ist zu lang. ".repeat(10)})
        const notice = place(row, seen(row, item => item.text === row.notice)[0])
        verify(notice.x + notice.width < place(row, button(row, "Pin")).x)
    }

    function test_oneOfSeveralChosenOnesIsMarkedWhereNoTextIs() {
        const isMark = isOf("SelectionMark")
        const row = makeRow()
        compare(seen(row, isMark).length, 0)
        row.isMultiSelected = true
        const mark = place(row, seen(row, isMark)[0])
        verify(mark.x + mark.width > 500)
        verify(mark.y < 0)
        const text = place(row, seen(row, item => item.text === "ssh bastion")[0])
        verify(mark.x > text.x + text.width - 4 || mark.y + mark.height <= text.y + 4)
    }

    function test_aToolTipComesWithTheMouseAndGoesWithIt() {
        const row = makeRow({isSelected: true})
        const point = centre(button(row, "Delete"))
        mouseMove(testCase, point.x, point.y)
        verify(!words(row).includes("Delete"))
        tryVerify(() => words(row).includes("Delete"))
        const tip = textOf(row, "Delete").parent
        tryCompare(tip, "opacity", 1)
        const shown = place(row, tip)
        verify(shown.x >= 0 && shown.x + shown.width <= 500 && shown.y >= 0)
        mouseMove(testCase, 690, 390)
        tryVerify(() => !words(row).includes("Delete"))
    }

    // A screen reader

    function test_isNamedByItsPreviewForAScreenReader() {
        const row = makeRow()
        compare(row.Accessible.name, "ssh bastion")
        compare(row.Accessible.description, "TEXT, now, Text Editor")
        compare(row.Accessible.role, Accessible.ListItem)
        compare(row.Accessible.selected, false)
        row.isSelected = true
        compare(row.Accessible.selected, true)
        row.preview = ""
        compare(row.Accessible.name, "TEXT")
    }

    function test_aScreenReaderPressesItAsAClickDoes() {
        const row = makeRow({isSelected: true})
        row.Accessible.pressAction()
        compare([selections.count, pastes.count], [1, 1])
        button(row, "Pin").Accessible.pressAction()
        button(row, "Delete").Accessible.pressAction()
        compare([pins.count, removals.count, selections.count], [1, 1, 1])
    }

    // Odd texts

    function test_markupIsShownAsItIs() {
        const markup = "<b>bold</b><img src='x'>"
        const row = makeRow({preview: markup, label: markup, age: markup, sourceApp: markup})
        for (const text of texts(row)) {
            compare(text.text, markup)
            compare(text.textFormat, Text.PlainText)
        }
        compare(texts(row).length, 4)
        row.typeName = "image"
        row.title = row.folder = row.pixelSize = markup
        compare(texts(row).filter(text => text.text === markup && text.textFormat === Text.PlainText).length, 6)
    }

    function test_everyTextStaysInItsPlace_data() {
        const tower = "Z" + "\u0301\u0323".repeat(300)
        const texts = {
            long: "n".repeat(500), lines: "line\n".repeat(5), words: "some words ".repeat(60), wide: "\uFDFD".repeat(200),
            arabic: "مرحبا بالعالم ".repeat(40), tower: tower.repeat(4), emoji: "👩‍👩‍👧‍👦".repeat(100), tabs: "\t".repeat(300),
            symbols: "␀".repeat(600)
        }
        let rows = []
        for (const [tag, text] of Object.entries(texts)) {
            for (const typeName of ["text", "url", "file", "image"])
                rows.push({tag: `${tag} of ${typeName}`, text: text, typeName: typeName})
        }
        return rows
    }

    function test_everyTextStaysInItsPlace(data) {
        const row = makeRow({
            typeName: data.typeName, preview: data.text, title: data.text, folder: data.text, pixelSize: "30000×30000",
            label: data.text, age: "28/11/2025", sourceApp: data.text, isSelected: true
        })
        const actions = place(row, one(row, isOf("RowActions")))
        for (const text of texts(row)) {
            const shown = place(row, text)
            const isInBar = shown.x < 76
            verify(shown.x >= (isInBar ? 4 : 76 + 14), `left: ${shown.x}`)
            // An elided line may be longer than told by the part of a letter.
            verify(shown.x + Math.max(shown.width, text.contentWidth) <= (isInBar ? 72 : 486) + 2, `right: ${text.contentWidth}`)
            verify(shown.y >= 10, `top: ${shown.y}`)
            if (!isInBar)
                verify(shown.y + shown.height <= actions.y, `bottom: ${shown.height}`)
        }
        // What a letter draws beyond its line ends at the card.
        verify(one(row, isOf("CardSidebar")).parent.clip)
    }

    function test_aTextThatRunsFromTheRightIsAtTheRight_data() {
        return [
            {tag: "arabic", text: "مرحبا بالعالم", isRight: true},
            {tag: "hebrew", text: "שלום (עולם)", isRight: true},
            {tag: "latin", text: "hello", isRight: false},
            {tag: "digits first", text: "12 مرحبا", isRight: true},
            {tag: "latin first", text: "hello مرحبا", isRight: false}
        ]
    }

    function test_aTextThatRunsFromTheRightIsAtTheRight(data) {
        const row = makeRow({preview: data.text})
        const expected = data.isRight ? Text.AlignRight : Text.AlignLeft
        compare(textOf(row, data.text).effectiveHorizontalAlignment, expected)
        row.typeName = "file"
        row.title = data.text
        compare(textOf(row, data.text).effectiveHorizontalAlignment, expected)
    }
}
