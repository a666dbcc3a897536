<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AppearanceText</name>
    <message>
        <source>Like the &amp;Desktop</source>
        <translation>Wie der &amp;Desktop</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Hell</translation>
    </message>
    <message>
        <source>D&amp;ark</source>
        <translation>Du&amp;nkel</translation>
    </message>
</context>
<context>
    <name>CPTGraphHostingView</name>
    <message>
        <source>Graph</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>Arrow keys pan, plus and minus zoom, Home shows everything.</source>
        <translation>Pfeiltasten verschieben, Plus und Minus vergrößern und verkleinern, Pos1 zeigt alles.</translation>
    </message>
</context>
<context>
    <name>ConflictText</name>
    <message>
        <source>Somebody else deleted this meanwhile. OK makes it again as you have it here; Cancel leaves it deleted.</source>
        <translation>Das hat inzwischen jemand anderes gelöscht. OK legt es wieder so an, wie es hier steht; Abbrechen lässt es gelöscht.</translation>
    </message>
    <message>
        <source>somebody</source>
        <translation>jemandem</translation>
    </message>
    <message>
        <source>This note was changed meanwhile, by %1 at %2: “%3”. Yours is not stored. OK stores it over the other one; Cancel leaves the other one.</source>
        <translation>Diese Notiz wurde inzwischen geändert, von %1 am %2: „%3“. Ihre ist nicht gespeichert. OK speichert sie über die andere; Abbrechen lässt die andere stehen.</translation>
    </message>
    <message>
        <source>Somebody else changed these limits meanwhile, to: %1. Yours are not stored. OK stores them over the others; Cancel leaves the others.</source>
        <translation>Jemand anderes hat diese Grenzwerte inzwischen geändert: %1. Ihre sind nicht gespeichert. OK speichert sie über die anderen; Abbrechen lässt die anderen stehen.</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Somebody else changed this formula meanwhile, to “%1 = %2”. Yours is not stored. OK stores it over the other one; Cancel leaves the other one.</source>
        <translation>Jemand anderes hat diese Formel inzwischen geändert: „%1 = %2“. Ihre ist nicht gespeichert. OK speichert sie über die andere; Abbrechen lässt die andere stehen.</translation>
    </message>
</context>
<context>
    <name>CopiedRecordsText</name>
    <message>
        <source>There are %1 records in this span, too many for the clipboard. Zoom in, or take File ▸ Export Records.</source>
        <translation>In diesem Zeitraum sind %1 Messwerte, zu viele für die Zwischenablage. Zeigen Sie weniger, oder nehmen Sie Datei ▸ Messwerte exportieren.</translation>
    </message>
</context>
<context>
    <name>FormulaText</name>
    <message>
        <source>a number without a unit</source>
        <translation>eine Zahl ohne Einheit</translation>
    </message>
    <message>
        <source>%1 and %2 do not fit together: they are different quantities.</source>
        <translation>%1 und %2 passen nicht zusammen: Es sind verschiedene Größen.</translation>
    </message>
    <message>
        <source>%1 takes a number without a unit, not %2: divide by a quantity of that kind first.</source>
        <translation>%1 nimmt eine Zahl ohne Einheit, nicht %2: Teilen Sie zuerst durch eine Größe dieser Art.</translation>
    </message>
    <message>
        <source>A value with a unit can only be raised to a whole number.</source>
        <translation>Ein Wert mit Einheit kann nur mit einer ganzen Zahl potenziert werden.</translation>
    </message>
    <message>
        <source>%1 is not the square of any unit.</source>
        <translation>%1 ist nicht das Quadrat einer Einheit.</translation>
    </message>
    <message>
        <source>A temperature in %1 cannot be multiplied or summed up, since its zero is arbitrary: use a difference of two, or value(…, K).</source>
        <translation>Eine Temperatur in %1 kann nicht multipliziert oder aufsummiert werden, da ihr Nullpunkt willkürlich ist: Nehmen Sie eine Differenz oder value(…, K).</translation>
    </message>
    <message>
        <source>The result is a sum of temperatures in %1, which means nothing: take their difference, or divide by how many they are. To convert one, write its name alone and choose the unit.</source>
        <translation>Das Ergebnis ist eine Summe von Temperaturen in %1, die nichts bedeutet: Nehmen Sie die Differenz, oder teilen Sie durch ihre Anzahl. Um eine umzurechnen, schreiben Sie nur ihren Namen und wählen die Einheit.</translation>
    </message>
    <message>
        <source>The result is %1, which cannot be shown in %2.</source>
        <translation>Das Ergebnis ist %1 und lässt sich nicht in %2 angeben.</translation>
    </message>
    <message>
        <source>The result is a difference of temperatures: choose K, not %1.</source>
        <translation>Das Ergebnis ist eine Temperaturdifferenz: Wählen Sie K, nicht %1.</translation>
    </message>
    <message>
        <source>There is no function “%1”.</source>
        <translation>Es gibt keine Funktion „%1“.</translation>
    </message>
    <message>
        <source>“%1” is no unit.</source>
        <translation>„%1“ ist keine Einheit.</translation>
    </message>
    <message>
        <source>There is no agent “%1”.</source>
        <translation>Es gibt keine Quelle „%1“.</translation>
    </message>
    <message>
        <source>“%2” has no property “%1”.</source>
        <translation>„%2“ hat keine Größe „%1“.</translation>
    </message>
    <message>
        <source>The formula names no property.</source>
        <translation>Die Formel nennt keine Größe.</translation>
    </message>
    <message>
        <source>“%1” leads back to the property that is being computed.</source>
        <translation>„%1“ führt zu der Größe zurück, die berechnet wird.</translation>
    </message>
    <message>
        <source>“%1” cannot be computed: %2</source>
        <translation>„%1“ lässt sich nicht berechnen: %2</translation>
    </message>
    <message>
        <source>The formula is empty.</source>
        <translation>Die Formel ist leer.</translation>
    </message>
    <message>
        <source>Something is missing at the end.</source>
        <translation>Am Ende fehlt etwas.</translation>
    </message>
    <message>
        <source>“%1” does not belong here.</source>
        <translation>„%1“ gehört nicht hierher.</translation>
    </message>
    <message>
        <source>This name has no closing quotation mark.</source>
        <translation>Diesem Namen fehlt das schließende Anführungszeichen.</translation>
    </message>
    <message>
        <source>This bracket is not closed.</source>
        <translation>Diese Klammer ist nicht geschlossen.</translation>
    </message>
    <message>
        <source>The function is written %1.</source>
        <translation>Die Funktion schreibt man %1.</translation>
    </message>
    <message>
        <source>Here stands a span of time, such as 10 min, 1 h or 7 d: %1.</source>
        <translation>Hier steht eine Zeitspanne, etwa 10 min, 1 h oder 7 d: %1.</translation>
    </message>
    <message>
        <source>The formula is nested too deeply.</source>
        <translation>Die Formel ist zu tief verschachtelt.</translation>
    </message>
    <message>
        <source>moving mean of the span that ends here</source>
        <translation>gleitendes Mittel des Zeitraums, der hier endet</translation>
    </message>
    <message>
        <source>least value of the span that ends here</source>
        <translation>kleinster Wert des Zeitraums, der hier endet</translation>
    </message>
    <message>
        <source>greatest value of the span that ends here</source>
        <translation>größter Wert des Zeitraums, der hier endet</translation>
    </message>
    <message>
        <source>sum of the values of the span that ends here</source>
        <translation>Summe der Werte des Zeitraums, der hier endet</translation>
    </message>
    <message>
        <source>mean of the local day</source>
        <translation>Mittel des Kalendertags</translation>
    </message>
    <message>
        <source>least value of the local day</source>
        <translation>kleinster Wert des Kalendertags</translation>
    </message>
    <message>
        <source>greatest value of the local day</source>
        <translation>größter Wert des Kalendertags</translation>
    </message>
    <message>
        <source>sum of the values of the local day</source>
        <translation>Summe der Werte des Kalendertags</translation>
    </message>
    <message>
        <source>integral over the local day, such as kWh of kW</source>
        <translation>Integral über den Kalendertag, etwa kWh aus kW</translation>
    </message>
    <message>
        <source>mean of each such part of the local day</source>
        <translation>Mittel jedes solchen Teils des Kalendertags</translation>
    </message>
    <message>
        <source>least value of each such part of the local day</source>
        <translation>kleinster Wert jedes solchen Teils des Kalendertags</translation>
    </message>
    <message>
        <source>greatest value of each such part of the local day</source>
        <translation>größter Wert jedes solchen Teils des Kalendertags</translation>
    </message>
    <message>
        <source>sum of each such part of the local day</source>
        <translation>Summe jedes solchen Teils des Kalendertags</translation>
    </message>
    <message>
        <source>change in time since the value before</source>
        <translation>zeitliche Änderung seit dem Wert davor</translation>
    </message>
    <message>
        <source>integral since the first record, or of the span that ends here</source>
        <translation>Integral seit dem ersten Messwert oder über den Zeitraum, der hier endet</translation>
    </message>
    <message>
        <source>the last value where there is none</source>
        <translation>der letzte Wert, wo keiner ist</translation>
    </message>
    <message>
        <source>what it was then; days go by the local clock</source>
        <translation>was es damals war; Tage nach der Uhr an der Wand</translation>
    </message>
    <message>
        <source>dew point, by Magnus&apos; formula over water</source>
        <translation>Taupunkt nach der Magnus-Formel über Wasser</translation>
    </message>
    <message>
        <source>the least of several</source>
        <translation>der kleinste von mehreren</translation>
    </message>
    <message>
        <source>the greatest of several</source>
        <translation>der größte von mehreren</translation>
    </message>
    <message>
        <source>x where the condition holds, else y</source>
        <translation>x, wo die Bedingung gilt, sonst y</translation>
    </message>
    <message>
        <source>the number of x in that unit, without it</source>
        <translation>die Zahl von x in dieser Einheit, ohne sie</translation>
    </message>
    <message>
        <source>without its sign</source>
        <translation>ohne Vorzeichen</translation>
    </message>
    <message>
        <source>to the nearest whole number</source>
        <translation>zur nächsten ganzen Zahl</translation>
    </message>
    <message>
        <source>down to a whole number</source>
        <translation>abgerundet auf eine ganze Zahl</translation>
    </message>
    <message>
        <source>up to a whole number</source>
        <translation>aufgerundet auf eine ganze Zahl</translation>
    </message>
    <message>
        <source>square root</source>
        <translation>Quadratwurzel</translation>
    </message>
    <message>
        <source>power of e</source>
        <translation>Potenz von e</translation>
    </message>
    <message>
        <source>natural logarithm</source>
        <translation>natürlicher Logarithmus</translation>
    </message>
    <message>
        <source>logarithm to the base of ten</source>
        <translation>Logarithmus zur Basis zehn</translation>
    </message>
    <message>
        <source>sine; plain numbers are radians</source>
        <translation>Sinus; reine Zahlen sind Radiant</translation>
    </message>
    <message>
        <source>cosine; plain numbers are radians</source>
        <translation>Kosinus; reine Zahlen sind Radiant</translation>
    </message>
    <message>
        <source>tangent; plain numbers are radians</source>
        <translation>Tangens; reine Zahlen sind Radiant</translation>
    </message>
    <message>
        <source>A comma separates a function&apos;s arguments; decimals stand behind a point, as in 0.5.</source>
        <translation>Ein Komma trennt die Argumente einer Funktion; Dezimalen stehen hinter einem Punkt wie in 0.5.</translation>
    </message>
    <message>
        <source>“%1” does not belong here; a name with blanks stands in quotation marks, as in &quot;Air Temperature&quot;.</source>
        <translation>„%1“ gehört nicht hierher; ein Name mit Leerzeichen steht in Anführungszeichen, wie &quot;Air Temperature&quot;.</translation>
    </message>
</context>
<context>
    <name>ImportOfferText</name>
    <message>
        <source>Plotix sites (*.plotix)</source>
        <translation>Plotix-Anlagen (*.plotix)</translation>
    </message>
    <message>
        <source>New Site</source>
        <translation>Neue Anlage</translation>
    </message>
    <message>
        <source>Open Site</source>
        <translation>Anlage öffnen</translation>
    </message>
    <message>
        <source>“%1” is not a site. Import its measurements?</source>
        <translation>„%1“ ist keine Anlage. Sollen die Messwerte daraus importiert werden?</translation>
    </message>
    <message>
        <source>A site keeps measurements and the trends made of them in one file.</source>
        <translation>Eine Anlage bewahrt Messwerte und die Trends daraus in einer Datei auf.</translation>
    </message>
    <message>
        <source>&amp;New Site…</source>
        <translation>&amp;Neue Anlage …</translation>
    </message>
    <message>
        <source>&amp;Existing Site…</source>
        <translation>&amp;Vorhandene Anlage …</translation>
    </message>
