<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AnnotationBinding</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>No gamut is shown</source>
        <translation>Es wird kein Gamut gezeigt</translation>
    </message>
</context>
<context>
    <name>BackgroundMenu</name>
    <message>
        <source>&amp;Background</source>
        <translation>&amp;Hintergrund</translation>
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
        <source>&amp;Neutral grey</source>
        <translation>&amp;Neutralgrau</translation>
    </message>
</context>
<context>
    <name>ClipControl</name>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Schneiden</translation>
    </message>
    <message>
        <source>Lightness of the section</source>
        <translation>Helligkeit des Schnitts</translation>
    </message>
    <message>
        <source>Cut the gamuts off above this lightness</source>
        <translation>Die Gamuts oberhalb dieser Helligkeit abschneiden</translation>
    </message>
    <message>
        <source>&amp;L*</source>
        <translation>&amp;L*</translation>
    </message>
</context>
<context>
    <name>ColorTable</name>
    <message>
        <source>inside</source>
        <translation>innen</translation>
    </message>
    <message>
        <source>edge</source>
        <translation>Rand</translation>
    </message>
    <message>
        <source>outside</source>
        <translation>außen</translation>
    </message>
    <message>
        <source>Colour %1</source>
        <translation>Farbe %1</translation>
    </message>
    <message>
        <source>The screen cannot show this colour; the patch shows a similar one</source>
        <translation>Der Bildschirm kann diese Farbe nicht zeigen; das Feld zeigt eine ähnliche</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Nearest in %1</source>
        <translation>Nächste in %1</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>CIEDE2000 to the nearest colour of %1; 0 inside</source>
        <translation>CIEDE2000 zur nächsten Farbe von %1; innen 0</translation>
    </message>
    <message>
        <source>What the profile of %1 makes of the colour, in percent</source>
        <translation>Was das Profil von %1 aus der Farbe macht, in Prozent</translation>
    </message>
    <message>
        <source>Device values, %1</source>
        <translation>Gerätewerte, %1</translation>
    </message>
</context>
<context>
    <name>ColorsPanel</name>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>Copy rows</source>
        <translation>Zeilen kopieren</translation>
    </message>
    <message>
        <source>Copy all rows</source>
        <translation>Alle Zeilen kopieren</translation>
    </message>
    <message>
        <source>Save the table as CSV…</source>
        <translation>Tabelle als CSV speichern…</translation>
    </message>
    <message>
        <source>Search by name</source>
        <translation>Name suchen</translation>
    </message>
    <message>
        <source>Search colours by name</source>
        <translation>Farben nach Namen suchen</translation>
    </message>
    <message>
        <source>Zone of the active gamut</source>
        <translation>Zone des aktiven Gamuts</translation>
    </message>
    <message>
        <source>Which colours are listed, by their place in the active gamut</source>
        <translation>Welche Farben aufgeführt werden, nach ihrer Lage im aktiven Gamut</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Outside</source>
        <translation>Außen</translation>
    </message>
    <message>
        <source>Edge</source>
        <translation>Rand</translation>
    </message>
    <message>
        <source>Inside</source>
        <translation>Innen</translation>
    </message>
    <message>
        <source>Colours: %1</source>
        <translation>Farben: %1</translation>
    </message>
    <message>
        <source>Colours: %1 of %2</source>
        <translation>Farben: %1 von %2</translation>
    </message>
    <message>
        <source>%1, computing: %2 %</source>
        <translation>%1, wird berechnet: %2 %</translation>
    </message>
</context>
<context>
    <name>CommandSearch</name>
    <message>
        <source>Find a command</source>
        <translation>Befehl suchen</translation>
    </message>
    <message>
        <source>Words of the command</source>
        <translation>Wörter des Befehls</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Taste</translation>
    </message>
</context>
<context>
    <name>ComparisonModel</name>
    <message>
        <source>computing…</source>
        <translation>wird berechnet…</translation>
    </message>
    <message>
        <source>the active gamut</source>
        <translation>(aktiver Gamut)</translation>
    </message>
    <message>
        <source>Intersection</source>
        <translation>Schnittmenge</translation>
    </message>
    <message>
        <source>Union</source>
        <translation>Vereinigung</translation>
    </message>
    <message>
        <source>Covers</source>
        <translation>Deckt ab</translation>
    </message>
    <message>
        <source>Inside</source>
        <translation>Abgedeckt</translation>
    </message>
    <message>
        <source>Gamut</source>
        <translation>Gamut</translation>
    </message>
    <message>
        <source>Intent</source>
        <translation>Rendering Intent</translation>
    </message>
    <message>
        <source>White L* a* b*</source>
        <translation>Weiß L* a* b*</translation>
    </message>
    <message>
        <source>Volume ΔE³</source>
        <translation>Volumen ΔE³</translation>
    </message>
    <message>
        <source>Uncertainty</source>
        <translation>Unsicherheit</translation>
    </message>
    <message>
        <source>Intersection with %1</source>
        <translation>Schnittmenge mit %1</translation>
    </message>
    <message>
        <source>Union with %1</source>
        <translation>Vereinigung mit %1</translation>
    </message>
    <message>
        <source>Share of %1 that this one covers</source>
        <translation>Abdeckung von %1 durch diesen Gamut</translation>
    </message>
    <message>
        <source>Share of this one that %1 covers</source>
        <translation>Abdeckung dieses Gamuts durch %1</translation>
    </message>
    <message>
        <source>White L*	White a*	White b*</source>
        <translation>Weiß L*	Weiß a*	Weiß b*</translation>
    </message>
</context>
<context>
    <name>ComparisonPanel</name>
    <message>
        <source>The gamuts have different intents: %1. Choose one intent to compare the devices.</source>
        <translation>Die Gamuts haben verschiedene Intents: %1. Wählen Sie einen Intent, um die Geräte zu vergleichen.</translation>
    </message>
</context>
<context>
    <name>ComparisonTable</name>
    <message>
        <source>Comparison of the gamuts</source>
        <translation>Vergleich der Gamuts</translation>
    </message>
</context>
<context>
    <name>CoverageModel</name>
    <message>
        <source>computing…</source>
        <translation>wird berechnet…</translation>
    </message>
    <message>
        <source>Share of %1 that %2 covers</source>
        <translation>Anteil von %1, den %2 abdeckt</translation>
    </message>
</context>
<context>
    <name>CoverageTable</name>
    <message>
        <source>Coverage of all gamuts</source>
        <translation>Abdeckung aller Gamuts</translation>
    </message>
    <message>
        <source>The share of the volume of each row&apos;s gamut that the column&apos;s gamut covers.</source>
        <translation>Der Anteil am Volumen des Gamuts der Zeile, den der Gamut der Spalte abdeckt.</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
</context>
<context>
    <name>EditMenu</name>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>Copy &amp;picture</source>
        <translation>&amp;Bild kopieren</translation>
    </message>
    <message>
        <source>Copy &amp;comparison</source>
        <translation>&amp;Vergleich kopieren</translation>
    </message>
    <message>
        <source>Copy c&amp;licked colour</source>
        <translation>Angeklickte &amp;Farbe kopieren</translation>
    </message>
    <message>
        <source>Copy c&amp;amera</source>
        <translation>&amp;Kamera kopieren</translation>
    </message>
    <message>
        <source>Pa&amp;ste camera</source>
        <translation>Kamera &amp;einfügen</translation>
    </message>
    <message>
        <source>Copy &amp;table of colours</source>
        <translation>Farb&amp;tabelle kopieren</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>R&amp;edo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
