<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>QObject</name>
    <message>
        <source>The settings can&apos;t be written to &quot;%1&quot;.
What is chosen now is gone when the program ends.</source>
        <translation>Die Einstellungen können nicht in „%1“ geschrieben werden.
Was jetzt gewählt wird, ist verloren, wenn das Programm endet.</translation>
    </message>
    <message>
        <source>%1

Library: %2</source>
        <translation>%1

Bibliothek: %2</translation>
    </message>
    <message>
        <source>&amp;Browse ...</source>
        <translation>&amp;Durchsuchen ...</translation>
    </message>
    <message>
        <source>&amp;Default Library</source>
        <translation>&amp;Standardbibliothek</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Cancelling ...</source>
        <translation>Wird abgebrochen ...</translation>
    </message>
    <message>
        <source>...as JSON string</source>
        <translation>...als JSON-Zeichenkette</translation>
    </message>
    <message>
        <source>...as C++ string</source>
        <translation>...als C++-Zeichenkette</translation>
    </message>
    <message>
        <source>...as Pascal string</source>
        <translation>...als Pascal-Zeichenkette</translation>
    </message>
    <message>
        <source>...as Python string</source>
        <translation>...als Python-Zeichenkette</translation>
    </message>
    <message>
        <source>Copy to clipboard...</source>
        <translation>In die Zwischenablage kopieren...</translation>
    </message>
    <message>
        <source>Point clouds (*.qrbx *.wdcx *.sdcx)</source>
        <translation>Punktwolken (*.qrbx *.wdcx *.sdcx)</translation>
    </message>
    <message>
        <source>Waveforms (*.sodx *.sidx *.sbx *.sp? *.fwa *.owp)</source>
        <translation>Wellenformen (*.sodx *.sidx *.sbx *.sp? *.fwa *.owp)</translation>
    </message>
    <message>
        <source>Pixels/Voxels (*.vxls *.rmvx *.mvx *.mpx)</source>
        <translation>Pixel/Voxel (*.vxls *.rmvx *.mvx *.mpx)</translation>
    </message>
    <message>
        <source>Plane Patches (*.ptch *.mtch)</source>
        <translation>Ebene Flächenstücke (*.ptch *.mtch)</translation>
    </message>
    <message>
        <source>Observation Objects (*.obsx *.opefx *.opp *.opx)</source>
        <translation>Beobachtungsobjekte (*.obsx *.opefx *.opp *.opx)</translation>
    </message>
    <message>
        <source>Control Objects (*.cpx *.pefx *.vtx)</source>
        <translation>Passobjekte (*.cpx *.pefx *.vtx)</translation>
    </message>
    <message>
        <source>Event Data (*.eifx *.epfx)</source>
        <translation>Ereignisdaten (*.eifx *.epfx)</translation>
    </message>
    <message>
        <source>Housekeeping (*.hkx *.s10x *.ppx)</source>
        <translation>Betriebsdaten (*.hkx *.s10x *.ppx)</translation>
    </message>
    <message>
        <source>Trajectories (*.llhx *.pofx *.poqx)</source>
        <translation>Trajektorien (*.llhx *.pofx *.poqx)</translation>
    </message>
    <message>
        <source>Others (*.wex)</source>
        <translation>Weitere (*.wex)</translation>
    </message>
    <message>
        <source>Generic (*.??x *.???x)</source>
        <translation>Allgemein (*.??x *.???x)</translation>
    </message>
    <message>
        <source>Points of other programs (*.las *.laz *.ply *.ptx *.e57 *.csv *.xyz *.pts *.asc *.txt)</source>
        <translation>Punkte anderer Programme (*.las *.laz *.ply *.ptx *.e57 *.csv *.xyz *.pts *.asc *.txt)</translation>
    </message>
    <message>
        <source>All files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>All supported types (%1)</source>
        <translation>Alle unterstützten Typen (%1)</translation>
    </message>
    <message>
        <source>Unknown error.</source>
        <translation>Unbekannter Fehler.</translation>
    </message>
    <message>
        <source>Switch QRB Library...</source>
        <translation>QRB-Bibliothek wechseln...</translation>
    </message>
    <message>
        <source>QRB Library (%1)</source>
        <translation>QRB-Bibliothek (%1)</translation>
    </message>
    <message>
        <source>Showing the text...</source>
        <translation>Text wird angezeigt...</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy text and details to the clipboard</source>
        <translation>Text und Einzelheiten in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>Confirmation</source>
        <translation>Rückfrage</translation>
    </message>
    <message>
        <source>Failed to open input file!</source>
        <translation>Die Eingabedatei konnte nicht geöffnet werden!</translation>
    </message>
    <message>
        <source>The file is a database.</source>
        <translation>Die Datei ist eine Datenbank.</translation>
    </message>
    <message>
        <source>Failed to read the input file!</source>
        <translation>Die Eingabedatei konnte nicht gelesen werden!</translation>
    </message>
    <message>
        <source>Failed to open output file!</source>
        <translation>Die Ausgabedatei konnte nicht geöffnet werden!</translation>
    </message>
    <message>
        <source>%0 (exists already)</source>
        <translation>%0 (gibt es schon)</translation>
    </message>
    <message>
        <source>There is a point attribute of this name already.</source>
        <translation>Es gibt schon ein Punktattribut dieses Namens.</translation>
    </message>
    <message>
        <source>CSV files (*.csv)</source>
        <translation>CSV-Dateien (*.csv)</translation>
    </message>
    <message>
        <source>JSON files (*.json)</source>
        <translation>JSON-Dateien (*.json)</translation>
    </message>
    <message>
        <source>One value for all points, stored once.</source>
        <translation>Ein Wert für alle Punkte, nur einmal gespeichert.</translation>
    </message>
    <message>
        <source>A value per point that seldom changes: stored in blocks together with other attributes.</source>
        <translation>Ein Wert je Punkt, der sich selten ändert: in Blöcken zusammen mit anderen Attributen gespeichert.</translation>
    </message>
    <message>
        <source>A value per point that changes often, such as a selection: stored in blocks of its own, so that a change leaves no dead bytes behind.</source>
        <translation>Ein Wert je Punkt, der sich oft ändert, etwa eine Auswahl: in eigenen Blöcken gespeichert, so dass eine Änderung keine toten Bytes hinterlässt.</translation>
    </message>
    <message>
        <source>What suits the values of a block best.</source>
        <translation>Was zu den Werten eines Blocks am besten passt.</translation>
    </message>
    <message>
        <source>Differences of neighbouring points: for values that change little from point to point, such as times.</source>
        <translation>Differenzen benachbarter Punkte: für Werte, die sich von Punkt zu Punkt wenig ändern, etwa Zeiten.</translation>
    </message>
    <message>
        <source>Bytes of equal weight side by side: for numbers of many bytes whose upper ones change little.</source>
        <translation>Bytes gleicher Wertigkeit nebeneinander: für Zahlen aus vielen Bytes, deren obere sich wenig ändern.</translation>
    </message>
    <message>
        <source>Differences, and their bytes of equal weight side by side.</source>
        <translation>Differenzen, und deren Bytes gleicher Wertigkeit nebeneinander.</translation>
    </message>
    <message>
        <source>unknown (%0)</source>
        <translation>unbekannt (%0)</translation>
    </message>
    <message>
        <source>expected a comma or the end of the line behind a quoted field.</source>
        <translation>hinter einem Feld in Anführungszeichen wird ein Komma oder das Zeilenende erwartet.</translation>
    </message>
    <message>
        <source>Line %0: %1</source>
        <translation>Zeile %0: %1</translation>
    </message>
    <message>
        <source>a quote stands within a field that does not begin with one.</source>
        <translation>ein Anführungszeichen steht in einem Feld, das nicht mit einem solchen beginnt.</translation>
    </message>
    <message>
        <source>a quoted field does not end.</source>
        <translation>ein Feld in Anführungszeichen endet nicht.</translation>
    </message>
    <message>
        <source>The file is no UTF-8 text.</source>
        <translation>Die Datei ist kein UTF-8-Text.</translation>
    </message>
    <message>
        <source>expected a value and a name, found %0 fields.</source>
        <translation>ein Wert und ein Name werden erwartet, gefunden wurden %L0 Felder.</translation>
    </message>
    <message>
        <source>&quot;%0&quot; is no number.</source>
        <translation>„%0“ ist keine Zahl.</translation>
    </message>
    <message>
        <source>a name can&apos;t hold a line break.</source>
        <translation>ein Name kann keinen Zeilenumbruch enthalten.</translation>
    </message>
    <message>
        <source>%0 has a name already.</source>
        <translation>%0 hat schon einen Namen.</translation>
    </message>
    <message>
        <source>Note: %1</source>
        <translation>Hinweis: %1</translation>
    </message>
    <message>
        <source>The library may refuse this: %1</source>
        <translation>Die Bibliothek könnte das ablehnen: %1</translation>
    </message>
    <message>
        <source>exists already</source>
        <translation>gibt es schon</translation>
    </message>
    <message>
        <source>%0 and %1 more</source>
        <translation>%0 und %1 weitere</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no distance.</source>
        <translation>„%1“ ist keine Entfernung.</translation>
    </message>
    <message>
        <source>The text is too long to be pasted here.
Put it into a file and load that.</source>
        <translation>Der Text ist zu lang, um hier eingefügt zu werden.
Er kann aus einer Datei geladen werden.</translation>
    </message>
    <message>
        <source>line %0, column %1: %2</source>
        <translation>Zeile %0, Spalte %1: %2</translation>
    </message>
    <message>
        <source>failed to parse center and/or radius!</source>
        <translation>Mittelpunkt und/oder Radius sind nicht lesbar!</translation>
    </message>
    <message>
        <source>%0: &quot;%1&quot; is no value that a point can have. Enter a number.</source>
        <translation>%0: „%1“ ist kein Wert, den ein Punkt haben kann. Eine Zahl eingeben.</translation>
    </message>
    <message>
        <source>%0: the number is too large. Enter one from -%1 to %1.</source>
        <translation>%0: die Zahl ist zu groß. Eine von -%1 bis %1 eingeben.</translation>
    </message>
    <message>
        <source>Check &quot;Number the points anew&quot;.</source>
        <translation>„Punkte neu nummerieren“ ankreuzen.</translation>
    </message>
    <message>
        <source>Check that coordinates and times are taken as they are.</source>
        <translation>Ankreuzen, dass Koordinaten und Zeiten genommen werden, wie sie sind.</translation>
    </message>
    <message>
        <source>Check that values are rounded.</source>
        <translation>Ankreuzen, dass Werte gerundet werden.</translation>
    </message>
    <message>
        <source>Choose their attributes in the list of columns.</source>
        <translation>Ihre Attribute in der Liste der Spalten wählen.</translation>
    </message>
    <message>
        <source>Of others, choose them in the list of columns: type x, y and z there.</source>
        <translation>Bei anderen die Koordinaten in der Liste der Spalten wählen: dort x, y und z eintippen.</translation>
    </message>
    <message>
        <source>Hide some of the columns: the attributes that are shown are exported.</source>
        <translation>Einige der Spalten ausblenden: die angezeigten Attribute werden exportiert.</translation>
    </message>
    <message>
        <source>Hide its column: the attributes that are shown are exported.</source>
        <translation>Die zugehörige Spalte ausblenden: die angezeigten Attribute werden exportiert.</translation>
    </message>
    <message>
        <source>Export to PLY or XYZ, which hold such numbers.</source>
        <translation>Nach PLY oder XYZ exportieren, die solche Zahlen fassen.</translation>
    </message>
    <message>
        <source>Export fewer points by a filter, or export to PLY or XYZ.</source>
        <translation>Mit einem Filter weniger Punkte exportieren, oder nach PLY oder XYZ exportieren.</translation>
    </message>
    <message>
        <source>Uncheck the columns that go to %1 to do without it.</source>
        <translation>Die Spalten abwählen, die nach %1 gehen, um darauf zu verzichten.</translation>
    </message>
    <message>
        <source>Redefine &quot;%1&quot; on the tab &quot;Point Attributes&quot; with a wider range.</source>
        <translation>„%1“ im Register „Punktattribute“ mit einem weiteren Wertebereich neu festlegen.</translation>
    </message>
    <message>
        <source>Redefine &quot;%1&quot; on the tab &quot;Point Attributes&quot; with a finer resolution.</source>
        <translation>„%1“ im Register „Punktattribute“ mit einer feineren Auflösung neu festlegen.</translation>
    </message>
    <message>
        <source>Attribute that the column goes to</source>
        <translation>Attribut, in das die Spalte geht</translation>
    </message>
    <message>
        <source>names separated by commas</source>
        <translation>Namen, durch Kommas getrennt</translation>
    </message>
    <message>
        <source>Add an attribute</source>
        <translation>Attribut hinzufügen</translation>
    </message>
    <message>
        <source>all points</source>
        <translation>alle Punkte</translation>
    </message>
    <message>
        <source>Insert into the filter</source>
        <translation>In den Filter einfügen</translation>
    </message>
    <message>
        <source>Python %0 at %1</source>
        <translation>Python %0 unter %1</translation>
    </message>
    <message>
        <source>Choose the file</source>
        <translation>Datei wählen</translation>
    </message>
    <message>
        <source>There is no file &quot;%0&quot;.</source>
        <translation>Die Datei „%0“ gibt es nicht.</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>%0 to %1</source>
        <translation>%0 bis %1</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>mindestens %1</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>höchstens %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no value.</source>
        <translation>„%1“ hat keinen Wert.</translation>
    </message>
    <message>
        <source>all nodes</source>
        <translation>alle Knoten</translation>
    </message>
    <message>
        <source>choose one</source>
        <translation>bitte wählen</translation>
    </message>
    <message>
        <source>The plugin &quot;%0&quot; has changed since you agreed to run it.</source>
        <translation>Das Plugin „%0“ hat sich geändert, seit seiner Ausführung zugestimmt wurde.</translation>
    </message>
    <message>
        <source>You have never run the plugin &quot;%0&quot;.</source>
        <translation>Das Plugin „%0“ wurde noch nie ausgeführt.</translation>
    </message>
    <message>
        <source>Place: %0
Version: %1
Fingerprint: %2

%3
It is a program that can do all that you can.

Run it?</source>
        <translation>Ort: %0
Version: %1
Fingerabdruck: %2

%3
Es ist ein Programm, das alles darf, was der angemeldete Benutzer darf.

Ausführen?</translation>
    </message>
    <message>
        <source>It changes the database.</source>
        <translation>Es ändert die Datenbank.</translation>
    </message>
    <message>
        <source>It only reads the database.</source>
        <translation>Es liest die Datenbank nur.</translation>
    </message>
    <message>
        <source>Report</source>
        <translation>Bericht</translation>
    </message>
    <message>
        <source>HTML (*.html)</source>
        <translation>HTML (*.html)</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Pictures (*.png)</source>
        <translation>Bilder (*.png)</translation>
    </message>
    <message>
        <source>Table</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <source>Comma-separated values (*.csv)</source>
        <translation>Durch Kommas getrennte Werte (*.csv)</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Texts (*.txt)</source>
        <translation>Texte (*.txt)</translation>
    </message>
    <message>
        <source>units</source>
        <translation>Einheiten</translation>
    </message>
    <message>
        <source>%0 (%1 %2 edge length)</source>
        <translation>%0 (%1 %2 Kantenlänge)</translation>
    </message>
    <message>
        <source>0 (off)</source>
        <translation>0 (aus)</translation>
    </message>
    <message>
        <source>%0 (up to %1 points per node)</source>
        <translation>%0 (bis zu %1 Punkte je Knoten)</translation>
    </message>
    <message>
        <source>QRB Point Attribute Definitions</source>
        <translation>QRB-Definitionen der Punktattribute</translation>
    </message>
    <message>
        <source>QRB Meta Data Item Definitions</source>
        <translation>QRB-Definitionen der Metadateneinträge</translation>
    </message>
    <message>
        <source>QRB File Schema Definitions</source>
        <translation>QRB-Definitionen der Dateischemas</translation>
    </message>
    <message>
        <source>Path: %1</source>
        <translation>Pfad: %1</translation>
    </message>
    <message>
        <source>Qt Library %1</source>
        <translation>Qt-Bibliothek %1</translation>
    </message>
    <message>
        <source>The file &quot;%0&quot; exists already.
Replace it?</source>
        <translation>Die Datei „%0“ gibt es schon.