</context>
<context>
    <name>ImportWords</name>
    <message>
        <source>Time column</source>
        <translation>Zeitspalte</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>Zeilen</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>reading failed: %1</source>
        <translation>das Lesen misslang: %1</translation>
    </message>
    <message>
        <source>a quotation mark opened here is never closed</source>
        <translation>ein hier geöffnetes Anführungszeichen wird nie geschlossen</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>die Datei ist leer</translation>
    </message>
    <message>
        <source>the file has a header and no rows</source>
        <translation>die Datei hat eine Kopfzeile und keine Zeilen</translation>
    </message>
    <message>
        <source>the header names %1 columns and the rows have %2, and the extra column neither counts the rows nor is empty; complete the header</source>
        <translation>die Kopfzeile nennt %1 Spalten, die Zeilen haben %2, und die überzählige Spalte zählt weder die Zeilen noch ist sie leer; vervollständigen Sie die Kopfzeile</translation>
    </message>
    <message>
        <source>the row has %1 columns where the header names %2</source>
        <translation>die Zeile hat %1 Spalten, wo die Kopfzeile %2 nennt</translation>
    </message>
    <message>
        <source>no column looks like times; name one under Time column (columns: %1)</source>
        <translation>keine Spalte sieht nach Zeiten aus; nennen Sie eine unter „Zeitspalte“ (Spalten: %1)</translation>
    </message>
    <message>
        <source>column “%1” holds no times; name another under Time column (columns: %2)</source>
        <translation>die Spalte „%1“ enthält keine Zeiten; nennen Sie unter „Zeitspalte“ eine andere (Spalten: %2)</translation>
    </message>
    <message>
        <source>no column holds numbers besides the time in “%1” (columns: %2)</source>
        <translation>keine Spalte enthält Zahlen außer der Zeit in „%1“ (Spalten: %2)</translation>
    </message>
    <message>
        <source>no row could be read: %1</source>
        <translation>keine Zeile war lesbar: %1</translation>
    </message>
    <message>
        <source>no row has the text asked for under Rows</source>
        <translation>keine Zeile hat die gesuchten Texte</translation>
    </message>
    <message>
        <source>no date in the file tells the day from the month; choose which comes first under Dates</source>
        <translation>keine Datumsangabe der Datei verrät, was Tag und was Monat ist; wählen Sie unter „Datumsangaben“, was vorn steht</translation>
    </message>
    <message>
        <source>some dates have the day first and others the month; choose which is meant under Dates</source>
        <translation>bei manchen Datumsangaben steht der Tag vorn, bei anderen der Monat; wählen Sie unter „Datumsangaben“, was gilt</translation>
    </message>
    <message>
        <source>%1 names the column “%2”, which is not there (columns: %3)</source>
        <translation>%1 nennt die Spalte „%2“, die es nicht gibt (Spalten: %3)</translation>
    </message>
    <message>
        <source>“%1”, given for the column “%2”, is no unit that is known; write it like °C, hPa, m/s, % or mph</source>
        <translation>„%1“, für die Spalte „%2“ genannt, ist keine bekannte Einheit; schreiben Sie sie wie °C, hPa, m/s, % oder mph</translation>
    </message>
    <message>
        <source>“%1” is no time zone; give a name such as Europe/Berlin, or an offset such as +02:00</source>
        <translation>„%1“ ist keine Zeitzone; nennen Sie eine wie Europe/Berlin, oder einen Abstand wie +02:00</translation>
    </message>
    <message>
        <source>the time zone “%1” cannot be used</source>
        <translation>die Zeitzone „%1“ lässt sich nicht verwenden</translation>
    </message>
    <message>
        <source>column “%1” is in %2, but the agent&apos;s property of that name is in %3; import into another agent</source>
        <translation>die Spalte „%1“ ist in %2, die Größe dieses Namens aber in %3; importieren Sie in eine andere Quelle</translation>
    </message>
    <message>
        <source>no unit</source>
        <translation>keiner Einheit</translation>
    </message>
    <message>
        <source>the row has %1 columns where %2: %3</source>
        <translation>die Zeile hat %1 Spalten, wo %2: %3</translation>
    </message>
    <message>
        <source>the header stands for %1</source>
        <translation>die Kopfzeile %1 vorsieht</translation>
    </message>
    <message>
        <source>the rows before have %1</source>
        <translation>die Zeilen davor %1 haben</translation>
    </message>
    <message>
        <source>%1 is no time</source>
        <translation>%1 ist keine Zeit</translation>
    </message>
    <message>
        <source>%1 is no number</source>
        <translation>%1 ist keine Zahl</translation>
    </message>
    <message>
        <source>The header names %1 columns and the rows have %2</source>
        <translation>Die Kopfzeile nennt %1 Spalten, und die Zeilen haben %2</translation>
    </message>
    <message>
        <source>The file has no header; its columns are called Column 1 to Column %1.</source>
        <translation>Die Datei hat keine Kopfzeile; ihre Spalten heißen Column 1 bis Column %1.</translation>
    </message>
    <message>
        <source>The first column has no name; it counts the rows and is left out.</source>
        <translation>Die erste Spalte hat keinen Namen; sie zählt die Zeilen und bleibt weg.</translation>
    </message>
    <message>
        <source>%1: the first column, which has no name, counts the rows and is left out; the names (%2) belong to columns 2 to %3.</source>
        <translation>%1: die erste, namenlose Spalte zählt die Zeilen und bleibt weg; die Namen (%2) gehören zu den Spalten 2 bis %3.</translation>
    </message>
    <message>
        <source>%1: the last column is always empty and is left out.</source>
        <translation>%1: die letzte Spalte ist immer leer und bleibt weg.</translation>
    </message>
    <message>
        <source>Dates are read with the day first.</source>
        <translation>Datumsangaben wurden mit dem Tag vor dem Monat gelesen.</translation>
    </message>
    <message>
        <source>Dates are read with the month first.</source>
        <translation>Datumsangaben wurden mit dem Monat vor dem Tag gelesen.</translation>
    </message>
    <message>
        <source>%1 with another text in the column passed over.</source>
        <translation>%1 mit anderem Text in der genannten Spalte übergangen.</translation>
    </message>
    <message>
        <source>%1 earlier than the row before; sorted by time.</source>
        <translation>%1 früher als die Zeile davor; nach der Zeit geordnet.</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>line %1, column “%2”: %3</source>
        <translation>Zeile %1, Spalte „%2“: %3</translation>
    </message>
    <message>
        <source>%1 from %2 stored for %3 in %4 (new)%5.</source>
        <translation>%1 aus %2 für %3 in %4 gespeichert (neu)%5.</translation>
    </message>
    <message>
        <source>%1 from %2 stored for %3 in %4%5.</source>
        <translation>%1 aus %2 für %3 in %4 gespeichert%5.</translation>
    </message>
    <message>
        <source>, %1 to %2</source>
        <translation>, %1 bis %2</translation>
    </message>
    <message numerus="yes">
        <source>%1 row(s)</source>
        <translation>
            <numerusform>%1 Zeile</numerusform>
            <numerusform>%1 Zeilen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 value(s)</source>
        <translation>
            <numerusform>%1 Wert</numerusform>
            <numerusform>%1 Werte</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 record(s)</source>
        <translation>
            <numerusform>%1 Messzeile</numerusform>
            <numerusform>%1 Messzeilen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>this replaces %n stored value(s)</source>
        <translation>
            <numerusform>das ersetzt %n gespeicherten Wert</numerusform>
            <numerusform>das ersetzt %n gespeicherte Werte</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> of %n property(s)</source>
        <translation>
            <numerusform> von %n Größe</numerusform>
            <numerusform> von %n Größen</numerusform>
        </translation>
    </message>
    <message>
        <source>this is no file; choose one with rows of measurements</source>
        <translation>das ist keine Datei; wählen Sie eine mit Messzeilen</translation>
    </message>
    <message>
        <source>this is neither text nor a spreadsheet that can be read; export it as CSV or .xlsx</source>
        <translation>das ist weder Text noch eine lesbare Tabelle; exportieren Sie sie als CSV oder .xlsx</translation>
    </message>
    <message>
        <source>this is a spreadsheet in the old binary form; save it as .xlsx or CSV and import that</source>
        <translation>das ist eine Tabelle in der alten Binärform; speichern Sie sie als .xlsx oder CSV und importieren Sie diese</translation>
    </message>
    <message>
        <source>the line does not end; this is no text with a row of measurements in each line</source>
        <translation>die Zeile endet nicht; das ist kein Text mit einer Messzeile je Zeile</translation>
    </message>
    <message>
        <source>the file is damaged and cannot be unpacked (%1); copy or export it again</source>
        <translation>die Datei ist beschädigt und lässt sich nicht entpacken (%1); kopieren oder exportieren Sie sie noch einmal</translation>
    </message>
    <message>
        <source>there is no sheet “%1” with measurements (sheets: %2)</source>
        <translation>es gibt kein Blatt „%1“ mit Messwerten (Blätter: %2)</translation>
    </message>
    <message>
        <source>%1 of %2 rows have the time of another row, with other values; %3</source>
        <translation>%1 von %2 Zeilen haben die Zeit einer anderen Zeile, mit anderen Werten; %3</translation>
    </message>
    <message>
        <source>another table with other columns begins here; import each from a file of its own</source>
        <translation>hier beginnt eine andere Tabelle mit anderen Spalten; importieren Sie jede aus einer eigenen Datei</translation>
    </message>
    <message>
        <source>no column names the quantity of each row (columns: %1)</source>
        <translation>keine Spalte nennt die Größe jeder Zeile (Spalten: %1)</translation>
    </message>
    <message>
        <source>“%1” cannot part columns; give one sign</source>
        <translation>„%1“ kann keine Spalten trennen; geben Sie ein einzelnes Zeichen an</translation>
    </message>
    <message>
        <source>milliseconds since 1970</source>
        <translation>Millisekunden seit 1970</translation>
    </message>
    <message>
        <source>microseconds since 1970</source>
        <translation>Mikrosekunden seit 1970</translation>
    </message>
    <message>
        <source>nanoseconds since 1970</source>
        <translation>Nanosekunden seit 1970</translation>
    </message>
    <message>
        <source>dates in digits, yyyymmddhhmm</source>
        <translation>Datum in Ziffern, jjjjmmtthhmm</translation>
    </message>
    <message>
        <source>days of a spreadsheet</source>
        <translation>Tage einer Tabellenkalkulation</translation>
    </message>
    <message>
        <source>The numbers in “%1” are read as %2.</source>
        <translation>Die Zahlen in „%1“ werden gelesen als: %2.</translation>
    </message>
    <message>
        <source>Dates are read with the year first.</source>
        <translation>Daten werden mit dem Jahr zuerst gelesen.</translation>
    </message>
    <message>
        <source>The time is put together from the columns %1.</source>
        <translation>Die Zeit wird aus den Spalten %1 zusammengesetzt.</translation>
    </message>
    <message>
        <source>Times are read in the zone that the file names: %1.</source>
        <translation>Zeiten werden in der Zeitzone gelesen, die die Datei nennt: %1.</translation>
    </message>
    <message>
        <source>Each row names its quantity in “%1” and has its value in “%2”: %3 in all.</source>
        <translation>Jede Zeile nennt ihre Größe in „%1“ und hat ihren Wert in „%2“: %3 insgesamt.</translation>
    </message>
    <message>
        <source>The sheet “%1” is read (sheets: %2).</source>
        <translation>Gelesen wird das Blatt „%1“ (Blätter: %2).</translation>
    </message>
    <message>
        <source>words such as “%1” are stored as 1 (on, open, yes …) and 0</source>
        <translation>Wörter wie „%1“ werden als 1 (ein, offen, ja …) und 0 gespeichert</translation>
    </message>
    <message>
        <source>In “%1” the number %2 is taken for a gap: %3 times.</source>
        <translation>In „%1“ gilt die Zahl %2 als Lücke: %3-mal.</translation>
    </message>
    <message>
        <source>units are taken from this line</source>
        <translation>die Einheiten stehen in dieser Zeile</translation>
    </message>
    <message>
        <source>Lines above the header passed over: %1.</source>
        <translation>Zeilen über der Kopfzeile, übergangen: %1.</translation>
    </message>
    <message>
        <source>The header comes again further down: %1 times, passed over.</source>
        <translation>Die Kopfzeile kommt weiter unten wieder: %1-mal, übergangen.</translation>
    </message>
    <message>
        <source>Lines of comment passed over: %1.</source>
        <translation>Kommentarzeilen, übergangen: %1.</translation>
    </message>
    <message>
        <source>lines below the table passed over from here: %1, beginning with “%2”</source>
        <translation>ab hier übergangene Zeilen unter der Tabelle: %1, beginnend mit „%2“</translation>
    </message>
    <message>
        <source>the first of %1 rows with fewer columns than the header; what they lack stays empty</source>
        <translation>die erste von %1 Zeilen mit weniger Spalten als die Kopfzeile; was fehlt, bleibt leer</translation>
    </message>
    <message numerus="yes">
        <source>%1 cell(s) left empty, being no number</source>
        <translation>
            <numerusform>%1 Zelle leer gelassen, weil sie keine Zahl ist</numerusform>
            <numerusform>%1 Zellen leer gelassen, weil sie keine Zahlen sind</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 at a time that comes again later; of each column the last number was kept.</source>
        <translation>%1 mit einer Zeit, die später wiederkommt; von jeder Spalte wurde die letzte Zahl behalten.</translation>
    </message>
    <message>
        <source>%1 that cannot be read passed over, the first: %2.</source>
        <translation>%1 nicht lesbar und übergangen, die erste: %2.</translation>
    </message>
    <message>
        <source>Left out, without a number or with hardly one: %1.</source>
        <translation>Weggelassen, ohne Zahl oder mit kaum einer: %1.</translation>
    </message>
    <message>
        <source>The table of columns</source>
        <translation>Die Tabelle der Spalten</translation>
    </message>
    <message>
        <source>name the column of the time of day too under Time column, as Date+Time, or keep the last of them under At one time</source>
        <translation>nennen Sie unter „Zeitspalte“ auch die Spalte der Uhrzeit, als Datum+Uhrzeit, oder behalten Sie unter „Zur selben Zeit“ die letzte</translation>
    </message>
    <message>
        <source>“%1” may have thousands or decimals, and no number in the file tells which; choose the Decimal sign</source>
        <translation>„%1“ kann Tausender oder Dezimalstellen haben, und keine Zahl der Datei verrät es; wählen Sie das „Dezimalzeichen“</translation>
    </message>
    <message>
        <source>%1 of %2 rows cannot be read, the first: %3; tick Skip rows without a time to import the others</source>
        <translation>%1 von %2 Zeilen sind nicht lesbar, die erste: %3; haken Sie „Zeilen ohne Zeit übergehen“ an, um die anderen zu importieren</translation>
    </message>
    <message>
        <source>they differ in “%1”: take those of one under Rows, as %2</source>
        <translation>sie unterscheiden sich in „%1“: unter Zeilen nur die eines Wertes nehmen, etwa %2</translation>
    </message>
    <message>
        <source>this is an archive of files; unpack it and import the files in it</source>
        <translation>dies ist ein Archiv mit Dateien; entpacken Sie es und importieren Sie die Dateien daraus</translation>
    </message>
    <message>
        <source>Each row is a day, and %1 columns are times of day, from %2 to %3: each becomes a record of its own.</source>
        <translation>Jede Zeile ist ein Tag, und %1 Spalten sind Uhrzeiten, von %2 bis %3: Jede wird eine eigene Messzeile.</translation>
    </message>
    <message>
        <source>the rows of %1 devices or places, named in “%2”, alternate; take those of one under Rows, as %3, or join all of them in one line with Keep the last row under At one time</source>
        <translation>die Zeilen von %1 Geräten oder Orten, genannt in „%2“, wechseln sich ab; nehmen Sie die eines einzigen unter Zeilen, als %3, oder verbinden Sie alle zu einer Linie mit Letzte Zeile behalten unter Zur selben Zeit</translation>
    </message>
    <message>
        <source>column “%1” is in %2, but its cells are in %3; if the cells are right, choose %3 as its unit</source>
        <translation>die Spalte „%1“ ist in %2, ihre Zellen aber sind in %3; wenn die Zellen recht haben, wählen Sie %3 als ihre Einheit</translation>
    </message>
    <message>
        <source>units that are not known stand in this line: %1; the numbers are stored without them</source>
        <translation>in dieser Zeile stehen unbekannte Einheiten: %1; die Zahlen werden ohne sie gespeichert</translation>
    </message>
    <message>
        <source>this is a folder; choose a file in it</source>
        <translation>das ist ein Ordner; wählen Sie eine Datei darin</translation>
    </message>
    <message>
        <source>this is %1, no table with a row in each line; export the measurements as CSV or .xlsx</source>
        <translation>das ist %1 und keine Tabelle mit Messwerten in jeder Zeile; exportieren Sie die Messwerte als CSV oder .xlsx</translation>
    </message>
    <message>
        <source>seconds since 1970</source>
        <translation>Sekunden seit 1970</translation>
    </message>
    <message>
        <source>the numbers in “%1” are no %2: they would lie before 1990 or more than ten years ahead; if they count from the start of a run, there is no start in the file: add a column with dates and times, and name it under Time column</source>
        <translation>die Zahlen in „%1“ sind keine %2: Sie lägen vor 1990 oder mehr als zehn Jahre in der Zukunft; falls sie ab dem Beginn eines Laufs zählen, steht kein Beginn in der Datei: ergänzen Sie eine Spalte mit Datum und Uhrzeit, und nennen Sie diese unter „Zeitspalte“</translation>
    </message>
    <message>
        <source>%1; the recorder probably keeps standard time: enter %2 under Time zone, or tick Skip rows without a time to pass over such rows</source>
        <translation>%1; das Messgerät bleibt wohl auf Normalzeit: geben Sie unter „Zeitzone“ %2 ein, oder haken Sie „Zeilen ohne Zeit übergehen“ an, um auf solche Zeilen zu verzichten</translation>
    </message>
    <message>
        <source>%1 does not exist in %2, where clocks were put forward</source>
        <translation>%1 gibt es in %2 nicht, dort wurden die Uhren vorgestellt</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Qualität</translation>
    </message>
</context>
<context>
    <name>KTVDataClusterViewController</name>
    <message>
        <source>Date range</source>
        <translation>Zeitraum</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Von</translation>
    </message>
    <message>
        <source>From date</source>
        <translation>Von-Datum</translation>
    </message>
    <message>
        <source>Start of the range; Return refreshes</source>
        <translation>Beginn des Zeitraums; die Eingabetaste aktualisiert</translation>
    </message>
    <message>
        <source>To</source>
        <translation>Bis</translation>
    </message>
    <message>
        <source>To date</source>
        <translation>Bis-Datum</translation>
    </message>
    <message>
        <source>End of the range; Return refreshes</source>
        <translation>Ende des Zeitraums; die Eingabetaste aktualisiert</translation>
    </message>
    <message>
        <source>Quick range</source>
        <translation>Zeitraum</translation>
    </message>
    <message>
        <source>Set both dates to a named range</source>
        <translation>Beide Daten auf einen benannten Zeitraum setzen</translation>
    </message>
    <message>
        <source>Quick Range</source>
        <translation>Zeitraum</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
</context>
<context>
    <name>KTVPlotixPlugIn</name>
    <message>
        <source>Graph</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>Show or hide the details</source>
        <translation>Einzelheiten zeigen oder verbergen</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Einzelheiten</translation>
    </message>
    <message>
        <source>Property Details</source>
        <translation>Einzelheiten der Größen</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
</context>
<context>
    <name>KTVPlotixToolbarPlugIn</name>
    <message>
        <source>&amp;Properties to plot</source>
        <translation>&amp;Größen für den Trend</translation>
    </message>
    <message>
        <source>Properties to plot</source>
        <translation>Größen für den Trend</translation>
    </message>
    <message>
        <source>Space ticks the selected properties</source>
        <translation>Die Leertaste kreuzt die ausgewählten Größen an</translation>
    </message>
    <message>
        <source>&amp;Title</source>
        <translation>&amp;Titel</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>&amp;Open in separate window</source>
        <translation>In eigenem &amp;Fenster öffnen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
</context>
<context>
    <name>MemoryText</name>
    <message>
        <source>The records do not fit into memory: choose a shorter range.</source>
        <translation>Die Daten passen nicht in den Speicher: wählen Sie einen kürzeren Zeitraum.</translation>
    </message>
    <message>
        <source>%1 years</source>
        <translation>%1 Jahre</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 Tage</translation>
    </message>
    <message>
        <source>%1 hours</source>
        <translation>%1 Stunden</translation>
    </message>
    <message>
        <source>%1 minutes</source>
        <translation>%1 Minuten</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 Sekunden</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 kB</source>
        <translation>%1 kB</translation>
    </message>
    <message>
        <source>1 property</source>
        <translation>1 Größe</translation>
    </message>
    <message>
        <source>%1 properties</source>
        <translation>%1 Größen</translation>
    </message>
    <message>
        <source>%1 of %2 need %3 of memory, but %4 may be used: choose a range of at most %5, or allow more with PLOTIX_MEMORY_BUDGET.</source>
        <translation>%1 mit %2 brauchen %3 Speicher, erlaubt sind %4: wählen Sie höchstens %5, oder erlauben Sie mehr mit PLOTIX_MEMORY_BUDGET.</translation>
    </message>
</context>
<context>
    <name>NewTrend</name>
    <message>
        <source>New Trend</source>
        <translation>Neuer Trend</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 und %2</translation>
    </message>
    <message>
        <source>%1, %2 and %3 more</source>
        <translation>%1, %2 und %3 weitere</translation>
    </message>
</context>
<context>
    <name>OutputText</name>
    <message>
        <source>“%1” is a PNG picture. Choose another name.</source>
        <translation>„%1“ ist ein PNG-Bild. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>“%1” is a PDF document. Choose another name.</source>
        <translation>„%1“ ist ein PDF-Dokument. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>“%1” is a text. Choose another name.</source>
        <translation>„%1“ ist ein Text. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>“%1” is a spreadsheet or another archive. Choose another name.</source>
        <translation>„%1“ ist eine Arbeitsmappe oder ein anderes Archiv. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>“%1” is a site or another database. Choose another name.</source>
        <translation>„%1“ ist eine Anlage oder eine andere Datenbank. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>“%1” is a file of another kind. Choose another name.</source>
        <translation>„%1“ ist eine Datei anderer Art. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>The name “%1” must end in .%2.</source>
        <translation>Der Name „%1“ muss auf .%2 enden.</translation>
    </message>
    <message>
        <source> or .</source>
        <translation> oder .</translation>
    </message>
    <message>
        <source>“%1” is not a file that can be replaced. Choose another name.</source>
        <translation>„%1“ ist keine Datei, die ersetzt werden kann. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>“%1” cannot be written: %2</source>
        <translation>„%1“ kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>“%1” is an SVG drawing. Choose another name.</source>
        <translation>„%1“ ist eine SVG-Zeichnung. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>“%1” is the site itself. Choose another name.</source>
        <translation>„%1“ ist die Anlage selbst. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>“%1” is not a case, so it is not written over. Choose another name.</source>
        <translation>„%1“ ist kein Fall und wird deshalb nicht überschrieben. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>“%1” is open, or was not closed properly. Close it, or choose another name.</source>
        <translation>„%1“ ist offen oder wurde nicht richtig geschlossen. Schließen Sie die Datei, oder wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>Nothing was recorded between %1 and %2. Choose another span.</source>
        <translation>Zwischen %1 und %2 wurde nichts aufgezeichnet. Wählen Sie einen anderen Zeitraum.</translation>
    </message>
    <message>
        <source>%1 of %2, %3, %4</source>
        <translation>%1 von %2, %3, %4</translation>
    </message>
    <message numerus="yes">
        <source>%Ln record(s)</source>
        <translation>
            <numerusform>%Ln Messzeile</numerusform>
            <numerusform>%Ln Messzeilen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln property(s)</source>
        <translation>
            <numerusform>%Ln Größe</numerusform>
            <numerusform>%Ln Größen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln note(s)</source>
        <translation>
            <numerusform>%Ln Notiz</numerusform>
            <numerusform>%Ln Notizen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>PageReport</name>
    <message>
        <source>Property</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>Minimum</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>Maximum</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>Mittelwert</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>Werte</translation>
    </message>
    <message>
        <source>Plotix, %1</source>
        <translation>Plotix, %1</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
