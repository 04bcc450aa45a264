<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>ChangeLog</name>
    <message>
        <source>Note begun</source>
        <translation>Befund begonnen</translation>
    </message>
    <message>
        <source>Tooth</source>
        <translation>Zahn</translation>
    </message>
    <message>
        <source>Bracket</source>
        <translation>Bracket</translation>
    </message>
    <message>
        <source>Lingual button</source>
        <translation>Lingualknöpfchen</translation>
    </message>
    <message>
        <source>Bracket colour</source>
        <translation>Bracketfarbe</translation>
    </message>
    <message>
        <source>Elastic placed</source>
        <translation>Gummizug eingehängt</translation>
    </message>
    <message>
        <source>Elastic removed</source>
        <translation>Gummizug entfernt</translation>
    </message>
    <message>
        <source>Elastic size</source>
        <translation>Gummigröße</translation>
    </message>
    <message>
        <source>Elastic named</source>
        <translation>Gummizug benannt</translation>
    </message>
    <message>
        <source>Elastics shortened</source>
        <translation>Gummizüge verkürzt</translation>
    </message>
    <message>
        <source>Approval</source>
        <translation>Freigabe</translation>
    </message>
    <message>
        <source>Approval of the treatment</source>
        <translation>Freigabe der Behandlung</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>shown</source>
        <translation>sichtbar</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>verborgen</translation>
    </message>
    <message>
        <source>Elastic renamed</source>
        <translation>Gummizug umbenannt</translation>
    </message>
    <message>
        <source>not approved</source>
        <translation>nicht freigegeben</translation>
    </message>
