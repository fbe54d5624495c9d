<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>CombinePanel</name>
    <message numerus="yes">
        <source>Combine %n items</source>
        <extracomment>The title of the panel that makes one text of several entries.</extracomment>
        <translation>
            <numerusform>Combine %n item</numerusform>
            <numerusform>Combine %n items</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>HeaderBar</name>
    <message numerus="yes">
        <source>%n items</source>
        <extracomment>How many entries are listed.</extracomment>
        <translation>
            <numerusform>%n item</numerusform>
            <numerusform>%n items</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RelativeDate</name>
    <message numerus="yes">
        <source>%nm</source>
        <extracomment>The age of an entry in minutes. Twelve letters have room.</extracomment>
        <translation>
            <numerusform>%nm</numerusform>
            <numerusform>%nm</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%nh</source>
        <extracomment>The age of an entry in hours. Twelve letters have room.</extracomment>
        <translation>
            <numerusform>%nh</numerusform>
            <numerusform>%nh</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%nd</source>
        <extracomment>The age of an entry in days. Twelve letters have room.</extracomment>
        <translation>
            <numerusform>%nd</numerusform>
            <numerusform>%nd</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RowText</name>
    <message numerus="yes">
        <source>%n KB</source>
        <extracomment>The size of an image in kilobytes.</extracomment>
        <translation>
            <numerusform>%n KB</numerusform>
            <numerusform>%n KB</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SelectionBar</name>
    <message numerus="yes">
        <source>%n items selected</source>
        <translation>
            <numerusform>%n item selected</numerusform>
            <numerusform>%n items selected</numerusform>
        </translation>
    </message>
</context>
</TS>