Ersetzen?</translation>
    </message>
    <message>
        <source>Creating the database...</source>
        <translation>Datenbank wird angelegt...</translation>
    </message>
    <message>
        <source>there is no such file.</source>
        <translation>die Datei gibt es nicht.</translation>
    </message>
    <message>
        <source>it is a folder. Name the files in it.</source>
        <translation>das ist ein Ordner. Die Dateien darin nennen.</translation>
    </message>
    <message>
        <source>it is no file.</source>
        <translation>das ist keine Datei.</translation>
    </message>
    <message>
        <source>it is neither a database nor a point cloud that can be read, but %0.</source>
        <translation>die Datei ist weder eine Datenbank noch eine lesbare Punktwolke, sondern %0.</translation>
    </message>
    <message>
        <source>a text that may hold anything</source>
        <translation>ein beliebiger Text</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: %2</source>
        <translation>„%1“: %2</translation>
    </message>
    <message>
        <source>it is another database, and a window shows one. Open it in a new window.</source>
        <translation>das ist eine weitere Datenbank, und ein Fenster zeigt eine. In einem neuen Fenster öffnen.</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: a changelog text is shown by itself only.</source>
        <translation>„%1“: der Text eines Änderungsprotokolls wird nur allein angezeigt.</translation>
    </message>
    <message>
        <source>no numbers</source>
        <translation>keine Zahlen</translation>
    </message>
    <message>
        <source>Opening %1</source>
        <translation>%1 wird geöffnet</translation>
    </message>
    <message>
        <source>%1 (replaced by another file since it was opened)</source>
        <translation>%1 (seit dem Öffnen durch eine andere Datei ersetzt)</translation>
    </message>
    <message>
        <source>%1 (deleted or renamed since it was opened)</source>
        <translation>%1 (seit dem Öffnen gelöscht oder umbenannt)</translation>
    </message>
    <message>
        <source>This database is open.
Close it first, or choose another location.</source>
        <translation>Diese Datenbank ist geöffnet.
Sie zuerst schließen, oder einen anderen Ort wählen.</translation>
    </message>
    <message>
        <source>This database is open in another window.
Close it there first, or choose another location.</source>
        <translation>Diese Datenbank ist in einem anderen Fenster geöffnet.
Sie zuerst dort schließen, oder einen anderen Ort wählen.</translation>
    </message>
    <message>
        <source>&quot;%0&quot; was replaced by another file since it was opened.</source>
        <translation>„%0“ wurde seit dem Öffnen durch eine andere Datei ersetzt.</translation>
    </message>
    <message>
        <source>Open the file that is there now?</source>
        <translation>Die Datei öffnen, die jetzt dort ist?</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a database.</source>
        <translation>„%1“ ist eine Datenbank.</translation>
    </message>
    <message>
        <source>Open it, and export its points into a new database or another format.</source>
        <translation>Sie öffnen, und ihre Punkte in eine neue Datenbank oder ein anderes Format exportieren.</translation>
    </message>
    <message>
        <source>Reading the points ...</source>
        <translation>Punkte werden gelesen ...</translation>
    </message>
    <message>
        <source>Choosing points</source>
        <translation>Punkte werden ausgewählt</translation>
    </message>
    <message>
        <source>Importing points ...</source>
        <translation>Punkte werden importiert ...</translation>
    </message>
    <message>
        <source>Writing %1</source>
        <translation>%1 wird geschrieben</translation>
    </message>
    <message>
        <source>Open the new database?</source>
        <translation>Die neue Datenbank öffnen?</translation>
    </message>
    <message>
        <source>%0 values rounded.</source>
        <translation>%0 Werte gerundet.</translation>
    </message>
    <message>
        <source>One point imported.</source>
        <translation>Ein Punkt importiert.</translation>
    </message>
    <message>
        <source>%0 points imported.</source>
        <translation>%0 Punkte importiert.</translation>
    </message>
    <message>
        <source>Open Recent</source>
        <translation>Zuletzt verwendet</translation>
    </message>
    <message>
        <source>No file was opened yet</source>
        <translation>Noch keine Datei geöffnet</translation>
    </message>
    <message>
        <source>System colours</source>
        <translation>Farben des Systems</translation>
    </message>
    <message>
        <source>Use the colours of the desktop</source>
        <translation>Die Farben der Arbeitsumgebung verwenden</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark texts on light ground</source>
        <translation>Dunkle Schrift auf hellem Grund</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Light texts on dark ground</source>
        <translation>Helle Schrift auf dunklem Grund</translation>
    </message>
    <message>
        <source>Larger text</source>
        <translation>Größere Schrift</translation>
    </message>
    <message>
        <source>Enlarge the font of text panes [Ctrl++]</source>
        <translation>Die Schrift der Textfelder vergrößern [Strg++]</translation>
    </message>
    <message>
        <source>Smaller text</source>
        <translation>Kleinere Schrift</translation>
    </message>
    <message>
        <source>Reduce the font of text panes [Ctrl+-]</source>
        <translation>Die Schrift der Textfelder verkleinern [Strg+-]</translation>
    </message>
    <message>
        <source>Normal text size</source>
        <translation>Normale Schriftgröße</translation>
    </message>
    <message>
        <source>Give text panes the size of the desktop&apos;s font [Ctrl+0]</source>
        <translation>Den Textfeldern die Schriftgröße der Arbeitsumgebung geben [Strg+0]</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no regular expression: %2, at character %3.</source>
        <translation>„%1“ ist kein regulärer Ausdruck: %2, bei Zeichen %3.</translation>
    </message>
    <message>
        <source>Failed to open file.</source>
        <translation>Die Datei konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>abgeschaltet</translation>
    </message>
    <message>
        <source>mode: thinout, size: up to %1 % of the original points</source>
        <translation>Modus: Ausdünnen, Größe: bis zu %1 % der ursprünglichen Punkte</translation>
    </message>
    <message>
        <source>mode: combine, size: %0 (up to %1 points per node)</source>
        <translation>Modus: Zusammenfassen, Größe: %0 (bis zu %1 Punkte je Knoten)</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>mode: point count, size: up to %0 points per chunk</source>
        <translation>Modus: Punktanzahl, Größe: bis zu %0 Punkte je Chunk</translation>
    </message>
    <message>
        <source>mode: edge length, size: %0 (%1 %2 edge length)</source>
        <translation>Modus: Kantenlänge, Größe: %0 (%1 %2 Kantenlänge)</translation>
    </message>
    <message>
        <source>LAS (*.las)</source>
        <translation>LAS (*.las)</translation>
    </message>
    <message>
        <source>LAZ, compressed LAS (*.laz)</source>
        <translation>LAZ, komprimiertes LAS (*.laz)</translation>
    </message>
    <message>
        <source>PLY (*.ply)</source>
        <translation>PLY (*.ply)</translation>
    </message>
    <message>
        <source>XYZ, a text of numbers (*.xyz)</source>
        <translation>XYZ, ein Text aus Zahlen (*.xyz)</translation>
    </message>
    <message>
        <source>Export Points</source>
        <translation>Punkte exportieren</translation>
    </message>
    <message>
        <source>Exporting points ...</source>
        <translation>Punkte werden exportiert ...</translation>
    </message>
    <message>
        <source>No points are selected; &quot;%0&quot; was left as it was.</source>
        <translation>Es sind keine Punkte ausgewählt; „%0“ blieb, wie es war.</translation>
    </message>
    <message>
        <source>One point exported.</source>
        <translation>Ein Punkt exportiert.</translation>
    </message>
    <message>
        <source>%0 points exported.</source>
        <translation>%0 Punkte exportiert.</translation>
    </message>
    <message>
        <source>leaf</source>
        <translation>Blatt</translation>
    </message>
    <message>
        <source>node</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>click to show node details
double click to load point data</source>
        <translation>Klick zeigt Einzelheiten des Knotens
Doppelklick lädt die Punktdaten</translation>
    </message>
    <message>
        <source>database report (plaintext)</source>
        <translation>Datenbankbericht (Text)</translation>
    </message>
    <message>
        <source>database report (JSON)</source>
        <translation>Datenbankbericht (JSON)</translation>
    </message>
    <message>
        <source>database report (HTML)</source>
        <translation>Datenbankbericht (HTML)</translation>
    </message>
    <message>
        <source>attribute histograms (CSV)</source>
        <translation>Attributhistogramme (CSV)</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>(keine)</translation>
    </message>
    <message>
        <source>Import successfully finished.</source>
        <translation>Der Import ist abgeschlossen.</translation>
    </message>
    <message>
        <source>Items added</source>
        <translation>Hinzugefügte Einträge</translation>
    </message>
    <message>
        <source>Items updated</source>
        <translation>Geänderte Einträge</translation>
    </message>
    <message>
        <source>Items unchanged</source>
        <translation>Unveränderte Einträge</translation>
    </message>
    <message>
        <source>Items no longer signed</source>
        <translation>Nicht mehr signierte Einträge</translation>
    </message>
    <message>
        <source>Members skipped</source>
        <translation>Übersprungene Elemente</translation>
    </message>
    <message>
        <source>No points match the current filter expression.</source>
        <translation>Keine Punkte entsprechen dem aktuellen Filterausdruck.</translation>
    </message>
    <message>
        <source>One point matches the current filter expression.</source>
        <translation>Ein Punkt entspricht dem aktuellen Filterausdruck.</translation>
    </message>
    <message>
        <source>%0 points match the current filter expression.</source>
        <translation>%0 Punkte entsprechen dem aktuellen Filterausdruck.</translation>
    </message>
    <message>
        <source>(revision %0)</source>
        <translation>(Revision %0)</translation>
    </message>
    <message>
        <source>Minimum:</source>
        <translation>Minimum:</translation>
    </message>
    <message>
        <source>Maximum:</source>
        <translation>Maximum:</translation>
    </message>
    <message>
        <source>Max-Min:</source>
        <translation>Max-Min:</translation>
    </message>
    <message>
        <source>double click to copy to clipboard</source>
        <translation>Doppelklick kopiert in die Zwischenablage</translation>
    </message>
    <message>
        <source>Comparing transactions ...</source>
        <translation>Transaktionen werden verglichen ...</translation>
    </message>
    <message>
        <source>Reading points</source>
        <translation>Punkte werden gelesen</translation>
    </message>
    <message>
        <source>From transaction %0
to transaction %1</source>
        <translation>Von Transaktion %0
bis Transaktion %1</translation>
    </message>
    <message>
        <source>A positive number is needed, for example %1.</source>
        <translation>Nötig ist eine positive Zahl, zum Beispiel %1.</translation>
    </message>
    <message>
        <source>&amp;Licences ...</source>
        <translation>&amp;Lizenzen ...</translation>
    </message>
    <message>
        <source>Nodes of the index so far: %1 skipped, %2 taken whole, %3 read point by point</source>
        <translation>Knoten des Index bisher: %1 übersprungen, %2 als Ganzes genommen, %3 Punkt für Punkt gelesen</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>Beispiel</translation>
    </message>
    <message>
        <source>Making a sample ...</source>
        <translation>Ein Beispiel wird erstellt ...</translation>
    </message>
    <message>
        <source>%1 (written elsewhere since it was read; F5 reads it anew)</source>
        <translation>%1 (seit dem Lesen anderswo beschrieben; F5 liest neu)</translation>
    </message>
    <message>
        <source>Full Screen</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>Give the window the whole screen [F11]</source>
        <translation>Dem Fenster den ganzen Bildschirm geben [F11]</translation>
    </message>
</context>
<context>
    <name>tarvo::window::ChangelogPanel</name>
    <message>
        <source>Search expression</source>
        <translation>Suchausdruck</translation>
    </message>
    <message>
        <source>enter regular expression or leave empty to go from entry to entry</source>
        <translation>regulären Ausdruck eingeben oder leer lassen, um von Eintrag zu Eintrag zu gehen</translation>
    </message>
    <message>
        <source>Changelog</source>
        <translation>Änderungsprotokoll</translation>
    </message>
    <message>
        <source>Log entries: 0</source>
        <translation>Protokolleinträge: 0</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Entries in the text shown&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Changelog::exportToTextfile()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Einträge im angezeigten Text&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Changelog::exportToTextfile()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Load changelog from textfile</source>
        <translation>Änderungsprotokoll aus Textdatei laden</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Load changelog from textfile&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Änderungsprotokoll aus Textdatei laden&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Export changelog to textfile</source>
        <translation>Änderungsprotokoll in Textdatei exportieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Export changelog to textfile&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Changelog::exportToTextfile()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Änderungsprotokoll in Textdatei exportieren&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Changelog::exportToTextfile()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Verify log entry signature</source>
        <translation>Signatur des Protokolleintrags prüfen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Verify log entry signature&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Changelog::verifyLogEntry()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Signatur des Protokolleintrags prüfen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Changelog::verifyLogEntry()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Append message to log entry of current transaction</source>
        <translation>Nachricht an den Protokolleintrag der aktuellen Transaktion anhängen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Append message to log entry of current transaction&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Changelog::appendMessage()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Nachricht an den Protokolleintrag der aktuellen Transaktion anhängen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Changelog::appendMessage()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Import changelog from database</source>
        <translation>Änderungsprotokoll aus Datenbank importieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Import changelog from database&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Changelog::importFromDatabase()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Änderungsprotokoll aus Datenbank importieren&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Changelog::importFromDatabase()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Go to next</source>
        <translation>Zum nächsten gehen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Go to the next log entry or match [Ctrl+PgDown]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Zum nächsten Protokolleintrag oder Treffer gehen [Strg+Bild abwärts]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Go to previous</source>
        <translation>Zum vorigen gehen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Go to the previous log entry or match [Ctrl+PgUp]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Zum vorigen Protokolleintrag oder Treffer gehen [Strg+Bild aufwärts]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Reading the changelog...</source>
        <translation>Änderungsprotokoll wird gelesen...</translation>
    </message>
    <message>
        <source>Failed to load changelog: %0</source>
        <translation>Das Änderungsprotokoll konnte nicht geladen werden: %0</translation>
    </message>
    <message>
        <source>With the pending transaction:</source>
        <translation>Mit der offenen Transaktion:</translation>
    </message>
    <message>
        <source>Reading the text file...</source>
        <translation>Textdatei wird gelesen...</translation>
    </message>
    <message>
        <source>Text files (*.txt)</source>
        <translation>Textdateien (*.txt)</translation>
    </message>
    <message>
        <source>Exporting the changelog...</source>
        <translation>Änderungsprotokoll wird exportiert...</translation>
    </message>
    <message>
        <source>Importing the changelog...</source>
        <translation>Änderungsprotokoll wird importiert...</translation>
    </message>
    <message>
        <source>Message appended.</source>
        <translation>Nachricht angehängt.</translation>
    </message>
    <message>
        <source>Please select (double click) a signature first.</source>
        <translation>Zuerst eine Signatur auswählen (Doppelklick).</translation>
    </message>
    <message>
        <source>No entry after the cursor.</source>
        <translation>Kein Eintrag nach der Schreibmarke.</translation>
    </message>
    <message>
        <source>No entry before the cursor.</source>
        <translation>Kein Eintrag vor der Schreibmarke.</translation>
    </message>
    <message>
        <source>No &quot;%1&quot; after the cursor.</source>
        <translation>Kein „%1“ nach der Schreibmarke.</translation>
    </message>
    <message>
        <source>No &quot;%1&quot; before the cursor.</source>
        <translation>Kein „%1“ vor der Schreibmarke.</translation>
    </message>
    <message>
        <source>Log entries: %1</source>
        <translation>Protokolleinträge: %L1</translation>
    </message>
    <message>
        <source>Go to the field that searches the changelog [Ctrl+F]</source>
        <translation>Zum Suchfeld des Änderungsprotokolls gehen [Strg+F]</translation>
    </message>