</context>
<context>
    <name>Plotix</name>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Property</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>Minimum</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>Maximum</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>Mittelwert</translation>
    </message>
    <message>
        <source>No. of Points</source>
        <translation>Anzahl Punkte</translation>
    </message>
    <message>
        <source>shown</source>
        <translation>gezeigt</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>verborgen</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Von</translation>
    </message>
    <message>
        <source>To</source>
        <translation>Bis</translation>
    </message>
    <message>
        <source>Quick Range</source>
        <translation>Zeitraum</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Illegal Date Range</source>
        <translation>Unzulässiger Zeitraum</translation>
    </message>
    <message>
        <source>The &quot;from&quot; date must be less than the &quot;to&quot; date.</source>
        <translation>Der Anfang muss vor dem Ende liegen.</translation>
    </message>
    <message>
        <source>Database Access Error</source>
        <translation>Fehler beim Zugriff auf die Datenbank</translation>
    </message>
    <message>
        <source>Returned object was malformed.</source>
        <translation>Die Antwort war nicht lesbar.</translation>
    </message>
    <message>
        <source>No Properties Available to Plot</source>
        <translation>Keine Größen zum Zeichnen</translation>
    </message>
    <message>
        <source>No Data Available for Date Range</source>
        <translation>Keine Daten in diesem Zeitraum</translation>
    </message>
    <message>
        <source>New Trend</source>
        <translation>Neuer Trend</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>Last 24 Hours</source>
        <translation>Letzte 24 Stunden</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation>Gestern</translation>
    </message>
    <message>
        <source>This Week</source>
        <translation>Diese Woche</translation>
    </message>
    <message>
        <source>Last Week</source>
        <translation>Letzte Woche</translation>
    </message>
    <message>
        <source>Last 7 Days</source>
        <translation>Letzte 7 Tage</translation>
    </message>
    <message>
        <source>This Month</source>
        <translation>Dieser Monat</translation>
    </message>
    <message>
        <source>Last Month</source>
        <translation>Letzter Monat</translation>
    </message>
    <message>
        <source>Last 30 Days</source>
        <translation>Letzte 30 Tage</translation>
    </message>
    <message>
        <source>This Year</source>
        <translation>Dieses Jahr</translation>
    </message>
    <message>
        <source>Last Year</source>
        <translation>Letztes Jahr</translation>
    </message>
    <message>
        <source>Last 12 Months</source>
        <translation>Letzte 12 Monate</translation>
    </message>
    <message>
        <source>All Time</source>
        <translation>Gesamter Zeitraum</translation>
    </message>
    <message>
        <source>Not yet the chosen dates</source>
        <translation>Noch nicht die gewählten Daten</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>now</source>
        <translation>jetzt</translation>
    </message>
    <message>
        <source>today</source>
        <translation>heute</translation>
    </message>
    <message>
        <source>yesterday</source>
        <translation>gestern</translation>
    </message>
    <message>
        <source>tomorrow</source>
        <translation>morgen</translation>
    </message>
    <message>
        <source>This is not understood as a date. Write it such as %1, or %2.</source>
        <translation>Das ist nicht als Datum zu verstehen. Schreiben Sie etwa %1 oder %2.</translation>
    </message>
    <message>
        <source>Lines</source>
        <translation>Linien</translation>
    </message>
    <message>
        <source>Show Only</source>
        <translation>Nur zeigen</translation>
    </message>
    <message>
        <source>Show All</source>
        <translation>Alle zeigen</translation>
    </message>
    <message>
        <source>Show Only This</source>
        <translation>Nur diese zeigen</translation>
    </message>
    <message>
        <source>Outside the values shown: %1</source>
        <translation>Außerhalb der gezeigten Werte: %1</translation>
    </message>
    <message>
        <source>Too small to be seen: %1</source>
        <translation>Zu klein, um sichtbar zu sein: %1</translation>
    </message>
    <message>
        <source>Show Scaled</source>
        <translation>Skaliert zeigen</translation>
    </message>
    <message>
        <source>Fit all values, however large or small</source>
        <translation>Alle Werte einpassen, wie groß oder klein sie auch sind</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>&amp;Automatic</source>
        <translation>&amp;Automatisch</translation>
    </message>
    <message>
        <source>&amp;One Scale</source>
        <translation>&amp;Eine Skala</translation>
    </message>
    <message>
        <source>Lane per &amp;Unit</source>
        <translation>Spur je Ein&amp;heit</translation>
    </message>
    <message>
        <source>Lane per &amp;Property</source>
        <translation>Spur je G&amp;röße</translation>
    </message>
    <message>
        <source>&amp;Lanes…</source>
        <translation>&amp;Spuren …</translation>
    </message>
    <message>
        <source>&amp;Equal Heights</source>
        <translation>&amp;Gleiche Höhen</translation>
    </message>
    <message>
        <source>Values far off the others become marks with their number at the edge of a lane.</source>
        <translation>Werte weit abseits der anderen werden zu Marken mit ihrer Zahl am Rand einer Spur.</translation>
    </message>
    <message>
        <source>Lane</source>
        <translation>Spur</translation>
    </message>
    <message>
        <source>Scale</source>
        <translation>Skala</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>Bereich</translation>
    </message>
    <message>
        <source>Lowest</source>
        <translation>Kleinster</translation>
    </message>
    <message>
        <source>Highest</source>
        <translation>Größter</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>All values</source>
        <translation>Alle Werte</translation>
    </message>
    <message>
        <source>Without outliers</source>
        <translation>Ohne Ausreißer</translation>
    </message>
    <message>
        <source>Only growing</source>
        <translation>Nur wachsend</translation>
    </message>
    <message>
        <source>Fixed</source>
        <translation>Fest</translation>
    </message>
    <message>
        <source>Lanes</source>
        <translation>Spuren</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Linear</source>
        <translation>Linear</translation>
    </message>
    <message>
        <source>Logarithmic</source>
        <translation>Logarithmisch</translation>
    </message>
    <message>
        <source>The lowest value must be a number below the highest.</source>
        <translation>Der kleinste Wert muss eine Zahl unter dem größten sein.</translation>
    </message>
    <message>
        <source>A logarithmic scale begins above zero: type a lowest value above 0.</source>
        <translation>Eine logarithmische Skala beginnt über null: einen kleinsten Wert über 0 eingeben.</translation>
    </message>
    <message>
        <source>A height is a number above 0, in proportion to the others.</source>
        <translation>Eine Höhe ist eine Zahl über 0, im Verhältnis zu den anderen.</translation>
    </message>
    <message>
        <source>1 value off the scale: %1</source>
        <translation>1 Wert außerhalb der Skala: %1</translation>
    </message>
    <message>
        <source>&amp;Values</source>
        <translation>&amp;Werte</translation>
    </message>
    <message>
        <source>Value &amp;Line at the Pointer</source>
        <translation>Werte&amp;linie am Zeiger</translation>
    </message>
    <message>
        <source>&amp;Hold the Value Line</source>
        <translation>Wertelinie fest&amp;halten</translation>
    </message>
    <message>
        <source>Go to &amp;Time…</source>
        <translation>Zu einer &amp;Zeit gehen …</translation>
    </message>
    <message>
        <source>Keys Follow Next L&amp;ine</source>
        <translation>Tasten folgen der nä&amp;chsten Linie</translation>
    </message>
    <message>
        <source>Next &amp;Record</source>
        <translation>Nächster Mess&amp;wert</translation>
    </message>
    <message>
        <source>Previous R&amp;ecord</source>
        <translation>Voriger Messwer&amp;t</translation>
    </message>
    <message>
        <source>Next &amp;Maximum</source>
        <translation>Nächstes &amp;Maximum</translation>
    </message>
    <message>
        <source>Previous M&amp;aximum</source>
        <translation>Voriges Ma&amp;ximum</translation>
    </message>
    <message>
        <source>Next Mi&amp;nimum</source>
        <translation>Nächstes Mi&amp;nimum</translation>
    </message>
    <message>
        <source>Pre&amp;vious Minimum</source>
        <translation>&amp;Voriges Minimum</translation>
    </message>
    <message>
        <source>Next &amp;Gap</source>
        <translation>Nächste Lück&amp;e</translation>
    </message>
    <message>
        <source>&amp;Previous Gap</source>
        <translation>Vori&amp;ge Lücke</translation>
    </message>
    <message>
        <source>Next Time at This Val&amp;ue</source>
        <translation>Nächstes Mal bei diesem We&amp;rt</translation>
    </message>
    <message>
        <source>%1 before</source>
        <translation>%1 davor</translation>
    </message>
    <message>
        <source>%1 later</source>
        <translation>%1 später</translation>
    </message>
    <message>
        <source>not recorded</source>
        <translation>nicht aufgezeichnet</translation>
    </message>
    <message>
        <source>Go to Time</source>
        <translation>Zu einer Zeit gehen</translation>
    </message>
    <message>
        <source>&amp;Time:</source>
        <translation>&amp;Zeit:</translation>
    </message>
    <message>
        <source>held</source>
        <translation>gehalten</translation>
    </message>
    <message>
        <source>… and %1 more</source>
        <translation>… und %1 weitere</translation>
    </message>
    <message>
        <source>Mar&amp;ks</source>
        <translation>&amp;Marken</translation>
    </message>
    <message>
        <source>Set Mark &amp;A Here</source>
        <translation>Marke &amp;A hier setzen</translation>
    </message>
    <message>
        <source>Set Mark &amp;B Here</source>
        <translation>Marke &amp;B hier setzen</translation>
    </message>
    <message>
        <source>&amp;Marks and Differences…</source>
        <translation>&amp;Marken und Unterschiede …</translation>
    </message>
    <message>
        <source>Move Mark to &amp;Next Record</source>
        <translation>Marke zum &amp;nächsten Messwert</translation>
    </message>
    <message>
        <source>Move Mark to &amp;Previous Record</source>
        <translation>Marke zum &amp;vorigen Messwert</translation>
    </message>
    <message>
        <source>&amp;Remove Marks</source>
        <translation>Marken &amp;entfernen</translation>
    </message>
    <message>
        <source>&amp;Fit to Marks</source>
        <translation>An Marken an&amp;passen</translation>
    </message>
    <message>
        <source>&amp;Dates from Marks</source>
        <translation>&amp;Daten aus den Marken</translation>
    </message>
    <message>
        <source>&amp;Copy Range</source>
        <translation>Zeitraum &amp;kopieren</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>Unterschied</translation>
    </message>
    <message>
        <source>Slope</source>
        <translation>Steigung</translation>
    </message>
    <message>
        <source>Time-weighted</source>
        <translation>Zeitgewichtet</translation>
    </message>
    <message>
        <source>Coverage</source>
        <translation>Abdeckung</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Marks and Differences</source>
        <translation>Marken und Unterschiede</translation>
    </message>
    <message>
        <source>Copy &amp;Table</source>
        <translation>&amp;Tabelle kopieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Type two times, or set the marks in the graph.</source>
        <translation>Geben Sie zwei Zeiten ein oder setzen Sie die Marken im Diagramm.</translation>
    </message>
    <message>
        <source>%1 values off the scale, up to %2</source>
        <translation>%1 Werte außerhalb der Skala, bis %2</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>For&amp;ward</source>
        <translation>&amp;Vor</translation>
    </message>
    <message>
        <source>Fit &amp;Values to Shown Times</source>
        <translation>&amp;Werte an gezeigte Zeiten anpassen</translation>
    </message>
    <message>
        <source>Fit &amp;Everything</source>
        <translation>&amp;Alles einpassen</translation>
    </message>
    <message>
        <source>&amp;Zoom to a Box</source>
        <translation>&amp;Rahmen vergrößern</translation>
    </message>
    <message>
        <source>Draw a box with the next drag, or at any time with Ctrl held; a low one zooms the times alone.</source>
        <translation>Beim nächsten Ziehen einen Rahmen aufziehen, jederzeit mit gehaltener Strg-Taste; ein flacher vergrößert nur die Zeiten.</translation>
    </message>
    <message>
        <source>&amp;Move</source>
        <translation>&amp;Bewegen</translation>
    </message>
    <message>
        <source>Look</source>
        <translation>Aussehen</translation>
    </message>
    <message>
        <source>&amp;Look</source>
        <translation>A&amp;ussehen</translation>
    </message>
    <message>
        <source>Go to Maximum</source>
        <translation>Zum Maximum</translation>
    </message>
    <message>
        <source>Go to Minimum</source>
        <translation>Zum Minimum</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Spalten</translation>
    </message>
    <message>
        <source>Statistics of</source>
        <translation>Statistik:</translation>
    </message>
    <message>
        <source>fetched</source>
        <translation>gelesen</translation>
    </message>
    <message>
        <source>Everything that was read</source>
        <translation>Alles, was gelesen wurde</translation>
    </message>
    <message>
        <source>visible</source>
        <translation>sichtbar</translation>
    </message>
    <message>
        <source>The times that the graph shows</source>
        <translation>Die Zeiten, die der Graph zeigt</translation>
    </message>
    <message>
        <source>A to B</source>
        <translation>A bis B</translation>
    </message>
    <message>
        <source>The time between the marks A and B</source>
        <translation>Die Zeit zwischen den Marken A und B</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Leave out what is still being worked out</source>
        <translation>Weglassen, was noch berechnet wird</translation>
    </message>
    <message>
        <source>what is visible</source>
        <translation>das, was zu sehen ist</translation>
    </message>
    <message>
        <source>the time from A to B</source>
        <translation>die Zeit von A bis B</translation>
    </message>
    <message>
        <source>working… %1 %</source>
        <translation>wird berechnet … %1 %</translation>
    </message>
    <message>
        <source>Click to set a limit</source>
        <translation>Klicken, um einen Grenzwert festzulegen</translation>
    </message>
    <message>
        <source>below %1</source>
        <translation>unter %1</translation>
    </message>
    <message>
        <source>above %1</source>
        <translation>über %1</translation>
    </message>
    <message>
        <source>Previou&amp;s Time at This Value</source>
        <translation>Vorige&amp;s Mal bei diesem Wert</translation>
    </message>
    <message>
        <source>For example 14:35, last Tuesday 14:35, 3 Feb, 3 Feb 2013 8:00, now</source>
        <translation>Zum Beispiel 14:35, letzten Dienstag 14:35, 3. Feb, 3.2.2013 8:00, jetzt</translation>
    </message>
    <message>
        <source>last</source>
        <extracomment>Before a day of the week: &quot;last Tuesday&quot;. Words that begin so are understood too.</extracomment>
        <translation>letzt</translation>
    </message>
    <message>
        <source>To %1</source>
        <translation>Bis %1</translation>
    </message>
    <message>
        <source>&amp;Stay Where Records Are</source>
        <translation>Bei den &amp;Messwerten bleiben</translation>
    </message>
    <message>
        <source>recorded, not valid</source>
        <translation>aufgezeichnet, nicht gültig</translation>
    </message>
    <message>
        <source>nothing recorded</source>
        <translation>nichts aufgezeichnet</translation>
    </message>
    <message>
        <source>Hatches the times at which nothing valid was recorded.</source>
        <translation>Schraffiert die Zeiten, zu denen nichts Gültiges aufgezeichnet wurde.</translation>
    </message>
    <message>
        <source>&amp;Quality Strip</source>
        <translation>&amp;Qualitätsstreifen</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <extracomment>A line and with what it is compared: &quot;Power, a week earlier&quot;.</extracomment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>A &amp;Day Earlier</source>
        <translation>Einen &amp;Tag früher</translation>
    </message>
    <message>
        <source>A &amp;Week Earlier</source>
        <translation>Eine &amp;Woche früher</translation>
    </message>
    <message>
        <source>A &amp;Month Earlier</source>
        <translation>Einen &amp;Monat früher</translation>
    </message>
    <message>
        <source>A &amp;Year Earlier</source>
        <translation>Ein &amp;Jahr früher</translation>
    </message>
    <message>
        <source>&amp;Compare</source>
        <translation>&amp;Vergleichen</translation>
    </message>
    <message>
        <source>&amp;Other Distances…</source>
        <translation>&amp;Andere Abstände …</translation>
    </message>
    <message>
        <source>Compare with &amp;Nothing</source>
        <translation>Mit &amp;nichts vergleichen</translation>
    </message>
    <message>
        <source>Compare</source>
        <translation>Vergleichen</translation>
    </message>
    <message>
        <source>a year earlier</source>
        <translation>ein Jahr früher</translation>
    </message>
    <message>
        <source>%1 years earlier</source>
        <translation>%1 Jahre früher</translation>
    </message>
    <message>
        <source>a month earlier</source>
        <translation>einen Monat früher</translation>
    </message>
    <message>
        <source>%1 months earlier</source>
        <translation>%1 Monate früher</translation>
    </message>
    <message>
        <source>a week earlier</source>
        <translation>eine Woche früher</translation>
    </message>
    <message>
        <source>%1 weeks earlier</source>
        <translation>%1 Wochen früher</translation>
    </message>
    <message>
        <source>a day earlier</source>
        <translation>einen Tag früher</translation>
    </message>
    <message>
        <source>%1 days earlier</source>
        <translation>%1 Tage früher</translation>
    </message>
    <message>
        <source>%1 earlier</source>
        <translation>%1 früher</translation>
    </message>
    <message>
        <source>from %1</source>
        <translation>ab %1</translation>
    </message>
    <message>
        <source>Compare with Earlier Times</source>
        <translation>Mit früheren Zeiten vergleichen</translation>
    </message>
    <message>
        <source>&amp;So long before:</source>
        <translation>&amp;So lange davor:</translation>
    </message>
    <message>
        <source>For example 7d, 2w, 3mo, 1y. Days, weeks, months and years go by the clock on the wall; 36h are hours that pass.</source>
        <translation>Zum Beispiel 7d, 2w, 3mo, 1y für Tage, Wochen, Monate, Jahre nach der Uhr an der Wand; 36h sind Stunden, die vergehen.</translation>
    </message>
    <message>
        <source>“%1” is no distance: give a number with s, min, h, d, w, mo or y.</source>
        <translation>„%1“ ist kein Abstand: Geben Sie eine Zahl mit s, min, h, d, w, mo oder y an.</translation>
    </message>
    <message>
        <source>Lay A–B Over the &amp;Value Line</source>
        <translation>A–B über die Werte&amp;linie legen</translation>
    </message>
    <message>
        <source>Lay A–B Over a &amp;Time…</source>
        <translation>A–B über eine &amp;Zeit legen …</translation>
    </message>
    <message>
        <source>L&amp;imits and Notes</source>
        <translation>&amp;Grenzwerte und Notizen</translation>
    </message>
    <message>
        <source>Show &amp;Limits</source>
        <translation>&amp;Grenzwerte zeigen</translation>
    </message>
    <message>
        <source>&amp;Widen Values to the Limits</source>
        <translation>&amp;Werte bis zu den Grenzwerten zeigen</translation>
    </message>
    <message>
        <source>Set Limits &amp;of</source>
        <translation>Grenzwerte &amp;setzen von</translation>
    </message>
    <message>
        <source>Limits…</source>
        <translation>Grenzwerte …</translation>
    </message>
    <message>
        <source>Next Limit &amp;Crossing</source>
        <translation>Nächstes Ü&amp;berschreiten eines Grenzwerts</translation>
    </message>
    <message>
        <source>Previous Limit Cr&amp;ossing</source>
        <translation>V&amp;origes Überschreiten eines Grenzwerts</translation>
    </message>
    <message>
        <source>Legend &amp;Below the Graph</source>
        <translation>Legende &amp;unter dem Diagramm</translation>
    </message>
    <message>
        <source>Legend at the &amp;Right</source>
        <translation>Legende &amp;rechts</translation>
    </message>
    <message>
        <source>&amp;Usual Axis Titles</source>
        <translation>Ü&amp;bliche Achsentitel</translation>
    </message>
    <message>
        <source>&amp;No Axis Titles</source>
        <translation>Ke&amp;ine Achsentitel</translation>
    </message>
    <message>
        <source>Titles of &amp;Value Axes</source>
        <translation>Titel der &amp;Wertachsen</translation>
    </message>
    <message>
        <source>Titles of &amp;All Axes</source>
        <translation>Titel &amp;aller Achsen</translation>
    </message>
    <message>
        <source>L&amp;egend and Titles</source>
        <translation>Legen&amp;de und Titel</translation>
    </message>
    <message>
        <source>Show &amp;Notes</source>
        <translation>&amp;Notizen zeigen</translation>
    </message>
    <message>
        <source>&amp;Add Note Here…</source>
        <translation>Notiz &amp;hier hinzufügen …</translation>
    </message>
    <message>
        <source>Add Note from A to &amp;B…</source>
        <translation>Notiz von A bis &amp;B hinzufügen …</translation>
    </message>
    <message>
        <source>N&amp;ext Note</source>
        <translation>Nä&amp;chste Notiz</translation>
    </message>
    <message>
        <source>&amp;Previous Note</source>
        <translation>&amp;Vorige Notiz</translation>
    </message>
    <message>
        <source>Lis&amp;t of Notes…</source>
        <translation>&amp;Liste der Notizen …</translation>
    </message>
    <message>
        <source>Lay A–B Over the Time From</source>
        <translation>A–B über die Zeit legen ab</translation>
    </message>
    <message>
        <source>%1 ago</source>
        <extracomment>A time before now: %1 is a number with a unit, &quot;2 days ago&quot;</extracomment>
        <translation>vor %1</translation>
    </message>
    <message>
        <source>year years; month months; week weeks; day days; hour hours; minute minutes; second seconds</source>
        <extracomment>As people type them after a number, each unit in all its forms, in this order</extracomment>
        <translation>jahr jahre jahren; monat monate monaten; woche wochen; tag tage tagen; stunde stunden std; minute minuten; sekunde sekunden sek</translation>
    </message>
    <message>
        <source>arrived late, %1</source>
        <translation>verspätet eingetroffen, %1</translation>
    </message>
    <message>
        <source>corrected %1</source>
        <translation>berichtigt %1</translation>
    </message>
    <message>
        <source>arrived late</source>
        <translation>verspätet</translation>
    </message>
    <message>
        <source>corrected</source>
        <translation>berichtigt</translation>
    </message>
    <message>
        <source>By &amp;Any Time</source>
        <translation>Um &amp;beliebige Zeit</translation>
    </message>
    <message>
        <source>By More than a &amp;Minute</source>
        <translation>Um mehr als eine &amp;Minute</translation>
    </message>
    <message>
        <source>By More than an &amp;Hour</source>
        <translation>Um mehr als eine &amp;Stunde</translation>
    </message>
    <message>
        <source>By More than a &amp;Day</source>
        <translation>Um mehr als einen &amp;Tag</translation>
    </message>
    <message>
        <source>Marks records that were added between others, and those whose values were replaced, after the fact.</source>
        <translation>Kennzeichnet Messwerte, die nachträglich zwischen andere kamen oder ersetzt wurden.</translation>
    </message>
    <message>
        <source>A row for each line at the foot of its lane: where it has records, where it has none, and where they are not valid, late or corrected.</source>
        <translation>Eine Zeile für jede Linie am Fuß ihrer Spur: wo sie Messwerte hat, wo keine, und wo sie ungültig, verspätet oder berichtigt sind.</translation>
    </message>
    <message>
        <source>What came sooner is not called late.</source>
        <translation>Was früher eintraf, gilt nicht als verspätet.</translation>
    </message>
    <message>
        <source>clocks %1</source>
        <extracomment>Where the clocks are changed to summer time or back: &quot;clocks +1 h&quot;.</extracomment>
        <translation>Uhr %1</translation>
    </message>
    <message>
        <source>Time &amp;Zone</source>
        <translation>Ze&amp;itzone</translation>
    </message>
    <message>
        <source>&amp;My Time Zone (%1)</source>
        <translation>&amp;Meine Zeitzone (%1)</translation>
    </message>
    <message>
        <source>That of the &amp;Site (%1)</source>
        <translation>Die der &amp;Anlage (%1)</translation>
    </message>
    <message>
        <source>&amp;UTC</source>
        <translation>&amp;UTC</translation>
    </message>
    <message>
        <source>&amp;Other Time Zone…</source>
        <translation>Ande&amp;re Zeitzone…</translation>
    </message>
    <message>
        <source>Usual &amp;Form of Times</source>
        <translation>Übliche &amp;Form der Zeiten</translation>
    </message>
    <message>
        <source>&amp;24 Hours</source>
        <translation>&amp;24 Stunden</translation>
    </message>
    <message>
        <source>As in My &amp;Language</source>
        <translation>Wie in meiner &amp;Sprache</translation>
    </message>
    <message>
        <source>Mark Where Clocks Are &amp;Changed</source>
        <translation>U&amp;hrumstellung anzeigen</translation>
    </message>
    <message>
        <source>not set</source>
        <translation>nicht angegeben</translation>
    </message>
    <message>
        <source>Time Zone</source>
        <translation>Zeitzone</translation>
    </message>
    <message>
        <source>Search for a city, a country or UTC+5:45</source>
        <translation>Nach Stadt, Land oder UTC+5:45 suchen</translation>
    </message>
    <message>
        <source>No time zone is called “%1”. Did you mean %2?</source>
        <translation>Keine Zeitzone heißt „%1“. Meinten Sie %2?</translation>
    </message>
    <message>
        <source>%1 against %2</source>
        <extracomment>Behind a value: %1 is by how much it is more, such as &quot;+3.3 K&quot;, %2 than when: &quot;a week earlier&quot;.</extracomment>
        <translation>%1 gegenüber: %2</translation>
    </message>
    <message>
        <source>maximum</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>minimum</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>maximum in view</source>
        <translation>Maximum im Bild</translation>
    </message>
    <message>
        <source>minimum in view</source>
        <translation>Minimum im Bild</translation>
    </message>
    <message>
        <source>Time Above a Limit</source>
        <translation>Zeit über einem Grenzwert</translation>
    </message>
    <message>
        <source>Time Below a Limit</source>
        <translation>Zeit unter einem Grenzwert</translation>
    </message>
    <message>
        <source>&amp;Property:</source>
        <translation>&amp;Größe:</translation>
    </message>
    <message>
        <source>How long &amp;above:</source>
        <translation>Wie lange &amp;über:</translation>
    </message>
    <message>
        <source>How long b&amp;elow:</source>
        <translation>Wie lange &amp;unter:</translation>
    </message>
    <message>
        <source>Nothing is recorded before %1.</source>
        <translation>Vor %1 ist nichts aufgezeichnet.</translation>
    </message>
    <message>
        <source>The records end at %1.</source>
        <translation>Die Messwerte enden am %1.</translation>
    </message>
    <message>
        <source>Go to the &amp;First Record</source>
        <translation>Zum &amp;ersten Messwert</translation>
    </message>
    <message>
        <source>Go to the &amp;Last Record</source>
        <translation>Zum &amp;letzten Messwert</translation>
    </message>
    <message>
        <source>Arran&amp;gement</source>
        <translation>An&amp;ordnung</translation>
    </message>
    <message>
        <source>Leave Out Ou&amp;tliers</source>
        <translation>A&amp;usreißer auslassen</translation>
    </message>
    <message>
        <source>No Le&amp;gend</source>
        <translation>Keine Le&amp;gende</translation>
    </message>
    <message>
        <source>Cop&amp;y Values at the Line</source>
        <translation>Werte an der Linie &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Solid</source>
        <translation>&amp;Durchgezogen</translation>
    </message>
    <message>
        <source>&amp;Dashes</source>
        <translation>S&amp;triche</translation>
    </message>
    <message>
        <source>D&amp;ots</source>
        <translation>P&amp;unkte</translation>
    </message>
    <message>
        <source>D&amp;ash, Dot</source>
        <translation>Strich, Pu&amp;nkt</translation>
    </message>
    <message>
        <source>&amp;Long Dashes</source>
        <translation>&amp;Lange Striche</translation>
    </message>
    <message>
        <source>Das&amp;h, Two Dots</source>
        <translation>Strich, z&amp;wei Punkte</translation>
    </message>
    <message>
        <source>Sho&amp;rt Dashes</source>
        <translation>&amp;Kurze Striche</translation>
    </message>
    <message>
        <source>Lon&amp;g and Short Dashes</source>
        <translation>Lange und kurze Stric&amp;he</translation>
    </message>
    <message>
        <source>&amp;Wide Dots</source>
        <translation>W&amp;eite Punkte</translation>
    </message>
    <message>
        <source>&amp;Two Dashes, Dot</source>
        <translation>&amp;Zwei Striche, Punkt</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>&amp;Dunkel</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Hell</translation>
    </message>
    <message>
        <source>&amp;Paper</source>
        <translation>&amp;Papier</translation>
    </message>
    <message>
        <source>&amp;Colors of the Properties</source>
        <translation>&amp;Farben der Größen</translation>
    </message>
    <message>
        <source>Da&amp;shes Where Colors Are Alike</source>
        <translation>&amp;Striche, wo Farben sich gleichen</translation>
    </message>
    <message>
        <source>D&amp;istinct Colors and Dashes</source>
        <translation>Deutlich &amp;verschiedene Farben und Striche</translation>
    </message>
    <message>
        <source>Lar&amp;ger Text</source>
        <translation>&amp;Größere Schrift</translation>
    </message>
    <message>
        <source>S&amp;maller Text</source>
        <translation>&amp;Kleinere Schrift</translation>
    </message>
    <message>
        <source>Thic&amp;ker Lines</source>
        <translation>D&amp;ickere Linien</translation>
    </message>
    <message>
        <source>Thi&amp;nner Lines</source>
        <translation>Dü&amp;nnere Linien</translation>
    </message>
    <message>
        <source>&amp;Usual Thickness of Lines</source>
        <translation>Übliche Dicke der &amp;Linien</translation>
    </message>
    <message>
        <source>&amp;Transparent Ground</source>
        <translation>Du&amp;rchsichtiger Grund</translation>
    </message>
    <message>
        <source>Usual Te&amp;xt Size</source>
        <translation>Übliche Schrif&amp;tgröße</translation>
    </message>
    <message>
        <source>Look &amp;of Lines</source>
        <translation>&amp;Aussehen der Linien</translation>
    </message>
    <message>
        <source>&amp;Usual Look</source>
        <translation>Üb&amp;liches Aussehen</translation>
    </message>
    <message>
        <source>&amp;Straight Lines</source>
        <translation>&amp;Gerade Linien</translation>
    </message>
    <message>
        <source>S&amp;teps: Hold the Last Value</source>
        <translation>&amp;Stufen: letzten Wert halten</translation>
    </message>
    <message>
        <source>Points &amp;Only</source>
        <translation>&amp;Nur Punkte</translation>
    </message>
    <message>
        <source>As &amp;Usual</source>
        <translation>Wie &amp;üblich</translation>
    </message>
    <message>
        <source>&amp;Width</source>
        <translation>&amp;Breite</translation>
    </message>
    <message>
        <source>&amp;Sky Blue</source>
        <translation>&amp;Himmelblau</translation>
    </message>
    <message>
        <source>&amp;Orange</source>
        <translation>&amp;Orange</translation>
    </message>
    <message>
        <source>&amp;Yellow</source>
        <translation>&amp;Gelb</translation>
    </message>
    <message>
        <source>&amp;Pink</source>
        <translation>&amp;Rosa</translation>
    </message>
    <message>
        <source>Light &amp;Gray</source>
        <translation>H&amp;ellgrau</translation>
    </message>
    <message>
        <source>&amp;Blue</source>
        <translation>&amp;Blau</translation>
    </message>
    <message>
        <source>&amp;Vermilion</source>
        <translation>&amp;Zinnoberrot</translation>
    </message>
    <message>
        <source>G&amp;reen</source>
        <translation>Grü&amp;n</translation>
    </message>
    <message>
        <source>Purp&amp;le</source>
        <translation>&amp;Violett</translation>
    </message>
    <message>
        <source>Gr&amp;ay</source>
        <translation>Gr&amp;au</translation>
    </message>
    <message>
        <source>&amp;Color in This Trend</source>
        <translation>&amp;Farbe in diesem Trend</translation>
    </message>
    <message>
        <source>O&amp;ther…</source>
        <translation>An&amp;dere …</translation>
    </message>
    <message>
        <source>&amp;Points</source>
        <translation>&amp;Punkte</translation>
    </message>
    <message>
        <source>&amp;Fill</source>
        <translation>F&amp;üllung</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>&amp;Keine</translation>
    </message>
    <message>
        <source>To &amp;Zero</source>
        <translation>Bis n&amp;ull</translation>
    </message>
    <message>
        <source>Sho&amp;w What Is Missing</source>
        <translation>&amp;Fehlendes zeigen</translation>
    </message>
    <message>
        <source>Show Late an&amp;d Corrected</source>
        <translation>Vers&amp;pätetes und Berichtigtes zeigen</translation>
    </message>
    <message>
        <source>Arrive&amp;d Late</source>
        <translation>Verspätet einget&amp;roffen</translation>
    </message>
    <message>
        <source>&amp;Overview of Everything Fetched</source>
        <translation>Ü&amp;bersicht über alles Gelesene</translation>
    </message>
    <message>
        <source>Time of Mi&amp;nimum</source>
        <translation>Zeit des Mi&amp;nimums</translation>
    </message>
    <message>
        <source>Time of Ma&amp;ximum</source>
        <translation>Zeit des Ma&amp;ximums</translation>
    </message>
    <message>
        <source>Time-&amp;Weighted</source>
        <translation>&amp;Zeitgewichtet</translation>
    </message>
    <message>
        <source>&amp;Median</source>
        <translation>&amp;Median</translation>
    </message>
    <message>
        <source>Std. &amp;Deviation</source>
        <translation>Standarda&amp;bw.</translation>
    </message>
    <message>
        <source>&amp;Range</source>
        <translation>Bereic&amp;h</translation>
    </message>
    <message>
        <source>&amp;First</source>
        <translation>E&amp;rster</translation>
    </message>
    <message>
        <source>&amp;Last</source>
        <translation>&amp;Letzter</translation>
    </message>
    <message>
        <source>&amp;Sum</source>
        <translation>&amp;Summe</translation>
    </message>
    <message>
        <source>&amp;Integral</source>
        <translation>&amp;Integral</translation>
    </message>
    <message>
        <source>&amp;5th Percentile</source>
        <translation>&amp;5. Perzentil</translation>
    </message>
    <message>
        <source>&amp;25th Percentile</source>
        <translation>&amp;25. Perzentil</translation>
    </message>
    <message>
        <source>&amp;75th Percentile</source>
        <translation>&amp;75. Perzentil</translation>
    </message>
    <message>
        <source>&amp;95th Percentile</source>
        <translation>&amp;95. Perzentil</translation>
    </message>
    <message>
        <source>&amp;Coverage</source>
        <translation>&amp;Abdeckung</translation>
    </message>
    <message>
        <source>&amp;Gaps</source>
        <translation>Lüc&amp;ken</translation>
    </message>
    <message>
        <source>Time &amp;Above Limit</source>
        <translation>Zeit &amp;über Grenzwert</translation>
    </message>
    <message>
        <source>Time &amp;Below Limit</source>
        <translation>Zeit &amp;unter Grenzwert</translation>
    </message>
    <message>
        <source>Cr&amp;ossings</source>
        <translation>&amp;Durchgänge</translation>
    </message>
    <message>
        <source>Latest &amp;Value</source>
        <translation>Neuester &amp;Wert</translation>
    </message>
    <message>
        <source>Ag&amp;e</source>
        <translation>Al&amp;ter</translation>
    </message>
    <message>
        <source>&amp;Table</source>
        <translation>&amp;Tabelle</translation>
    </message>
    <message>
        <source>Statistics of &amp;Everything Fetched</source>
        <translation>Statistik von allem &amp;Gelesenen</translation>
    </message>
    <message>
        <source>Statistics of What Is &amp;Visible</source>
        <translation>Statistik des &amp;Sichtbaren</translation>
    </message>
    <message>
        <source>Statistics from A to &amp;B</source>
        <translation>Statistik von A bis &amp;B</translation>
    </message>
    <message>
        <source>Go to Mi&amp;nimum</source>
        <translation>Zum Mi&amp;nimum</translation>
    </message>
    <message>
        <source>Go to Ma&amp;ximum</source>
        <translation>Zum Ma&amp;ximum</translation>
    </message>
    <message>
        <source>Go to Ma&amp;ximum of</source>
        <translation>Z&amp;um Maximum von</translation>
    </message>
    <message>
        <source>Go to Minimum o&amp;f</source>
        <translation>Zum M&amp;inimum von</translation>
    </message>
    <message>
        <source>Time &amp;Above a Limit…</source>
        <translation>Zeit &amp;über einem Grenzwert …</translation>
    </message>
    <message>
        <source>Time Be&amp;low a Limit…</source>
        <translation>Zeit &amp;unter einem Grenzwert …</translation>
    </message>
    <message>
        <source>&amp;Remove All Limits</source>
        <translation>Alle Grenzwerte &amp;entfernen</translation>
    </message>
    <message>
        <source>&amp;Columns</source>
        <translation>S&amp;palten</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Qualität</translation>
    </message>
    <message>
        <source>%1 not valid</source>
        <translation>%1 ungültig</translation>
    </message>
    <message>
        <source>%1 late</source>
        <translation>%1 verspätet</translation>
    </message>
    <message>
        <source>%1 corrected</source>
        <translation>%1 berichtigt</translation>
    </message>
    <message>
        <source>%1 (nothing recorded)</source>
        <extracomment>An item of a menu: &quot;A Week Earlier (nothing recorded)&quot;.</extracomment>
        <translation>%1 (nichts aufgezeichnet)</translation>
    </message>
    <message>
        <source>Nothing was recorded %1.</source>
        <translation>Es wurde nichts aufgezeichnet: %1.</translation>
    </message>
    <message>
        <source>%1: nothing recorded</source>
        <extracomment>In heads and legends, of a line that is compared: &quot;Power, a week earlier: nothing recorded&quot;.</extracomment>
        <translation>%1: nichts aufgezeichnet</translation>
    </message>
    <message>
        <source>Recorded now: %1 of the time, then: %2</source>
        <translation>Aufgezeichnet jetzt: %1 der Zeit, damals: %2</translation>
    </message>
    <message>
        <source>%1 (%2 recorded)</source>
        <extracomment>An average and of how much of the time it is: &quot;20.4 (29 % recorded)&quot;.</extracomment>
        <translation>%1 (%2 aufgezeichnet)</translation>
    </message>
    <message>
        <source>There is no such date.</source>
        <translation>Dieses Datum gibt es nicht.</translation>
    </message>
    <message>
        <source>%1 (%2 against %3)</source>
        <extracomment>A difference of averages, and of how much of the time each is: &quot;+1.5 K (100 % against 29 %)&quot;.</extracomment>
        <translation>%1 (%2 gegen %3)</translation>
    </message>
