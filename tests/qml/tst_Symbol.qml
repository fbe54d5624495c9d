import QtQuick
import QtTest
import Larkspool.Style

TestCase {
    id: testCase

    name: "Symbol"
    when: windowShown
    width: 100
    height: 100
    visible: true

    Component {
        id: symbolComponent

        Symbol {
            name: "pin.fill"
        }
    }

    /// How many pixels of a picture are of about the colour.
    function pixelsOf(picture, color) {
        let count = 0
        for (let y = 0; y < picture.height; ++y) {
            for (let x = 0; x < picture.width; ++x) {
                const near = (a, b) => Math.abs(a - 255 * b) < 3
                if (near(picture.red(x, y), color.r) && near(picture.green(x, y), color.g)
                        && near(picture.blue(x, y), color.b))
                    ++count
            }
        }
        return count
    }

    function init() {
        failOnWarning(/.?/)
    }

    function test_isOfTheColourOfTextUnlessToldOtherwise() {
        const symbol = createTemporaryObject(symbolComponent, testCase)
        compare(symbol.color, Theme.primaryText)
        compare(symbol.status, Image.Ready)
    }

    function test_isAsLargeAsAskedFor_data() {
        return [9, 10, 13, 15, 16, 17, 20, 32].map(size => ({tag: size, size: size}))
    }

    function test_isAsLargeAsAskedFor(data) {
        const symbol = createTemporaryObject(symbolComponent, testCase, {size: data.size})
        compare(symbol.width, data.size)
        compare(symbol.height, data.size)
        compare(symbol.sourceSize, Qt.size(data.size, data.size))
    }

    function test_isShownInItsColourAndInTheNextOne() {
        const symbol = createTemporaryObject(symbolComponent, testCase, {size: 32, color: "#ff8c00"})
        const orange = Qt.color("#ff8c00")
        verify(pixelsOf(grabImage(symbol), orange) > 50)
        symbol.color = "#3f78f3"
        tryVerify(() => pixelsOf(grabImage(symbol), symbol.color) > 50)
        compare(pixelsOf(grabImage(symbol), orange), 0)
    }

    function test_anUnknownNameIsShownByTheStandIn_data() {
        return ["star.fill", "../Theme", "a b", "pin?#", "100%", "ümlaut", "pin/"].map(name => ({tag: name}))
    }

    function test_anUnknownNameIsShownByTheStandIn(data) {
        const standIn = createTemporaryObject(symbolComponent, testCase, {name: "app.fill", color: "red", size: 24})
        const expected = grabImage(standIn)
        standIn.name = data.tag
        compare(standIn.status, Image.Ready)
        tryVerify(() => grabImage(standIn).equals(expected))
    }

    function test_aKnownNameIsNotTheStandIn() {
        const symbol = createTemporaryObject(symbolComponent, testCase, {name: "app.fill", color: "red", size: 24})
        const standIn = grabImage(symbol)
        symbol.name = "gear"
        tryVerify(() => !grabImage(symbol).equals(standIn))
    }

    function test_anEmptyNameShowsNothing() {
        const symbol = createTemporaryObject(symbolComponent, testCase, {name: "", color: "red", size: 24})
        compare(symbol.status, Image.Null)
        compare(pixelsOf(grabImage(symbol), symbol.color), 0)
    }

    function test_aNameThatGoesTakesThePictureAlong() {
        const symbol = createTemporaryObject(symbolComponent, testCase, {color: "red", size: 24})
        verify(pixelsOf(grabImage(symbol), symbol.color) > 30)
        symbol.name = ""
        tryVerify(() => pixelsOf(grabImage(symbol), symbol.color) === 0)
    }
}