</context>
<context>
    <name>FileDialogs</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>All that can be opened (*.icc *.icm *.png *.jpg *.jpeg *.tif *.tiff *.kvgamut *.kvsession *.gam *.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)</source>
        <translation>Alles, was sich öffnen lässt (*.icc *.icm *.png *.jpg *.jpeg *.tif *.tiff *.kvgamut *.kvsession *.gam *.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)</translation>
    </message>
    <message>
        <source>Profiles (*.icc *.icm)</source>
        <translation>Profile (*.icc *.icm)</translation>
    </message>
    <message>
        <source>Pictures with a profile (*.png *.jpg *.jpeg *.tif *.tiff)</source>
        <translation>Bilder mit einem Profil (*.png *.jpg *.jpeg *.tif *.tiff)</translation>
    </message>
    <message>
        <source>Saved gamuts (*.kvgamut)</source>
        <translation>Gespeicherte Gamuts (*.kvgamut)</translation>
    </message>
    <message>
        <source>Measurements (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)</source>
        <translation>Messwerte (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Add points</source>
        <translation>Punkte hinzufügen</translation>
    </message>
    <message>
        <source>Measurements and pictures (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl *.png *.jpg *.jpeg *.tif *.tiff)</source>
        <translation>Messwerte und Bilder (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl *.png *.jpg *.jpeg *.tif *.tiff)</translation>
    </message>
    <message>
        <source>Restore session</source>
        <translation>Sitzung wiederherstellen</translation>
    </message>
    <message>
        <source>Sessions (*.kvsession)</source>
        <translation>Sitzungen (*.kvsession)</translation>
    </message>
    <message>
        <source>Save session</source>
        <translation>Sitzung speichern</translation>
    </message>
    <message>
        <source>Save picture</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <source>Save section</source>
        <translation>Schnitt speichern</translation>
    </message>
    <message>
        <source>Drawings (*.svg *.pdf)</source>
        <translation>Zeichnungen (*.svg *.pdf)</translation>
    </message>
    <message>
        <source>Pictures (*.png *.jpg *.tif *.webp *.svg *.pdf)</source>
        <translation>Bilder (*.png *.jpg *.tif *.webp *.svg *.pdf)</translation>
    </message>
    <message>
        <source>Save page to send</source>
        <translation>Seite zum Versenden speichern</translation>
    </message>
    <message>
        <source>Web pages (*.html)</source>
        <translation>Webseiten (*.html)</translation>
    </message>
    <message>
        <source>Save table of colours</source>
        <translation>Farbtabelle speichern</translation>
    </message>
    <message>
        <source>Tables (*.csv)</source>
        <translation>Tabellen (*.csv)</translation>
    </message>
    <message>
        <source>Save gamut as mesh</source>
        <translation>Gamut als Netz speichern</translation>
    </message>
    <message>
        <source>Meshes (*.ply *.obj *.stl *.gltf *.x3d *.json)</source>
        <translation>Netze (*.ply *.obj *.stl *.gltf *.x3d *.json)</translation>
    </message>
    <message>
        <source>Profiles (*.icc)</source>
        <translation>Profile (*.icc)</translation>
    </message>
</context>
<context>
    <name>FileMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen…</translation>
    </message>
    <message>
        <source>Add &amp;points or the pixels of a picture…</source>
        <translation>P&amp;unkte oder die Pixel eines Bildes hinzufügen…</translation>
    </message>
    <message>
        <source>R&amp;estore session…</source>
        <translation>Sitzung &amp;wiederherstellen…</translation>
    </message>
    <message>
        <source>Save p&amp;icture…</source>
        <translation>&amp;Bild speichern…</translation>
    </message>
    <message>
        <source>Save sec&amp;tion…</source>
        <translation>Sc&amp;hnitt speichern…</translation>
    </message>
    <message>
        <source>&amp;Close everything</source>
        <translation>&amp;Alles schließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>B&amp;eenden</translation>
    </message>
    <message>
        <source>Open &amp;built-in profile</source>
        <translation>Eingebautes &amp;Profil öffnen</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>Save pa&amp;ge to send…</source>
        <translation>Seite zum &amp;Versenden speichern…</translation>
    </message>
    <message>
        <source>Save t&amp;able of colours…</source>
        <translation>Farb&amp;tabelle speichern…</translation>
    </message>
    <message>
        <source>Save gamut as &amp;mesh…</source>
        <translation>Gamut als &amp;Netz speichern…</translation>
    </message>
    <message>
        <source>&amp;Save session</source>
        <translation>&amp;Sitzung speichern</translation>
    </message>
    <message>
        <source>Sa&amp;ve session as…</source>
        <translation>Sitzung speichern unte&amp;r…</translation>
    </message>
    <message>
        <source>&amp;Load files again</source>
        <translation>Dateien neu &amp;laden</translation>
    </message>
    <message>
        <source>Load changed files a&amp;utomatically</source>
        <translation>&amp;Geänderte Dateien automatisch laden</translation>
    </message>
</context>
<context>
    <name>FindingPanel</name>
    <message>
        <source>Click a gamut or a point to see its colour here.</source>
        <translation>Klicken Sie auf einen Gamut oder einen Punkt, um hier seine Farbe zu sehen.</translation>
    </message>
    <message>
        <source>The clicked colour on this screen</source>
        <translation>Die angeklickte Farbe auf diesem Bildschirm</translation>
    </message>
    <message>
        <source>A corner is missing if the screen cannot show the colour</source>
        <translation>Eine Ecke fehlt, wenn der Bildschirm die Farbe nicht zeigen kann</translation>
    </message>
</context>
<context>
    <name>GamutInformation</name>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Class</source>
        <translation>Klasse</translation>
    </message>
    <message>
        <source>Device colours</source>
        <translation>Gerätefarben</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n channels</source>
        <translation>
            <numerusform>%1, %n Kanal</numerusform>
            <numerusform>%1, %n Kanäle</numerusform>
        </translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Fassung</translation>
    </message>
    <message>
        <source>Intents</source>
        <translation>Umrechnungen</translation>
    </message>
    <message>
        <source>Copyright</source>
        <translation>Urheberrecht</translation>
    </message>
    <message>
        <source>Saved of</source>
        <translation>Gespeichert von</translation>
    </message>
    <message>
        <source>Computed with</source>
        <translation>Berechnet mit</translation>
    </message>
    <message>
        <source>Conversion to Lab</source>
        <translation>Umrechnung nach Lab</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volumen</translation>
    </message>
    <message>
        <source>Volume of the surface</source>
        <translation>Volumen der Oberfläche</translation>
    </message>
    <message>
        <source>White</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>Black</source>
        <translation>Schwarz</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>Verfahren</translation>
    </message>
    <message>
        <source>Grid</source>
        <translation>Gitter</translation>
    </message>
    <message>
        <source>Triangles</source>
        <translation>Dreiecke</translation>
    </message>
    <message>
        <source>Folded share</source>
        <translation>Gefalteter Anteil</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Bezeichnung</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Hinweise</translation>
    </message>
    <message>
        <source>Information about %1</source>
        <translation>Informationen über %1</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
</context>
<context>
    <name>GamutListModel</name>
    <message>
        <source>%1 – %2 %</source>
        <translation>%1 – %2 %</translation>
    </message>
    <message>
        <source>%1
is being computed</source>
        <translation>%1
wird berechnet</translation>
    </message>
</context>
<context>
    <name>GamutMenu</name>
    <message>
        <source>&amp;Gamut</source>
        <translation>&amp;Gamut</translation>
    </message>
    <message>
        <source>&amp;Next gamut</source>
        <translation>&amp;Nächster Gamut</translation>
    </message>
    <message>
        <source>&amp;Remove gamut</source>
        <translation>Gamut &amp;entfernen</translation>
    </message>
    <message>
        <source>&amp;Black point compensation</source>
        <translation>&amp;Tiefenkompensierung</translation>
    </message>
    <message>
        <source>&amp;Visible</source>
        <translation>&amp;Sichtbar</translation>
    </message>
    <message>
        <source>&amp;Surface</source>
        <translation>&amp;Oberfläche</translation>
    </message>
    <message>
        <source>Pro&amp;jection</source>
        <translation>&amp;Projektion</translation>
    </message>
    <message>
        <source>&amp;Primaries</source>
        <translation>Pr&amp;imärfarben</translation>
    </message>
    <message>
        <source>Smooth, flat, &amp;wireframe</source>
        <translation>&amp;Glatt, facettiert, Drahtgitter</translation>
    </message>
    <message>
        <source>More &amp;opaque</source>
        <translation>Dec&amp;kender</translation>
    </message>
    <message>
        <source>&amp;Less opaque</source>
        <translation>&amp;Durchsichtiger</translation>
    </message>
    <message>
        <source>&amp;Colour…</source>
        <translation>&amp;Farbe…</translation>
    </message>
    <message>
        <source>Own colo&amp;urs</source>
        <translation>Eigene Fa&amp;rben</translation>
    </message>
    <message>
        <source>Only this gamut</source>
        <translation>Nur diesen Gamut</translation>
    </message>
    <message>
        <source>Information…</source>
        <translation>Informationen…</translation>
    </message>
    <message>
        <source>Coverage of all…</source>
        <translation>Abdeckung aller…</translation>
    </message>
</context>
<context>
    <name>GamutPanel</name>
    <message>
        <source>Gamuts</source>
        <translation>Gamuts</translation>
    </message>
    <message>
        <source>Remove gamut</source>
        <translation>Gamut entfernen</translation>
    </message>
    <message>
        <source>&amp;Black point compensation</source>
        <translation>&amp;Tiefenkompensierung</translation>
    </message>
    <message>
        <source>No effect with the absolute intent</source>
        <translation>Schwarzpunktkompensation; beim absolut farbmetrischen Intent ohne Wirkung</translation>
    </message>
    <message>
        <source>automatic</source>
        <translation>automatisch</translation>
    </message>
    <message>
        <source>Samples along each device axis</source>
        <translation>Stützstellen entlang jeder Geräteachse</translation>
    </message>
    <message>
        <source>Computed with</source>
        <translation>Berechnet mit</translation>
    </message>
    <message>
        <source>&amp;Intent</source>
        <translation>&amp;Intent</translation>
    </message>
    <message>
        <source>G&amp;rid</source>
        <translation>&amp;Raster</translation>
    </message>
    <message>
        <source>Smooth</source>
        <translation>Glatt</translation>
    </message>
    <message>
        <source>Flat</source>
        <translation>Facettiert</translation>
    </message>
    <message>
        <source>Wireframe</source>
        <translation>Drahtgitter</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>Light from everywhere</source>
        <translation>Licht von allen Seiten</translation>
    </message>
    <message>
        <source>Right: pure colours. Left: the light models the surface.</source>
        <translation>Rechts: reine Farben. Links: Das Licht modelliert die Oberfläche.</translation>
    </message>
    <message>
        <source>&amp;Choose…</source>
        <translation>&amp;Wählen…</translation>
    </message>
    <message>
        <source>&amp;Own colours</source>
        <translation>Eige&amp;ne Farben</translation>
    </message>
    <message>
        <source>&amp;Surface</source>
        <translation>&amp;Oberfläche</translation>
    </message>
    <message>
        <source>Pro&amp;jection</source>
        <translation>&amp;Projektion</translation>
    </message>
    <message>
        <source>&amp;Primaries</source>
        <translation>Primär&amp;farben</translation>
    </message>
    <message>
        <source>Shown as</source>
        <translation>Dargestellt als</translation>
    </message>
    <message>
        <source>&amp;Mode</source>
        <translation>&amp;Modus</translation>
    </message>
    <message>
        <source>Opacit&amp;y</source>
        <translation>De&amp;ckkraft</translation>
    </message>
    <message>
        <source>P&amp;urity</source>
        <translation>R&amp;einheit</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Colour of the gamut</source>
        <translation>Farbe des Gamuts</translation>
    </message>
    <message>
        <source>Adaptatio&amp;n</source>
        <translation>Weißpun&amp;ktanpassung</translation>
    </message>
    <message>
        <source>Adaptation of a display&apos;s colours to D50; only with the absolute intent</source>
        <translation>Anpassung der Farben eines Bildschirms an D50; nur mit absolut farbmetrisch</translation>
    </message>
    <message>
        <source>(%1 used)</source>
        <translation>(%1 benutzt)</translation>
    </message>
</context>
<context>
    <name>HelpMenu</name>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Keys…</source>
        <translation>&amp;Tasten…</translation>
    </message>
    <message>
        <source>&amp;Find a command…</source>
        <translation>&amp;Befehl suchen…</translation>
    </message>
    <message>
        <source>&amp;Tour…</source>
        <translation>&amp;Rundgang…</translation>
    </message>
    <message>
        <source>&amp;About kvgamut…</source>
        <translation>&amp;Über kvgamut…</translation>
    </message>
</context>
<context>
    <name>HelpPages</name>
    <message>
        <source>Shows and compares colour gamuts in CIE L*a*b*.</source>
        <translation>Zeigt und vergleicht Farbumfänge in CIE L*a*b*.</translation>
    </message>
    <message>
        <source>Licence: %1</source>
        <translation>Lizenz: %1</translation>
    </message>
    <message>
        <source>Made with Qt %1</source>
        <translation>Mit Qt %1 gemacht</translation>
    </message>
    <message>
        <source>Nothing leaves this computer: the program uses no network.</source>
        <translation>Nichts verlässt diesen Rechner: Das Programm benutzt kein Netz.</translation>
    </message>
    <message>
        <source>About kvgamut</source>
        <translation>Über kvgamut</translation>
    </message>
    <message>
        <source>Tour</source>
        <translation>Rundgang</translation>
    </message>
</context>
<context>
    <name>History</name>
    <message>
        <source>Add %1</source>
        <translation>%1 hinzufügen</translation>
    </message>
    <message>
        <source>Add %1 gamuts</source>
        <translation>%1 Gamuts hinzufügen</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message>
        <source>Remove %1 gamuts</source>
        <translation>%1 Gamuts entfernen</translation>
    </message>
    <message>
        <source>Change points</source>
        <translation>Punkte ändern</translation>
    </message>
    <message>
        <source>Settings of %1</source>
        <translation>Einstellungen von %1</translation>
    </message>
    <message>
        <source>Show %1</source>
        <translation>%1 zeigen</translation>
    </message>
    <message>
        <source>Hide %1</source>
        <translation>%1 verbergen</translation>
    </message>
    <message>
        <source>Look of %1</source>
        <translation>Aussehen von %1</translation>
    </message>
    <message>
        <source>Edge of points</source>
        <translation>Rand der Punkte</translation>
    </message>
    <message>
        <source>Close everything</source>
        <translation>Alles schließen</translation>
    </message>
    <message>
        <source>Several changes</source>
        <translation>Mehrere Änderungen</translation>
    </message>
</context>
<context>
    <name>Inspector</name>
    <message>
        <source>%1, point %2</source>
        <translation>%1, Punkt %2</translation>
    </message>
    <message>
        <source>Surface of %1</source>
        <translation>Oberfläche von %1</translation>
    </message>
    <message>
        <source>seen from %1 away</source>
        <translation>aus einer Entfernung von %1 gesehen</translation>
    </message>
    <message>
        <source>sRGB %1</source>
        <translation>sRGB %1</translation>
    </message>
    <message>
        <source>CIEDE2000 %1 to %2</source>
        <translation>CIEDE2000 %1 zu %2</translation>
    </message>
    <message>
        <source>at the same hue %1 to %2</source>
        <translation>bei gleichem Buntton %1 zu %2</translation>
    </message>
    <message>
        <source>%1 makes it with %2 %</source>
        <translation>Gerätewerte in %1: %2 %</translation>
    </message>
    <message>
        <source>sRGB about %1</source>
        <translation>sRGB etwa %1</translation>
    </message>
    <message>
        <source>Colour at the cursor</source>
        <translation>Farbe am Farbzeiger</translation>
    </message>
</context>
<context>
    <name>KeyList</name>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Aktion</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>In the 3D view</source>
        <translation>In der 3D-Ansicht</translation>
    </message>
    <message>
        <source>Arrow keys, drag</source>
        <translation>Pfeiltasten, Ziehen</translation>
    </message>
    <message>
        <source>Turn</source>
        <translation>Drehen</translation>
    </message>
    <message>
        <source>+, -, wheel</source>
        <translation>+, -, Mausrad</translation>
    </message>
    <message>
        <source>Nearer, farther</source>
        <translation>Näher, weiter weg</translation>
    </message>
    <message>
        <source>Shift and drag, right drag</source>
        <translation>Umschalt und Ziehen, rechts ziehen</translation>
    </message>
    <message>
        <source>Move the scene</source>
        <translation>Szene verschieben</translation>
    </message>
    <message>
        <source>Click</source>
        <translation>Klicken</translation>
    </message>
    <message>
        <source>Which colour is this?</source>
        <translation>Welche Farbe ist das?</translation>
    </message>
    <message>
        <source>On to the next control</source>
        <translation>Weiter zum nächsten Bedienelement</translation>
    </message>
    <message>
        <source>Everywhere</source>
        <translation>Überall</translation>
    </message>
    <message>
        <source>Cancel loading, then dismiss messages</source>
        <translation>Laden abbrechen, dann Meldungen ausblenden</translation>
    </message>
    <message>
        <source>In lists and tables</source>
        <translation>In Listen und Tabellen</translation>
    </message>
    <message>
        <source>Show or hide the gamut</source>
        <translation>Gamut ein- oder ausblenden</translation>
    </message>
    <message>
        <source>Remove the gamut or the points</source>
        <translation>Gamut oder Punkte entfernen</translation>
    </message>
    <message>
        <source>Copy the selected numbers</source>
        <translation>Ausgewählte Zahlen kopieren</translation>
    </message>
    <message>
        <source>&amp;Set</source>
        <translation>&amp;Setzen</translation>
    </message>
    <message>
        <source>&amp;No key</source>
        <translation>&amp;Keine Taste</translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>&amp;Vorgabe</translation>
    </message>
    <message>
        <source>&amp;All to default</source>
        <translation>&amp;Alle auf Vorgabe</translation>
    </message>
    <message>
        <source>With the colour cursor</source>
        <translation>Mit dem Farbzeiger</translation>
    </message>
    <message>
        <source>Arrow keys</source>
        <translation>Pfeiltasten</translation>
    </message>
    <message>
        <source>Along a* and b*</source>
        <translation>Entlang a* und b*</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Lighter, darker</source>
        <translation>Heller, dunkler</translation>
    </message>
    <message>
        <source>Shift and these keys</source>
        <translation>Umschalttaste und diese Tasten</translation>
    </message>
    <message>
        <source>Ten times as far</source>
        <translation>Zehnmal so weit</translation>
    </message>
    <message>
        <source>Which colour is the nearest?</source>
        <translation>Welche Farbe ist die nächste?</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>New key</source>
        <translation>Neue Taste</translation>
    </message>
    <message>
        <source>Press the new key here</source>
        <translation>Hier die neue Taste drücken</translation>
    </message>
    <message>
        <source>Choose a command of the menus to change its key.</source>
        <translation>Wählen Sie einen Befehl der Menüs, um seine Taste zu ändern.</translation>
    </message>
    <message>
        <source>Press a key in the field first.</source>
        <translation>Drücken Sie zuerst eine Taste im Feld.</translation>
    </message>
    <message>
        <source>%1 has a meaning in the view or in lists.</source>
        <translation>%1 hat eine Bedeutung in der Ansicht oder in Listen.</translation>
    </message>
    <message>
        <source>%1 is the key of &quot;%2&quot;.</source>
        <translation>%1 ist die Taste von „%2“.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no key now.</source>
        <translation>„%1“ hat jetzt keine Taste.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has the key %2 now.</source>
        <translation>„%1“ hat jetzt die Taste %2.</translation>
    </message>
    <message>
        <source>All commands have their default keys.</source>
        <translation>Alle Befehle haben ihre vorgegebenen Tasten.</translation>
    </message>
</context>
<context>
    <name>LightMenu</name>
    <message>
        <source>L&amp;ight</source>
        <translation>&amp;Licht</translation>
    </message>
    <message>
        <source>From &amp;above</source>
        <translation>Von &amp;oben</translation>
    </message>
    <message>
        <source>From the &amp;left</source>
        <translation>Von &amp;links</translation>
    </message>
    <message>
        <source>From the &amp;right</source>
        <translation>Von &amp;rechts</translation>
    </message>
    <message>
        <source>&amp;Colour…</source>
        <translation>&amp;Farbe…</translation>
    </message>
    <message>
        <source>&amp;White</source>
        <translation>&amp;Weiß</translation>
    </message>
    <message>
        <source>Colour of the light</source>
        <translation>Farbe des Lichts</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Gamuts</source>
        <translation>Gamuts</translation>
    </message>
    <message>
        <source>Section</source>
        <translation>Schnitt</translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation>Vergleich</translation>
    </message>
    <message>
        <source>Clicked colour</source>
        <translation>Angeklickte Farbe</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Cancel (Esc)</source>
        <translation>Abbrechen (Esc)</translation>
    </message>
    <message>
        <source>Comparison with %1</source>
        <translation>Vergleich mit %1</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>%1 gespeichert</translation>
    </message>
    <message>
        <source>Writing %1…</source>
        <translation>%1 wird geschrieben…</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>Copied the picture: %1 x %2 pixels</source>
        <translation>Bild kopiert: %1 x %2 Pixel</translation>
    </message>
    <message>
        <source>Copied the clicked colour</source>
        <translation>Angeklickte Farbe kopiert</translation>
    </message>
    <message>
        <source>Copied the camera</source>
        <translation>Kamera kopiert</translation>
    </message>
    <message>
        <source>A window ended unexpectedly. Its unsaved changes of %1 were kept.</source>
        <translation>Ein Fenster wurde unerwartet beendet. Seine ungespeicherten Änderungen vom %1 sind erhalten.</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Changed on disk: %1</source>
        <translation>Auf dem Datenträger geändert: %1</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>Not now</source>
        <translation>Jetzt nicht</translation>
    </message>
</context>
<context>
    <name>MenuCommands</name>
    <message>
        <source> or </source>
        <translation> oder </translation>
    </message>
</context>
<context>
    <name>MessageBar</name>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Ausblenden</translation>
    </message>
    <message>
        <source>Dismiss (Esc)</source>
        <translation>Ausblenden (Esc)</translation>
    </message>
    <message>
        <source>Shows all messages</source>
        <translation>Zeigt alle Meldungen</translation>
    </message>
    <message numerus="yes">
        <source>%n more…</source>
        <translation>
            <numerusform>%n weitere…</numerusform>
            <numerusform>%n weitere…</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>OfferBar</name>
    <message>
        <source>Questions</source>
        <translation>Fragen</translation>
    </message>
</context>
<context>
    <name>PhotoMask</name>
    <message>
        <source>The picture is being made…</source>
        <translation>Das Bild wird erstellt…</translation>
    </message>
    <message>
        <source>%1: what %2 cannot make</source>
        <translation>%1: was %2 nicht darstellen kann</translation>
    </message>
    <message>
        <source>Marked is what is outside %1. Grey can be made.</source>
        <translation>Markiert ist, was außerhalb von %1 liegt. Graues ist darstellbar.</translation>
    </message>
    <message>
        <source>%1 % of the pixels are outside, %2 % on the edge.</source>
        <translation>%1 % der Pixel liegen außerhalb, %2 % am Rand.</translation>
    </message>
</context>
<context>
    <name>PictureDialog</name>
    <message>
        <source>Size of the picture</source>
        <translation>Größe des Bildes</translation>
    </message>
    <message>
        <source>&amp;Width</source>
        <translation>&amp;Breite</translation>
    </message>
    <message>
        <source>&amp;Height</source>
        <translation>&amp;Höhe</translation>
    </message>
    <message>
        <source>&amp;Keep the proportions of the view</source>
        <translation>&amp;Proportionen der Ansicht behalten</translation>
    </message>
    <message>
        <source>&amp;Transparent ground</source>
        <translation>&amp;Transparenter Grund</translation>
    </message>
    <message>
        <source>Not in JPEG files</source>
        <translation>Nicht in JPEG-Dateien</translation>
    </message>
</context>
<context>
    <name>PointLayer</name>
    <message>
        <source>reading…</source>
        <translation>wird gelesen…</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>Inside</source>
        <translation>Innen</translation>
    </message>
    <message>
        <source>Edge</source>
        <translation>Rand</translation>
    </message>
    <message>
        <source>Outside</source>
        <translation>Außen</translation>
    </message>
    <message>
        <source>Every pixel is counted: %1</source>
        <translation>Jedes Pixel wird gezählt: %1</translation>
    </message>
    <message>
        <source>CIEDE2000: mean %1, 95 % up to %2, largest %3</source>
        <translation>CIEDE2000: Mittel %1, 95 % bis %2, größter Wert %3</translation>
    </message>
</context>
<context>
    <name>PointPanel</name>
    <message>
        <source>Files of points</source>
        <translation>Dateien mit Punkten</translation>
    </message>
    <message>
        <source>Remove points</source>
        <translation>Punkte entfernen</translation>
    </message>
    <message>
        <source>Colours no farther from the active gamut&apos;s surface than this are its edge</source>
        <translation>Farben, die höchstens so weit von der Oberfläche des aktiven Gamuts entfernt sind, gelten als sein Rand</translation>
    </message>
    <message>
        <source>&amp;Add points…</source>
        <translation>P&amp;unkte hinzufügen…</translation>
    </message>
    <message>
        <source>E&amp;dge</source>
        <translation>Rand&amp;zone</translation>
    </message>
    <message>
        <source>Show what is lost of the photo</source>
        <translation>Zeigen, was vom Foto verloren geht</translation>
    </message>
</context>
<context>
    <name>Problem</name>
    <message>
        <source>there is no profile</source>
        <translation>es gibt kein Profil</translation>
    </message>
    <message>
        <source>the profile has no usable transform from device to Lab</source>
        <translation>das Profil hat keine brauchbare Umrechnung vom Gerät nach Lab</translation>
    </message>
    <message>
        <source>a device link has no gamut of its own</source>
        <translation>ein Device-Link-Profil hat keinen eigenen Gamut</translation>
    </message>
    <message>
        <source>an abstract profile has no device and so no gamut</source>
        <translation>ein abstraktes Profil hat kein Gerät und daher keinen Gamut</translation>
    </message>
    <message>
        <source>a list of named colours has no gamut surface</source>
        <translation>eine Liste benannter Farben hat keine Gamut-Oberfläche</translation>
    </message>
    <message>
        <source>profiles of class &apos;%1&apos; have no gamut</source>
        <translation>Profile der Klasse „%1“ haben keinen Gamut</translation>
    </message>
    <message>
        <source>the colours of the profile span no volume</source>
        <translation>die Farben des Profils spannen kein Volumen auf</translation>
    </message>
    <message>
        <source>the device&apos;s colours overlap too often for a surface to be found</source>
        <translation>die Farben des Geräts überlappen sich zu oft, um eine Oberfläche zu finden</translation>
    </message>
    <message>
        <source>the surface has no faces</source>
        <translation>die Oberfläche hat keine Flächen</translation>
    </message>
    <message>
        <source>the surface is not closed</source>
        <translation>die Oberfläche ist nicht geschlossen</translation>
    </message>
    <message>
        <source>the surface is inside out</source>
        <translation>das Innere der Oberfläche ist nach außen gekehrt</translation>
    </message>
    <message>
        <source>not enough memory</source>
        <translation>der Speicher reicht nicht aus</translation>
    </message>
    <message>
        <source>the saved gamut is damaged</source>
        <translation>der gespeicherte Gamut ist beschädigt</translation>
    </message>
    <message>
        <source>sections are saved as .svg or .pdf</source>
        <translation>Schnitte werden als .svg oder .pdf gespeichert</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>Zugriff verweigert</translation>
    </message>
    <message>
        <source>No such file or directory</source>
        <translation>Datei oder Verzeichnis nicht gefunden</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>kein Platz mehr auf dem Datenträger</translation>
    </message>
    <message>
        <source>Too many open files</source>
        <translation>zu viele geöffnete Dateien</translation>
    </message>
    <message>
        <source>Read-only file system</source>
        <translation>das Dateisystem ist schreibgeschützt</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>nicht lesbar: %1</translation>
    </message>
    <message>
        <source>&apos;%1&apos;: %2</source>
        <translation>„%1“: %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>the profile has no usable transform from device to Lab: %1</source>
        <translation>das Profil hat keine brauchbare Umrechnung vom Gerät nach Lab: %1</translation>
    </message>
    <message>
        <source>Is a directory</source>
        <translation>ist ein Verzeichnis</translation>
    </message>
    <message>
        <source>Broken pipe</source>
        <translation>Datenübergabe unterbrochen (broken pipe)</translation>
    </message>
    <message>
        <source>Bad file descriptor</source>
        <translation>ungültiger Dateideskriptor</translation>
    </message>
    <message>
        <source>%1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>nicht lesbar</translation>
    </message>
    <message>
        <source>cannot be written</source>
        <translation>nicht beschreibbar</translation>
    </message>
    <message>
        <source>the %1 picture is damaged</source>
        <translation>das %1-Bild ist beschädigt</translation>
    </message>
    <message>
        <source>unsupported picture format</source>
        <translation>nicht unterstütztes Bildformat</translation>
    </message>
    <message>
        <source>the picture cannot be decoded</source>
        <translation>das Bild lässt sich nicht dekodieren</translation>
    </message>
    <message>
        <source>the picture is too large for the memory</source>
        <translation>das Bild ist zu groß für den Arbeitsspeicher</translation>
    </message>
    <message>
        <source>not a readable PNG picture</source>
        <translation>kein lesbares PNG-Bild</translation>
    </message>
    <message>
        <source>the embedded profile cannot be read</source>
        <translation>das eingebettete Profil ist nicht lesbar</translation>
    </message>
    <message>
        <source>the embedded profile has no usable transform to Lab</source>
        <translation>das eingebettete Profil enthält keine brauchbare Transformation nach Lab</translation>
    </message>
    <message>
        <source>every pixel is transparent</source>
        <translation>alle Pixel sind transparent</translation>
    </message>
    <message>
        <source>no embedded profile; the colours are taken as sRGB</source>
        <translation>kein eingebettetes Profil; die Farben werden als sRGB interpretiert</translation>
    </message>
    <message>
        <source>the file contains no positions</source>
        <translation>die Datei enthält keine Farborte</translation>
    </message>
    <message>
        <source>the CGATS file cannot be read</source>
        <translation>die CGATS-Datei ist nicht lesbar</translation>
    </message>
    <message>
        <source>the XML is not CxF</source>
        <translation>das XML ist kein CxF</translation>
    </message>
    <message>
        <source>line %1: the XML is invalid</source>
        <translation>Zeile %1: das XML ist ungültig</translation>
    </message>
    <message>
        <source>not a session of this program</source>
        <translation>keine Sitzung dieses Programms</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be true or false</source>
        <translation>„%1“ muss true oder false sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a number from %2 to %3</source>
        <translation>„%1“ muss eine Zahl von %2 bis %3 sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a name</source>
        <translation>„%1“ muss ein Name sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a colour such as &quot;#40c0ff&quot;</source>
        <translation>„%1“ muss eine Farbe wie &quot;#40c0ff&quot; sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be three numbers</source>
        <translation>„%1“ muss aus drei Zahlen bestehen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be one of %2</source>
        <translation>„%1“ muss eines von %2 sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a list of files</source>
        <translation>„%1“ muss eine Liste von Dateien sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a list</source>
        <translation>„%1“ muss eine Liste sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a group of values</source>
        <translation>„%1“ muss eine Gruppe von Werten sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; and &quot;%2&quot; must be different points</source>
        <translation>„%1“ und „%2“ müssen verschiedene Punkte sein</translation>
    </message>
    <message>
        <source>there is no picture to save: nothing is shown, or the memory does not suffice</source>
        <translation>es gibt kein Bild zu speichern: es wird nichts dargestellt, oder der Arbeitsspeicher reicht nicht aus</translation>
    </message>
    <message>
        <source>the clipboard holds no camera; an example: %1</source>
        <translation>die Zwischenablage enthält keine Kamera; ein Beispiel: %1</translation>
    </message>
    <message>
        <source>there is no display to open a window on; &apos;kvgamut render&apos; needs none</source>
        <translation>kein Display für ein Fenster vorhanden; „kvgamut render“ braucht keines</translation>
    </message>
    <message>
        <source>no window can be opened: the display (%1) does not answer; name one that runs, or use &apos;kvgamut render&apos;, which needs none</source>
        <translation>es lässt sich kein Fenster öffnen: das Display (%1) antwortet nicht; nennen Sie eines, das läuft, oder verwenden Sie „kvgamut render“, das keines braucht</translation>
    </message>
    <message>
        <source>no window can be opened: Qt&apos;s plug-in &apos;%1&apos; for the display is missing or cannot be loaded (Debian, Ubuntu: apt-get install %2)</source>
        <translation>es lässt sich kein Fenster öffnen: das Qt-Plug-in „%1“ für das Display fehlt oder lässt sich nicht laden (Debian, Ubuntu: apt-get install %2)</translation>
    </message>
    <message>
        <source>there is no display, and Xvfb gave none</source>
        <translation>es gibt kein Display, und Xvfb hat keines bereitgestellt</translation>
    </message>
    <message>
        <source>there is no display, and Xvfb, which provides a virtual one, is not installed (Debian, Ubuntu: apt-get install xvfb)</source>
        <translation>es gibt kein Display, und Xvfb, das ein virtuelles bereitstellt, ist nicht installiert (Debian, Ubuntu: apt-get install xvfb)</translation>
    </message>
    <message>
        <source>there is no display, and Xvfb cannot be started</source>
        <translation>es gibt kein Display, und Xvfb lässt sich nicht starten</translation>
    </message>
    <message>
        <source>this display has no OpenGL (Debian, Ubuntu: apt-get install libgl1-mesa-dri)</source>
        <translation>dieses Display bietet kein OpenGL (Debian, Ubuntu: apt-get install libgl1-mesa-dri)</translation>
    </message>
    <message>
        <source>nothing was drawn: the display shows no window, or the memory does not suffice for a picture of %1x%2 pixels</source>
        <translation>es wurde nichts gezeichnet: das Display zeigt kein Fenster, oder der Arbeitsspeicher reicht für ein Bild von %1x%2 Pixeln nicht aus</translation>
    </message>
    <message>
        <source>the picture is %1 pixels large, the reference %2</source>
        <translation>das Bild ist %1 Pixel groß, die Referenz %2</translation>
    </message>
    <message>
        <source>the picture differs from the reference by %1 percent; the threshold is %2</source>
        <translation>das Bild weicht um %1 Prozent von der Referenz ab; die Schwelle ist %2</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>the file name is empty</source>
        <translation>der Dateiname ist leer</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>Datei nicht gefunden</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>keine reguläre Datei</translation>
    </message>
    <message>
        <source>the file is too large to be an ICC profile</source>
        <translation>die Datei ist zu groß für ein ICC-Profil</translation>
    </message>
    <message>
        <source>the profile is empty</source>
        <translation>das Profil ist leer</translation>
    </message>
    <message>
        <source>too large to be an ICC profile</source>
        <translation>zu groß für ein ICC-Profil</translation>
    </message>
    <message>
        <source>not an ICC profile</source>
        <translation>kein ICC-Profil</translation>
    </message>
    <message>
        <source>not a usable ICC profile: %1</source>
        <translation>kein brauchbares ICC-Profil: %1</translation>
    </message>
    <message>
        <source>the profile&apos;s tag table is damaged</source>
        <translation>die Tag-Tabelle des Profils ist beschädigt</translation>
    </message>
    <message>
        <source>the tag &apos;%1&apos; declares more data than it holds or than a device needs</source>
        <translation>der Tag „%1“ gibt mehr Daten an, als er enthält oder als ein Gerät braucht</translation>
    </message>
    <message>
        <source>the request names no profile and no saved gamut</source>
        <translation>die Anforderung nennt weder ein Profil noch einen gespeicherten Gamut</translation>
    </message>
    <message>
        <source>%1 is not a rendering intent</source>
        <translation>%1 ist kein Rendering Intent</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a setting</source>
        <translation>„%1“ ist keine Einstellung</translation>
    </message>
    <message>
        <source>%1 is not a device colour space and has no gamut</source>
        <translation>%1 ist kein Gerätefarbraum und hat keinen Gamut</translation>
    </message>
    <message>
        <source>a gamut needs at least three channels; grey has one</source>
        <translation>ein Gamut braucht mindestens drei Kanäle; Grau hat einen</translation>
    </message>
    <message>
        <source>a gamut needs at least three channels; this profile has two</source>
        <translation>ein Gamut braucht mindestens drei Kanäle; dieses Profil hat zwei</translation>
    </message>
    <message>
        <source>the device colour space &apos;%1&apos; is unknown</source>
        <translation>der Gerätefarbraum „%1“ ist unbekannt</translation>
    </message>
    <message>
        <source>the profile gives Lab values that are NaN or out of range</source>
        <translation>das Profil liefert Lab-Werte, die NaN oder außerhalb des Wertebereichs sind</translation>
    </message>
    <message>
        <source>the gamut&apos;s volume is less than 1 cubic dE</source>
        <translation>das Volumen des Gamuts ist kleiner als 1 ΔE³</translation>
    </message>
    <message>
        <source>the gamut is concave, which cannot be resolved with so many channels</source>
        <translation>der Gamut ist konkav, was sich bei so vielen Kanälen nicht auflösen lässt</translation>
    </message>
    <message>
        <source>the surface found for this device self-intersects</source>
        <translation>die für dieses Gerät gefundene Oberfläche durchdringt sich selbst</translation>
    </message>
    <message>
        <source>the surface has vertices that are NaN or out of range</source>
        <translation>die Oberfläche hat Eckpunkte, die NaN oder außerhalb des Wertebereichs sind</translation>
    </message>
    <message>
        <source>the surface&apos;s faces refer to vertices that do not exist</source>
        <translation>die Flächen der Oberfläche verweisen auf Eckpunkte, die es nicht gibt</translation>
    </message>
    <message>
        <source>the surface is not manifold</source>
        <translation>die Oberfläche ist keine Mannigfaltigkeit</translation>
    </message>
    <message>
        <source>not a saved gamut</source>
        <translation>kein gespeicherter Gamut</translation>
    </message>
    <message>
        <source>the saved gamut has the unknown version &apos;%1&apos;</source>
        <translation>der gespeicherte Gamut hat die unbekannte Version „%1“</translation>
    </message>
    <message>
        <source>the saved gamut contains invalid values</source>
        <translation>der gespeicherte Gamut enthält ungültige Werte</translation>
    </message>
    <message>
        <source>the saved gamut&apos;s faces are too close together to be checked for self-intersection</source>
        <translation>die Flächen des gespeicherten Gamuts liegen zu dicht beieinander, um auf Selbstdurchdringung geprüft zu werden</translation>
    </message>
    <message>
        <source>the saved gamut&apos;s surface self-intersects</source>
        <translation>die Oberfläche des gespeicherten Gamuts durchdringt sich selbst</translation>
    </message>
    <message>
        <source>line %1: %2 reads another file, which is not allowed here; insert the content of that file instead</source>
        <translation>Zeile %1: %2 liest eine weitere Datei, was hier nicht erlaubt ist; fügen Sie stattdessen deren Inhalt ein</translation>
    </message>
    <message>
        <source>line %1: the data have no column names (BEGIN_DATA_FORMAT is missing)</source>
        <translation>Zeile %1: die Daten haben keine Spaltennamen (BEGIN_DATA_FORMAT fehlt)</translation>
    </message>
    <message>
        <source>Line %1: %2 is missing</source>
        <translation>Zeile %1: %2 fehlt</translation>
    </message>
    <message>
        <source>Line %1: %2 was %3, found %4</source>
        <translation>Zeile %1: %2 war %3, gefunden wurden %4</translation>
    </message>
    <message>
        <source>the display has no OpenGL</source>
        <translation>das Display bietet kein OpenGL</translation>
    </message>
    <message>
        <source>the display has only OpenGL ES %1; desktop OpenGL 2.1 is needed</source>
        <translation>das Display bietet nur OpenGL ES %1; benötigt wird Desktop-OpenGL 2.1</translation>
    </message>
    <message>
        <source>the display has only OpenGL %1; version 2.1 is needed</source>
        <translation>das Display bietet nur OpenGL %1; benötigt wird Version 2.1</translation>
    </message>
    <message>
        <source>the display has only the core profile of OpenGL %1; the compatibility profile is needed</source>
        <translation>das Display bietet nur das Core-Profil von OpenGL %1; benötigt wird das Kompatibilitätsprofil</translation>
    </message>
    <message>
        <source>the display&apos;s OpenGL %1 has no shaders of version 1.20</source>
        <translation>das OpenGL %1 des Displays bietet keine Shader der Version 1.20</translation>
    </message>
    <message>
        <source>the display&apos;s OpenGL %1 has no framebuffers that can be copied</source>
        <translation>das OpenGL %1 des Displays bietet keine kopierbaren Framebuffer</translation>
    </message>
    <message>
        <source>OpenGL cannot be used in the window</source>
        <translation>OpenGL lässt sich im Fenster nicht verwenden</translation>
    </message>
    <message>
        <source>the colour engine failed unexpectedly</source>
        <translation>die Farbberechnung ist unerwartet fehlgeschlagen</translation>
    </message>
    <message>
        <source>larger than %1 MiB, the limit for files of this kind</source>
        <translation>größer als %1 MiB, die Grenze für Dateien dieser Art</translation>
    </message>
    <message>
        <source>neither a regular file nor a pipe</source>
        <translation>weder eine gewöhnliche Datei noch eine Pipe</translation>
    </message>
    <message>
        <source>not a text file</source>
        <translation>keine Textdatei</translation>
    </message>
    <message>
        <source>the name is not UTF-8</source>
        <translation>der Name ist kein UTF-8</translation>
    </message>
    <message>
        <source>the output would overwrite this input; choose another name</source>
        <translation>die Ausgabe würde diese Eingabe überschreiben; wählen Sie einen anderen Namen</translation>
    </message>
    <message>
        <source>the picture has more than %1 million pixels, the limit</source>
        <translation>das Bild hat mehr als %1 Millionen Pixel, die Grenze</translation>
    </message>
    <message>
        <source>more than %1 points, the limit of a file</source>
        <translation>mehr als %1 Punkte, die Grenze einer Datei</translation>
    </message>
    <message>
        <source>line %1: more than %2 columns, the limit of a table</source>
        <translation>Zeile %1: mehr als %2 Spalten, die Grenze einer Tabelle</translation>
    </message>
    <message>
        <source>line %1: longer than %2 characters, the limit</source>
        <translation>Zeile %1: länger als %2 Zeichen, die Grenze</translation>
    </message>
    <message>
        <source>line %1: the XML declares a document type, which CxF does not have</source>
        <translation>Zeile %1: das XML vereinbart einen Dokumenttyp, den CxF nicht hat</translation>
    </message>
    <message>
        <source>line %1: more than %2 nested elements, the limit of CxF</source>
        <translation>Zeile %1: mehr als %2 verschachtelte Elemente, die Grenze von CxF</translation>
    </message>
    <message>
        <source>line %1: more than %2 attributes, the limit of an element of CxF</source>
        <translation>Zeile %1: mehr als %2 Attribute, die Grenze eines Elements von CxF</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has more than %2 entries, the limit of a session</source>
        <translation>„%1“ hat mehr als %2 Einträge, die Grenze einer Sitzung</translation>
    </message>
    <message>
        <source>the file is too large to be a shader</source>
        <translation>die Datei ist für einen Shader zu groß</translation>
    </message>
    <message>
        <source>the shader cannot be built: %1</source>
        <translation>der Shader lässt sich nicht übersetzen: %1</translation>
    </message>
    <message>
        <source>no colours at L* %1; the gamut reaches from L* %2 to %3</source>
        <translation>keine Farben bei L* %1; der Gamut reicht von L* %2 bis %3</translation>
    </message>
    <message>
        <source>no colours at the hue %1</source>
        <translation>keine Farben beim Farbton %1</translation>
    </message>
    <message>
        <source>pages to send are saved as .html</source>
        <translation>Seiten zum Versenden werden als .html gespeichert</translation>
    </message>
    <message>
        <source>there is no gamut to save; open a profile first</source>
        <translation>es gibt keinen Gamut zu speichern; öffnen Sie zuerst ein Profil</translation>
    </message>
    <message>
        <source>the 11-grid is defined for three channels; this profile has %1</source>
        <translation>das 11er-Gitter ist für drei Kanäle definiert; dieses Profil hat %1</translation>
    </message>
    <message>
        <source>line %1: the value of %2 is missing</source>
        <translation>Zeile %1: der Wert für %2 fehlt</translation>
    </message>
    <message>
        <source>line %1: %2 is &apos;%3&apos;, expected a number</source>
        <translation>Zeile %1: %2 ist „%3“, erwartet wird eine Zahl</translation>
    </message>
    <message>
        <source>line %1: %2 is %3, expected %4 to %5</source>
        <translation>Zeile %1: %2 ist %3, erwartet wird %4 bis %5</translation>
    </message>
    <message>
        <source>line %1: &apos;%2&apos;, expected a colour such as 40c0ff</source>
        <translation>Zeile %1: „%2“, erwartet wird eine Farbe wie 40c0ff</translation>
    </message>
    <message>
        <source>line %1: &apos;%2&apos; is not a colour</source>
        <translation>Zeile %1: „%2“ ist keine Farbe</translation>
    </message>
    <message>
        <source>line %1: %2 values for %3 columns</source>
        <translation>Zeile %1: %2 Werte für %3 Spalten</translation>
    </message>
    <message>
        <source>line %1: expected L*, a*, b* and optionally a name and a colour; for anything else the first line must name the columns</source>
        <translation>Zeile %1: erwartet werden L*, a*, b* und optional ein Name und eine Farbe; für alles andere muss die erste Zeile die Spalten benennen</translation>
    </message>
    <message>
        <source>line %1: L* %2, a* %3, b* %4 is not a possible colour</source>
        <translation>Zeile %1: L* %2, a* %3, b* %4 ist keine mögliche Farbe</translation>
    </message>
    <message>
        <source>%1 of %2 colours are left out (lines: %3)</source>
        <translation>ausgelassen: %1 von %2 Farben (Zeilen: %3)</translation>
    </message>
    <message>
        <source>line %1: %2 is not a value of L*, a*, b*; name the columns in the first line, for example L,a,b or R,G,B</source>
        <translation>Zeile %1: %2 ist kein Wert von L*, a*, b*; benennen Sie die Spalten in der ersten Zeile, zum Beispiel L,a,b oder R,G,B</translation>
    </message>
    <message>
        <source>line %1: unknown columns (%2); known are L, a, b; L, C, h; X, Y, Z; R, G, B; hex; C, M, Y, K, and reflectances such as 400 nm</source>
        <translation>Zeile %1: unbekannte Spalten (%2); bekannt sind L, a, b; L, C, h; X, Y, Z; R, G, B; hex; C, M, Y, K und Reflexionsgrade wie 400 nm</translation>
    </message>
    <message>
        <source>unknown columns are ignored: %1</source>
        <translation>unbekannte Spalten werden ignoriert: %1</translation>
    </message>
    <message>
        <source>no heading; the numbers are taken as L*, a*, b* for D50</source>
        <translation>ohne Kopfzeile; die Zahlen werden als L*, a*, b* für D50 gelesen</translation>
    </message>
    <message>
        <source>neither UTF-8 nor UTF-16; the text is taken as Latin-1</source>
        <translation>weder UTF-8 noch UTF-16; der Text wird als Latin-1 gelesen</translation>
    </message>
    <message>
        <source>the values for %1 are adapted to D50 (Bradford)</source>
        <translation>die Werte für %1 werden an D50 angepasst (Bradford)</translation>
    </message>
    <message>
        <source>the values are for the 10 degree observer, gamuts for the 2 degree observer; compare them with care</source>
        <translation>die Werte gelten für den 10°-Beobachter, Gamuts für den 2°-Beobachter; vergleichen Sie sie mit Vorsicht</translation>
    </message>
    <message>
        <source>the largest XYZ value is %1, so it is not clear whether white has Y 1 or Y 100; declare it: --points-white-y, or a line &apos;# white-y: 1&apos; in the file</source>
        <translation>der größte XYZ-Wert ist %1; daher ist unklar, ob Weiß Y 1 oder Y 100 hat; geben Sie es an: --points-white-y, oder eine Zeile „# white-y: 1“ in der Datei</translation>
    </message>
    <message>
        <source>the %1 values are taken as numbers from 0 to %2</source>
        <translation>die %1-Werte werden als Zahlen von 0 bis %2 gelesen</translation>
    </message>
    <message>
        <source>%1 values without their colour space; declare it: --points-space with a built-in RGB space or an ICC profile, or for RGB a line &apos;# space: sRGB&apos; in the file</source>
        <translation>%1-Werte ohne Farbraum; geben Sie ihn an: --points-space mit einem eingebauten RGB-Farbraum oder einem ICC-Profil, oder für RGB eine Zeile „# space: sRGB“ in der Datei</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a profile for %2 values</source>
        <translation>„%1“ ist kein Profil für %2-Werte</translation>
    </message>
    <message>
        <source>the colours cannot be converted with the profile &apos;%1&apos;</source>
        <translation>die Farben können mit dem Profil „%1“ nicht umgerechnet werden</translation>
    </message>
    <message>
        <source>line %1: &apos;%2&apos; is not known; known are %3</source>
        <translation>Zeile %1: „%2“ ist unbekannt; bekannt sind %3</translation>
    </message>
    <message>
        <source>%1 reflectances from %2 to %3 nm are not enough; needed are equal steps of at most 20 nm from 400 to 700 nm</source>
        <translation>%1 Reflexionsgrade von %2 bis %3 nm genügen nicht; nötig sind gleiche Schritte von höchstens 20 nm von 400 bis 700 nm</translation>
    </message>
    <message>
        <source>the reflectances from %1 to %2 nm, taken as 0 to %3, are computed for the CIE 1931 2 degree observer and D50</source>
        <translation>die Reflexionsgrade von %1 bis %2 nm, gelesen als 0 bis %3, werden für den 2°-Beobachter CIE 1931 und D50 berechnet</translation>
    </message>
    <message>
        <source>the CGATS file has no known columns of colours (%1); known are Lab, LCh, XYZ, RGB and CMYK, and reflectances such as SPECTRAL_NM400</source>
        <translation>die CGATS-Datei hat keine bekannten Farbspalten (%1); bekannt sind Lab, LCh, XYZ, RGB und CMYK sowie Reflexionsgrade wie SPECTRAL_NM400</translation>
    </message>
    <message>
        <source>the picture is progressive, interlaced or of a format that is decoded as a whole, and has more than %1 million pixels, the limit; save it as TIFF</source>
        <translation>das Bild ist progressiv, interlaced oder in einem Format, das als Ganzes entschlüsselt wird, und hat mehr als %1 Millionen Pixel, die Grenze; speichern Sie es als TIFF</translation>
    </message>
    <message>
        <source>pictures cannot be read; install libvips (Debian package libvips42)</source>
        <translation>Bilder können nicht gelesen werden; installieren Sie libvips (Debian-Paket libvips42)</translation>
    </message>
    <message>
        <source>the number or the type of the values of a pixel is not supported; grey, RGB, CMYK and Lab with 8 or 16 bits or floating point are</source>
        <translation>Anzahl oder Typ der Werte eines Pixels werden nicht unterstützt; Grau, RGB, CMYK und Lab mit 8 oder 16 Bit oder Gleitkomma werden es</translation>
    </message>
    <message>
        <source>the profile is for another kind of colour than the pixels</source>
        <translation>das Profil ist für eine andere Art von Farben als die der Pixel</translation>
    </message>
    <message>
        <source>the first of %1 pages is read</source>
        <translation>die erste von %1 Seiten wird gelesen</translation>
    </message>
    <message>
        <source>%1 pixels have values below 0 or above 1, which were clamped</source>
        <translation>%1 Pixel haben Werte unter 0 oder über 1, die begrenzt wurden</translation>
    </message>
    <message>
        <source>%1 of %2 colours are left out (numbers: %3)</source>
        <translation>ausgelassen: %1 von %2 Farben (Nummern: %3)</translation>
    </message>
    <message>
        <source>number %1: L* %2, a* %3, b* %4 is not a possible colour</source>
        <translation>Nummer %1: L* %2, a* %3, b* %4 ist keine mögliche Farbe</translation>
    </message>
    <message>
        <source>the %1 palette is damaged</source>
        <translation>die %1-Palette ist beschädigt</translation>
    </message>
    <message>
        <source>number %1: the colour model &apos;%2&apos; is not known; known are RGB, CMYK and Lab</source>
        <translation>Nummer %1: das Farbmodell „%2“ ist unbekannt; bekannt sind RGB, CMYK und Lab</translation>
    </message>
    <message>
        <source>number %1: %2, expected 0 to 1</source>
        <translation>Nummer %1: %2, erwartet wird 0 bis 1</translation>
    </message>
    <message>
        <source>not a file of colours, but %1; known are CSV, CGATS, CxF, ASE, ACB and GPL</source>
        <translation>keine Datei mit Farben, sondern %1; bekannt sind CSV, CGATS, CxF, ASE, ACB und GPL</translation>
    </message>
    <message>
        <source>%1 of %2 objects have no CIELAB, XYZ or reflectance values for D50</source>
        <translation>ohne CIELAB-, XYZ- oder Reflexionswerte für D50: %1 von %2 Objekten</translation>
    </message>
    <message>
        <source>unknown setting &apos;%1&apos; behind the @ (known: %2)</source>
        <translation>unbekannte Einstellung „%1“ hinter dem @ (bekannt: %2)</translation>
    </message>
    <message>
        <source>a saved gamut keeps its intent, which is %1</source>
        <translation>ein gespeicherter Gamut behält seinen Rendering Intent, nämlich %1</translation>
    </message>
    <message>
        <source>no part of %1 is outside %2</source>
        <translation>kein Teil von %1 liegt außerhalb von %2</translation>
    </message>
    <message>
        <source>%1 and %2 have nothing in common</source>
        <translation>%1 und %2 haben nichts gemeinsam</translation>
    </message>
    <message>
        <source>the surfaces of the gamuts cross too often for a body to be made</source>
        <translation>die Oberflächen der Gamuts schneiden sich zu oft, um einen Körper zu bilden</translation>
    </message>
    <message>
        <source>the chart has too few patches: %1 with different device values, or a channel that varies by less than 50 %</source>
        <translation>die Testtafel hat zu wenige Felder: %1 mit verschiedenen Gerätewerten, oder ein Kanal ändert sich um weniger als 50 %</translation>
    </message>
    <message>
        <source>all patches of the chart are black</source>
        <translation>alle Felder der Testtafel sind schwarz</translation>
    </message>
    <message>
        <source>more than %1 different patches, the limit of a chart</source>
        <translation>mehr als %1 verschiedene Felder, die Grenze einer Testtafel</translation>
    </message>
    <message>
        <source>neither an ICC profile, nor a PNG, JPEG or TIFF picture, nor a saved gamut, nor a chart or a list of colours</source>
        <translation>weder ein ICC-Profil noch ein PNG-, JPEG- oder TIFF-Bild noch ein gespeicherter Gamut noch eine Testtafel oder eine Liste von Farben</translation>
    </message>
    <message>
        <source>the hull of the %1 colours encloses less than 1 cubic dE; a gamut needs colours of different lightness, hue and chroma</source>
        <translation>die Hülle der %1 Farben umschließt weniger als 1 dE hoch drei; ein Gamut braucht Farben von verschiedener Helligkeit, Buntheit und verschiedenem Farbton</translation>
    </message>
    <message>
        <source>the surface has no table of %1</source>
        <translation>die Oberfläche hat keine Tabelle mit %1</translation>
    </message>
    <message>
        <source>the surface is in &apos;%1&apos;; only Lab and XYZ are supported</source>
        <translation>die Oberfläche ist in „%1“ angegeben; nur Lab und XYZ werden unterstützt</translation>
    </message>
    <message>
        <source>line %1: there is no vertex %2</source>
        <translation>Zeile %1: es gibt keine Ecke %2</translation>
    </message>
    <message>
        <source>line %1: vertex %2 occurs twice</source>
        <translation>Zeile %1: die Ecke %2 kommt zweimal vor</translation>
    </message>
    <message>
        <source>more than %1 triangles, the limit of a surface</source>
        <translation>mehr als %1 Dreiecke, die Grenze für eine Oberfläche</translation>
    </message>
    <message>
        <source>the profile has no gamut boundary (a tag gbd0 to gbd3)</source>
        <translation>das Profil enthält keine Gamutgrenze (ein Tag gbd0 bis gbd3)</translation>
    </message>
    <message>
        <source>the tag &apos;%1&apos; is damaged</source>
        <translation>der Tag „%1“ ist beschädigt</translation>
    </message>
    <message>
        <source>this gamut has no rendering intents; leave out &apos;@%1&apos;</source>
        <translation>dieser Gamut hat keine Rendering Intents; lassen Sie „@%1“ weg</translation>
    </message>
    <message>
        <source>the surface self-intersects</source>
        <translation>die Oberfläche durchdringt sich selbst</translation>
    </message>
    <message>
        <source>the surface&apos;s faces are too close together to be checked for self-intersection</source>
        <translation>die Flächen der Oberfläche liegen zu dicht beieinander, um zu prüfen, ob sie sich durchdringen</translation>
    </message>
    <message>
        <source>the session was saved by a newer version of this program (format %1; this version reads up to %2)</source>
        <translation>die Sitzung wurde von einer neueren Fassung dieses Programms gespeichert (Format %1; diese Fassung liest bis %2)</translation>
    </message>
    <message>
        <source>gamuts are saved as .ply, .obj, .stl, .gltf, .x3d, .json, .icc or .kvgamut</source>
        <translation>Gamuts werden als .ply, .obj, .stl, .gltf, .x3d, .json, .icc oder .kvgamut gespeichert</translation>
    </message>
    <message>
        <source>the %1 picture has no embedded profile; the colours of its pixels, taken as sRGB, are a gamut with @pixels after the name</source>
        <translation>das %1-Bild enthält kein Profil; mit @pixels hinter dem Namen ergeben die Farben seiner Pixel, als sRGB gelesen, einen Gamut</translation>
    </message>
    <message>
        <source>CMYK and floating-point pictures need a profile: embed it, or name it with --photo-profile, after @pixels with --points-space</source>
        <translation>CMYK- und Gleitkommabilder brauchen ein Profil: betten Sie es ein, oder nennen Sie es mit --photo-profile, hinter @pixels mit --points-space</translation>
    </message>
    <message>
        <source>no such file; did you mean %1?</source>
        <translation>Datei nicht gefunden; meinten Sie %1?</translation>
    </message>
</context>
<context>
    <name>SectionBar</name>
    <message>
        <source>Fixed scale</source>
        <translation>Fester Maßstab</translation>
    </message>
    <message>
        <source>Kind of section</source>
        <translation>Art des Schnitts</translation>
    </message>
    <message>
        <source>Lightness</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>Bunttonwinkel</translation>
    </message>
    <message>
        <source>Rings</source>
        <translation>Ringe</translation>
    </message>
    <message>
        <source>Hue angle</source>
        <translation>Bunttonwinkel</translation>
    </message>
    <message>
        <source>Hue angle: 0° is +a*, 90° is +b*</source>
        <translation>Bunttonwinkel: 0° ist +a*, 90° ist +b*</translation>
    </message>
    <message>
        <source>All sections have the same scale</source>
        <translation>Alle Schnitte haben denselben Maßstab</translation>
    </message>
</context>
<context>
    <name>SessionDocument</name>
    <message>
        <source>kvgamut</source>
        <translation>kvgamut</translation>
    </message>
    <message>
        <source>%1[*] – kvgamut</source>
        <translation>%1[*] – kvgamut</translation>
    </message>
</context>
<context>
    <name>ShownWords</name>
    <message>
        <source>Perceptual</source>
        <translation>Perzeptiv</translation>
    </message>
    <message>
        <source>Relative colorimetric</source>
        <translation>Relativ farbmetrisch</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Sättigung</translation>
    </message>
    <message>
        <source>Absolute colorimetric</source>
        <translation>Absolut farbmetrisch</translation>
    </message>
    <message>
        <source>, black point compensated</source>
        <translation>, mit Tiefenkompensierung</translation>
    </message>
    <message>
        <source>, not adapted</source>
        <translation>, nicht angepasst</translation>
    </message>
    <message>
        <source>, not adapted, relative to D65</source>
        <translation>, nicht angepasst, bezogen auf D65</translation>
    </message>
    <message>
        <source>As in the profile</source>
        <translation>Wie im Profil</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>None, relative to D65</source>
        <translation>Keine, bezogen auf D65</translation>
    </message>
    <message>
        <source>Table: %1; the profile has none for this intent</source>
        <translation>Tabelle: %1; das Profil hat keine für diesen Rendering Intent</translation>
    </message>
    <message>
        <source>Table: %1</source>
        <translation>Tabelle: %1</translation>
    </message>
    <message>
        <source>Media white: %1</source>
        <translation>Medienweiß: %1</translation>
    </message>
    <message>
        <source>Adapted to D50 by the profile</source>
        <translation>Vom Profil an D50 angepasst</translation>
    </message>
    <message>
        <source>The profile&apos;s adaptation to D50 is undone</source>
        <translation>Die Anpassung des Profils an D50 ist zurückgenommen</translation>
    </message>
    <message>
        <source>The profile contains no adaptation to undo</source>
        <translation>Das Profil enthält keine Anpassung, die zurückzunehmen wäre</translation>
    </message>
    <message>
        <source>Mapped to L* 0: %1</source>
        <translation>Auf L* 0 abgebildet: %1</translation>
    </message>
    <message>
        <source>Encoding (cicp): %1</source>
        <translation>Kodierung (cicp): %1</translation>
    </message>
    <message>
        <source>The volume is relative to the profile&apos;s white; brighter light is not counted</source>
        <translation>Das Volumen bezieht sich auf das Weiß des Profils; helleres Licht zählt nicht mit</translation>
    </message>
    <message>
        <source>%1 ΔE inside %2</source>
        <translation>%1 ΔE innerhalb von %2</translation>
    </message>
    <message>
        <source>%1 ΔE outside %2</source>
        <translation>%1 ΔE außerhalb von %2</translation>
    </message>
    <message>
        <source>Given surface</source>
        <translation>Gegebene Oberfläche</translation>
    </message>
    <message>
        <source>Convex hull</source>
        <translation>Konvexe Hülle</translation>
    </message>
    <message>
        <source>With more than %1 channels, colours of mixtures beyond the sampled ones are not looked for; the uncertainty does not include them</source>
        <translation>Bei mehr als %1 Kanälen wird nicht nach Farben von Mischungen jenseits der abgetasteten gesucht; die Unsicherheit enthält sie nicht</translation>
    </message>
</context>
<context>
    <name>SlicePanel</name>
    <message>
        <source>Gamut slice at L* = %1 in CIELAB (D50)</source>
        <translation>Gamut-Schnitt bei L* = %1 in CIELAB (D50)</translation>
    </message>
    <message>
        <source>area %1</source>
        <translation>Fläche %1</translation>
    </message>
    <message>
        <source>inside %1: %2</source>
        <translation>innerhalb von %1: %2</translation>
    </message>
    <message>
        <source>outside %1: %2</source>
        <translation>außerhalb von %1: %2</translation>
    </message>
    <message>
        <source>Section of the gamuts</source>
        <translation>Schnitt der Gamuts</translation>
    </message>
    <message>
        <source>Gamut rings in CIELAB (D50)</source>
        <translation>Gamut-Ringe in CIELAB (D50)</translation>
    </message>
    <message>
        <source>Gamut slice at hue %1° in CIELAB (D50)</source>
        <translation>Gamut-Schnitt beim Bunttonwinkel %1° in CIELAB (D50)</translation>
    </message>
    <message>
        <source>volume %1</source>
        <translation>Volumen %1</translation>
    </message>
</context>
<context>
    <name>ToolBar</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>Legend</source>
        <translation>Legende</translation>
    </message>
    <message>
        <source>Only active</source>
        <translation>Nur aktiven</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Abschneiden</translation>
    </message>
    <message>
        <source>Section</source>
        <translation>Schnitt</translation>
    </message>
    <message>
        <source>Cursor</source>
        <translation>Farbzeiger</translation>
    </message>
    <message>
        <source>Present</source>
        <translation>Vorführen</translation>
    </message>
    <message>
        <source>Find…</source>
        <translation>Suchen…</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
</context>
<context>
    <name>UnsavedQuestion</name>
    <message>
        <source>Unsaved changes</source>
        <translation>Ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>Save the changes as a session?</source>
        <translation>Die Änderungen als Sitzung speichern?</translation>
    </message>
    <message>
        <source>Save the changes of “%1”?</source>
        <translation>Die Änderungen von „%1“ speichern?</translation>
    </message>
    <message>
        <source>Otherwise they are lost.</source>
        <translation>Sonst gehen sie verloren.</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>ViewArea</name>
    <message>
        <source>Gamuts in Lab space</source>
        <translation>Gamuts im Lab-Farbraum</translation>
    </message>
</context>
<context>
    <name>ViewMenu</name>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>F&amp;ull screen</source>
        <translation>&amp;Vollbild</translation>
    </message>
    <message>
        <source>&amp;Reset camera</source>
        <translation>Kamera &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>&amp;Frame the gamuts</source>
        <translation>Gamuts ein&amp;passen</translation>
    </message>
    <message>
        <source>&amp;Orthogonal</source>
        <translation>&amp;Orthogonal</translation>
    </message>
    <message>
        <source>&amp;Wider angle</source>
        <translation>Blickwinkel &amp;weiter</translation>
    </message>
    <message>
        <source>&amp;Narrower angle</source>
        <translation>Blickwinkel &amp;enger</translation>
    </message>
    <message>
        <source>&amp;Look from</source>
        <translation>&amp;Blick von</translation>
    </message>
    <message>
        <source>&amp;Top</source>
        <translation>&amp;Oben</translation>
    </message>
    <message>
        <source>&amp;Bottom</source>
        <translation>&amp;Unten</translation>
    </message>
    <message>
        <source>&amp;Front: a* across</source>
        <translation>&amp;Vorn: a* quer</translation>
    </message>
    <message>
        <source>Bac&amp;k</source>
        <translation>&amp;Hinten</translation>
    </message>
    <message>
        <source>&amp;Right: b* across</source>
        <translation>&amp;Rechts: b* quer</translation>
    </message>
    <message>
        <source>&amp;Left</source>
        <translation>&amp;Links</translation>
    </message>
    <message>
        <source>&amp;Cut at the lightness</source>
        <translation>Bei der Helligkeit &amp;schneiden</translation>
    </message>
    <message>
        <source>Lighter section</source>
        <translation>Hellerer Schnitt</translation>
    </message>
    <message>
        <source>Darker section</source>
        <translation>Dunklerer Schnitt</translation>
    </message>
    <message>
        <source>&amp;Axes</source>
        <translation>&amp;Achsen</translation>
    </message>
    <message>
        <source>&amp;Grid</source>
        <translation>&amp;Gitter</translation>
    </message>
    <message>
        <source>ab &amp;plane</source>
        <translation>ab-Ebe&amp;ne</translation>
    </message>
    <message>
        <source>Scales and l&amp;egend</source>
        <translation>S&amp;kalen und Legende</translation>
    </message>
    <message>
        <source>&amp;Section without cutting</source>
        <translation>Schni&amp;tt ohne Schneiden</translation>
    </message>
    <message>
        <source>Section panel in &amp;true colours</source>
        <translation>Schnitt in echten &amp;Farben</translation>
    </message>
    <message>
        <source>Reset panels</source>
        <translation>Bereiche zurücksetzen</translation>
    </message>
    <message>
        <source>Present</source>
        <translation>Vorführen</translation>
    </message>
    <message>
        <source>Only the view and the legend, in large type; Esc returns</source>
        <translation>Nur die Ansicht und die Legende, in großer Schrift; Esc kehrt zurück</translation>
    </message>
    <message>
        <source>Colour cursor</source>
        <translation>Farbzeiger</translation>
    </message>
    <message>
        <source>Chooses colours with the keyboard: arrow keys, Page Up, Page Down, Enter</source>
        <translation>Wählt Farben mit der Tastatur: Pfeiltasten, Bild auf, Bild ab, Eingabe</translation>
    </message>
    <message>
        <source>Section panel</source>
        <translation>Schnittbereich</translation>
    </message>
    <message>
        <source>At a &amp;lightness</source>
        <translation>Bei einer &amp;Helligkeit</translation>
    </message>
    <message>
        <source>At a &amp;hue</source>
        <translation>Bei einem &amp;Bunttonwinkel</translation>
    </message>
    <message>
        <source>Gamut &amp;rings</source>
        <translation>Gamut-&amp;Ringe</translation>
    </message>
    <message>
        <source>&amp;Next hue</source>
        <translation>&amp;Nächster Bunttonwinkel</translation>
    </message>
    <message>
        <source>&amp;Previous hue</source>
        <translation>&amp;Voriger Bunttonwinkel</translation>
    </message>
</context>
<context>
    <name>WelcomePage</name>
    <message>
        <source>Open a profile to see its gamut</source>
        <translation>Öffnen Sie ein Profil, um seinen Gamut zu sehen</translation>
    </message>
    <message>
        <source>Drop ICC profiles, pictures with a profile or saved gamuts here.
With two gamuts open they are compared. Measurements (CGATS, CxF, CSV) show as points.</source>
        <translation>Ziehen Sie ICC-Profile, Bilder mit einem Profil oder gespeicherte Gamuts hierher.
Sind zwei Gamuts geöffnet, werden sie verglichen. Messwerte (CGATS, CxF, CSV) erscheinen als Punkte.</translation>
    </message>
    <message>
        <source>&amp;Open a file…</source>
        <translation>Datei ö&amp;ffnen…</translation>
    </message>
    <message>
        <source>Compare s&amp;RGB with Display P3</source>
        <translation>sRGB mit Display P3 &amp;vergleichen</translation>
    </message>
</context>
</TS>
