<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AboutTab</name>
    <message>
        <source>Version %1</source>
        <extracomment>%1 is a number such as 1.0.0.</extracomment>
        <translation>Version&#xa0;%1</translation>
    </message>
    <message>
        <source>A modern clipboard history manager for macOS</source>
        <translation>Eine moderne Verwaltung für den Verlauf der Zwischenablage unter macOS</translation>
    </message>
    <message>
        <source>&amp;Website</source>
        <translation>&amp;Website</translation>
    </message>
    <message>
        <source>&amp;Privacy Policy</source>
        <translation>&amp;Datenschutzerklärung</translation>
    </message>
</context>
<context>
    <name>BackgroundPortal</name>
    <message>
        <source>Larkspool remembers what you copy from your login on.</source>
        <extracomment>Why it is to be started at login; the desktop says it when it asks the user.</extracomment>
        <translation>Larkspool merkt sich ab der Anmeldung, was kopiert wird.</translation>
    </message>
</context>
<context>
    <name>CategoryBar</name>
    <message>
        <source>← → navigate  |  Esc clear</source>
        <extracomment>Keys and what they do, in one line at the end of the categories; there is not much room. &quot;clear&quot; lets go of the category that is chosen.</extracomment>
        <translation>← → wechseln  |  Esc zurücksetzen</translation>
    </message>
</context>
<context>
    <name>CategoryColor</name>
    <message>
        <source>Blue</source>
        <extracomment>The name of a colour for a category.</extracomment>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Green</source>
        <extracomment>The name of a colour for a category.</extracomment>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Orange</source>
        <extracomment>The name of a colour for a category.</extracomment>
        <translation>Orange</translation>
    </message>
    <message>
        <source>Purple</source>
        <extracomment>The name of a colour for a category.</extracomment>
        <translation>Violett</translation>
    </message>
    <message>
        <source>Red</source>
        <extracomment>The name of a colour for a category.</extracomment>
        <translation>Rot</translation>
    </message>
    <message>
        <source>Pink</source>
        <extracomment>The name of a colour for a category.</extracomment>
        <translation>Rosa</translation>
    </message>
    <message>
        <source>Teal</source>
        <extracomment>The name of a colour for a category.</extracomment>
        <translation>Blaugrün</translation>
    </message>
    <message>
        <source>Yellow</source>
        <extracomment>The name of a colour for a category.</extracomment>
        <translation>Gelb</translation>
    </message>
    <message>
        <source>Indigo</source>
        <extracomment>The name of a colour for a category.</extracomment>
        <translation>Indigo</translation>
    </message>
    <message>
        <source>Brown</source>
        <extracomment>The name of a colour for a category.</extracomment>
        <translation>Braun</translation>
    </message>
    <message>
        <source>Mint</source>
        <extracomment>The name of a colour for a category.</extracomment>
        <translation>Minzgrün</translation>
    </message>
    <message>
        <source>Steel</source>
        <extracomment>The name of a colour for a category: a bluish grey.</extracomment>
        <translation>Stahlgrau</translation>
    </message>
</context>
<context>
    <name>CategoryForm</name>
    <message>
        <source>Name</source>
        <extracomment>The label of the field for the name of a category.</extracomment>
        <translation>Name</translation>
    </message>
    <message>
        <source>Category name</source>
        <extracomment>In an empty field in which the name is typed.</extracomment>
        <translation>Name der Kategorie</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
</context>
<context>
    <name>CategoryManager</name>
    <message>
        <source>Categories</source>
        <translation>Kategorien</translation>
    </message>
    <message>
        <source>No categories</source>
        <translation>Keine Kategorien</translation>
    </message>
    <message>
        <source>Add &amp;new category</source>
        <translation>&amp;Neue Kategorie</translation>
    </message>
    <message>
        <source>&amp;Restore Defaults</source>
        <translation>Standardkategorien &amp;wiederherstellen</translation>
    </message>
    <message>
        <source>Edit Category</source>
        <translation>Kategorie bearbeiten</translation>
    </message>
    <message>
        <source>New Category</source>
        <translation>Neue Kategorie</translation>
    </message>
