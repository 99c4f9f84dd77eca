<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>OVBoxBlur</name>
    <message>
        <source>Box Blur</source>
        <translation>Box-Weichzeichner</translation>
    </message>
</context>
<context>
    <name>OVBrightnessContrast</name>
    <message>
        <source>Brightness/Contrast</source>
        <translation>Helligkeit/Kontrast</translation>
    </message>
</context>
<context>
    <name>OVDemoColour</name>
    <message>
        <source>Working &amp;Colour Profile</source>
        <translation>Arbeits-&amp;Farbprofil</translation>
    </message>
    <message>
        <source>No RGB profiles in %1</source>
        <translation>Keine RGB-Profile in %1</translation>
    </message>
</context>
<context>
    <name>OVDemoHost</name>
    <message>
        <source>The demo host editor of the core library.</source>
        <translation>Der Demo-Editor der core-Bibliothek.</translation>
    </message>
    <message>
        <source>Process the images without a window.</source>
        <translation>Die Bilder ohne Fenster bearbeiten.</translation>
    </message>
    <message>
        <source>Write the results into this folder.</source>
        <translation>Die Ergebnisse in diesen Ordner schreiben.</translation>
    </message>
    <message>
        <source>Format of the results.</source>
        <translation>Format der Ergebnisse.</translation>
    </message>
    <message>
        <source>Save a picture of the window once the images are open.</source>
        <translation>Ein Bild des Fensters speichern, sobald die Bilder geöffnet sind.</translation>
    </message>
    <message>
        <source>Quit once the images are open (and adjusted).</source>
        <translation>Beenden, sobald die Bilder geöffnet (und korrigiert) sind.</translation>
    </message>
    <message>
        <source>The file does not exist.</source>
        <translation>Die Datei existiert nicht.</translation>
    </message>
    <message>
        <source>No reader for the format &quot;%1&quot;.</source>
        <translation>Kein Leser für das Format „%1“.</translation>
    </message>
    <message>
        <source>The file could not be read.</source>
        <translation>Die Datei konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation>fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>Cannot create the output folder %1.</source>
        <translation>Der Ausgabeordner %1 kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>cannot write %1: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 of %2 files done, %3 failed</source>
        <translation>%1 von %2 Dateien erledigt, %3 fehlgeschlagen</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) could not be read or written.</source>
        <translation>
            <numerusform>%n Datei konnte nicht gelesen oder geschrieben werden.</numerusform>
            <numerusform>%n Dateien konnten nicht gelesen oder geschrieben werden.</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Image</source>
        <translation>B&amp;ild</translation>
    </message>
    <message>
        <source>Fil&amp;ter</source>
        <translation>Fil&amp;ter</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Loading %1...</source>
        <translation>%1 wird geladen...</translation>
    </message>
    <message>
        <source>%1 did not load: %2</source>
        <translation>%1 wurde nicht geladen: %2</translation>
    </message>
    <message>
        <source>Plug-ins: %1 loaded (%2), %3 failed</source>
        <translation>Plug-ins: %1 geladen (%2), %3 fehlgeschlagen</translation>
    </message>
    <message>
        <source>The value of &quot;%1&quot; is not a whole number.</source>
        <translation>Der Wert von „%1“ ist keine ganze Zahl.</translation>
    </message>
    <message>
        <source>No adjustment takes &quot;%1&quot;.</source>
        <translation>Keine Korrektur nimmt „%1“ an.</translation>
    </message>
    <message>
        <source>The image could not be saved.</source>
        <translation>Das Bild konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>No writer for the format &quot;%1&quot;.</source>
        <translation>Kein Schreiber für das Format „%1“.</translation>
    </message>
    <message>
        <source>core demo editor</source>
        <translation>core-Demo-Editor</translation>
    </message>
    <message>
        <source>Show the library&apos;s diagnostics in the headless mode.</source>
        <translation>Die Diagnosemeldungen der Bibliothek im Modus ohne Fenster zeigen.</translation>
    </message>
    <message>
        <source>Headless: send this feedback to the collector and print the reply.</source>
        <translation>Ohne Fenster: diese Rückmeldung an den Sammler senden und die Antwort zeigen.</translation>
    </message>
    <message>
        <source>Feedback reply: %1</source>
        <translation>Antwort auf die Rückmeldung: %1</translation>
    </message>
    <message>
        <source>--%1 takes a whole number from %2 to %3.</source>
        <translation>--%1 nimmt eine ganze Zahl von %2 bis %3.</translation>
    </message>
    <message>
        <source>Apply an adjustment, e.g. brightness=20 or greyscale; an unknown name lists them.</source>
        <translation>Eine Korrektur anwenden, z. B. brightness=20 oder greyscale; ein unbekannter Name listet sie auf.</translation>
    </message>
    <message>
        <source>Headless: files worked on at once (default: %1, the processor&apos;s threads).</source>
        <translation>Ohne Fenster: gleichzeitig bearbeitete Dateien (Vorgabe: %1, die Threads des Prozessors).</translation>
    </message>
    <message>
        <source>Headless: take the files of subfolders too.</source>
        <translation>Ohne Fenster: auch die Dateien der Unterordner nehmen.</translation>
    </message>
    <message>
        <source>Quality of lossy results, 0 to 100.</source>
        <translation>Qualität verlustbehafteter Ergebnisse, 0 bis 100.</translation>
    </message>
    <message>
        <source>Refuse images larger than this (default: %1).</source>
        <translation>Größere Bilder ablehnen (Vorgabe: %1).</translation>
    </message>
    <message>
        <source>Load this plug-in library too (may be repeated).</source>
        <translation>Auch diese Plug-in-Bibliothek laden (wiederholbar).</translation>
    </message>
    <message>
        <source>Images to open; headless, also folders of images.</source>
        <translation>Zu öffnende Bilder; ohne Fenster auch Ordner mit Bildern.</translation>
    </message>
    <message>
        <source>--max-megapixels takes a number above 0.</source>
        <translation>--max-megapixels nimmt eine Zahl über 0.</translation>
    </message>
    <message>
        <source>The image is %1x%2 pixels, above the limit of %3 megapixels (--max-megapixels).</source>
        <translation>Das Bild hat %1x%2 Pixel, mehr als die Grenze von %3 Megapixeln (--max-megapixels).</translation>
    </message>
    <message>
        <source>%1 files/s, %2 MP/s, about %3 s left</source>
        <translation>%1 Dateien/s, %2 MP/s, noch etwa %3 s</translation>
    </message>
    <message>
        <source>Stopped by signal %1: %2 of %3 files not started.</source>
        <translation>Durch Signal %1 angehalten: %2 von %3 Dateien nicht begonnen.</translation>
    </message>
    <message>
        <source>No adjustment is named &quot;%1&quot;.</source>
        <translation>Keine Korrektur heißt „%1“.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes %2 to %3.</source>
        <translation>„%1“ nimmt %2 bis %3.</translation>
    </message>
    <message>
        <source>%1 takes no &quot;%2&quot;.</source>
        <translation>%1 nimmt kein „%2“.</translation>
    </message>
    <message>
        <source>Adjustments (--adjust NAME, NAME:PARAMETER=VALUE,... or PARAMETER=VALUE,...):</source>
        <translation>Korrekturen (--adjust NAME, NAME:PARAMETER=WERT,... oder PARAMETER=WERT,...):</translation>
    </message>
    <message>
        <source>%1: %2 to %3, default %4</source>
        <translation>%1: %2 bis %3, Vorgabe %4</translation>
    </message>
    <message>
        <source>Stopping once the files in flight are written; stop again to discard them.</source>
        <translation>Halte an, sobald die laufenden Dateien geschrieben sind; erneut anhalten verwirft sie.</translation>
    </message>
