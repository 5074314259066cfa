<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>ProductionStick</name>
    <message numerus="yes">
        <source>%n error(s)</source>
        <translation>
            <numerusform>%n error</numerusform>
            <numerusform>%n errors</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n warning(s)</source>
        <translation>
            <numerusform>%n warning</numerusform>
            <numerusform>%n warnings</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n note(s)</source>
        <translation>
            <numerusform>%n note</numerusform>
            <numerusform>%n notes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>(%n not shown; --limit 0 shows all)</source>
        <translation>
            <numerusform>(%n not shown; --limit 0 shows all)</numerusform>
            <numerusform>(%n not shown; --limit 0 shows all)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>a list of %n values</source>
        <translation>
            <numerusform>a list of %n value</numerusform>
            <numerusform>a list of %n values</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>the unit takes a table of exactly %n step(s)</source>
        <translation>
            <numerusform>the unit takes a table of exactly %n step</numerusform>
            <numerusform>the unit takes a table of exactly %n steps</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n step(s): the unit ignores the table (%1)</source>
        <translation>
            <numerusform>%n step: the unit ignores the table (%1)</numerusform>
            <numerusform>%n steps: the unit ignores the table (%1)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n key(s) from here on stand in no group: the unit ignores them</source>
        <translation>
            <numerusform>%n key from here on stands in no group: the unit ignores it</numerusform>
            <numerusform>%n keys from here on stand in no group: the unit ignores them</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>none of the %n entries of [%1] can be taken: no unit gets a value</source>
        <translation>
            <numerusform>the one entry of [%1] cannot be taken: no unit gets a value</numerusform>
            <numerusform>none of the %n entries of [%1] can be taken: no unit gets a value</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>[%1] has enough for %n unit(s) only</source>
        <translation>
            <numerusform>[%1] has enough for %n unit only</numerusform>
            <numerusform>[%1] has enough for %n units only</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) from here on hold U+FFFD: what was no text was lost in an earlier rewrite</source>
        <translation>
            <numerusform>%n line from here on holds U+FFFD: what was no text was lost in an earlier rewrite</numerusform>
            <numerusform>%n lines from here on hold U+FFFD: what was no text was lost in an earlier rewrite</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) from here on hold bytes that are no text: the unit reads U+FFFD for them, and its rewrite stores that</source>
        <translation>
            <numerusform>%n line from here on holds bytes that are no text: the unit reads U+FFFD for them, and its rewrite stores that</numerusform>
            <numerusform>%n lines from here on hold bytes that are no text: the unit reads U+FFFD for them, and its rewrite stores that</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>the pool %1 has %n usable entries, fewer than sticks</source>
        <translation>
            <numerusform>the pool %1 has %n usable entry, fewer than sticks</numerusform>
            <numerusform>the pool %1 has %n usable entries, fewer than sticks</numerusform>
        </translation>
    </message>
</context>
</TS>