</context>
<context>
    <name>CategoryName</name>
    <message>
        <source>Text</source>
        <extracomment>A category of entries that are plain text.</extracomment>
        <translation>Text</translation>
    </message>
    <message>
        <source>URL</source>
        <extracomment>A category of entries that are web addresses.</extracomment>
        <translation>URL</translation>
    </message>
    <message>
        <source>Image</source>
        <extracomment>A category of entries that are images.</extracomment>
        <translation>Bild</translation>
    </message>
    <message>
        <source>File</source>
        <extracomment>A category of entries that are files.</extracomment>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Rich Text</source>
        <extracomment>A category of entries that are text with fonts and colours.</extracomment>
        <translation>Rich-Text</translation>
    </message>
</context>
<context>
    <name>CategoryRow</name>
    <message>
        <source>Default</source>
        <extracomment>Of a category: one of those that the program has made.</extracomment>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>Nach oben verschieben</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>Nach unten verschieben</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>CategorySearchBar</name>
    <message>
        <source>Filter...</source>
        <extracomment>In an empty field in which the name of a category is typed.</extracomment>
        <translation>Filtern&#xa0;…</translation>
    </message>
    <message>
        <source>Categories</source>
        <translation>Kategorien</translation>
    </message>
</context>
<context>
    <name>ClipboardHistory</name>
    <message>
        <source>New item</source>
        <extracomment>The title of the card on which an entry is written.</extracomment>
        <translation>Neuer Eintrag</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Settings...</source>
        <translation>Einstellungen&#xa0;…</translation>
    </message>
    <message>
        <source>Clear All History</source>
        <translation>Gesamten Verlauf löschen</translation>
    </message>
    <message>
        <source>Quit Larkspool</source>
        <translation>Larkspool beenden</translation>
    </message>
</context>
<context>
    <name>ClipboardHistoryView</name>
    <message>
        <source>This entry is too large to be edited here (%1).</source>
        <translation>Dieser Eintrag ist zu groß, um hier bearbeitet zu werden (%1).</translation>
    </message>
</context>
<context>
    <name>CombinePanel</name>
    <message numerus="yes">
        <source>Combine %n items</source>
        <extracomment>The title of the panel that makes one text of several entries.</extracomment>
        <translation>
            <numerusform>%n Eintrag kombinieren</numerusform>
            <numerusform>%n Einträge kombinieren</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CombinePanelCard</name>
    <message>
        <source>← → templates  |  ↩ Paste  |  Esc Cancel</source>
        <extracomment>Keys and what they do, in one line beside the title; there is not much room.</extracomment>
        <translation>← → Vorlagen  |  ↩ einfügen  |  Esc abbrechen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Paste ↩</source>
        <extracomment>On a button; the arrow is the sign on the key that does the same.</extracomment>
        <translation>Einfügen ↩</translation>
    </message>
</context>
<context>
    <name>CombinePreview</name>
    <message>
        <source>Only the beginning. All of it will be pasted.</source>
        <translation>Nur der Anfang. Eingefügt wird alles.</translation>
    </message>
</context>
<context>
    <name>EmptyState</name>
    <message>
        <source>No items found</source>
        <translation>Keine Einträge gefunden</translation>
    </message>
    <message>
        <source>Try a different search term</source>
        <translation>Einen anderen Suchbegriff versuchen</translation>
    </message>
    <message>
        <source>Copy something to get started</source>
        <translation>Etwas kopieren, um loszulegen</translation>
    </message>
    <message>
        <source>Welcome to Larkspool!</source>
        <translation>Willkommen bei Larkspool!</translation>
    </message>
    <message>
        <source>Everything you copy appears here automatically.</source>
        <translation>Alles, was kopiert wird, erscheint hier automatisch.</translation>
    </message>
    <message>
        <source>Copy any text, URL, image, or file</source>
        <translation>Text, URLs, Bilder oder Dateien kopieren</translation>
    </message>
    <message>
        <source>Use ↑↓ arrows or scroll to navigate</source>
        <translation>Mit ↑↓ oder dem Mausrad navigieren</translation>
    </message>
    <message>
        <source>Press Enter to paste into your app</source>
        <translation>Mit der Eingabetaste in die Anwendung einfügen</translation>
    </message>
    <message>
        <source>Just start typing to search</source>
        <translation>Zum Suchen einfach lostippen</translation>
    </message>
