<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>ImportText</name>
    <message>
        <source>some dates have the day first and others the month; say which is meant with --date-order dmy or --date-order mdy</source>
        <translation>some dates have the day first and others the month; choose which is meant under Dates</translation>
    </message>
    <message>
        <source>no date in the file tells the day from the month; say which comes first with --date-order dmy or --date-order mdy</source>
        <translation>no date in the file tells the day from the month; choose which comes first under Dates</translation>
    </message>
    <message>
        <source>no row has the texts asked for with --where</source>
        <translation>no row has the text asked for under Rows</translation>
    </message>
    <message>
        <source>column “%1” is in %2, but the agent&apos;s property of that name is in %3; give it another name with --name</source>
        <translation>column “%1” is in %2, but the agent&apos;s property of that name is in %3; import into another agent</translation>
    </message>
    <message>
        <source>--time</source>
        <translation>Time column</translation>
    </message>
    <message>
        <source>--where</source>
        <translation>Rows</translation>
    </message>
    <message>
        <source>%1 with another text in the --where column passed over.</source>
        <translation>%1 with another text in the column passed over.</translation>
    </message>
    <message>
        <source>column “%1” holds no times; name another with --time (columns: %2)</source>
        <translation>column “%1” holds no times; name another under Time column (columns: %2)</translation>
    </message>
    <message>
        <source>no column looks like times; name one with --time (columns: %1)</source>
        <translation>no column looks like times; name one under Time column (columns: %1)</translation>
    </message>
</context>
</TS>