</context>
<context>
    <name>tarvo::window::CheckList</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Check all entries shown</source>
        <translation>Alle angezeigten Einträge ankreuzen</translation>
    </message>
    <message>
        <source>Uncheck all entries shown</source>
        <translation>Alle angezeigten Einträge abwählen</translation>
    </message>
    <message>
        <source>%0 of %1</source>
        <translation>%L0 von %L1</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DatabasePanel</name>
    <message>
        <source>Database UUID:</source>
        <translation>UUID der Datenbank:</translation>
    </message>
    <message>
        <source>Database size:</source>
        <translation>Größe der Datenbank:</translation>
    </message>
    <message>
        <source>Points total:</source>
        <translation>Punkte insgesamt:</translation>
    </message>
    <message>
        <source>Chunk size:</source>
        <translation>Chunk-Größe:</translation>
    </message>
    <message>
        <source>Compression level:</source>
        <translation>Komprimierungsgrad:</translation>
    </message>
    <message>
        <source>Database creator:</source>
        <translation>Ersteller der Datenbank:</translation>
    </message>
    <message>
        <source>Primary attribute:</source>
        <translation>Primärattribut:</translation>
    </message>
    <message>
        <source>Database file:</source>
        <translation>Datenbankdatei:</translation>
    </message>
    <message>
        <source>Copy the file name or locate the file</source>
        <translation>Dateinamen kopieren oder Datei anzeigen</translation>
    </message>
    <message>
        <source>Level of detail:</source>
        <translation>Detailstufen:</translation>
    </message>
    <message>
        <source>Reference system:</source>
        <translation>Koordinatensystem:</translation>
    </message>
    <message>
        <source>Current library:</source>
        <translation>Aktuelle Bibliothek:</translation>
    </message>
    <message>
        <source>Switch library...</source>
        <translation>Bibliothek wechseln...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Exchange the database library; the window is opened anew&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Context::libraryFilename()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Datenbankbibliothek wechseln; das Fenster wird neu geöffnet&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Context::libraryFilename()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Copy file path</source>
        <translation>Dateipfad kopieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Copy the full path of the database file to the clipboard&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Vollständigen Pfad der Datenbankdatei in die Zwischenablage kopieren&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Copy file name</source>
        <translation>Dateinamen kopieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Copy the name of the database file to the clipboard&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Namen der Datenbankdatei in die Zwischenablage kopieren&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Copy folder path</source>
        <translation>Ordnerpfad kopieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Copy the path of the folder of the database file to the clipboard&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Pfad des Ordners der Datenbankdatei in die Zwischenablage kopieren&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Locate file...</source>
        <translation>Datei anzeigen...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Show the database file in the file manager&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Datenbankdatei in der Dateiverwaltung anzeigen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogChangelogMessage</name>
    <message>
        <source>Append Message</source>
        <translation>Nachricht anhängen</translation>
    </message>
    <message>
        <source>Text to be added to the log entry of the current transaction:</source>
        <translation>Text, der an den Protokolleintrag der aktuellen Transaktion angehängt wird:</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Nachricht</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogChangelogSignature</name>
    <message>
        <source>&amp;Log entry:</source>
        <translation>Protokoll&amp;eintrag:</translation>
    </message>
    <message>
        <source>Verify Log Entry Signature</source>
        <translation>Signatur des Protokolleintrags prüfen</translation>
    </message>
    <message>
        <source>1 (default)</source>
        <translation>1 (Standard)</translation>
    </message>
    <message>
        <source>&amp;Verify Signature</source>
        <translation>Signatur &amp;prüfen</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogComparison</name>
    <message>
        <source>Compare Transactions</source>
        <translation>Transaktionen vergleichen</translation>
    </message>
    <message>
        <source>Differences</source>
        <translation>Unterschiede</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogCreateSettings</name>
    <message>
        <source>Database Creation Settings</source>
        <translation>Einstellungen der neuen Datenbank</translation>
    </message>
    <message>
        <source>&amp;Location:</source>
        <translation>&amp;Ort:</translation>
    </message>
    <message>
        <source>Choose the file to create</source>
        <translation>Datei wählen, die angelegt wird</translation>
    </message>
    <message>
        <source>Primary &amp;Attribute:</source>
        <translation>Primär&amp;attribut:</translation>
    </message>
    <message>
        <source>Primary attribute</source>
        <translation>Primärattribut</translation>
    </message>
    <message>
        <source>The attribute over which the point index is built</source>
        <translation>Das Attribut, über das der Punktindex gebildet wird</translation>
    </message>
    <message>
        <source>Edit ...</source>
        <translation>Bearbeiten ...</translation>
    </message>
    <message>
        <source>Edit the primary attribute</source>
        <translation>Primärattribut bearbeiten</translation>
    </message>
    <message>
        <source>C&amp;hunk Mode:</source>
        <translation>C&amp;hunk-Modus:</translation>
    </message>
    <message>
        <source>point count limit (default)</source>
        <translation>begrenzte Punktanzahl (Standard)</translation>
    </message>
    <message>
        <source>fixed chunk edge length</source>
        <translation>feste Kantenlänge</translation>
    </message>
    <message>
        <source>Chunk Si&amp;ze:</source>
        <translation>Chunk-Größ&amp;e:</translation>
    </message>
    <message>
        <source>up to </source>
        <translation>bis zu </translation>
    </message>
    <message>
        <source> points per chunk</source>
        <translation> Punkte je Chunk</translation>
    </message>
    <message>
        <source>Edge length of chunks</source>
        <translation>Kantenlänge der Chunks</translation>
    </message>
    <message>
        <source>Level of Detail &amp;Mode:</source>
        <translation>Detailstufen-&amp;Modus:</translation>
    </message>
    <message>
        <source>thinout points (default)</source>
        <translation>Punkte ausdünnen (Standard)</translation>
    </message>
    <message>
        <source>combine points</source>
        <translation>Punkte zusammenfassen</translation>
    </message>
    <message>
        <source>Level of &amp;Detail Size:</source>
        <translation>Detailstufen-&amp;Größe:</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source> % of the original points</source>
        <translation> % der ursprünglichen Punkte</translation>
    </message>
    <message>
        <source>Level of detail size of combined points</source>
        <translation>Detailstufen-Größe zusammengefasster Punkte</translation>
    </message>
    <message>
        <source>Ca&amp;che Size:</source>
        <translation>Ca&amp;che-Größe:</translation>
    </message>
    <message>
        <source>no cache</source>
        <translation>kein Cache</translation>
    </message>
    <message>
        <source> bytes</source>
        <translation> Bytes</translation>
    </message>
    <message>
        <source>Comp&amp;ression Level:</source>
        <translation>&amp;Komprimierungsgrad:</translation>
    </message>
    <message>
        <source>&amp;Optimize Point ID:</source>
        <translation>&amp;Punkt-ID optimieren:</translation>
    </message>
    <message>
        <source>off (point ID reflects point insertion order)</source>
        <translation>aus (Punkt-ID folgt der Reihenfolge des Einfügens)</translation>
    </message>
    <message>
        <source>on (can result in smaller files)</source>
        <translation>ein (kann kleinere Dateien ergeben)</translation>
    </message>
    <message>
        <source>Point &amp;Insert Mode:</source>
        <translation>E&amp;infügemodus:</translation>
    </message>
    <message>
        <source>single-pass</source>
        <translation>in einem Durchgang</translation>
    </message>
    <message>
        <source>multi-pass</source>
        <translation>in mehreren Durchgängen</translation>
    </message>
    <message>
        <source>Data&amp;base Schema:</source>
        <translation>Daten&amp;bankschema:</translation>
    </message>
    <message>
        <source>Text of the database schema</source>
        <translation>Text des Datenbankschemas</translation>
    </message>
    <message>
        <source>Include Op&amp;tionals</source>
        <translation>Optionales ein&amp;schließen</translation>
    </message>
    <message>
        <source>Also create the attributes that the schema marks as optional</source>
        <translation>Auch die Attribute anlegen, die das Schema als optional kennzeichnet</translation>
    </message>
    <message>
        <source>Load, save and copy settings</source>
        <translation>Einstellungen laden, speichern und kopieren</translation>
    </message>
    <message>
        <source>Load defaults...</source>
        <translation>Standardwerte laden...</translation>
    </message>
    <message>
        <source>Load from file...</source>
        <translation>Aus Datei laden...</translation>
    </message>
    <message>
        <source>Save to file...</source>
        <translation>In Datei speichern...</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>(keine)</translation>
    </message>
    <message>
        <source>Invalid chunk mode: %0</source>
        <translation>Ungültiger Chunk-Modus: %0</translation>
    </message>
    <message>
        <source>Invalid chunk size: %0</source>
        <translation>Ungültige Chunk-Größe: %0</translation>
    </message>
    <message>
        <source>Invalid LOD mode: %0</source>
        <translation>Ungültiger Detailstufen-Modus: %0</translation>
    </message>
    <message>
        <source>Invalid LOD size: %0</source>
        <translation>Ungültige Detailstufen-Größe: %0</translation>
    </message>
    <message>
        <source>Location missing.</source>
        <translation>Der Ort fehlt.</translation>
    </message>
    <message>
        <source>New Database</source>
        <translation>Neue Datenbank</translation>
    </message>
    <message>
        <source>Load Settings</source>
        <translation>Einstellungen laden</translation>
    </message>
    <message>
        <source>Save Settings</source>
        <translation>Einstellungen speichern</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogExportAsQRB</name>
    <message>
        <source>Export into New Database</source>
        <translation>In neue Datenbank exportieren</translation>
    </message>
    <message>
        <source>New database:</source>
        <translation>Neue Datenbank:</translation>
    </message>
    <message>
        <source>File of the new database</source>
        <translation>Datei der neuen Datenbank</translation>
    </message>
    <message>
        <source>&amp;Settings ...</source>
        <translation>E&amp;instellungen ...</translation>
    </message>
    <message>
        <source>Location, primary attribute, chunks and levels of detail of the new database</source>
        <translation>Ort, Primärattribut, Chunks und Detailstufen der neuen Datenbank</translation>
    </message>
    <message>
        <source>&amp;Filter:</source>
        <translation>&amp;Filter:</translation>
    </message>
    <message>
        <source>Points that the filter expression selects; empty: all</source>
        <translation>Punkte, die der Filterausdruck auswählt; leer: alle</translation>
    </message>
    <message>
        <source>&amp;Nodes:</source>
        <translation>K&amp;noten:</translation>
    </message>
    <message>
        <source>Nodes of the point index, for example 3,7-12; empty: all</source>
        <translation>Knoten des Punktindex, zum Beispiel 3,7-12; leer: alle</translation>
    </message>
    <message>
        <source>all nodes</source>
        <translation>alle Knoten</translation>
    </message>
    <message>
        <source>Point Attributes</source>
        <translation>Punktattribute</translation>
    </message>
    <message>
        <source>Meta Data Items</source>
        <translation>Metadateneinträge</translation>
    </message>
    <message>
        <source>Signatures of items stay behind</source>
        <translation>Signaturen von Einträgen bleiben zurück</translation>
    </message>
    <message>
        <source>With c&amp;hangelog</source>
        <translation>Mit Änderungs&amp;protokoll</translation>
    </message>
    <message>
        <source>Let the changelog of this database stand before that of the new one</source>
        <translation>Das Änderungsprotokoll dieser Datenbank vor das der neuen stellen</translation>
    </message>
    <message>
        <source>%p % (close to cancel)</source>
        <translation>%p % (Schließen bricht ab)</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>&amp;Exportieren</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>all points</source>
        <translation>alle Punkte</translation>
    </message>
    <message>
        <source>Point attributes</source>
        <translation>Punktattribute</translation>
    </message>
    <message>
        <source>Search in point attributes</source>
        <translation>In den Punktattributen suchen</translation>
    </message>
    <message>
        <source>Meta data items</source>
        <translation>Metadateneinträge</translation>
    </message>
    <message>
        <source>Search in meta data items</source>
        <translation>In den Metadateneinträgen suchen</translation>
    </message>
    <message>
        <source>The copy can&apos;t replace the database that it is made from.
Choose another location.</source>
        <translation>Die Kopie kann die Datenbank nicht ersetzen, aus der sie entsteht.
Einen anderen Ort wählen.</translation>
    </message>
    <message>
        <source>The file &quot;%0&quot; exists already.
Replace it?</source>
        <translation>Die Datei „%0“ gibt es schon.
Ersetzen?</translation>
    </message>
    <message>
        <source>The changelog can&apos;t be taken over: the database&apos;s file was replaced, renamed or deleted since it was opened.
Export without the changelog.</source>
        <translation>Das Änderungsprotokoll kann nicht übernommen werden: die Datei der Datenbank wurde seit dem Öffnen ersetzt, umbenannt oder gelöscht.
Ohne Änderungsprotokoll exportieren.</translation>
    </message>
    <message>
        <source>Export cancelled.</source>
        <translation>Export abgebrochen.</translation>
    </message>
    <message>
        <source>Successfully finished!

Points: %0
Duration: %1 ms

Open the new database?</source>
        <translation>Erfolgreich beendet!

Punkte: %0
Dauer: %1 ms

Die neue Datenbank öffnen?</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogImportPoints</name>
    <message>
        <source>Import Points</source>
        <translation>Punkte importieren</translation>
    </message>
    <message>
        <source>Files:</source>
        <translation>Dateien:</translation>
    </message>
    <message>
        <source>Points:</source>
        <translation>Punkte:</translation>
    </message>
    <message>
        <source>Extent:</source>
        <translation>Ausdehnung:</translation>
    </message>
    <message>
        <source>Reference system:</source>
        <translation>Koordinatensystem:</translation>
    </message>
    <message>
        <source>Columns of the files</source>
        <translation>Spalten der Dateien</translation>
    </message>
    <message>
        <source>Columns of the files and the attributes that they go to; those without a check mark are left out</source>
        <translation>Spalten der Dateien und die Attribute, in die sie gehen; nicht angekreuzte bleiben weg</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>Spalte</translation>
    </message>
    <message>
        <source>Attribute</source>
        <translation>Attribut</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>Werte</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Auflösung</translation>
    </message>
    <message>
        <source>Remark</source>
        <translation>Bemerkung</translation>
    </message>
    <message>
        <source>First points</source>
        <translation>Erste Punkte</translation>
    </message>
    <message>
        <source>No&amp;tes:</source>
        <translation>&amp;Hinweise:</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Hinweise</translation>
    </message>
    <message>
        <source>C&amp;hoose points</source>
        <translation>Punkte aus&amp;wählen</translation>
    </message>
    <message>
        <source>Take a part of the points only</source>
        <translation>Nur einen Teil der Punkte nehmen</translation>
    </message>
    <message>
        <source>&amp;Bounds:</source>
        <translation>&amp;Grenzen:</translation>
    </message>
    <message>
        <source>Take the points within a range of coordinates, its ends included</source>
        <translation>Punkte innerhalb eines Koordinatenbereichs nehmen, dessen Grenzen eingeschlossen</translation>
    </message>
    <message>
        <source>xmin,ymin,xmax,ymax or xmin,ymin,zmin,xmax,ymax,zmax</source>
        <translation>xmin,ymin,xmax,ymax oder xmin,ymin,zmin,xmax,ymax,zmax</translation>
    </message>
    <message>
        <source>&amp;Every Nth point:</source>
        <translation>&amp;Jeder n-te Punkt:</translation>
    </message>
    <message>
        <source>Of the points within the bounds, take the first one and each Nth after it</source>
        <translation>Von den Punkten innerhalb der Grenzen den ersten nehmen und danach jeden n-ten</translation>
    </message>
    <message>
        <source>all</source>
        <translation>alle</translation>
    </message>
    <message>
        <source>&amp;Minimum distance:</source>
        <translation>&amp;Mindestabstand:</translation>
    </message>
    <message>
        <source>Take points that are no nearer to each other than that, in the unit of the coordinates</source>
        <translation>Punkte nehmen, die einander nicht näher sind, in der Einheit der Koordinaten</translation>
    </message>
    <message>
        <source>any</source>
        <translation>beliebig</translation>
    </message>
    <message>
        <source>Into a ne&amp;w database:</source>
        <translation>In eine &amp;neue Datenbank:</translation>
    </message>
    <message>
        <source>File of the new database</source>
        <translation>Datei der neuen Datenbank</translation>
    </message>
    <message>
        <source>Choose the file of the new database</source>
        <translation>Datei der neuen Datenbank wählen</translation>
    </message>
    <message>
        <source>Into the &amp;open database:</source>
        <translation>In die ge&amp;öffnete Datenbank:</translation>
    </message>
    <message>
        <source>&amp;Round values that are finer than the resolution of the open database</source>
        <translation>Werte &amp;runden, die feiner sind als die Auflösung der geöffneten Datenbank</translation>
    </message>
    <message>
        <source>Take coordinates and times of other reference systems and time bases as they &amp;are</source>
        <translation>Koordinaten und &amp;Zeiten anderer Koordinatensysteme und Zeitbasen nehmen, wie sie sind</translation>
    </message>
    <message>
        <source>N&amp;umber the points anew</source>
        <translation>Punkte neu n&amp;ummerieren</translation>
    </message>
    <message>
        <source>Leave the ids of the files out</source>
        <translation>Die Nummern der Dateien weglassen</translation>
    </message>
    <message>
        <source>&amp;Import</source>
        <translation>&amp;Importieren</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>not told</source>
        <translation>nicht angegeben</translation>
    </message>
    <message>
        <source>none is open</source>
        <translation>keine ist geöffnet</translation>
    </message>
    <message>
        <source>Location missing.</source>
        <translation>Der Ort fehlt.</translation>
    </message>
    <message>
        <source>New Database</source>
        <translation>Neue Datenbank</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogIndexStatistics</name>
    <message>
        <source>Point Index Tree Statistics</source>
        <translation>Statistik des Punktindex</translation>
    </message>
    <message>
        <source>Statistics by level</source>
        <translation>Statistik nach Ebenen</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Ebene</translation>
    </message>
    <message>
        <source>Leaf Points</source>
        <translation>Punkte in Blättern</translation>
    </message>
    <message>
        <source>Node Points</source>
        <translation>Punkte in Knoten</translation>
    </message>
    <message>
        <source>Leaf Count</source>
        <translation>Anzahl Blätter</translation>
    </message>
    <message>
        <source>Node Count</source>
        <translation>Anzahl Knoten</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Summe</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogLevelOfDetail</name>
    <message>
        <source>Level of Detail Settings</source>
        <translation>Einstellungen der Detailstufen</translation>
    </message>
    <message>
        <source>Level of Detail &amp;Mode:</source>
        <translation>Detailstufen-&amp;Modus:</translation>
    </message>
    <message>
        <source>thinout points (default)</source>
        <translation>Punkte ausdünnen (Standard)</translation>
    </message>
    <message>
        <source>combine points</source>
        <translation>Punkte zusammenfassen</translation>
    </message>
    <message>
        <source>Level of Detail &amp;Size:</source>
        <translation>Detailstufen-&amp;Größe:</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>up to </source>
        <translation>bis zu </translation>
    </message>
    <message>
        <source> % of the original points</source>
        <translation> % der ursprünglichen Punkte</translation>
    </message>
    <message>
        <source>Level of detail size of combined points</source>
        <translation>Detailstufen-Größe zusammengefasster Punkte</translation>
    </message>
    <message>
        <source>Set size to 0 (off) to delete any existing level of detail data.</source>
        <translation>Die Größe 0 (aus) löscht vorhandene Daten der Detailstufen.</translation>
    </message>
    <message>
        <source>%p % (close to cancel)</source>
        <translation>%p % (Schließen bricht ab)</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Anwenden</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>Invalid LOD mode: %0</source>
        <translation>Ungültiger Detailstufen-Modus: %0</translation>
    </message>
    <message>
        <source>Invalid LOD size: %0</source>
        <translation>Ungültige Detailstufen-Größe: %0</translation>
    </message>
    <message>
        <source>Successfully finished!