</context>
<context>
    <name>EntryKind</name>
    <message>
        <source>text</source>
        <extracomment>The kind of an entry, on its card in capitals, where ten letters have room.</extracomment>
        <translation>Text</translation>
    </message>
    <message>
        <source>image</source>
        <extracomment>The kind of an entry, on its card in capitals, where ten letters have room.</extracomment>
        <translation>Bild</translation>
    </message>
    <message>
        <source>url</source>
        <extracomment>The kind of an entry, on its card in capitals, where ten letters have room.</extracomment>
        <translation>URL</translation>
    </message>
    <message>
        <source>file</source>
        <extracomment>The kind of an entry, on its card in capitals, where ten letters have room.</extracomment>
        <translation>Datei</translation>
    </message>
    <message>
        <source>richText</source>
        <extracomment>The kind of an entry, on its card in capitals, where ten letters have room: text with fonts and colours.</extracomment>
        <translation>Rich-Text</translation>
    </message>
</context>
<context>
    <name>FakeInputPoster</name>
    <message>
        <source>Pastes the entry that you pick</source>
        <extracomment>Why it is to send keys to other programs; the desktop may say it when it asks the user.</extracomment>
        <translation>Fügt den ausgewählten Eintrag ein</translation>
    </message>
</context>
<context>
    <name>GeneralTab</name>
    <message>
        <source>&amp;Launch at login</source>
        <translation>Bei der An&amp;meldung starten</translation>
    </message>
    <message>
        <source>Show source app &amp;name</source>
        <translation>Namen der &amp;Quellanwendung anzeigen</translation>
    </message>
    <message>
        <source>&amp;Play sound on copy</source>
        <translation>Beim Ko&amp;pieren einen Ton abspielen</translation>
    </message>
    <message>
        <source>Play clic&amp;k sound on navigation</source>
        <translation>&amp;Beim Navigieren einen Klickton abspielen</translation>
    </message>
    <message>
        <source>Selected item border color</source>
        <translation>Rahmenfarbe des ausgewählten Eintrags</translation>
    </message>
</context>
<context>
    <name>HeaderBar</name>
    <message numerus="yes">
        <source>%n items</source>
        <extracomment>How many entries are listed.</extracomment>
        <translation>
            <numerusform>%n Eintrag</numerusform>
            <numerusform>%n Einträge</numerusform>
        </translation>
    </message>
    <message>
        <source>Menu</source>
        <extracomment>A button that opens the menu, to a screen reader.</extracomment>
        <translation>Menü</translation>
    </message>
</context>
<context>
    <name>HistoryList</name>
    <message>
        <source>History</source>
        <extracomment>The list of the entries, to a screen reader.</extracomment>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Edit</source>
        <extracomment>The title of the card on which an entry is changed.</extracomment>
        <translation>Bearbeiten</translation>
    </message>
</context>
<context>
    <name>ItemEditor</name>
    <message>
        <source>↩ Save  |  ⇧↩ New line  |  Esc Cancel</source>
        <extracomment>Keys and what they do, in one line beside the title; there is not much room.</extracomment>
        <translation>↩ speichern  |  ⇧↩ neue Zeile  |  Esc abbrechen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>KeyName</name>
    <message>
        <source>Space</source>
        <extracomment>The name of the key that types a blank.</extracomment>
        <translation>Leertaste</translation>
    </message>
</context>
<context>
    <name>PanelHead</name>
    <message>
        <source>Search...</source>
        <extracomment>In an empty field in which a search text is typed.</extracomment>
        <translation>Suchen&#xa0;…</translation>
    </message>
</context>
<context>
    <name>PortalHotKeyCenter</name>
    <message>
        <source>Show the clipboard history</source>
        <extracomment>What a global keyboard shortcut does; the desktop shows it in its own settings.</extracomment>
        <translation>Verlauf der Zwischenablage anzeigen</translation>
    </message>