</context>
<context>
    <name>PlugInStore</name>
    <message>
        <source>%1 (changed elsewhere)</source>
        <translation>%1 (anderswo geändert)</translation>
    </message>
</context>
<context>
    <name>ProgramServices</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ProgressIndicator</name>
    <message>
        <source>Fetching records</source>
        <translation>Messwerte werden geholt</translation>
    </message>
</context>
<context>
    <name>PropertyDetailsTableView</name>
    <message>
        <source>Show %1</source>
        <translation>%1 zeigen</translation>
    </message>
</context>
<context>
    <name>PropertyHistoryText</name>
    <message>
        <source>Unit of %1</source>
        <translation>Einheit von %1</translation>
    </message>
    <message>
        <source>Color of %1</source>
        <translation>Farbe von %1</translation>
    </message>
</context>
<context>
    <name>QualityTexts</name>
    <message>
        <source>%1 and others</source>
        <translation>%1 und weiteren</translation>
    </message>
    <message numerus="yes">
        <source>%n column(s)</source>
        <translation>
            <numerusform>%n Spalte</numerusform>
            <numerusform>%n Spalten</numerusform>
        </translation>
    </message>
    <message>
        <source>Which values of %1 are bad is read in %2; they are kept and marked as invalid.</source>
        <translation>Welche Werte von %1 schlecht sind, steht in %2; sie werden behalten und als ungültig gekennzeichnet.</translation>
    </message>
    <message>
        <source>column “%1” does not say which values are bad in words or numbers that are known, but such as “%2”; enter those that do under Bad words</source>
        <translation>Die Spalte “%1” sagt nicht in bekannten Wörtern oder Zahlen, welche Werte schlecht sind, sondern etwa “%2”; unter „Heißt schlecht“ die angeben, die es bedeuten</translation>
    </message>
    <message>
        <source>“%1” seems to say which values are bad, but not what “%2” means; its values are taken as good. If it does, enter it under Quality.</source>
        <translation>“%1” scheint zu sagen, welche Werte schlecht sind, aber nicht, was “%2” bedeutet; die Werte gelten als gut. Falls doch, unter „Qualität“ angeben.</translation>
    </message>
    <message>
        <source>“%1” seems to say which values are bad, but not of which column; they are taken as good. If it does, enter it under Quality.</source>
        <translation>“%1” scheint zu sagen, welche Werte schlecht sind, aber nicht, in welcher Spalte; sie gelten als gut. Falls doch, unter „Qualität“ angeben.</translation>
    </message>
    <message>
        <source>“%1” says neither good nor bad (%2 times); such values are taken as good. If it means bad, enter all such words under Bad words</source>
        <translation>“%1” sagt weder gut noch schlecht (%2-mal); solche Werte gelten als gut. Bedeutet es schlecht, alle solchen Wörter unter „Heißt schlecht“ angeben</translation>
    </message>
    <message numerus="yes">
        <source>%1 value(s) are marked as bad by “%2”</source>
        <translation>
            <numerusform>%1 Wert ist durch “%2” als schlecht gekennzeichnet</numerusform>
            <numerusform>%1 Werte sind durch “%2” als schlecht gekennzeichnet</numerusform>
        </translation>
    </message>
    <message>
        <source>says which values of “%1” are bad</source>
        <translation>sagt, welche Werte von “%1” schlecht sind</translation>
    </message>
    <message numerus="yes">
        <source>says which values of %n column(s) are bad</source>
        <translation>
            <numerusform>sagt, welche Werte von %n Spalte schlecht sind</numerusform>
            <numerusform>sagt, welche Werte von %n Spalten schlecht sind</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReportPrinter</name>
    <message>
        <source>The printer does not take the report.</source>
        <translation>Der Drucker nimmt den Bericht nicht an.</translation>
    </message>
    <message>
        <source>This view has no report to print.</source>
        <translation>Diese Ansicht hat keinen Bericht zu drucken.</translation>
    </message>
    <message>
        <source>The report has no page %1; it has %2.</source>
        <translation>Der Bericht hat keine Seite %1, nur %2.</translation>
    </message>
    <message>
        <source>“%1” shows no records: choose another span of time.</source>
        <translation>„%1“ zeigt keine Messwerte: Wählen Sie einen anderen Zeitraum.</translation>
    </message>