</context>
<context>
    <name>ChangeText</name>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message numerus="yes">
        <source>Place %n teeth</source>
        <translation>
            <numerusform>%n Zahn einsetzen</numerusform>
            <numerusform>%n Zähne einsetzen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Remove %n teeth</source>
        <translation>
            <numerusform>%n Zahn entfernen</numerusform>
            <numerusform>%n Zähne entfernen</numerusform>
        </translation>
    </message>
    <message>
        <source>Place tooth %1</source>
        <translation>Zahn %1 einsetzen</translation>
    </message>
    <message>
        <source>Remove tooth %1</source>
        <translation>Zahn %1 entfernen</translation>
    </message>
    <message numerus="yes">
        <source>Remove %n brackets</source>
        <translation>
            <numerusform>%n Bracket entfernen</numerusform>
            <numerusform>%n Brackets entfernen</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove bracket from %1</source>
        <translation>Bracket von %1 entfernen</translation>
    </message>
    <message numerus="yes">
        <source>Place %n brackets</source>
        <translation>
            <numerusform>%n Bracket setzen</numerusform>
            <numerusform>%n Brackets setzen</numerusform>
        </translation>
    </message>
    <message>
        <source>Place bracket on %1</source>
        <translation>Bracket auf %1 setzen</translation>
    </message>
    <message numerus="yes">
        <source>Place %n buttons</source>
        <translation>
            <numerusform>%n Knöpfchen setzen</numerusform>
            <numerusform>%n Knöpfchen setzen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Remove %n buttons</source>
        <translation>
            <numerusform>%n Knöpfchen entfernen</numerusform>
            <numerusform>%n Knöpfchen entfernen</numerusform>
        </translation>
    </message>
    <message>
        <source>Place button on %1</source>
        <translation>Knöpfchen auf %1 setzen</translation>
    </message>
    <message>
        <source>Remove button from %1</source>
        <translation>Knöpfchen von %1 entfernen</translation>
    </message>
    <message numerus="yes">
        <source>Clear %n brackets</source>
        <translation>
            <numerusform>Farbe von %n Bracket entfernen</numerusform>
            <numerusform>Farben von %n Brackets entfernen</numerusform>
        </translation>
    </message>
    <message>
        <source>Clear bracket on %1</source>
        <translation>Farbe des Brackets auf %1 entfernen</translation>
    </message>
    <message numerus="yes">
        <source>Colour %n brackets</source>
        <translation>
            <numerusform>%n Bracket färben</numerusform>
            <numerusform>%n Brackets färben</numerusform>
        </translation>
    </message>
    <message>
        <source>Colour bracket on %1</source>
        <translation>Bracket auf %1 färben</translation>
    </message>
    <message numerus="yes">
        <source>Place %n elastics</source>
        <translation>
            <numerusform>%n Gummizug einhängen</numerusform>
            <numerusform>%n Gummizüge einhängen</numerusform>
        </translation>
    </message>
    <message>
        <source>Place elastic %1</source>
        <translation>Gummizug %1 einhängen</translation>
    </message>
    <message numerus="yes">
        <source>Remove %n elastics</source>
        <translation>
            <numerusform>%n Gummizug entfernen</numerusform>
            <numerusform>%n Gummizüge entfernen</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove elastic %1</source>
        <translation>Gummizug %1 entfernen</translation>
    </message>
    <message numerus="yes">
        <source>Change %n elastics</source>
        <translation>
            <numerusform>%n Gummizug ändern</numerusform>
            <numerusform>%n Gummizüge ändern</numerusform>
        </translation>
    </message>
    <message>
        <source>Change elastic %1</source>
        <translation>Gummizug %1 ändern</translation>
    </message>
    <message>
        <source>%1, from %2 to %3</source>
        <translation>%1, von %2 zu %3</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>DXOpenGL</name>
    <message>
        <source>Cannot Place Named Elastic</source>
        <translation>Der benannte Gummizug kann nicht eingehängt werden</translation>
    </message>
    <message>
        <source>The Elastic Configuration named &apos;%@&apos; cannot be placed because 1 or more required teeth for Bracket/Button placement are missing.</source>
        <translation>Der Gummizug „%@“ kann nicht eingehängt werden, weil mindestens ein Zahn fehlt, der dafür ein Bracket oder Lingualknöpfchen tragen müsste.</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>String elastics</source>
        <translation>Gummizüge einhängen</translation>
    </message>
    <message>
        <source>Place and colour brackets</source>
        <translation>Brackets setzen und färben</translation>
    </message>
    <message>
        <source>Printing Not Supported</source>
        <translation>Drucken wird nicht unterstützt</translation>
    </message>
    <message>
        <source>This computer does not meet the minimum system requirements for printing.</source>
        <translation>Dieser Computer erfüllt die Mindestanforderungen zum Drucken nicht.</translation>
    </message>
    <message>
        <source>Place Named Elastic...</source>
        <translation>Benannten Gummizug einhängen …</translation>
    </message>
    <message>
        <source>Place Lingual Button</source>
        <translation>Lingualknöpfchen setzen</translation>
    </message>
    <message>
        <source>Remove Lingual Button</source>
        <translation>Lingualknöpfchen entfernen</translation>
    </message>
    <message>
        <source>Place Tooth</source>
        <translation>Zahn einsetzen</translation>
    </message>
    <message>
        <source>Remove Tooth</source>
        <translation>Zahn entfernen</translation>
    </message>
    <message>
        <source>Remove Bracket</source>
        <translation>Bracket entfernen</translation>
    </message>
    <message>
        <source>Remove All Brackets</source>
        <translation>Alle Brackets entfernen</translation>
    </message>
    <message>
        <source>Name This Elastic...</source>
        <translation>Diesen Gummizug benennen …</translation>
    </message>
    <message>
        <source>Remove Elastic</source>
        <translation>Gummizug entfernen</translation>
    </message>
    <message>
        <source>Remove All Elastics</source>
        <translation>Alle Gummizüge entfernen</translation>
    </message>
    <message>
        <source>Place All Brackets</source>
        <translation>Alle Brackets setzen</translation>
    </message>
    <message>
        <source>Place Bracket</source>
        <translation>Bracket setzen</translation>
    </message>
    <message>
        <source>Mark All Brackets</source>
        <translation>Alle Brackets färben</translation>
    </message>
    <message>
        <source>Mark Bracket</source>
        <translation>Bracket färben</translation>
    </message>
    <message>
        <source>Mark All Elastics</source>
        <translation>Größe aller Gummizüge</translation>
    </message>
    <message>
        <source>Mark Elastic</source>
        <translation>Größe des Gummizugs</translation>
    </message>
    <message>
        <source>Start New Elastic</source>
        <translation>Neuen Gummizug beginnen</translation>
    </message>
    <message>
        <source>Rename &quot;%@&quot; Elastic...</source>
        <translation>Gummizug „%@“ umbenennen …</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>Missing: %@</source>
        <translation>Fehlende Zähne: %@</translation>
    </message>
