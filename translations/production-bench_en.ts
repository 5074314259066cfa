<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>Terminal</name>
    <message numerus="yes">
        <source>%n setting(s)</source>
        <translation>
            <numerusform>%n setting</numerusform>
            <numerusform>%n settings</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n value(s)</source>
        <translation>
            <numerusform>%n value</numerusform>
            <numerusform>%n values</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>bench::BacklightCurve</name>
    <message numerus="yes">
        <source>%n step(s): %1</source>
        <translation>
            <numerusform>%n step: %1</numerusform>
            <numerusform>%n steps: %1</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>bench::Session</name>
    <message numerus="yes">
        <source>Timed out after %n second(s).</source>
        <translation>
            <numerusform>Timed out after %n second.</numerusform>
            <numerusform>Timed out after %n seconds.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>bench::StickRow</name>
    <message numerus="yes">
        <source>%1: %n left</source>
        <translation>
            <numerusform>%1: %n left</numerusform>
            <numerusform>%1: %n left</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>bench::TerminalRun</name>
    <message numerus="yes">
        <source>No stick has come within %n second(s).</source>
        <translation>
            <numerusform>No stick has come within %n second.</numerusform>
            <numerusform>No stick has come within %n seconds.</numerusform>
        </translation>
    </message>
</context>
</TS>
