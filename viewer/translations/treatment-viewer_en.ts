<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>ChangeText</name>
    <message numerus="yes">
        <source>Place %n teeth</source>
        <translation>
            <numerusform>Place %n tooth</numerusform>
            <numerusform>Place %n teeth</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Remove %n teeth</source>
        <translation>
            <numerusform>Remove %n tooth</numerusform>
            <numerusform>Remove %n teeth</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Remove %n brackets</source>
        <translation>
            <numerusform>Remove %n bracket</numerusform>
            <numerusform>Remove %n brackets</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Place %n brackets</source>
        <translation>
            <numerusform>Place %n bracket</numerusform>
            <numerusform>Place %n brackets</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Place %n buttons</source>
        <translation>
            <numerusform>Place %n button</numerusform>
            <numerusform>Place %n buttons</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Remove %n buttons</source>
        <translation>
            <numerusform>Remove %n button</numerusform>
            <numerusform>Remove %n buttons</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Clear %n brackets</source>
        <translation>
            <numerusform>Clear %n bracket</numerusform>
            <numerusform>Clear %n brackets</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Colour %n brackets</source>
        <translation>
            <numerusform>Colour %n bracket</numerusform>
            <numerusform>Colour %n brackets</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Place %n elastics</source>
        <translation>
            <numerusform>Place %n elastic</numerusform>
            <numerusform>Place %n elastics</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Remove %n elastics</source>
        <translation>
            <numerusform>Remove %n elastic</numerusform>
            <numerusform>Remove %n elastics</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Change %n elastics</source>
        <translation>
            <numerusform>Change %n elastic</numerusform>
            <numerusform>Change %n elastics</numerusform>
        </translation>
    </message>
</context>
</TS>