</context>
<context>
    <name>DatabaseAdvice</name>
    <message>
        <source>Close the other program that works with the database, then try again.</source>
        <translation>Schließen Sie das andere Programm, das mit der Datenbank arbeitet, und versuchen Sie es dann noch einmal.</translation>
    </message>
    <message>
        <source>Ask for permission to write to the file and its folder.</source>
        <translation>Lassen Sie sich das Recht geben, die Datei und ihren Ordner zu ändern.</translation>
    </message>
    <message>
        <source>Make room on the disk, then try again.</source>
        <translation>Schaffen Sie Platz auf dem Datenträger und versuchen Sie es dann noch einmal.</translation>
    </message>
    <message>
        <source>Check that the folder is there, that you may read and write the file, and that there is room on the disk, then try again.</source>
        <translation>Prüfen Sie, ob es den Ordner gibt, ob Sie die Datei lesen und ändern dürfen und ob auf dem Datenträger Platz ist, und versuchen Sie es dann noch einmal.</translation>
    </message>
    <message>
        <source>Keep a copy of the file as it is, and put the last backup in its place.</source>
        <translation>Heben Sie eine Kopie der Datei auf, wie sie ist, und legen Sie die letzte Sicherung an ihre Stelle.</translation>
    </message>
    <message>
        <source>Start the program with another file: --database FILE.</source>
        <translation>Starten Sie das Programm mit einer anderen Datei: --database FILE.</translation>
    </message>
    <message>
        <source>Install the newer version of this program.</source>
        <translation>Installieren Sie die neuere Version dieses Programms.</translation>
    </message>
    <message>
        <source>Nothing was changed in the file.</source>
        <translation>An der Datei wurde nichts geändert.</translation>
    </message>
</context>
<context>
    <name>ElasticName</name>
    <message>
        <source>Name Elastic</source>
        <translation>Gummizug benennen</translation>
    </message>
    <message>
        <source>Name of the elastic</source>
        <translation>Name des Gummizugs</translation>
    </message>
</context>
<context>
    <name>Materials</name>
    <message>
        <source>Materials</source>
        <translation>Materialien</translation>
    </message>
    <message>
        <source>&amp;Part:</source>
        <translation>&amp;Teil:</translation>
    </message>
    <message>
        <source>Part of the scene</source>
        <translation>Teil der Szene</translation>
    </message>
    <message>
        <source>&amp;Colour:</source>
        <translation>&amp;Farbe:</translation>
    </message>
    <message>
        <source>Colour of the part</source>
        <translation>Farbe des Teils</translation>
    </message>
    <message>
        <source>&amp;Shininess:</source>
        <translation>&amp;Glanz:</translation>
    </message>
    <message>
        <source>Shininess of the part</source>
        <translation>Glanz des Teils</translation>
    </message>
    <message>
        <source>Sa&amp;ve as My Default</source>
        <translation>Als meine Vor&amp;gabe sichern</translation>
    </message>
    <message>
        <source>&amp;Restore My Default</source>
        <translation>Meine Vorgabe &amp;wiederherstellen</translation>
    </message>
    <message>
        <source>Restore &amp;Factory Setting</source>
        <translation>W&amp;erkseinstellung wiederherstellen</translation>
    </message>
</context>
<context>
    <name>OpenedTreatment</name>
    <message>
        <source>A name is needed.</source>
        <translation>Ein Name ist nötig.</translation>
    </message>
    <message>
        <source>Another elastic has this name already.</source>
        <translation>Ein anderer Gummizug heißt schon so.</translation>
    </message>
