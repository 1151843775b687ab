<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Messages</name>
    <message>
        <source>&quot;%1&quot;</source>
        <translation>„%1“</translation>
    </message>
    <message>
        <source>&quot;$ref&quot; is not a text.</source>
        <translation>„$ref“ ist kein Text.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; and &quot;%2&quot;</source>
        <translation>„%1“ und „%2“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; at %2</source>
        <translation>„%1“ an %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; can&apos;t be renamed to &quot;%2&quot;: %3.</source>
        <translation>„%1“ kann nicht in „%2“ umbenannt werden: %3.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; can&apos;t be written: %2.</source>
        <translation>„%1“ kann nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; changed while it was read.</source>
        <translation>„%1“ änderte sich während des Lesens.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not answer as Python does.</source>
        <translation>„%1“ antwortet nicht wie Python.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not name a point attribute: %2</source>
        <translation>„%1“ nennt kein Punktattribut: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; ends after %2 of %3 points.</source>
        <translation>„%1“ endet nach %2 von %3 Punkten.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has a maximum below its minimum</source>
        <translation>„%1“ hat ein Maximum unter dem Minimum</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no attribute &quot;%2&quot;, by which the points of &quot;%3&quot; are found.</source>
        <translation>„%1“ hat kein Attribut „%2“, über das die Punkte von „%3“ gefunden werden.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no coordinates &quot;%2&quot; by which its points could be chosen.</source>
        <translation>„%1“ hat keine Koordinaten „%2“, nach denen die Punkte ausgewählt werden könnten.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has points and commas in its numbers, in line %2 and line %3.</source>
        <translation>„%1“ hat Punkte und Kommas in den Zahlen, in Zeile %2 und Zeile %3.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has the name &quot;%2&quot;, too.</source>
        <translation>„%1“ hat ebenfalls den Namen „%2“.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has the scale 0</source>
        <translation>„%1“ hat die Skala 0</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is Python %2, which is too old.</source>
        <translation>„%1“ ist Python %2, was zu alt ist.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a folder.</source>
        <translation>„%1“ ist ein Ordner.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is called &quot;%2&quot; in the file, where &quot;%3&quot; means &quot;%4&quot;.</source>
        <translation>„%1“ heißt in der Datei „%2“, weil „%3“ dort „%4“ bedeutet.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is in its place, but its folder could not be synced: %2.</source>
        <translation>Die Datei „%1“ steht an ihrem Platz, aber ihr Ordner konnte nicht synchronisiert werden: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no &quot;VALUE=NAME&quot;; it is kept as it stands.</source>
        <translation>„%1“ ist kein „WERT=NAME“; es bleibt, wie es dasteht.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no Python.</source>
        <translation>„%1“ ist kein Python.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no file.</source>
        <translation>„%1“ ist keine Datei.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no number.</source>
        <translation>„%1“ ist keine Zahl.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no ordinary file.</source>
        <translation>„%1“ ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no point cloud that can be read: it is %2.</source>
        <translation>„%1“ ist keine lesbare Punktwolke: die Datei ist %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a LAS file: it does not begin with &quot;LASF&quot;.</source>
        <translation>„%1“ ist keine LAS-Datei: sie beginnt nicht mit „LASF“.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a default metadata item.</source>
        <translation>„%1“ ist kein Standardeintrag der Metadaten.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a default point attribute.</source>
        <translation>„%1“ ist kein Standardattribut.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a file.</source>
        <translation>„%1“ ist keine Datei.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a log level.</source>
        <translation>„%1“ ist keine Protokollstufe.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a type.</source>
        <translation>„%1“ ist kein Typ.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not finite</source>
        <translation>„%1“ ist nicht endlich</translation>
    </message>
    <message>
        <source>&quot;%1&quot; of &quot;%2&quot; is not a number of its type</source>
        <translation>„%1“ von „%2“ ist keine Zahl des zugehörigen Typs</translation>
    </message>
    <message>
        <source>&quot;%1&quot; of a scan&apos;s points is a &quot;%2&quot;</source>
        <translation>„%1“ der Punkte eines Scans ist ein „%2“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands behind %2</source>
        <translation>„%1“ steht hinter %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands behind the JSON value, where nothing may follow.</source>
        <translation>„%1“ steht hinter dem JSON-Wert, wo nichts folgen darf.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands twice.</source>
        <translation>„%1“ steht zweimal da.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; tells &quot;%2&quot; twice.</source>
        <translation>„%1“ enthält „%2“ zweimal.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; tells by itself what its columns mean.</source>
        <translation>„%1“ gibt selbst an, was die Spalten bedeuten.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was changed while it was read.</source>
        <translation>„%1“ wurde während des Lesens geändert.</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: no column holds %2: all points get the default value there.</source>
        <translation>„%1“: keine Spalte enthält %2: alle Punkte erhalten dort die Vorgabe.</translation>
    </message>
    <message>
        <source>&quot;%1-journal&quot; is left of a database that was removed, and would damage the new one, but can&apos;t be removed: %2.</source>
        <translation>„%1-journal“ ist von einer entfernten Datenbank übrig und würde die neue beschädigen, kann aber nicht entfernt werden: %2.</translation>
    </message>
    <message>
        <source>&quot;(?&quot; must be followed by &quot;:&quot;, &quot;=&quot;, &quot;!&quot; or &quot;&lt;&quot;</source>
        <translation>auf „(?“ muss „:“, „=“, „!“ oder „&lt;“ folgen</translation>
    </message>
    <message>
        <source>&quot;)&quot; closes no group</source>
        <translation>„)“ schließt keine Gruppe</translation>
    </message>
    <message>
        <source>&quot;,&quot; or &quot;)&quot;</source>
        <translation>„,“ oder „)“</translation>
    </message>
    <message>
        <source>&quot;[&quot; is not closed</source>
        <translation>„[“ ist nicht geschlossen</translation>
    </message>
    <message>
        <source>&quot;\%1&quot; has no meaning</source>
        <translation>„\%1“ hat keine Bedeutung</translation>
    </message>
    <message>
        <source>&quot;\c&quot; must be followed by a letter</source>
        <translation>auf „\c“ muss ein Buchstabe folgen</translation>
    </message>
    <message>
        <source>&quot;\u&quot; must be followed by four hexadecimal digits</source>
        <translation>auf „\u“ müssen vier hexadezimale Ziffern folgen</translation>
    </message>
    <message>
        <source>&quot;\u{&quot; must be followed by the number of a character and &quot;}&quot;</source>
        <translation>auf „\u{“ müssen die Nummer eines Zeichens und „}“ folgen</translation>
    </message>
    <message>
        <source>&quot;\x&quot; must be followed by two hexadecimal digits</source>
        <translation>auf „\x“ müssen zwei hexadezimale Ziffern folgen</translation>
    </message>
    <message>
        <source>&quot;minimum&quot;, &quot;maximum&quot;, &quot;default&quot; or &quot;invalid&quot;</source>
        <translation>„minimum“, „maximum“, „default“ oder „invalid“</translation>
    </message>
    <message>
        <source>&quot;qrbtool check&quot; looks for damage.</source>
        <translation>„qrbtool check“ sucht nach Schäden.</translation>
    </message>
    <message>
        <source>&quot;qrbtool info&quot; lists the attributes.</source>
        <translation>„qrbtool info“ listet die Attribute auf.</translation>
    </message>
    <message>
        <source>&quot;single-pass&quot; or &quot;multi-pass&quot;</source>
        <translation>„single-pass“ oder „multi-pass“</translation>
    </message>
    <message>
        <source>&quot;{&quot; begins no number of repetitions</source>
        <translation>auf „{“ folgt keine Anzahl von Wiederholungen</translation>
    </message>
    <message>
        <source>%1

Remove it by hand if that is meant.</source>
        <translation>%1

Wenn das gemeint ist, die Datei von Hand löschen.</translation>
    </message>
    <message>
        <source>%1
Or export to csv or las.</source>
        <translation>%1
Oder nach csv oder las exportieren.</translation>
    </message>
    <message>
        <source>%1
Remove it by hand if that is meant.</source>
        <translation>%1
Wenn das gemeint ist, die Datei von Hand löschen.</translation>
    </message>
    <message>
        <source>%1 %2 begins at byte %3, behind its end at %4</source>
        <translation>%1 Nr. %2 beginnt bei Byte %3, hinter dem Ende bei %4</translation>
    </message>
    <message>
        <source>%1 (And %2 more.)</source>
        <translation>%1 (Und %2 weitere.)</translation>
    </message>
    <message>
        <source>%1 At byte %2.</source>
        <translation>%1 Bei Byte %2.</translation>
    </message>
    <message>
        <source>%1 Choose an invalid value within the range, or narrow the range.</source>
        <translation>%1 Einen Ungültigwert innerhalb des Wertebereichs wählen oder den Wertebereich verkleinern.</translation>
    </message>
    <message>
        <source>%1 Narrow the range, or make the resolution coarser or 0.</source>
        <translation>%1 Den Wertebereich verkleinern oder die Auflösung gröber oder zu 0 machen.</translation>
    </message>
    <message>
        <source>%1 Position: %2</source>
        <translation>%1 Position: %2</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 und %2</translation>
    </message>
    <message>
        <source>%1 bytes are left behind its layers</source>
        <translation>%1 Bytes sind hinter seinen Schichten übrig</translation>
    </message>
    <message>
        <source>%1 bytes where there should be %2</source>
        <translation>%1 Bytes, wo %2 sein sollten</translation>
    </message>
    <message>
        <source>%1 coordinates were rounded to the scale.</source>
        <translation>%1 Koordinaten wurden auf die Skala gerundet.</translation>
    </message>
    <message>
        <source>%1 does not satisfy its JSON schema</source>
        <translation>%1 entspricht nicht dem zugehörigen JSON-Schema</translation>
    </message>
    <message>
        <source>%1 does not tell a column and its attribute.</source>
        <translation>%1 nennt nicht eine Spalte und ihr Attribut.</translation>
    </message>
    <message>
        <source>%1 has %2 column, but the first points have %3.</source>
        <translation>%1 hat %2 Spalte, aber die ersten Punkte haben %3.</translation>
    </message>
    <message>
        <source>%1 has %2 column, but the line of their names has %3.</source>
        <translation>%1 hat %2 Spalte, aber die Zeile mit ihren Namen hat %3.</translation>
    </message>
    <message>
        <source>%1 has %2 columns, but the first points have %3.</source>
        <translation>%1 hat %2 Spalten, aber die ersten Punkte haben %3.</translation>
    </message>
    <message>
        <source>%1 has %2 columns, but the line of their names has %3.</source>
        <translation>%1 hat %2 Spalten, aber die Zeile mit ihren Namen hat %3.</translation>
    </message>
    <message>
        <source>%1 has a name already.</source>
        <translation>%1 hat schon einen Namen.</translation>
    </message>
    <message>
        <source>%1 has a zero byte.</source>
        <translation>%1 enthält ein Null-Byte.</translation>
    </message>
    <message>
        <source>%1 has an element number above %2.</source>
        <translation>%1 hat eine Elementnummer über %2.</translation>
    </message>
    <message>
        <source>%1 has at most %2 bytes, this one has %3.</source>
        <translation>%1 hat höchstens %2 Bytes, hier sind es %3.</translation>
    </message>
    <message>
        <source>%1 has more than %2 columns.</source>
        <translation>%1 hat mehr als %2 Spalten.</translation>
    </message>
    <message>
        <source>%1 has no id.</source>
        <translation>%1 hat keine ID.</translation>
    </message>
    <message>
        <source>%1 has no name.</source>
        <translation>%1 hat keinen Namen.</translation>
    </message>
    <message>
        <source>%1 has no valid member %2.</source>
        <translation>%1 hat kein gültiges Element %2.</translation>
    </message>
    <message>
        <source>%1 has several columns %2.</source>
        <translation>%1 hat mehrere Spalten %2.</translation>
    </message>
    <message>
        <source>%1 has to be an array of one choice at least.</source>
        <translation>%1 muss ein Array mit mindestens einer Auswahlmöglichkeit sein.</translation>
    </message>
    <message>
        <source>%1 holes without a point were left out.</source>
        <translation>%1 Lücken ohne Punkt wurden weggelassen.</translation>
    </message>
    <message>
        <source>%1 is &quot;%2&quot;. A name has letters, digits and &quot;_&quot;, and begins with a letter.</source>
        <translation>%1 ist „%2“. Ein Name hat Buchstaben, Ziffern und „_“ und beginnt mit einem Buchstaben.</translation>
    </message>
    <message>
        <source>%1 is &quot;%2&quot;. A name has small letters, digits and &quot;-&quot;, and begins with a letter.</source>
        <translation>%1 ist „%2“. Ein Name hat Kleinbuchstaben, Ziffern und „-“ und beginnt mit einem Buchstaben.</translation>
    </message>
    <message>
        <source>%1 is &quot;%2&quot;. The types are %3.</source>
        <translation>%1 ist „%2“. Die Typen sind %3.</translation>
    </message>
    <message>
        <source>%1 is empty.</source>
        <translation>%1 ist leer.</translation>
    </message>
    <message>
        <source>%1 is expected at byte %2, not &quot;%3&quot;</source>
        <translation>%1 wird bei Byte %2 erwartet, nicht „%3“</translation>
    </message>
    <message>
        <source>%1 is expected at byte %2, where the text ends</source>
        <translation>%1 wird bei Byte %2 erwartet, wo der Text endet</translation>
    </message>
    <message>
        <source>%1 is greater than &quot;maximum&quot;.</source>
        <translation>%1 ist größer als „maximum“.</translation>
    </message>
    <message>
        <source>%1 is missing.</source>
        <translation>%1 fehlt.</translation>
    </message>
    <message>
        <source>%1 is neither an attribute nor a named value of &quot;%2&quot;.</source>
        <translation>%1 ist weder ein Attribut noch ein benannter Wert von „%2“.</translation>
    </message>
    <message>
        <source>%1 is neither an attribute nor a named value of &quot;%2&quot;. %3</source>
        <translation>%1 ist weder ein Attribut noch ein benannter Wert von „%2“. %3</translation>
    </message>
    <message>
        <source>%1 is neither true nor false.</source>
        <translation>%1 ist weder true noch false.</translation>
    </message>
    <message>
        <source>%1 is no Python script: its name ends with &quot;.py&quot;.</source>
        <translation>%1 ist kein Python-Skript: dessen Name endet mit „.py“.</translation>
    </message>
    <message>
        <source>%1 is no array</source>
        <translation>%1 ist kein Array</translation>
    </message>
    <message>
        <source>%1 is no array.</source>
        <translation>%1 ist kein Array.</translation>
    </message>
    <message>
        <source>%1 is no line of numbers.</source>
        <translation>%1 ist keine Zeile aus Zahlen.</translation>
    </message>
    <message>
        <source>%1 is no multiple of the resolution.</source>
        <translation>%1 ist kein Vielfaches der Auflösung.</translation>
    </message>
    <message>
        <source>%1 is no name of an attribute.</source>
        <translation>%1 ist kein Name eines Attributs.</translation>
    </message>
    <message>
        <source>%1 is no named value of &quot;%2&quot;.</source>
        <translation>%1 ist kein benannter Wert von „%2“.</translation>
    </message>
    <message>
        <source>%1 is no named value of &quot;%2&quot;. %3</source>
        <translation>%1 ist kein benannter Wert von „%2“. %3</translation>
    </message>
    <message>
        <source>%1 is no number.</source>
        <translation>%1 ist keine Zahl.</translation>
    </message>
    <message>
        <source>%1 is no object.</source>
        <translation>%1 ist kein Objekt.</translation>
    </message>
    <message>
        <source>%1 is no string.</source>
        <translation>%1 ist keine Zeichenkette.</translation>
    </message>
    <message>
        <source>%1 is no value of a parameter.</source>
        <translation>%1 ist kein Wert eines Parameters.</translation>
    </message>
    <message>
        <source>%1 is not a JSON object.</source>
        <translation>%1 ist kein JSON-Objekt.</translation>
    </message>
    <message>
        <source>%1 is not a UTF-8 text.</source>
        <translation>%1 ist kein UTF-8-Text.</translation>
    </message>
    <message>
        <source>%1 is not known.</source>
        <translation>%1 ist nicht bekannt.</translation>
    </message>
    <message>
        <source>%1 is not valid JSON.</source>
        <translation>%1 ist kein gültiges JSON.</translation>
    </message>
    <message>
        <source>%1 is not valid: in &quot;%2&quot;, %3</source>
        <translation>%1 ist ungültig, in „%2“: %3</translation>
    </message>
    <message>
        <source>%1 is not valid: it has two primary attributes, &quot;%2&quot; and &quot;%3&quot;.</source>
        <translation>%1 ist ungültig: es hat zwei Primärattribute, „%2“ und „%3“.</translation>
    </message>
    <message>
        <source>%1 is not valid: the metadata item &quot;%2&quot; is marked as primary, which only attributes can be.</source>
        <translation>%1 ist ungültig: der Metadateneintrag „%2“ ist als primär gekennzeichnet, was nur Attribute sein können.</translation>
    </message>
    <message>
        <source>%1 is out of the range.</source>
        <translation>%1 liegt außerhalb des Wertebereichs.</translation>
    </message>
    <message>
        <source>%1 is too large.</source>
        <translation>%1 ist zu groß.</translation>
    </message>
    <message>
        <source>%1 may be one of several values: %2, .... Write the number.</source>
        <translation>%1 kann einer von mehreren Werten sein: %2, .... Die Zahl schreiben.</translation>
    </message>
    <message>
        <source>%1 may be one of several values: %2. Write the number.</source>
        <translation>%1 kann einer von mehreren Werten sein: %2. Die Zahl schreiben.</translation>
    </message>
    <message>
        <source>%1 nests more than %2 levels.</source>
        <translation>%1 ist mehr als %2 Ebenen tief verschachtelt.</translation>
    </message>
    <message>
        <source>%1 of a transaction</source>
        <translation>%1 einer Transaktion</translation>
    </message>
    <message>
        <source>%1 of the element &quot;%2&quot; take %3 bytes each, but %4 are left</source>
        <translation>%1 vom Element „%2“ brauchen je %3 Bytes, aber %4 sind übrig</translation>
    </message>
    <message>
        <source>%1 of the element &quot;%2&quot; were passed over.</source>
        <translation>%1 vom Element „%2“ wurden übergangen.</translation>
    </message>
    <message>
        <source>%1 packed bytes where there should be %2</source>
        <translation>%1 gepackte Bytes, wo %2 sein sollten</translation>
    </message>
    <message>
        <source>%1 point is announced; all %2 that follow were read.</source>
        <translation>%1 Punkt ist angekündigt; alle %2, die folgen, wurden gelesen.</translation>
    </message>
    <message>
        <source>%1 points are announced; all %2 that follow were read.</source>
        <translation>%1 Punkte sind angekündigt; alle %2, die folgen, wurden gelesen.</translation>
    </message>
    <message>
        <source>%1 records of %2 bits do not fit into the %3 bytes of a scan</source>
        <translation>%1 Datensätze von %2 Bit passen nicht in die %3 Bytes eines Scans</translation>
    </message>
    <message>
        <source>%1 stands there twice.</source>
        <translation>%1 steht dort zweimal.</translation>
    </message>
    <message>
        <source>%1 time of an unknown epoch</source>
        <translation>%1-Zeit einer unbekannten Epoche</translation>
    </message>
    <message>
        <source>%1 time since %2</source>
        <translation>%1-Zeit seit %2</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>%1 value is so far from 0 that steps of the file&apos;s scale can&apos;t be told apart there: what was read is the nearest number of 64 bits, which several of them may share.</source>
        <translation>%1 Wert liegt so weit von 0, dass sich die Schritte der Skala der Datei dort nicht unterscheiden lassen: gelesen wurde die nächste Zahl mit 64 Bit, die mehrere gemeinsam haben können.</translation>
    </message>
    <message>
        <source>%1 values are so far from 0 that steps of the file&apos;s scale can&apos;t be told apart there: what was read is the nearest number of 64 bits, which several of them may share.</source>
        <translation>%1 Werte liegen so weit von 0, dass sich die Schritte der Skala der Datei dort nicht unterscheiden lassen: gelesen wurde die jeweils nächste Zahl mit 64 Bit, die mehrere gemeinsam haben können.</translation>
    </message>
    <message>
        <source>%1 would be too large to be read again.</source>
        <translation>%1 wäre zu groß, um wieder gelesen zu werden.</translation>
    </message>
    <message>
        <source>%1, member %2</source>
        <translation>%1, Element %2</translation>
    </message>
    <message>
        <source>%1, not understood in full</source>
        <translation>%1, nicht vollständig verstanden</translation>
    </message>
    <message>
        <source>%1, which stands nowhere</source>
        <translation>%1, der nirgends steht</translation>
    </message>
    <message>
        <source>%1. Name another one in the environment variable TMPDIR.</source>
        <translation>%1. Einen anderen in der Umgebungsvariablen TMPDIR nennen.</translation>
    </message>
    <message>
        <source>%1. Name one in the environment variable TMPDIR.</source>
        <translation>%1. Einen in der Umgebungsvariablen TMPDIR nennen.</translation>
    </message>
    <message>
        <source>%1: &quot;%2&quot; in the column &quot;%3&quot; is not a number.</source>
        <translation>%1: „%2“ in der Spalte „%3“ ist keine Zahl.</translation>
    </message>
    <message>
        <source>%1: &quot;%2&quot; is no id.</source>
        <translation>%1: „%2“ ist keine ID.</translation>
    </message>
    <message>
        <source>%1: %2 point, compared as numbers</source>
        <translation>%1: %2 Punkt, als Zahlen verglichen</translation>
    </message>
    <message>
        <source>%1: %2 points, compared as numbers</source>
        <translation>%1: %2 Punkte, als Zahlen verglichen</translation>
    </message>
    <message>
        <source>%1: not compared, because the lengths differ</source>
        <translation>%1: nicht verglichen, weil die Längen verschieden sind</translation>
    </message>
    <message>
        <source>%1: they were taken as they are.</source>
        <translation>%1: sie wurden genommen, wie sie sind.</translation>
    </message>
    <message>
        <source>%1The points are found by it, so that it can&apos;t be redefined: import all files into a new database.</source>
        <translation>%1Die Punkte werden darüber gefunden, so dass es nicht neu festgelegt werden kann: alle Dateien in eine neue Datenbank importieren.</translation>
    </message>
    <message>
        <source>%1has %2 field, but the header line names %3.</source>
        <translation>%1hat %2 Feld, aber die Kopfzeile nennt %3.</translation>
    </message>
    <message>
        <source>%1has %2 fields, but the header line names %3.</source>
        <translation>%1hat %2 Felder, aber die Kopfzeile nennt %3.</translation>
    </message>
    <message>
        <source>%1has a quote that is not closed.</source>
        <translation>%1hat ein Anführungszeichen, das nicht geschlossen wird.</translation>
    </message>
    <message>
        <source>(sorted points)</source>
        <translation>(sortierte Punkte)</translation>
    </message>
    <message>
        <source>* %1 point changed</source>
        <translation>* %1 Punkt geändert</translation>
    </message>
    <message>
        <source>* %1 points changed</source>
        <translation>* %1 Punkte geändert</translation>
    </message>
    <message>
        <source>+ %1 point added</source>
        <translation>+ %1 Punkt hinzugefügt</translation>
    </message>
    <message>
        <source>+ %1 points added</source>
        <translation>+ %1 Punkte hinzugefügt</translation>
    </message>
    <message>
        <source>, the invalid value is %1</source>
        <translation>, der Ungültigwert ist %1</translation>
    </message>
    <message>
        <source>- %1 point removed</source>
        <translation>- %1 Punkt entfernt</translation>
    </message>
    <message>
        <source>- %1 points removed</source>
        <translation>- %1 Punkte entfernt</translation>
    </message>
    <message>
        <source>0 to 99 per cent</source>
        <translation>0 bis 99 Prozent</translation>
    </message>
    <message>
        <source>1 is thinout, 2 is combine</source>
        <translation>1 dünnt aus, 2 fasst zusammen</translation>
    </message>
    <message>
        <source>1 limits the points of a leaf, 2 its edge length</source>
        <translation>1 begrenzt die Punkte eines Blatts, 2 seine Kantenlänge</translation>
    </message>
    <message>
        <source>1 signs with a key, 2 with the authentication function.</source>
        <translation>1 signiert mit einem Schlüssel, 2 mit der Authentifizierungsfunktion.</translation>
    </message>
    <message>
        <source>: another value</source>
        <translation>: anderer Wert</translation>
    </message>
    <message>
        <source>: no longer signed</source>
        <translation>: nicht mehr signiert</translation>
    </message>
    <message>
        <source>: now signed</source>
        <translation>: jetzt signiert</translation>
    </message>
    <message>
        <source>A LAS file needs the attribute &quot;tarvo.xyz&quot; with three coordinates.</source>
        <translation>Eine LAS-Datei braucht das Attribut „tarvo.xyz“ mit drei Koordinaten.</translation>
    </message>
    <message>
        <source>A batch of %1 points is too large to be filtered.</source>
        <translation>%1 Punkte auf einmal sind zu viele, um gefiltert zu werden.</translation>
    </message>
    <message>
        <source>A column goes to one attribute.</source>
        <translation>Eine Spalte geht in ein Attribut.</translation>
    </message>
    <message>
        <source>A column of &quot;%1&quot; has a name of %2 characters: &quot;%3...&quot;.</source>
        <translation>Eine Spalte von „%1“ hat einen Namen mit %2 Zeichen: „%3...“.</translation>
    </message>
    <message>
        <source>A database can&apos;t hold them: replace them in the input file.</source>
        <translation>Eine Datenbank kann sie nicht fassen: sie in der Eingabedatei ersetzen.</translation>
    </message>
    <message>
        <source>A database is open already.</source>
        <translation>Eine Datenbank ist schon geöffnet.</translation>
    </message>
    <message>
        <source>A file &quot;%1&quot; is missing.</source>
        <translation>Eine Datei „%1“ fehlt.</translation>
    </message>
    <message>
        <source>A file &quot;plugin.json&quot; is missing.</source>
        <translation>Eine Datei „plugin.json“ fehlt.</translation>
    </message>
    <message>
        <source>A filter got a block of %1 for %2 points.</source>
        <translation>Ein Filter erhielt einen Block von %1 für %2 Punkte.</translation>
    </message>
    <message>
        <source>A filter got the statistics of other elements.</source>
        <translation>Ein Filter erhielt die Statistik anderer Elemente.</translation>
    </message>
    <message>
        <source>A filter took a value for a condition.</source>
        <translation>Ein Filter hielt einen Wert für eine Bedingung.</translation>
    </message>
    <message>
        <source>A header line that names the columns is needed, for example &quot;x,y,z&quot;.</source>
        <translation>Nötig ist eine Kopfzeile, die die Spalten nennt, zum Beispiel „x,y,z“.</translation>
    </message>
    <message>
        <source>A message has at most %1 bytes.</source>
        <translation>Eine Nachricht hat höchstens %1 Bytes.</translation>
    </message>
    <message>
        <source>A metadata item</source>
        <translation>Ein Metadateneintrag</translation>
    </message>
    <message>
        <source>A name begins with a letter or &quot;_&quot;.</source>
        <translation>Ein Name beginnt mit einem Buchstaben oder „_“.</translation>
    </message>
    <message>
        <source>A name can&apos;t hold such characters.</source>
        <translation>Ein Name kann solche Zeichen nicht enthalten.</translation>
    </message>
    <message>
        <source>A name has at most 255 characters.</source>
        <translation>Ein Name hat höchstens 255 Zeichen.</translation>
    </message>
    <message>
        <source>A name holds letters from A to Z, digits, &quot;.&quot; and &quot;_&quot; only.</source>
        <translation>Ein Name enthält nur Buchstaben von A bis Z, Ziffern, „.“ und „_“.</translation>
    </message>
    <message>
        <source>A name such as &quot;own.value&quot;, or an element of an attribute such as &quot;tarvo.xyz[0]&quot;, is needed.</source>
        <translation>Nötig ist ein Name wie „own.value“ oder ein Element eines Attributs wie „tarvo.xyz[0]“.</translation>
    </message>
    <message>
        <source>A picture for the report could not be written.</source>
        <translation>Ein Bild für den Bericht konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>A point of &quot;%1&quot; has the id of another point: %2</source>
        <translation>Ein Punkt von „%1“ hat die Nummer eines anderen Punkts: %2</translation>
    </message>
    <message>
        <source>A point without an id can&apos;t be inserted.</source>
        <translation>Ein Punkt ohne ID kann nicht eingefügt werden.</translation>
    </message>
    <message>
        <source>A power cut may still undo it.</source>
        <translation>Ein Stromausfall kann es noch ungeschehen machen.</translation>
    </message>
    <message>
        <source>A power cut may still undo the change.
%1</source>
        <translation>Ein Stromausfall kann die Änderung noch rückgängig machen.
%1</translation>
    </message>
    <message>
        <source>A progress or authentication function may ask its database whether it is open, for its UUID, and for the current, the pending and all transactions. The rest has to wait until the call that called back has returned.</source>
        <translation>Eine Fortschritts- oder Authentifizierungsfunktion darf ihre Datenbank fragen, ob sie geöffnet ist, nach ihrer UUID, und nach der aktuellen, der offenen und allen Transaktionen. Alles andere muss warten, bis der Aufruf beendet ist, der die Funktion aufgerufen hat.</translation>
    </message>
    <message>
        <source>A quote in the header line of &quot;%1&quot; is not closed.</source>
        <translation>Ein Anführungszeichen in der Kopfzeile von „%1“ wird nicht geschlossen.</translation>
    </message>
    <message>
        <source>A scale factor of 0 makes every value 0.</source>
        <translation>Ein Skalenfaktor von 0 macht jeden Wert zu 0.</translation>
    </message>
    <message>
        <source>A schema may refer to itself for members and elements only.</source>
        <translation>Ein Schema darf nur für Elemente von Objekten und Arrays auf sich selbst verweisen.</translation>
    </message>
    <message>
        <source>A signature can&apos;t be computed.</source>
        <translation>Eine Signatur kann nicht berechnet werden.</translation>
    </message>
    <message>
        <source>A transaction is pending.</source>
        <translation>Eine Transaktion ist offen.</translation>
    </message>
    <message>
        <source>A transaction&apos;s root</source>
        <translation>Die Wurzel einer Transaktion</translation>
    </message>
    <message>
        <source>A value is missing.</source>
        <translation>Ein Wert fehlt.</translation>
    </message>
    <message>
        <source>A value of %1 bytes is too large to be stored.</source>
        <translation>Ein Wert von %1 Bytes ist zu groß, um gespeichert zu werden.</translation>
    </message>
    <message>
        <source>All columns of &quot;%1&quot; are passed over.</source>
        <translation>Alle Spalten von „%1“ werden übergangen.</translation>
    </message>
    <message>
        <source>All columns of %1 are left out.</source>
        <translation>Alle Spalten von %1 sind weggelassen.</translation>
    </message>
    <message>
        <source>An area is a POLYGON or MULTIPOLYGON in well-known text, such as POLYGON ((0 0, 9 0, 9 9, 0 0)), or a Polygon, MultiPolygon, Feature or FeatureCollection in GeoJSON.</source>
        <translation>Eine Fläche ist ein POLYGON oder MULTIPOLYGON in Well-known Text, etwa POLYGON ((0 0, 9 0, 9 9, 0 0)), oder ein Polygon, MultiPolygon, Feature oder eine FeatureCollection in GeoJSON.</translation>
    </message>
    <message>
        <source>An example</source>
        <translation>Ein Beispiel</translation>
    </message>
    <message>
        <source>An update needs to know which points: &quot;%1&quot; is not bound.</source>
        <translation>Zum Ändern muss bekannt sein, welche Punkte: „%1“ ist nicht gebunden.</translation>
    </message>
    <message>
        <source>Another program has changed the database meanwhile; the clean-up was stopped. Nothing is lost.</source>
        <translation>Ein anderes Programm hat die Datenbank inzwischen geändert; die Bereinigung wurde angehalten. Nichts ist verloren.</translation>
    </message>
    <message>
        <source>Another program has changed the database meanwhile; the transaction can only be rolled back.</source>
        <translation>Ein anderes Programm hat die Datenbank inzwischen geändert; die Transaktion kann nur noch zurückgenommen werden.</translation>
    </message>
    <message>
        <source>Another program is changing the database. Try again when it is done.</source>
        <translation>Ein anderes Programm ändert gerade die Datenbank. Noch einmal versuchen, wenn es fertig ist.</translation>
    </message>
    <message>
        <source>At most %1 bytes are read.</source>
        <translation>Höchstens %1 Bytes werden gelesen.</translation>
    </message>
    <message>
        <source>Average of the valid values, weighted by the points that they stand for; invalid where there is none.</source>
        <translation>Mittelwert der gültigen Werte, gewichtet nach den Punkten, für die sie stehen; ungültig, wo es keinen gibt.</translation>
    </message>
    <message>
        <source>Begin a transaction before changing the database.</source>
        <translation>Eine Transaktion beginnen, bevor die Datenbank geändert wird.</translation>
    </message>
    <message>
        <source>Bind a value or name an attribute first.</source>
        <translation>Zuerst einen Wert binden oder ein Attribut nennen.</translation>
    </message>
    <message>
        <source>Building the levels of detail was cancelled.</source>
        <translation>Das Bilden der Detailstufen wurde abgebrochen.</translation>
    </message>
    <message>
        <source>COLUMN=ATTRIBUTE is needed, for example &quot;column 4=tarvo.intensity&quot;.</source>
        <translation>Nötig ist SPALTE=ATTRIBUT, zum Beispiel „column 4=tarvo.intensity“.</translation>
    </message>
    <message>
        <source>Call it when the call that called back has returned.</source>
        <translation>Sie aufrufen, wenn der Aufruf beendet ist, der die Rückruffunktion aufgerufen hat.</translation>
    </message>
    <message>
        <source>Changing points was cancelled.</source>
        <translation>Das Ändern von Punkten wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Check that its folder exists and is writable.</source>
        <translation>Prüfen, ob es ihren Ordner gibt und er beschreibbar ist.</translation>
    </message>
    <message>
        <source>Checking the value against its schema takes too long.</source>
        <translation>Das Prüfen des Werts gegen sein Schema dauert zu lange.</translation>
    </message>
    <message>
        <source>Choose another name or remove the file first.</source>
        <translation>Einen anderen Namen wählen oder die Datei zuerst entfernen.</translation>
    </message>
    <message>
        <source>Close it first.</source>
        <translation>Sie zuerst schließen.</translation>
    </message>
    <message>
        <source>Columns of coordinates are named &quot;x&quot;, &quot;y&quot; and &quot;z&quot;, in the first line of a text that is no
comment (#). A text without names begins with numbers.
%1</source>
        <translation>Spalten mit Koordinaten heißen „x“, „y“ und „z“, in der ersten Zeile eines Textes, die kein
Kommentar (#) ist. Ein Text ohne Namen beginnt mit Zahlen.
%1</translation>
    </message>
    <message>
        <source>Columns of coordinates are named &quot;x&quot;, &quot;y&quot; and &quot;z&quot;.
%1</source>
        <translation>Spalten mit Koordinaten heißen „x“, „y“ und „z“.
%1</translation>
    </message>
    <message>
        <source>Commit or roll back transaction %1 first.</source>
        <translation>Zuerst Transaktion %1 festschreiben oder zurücknehmen.</translation>
    </message>
    <message>
        <source>Compressing failed.</source>
        <translation>Das Komprimieren ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Container: %1 (code %2)</source>
        <translation>Container: %1 (Code %2)</translation>
    </message>
    <message>
        <source>Convert it to LAS, or to LAZ of today, first.</source>
        <translation>Sie zuerst in LAS oder in heutiges LAZ umwandeln.</translation>
    </message>
    <message>
        <source>Copy it, too, or choose another primary attribute for the copy.</source>
        <translation>Es mit kopieren oder ein anderes Primärattribut für die Kopie wählen.</translation>
    </message>
    <message>
        <source>Copy its points into a new database.</source>
        <translation>Ihre Punkte in eine neue Datenbank kopieren.</translation>
    </message>
    <message>
        <source>Copy the points into a database with larger chunks.</source>
        <translation>Die Punkte in eine Datenbank mit größeren Chunks kopieren.</translation>
    </message>
    <message>
        <source>Copying %1</source>
        <translation>%1 wird kopiert</translation>
    </message>
    <message>
        <source>Decimals are written with one of the two throughout a file.</source>
        <translation>Dezimalstellen werden in einer Datei durchweg mit einem von beiden geschrieben.</translation>
    </message>
    <message>
        <source>Did you mean &quot;%1&quot;?</source>
        <translation>Ist „%1“ gemeint?</translation>
    </message>
    <message>
        <source>Each of them needs a name; &quot;-&quot; passes one over.</source>
        <translation>Jede davon braucht einen Namen; „-“ übergeht eine.</translation>
    </message>
    <message>
        <source>Elements from number %1 on are dropped.</source>
        <translation>Elemente ab Nummer %1 fallen weg.</translation>
    </message>
    <message>
        <source>Expected %1 at position %2, found &quot;%3&quot;.</source>
        <translation>Erwartet wird %1 an Position %2, gefunden wurde „%3“.</translation>
    </message>
    <message>
        <source>Expected %1 at position %2, found the end.</source>
        <translation>Erwartet wird %1 an Position %2, wo der Text endet.</translation>
    </message>
    <message>
        <source>Expected %1.</source>
        <translation>Erwartet wird %1.</translation>
    </message>
    <message>
        <source>Expected an operator after the number %1 at position %2, found &quot;%3&quot;.</source>
        <translation>Erwartet wird ein Operator nach der Zahl %1 an Position %2, gefunden wurde „%3“.</translation>
    </message>
    <message>
        <source>Export to csv or ply instead.</source>
        <translation>Stattdessen nach csv oder ply exportieren.</translation>
    </message>
    <message>
        <source>Exporting %1</source>
        <translation>%1 wird exportiert</translation>
    </message>
    <message>
        <source>Failed to connect to a new process.</source>
        <translation>Die Verbindung zu einem neuen Prozess konnte nicht hergestellt werden.</translation>
    </message>
    <message>
        <source>Failed to convert field &quot;%1&quot; from %2 to %3</source>
        <translation>Das Feld „%1“ (%2) kann nicht in %3 umgewandelt werden</translation>
    </message>
    <message>
        <source>Failed to free QRB library.</source>
        <translation>Die QRB-Bibliothek konnte nicht entladen werden.</translation>
    </message>
    <message>
        <source>Failed to keep standard input in a temporary file.</source>
        <translation>Die Standardeingabe konnte nicht in einer temporären Datei aufbewahrt werden.</translation>
    </message>
    <message>
        <source>Failed to load QRB function &quot;%1()&quot;.</source>
        <translation>Die QRB-Funktion „%1()“ konnte nicht geladen werden.</translation>
    </message>
    <message>
        <source>Failed to load QRB library.</source>
        <translation>Die QRB-Bibliothek konnte nicht geladen werden.</translation>
    </message>
    <message>
        <source>Failed to make a temporary folder in &quot;%1&quot;.</source>
        <translation>In „%1“ konnte kein temporärer Ordner angelegt werden.</translation>
    </message>
    <message>
        <source>Failed to open &quot;%1&quot;: %2.</source>
        <translation>„%1“ konnte nicht geöffnet werden: %2.</translation>
    </message>
    <message>
        <source>Failed to parse</source>
        <translation>Nicht lesbar</translation>
    </message>
    <message>
        <source>Failed to parse JSON string: %1 Position: %2</source>
        <translation>Der JSON-Text ist nicht lesbar: %1 Position: %2</translation>
    </message>
    <message>
        <source>Failed to read &quot;%1&quot; at byte %2: %3.</source>
        <translation>„%1“ konnte bei Byte %2 nicht gelesen werden: %3.</translation>
    </message>
    <message>
        <source>Failed to read &quot;%1&quot; at byte %2: it became shorter.</source>
        <translation>„%1“ konnte bei Byte %2 nicht gelesen werden: die Datei wurde kürzer.</translation>
    </message>
    <message>
        <source>Failed to read &quot;%1&quot;.</source>
        <translation>„%1“ konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Failed to read &quot;%1&quot;: %2.</source>
        <translation>„%1“ konnte nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>Failed to read standard input.</source>
        <translation>Die Standardeingabe konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Failed to start &quot;%1&quot;.</source>
        <translation>„%1“ konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>Failed to write &quot;%1&quot;.</source>
        <translation>„%1“ konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>Failed to write the LAS file: %1.</source>
        <translation>Die LAS-Datei konnte nicht geschrieben werden: %1.</translation>
    </message>
    <message>
        <source>Failed to write the LAZ file: %1.</source>
        <translation>Die LAZ-Datei konnte nicht geschrieben werden: %1.</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>Datei: %1</translation>
    </message>
    <message>
        <source>File: %1
Another program changed its journal mode.</source>
        <translation>Datei: %1
Ein anderes Programm hat ihren Journalmodus geändert.</translation>
    </message>
    <message>
        <source>File: %1
Close it and open it anew.</source>
        <translation>Datei: %1
Sie schließen und neu öffnen.</translation>
    </message>
    <message>
        <source>File: %1
Copy its points into a new database.</source>
        <translation>Datei: %1
Ihre Punkte in eine neue Datenbank kopieren.</translation>
    </message>
    <message>
        <source>File: %1
Its tables are not those of the format.</source>
        <translation>Datei: %1
Ihre Tabellen sind nicht die des Formats.</translation>
    </message>
    <message>
        <source>File: %1
List its transactions, and open one of these. A transaction that was discarded does not come back.</source>
        <translation>Datei: %1
Ihre Transaktionen auflisten und eine davon öffnen. Eine gelöschte Transaktion kommt nicht wieder.</translation>
    </message>
    <message>
        <source>File: %1
Open it under that name first, which repairs it.</source>
        <translation>Datei: %1
Sie zuerst unter jenem Namen öffnen; das repariert sie.</translation>
    </message>
    <message>
        <source>File: %1
Open it with a later library.</source>
        <translation>Datei: %1
Sie mit einer neueren Bibliothek öffnen.</translation>
    </message>
    <message>
        <source>File: %1
Restore it from a backup.</source>
        <translation>Datei: %1
Sie aus einer Sicherung wiederherstellen.</translation>
    </message>
    <message>
        <source>File: %1
The transaction is still pending.</source>
        <translation>Datei: %1
Die Transaktion ist noch offen.</translation>
    </message>
    <message>
        <source>File: %1
What it held can still be read. Put it back under this name to change it, or open anew what stands there now.</source>
        <translation>Datei: %1
Was sie enthielt, kann noch gelesen werden. Sie unter diesem Namen zurückstellen, um sie zu ändern, oder neu öffnen, was jetzt dort liegt.</translation>
    </message>
    <message>
        <source>File: %1, blob %2</source>
        <translation>Datei: %1, Blob %2</translation>
    </message>
    <message>
        <source>Fill it with one value first, or choose another storage class.</source>
        <translation>Es zuerst mit einem einzigen Wert füllen oder eine andere Speicherklasse wählen.</translation>
    </message>
    <message>
        <source>Folder: %1</source>
        <translation>Ordner: %1</translation>
    </message>
    <message>
        <source>Found &quot;%1&quot; at position %2: write &quot;%3&quot;.</source>
        <translation>„%1“ an Position %2 gefunden: „%3“ schreiben.</translation>
    </message>
    <message>
        <source>Found %1.</source>
        <translation>Gefunden wurde: %1.</translation>
    </message>
    <message>
        <source>Found a second comparison at position %1: join comparisons with &quot;&amp;&amp;&quot;, as in &quot;1 &lt; a &amp;&amp; a &lt; 5&quot;.</source>
        <translation>Zweiter Vergleich an Position %1: Vergleiche mit „&amp;&amp;“ verbinden, etwa „1 &lt; a &amp;&amp; a &lt; 5“.</translation>
    </message>
    <message>
        <source>GeoTIFF key %1</source>
        <translation>GeoTIFF-Schlüssel %1</translation>
    </message>
    <message>
        <source>GeoTIFF keys from number %1 on</source>
        <translation>GeoTIFF-Schlüssel ab Nummer %1</translation>
    </message>
    <message>
        <source>GeoTIFF keys that name neither a system nor a unit</source>
        <translation>GeoTIFF-Schlüssel, die weder ein System noch eine Einheit nennen</translation>
    </message>
    <message>
        <source>Give --by ATTRIBUTE.</source>
        <translation>--by ATTRIBUT angeben.</translation>
    </message>
    <message>
        <source>Give --format csv if it holds comma-separated values.</source>
        <translation>--format csv angeben, wenn sie durch Kommas getrennte Werte enthält.</translation>
    </message>
    <message>
        <source>Give --scale, for example --scale 0.001, to round coordinates to it.</source>
        <translation>--scale angeben, zum Beispiel --scale 0.001, um Koordinaten darauf zu runden.</translation>
    </message>
    <message>
        <source>Give another name.</source>
        <translation>Einen anderen Namen angeben.</translation>
    </message>
    <message>
        <source>Give it another name.</source>
        <translation>Einen anderen Namen vergeben.</translation>
    </message>
    <message>
        <source>Give one of them another name.</source>
        <translation>Einem davon einen anderen Namen geben.</translation>
    </message>
    <message>
        <source>Give the JSON schema to check it against.</source>
        <translation>Das JSON-Schema angeben, gegen das geprüft werden soll.</translation>
    </message>
    <message>
        <source>Give the attribute a name.</source>
        <translation>Dem Attribut einen Namen geben.</translation>
    </message>
    <message>
        <source>Give the distance of two neighbouring values, or 0 for floating-point numbers.</source>
        <translation>Den Abstand zweier benachbarter Werte angeben, oder 0 für Gleitkommazahlen.</translation>
    </message>
    <message>
        <source>Give the name of a file in it.</source>
        <translation>Den Namen einer Datei darin angeben.</translation>
    </message>
    <message>
        <source>Give the name of a file.</source>
        <translation>Den Namen einer Datei angeben.</translation>
    </message>
    <message>
        <source>Give the output another name.</source>
        <translation>Der Ausgabe einen anderen Namen geben.</translation>
    </message>
    <message>
        <source>Ids are unique: update the point, or give the new one another id.</source>
        <translation>IDs sind eindeutig: den Punkt ändern oder dem neuen eine andere ID geben.</translation>
    </message>
    <message>
        <source>Ids are whole numbers from 0 to 18446744073709551615, without point and exponent.</source>
        <translation>Nummern sind ganze Zahlen von 0 bis 18446744073709551615, ohne Punkt und Exponenten.</translation>
    </message>
    <message>
        <source>Ids are whole numbers from 0 to 18446744073709551615.</source>
        <translation>Nummern sind ganze Zahlen von 0 bis 18446744073709551615.</translation>
    </message>
    <message>
        <source>Import files of different scales or far offsets one by one.</source>
        <translation>Dateien mit verschiedenen Skalen oder weit auseinanderliegendem Versatz einzeln importieren.</translation>
    </message>
    <message>
        <source>Importing %1</source>
        <translation>%1 wird importiert</translation>
    </message>
    <message>
        <source>Inserting points was cancelled.</source>
        <translation>Das Einfügen von Punkten wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Install Python 3.9 or later, or name it as the interpreter of plugins.</source>
        <translation>Python ab Version 3.9 installieren oder als Interpreter der Plugins nennen.</translation>
    </message>
    <message>
        <source>Invalid input</source>
        <translation>Ungültige Eingabe</translation>
    </message>
    <message>
        <source>Is there room on the disk of temporary files?</source>
        <translation>Ist auf dem Datenträger der temporären Dateien noch Platz?</translation>
    </message>
    <message>
        <source>It became shorter.</source>
        <translation>Die Datei wurde kürzer.</translation>
    </message>
    <message>
        <source>It can&apos;t be kept from others there.</source>
        <translation>Die Datei kann dort nicht vor anderen verborgen werden.</translation>
    </message>
    <message>
        <source>It can&apos;t be opened.</source>
        <translation>Die Datei kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>It is %1.</source>
        <translation>Gegeben ist %1.</translation>
    </message>
    <message>
        <source>It is %1....</source>
        <translation>Gegeben ist %1....</translation>
    </message>
    <message>
        <source>It is a handle of another kind.</source>
        <translation>Es ist ein Handle anderer Art.</translation>
    </message>
    <message>
        <source>It is left as it is. Give another name.</source>
        <translation>Sie bleibt, wie sie ist. Einen anderen Namen angeben.</translation>
    </message>
    <message>
        <source>It is write-protected.</source>
        <translation>Die Datei ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>It may have %1 MiB in all.</source>
        <translation>Es darf insgesamt %1 MiB haben.</translation>
    </message>
    <message>
        <source>It may have %1 files.</source>
        <translation>Es darf %1 Dateien haben.</translation>
    </message>
    <message>
        <source>It opened transaction %1 instead. Load a library that can, or make transaction %2 the current one.</source>
        <translation>Stattdessen hat sie Transaktion %1 geöffnet. Eine Bibliothek laden, die es kann, oder Transaktion %2 zur aktuellen machen.</translation>
    </message>
    <message>
        <source>It should begin with the comment &quot;# /// plugin&quot;.</source>
        <translation>Es sollte mit dem Kommentar „# /// plugin“ beginnen.</translation>
    </message>
    <message>
        <source>It was deleted already, or is no handle of this library.</source>
        <translation>Es wurde schon gelöscht oder ist kein Handle dieser Bibliothek.</translation>
    </message>
    <message>
        <source>It would have %1 bytes of at most %2.</source>
        <translation>Es wären %1 Bytes von höchstens %2.</translation>
    </message>
    <message>
        <source>Its byte number %1, 0x%2, is part of no character.</source>
        <translation>Byte Nummer %1, 0x%2, ist nicht Teil eines Zeichens.</translation>
    </message>
    <message>
        <source>Its definition has no invalid value.</source>
        <translation>Seine Definition hat keinen Ungültigwert.</translation>
    </message>
    <message>
        <source>Its folder must be there, and writable.</source>
        <translation>Ihr Ordner muss da und beschreibbar sein.</translation>
    </message>
    <message>
        <source>Its invalid value is %1.</source>
        <translation>Sein Ungültigwert ist %1.</translation>
    </message>
    <message>
        <source>Its lock did not keep the other program out: are both on one machine?</source>
        <translation>Ihre Sperre hat das andere Programm nicht abgehalten: laufen beide auf einem Rechner?</translation>
    </message>
    <message>
        <source>Its points were not written.</source>
        <translation>Ihre Punkte wurden nicht geschrieben.</translation>
    </message>
    <message>
        <source>Its range is %1 to %2 with a resolution of %3.</source>
        <translation>Der Wertebereich ist %1 bis %2 mit einer Auflösung von %3.</translation>
    </message>
    <message>
        <source>Its range must hold exactly a minimum and a maximum.</source>
        <translation>Sein Wertebereich darf genau ein Minimum und ein Maximum enthalten.</translation>
    </message>
    <message>
        <source>Its storage class is constant. Change the class to variable, or fill the attribute of all points.</source>
        <translation>Seine Speicherklasse ist constant. Die Klasse auf variable ändern oder das Attribut bei allen Punkten füllen.</translation>
    </message>
    <message>
        <source>Its transaction was rolled back. Open the database again and make a new query.</source>
        <translation>Ihre Transaktion wurde zurückgenommen. Die Datenbank neu öffnen und eine neue Abfrage anlegen.</translation>
    </message>
    <message>
        <source>Its values and its invalid value go from %1 to %2; INT64 holds -9223372036854775808 to 9223372036854775807, UINT64 0 to 18446744073709551615. Choose another invalid value, or narrow the range.</source>
        <translation>Seine Werte und sein Ungültigwert reichen von %1 bis %2; INT64 fasst -9223372036854775808 bis 9223372036854775807, UINT64 0 bis 18446744073709551615. Einen anderen Ungültigwert wählen oder den Wertebereich verkleinern.</translation>
    </message>
    <message>
        <source>JSON object expected</source>
        <translation>Ein JSON-Objekt wird erwartet</translation>
    </message>
    <message>
        <source>JSON object or JSON string expected</source>
        <translation>Ein JSON-Objekt oder eine JSON-Zeichenkette wird erwartet</translation>
    </message>
    <message>
        <source>Keep a long text as a metadata item.</source>
        <translation>Einen langen Text als Metadateneintrag aufbewahren.</translation>
    </message>
    <message>
        <source>Largest of the valid values.</source>
        <translation>Größter der gültigen Werte.</translation>
    </message>
    <message>
        <source>Leave --bounds, --polygon and --thin out.</source>
        <translation>--bounds, --polygon und --thin weglassen.</translation>
    </message>
    <message>
        <source>Leave --keep-ids out to number the points anew.</source>
        <translation>--keep-ids weglassen, um die Punkte neu zu nummerieren.</translation>
    </message>
    <message>
        <source>Leave columns out of the file, or make them elements of one attribute: &quot;a[0]&quot;, &quot;a[1]&quot;.</source>
        <translation>Spalten aus der Datei weglassen oder sie zu Elementen eines Attributs machen: „a[0]“, „a[1]“.</translation>
    </message>
    <message>
        <source>Leave one of them out, or give it another attribute.</source>
        <translation>Eine davon weglassen oder ihr ein anderes Attribut geben.</translation>
    </message>
    <message>
        <source>Leave some of them out.</source>
        <translation>Einige davon weglassen.</translation>
    </message>
    <message>
        <source>Leave them out by a filter.</source>
        <translation>Sie mit einem Filter weglassen.</translation>
    </message>
    <message>
        <source>Line %1 of &quot;%2&quot;</source>
        <translation>Zeile %1 von „%2“</translation>
    </message>
    <message>
        <source>Line %1 of &quot;%2&quot; is too long.</source>
        <translation>Zeile %1 von „%2“ ist zu lang.</translation>
    </message>
    <message>
        <source>Line %1 of &quot;%2&quot;: &quot;%3&quot; in the column &quot;%4&quot; is not a number.</source>
        <translation>Zeile %1 von „%2“: „%3“ in der Spalte „%4“ ist keine Zahl.</translation>
    </message>
    <message>
        <source>Line %1 of &quot;%2&quot;: %3 in the column &quot;%4&quot; would become %5.</source>
        <translation>Zeile %1 von „%2“: aus %3 in der Spalte „%4“ würde %5.</translation>
    </message>
    <message>
        <source>Lines of numbers are needed: x, y, z and others.</source>
        <translation>Nötig sind Zeilen aus Zahlen: x, y, z und andere.</translation>
    </message>
    <message>
        <source>Lock: %1</source>
        <translation>Sperre: %1</translation>
    </message>
    <message>
        <source>Lock: %1, process %2</source>
        <translation>Sperre: %1, Prozess %2</translation>
    </message>
    <message>
        <source>Lock: %1: %2</source>
        <translation>Sperre: %1: %2</translation>
    </message>
    <message>
        <source>Looking at %1</source>
        <translation>%1 wird durchgesehen</translation>
    </message>
    <message>
        <source>Make a new one.</source>
        <translation>Eine neue anlegen.</translation>
    </message>
    <message>
        <source>Make a new query in the new transaction.</source>
        <translation>In der neuen Transaktion eine neue Abfrage anlegen.</translation>
    </message>
    <message>
        <source>Make a new query.</source>
        <translation>Eine neue Abfrage anlegen.</translation>
    </message>
    <message>
        <source>Make the folder, or give the name of a file in another one.</source>
        <translation>Den Ordner anlegen oder den Namen einer Datei in einem anderen angeben.</translation>
    </message>
    <message>
        <source>Make the schema simpler or the value smaller.</source>
        <translation>Das Schema vereinfachen oder den Wert verkleinern.</translation>
    </message>
    <message>
        <source>Metadata items</source>
        <translation>Metadateneinträge</translation>
    </message>
    <message>
        <source>Minimum is greater than maximum.</source>
        <translation>Das Minimum ist größer als das Maximum.</translation>
    </message>
    <message>
        <source>More than %1 points keep the distance.</source>
        <translation>Mehr als %1 Punkte halten den Abstand ein.</translation>
    </message>
    <message>
        <source>Most frequent value for enumerations and booleans, the first one for the point id, else the average.</source>
        <translation>Häufigster Wert bei Aufzählungen und Wahrheitswerten, der erste bei der Punkt-ID, sonst der Mittelwert.</translation>
    </message>
    <message>
        <source>Most frequent value; of equally frequent ones the smallest.</source>
        <translation>Häufigster Wert; von gleich häufigen der kleinste.</translation>
    </message>
    <message>
        <source>Name a Python 3.9 or later as the interpreter of plugins.</source>
        <translation>Ein Python ab Version 3.9 als Interpreter der Plugins nennen.</translation>
    </message>
    <message>
        <source>Name a file.</source>
        <translation>Eine Datei nennen.</translation>
    </message>
    <message>
        <source>Name a larger size.</source>
        <translation>Eine größere Kantenlänge nennen.</translation>
    </message>
    <message>
        <source>Name another attribute.</source>
        <translation>Ein anderes Attribut nennen.</translation>
    </message>
    <message>
        <source>Name another database first.</source>
        <translation>Eine andere Datenbank zuerst nennen.</translation>
    </message>
    <message>
        <source>Name another primary attribute.</source>
        <translation>Ein anderes Primärattribut nennen.</translation>
    </message>
    <message>
        <source>Name one that has one value for each point.</source>
        <translation>Eines nennen, das für jeden Punkt einen Wert hat.</translation>
    </message>
    <message>
        <source>Name the attribute that the column goes to by itself: %1 or %2.</source>
        <translation>Das Attribut nennen, in das die Spalte von selbst geht: %1 oder %2.</translation>
    </message>
    <message>
        <source>Names of columns are given to texts without a header line.</source>
        <translation>Namen von Spalten werden Texten ohne Kopfzeile gegeben.</translation>
    </message>
    <message>
        <source>Neither XDG_CONFIG_HOME nor HOME is set.</source>
        <translation>Weder XDG_CONFIG_HOME noch HOME ist gesetzt.</translation>
    </message>
    <message>
        <source>Neither database has a point attribute &quot;%1&quot;.</source>
        <translation>Keine der beiden Datenbanken hat ein Punktattribut „%1“.</translation>
    </message>
    <message>
        <source>New elements have the default value.</source>
        <translation>Neue Elemente haben die Vorgabe.</translation>
    </message>
    <message>
        <source>No %1 is told by %2: taken as &quot;%3&quot;.</source>
        <translation>%2 nennt nichts (%1): angenommen wird „%3“.</translation>
    </message>
    <message>
        <source>No JSON: %1 At byte %2.</source>
        <translation>Kein JSON: %1 Bei Byte %2.</translation>
    </message>
    <message>
        <source>No buffer was given for &quot;%1&quot;.</source>
        <translation>Für „%1“ wurde kein Puffer angegeben.</translation>
    </message>
    <message>
        <source>No data type holds the range and the invalid value together: choose another invalid value, or narrow the range.</source>
        <translation>Kein Datentyp fasst den Wertebereich zusammen mit dem Ungültigwert: einen anderen Ungültigwert wählen oder den Wertebereich verkleinern.</translation>
    </message>
    <message>
        <source>No database is open.</source>
        <translation>Keine Datenbank ist geöffnet.</translation>
    </message>
    <message>
        <source>No differences. Points were not compared.</source>
        <translation>Keine Unterschiede. Punkte wurden nicht verglichen.</translation>
    </message>
    <message>
        <source>No differences: %1 point compared.</source>
        <translation>Keine Unterschiede: %1 Punkt verglichen.</translation>
    </message>
    <message>
        <source>No differences: %1 points compared.</source>
        <translation>Keine Unterschiede: %1 Punkte verglichen.</translation>
    </message>
    <message>
        <source>No file has the attribute &quot;%1&quot; to leave out.</source>
        <translation>Keine Datei hat das wegzulassende Attribut „%1“.</translation>
    </message>
    <message>
        <source>No file has the column %1.</source>
        <translation>Keine Datei hat die Spalte %1.</translation>
    </message>
    <message>
        <source>No transaction is pending.</source>
        <translation>Keine Transaktion ist offen.</translation>
    </message>
    <message>
        <source>Node %1 holds no value of &quot;%2&quot;.</source>
        <translation>Der Knoten %1 enthält keinen Wert von „%2“.</translation>
    </message>
    <message>
        <source>None of the databases has a point attribute &quot;%1&quot;.</source>
        <translation>Keine der Datenbanken hat ein Punktattribut „%1“.</translation>
    </message>
    <message>
        <source>Nothing was changed by it.</source>
        <translation>Er hat nichts geändert.</translation>
    </message>
    <message>
        <source>Numbers are written with a point before the decimals, for example 12.5.</source>
        <translation>Zahlen werden mit einem Punkt vor den Dezimalstellen geschrieben, zum Beispiel 12.5.</translation>
    </message>
    <message>
        <source>One of the two columns has to be renamed or taken out.</source>
        <translation>Eine der beiden Spalten muss umbenannt oder herausgenommen werden.</translation>
    </message>
    <message>
        <source>Only databases are replaced. Give another name, or remove the file by hand if that is meant.</source>
        <translation>Nur Datenbanken werden ersetzt. Einen anderen Namen angeben oder die Datei von Hand entfernen, wenn das gemeint ist.</translation>
    </message>
    <message>
        <source>Only references within the schema (&quot;#/definitions/NAME&quot;) are followed; nothing is loaded from files or the network.</source>
        <translation>Nur Verweisen innerhalb des Schemas („#/definitions/NAME“) wird gefolgt; nichts wird aus Dateien oder dem Netz geladen.</translation>
    </message>
    <message>
        <source>Open it again without that setting.</source>
        <translation>Sie ohne diese Einstellung neu öffnen.</translation>
    </message>
    <message>
        <source>Open it without naming a transaction.</source>
        <translation>Sie öffnen, ohne eine Transaktion zu nennen.</translation>
    </message>
    <message>
        <source>Other programs keep reading the database, so that it can&apos;t be written now. Try again when they are done.</source>
        <translation>Andere Programme lesen die Datenbank fortwährend, so dass sie jetzt nicht geschrieben werden kann. Noch einmal versuchen, wenn sie fertig sind.</translation>
    </message>
    <message>
        <source>Out of memory.</source>
        <translation>Der Arbeitsspeicher reicht nicht.</translation>
    </message>
    <message>
        <source>Parameter %1</source>
        <translation>Parameter %1</translation>
    </message>
    <message>
        <source>Plugins are looked for in it.</source>
        <translation>Darin werden Plugins gesucht.</translation>
    </message>
    <message>
        <source>Point attributes</source>
        <translation>Punktattribute</translation>
    </message>
    <message>
        <source>Points (%1 -&gt; %2)</source>
        <translation>Punkte (%1 -&gt; %2)</translation>
    </message>
    <message>
        <source>Points are compared by their ids. &quot;qrbtool check&quot; looks for damage.</source>
        <translation>Punkte werden nach ihren Nummern verglichen. „qrbtool check“ sucht nach Schäden.</translation>
    </message>
    <message>
        <source>Points are found by these values, which can&apos;t be one for all: choose variable or dynamic.</source>
        <translation>Über diese Werte werden Punkte gefunden, daher können sie nicht für alle gleich sein: „variable“ oder „dynamic“ wählen.</translation>
    </message>
    <message>
        <source>Points are found by these values, which can&apos;t be one for all: they are stored as variable.</source>
        <translation>Über diese Werte werden Punkte gefunden, daher können sie nicht für alle gleich sein: sie werden als „variable“ gespeichert.</translation>
    </message>
    <message>
        <source>Points are found by these values: length, range, resolution and invalid value can&apos;t change.</source>
        <translation>Über diese Werte werden Punkte gefunden: Länge, Wertebereich, Auflösung und Ungültigwert können nicht geändert werden.</translation>
    </message>
    <message>
        <source>Points are read from LAS, LAZ, PLY, PTX and E57 files and from texts of numbers.</source>
        <translation>Punkte werden aus LAS-, LAZ-, PLY-, PTX- und E57-Dateien und aus Texten aus Zahlen gelesen.</translation>
    </message>
    <message>
        <source>Points are read from ordinary files only.</source>
        <translation>Punkte werden nur aus gewöhnlichen Dateien gelesen.</translation>
    </message>
    <message>
        <source>Points are read from ordinary files, and from &quot;-&quot;.</source>
        <translation>Punkte werden aus gewöhnlichen Dateien gelesen, und aus „-“.</translation>
    </message>
    <message>
        <source>Points can&apos;t be sorted: writing a temporary file failed. Free some space and try again; nothing that was committed is lost.</source>
        <translation>Die Punkte können nicht sortiert werden: das Schreiben einer temporären Datei ist fehlgeschlagen. Platz schaffen und noch einmal versuchen; nichts Festgeschriebenes ist verloren.</translation>
    </message>
    <message>
        <source>Points were added, moved or removed since this query was made.</source>
        <translation>Punkte wurden hinzugefügt, verschoben oder entfernt, seit diese Abfrage angelegt wurde.</translation>
    </message>
    <message>
        <source>Points were lost when memory ran out; the transaction can only be rolled back.</source>
        <translation>Punkte gingen verloren, als der Arbeitsspeicher nicht mehr reichte; die Transaktion kann nur noch zurückgenommen werden.</translation>
    </message>
    <message>
        <source>Points were not compared.</source>
        <translation>Punkte wurden nicht verglichen.</translation>
    </message>
    <message>
        <source>Points: no differences (%1).</source>
        <translation>Punkte: keine Unterschiede (%1).</translation>
    </message>
    <message>
        <source>Possible only where all points have the same value.</source>
        <translation>Nur möglich, wo alle Punkte denselben Wert haben.</translation>
    </message>
    <message>
        <source>Read it as DOUBLE or as the attribute&apos;s own data type.</source>
        <translation>Ihn als DOUBLE oder als den Datentyp des Attributs lesen.</translation>
    </message>
    <message>
        <source>Read the ids with a select, or create the database without optimized ids.</source>
        <translation>Die IDs mit einer Abfrage zum Auswählen lesen oder die Datenbank ohne optimierte IDs anlegen.</translation>
    </message>
    <message>
        <source>Reading or writing the file failed. What was committed is safe; check the disk.</source>
        <translation>Das Lesen oder Schreiben der Datei ist fehlgeschlagen. Was festgeschrieben wurde, ist sicher; den Datenträger prüfen.</translation>
    </message>
    <message>
        <source>Remove it by hand.</source>
        <translation>Die Datei von Hand entfernen.</translation>
    </message>
    <message>
        <source>Remove these points from the file.</source>
        <translation>Diese Punkte aus der Datei entfernen.</translation>
    </message>
    <message>
        <source>Remove these points from the input files.</source>
        <translation>Diese Punkte aus den Eingabedateien entfernen.</translation>
    </message>
    <message>
        <source>Restore the file from a backup, or copy its points into a new database.</source>
        <translation>Die Datei aus einer Sicherung wiederherstellen, oder ihre Punkte in eine neue Datenbank kopieren.</translation>
    </message>
    <message>
        <source>Save it with the line ends of Unix or Windows.</source>
        <translation>Ihn mit den Zeilenenden von Unix oder Windows speichern.</translation>
    </message>
    <message>
        <source>Save the text in UTF-8 or ASCII.</source>
        <translation>Den Text in UTF-8 oder ASCII speichern.</translation>
    </message>
    <message>
        <source>Save them from the program that wrote them as E57 without a codec, or in another format.</source>
        <translation>Sie mit dem Programm, das sie geschrieben hat, als E57 ohne Codec oder in einem anderen Format speichern.</translation>
    </message>
    <message>
        <source>Signature method 1 needs a key of at least one byte.</source>
        <translation>Die Signaturmethode 1 braucht einen Schlüssel von mindestens einem Byte.</translation>
    </message>
    <message>
        <source>Signature method 2 needs one: set it on the context first.</source>
        <translation>Die Signaturmethode 2 braucht eine: sie zuerst im Kontext setzen.</translation>
    </message>
    <message>
        <source>Smallest of the valid values.</source>
        <translation>Kleinster der gültigen Werte.</translation>
    </message>
    <message>
        <source>Some points have no %1, which a LAS file can&apos;t say.</source>
        <translation>Einige Punkte haben keinen Wert von %1, was eine LAS-Datei nicht ausdrücken kann.</translation>
    </message>
    <message>
        <source>Some points have no value of the primary attribute &quot;%1&quot;.</source>
        <translation>Einige Punkte haben keinen Wert des Primärattributs „%1“.</translation>
    </message>
    <message>
        <source>Some points lie at no place that tiles of that size could hold.</source>
        <translation>Einige Punkte liegen an keinem Ort, den Kacheln dieser Größe fassen könnten.</translation>
    </message>
    <message>
        <source>Some points of &quot;%1&quot; have no value of &quot;%2&quot;.</source>
        <translation>Einige Punkte von „%1“ haben keinen Wert von „%2“.</translation>
    </message>
    <message>
        <source>Start again: a new query reads the current state.</source>
        <translation>Neu beginnen: eine neue Abfrage liest den aktuellen Stand.</translation>
    </message>
    <message>
        <source>Stored values are converted; those outside the new range become invalid.</source>
        <translation>Gespeicherte Werte werden umgewandelt; solche außerhalb des neuen Wertebereichs werden ungültig.</translation>
    </message>
    <message>
        <source>Stored values are converted; those outside the new range become the default value.</source>
        <translation>Gespeicherte Werte werden umgewandelt; solche außerhalb des neuen Wertebereichs erhalten den Vorgabewert.</translation>
    </message>
    <message>
        <source>TRACE, DEBUG, INFO, WARNING, ERROR and OFF are.</source>
        <translation>Möglich sind TRACE, DEBUG, INFO, WARNING, ERROR und OFF.</translation>
    </message>
    <message>
        <source>Take its locks away first.</source>
        <translation>Zuerst seine Sperren aufheben.</translation>
    </message>
    <message>
        <source>Take out the points that lie farthest, or coordinates of needless digits.</source>
        <translation>Die am weitesten entfernten Punkte herausnehmen, oder Koordinaten mit unnötigen Ziffern.</translation>
    </message>
    <message>
        <source>The %1 %2 is not possible: %3.</source>
        <translation>%1 %2 ist nicht möglich: %3.</translation>
    </message>
    <message>
        <source>The %1 file &quot;%2&quot; can&apos;t be read: %3.</source>
        <translation>Die %1-Datei „%2“ kann nicht gelesen werden: %3.</translation>
    </message>
    <message>
        <source>The %1 file &quot;%2&quot; has version %3.%4.</source>
        <translation>Die %1-Datei „%2“ hat Version %3.%4.</translation>
    </message>
    <message>
        <source>The %1 of the point attribute &quot;%2&quot;</source>
        <translation>Die Angabe „%1“ des Punktattributs „%2“</translation>
    </message>
    <message>
        <source>The %1s of %2 and %3 differ: %4.</source>
        <translation>Verschieden in %2 und %3: %1 (%4).</translation>
    </message>
    <message>
        <source>The JSON schema</source>
        <translation>Das JSON-Schema</translation>
    </message>
    <message>
        <source>The JSON schema is not valid at &quot;%1&quot;: %2</source>
        <translation>Das JSON-Schema ist bei „%1“ ungültig: %2</translation>
    </message>
    <message>
        <source>The JSON schema is not valid at &quot;/&quot;: %1</source>
        <translation>Das JSON-Schema ist bei „/“ nicht gültig: %1</translation>
    </message>
    <message>
        <source>The JSON text nests more than %1 levels.</source>
        <translation>Der JSON-Text ist über mehr als %1 Ebenen verschachtelt.</translation>
    </message>
    <message>
        <source>The LAZ file &quot;%1&quot; %2.</source>
        <translation>Die LAZ-Datei „%1“ %2.</translation>
    </message>
    <message>
        <source>The agent</source>
        <translation>Das Programm</translation>
    </message>
    <message>
        <source>The area in %1 can&apos;t be read: %2.</source>
        <translation>Die Fläche in %1 kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>The area in %1 is too large.</source>
        <translation>Die Fläche in %1 ist zu groß.</translation>
    </message>
    <message>
        <source>The argument &quot;%1&quot; is missing.</source>
        <translation>Das Argument „%1“ fehlt.</translation>
    </message>
    <message>
        <source>The argument &quot;%1&quot; is not %2.</source>
        <translation>Das Argument „%1“ ist falsch: erwartet wird %2.</translation>
    </message>
    <message>
        <source>The attribute &quot;%1&quot; %2</source>
        <translation>Das Attribut „%1“ %2</translation>
    </message>
    <message>
        <source>The attribute &quot;%1&quot; at position %2 has %3 elements: write &quot;%4[0]&quot; to &quot;%5[%6]&quot;.</source>
        <translation>Das Attribut „%1“ an Position %2 hat %3 Elemente: „%4[0]“ bis „%5[%6]“ schreiben.</translation>
    </message>
    <message>
        <source>The attribute &quot;%1&quot; at position %2 has no elements.</source>
        <translation>Das Attribut „%1“ an Position %2 hat keine Elemente.</translation>
    </message>
    <message>
        <source>The attribute &quot;%1&quot; can&apos;t hold %2 of the values, for example %3: %4</source>
        <translation>Das Attribut „%1“ kann %2 der Werte nicht fassen, zum Beispiel %3: %4</translation>
    </message>
    <message>
        <source>The attribute &quot;%1&quot; can&apos;t hold NaN (not a number).</source>
        <translation>Das Attribut „%1“ kann NaN (keine Zahl) nicht aufnehmen.</translation>
    </message>
    <message>
        <source>The attribute &quot;%1&quot; has %2 elements.</source>
        <translation>Das Attribut „%1“ hat %2 Elemente.</translation>
    </message>
    <message>
        <source>The attribute &quot;%1&quot; has %2 in &quot;%3&quot; and %4 in &quot;%5&quot;.</source>
        <translation>Das Attribut „%1“ hat in „%3“ %2 und in „%5“ %4.</translation>
    </message>
    <message>
        <source>The attribute &quot;%1&quot; has no element %2 (position %3): it has %4 element.</source>
        <translation>Das Attribut „%1“ hat kein Element %2 (Position %3): es hat %4 Element.</translation>
    </message>
    <message>
        <source>The attribute &quot;%1&quot; has no element %2 (position %3): it has %4 elements, counted from 0.</source>
        <translation>Das Attribut „%1“ hat kein Element %2 (Position %3): es hat %4 Elemente, gezählt ab 0.</translation>
    </message>
    <message>
        <source>The attribute &quot;%1&quot; has whole numbers that no data type can hold together.</source>
        <translation>Das Attribut „%1“ hat ganze Zahlen, die kein Datentyp zusammen fassen kann.</translation>
    </message>
    <message>
        <source>The attribute table</source>
        <translation>Die Attributtabelle</translation>
    </message>
    <message>
        <source>The attributes take more bytes than a point of a LAS file may.</source>
        <translation>Die Attribute brauchen mehr Bytes, als ein Punkt einer LAS-Datei haben darf.</translation>
    </message>
    <message>
        <source>The authentication function gave no answer.</source>
        <translation>Die Authentifizierungsfunktion gab keine Antwort.</translation>
    </message>
    <message>
        <source>The bounds &quot;%1&quot; %2.</source>
        <translation>Die Grenzen „%1“ %2.</translation>
    </message>
    <message>
        <source>The call was interrupted.</source>
        <translation>Der Aufruf wurde unterbrochen.</translation>
    </message>
    <message>
        <source>The catalogue lacks the attribute &quot;%1&quot;.</source>
        <translation>Dem Katalog fehlt das Attribut „%1“.</translation>
    </message>
    <message>
        <source>The change is in the file, but the file&apos;s folder could not be synced: the disk may be failing.</source>
        <translation>Die Änderung steht in der Datei, aber der Ordner der Datei konnte nicht mit dem Datenträger abgeglichen werden: vielleicht versagt der Datenträger.</translation>
    </message>
    <message>
        <source>The changelog</source>
        <translation>Das Änderungsprotokoll</translation>
    </message>
    <message>
        <source>The changelog can&apos;t be read from &quot;%1&quot;.</source>
        <translation>Das Änderungsprotokoll kann nicht aus „%1“ gelesen werden.</translation>
    </message>
    <message>
        <source>The changelog can&apos;t be written to &quot;%1&quot;: it is a database.</source>
        <translation>Das Änderungsprotokoll kann nicht in „%1“ geschrieben werden: das ist eine Datenbank.</translation>
    </message>
    <message>
        <source>The changelog entry</source>
        <translation>Der Protokolleintrag</translation>
    </message>
    <message>
        <source>The character &quot;%1&quot; at position %2 has no meaning in a filter.</source>
        <translation>Das Zeichen „%1“ an Position %2 hat in einem Filter keine Bedeutung.</translation>
    </message>
    <message>
        <source>The character (not printable) at position %1 has no meaning in a filter.</source>
        <translation>Das (nicht druckbare) Zeichen an Position %1 hat in einem Filter keine Bedeutung.</translation>
    </message>
    <message>
        <source>The character at place %1 is none.</source>
        <translation>Das Zeichen an Stelle %1 ist keine solche Ziffer.</translation>
    </message>
    <message>
        <source>The clean-up was cancelled.</source>
        <translation>Die Bereinigung wurde abgebrochen.</translation>
    </message>
    <message>
        <source>The colours of &quot;%1&quot; go to 255, those of &quot;%2&quot; beyond: each keeps its numbers, so that the former look dark.</source>
        <translation>Die Farben von „%1“ gehen bis 255, die von „%2“ darüber hinaus: beide behalten ihre Zahlen, so dass die ersteren dunkel aussehen.</translation>
    </message>
    <message>
        <source>The column &quot;%1&quot; of &quot;%2&quot; has an element number above %3.</source>
        <translation>Die Spalte „%1“ von „%2“ hat eine Elementnummer über %3.</translation>
    </message>
    <message>
        <source>The column &quot;%1&quot; stands twice in &quot;%2&quot;.</source>
        <translation>Die Spalte „%1“ steht zweimal in „%2“.</translation>
    </message>
    <message>
        <source>The column %1 holds no ids of points.</source>
        <translation>Die Spalte %1 enthält keine Nummern von Punkten.</translation>
    </message>
    <message>
        <source>The column %1 of %2 is mapped twice: %3 and %4.</source>
        <translation>Die Spalte %1 von %2 ist zweimal zugeordnet: %3 und %4.</translation>
    </message>
    <message>
        <source>The columns %1 and %2 of %3 would both go to %4.</source>
        <translation>Die Spalten %1 und %2 von %3 würden beide nach %4 gehen.</translation>
    </message>
    <message>
        <source>The columns of %1 are %2.</source>
        <translation>Die Spalten von %1 sind %2.</translation>
    </message>
    <message>
        <source>The comment</source>
        <translation>Der Kommentar</translation>
    </message>
    <message>
        <source>The commit was cancelled.</source>
        <translation>Das Festschreiben wurde abgebrochen.</translation>
    </message>
    <message>
        <source>The compression options %1 are unknown.</source>
        <translation>Die Komprimierungsoptionen %1 sind unbekannt.</translation>
    </message>
    <message>
        <source>The context is at work: a callback can&apos;t call this function on it.</source>
        <translation>Der Kontext arbeitet gerade: eine Rückruffunktion kann diese Funktion nicht für ihn aufrufen.</translation>
    </message>
    <message>
        <source>The coordinate reference system of %1 is not understood in full: %2. It is kept as it is told, and units that are not known stay empty.</source>
        <translation>Das Koordinatensystem von %1 wird nicht vollständig verstanden: %2. Es bleibt erhalten, wie es angegeben ist, und nicht bekannte Einheiten bleiben leer.</translation>
    </message>
    <message>
        <source>The coordinates can&apos;t be stored without rounding: from %1 to %2 there are more steps between values than numbers of 64 bits can tell apart.</source>
        <translation>Die Koordinaten können nicht ohne Runden gespeichert werden: von %1 bis %2 gibt es mehr Schritte zwischen Werten, als Zahlen mit 64 Bit unterscheiden können.</translation>
    </message>
    <message>
        <source>The coordinates of the database are in %1, those of &quot;%2&quot; are %3</source>
        <translation>Die Koordinaten der Datenbank sind in %1, die von „%2“ sind %3</translation>
    </message>
    <message>
        <source>The create settings text</source>
        <translation>Der Text der Einstellungen zum Anlegen</translation>
    </message>
    <message>
        <source>The data type %1 can&apos;t hold values: 1 (UINT8) to 10 (DOUBLE) are possible.</source>
        <translation>Der Datentyp %1 kann keine Werte aufnehmen: möglich sind 1 (UINT8) bis 10 (DOUBLE).</translation>
    </message>
    <message>
        <source>The database can only be read: the file or its folder is write-protected.</source>
        <translation>Die Datenbank kann nur gelesen werden: die Datei oder ihr Ordner ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>The database can&apos;t be changed: %1.</source>
        <translation>Die Datenbank kann nicht geändert werden: %1.</translation>
    </message>
    <message>
        <source>The database can&apos;t be changed: its folder is not writable.</source>
        <translation>Die Datenbank kann nicht geändert werden: ihr Ordner ist nicht beschreibbar.</translation>
    </message>
    <message>
        <source>The database can&apos;t be changed: its folder is write-protected.</source>
        <translation>Die Datenbank kann nicht geändert werden: ihr Ordner ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>The database does not agree with the file schema &quot;%1&quot;</source>
        <translation>Die Datenbank entspricht nicht dem Dateischema „%1“</translation>
    </message>
    <message>
        <source>The database does not keep %1.</source>
        <translation>Die Datenbank bewahrt %1 nicht auf.</translation>
    </message>
    <message>
        <source>The database has a point attribute &quot;%1&quot; already.</source>
        <translation>Die Datenbank hat schon ein Punktattribut „%1“.</translation>
    </message>
    <message>
        <source>The database has a point with the id %1 already.</source>
        <translation>Die Datenbank hat schon einen Punkt mit der ID %1.</translation>
    </message>
    <message>
        <source>The database has no coordinates &quot;%1&quot; by which its points could be chosen.</source>
        <translation>Die Datenbank hat keine Koordinaten „%1“, nach denen ihre Punkte ausgewählt werden könnten.</translation>
    </message>
    <message>
        <source>The database has no coordinates &quot;%1&quot; to make tiles of.</source>
        <translation>Die Datenbank hat keine Koordinaten „%1“, aus denen Kacheln gemacht werden könnten.</translation>
    </message>
    <message>
        <source>The database has no metadata item &quot;%1&quot;.</source>
        <translation>Die Datenbank hat keinen Metadateneintrag „%1“.</translation>
    </message>
    <message>
        <source>The database has no more transaction numbers.</source>
        <translation>Die Datenbank hat keine Transaktionsnummern mehr.</translation>
    </message>
    <message>
        <source>The database has no point attribute &quot;%1&quot;.</source>
        <translation>Die Datenbank hat kein Punktattribut „%1“.</translation>
    </message>
    <message>
        <source>The database has no transaction %1.</source>
        <translation>Die Datenbank hat keine Transaktion %1.</translation>
    </message>
    <message>
        <source>The database holds more points than it tells.</source>
        <translation>Die Datenbank enthält mehr Punkte, als sie angibt.</translation>
    </message>
    <message>
        <source>The database is at work: a callback can&apos;t call this function on it.</source>
        <translation>Die Datenbank arbeitet gerade: eine Rückruffunktion kann diese Funktion nicht für sie aufrufen.</translation>
    </message>
    <message>
        <source>The database of this query was closed.</source>
        <translation>Die Datenbank dieser Abfrage wurde geschlossen.</translation>
    </message>
    <message>
        <source>The database took fewer points than it was given.</source>
        <translation>Die Datenbank hat weniger Punkte angenommen, als ihr gegeben wurden.</translation>
    </message>
    <message>
        <source>The database was opened to be read only, and can&apos;t be changed.</source>
        <translation>Die Datenbank wurde nur zum Lesen geöffnet und kann nicht geändert werden.</translation>
    </message>
    <message>
        <source>The database was opened to read transaction %1, and can&apos;t be changed.</source>
        <translation>Die Datenbank wurde zum Lesen von Transaktion %1 geöffnet und kann nicht geändert werden.</translation>
    </message>
    <message>
        <source>The default value is neither in the range nor the invalid value.</source>
        <translation>Die Vorgabe liegt weder im Wertebereich, noch ist sie der Ungültigwert.</translation>
    </message>
    <message>
        <source>The default value is no multiple of the resolution; it is stored as %1.</source>
        <translation>Die Vorgabe ist kein Vielfaches der Auflösung; gespeichert wird %1.</translation>
    </message>
    <message>
        <source>The definitions of the point attribute &quot;%1&quot; can&apos;t be merged: %2</source>
        <translation>Die Definitionen des Punktattributs „%1“ können nicht vereinigt werden: %2</translation>
    </message>
    <message>
        <source>The digit at place %1 has no partner.</source>
        <translation>Die Ziffer an Stelle %1 hat keine zweite neben sich.</translation>
    </message>
    <message>
        <source>The disk is full. What was committed is safe: free some space and try again.</source>
        <translation>Der Datenträger ist voll. Was festgeschrieben wurde, ist sicher: Platz schaffen und noch einmal versuchen.</translation>
    </message>
    <message>
        <source>The disk takes nothing more, not even what giving space back needs. Free about one megabyte of it first, or have it checked; nothing is lost.</source>
        <translation>Der Datenträger nimmt nichts mehr auf, nicht einmal, was das Freigeben von Platz braucht. Zuerst etwa ein Megabyte darauf freimachen oder ihn prüfen lassen; nichts ist verloren.</translation>
    </message>
    <message>
        <source>The expression is nested too deeply at position %1: at most %2 levels are possible.</source>
        <translation>Der Ausdruck ist an Position %1 zu tief verschachtelt: höchstens %2 Ebenen sind möglich.</translation>
    </message>
    <message>
        <source>The file &quot;&quot; can&apos;t be written.</source>
        <translation>Die Datei „“ kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; can&apos;t be created.</source>
        <translation>Die Datei „%1“ kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; does not exist.</source>
        <translation>Die Datei „%1“ gibt es nicht.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; does not hold all of &quot;%2&quot;, which the points of the database are found by.</source>
        <translation>Die Datei „%1“ enthält „%2“ nicht vollständig, worüber die Punkte der Datenbank gefunden werden.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; does not hold the attribute &quot;%2&quot; with all %3 elements.</source>
        <translation>Die Datei „%1“ enthält das Attribut „%2“ nicht mit allen %3 Elementen.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; does not hold the attribute &quot;%2&quot;.</source>
        <translation>Die Datei „%1“ enthält das Attribut „%2“ nicht.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; exists already, and is not a database.</source>
        <translation>Die Datei „%1“ gibt es schon, und sie ist keine Datenbank.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; exists already.</source>
        <translation>Die Datei „%1“ gibt es schon.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; exists already: somebody made it meanwhile.</source>
        <translation>Die Datei „%1“ gibt es schon: sie wurde inzwischen angelegt.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; has a column &quot;%2[%3]&quot;, but the attribute of the database has the length %4.</source>
        <translation>Die Datei „%1“ hat eine Spalte „%2[%3]“, aber das Attribut der Datenbank hat die Länge %4.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; holds no points.</source>
        <translation>Die Datei „%1“ enthält keine Punkte.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is empty.</source>
        <translation>Die Datei „%1“ ist leer.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is not replaced: it can&apos;t be opened and changed.</source>
        <translation>Die Datei „%1“ wird nicht ersetzt: sie kann nicht geöffnet und geändert werden.</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is not replaced: it is being changed.</source>
        <translation>Die Datei „%1“ wird nicht ersetzt: sie wird gerade geändert.</translation>
    </message>
    <message>
        <source>The file can only be read: it or its folder is write-protected.</source>
        <translation>Die Datei kann nur gelesen werden: sie oder ihr Ordner ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>The file can&apos;t be opened.</source>
        <translation>Die Datei kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>The file can&apos;t be read or written.</source>
        <translation>Die Datei kann nicht gelesen oder geschrieben werden.</translation>
    </message>
    <message>
        <source>The file can&apos;t be written: %1.</source>
        <translation>Die Datei kann nicht geschrieben werden: %1.</translation>
    </message>
    <message>
        <source>The file doesn&apos;t look like one of comma-separated values.</source>
        <translation>Die Datei sieht nicht nach durch Kommas getrennten Werten aus.</translation>
    </message>
    <message>
        <source>The file has the format version %1, this library reads versions up to %2.</source>
        <translation>Die Datei hat die Formatversion %1, diese Bibliothek liest Versionen bis %2.</translation>
    </message>
    <message>
        <source>The file holds another database than when it was opened.</source>
        <translation>Die Datei enthält eine andere Datenbank als beim Öffnen.</translation>
    </message>
    <message>
        <source>The file is cut off, or its count is wrong; nothing was imported.</source>
        <translation>Die Datei ist abgeschnitten, oder ihre Anzahl ist falsch; nichts wurde importiert.</translation>
    </message>
    <message>
        <source>The file is damaged. Restore it from a backup.</source>
        <translation>Die Datei ist beschädigt. Sie aus einer Sicherung wiederherstellen.</translation>
    </message>
    <message>
        <source>The file is damaged: %1 does not agree with its checksum.</source>
        <translation>Die Datei ist beschädigt: %1 passt nicht zur Prüfsumme.</translation>
    </message>
    <message>
        <source>The file is damaged: %1 is missing.</source>
        <translation>Die Datei ist beschädigt: %1 fehlt.</translation>
    </message>
    <message>
        <source>The file is damaged: %1 is not readable.</source>
        <translation>Die Datei ist beschädigt: %1 ist nicht lesbar.</translation>
    </message>
    <message>
        <source>The file is damaged: %1.</source>
        <translation>Die Datei ist beschädigt: %1.</translation>
    </message>
    <message>
        <source>The file is damaged: a metadata item has an impossible name.</source>
        <translation>Die Datei ist beschädigt: ein Metadateneintrag hat einen unmöglichen Namen.</translation>
    </message>
    <message>
        <source>The file is damaged: a point of the node has the id of another one.</source>
        <translation>Die Datei ist beschädigt: ein Punkt des Knotens hat die ID eines anderen.</translation>
    </message>
    <message>
        <source>The file is damaged: a reference is not readable.</source>
        <translation>Die Datei ist beschädigt: ein Verweis ist nicht lesbar.</translation>
    </message>
    <message>
        <source>The file is damaged: all its points have one &quot;%1&quot;.</source>
        <translation>Die Datei ist beschädigt: alle ihre Punkte haben dasselbe „%1“.</translation>
    </message>
    <message>
        <source>The file is damaged: data of a transaction that is kept is missing. Nothing was removed.</source>
        <translation>Die Datei ist beschädigt: Daten einer aufbewahrten Transaktion fehlen. Nichts wurde entfernt.</translation>
    </message>
    <message>
        <source>The file is damaged: it has no room for another transaction.</source>
        <translation>Die Datei ist beschädigt: sie hat keinen Platz für eine weitere Transaktion.</translation>
    </message>
    <message>
        <source>The file is damaged: it has no such level of detail as it tells.</source>
        <translation>Die Datei ist beschädigt: sie hat keine solche Detailstufe, wie sie angibt.</translation>
    </message>
    <message>
        <source>The file is damaged: it has the point attribute &quot;%1&quot; twice.</source>
        <translation>Die Datei ist beschädigt: sie hat das Punktattribut „%1“ zweimal.</translation>
    </message>
    <message>
        <source>The file is damaged: it lacks its primary attribute or point id.</source>
        <translation>Die Datei ist beschädigt: ihr fehlt das Primärattribut oder die Punkt-ID.</translation>
    </message>
    <message>
        <source>The file is damaged: its attribute table is no list.</source>
        <translation>Die Datei ist beschädigt: ihre Attributtabelle ist keine Liste.</translation>
    </message>
    <message>
        <source>The file is damaged: its changelog has no end.</source>
        <translation>Die Datei ist beschädigt: ihr Änderungsprotokoll hat kein Ende.</translation>
    </message>
    <message>
        <source>The file is damaged: its current transaction refers to data that no transaction keeps. Nothing was changed.</source>
        <translation>Die Datei ist beschädigt: ihre aktuelle Transaktion verweist auf Daten, die keine Transaktion aufbewahrt. Nichts wurde geändert.</translation>
    </message>
    <message>
        <source>The file is damaged: its index has no root.</source>
        <translation>Die Datei ist beschädigt: ihr Index hat keine Wurzel.</translation>
    </message>
    <message>
        <source>The file is damaged: its index is not a tree.</source>
        <translation>Die Datei ist beschädigt: ihr Index ist kein Baum.</translation>
    </message>
    <message>
        <source>The file is damaged: its pages contradict each other.</source>
        <translation>Die Datei ist beschädigt: ihre Seiten widersprechen einander.</translation>
    </message>
    <message>
        <source>The file is damaged: its point id is no whole number.</source>
        <translation>Die Datei ist beschädigt: ihre Punkt-ID ist keine ganze Zahl.</translation>
    </message>
    <message>
        <source>The file is damaged: node %1 holds more points than a node can have.</source>
        <translation>Die Datei ist beschädigt: der Knoten %1 enthält mehr Punkte, als ein Knoten haben kann.</translation>
    </message>
    <message>
        <source>The file is damaged: node %1 holds points that do not belong there.</source>
        <translation>Die Datei ist beschädigt: der Knoten %1 enthält Punkte, die nicht dorthin gehören.</translation>
    </message>
    <message>
        <source>The file is damaged: points have values of &quot;%1&quot; that the index excludes.</source>
        <translation>Die Datei ist beschädigt: Punkte haben Werte von „%1“, die der Index ausschließt.</translation>
    </message>
    <message>
        <source>The file is damaged: something refers to more than a blob can hold.</source>
        <translation>Die Datei ist beschädigt: etwas verweist auf mehr, als ein Blob fassen kann.</translation>
    </message>
    <message>
        <source>The file is damaged: the constant value of the point attribute &quot;%1&quot; is not readable.</source>
        <translation>Die Datei ist beschädigt: der konstante Wert des Punktattributs „%1“ ist nicht lesbar.</translation>
    </message>
    <message>
        <source>The file is damaged: the nodes below have other least and greatest values than the node tells.</source>
        <translation>Die Datei ist beschädigt: die Knoten darunter haben andere kleinste und größte Werte, als der Knoten angibt.</translation>
    </message>
    <message>
        <source>The file is damaged: the number of the point attribute &quot;%1&quot; was not given yet.</source>
        <translation>Die Datei ist beschädigt: die Nummer des Punktattributs „%1“ wurde noch nicht vergeben.</translation>
    </message>
    <message>
        <source>The file is damaged: the point attribute &quot;%1&quot; has another length in node %2.</source>
        <translation>Die Datei ist beschädigt: das Punktattribut „%1“ hat im Knoten %2 eine andere Länge.</translation>
    </message>
    <message>
        <source>The file is damaged: the root is that of another transaction.</source>
        <translation>Die Datei ist beschädigt: die Wurzel ist die einer anderen Transaktion.</translation>
    </message>
    <message>
        <source>The file is damaged: the transaction refers to data behind the last that it has.</source>
        <translation>Die Datei ist beschädigt: die Transaktion verweist auf Daten hinter den letzten, die sie hat.</translation>
    </message>
    <message>
        <source>The file is damaged: there is no format version %1.</source>
        <translation>Die Datei ist beschädigt: es gibt keine Formatversion %1.</translation>
    </message>
    <message>
        <source>The file is damaged: transaction %1 is not what it should be.</source>
        <translation>Die Datei ist beschädigt: die Transaktion %1 ist nicht, was sie sein sollte.</translation>
    </message>
    <message>
        <source>The file is in use by another program. Try again when that is done.</source>
        <translation>Die Datei wird von einem anderen Programm benutzt. Noch einmal versuchen, wenn es fertig ist.</translation>
    </message>
    <message>
        <source>The file is not a point-cloud database of this library.</source>
        <translation>Die Datei ist keine Punktwolken-Datenbank dieser Bibliothek.</translation>
    </message>
    <message>
        <source>The file is not a point-cloud database.</source>
        <translation>Die Datei ist keine Punktwolken-Datenbank.</translation>
    </message>
    <message>
        <source>The file is well. Start again: a new query reads the current state.</source>
        <translation>Die Datei ist in Ordnung. Neu beginnen: eine neue Abfrage liest den aktuellen Stand.</translation>
    </message>
    <message>
        <source>The file schema</source>
        <translation>Das Dateischema</translation>
    </message>
    <message>
        <source>The file was not closed properly and needs a repair that a read-only place does not allow. Copy it, with the file of the same name that ends in &quot;-journal&quot;, to a place that is writable, and open it there.</source>
        <translation>Die Datei wurde nicht ordnungsgemäß geschlossen und braucht eine Reparatur, die ein schreibgeschützter Ort nicht zulässt. Sie zusammen mit der Datei desselben Namens, der auf „-journal“ endet, an einen beschreibbaren Ort kopieren und dort öffnen.</translation>
    </message>
    <message>
        <source>The file was not closed properly under its other name &quot;%1&quot;.</source>
        <translation>Die Datei wurde unter ihrem anderen Namen „%1“ nicht ordnungsgemäß geschlossen.</translation>
    </message>
    <message>
        <source>The file was renamed, replaced or deleted while it was open.</source>
        <translation>Die Datei wurde umbenannt, ersetzt oder gelöscht, während sie geöffnet war.</translation>
    </message>
    <message>
        <source>The file was replaced while it was being opened. Try again.</source>
        <translation>Die Datei wurde beim Öffnen ersetzt. Noch einmal versuchen.</translation>
    </message>
    <message>
        <source>The file would hold %1 coordinates that are not those of the points.</source>
        <translation>Die Datei würde %1 Koordinaten enthalten, die nicht die der Punkte sind.</translation>
    </message>
    <message>
        <source>The files that were imported describe wave packets of one number in different ways; the first description is written.</source>
        <translation>Die importierten Dateien beschreiben Wellenpakete derselben Nummer verschieden; die erste Beschreibung wird geschrieben.</translation>
    </message>
    <message>
        <source>The filter is too long: it has %1 bytes, at most %2 are possible.</source>
        <translation>Der Filter ist zu lang: er hat %1 Bytes, höchstens %2 sind möglich.</translation>
    </message>
    <message>
        <source>The first line is taken for the names of the columns. Take out lines that are neither
names nor numbers, or begin them with #.</source>
        <translation>Die erste Zeile wird als Namen der Spalten genommen. Zeilen herausnehmen, die weder
Namen noch Zahlen sind, oder sie mit # beginnen.</translation>
    </message>
    <message>
        <source>The first line that is no comment and begins with no number is taken for the names of the columns.
Take out lines that are neither names nor numbers, or begin them with #.</source>
        <translation>Die erste Zeile, die kein Kommentar ist und mit keiner Zahl beginnt, wird als Namen der Spalten genommen.
Zeilen herausnehmen, die weder Namen noch Zahlen sind, oder sie mit # beginnen.</translation>
    </message>
    <message>
        <source>The folder has no manifest.</source>
        <translation>Der Ordner hat kein Manifest.</translation>
    </message>
    <message>
        <source>The format %1 is not checked.</source>
        <translation>Das Format %1 wird nicht geprüft.</translation>
    </message>
    <message>
        <source>The header line of &quot;%1&quot; names %2 attributes; at most %3 can be imported.</source>
        <translation>Die Kopfzeile von „%1“ nennt %2 Attribute; höchstens %3 können importiert werden.</translation>
    </message>
    <message>
        <source>The id %1 occurs twice.</source>
        <translation>Die Nummer %1 kommt zweimal vor.</translation>
    </message>
    <message>
        <source>The id %1 stands for %2 points.</source>
        <translation>Die Nummer %1 steht für %2 Punkte.</translation>
    </message>
    <message>
        <source>The identity</source>
        <translation>Die Kennung der Datei</translation>
    </message>
    <message>
        <source>The ids of new points are not known before they are in the index: this database gives ids in the order of its index.</source>
        <translation>Die IDs neuer Punkte sind nicht bekannt, bevor diese im Index stehen: diese Datenbank vergibt IDs in der Reihenfolge ihres Index.</translation>
    </message>
    <message>
        <source>The ids of the points to remove are not bound.</source>
        <translation>Die IDs der zu entfernenden Punkte sind nicht gebunden.</translation>
    </message>
    <message>
        <source>The index can&apos;t be stored: too many points lie at one place for leaves so small.</source>
        <translation>Der Index kann nicht gespeichert werden: für so kleine Blätter liegen zu viele Punkte an einer Stelle.</translation>
    </message>
    <message>
        <source>The index has no more node numbers.</source>
        <translation>Der Index hat keine Knotennummern mehr.</translation>
    </message>
    <message>
        <source>The index has no node %1.</source>
        <translation>Der Index hat keinen Knoten %1.</translation>
    </message>
    <message>
        <source>The index sorts points by the first 4 elements only.</source>
        <translation>Der Index ordnet Punkte nur nach den ersten 4 Elementen.</translation>
    </message>
    <message>
        <source>The invalid value is no finite number.</source>
        <translation>Der Ungültigwert ist keine endliche Zahl.</translation>
    </message>
    <message>
        <source>The item tarvo.geo_tag stays as it is, without the coordinate reference system.</source>
        <translation>Der Eintrag tarvo.geo_tag bleibt, wie er ist, ohne das Koordinatensystem.</translation>
    </message>
    <message>
        <source>The item tarvo.time_base stays as it is, without the time base.</source>
        <translation>Der Eintrag tarvo.time_base bleibt, wie er ist, ohne die Zeitbasis.</translation>
    </message>
    <message>
        <source>The key is no text of hexadecimal digits in pairs.</source>
        <translation>Der Schlüssel ist kein Text aus Paaren hexadezimaler Ziffern.</translation>
    </message>
    <message>
        <source>The length is %1; 1 to 255 is possible.</source>
        <translation>Die Länge ist %1; möglich ist 1 bis 255.</translation>
    </message>
    <message>
        <source>The length is 0; 1 to 255 is possible.</source>
        <translation>Die Länge ist 0; möglich ist 1 bis 255.</translation>
    </message>
    <message>
        <source>The level-of-detail method &quot;%1&quot; of the point attribute &quot;%2&quot; is unknown.</source>
        <translation>Die Detailstufen-Methode „%1“ des Punktattributs „%2“ ist unbekannt.</translation>
    </message>
    <message>
        <source>The level-of-detail settings of &quot;%1&quot;</source>
        <translation>Die Detailstufen-Einstellung von „%1“</translation>
    </message>
    <message>
        <source>The library can&apos;t open transaction %1 to be read.</source>
        <translation>Die Bibliothek kann Transaktion %1 nicht zum Lesen öffnen.</translation>
    </message>
    <message>
        <source>The library failed: %1</source>
        <translation>Die Bibliothek ist gescheitert: %1</translation>
    </message>
    <message>
        <source>The library is at work: an interrupt function can&apos;t call it.</source>
        <translation>Die Bibliothek arbeitet gerade: eine Unterbrechungsfunktion kann sie nicht aufrufen.</translation>
    </message>
    <message>
        <source>The list names too many nodes</source>
        <translation>Die Liste nennt zu viele Knoten</translation>
    </message>
    <message>
        <source>The list of what the transaction holds</source>
        <translation>Die Liste der Inhalte der Transaktion</translation>
    </message>
    <message>
        <source>The log file &quot;%1&quot; can&apos;t be written.</source>
        <translation>Die Protokolldatei „%1“ kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The log file &quot;%1&quot; is a database.</source>
        <translation>Die Protokolldatei „%1“ ist eine Datenbank.</translation>
    </message>
    <message>
        <source>The manifest</source>
        <translation>Das Manifest</translation>
    </message>
    <message>
        <source>The maximum is no finite number.</source>
        <translation>Das Maximum ist keine endliche Zahl.</translation>
    </message>
    <message>
        <source>The message</source>
        <translation>Die Nachricht</translation>
    </message>
    <message>
        <source>The message is empty.</source>
        <translation>Die Nachricht ist leer.</translation>
    </message>
    <message>
        <source>The message is too long.</source>
        <translation>Die Nachricht ist zu lang.</translation>
    </message>
    <message>
        <source>The messages of this transaction are too long.</source>
        <translation>Die Nachrichten dieser Transaktion sind zu lang.</translation>
    </message>
    <message>
        <source>The metadata item &quot;%1&quot;</source>
        <translation>Der Metadateneintrag „%1“</translation>
    </message>
    <message>
        <source>The metadata item &quot;%1&quot; holds the example of the catalogue: replace it by what is true.</source>
        <translation>Der Metadateneintrag „%1“ enthält das Beispiel des Katalogs: es durch das ersetzen, was zutrifft.</translation>
    </message>
    <message>
        <source>The metadata item &quot;%1&quot; is missing.</source>
        <translation>Der Metadateneintrag „%1“ fehlt.</translation>
    </message>
    <message>
        <source>The metadata item &quot;%1&quot; is not part of the schema.</source>
        <translation>Der Metadateneintrag „%1“ gehört nicht zum Schema.</translation>
    </message>
    <message>
        <source>The metadata item &quot;%1&quot;:</source>
        <translation>Der Metadateneintrag „%1“:</translation>
    </message>
    <message>
        <source>The method &quot;%1&quot; is unknown; default, average, minimum, maximum, majority, first and thinout are known.</source>
        <translation>Die Methode „%1“ ist unbekannt; bekannt sind default, average, minimum, maximum, majority, first und thinout.</translation>
    </message>
    <message>
        <source>The method is chosen above; take the member &quot;method&quot; out.</source>
        <translation>Die Methode wird oben gewählt; das Element „method“ herausnehmen.</translation>
    </message>
    <message>
        <source>The methods are default, average, minimum, maximum, majority, first and thinout.</source>
        <translation>Die Methoden sind default, average, minimum, maximum, majority, first und thinout.</translation>
    </message>
    <message>
        <source>The minimum is no finite number.</source>
        <translation>Das Minimum ist keine endliche Zahl.</translation>
    </message>
    <message>
        <source>The name of %1 holds a line break.</source>
        <translation>Der Name von %1 enthält einen Zeilenumbruch.</translation>
    </message>
    <message>
        <source>The name of a metadata item</source>
        <translation>Der Name eines Metadateneintrags</translation>
    </message>
    <message>
        <source>The name of a metadata item must have 1 to 255 characters.</source>
        <translation>Der Name eines Metadateneintrags muss 1 bis 255 Zeichen haben.</translation>
    </message>
    <message>
        <source>The name of the new database is too long: it has %1 bytes of at most %2.</source>
        <translation>Der Name der neuen Datenbank ist zu lang: er hat %1 Bytes von höchstens %2.</translation>
    </message>
    <message>
        <source>The new database has no name.</source>
        <translation>Die neue Datenbank hat keinen Namen.</translation>
    </message>
    <message>
        <source>The new database took fewer points than it was given.</source>
        <translation>Die neue Datenbank hat weniger Punkte angenommen, als ihr gegeben wurden.</translation>
    </message>
    <message>
        <source>The nodes below node %1 are not what it says. Restore the file from a backup.</source>
        <translation>Die Knoten unter dem Knoten %1 sind nicht, was er angibt. Die Datei aus einer Sicherung wiederherstellen.</translation>
    </message>
    <message>
        <source>The number %1 at position %2 %3</source>
        <translation>Die Zahl %1 an Position %2 %3</translation>
    </message>
    <message>
        <source>The object has no lock to take away.</source>
        <translation>Das Objekt hat keine Sperre, die aufgehoben werden könnte.</translation>
    </message>
    <message>
        <source>The object is locked and can&apos;t be deleted.</source>
        <translation>Das Objekt ist gesperrt und kann nicht gelöscht werden.</translation>
    </message>
    <message>
        <source>The open settings text</source>
        <translation>Der Text der Einstellungen zum Öffnen</translation>
    </message>
    <message>
        <source>The output can&apos;t go to &quot;%1&quot;: a file of that name promises to be %2.</source>
        <translation>Die Ausgabe kann nicht nach „%1“ gehen: eine Datei dieses Namens verspricht, %2 zu sein.</translation>
    </message>
    <message>
        <source>The output can&apos;t go to &quot;%1&quot;: that file belongs to a database.</source>
        <translation>Die Ausgabe kann nicht nach „%1“ gehen: diese Datei gehört zu einer Datenbank.</translation>
    </message>
    <message>
        <source>The output can&apos;t go to &quot;%1&quot;: that file is a database.</source>
        <translation>Die Ausgabe kann nicht nach „%1“ gehen: diese Datei ist eine Datenbank.</translation>
    </message>
    <message>
        <source>The output can&apos;t go to &quot;%1&quot;: that file is a scan.</source>
        <translation>Die Ausgabe kann nicht nach „%1“ gehen: diese Datei ist ein Scan.</translation>
    </message>
    <message>
        <source>The output can&apos;t go to &quot;%1&quot;: that file is being read.</source>
        <translation>Die Ausgabe kann nicht nach „%1“ gehen: diese Datei wird gerade gelesen.</translation>
    </message>
    <message>
        <source>The parameter &quot;%1&quot; has no value.</source>
        <translation>Der Parameter „%1“ hat keinen Wert.</translation>
    </message>
    <message>
        <source>The parameter &quot;%1&quot; takes %2.</source>
        <translation>Der Parameter „%1“ nimmt %2.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; has no parameter &quot;%2&quot;.</source>
        <translation>Das Plugin „%1“ hat keinen Parameter „%2“.</translation>
    </message>
    <message>
        <source>The plugin has no script.</source>
        <translation>Das Plugin hat kein Skript.</translation>
    </message>
    <message>
        <source>The plugin is too large.</source>
        <translation>Das Plugin ist zu groß.</translation>
    </message>
    <message>
        <source>The plugin&apos;s process ended without a result (exit code %1).</source>
        <translation>Der Prozess des Plugins endete ohne Ergebnis (Exit-Code %1).</translation>
    </message>
    <message>
        <source>The plugin&apos;s process was ended by signal %1.</source>
        <translation>Der Prozess des Plugins wurde durch Signal %1 beendet.</translation>
    </message>
    <message>
        <source>The plugin&apos;s results are larger than %1 MiB.</source>
        <translation>Die Ergebnisse des Plugins sind größer als %1 MiB.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; can&apos;t be %2: points are found by it.</source>
        <translation>Das Punktattribut „%1“ kann so nicht geändert werden (%2): über dieses Attribut werden Punkte gefunden.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; can&apos;t be filled: points are found by it.</source>
        <translation>Das Punktattribut „%1“ kann nicht gefüllt werden: über dieses Attribut werden Punkte gefunden.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; can&apos;t be inverted: it has more than two values, or only one.</source>
        <translation>Das Punktattribut „%1“ kann nicht umgekehrt werden: es hat mehr als zwei Werte oder nur einen.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; can&apos;t become constant: points have different values.</source>
        <translation>Das Punktattribut „%1“ kann nicht constant werden: Punkte haben unterschiedliche Werte.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; has one value for the whole file, and points have another one.</source>
        <translation>Das Punktattribut „%1“ hat einen Wert für die ganze Datei, und Punkte haben einen anderen.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; has the elements 0 to %2, not %3.</source>
        <translation>Das Punktattribut „%1“ hat die Elemente 0 bis %2, nicht %3.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; is missing.</source>
        <translation>Das Punktattribut „%1“ fehlt.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; is not part of the schema.</source>
        <translation>Das Punktattribut „%1“ gehört nicht zum Schema.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; is not valid: %2</source>
        <translation>Das Punktattribut „%1“ ist ungültig: %2</translation>
    </message>
    <message>
        <source>The point attribute %1 has values down to %2, below the minimum %3.</source>
        <translation>Das Punktattribut %1 hat Werte bis hinab zu %2, unter dem Minimum %3.</translation>
    </message>
    <message>
        <source>The point attribute %1 has values up to %2, above the maximum %3.</source>
        <translation>Das Punktattribut %1 hat Werte bis hinauf zu %2, über dem Maximum %3.</translation>
    </message>
    <message>
        <source>The point attribute text</source>
        <translation>Der Text des Punktattributs</translation>
    </message>
    <message>
        <source>The point attributes changed since this query was made.</source>
        <translation>Die Punktattribute haben sich geändert, seit diese Abfrage angelegt wurde.</translation>
    </message>
    <message>
        <source>The point id is one whole number: length 1, resolution 1, whole limits.</source>
        <translation>Die Punkt-ID ist eine einzelne ganze Zahl: Länge 1, Auflösung 1, ganzzahlige Grenzen.</translation>
    </message>
    <message>
        <source>The points of &quot;%1&quot; have %2 columns, but %3 are named.</source>
        <translation>Die Punkte von „%1“ haben %2 Spalten, aber %3 sind benannt.</translation>
    </message>
    <message>
        <source>The points of the E57 file &quot;%1&quot; are packed by the codec &quot;%2&quot;, which can&apos;t be read.</source>
        <translation>Die Punkte der E57-Datei „%1“ sind mit dem Codec „%2“ gepackt, der nicht gelesen werden kann.</translation>
    </message>
    <message>
        <source>The points would go into %1 files; at most %2 are made.</source>
        <translation>Die Punkte kämen in %1 Dateien; höchstens %2 werden angelegt.</translation>
    </message>
    <message>
        <source>The points would go into more than %1 files; at most %2 are made.</source>
        <translation>Die Punkte kämen in mehr als %1 Dateien; höchstens %2 werden angelegt.</translation>
    </message>
    <message>
        <source>The primary attribute &quot;%1&quot; can&apos;t be left out.</source>
        <translation>Das Primärattribut „%1“ kann nicht weggelassen werden.</translation>
    </message>
    <message>
        <source>The primary attribute &quot;%1&quot; is not among the copied.</source>
        <translation>Das Primärattribut „%1“ ist nicht unter den kopierten.</translation>
    </message>
    <message>
        <source>The primary attribute &quot;%1&quot; must be one whole number.</source>
        <translation>Das Primärattribut „%1“ muss eine einzelne ganze Zahl sein.</translation>
    </message>
    <message>
        <source>The primary point attribute is &quot;%1&quot;, not &quot;%2&quot;.</source>
        <translation>Das primäre Punktattribut ist „%1“, nicht „%2“.</translation>
    </message>
    <message>
        <source>The query does not know what to change.</source>
        <translation>Die Abfrage weiß nicht, was zu ändern ist.</translation>
    </message>
    <message>
        <source>The query failed, and can&apos;t go on.</source>
        <translation>Die Abfrage ist gescheitert und kann nicht fortfahren.</translation>
    </message>
    <message>
        <source>The query has begun: attributes must be named before.</source>
        <translation>Die Abfrage hat begonnen: Attribute müssen vorher genannt werden.</translation>
    </message>
    <message>
        <source>The query has begun: buffers must be bound before.</source>
        <translation>Die Abfrage hat begonnen: Puffer müssen vorher gebunden werden.</translation>
    </message>
    <message>
        <source>The query has begun: values must be bound before.</source>
        <translation>Die Abfrage hat begonnen: Werte müssen vorher gebunden werden.</translation>
    </message>
    <message>
        <source>The quotation mark at %1 has no second one: one stands at each end of a name.</source>
        <translation>Das Anführungszeichen an %1 hat kein zweites: an jedem Ende eines Namens steht eines.</translation>
    </message>
    <message>
        <source>The range holds a single value.</source>
        <translation>Der Wertebereich enthält einen einzigen Wert.</translation>
    </message>
    <message>
        <source>The range is %1 to %2</source>
        <translation>Der Wertebereich ist %1 bis %2</translation>
    </message>
    <message>
        <source>The range is no multiple of the resolution; the largest value is %1.</source>
        <translation>Der Wertebereich ist kein Vielfaches der Auflösung; der größte Wert ist %1.</translation>
    </message>
    <message>
        <source>The reference system is left out: %1.</source>
        <translation>Das Koordinatensystem wird weggelassen: %1.</translation>
    </message>
    <message>
        <source>The regular expression &quot;%1&quot; %2</source>
        <translation>Der reguläre Ausdruck „%1“ %2</translation>
    </message>
    <message>
        <source>The report format %1 is unknown: 1 to 5 are possible.</source>
        <translation>Das Berichtsformat %1 ist unbekannt: möglich sind 1 bis 5.</translation>
    </message>
    <message>
        <source>The resolution is neither positive nor 0 (floating-point numbers).</source>
        <translation>Die Auflösung ist weder positiv noch 0 (Gleitkommazahlen).</translation>
    </message>
    <message>
        <source>The resolution is no finite number.</source>
        <translation>Die Auflösung ist keine endliche Zahl.</translation>
    </message>
    <message>
        <source>The same: the value of one of the points as it is.</source>
        <translation>Dasselbe: der Wert eines der Punkte, wie er ist.</translation>
    </message>
    <message>
        <source>The scale factor is no finite number.</source>
        <translation>Der Skalenfaktor ist keine endliche Zahl.</translation>
    </message>
    <message>
        <source>The scale factors and offsets of the files have no decimal grid in common that holds all coordinates: they move by up to %1, to steps of %2.</source>
        <translation>Die Skalenfaktoren und Versätze der Dateien haben kein gemeinsames dezimales Raster, das alle Koordinaten fasst: sie verschieben sich um bis zu %1, auf Schritte von %2.</translation>
    </message>
    <message>
        <source>The scans have more than %1 different fields.</source>
        <translation>Die Scans haben mehr als %1 verschiedene Felder.</translation>
    </message>
    <message>
        <source>The script has no manifest.</source>
        <translation>Das Skript hat kein Manifest.</translation>
    </message>
    <message>
        <source>The settings text</source>
        <translation>Der Einstellungstext</translation>
    </message>
    <message>
        <source>The signature key is missing.</source>
        <translation>Der Signaturschlüssel fehlt.</translation>
    </message>
    <message>
        <source>The signature method %1 is unknown.</source>
        <translation>Die Signaturmethode %1 ist unbekannt.</translation>
    </message>
    <message>
        <source>The space given back so far stays so; nothing is lost.</source>
        <translation>Der bisher freigegebene Platz bleibt frei; nichts ist verloren.</translation>
    </message>
    <message>
        <source>The storage class %1 is unknown.</source>
        <translation>Die Speicherklasse %1 ist unbekannt.</translation>
    </message>
    <message>
        <source>The tag &quot;%1&quot; stands twice.</source>
        <translation>Das Schlagwort „%1“ steht zweimal da.</translation>
    </message>
    <message>
        <source>The title</source>
        <translation>Der Titel</translation>
    </message>
    <message>
        <source>The top-level element is expected to be an object.</source>
        <translation>Als oberstes Element wird ein Objekt erwartet.</translation>
    </message>
    <message>
        <source>The transaction is still pending.</source>
        <translation>Die Transaktion ist noch offen.</translation>
    </message>
    <message>
        <source>The transaction of this query has ended.</source>
        <translation>Die Transaktion dieser Abfrage ist beendet.</translation>
    </message>
    <message>
        <source>The transaction that is being read was rolled back.</source>
        <translation>Die Transaktion, die gelesen wird, wurde zurückgenommen.</translation>
    </message>
    <message>
        <source>The value</source>
        <translation>Der Wert</translation>
    </message>
    <message>
        <source>The value %1 is out of the range of the attribute &quot;%2&quot;.</source>
        <translation>Der Wert %1 liegt außerhalb des Wertebereichs des Attributs „%2“.</translation>
    </message>
    <message>
        <source>The value %1 of &quot;%2&quot; would become another number.</source>
        <translation>Aus dem Wert %1 von „%2“ würde eine andere Zahl.</translation>
    </message>
    <message>
        <source>The value %1 of the point attribute &quot;%2&quot; does not fit the data type that it is to be read as.</source>
        <translation>Der Wert %1 des Punktattributs „%2“ passt nicht in den Datentyp, als der er gelesen werden soll.</translation>
    </message>
    <message>
        <source>The value nests too deep for its schema: it nests more than %1 checks.</source>
        <translation>Der Wert ist für sein Schema zu tief verschachtelt: mehr als %1 Prüfungen liegen ineinander.</translation>
    </message>
    <message>
        <source>The value of the metadata item &quot;%1&quot;</source>
        <translation>Der Wert des Metadateneintrags „%1“</translation>
    </message>
    <message>
        <source>The values of &quot;%1&quot; contain infinite numbers.</source>
        <translation>Die Werte von „%1“ enthalten unendliche Zahlen.</translation>
    </message>
    <message>
        <source>The values of &quot;%1&quot; go from %2 to %3; the database holds %4 only.</source>
        <translation>Die Werte von „%1“ gehen von %2 bis %3; die Datenbank fasst nur %4.</translation>
    </message>
    <message>
        <source>The values of %1 lie on no grid, but LAS holds whole numbers of a step.</source>
        <translation>Die Werte von %1 liegen auf keinem Raster, aber LAS fasst nur ganzzahlige Vielfache einer Schrittweite.</translation>
    </message>
    <message>
        <source>The values of %1, %2, span more steps of %3 than a LAS file can number.</source>
        <translation>Die Werte von %1, %2, umfassen mehr Schritte von %3, als eine LAS-Datei nummerieren kann.</translation>
    </message>
    <message>
        <source>The variable length records take %1 bytes, more than a LAS file can have before its points.</source>
        <translation>Die Datensätze variabler Länge brauchen %1 Bytes, mehr als eine LAS-Datei vor ihren Punkten haben kann.</translation>
    </message>
    <message>
        <source>The waveforms stand in the .wdp file of the file that was imported: it has to be copied to the name of this one.</source>
        <translation>Die Wellenformen stehen in der .wdp-Datei der importierten Datei: sie muss unter dem Namen dieser Datei kopiert werden.</translation>
    </message>
    <message>
        <source>The waveforms themselves were left out by the import; their fields point to nothing.</source>
        <translation>Die Wellenformen selbst wurden beim Import weggelassen; ihre Felder zeigen ins Leere.</translation>
    </message>
    <message>
        <source>The whole numbers at position %1 give one that is too large to be held exactly. Write one of them with a decimal point to have it rounded.</source>
        <translation>Die ganzen Zahlen an Position %1 ergeben eine, die zu groß ist, um genau gehalten zu werden. Eine davon mit Dezimalpunkt schreiben, damit gerundet wird.</translation>
    </message>
    <message>
        <source>The whole numbers of 64 bits of &quot;%1&quot; leave none to say that a scan has no value.</source>
        <translation>Die ganzen Zahlen mit 64 Bit von „%1“ lassen keine übrig, die sagt, dass ein Scan keinen Wert hat.</translation>
    </message>
    <message>
        <source>The whole value: %1</source>
        <translation>Der ganze Wert: %1</translation>
    </message>
    <message>
        <source>There is an empty tag.</source>
        <translation>Es gibt ein leeres Schlagwort.</translation>
    </message>
    <message>
        <source>There is no Python.</source>
        <translation>Es gibt kein Python.</translation>
    </message>
    <message>
        <source>There is no attribute &quot;%1&quot; (position %2).</source>
        <translation>Es gibt kein Attribut „%1“ (Position %2).</translation>
    </message>
    <message>
        <source>There is no attribute &quot;%1&quot; in the file.</source>
        <translation>In der Datei gibt es kein Attribut „%1“.</translation>
    </message>
    <message>
        <source>There is no authentication function.</source>
        <translation>Es gibt keine Authentifizierungsfunktion.</translation>
    </message>
    <message>
        <source>There is no folder &quot;%1&quot;.</source>
        <translation>Den Ordner „%1“ gibt es nicht.</translation>
    </message>
    <message>
        <source>There is no folder for settings.</source>
        <translation>Es gibt keinen Ordner für Einstellungen.</translation>
    </message>
    <message>
        <source>There is no folder for temporary files.</source>
        <translation>Es gibt keinen Ordner für temporäre Dateien.</translation>
    </message>
    <message>
        <source>There is no folder to write &quot;%1&quot; to.</source>
        <translation>Es gibt keinen Ordner, in den „%1“ geschrieben werden könnte.</translation>
    </message>
    <message>
        <source>There was no validation to report on.</source>
        <translation>Es wurde nichts validiert, worüber zu berichten wäre.</translation>
    </message>
    <message>
        <source>They are xmin,ymin,xmax,ymax or xmin,ymin,zmin,xmax,ymax,zmax.</source>
        <translation>Sie sind xmin,ymin,xmax,ymax oder xmin,ymin,zmin,xmax,ymax,zmax.</translation>
    </message>
    <message>
        <source>Thin out with a larger one.</source>
        <translation>Mit einem größeren Abstand ausdünnen.</translation>
    </message>
    <message>
        <source>This format is written from its end to its beginning, too: give the name of a file.</source>
        <translation>Dieses Format wird auch vom Ende zum Anfang hin geschrieben: den Namen einer Datei angeben.</translation>
    </message>
    <message>
        <source>This name exists already.</source>
        <translation>Diesen Namen gibt es schon.</translation>
    </message>
    <message>
        <source>Together they have at most %1 bytes.</source>
        <translation>Zusammen haben sie höchstens %1 Bytes.</translation>
    </message>
    <message>
        <source>Transaction %1 can&apos;t be discarded: it is the current one.</source>
        <translation>Die Transaktion %1 kann nicht gelöscht werden: sie ist die aktuelle.</translation>
    </message>
    <message>
        <source>Transaction %1 can&apos;t be discarded: it is the first one.</source>
        <translation>Die Transaktion %1 kann nicht gelöscht werden: sie ist die erste.</translation>
    </message>
    <message>
        <source>Transaction %1, which is being read, was discarded and cleaned up meanwhile.</source>
        <translation>Die Transaktion %1, die gelesen wird, wurde inzwischen gelöscht und bereinigt.</translation>
    </message>
    <message>
        <source>Transform the points into one system first.</source>
        <translation>Die Punkte zuerst in ein gemeinsames System transformieren.</translation>
    </message>
    <message>
        <source>Try again when nobody writes to it.</source>
        <translation>Noch einmal versuchen, wenn niemand hineinschreibt.</translation>
    </message>
    <message>
        <source>Two parameters have the name &quot;%1&quot;.</source>
        <translation>Zwei Parameter haben den Namen „%1“.</translation>
    </message>
    <message>
        <source>Update the points with positions of their own.</source>
        <translation>Die Punkte mit jeweils eigenen Positionen ändern.</translation>
    </message>
    <message>
        <source>Use a smaller cache size or close other programs.</source>
        <translation>Einen kleineren Cache wählen oder andere Programme schließen.</translation>
    </message>
    <message>
        <source>Value of the first point in the order of the index.</source>
        <translation>Wert des ersten Punkts in der Reihenfolge des Index.</translation>
    </message>
    <message>
        <source>Values of &quot;%1:%2&quot; can&apos;t be bound, only those of an attribute.</source>
        <translation>Werte von „%1:%2“ können nicht gebunden werden, nur die eines Attributs.</translation>
    </message>
    <message>
        <source>Values of %1 are whole numbers beyond 2^53, for which PLY has no type.</source>
        <translation>Werte von %1 sind ganze Zahlen jenseits von 2^53, für die PLY keinen Typ hat.</translation>
    </message>
    <message>
        <source>Values of different units are not mixed, with --crs-as-is neither. If both mean the same unit,
write it alike first, with &quot;qrbtool attributes FILE put&quot;; else convert the values of one.</source>
        <translation>Werte verschiedener Einheiten werden nicht gemischt, auch nicht mit --crs-as-is. Wenn beide dieselbe
Einheit meinen, sie zuerst mit „qrbtool attributes FILE put“ gleich schreiben; sonst die Werte der einen umrechnen.</translation>
    </message>
    <message>
        <source>Versions 1.0 to 1.4 can be imported.</source>
        <translation>Die Versionen 1.0 bis 1.4 können importiert werden.</translation>
    </message>
    <message>
        <source>Waiting for programs that read the database was cancelled.</source>
        <translation>Das Warten auf Programme, die die Datenbank lesen, wurde abgebrochen.</translation>
    </message>
    <message>
        <source>What stood there before is as it was.</source>
        <translation>Was vorher dort stand, ist, wie es war.</translation>
    </message>
    <message>
        <source>Whole numbers of 64 bits are kept where all files and elements of an attribute have whole numbers
only: give those with other numbers, or without any, a name of their own.</source>
        <translation>Ganze Zahlen mit 64 Bit bleiben erhalten, wo alle Dateien und Elemente eines Attributs nur ganze Zahlen
haben: denen mit anderen Zahlen oder ohne Zahlen einen eigenen Namen geben.</translation>
    </message>
    <message>
        <source>Whole numbers of 64 bits are kept where no cell of their column is empty, has a point or an
exponent, or is negative beside one of 2^63 or more: put the lines of such cells into a file of
their own. Where the nearest number will do, write a point: %1.0</source>
        <translation>Ganze Zahlen mit 64 Bit bleiben erhalten, wo keine Zelle ihrer Spalte leer ist, einen Punkt oder einen
Exponenten hat oder neben einer von 2^63 oder mehr negativ ist: die Zeilen solcher Zellen in eine
eigene Datei schreiben. Wo die nächstliegende Zahl genügt, einen Punkt schreiben: %1.0</translation>
    </message>
    <message>
        <source>Without a title, lists show the name only.</source>
        <translation>Ohne Titel zeigen Listen nur den Namen.</translation>
    </message>
    <message>
        <source>Writing %1</source>
        <translation>%1 wird geschrieben</translation>
    </message>
    <message>
        <source>Writing the file failed: the disk may be full, or a limit on the size of files be reached. What was committed is safe: free some space and try again.</source>
        <translation>Das Schreiben der Datei ist fehlgeschlagen: vielleicht ist der Datenträger voll oder eine Grenze für die Größe von Dateien erreicht. Was festgeschrieben wurde, ist sicher: Platz schaffen und noch einmal versuchen.</translation>
    </message>
    <message>
        <source>Wrong plugin manifest.</source>
        <translation>Falsches Plugin-Manifest.</translation>
    </message>
    <message>
        <source>X and Y %1, Z %2</source>
        <translation>X und Y %1, Z %2</translation>
    </message>
    <message>
        <source>XML section</source>
        <translation>XML-Abschnitt</translation>
    </message>
    <message>
        <source>a 7z archive</source>
        <translation>ein 7z-Archiv</translation>
    </message>
    <message>
        <source>a PCD file</source>
        <translation>eine PCD-Datei</translation>
    </message>
    <message>
        <source>a PDF document</source>
        <translation>ein PDF-Dokument</translation>
    </message>
    <message>
        <source>a ZIP archive</source>
        <translation>ein ZIP-Archiv</translation>
    </message>
    <message>
        <source>a base that codes of %1 bytes can&apos;t hold</source>
        <translation>eine Basis, die Codes von %1 Bytes nicht fassen können</translation>
    </message>
    <message>
        <source>a block</source>
        <translation>ein Block</translation>
    </message>
    <message>
        <source>a block of &quot;%1&quot; in node %2</source>
        <translation>ein Block von „%1“ im Knoten %2</translation>
    </message>
    <message>
        <source>a block of a point attribute</source>
        <translation>ein Block eines Punktattributs</translation>
    </message>
    <message>
        <source>a column of %1 values of %2 bytes</source>
        <translation>eine Spalte von %1 Werten zu je %2 Bytes</translation>
    </message>
    <message>
        <source>a compressed block that does not end with its frame</source>
        <translation>ein komprimierter Block, der nicht mit seinem Rahmen endet</translation>
    </message>
    <message>
        <source>a compressed block that does not hold %1 bytes</source>
        <translation>ein komprimierter Block, der nicht %1 Bytes enthält</translation>
    </message>
    <message>
        <source>a constant value</source>
        <translation>ein konstanter Wert</translation>
    </message>
    <message>
        <source>a context</source>
        <translation>ein Kontext</translation>
    </message>
    <message>
        <source>a corner</source>
        <translation>eine Ecke</translation>
    </message>
    <message>
        <source>a corner has no two numbers</source>
        <translation>eine Ecke hat keine zwei Zahlen</translation>
    </message>
    <message>
        <source>a corner lies farther than 1e150 from 0</source>
        <translation>eine Ecke liegt weiter als 1e150 von 0 entfernt</translation>
    </message>
    <message>
        <source>a create settings record</source>
        <translation>ein Datensatz mit Einstellungen zum Anlegen</translation>
    </message>
    <message>
        <source>a database file</source>
        <translation>eine Datenbankdatei</translation>
    </message>
    <message>
        <source>a database handle</source>
        <translation>das Handle einer Datenbank</translation>
    </message>
    <message>
        <source>a fill query</source>
        <translation>eine Abfrage zum Füllen</translation>
    </message>
    <message>
        <source>a group has no name</source>
        <translation>eine Gruppe hat keinen Namen</translation>
    </message>
    <message>
        <source>a group is not closed</source>
        <translation>eine Gruppe ist nicht geschlossen</translation>
    </message>
    <message>
        <source>a leaf must have room for a point</source>
        <translation>ein Blatt muss Platz für einen Punkt haben</translation>
    </message>
    <message>
        <source>a metadata item</source>
        <translation>ein Metadateneintrag</translation>
    </message>
    <message>
        <source>a multiple of %1</source>
        <translation>ein Vielfaches von %1</translation>
    </message>
    <message>
        <source>a node that can&apos;t be</source>
        <translation>ein unmöglicher Knoten</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>a number or null</source>
        <translation>eine Zahl oder null</translation>
    </message>
    <message>
        <source>a number, a name or &quot;(&quot;</source>
        <translation>eine Zahl, ein Name oder „(“</translation>
    </message>
    <message>
        <source>a packet of a scan has %1 bytes, where %2 are left</source>
        <translation>ein Paket eines Scans hat %1 Bytes, wo noch %2 übrig sind</translation>
    </message>
    <message>
        <source>a packet of a scan is of the kind %1 with %2 of %3 fields</source>
        <translation>ein Paket eines Scans ist von der Art %1 mit %2 von %3 Feldern</translation>
    </message>
    <message>
        <source>a page of the index</source>
        <translation>eine Seite des Index</translation>
    </message>
    <message>
        <source>a point attribute record</source>
        <translation>der Datensatz eines Punktattributs</translation>
    </message>
    <message>
        <source>a point has an id that was not given yet</source>
        <translation>ein Punkt hat eine ID, die noch nicht vergeben wurde</translation>
    </message>
    <message>
        <source>a point stands in a leaf to which it does not belong</source>
        <translation>ein Punkt steht in einem Blatt, zu dem er nicht gehört</translation>
    </message>
    <message>
        <source>a polygon of &quot;coordinates&quot;</source>
        <translation>ein Polygon von „coordinates“</translation>
    </message>
    <message>
        <source>a property of characters has no &quot;}&quot;</source>
        <translation>einer Zeicheneigenschaft fehlt „}“</translation>
    </message>
    <message>
        <source>a range of characters ends before it begins</source>
        <translation>ein Zeichenbereich endet, bevor er beginnt</translation>
    </message>
    <message>
        <source>a reference</source>
        <translation>ein Verweis</translation>
    </message>
    <message>
        <source>a reference to nothing</source>
        <translation>ein Verweis auf nichts</translation>
    </message>
    <message>
        <source>a remove query</source>
        <translation>eine Abfrage zum Entfernen</translation>
    </message>
    <message>
        <source>a result</source>
        <translation>ein Ergebnis</translation>
    </message>
    <message>
        <source>a ring</source>
        <translation>ein Ring</translation>
    </message>
    <message>
        <source>a run of %1 bits in codes of %2 bytes</source>
        <translation>ein Lauf von %1 Bit in Codes von %2 Bytes</translation>
    </message>
    <message>
        <source>a select query</source>
        <translation>eine Abfrage zum Auswählen</translation>
    </message>
    <message>
        <source>a settings or attribute record</source>
        <translation>ein Datensatz mit Einstellungen oder einem Attribut</translation>
    </message>
    <message>
        <source>a stat query</source>
        <translation>eine Abfrage der Statistik</translation>
    </message>
    <message>
        <source>a string</source>
        <translation>ein Text</translation>
    </message>
    <message>
        <source>a system that was not understood</source>
        <translation>ein System, das nicht verstanden wurde</translation>
    </message>
    <message>
        <source>a text</source>
        <translation>ein Text</translation>
    </message>
    <message>
        <source>a text in JSON</source>
        <translation>ein Text in JSON</translation>
    </message>
    <message>
        <source>a text in UTF-16</source>
        <translation>ein Text in UTF-16</translation>
    </message>
    <message>
        <source>a text in UTF-8 without zero bytes</source>
        <translation>einen Text in UTF-8 ohne Nullbytes</translation>
    </message>
    <message>
        <source>a text in XML or HTML</source>
        <translation>ein Text in XML oder HTML</translation>
    </message>
    <message>
        <source>a text of the format %1</source>
        <translation>ein Text im Format %1</translation>
    </message>
    <message>
        <source>a text that matches %1</source>
        <translation>ein Text, auf den %1 passt</translation>
    </message>
    <message>
        <source>a text whose first line names no coordinates</source>
        <translation>ein Text, dessen erste Zeile keine Koordinaten nennt</translation>
    </message>
    <message>
        <source>a text whose lines end with carriage returns alone</source>
        <translation>ein Text, dessen Zeilen nur mit Wagenrücklauf enden</translation>
    </message>
    <message>
        <source>a transaction record</source>
        <translation>der Datensatz einer Transaktion</translation>
    </message>
    <message>
        <source>a value</source>
        <translation>ein Wert</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>eine ganze Zahl</translation>
    </message>
    <message>
        <source>a whole number of at most %1</source>
        <translation>eine ganze Zahl bis höchstens %1</translation>
    </message>
    <message>
        <source>an array</source>
        <translation>ein Array</translation>
    </message>
    <message>
        <source>an impossible size</source>
        <translation>eine unmögliche Größe</translation>
    </message>
    <message>
        <source>an index node made by qrb_pointcloud_graph_node_new</source>
        <translation>ein mit qrb_pointcloud_graph_node_new angelegter Indexknoten</translation>
    </message>
    <message>
        <source>an insert query</source>
        <translation>eine Abfrage zum Einfügen</translation>
    </message>
    <message>
        <source>an invert query</source>
        <translation>eine Abfrage zum Umkehren</translation>
    </message>
    <message>
        <source>an object</source>
        <translation>ein Objekt</translation>
    </message>
    <message>
        <source>an object lacks its &quot;type&quot;</source>
        <translation>einem Objekt fehlt „type“</translation>
    </message>
    <message>
        <source>an open settings record</source>
        <translation>ein Datensatz mit Einstellungen zum Öffnen</translation>
    </message>
    <message>
        <source>an operator</source>
        <translation>ein Operator</translation>
    </message>
    <message>
        <source>an operator or &quot;)&quot;</source>
        <translation>ein Operator oder „)“</translation>
    </message>
    <message>
        <source>an unending number</source>
        <translation>eine nicht endende Zahl</translation>
    </message>
    <message>
        <source>an update query</source>
        <translation>eine Abfrage zum Ändern</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>another number</source>
        <translation>eine andere Zahl</translation>
    </message>
    <message>
        <source>are %1 numbers, not 4 or 6</source>
        <translation>sind %1 Zahlen, nicht 4 oder 6</translation>
    </message>
    <message>
        <source>at least</source>
        <translation>mindestens</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>mindestens %1</translation>
    </message>
    <message>
        <source>at most</source>
        <translation>höchstens</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>höchstens %1</translation>
    </message>
    <message>
        <source>attribute table</source>
        <translation>Attributtabelle</translation>
    </message>
    <message>
        <source>attributes out of order</source>
        <translation>Attribute in falscher Reihenfolge</translation>
    </message>
    <message>
        <source>bytes behind its end</source>
        <translation>Bytes hinter dem Ende</translation>
    </message>
    <message>
        <source>can&apos;t be understood: %1.</source>
        <translation>ist nicht verständlich: %1.</translation>
    </message>
    <message>
        <source>chunk mode</source>
        <translation>Chunk-Modus</translation>
    </message>
    <message>
        <source>chunk size</source>
        <translation>Chunk-Größe</translation>
    </message>
    <message>
        <source>chunk table</source>
        <translation>Chunk-Tabelle</translation>
    </message>
    <message>
        <source>colours beyond the limits of their scan became those limits.</source>
        <translation>Farben jenseits der Grenzen ihres Scans wurden zu diesen Grenzen.</translation>
    </message>
    <message>
        <source>column %1</source>
        <translation>Spalte %1</translation>
    </message>
    <message>
        <source>compressed data that does not decompress: %1</source>
        <translation>komprimierte Daten, die sich nicht entpacken lassen: %1</translation>
    </message>
    <message>
        <source>compression level</source>
        <translation>Komprimierungsgrad</translation>
    </message>
    <message>
        <source>contains a zero byte.</source>
        <translation>enthält ein Nullbyte.</translation>
    </message>
    <message>
        <source>contents that can&apos;t be unpacked</source>
        <translation>Inhalt, der nicht entpackt werden kann</translation>
    </message>
    <message>
        <source>coordinate reference system</source>
        <translation>Koordinatensystem</translation>
    </message>
    <message>
        <source>coordinates were computed by the poses or angles of scans and rounded to 0.000001.</source>
        <translation>Koordinaten wurden aus den Lagen oder Winkeln der Scans berechnet und auf 0.000001 gerundet.</translation>
    </message>
    <message>
        <source>data of a scan</source>
        <translation>Daten eines Scans</translation>
    </message>
    <message>
        <source>data of a transaction</source>
        <translation>ein Datenblock einer Transaktion</translation>
    </message>
    <message>
        <source>element %1 is no name.</source>
        <translation>Element %1 ist kein Name.</translation>
    </message>
    <message>
        <source>element %1 is no text.</source>
        <translation>Element %1 ist kein Text.</translation>
    </message>
    <message>
        <source>ends a matrix that puts different points into the same place</source>
        <translation>beendet eine Matrix, die verschiedene Punkte an denselben Ort legt</translation>
    </message>
    <message>
        <source>ends a matrix whose numbers are not finite</source>
        <translation>beendet eine Matrix, deren Zahlen nicht endlich sind</translation>
    </message>
    <message>
        <source>expected &quot;]&quot; behind the element.</source>
        <translation>erwartet wird „]“ hinter dem Element.</translation>
    </message>
    <message>
        <source>expected %1, found %2</source>
        <translation>erwartet: %1; gefunden: %2</translation>
    </message>
    <message>
        <source>expected a name that begins with a letter.</source>
        <translation>erwartet wird ein Name, der mit einem Buchstaben beginnt.</translation>
    </message>
    <message>
        <source>expected a number above 0.</source>
        <translation>erwartet wird eine Zahl über 0.</translation>
    </message>
    <message>
        <source>expected a number between &quot;[&quot; and &quot;]&quot;.</source>
        <translation>erwartet wird eine Zahl zwischen „[“ und „]“.</translation>
    </message>
    <message>
        <source>expected a number.</source>
        <translation>erwartet wird eine Zahl.</translation>
    </message>
    <message>
        <source>expected a regular expression.</source>
        <translation>erwartet wird ein regulärer Ausdruck.</translation>
    </message>
    <message>
        <source>expected a schema: an object, true or false.</source>
        <translation>erwartet wird ein Schema: ein Objekt, true oder false.</translation>
    </message>
    <message>
        <source>expected a whole number from 0.</source>
        <translation>erwartet wird eine ganze Zahl ab 0.</translation>
    </message>
    <message>
        <source>expected an array of schemas.</source>
        <translation>erwartet wird ein Array von Schemas.</translation>
    </message>
    <message>
        <source>expected an array of texts.</source>
        <translation>erwartet wird ein Array von Texten.</translation>
    </message>
    <message>
        <source>expected an array of values.</source>
        <translation>erwartet wird ein Array von Werten.</translation>
    </message>
    <message>
        <source>expected an object of schemas.</source>
        <translation>erwartet wird ein Objekt aus Schemas.</translation>
    </message>
    <message>
        <source>expected an object.</source>
        <translation>erwartet wird ein Objekt.</translation>
    </message>
    <message>
        <source>expected minimum, maximum, default or invalid behind &quot;:&quot;.</source>
        <translation>erwartet wird minimum, maximum, default oder invalid hinter „:“.</translation>
    </message>
    <message>
        <source>expected the name of a format.</source>
        <translation>erwartet wird der Name eines Formats.</translation>
    </message>
    <message>
        <source>expected true or false.</source>
        <translation>erwartet wird true oder false.</translation>
    </message>
    <message>
        <source>extended variable length record</source>
        <translation>erweiterter Datensatz variabler Länge</translation>
    </message>
    <message>
        <source>extents of another length than the blob</source>
        <translation>Abschnitte anderer Länge als der des Blobs</translation>
    </message>
    <message>
        <source>extents that are empty or not apart from each other</source>
        <translation>Abschnitte, die leer oder nicht voneinander getrennt sind</translation>
    </message>
    <message>
        <source>fewer runs than %1 values take</source>
        <translation>weniger Läufe, als %1 Werte brauchen</translation>
    </message>
    <message>
        <source>fields of texts were passed over.</source>
        <translation>Felder mit Texten wurden übergangen.</translation>
    </message>
    <message>
        <source>found &quot;%1&quot; behind the name.</source>
        <translation>gefunden wurde „%1“ hinter dem Namen.</translation>
    </message>
    <message>
        <source>has &quot;%1&quot; for &quot;%2&quot;, which is no number of its type</source>
        <translation>hat „%1“ für „%2“, was keine Zahl des zugehörigen Typs ist</translation>
    </message>
    <message>
        <source>has &quot;%1&quot; in place of a colour</source>
        <translation>hat „%1“ anstelle einer Farbe</translation>
    </message>
    <message>
        <source>has &quot;%1&quot; in place of a number</source>
        <translation>hat „%1“ anstelle einer Zahl</translation>
    </message>
    <message>
        <source>has %1 numbers in place of %2</source>
        <translation>hat %1 Zahlen anstelle von %2</translation>
    </message>
    <message>
        <source>has %1 numbers in place of 4 or 7</source>
        <translation>hat %1 Zahlen statt 4 oder 7</translation>
    </message>
    <message>
        <source>has a back reference, which is not supported.</source>
        <translation>hat einen Rückverweis, was nicht unterstützt wird.</translation>
    </message>
    <message>
        <source>has a limit that is not a finite number.</source>
        <translation>hat eine Grenze, die keine endliche Zahl ist.</translation>
    </message>
    <message>
        <source>has a list of another length than it says</source>
        <translation>hat eine Liste von anderer Länge, als sie angibt</translation>
    </message>
    <message>
        <source>has a minimum above its maximum.</source>
        <translation>hat ein Minimum, das über dem Maximum liegt.</translation>
    </message>
    <message>
        <source>has a range of more than 2^53 steps.</source>
        <translation>hat einen Wertebereich von mehr als 2^53 Schritten.</translation>
    </message>
    <message>
        <source>has a range that doesn&apos;t fit into 64 bits.</source>
        <translation>hat einen Wertebereich, der nicht in 64 Bit passt.</translation>
    </message>
    <message>
        <source>has a resolution of %1, which is neither positive nor 0.</source>
        <translation>hat eine Auflösung von %1, die weder positiv noch 0 ist.</translation>
    </message>
    <message>
        <source>has items of version %1</source>
        <translation>hat Bestandteile der Version %1</translation>
    </message>
    <message>
        <source>has more faults than those listed here</source>
        <translation>hat mehr Fehler als die hier genannten</translation>
    </message>
    <message>
        <source>has no code left for its invalid value %1.</source>
        <translation>hat keinen Code übrig für den Ungültigwert %1.</translation>
    </message>
    <message>
        <source>has no element like the one that the schema asks for</source>
        <translation>hat kein Element, wie das Schema eines verlangt</translation>
    </message>
    <message>
        <source>has too few numbers</source>
        <translation>hat zu wenige Zahlen</translation>
    </message>
    <message>
        <source>has too many digits: it would be taken for %1.</source>
        <translation>hat zu viele Ziffern: sie würde als %1 gelesen.</translation>
    </message>
    <message>
        <source>has too many numbers</source>
        <translation>hat zu viele Zahlen</translation>
    </message>
    <message>
        <source>have a least %1 that is larger than the largest</source>
        <translation>haben ein kleinstes %1, das größer als das größte ist</translation>
    </message>
    <message>
        <source>have more than a number at place %1</source>
        <translation>haben an Stelle %1 mehr als eine Zahl</translation>
    </message>
    <message>
        <source>have no number at place %1</source>
        <translation>haben an Stelle %1 keine Zahl</translation>
    </message>
    <message>
        <source>id %1: %2</source>
        <translation>Nr. %1: %2</translation>
    </message>
    <message>
        <source>id %1: %2 -&gt; %3</source>
        <translation>Nr. %1: %2 -&gt; %3</translation>
    </message>
    <message>
        <source>images were passed over.</source>
        <translation>Bilder wurden übergangen.</translation>
    </message>
    <message>
        <source>in %1</source>
        <translation>in %1</translation>
    </message>
    <message>
        <source>in a unit that is not told</source>
        <translation>in einer nicht genannten Einheit</translation>
    </message>
    <message>
        <source>is coded as LAZ writers did before version 2.0 (items of version 1)</source>
        <translation>ist codiert, wie es LAZ-Programme vor Version 2.0 taten (Bestandteile der Version 1)</translation>
    </message>
    <message>
        <source>is longer than %1 bytes.</source>
        <translation>ist länger als %1 Bytes.</translation>
    </message>
    <message>
        <source>is not allowed here</source>
        <translation>ist hier nicht erlaubt</translation>
    </message>
    <message>
        <source>is not the number of %1</source>
        <translation>ist nicht die Anzahl: %1</translation>
    </message>
    <message>
        <source>is the same as element %1</source>
        <translation>ist dasselbe wie Element %1</translation>
    </message>
    <message>
        <source>is too large or too small.</source>
        <translation>ist zu groß oder zu klein.</translation>
    </message>
    <message>
        <source>is too large to be held exactly: whole numbers go up to %1. Write it with an exponent to have it rounded.</source>
        <translation>ist zu groß, um exakt dargestellt zu werden: ganze Zahlen reichen bis %1. Sie mit Exponent schreiben, damit gerundet wird.</translation>
    </message>
    <message>
        <source>is too large.</source>
        <translation>ist zu groß.</translation>
    </message>
    <message>
        <source>it begins with neither POLYGON nor MULTIPOLYGON</source>
        <translation>der Text beginnt weder mit POLYGON noch mit MULTIPOLYGON</translation>
    </message>
    <message>
        <source>it can&apos;t be locked: %1</source>
        <translation>sie kann nicht gesperrt werden: %1</translation>
    </message>
    <message>
        <source>it can&apos;t be opened for writing</source>
        <translation>sie kann nicht zum Schreiben geöffnet werden</translation>
    </message>
    <message>
        <source>it does not begin with &quot;ASTM-E57&quot;</source>
        <translation>sie beginnt nicht mit „ASTM-E57“</translation>
    </message>
    <message>
        <source>it does not begin with &quot;ply&quot;</source>
        <translation>sie beginnt nicht mit „ply“</translation>
    </message>
    <message>
        <source>it ends after %1 of %2 lines of the element &quot;%3&quot;</source>
        <translation>sie endet nach %1 von %2 Zeilen des Elements „%3“</translation>
    </message>
    <message>
        <source>it ends before its layers</source>
        <translation>er endet vor seinen Schichten</translation>
    </message>
    <message>
        <source>it ends within a scan</source>
        <translation>sie endet innerhalb eines Scans</translation>
    </message>
    <message>
        <source>it ends within a scan of %1 points</source>
        <translation>sie endet innerhalb eines Scans von %1 Punkten</translation>
    </message>
    <message>
        <source>it ends within an element</source>
        <translation>sie endet innerhalb eines Elements</translation>
    </message>
    <message>
        <source>it ends within its first point</source>
        <translation>er endet innerhalb seines ersten Punkts</translation>
    </message>
    <message>
        <source>it has %1 bytes instead of %2 and more</source>
        <translation>er hat %1 Bytes statt %2 und mehr</translation>
    </message>
    <message>
        <source>it has %1 bytes of %2</source>
        <translation>sie hat %1 Bytes von %2</translation>
    </message>
    <message>
        <source>it has %1 bytes, too few for %2 items</source>
        <translation>er hat %1 Bytes, zu wenige für %2 Bestandteile</translation>
    </message>
    <message>
        <source>it has another length in the node</source>
        <translation>es hat im Knoten eine andere Länge</translation>
    </message>
    <message>
        <source>it has more than %1 parts.</source>
        <translation>es hat mehr als %1 Teile.</translation>
    </message>
    <message>
        <source>it has more than %1 properties</source>
        <translation>sie hat mehr als %1 Eigenschaften</translation>
    </message>
    <message>
        <source>it has no chunk table, and its chunks are of different sizes</source>
        <translation>sie hat keine Chunk-Tabelle, und ihre Chunks sind verschieden groß</translation>
    </message>
    <message>
        <source>it has no positions</source>
        <translation>er hat keine Positionen</translation>
    </message>
    <message>
        <source>it has no record that tells how its points are compressed</source>
        <translation>sie hat keinen Datensatz, der sagt, wie ihre Punkte komprimiert sind</translation>
    </message>
    <message>
        <source>it has no vertices</source>
        <translation>sie hat keine Eckpunkte</translation>
    </message>
    <message>
        <source>it has the element &quot;vertex&quot; twice</source>
        <translation>sie hat das Element „vertex“ zweimal</translation>
    </message>
    <message>
        <source>it has too many references into very large objects.</source>
        <translation>es hat zu viele Verweise in sehr große Objekte.</translation>
    </message>
    <message>
        <source>it holds a &quot;%1&quot;, not a polygon</source>
        <translation>darin ist ein „%1“, kein Polygon</translation>
    </message>
    <message>
        <source>it holds floating-point numbers.</source>
        <translation>es enthält Gleitkommazahlen.</translation>
    </message>
    <message>
        <source>it is a %1, not a polygon</source>
        <translation>das ist ein %1, kein Polygon</translation>
    </message>
    <message>
        <source>it is a folder</source>
        <translation>das ist ein Ordner</translation>
    </message>
    <message>
        <source>it is damaged or cut off</source>
        <translation>sie ist beschädigt oder abgeschnitten</translation>
    </message>
    <message>
        <source>it is empty</source>
        <translation>sie ist leer</translation>
    </message>
    <message>
        <source>it is no JSON: %1 At byte %2</source>
        <translation>sie ist kein JSON: %1 Bei Byte %2</translation>
    </message>
    <message>
        <source>it is no ordinary file</source>
        <translation>das ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>it is of version %1.%2, and only version 1 is known</source>
        <translation>sie hat Version %1.%2, und nur Version 1 ist bekannt</translation>
    </message>
    <message>
        <source>it names compressor %1 and coder %2; 1 to 3 and 0 are known</source>
        <translation>er nennt Kompressor %1 und Codierer %2; bekannt sind 1 bis 3 und 0</translation>
    </message>
    <message>
        <source>it names no type.</source>
        <translation>es nennt keinen Typ.</translation>
    </message>
    <message>
        <source>it nests more than %1 references.</source>
        <translation>mehr als %1 Verweise liegen ineinander.</translation>
    </message>
    <message>
        <source>it nests more than %1 schemas.</source>
        <translation>mehr als %1 Schemas liegen ineinander.</translation>
    </message>
    <message>
        <source>it refers back to itself for the same value.</source>
        <translation>es verweist für denselben Wert auf sich selbst zurück.</translation>
    </message>
    <message>
        <source>it refers to &quot;%1&quot;, which the schema does not have.</source>
        <translation>es verweist auf „%1“, was das Schema nicht hat.</translation>
    </message>
    <message>
        <source>it refers to &quot;%1&quot;.</source>
        <translation>es verweist auf „%1“.</translation>
    </message>
    <message>
        <source>it tells of %1 points, but it should have %2</source>
        <translation>er nennt %1 Punkte, sollte aber %2 haben</translation>
    </message>
    <message>
        <source>its XML section has a document type</source>
        <translation>ihr XML-Abschnitt hat einen Dokumenttyp</translation>
    </message>
    <message>
        <source>its XML section has a fault at byte %1: %2</source>
        <translation>ihr XML-Abschnitt hat einen Fehler bei Byte %1: %2</translation>
    </message>
    <message>
        <source>its XML section is not one of an E57 file</source>
        <translation>ihr XML-Abschnitt ist nicht der einer E57-Datei</translation>
    </message>
    <message>
        <source>its XML section nests deeper than %1 elements</source>
        <translation>ihr XML-Abschnitt ist tiefer als %1 Elemente verschachtelt</translation>
    </message>
    <message>
        <source>its XML section takes %1 bytes, more than %2</source>
        <translation>ihr XML-Abschnitt hat %1 Bytes, mehr als %2</translation>
    </message>
    <message>
        <source>its chunk at byte %1 has %2 bytes; %3 can be read</source>
        <translation>ihr Chunk bei Byte %1 hat %2 Bytes; gelesen werden können %3</translation>
    </message>
    <message>
        <source>its coded points are damaged or cut off</source>
        <translation>seine codierten Punkte sind beschädigt oder abgeschnitten</translation>
    </message>
    <message>
        <source>its coded points take fewer bytes than it has</source>
        <translation>seine codierten Punkte brauchen weniger Bytes, als er hat</translation>
    </message>
    <message>
        <source>its compression options are %1, 0 to 3 are possible.</source>
        <translation>seine Komprimierungsoptionen sind %1, möglich ist 0 bis 3.</translation>
    </message>
    <message>
        <source>its default value is neither in its range nor the invalid value.</source>
        <translation>seine Vorgabe liegt weder im Wertebereich, noch ist sie der Ungültigwert.</translation>
    </message>
    <message>
        <source>its end too early</source>
        <translation>ein zu frühes Ende</translation>
    </message>
    <message>
        <source>its index has no root</source>
        <translation>ihr Index hat keine Wurzel</translation>
    </message>
    <message>
        <source>its index is not a tree</source>
        <translation>ihr Index ist kein Baum</translation>
    </message>
    <message>
        <source>its invalid value is infinite.</source>
        <translation>sein Ungültigwert ist unendlich.</translation>
    </message>
    <message>
        <source>its items are not those of point format %1 with records of %2 bytes</source>
        <translation>seine Bestandteile sind nicht die des Punktformats %1 mit Datensätzen von %2 Bytes</translation>
    </message>
    <message>
        <source>its layer %1 has %2 bytes, but %3 are left</source>
        <translation>seine Schicht %1 hat %2 Bytes, aber %3 sind übrig</translation>
    </message>
    <message>
        <source>its length is %1, 1 to %2 is possible.</source>
        <translation>seine Länge ist %1, möglich ist 1 bis %2.</translation>
    </message>
    <message>
        <source>its name may hold letters, digits, &quot;.&quot; and &quot;_&quot; only.</source>
        <translation>sein Name darf nur Buchstaben, Ziffern, „.“ und „_“ enthalten.</translation>
    </message>
    <message>
        <source>its name must begin with a letter and have at most 255 characters.</source>
        <translation>sein Name muss mit einem Buchstaben beginnen und darf höchstens 255 Zeichen haben.</translation>
    </message>
    <message>
        <source>its pages have %1 bytes, and only pages of %2 are known</source>
        <translation>ihre Seiten haben %1 Bytes, und nur Seiten von %2 sind bekannt</translation>
    </message>
    <message>
        <source>its regular expressions are too many or too large.</source>
        <translation>seine regulären Ausdrücke sind zu viele oder zu groß.</translation>
    </message>
    <message>
        <source>its resolution is %1, from %2.</source>
        <translation>seine Auflösung ist %1, ab %2.</translation>
    </message>
    <message>
        <source>its scale factor is not a number.</source>
        <translation>sein Skalenfaktor ist keine Zahl.</translation>
    </message>
    <message>
        <source>its storage class is %1, 1 (constant), 2 (variable) and 3 (dynamic) are possible.</source>
        <translation>seine Speicherklasse ist %1, möglich sind 1 (constant), 2 (variable) und 3 (dynamic).</translation>
    </message>
    <message>
        <source>its vertices have no numbers</source>
        <translation>ihre Eckpunkte haben keine Zahlen</translation>
    </message>
    <message>
        <source>less than</source>
        <translation>weniger als</translation>
    </message>
    <message>
        <source>level-of-detail mode</source>
        <translation>Detailstufen-Modus</translation>
    </message>
    <message>
        <source>level-of-detail setting</source>
        <translation>Detailstufe</translation>
    </message>
    <message>
        <source>level-of-detail size</source>
        <translation>Detailstufen-Größe</translation>
    </message>
    <message>
        <source>line %1 %2</source>
        <translation>Zeile %1 %2</translation>
    </message>
    <message>
        <source>line %1 of the header is &quot;%2&quot;</source>
        <translation>Zeile %1 des Kopfs ist „%2“</translation>
    </message>
    <message>
        <source>list of named values</source>
        <translation>benannte Werte</translation>
    </message>
    <message>
        <source>looks ahead, which is not supported.</source>
        <translation>blickt voraus, was nicht unterstützt wird.</translation>
    </message>
    <message>
        <source>looks behind, which is not supported.</source>
        <translation>blickt zurück, was nicht unterstützt wird.</translation>
    </message>
    <message>
        <source>metadata item</source>
        <translation>Metadateneintrag</translation>
    </message>
    <message>
        <source>more than</source>
        <translation>mehr als</translation>
    </message>
    <message>
        <source>more than fits in memory</source>
        <translation>mehr, als in den Arbeitsspeicher passt</translation>
    </message>
    <message>
        <source>names of point attributes</source>
        <translation>Namen von Punktattributen</translation>
    </message>
    <message>
        <source>no unit</source>
        <translation>keine Einheit</translation>
    </message>
    <message>
        <source>no value</source>
        <translation>kein Wert</translation>
    </message>
    <message>
        <source>node ids such as 1,4-7</source>
        <translation>Nummern von Knoten wie 1,4-7</translation>
    </message>
    <message>
        <source>nodes too deep below each other</source>
        <translation>zu tief ineinander verschachtelte Knoten</translation>
    </message>
    <message>
        <source>not of a format that is known</source>
        <translation>in keinem bekannten Format</translation>
    </message>
    <message>
        <source>nothing follows the last &quot;\&quot;</source>
        <translation>auf das letzte „\“ folgt nichts</translation>
    </message>
    <message>
        <source>nothing tells what &quot;%1&quot; and further columns mean.</source>
        <translation>nichts sagt, was „%1“ und weitere Spalten bedeuten.</translation>
    </message>
    <message>
        <source>nothing tells what &quot;%1&quot; and further columns mean. %2</source>
        <translation>nichts sagt, was „%1“ und weitere Spalten bedeuten. %2</translation>
    </message>
    <message>
        <source>one holds whole numbers above 2^53, another fractions.</source>
        <translation>eine enthält ganze Zahlen über 2^53, eine andere gebrochene.</translation>
    </message>
    <message>
        <source>one of its &quot;features&quot; is none</source>
        <translation>eines der „features“ ist keines</translation>
    </message>
    <message>
        <source>or %1</source>
        <translation>oder %1</translation>
    </message>
    <message>
        <source>or one of %1 more</source>
        <translation>oder einer von %1 weiteren</translation>
    </message>
    <message>
        <source>packed by bzip2</source>
        <translation>mit bzip2 gepackt</translation>
    </message>
    <message>
        <source>packed by gzip</source>
        <translation>mit gzip gepackt</translation>
    </message>
    <message>
        <source>packed by xz</source>
        <translation>mit xz gepackt</translation>
    </message>
    <message>
        <source>packed by zstd</source>
        <translation>mit zstd gepackt</translation>
    </message>
    <message>
        <source>place of the chunk table</source>
        <translation>Ort der Chunk-Tabelle</translation>
    </message>
    <message>
        <source>point data</source>
        <translation>Punktdaten</translation>
    </message>
    <message>
        <source>point insert mode</source>
        <translation>Einfügemodus</translation>
    </message>
    <message>
        <source>points that their scans call invalid were left out.</source>
        <translation>Punkte, die ihre Scans als ungültig bezeichnen, wurden weggelassen.</translation>
    </message>
    <message>
        <source>position %1</source>
        <translation>Position %1</translation>
    </message>
    <message>
        <source>public header block</source>
        <translation>öffentlicher Kopf der Datei</translation>
    </message>
    <message>
        <source>repeats too much.</source>
        <translation>wiederholt zu viel.</translation>
    </message>
    <message>
        <source>ring %1 of polygon %2 has fewer than 3 corners</source>
        <translation>Ring %1 von Polygon %2 hat weniger als 3 Ecken</translation>
    </message>
    <message>
        <source>satisfies more than one of the alternatives</source>
        <translation>entspricht mehr als einer der Alternativen</translation>
    </message>
    <message>
        <source>satisfies none of the alternatives</source>
        <translation>entspricht keiner der Alternativen</translation>
    </message>
    <message>
        <source>satisfies what the schema excludes with &quot;not&quot;</source>
        <translation>entspricht dem, was das Schema mit „not“ ausschließt</translation>
    </message>
    <message>
        <source>scan holds more records than it tells, which are left out.</source>
        <translation>Scan enthält mehr Datensätze, als er angibt; diese wurden weggelassen.</translation>
    </message>
    <message>
        <source>scan without coordinates was passed over.</source>
        <translation>Scan ohne Koordinaten wurde übergangen.</translation>
    </message>
    <message>
        <source>scans hold more records than they tell, which are left out.</source>
        <translation>Scans enthalten mehr Datensätze, als sie angeben; diese wurden weggelassen.</translation>
    </message>
    <message>
        <source>scans without coordinates were passed over.</source>
        <translation>Scans ohne Koordinaten wurden übergangen.</translation>
    </message>
    <message>
        <source>section of a scan</source>
        <translation>Abschnitt eines Scans</translation>
    </message>
    <message>
        <source>string value</source>
        <translation>eine Zeichenkette</translation>
    </message>
    <message>
        <source>tag list</source>
        <translation>Schlagwörter</translation>
    </message>
    <message>
        <source>the %1 at byte %2 takes %3 bytes, but the file ends at byte %4</source>
        <translation>der Teil „%1“ bei Byte %2 braucht %3 Byte, aber die Datei endet bei Byte %4</translation>
    </message>
    <message>
        <source>the %1 goes beyond the end of the file</source>
        <translation>der Teil „%1“ geht über das Ende der Datei hinaus</translation>
    </message>
    <message>
        <source>the %1 is said to begin at byte %2, where there is no data</source>
        <translation>der Teil „%1“ soll bei Byte %2 beginnen, wo keine Daten sind</translation>
    </message>
    <message>
        <source>the %1 offset is %2</source>
        <translation>der Versatz von %1 ist %2</translation>
    </message>
    <message>
        <source>the %1 scale factor is %2</source>
        <translation>der Skalenfaktor von %1 ist %2</translation>
    </message>
    <message>
        <source>the GeoTIFF keys, which are too long</source>
        <translation>die GeoTIFF-Schlüssel, die zu lang sind</translation>
    </message>
    <message>
        <source>the attribute table</source>
        <translation>die Attributtabelle</translation>
    </message>
    <message>
        <source>the attribute table of transaction %1</source>
        <translation>die Attributtabelle von Transaktion %1</translation>
    </message>
    <message>
        <source>the block has other least and greatest values than the node tells</source>
        <translation>der Block hat andere kleinste und größte Werte, als der Knoten angibt</translation>
    </message>
    <message>
        <source>the block has values beyond their range</source>
        <translation>der Block hat Werte außerhalb des Wertebereichs</translation>
    </message>
    <message>
        <source>the changelog</source>
        <translation>das Änderungsprotokoll</translation>
    </message>
    <message>
        <source>the chunk at byte %1 has %2 points in %3 bytes, of which %4 are there</source>
        <translation>der Chunk bei Byte %1 hat %2 Punkte in %3 Bytes, von denen %4 da sind</translation>
    </message>
    <message>
        <source>the chunk at byte %1: %2</source>
        <translation>der Chunk bei Byte %1: %2</translation>
    </message>
    <message>
        <source>the chunk table has version %1; 0 is known</source>
        <translation>die Chunk-Tabelle hat Version %1; bekannt ist 0</translation>
    </message>
    <message>
        <source>the chunk table is at byte %1, before the points</source>
        <translation>die Chunk-Tabelle steht bei Byte %1, vor den Punkten</translation>
    </message>
    <message>
        <source>the chunk table tells of %1 chunks, but there is no room for them</source>
        <translation>die Chunk-Tabelle nennt %1 Chunks, aber für sie ist kein Platz</translation>
    </message>
    <message>
        <source>the chunk table: %1</source>
        <translation>die Chunk-Tabelle: %1</translation>
    </message>
    <message>
        <source>the code %1 of %2</source>
        <translation>der Code %1 von %2</translation>
    </message>
    <message>
        <source>the codec %1, which is not known</source>
        <translation>der Codec %1, der nicht bekannt ist</translation>
    </message>
    <message>
        <source>the data of a scan ends %1 records before its last one</source>
        <translation>die Daten eines Scans enden %1 Datensätze vor dem letzten</translation>
    </message>
    <message>
        <source>the data of a scan stands outside of its section</source>
        <translation>die Daten eines Scans stehen außerhalb seines Abschnitts</translation>
    </message>
    <message>
        <source>the database</source>
        <translation>die Datenbank</translation>
    </message>
    <message>
        <source>the default value %1</source>
        <translation>der Vorgabewert %1</translation>
    </message>
    <message>
        <source>the directory of the GeoTIFF keys, which is cut off</source>
        <translation>das Verzeichnis der GeoTIFF-Schlüssel, das abgeschnitten ist</translation>
    </message>
    <message>
        <source>the end</source>
        <translation>das Ende</translation>
    </message>
    <message>
        <source>the end of the well-known text, which is cut off</source>
        <translation>das Ende des Well-known Texts, der abgeschnitten ist</translation>
    </message>
    <message>
        <source>the extra bytes &quot;%1&quot; have the data type %2; 0 to 30 are known</source>
        <translation>die Extra-Bytes „%1“ haben den Datentyp %2; bekannt sind 0 bis 30</translation>
    </message>
    <message>
        <source>the extra bytes &quot;%1&quot; have the scale %2 and the offset %3</source>
        <translation>die Extra-Bytes „%1“ haben die Skala %2 und den Versatz %3</translation>
    </message>
    <message>
        <source>the extra bytes &quot;%1&quot; take %2 bytes from byte %3 of a point, but the point data record length is %4</source>
        <translation>die Extra-Bytes „%1“ belegen %2 Bytes ab Byte %3 eines Punkts, aber die Länge eines Punktdatensatzes ist %4</translation>
    </message>
    <message>
        <source>the extra bytes record has a length of %1, which is not a multiple of 192</source>
        <translation>der Datensatz der Extra-Bytes hat eine Länge von %1, die kein Vielfaches von 192 ist</translation>
    </message>
    <message>
        <source>the fields of a packet take more bytes than the packet has</source>
        <translation>die Felder eines Pakets brauchen mehr Bytes, als das Paket hat</translation>
    </message>
    <message>
        <source>the fields of a scan stand too far apart</source>
        <translation>die Felder eines Scans stehen zu weit auseinander</translation>
    </message>
    <message>
        <source>the geographic system %1 for geocentric coordinates</source>
        <translation>das geographische System %1 für geozentrische Koordinaten</translation>
    </message>
    <message>
        <source>the header has no end</source>
        <translation>der Kopf hat kein Ende</translation>
    </message>
    <message>
        <source>the header is longer than %1 bytes</source>
        <translation>der Kopf ist länger als %1 Bytes</translation>
    </message>
    <message>
        <source>the header tells %1 points, but there is room for %2 more behind them, which are left out.</source>
        <translation>der Kopf nennt %1 Punkte, aber dahinter ist Platz für %2 weitere, die weggelassen werden.</translation>
    </message>
    <message>
        <source>the header tells %1 vertices, but %2 more line follows, which is left out.</source>
        <translation>der Kopf nennt %1 Eckpunkte, aber es folgt %2 weitere Zeile, die ausgelassen wird.</translation>
    </message>
    <message>
        <source>the header tells %1 vertices, but %2 more lines follow, which are left out.</source>
        <translation>der Kopf nennt %1 Eckpunkte, aber es folgen %2 weitere Zeilen, die ausgelassen werden.</translation>
    </message>
    <message>
        <source>the index is missing</source>
        <translation>der Index fehlt</translation>
    </message>
    <message>
        <source>the invalid value %1</source>
        <translation>der Ungültigwert %1</translation>
    </message>
    <message>
        <source>the invalid value %1 of one is a value of another.</source>
        <translation>der Ungültigwert %1 des einen ist ein Wert eines anderen.</translation>
    </message>
    <message>
        <source>the item &quot;%1&quot;</source>
        <translation>der Eintrag „%1“</translation>
    </message>
    <message>
        <source>the keyword &quot;%1&quot; is newer than draft 7, which is supported.</source>
        <translation>das Schlüsselwort „%1“ ist neuer als der unterstützte Entwurf 7.</translation>
    </message>
    <message>
        <source>the limits of a repetition are the wrong way round</source>
        <translation>die Grenzen einer Wiederholung sind vertauscht</translation>
    </message>
    <message>
        <source>the list &quot;%1&quot; before byte %2 is longer than the file</source>
        <translation>die Liste „%1“ vor Byte %2 ist länger als die Datei</translation>
    </message>
    <message>
        <source>the list of transactions</source>
        <translation>die Liste der Transaktionen</translation>
    </message>
    <message>
        <source>the lists &quot;%1&quot; of the vertices were passed over.</source>
        <translation>die Listen „%1“ der Eckpunkte wurden übergangen.</translation>
    </message>
    <message>
        <source>the member %1 is missing</source>
        <translation>das Element %1 fehlt</translation>
    </message>
    <message>
        <source>the member %1 is missing, which another member needs</source>
        <translation>das Element %1 fehlt, das ein anderes Element braucht</translation>
    </message>
    <message>
        <source>the name of a point attribute</source>
        <translation>den Namen eines Punktattributs</translation>
    </message>
    <message>
        <source>the name of the member is not allowed</source>
        <translation>der Name des Elements ist nicht erlaubt</translation>
    </message>
    <message>
        <source>the name of the member is not allowed: %1</source>
        <translation>der Name des Elements ist nicht erlaubt: %1</translation>
    </message>
    <message>
        <source>the node has a number that was not given yet</source>
        <translation>der Knoten hat eine Nummer, die noch nicht vergeben wurde</translation>
    </message>
    <message>
        <source>the node has no points</source>
        <translation>der Knoten hat keine Punkte</translation>
    </message>
    <message>
        <source>the node has values beyond their range</source>
        <translation>der Knoten hat Werte außerhalb des Wertebereichs</translation>
    </message>
    <message>
        <source>the node is no cell of the index</source>
        <translation>der Knoten ist keine Zelle des Index</translation>
    </message>
    <message>
        <source>the node lacks its block</source>
        <translation>dem Knoten fehlt der zugehörige Block</translation>
    </message>
    <message>
        <source>the node was changed by a later transaction</source>
        <translation>der Knoten wurde von einer späteren Transaktion geändert</translation>
    </message>
    <message>
        <source>the nodes below do not hold the %1 points that it tells</source>
        <translation>die Knoten darunter enthalten nicht die %1 Punkte, die er angibt</translation>
    </message>
    <message>
        <source>the nodes below do not lie within the node</source>
        <translation>die Knoten darunter liegen nicht innerhalb des Knotens</translation>
    </message>
    <message>
        <source>the nodes below stand at another place, too</source>
        <translation>die Knoten darunter stehen auch an einer anderen Stelle</translation>
    </message>
    <message>
        <source>the number %1 where at most %2 is possible</source>
        <translation>die Zahl %1, wo höchstens %2 möglich ist</translation>
    </message>
    <message>
        <source>the number of point records is %1, but the chunk table&apos;s %2 chunks hold %3</source>
        <translation>die Zahl der Punktdatensätze ist %1, aber die %2 Chunks der Chunk-Tabelle enthalten %3</translation>
    </message>
    <message>
        <source>the number of point records is %1, but the chunk table&apos;s %2 chunks hold more</source>
        <translation>die Zahl der Punktdatensätze ist %1, aber die %2 Chunks der Chunk-Tabelle enthalten mehr</translation>
    </message>
    <message>
        <source>the page at byte %1 does not agree with its checksum</source>
        <translation>die Seite bei Byte %1 stimmt nicht mit ihrer Prüfsumme überein</translation>
    </message>
    <message>
        <source>the points are not in the order of ids</source>
        <translation>die Punkte sind nicht nach IDs geordnet</translation>
    </message>
    <message>
        <source>the points of a scan are no compressed vector</source>
        <translation>die Punkte eines Scans sind kein komprimierter Vektor</translation>
    </message>
    <message>
        <source>the points of a scan have more than %1 fields</source>
        <translation>die Punkte eines Scans haben mehr als %1 Felder</translation>
    </message>
    <message>
        <source>the record that tells how its points are compressed: %1</source>
        <translation>der Datensatz, der sagt, wie die Punkte komprimiert sind: %1</translation>
    </message>
    <message>
        <source>the rotation of a scan has no direction</source>
        <translation>die Drehung eines Scans hat keine Richtung</translation>
    </message>
    <message>
        <source>the second line does not tell the format</source>
        <translation>die zweite Zeile gibt das Format nicht an</translation>
    </message>
    <message>
        <source>the section of a scan is of the kind %1</source>
        <translation>der Abschnitt eines Scans ist von der Art %1</translation>
    </message>
    <message>
        <source>the section of a scan is said to take %1 bytes</source>
        <translation>der Abschnitt eines Scans soll %1 Bytes haben</translation>
    </message>
    <message>
        <source>the sections of its scans overlap</source>
        <translation>die Abschnitte ihrer Scans überlappen sich</translation>
    </message>
    <message>
        <source>the unit &quot;%1&quot;</source>
        <translation>die Einheit „%1“</translation>
    </message>
    <message>
        <source>the unit &quot;%1&quot; with the factor &quot;%2&quot;</source>
        <translation>die Einheit „%1“ mit dem Faktor „%2“</translation>
    </message>
    <message>
        <source>the unit of the size %1 (%2)</source>
        <translation>die Einheit der Größe %1 (%2)</translation>
    </message>
    <message>
        <source>the unit with the code %1 (%2)</source>
        <translation>die Einheit mit dem Code %1 (%2)</translation>
    </message>
    <message>
        <source>the well-known text</source>
        <translation>der Well-known Text</translation>
    </message>
    <message>
        <source>the well-known text from &quot;%1&quot; on</source>
        <translation>der Well-known Text ab „%1“</translation>
    </message>
    <message>
        <source>the well-known text, which is no system of points in space</source>
        <translation>der Well-known Text, der kein System von Punkten im Raum ist</translation>
    </message>
    <message>
        <source>the well-known text, which is too long</source>
        <translation>der Well-known Text, der zu lang ist</translation>
    </message>
    <message>
        <source>the whole number of an element</source>
        <translation>die ganze Zahl eines Elements</translation>
    </message>
    <message>
        <source>their invalid values are %1 and %2.</source>
        <translation>ihre Ungültigwerte sind %1 und %2.</translation>
    </message>
    <message>
        <source>their lengths are %1 and %2.</source>
        <translation>ihre Längen sind %1 und %2.</translation>
    </message>
    <message>
        <source>their range is wider than 64 bits.</source>
        <translation>ihr Wertebereich ist breiter als 64 Bit.</translation>
    </message>
    <message>
        <source>their scale factors are %1 and %2.</source>
        <translation>ihre Skalenfaktoren sind %1 und %2.</translation>
    </message>
    <message>
        <source>their units are &quot;%1&quot; and &quot;%2&quot;.</source>
        <translation>ihre Einheiten sind „%1“ und „%2“.</translation>
    </message>
    <message>
        <source>there are more than %1 corners</source>
        <translation>es sind mehr als %1 Ecken</translation>
    </message>
    <message>
        <source>there are two nodes of this number</source>
        <translation>es gibt zwei Knoten dieser Nummer</translation>
    </message>
    <message>
        <source>there is no polygon in it</source>
        <translation>es ist kein Polygon darin</translation>
    </message>
    <message>
        <source>there is nothing to repeat</source>
        <translation>es gibt nichts zu wiederholen</translation>
    </message>
    <message>
        <source>time base</source>
        <translation>Zeitbasis</translation>
    </message>
    <message>
        <source>time of an unknown epoch</source>
        <translation>Zeit einer unbekannten Epoche</translation>
    </message>
    <message>
        <source>time since %1</source>
        <translation>Zeit seit %1</translation>
    </message>
    <message>
        <source>transaction %1</source>
        <translation>Transaktion %1</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>true oder false</translation>
    </message>
    <message>
        <source>unknown type</source>
        <translation>unbekannter Typ</translation>
    </message>
    <message>
        <source>unnamed system</source>
        <translation>System ohne Namen</translation>
    </message>
    <message>
        <source>variable length record</source>
        <translation>Datensatz variabler Länge</translation>
    </message>
    <message>
        <source>what stands behind the well-known text</source>
        <translation>was hinter dem Well-known Text steht</translation>
    </message>
    <message>
        <source>what the file tells of its attributes does not fit its extra bytes; they get the names that LAS has for them.</source>
        <translation>was die Datei über ihre Attribute angibt, passt nicht zu ihren Extra-Bytes; sie erhalten die Namen, die LAS für sie hat.</translation>
    </message>
    <message>
        <source>%1 are %2 and would count as invalid</source>
        <translation>%1 sind %2 und gälten als ungültig</translation>
    </message>
    <message>
        <source>%1 are invalid and would become %2</source>
        <translation>%1 sind ungültig und würden zu folgendem: %2</translation>
    </message>
    <message>
        <source>%1 is %2 and would count as invalid</source>
        <translation>%1 ist %2 und gälte als ungültig</translation>
    </message>
    <message>
        <source>%1 is invalid and would become %2</source>
        <translation>%1 ist ungültig und würde zu folgendem: %2</translation>
    </message>
    <message>
        <source>%1 lie outside %2 to %3 and would become %4</source>
        <translation>%1 liegen nicht in %2 bis %3 und würden zu folgendem: %4</translation>
    </message>
    <message>
        <source>%1 lies outside %2 to %3 and would become %4</source>
        <translation>%1 liegt nicht in %2 bis %3 und würde zu folgendem: %4</translation>
    </message>
    <message>
        <source>%1 value of &quot;%2&quot;</source>
        <translation>%1 Wert von „%2“</translation>
    </message>
    <message>
        <source>%1 value of %2 point in &quot;%3&quot;</source>
        <translation>%1 Wert von %2 Punkt in „%3“</translation>
    </message>
    <message>
        <source>%1 value of %2 points in &quot;%3&quot;</source>
        <translation>%1 Wert von %2 Punkten in „%3“</translation>
    </message>
    <message>
        <source>%1 values of &quot;%2&quot;</source>
        <translation>%1 Werte von „%2“</translation>
    </message>
    <message>
        <source>%1 values of %2 point in &quot;%3&quot;</source>
        <translation>%1 Werte von %2 Punkt in „%3“</translation>
    </message>
    <message>
        <source>%1 values of %2 points in &quot;%3&quot;</source>
        <translation>%1 Werte von %2 Punkten in „%3“</translation>
    </message>
    <message>
        <source>%1 would be dropped with the elements from number %2 on</source>
        <translation>%1: sie entfielen mit den Elementen ab Nummer %2</translation>
    </message>
    <message>
        <source>%1 would be rounded to floating-point numbers</source>
        <translation>%1: auf Gleitkommazahlen gerundet</translation>
    </message>
    <message>
        <source>%1 would be rounded to the resolution %2</source>
        <translation>%1: auf die Auflösung %2 gerundet</translation>
    </message>
    <message>
        <source>%1 would change: %2.</source>
        <translation>%1 würden sich ändern: %2.</translation>
    </message>
    <message>
        <source>Broken pipe</source>
        <translation>Verbindung abgebrochen</translation>
    </message>
    <message>
        <source>Cannot allocate memory</source>
        <translation>Kein Arbeitsspeicher mehr</translation>
    </message>
    <message>
        <source>Could not determine tag type</source>
        <translation>Unbekannte Art von Element</translation>
    </message>
    <message>
        <source>Device or resource busy</source>
        <translation>Gerät oder Ressource ist belegt</translation>
    </message>
    <message>
        <source>Directory not empty</source>
        <translation>Verzeichnis ist nicht leer</translation>
    </message>
    <message>
        <source>Disk quota exceeded</source>
        <translation>Zugeteilter Speicherplatz ist verbraucht</translation>
    </message>
    <message>
        <source>Error parsing CDATA section</source>
        <translation>Fehler in einem CDATA-Abschnitt</translation>
    </message>
    <message>
        <source>Error parsing PCDATA section</source>
        <translation>Fehler in einem Textabschnitt</translation>
    </message>
    <message>
        <source>Error parsing comment</source>
        <translation>Fehler in einem Kommentar</translation>
    </message>
    <message>
        <source>Error parsing document declaration/processing instruction</source>
        <translation>Fehler in einer Deklaration oder Verarbeitungsanweisung</translation>
    </message>
    <message>
        <source>Error parsing document type declaration</source>
        <translation>Fehler in der Deklaration des Dokumenttyps</translation>
    </message>
    <message>
        <source>Error parsing element attribute</source>
        <translation>Fehler in einem Attribut eines Elements</translation>
    </message>
    <message>
        <source>Error parsing end element tag</source>
        <translation>Fehler im Ende eines Elements</translation>
    </message>
    <message>
        <source>Error parsing start element tag</source>
        <translation>Fehler im Anfang eines Elements</translation>
    </message>
    <message>
        <source>Exec format error</source>
        <translation>Kein ausführbares Format</translation>
    </message>
    <message>
        <source>File exists</source>
        <translation>Datei ist schon vorhanden</translation>
    </message>
    <message>
        <source>File name too long</source>
        <translation>Dateiname ist zu lang</translation>
    </message>
    <message>
        <source>File too large</source>
        <translation>Datei ist zu groß</translation>
    </message>
    <message>
        <source>Incorrect hex digit after \u escape in string.</source>
        <translation>Falsche Hexadezimalziffer hinter \u in einer Zeichenkette.</translation>
    </message>
    <message>
        <source>Input/output error</source>
        <translation>Ein-/Ausgabefehler</translation>
    </message>
    <message>
        <source>Invalid encoding in string.</source>
        <translation>Ungültige Zeichenkodierung in einer Zeichenkette.</translation>
    </message>
    <message>
        <source>Invalid escape character in string.</source>
        <translation>Ungültiges Zeichen hinter \ in einer Zeichenkette.</translation>
    </message>
    <message>
        <source>Invalid value.</source>
        <translation>Ungültiger Wert.</translation>
    </message>
    <message>
        <source>Is a directory</source>
        <translation>Ist ein Verzeichnis</translation>
    </message>
    <message>
        <source>Miss exponent in number.</source>
        <translation>Einer Zahl fehlt der Exponent.</translation>
    </message>
    <message>
        <source>Miss fraction part in number.</source>
        <translation>Einer Zahl fehlen die Nachkommastellen.</translation>
    </message>
    <message>
        <source>Missing a closing quotation mark in string.</source>
        <translation>Einer Zeichenkette fehlt das schließende Anführungszeichen.</translation>
    </message>
    <message>
        <source>Missing a colon after a name of object member.</source>
        <translation>Hinter dem Namen eines Elements fehlt der Doppelpunkt.</translation>
    </message>
    <message>
        <source>Missing a comma or ] after an array element.</source>
        <translation>Hinter einem Element des Arrays fehlt ein Komma oder ].</translation>
    </message>
    <message>
        <source>Missing a comma or } after an object member.</source>
        <translation>Hinter einem Element des Objekts fehlt ein Komma oder }.</translation>
    </message>
    <message>
        <source>Missing a name for object member.</source>
        <translation>Einem Element des Objekts fehlt der Name.</translation>
    </message>
    <message>
        <source>No document element found</source>
        <translation>Kein Wurzelelement gefunden</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>Kein Platz mehr auf dem Datenträger</translation>
    </message>
    <message>
        <source>No such file or directory</source>
        <translation>Datei oder Verzeichnis nicht vorhanden</translation>
    </message>
    <message>
        <source>Not a directory</source>
        <translation>Ist kein Verzeichnis</translation>
    </message>
    <message>
        <source>Number too big to be stored in double.</source>
        <translation>Die Zahl ist zu groß.</translation>
    </message>
    <message>
        <source>Operation not permitted</source>
        <translation>Vorgang nicht erlaubt</translation>
    </message>
    <message>
        <source>Out of memory</source>
        <translation>Kein Arbeitsspeicher mehr</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>Zugriff verweigert</translation>
    </message>
    <message>
        <source>Read-only file system</source>
        <translation>Dateisystem kann nur gelesen werden</translation>
    </message>
    <message>
        <source>Start-end tags mismatch</source>
        <translation>Anfang und Ende eines Elements passen nicht zusammen</translation>
    </message>
    <message>
        <source>Terminate parsing due to Handler error.</source>
        <translation>Das Lesen wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Text file busy</source>
        <translation>Programmdatei wird gerade benutzt</translation>
    </message>
    <message>
        <source>The document is empty.</source>
        <translation>Das Dokument ist leer.</translation>
    </message>
    <message>
        <source>The document root must not be followed by other values.</source>
        <translation>Hinter dem Dokument dürfen keine weiteren Werte folgen.</translation>
    </message>
    <message>
        <source>The surrogate pair in string is invalid.</source>
        <translation>Ein Ersatzzeichenpaar in einer Zeichenkette ist ungültig.</translation>
    </message>
    <message>
        <source>Too many open files</source>
        <translation>Zu viele offene Dateien</translation>
    </message>
    <message>
        <source>Unspecific syntax error.</source>
        <translation>Unbestimmter Syntaxfehler.</translation>
    </message>
    <message>
        <source>%1 from %2</source>
        <translation>%1 ab %2</translation>
    </message>
    <message>
        <source>%1 from %2 to %3</source>
        <translation>%1 von %2 bis %3</translation>
    </message>
    <message>
        <source>%1 up to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>Did you mean %1 or &quot;%2&quot;?</source>
        <translation>Ist %1 oder „%2“ gemeint?</translation>
    </message>
    <message>
        <source>one of %1</source>
        <translation>einen der Werte %1</translation>
    </message>
    <message>
        <source>%1 %2 (&quot;%3&quot;, %4) has a length of %5, but only %6 bytes are left</source>
        <translation>%1 %2 („%3“, %4) hat eine Länge von %5, aber nur %6 Byte sind noch da</translation>
    </message>
    <message>
        <source>%1: %2 point</source>
        <translation>%1: %2 Punkt</translation>
    </message>
    <message>
        <source>%1: %2 points</source>
        <translation>%1: %2 Punkte</translation>
    </message>
    <message>
        <source>0 to 100</source>
        <translation>0 bis 100</translation>
    </message>
    <message>
        <source>0 to 16</source>
        <translation>0 bis 16</translation>
    </message>
    <message>
        <source>0 to 63</source>
        <translation>0 bis 63</translation>
    </message>
    <message>
        <source>the header size is %1, but the file has %2 bytes</source>
        <translation>die Größe des Kopfes ist %1, aber die Datei hat %2 Byte</translation>
    </message>
    <message>
        <source>the header size is %1, but version 1.%2 needs %3</source>
        <translation>die Größe des Kopfes ist %1, aber Version 1.%2 braucht %3</translation>
    </message>
    <message>
        <source>the number of %1s is %2, but there is no room for them between byte %3 and byte %4</source>
        <translation>die Anzahl (%1) ist %2, aber zwischen Byte %3 und Byte %4 ist kein Platz dafür</translation>
    </message>
    <message>
        <source>the number of point records is %1, but the file holds %2</source>
        <translation>die Zahl der Punktdatensätze ist %1, aber die Datei enthält %2</translation>
    </message>
    <message>
        <source>the offset to point data is %1, which is not between the header&apos;s end at %2 and the file&apos;s end at %3</source>
        <translation>die Punktdaten beginnen bei %1, also nicht zwischen dem Ende des Kopfes bei %2 und dem Ende der Datei bei %3</translation>
    </message>
    <message>
        <source>the point data record format is %1; 0 to 10 are known</source>
        <translation>das Format der Punktdatensätze ist %1; bekannt sind 0 bis 10</translation>
    </message>
    <message>
        <source>the point data record length is %1, but point format %2 takes %3</source>
        <translation>die Länge eines Punktdatensatzes ist %1, aber Punktformat %2 braucht %3</translation>
    </message>
    <message>
        <source>the start of the first extended variable length record is %1, which is not between the points&apos; end at %2 and the file&apos;s end at %3</source>
        <translation>der erste erweiterte Datensatz variabler Länge beginnt bei %1, also nicht zwischen dem Ende der Punkte bei %2 und dem Ende der Datei bei %3</translation>
    </message>
    <message>
        <source>%1There are %2, and the names of attributes, with the number of an element behind them where it is another than the first: &quot;a[1]&quot;.</source>
        <translation>%1Es gibt %2 und die Namen von Attributen, dahinter die Nummer eines Elements, wo es ein anderes als das erste ist: „a[1]“.</translation>
    </message>
    <message>
        <source>Choose another colour.</source>
        <translation>Eine andere Farbe wählen.</translation>
    </message>
    <message>
        <source>Each side has at least one pixel, and all of it at most %1.</source>
        <translation>Jede Seite hat mindestens ein Pixel, das ganze Bild höchstens %1.</translation>
    </message>
    <message>
        <source>Its primary attribute &quot;%1&quot; has one element; two or three are shown.</source>
        <translation>Das Primärattribut „%1“ hat ein Element; gezeigt werden zwei oder drei.</translation>
    </message>
    <message>
        <source>The database has no points to draw.</source>
        <translation>Die Datenbank hat keine Punkte, die zu zeichnen wären.</translation>
    </message>
    <message>
        <source>The picture has no size that can be drawn.</source>
        <translation>Ein Bild dieser Größe kann nicht gezeichnet werden.</translation>
    </message>
    <message>
        <source>The points of the database have no &quot;%1&quot; to be coloured by.</source>
        <translation>Die Punkte der Datenbank haben kein „%1“, nach dem sie gefärbt werden könnten.</translation>
    </message>
    <message>
        <source>The points of the database have no colours of their own.</source>
        <translation>Die Punkte der Datenbank haben keine eigenen Farben.</translation>
    </message>
    <message>
        <source>The points of the database have no height.</source>
        <translation>Die Punkte der Datenbank haben keine Höhe.</translation>
    </message>
    <message>
        <source>The points of the database have no place to be seen at.</source>
        <translation>Die Punkte der Datenbank haben keinen Ort, an dem sie zu sehen wären.</translation>
    </message>
    <message>
        <source>The definition %1</source>
        <translation>Die Definition %1</translation>
    </message>
    <message>
        <source>attempt to write a readonly database</source>
        <translation>die Datenbank kann nur gelesen werden</translation>
    </message>
    <message>
        <source>database disk image is malformed</source>
        <translation>die Datenbankdatei ist beschädigt</translation>
    </message>
    <message>
        <source>database is locked</source>
        <translation>die Datenbank ist gesperrt</translation>
    </message>
    <message>
        <source>database or disk is full</source>
        <translation>der Datenträger ist voll</translation>
    </message>
    <message>
        <source>disk I/O error</source>
        <translation>Ein-/Ausgabefehler des Datenträgers</translation>
    </message>
    <message>
        <source>file is not a database</source>
        <translation>die Datei ist keine Datenbank</translation>
    </message>
    <message>
        <source>out of memory</source>
        <translation>kein Arbeitsspeicher mehr</translation>
    </message>
    <message>
        <source>unable to open database file</source>
        <translation>die Datenbankdatei kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>The file is damaged, cut off or not a %1 file; nothing was imported.</source>
        <translation>Die Datei ist beschädigt, abgeschnitten oder keine %1-Datei; importiert wurde nichts.</translation>
    </message>
    <message>
        <source>The file is damaged, cut off or not an %1 file; nothing was imported.</source>
        <translation>Die Datei ist beschädigt, abgeschnitten oder keine %1-Datei; importiert wurde nichts.</translation>
    </message>
    <message>
        <source>%1: %2 problems.</source>
        <translation>%1: %2 Fehler.</translation>
    </message>
    <message>
        <source>%1: 1 problem.</source>
        <translation>%1: 1 Fehler.</translation>
    </message>
    <message>
        <source>Points that lie farther than 1e100 from 0 can&apos;t be seen.</source>
        <translation>Punkte, die weiter als 1e100 von 0 entfernt liegen, sind nicht zu sehen.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; has the data type %2, not %3.</source>
        <translation>Das Punktattribut „%1“ hat den Datentyp %2 statt %3.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; has the invalid value %2, not %3.</source>
        <translation>Das Punktattribut „%1“ hat den Ungültigwert %2 statt %3.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; has the length %2, not %3.</source>
        <translation>Das Punktattribut „%1“ hat die Länge %2 statt %3.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; has the resolution %2, not %3 or finer.</source>
        <translation>Das Punktattribut „%1“ hat die Auflösung %2 statt %3 oder feiner.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; has the resolution %2, not floating-point numbers.</source>
        <translation>Das Punktattribut „%1“ hat die Auflösung %2 statt Gleitkommazahlen.</translation>
    </message>
    <message>
        <source>The point attribute &quot;%1&quot; has the unit &quot;%2&quot;, not &quot;%3&quot;.</source>
        <translation>Das Punktattribut „%1“ hat die Einheit „%2“ statt „%3“.</translation>
    </message>
    <message>
        <source>an empty file</source>
        <translation>eine leere Datei</translation>
    </message>