</context>
<context>
    <name>QAccessibleActionInterface</name>
    <message>
        <source>Press</source>
        <extracomment>What a screen reader may say of a button: the name of what can be done to it.</extracomment>
        <translation>Drücken</translation>
    </message>
    <message>
        <source>Triggers the action</source>
        <extracomment>What a screen reader may say of a button: what pressing it does.</extracomment>
        <translation>Löst die Aktion aus</translation>
    </message>
    <message>
        <source>Toggle</source>
        <extracomment>What a screen reader may say of a switch: the name of what can be done to it.</extracomment>
        <translation>Umschalten</translation>
    </message>
    <message>
        <source>Toggles the state</source>
        <extracomment>What a screen reader may say of a switch: what toggling it does.</extracomment>
        <translation>Schaltet den Zustand um</translation>
    </message>
    <message>
        <source>SetFocus</source>
        <extracomment>What a screen reader may say of a control: the name of giving the keyboard to it.</extracomment>
        <translation>Fokus setzen</translation>
    </message>
    <message>
        <source>Sets the focus</source>
        <extracomment>What a screen reader may say of a control: what that does.</extracomment>
        <translation>Setzt den Fokus</translation>
    </message>
    <message>
        <source>ShowMenu</source>
        <extracomment>What a screen reader may say of a list of choices: the name of opening it.</extracomment>
        <translation>Menü anzeigen</translation>
    </message>
    <message>
        <source>Shows the menu</source>
        <extracomment>What a screen reader may say of a list of choices: what opening it does.</extracomment>
        <translation>Zeigt das Menü an</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <extracomment>Not shown. LTR for a language that is written from left to right, RTL for one from right to left.</extracomment>
        <translation>LTR</translation>
    </message>
</context>
<context>
    <name>RelativeDate</name>
    <message>
        <source>now</source>
        <extracomment>The age of an entry: less than a minute. Twelve letters have room.</extracomment>
        <translation>jetzt</translation>
    </message>
    <message numerus="yes">
        <source>%nm</source>
        <extracomment>The age of an entry in minutes. Twelve letters have room.</extracomment>
        <translation>
            <numerusform>%n&#xa0;Min.</numerusform>
            <numerusform>%n&#xa0;Min.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%nh</source>
        <extracomment>The age of an entry in hours. Twelve letters have room.</extracomment>
        <translation>
            <numerusform>%n&#xa0;Std.</numerusform>
            <numerusform>%n&#xa0;Std.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%nd</source>
        <extracomment>The age of an entry in days. Twelve letters have room.</extracomment>
        <translation>
            <numerusform>%n&#xa0;Tag</numerusform>
            <numerusform>%n&#xa0;Tage</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RowActions</name>
    <message>
        <source>Unpin</source>
        <extracomment>Of an entry: pinned ones are kept, and stand first.</extracomment>
        <translation>Nicht mehr anheften</translation>
    </message>
    <message>
        <source>Pin</source>
        <translation>Anheften</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>RowMenu</name>
    <message>
        <source>Entry</source>
        <extracomment>The menu of one entry, to a screen reader.</extracomment>
        <translation>Eintrag</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Unpin</source>
        <translation>Nicht mehr anheften</translation>
    </message>
    <message>
        <source>Pin</source>
        <translation>Anheften</translation>
    </message>
    <message>
        <source>Assign Category</source>
        <translation>Kategorie zuweisen</translation>
    </message>
    <message>
        <source>None</source>
        <extracomment>No category.</extracomment>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>RowText</name>
    <message numerus="yes">
        <source>%n KB</source>
        <extracomment>The size of an image in kilobytes.</extracomment>
        <translation>
            <numerusform>%n&#xa0;KB</numerusform>
            <numerusform>%n&#xa0;KB</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SelectionBar</name>
    <message numerus="yes">
        <source>%n items selected</source>
        <translation>
            <numerusform>%n Eintrag ausgewählt</numerusform>
            <numerusform>%n Einträge ausgewählt</numerusform>
        </translation>
    </message>
    <message>
        <source>⇧↑↓ select  |  ⌘Click toggle  |  ↩ combine  |  Esc clear</source>
        <extracomment>Keys and what they do, in one line beside the count; there is not much room. &quot;toggle&quot; adds an entry to the selection or takes it out, &quot;clear&quot; ends the selection.</extracomment>
        <translation>⇧↑↓ auswählen  |  ⌘Klick an-/abwählen  |  ↩ kombinieren  |  Esc Auswahl aufheben</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>Larkspool Settings</source>
        <extracomment>The content of the window, to a screen reader.</extracomment>
        <translation>Larkspool-Einstellungen</translation>
    </message>