</context>
<context>
    <name>PagePreview</name>
    <message>
        <source>There is no printer: the page can be printed into a PDF file.</source>
        <translation>Es gibt keinen Drucker: Die Seite kann in eine PDF-Datei gedruckt werden.</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>The page could not be printed: %1 cannot be written to.</source>
        <translation>Die Seite konnte nicht gedruckt werden: In %1 kann nicht geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>StandardView</name>
    <message>
        <source>Front</source>
        <translation>Vorn</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Upper Occlusal</source>
        <translation>Oberkiefer okklusal</translation>
    </message>
    <message>
        <source>Lower Occlusal</source>
        <translation>Unterkiefer okklusal</translation>
    </message>
</context>
<context>
    <name>ToothChart</name>
    <message>
        <source>Tooth Chart</source>
        <translation>Zahnschema</translation>
    </message>
    <message>
        <source>Tooth chart</source>
        <translation>Zahnschema</translation>
    </message>
    <message>
        <source>Patient&apos;s right is on the left.</source>
        <translation>Die rechte Seite des Patienten ist links.</translation>
    </message>
</context>
<context>
    <name>ToothNotation</name>
    <message>
        <source>%1 lingual</source>
        <translation>%1 lingual</translation>
    </message>
</context>
<context>
    <name>TreatmentPage</name>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Vorn</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
    <message>
        <source>Brackets</source>
        <translation>Brackets</translation>
    </message>
    <message>
        <source>Treatment of %1, %2</source>
        <translation>Behandlung von %1, %2</translation>
    </message>
</context>
<context>
    <name>TreatmentSession</name>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>The changes could not be stored and are kept in memory for the next try: %1</source>
        <translation>Die Änderungen konnten nicht gespeichert werden und bleiben für den nächsten Versuch im Speicher: %1</translation>
    </message>
    <message>
        <source>The elastic %1 is not shown: %2 is no bracket or button of this document</source>
        <translation>Der Gummizug %1 wird nicht gezeigt: %2 ist kein Bracket oder Knöpfchen dieses Dokuments</translation>
    </message>
    <message>
        <source>The elastic size %1 is not in the catalogue; elastics of this size are shown without colour</source>
        <translation>Die Gummigröße %1 steht nicht im Katalog; Gummizüge dieser Größe werden ohne Farbe gezeigt</translation>
    </message>
    <message>
        <source>The elastic configuration %1 is not in the catalogue</source>
        <translation>Die Gummizugkonfiguration %1 steht nicht im Katalog</translation>
    </message>
</context>
<context>
    <name>TreatmentStore</name>
    <message>
        <source>the file is not a database</source>
        <translation>die Datei ist keine Datenbank</translation>
    </message>
    <message>
        <source>the database is locked by another program</source>
        <translation>die Datenbank ist von einem anderen Programm gesperrt</translation>
    </message>
    <message>
        <source>the database cannot be written to</source>
        <translation>in die Datenbank kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>der Datenträger ist voll</translation>
    </message>
    <message>
        <source>the database could not be opened</source>
        <translation>die Datenbank konnte nicht geöffnet werden</translation>
    </message>
    <message>
        <source>the database could not be read or written (%1)</source>
        <translation>die Datenbank konnte nicht gelesen oder geschrieben werden (%1)</translation>
    </message>
    <message>
        <source>the database is damaged</source>
        <translation>die Datenbank ist beschädigt</translation>
    </message>
    <message>
        <source>the database was written by a newer version of this program (its tables are of version %1, this program knows version %2)</source>
        <translation>die Datenbank wurde von einer neueren Version dieses Programms geschrieben (ihre Tabellen haben Version %1, dieses Programm kennt Version %2)</translation>
    </message>
    <message>
        <source>the database belongs to another program</source>
        <translation>die Datenbank gehört zu einem anderen Programm</translation>
    </message>
    <message>
        <source>the database was changed by another program (%1 &quot;%2&quot; is not as this program makes it)</source>
        <translation>die Datenbank wurde von einem anderen Programm verändert (%1 „%2“ ist nicht so, wie dieses Programm es anlegt)</translation>
    </message>
    <message>
        <source>%1: the file is not a database</source>
        <translation>%1: die Datei ist keine Datenbank</translation>
    </message>
    <message>
        <source>%1: another window of the program works with the database; it is open for reading only</source>
        <translation>%1: ein anderes Fenster des Programms arbeitet mit der Datenbank; sie ist nur zum Lesen geöffnet</translation>
    </message>
    <message>
        <source>%1; it is open for reading only</source>
        <translation>%1; sie ist nur zum Lesen geöffnet</translation>
    </message>
    <message>
        <source>the database takes too long to answer</source>
        <translation>die Datenbank braucht zu lange für eine Antwort</translation>
    </message>