</context>
<context>
    <name>PointAttribute</name>
    <message>
        <source>constant</source>
        <translation>konstant</translation>
    </message>
    <message>
        <source>variable</source>
        <translation>variabel</translation>
    </message>
    <message>
        <source>dynamic</source>
        <translation>dynamisch</translation>
    </message>
    <message>
        <source>default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>delta</source>
        <translation>Delta</translation>
    </message>
    <message>
        <source>shuffle</source>
        <translation>Shuffle</translation>
    </message>
    <message>
        <source>delta+shuffle</source>
        <translation>Delta+Shuffle</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
</context>
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
    <message>
        <source>the platform &quot;%1&quot; has none</source>
        <translation>die Plattform „%1“ hat keines</translation>
    </message>
    <message>
        <source>this computer offers none</source>
        <translation>dieser Rechner bietet keines</translation>
    </message>
    <message>
        <source>this computer offers version %1.%2, and 2.0 is needed</source>
        <translation>dieser Rechner bietet Version %1.%2, und 2.0 wird gebraucht</translation>
    </message>
    <message>
        <source>the driver can&apos;t draw beside the window</source>
        <translation>der Treiber kann nicht neben dem Fenster zeichnen</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>and others</source>
        <translation>und weitere</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Oben</translation>
    </message>
    <message>
        <source>Look straight down, north above [1]</source>
        <translation>Senkrecht nach unten blicken, Norden oben [1]</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Vorn</translation>
    </message>
    <message>
        <source>Look to the north [3]</source>
        <translation>Nach Norden blicken [3]</translation>
    </message>
    <message>
        <source>Side</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>Look to the west [7]</source>
        <translation>Nach Westen blicken [7]</translation>
    </message>
    <message>
        <source>Corner</source>
        <translation>Ecke</translation>
    </message>
    <message>
        <source>Look down from the south-west [9]</source>
        <translation>Von Südwesten herab blicken [9]</translation>
    </message>
    <message>
        <source>Perspective</source>
        <translation>Perspektive</translation>
    </message>
    <message>
        <source>What is farther away is smaller; else lines that are parallel stay so, and lengths can be compared [5]</source>
        <translation>Was weiter weg ist, ist kleiner; sonst bleiben parallele Linien parallel, und Längen lassen sich vergleichen [5]</translation>
    </message>
    <message>
        <source>Full extent</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Show all points [Home]</source>
        <translation>Alle Punkte zeigen [Pos1]</translation>
    </message>
    <message>
        <source>Selection</source>
        <translation>Auswahl</translation>
    </message>
    <message>
        <source>Show the extent of what was selected last: rows of &quot;Point Data&quot; or a node of &quot;Point Index&quot; [E]</source>
        <translation>Die Ausdehnung dessen zeigen, was zuletzt ausgewählt wurde: Zeilen von „Punktdaten“ oder ein Knoten von „Punktindex“ [E]</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Show less, but larger [+]</source>
        <translation>Weniger zeigen, aber größer [+]</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Show more, but smaller [-]</source>
        <translation>Mehr zeigen, aber kleiner [-]</translation>
    </message>
    <message>
        <source>Rectangle</source>
        <translation>Rechteck</translation>
    </message>
    <message>
        <source>Select points in &quot;Point Data&quot; by a rectangle, from above: drag from one corner to the other [R]; Ctrl+drag does so at once</source>
        <translation>Punkte in „Punktdaten“ durch ein Rechteck auswählen, von oben: von einer Ecke zur anderen ziehen [R]; Ziehen mit Strg tut das sofort</translation>
    </message>
    <message>
        <source>Polygon</source>
        <translation>Polygon</translation>
    </message>
    <message>
        <source>Select points in &quot;Point Data&quot; by a polygon, from above: click its corners; a double click or Return closes it, Backspace takes the last corner back, Esc gives it up [G]</source>
        <translation>Punkte in „Punktdaten“ durch ein Polygon auswählen, von oben: seine Ecken anklicken; ein Doppelklick oder die Eingabetaste schließt es, die Rücktaste nimmt die letzte Ecke zurück, Esc gibt es auf [G]</translation>
    </message>
    <message>
        <source>True colours</source>
        <translation>Echte Farben</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Level of the node</source>
        <translation>Ebene des Knotens</translation>
    </message>
    <message>
        <source>Transaction of the node</source>
        <translation>Transaktion des Knotens</translation>
    </message>
    <message>
        <source>OpenGL could not draw</source>
        <translation>OpenGL konnte nicht zeichnen</translation>
    </message>
    <message>
        <source>OpenGL gave no context</source>
        <translation>OpenGL gab keinen Kontext</translation>
    </message>
    <message>
        <source>OpenGL has no room for the picture</source>
        <translation>OpenGL hat keinen Platz für das Bild</translation>
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
    <name>tarvo::window::CloudCanvas</name>
    <message>
        <source>x %1, y %2</source>
        <translation>x %1, y %2</translation>
    </message>
    <message>
        <source>x %1, y %2, z %3</source>
        <translation>x %1, y %2, z %3</translation>
    </message>
