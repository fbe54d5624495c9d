import QtQuick
import QtTest
import Larkspool.History
import Larkspool.Style

TestCase {
    id: testCase

    name: "ClipboardItemRow"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: rowComponent

        ClipboardItemRow {
            width: 500
            index: 0
            preview: "ssh bastion"
            title: ""
            folder: ""
            typeName: "text"
            typeIcon: "doc.text"
            age: "now"
            sourceApp: "Text Editor"
            isPinned: false
        }
    }

    SignalSpy {
        id: clicks

        signalName: "clicked"
    }

    /// Every text that a row shows.
    function texts(item) {
        let found = []
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i]
            if (child.visible && child.text !== undefined)
                found.push(child.text)
            found = found.concat(texts(child))
        }
        return found
    }

    function test_showsPreviewKindAgeAndSource() {
        const row = createTemporaryObject(rowComponent, testCase)
        compare(row.height, 130)
        for (const text of ["ssh bastion", "TEXT", "now", "Text Editor"])
            verify(texts(row).includes(text), text)
    }

    function test_showsNameAndFolderOfAFile() {
        const row = createTemporaryObject(rowComponent, testCase,
            {typeName: "file", typeIcon: "doc", title: "report.pdf", folder: "/home/ann", preview: "/home/ann/report.pdf"})
        verify(texts(row).includes("report.pdf"))
        verify(texts(row).includes("/home/ann"))
    }

    function test_markupInATextIsShownAsItIs() {
        const row = createTemporaryObject(rowComponent, testCase, {preview: "<b>bold</b>"})
        verify(texts(row).includes("<b>bold</b>"))
    }

    function test_isNamedByItsPreviewForAScreenReader() {
        const row = createTemporaryObject(rowComponent, testCase)
        compare(row.Accessible.name, "ssh bastion")
        compare(row.Accessible.role, Accessible.ListItem)
    }

    function test_aClickIsReported() {
        const row = createTemporaryObject(rowComponent, testCase)
        clicks.target = row
        mouseClick(row)
        compare(clicks.count, 1)
    }
}