</context>
<context>
    <name>ReportText</name>
    <message>
        <source>%1, %2 to %3 %4</source>
        <translation>%1, %2 bis %3 %4</translation>
    </message>
    <message>
        <source>%1 %2 to %3 %4 %5</source>
        <translation>%1 %2 bis %3 %4 %5</translation>
    </message>
    <message>
        <source>The figures are those of all records read: %1</source>
        <translation>Die Zahlen sind die aller gelesenen Messzeilen: %1</translation>
    </message>
    <message>
        <source>Outside the values shown: %1</source>
        <translation>Außerhalb der gezeigten Werte: %1</translation>
    </message>
    <message>
        <source>The figures cover %1</source>
        <translation>Die Zahlen gelten für %1</translation>
    </message>
</context>
<context>
    <name>SharedPictureText</name>
    <message>
        <source>No program took it. Save the image instead.</source>
        <translation>Kein Programm nahm es an. Sichern Sie es stattdessen.</translation>
    </message>
    <message>
        <source>No program for mail is set up.</source>
        <translation>Kein E-Mail-Programm ist eingerichtet.</translation>
    </message>
    <message>
        <source>No program for pictures is set up.</source>
        <translation>Kein Programm für Bilder ist eingerichtet.</translation>
    </message>
    <message>
        <source>Trend from Plotix</source>
        <translation>Trend aus Plotix</translation>
    </message>
    <message>
        <source>The picture is in %1.</source>
        <translation>Das Bild liegt in %1.</translation>
    </message>
    <message>
        <source>The temporary picture cannot be written.</source>
        <translation>Das vorläufige Bild kann nicht geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>SiteMenus</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;New Site…</source>
        <translation>&amp;Neue Anlage …</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>Zuletzt geöffnete &amp;Anlagen</translation>
    </message>
    <message>
        <source>&amp;Import…</source>
        <translation>&amp;Importieren …</translation>
    </message>
    <message>
        <source>Record This Comp&amp;uter</source>
        <translation>&amp;Diesen Rechner aufzeichnen</translation>
    </message>
    <message>
        <source>Na&amp;me and Location…</source>
        <translation>Name und &amp;Ort …</translation>
    </message>
    <message>
        <source>Expor&amp;t Report as PDF…</source>
        <translation>Be&amp;richt als PDF exportieren …</translation>
    </message>
    <message>
        <source>&amp;Print…</source>
        <translation>Dr&amp;ucken …</translation>
    </message>
    <message>
        <source>Serve on the &amp;Web</source>
        <translation>Im &amp;Web zeigen</translation>
    </message>
    <message>
        <source>Browsers on this machine see the trends.</source>
        <translation>Browser auf diesem Rechner sehen die Trends.</translation>
    </message>
    <message>
        <source>Copy Web &amp;Address</source>
        <translation>Web-Adresse &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>B&amp;eenden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig:</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen:</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation>&amp;Aktualisieren</translation>
    </message>
    <message>
        <source>&amp;Fit</source>
        <translation>Alles &amp;zeigen</translation>
    </message>
    <message>
        <source>F&amp;ollow</source>
        <translation>&amp;Folgen</translation>
    </message>
    <message>
        <source>As if Alt were held down: values stay as they are.</source>
        <translation>Als wäre Alt gedrückt: Die Werte bleiben, wie sie sind.</translation>
    </message>
    <message>
        <source>As if Shift were held down: time stays as it is.</source>
        <translation>Als wäre die Umschalttaste gedrückt: Die Zeit bleibt, wie sie ist.</translation>
    </message>
    <message>
        <source>&amp;Trend</source>
        <translation>&amp;Trend</translation>
    </message>
    <message>
        <source>&amp;New Trend from Ticked Properties</source>
        <translation>&amp;Neuer Trend aus angekreuzten Größen</translation>
    </message>
    <message>
        <source>&amp;Rename Trend</source>
        <translation>Trend &amp;umbenennen</translation>
    </message>
    <message>
        <source>&amp;Open in Separate Window</source>
        <translation>In eigenem &amp;Fenster öffnen</translation>
    </message>
    <message>
        <source>&amp;Bring Back into Site Window</source>
        <translation>&amp;Zurück ins Anlagenfenster</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>Move Do&amp;wn</source>
        <translation>Nach un&amp;ten</translation>
    </message>
    <message>
        <source>&amp;Delete Trend</source>
        <translation>Trend &amp;löschen</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>Mi&amp;nimize</source>
        <translation>&amp;Minimieren</translation>
    </message>
    <message>
        <source>Bring &amp;All to Front</source>
        <translation>&amp;Alle nach vorn</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Plotix Help</source>
        <translation>Plotix-&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Getting Started</source>
        <translation>&amp;Erste Schritte</translation>
    </message>
    <message>
        <source>&amp;About Plotix</source>
        <translation>Ü&amp;ber Plotix</translation>
    </message>
    <message>
        <source>Last &amp;Hour</source>
        <translation>Letzte &amp;Stunde</translation>
    </message>
    <message>
        <source>Last &amp;Day</source>
        <translation>Letzter &amp;Tag</translation>
    </message>
    <message>
        <source>&amp;Today</source>
        <translation>&amp;Heute</translation>
    </message>
    <message>
        <source>&amp;All Records</source>
        <translation>&amp;Alle Messwerte</translation>
    </message>
    <message>
        <source>&amp;Present Length</source>
        <translation>&amp;Jetzige Länge</translation>
    </message>
    <message>
        <source>Follow &amp;Span</source>
        <translation>Zeitraum bis &amp;jetzt</translation>
    </message>
    <message>
        <source>&amp;Next Region</source>
        <translation>Nä&amp;chster Bereich</translation>
    </message>
    <message>
        <source>&amp;Previous Region</source>
        <translation>Vor&amp;heriger Bereich</translation>
    </message>
    <message>
        <source>&amp;Appearance</source>
        <translation>Er&amp;scheinungsbild</translation>
    </message>
    <message>
        <source>&amp;Break Lines at Gaps</source>
        <translation>&amp;Linien an Lücken unterbrechen</translation>
    </message>
    <message>
        <source>No line where nothing was recorded; a choice of this trend.</source>
        <translation>Keine Linie, wo nichts aufgezeichnet wurde; gilt für diesen Trend.</translation>
    </message>
    <message>
        <source>Undo &amp;Import…</source>
        <translation>&amp;Import rückgängig machen …</translation>
    </message>
    <message>
        <source>Takes back what the last import added and replaced.</source>
        <translation>Nimmt zurück, was der letzte Import hinzugefügt und ersetzt hat.</translation>
    </message>
    <message>
        <source>E&amp;xport Records…</source>
        <translation>Messwerte e&amp;xportieren …</translation>
    </message>
    <message>
        <source>Graph as &amp;PNG…</source>
        <translation>Diagramm als &amp;PNG …</translation>
    </message>
    <message>
        <source>Graph as P&amp;DF…</source>
        <translation>Diagramm als P&amp;DF …</translation>
    </message>
    <message>
        <source>&amp;Reports and Printing</source>
        <translation>&amp;Berichte und Drucken</translation>
    </message>
    <message>
        <source>&amp;Export Picture…</source>
        <translation>&amp;Bild exportieren …</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>What is selected; of a trend its table, as text and for spreadsheets.</source>
        <translation>Das Ausgewählte; von einem Trend seine Tabelle, als Text und für Tabellenkalkulationen.</translation>
    </message>
    <message>
        <source>In the &amp;View&apos;s Own Form</source>
        <translation>In der eigenen For&amp;m der Ansicht</translation>
    </message>
    <message>
        <source>&amp;New Computed Property…</source>
        <translation>&amp;Neue berechnete Größe …</translation>
    </message>
    <message>
        <source>A property that is worked out from others, such as their difference.</source>
        <translation>Eine Größe, die aus anderen berechnet wird, etwa ihre Differenz.</translation>
    </message>
    <message>
        <source>Copy &amp;Picture</source>
        <translation>&amp;Bild kopieren</translation>
    </message>
    <message>
        <source>Copy &amp;Link</source>
        <translation>&amp;Link kopieren</translation>
    </message>
    <message>
        <source>A line of text that names site, trend and span; “plotix open LINK” shows them.</source>
        <translation>Eine Zeile Text, die Anlage, Trend und Zeitraum nennt; „plotix open LINK“ zeigt sie.</translation>
    </message>
    <message>
        <source>Copy Recor&amp;ds</source>
        <translation>&amp;Messwerte kopieren</translation>
    </message>
    <message>
        <source>Those of the lines and the span shown, as rows for a spreadsheet.</source>
        <translation>Die der gezeigten Linien im gezeigten Zeitraum, als Zeilen für eine Tabelle.</translation>
    </message>
    <message>
        <source>Copy Link to &amp;A – B</source>
        <translation>Link auf &amp;A – B kopieren</translation>
    </message>
    <message>
        <source>N&amp;otes…</source>
        <translation>N&amp;otizen …</translation>
    </message>
    <message>
        <source>What was written about times and spans of this site.</source>
        <translation>Was über Zeitpunkte und Zeiträume dieser Anlage geschrieben wurde.</translation>
    </message>
    <message>
        <source>&amp;Save as Case…</source>
        <translation>Als Fall &amp;sichern …</translation>
    </message>
    <message>
        <source>The trend with its records and notes as a site of its own, to send to somebody.</source>
        <translation>Der Trend mit seinen Messwerten und Notizen als Anlage für sich, um ihn jemandem zu schicken.</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>A site, or a figure that tells what it shows.</source>
        <translation>Eine Anlage, oder eine Abbildung, die sagt, was sie zeigt.</translation>
    </message>
    <message>
        <source>Zoom Time Onl&amp;y</source>
        <translation>Nur die Z&amp;eit zoomen</translation>
    </message>
    <message>
        <source>Zoom Val&amp;ues Only</source>
        <translation>&amp;Nur die Werte zoomen</translation>
    </message>
    <message>
        <source>Open &amp;from Server…</source>
        <translation>Vom Ser&amp;ver öffnen…</translation>
    </message>
    <message>
        <source>A site whose records many people share.</source>
        <translation>Eine Anlage, deren Messwerte viele gemeinsam haben.</translation>
    </message>
</context>
<context>
    <name>TrendCommandText</name>
    <message>
        <source>Delete “%1”</source>
        <translation>„%1“ löschen</translation>
    </message>
    <message>
        <source>Rename to “%1”</source>
        <translation>Umbenennen in „%1“</translation>
    </message>
    <message>
        <source>Move “%1”</source>
        <translation>„%1“ verschieben</translation>
    </message>
</context>
<context>
    <name>TrendHistoryText</name>
    <message>
        <source>Remove Properties</source>
        <translation>Größen entfernen</translation>
    </message>
    <message>
        <source>Add Properties</source>
        <translation>Größen hinzufügen</translation>
    </message>
    <message>
        <source>Hide or Show Lines</source>
        <translation>Linien aus- oder einblenden</translation>
    </message>
    <message>
        <source>Change Range</source>
        <translation>Ausschnitt ändern</translation>
    </message>
    <message>
        <source>Change View</source>
        <translation>Ansicht ändern</translation>
    </message>
    <message>
        <source>Move Value Line</source>
        <translation>Wertelinie bewegen</translation>
    </message>
    <message>
        <source>Move Marks</source>
        <translation>Marken bewegen</translation>
    </message>
    <message>
        <source>Change Look</source>
        <translation>Aussehen ändern</translation>
    </message>
    <message>
        <source>Compare</source>
        <translation>Vergleichen</translation>
    </message>
</context>
<context>
    <name>ViewSiteText</name>
    <message>
        <source>Where Is “%1”, Which “%2” Is Part Of?</source>
        <translation>Wo ist „%1“, zu der „%2“ gehört?</translation>
    </message>
    <message>
        <source>Sites (*.plotix)</source>
        <translation>Anlagen (*.plotix)</translation>
    </message>
</context>
<context>
    <name>ViewText</name>
    <message>
        <source>%1 has no measurements of %2.</source>
        <translation>%1 hat keine Messwerte von %2.</translation>
    </message>
    <message>
        <source>%1 has none of these properties: %2.</source>
        <translation>%1 hat keine dieser Größen: %2.</translation>
    </message>
</context>
<context>
    <name>WorkProgressText</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>Wird abgebrochen …</translation>
    </message>
</context>
<context>
    <name>plotix::AnnotationAsking</name>
    <message>
        <source>Limits of %1</source>
        <translation>Grenzwerte von %1</translation>
    </message>
    <message>
        <source>Note “%1”</source>
        <translation>Notiz „%1“</translation>
    </message>
    <message>
        <source>Change note “%1”</source>
        <translation>Notiz „%1“ ändern</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n note(s)</source>
        <translation>
            <numerusform>%n Notiz löschen</numerusform>
            <numerusform>%n Notizen löschen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>plotix::ColumnChoices</name>
    <message>
        <source>the time</source>
        <translation>die Zeit</translation>
    </message>
    <message numerus="yes">
        <source>%n number(s)</source>
        <translation>
            <numerusform>%n Zahl</numerusform>
            <numerusform>%n Zahlen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>, %n cell(s) without one</source>
        <translation>
            <numerusform>, %n Zelle ohne</numerusform>
            <numerusform>, %n Zellen ohne</numerusform>
        </translation>
    </message>
    <message>
        <source>counts the rows, names them, or is another time</source>
        <translation>zählt oder benennt die Zeilen oder ist eine andere Zeit</translation>
    </message>
    <message>
        <source>no number so far</source>
        <translation>bisher keine Zahl</translation>
    </message>
    <message>
        <source>texts with few numbers among them</source>
        <translation>Texte mit wenigen Zahlen darunter</translation>
    </message>
    <message>
        <source>not ticked</source>
        <translation>nicht angehakt</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>Spalte</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>What it is</source>
        <translation>Was es ist</translation>
    </message>
    <message>
        <source>part of the quantities below</source>
        <translation>Teil der Größen darunter</translation>
    </message>
    <message numerus="yes">
        <source>, %n of them marked as bad</source>
        <translation>
            <numerusform>, davon %n als schlecht gekennzeichnet</numerusform>
            <numerusform>, davon %n als schlecht gekennzeichnet</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>plotix::ComputedPropertyDialog</name>
    <message>
        <source>seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>minutes</source>
        <translation>Minuten</translation>
    </message>
    <message>
        <source>hours</source>
        <translation>Stunden</translation>
    </message>
    <message>
        <source>days</source>
        <translation>Tage</translation>
    </message>
    <message>
        <source>Color…</source>
        <translation>Farbe …</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Its last value</source>
        <translation>Ihr letzter Wert</translation>
    </message>
    <message>
        <source>A straight line between two</source>
        <translation>Eine gerade Linie zwischen zweien</translation>
    </message>
    <message>
        <source>What stands for a property at a time that only another source has a record of.</source>
        <translation>Was für eine Größe zu einer Zeit steht, zu der nur eine andere Quelle einen Messwert hat.</translation>
    </message>
    <message>
        <source>Longest gap that is bridged</source>
        <translation>Längste Lücke, die überbrückt wird</translation>
    </message>
    <message>
        <source>Unit of the longest gap</source>
        <translation>Einheit der längsten Lücke</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>&amp;Formula:</source>
        <translation>&amp;Formel:</translation>
    </message>
    <message>
        <source>&amp;Unit:</source>
        <translation>&amp;Einheit:</translation>
    </message>
    <message>
        <source>&amp;Between records:</source>
        <translation>&amp;Zwischen Messwerten:</translation>
    </message>
    <message>
        <source>&amp;Longest gap:</source>
        <translation>&amp;Längste Lücke:</translation>
    </message>
    <message>
        <source>Last values:</source>
        <translation>Letzte Werte:</translation>
    </message>
    <message>
        <source>Give it a name.</source>
        <translation>Geben Sie ihr einen Namen.</translation>
    </message>
    <message>
        <source>“%1” is taken: choose another name.</source>
        <translation>„%1“ ist vergeben: Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>The result is a number without a unit.</source>
        <translation>Das Ergebnis ist eine Zahl ohne Einheit.</translation>
    </message>
    <message>
        <source>The result is in %1.</source>
        <translation>Das Ergebnis ist in %1.</translation>
    </message>
    <message>
        <source>as it follows</source>
        <translation>wie es sich ergibt</translation>
    </message>
    <message>
        <source>as it follows: %1</source>
        <translation>wie es sich ergibt: %1</translation>
    </message>
    <message>
        <source>%1:  %2 %3</source>
        <translation>%1:  %2 %3</translation>
    </message>
    <message>
        <source>There is no value yet.</source>
        <translation>Es gibt noch keinen Wert.</translation>
    </message>
    <message>
        <source>Edit Computed Property of %1</source>
        <extracomment>%1 is the source that has, or gets, the property.</extracomment>
        <translation>Berechnete Größe von %1 bearbeiten</translation>
    </message>
    <message>
        <source>New Computed Property of %1</source>
        <translation>Neue berechnete Größe von %1</translation>
    </message>
</context>
<context>
    <name>plotix::DesktopUserInterface</name>
    <message>
        <source>Save</source>
        <translation>Sichern</translation>
    </message>
    <message>
        <source>%1 files (*.%2)</source>
        <translation>%1-Dateien (*.%2)</translation>
    </message>
    <message>
        <source>&amp;Copy Image</source>
        <translation>Bild &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Save Image…</source>
        <translation>Bild &amp;sichern …</translation>
    </message>
    <message>
        <source>The image could not be saved</source>
        <translation>Das Bild konnte nicht gesichert werden</translation>
    </message>
    <message>
        <source>The picture could not be passed on</source>
        <translation>Das Bild konnte nicht weitergegeben werden</translation>
    </message>
    <message>
        <source>&amp;Mail…</source>
        <translation>Per &amp;E-Mail senden …</translation>
    </message>
    <message>
        <source>Open &amp;With…</source>
        <translation>Öffnen &amp;mit …</translation>
    </message>
    <message>
        <source>The file is not saved there</source>
        <translation>Dort wird die Datei nicht gesichert</translation>
    </message>