</context>
<context>
    <name>OVDemoLists</name>
    <message>
        <source>No recent files</source>
        <translation>Keine zuletzt geöffneten Dateien</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Favourite</source>
        <translation>&amp;Favorit</translation>
    </message>
    <message>
        <source>Export options</source>
        <translation>Exportoptionen</translation>
    </message>
    <message>
        <source>As it is</source>
        <translation>Unverändert</translation>
    </message>
    <message>
        <source>Fit into:</source>
        <translation>Einpassen in:</translation>
    </message>
    <message>
        <source>Any</source>
        <translation>Beliebig</translation>
    </message>
    <message>
        <source>Largest file:</source>
        <translation>Größte Datei:</translation>
    </message>
</context>
<context>
    <name>OVDemoLook</name>
    <message>
        <source>The change takes effect at the next start.</source>
        <translation>Die Änderung wirkt beim nächsten Start.</translation>
    </message>
    <message>
        <source>&amp;Theme</source>
        <translation>&amp;Design</translation>
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
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>Foreground colour</source>
        <translation>Vordergrundfarbe</translation>
    </message>
    <message>
        <source>Background colour</source>
        <translation>Hintergrundfarbe</translation>
    </message>
    <message>
        <source>Swap</source>
        <translation>Tauschen</translation>
    </message>
    <message>
        <source>Swap the foreground and background colours</source>
        <translation>Vorder- und Hintergrundfarbe tauschen</translation>
    </message>
