<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>ImportWords</name>
    <message numerus="yes">
        <source>%1 row(s)</source>
        <translation>
            <numerusform>%1 row</numerusform>
            <numerusform>%1 rows</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 value(s)</source>
        <translation>
            <numerusform>%1 value</numerusform>
            <numerusform>%1 values</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 record(s)</source>
        <translation>
            <numerusform>%1 record</numerusform>
            <numerusform>%1 records</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>this replaces %n stored value(s)</source>
        <translation>
            <numerusform>this replaces %n stored value</numerusform>
            <numerusform>this replaces %n stored values</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> of %n property(s)</source>
        <translation>
            <numerusform> of %n property</numerusform>
            <numerusform> of %n properties</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 cell(s) left empty, being no number</source>
        <translation>
            <numerusform>%1 cell left empty, being no number</numerusform>
            <numerusform>%1 cells left empty, being no numbers</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>OutputText</name>
    <message numerus="yes">
        <source>%Ln record(s)</source>
        <translation>
            <numerusform>%Ln record</numerusform>
            <numerusform>%Ln records</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln property(s)</source>
        <translation>
            <numerusform>%Ln property</numerusform>
            <numerusform>%Ln properties</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln note(s)</source>
        <translation>
            <numerusform>%Ln note</numerusform>
            <numerusform>%Ln notes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QualityTexts</name>
    <message numerus="yes">
        <source>%n column(s)</source>
        <translation>
            <numerusform>%n column</numerusform>
            <numerusform>%n columns</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 value(s) are marked as bad by “%2”</source>
        <translation>
            <numerusform>%1 value is marked as bad by “%2”</numerusform>
            <numerusform>%1 values are marked as bad by “%2”</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>says which values of %n column(s) are bad</source>
        <translation>
            <numerusform>says which values of %n column are bad</numerusform>
            <numerusform>says which values of %n columns are bad</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>plotix::AnnotationAsking</name>
    <message numerus="yes">
        <source>Delete %n note(s)</source>
        <translation>
            <numerusform>Delete %n note</numerusform>
            <numerusform>Delete %n notes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>plotix::ColumnChoices</name>
    <message numerus="yes">
        <source>%n number(s)</source>
        <translation>
            <numerusform>%n number</numerusform>
            <numerusform>%n numbers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>, %n cell(s) without one</source>
        <translation>
            <numerusform>, %n cell without one</numerusform>
            <numerusform>, %n cells without one</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>, %n of them marked as bad</source>
        <translation>
            <numerusform>, %n of them marked as bad</numerusform>
            <numerusform>, %n of them marked as bad</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>plotix::ImportDialog</name>
    <message numerus="yes">
        <source>Import Measurements (%n more to come)</source>
        <translation>
            <numerusform>Import Measurements (%n more to come)</numerusform>
            <numerusform>Import Measurements (%n more to come)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>&amp;Use these choices for the other %n file(s) too</source>
        <translation>
            <numerusform>&amp;Use these choices for %n other file too</numerusform>
            <numerusform>&amp;Use these choices for the other %n files too</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The first %n row(s), as understood</source>
        <translation>
            <numerusform>The first %n row, as understood</numerusform>
            <numerusform>The first %n rows, as understood</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>All %n row(s), as understood</source>
        <translation>
            <numerusform>%n row, as understood</numerusform>
            <numerusform>All %n rows, as understood</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The first %n row(s) of %1, as understood</source>
        <translation>
            <numerusform>%n row of %1, as understood</numerusform>
            <numerusform>The first %n rows of %1, as understood</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>plotix::ImportSequence</name>
    <message numerus="yes">
        <source>Imported %n record(s)</source>
        <translation>
            <numerusform>Imported %n record</numerusform>
            <numerusform>Imported %n records</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>&amp;Also in the other %n file(s)</source>
        <translation>
            <numerusform>&amp;Also in %n other file</numerusform>
            <numerusform>&amp;Also in the other %n files</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>plotix::RecordingIndicator</name>
    <message numerus="yes">
        <source>Recording since %1: %Ln record(s)</source>
        <translation>
            <numerusform>Recording since %1: %Ln record</numerusform>
            <numerusform>Recording since %1: %Ln records</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>; %Ln record(s) wait on this disk for the server</source>
        <translation>
            <numerusform>; %Ln record waits on this disk for the server</numerusform>
            <numerusform>; %Ln records wait on this disk for the server</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>plotix::SiteEditor</name>
    <message numerus="yes">
        <source>%n value(s) were left out</source>
        <translation>
            <numerusform>%n value was left out</numerusform>
            <numerusform>%n values were left out</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n computed propert(ies) can be computed no longer</source>
        <translation>
            <numerusform>%n computed property can be computed no longer</numerusform>
            <numerusform>%n computed properties can be computed no longer</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>plotix::SiteWindow</name>
    <message numerus="yes">
        <source>%n trend(s) of this site cannot be read by this version.</source>
        <translation>
            <numerusform>%n trend of this site cannot be read by this version.</numerusform>
            <numerusform>%n trends of this site cannot be read by this version.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>plotix::WorkingSite</name>
    <message numerus="yes">
        <source>Another program changed %n trend(s).</source>
        <translation>
            <numerusform>Another program changed %n trend.</numerusform>
            <numerusform>Another program changed %n trends.</numerusform>
        </translation>
    </message>
</context>
</TS>