</context>
<context>
    <name>plotix::ExportPictureDialog</name>
    <message>
        <source>Export Picture</source>
        <translation>Bild exportieren</translation>
    </message>
    <message>
        <source>Graph, as on the screen</source>
        <translation>Diagramm, wie auf dem Bildschirm</translation>
    </message>
    <message>
        <source>Graph and table, dark on white</source>
        <translation>Diagramm und Tabelle, dunkel auf weiß</translation>
    </message>
    <message>
        <source>PNG, for screens and mail</source>
        <translation>PNG, für Bildschirme und E-Mail</translation>
    </message>
    <message>
        <source>PDF, sharp at every size</source>
        <translation>PDF, scharf in jeder Größe</translation>
    </message>
    <message>
        <source> points</source>
        <translation> Punkt</translation>
    </message>
    <message>
        <source>&amp;Picture of:</source>
        <translation>Bi&amp;ld von:</translation>
    </message>
    <message>
        <source>&amp;Format:</source>
        <translation>&amp;Format:</translation>
    </message>
    <message>
        <source>&amp;Title:</source>
        <translation>&amp;Titel:</translation>
    </message>
    <message>
        <source>Lines and letters, no pixels</source>
        <translation>Linien und Buchstaben, keine Pixel</translation>
    </message>
    <message>
        <source>%1 × %2 pixels are too many: choose less, or PDF</source>
        <translation>%1 × %2 Pixel sind zu viele: Wählen Sie weniger oder PDF</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 Pixel</translation>
    </message>
    <message>
        <source>T&amp;ransparent ground</source>
        <translation>Du&amp;rchsichtiger Grund</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>&amp;Sichern…</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>Lös&amp;chen</translation>
    </message>
    <message>
        <source>SVG, to go on drawing and for the web</source>
        <translation>SVG, zum Weiterzeichnen und fürs Web</translation>
    </message>
    <message>
        <source>millimeters</source>
        <translation>Millimeter</translation>
    </message>
    <message>
        <source>points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>pixels</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>Unit of width and height</source>
        <translation>Einheit von Breite und Höhe</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source> dots an inch</source>
        <translation> Punkte je Zoll</translation>
    </message>
    <message>
        <source>Save these choices by a name</source>
        <translation>Diese Auswahl unter einem Namen sichern</translation>
    </message>
    <message>
        <source>Delete the saved choices of this name</source>
        <translation>Die gesicherte Auswahl dieses Namens löschen</translation>
    </message>
    <message>
        <source>As the trend</source>
        <translation>Wie der Trend</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Paper</source>
        <translation>Papier</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Below the graph</source>
        <translation>Unter dem Diagramm</translation>
    </message>
    <message>
        <source>At the right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Usual</source>
        <translation>Übliche</translation>
    </message>
    <message>
        <source>Along value axes</source>
        <translation>An den Wertachsen</translation>
    </message>
    <message>
        <source>Along all axes</source>
        <translation>An allen Achsen</translation>
    </message>
    <message>
        <source> times as wide</source>
        <translation>-mal so breit</translation>
    </message>
    <message>
        <source>For &amp;use as:</source>
        <translation>&amp;Verwendung:</translation>
    </message>
    <message>
        <source>&amp;Width, height:</source>
        <translation>&amp;Breite, Höhe:</translation>
    </message>
    <message>
        <source>D&amp;ensity:</source>
        <translation>Dicht&amp;e:</translation>
    </message>
    <message>
        <source>&amp;Look:</source>
        <translation>A&amp;ussehen:</translation>
    </message>
    <message>
        <source>Te&amp;xt:</source>
        <translation>Sc&amp;hrift:</translation>
    </message>
    <message>
        <source>Le&amp;gend:</source>
        <translation>Le&amp;gende:</translation>
    </message>
    <message>
        <source>&amp;Axis titles:</source>
        <translation>&amp;Achsentitel:</translation>
    </message>
    <message>
        <source>Li&amp;nes:</source>
        <translation>Li&amp;nien:</translation>
    </message>
    <message>
        <source>The picture as it will be</source>
        <translation>Das Bild, wie es wird</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>Exportieren…</translation>
    </message>
    <message>
        <source>Something else</source>
        <translation>Etwas anderes</translation>
    </message>
    <message>
        <source>Column of a paper, 85 mm</source>
        <translation>Spalte eines Artikels, 85 mm</translation>
    </message>
    <message>
        <source>Slide</source>
        <translation>Folie</translation>
    </message>
    <message>
        <source>Report, 160 mm</source>
        <translation>Bericht, 160 mm</translation>
    </message>
    <message>
        <source>Web page</source>
        <translation>Webseite</translation>
    </message>
    <message>
        <source>Name of these choices:</source>
        <translation>Name dieser Auswahl:</translation>
    </message>
    <message>
        <source>Save Choices</source>
        <translation>Auswahl sichern</translation>
    </message>
    <message>
        <source>This name cannot be used. Another name:</source>
        <translation>Dieser Name ist nicht möglich. Ein anderer Name:</translation>
    </message>
    <message>
        <source>&amp;Opens again in Plotix</source>
        <translation>Öffnet sich &amp;wieder in Plotix</translation>
    </message>
    <message>
        <source>The file then tells what it shows: the names of site, file, trend, source and properties, the span, and what was chosen. Nothing else, and no folder of this computer.</source>
        <translation>Die Datei sagt dann, was sie zeigt: die Namen von Anlage, Datei, Trend, Quelle und Größen, den Zeitraum und was gewählt war. Sonst nichts, und keinen Ordner dieses Rechners.</translation>
    </message>
    <message>
        <source>Left out</source>
        <translation>Weggelassen</translation>
    </message>
    <message>
        <source>A line that is held, and the box that says what is read there.</source>
        <translation>Eine festgehaltene Linie und das Feld, das sagt, was dort abgelesen wird.</translation>
    </message>
    <message>
        <source>&amp;Value line:</source>
        <translation>Werte&amp;linie:</translation>
    </message>
</context>
<context>
    <name>plotix::ExportRecordsDialog</name>
    <message>
        <source>&amp;All records</source>
        <translation>&amp;Alle Messwerte</translation>
    </message>
    <message>
        <source>Those the trend &amp;shows</source>
        <translation>Die der Trend &amp;zeigt</translation>
    </message>
    <message>
        <source>Put an &amp;apostrophe before names that look like formulas</source>
        <translation>A&amp;postroph vor Namen setzen, die wie Formeln aussehen</translation>
    </message>
    <message>
        <source>Export Records</source>
        <translation>Messwerte exportieren</translation>
    </message>
    <message>
        <source>Text, comma-separated (.csv)</source>
        <translation>Text, durch Kommas getrennt (.csv)</translation>
    </message>
    <message>
        <source>Text, semicolon-separated (.csv)</source>
        <translation>Text, durch Semikolons getrennt (.csv)</translation>
    </message>
    <message>
        <source>Spreadsheet (.xlsx)</source>
        <translation>Tabelle (.xlsx)</translation>
    </message>
    <message>
        <source>Local time (%1)</source>
        <translation>Ortszeit (%1)</translation>
    </message>
    <message>
        <source>UTC</source>
        <translation>UTC</translation>
    </message>
    <message>
        <source>Records:</source>
        <translation>Messwerte:</translation>
    </message>
    <message>
        <source>F&amp;ormat:</source>
        <translation>F&amp;ormat:</translation>
    </message>
    <message>
        <source>&amp;Decimal sign:</source>
        <translation>&amp;Dezimalzeichen:</translation>
    </message>
    <message>
        <source>&amp;Times:</source>
        <translation>Zei&amp;ten:</translation>
    </message>
    <message>
        <source>&amp;Export…</source>
        <translation>&amp;Exportieren …</translation>
    </message>
    <message>
        <source>Sou&amp;rce:</source>
        <translation>&amp;Quelle:</translation>
    </message>
    <message>
        <source>&amp;Properties:</source>
        <translation>&amp;Größen:</translation>
    </message>
    <message>
        <source>Tick a property first.</source>
        <translation>Kreuzen Sie zuerst eine Größe an.</translation>
    </message>
    <message>
        <source>Write in a column &amp;beside each which values are good</source>
        <translation>Da&amp;neben je eine Spalte schreiben, welche Werte gut sind</translation>
    </message>
    <message>
        <source>Values that are not valid are then written too, and an import reads back both. Otherwise they are left empty.</source>
        <translation>Ungültige Werte werden dann auch geschrieben, und ein Import liest beides zurück. Sonst bleiben sie leer.</translation>
    </message>
    <message>
        <source>The trend&apos;s clocks (%1)</source>
        <translation>Uhren des Trends (%1)</translation>
    </message>
    <message>
        <source>The site&apos;s clocks (%1)</source>
        <translation>Uhren der Anlage (%1)</translation>
    </message>
</context>
<context>
    <name>plotix::FirstRows</name>
    <message>
        <source>gap</source>
        <translation>Lücke</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>%1, marked as bad by “%2”: kept, and invalid</source>
        <translation>%1, durch “%2” als schlecht gekennzeichnet: behalten, aber ungültig</translation>
    </message>
</context>
<context>
    <name>plotix::FormulaEdit</name>
    <message>
        <source>Formula</source>
        <translation>Formel</translation>
    </message>
    <message>
        <source>such as Supply - Return, or mean(&quot;Air temperature&quot;, 1 h)</source>
        <translation>etwa Vorlauf - Rücklauf oder mean(&quot;Luft außen&quot;, 1 h)</translation>
    </message>
    <message>
        <source>%1  –  %2</source>
        <translation>%1  –  %2</translation>
    </message>
</context>
<context>
    <name>plotix::GatheringToolbar</name>
    <message>
        <source>New Trend</source>
        <translation>Neuer Trend</translation>
    </message>
    <message>
        <source>Choose where the measurements of a new trend come from.</source>
        <translation>Wählen Sie, woher die Messwerte eines neuen Trends kommen.</translation>
    </message>
</context>
<context>
    <name>plotix::HelpWindow</name>
    <message>
        <source>Getting Started</source>
        <translation>Erste Schritte</translation>
    </message>
    <message>
        <source>Trends</source>
        <translation>Trends</translation>
    </message>
    <message>
        <source>Date Ranges</source>
        <translation>Zeiträume</translation>
    </message>
    <message>
        <source>Properties and Units</source>
        <translation>Größen und Einheiten</translation>
    </message>
    <message>
        <source>Importing</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>Recording This Computer</source>
        <translation>Diesen Rechner aufzeichnen</translation>
    </message>
    <message>
        <source>Following</source>
        <translation>Folgen</translation>
    </message>
    <message>
        <source>Exporting and Printing</source>
        <translation>Exportieren und Drucken</translation>
    </message>
    <message>
        <source>Web</source>
        <translation>Web</translation>
    </message>
    <message>
        <source>Command Line</source>
        <translation>Befehlszeile</translation>
    </message>
    <message>
        <source>Plotix Help</source>
        <translation>Plotix-Hilfe</translation>
    </message>
    <message>
        <source>Help text</source>
        <translation>Hilfetext</translation>
    </message>
    <message>
        <source>Find in page</source>
        <translation>Auf der Seite suchen</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Not on this page</source>
        <translation>Nicht auf dieser Seite</translation>
    </message>
</context>
<context>
    <name>plotix::ImportDialog</name>
    <message>
        <source>Import Measurements</source>
        <translation>Messwerte importieren</translation>
    </message>
    <message>
        <source>The source of these measurements; a new name makes a new one.</source>
        <translation>Woher diese Messwerte stammen; ein neuer Name legt eine neue Quelle an.</translation>
    </message>
    <message>
        <source>&amp;Choose…</source>
        <translation>&amp;Wählen …</translation>
    </message>
    <message>
        <source>&amp;File:</source>
        <translation>&amp;Datei:</translation>
    </message>
    <message>
        <source>&amp;Agent:</source>
        <translation>&amp;Quelle:</translation>
    </message>
    <message>
        <source>&amp;Import</source>
        <translation>I&amp;mportieren</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Choose a File with Measurements</source>
        <translation>Datei mit Messwerten wählen</translation>
    </message>
    <message>
        <source>Choose a file first.</source>
        <translation>Zuerst eine Datei wählen.</translation>
    </message>
    <message numerus="yes">
        <source>Import Measurements (%n more to come)</source>
        <translation>
            <numerusform>Messwerte importieren (noch %n weitere)</numerusform>
            <numerusform>Messwerte importieren (noch %n weitere)</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;Skip This File</source>
        <translation>Diese Datei &amp;überspringen</translation>
    </message>
    <message>
        <source>The file is being read: %1 %</source>
        <translation>Die Datei wird gelesen: %1 %</translation>
    </message>
    <message numerus="yes">
        <source>&amp;Use these choices for the other %n file(s) too</source>
        <translation>
            <numerusform>Diese Wahl a&amp;uch für %n andere Datei verwenden</numerusform>
            <numerusform>Diese Wahl a&amp;uch für die %n anderen Dateien verwenden</numerusform>
        </translation>
    </message>
    <message>
        <source>Measurements (*.csv *.tsv *.txt *.dat *.log *.gz *.xlsx);;All files (*)</source>
        <translation>Messwerte (*.csv *.tsv *.txt *.dat *.log *.gz *.xlsx);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>The file is being read…</source>
        <translation>Die Datei wird gelesen …</translation>
    </message>
    <message numerus="yes">
        <source>The first %n row(s), as understood</source>
        <translation>
            <numerusform>%n Zeile vom Anfang, wie verstanden</numerusform>
            <numerusform>Die ersten %n Zeilen, wie verstanden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>All %n row(s), as understood</source>
        <translation>
            <numerusform>%n Zeile, wie verstanden</numerusform>
            <numerusform>Alle %n Zeilen, wie verstanden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The first %n row(s) of %1, as understood</source>
        <translation>
            <numerusform>%n Zeile von %1, wie verstanden</numerusform>
            <numerusform>Die ersten %n Zeilen von %1, wie verstanden</numerusform>
        </translation>
    </message>
    <message>
        <source>Each goes into an agent of its own name, unless you have named one above.</source>
        <translation>Jede kommt in eine Quelle ihres eigenen Namens, außer Sie haben oben eine genannt.</translation>
    </message>
    <message>
        <source>How the file is read</source>
        <translation>Wie die Datei gelesen wird</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Spalten</translation>
    </message>
    <message>
        <source>First rows</source>
        <translation>Erste Zeilen</translation>
    </message>
    <message>
        <source>Co&amp;lumns: tick those to take; names and units can be changed</source>
        <translation>&amp;Spalten: gewünschte anhaken; Namen und Einheiten sind änderbar</translation>
    </message>
</context>
<context>
    <name>plotix::ImportSequence</name>
    <message>
        <source>Importing %1…</source>
        <translation>%1 wird importiert …</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>The file could not be imported</source>
        <translation>Die Datei konnte nicht importiert werden</translation>
    </message>
    <message>
        <source>Import cancelled; nothing was stored.</source>
        <translation>Import abgebrochen; nichts wurde gespeichert.</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>%1: %2.</source>
        <translation>%1: %2.</translation>
    </message>
    <message>
        <source>Edit ▸ Undo Import brings the values of now back.</source>
        <translation>Bearbeiten ▸ Import rückgängig machen bringt die jetzigen Werte zurück.</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>&amp;Ersetzen</translation>
    </message>
    <message numerus="yes">
        <source>Imported %n record(s)</source>
        <translation>
            <numerusform>%n Messzeile importiert</numerusform>
            <numerusform>%n Messzeilen importiert</numerusform>
        </translation>
    </message>
    <message>
        <source>The site could not be read again</source>
        <translation>Die Anlage konnte nicht neu gelesen werden</translation>
    </message>
    <message numerus="yes">
        <source>&amp;Also in the other %n file(s)</source>
        <translation>
            <numerusform>&amp;Auch in %n anderen Datei</numerusform>
            <numerusform>&amp;Auch in den %n anderen Dateien</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing is imported</source>
        <translation>Nichts wird importiert</translation>
    </message>
    <message>
        <source>This site may only be looked at.</source>
        <translation>Diese Anlage darf nur angesehen werden.</translation>
    </message>
</context>
<context>
    <name>plotix::JoinDialog</name>
    <message>
        <source>Add to the Trend</source>
        <translation>Zum Trend hinzufügen</translation>
    </message>
    <message>
        <source>“%1” comes from a source with times of its own. What stands at the times between its records?</source>
        <translation>„%1“ kommt aus einer Quelle mit eigenen Zeiten. Was gilt zwischen ihren Messwerten?</translation>
    </message>
    <message>
        <source>Edit Computed Property, in the menu of the property, changes that, and how long a gap is bridged.</source>
        <translation>„Berechnete Größe bearbeiten“ im Menü der Größe ändert das, und wie lange Lücken überbrückt werden.</translation>
    </message>
    <message>
        <source>&amp;Its last value (counters, states, set points)</source>
        <translation>&amp;Ihr letzter Wert (Zähler, Zustände, Sollwerte)</translation>
    </message>
    <message>
        <source>A &amp;straight line to the next (temperatures, levels)</source>
        <translation>Eine &amp;gerade Linie (Temperaturen, Füllstände)</translation>
    </message>
</context>
<context>
    <name>plotix::LimitsDialog</name>
    <message>
        <source>No limits.</source>
        <translation>Keine Grenzwerte.</translation>
    </message>
    <message>
        <source>Limits of %1</source>
        <translation>Grenzwerte von %1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Beyond it</source>
        <translation>Jenseits</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Severity</source>
        <translation>Stufe</translation>
    </message>
    <message>
        <source>&amp;Add Limit</source>
        <translation>Grenzwert &amp;hinzufügen</translation>
    </message>
    <message>
        <source>above</source>
        <translation>darüber</translation>
    </message>
    <message>
        <source>below</source>
        <translation>darunter</translation>
    </message>
    <message>
        <source>Notice</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Alarm</source>
        <translation>Alarm</translation>
    </message>
    <message>
        <source>Remove this limit</source>
        <translation>Diesen Grenzwert entfernen</translation>
    </message>
    <message>
        <source>Name of limit %1</source>
        <translation>Name von Grenzwert %1</translation>
    </message>
    <message>
        <source>Side of limit %1</source>
        <translation>Seite von Grenzwert %1</translation>
    </message>
    <message>
        <source>Value of limit %1</source>
        <translation>Wert von Grenzwert %1</translation>
    </message>
    <message>
        <source>Severity of limit %1</source>
        <translation>Stufe von Grenzwert %1</translation>
    </message>
    <message>
        <source>Remove limit %1</source>
        <translation>Grenzwert %1 entfernen</translation>
    </message>
    <message>
        <source>high</source>
        <translation>hoch</translation>
    </message>
    <message>
        <source>low</source>
        <translation>niedrig</translation>
    </message>
    <message>
        <source>very high</source>
        <translation>sehr hoch</translation>
    </message>
    <message>
        <source>very low</source>
        <translation>sehr niedrig</translation>
    </message>
    <message>
        <source>Every limit needs a name.</source>
        <translation>Jeder Grenzwert braucht einen Namen.</translation>
    </message>
    <message>
        <source>Two limits are called “%1”: choose another name for one of them.</source>
        <translation>Zwei Grenzwerte heißen „%1“: Geben Sie einem davon einen anderen Namen.</translation>
    </message>
    <message>
        <source>Type a value for “%1”, or remove it with ×.</source>
        <translation>Geben Sie einen Wert für „%1“ ein, oder entfernen Sie ihn mit ×.</translation>
    </message>
    <message>
        <source>The value of “%1” is no number.</source>
        <translation>Der Wert von „%1“ ist keine Zahl.</translation>
    </message>