</context>
<context>
    <name>SettingsTabBar</name>
    <message>
        <source>&amp;General</source>
        <translation>&amp;Allgemein</translation>
    </message>
    <message>
        <source>&amp;Categories</source>
        <translation>&amp;Kategorien</translation>
    </message>
    <message>
        <source>&amp;Shortcuts</source>
        <translation>&amp;Tastenkürzel</translation>
    </message>
    <message>
        <source>S&amp;torage</source>
        <translation>&amp;Speicher</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Info</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Open Larkspool</source>
        <translation>Larkspool öffnen</translation>
    </message>
    <message>
        <source>Orange</source>
        <translation>Orange</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Purple</source>
        <translation>Violett</translation>
    </message>
    <message>
        <source>Pink</source>
        <translation>Rosa</translation>
    </message>
    <message>
        <source>Yellow</source>
        <translation>Gelb</translation>
    </message>
    <message>
        <source>White</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>Unlimited</source>
        <extracomment>As many entries as there are.</extracomment>
        <translation>Unbegrenzt</translation>
    </message>
    <message>
        <source>Tab</source>
        <extracomment>The name of the key.</extracomment>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>/ (Slash)</source>
        <extracomment>A key by the character that it types, and what that is called.</extracomment>
        <translation>/ (Schrägstrich)</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Larkspool Settings</source>
        <extracomment>The title of a window.</extracomment>
        <translation>Larkspool-Einstellungen</translation>
    </message>
</context>
<context>
    <name>ShortcutRecorder</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ShortcutRecorderView</name>
    <message>
        <source>Press keys...</source>
        <extracomment>On a button, while it waits for a key combination.</extracomment>
        <translation>Tasten drücken&#xa0;…</translation>
    </message>
</context>
<context>
    <name>ShortcutsTab</name>
    <message>
        <source>Global Shortcut</source>
        <translation>Globales Tastenkürzel</translation>
    </message>
    <message>
        <source>Press the key combination to open Larkspool from anywhere.</source>
        <translation>Diese Tastenkombination öffnet Larkspool aus jeder Anwendung heraus.</translation>
    </message>
    <message>
        <source>In-App Shortcuts</source>
        <translation>Tastenkürzel in der Anwendung</translation>
    </message>
    <message>
        <source>Opens the category filter search when Larkspool is open.</source>
        <translation>Öffnet die Kategoriesuche, wenn Larkspool geöffnet ist.</translation>
    </message>
    <message>
        <source>Category search</source>
        <translation>Kategoriesuche</translation>
    </message>
</context>
<context>
    <name>StorageTab</name>
    <message>
        <source>Max history items</source>
        <extracomment>How many entries are kept at most; a number is chosen beside it.</extracomment>
        <translation>Höchstzahl der Einträge</translation>
    </message>
    <message>
        <source>Clear All &amp;History</source>
        <translation>Gesamten &amp;Verlauf löschen</translation>
    </message>
</context>
<context>
    <name>TemplateName</name>
    <message>
        <source>Comma</source>
        <extracomment>A way of combining several entries into one text: with a comma between them.</extracomment>
        <translation>Komma</translation>
    </message>
    <message>
        <source>New Line</source>
        <extracomment>A way of combining entries: each on a line of its own.</extracomment>
        <translation>Neue Zeile</translation>
    </message>
    <message>
        <source>Space</source>
        <extracomment>A way of combining entries: with a blank between them. Not the key.</extracomment>
        <translation>Leerzeichen</translation>
    </message>
    <message>
        <source>Tab</source>
        <extracomment>A way of combining entries: with a tabulator between them. Not the key.</extracomment>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>&quot;Double Quotes&quot;</source>
        <extracomment>A way of combining entries: each in straight double quotes. The name is in such quotes itself.</extracomment>
        <translation>&quot;Doppelte Anführungszeichen&quot;</translation>
    </message>
    <message>
        <source>&apos;Single Quotes&apos;</source>
        <extracomment>A way of combining entries: each in straight single quotes. The name is in such quotes itself.</extracomment>
        <translation>&apos;Einfache Anführungszeichen&apos;</translation>
    </message>
    <message>
        <source>JSON Array</source>
        <extracomment>A way of combining entries: as an array in the format JSON.</extracomment>
        <translation>JSON-Array</translation>
    </message>
    <message>
        <source>Bullet List</source>
        <extracomment>A way of combining entries: as a list, a dash before each.</extracomment>
        <translation>Aufzählung</translation>
    </message>
    <message>
        <source>Numbered</source>
        <extracomment>A way of combining entries: as a list, a number before each.</extracomment>
        <translation>Nummerierung</translation>
    </message>
    <message>
        <source>SQL IN</source>
        <extracomment>A way of combining entries: as the list behind the word IN of a database query.</extracomment>
        <translation>SQL IN</translation>
    </message>
</context>
</TS>