</context>
<context>
    <name>viewer::ChangeLogDialog</name>
    <message>
        <source>Changes</source>
        <translation>Änderungen</translation>
    </message>
    <message>
        <source>When</source>
        <translation>Wann</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Befund</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Wo</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Vorher</translation>
    </message>
    <message>
        <source>After</source>
        <translation>Nachher</translation>
    </message>
    <message>
        <source>Search the changes</source>
        <translation>Änderungen durchsuchen</translation>
    </message>
</context>
<context>
    <name>viewer::DateBar</name>
    <message>
        <source>Dates of the treatment</source>
        <translation>Termine der Behandlung</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>Approved %1</source>
        <translation>Freigegeben am %1</translation>
    </message>
    <message>
        <source>Approve</source>
        <translation>Freigeben</translation>
    </message>
    <message>
        <source>Take the approval back</source>
        <translation>Die Freigabe zurücknehmen</translation>
    </message>
    <message>
        <source>Approve the treatment as it is shown</source>
        <translation>Die Behandlung so freigeben, wie sie gezeigt wird</translation>
    </message>
</context>
<context>
    <name>viewer::KeysDialog</name>
    <message>
        <source>Treatment view</source>
        <translation>Behandlungsansicht</translation>
    </message>
    <message>
        <source>Drag</source>
        <translation>Ziehen</translation>
    </message>
    <message>
        <source>Across: turns the jaws. Up and down: opens the mouth.</source>
        <translation>Quer: dreht die Kiefer. Auf und ab: öffnet den Mund.</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>Mausrad</translation>
    </message>
    <message>
        <source>Up and down: opens the mouth. Across: turns the jaws.</source>
        <translation>Auf und ab: öffnet den Mund. Quer: dreht die Kiefer.</translation>
    </message>
    <message>
        <source>Left, Right</source>
        <translation>Links, Rechts</translation>
    </message>
    <message>
        <source>Turn by 45 degrees</source>
        <translation>Um 45 Grad drehen</translation>
    </message>
    <message>
        <source>Up, Down</source>
        <translation>Auf, Ab</translation>
    </message>
    <message>
        <source>Open the mouth by a step, or close it</source>
        <translation>Den Mund einen Schritt öffnen oder schließen</translation>
    </message>
    <message>
        <source>0</source>
        <translation>0</translation>
    </message>
    <message>
        <source>Front view with the mouth closed</source>
        <translation>Ansicht von vorn mit geschlossenem Mund</translation>
    </message>
    <message>
        <source>Click with the elastics tool</source>
        <translation>Klick mit dem Gummizugwerkzeug</translation>
    </message>
    <message>
        <source>On a bracket or a lingual button: begins an elastic or goes on with it; on its first member: places it. On an elastic: its menu.</source>
        <translation>Auf ein Bracket oder Lingualknöpfchen: beginnt einen Gummizug oder führt ihn weiter; auf sein erstes Glied: hängt ihn ein. Auf einen Gummizug: sein Menü.</translation>
    </message>
    <message>
        <source>Click with the bracket tool</source>
        <translation>Klick mit dem Bracketwerkzeug</translation>
    </message>
    <message>
        <source>The menu of the tooth&apos;s bracket; for three seconds afterwards clicks do the same to other teeth.</source>
        <translation>Das Menü des Brackets dieses Zahns; drei Sekunden lang tun weitere Klicks dasselbe mit anderen Zähnen.</translation>
    </message>
    <message>
        <source>Control and click</source>
        <translation>Strg und Klick</translation>
    </message>
    <message>
        <source>With the elastics tool: as with the bracket tool</source>
        <translation>Mit dem Gummizugwerkzeug: wie mit dem Bracketwerkzeug</translation>
    </message>
    <message>
        <source>Menu key</source>
        <translation>Menütaste</translation>
    </message>
    <message>
        <source>The menu of what is under the pointer</source>
        <translation>Das Menü dessen, was unter dem Zeiger liegt</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Gives up an elastic that is being strung, or leaves full screen</source>
        <translation>Verwirft einen begonnenen Gummizug oder verlässt das Vollbild</translation>
    </message>
    <message>
        <source>Double click</source>
        <translation>Doppelklick</translation>
    </message>
    <message>
        <source>Full screen and back</source>
        <translation>Vollbild und zurück</translation>
    </message>
    <message>
        <source>Keys and Mouse</source>
        <translation>Tasten und Maus</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Wo</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>Wirkung</translation>
    </message>
    <message>
        <source>Search the keys</source>
        <translation>Tasten durchsuchen</translation>
    </message>
    <message>
        <source>Keys and mouse gestures</source>
        <translation>Tasten und Mausgesten</translation>
    </message>