</context>
<context>
    <name>plotix::LiveControls</name>
    <message>
        <source>This computer is not recorded</source>
        <translation>Dieser Rechner wird nicht aufgezeichnet</translation>
    </message>
    <message>
        <source>This computer is being recorded</source>
        <translation>Dieser Rechner wird aufgezeichnet</translation>
    </message>
    <message>
        <source>%1. Recording ends when the window closes, and goes on when the site is opened again.</source>
        <translation>%1. Die Aufzeichnung endet, wenn das Fenster geschlossen wird, und geht weiter, wenn die Anlage wieder geöffnet wird.</translation>
    </message>
    <message>
        <source>&amp;Close and End Recording</source>
        <translation>&amp;Schließen und Aufzeichnung beenden</translation>
    </message>
    <message>
        <source>&amp;Keep Recording</source>
        <translation>&amp;Weiter aufzeichnen</translation>
    </message>
    <message>
        <source>Load, memory, disks, network and temperatures, every second.</source>
        <translation>Last, Speicher, Platten, Netz und Temperaturen, jede Sekunde.</translation>
    </message>
    <message>
        <source>This site may only be looked at.</source>
        <translation>Diese Anlage darf nur angesehen werden.</translation>
    </message>
    <message>
        <source>Keeps the trend&apos;s span ending now, until you move it.</source>
        <translation>Lässt den Zeitraum des Trends jetzt enden, bis Sie ihn verschieben.</translation>
    </message>
    <message>
        <source>This view cannot do that.</source>
        <translation>Diese Ansicht kann das nicht.</translation>
    </message>
</context>
<context>
    <name>plotix::MomentEdit</name>
    <message>
        <source>There is no such date.</source>
        <translation>Dieses Datum gibt es nicht.</translation>
    </message>
    <message>
        <source>This is not understood as a date. Write it such as %1.</source>
        <translation>Das ist nicht als Datum zu verstehen. Schreiben Sie etwa %1.</translation>
    </message>
</context>
<context>
    <name>plotix::NoteDialog</name>
    <message>
        <source>&amp;Until:</source>
        <translation>&amp;Bis:</translation>
    </message>
    <message>
        <source>A&amp;ll properties</source>
        <translation>&amp;Alle Größen</translation>
    </message>
    <message>
        <source>New Note</source>
        <translation>Neue Notiz</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Notiz</translation>
    </message>
    <message>
        <source>End of the span</source>
        <translation>Ende des Zeitraums</translation>
    </message>
    <message>
        <source>Properties that the note is about</source>
        <translation>Größen, die die Notiz betrifft</translation>
    </message>
    <message>
        <source>&amp;Text:</source>
        <translation>&amp;Text:</translation>
    </message>
    <message>
        <source>T&amp;ime:</source>
        <translation>&amp;Zeit:</translation>
    </message>
    <message>
        <source>&amp;Author:</source>
        <translation>A&amp;utor:</translation>
    </message>
    <message>
        <source>About:</source>
        <translation>Betrifft:</translation>
    </message>
    <message>
        <source>Write what is to be remembered.</source>
        <translation>Schreiben Sie, woran erinnert werden soll.</translation>
    </message>
    <message>
        <source>The span ends before it begins: choose a later end.</source>
        <translation>Der Zeitraum endet, bevor er beginnt: Wählen Sie ein späteres Ende.</translation>
    </message>
    <message>
        <source>Tick the properties that the note is about, or all of them.</source>
        <translation>Kreuzen Sie die Größen an, die die Notiz betrifft, oder alle.</translation>
    </message>
    <message>
        <source>Keep what you have written?</source>
        <translation>Soll das Geschriebene bleiben?</translation>
    </message>
    <message>
        <source>“Cancel” goes on writing.</source>
        <translation>„Abbrechen“ führt zurück zum Text.</translation>
    </message>
</context>
<context>
    <name>plotix::NotesModel</name>
    <message>
        <source>all</source>
        <translation>alle</translation>
    </message>
    <message>
        <source>deleted ones</source>
        <translation>gelöschte</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Until</source>
        <translation>Bis</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Notiz</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>Größen</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>Autor</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>Time (%1)</source>
        <translation>Zeit (%1)</translation>
    </message>
</context>
<context>
    <name>plotix::NotesWindow</name>
    <message>
        <source>Notes</source>
        <translation>Notizen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Search in notes</source>
        <translation>In den Notizen suchen</translation>
    </message>
    <message>
        <source>&amp;Go There</source>
        <translation>&amp;Dorthin</translation>
    </message>
    <message>
        <source>&amp;Edit…</source>
        <translation>&amp;Bearbeiten …</translation>
    </message>
    <message>
        <source>&amp;New Note…</source>
        <translation>&amp;Neue Notiz …</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
</context>
<context>
    <name>plotix::OpenServerDialog</name>
    <message>
        <source>&amp;Encrypted connection</source>
        <translation>&amp;Verschlüsselte Verbindung</translation>
    </message>
    <message>
        <source>Open from Server</source>
        <translation>Vom Server öffnen</translation>
    </message>
    <message>
        <source>name or name:8123</source>
        <translation>Name oder Name:8123</translation>
    </message>
    <message>
        <source>A ClickHouse server; several names, with commas between, are replicas of it. An address, clickhouse://…, may be pasted whole.</source>
        <translation>Ein ClickHouse-Server; mehrere Namen, durch Kommas getrennt, sind Replikate davon. Eine Adresse, clickhouse://…, kann im Ganzen eingesetzt werden.</translation>
    </message>
    <message>
        <source>the server&apos;s usual one</source>
        <translation>der übliche des Servers</translation>
    </message>
    <message>
        <source>Is kept until the program ends, and stored nowhere.</source>
        <translation>Wird behalten, bis das Programm endet, und nirgends gespeichert.</translation>
    </message>
    <message>
        <source>HTTPS, with the server&apos;s certificate checked.</source>
        <translation>HTTPS; das Zertifikat des Servers wird geprüft.</translation>
    </message>
    <message>
        <source>database/site</source>
        <translation>Datenbank/Anlage</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>S&amp;uchen</translation>
    </message>
    <message>
        <source>List the sites of this server.</source>
        <translation>Die Anlagen dieses Servers auflisten.</translation>
    </message>
    <message>
        <source>&amp;Server:</source>
        <translation>&amp;Server:</translation>
    </message>
    <message>
        <source>&amp;User:</source>
        <translation>&amp;Benutzer:</translation>
    </message>
    <message>
        <source>&amp;Password:</source>
        <translation>&amp;Kennwort:</translation>
    </message>
    <message>
        <source>S&amp;ite:</source>
        <translation>&amp;Anlage:</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Records, properties, limits and notes stay on the server, for everybody. Trends and their looks are kept on this computer.</source>
        <translation>Messwerte, Größen, Grenzwerte und Notizen bleiben für alle auf dem Server. Trends und ihr Aussehen werden auf diesem Computer aufbewahrt.</translation>
    </message>
    <message>
        <source>Asking the server…</source>
        <translation>Der Server wird gefragt…</translation>
    </message>
    <message>
        <source>There is no site on this server yet: “plotix store create %1” makes one.</source>
        <translation>Auf diesem Server gibt es noch keine Anlage: „plotix store create %1“ legt eine an.</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>%1 wird geöffnet…</translation>
    </message>
</context>
<context>
    <name>plotix::PlugInToolbar</name>
    <message>
        <source>Toolbar</source>
        <translation>Symbolleiste</translation>
    </message>
    <message>
        <source>%1 – %2</source>
        <translation>%1 – %2</translation>
    </message>
</context>
<context>
    <name>plotix::PropertyChoice</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Search properties</source>
        <translation>Größen suchen</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>Größen</translation>
    </message>
    <message>
        <source>Tick A&amp;ll</source>
        <translation>A&amp;lle ankreuzen</translation>
    </message>
    <message>
        <source>&amp;Untick All</source>
        <translation>Alle &amp;Kreuze entfernen</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>plotix::PropertyListModel</name>
    <message>
        <source>%1%2
Drag it onto a trend, or tick it and choose New Trend.
Double-click to change colour or unit.</source>
        <translation>%1%2
Auf einen Trend ziehen, oder ankreuzen und „Neuer Trend“ wählen.
Doppelklick ändert Farbe oder Einheit.</translation>
    </message>
    <message>
        <source> in %1</source>
        <translation> in %1</translation>
    </message>
    <message>
        <source>Property</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>%1, computed</source>
        <translation>%1, berechnet</translation>
    </message>
    <message>
        <source>%1 = %2</source>
        <translation>%1 = %2</translation>
    </message>
    <message>
        <source>%1
It cannot be computed: %2</source>
        <translation>%1
Sie lässt sich nicht berechnen: %2</translation>
    </message>
    <message>
        <source>%1
Drag it onto a trend, or tick it and choose New Trend.</source>
        <translation>%1
Auf einen Trend ziehen, oder ankreuzen und „Neuer Trend“ wählen.</translation>
    </message>
    <message>
        <source>%1, cannot be computed: %2</source>
        <translation>%1, lässt sich nicht berechnen: %2</translation>
    </message>
</context>
<context>
    <name>plotix::PropertyListView</name>
    <message>
        <source>Properties</source>
        <translation>Größen</translation>
    </message>
    <message>
        <source>Tick properties for a new trend, or drag them onto one.</source>
        <translation>Größen für einen neuen Trend ankreuzen oder auf einen ziehen.</translation>
    </message>
    <message>
        <source>&amp;Unit</source>
        <translation>&amp;Einheit</translation>
    </message>
    <message>
        <source>&amp;Color…</source>
        <translation>&amp;Farbe …</translation>
    </message>
    <message>
        <source>This property has no unit.</source>
        <translation>Diese Größe hat keine Einheit.</translation>
    </message>
    <message>
        <source>Color of %1</source>
        <translation>Farbe von %1</translation>
    </message>
    <message>
        <source>&amp;Tick All</source>
        <translation>Alle &amp;ankreuzen</translation>
    </message>
    <message>
        <source>&amp;Untick All</source>
        <translation>Alle &amp;Kreuze entfernen</translation>
    </message>
    <message>
        <source>&amp;New Trend from Ticked Properties</source>
        <translation>&amp;Neuer Trend aus angekreuzten Größen</translation>
    </message>
    <message>
        <source>&amp;Rename…</source>
        <translation>&amp;Umbenennen …</translation>
    </message>
    <message>
        <source>&amp;Merge Into</source>
        <translation>&amp;Zusammenführen mit</translation>
    </message>
    <message>
        <source>Remove &amp;Values of the Shown Span…</source>
        <translation>&amp;Werte des gezeigten Zeitraums entfernen …</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>&amp;Edit Computed Property…</source>
        <translation>Berechnete Größe bea&amp;rbeiten …</translation>
    </message>
    <message>
        <source>New Computed &amp;Property…</source>
        <translation>Neue &amp;berechnete Größe …</translation>
    </message>
    <message>
        <source>&amp;Limits…</source>
        <translation>&amp;Grenzwerte …</translation>
    </message>
    <message>
        <source>&amp;Add to the Trend in Front</source>
        <translation>In den Trend v&amp;orn aufnehmen</translation>
    </message>
</context>
<context>
    <name>plotix::ReadingFields</name>
    <message>
        <source>Time c&amp;olumn:</source>
        <translation>Zei&amp;tspalte:</translation>
    </message>
    <message>
        <source>&amp;Time zone:</source>
        <translation>Zeit&amp;zone:</translation>
    </message>
    <message>
        <source>&amp;Dates:</source>
        <translation>D&amp;atumsangaben:</translation>
    </message>
    <message>
        <source>Day before month</source>
        <translation>Tag vor Monat</translation>
    </message>
    <message>
        <source>Month before day</source>
        <translation>Monat vor Tag</translation>
    </message>
    <message>
        <source>Year, month, day</source>
        <translation>Jahr, Monat, Tag</translation>
    </message>
    <message>
        <source>Deci&amp;mal sign:</source>
        <translation>Dezimalzei&amp;chen:</translation>
    </message>
    <message>
        <source>Point: 1.5</source>
        <translation>Punkt: 1.5</translation>
    </message>
    <message>
        <source>Comma: 1,5</source>
        <translation>Komma: 1,5</translation>
    </message>
    <message>
        <source>Betwee&amp;n columns:</source>
        <translation>Zwischen Spalte&amp;n:</translation>
    </message>
    <message>
        <source>Comma</source>
        <translation>Komma</translation>
    </message>
    <message>
        <source>Semicolon</source>
        <translation>Semikolon</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>Bar |</source>
        <translation>Strich |</translation>
    </message>
    <message>
        <source>Blanks</source>
        <translation>Leerzeichen</translation>
    </message>
    <message>
        <source>S&amp;heet:</source>
        <translation>&amp;Blatt:</translation>
    </message>
    <message>
        <source>&amp;Quantities:</source>
        <translation>&amp;Größen:</translation>
    </message>
    <message>
        <source>A column for each</source>
        <translation>Je eine Spalte</translation>
    </message>
    <message>
        <source>Named in each row</source>
        <translation>In jeder Zeile genannt</translation>
    </message>
    <message>
        <source>all, or such as origin=EWR</source>
        <translation>alle, oder etwa Ort=Keller</translation>
    </message>
    <message>
        <source>All rows, or those with a text in a column, such as origin=EWR.</source>
        <translation>Alle Zeilen, oder die mit einem Text in einer Spalte, etwa Ort=Keller.</translation>
    </message>
    <message>
        <source>&amp;Rows:</source>
        <translation>Z&amp;eilen:</translation>
    </message>
    <message>
        <source>At one tim&amp;e:</source>
        <translation>Zu&amp;r selben Zeit:</translation>
    </message>
    <message>
        <source>Keep the last row</source>
        <translation>Letzte Zeile behalten</translation>
    </message>
    <message>
        <source>Refuse many rows</source>
        <translation>Viele Zeilen ablehnen</translation>
    </message>
    <message>
        <source>Whether many rows with one time and different numbers are refused, or the last of them is kept.</source>
        <translation>Ob viele Zeilen mit derselben Zeit und verschiedenen Zahlen abgelehnt werden oder die letzte von ihnen behalten wird.</translation>
    </message>
    <message>
        <source>-999 and the li&amp;ke are values</source>
        <translation>-999 und dergle&amp;ichen sind Werte</translation>
    </message>
    <message>
        <source>Otherwise such numbers are gaps where all others are far above.</source>
        <translation>Sonst sind solche Zahlen Lücken, wo alle anderen weit darüber liegen.</translation>
    </message>
    <message>
        <source>Skip rows &amp;without a time</source>
        <translation>Zeilen &amp;ohne Zeit übergehen</translation>
    </message>
    <message>
        <source>Otherwise the import is refused when more than a third of the rows have none.</source>
        <translation>Sonst wird der Import abgelehnt, wenn mehr als ein Drittel der Zeilen keine hat.</translation>
    </message>
    <message>
        <source>Write the rows you want as COLUMN=TEXT.</source>
        <translation>Schreiben Sie die gewünschten Zeilen als SPALTE=TEXT.</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>Automatic: %1</source>
        <translation>Automatisch: %1</translation>
    </message>
    <message>
        <source>Automatic: %1 (the file&apos;s)</source>
        <translation>Automatisch: %1 (aus der Datei)</translation>
    </message>
    <message>
        <source>Automatic: %1 (yours)</source>
        <translation>Automatisch: %1 (Ihre)</translation>
    </message>
    <message>
        <source>Which column says of which other one whether its values are good, such as Status=Temp; Status=* for all of the row, and a semicolon between several.</source>
        <translation>Welche Spalte von welcher anderen sagt, ob deren Werte gut sind, etwa Status=Temp; Status=* für alle der Zeile, mehrere mit Semikolon getrennt.</translation>
    </message>
    <message>
        <source>Qualit&amp;y:</source>
        <translation>Qua&amp;lität:</translation>
    </message>
    <message>
        <source>&amp;Bad words:</source>
        <translation>&amp;Heißt schlecht:</translation>
    </message>
    <message>
        <source>Take &amp;values marked as bad too</source>
        <translation>Auch schlechte Werte &amp;verwenden</translation>
    </message>
    <message>
        <source>All values are then good, whatever a column beside them says.</source>
        <translation>Alle Werte gelten dann als gut, was auch immer eine Spalte daneben sagt.</translation>
    </message>
    <message>
        <source>Write the columns of quality as STATUS=VALUES.</source>
        <translation>Qualitätsspalten bitte als STATUS=WERTE schreiben.</translation>
    </message>
    <message>
        <source>the known ones</source>
        <translation>die bekannten</translation>
    </message>
    <message>
        <source>The words in columns of quality that mean bad, such as 1, Error; all others then mean good.</source>
        <translation>Die Wörter in Qualitätsspalten, die schlecht bedeuten, etwa 1, Defekt; alle anderen heißen dann gut.</translation>
    </message>
</context>
<context>
    <name>plotix::RecordingIndicator</name>
    <message numerus="yes">
        <source>Recording since %1: %Ln record(s)</source>
        <translation>
            <numerusform>Aufzeichnung seit %1: %Ln Messung</numerusform>
            <numerusform>Aufzeichnung seit %1: %Ln Messungen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>; %Ln record(s) wait on this disk for the server</source>
        <translation>
            <numerusform>; %Ln Messung wartet auf dieser Platte auf den Server</numerusform>
            <numerusform>; %Ln Messungen warten auf dieser Platte auf den Server</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>plotix::SaveCaseDialog</name>
    <message>
        <source>What is &amp;visible: %1</source>
        <translation>Was &amp;sichtbar ist: %1</translation>
    </message>
    <message>
        <source>From &amp;A to B: %1</source>
        <translation>Von &amp;A bis B: %1</translation>
    </message>
    <message>
        <source>From &amp;A to B</source>
        <translation>Von &amp;A bis B</translation>
    </message>
    <message>
        <source>Save as Case</source>
        <translation>Als Fall sichern</translation>
    </message>
    <message>
        <source>A case is a site of its own, with “%1”, its records, limits and notes of this span and nothing else. Whoever has Plotix opens it, and needs nothing else.</source>
        <translation>Ein Fall ist eine Anlage für sich, mit „%1“, seinen Messwerten, Grenzwerten und Notizen dieses Zeitraums und nichts sonst. Wer Plotix hat, öffnet ihn und braucht sonst nichts.</translation>
    </message>
    <message>
        <source>Set both marks, A and B, first.</source>
        <translation>Setzen Sie erst beide Marken, A und B.</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>Si&amp;chern …</translation>
    </message>
</context>
<context>
    <name>plotix::SeparateWindow</name>
    <message>
        <source>%1 – %2</source>
        <translation>%1 – %2</translation>
    </message>
</context>
<context>
    <name>plotix::SiteDetailsDialog</name>
    <message>
        <source>Name and Location</source>
        <translation>Name und Ort</translation>
    </message>
    <message>
        <source>such as Hillside, or 54.1° N 12.1° E</source>
        <translation>etwa Hillside, oder 54.1° N 12.1° E</translation>
    </message>
    <message>
        <source>Reports say both, as “name at location”.</source>
        <translation>Berichte nennen beides.</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>&amp;Location:</source>
        <translation>&amp;Ort:</translation>
    </message>
    <message>
        <source>such as Europe/Berlin</source>
        <translation>etwa Europe/Berlin</translation>
    </message>
    <message>
        <source>A trend can say its times by the clocks of the site: View ▸ Time Zone.</source>
        <translation>Ein Trend kann seine Zeiten nach den Uhren der Anlage nennen: Ansicht ▸ Zeitzone.</translation>
    </message>
    <message>
        <source>Time &amp;zone:</source>
        <translation>&amp;Zeitzone:</translation>
    </message>
    <message>
        <source>No time zone is called “%1”. Did you mean %2?</source>
        <translation>Keine Zeitzone heißt „%1“. Meinten Sie %2?</translation>
    </message>