Duration: %0 ms</source>
        <translation>Erfolgreich beendet!

Dauer: %0 ms</translation>
    </message>
    <message>
        <source>Update cancelled.</source>
        <translation>Änderung abgebrochen.</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogLicences</name>
    <message>
        <source>Licences</source>
        <translation>Lizenzen</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogMetaData</name>
    <message>
        <source>Meta Data Item</source>
        <translation>Metadateneintrag</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>This item is signed; a new value drops the signature.</source>
        <translation>Dieser Eintrag ist signiert; ein neuer Wert verwirft die Signatur.</translation>
    </message>
    <message>
        <source>No transaction is pending: saving offers to begin one.</source>
        <translation>Keine Transaktion ist offen: beim Speichern wird angeboten, eine zu beginnen.</translation>
    </message>
    <message>
        <source>The value holds bytes or characters that can&apos;t be shown here. It stays as it is, byte for byte, unless it is changed.</source>
        <translation>Der Wert enthält Bytes oder Zeichen, die hier nicht angezeigt werden können. Er bleibt Byte für Byte, wie er ist, solange er nicht geändert wird.</translation>
    </message>
    <message>
        <source>The value is too long to be edited here; its beginning is shown. Save it to a file, edit it there and load it again.</source>
        <translation>Der Wert ist zu lang, um hier bearbeitet zu werden; sein Anfang wird angezeigt. Er kann in eine Datei gespeichert, dort bearbeitet und wieder geladen werden.</translation>
    </message>
    <message>
        <source>&amp;Value:</source>
        <translation>&amp;Wert:</translation>
    </message>
    <message>
        <source>&amp;Format</source>
        <translation>&amp;Formatieren</translation>
    </message>
    <message>
        <source>One member or element per line, indented</source>
        <translation>Je Element eine Zeile, eingerückt</translation>
    </message>
    <message>
        <source>C&amp;ompact</source>
        <translation>&amp;Verdichten</translation>
    </message>
    <message>
        <source>All in one line, without blanks</source>
        <translation>Alles in einer Zeile, ohne Leerzeichen</translation>
    </message>
    <message>
        <source>C&amp;heck</source>
        <translation>&amp;Prüfen</translation>
    </message>
    <message>
        <source>Compare the value with its schema now</source>
        <translation>Wert jetzt mit seinem Schema vergleichen</translation>
    </message>
    <message>
        <source>Value of the item</source>
        <translation>Wert des Eintrags</translation>
    </message>
    <message>
        <source>&amp;Go there</source>
        <translation>&amp;Dorthin gehen</translation>
    </message>
    <message>
        <source>Put the cursor where the text stops being JSON</source>
        <translation>Die Schreibmarke dorthin setzen, wo der Text kein JSON mehr ist</translation>
    </message>
    <message>
        <source>Places that the schema wants otherwise</source>
        <translation>Stellen, die das Schema anders verlangt</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Stelle</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>&amp;Schema</source>
        <translation>S&amp;chema</translation>
    </message>
    <message>
        <source>Paste a JSON schema here to check the value against it.</source>
        <translation>Hier ein JSON-Schema einfügen, gegen das der Wert geprüft wird.</translation>
    </message>
    <message>
        <source>JSON schema of the item</source>
        <translation>JSON-Schema des Eintrags</translation>
    </message>
    <message>
        <source>&amp;Example</source>
        <translation>&amp;Beispiel</translation>
    </message>
    <message>
        <source>Example of the item</source>
        <translation>Beispiel des Eintrags</translation>
    </message>
    <message>
        <source>&amp;Use Example</source>
        <translation>Beispiel &amp;übernehmen</translation>
    </message>
    <message>
        <source>Take the example as the value</source>
        <translation>Das Beispiel als Wert nehmen</translation>
    </message>
    <message>
        <source>Load, save and copy the value</source>
        <translation>Wert laden, speichern und kopieren</translation>
    </message>
    <message>
        <source>Load from file...</source>
        <translation>Aus Datei laden...</translation>
    </message>
    <message>
        <source>Save to file...</source>
        <translation>In Datei speichern...</translation>
    </message>
    <message>
        <source>New Meta Data Item</source>
        <translation>Neuer Metadateneintrag</translation>
    </message>
    <message>
        <source>Meta Data Item - %1</source>
        <translation>Metadateneintrag - %1</translation>
    </message>
    <message>
        <source>Name missing.</source>
        <translation>Der Name fehlt.</translation>
    </message>
    <message>
        <source>This item exists already.</source>
        <translation>Diesen Eintrag gibt es schon.</translation>
    </message>
    <message>
        <source>Choose a default item or type a name of your own.</source>
        <translation>Einen Standardeintrag wählen oder einen eigenen Namen eintippen.</translation>
    </message>
    <message>
        <source>Not a TARVO default metadata entry.</source>
        <translation>Kein Standardeintrag der TARVO-Metadaten.</translation>
    </message>
    <message>
        <source>The value would be too long to be edited here.</source>
        <translation>Der Wert wäre zu lang, um hier bearbeitet zu werden.</translation>
    </message>
    <message>
        <source>Replace the value by the example?</source>
        <translation>Den Wert durch das Beispiel ersetzen?</translation>
    </message>
    <message>
        <source>Press &quot;Check&quot;: the value is too long to be checked while you type.</source>
        <translation>„Prüfen“ drücken: der Wert ist zu lang, um beim Tippen geprüft zu werden.</translation>
    </message>
    <message>
        <source>JSON. There is no schema to check it against.</source>
        <translation>JSON. Es gibt kein Schema, gegen das es geprüft werden kann.</translation>
    </message>
    <message>
        <source>The schema is not JSON: %1</source>
        <translation>Das Schema ist kein JSON: %1</translation>
    </message>
    <message>
        <source>The value can&apos;t be checked. %1</source>
        <translation>Der Wert kann nicht geprüft werden. %1</translation>
    </message>
    <message>
        <source>The value does not satisfy the schema.
Save it anyway?</source>
        <translation>Der Wert genügt dem Schema nicht.
Trotzdem speichern?</translation>
    </message>
    <message>
        <source>The value satisfies the schema.</source>
        <translation>Der Wert genügt dem Schema.</translation>
    </message>
    <message>
        <source>1 violation of the schema.</source>
        <translation>1 Verletzung des Schemas.</translation>
    </message>
    <message>
        <source>%0 violations of the schema.</source>
        <translation>%L0 Verletzungen des Schemas.</translation>
    </message>
    <message>
        <source>The value is empty.</source>
        <translation>Der Wert ist leer.</translation>
    </message>
    <message>
        <source>The value is empty.
Save it anyway?</source>
        <translation>Der Wert ist leer.
Trotzdem speichern?</translation>
    </message>
    <message>
        <source>Not JSON: %1 The item will be kept as text.</source>
        <translation>Kein JSON: %1 Der Eintrag bleibt ein Text.</translation>
    </message>
    <message>
        <source>The value is not JSON.
Save it as text?</source>
        <translation>Der Wert ist kein JSON.
Als Text speichern?</translation>
    </message>
    <message>
        <source>(whole value)</source>
        <translation>(ganzer Wert)</translation>
    </message>
    <message>
        <source>The value holds a zero character, which no item can hold.</source>
        <translation>Der Wert enthält ein Nullzeichen, das kein Eintrag fassen kann.</translation>
    </message>
    <message>
        <source>Discard the changes?</source>
        <translation>Die Änderungen verwerfen?</translation>
    </message>
    <message>
        <source>Load Value</source>
        <translation>Wert laden</translation>
    </message>
    <message>
        <source>The file is not a text in UTF-8.</source>
        <translation>Die Datei ist kein Text in UTF-8.</translation>
    </message>
    <message>
        <source>Save Value</source>
        <translation>Wert speichern</translation>
    </message>
    <message>
        <source>The database was opened for reading only: changes can&apos;t be saved.</source>
        <translation>Die Datenbank wurde nur zum Lesen geöffnet: Änderungen können nicht gespeichert werden.</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogMetaDataSignature</name>
    <message>
        <source>Meta &amp;Data Item:</source>
        <translation>Meta&amp;dateneintrag:</translation>
    </message>
    <message>
        <source>Meta Data Item Signature</source>
        <translation>Signatur des Metadateneintrags</translation>
    </message>
    <message>
        <source>1 (default)</source>
        <translation>1 (Standard)</translation>
    </message>
    <message>
        <source>&amp;Verify Signature</source>
        <translation>Signatur &amp;prüfen</translation>
    </message>
    <message>
        <source>&amp;Create Signature</source>
        <translation>Signatur &amp;erzeugen</translation>
    </message>
    <message>
        <source>De&amp;lete Signature</source>
        <translation>Signatur &amp;löschen</translation>
    </message>
    <message>
        <source>The item is signed.</source>
        <translation>Der Eintrag ist signiert.</translation>
    </message>
    <message>
        <source>The item is not signed.</source>
        <translation>Der Eintrag ist nicht signiert.</translation>
    </message>
    <message>
        <source>The item is already signed.
Overwrite existing signature?</source>
        <translation>Der Eintrag ist schon signiert.
Vorhandene Signatur überschreiben?</translation>
    </message>
    <message>
        <source>Signature successfully created.</source>
        <translation>Signatur erzeugt.</translation>
    </message>
    <message>
        <source>Delete signature?</source>
        <translation>Signatur löschen?</translation>
    </message>
    <message>
        <source>Signature successfully deleted.</source>
        <translation>Signatur gelöscht.</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogNamedValues</name>
    <message>
        <source>Named Values</source>
        <translation>Benannte Werte</translation>
    </message>
    <message>
        <source>Named values</source>
        <translation>Benannte Werte</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Import or export the named values</source>
        <translation>Benannte Werte importieren oder exportieren</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Add a named value (Ins)</source>
        <translation>Benannten Wert hinzufügen (Einfg)</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Remove the selected named values (Del)</source>
        <translation>Ausgewählte benannte Werte entfernen (Entf)</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Move the current row up (Ctrl+Up)</source>
        <translation>Aktuelle Zeile nach oben schieben (Strg+Auf)</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>Move the current row down (Ctrl+Down)</source>
        <translation>Aktuelle Zeile nach unten schieben (Strg+Ab)</translation>
    </message>
    <message>
        <source>Sort by Value</source>
        <translation>Nach Wert sortieren</translation>
    </message>
    <message>
        <source>Sort by value</source>
        <translation>Nach Wert sortieren</translation>
    </message>
    <message>
        <source>Import from CSV file...</source>
        <translation>Aus CSV-Datei importieren...</translation>
    </message>
    <message>
        <source>Export to CSV file...</source>
        <translation>In CSV-Datei exportieren...</translation>
    </message>
    <message>
        <source>Row %0: %1</source>
        <translation>Zeile %0: %1</translation>
    </message>
    <message>
        <source>(And %0 more.)</source>
        <translation>(Und %L0 weitere.)</translation>
    </message>
    <message>
        <source>Import Named Values</source>
        <translation>Benannte Werte importieren</translation>
    </message>
    <message>
        <source>Replace the %0 named values by the %1 of the file?</source>
        <translation>Die %L0 benannten Werte durch die %L1 der Datei ersetzen?</translation>
    </message>
    <message>
        <source>Lines that are no &quot;VALUE=NAME&quot; can&apos;t be exported: %0. Export the others?</source>
        <translation>Zeilen, die kein „WERT=NAME“ sind, können nicht exportiert werden: %L0. Die anderen exportieren?</translation>
    </message>
    <message>
        <source>Export Named Values</source>
        <translation>Benannte Werte exportieren</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogOpenSettings</name>
    <message>
        <source>Database Open Settings</source>
        <translation>Einstellungen zum Öffnen</translation>
    </message>
    <message>
        <source>Location:</source>
        <translation>Ort:</translation>
    </message>
    <message>
        <source>Choose the database file</source>
        <translation>Datenbankdatei wählen</translation>
    </message>
    <message>
        <source>Cache Size:</source>
        <translation>Cache-Größe:</translation>
    </message>
    <message>
        <source>no cache</source>
        <translation>kein Cache</translation>
    </message>
    <message>
        <source> bytes</source>
        <translation> Bytes</translation>
    </message>
    <message>
        <source>Open for &amp;reading only</source>
        <translation>Nur zum &amp;Lesen öffnen</translation>
    </message>
    <message>
        <source>The window changes nothing, and keeps nobody from changing the file</source>
        <translation>Das Fenster ändert nichts, und hindert niemanden, die Datei zu ändern</translation>
    </message>
    <message>
        <source>Location missing.</source>
        <translation>Der Ort fehlt.</translation>
    </message>
    <message>
        <source>Open Database</source>
        <translation>Datenbank öffnen</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogPlugin</name>
    <message>
        <source>&amp;Parameters</source>
        <translation>&amp;Parameter</translation>
    </message>
    <message>
        <source>O&amp;utput</source>
        <translation>A&amp;usgabe</translation>
    </message>
    <message>
        <source>What the plugin prints</source>
        <translation>Was das Plugin ausgibt</translation>
    </message>
    <message>
        <source>what the plugin prints</source>
        <translation>was das Plugin ausgibt</translation>
    </message>
    <message>
        <source>C&amp;opy</source>
        <translation>K&amp;opieren</translation>
    </message>
    <message>
        <source>&amp;Save ...</source>
        <translation>&amp;Speichern ...</translation>
    </message>
    <message>
        <source>&amp;Run</source>
        <translation>&amp;Ausführen</translation>
    </message>
    <message>
        <source>Ca&amp;ncel</source>
        <translation>A&amp;bbrechen</translation>
    </message>
    <message>
        <source>Stop the plugin [Esc]</source>
        <translation>Plugin anhalten [Esc]</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>It changes the database in one transaction.</source>
        <translation>Es ändert die Datenbank in einer Transaktion.</translation>
    </message>
    <message>
        <source>Version %0
%1</source>
        <translation>Version %0
%1</translation>
    </message>
    <message>
        <source>No database is open.</source>
        <translation>Keine Datenbank ist geöffnet.</translation>
    </message>
    <message>
        <source>A transaction is pending. The plugin sees the database as it was before it.</source>
        <translation>Eine Transaktion ist offen. Das Plugin sieht die Datenbank, wie sie davor war.</translation>
    </message>
    <message>
        <source>The file &quot;%0&quot; exists already.
Replace it?</source>
        <translation>Die Datei „%0“ gibt es schon.
Ersetzen?</translation>
    </message>
    <message>
        <source>Starting ...</source>
        <translation>Wird gestartet ...</translation>
    </message>
    <message>
        <source>Running ...</source>
        <translation>Läuft ...</translation>
    </message>
    <message>
        <source>Nothing is changed.</source>
        <translation>Nichts ist geändert.</translation>
    </message>
    <message>
        <source>Failed.</source>
        <translation>Fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Cancelled.</source>
        <translation>Abgebrochen.</translation>
    </message>
    <message>
        <source>Done. Transaction %0 is committed.</source>
        <translation>Fertig. Transaktion %0 ist festgeschrieben.</translation>
    </message>
    <message>
        <source>Done.</source>
        <translation>Fertig.</translation>
    </message>
    <message>
        <source>The first %0 results are shown, %1 are left out.</source>
        <translation>Die ersten %L0 Ergebnisse werden angezeigt, %L1 fehlen.</translation>
    </message>
    <message>
        <source>Cancelling ...</source>
        <translation>Wird abgebrochen ...</translation>
    </message>
    <message>
        <source>The plugin still runs.