</context>
<context>
    <name>viewer::MaterialsPanel</name>
    <message>
        <source>Teeth</source>
        <translation>Zähne</translation>
    </message>
    <message>
        <source>Gums</source>
        <translation>Zahnfleisch</translation>
    </message>
    <message>
        <source>Brackets without a colour</source>
        <translation>Brackets ohne Farbe</translation>
    </message>
    <message>
        <source>Lingual buttons</source>
        <translation>Lingualknöpfchen</translation>
    </message>
    <message>
        <source>Colour of %1</source>
        <translation>Farbe: %1</translation>
    </message>
</context>
<context>
    <name>viewer::NewPatientDialog</name>
    <message>
        <source>&amp;Born:</source>
        <translation>&amp;Geboren:</translation>
    </message>
    <message>
        <source>New Patient</source>
        <translation>Neuer Patient</translation>
    </message>
    <message>
        <source>Date of birth</source>
        <translation>Geburtsdatum</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>N&amp;umber:</source>
        <translation>N&amp;ummer:</translation>
    </message>
    <message>
        <source>Another patient has this number already.</source>
        <translation>Ein anderer Patient hat diese Nummer schon.</translation>
    </message>
</context>
<context>
    <name>viewer::OpenTreatments</name>
    <message>
        <source>Loading the meshes…</source>
        <translation>Die Modelle werden geladen …</translation>
    </message>
    <message>
        <source>Open Treatment</source>
        <translation>Behandlung öffnen</translation>
    </message>
    <message>
        <source>Import Treatment</source>
        <translation>Behandlung importieren</translation>
    </message>
</context>
<context>
    <name>viewer::PatientsDialog</name>
    <message>
        <source>Patients</source>
        <translation>Patienten</translation>
    </message>
    <message>
        <source>Search the patients</source>
        <translation>Patienten durchsuchen</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>&amp;New Patient…</source>
        <translation>&amp;Neuer Patient …</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Born</source>
        <translation>Geboren</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Befunde</translation>
    </message>
    <message>
        <source>Last note</source>
        <translation>Letzter Befund</translation>
    </message>
</context>
<context>
    <name>viewer::SearchableTable</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
