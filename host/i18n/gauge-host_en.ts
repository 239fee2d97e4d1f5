<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>GalleryHeader</name>
    <message numerus="yes">
        <source>%n vehicle(s) assigned</source>
        <translation>
            <numerusform>%n vehicle assigned</numerusform>
            <numerusform>%n vehicles assigned</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ProfileCard</name>
    <message numerus="yes">
        <source>%n vehicle(s)</source>
        <translation>
            <numerusform>%n vehicle</numerusform>
            <numerusform>%n vehicles</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RemoveDialog</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
</context>
</TS>