Cancel it and close the window?</source>
        <translation>Das Plugin läuft noch.
Abbrechen und das Fenster schließen?</translation>
    </message>
    <message>
        <source>Save Output</source>
        <translation>Ausgabe speichern</translation>
    </message>
    <message>
        <source>Texts (*.txt)</source>
        <translation>Texte (*.txt)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogPluginSettings</name>
    <message>
        <source>Plugin Settings</source>
        <translation>Einstellungen der Plugins</translation>
    </message>
    <message>
        <source>&amp;Python:</source>
        <translation>&amp;Python:</translation>
    </message>
    <message>
        <source>The program that runs plugins: Python 3.9 or later</source>
        <translation>Das Programm, das Plugins ausführt: Python 3.9 oder neuer</translation>
    </message>
    <message>
        <source>Python</source>
        <translation>Python</translation>
    </message>
    <message>
        <source>Choose the program</source>
        <translation>Programm wählen</translation>
    </message>
    <message>
        <source>&amp;Folder of plugins:</source>
        <translation>&amp;Ordner der Plugins:</translation>
    </message>
    <message>
        <source>A name without a place is looked for in the folder of the program</source>
        <translation>Ein Name ohne Pfad wird im Ordner des Programms gesucht</translation>
    </message>
    <message>
        <source>Folder of plugins</source>
        <translation>Ordner der Plugins</translation>
    </message>
    <message>
        <source>Choose the folder</source>
        <translation>Ordner wählen</translation>
    </message>
    <message>
        <source>Choose Python</source>
        <translation>Python wählen</translation>
    </message>
    <message>
        <source>Choose the Folder of Plugins</source>
        <translation>Ordner der Plugins wählen</translation>
    </message>
    <message>
        <source>Asking ...</source>
        <translation>Wird gefragt ...</translation>
    </message>
    <message>
        <source>%0 plugin in %1, and %2 that can&apos;t be run</source>
        <translation>%0 Plugin in %1, und %2, die nicht ausgeführt werden können</translation>
    </message>
    <message>
        <source>%0 plugins in %1, and %2 that can&apos;t be run</source>
        <translation>%0 Plugins in %1, und %2, die nicht ausgeführt werden können</translation>
    </message>
    <message>
        <source>%0 plugin in %1</source>
        <translation>%0 Plugin in %1</translation>
    </message>
    <message>
        <source>%0 plugins in %1</source>
        <translation>%0 Plugins in %1</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogPointAttribute</name>
    <message>
        <source>Point Attribute</source>
        <translation>Punktattribut</translation>
    </message>
    <message>
        <source>Searc&amp;h:</source>
        <translation>Suc&amp;hen:</translation>
    </message>
    <message>
        <source>Words of name, title, tags or description</source>
        <translation>Wörter aus Name, Titel, Schlagwörtern oder Beschreibung</translation>
    </message>
    <message>
        <source>All words must be found. Down goes to the list, Return takes the definition that is marked there.</source>
        <translation>Alle Wörter müssen vorkommen. Pfeil nach unten führt in die Liste, Eingabe übernimmt die dort markierte Definition.</translation>
    </message>
    <message>
        <source>Suggested definitions</source>
        <translation>Vorgeschlagene Definitionen</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>for example own.quality</source>
        <translation>zum Beispiel own.quality</translation>
    </message>
    <message>
        <source>&amp;Title:</source>
        <translation>&amp;Titel:</translation>
    </message>
    <message>
        <source>&amp;Description:</source>
        <translation>&amp;Beschreibung:</translation>
    </message>
    <message>
        <source>Ta&amp;gs:</source>
        <translation>Schla&amp;gwörter:</translation>
    </message>
    <message>
        <source>separated by commas</source>
        <translation>durch Kommas getrennt</translation>
    </message>
    <message>
        <source>Words that tell what the values are, separated by commas. &quot;position&quot;, &quot;direction&quot; and &quot;transform&quot; take part in transformations of coordinates.</source>
        <translation>Wörter, die sagen, was die Werte sind, durch Kommas getrennt. „position“, „direction“ und „transform“ nehmen an Transformationen der Koordinaten teil.</translation>
    </message>
    <message>
        <source>Un&amp;it:</source>
        <translation>&amp;Einheit:</translation>
    </message>
    <message>
        <source>The symbol of the unit of measurement; empty for plain numbers.</source>
        <translation>Das Zeichen der Maßeinheit; leer für reine Zahlen.</translation>
    </message>
    <message>
        <source>L&amp;ength:</source>
        <translation>&amp;Länge:</translation>
    </message>
    <message>
        <source>Values per point: 1 for a number, 3 for a vector of coordinates.</source>
        <translation>Werte je Punkt: 1 für eine Zahl, 3 für einen Vektor von Koordinaten.</translation>
    </message>
    <message>
        <source>Data type:</source>
        <translation>Datentyp:</translation>
    </message>
    <message>
        <source>What programs read the values into without loss; follows from range, resolution and invalid value.</source>
        <translation>Worin Programme die Werte ohne Verlust lesen; folgt aus Wertebereich, Auflösung und Ungültigwert.</translation>
    </message>
    <message>
        <source>&amp;Minimum:</source>
        <translation>&amp;Minimum:</translation>
    </message>
    <message>
        <source>Ma&amp;ximum:</source>
        <translation>Ma&amp;ximum:</translation>
    </message>
    <message>
        <source>&amp;Resolution:</source>
        <translation>&amp;Auflösung:</translation>
    </message>
    <message>
        <source>Distance of two neighbouring values; 0 for floating-point numbers of 8 bytes.</source>
        <translation>Abstand zweier benachbarter Werte; 0 für Gleitkommazahlen von 8 Byte.</translation>
    </message>
    <message>
        <source>Scale &amp;factor:</source>
        <translation>Skalen&amp;faktor:</translation>
    </message>
    <message>
        <source>By what a value is to be multiplied to come to the unit; 1 for values in the unit itself.</source>
        <translation>Womit ein Wert zu multiplizieren ist, um auf die Einheit zu kommen; 1 für Werte in der Einheit selbst.</translation>
    </message>
    <message>
        <source>Defa&amp;ult:</source>
        <translation>&amp;Vorgabe:</translation>
    </message>
    <message>
        <source>What points have whose value nobody gave.</source>
        <translation>Was Punkte haben, deren Wert niemand angegeben hat.</translation>
    </message>
    <message>
        <source>In&amp;valid value:</source>
        <translation>&amp;Ungültigwert:</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keiner</translation>
    </message>
    <message>
        <source>No invalid value</source>
        <translation>Kein Ungültigwert</translation>
    </message>
    <message>
        <source>No value means that there is none.</source>
        <translation>Kein Wert bedeutet, dass es keinen gibt.</translation>
    </message>
    <message>
        <source>Invalid value</source>
        <translation>Ungültigwert</translation>
    </message>
    <message>
        <source>The value that means that there is none; in the range or outside of it.</source>
        <translation>Der Wert, der bedeutet, dass es keinen gibt; innerhalb oder außerhalb des Wertebereichs.</translation>
    </message>
    <message>
        <source>&amp;Storage:</source>
        <translation>&amp;Speicherung:</translation>
    </message>
    <message>
        <source>Com&amp;pression:</source>
        <translation>&amp;Komprimierung:</translation>
    </message>
    <message>
        <source>Named values:</source>
        <translation>Benannte Werte:</translation>
    </message>
    <message>
        <source>Named values</source>
        <translation>Benannte Werte</translation>
    </message>
    <message>
        <source>N&amp;amed Values...</source>
        <translation>Benannte &amp;Werte...</translation>
    </message>
    <message>
        <source>Edit the names of single values, such as classes</source>
        <translation>Namen einzelner Werte bearbeiten, etwa von Klassen</translation>
    </message>
    <message>
        <source>&amp;LOD settings:</source>
        <translation>&amp;Detailstufen:</translation>
    </message>
    <message>
        <source>How the values of several points become one in a level of detail: a method, or a JSON object with a member &quot;method&quot;.</source>
        <translation>Wie die Werte mehrerer Punkte in einer Detailstufe zu einem werden: eine Methode, oder ein JSON-Objekt mit einem Element „method“.</translation>
    </message>
    <message>
        <source>LOD Settings...</source>
        <translation>Detailstufen...</translation>
    </message>
    <message>
        <source>Choose the method with explanations</source>
        <translation>Methode mit Erläuterungen wählen</translation>
    </message>
    <message>
        <source>Copy, paste, load or save the definition</source>
        <translation>Definition kopieren, einfügen, laden oder speichern</translation>
    </message>
    <message>
        <source>Suggestions</source>
        <translation>Vorschläge</translation>
    </message>
    <message>
        <source>Show definitions that can be taken over</source>
        <translation>Definitionen anzeigen, die übernommen werden können</translation>
    </message>
    <message>
        <source>Paste from clipboard</source>
        <translation>Aus der Zwischenablage einfügen</translation>
    </message>
    <message>
        <source>Load from file...</source>
        <translation>Aus Datei laden...</translation>
    </message>
    <message>
        <source>Save to file...</source>
        <translation>In Datei speichern...</translation>
    </message>
    <message>
        <source>Add Point Attribute</source>
        <translation>Punktattribut hinzufügen</translation>
    </message>
    <message>
        <source>Primary Point Attribute</source>
        <translation>Primärattribut</translation>
    </message>
    <message>
        <source>Edit Point Attribute</source>
        <translation>Punktattribut bearbeiten</translation>
    </message>
    <message>
        <source>Replace what was typed by the definition of &quot;%0&quot;?</source>
        <translation>Die Eingaben durch die Definition von „%0“ ersetzen?</translation>
    </message>
    <message>
        <source>%0 of %1 default attributes</source>
        <translation>%L0 von %L1 Standardattributen</translation>
    </message>
    <message>
        <source>Replace what was typed by the definition on the clipboard?</source>
        <translation>Die Eingaben durch die Definition aus der Zwischenablage ersetzen?</translation>
    </message>
    <message>
        <source>Load Point Attribute</source>
        <translation>Punktattribut laden</translation>
    </message>
    <message>
        <source>The file holds no point attribute.</source>
        <translation>Die Datei enthält kein Punktattribut.</translation>
    </message>
    <message>
        <source>A JSON object with a member &quot;name&quot; is expected.</source>
        <translation>Erwartet wird ein JSON-Objekt mit einem Element „name“.</translation>
    </message>
    <message>
        <source>Replace what was typed by the definition in the file?</source>
        <translation>Die Eingaben durch die Definition aus der Datei ersetzen?</translation>
    </message>
    <message>
        <source>Save Point Attribute</source>
        <translation>Punktattribut speichern</translation>
    </message>
    <message>
        <source>A number is missing.</source>
        <translation>Eine Zahl fehlt.</translation>
    </message>
    <message>
        <source>&quot;%0&quot; is no number; the decimal mark is a point.</source>
        <translation>„%0“ ist keine Zahl; das Dezimalzeichen ist ein Punkt.</translation>
    </message>
    <message>
        <source>&quot;%0&quot; is no number.</source>
        <translation>„%0“ ist keine Zahl.</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 Byte</translation>
    </message>
    <message>
        <source>%0 bytes</source>
        <translation>%L0 Bytes</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>none</source>
        <comment>named values</comment>
        <translation>keine</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogPointAttributeLod</name>
    <message>
        <source>Level of Detail Settings</source>
        <translation>Einstellungen der Detailstufen</translation>
    </message>
    <message>
        <source>&amp;Method:</source>
        <translation>&amp;Methode:</translation>
    </message>
    <message>
        <source>&amp;Further members, a JSON object (may be empty):</source>
        <translation>&amp;Weitere Elemente, ein JSON-Objekt (kann leer bleiben):</translation>
    </message>
    <message>
        <source>Kept with the method for programs that know more; the library uses the method only.</source>
        <translation>Wird mit der Methode für Programme aufbewahrt, die mehr kennen; die Bibliothek verwendet nur die Methode.</translation>
    </message>
    <message>
        <source>What stands behind the JSON value will be dropped: %0</source>
        <translation>Was hinter dem JSON-Wert steht, geht verloren: %0</translation>
    </message>
    <message>
        <source>The present settings can&apos;t be read and will be replaced: %0
%1</source>
        <translation>Die vorhandenen Einstellungen sind nicht lesbar und werden ersetzt: %0