</context>
<context>
    <name>viewer::ToothChart</name>
    <message>
        <source>Tooth</source>
        <translation>Zahn</translation>
    </message>
    <message>
        <source>Bracket</source>
        <translation>Bracket</translation>
    </message>
    <message>
        <source>Lingual button</source>
        <translation>Lingualknöpfchen</translation>
    </message>
    <message>
        <source>No colour</source>
        <translation>Ohne Farbe</translation>
    </message>
    <message>
        <source>not placed</source>
        <translation>nicht gesetzt</translation>
    </message>
    <message>
        <source>no colour</source>
        <translation>ohne Farbe</translation>
    </message>
    <message>
        <source>Bracket %1: %2</source>
        <translation>Bracket %1: %2</translation>
    </message>
    <message>
        <source>Tooth %1</source>
        <translation>Zahn %1</translation>
    </message>
    <message>
        <source>Tooth %1: missing</source>
        <translation>Zahn %1: fehlt</translation>
    </message>
    <message>
        <source>Lingual button %1</source>
        <translation>Lingualknöpfchen %1</translation>
    </message>
    <message>
        <source>Lingual button %1: not placed</source>
        <translation>Lingualknöpfchen %1: nicht gesetzt</translation>
    </message>
    <message>
        <source>the tooth is missing</source>
        <translation>der Zahn fehlt</translation>
    </message>
    <message>
        <source>Lingual button %1: the tooth is missing</source>
        <translation>Lingualknöpfchen %1: der Zahn fehlt</translation>
    </message>