</context>
<context>
    <name>tarvo::window::CloudView</name>
    <message>
        <source>Point Cloud View</source>
        <translation>Ansicht der Punktwolke</translation>
    </message>
    <message>
        <source>Show the points of the database as a picture [Ctrl+Shift+P]</source>
        <translation>Die Punkte der Datenbank als Bild zeigen [Strg+Umschalt+P]</translation>
    </message>
    <message>
        <source>Point cloud</source>
        <translation>Punktwolke</translation>
    </message>
    <message>
        <source>Sides</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Extents and areas</source>
        <translation>Ausdehnungen und Flächen</translation>
    </message>
    <message>
        <source>The filter selects the points in the rectangle. Show them with F3.</source>
        <translation>Der Filter wählt die Punkte im Rechteck aus. Mit F3 werden sie gezeigt.</translation>
    </message>
    <message>
        <source>The filter selects the points in the polygon. Show them with F3.</source>
        <translation>Der Filter wählt die Punkte im Polygon aus. Mit F3 werden sie gezeigt.</translation>
    </message>
    <message>
        <source>No database is open.</source>
        <translation>Keine Datenbank ist geöffnet.</translation>
    </message>
    <message>
        <source>The file is not the one any more that was opened. Open it again.</source>
        <translation>Die Datei ist nicht mehr die, die geöffnet wurde. Sie neu öffnen.</translation>
    </message>
    <message>
        <source>Reading the point index...</source>
        <translation>Punktindex wird gelesen...</translation>
    </message>
    <message>
        <source>The database has no points.</source>
        <translation>Die Datenbank hat keine Punkte.</translation>
    </message>
    <message>
        <source>%1 of %2 points</source>
        <translation>%1 von %2 Punkten</translation>
    </message>
    <message>
        <source>%1 of %2 points, reading...</source>
        <translation>%1 von %2 Punkten, es wird gelesen...</translation>
    </message>
    <message>
        <source>An even part, because there is no level of detail.</source>
        <translation>Ein gleichmäßiger Teil, weil es keine Detailstufe gibt.</translation>
    </message>
    <message>
        <source>The committed state, without the pending transaction.</source>
        <translation>Der festgeschriebene Stand, ohne die offene Transaktion.</translation>
    </message>
    <message>
        <source>Drawn without OpenGL: %1.</source>
        <translation>Ohne OpenGL gezeichnet: %1.</translation>
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
    <message>
        <source>The database was opened for reading only: changes can&apos;t be saved.</source>
        <translation>Die Datenbank wurde nur zum Lesen geöffnet: Änderungen können nicht gespeichert werden.</translation>
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
        <source>Lo&amp;ad ...</source>
        <translation>L&amp;aden ...</translation>
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
    <message>
        <source>Point cloud</source>
        <translation>Punktwolke</translation>
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
    <message>
        <source>&quot;%0&quot; was changed elsewhere since it was read.