</context>
<context>
    <name>OVDemoStatistics</name>
    <message>
        <source>Send Usage &amp;Statistics</source>
        <translation>Nutzungs&amp;statistik senden</translation>
    </message>
    <message>
        <source>Send &amp;Feedback...</source>
        <translation>&amp;Rückmeldung senden...</translation>
    </message>
    <message>
        <source>Send Feedback</source>
        <translation>Rückmeldung senden</translation>
    </message>
    <message>
        <source>What would you like to tell us?</source>
        <translation>Was möchten Sie uns mitteilen?</translation>
    </message>
    <message>
        <source>No reply from %1.</source>
        <translation>Keine Antwort von %1.</translation>
    </message>
    <message>
        <source>Feedback</source>
        <translation>Rückmeldung</translation>
    </message>
</context>
<context>
    <name>OVDemoWindow</name>
    <message>
        <source>core demo editor</source>
        <translation>core-Demo-Editor</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>Ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <translation>&amp;Exportieren...</translation>
    </message>
    <message>
        <source>Ctrl+E</source>
        <translation>Ctrl+E</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Adjustments</source>
        <translation>&amp;Korrekturen</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>The demo host editor of the core library.

%1</source>
        <translation>Der Demo-Editor der core-Bibliothek.

%1</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Tool options</source>
        <translation>Werkzeugoptionen</translation>
    </message>
    <message>
        <source>Tool</source>
        <translation>Werkzeug</translation>
    </message>
    <message>
        <source>Opening images...</source>
        <translation>Bilder werden geöffnet...</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1: %2 x %3, read by %4 in %5 ms</source>
        <translation>%1: %2 x %3, gelesen von %4 in %5 ms</translation>
    </message>
    <message>
        <source>Cannot save %1</source>
        <translation>%1 kann nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 konnte nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Exported %1 (%2 x %3)</source>
        <translation>%1 exportiert (%2 x %3)</translation>
    </message>
</context>
<context>
    <name>OVFilterContainer</name>
    <message>
        <source>Box Blur (small)</source>
        <translation>Box-Weichzeichner (schwach)</translation>
    </message>
    <message>
        <source>Box Blur (large)</source>
        <translation>Box-Weichzeichner (stark)</translation>
    </message>
</context>
<context>
    <name>OVGreyscale</name>
    <message>
        <source>Grey-scale</source>
        <translation>Graustufen</translation>
    </message>
</context>
<context>
    <name>OVImageIOReader</name>
    <message>
        <source>The file is damaged: its data ends early.</source>
        <translation>Die Datei ist beschädigt: ihre Daten enden zu früh.</translation>
    </message>
</context>
<context>
    <name>OVSampleBrushes</name>
    <message>
        <source>Basic brushes</source>
        <translation>Einfache Pinsel</translation>
    </message>
</context>
<context>
    <name>OVToolsContainer</name>
    <message>
        <source>Hand</source>
        <translation>Hand</translation>
    </message>
    <message>
        <source>Drag the image to scroll it.</source>
        <translation>Das Bild ziehen, um es zu verschieben.</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Click to zoom in, Alt-click to zoom out.</source>
        <translation>Klicken zum Vergrößern, Alt-Klick zum Verkleinern.</translation>
    </message>
    <message>
        <source>Colour Picker</source>
        <translation>Pipette</translation>
    </message>
    <message>
        <source>Click to take the foreground colour from the image.</source>
        <translation>Klicken, um die Vordergrundfarbe aus dem Bild zu übernehmen.</translation>
    </message>
    <message>
        <source>Point sample</source>
        <translation>Einzelner Punkt</translation>
    </message>
    <message>
        <source>3 by 3 average</source>
        <translation>3 x 3 Mittelwert</translation>
    </message>
    <message>
        <source>5 by 5 average</source>
        <translation>5 x 5 Mittelwert</translation>
    </message>
    <message>
        <source>Scroll all windows</source>
        <translation>Alle Fenster verschieben</translation>
    </message>
</context>
</TS>