</context>
<context>
    <name>viewer::TreatmentWindow</name>
    <message>
        <source>Dates</source>
        <translation>Termine</translation>
    </message>
    <message>
        <source>%1 - Treatment viewer</source>
        <translation>%1 - Behandlungsansicht</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>Ungesicherte Änderungen</translation>
    </message>
    <message>
        <source>Save the changes to %1?</source>
        <translation>Die Änderungen in %1 sichern?</translation>
    </message>
    <message>
        <source>Changes are not stored</source>
        <translation>Änderungen sind nicht gespeichert</translation>
    </message>
    <message>
        <source>Close all the same and lose them?</source>
        <translation>Trotzdem schließen und sie verlieren?</translation>
    </message>
    <message>
        <source>Open Treatment</source>
        <translation>Behandlung öffnen</translation>
    </message>
    <message>
        <source>Treatments (*.json)</source>
        <translation>Behandlungen (*.json)</translation>
    </message>
    <message>
        <source>Import Treatment</source>
        <translation>Behandlung importieren</translation>
    </message>
    <message>
        <source>Export Treatment</source>
        <translation>Behandlung exportieren</translation>
    </message>
    <message>
        <source>Save Picture</source>
        <translation>Bild sichern</translation>
    </message>
    <message>
        <source>Pictures (*.png)</source>
        <translation>Bilder (*.png)</translation>
    </message>
    <message>
        <source>Save Page as PDF</source>
        <translation>Seite als PDF sichern</translation>
    </message>
    <message>
        <source>Pages (*.pdf)</source>
        <translation>Seiten (*.pdf)</translation>
    </message>
    <message>
        <source>Name of the elastic %1:</source>
        <translation>Name des Gummizugs %1:</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>Pa&amp;tients…</source>
        <translation>&amp;Patienten …</translation>
    </message>
    <message>
        <source>&amp;Open File…</source>
        <translation>Datei ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Import File…</source>
        <translation>Datei &amp;importieren …</translation>
    </message>
    <message>
        <source>&amp;Save Treatment</source>
        <translation>Behandlung &amp;sichern</translation>
    </message>
    <message>
        <source>&amp;Export Treatment…</source>
        <translation>Behandlung &amp;exportieren …</translation>
    </message>
    <message>
        <source>Save Pict&amp;ure…</source>
        <translation>&amp;Bild sichern …</translation>
    </message>
    <message>
        <source>&amp;Print…</source>
        <translation>&amp;Drucken …</translation>
    </message>
    <message>
        <source>Save Page as P&amp;DF…</source>
        <translation>Seite als PD&amp;F sichern …</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation>Fenster s&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>B&amp;eenden</translation>
    </message>
    <message>
        <source>&amp;Clear List</source>
        <translation>Liste &amp;leeren</translation>
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
        <source>&amp;Copy Picture</source>
        <translation>Bild &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Treatment</source>
        <translation>Be&amp;handlung</translation>
    </message>
    <message>
        <source>&amp;Earlier Note</source>
        <translation>&amp;Früherer Befund</translation>
    </message>
    <message>
        <source>&amp;Later Note</source>
        <translation>&amp;Späterer Befund</translation>
    </message>
    <message>
        <source>&amp;Today&apos;s Note</source>
        <translation>Befund von &amp;heute</translation>
    </message>
    <message>
        <source>&amp;Approved</source>
        <translation>Frei&amp;gegeben</translation>
    </message>
    <message>
        <source>C&amp;hanges…</source>
        <translation>Ä&amp;nderungen …</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Zoom to Fit</source>
        <translation>&amp;Einpassen</translation>
    </message>
    <message>
        <source>&amp;Full Screen</source>
        <translation>&amp;Vollbild</translation>
    </message>
    <message>
        <source>Sho&amp;w</source>
        <translation>An&amp;zeigen</translation>
    </message>
    <message>
        <source>&amp;Tooth Numbers</source>
        <translation>Zahn&amp;nummern</translation>
    </message>
    <message>
        <source>&amp;Colours of Windows</source>
        <translation>&amp;Farben der Fenster</translation>
    </message>
    <message>
        <source>&amp;Upper Arch</source>
        <translation>&amp;Oberkiefer</translation>
    </message>
    <message>
        <source>&amp;Lower Arch</source>
        <translation>&amp;Unterkiefer</translation>
    </message>
    <message>
        <source>&amp;Gums</source>
        <translation>&amp;Zahnfleisch</translation>
    </message>
    <message>
        <source>&amp;Brackets</source>
        <translation>&amp;Brackets</translation>
    </message>
    <message>
        <source>Lingual Bu&amp;ttons</source>
        <translation>&amp;Lingualknöpfchen</translation>
    </message>
    <message>
        <source>&amp;Elastics</source>
        <translation>&amp;Gummizüge</translation>
    </message>
    <message>
        <source>&amp;Beside the Teeth</source>
        <translation>&amp;Neben den Zähnen</translation>
    </message>
    <message>
        <source>&amp;Universal</source>
        <translation>&amp;Universell</translation>
    </message>
    <message>
        <source>&amp;FDI</source>
        <translation>&amp;FDI</translation>
    </message>
    <message>
        <source>&amp;Palmer</source>
        <translation>&amp;Palmer</translation>
    </message>
    <message>
        <source>As the &amp;Desktop Has Them</source>
        <translation>Wie der &amp;Desktop</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Hell</translation>
    </message>
    <message>
        <source>Da&amp;rk</source>
        <translation>D&amp;unkel</translation>
    </message>
    <message>
        <source>&amp;Panels</source>
        <translation>&amp;Paletten</translation>
    </message>
    <message>
        <source>&amp;Tooth Chart</source>
        <translation>&amp;Zahnschema</translation>
    </message>
    <message>
        <source>&amp;Materials</source>
        <translation>&amp;Materialien</translation>
    </message>
    <message>
        <source>&amp;Close All Panels</source>
        <translation>Alle Paletten &amp;schließen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Keys and Mouse…</source>
        <translation>&amp;Tasten und Maus …</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber</translation>
    </message>
    <message>
        <source>Treatment viewer</source>
        <translation>Behandlungsansicht</translation>
    </message>
    <message>
        <source>Treatment viewer %1
One patient&apos;s orthodontic treatment as an interactive scene.</source>
        <translation>Behandlungsansicht %1
Die kieferorthopädische Behandlung eines Patienten als bewegliche Szene.</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Rename Elastic</source>
        <translation>Gummizug umbenennen</translation>
    </message>
    <message>
        <source>Name Elastic</source>
        <translation>Gummizug benennen</translation>
    </message>
    <message>
        <source>Name elastic %1, %2</source>
        <translation>Gummizug %1 benennen, %2</translation>
    </message>
    <message>
        <source>Place Named Elastic</source>
        <translation>Benannten Gummizug einhängen</translation>
    </message>
    <message>
        <source>An elastic runs over %1 already. Place %2 on top of it as a second one?</source>
        <translation>Über %1 liegt schon ein Gummizug. %2 als zweiten darüber einhängen?</translation>
    </message>
    <message>
        <source>Rename elastic %1, from %2 to %3</source>
        <translation>Gummizug %1 umbenennen, von %2 zu %3</translation>
    </message>
</context>
</TS>