</context>
<context>
    <name>plotix::SiteEditor</name>
    <message>
        <source>Cancelled; nothing was changed.</source>
        <translation>Abgebrochen; nichts wurde geändert.</translation>
    </message>
    <message>
        <source>Nothing was changed</source>
        <translation>Nichts wurde geändert</translation>
    </message>
    <message>
        <source>The site could not be read again</source>
        <translation>Die Anlage konnte nicht neu gelesen werden</translation>
    </message>
    <message>
        <source>The site was changed since, by an import or another program.</source>
        <translation>Die Anlage wurde inzwischen geändert, durch einen Import oder ein anderes Programm.</translation>
    </message>
    <message>
        <source>Rename “%1”</source>
        <translation>„%1“ umbenennen</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Rename to “%1”</source>
        <translation>Umbenennen in „%1“</translation>
    </message>
    <message>
        <source>Merge “%1”</source>
        <translation>„%1“ zusammenführen</translation>
    </message>
    <message numerus="yes">
        <source>%n value(s) were left out</source>
        <translation>
            <numerusform>%n Wert wurde weggelassen</numerusform>
            <numerusform>%n Werte wurden weggelassen</numerusform>
        </translation>
    </message>
    <message>
        <source>Both had different values at the same time; those of the one that stays were kept. Undo brings all back.</source>
        <translation>Beide hatten zur selben Zeit verschiedene Werte; behalten wurden die der bleibenden Größe. Rückgängig bringt alles zurück.</translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>„%1“ löschen</translation>
    </message>
    <message>
        <source>Select a trend and zoom to the values that are wrong first.</source>
        <translation>Wählen Sie zuerst einen Trend und zoomen Sie auf die falschen Werte.</translation>
    </message>
    <message>
        <source>The values of “%1” from %2 to %3, the span that the trend shows, are taken out. Undo brings them back.</source>
        <translation>Die Werte von „%1“ von %2 bis %3, dem Zeitraum, den der Trend zeigt, werden entfernt. Rückgängig bringt sie zurück.</translation>
    </message>
    <message>
        <source>Remove Values</source>
        <translation>Werte entfernen</translation>
    </message>
    <message>
        <source>Remove values of “%1”</source>
        <translation>Werte von „%1“ entfernen</translation>
    </message>
    <message>
        <source>There is no import that can be undone.</source>
        <translation>Es gibt keinen Import, der sich rückgängig machen lässt.</translation>
    </message>
    <message>
        <source>The import of “%1” is undone: what it added goes, and what it replaced comes back.</source>
        <translation>Der Import von „%1“ wird rückgängig gemacht: Was er hinzugefügt hat, geht, und was er ersetzt hat, kommt zurück.</translation>
    </message>
    <message>
        <source>Undo Import</source>
        <translation>Import rückgängig machen</translation>
    </message>
    <message>
        <source>Undo the import of “%1”</source>
        <translation>Import von „%1“ rückgängig machen</translation>
    </message>
    <message>
        <source>Another program had renamed “%1” to “%2” meanwhile; Undo brings that back.</source>
        <translation>Ein anderes Programm hatte „%1“ inzwischen in „%2“ umbenannt; Rückgängig bringt das zurück.</translation>
    </message>
    <message>
        <source>“%1”: %2</source>
        <translation>„%1“: %2</translation>
    </message>
    <message numerus="yes">
        <source>%n computed propert(ies) can be computed no longer</source>
        <translation>
            <numerusform>%n berechnete Größe lässt sich nicht mehr berechnen</numerusform>
            <numerusform>%n berechnete Größen lassen sich nicht mehr berechnen</numerusform>
        </translation>
    </message>
    <message>
        <source>Undo brings back what they name; Edit Computed Property… changes the formula.</source>
        <translation>Rückgängig bringt zurück, was sie nennen; Berechnete Größe bearbeiten … ändert die Formel.</translation>
    </message>
    <message>
        <source>Change the formula of “%1”</source>
        <translation>Formel von „%1“ ändern</translation>
    </message>
    <message>
        <source>Compute “%1”</source>
        <translation>„%1“ berechnen</translation>
    </message>
    <message>
        <source>Formulas have the new name in them: %1</source>
        <translation>In Formeln steht nun der neue Name: %1</translation>
    </message>
    <message>
        <source>The trend shows that already.</source>
        <translation>Der Trend zeigt das schon.</translation>
    </message>
    <message>
        <source>Add “%1” to the trend</source>
        <translation>„%1“ in den Trend aufnehmen</translation>
    </message>
</context>
<context>
    <name>plotix::SiteWindow</name>
    <message numerus="yes">
        <source>%n trend(s) of this site cannot be read by this version.</source>
        <translation>
            <numerusform>%n Trend dieser Anlage kann von dieser Version nicht gelesen werden.</numerusform>
            <numerusform>%n Trends dieser Anlage können von dieser Version nicht gelesen werden.</numerusform>
        </translation>
    </message>
    <message>
        <source>Trends</source>
        <translation>Trends</translation>
    </message>
    <message>
        <source>T&amp;RENDS</source>
        <translation>T&amp;RENDS</translation>
    </message>
    <message>
        <source>&amp;PROPERTIES</source>
        <translation>&amp;GRÖSSEN</translation>
    </message>
    <message>
        <source>Changes could not be saved</source>
        <translation>Änderungen konnten nicht gespeichert werden</translation>
    </message>
    <message>
        <source>The records could not be shown</source>
        <translation>Die Daten konnten nicht angezeigt werden</translation>
    </message>
    <message>
        <source>%1 – Plotix</source>
        <translation>%1 – Plotix</translation>
    </message>
    <message>
        <source>This trend is shown in a window of its own.</source>
        <translation>Dieser Trend wird in einem eigenen Fenster gezeigt.</translation>
    </message>
    <message>
        <source>Show Window</source>
        <translation>Fenster zeigen</translation>
    </message>
    <message>
        <source>Bring It Back</source>
        <translation>Zurückholen</translation>
    </message>
    <message>
        <source>This site has no measurements yet</source>
        <translation>Diese Anlage hat noch keine Messwerte</translation>
    </message>
    <message>
        <source>Import a text file with a column of times and columns of numbers, or drop one here.</source>
        <translation>Importieren Sie eine Textdatei mit einer Spalte von Zeiten und Spalten von Zahlen, oder legen Sie eine hier ab.</translation>
    </message>
    <message>
        <source>Import…</source>
        <translation>Importieren …</translation>
    </message>
    <message>
        <source>This site has no trend yet</source>
        <translation>Diese Anlage hat noch keinen Trend</translation>
    </message>
    <message>
        <source>Tick properties in the list at the left and press New Trend, or import more measurements. Without ticks the trend shows every property.</source>
        <translation>Kreuzen Sie links in der Liste Größen an und drücken Sie „Neuer Trend“, oder importieren Sie weitere Messwerte. Ohne Kreuze zeigt der Trend alle Größen.</translation>
    </message>
    <message>
        <source>New Trend</source>
        <translation>Neuer Trend</translation>
    </message>
    <message>
        <source>No trend selected</source>
        <translation>Kein Trend ausgewählt</translation>
    </message>
    <message>
        <source>Select a trend in the list at the left.</source>
        <translation>Wählen Sie links in der Liste einen Trend aus.</translation>
    </message>
    <message>
        <source>Plotix sites (*.plotix)</source>
        <translation>Plotix-Anlagen (*.plotix)</translation>
    </message>
    <message>
        <source>About Plotix</source>
        <translation>Über Plotix</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Plotix %1&lt;/h3&gt;&lt;p&gt;Trends of measured properties.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Plotix %1&lt;/h3&gt;&lt;p&gt;Trends gemessener Größen.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Select a trend first.</source>
        <translation>Zuerst einen Trend auswählen.</translation>
    </message>
    <message>
        <source>This view cannot do that.</source>
        <translation>Diese Ansicht kann das nicht.</translation>
    </message>
    <message>
        <source>This view has no report.</source>
        <translation>Diese Ansicht hat keinen Bericht.</translation>
    </message>
    <message>
        <source>Tick properties in the list first.</source>
        <translation>Zuerst Größen in der Liste ankreuzen.</translation>
    </message>
    <message>
        <source>This site may only be looked at.</source>
        <translation>Diese Anlage darf nur angesehen werden.</translation>
    </message>
    <message>
        <source>An import is running.</source>
        <translation>Ein Import läuft.</translation>
    </message>
    <message>
        <source>New Site</source>
        <translation>Neue Anlage</translation>
    </message>
    <message>
        <source>Name and location are not stored</source>
        <translation>Name und Ort wurden nicht gespeichert</translation>
    </message>
    <message>
        <source>The trend could not be made</source>
        <translation>Der Trend konnte nicht angelegt werden</translation>
    </message>
    <message>
        <source>This view keeps its name.</source>
        <translation>Diese Ansicht behält ihren Namen.</translation>
    </message>
    <message>
        <source>This view stays in the site window.</source>
        <translation>Diese Ansicht bleibt im Anlagenfenster.</translation>
    </message>
    <message>
        <source>This trend is in the site window.</source>
        <translation>Dieser Trend ist im Anlagenfenster.</translation>
    </message>
    <message>
        <source>This trend is the first one.</source>
        <translation>Dieser Trend ist der erste.</translation>
    </message>
    <message>
        <source>This trend is the last one.</source>
        <translation>Dieser Trend ist der letzte.</translation>
    </message>
    <message>
        <source>This view cannot be deleted.</source>
        <translation>Diese Ansicht kann nicht gelöscht werden.</translation>
    </message>
    <message>
        <source>There is nothing to undo.</source>
        <translation>Es gibt nichts rückgängig zu machen.</translation>
    </message>
    <message>
        <source>There is nothing to redo.</source>
        <translation>Es gibt nichts zu wiederholen.</translation>
    </message>
    <message>
        <source>Sites you open are listed here.</source>
        <translation>Geöffnete Anlagen werden hier aufgeführt.</translation>
    </message>
    <message>
        <source>Clear Menu</source>
        <translation>Liste leeren</translation>
    </message>
    <message>
        <source>%1 (may only be looked at) – Plotix</source>
        <translation>%1 (nur zum Ansehen) – Plotix</translation>
    </message>
    <message>
        <source>The site&apos;s file was replaced</source>
        <translation>Die Datei der Anlage wurde ersetzt</translation>
    </message>
    <message>
        <source>There is nothing to export yet: import or record something first.</source>
        <translation>Es gibt noch nichts zu exportieren: Zuerst etwas importieren oder aufzeichnen.</translation>
    </message>
    <message>
        <source>Another program had changed “%1” to “%2” meanwhile; “%3” stands.</source>
        <translation>Ein anderes Programm hatte „%1“ inzwischen in „%2“ geändert; es gilt „%3“.</translation>
    </message>
    <message>
        <source>A property could not be computed</source>
        <translation>Eine Größe ließ sich nicht berechnen</translation>
    </message>
    <message>
        <source>There is nothing to compute from yet: import or record something first.</source>
        <translation>Es gibt noch nichts, woraus sich rechnen ließe: Zuerst etwas importieren oder aufzeichnen.</translation>
    </message>
    <message>
        <source>The view cannot be shown</source>
        <translation>Die Ansicht lässt sich nicht zeigen</translation>
    </message>
    <message>
        <source>Sites and figures (*.plotix *.png *.pdf *.svg)</source>
        <translation>Anlagen und Abbildungen (*.plotix *.png *.pdf *.svg)</translation>
    </message>
    <message>
        <source>Figures (*.png *.pdf *.svg)</source>
        <translation>Abbildungen (*.png *.pdf *.svg)</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>The figure cannot be opened as a view</source>
        <translation>Die Abbildung lässt sich nicht als Ansicht öffnen</translation>
    </message>
    <message>
        <source>“%1” does not tell what it shows: it was not made by Plotix, or what it shows was left out of it.</source>
        <translation>„%1“ sagt nicht, was darauf zu sehen ist: Die Datei stammt nicht von Plotix, oder die Angabe wurde weggelassen.</translation>
    </message>
    <message>
        <source>&amp;No Recent Sites</source>
        <translation>&amp;Keine zuletzt geöffneten Anlagen</translation>
    </message>
    <message>
        <source>Some records could not be read</source>
        <translation>Einige Messwerte konnten nicht gelesen werden</translation>
    </message>
</context>
<context>
    <name>plotix::SiteWindows</name>
    <message>
        <source>The site could not be opened</source>
        <translation>Die Anlage konnte nicht geöffnet werden</translation>
    </message>
</context>
<context>
    <name>plotix::SourceListModel</name>
    <message>
        <source>Trend %1</source>
        <translation>Trend %1</translation>
    </message>
</context>
<context>
    <name>plotix::SpanChoice</name>
    <message>
        <source>&amp;From</source>
        <translation>&amp;Von</translation>
    </message>
    <message>
        <source>t&amp;o</source>
        <translation>b&amp;is</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Von</translation>
    </message>
    <message>
        <source>To</source>
        <translation>Bis</translation>
    </message>
</context>
<context>
    <name>plotix::TrendOutputs</name>
    <message>
        <source>There is no picture to export</source>
        <translation>Es gibt kein Bild zu exportieren</translation>
    </message>
    <message>
        <source>The trend shows no graph yet: wait for its records, or refresh it.</source>
        <translation>Der Trend zeigt noch kein Diagramm: Warten Sie auf seine Messwerte, oder aktualisieren Sie ihn.</translation>
    </message>
    <message>
        <source>The trend shows no graph yet, or the size asked for is too large. Refresh it, or ask for less.</source>
        <translation>Der Trend zeigt noch kein Diagramm, oder die gewünschte Größe ist zu groß. Aktualisieren Sie ihn, oder wählen Sie weniger.</translation>
    </message>
    <message>
        <source>The picture could not be saved</source>
        <translation>Das Bild konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Exporting %1…</source>
        <translation>%1 wird exportiert …</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Exported %1.</source>
        <translation>%1 exportiert.</translation>
    </message>
    <message>
        <source>Export cancelled; nothing was written.</source>
        <translation>Export abgebrochen; nichts wurde geschrieben.</translation>
    </message>
    <message>
        <source>The records could not be exported</source>
        <translation>Die Messwerte konnten nicht exportiert werden</translation>
    </message>
    <message>
        <source>There is no picture to copy</source>
        <translation>Es gibt kein Bild zu kopieren</translation>
    </message>
    <message>
        <source>The trend shows no graph yet. Refresh it.</source>
        <translation>Der Trend zeigt noch kein Diagramm. Aktualisieren Sie ihn.</translation>
    </message>
    <message>
        <source>The picture is in the clipboard.</source>
        <translation>Das Bild ist in der Zwischenablage.</translation>
    </message>
    <message>
        <source>There is no stretch between marks</source>
        <translation>Es gibt kein Stück zwischen Marken</translation>
    </message>
    <message>
        <source>Set both marks, A and B, first.</source>
        <translation>Setzen Sie erst beide Marken, A und B.</translation>
    </message>
    <message>
        <source>The link is in the clipboard; “plotix open LINK” shows this view to whoever has %1.</source>
        <translation>Der Link ist in der Zwischenablage; „plotix open LINK“ zeigt diese Ansicht jedem, der %1 hat.</translation>
    </message>
    <message>
        <source>There are no records to copy</source>
        <translation>Es gibt keine Messwerte zu kopieren</translation>
    </message>
    <message>
        <source>The trend shows none in this span.</source>
        <translation>Der Trend zeigt in diesem Zeitraum keine.</translation>
    </message>
    <message>
        <source>The records shown are in the clipboard.</source>
        <translation>Die gezeigten Messwerte sind in der Zwischenablage.</translation>
    </message>
    <message>
        <source>The records could not be copied</source>
        <translation>Die Messwerte konnten nicht kopiert werden</translation>
    </message>
    <message>
        <source>The records of these dates are not here</source>
        <translation>Die Messwerte dieser Daten fehlen</translation>
    </message>
    <message>
        <source>Reading the records of these dates…</source>
        <translation>Die Messwerte dieser Daten werden gelesen …</translation>
    </message>
    <message>
        <source>Print “%1”</source>
        <translation>„%1“ drucken</translation>
    </message>
    <message>
        <source>The report could not be printed</source>
        <translation>Der Bericht konnte nicht gedruckt werden</translation>
    </message>
    <message>
        <source>The report could not be saved</source>
        <translation>Der Bericht konnte nicht gesichert werden</translation>
    </message>
    <message>
        <source>There is no case to save</source>
        <translation>Es gibt keinen Fall zu sichern</translation>
    </message>
    <message>
        <source>Saving %1…</source>
        <translation>%1 wird gesichert …</translation>
    </message>
    <message>
        <source>Cancelled; the case was not saved.</source>
        <translation>Abgebrochen; der Fall wurde nicht gesichert.</translation>
    </message>
    <message>
        <source>The case is saved</source>
        <translation>Der Fall ist gesichert</translation>
    </message>
    <message>
        <source>“%1” in %2 has %3.</source>
        <translation>„%1“ in %2 enthält %3.</translation>
    </message>
    <message>
        <source>The case is not saved</source>
        <translation>Der Fall ist nicht gesichert</translation>
    </message>
</context>
<context>
    <name>plotix::WebAddressBar</name>
    <message>
        <source>Address on the web</source>
        <translation>Adresse im Web</translation>
    </message>
    <message>
        <source>Copy Address</source>
        <translation>Adresse kopieren</translation>
    </message>
    <message>
        <source>On the web: %1</source>
        <translation>Im Web: %1</translation>
    </message>
</context>
<context>
    <name>plotix::WebSwitch</name>
    <message>
        <source>This window was opened without a web server.</source>
        <translation>Dieses Fenster wurde ohne Webserver geöffnet.</translation>
    </message>
    <message>
        <source>The site is not on the web</source>
        <translation>Die Anlage ist nicht im Web</translation>
    </message>
    <message>
        <source>The site is not served on the web.</source>
        <translation>Die Anlage wird nicht im Web gezeigt.</translation>
    </message>
</context>
<context>
    <name>plotix::WorkingSite</name>
    <message>
        <source>The “from” date lies after the “to” date; choose other dates first.</source>
        <translation>Der Anfang liegt nach dem Ende; wählen Sie erst andere Daten.</translation>
    </message>
    <message numerus="yes">
        <source>Another program changed %n trend(s).</source>
        <translation>
            <numerusform>Ein anderes Programm hat %n Trend geändert.</numerusform>
            <numerusform>Ein anderes Programm hat %n Trends geändert.</numerusform>
        </translation>
    </message>
    <message>
        <source>Another program deleted the trend “%1”.</source>
        <translation>Ein anderes Programm hat den Trend „%1“ gelöscht.</translation>
    </message>
    <message>
        <source>Another program renamed the trend “%1” to “%2”.</source>
        <translation>Ein anderes Programm hat den Trend „%1“ in „%2“ umbenannt.</translation>
    </message>
    <message>
        <source>Another program changed the trend “%1”.</source>
        <translation>Ein anderes Programm hat den Trend „%1“ geändert.</translation>
    </message>
    <message>
        <source>Another program added the trend “%1”.</source>
        <translation>Ein anderes Programm hat den Trend „%1“ hinzugefügt.</translation>
    </message>
    <message>
        <source>Another program deleted the trend “%1”, which was changed here: it stays.</source>
        <translation>Ein anderes Programm hat den Trend „%1“ gelöscht, der hier geändert wurde: Er bleibt.</translation>
    </message>
    <message>
        <source>The trend “%1” was changed in two programs at once: the other version is “%2”.</source>
        <translation>Der Trend „%1“ wurde in zwei Programmen zugleich geändert: Die andere Fassung heißt „%2“.</translation>
    </message>
</context>
</TS>