Write over what is there now?</source>
        <translation>„%0“ wurde anderswo geändert, seit es gelesen wurde.
Überschreiben, was jetzt dort steht?</translation>
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
    <message>
        <source>&quot;%0&quot; was changed elsewhere since it was read.
Write over what is there now?</source>
        <translation>„%0“ wurde anderswo geändert, seit es gelesen wurde.
Überschreiben, was jetzt dort steht?</translation>
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
    <name>tarvo::window::PointDetails</name>
    <message>
        <source>Values of the point</source>
        <translation>Werte des Punkts</translation>
    </message>
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
    <message>
        <source>Hide the values of the point</source>
        <translation>Die Werte des Punkts verbergen</translation>
    </message>
    <message>
        <source>Reading the point...</source>
        <translation>Punkt wird gelesen...</translation>
    </message>
    <message>
        <source>Point %1 is not in the database: the level of detail made it of several. Zoom in to see those.</source>
        <translation>Punkt %1 steht nicht in der Datenbank: Die Detailstufe hat ihn aus mehreren gemacht. Näher heran zeigen sich diese.</translation>
    </message>
    <message>
        <source>Point %1</source>
        <translation>Punkt %1</translation>
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
<context>
    <name>tarvo::window::ViewControls</name>
    <message>
        <source>Colours:</source>
        <translation>Farben:</translation>
    </message>
    <message>
        <source>Filter:</source>
        <translation>Filter:</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>What the colours of the points mean</source>
        <translation>Was die Farben der Punkte bedeuten</translation>
    </message>
    <message>
        <source>Low end of the colours</source>
        <translation>Unteres Ende der Farben</translation>
    </message>
    <message>
        <source>Value at the dark end of the colours; empty: the least of all points</source>
        <translation>Wert am dunklen Ende der Farben; leer: der kleinste aller Punkte</translation>
    </message>
    <message>
        <source>High end of the colours</source>
        <translation>Oberes Ende der Farben</translation>
    </message>
    <message>
        <source>Value at the bright end of the colours; empty: the greatest of all points</source>
        <translation>Wert am hellen Ende der Farben; leer: der größte aller Punkte</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>What becomes of the points that do not pass the filter of &quot;Point Data&quot;; it counts as it stands when it is chosen here, or run there</source>
        <translation>Was mit den Punkten geschieht, die den Filter von „Punktdaten“ nicht erfüllen; er gilt, wie er steht, wenn er hier gewählt oder dort ausgeführt wird</translation>
    </message>
    <message>
        <source>All points</source>
        <translation>Alle Punkte</translation>
    </message>
    <message>
        <source>Hide the rest</source>
        <translation>Rest verbergen</translation>
    </message>
    <message>
        <source>Fade the rest</source>
        <translation>Rest abblenden</translation>
    </message>
    <message>
        <source>Size of the points</source>
        <translation>Größe der Punkte</translation>
    </message>
    <message>
        <source>How large the points are, in pixels</source>
        <translation>Wie groß die Punkte sind, in Pixeln</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Ground</source>
        <translation>Grund</translation>
    </message>
    <message>
        <source>The colour behind the points</source>
        <translation>Die Farbe hinter den Punkten</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>Design</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
</context>
</TS>