%1</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogRangeQuery</name>
    <message>
        <source>Insert Range Query...</source>
        <translation>Bereichsabfrage einfügen...</translation>
    </message>
    <message>
        <source>Point &amp;Attribute:</source>
        <translation>Punkt&amp;attribut:</translation>
    </message>
    <message>
        <source>&amp;Mode:</source>
        <translation>&amp;Modus:</translation>
    </message>
    <message>
        <source>Lower + Upper Bound</source>
        <translation>Untere + obere Grenze</translation>
    </message>
    <message>
        <source>&amp;Lower Bound:</source>
        <translation>&amp;Untere Grenze:</translation>
    </message>
    <message>
        <source>inclusive</source>
        <translation>eingeschlossen</translation>
    </message>
    <message>
        <source>Lower Bound inclusive</source>
        <translation>Untere Grenze eingeschlossen</translation>
    </message>
    <message>
        <source>&amp;Upper Bound:</source>
        <translation>&amp;Obere Grenze:</translation>
    </message>
    <message>
        <source>Upper Bound inclusive</source>
        <translation>Obere Grenze eingeschlossen</translation>
    </message>
    <message>
        <source>Center + Radius</source>
        <translation>Mittelpunkt + Radius</translation>
    </message>
    <message>
        <source>&amp;Center:</source>
        <translation>Mittel&amp;punkt:</translation>
    </message>
    <message>
        <source>&amp;Radius:</source>
        <translation>&amp;Radius:</translation>
    </message>
    <message>
        <source>Radius inclusive</source>
        <translation>Radius eingeschlossen</translation>
    </message>
    <message>
        <source>&amp;Preview:</source>
        <translation>&amp;Vorschau:</translation>
    </message>
    <message>
        <source>&amp;Lower Bound [%0]:</source>
        <translation>&amp;Untere Grenze [%0]:</translation>
    </message>
    <message>
        <source>&amp;Upper Bound [%0]:</source>
        <translation>&amp;Obere Grenze [%0]:</translation>
    </message>
    <message>
        <source>&amp;Center [%0]:</source>
        <translation>Mittel&amp;punkt [%0]:</translation>
    </message>
    <message>
        <source>&amp;Radius [%0]:</source>
        <translation>&amp;Radius [%0]:</translation>
    </message>
    <message>
        <source>Lower Bound</source>
        <translation>Untere Grenze</translation>
    </message>
    <message>
        <source>Upper Bound</source>
        <translation>Obere Grenze</translation>
    </message>
    <message>
        <source>Radius: it is negative. Enter 0 or more.</source>
        <translation>Radius: er ist negativ. 0 oder mehr eingeben.</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Mittelpunkt</translation>
    </message>
    <message>
        <source>Radius</source>
        <translation>Radius</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogSignature</name>
    <message>
        <source>Signature &amp;Method:</source>
        <translation>&amp;Methode der Signatur:</translation>
    </message>
    <message>
        <source>Signature method</source>
        <translation>Methode der Signatur</translation>
    </message>
    <message>
        <source>Signature &amp;Key:</source>
        <translation>S&amp;chlüssel der Signatur:</translation>
    </message>
    <message>
        <source>Signature key</source>
        <translation>Schlüssel der Signatur</translation>
    </message>
    <message>
        <source>hexadecimal pairs, such as 0f 5a</source>
        <translation>Paare von Hexadezimalziffern, etwa 0f 5a</translation>
    </message>
    <message>
        <source>(0 bytes)</source>
        <translation>(0 Bytes)</translation>
    </message>
    <message>
        <source>&amp;Save ...</source>
        <translation>&amp;Speichern ...</translation>
    </message>
    <message>
        <source>Keep the key in a file that only you can read</source>
        <translation>Den Schlüssel in einer Datei aufbewahren, die niemand sonst lesen kann</translation>
    </message>
    <message>
        <source>&amp;Forget Key</source>
        <translation>Schlüssel &amp;vergessen</translation>
    </message>
    <message>
        <source>Clear the key, and remove it from the program&apos;s settings</source>
        <translation>Den Schlüssel leeren und aus den Einstellungen des Programms entfernen</translation>
    </message>
    <message>
        <source>&amp;Random</source>
        <translation>&amp;Zufällig</translation>
    </message>
    <message>
        <source>Replace the key by a random one of 32 bytes</source>
        <translation>Den Schlüssel durch einen zufälligen von 32 Bytes ersetzen</translation>
    </message>
    <message>
        <source>(%0 bytes)</source>
        <translation>(%L0 Bytes)</translation>
    </message>
    <message>
        <source>Save Signature Key</source>
        <translation>Schlüssel der Signatur speichern</translation>
    </message>
    <message>
        <source>Text files (*.txt)</source>
        <translation>Textdateien (*.txt)</translation>
    </message>
    <message>
        <source>Failed to open output file!</source>
        <translation>Die Ausgabedatei konnte nicht geöffnet werden!</translation>
    </message>
    <message>
        <source>Signature successfully verified.</source>
        <translation>Die Signatur ist gültig.</translation>
    </message>
    <message>
        <source>No valid signature found or wrong key given.</source>
        <translation>Keine gültige Signatur gefunden oder falscher Schlüssel angegeben.</translation>
    </message>
    <message>
        <source>A key is pairs of hexadecimal digits, with a blank, a line end, a comma or a hyphen behind each, and nothing in front.</source>
        <translation>Ein Schlüssel besteht aus Paaren hexadezimaler Ziffern, hinter jedem ein Leerzeichen, ein Zeilenende, ein Komma oder ein Bindestrich, und nichts davor.</translation>
    </message>
    <message>
        <source>&amp;Load ...</source>
        <translation>&amp;Laden ...</translation>
    </message>
    <message>
        <source>Take the key from a file with hexadecimal digits, or with the bytes themselves</source>
        <translation>Den Schlüssel aus einer Datei mit hexadezimalen Ziffern oder mit den Bytes selbst nehmen</translation>
    </message>
    <message>
        <source>Load Signature Key</source>
        <translation>Schlüssel der Signatur laden</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>Textdateien (*.txt);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>The file is too large for a key.</source>
        <translation>Die Datei ist zu groß für einen Schlüssel.</translation>
    </message>
    <message>
        <source>A key has some dozens of bytes. Choose its file.</source>
        <translation>Ein Schlüssel hat einige Dutzend Bytes. Seine Datei wählen.</translation>
    </message>
    <message>
        <source>Failed to open file.</source>
        <translation>Die Datei konnte nicht geöffnet werden.</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogTransaction</name>
    <message>
        <source>Transaction Settings</source>
        <translation>Einstellungen der Transaktion</translation>
    </message>
    <message>
        <source>&amp;Number:</source>
        <translation>&amp;Nummer:</translation>
    </message>
    <message>
        <source>&amp;Title:</source>
        <translation>&amp;Titel:</translation>
    </message>
    <message>
        <source>&amp;Agent:</source>
        <translation>&amp;Programm:</translation>
    </message>
    <message>
        <source>Sta&amp;rt:</source>
        <translation>&amp;Beginn:</translation>
    </message>
    <message>
        <source>Sto&amp;p:</source>
        <translation>&amp;Ende:</translation>
    </message>
    <message>
        <source>&amp;Comments:</source>
        <translation>&amp;Kommentare:</translation>
    </message>
    <message>
        <source>&amp;QRB:</source>
        <translation>&amp;QRB:</translation>
    </message>
    <message>
        <source>&amp;Settings:</source>
        <translation>Ein&amp;stellungen:</translation>
    </message>
    <message>
        <source>raw</source>
        <translation>roh</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>formatted</source>
        <translation>formatiert</translation>
    </message>
    <message>
        <source>Formatted settings</source>
        <translation>Formatierte Einstellungen</translation>
    </message>
    <message>
        <source>Load, save or clear comments and settings</source>
        <translation>Kommentare und Einstellungen laden, speichern oder leeren</translation>
    </message>
    <message>
        <source>Load comments from file...</source>
        <translation>Kommentare aus Datei laden...</translation>
    </message>
    <message>
        <source>Save comments to file...</source>
        <translation>Kommentare in Datei speichern...</translation>
    </message>
    <message>
        <source>Clear comments</source>
        <translation>Kommentare leeren</translation>
    </message>
    <message>
        <source>Load settings from file...</source>
        <translation>Einstellungen aus Datei laden...</translation>
    </message>
    <message>
        <source>Save settings to file...</source>
        <translation>Einstellungen in Datei speichern...</translation>
    </message>
    <message>
        <source>Clear settings</source>
        <translation>Einstellungen leeren</translation>
    </message>
    <message>
        <source>Load Comments</source>
        <translation>Kommentare laden</translation>
    </message>
    <message>
        <source>Save Comments</source>
        <translation>Kommentare speichern</translation>
    </message>
    <message>
        <source>Load Settings</source>
        <translation>Einstellungen laden</translation>
    </message>
    <message>
        <source>Save Settings</source>
        <translation>Einstellungen speichern</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogTransactionCommit</name>
    <message>
        <source>Commit Current Transaction</source>
        <translation>Aktuelle Transaktion festschreiben</translation>
    </message>
    <message>
        <source>0 (none)</source>
        <translation>0 (keine)</translation>
    </message>
    <message>
        <source>1 (default)</source>
        <translation>1 (Standard)</translation>
    </message>
</context>
<context>
    <name>tarvo::window::DialogValidate</name>
    <message>
        <source>Validate Database</source>
        <translation>Datenbank validieren</translation>
    </message>
    <message>
        <source>Schema</source>
        <translation>Schema</translation>
    </message>
    <message>
        <source>File schemas</source>
        <translation>Dateischemas</translation>
    </message>
    <message>
        <source>Schema text</source>
        <translation>Text des Schemas</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>&amp;Strict</source>
        <translation>St&amp;reng</translation>
    </message>
    <message>
        <source>Report what the schema does not name, too</source>
        <translation>Auch melden, was das Schema nicht nennt</translation>
    </message>
    <message>
        <source>&amp;Validate</source>
        <translation>&amp;Validieren</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>Validating the database...</source>
        <translation>Datenbank wird validiert...</translation>
    </message>
    <message>
        <source>No problems detected!</source>
        <translation>Keine Probleme gefunden!</translation>
    </message>
</context>
<context>
    <name>tarvo::window::FilterHelp</name>
    <message>
        <source>Checking the filter...</source>
        <translation>Filter wird geprüft...</translation>
    </message>
</context>
<context>
    <name>tarvo::window::FilterInsertMenu</name>
    <message>
        <source>Insert attribute name</source>
        <translation>Attributnamen einfügen</translation>
    </message>
    <message>
        <source>Insert test for a valid value</source>
        <translation>Prüfung auf gültigen Wert einfügen</translation>
    </message>
    <message>
        <source>Insert range query...</source>
        <translation>Bereichsabfrage einfügen...</translation>
    </message>
    <message>
        <source>Clear history</source>
        <translation>Verlauf leeren</translation>
    </message>
    <message>
        <source>Clear filter</source>
        <translation>Filter leeren</translation>
    </message>
    <message>
        <source>Save filter ...</source>
        <translation>Filter speichern ...</translation>
    </message>
    <message>
        <source>Saved filters</source>
        <translation>Gespeicherte Filter</translation>
    </message>
    <message>
        <source>Remove saved filter</source>
        <translation>Gespeicherten Filter entfernen</translation>
    </message>
    <message>
        <source>Insert attribute property</source>
        <translation>Attributeigenschaft einfügen</translation>
    </message>
    <message>
        <source>is equal to (==)</source>
        <translation>ist gleich (==)</translation>
    </message>
    <message>
        <source>not equal to (!=)</source>
        <translation>ist ungleich (!=)</translation>
    </message>
    <message>
        <source>less than (&lt;)</source>
        <translation>kleiner als (&lt;)</translation>
    </message>
    <message>
        <source>less than or equal to (&lt;=)</source>
        <translation>kleiner oder gleich (&lt;=)</translation>
    </message>
    <message>
        <source>greater than (&gt;)</source>
        <translation>größer als (&gt;)</translation>
    </message>
    <message>
        <source>greater than or equal to (&gt;=)</source>
        <translation>größer oder gleich (&gt;=)</translation>
    </message>
    <message>
        <source>and (&amp;&amp;&amp;&amp;)</source>
        <translation>und (&amp;&amp;&amp;&amp;)</translation>
    </message>
    <message>
        <source>or (||)</source>
        <translation>oder (||)</translation>
    </message>
    <message>
        <source>modulo (%)</source>
        <translation>modulo (%)</translation>
    </message>
    <message>
        <source>Insert operator</source>
        <translation>Operator einfügen</translation>
    </message>
    <message>
        <source>Insert command</source>
        <translation>Befehl einfügen</translation>
    </message>
    <message>
        <source>Delete all recently used filter strings?</source>
        <translation>Alle zuletzt verwendeten Filterausdrücke löschen?</translation>
    </message>
    <message>
        <source>Remove the saved filter &quot;%0&quot;?</source>
        <translation>Den gespeicherten Filter „%0“ entfernen?</translation>
    </message>
    <message>
        <source>Save filter</source>
        <translation>Filter speichern</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>The filter was not saved: it needs a name.</source>
        <translation>Der Filter wurde nicht gespeichert: er braucht einen Namen.</translation>
    </message>
    <message>
        <source>There is a saved filter &quot;%0&quot;. Replace it?</source>
        <translation>Es gibt einen gespeicherten Filter „%0“. Ersetzen?</translation>
    </message>
</context>
<context>
    <name>tarvo::window::FindBar</name>
    <message>
        <source>Text to find</source>
        <translation>Gesuchter Text</translation>
    </message>
    <message>
        <source>0000 of 0000</source>
        <translation>0000 von 0000</translation>
    </message>
    <message>
        <source>Previous hit [Shift+F3]</source>
        <translation>Voriger Treffer [Umschalt+F3]</translation>
    </message>
    <message>
        <source>Next hit [F3]</source>
        <translation>Nächster Treffer [F3]</translation>
    </message>
    <message>
        <source>Close [Esc]</source>
        <translation>Schließen [Esc]</translation>
    </message>
    <message>
        <source>no hits</source>
        <translation>keine Treffer</translation>
    </message>
    <message>
        <source>%0 of %1</source>
        <translation>%L0 von %L1</translation>
    </message>
    <message>
        <source>%0 hits</source>
        <translation>%L0 Treffer</translation>
    </message>
</context>
<context>
    <name>tarvo::window::ImportColumns</name>
    <message>
        <source>Double-click to choose another attribute, or type a name</source>
        <translation>Doppelklicken, um ein anderes Attribut zu wählen, oder einen Namen eintippen</translation>
    </message>
    <message>
        <source>left out</source>
        <translation>weggelassen</translation>
    </message>
    <message>
        <source>all points have %1</source>
        <translation>alle Punkte haben %1</translation>
    </message>
</context>
<context>
    <name>tarvo::window::InspectionPanel</name>
    <message>
        <source>Report</source>
        <translation>Bericht</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Have the library write the report&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::inspect()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Die Bibliothek den Bericht schreiben lassen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::inspect()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Format:</source>
        <translation>Format:</translation>
    </message>
    <message>
        <source>Inspecting the database...</source>
        <translation>Datenbank wird untersucht...</translation>
    </message>
    <message>
        <source>The report refers to something that is not opened:
%1</source>
        <translation>Der Bericht verweist auf etwas, das nicht geöffnet wird:
%1</translation>
    </message>
    <message>
        <source>Open this page in the web browser?
%1</source>
        <translation>Diese Seite im Webbrowser öffnen?
%1</translation>
    </message>
    <message>
        <source>find in the report</source>
        <translation>im Bericht suchen</translation>
    </message>
    <message>
        <source>Find a text in the report [Ctrl+F]</source>
        <translation>Einen Text im Bericht suchen [Strg+F]</translation>
    </message>
</context>
<context>
    <name>tarvo::window::MainWindow</name>
    <message>
        <source>Database</source>
        <translation>Datenbank</translation>
    </message>
    <message>
        <source>Transactions</source>
        <translation>Transaktionen</translation>
    </message>
    <message>
        <source>Changelog</source>
        <translation>Änderungsprotokoll</translation>
    </message>
    <message>
        <source>Meta Data</source>
        <translation>Metadaten</translation>
    </message>
    <message>
        <source>Point Attributes</source>
        <translation>Punktattribute</translation>
    </message>
    <message>
        <source>Point Index</source>
        <translation>Punktindex</translation>
    </message>
    <message>
        <source>Point Data</source>
        <translation>Punktdaten</translation>
    </message>
    <message>
        <source>Inspection</source>
        <translation>Inspektion</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Main toolbar</source>
        <translation>Hauptwerkzeugleiste</translation>
    </message>
    <message>
        <source>Open ...</source>
        <translation>Öffnen ...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Open a database file [Ctrl+O]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::open()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Datenbankdatei öffnen [Strg+O]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::open()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Close the database [Ctrl+W]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::close()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Datenbank schließen [Strg+W]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::close()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>New ...</source>
        <translation>Neu ...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Create a new database file [Ctrl+N]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::create()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Neue Datenbankdatei anlegen [Strg+N]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::create()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Show the versions of the program, its definitions and the library [F1]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Context::libraryName()&lt;br/&gt;tarvo::qrb::Context::libraryVersion()&lt;br/&gt;tarvo::qrb::Context::libraryLicense()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Versionen des Programms, seiner Definitionen und der Bibliothek anzeigen [F1]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Context::libraryName()&lt;br/&gt;tarvo::qrb::Context::libraryVersion()&lt;br/&gt;tarvo::qrb::Context::libraryLicense()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Read everything shown again from the database [F5]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::list()&lt;br/&gt;tarvo::qrb::pointcloud::MetaData::list()&lt;br/&gt;tarvo::qrb::pointcloud::PointAttributes::list()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Alles Angezeigte neu aus der Datenbank lesen [F5]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::list()&lt;br/&gt;tarvo::qrb::pointcloud::MetaData::list()&lt;br/&gt;tarvo::qrb::pointcloud::PointAttributes::list()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Factory mode</source>
        <translation>Werksmodus</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Factory mode&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Werksmodus&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Close all windows [Ctrl+Q]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::close()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Alle Fenster schließen [Strg+Q]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::close()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Validate</source>
        <translation>Validieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Compare the database with a file schema [F9]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Management::validate()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Datenbank mit einem Dateischema vergleichen [F9]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Management::validate()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Open Clipboard</source>
        <translation>Aus Zwischenablage öffnen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Open the database file whose name or file is in the clipboard [Ctrl+Shift+V]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Context::databaseFileTypeCheck()&lt;br/&gt;tarvo::qrb::Pointcloud::open()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Datenbankdatei öffnen, die oder deren Name in der Zwischenablage liegt [Strg+Umschalt+V]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Context::databaseFileTypeCheck()&lt;br/&gt;tarvo::qrb::Pointcloud::open()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Open Last Used</source>
        <translation>Letzte öffnen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Open the database file that was opened last [Ctrl+Shift+O]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::open()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Zuletzt geöffnete Datenbankdatei öffnen [Strg+Umschalt+O]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::open()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Import points ...</source>
        <translation>Punkte importieren ...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Import points from LAS, LAZ, PLY, PTX, E57 and text files, into a new database or the one that is open [Ctrl+I]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::create()&lt;br/&gt;tarvo::qrb::pointcloud::QueryInsert::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Punkte aus LAS-, LAZ-, PLY-, PTX-, E57- und Textdateien in eine neue oder die geöffnete Datenbank importieren [Strg+I]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::create()&lt;br/&gt;tarvo::qrb::pointcloud::QueryInsert::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Export ...</source>
        <translation>Exportieren ...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Export points into a new database file [Ctrl+E]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::create()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::next()&lt;br/&gt;tarvo::qrb::pointcloud::QueryInsert::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Punkte in eine neue Datenbankdatei exportieren [Strg+E]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::create()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::next()&lt;br/&gt;tarvo::qrb::pointcloud::QueryInsert::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Open one more window [Ctrl+Shift+N]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Context::Context()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Ein weiteres Fenster öffnen [Strg+Umschalt+N]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Context::Context()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Settings ...</source>
        <translation>Einstellungen ...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Change the settings of the program [Ctrl+,]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Einstellungen des Programms ändern [Strg+,]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Opening the database...</source>
        <translation>Datenbank wird geöffnet...</translation>
    </message>
    <message>
        <source>The file was replaced while it was opened.
Open it again.</source>
        <translation>Die Datei wurde ersetzt, während sie geöffnet wurde.
Noch einmal öffnen.</translation>
    </message>
    <message>
        <source>&quot;%0&quot; was written over with another database since it was opened.
What was opened is not there any more.</source>
        <translation>„%0“ wurde seit dem Öffnen mit einer anderen Datenbank überschrieben.
