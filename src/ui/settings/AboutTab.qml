import QtQuick
import Larkspool.Settings
import Larkspool.Style

Item {
    id: page

    required property SettingsView view

    Column {
        anchors.centerIn: parent
        width: page.width - 2 * SettingsTheme.margin
        spacing: 8

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 100
            height: 112

            Image {
                id: icon

                width: 100
                height: 100
                source: "qrc:/larkspool/AppIcon.svg"
                sourceSize.width: 100
                sourceSize.height: 100

                Accessible.role: Accessible.Graphic
                Accessible.name: "Larkspool"
            }

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                y: 10
                visible: icon.status === Image.Error
                name: "clipboard.fill"
                size: 80
                color: SettingsTheme.accent
            }
        }

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Larkspool"
            color: Theme.primaryText
            font.pixelSize: 22
            font.weight: Font.Bold

            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            //: %1 is a number such as 1.0.0.
            text: qsTr("Version %1").arg(Qt.application.version)
            color: Theme.secondaryText
            font.pixelSize: SettingsTheme.formText

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            bottomPadding: 10
            text: qsTr("A modern clipboard history manager for macOS")
            color: Theme.secondaryText
            font.pixelSize: SettingsTheme.formText
            wrapMode: Text.Wrap

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 24

            LinkButton {
                label: qsTr("&Website")
                onClicked: page.view.openWebsite()
            }

            LinkButton {
                label: qsTr("&Privacy Policy")
                onClicked: page.view.openPrivacyPolicy()
            }
        }
    }
}