Was geöffnet wurde, ist nicht mehr da.</translation>
    </message>
    <message>
        <source>&quot;%0&quot; was replaced by another file since it was opened.</source>
        <translation>„%0“ wurde seit dem Öffnen durch eine andere Datei ersetzt.</translation>
    </message>
    <message>
        <source>&quot;%0&quot; was deleted or renamed since it was opened.</source>
        <translation>„%0“ wurde seit dem Öffnen gelöscht oder umbenannt.</translation>
    </message>
    <message>
        <source>What the window shows is as it was; it can be read and exported, but not changed.</source>
        <translation>Was das Fenster zeigt, ist, wie es war; es kann gelesen und exportiert, aber nicht geändert werden.</translation>
    </message>
    <message>
        <source>The pending transaction can only be committed once the file is back in its place.
All its changes will be lost if you go on.</source>
        <translation>Die offene Transaktion kann erst festgeschrieben werden, wenn die Datei wieder an ihrem Ort ist.
Alle ihre Änderungen gehen verloren, wenn jetzt fortgefahren wird.</translation>
    </message>
    <message>
        <source>Open the file that is there now?</source>
        <translation>Die Datei öffnen, die jetzt dort ist?</translation>
    </message>
    <message>
        <source>Close the database?</source>
        <translation>Die Datenbank schließen?</translation>
    </message>
    <message>
        <source>A transaction is pending in &quot;%0&quot;.
All its changes will be lost. Go on?</source>
        <translation>In „%0“ ist eine Transaktion offen.
Alle ihre Änderungen gehen verloren. Fortfahren?</translation>
    </message>
    <message>
        <source>The window shows the changelog of the database that is open.
Show &quot;%0&quot; in a new window?</source>
        <translation>Das Fenster zeigt das Änderungsprotokoll der geöffneten Datenbank.
„%0“ in einem neuen Fenster anzeigen?</translation>
    </message>
    <message>
        <source>Import Points</source>
        <translation>Punkte importieren</translation>
    </message>
    <message>
        <source>a transaction is pending in it</source>
        <translation>in ihr ist eine Transaktion offen</translation>
    </message>
    <message>
        <source>its file was replaced or deleted since it was opened</source>
        <translation>ihre Datei wurde seit dem Öffnen ersetzt oder gelöscht</translation>
    </message>
    <message>
        <source>What could not be read: %1.</source>
        <translation>Was nicht gelesen werden konnte: %1.</translation>
    </message>
    <message>
        <source>no database opened</source>
        <translation>keine Datenbank geöffnet</translation>
    </message>
    <message>
        <source>%1 (for reading only)</source>
        <translation>%1 (nur zum Lesen)</translation>
    </message>
    <message>
        <source>No database file name found in the clipboard.
Please copy a file or a file name to the clipboard.</source>
        <translation>Kein Name einer Datenbankdatei in der Zwischenablage gefunden.
Bitte eine Datei oder einen Dateinamen in die Zwischenablage kopieren.</translation>
    </message>
    <message>
        <source>The library is switched as soon as all other windows are closed.</source>
        <translation>Die Bibliothek wird gewechselt, sobald alle anderen Fenster geschlossen sind.</translation>
    </message>
    <message>
        <source>The library is to be switched as soon as this window and all others are closed.
Go on waiting for that?</source>
        <translation>Die Bibliothek wird gewechselt, sobald dieses und alle anderen Fenster geschlossen sind.
Weiter darauf warten?</translation>
    </message>
    <message>
        <source>Sample ...</source>
        <translation>Beispiel ...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Make a database with about a million points of a simulated scan, and open it&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::create()&lt;br/&gt;tarvo::qrb::pointcloud::QueryInsert::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Eine Datenbank mit etwa einer Million Punkten eines simulierten Scans erstellen und öffnen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::create()&lt;br/&gt;tarvo::qrb::pointcloud::QueryInsert::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
</context>
<context>
    <name>tarvo::window::MetaDataPanel</name>
    <message>
        <source>Metadata items</source>
        <translation>Metadateneinträge</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Add a metadata item&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::MetaData::set()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Metadateneintrag hinzufügen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::MetaData::set()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Edit the selected metadata item&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::MetaData::get()&lt;br/&gt;tarvo::qrb::pointcloud::MetaData::set()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Ausgewählten Metadateneintrag bearbeiten&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::MetaData::get()&lt;br/&gt;tarvo::qrb::pointcloud::MetaData::set()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Remove the selected metadata items&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::MetaData::remove()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Ausgewählte Metadateneinträge entfernen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::MetaData::remove()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Signature</source>
        <translation>Signatur</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Sign the selected metadata item or check its signature&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::MetaData::createSignature()&lt;br/&gt;tarvo::qrb::pointcloud::MetaData::verifySignature()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Ausgewählten Metadateneintrag signieren oder seine Signatur prüfen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::MetaData::createSignature()&lt;br/&gt;tarvo::qrb::pointcloud::MetaData::verifySignature()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Export the selected metadata items to a JSON file&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::MetaData::get()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Ausgewählte Metadateneinträge in eine JSON-Datei exportieren&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::MetaData::get()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Import metadata items from a JSON file&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::MetaData::exists()&lt;br/&gt;tarvo::qrb::pointcloud::MetaData::set()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Metadateneinträge aus einer JSON-Datei importieren&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::MetaData::exists()&lt;br/&gt;tarvo::qrb::pointcloud::MetaData::set()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Meta data items: %1</source>
        <translation>Metadateneinträge: %L1</translation>
    </message>
    <message>
        <source>Nothing selected!</source>
        <translation>Nichts ausgewählt!</translation>
    </message>
    <message>
        <source>Remove entry &quot;%0&quot;?</source>
        <translation>Den Eintrag „%0“ entfernen?</translation>
    </message>
    <message>
        <source>Remove %0 entries?</source>
        <translation>%L0 Einträge entfernen?</translation>
    </message>
    <message>
        <source>JSON files (*.json)</source>
        <translation>JSON-Dateien (*.json)</translation>
    </message>
    <message>
        <source>Exporting metadata items...</source>
        <translation>Metadateneinträge werden exportiert...</translation>
    </message>
    <message>
        <source>Failed to open export file.</source>
        <translation>Die Exportdatei konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Export successfully finished.</source>
        <translation>Der Export ist abgeschlossen.</translation>
    </message>
    <message>
        <source>Importing metadata items...</source>
        <translation>Metadateneinträge werden importiert...</translation>
    </message>
    <message>
        <source>Failed to open import file.</source>
        <translation>Die Importdatei konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Find a text in the metadata items [Ctrl+F]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Einen Text in den Metadateneinträgen suchen [Strg+F]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>find in the metadata items</source>
        <translation>in den Metadateneinträgen suchen</translation>
    </message>
</context>
<context>
    <name>tarvo::window::Panel</name>
    <message>
        <source>The database was opened for reading only.
Open it again with &quot;Open ...&quot; to change it.</source>
        <translation>Die Datenbank wurde nur zum Lesen geöffnet.
Sie mit „Öffnen ...“ neu öffnen, um sie zu ändern.</translation>
    </message>
    <message>
        <source>No transaction is pending.
Begin the transaction &quot;%1&quot; and go on?</source>
        <translation>Keine Transaktion ist offen.
Die Transaktion „%1“ beginnen und fortfahren?</translation>
    </message>
    <message>
        <source>Beginning a transaction...</source>
        <translation>Transaktion wird begonnen...</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
</context>
<context>
    <name>tarvo::window::ParameterForm</name>
    <message>
        <source>The plugin has no parameters.</source>
        <translation>Das Plugin hat keine Parameter.</translation>
    </message>
</context>
<context>
    <name>tarvo::window::PendingBar</name>
    <message>
        <source>Transaction pending</source>
        <translation>Transaktion offen</translation>
    </message>
</context>
<context>
    <name>tarvo::window::PluginMenu</name>
    <message>
        <source>Plugins</source>
        <translation>Plugins</translation>
    </message>
    <message>
        <source>Settings ...</source>
        <translation>Einstellungen ...</translation>
    </message>
    <message>
        <source>Choose the Python that runs plugins, and their folder</source>
        <translation>Python, das Plugins ausführt, und deren Ordner wählen</translation>
    </message>
    <message>
        <source>No plugins in %1</source>
        <translation>Keine Plugins in %1</translation>
    </message>
</context>
<context>
    <name>tarvo::window::PointAttributesPanel</name>
    <message>
        <source>Point attributes</source>
        <translation>Punktattribute</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Unique attribute name&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Eindeutiger Name des Attributs&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Attribute title&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Titel des Attributs&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Data Type</source>
        <translation>Datentyp</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Suggested buffer data type&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Vorgeschlagener Datentyp der Puffer&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Storage</source>
        <translation>Speicherung</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Storage class&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Speicherklasse&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Compression</source>
        <translation>Komprimierung</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Options additional to default compression&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Zusätze zur Standardkomprimierung&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>LOD Settings</source>
        <translation>Detailstufen</translation>
    </message>
    <message>
        <source>Tags</source>
        <translation>Schlagwörter</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Attribute description&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Beschreibung des Attributs&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Rank</source>
        <translation>Rang</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Add a point attribute&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::PointAttributes::add()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Punktattribut hinzufügen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::PointAttributes::add()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Edit the selected point attribute&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::PointAttributes::get()&lt;br/&gt;tarvo::qrb::pointcloud::PointAttributes::put()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Ausgewähltes Punktattribut bearbeiten&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::PointAttributes::get()&lt;br/&gt;tarvo::qrb::pointcloud::PointAttributes::put()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Remove the selected point attributes&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::PointAttributes::remove()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Ausgewählte Punktattribute entfernen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::PointAttributes::remove()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Point attributes: %1, Primary point attribute: %2</source>
        <translation>Punktattribute: %1, Primärattribut: %2</translation>
    </message>
    <message>
        <source>Comparing values...</source>
        <translation>Werte werden verglichen...</translation>
    </message>
    <message>
        <source>Convert</source>
        <translation>Umwandeln</translation>
    </message>
    <message>
        <source>Writing the attribute...</source>
        <translation>Attribut wird geschrieben...</translation>
    </message>
    <message>
        <source>Nothing selected!</source>
        <translation>Nichts ausgewählt!</translation>
    </message>
    <message>
        <source>Remove attribute &quot;%0&quot;?</source>
        <translation>Das Attribut „%0“ entfernen?</translation>
    </message>
    <message>
        <source>Remove %0 attributes?</source>
        <translation>%L0 Attribute entfernen?</translation>
    </message>
    <message>
        <source>Removing attributes...</source>
        <translation>Attribute werden entfernt...</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Find a text in the point attributes [Ctrl+F]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Einen Text in den Punktattributen suchen [Strg+F]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>find in the point attributes</source>
        <translation>in den Punktattributen suchen</translation>
    </message>
</context>
<context>
    <name>tarvo::window::PointDataPanel</name>
    <message>
        <source>Filter expression</source>
        <translation>Filterausdruck</translation>
    </message>
    <message>
        <source>enter filter expression or leave empty to get all points</source>
        <translation>Filterausdruck eingeben oder leer lassen, um alle Punkte zu erhalten</translation>
    </message>
    <message>
        <source>Insert into the filter</source>
        <translation>In den Filter einfügen</translation>
    </message>
    <message>
        <source>Insert into the filter expression, keep it, clear it or its history</source>
        <translation>In den Filterausdruck einfügen, ihn aufbewahren, ihn oder seinen Verlauf leeren</translation>
    </message>
    <message>
        <source>Node ids</source>
        <translation>Nummern von Knoten</translation>
    </message>
    <message>
        <source>Nodes of the point index, for example 3,7-12</source>
        <translation>Knoten des Punktindex, zum Beispiel 3,7-12</translation>
    </message>
    <message>
        <source>enter node id or leave empty to query all nodes</source>
        <translation>Knotennummer eingeben oder leer lassen: alle</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Values of the point</source>
        <translation>Werte des Punkts</translation>
    </message>
    <message>
        <source>Search in the columns</source>
        <translation>In den Spalten suchen</translation>
    </message>
    <message>
        <source>search in the columns</source>
        <translation>in den Spalten suchen</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Spalten</translation>
    </message>
    <message>
        <source>Attributes that are shown as columns</source>
        <translation>Attribute, die als Spalten angezeigt werden</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Part of the database that the query has gone through&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::QuerySelect::progress()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Teil der Datenbank, den die Abfrage durchlaufen hat&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::QuerySelect::progress()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Run/Next</source>
        <translation>Ausführen/Weiter</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Run the query, or get its next points [F3]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::select()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::bind()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Abfrage ausführen, oder ihre nächsten Punkte holen [F3]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::select()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::bind()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;End the running query [Esc]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::QuerySelect::close()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Laufende Abfrage beenden [Esc]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::QuerySelect::close()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Zählen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Count the points that match the filter [F4]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::select()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Punkte zählen, die dem Filter entsprechen [F4]&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::select()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Find a text in the points shown [Ctrl+F]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Einen Text in den angezeigten Punkten suchen [Strg+F]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Next 1,000</source>
        <translation>Nächste 1.000</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Run the query, or get its next 1,000 points [Shift+F3]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Abfrage ausführen, oder ihre nächsten 1.000 Punkte holen [Umschalt+F3]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Copy rows</source>
        <translation>Zeilen kopieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Copy the selected rows with a line of column names, for a spreadsheet [Ctrl+C]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Ausgewählte Zeilen mit einer Zeile der Spaltennamen kopieren, für eine Tabellenkalkulation [Strg+C]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Copy rows as CSV</source>
        <translation>Zeilen als CSV kopieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Copy the selected rows as comma-separated values&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Ausgewählte Zeilen als durch Kommas getrennte Werte kopieren&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Copy a filter of the rows</source>
        <translation>Filter der Zeilen kopieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Copy a filter expression that selects these points by their ids&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Einen Filterausdruck kopieren, der diese Punkte nach ihren Nummern auswählt&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Copy column</source>
        <translation>Spalte kopieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Copy the column of the current cell, with its name, in the order shown&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Die Spalte der aktuellen Zelle mit ihrem Namen kopieren, in der angezeigten Reihenfolge&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Copy a filter of the value</source>
        <translation>Filter des Werts kopieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Copy a filter expression that selects the points with the value of the current cell&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Einen Filterausdruck kopieren, der die Punkte mit dem Wert der aktuellen Zelle auswählt&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Show names of values</source>
        <translation>Namen der Werte anzeigen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Show the names that attributes give to their values&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Die Namen anzeigen, die Attribute ihren Werten geben&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Show values of the point</source>
        <translation>Werte des Punkts anzeigen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Show all values of the current point from top to bottom&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Alle Werte des aktuellen Punkts untereinander anzeigen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Export all points that match the filter to a CSV file&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::select()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::bind()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Alle Punkte, die dem Filter entsprechen, in eine CSV-Datei exportieren&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::select()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::bind()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Export points ...</source>
        <translation>Punkte exportieren ...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Export all points that match the filter, with the attributes shown, to a LAS, LAZ, PLY or XYZ file&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::select()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::bind()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Alle Punkte, die dem Filter entsprechen, mit den angezeigten Attributen in eine LAS-, LAZ-, PLY- oder XYZ-Datei exportieren&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::Pointcloud::select()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::bind()&lt;br/&gt;tarvo::qrb::pointcloud::QuerySelect::next()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Einblenden</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Show the columns of the selected attributes&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Die Spalten der ausgewählten Attribute einblenden&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Ausblenden</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Hide the columns of the selected attributes&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Die Spalten der ausgewählten Attribute ausblenden&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Show all</source>
        <translation>Alle einblenden</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Show the columns of all attributes&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Die Spalten aller Attribute einblenden&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Hide all</source>
        <translation>Alle ausblenden</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Hide the columns of all attributes&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Die Spalten aller Attribute ausblenden&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Show default</source>
        <translation>Standard einblenden</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Show the columns of the attributes that are shown at first&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Die Spalten der Attribute einblenden, die anfangs angezeigt werden&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Sort by Name</source>
        <translation>Nach Name sortieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Order the columns by attribute name&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Die Spalten nach Attributnamen ordnen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Default Sort Order</source>
        <translation>Standardreihenfolge</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Order the columns as the database does&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Die Spalten ordnen, wie die Datenbank es tut&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Unit: %1</source>
        <translation>Einheit: %1</translation>
    </message>
    <message>
        <source>Copied rows of %1 points.</source>
        <translation>Zeilen von %1 Punkten kopiert.</translation>
    </message>
    <message>
        <source>Copied a filter of %1 points.</source>
        <translation>Filter von %1 Punkten kopiert.</translation>
    </message>
    <message>
        <source>No cell of a column chosen.</source>
        <translation>Keine Zelle einer Spalte gewählt.</translation>
    </message>
    <message>
        <source>Copied %1 of %2 points.</source>
        <translation>%1 von %2 Punkten kopiert.</translation>
    </message>
    <message>
        <source>The value is no number that a filter can be compared with.</source>
        <translation>Der Wert ist keine Zahl, mit der ein Filter vergleichen kann.</translation>
    </message>
    <message>
        <source>Copied: %1</source>
        <translation>Kopiert: %1</translation>
    </message>
    <message>
        <source>No point selected.</source>
        <translation>Kein Punkt ausgewählt.</translation>
    </message>
    <message>
        <source>Reading the point index...</source>
        <translation>Punktindex wird gelesen...</translation>
    </message>
    <message>
        <source>Reading points...</source>
        <translation>Punkte werden gelesen...</translation>
    </message>
    <message>
        <source>%0 ms</source>
        <translation>%L0 ms</translation>
    </message>
    <message>
        <source>No data received.</source>
        <translation>Keine Daten erhalten.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Counting points...</source>
        <translation>Punkte werden gezählt...</translation>
    </message>
    <message>
        <source>Comma-separated values (*.csv)</source>
        <translation>Durch Kommas getrennte Werte (*.csv)</translation>
    </message>
    <message>
        <source>Semicolon-separated values (*.csv)</source>
        <translation>Durch Semikolons getrennte Werte (*.csv)</translation>
    </message>
    <message>
        <source>Tab-separated values (*.csv)</source>
        <translation>Durch Tabulatoren getrennte Werte (*.csv)</translation>
    </message>
    <message>
        <source>Export successfully finished.</source>
        <translation>Der Export ist abgeschlossen.</translation>
    </message>
    <message>
        <source>Failed to open export file.</source>
        <translation>Die Exportdatei konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Exporting points...</source>
        <translation>Punkte werden exportiert...</translation>
    </message>
    <message>
        <source>No points are selected; &quot;%0&quot; was left as it was.</source>
        <translation>Es sind keine Punkte ausgewählt; „%0“ blieb, wie es war.</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Run the query, or get all points that are left [Ctrl+F3]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Abfrage ausführen, oder alle übrigen Punkte holen [Strg+F3]&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>All points are shown.</source>
        <translation>Alle Punkte werden angezeigt.</translation>
    </message>
    <message>
        <source>%1 points match the current filter expression.
The table shows %2 of them at most; a file takes all.</source>
        <translation>%1 Punkte entsprechen dem aktuellen Filterausdruck.
Die Tabelle zeigt höchstens %2 davon; eine Datei nimmt alle auf.</translation>
    </message>
    <message>
        <source>Export ...</source>
        <translation>Exportieren ...</translation>
    </message>
    <message>
        <source>Read %1 points?
The table takes about %2 of memory for them.</source>
        <translation>%1 Punkte lesen?
Die Tabelle braucht dafür etwa %2 Speicher.</translation>
    </message>
    <message>
        <source>Showing the points...</source>
        <translation>Punkte werden angezeigt...</translation>
    </message>
    <message>
        <source>find in the points shown</source>
        <translation>in den angezeigten Punkten suchen</translation>
    </message>
    <message>
        <source>%1 (more with F3, 1,000 more with Shift+F3, all with Ctrl+F3)</source>
        <translation>%1 (mehr mit F3, 1.000 mehr mit Umschalt+F3, alle mit Strg+F3)</translation>
    </message>
</context>
<context>
    <name>tarvo::window::PointIndexPanel</name>
    <message>
        <source>Filter expression or node ids</source>
        <translation>Filterausdruck oder Nummern von Knoten</translation>
    </message>
    <message>
        <source>enter filter expression or node id or leave empty to query all nodes</source>
        <translation>Filterausdruck oder Knotennummer eingeben oder leer lassen: alle</translation>
    </message>
    <message>
        <source>Insert into the filter</source>
        <translation>In den Filter einfügen</translation>
    </message>
    <message>
        <source>Insert into the filter expression, keep it, clear it or its history</source>
        <translation>In den Filterausdruck einfügen, ihn aufbewahren, ihn oder seinen Verlauf leeren</translation>
    </message>
    <message>
        <source>Nodes of the index</source>
        <translation>Knoten des Index</translation>
    </message>
    <message>
        <source>Node</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Ebene</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Summe</translation>
    </message>
    <message>
        <source>Revision</source>
        <translation>Revision</translation>
    </message>
    <message>
        <source>Values of the node</source>
        <translation>Werte des Knotens</translation>
    </message>
    <message>
        <source>Attribute</source>
        <translation>Attribut</translation>
    </message>
    <message>
        <source>Value (full)</source>
        <translation>Wert (vollständig)</translation>
    </message>
    <message>
        <source>Filter Nodes</source>
        <translation>Knoten filtern</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Show the nodes that match the filter&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::QueryStat::index()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Die Knoten anzeigen, die dem Filter entsprechen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::QueryStat::index()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Expand tree</source>
        <translation>Baum aufklappen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Expand the whole tree&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Den ganzen Baum aufklappen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Collapse tree</source>
        <translation>Baum zuklappen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Collapse the whole tree&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Den ganzen Baum zuklappen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Stats</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Tree statistics&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::QueryStat::index()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Statistik des Baums&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::QueryStat::index()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Click here to toggle between &quot;full&quot; and &quot;cleaned&quot;</source>
        <translation>Hier klicken, um zwischen „vollständig“ und „bereinigt“ zu wechseln</translation>
    </message>
    <message>
        <source>Reading the point index...</source>
        <translation>Punktindex wird gelesen...</translation>
    </message>
    <message>
        <source>Index too large,
View truncated!</source>
        <translation>Der Index ist zu groß,
Ansicht gekürzt!</translation>
    </message>
    <message>
        <source>Nodes: %1, Leaves: %2, Total: %3, Depth: %4</source>
        <translation>Knoten: %1, Blätter: %2, Summe: %3, Tiefe: %4</translation>
    </message>
    <message>
        <source>Reading values of the node...</source>
        <translation>Werte des Knotens werden gelesen...</translation>
    </message>
    <message>
        <source>Copied: %1</source>
        <translation>Kopiert: %1</translation>
    </message>
    <message>
        <source>Value (cleaned)</source>
        <translation>Wert (bereinigt)</translation>
    </message>
    <message>
        <source>Go to the filter of the nodes [Ctrl+F]</source>
        <translation>Zum Filter der Knoten gehen [Strg+F]</translation>
    </message>
</context>
<context>
    <name>tarvo::window::PointValues</name>
    <message>
        <source>Attribute</source>
        <translation>Attribut</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Einheit</translation>
    </message>
</context>
<context>
    <name>tarvo::window::ResultPage</name>
    <message>
        <source>C&amp;opy</source>
        <translation>K&amp;opieren</translation>
    </message>
    <message>
        <source>Open &amp;Folder</source>
        <translation>O&amp;rdner öffnen</translation>
    </message>
    <message>
        <source>&amp;Save ...</source>
        <translation>&amp;Speichern ...</translation>
    </message>
    <message>
        <source>[Only the beginning is shown. &quot;Save ...&quot; writes all of it.]</source>
        <translation>[Nur der Anfang wird angezeigt. „Speichern ...“ schreibt alles.]</translation>
    </message>
    <message>
        <source>This report is too large to be shown here.
Save it, and look at it in a browser.</source>
        <translation>Dieser Bericht ist zu groß, um hier angezeigt zu werden.
Ihn speichern und in einem Browser ansehen.</translation>
    </message>
    <message>
        <source>The picture can&apos;t be read.</source>
        <translation>Das Bild ist nicht lesbar.</translation>
    </message>
    <message>
        <source>&amp;Fit to window</source>
        <translation>An &amp;Fenster anpassen</translation>
    </message>
    <message>
        <source>Show the whole picture; off: pixel by pixel</source>
        <translation>Das ganze Bild anzeigen; aus: Pixel für Pixel</translation>
    </message>
    <message>
        <source>%0 x %1 pixels</source>
        <translation>%L0 x %L1 Pixel</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>The plugin wrote the file</source>
        <translation>Das Plugin hat diese Datei geschrieben</translation>
    </message>
    <message>
        <source>Save Result</source>
        <translation>Ergebnis speichern</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>tarvo::window::ResultTable</name>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
</context>
<context>
    <name>tarvo::window::StartPage</name>
    <message>
        <source>No database is open</source>
        <translation>Keine Datenbank ist geöffnet</translation>
    </message>
    <message>
        <source>Databases, and points of other programs, can be dropped on the window, too.</source>
        <translation>Datenbanken, und Punkte anderer Programme, können auch auf das Fenster gezogen werden.</translation>
    </message>
    <message>
        <source>Open again</source>
        <translation>Wieder öffnen</translation>
    </message>
</context>
<context>
    <name>tarvo::window::TransactionsPanel</name>
    <message>
        <source>Transactions</source>
        <translation>Transaktionen</translation>
    </message>
    <message>
        <source>ID</source>
        <translation>Nr.</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Agent</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Beginn</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Kept transactions and the one that the database is at&lt;/p&gt;&lt;hr/&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::list()&lt;br /&gt;tarvo::qrb::pointcloud::Transactions::current()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Aufbewahrte Transaktionen und die, auf deren Stand die Datenbank ist&lt;/p&gt;&lt;hr/&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::list()&lt;br /&gt;tarvo::qrb::pointcloud::Transactions::current()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Begin new transaction&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::begin()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Neue Transaktion beginnen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::begin()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Commit</source>
        <translation>Festschreiben</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Commit the pending transaction&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::commit()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Offene Transaktion festschreiben&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::commit()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Rollback</source>
        <translation>Zurücknehmen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Roll the pending transaction back&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::rollback()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Offene Transaktion zurücknehmen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::rollback()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Make the state of the selected transaction the current one&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::restore()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Den Stand der ausgewählten Transaktion zum aktuellen machen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::restore()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Delete Selected</source>
        <translation>Ausgewählte löschen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Delete selected transactions&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::discard()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Ausgewählte Transaktionen löschen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::discard()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Get size of selected transactions&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::size()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Größe der ausgewählten Transaktionen ermitteln&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Transactions::size()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Compare ...</source>
        <translation>Vergleichen ...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Tell what is different between two selected transactions; between a single one and the current one; between the current one and the one before it&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::OpenSettings::transaction&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Sagen, was zwischen zwei ausgewählten Transaktionen verschieden ist; zwischen einer einzelnen und der aktuellen; zwischen der aktuellen und der davor&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::OpenSettings::transaction&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Delete All</source>
        <translation>Alle löschen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Delete all transactions&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Management::finalize()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Alle Transaktionen löschen&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Management::finalize()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Cleanup (vacuum)</source>
        <translation>Bereinigen (vacuum)</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Give unused disk space back&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Management::vacuum()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Ungenutzten Speicherplatz freigeben&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Management::vacuum()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Level of Detail</source>
        <translation>Detailstufen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body&gt;&lt;p&gt;Get/Set level-of-detail settings&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Management::getLodMode()&lt;br/&gt;tarvo::qrb::pointcloud::Management::setLodMode()&lt;br/&gt;tarvo::qrb::pointcloud::Management::getChunkSizeLOD()&lt;br/&gt;tarvo::qrb::pointcloud::Management::setChunkSizeLOD()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;body&gt;&lt;p&gt;Einstellungen der Detailstufen ansehen oder ändern&lt;/p&gt;&lt;p style=&quot;color:#0000a3&quot;&gt;&lt;i&gt;tarvo::qrb::pointcloud::Management::getLodMode()&lt;br/&gt;tarvo::qrb::pointcloud::Management::setLodMode()&lt;br/&gt;tarvo::qrb::pointcloud::Management::getChunkSizeLOD()&lt;br/&gt;tarvo::qrb::pointcloud::Management::setChunkSizeLOD()&lt;/i&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Delete transactions</source>
        <translation>Transaktionen löschen</translation>
    </message>
    <message>
        <source>Transaction pending...</source>
        <translation>Transaktion offen...</translation>
    </message>
    <message>
        <source>Transactions: %1, Current transaction: %2</source>
        <translation>Transaktionen: %L1, aktuelle Transaktion: %2</translation>
    </message>
    <message>
        <source>failed to parse started</source>
        <translation>Beginn nicht lesbar</translation>
    </message>
    <message>
        <source>failed to parse stopped</source>
        <translation>Ende nicht lesbar</translation>
    </message>
    <message>
        <source>No transaction selected.</source>
        <translation>Keine Transaktion ausgewählt.</translation>
    </message>
    <message>
        <source>Beginning a transaction...</source>
        <translation>Transaktion wird begonnen...</translation>
    </message>
    <message>
        <source>Committing the transaction...</source>
        <translation>Transaktion wird festgeschrieben...</translation>
    </message>
    <message>
        <source>Rollback current transaction?
All changes will be lost.</source>
        <translation>Die aktuelle Transaktion zurücknehmen?
Alle Änderungen gehen verloren.</translation>
    </message>
    <message>
        <source>Rolling the transaction back...</source>
        <translation>Transaktion wird zurückgenommen...</translation>
    </message>
    <message>
        <source>Restoring the transaction...</source>
        <translation>Transaktion wird wiederhergestellt...</translation>
    </message>
    <message>
        <source>Measuring transactions...</source>
        <translation>Größe der Transaktionen wird ermittelt...</translation>
    </message>
    <message>
        <source>1 transaction can&apos;t be restored then. That frees about %1 in the file; &quot;%2&quot; gives it back to the disk.</source>
        <translation>1 Transaktion kann danach nicht wiederhergestellt werden. Das gibt in der Datei etwa %1 frei; „%2“ gibt sie dem Datenträger zurück.</translation>
    </message>
    <message>
        <source>%1 transactions can&apos;t be restored then. That frees about %2 in the file; &quot;%3&quot; gives it back to the disk.</source>
        <translation>%1 Transaktionen können danach nicht wiederhergestellt werden. Das gibt in der Datei etwa %2 frei; „%3“ gibt sie dem Datenträger zurück.</translation>
    </message>
    <message>
        <source>Delete transaction %0?

Please note, that the first transaction (1) and 
the current transaction (%1) can not be deleted.</source>
        <translation>Transaktion %0 löschen?

Die erste Transaktion (1) und die aktuelle Transaktion (%1)
können nicht gelöscht werden.</translation>
    </message>
    <message>
        <source>Delete selected transactions (%0)?

Please note, that the first transaction (1) and 
the current transaction (%1) can not be deleted.</source>
        <translation>Ausgewählte Transaktionen (%0) löschen?

Die erste Transaktion (1) und die aktuelle Transaktion (%1)
können nicht gelöscht werden.</translation>
    </message>
    <message>
        <source>Deleting transactions...</source>
        <translation>Transaktionen werden gelöscht...</translation>
    </message>
    <message>
        <source>Size of transaction %0:

%1 (%2 B)</source>
        <translation>Größe von Transaktion %0:

%1 (%L2 B)</translation>
    </message>
    <message>
        <source>Size of selected transactions (%0):

%1 (%2 B)</source>
        <translation>Größe der ausgewählten Transaktionen (%0):

%1 (%L2 B)</translation>
    </message>
    <message>
        <source>Select one or two transactions to compare.</source>
        <translation>Eine oder zwei Transaktionen zum Vergleichen auswählen.</translation>
    </message>
    <message>
        <source>There is no other transaction to compare with.</source>
        <translation>Es gibt keine andere Transaktion zum Vergleichen.</translation>
    </message>
    <message>
        <source>Delete all transactions except the first and current/last?</source>
        <translation>Alle Transaktionen außer der ersten und der aktuellen/letzten löschen?</translation>
    </message>
    <message>
        <source>Reorganize database file to release unused disk space?</source>
        <translation>Die Datenbankdatei neu ordnen, um ungenutzten Speicherplatz freizugeben?</translation>
    </message>
    <message>
        <source>Reorganizing the database file...</source>
        <translation>Datenbankdatei wird neu geordnet...</translation>
    </message>
    <message>
        <source>The clean-up released %0.</source>
        <translation>Die Bereinigung hat %0 freigegeben.</translation>
    </message>
    <message>
        <source>There was nothing to release.</source>
        <translation>Es gab nichts freizugeben.</translation>
    </message>
    <message>
        <source>Measuring unused disk space...</source>
        <translation>Ungenutzter Speicherplatz wird ermittelt...</translation>
    </message>
    <message>
        <source>That releases about %1.</source>
        <translation>Das gibt etwa %1 frei.</translation>
    </message>
    <message>
        <source>find in the transactions</source>
        <translation>in den Transaktionen suchen</translation>
    </message>
    <message>
        <source>Find a text in the transactions [Ctrl+F]</source>
        <translation>Einen Text in den Transaktionen suchen [Strg+F]</translation>
    </message>
    <message>
        <source>Restore transaction &quot;%0&quot; (%1)?

The database gets the state of that transaction. Others stay in the list, and can be restored as well, until a new transaction begins.</source>
        <translation>Die Transaktion „%0“ (%1) wiederherstellen?

Die Datenbank erhält den Stand dieser Transaktion. Andere bleiben in der Liste und können ebenfalls wiederhergestellt werden, bis eine neue Transaktion beginnt.</translation>
    </message>
</context>
</TS>
