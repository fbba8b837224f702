<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>AnnotationBinding</name>
    <message>
        <source>%1: %2</source>
        <translation>%1&#xa0;: %2</translation>
    </message>
    <message>
        <source>No gamut is shown</source>
        <translation>Aucun gamut n’est affiché</translation>
    </message>
</context>
<context>
    <name>BackgroundMenu</name>
    <message>
        <source>&amp;Background</source>
        <translation>&amp;Fond</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>&amp;Sombre</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Clair</translation>
    </message>
    <message>
        <source>&amp;Neutral grey</source>
        <translation>&amp;Gris neutre</translation>
    </message>
</context>
<context>
    <name>ClipControl</name>
    <message>
        <source>Cu&amp;t</source>
        <translation>C&amp;ouper</translation>
    </message>
    <message>
        <source>Lightness of the section</source>
        <translation>Clarté de la coupe</translation>
    </message>
    <message>
        <source>Cut the gamuts off above this lightness</source>
        <translation>Couper les gamuts au-dessus de cette clarté</translation>
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
        <translation>à l’intérieur</translation>
    </message>
    <message>
        <source>edge</source>
        <translation>bord</translation>
    </message>
    <message>
        <source>outside</source>
        <translation>à l’extérieur</translation>
    </message>
    <message>
        <source>Colour %1</source>
        <translation>Couleur %1</translation>
    </message>
    <message>
        <source>The screen cannot show this colour; the patch shows a similar one</source>
        <translation>L’écran ne peut pas afficher cette couleur&#x202f;; la case en montre une semblable</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Couleur</translation>
    </message>
    <message>
        <source>Nearest in %1</source>
        <translation>La plus proche dans %1</translation>
    </message>
    <message>
        <source>Device values, %1</source>
        <translation>Valeurs du périphérique, %1</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Fichier</translation>
    </message>
    <message>
        <source>CIEDE2000 to the nearest colour of %1; 0 inside</source>
        <translation>CIEDE2000 jusqu’à la couleur la plus proche de %1&#x202f;; 0 à l’intérieur</translation>
    </message>
    <message>
        <source>What the profile of %1 makes of the colour, in percent</source>
        <translation>Ce que le profil de %1 fait de la couleur, en pour cent</translation>
    </message>
</context>
<context>
    <name>ColorsPanel</name>
    <message>
        <source>Colours</source>
        <translation>Couleurs</translation>
    </message>
    <message>
        <source>Copy rows</source>
        <translation>Copier les lignes</translation>
    </message>
    <message>
        <source>Copy all rows</source>
        <translation>Copier toutes les lignes</translation>
    </message>
    <message>
        <source>Save the table as CSV…</source>
        <translation>Enregistrer le tableau en CSV…</translation>
    </message>
    <message>
        <source>Search by name</source>
        <translation>Chercher un nom</translation>
    </message>
    <message>
        <source>Search colours by name</source>
        <translation>Chercher des couleurs par leur nom</translation>
    </message>
    <message>
        <source>Zone of the active gamut</source>
        <translation>Zone du gamut actif</translation>
    </message>
    <message>
        <source>Which colours are listed, by their place in the active gamut</source>
        <translation>Quelles couleurs sont listées, selon leur place par rapport au gamut actif</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Toutes</translation>
    </message>
    <message>
        <source>Outside</source>
        <translation>À l’extérieur</translation>
    </message>
    <message>
        <source>Edge</source>
        <translation>Au bord</translation>
    </message>
    <message>
        <source>Inside</source>
        <translation>À l’intérieur</translation>
    </message>
    <message>
        <source>Colours: %1</source>
        <translation>Couleurs&#xa0;: %1</translation>
    </message>
    <message>
        <source>Colours: %1 of %2</source>
        <translation>Couleurs&#xa0;: %1 sur %2</translation>
    </message>
    <message>
        <source>%1, computing: %2 %</source>
        <translation>%1, calcul en cours&#xa0;: %2&#x202f;%</translation>
    </message>
</context>
<context>
    <name>CommandSearch</name>
    <message>
        <source>Find a command</source>
        <translation>Chercher une commande</translation>
    </message>
    <message>
        <source>Words of the command</source>
        <translation>Mots de la commande</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Commandes</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Commande</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Touche</translation>
    </message>
</context>
<context>
    <name>ComparisonModel</name>
    <message>
        <source>computing…</source>
        <translation>calcul en cours…</translation>
    </message>
    <message>
        <source>the active gamut</source>
        <translation>le gamut actif</translation>
    </message>
    <message>
        <source>Intersection</source>
        <translation>Intersection</translation>
    </message>
    <message>
        <source>Union</source>
        <translation>Union</translation>
    </message>
    <message>
        <source>Covers</source>
        <translation>Couvre</translation>
    </message>
    <message>
        <source>Inside</source>
        <translation>Couvert</translation>
    </message>
    <message>
        <source>Gamut</source>
        <translation>Gamut</translation>
    </message>
    <message>
        <source>Intent</source>
        <translation>Intention de rendu</translation>
    </message>
    <message>
        <source>White L* a* b*</source>
        <translation>Blanc L* a* b*</translation>
    </message>
    <message>
        <source>Volume ΔE³</source>
        <translation>Volume ΔE³</translation>
    </message>
    <message>
        <source>Uncertainty</source>
        <translation>Incertitude</translation>
    </message>
    <message>
        <source>Intersection with %1</source>
        <translation>Intersection avec %1</translation>
    </message>
    <message>
        <source>Union with %1</source>
        <translation>Union avec %1</translation>
    </message>
    <message>
        <source>Share of %1 that this one covers</source>
        <translation>Part de %1 que ce gamut couvre</translation>
    </message>
    <message>
        <source>Share of this one that %1 covers</source>
        <translation>Part de ce gamut que %1 couvre</translation>
    </message>
    <message>
        <source>White L*	White a*	White b*</source>
        <translation>Blanc L*	Blanc a*	Blanc b*</translation>
    </message>
</context>
<context>
    <name>ComparisonPanel</name>
    <message>
        <source>The gamuts have different intents: %1. Choose one intent to compare the devices.</source>
        <translation>Les gamuts ont des intentions de rendu différentes&#xa0;: %1. Choisissez une seule intention pour comparer les périphériques.</translation>
    </message>
</context>
<context>
    <name>ComparisonTable</name>
    <message>
        <source>Comparison of the gamuts</source>
        <translation>Comparaison des gamuts</translation>
    </message>
</context>
<context>
    <name>CoverageModel</name>
    <message>
        <source>computing…</source>
        <translation>calcul en cours…</translation>
    </message>
    <message>
        <source>Share of %1 that %2 covers</source>
        <translation>Part de %1 que %2 couvre</translation>
    </message>
</context>
<context>
    <name>CoverageTable</name>
    <message>
        <source>Coverage of all gamuts</source>
        <translation>Couverture de tous les gamuts</translation>
    </message>
    <message>
        <source>The share of the volume of each row&apos;s gamut that the column&apos;s gamut covers.</source>
        <translation>La part du volume du gamut de la ligne que couvre le gamut de la colonne.</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
</context>
<context>
    <name>EditMenu</name>
    <message>
        <source>&amp;Edit</source>
        <translation>É&amp;dition</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Annuler</translation>
    </message>
    <message>
        <source>R&amp;edo</source>
        <translation>&amp;Rétablir</translation>
    </message>
    <message>
        <source>Copy &amp;picture</source>
        <translation>Copier l’&amp;image</translation>
    </message>
    <message>
        <source>Copy &amp;comparison</source>
        <translation>Copier la &amp;comparaison</translation>
    </message>
    <message>
        <source>Copy &amp;table of colours</source>
        <translation>Copier le ta&amp;bleau des couleurs</translation>
    </message>
    <message>
        <source>Copy c&amp;licked colour</source>
        <translation>Copier la couleur c&amp;liquée</translation>
    </message>
    <message>
        <source>Copy c&amp;amera</source>
        <translation>Copier la ca&amp;méra</translation>
    </message>
    <message>
        <source>Pa&amp;ste camera</source>
        <translation>C&amp;oller la caméra</translation>
    </message>
</context>
<context>
    <name>FileDialogs</name>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>All that can be opened (*.icc *.icm *.png *.jpg *.jpeg *.tif *.tiff *.kvgamut *.kvsession *.gam *.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)</source>
        <translation>Tout ce qui peut être ouvert (*.icc *.icm *.png *.jpg *.jpeg *.tif *.tiff *.kvgamut *.kvsession *.gam *.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)</translation>
    </message>
    <message>
        <source>Profiles (*.icc *.icm)</source>
        <translation>Profils (*.icc *.icm)</translation>
    </message>
    <message>
        <source>Pictures with a profile (*.png *.jpg *.jpeg *.tif *.tiff)</source>
        <translation>Images avec profil (*.png *.jpg *.jpeg *.tif *.tiff)</translation>
    </message>
    <message>
        <source>Saved gamuts (*.kvgamut)</source>
        <translation>Gamuts enregistrés (*.kvgamut)</translation>
    </message>
    <message>
        <source>Measurements (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)</source>
        <translation>Mesures (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Tous les fichiers (*)</translation>
    </message>
    <message>
        <source>Add points</source>
        <translation>Ajouter des points</translation>
    </message>
    <message>
        <source>Measurements and pictures (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl *.png *.jpg *.jpeg *.tif *.tiff)</source>
        <translation>Mesures et images (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl *.png *.jpg *.jpeg *.tif *.tiff)</translation>
    </message>
    <message>
        <source>Restore session</source>
        <translation>Restaurer une session</translation>
    </message>
    <message>
        <source>Sessions (*.kvsession)</source>
        <translation>Sessions (*.kvsession)</translation>
    </message>
    <message>
        <source>Save session</source>
        <translation>Enregistrer la session</translation>
    </message>
    <message>
        <source>Save picture</source>
        <translation>Enregistrer l’image</translation>
    </message>
    <message>
        <source>Pictures (*.png *.jpg *.tif *.webp *.svg *.pdf)</source>
        <translation>Images (*.png *.jpg *.tif *.webp *.svg *.pdf)</translation>
    </message>
    <message>
        <source>Save section</source>
        <translation>Enregistrer la coupe</translation>
    </message>
    <message>
        <source>Drawings (*.svg *.pdf)</source>
        <translation>Dessins (*.svg *.pdf)</translation>
    </message>
    <message>
        <source>Save page to send</source>
        <translation>Enregistrer une page à envoyer</translation>
    </message>
    <message>
        <source>Web pages (*.html)</source>
        <translation>Pages web (*.html)</translation>
    </message>
    <message>
        <source>Save table of colours</source>
        <translation>Enregistrer le tableau des couleurs</translation>
    </message>
    <message>
        <source>Tables (*.csv)</source>
        <translation>Tableaux (*.csv)</translation>
    </message>
    <message>
        <source>Save gamut as mesh</source>
        <translation>Enregistrer le gamut en maillage</translation>
    </message>
    <message>
        <source>Meshes (*.ply *.obj *.stl *.gltf *.x3d *.json)</source>
        <translation>Maillages (*.ply *.obj *.stl *.gltf *.x3d *.json)</translation>
    </message>
    <message>
        <source>Profiles (*.icc)</source>
        <translation>Profils (*.icc)</translation>
    </message>
</context>
<context>
    <name>FileMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>&amp;Ouvrir…</translation>
    </message>
    <message>
        <source>Add &amp;points or the pixels of a picture…</source>
        <translation>Ajouter des &amp;points ou les pixels d’une image…</translation>
    </message>
    <message>
        <source>R&amp;estore session…</source>
        <translation>&amp;Restaurer une session…</translation>
    </message>
    <message>
        <source>Save p&amp;icture…</source>
        <translation>Enregistrer l’&amp;image…</translation>
    </message>
    <message>
        <source>Save sec&amp;tion…</source>
        <translation>Enregistrer la &amp;coupe…</translation>
    </message>
    <message>
        <source>Save pa&amp;ge to send…</source>
        <translation>Enregistrer une pa&amp;ge à envoyer…</translation>
    </message>
    <message>
        <source>Save t&amp;able of colours…</source>
        <translation>Enregistrer le &amp;tableau des couleurs…</translation>
    </message>
    <message>
        <source>&amp;Close everything</source>
        <translation>Tout &amp;fermer</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>Open &amp;built-in profile</source>
        <translation>Ouvrir un profil i&amp;ntégré</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>O&amp;uvrir un fichier récent</translation>
    </message>
    <message>
        <source>Save gamut as &amp;mesh…</source>
        <translation>Enregistrer le gamut en &amp;maillage…</translation>
    </message>
    <message>
        <source>&amp;Load files again</source>
        <translation>Recharger &amp;les fichiers</translation>
    </message>
    <message>
        <source>Load changed files a&amp;utomatically</source>
        <translation>Recharger les fichiers mo&amp;difiés automatiquement</translation>
    </message>
    <message>
        <source>&amp;Save session</source>
        <translation>&amp;Enregistrer la session</translation>
    </message>
    <message>
        <source>Sa&amp;ve session as…</source>
        <translation>Enregistrer la session &amp;sous…</translation>
    </message>
</context>
<context>
    <name>FindingPanel</name>
    <message>
        <source>The clicked colour on this screen</source>
        <translation>La couleur cliquée sur cet écran</translation>
    </message>
    <message>
        <source>A corner is missing if the screen cannot show the colour</source>
        <translation>Il manque un coin si l’écran ne peut pas afficher la couleur</translation>
    </message>
    <message>
        <source>Click a gamut or a point to see its colour here.</source>
        <translation>Cliquez sur un gamut ou un point pour voir sa couleur ici.</translation>
    </message>
</context>
<context>
    <name>GamutInformation</name>
    <message>
        <source>Description</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>Class</source>
        <translation>Classe</translation>
    </message>
    <message>
        <source>Device colours</source>
        <translation>Couleurs du périphérique</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n channels</source>
        <translation>
            <numerusform>%1, %n canal</numerusform>
            <numerusform>%1, %n canaux</numerusform>
        </translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Intents</source>
        <translation>Intentions de rendu</translation>
    </message>
    <message>
        <source>Copyright</source>
        <translation>Droits d’auteur</translation>
    </message>
    <message>
        <source>Saved of</source>
        <translation>Enregistré à partir de</translation>
    </message>
    <message>
        <source>Computed with</source>
        <translation>Calculé avec</translation>
    </message>
    <message>
        <source>Conversion to Lab</source>
        <translation>Conversion vers Lab</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>Volume of the surface</source>
        <translation>Volume de la surface</translation>
    </message>
    <message>
        <source>White</source>
        <translation>Blanc</translation>
    </message>
    <message>
        <source>Black</source>
        <translation>Noir</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>Méthode</translation>
    </message>
    <message>
        <source>Grid</source>
        <translation>Grille</translation>
    </message>
    <message>
        <source>Triangles</source>
        <translation>Triangles</translation>
    </message>
    <message>
        <source>Folded share</source>
        <translation>Part repliée</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Durée</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Fichier</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Remarques</translation>
    </message>
    <message>
        <source>Information about %1</source>
        <translation>Informations sur %1</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
</context>
<context>
    <name>GamutListModel</name>
    <message>
        <source>%1 – %2 %</source>
        <translation>%1 – %2&#x202f;%</translation>
    </message>
    <message>
        <source>%1
is being computed</source>
        <translation>%1
calcul en cours</translation>
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
        <translation>Gamut &amp;suivant</translation>
    </message>
    <message>
        <source>&amp;Remove gamut</source>
        <translation>&amp;Retirer le gamut</translation>
    </message>
    <message>
        <source>&amp;Black point compensation</source>
        <translation>Compensation du point &amp;noir</translation>
    </message>
    <message>
        <source>&amp;Visible</source>
        <translation>&amp;Visible</translation>
    </message>
    <message>
        <source>&amp;Surface</source>
        <translation>Surf&amp;ace</translation>
    </message>
    <message>
        <source>Pro&amp;jection</source>
        <translation>Pro&amp;jection</translation>
    </message>
    <message>
        <source>&amp;Primaries</source>
        <translation>&amp;Primaires</translation>
    </message>
    <message>
        <source>Smooth, flat, &amp;wireframe</source>
        <translation>Lisse, à facettes, &amp;fil de fer</translation>
    </message>
    <message>
        <source>More &amp;opaque</source>
        <translation>Plus &amp;opaque</translation>
    </message>
    <message>
        <source>&amp;Less opaque</source>
        <translation>&amp;Moins opaque</translation>
    </message>
    <message>
        <source>&amp;Colour…</source>
        <translation>&amp;Couleur…</translation>
    </message>
    <message>
        <source>Own colo&amp;urs</source>
        <translation>Vraies co&amp;uleurs</translation>
    </message>
    <message>
        <source>Only this gamut</source>
        <translation>Ce gamut seulement</translation>
    </message>
    <message>
        <source>Information…</source>
        <translation>Informations…</translation>
    </message>
    <message>
        <source>Coverage of all…</source>
        <translation>Couverture de tous…</translation>
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
        <translation>Retirer le gamut</translation>
    </message>
    <message>
        <source>&amp;Black point compensation</source>
        <translation>Compensation du point &amp;noir</translation>
    </message>
    <message>
        <source>No effect with the absolute intent</source>
        <translation>Sans effet avec l’intention absolue</translation>
    </message>
    <message>
        <source>automatic</source>
        <translation>automatique</translation>
    </message>
    <message>
        <source>Samples along each device axis</source>
        <translation>Échantillons le long de chaque axe du périphérique</translation>
    </message>
    <message>
        <source>Computed with</source>
        <translation>Calculé avec</translation>
    </message>
    <message>
        <source>&amp;Intent</source>
        <translation>&amp;Intention</translation>
    </message>
    <message>
        <source>Adaptatio&amp;n</source>
        <translation>Adaptation du &amp;blanc</translation>
    </message>
    <message>
        <source>G&amp;rid</source>
        <translation>G&amp;rille</translation>
    </message>
    <message>
        <source>Adaptation of a display&apos;s colours to D50; only with the absolute intent</source>
        <translation>Adaptation des couleurs d’un écran à D50&#x202f;; seulement avec l’intention absolue</translation>
    </message>
    <message>
        <source>Smooth</source>
        <translation>Lisse</translation>
    </message>
    <message>
        <source>Flat</source>
        <translation>À facettes</translation>
    </message>
    <message>
        <source>Wireframe</source>
        <translation>Fil de fer</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Opacité</translation>
    </message>
    <message>
        <source>Light from everywhere</source>
        <translation>Lumière de toutes parts</translation>
    </message>
    <message>
        <source>Right: pure colours. Left: the light models the surface.</source>
        <translation>À droite&#xa0;: couleurs pures. À gauche&#xa0;: la lumière modèle la surface.</translation>
    </message>
    <message>
        <source>&amp;Choose…</source>
        <translation>&amp;Choisir…</translation>
    </message>
    <message>
        <source>&amp;Own colours</source>
        <translation>&amp;Vraies couleurs</translation>
    </message>
    <message>
        <source>&amp;Surface</source>
        <translation>&amp;Surface</translation>
    </message>
    <message>
        <source>Pro&amp;jection</source>
        <translation>Pro&amp;jection</translation>
    </message>
    <message>
        <source>&amp;Primaries</source>
        <translation>&amp;Primaires</translation>
    </message>
    <message>
        <source>Shown as</source>
        <translation>Affiché comme</translation>
    </message>
    <message>
        <source>&amp;Mode</source>
        <translation>&amp;Mode</translation>
    </message>
    <message>
        <source>Opacit&amp;y</source>
        <translation>Opaci&amp;té</translation>
    </message>
    <message>
        <source>P&amp;urity</source>
        <translation>P&amp;ureté</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Couleur</translation>
    </message>
    <message>
        <source>Colour of the gamut</source>
        <translation>Couleur du gamut</translation>
    </message>
    <message>
        <source>(%1 used)</source>
        <translation>(%1 utilisés)</translation>
    </message>
</context>
<context>
    <name>HelpMenu</name>
    <message>
        <source>&amp;Help</source>
        <translation>Aid&amp;e</translation>
    </message>
    <message>
        <source>&amp;Keys…</source>
        <translation>&amp;Raccourcis clavier…</translation>
    </message>
    <message>
        <source>&amp;Find a command…</source>
        <translation>&amp;Chercher une commande…</translation>
    </message>
    <message>
        <source>&amp;Tour…</source>
        <translation>&amp;Visite guidée…</translation>
    </message>
    <message>
        <source>&amp;About kvgamut…</source>
        <translation>À &amp;propos de kvgamut…</translation>
    </message>
</context>
<context>
    <name>HelpPages</name>
    <message>
        <source>Shows and compares colour gamuts in CIE L*a*b*.</source>
        <translation>Montre et compare des gamuts de couleurs dans CIE L*a*b*.</translation>
    </message>
    <message>
        <source>Licence: %1</source>
        <translation>Licence&#xa0;: %1</translation>
    </message>
    <message>
        <source>Made with Qt %1</source>
        <translation>Réalisé avec Qt %1</translation>
    </message>
    <message>
        <source>Nothing leaves this computer: the program uses no network.</source>
        <translation>Rien ne quitte cet ordinateur&#xa0;: le programme n’utilise pas le réseau.</translation>
    </message>
    <message>
        <source>About kvgamut</source>
        <translation>À propos de kvgamut</translation>
    </message>
    <message>
        <source>Tour</source>
        <translation>Visite guidée</translation>
    </message>
</context>
<context>
    <name>History</name>
    <message>
        <source>Add %1</source>
        <translation>l’ajout de %1</translation>
    </message>
    <message>
        <source>Add %1 gamuts</source>
        <translation>l’ajout de %1 gamuts</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>le retrait de %1</translation>
    </message>
    <message>
        <source>Remove %1 gamuts</source>
        <translation>le retrait de %1 gamuts</translation>
    </message>
    <message>
        <source>Change points</source>
        <translation>la modification des points</translation>
    </message>
    <message>
        <source>Settings of %1</source>
        <translation>la modification des réglages de %1</translation>
    </message>
    <message>
        <source>Show %1</source>
        <translation>l’affichage de %1</translation>
    </message>
    <message>
        <source>Hide %1</source>
        <translation>le masquage de %1</translation>
    </message>
    <message>
        <source>Look of %1</source>
        <translation>la modification de l’aspect de %1</translation>
    </message>
    <message>
        <source>Edge of points</source>
        <translation>la modification du bord des points</translation>
    </message>
    <message>
        <source>Close everything</source>
        <translation>la fermeture de tout</translation>
    </message>
    <message>
        <source>Several changes</source>
        <translation>plusieurs modifications</translation>
    </message>
</context>
<context>
    <name>Inspector</name>
    <message>
        <source>%1, point %2</source>
        <translation>%1, point %2</translation>
    </message>
    <message>
        <source>sRGB %1</source>
        <translation>sRGB %1</translation>
    </message>
    <message>
        <source>sRGB about %1</source>
        <translation>sRGB environ %1</translation>
    </message>
    <message>
        <source>Surface of %1</source>
        <translation>Surface de %1</translation>
    </message>
    <message>
        <source>seen from %1 away</source>
        <translation>vue à une distance de %1</translation>
    </message>
    <message>
        <source>CIEDE2000 %1 to %2</source>
        <translation>CIEDE2000 %1 par rapport à %2</translation>
    </message>
    <message>
        <source>at the same hue %1 to %2</source>
        <translation>à la même teinte %1 par rapport à %2</translation>
    </message>
    <message>
        <source>%1 makes it with %2 %</source>
        <translation>%1 la produit avec %2&#x202f;%</translation>
    </message>
    <message>
        <source>Colour at the cursor</source>
        <translation>Couleur sous le curseur</translation>
    </message>
</context>
<context>
    <name>KeyList</name>
    <message>
        <source>Keys</source>
        <translation>Raccourcis clavier</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Action</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Touche</translation>
    </message>
    <message>
        <source>In the 3D view</source>
        <translation>Dans la vue 3D</translation>
    </message>
    <message>
        <source>Arrow keys, drag</source>
        <translation>Touches fléchées, glisser</translation>
    </message>
    <message>
        <source>Turn</source>
        <translation>Tourner</translation>
    </message>
    <message>
        <source>+, -, wheel</source>
        <translation>+, -, molette</translation>
    </message>
    <message>
        <source>Nearer, farther</source>
        <translation>Plus près, plus loin</translation>
    </message>
    <message>
        <source>Shift and drag, right drag</source>
        <translation>Maj et glisser, glisser à droite</translation>
    </message>
    <message>
        <source>Move the scene</source>
        <translation>Déplacer la scène</translation>
    </message>
    <message>
        <source>Click</source>
        <translation>Clic</translation>
    </message>
    <message>
        <source>Which colour is this?</source>
        <translation>Quelle est cette couleur&#x202f;?</translation>
    </message>
    <message>
        <source>On to the next control</source>
        <translation>Passer au contrôle suivant</translation>
    </message>
    <message>
        <source>Everywhere</source>
        <translation>Partout</translation>
    </message>
    <message>
        <source>Cancel loading, then dismiss messages</source>
        <translation>Interrompre le chargement, puis masquer les messages</translation>
    </message>
    <message>
        <source>In lists and tables</source>
        <translation>Dans les listes et les tableaux</translation>
    </message>
    <message>
        <source>Show or hide the gamut</source>
        <translation>Afficher ou masquer le gamut</translation>
    </message>
    <message>
        <source>Remove the gamut or the points</source>
        <translation>Retirer le gamut ou les points</translation>
    </message>
    <message>
        <source>Copy the selected numbers</source>
        <translation>Copier les nombres sélectionnés</translation>
    </message>
    <message>
        <source>&amp;Set</source>
        <translation>&amp;Définir</translation>
    </message>
    <message>
        <source>&amp;No key</source>
        <translation>&amp;Aucune touche</translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>Par défa&amp;ut</translation>
    </message>
    <message>
        <source>&amp;All to default</source>
        <translation>&amp;Tout par défaut</translation>
    </message>
    <message>
        <source>With the colour cursor</source>
        <translation>Avec le curseur de couleur</translation>
    </message>
    <message>
        <source>Arrow keys</source>
        <translation>Touches fléchées</translation>
    </message>
    <message>
        <source>Along a* and b*</source>
        <translation>Le long de a* et b*</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Lighter, darker</source>
        <translation>Plus clair, plus sombre</translation>
    </message>
    <message>
        <source>Shift and these keys</source>
        <translation>Maj et ces touches</translation>
    </message>
    <message>
        <source>Ten times as far</source>
        <translation>Dix fois plus loin</translation>
    </message>
    <message>
        <source>Which colour is the nearest?</source>
        <translation>Quelle couleur est la plus proche&#x202f;?</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Terminer</translation>
    </message>
    <message>
        <source>New key</source>
        <translation>Nouvelle touche</translation>
    </message>
    <message>
        <source>Press the new key here</source>
        <translation>Appuyez ici sur la nouvelle touche</translation>
    </message>
    <message>
        <source>Choose a command of the menus to change its key.</source>
        <translation>Choisissez une commande des menus pour changer sa touche.</translation>
    </message>
    <message>
        <source>Press a key in the field first.</source>
        <translation>Appuyez d’abord sur une touche dans le champ.</translation>
    </message>
    <message>
        <source>%1 has a meaning in the view or in lists.</source>
        <translation>%1 a déjà un rôle dans la vue ou dans les listes.</translation>
    </message>
    <message>
        <source>%1 is the key of &quot;%2&quot;.</source>
        <translation>%1 est la touche de «&#xa0;%2&#xa0;».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no key now.</source>
        <translation>«&#xa0;%1&#xa0;» n’a plus de touche.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has the key %2 now.</source>
        <translation>«&#xa0;%1&#xa0;» a maintenant la touche %2.</translation>
    </message>
    <message>
        <source>All commands have their default keys.</source>
        <translation>Toutes les commandes ont leurs touches par défaut.</translation>
    </message>
</context>
<context>
    <name>LightMenu</name>
    <message>
        <source>L&amp;ight</source>
        <translation>Écla&amp;irage</translation>
    </message>
    <message>
        <source>From &amp;above</source>
        <translation>D’en &amp;haut</translation>
    </message>
    <message>
        <source>From the &amp;left</source>
        <translation>De &amp;gauche</translation>
    </message>
    <message>
        <source>From the &amp;right</source>
        <translation>De &amp;droite</translation>
    </message>
    <message>
        <source>&amp;Colour…</source>
        <translation>&amp;Couleur…</translation>
    </message>
    <message>
        <source>&amp;White</source>
        <translation>Lumière &amp;blanche</translation>
    </message>
    <message>
        <source>Colour of the light</source>
        <translation>Couleur de la lumière</translation>
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
        <translation>Coupe</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Couleurs</translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation>Comparaison</translation>
    </message>
    <message>
        <source>Clicked colour</source>
        <translation>Couleur cliquée</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progression</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Interrompre</translation>
    </message>
    <message>
        <source>Cancel (Esc)</source>
        <translation>Interrompre (Échap)</translation>
    </message>
    <message>
        <source>Comparison with %1</source>
        <translation>Comparaison avec %1</translation>
    </message>
    <message>
        <source>Writing %1…</source>
        <translation>Écriture de %1…</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>%1 enregistré</translation>
    </message>
    <message>
        <source>Copied the picture: %1 x %2 pixels</source>
        <translation>Image copiée&#xa0;: %1 x %2 pixels</translation>
    </message>
    <message>
        <source>Copied the clicked colour</source>
        <translation>Couleur cliquée copiée</translation>
    </message>
    <message>
        <source>Copied the camera</source>
        <translation>Caméra copiée</translation>
    </message>
    <message>
        <source>A window ended unexpectedly. Its unsaved changes of %1 were kept.</source>
        <translation>Une fenêtre s’est terminée de façon inattendue. Ses modifications non enregistrées du %1 ont été conservées.</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Restaurer</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Abandonner</translation>
    </message>
    <message>
        <source>Changed on disk: %1</source>
        <translation>Modifié sur le disque&#xa0;: %1</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Recharger</translation>
    </message>
    <message>
        <source>Not now</source>
        <translation>Pas maintenant</translation>
    </message>
</context>
<context>
    <name>MenuCommands</name>
    <message>
        <source> or </source>
        <translation> ou </translation>
    </message>
</context>
<context>
    <name>MessageBar</name>
    <message>
        <source>Messages</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Masquer</translation>
    </message>
    <message>
        <source>Dismiss (Esc)</source>
        <translation>Masquer (Échap)</translation>
    </message>
    <message>
        <source>Shows all messages</source>
        <translation>Affiche tous les messages</translation>
    </message>
    <message numerus="yes">
        <source>%n more…</source>
        <translation>
            <numerusform>%n autre…</numerusform>
            <numerusform>%n autres…</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>OfferBar</name>
    <message>
        <source>Questions</source>
        <translation>Questions</translation>
    </message>
</context>
<context>
    <name>PhotoMask</name>
    <message>
        <source>The picture is being made…</source>
        <translation>Création de l’image…</translation>
    </message>
    <message>
        <source>%1: what %2 cannot make</source>
        <translation>%1&#xa0;: ce que %2 ne peut pas reproduire</translation>
    </message>
    <message>
        <source>Marked is what is outside %1. Grey can be made.</source>
        <translation>Ce qui est hors de %1 est marqué. Le gris est reproductible.</translation>
    </message>
    <message>
        <source>%1 % of the pixels are outside, %2 % on the edge.</source>
        <translation>%1&#x202f;% des pixels sont à l’extérieur, %2&#x202f;% au bord.</translation>
    </message>
</context>
<context>
    <name>PictureDialog</name>
    <message>
        <source>Size of the picture</source>
        <translation>Taille de l’image</translation>
    </message>
    <message>
        <source>&amp;Width</source>
        <translation>&amp;Largeur</translation>
    </message>
    <message>
        <source>&amp;Height</source>
        <translation>&amp;Hauteur</translation>
    </message>
    <message>
        <source>&amp;Keep the proportions of the view</source>
        <translation>&amp;Conserver les proportions de la vue</translation>
    </message>
    <message>
        <source>&amp;Transparent ground</source>
        <translation>Fond &amp;transparent</translation>
    </message>
    <message>
        <source>Not in JPEG files</source>
        <translation>Pas dans les fichiers JPEG</translation>
    </message>
</context>
<context>
    <name>PointLayer</name>
    <message>
        <source>reading…</source>
        <translation>lecture…</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Points</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Inside</source>
        <translation>Intérieur</translation>
    </message>
    <message>
        <source>Edge</source>
        <translation>Bord</translation>
    </message>
    <message>
        <source>Outside</source>
        <translation>Extérieur</translation>
    </message>
    <message>
        <source>Every pixel is counted: %1</source>
        <translation>Chaque pixel est compté&#xa0;: %1</translation>
    </message>
    <message>
        <source>CIEDE2000: mean %1, 95 % up to %2, largest %3</source>
        <translation>CIEDE2000&#xa0;: moyenne %1, 95&#x202f;% jusqu’à %2, maximum %3</translation>
    </message>
</context>
<context>
    <name>PointPanel</name>
    <message>
        <source>Files of points</source>
        <translation>Fichiers de points</translation>
    </message>
    <message>
        <source>Colours no farther from the active gamut&apos;s surface than this are its edge</source>
        <translation>Les couleurs dont la distance à la surface du gamut actif ne dépasse pas cette valeur forment son bord</translation>
    </message>
    <message>
        <source>&amp;Add points…</source>
        <translation>&amp;Ajouter des points…</translation>
    </message>
    <message>
        <source>E&amp;dge</source>
        <translation>&amp;Zone de bord</translation>
    </message>
    <message>
        <source>Show what is lost of the photo</source>
        <translation>Montrer ce que la photo perd</translation>
    </message>
    <message>
        <source>Remove points</source>
        <translation>Retirer les points</translation>
    </message>
</context>
<context>
    <name>Problem</name>
    <message>
        <source>No such file or directory</source>
        <translation>Fichier ou dossier inexistant</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>Permission refusée</translation>
    </message>
    <message>
        <source>Is a directory</source>
        <translation>C’est un dossier</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>Plus d’espace disponible sur le périphérique</translation>
    </message>
    <message>
        <source>Read-only file system</source>
        <translation>Système de fichiers en lecture seule</translation>
    </message>
    <message>
        <source>Too many open files</source>
        <translation>Trop de fichiers ouverts</translation>
    </message>
    <message>
        <source>Broken pipe</source>
        <translation>Tube rompu (broken pipe)</translation>
    </message>
    <message>
        <source>Bad file descriptor</source>
        <translation>Descripteur de fichier invalide</translation>
    </message>
    <message>
        <source>%1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>lecture impossible</translation>
    </message>
    <message>
        <source>cannot be written</source>
        <translation>écriture impossible</translation>
    </message>
    <message>
        <source>neither an ICC profile, nor a PNG, JPEG or TIFF picture, nor a saved gamut, nor a chart or a list of colours</source>
        <translation>ni un profil ICC, ni une image PNG, JPEG ou TIFF, ni un gamut enregistré, ni une charte ou une liste de couleurs</translation>
    </message>
    <message>
        <source>larger than %1 MiB, the limit for files of this kind</source>
        <translation>plus de %1&#xa0;Mio, la limite pour les fichiers de ce type</translation>
    </message>
    <message>
        <source>neither a regular file nor a pipe</source>
        <translation>ni un fichier ordinaire ni un tube</translation>
    </message>
    <message>
        <source>not a text file</source>
        <translation>ce n’est pas un fichier texte</translation>
    </message>
    <message>
        <source>the name is not UTF-8</source>
        <translation>le nom n’est pas en UTF-8</translation>
    </message>
    <message>
        <source>the output would overwrite this input; choose another name</source>
        <translation>la sortie écraserait ce fichier d’entrée&#x202f;; choisissez un autre nom</translation>
    </message>
    <message>
        <source>unknown setting &apos;%1&apos; behind the @ (known: %2)</source>
        <translation>réglage inconnu «&#xa0;%1&#xa0;» après le @ (connus&#xa0;: %2)</translation>
    </message>
    <message>
        <source>the hull of the %1 colours encloses less than 1 cubic dE; a gamut needs colours of different lightness, hue and chroma</source>
        <translation>l’enveloppe des %1 couleurs contient moins de 1&#xa0;ΔE³&#x202f;; un gamut demande des couleurs de clarté, de teinte et de chroma différentes</translation>
    </message>
    <message>
        <source>the chart has too few patches: %1 with different device values, or a channel that varies by less than 50 %</source>
        <translation>la charte a trop peu de plages&#xa0;: %1 avec des valeurs de périphérique différentes, ou un canal qui varie de moins de 50&#x202f;%</translation>
    </message>
    <message>
        <source>all patches of the chart are black</source>
        <translation>toutes les plages de la charte sont noires</translation>
    </message>
    <message>
        <source>more than %1 different patches, the limit of a chart</source>
        <translation>plus de %1 plages différentes, la limite d’une charte</translation>
    </message>
    <message>
        <source>a saved gamut keeps its intent, which is %1</source>
        <translation>un gamut enregistré garde son intention de rendu, qui est %1</translation>
    </message>
    <message>
        <source>the surface has no table of %1</source>
        <translation>la surface n’a pas de tableau de %1</translation>
    </message>
    <message>
        <source>the surface is in &apos;%1&apos;; only Lab and XYZ are supported</source>
        <translation>la surface est en «&#xa0;%1&#xa0;»&#x202f;; seuls Lab et XYZ sont pris en charge</translation>
    </message>
    <message>
        <source>line %1: there is no vertex %2</source>
        <translation>ligne %1&#xa0;: il n’y a pas de sommet %2</translation>
    </message>
    <message>
        <source>line %1: vertex %2 occurs twice</source>
        <translation>ligne %1&#xa0;: le sommet %2 apparaît deux fois</translation>
    </message>
    <message>
        <source>more than %1 triangles, the limit of a surface</source>
        <translation>plus de %1 triangles, la limite d’une surface</translation>
    </message>
    <message>
        <source>the profile has no gamut boundary (a tag gbd0 to gbd3)</source>
        <translation>le profil n’a pas de limite de gamut (une balise gbd0 à gbd3)</translation>
    </message>
    <message>
        <source>the tag &apos;%1&apos; is damaged</source>
        <translation>la balise «&#xa0;%1&#xa0;» est endommagée</translation>
    </message>
    <message>
        <source>this gamut has no rendering intents; leave out &apos;@%1&apos;</source>
        <translation>ce gamut n’a pas d’intentions de rendu&#x202f;; omettez «&#xa0;@%1&#xa0;»</translation>
    </message>
    <message>
        <source>the %1 picture is damaged</source>
        <translation>l’image %1 est endommagée</translation>
    </message>
    <message>
        <source>unsupported picture format</source>
        <translation>format d’image non pris en charge</translation>
    </message>
    <message>
        <source>the picture cannot be decoded</source>
        <translation>l’image ne peut pas être décodée</translation>
    </message>
    <message>
        <source>the picture is too large for the memory</source>
        <translation>l’image est trop grande pour la mémoire</translation>
    </message>
    <message>
        <source>the picture has more than %1 million pixels, the limit</source>
        <translation>l’image a plus de %1&#xa0;millions de pixels, la limite</translation>
    </message>
    <message>
        <source>the picture is progressive, interlaced or of a format that is decoded as a whole, and has more than %1 million pixels, the limit; save it as TIFF</source>
        <translation>l’image est progressive, entrelacée ou d’un format décodé d’un seul bloc, et a plus de %1&#xa0;millions de pixels, la limite&#x202f;; enregistrez-la en TIFF</translation>
    </message>
    <message>
        <source>pictures cannot be read; install libvips (Debian package libvips42)</source>
        <translation>les images ne peuvent pas être lues&#x202f;; installez libvips (paquet Debian libvips42)</translation>
    </message>
    <message>
        <source>the number or the type of the values of a pixel is not supported; grey, RGB, CMYK and Lab with 8 or 16 bits or floating point are</source>
        <translation>le nombre ou le type des valeurs d’un pixel n’est pas pris en charge&#x202f;; le sont gris, RVB, CMJN et Lab sur 8 ou 16&#xa0;bits ou en virgule flottante</translation>
    </message>
    <message>
        <source>the profile is for another kind of colour than the pixels</source>
        <translation>le profil est pour un autre type de couleurs que celui des pixels</translation>
    </message>
    <message>
        <source>the first of %1 pages is read</source>
        <translation>la première de %1&#xa0;pages est lue</translation>
    </message>
    <message>
        <source>%1 pixels have values below 0 or above 1, which were clamped</source>
        <translation>%1&#xa0;pixels ont des valeurs inférieures à 0 ou supérieures à 1, qui ont été ramenées à ces limites</translation>
    </message>
    <message>
        <source>not a readable PNG picture</source>
        <translation>ce n’est pas une image PNG lisible</translation>
    </message>
    <message>
        <source>the embedded profile cannot be read</source>
        <translation>le profil incorporé n’est pas lisible</translation>
    </message>
    <message>
        <source>the embedded profile has no usable transform to Lab</source>
        <translation>le profil incorporé n’a pas de transformation utilisable vers Lab</translation>
    </message>
    <message>
        <source>every pixel is transparent</source>
        <translation>tous les pixels sont transparents</translation>
    </message>
    <message>
        <source>no embedded profile; the colours are taken as sRGB</source>
        <translation>pas de profil incorporé&#x202f;; les couleurs sont interprétées comme sRGB</translation>
    </message>
    <message>
        <source>line %1: the value of %2 is missing</source>
        <translation>ligne %1&#xa0;: la valeur de %2 manque</translation>
    </message>
    <message>
        <source>line %1: %2 is &apos;%3&apos;, expected a number</source>
        <translation>ligne %1&#xa0;: %2 est «&#xa0;%3&#xa0;», un nombre est attendu</translation>
    </message>
    <message>
        <source>line %1: %2 is %3, expected %4 to %5</source>
        <translation>ligne %1&#xa0;: %2 est %3, attendu de %4 à %5</translation>
    </message>
    <message>
        <source>line %1: &apos;%2&apos;, expected a colour such as 40c0ff</source>
        <translation>ligne %1&#xa0;: «&#xa0;%2&#xa0;», une couleur telle que 40c0ff est attendue</translation>
    </message>
    <message>
        <source>line %1: &apos;%2&apos; is not a colour</source>
        <translation>ligne %1&#xa0;: «&#xa0;%2&#xa0;» n’est pas une couleur</translation>
    </message>
    <message>
        <source>line %1: %2 values for %3 columns</source>
        <translation>ligne %1&#xa0;: %2 valeurs pour %3 colonnes</translation>
    </message>
    <message>
        <source>line %1: expected L*, a*, b* and optionally a name and a colour; for anything else the first line must name the columns</source>
        <translation>ligne %1&#xa0;: L*, a*, b* et, en option, un nom et une couleur sont attendus&#x202f;; pour toute autre chose, la première ligne doit nommer les colonnes</translation>
    </message>
    <message>
        <source>line %1: L* %2, a* %3, b* %4 is not a possible colour</source>
        <translation>ligne %1&#xa0;: L* %2, a* %3, b* %4 n’est pas une couleur possible</translation>
    </message>
    <message>
        <source>%1 of %2 colours are left out (lines: %3)</source>
        <translation>%1 couleurs sur %2 sont omises (lignes&#xa0;: %3)</translation>
    </message>
    <message>
        <source>line %1: %2 is not a value of L*, a*, b*; name the columns in the first line, for example L,a,b or R,G,B</source>
        <translation>ligne %1&#xa0;: %2 n’est pas une valeur de L*, a*, b*&#x202f;; nommez les colonnes sur la première ligne, par exemple L,a,b ou R,G,B</translation>
    </message>
    <message>
        <source>line %1: unknown columns (%2); known are L, a, b; L, C, h; X, Y, Z; R, G, B; hex; C, M, Y, K, and reflectances such as 400 nm</source>
        <translation>ligne %1&#xa0;: colonnes inconnues (%2)&#x202f;; sont connues L, a, b&#x202f;; L, C, h&#x202f;; X, Y, Z&#x202f;; R, G, B&#x202f;; hex&#x202f;; C, M, Y, K, et des facteurs de réflexion tels que 400 nm</translation>
    </message>
    <message>
        <source>unknown columns are ignored: %1</source>
        <translation>les colonnes inconnues sont ignorées&#xa0;: %1</translation>
    </message>
    <message>
        <source>no heading; the numbers are taken as L*, a*, b* for D50</source>
        <translation>pas d’en-tête&#x202f;; les nombres sont interprétés comme L*, a*, b* pour D50</translation>
    </message>
    <message>
        <source>neither UTF-8 nor UTF-16; the text is taken as Latin-1</source>
        <translation>ni UTF-8 ni UTF-16&#x202f;; le texte est interprété comme Latin-1</translation>
    </message>
    <message>
        <source>the values for %1 are adapted to D50 (Bradford)</source>
        <translation>les valeurs pour %1 sont adaptées à D50 (Bradford)</translation>
    </message>
    <message>
        <source>the values are for the 10 degree observer, gamuts for the 2 degree observer; compare them with care</source>
        <translation>les valeurs sont pour l’observateur à 10&#xa0;degrés, les gamuts pour l’observateur à 2&#xa0;degrés&#x202f;; comparez-les avec prudence</translation>
    </message>
    <message>
        <source>the largest XYZ value is %1, so it is not clear whether white has Y 1 or Y 100; declare it: --points-white-y, or a line &apos;# white-y: 1&apos; in the file</source>
        <translation>la plus grande valeur XYZ est %1, on ne sait donc pas si le blanc a Y&#xa0;1 ou Y&#xa0;100&#x202f;; déclarez-le&#xa0;: --points-white-y, ou une ligne «&#xa0;# white-y: 1&#xa0;» dans le fichier</translation>
    </message>
    <message>
        <source>the %1 values are taken as numbers from 0 to %2</source>
        <translation>les valeurs %1 sont interprétées comme des nombres de 0 à %2</translation>
    </message>
    <message>
        <source>%1 values without their colour space; declare it: --points-space with a built-in RGB space or an ICC profile, or for RGB a line &apos;# space: sRGB&apos; in the file</source>
        <translation>valeurs %1 sans leur espace de couleurs&#x202f;; déclarez-le&#xa0;: --points-space avec un espace RVB intégré ou un profil ICC, ou pour RVB une ligne «&#xa0;# space: sRGB&#xa0;» dans le fichier</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a profile for %2 values</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un profil pour des valeurs %2</translation>
    </message>
    <message>
        <source>the colours cannot be converted with the profile &apos;%1&apos;</source>
        <translation>les couleurs ne peuvent pas être converties avec le profil «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>line %1: &apos;%2&apos; is not known; known are %3</source>
        <translation>ligne %1&#xa0;: «&#xa0;%2&#xa0;» n’est pas connu&#x202f;; sont connus %3</translation>
    </message>
    <message>
        <source>%1 reflectances from %2 to %3 nm are not enough; needed are equal steps of at most 20 nm from 400 to 700 nm</source>
        <translation>%1 facteurs de réflexion de %2 à %3&#xa0;nm ne suffisent pas&#x202f;; il faut des pas égaux d’au plus 20&#xa0;nm de 400 à 700&#xa0;nm</translation>
    </message>
    <message>
        <source>the reflectances from %1 to %2 nm, taken as 0 to %3, are computed for the CIE 1931 2 degree observer and D50</source>
        <translation>les facteurs de réflexion de %1 à %2&#xa0;nm, interprétés de 0 à %3, sont calculés pour l’observateur CIE 1931 à 2&#xa0;degrés et D50</translation>
    </message>
    <message>
        <source>%1 of %2 colours are left out (numbers: %3)</source>
        <translation>%1 couleurs sur %2 sont omises (numéros&#xa0;: %3)</translation>
    </message>
    <message>
        <source>number %1: L* %2, a* %3, b* %4 is not a possible colour</source>
        <translation>numéro %1&#xa0;: L* %2, a* %3, b* %4 n’est pas une couleur possible</translation>
    </message>
    <message>
        <source>the %1 palette is damaged</source>
        <translation>la palette %1 est endommagée</translation>
    </message>
    <message>
        <source>number %1: the colour model &apos;%2&apos; is not known; known are RGB, CMYK and Lab</source>
        <translation>numéro %1&#xa0;: le modèle de couleurs «&#xa0;%2&#xa0;» n’est pas connu&#x202f;; sont connus RGB, CMYK et Lab</translation>
    </message>
    <message>
        <source>number %1: %2, expected 0 to 1</source>
        <translation>numéro %1&#xa0;: %2, attendu de 0 à 1</translation>
    </message>
    <message>
        <source>not a file of colours, but %1; known are CSV, CGATS, CxF, ASE, ACB and GPL</source>
        <translation>ce n’est pas un fichier de couleurs, mais %1&#x202f;; sont connus CSV, CGATS, CxF, ASE, ACB et GPL</translation>
    </message>
    <message>
        <source>the file contains no positions</source>
        <translation>le fichier ne contient aucune position de couleur</translation>
    </message>
    <message>
        <source>more than %1 points, the limit of a file</source>
        <translation>plus de %1&#xa0;points, la limite d’un fichier</translation>
    </message>
    <message>
        <source>line %1: more than %2 columns, the limit of a table</source>
        <translation>ligne %1&#xa0;: plus de %2 colonnes, la limite d’un tableau</translation>
    </message>
    <message>
        <source>line %1: longer than %2 characters, the limit</source>
        <translation>ligne %1&#xa0;: plus longue que %2 caractères, la limite</translation>
    </message>
    <message>
        <source>the CGATS file cannot be read</source>
        <translation>le fichier CGATS n’est pas lisible</translation>
    </message>
    <message>
        <source>line %1: %2 reads another file, which is not allowed here; insert the content of that file instead</source>
        <translation>ligne %1&#xa0;: %2 lit un autre fichier, ce qui n’est pas permis ici&#x202f;; insérez plutôt le contenu de ce fichier</translation>
    </message>
    <message>
        <source>line %1: the data have no column names (BEGIN_DATA_FORMAT is missing)</source>
        <translation>ligne %1&#xa0;: les données n’ont pas de noms de colonnes (BEGIN_DATA_FORMAT manque)</translation>
    </message>
    <message>
        <source>Line %1: %2 is missing</source>
        <translation>Ligne %1&#xa0;: %2 manque</translation>
    </message>
    <message>
        <source>Line %1: %2 was %3, found %4</source>
        <translation>Ligne %1&#xa0;: %2 était %3, trouvé %4</translation>
    </message>
    <message>
        <source>the CGATS file has no known columns of colours (%1); known are Lab, LCh, XYZ, RGB and CMYK, and reflectances such as SPECTRAL_NM400</source>
        <translation>le fichier CGATS n’a pas de colonnes de couleurs connues (%1)&#x202f;; sont connus Lab, LCh, XYZ, RGB et CMYK, et des facteurs de réflexion tels que SPECTRAL_NM400</translation>
    </message>
    <message>
        <source>the XML is not CxF</source>
        <translation>le XML n’est pas du CxF</translation>
    </message>
    <message>
        <source>line %1: the XML is invalid</source>
        <translation>ligne %1&#xa0;: le XML n’est pas valide</translation>
    </message>
    <message>
        <source>line %1: the XML declares a document type, which CxF does not have</source>
        <translation>ligne %1&#xa0;: le XML déclare un type de document, ce que CxF n’a pas</translation>
    </message>
    <message>
        <source>line %1: more than %2 nested elements, the limit of CxF</source>
        <translation>ligne %1&#xa0;: plus de %2 éléments imbriqués, la limite de CxF</translation>
    </message>
    <message>
        <source>line %1: more than %2 attributes, the limit of an element of CxF</source>
        <translation>ligne %1&#xa0;: plus de %2 attributs, la limite d’un élément de CxF</translation>
    </message>
    <message>
        <source>%1 of %2 objects have no CIELAB, XYZ or reflectance values for D50</source>
        <translation>%1 objets sur %2 n’ont pas de valeurs CIELAB, XYZ ou de réflexion pour D50</translation>
    </message>
    <message>
        <source>no colours at L* %1; the gamut reaches from L* %2 to %3</source>
        <translation>pas de couleurs à L* %1&#x202f;; le gamut va de L* %2 à %3</translation>
    </message>
    <message>
        <source>no colours at the hue %1</source>
        <translation>pas de couleurs à la teinte %1</translation>
    </message>
    <message>
        <source>no part of %1 is outside %2</source>
        <translation>aucune partie de %1 n’est hors de %2</translation>
    </message>
    <message>
        <source>%1 and %2 have nothing in common</source>
        <translation>%1 et %2 n’ont rien en commun</translation>
    </message>
    <message>
        <source>not a session of this program</source>
        <translation>ce n’est pas une session de ce programme</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be true or false</source>
        <translation>«&#xa0;%1&#xa0;» doit être true ou false</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a number from %2 to %3</source>
        <translation>«&#xa0;%1&#xa0;» doit être un nombre de %2 à %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a name</source>
        <translation>«&#xa0;%1&#xa0;» doit être un nom</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a colour such as &quot;#40c0ff&quot;</source>
        <translation>«&#xa0;%1&#xa0;» doit être une couleur telle que &quot;#40c0ff&quot;</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be three numbers</source>
        <translation>«&#xa0;%1&#xa0;» doit être formé de trois nombres</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be one of %2</source>
        <translation>«&#xa0;%1&#xa0;» doit être l’une des valeurs %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a list of files</source>
        <translation>«&#xa0;%1&#xa0;» doit être une liste de fichiers</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a list</source>
        <translation>«&#xa0;%1&#xa0;» doit être une liste</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a group of values</source>
        <translation>«&#xa0;%1&#xa0;» doit être un groupe de valeurs</translation>
    </message>
    <message>
        <source>&quot;%1&quot; and &quot;%2&quot; must be different points</source>
        <translation>«&#xa0;%1&#xa0;» et «&#xa0;%2&#xa0;» doivent être des points différents</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has more than %2 entries, the limit of a session</source>
        <translation>«&#xa0;%1&#xa0;» a plus de %2 entrées, la limite d’une session</translation>
    </message>
    <message>
        <source>sections are saved as .svg or .pdf</source>
        <translation>les coupes sont enregistrées en .svg ou .pdf</translation>
    </message>
    <message>
        <source>pages to send are saved as .html</source>
        <translation>les pages à envoyer sont enregistrées en .html</translation>
    </message>
    <message>
        <source>there is no gamut to save; open a profile first</source>
        <translation>il n’y a pas de gamut à enregistrer&#x202f;; ouvrez d’abord un profil</translation>
    </message>
    <message>
        <source>there is no picture to save: nothing is shown, or the memory does not suffice</source>
        <translation>il n’y a pas d’image à enregistrer&#xa0;: rien n’est affiché, ou la mémoire ne suffit pas</translation>
    </message>
    <message>
        <source>the clipboard holds no camera; an example: %1</source>
        <translation>le presse-papiers ne contient pas de caméra&#x202f;; un exemple&#xa0;: %1</translation>
    </message>
    <message>
        <source>there is no display to open a window on; &apos;kvgamut render&apos; needs none</source>
        <translation>il n’y a pas d’affichage pour ouvrir une fenêtre&#x202f;; «&#xa0;kvgamut render&#xa0;» n’en a pas besoin</translation>
    </message>
    <message>
        <source>no window can be opened: the display (%1) does not answer; name one that runs, or use &apos;kvgamut render&apos;, which needs none</source>
        <translation>impossible d’ouvrir une fenêtre&#xa0;: l’affichage (%1) ne répond pas&#x202f;; indiquez-en un qui fonctionne, ou utilisez «&#xa0;kvgamut render&#xa0;», qui n’en a pas besoin</translation>
    </message>
    <message>
        <source>no window can be opened: Qt&apos;s plug-in &apos;%1&apos; for the display is missing or cannot be loaded (Debian, Ubuntu: apt-get install %2)</source>
        <translation>impossible d’ouvrir une fenêtre&#xa0;: le greffon Qt «&#xa0;%1&#xa0;» pour l’affichage manque ou ne peut pas être chargé (Debian, Ubuntu&#xa0;: apt-get install %2)</translation>
    </message>
    <message>
        <source>there is no display, and Xvfb gave none</source>
        <translation>il n’y a pas d’affichage, et Xvfb n’en a pas fourni</translation>
    </message>
    <message>
        <source>there is no display, and Xvfb, which provides a virtual one, is not installed (Debian, Ubuntu: apt-get install xvfb)</source>
        <translation>il n’y a pas d’affichage, et Xvfb, qui en fournit un virtuel, n’est pas installé (Debian, Ubuntu&#xa0;: apt-get install xvfb)</translation>
    </message>
    <message>
        <source>there is no display, and Xvfb cannot be started</source>
        <translation>il n’y a pas d’affichage, et Xvfb ne peut pas être lancé</translation>
    </message>
    <message>
        <source>this display has no OpenGL (Debian, Ubuntu: apt-get install libgl1-mesa-dri)</source>
        <translation>cet affichage n’offre pas OpenGL (Debian, Ubuntu&#xa0;: apt-get install libgl1-mesa-dri)</translation>
    </message>
    <message>
        <source>nothing was drawn: the display shows no window, or the memory does not suffice for a picture of %1x%2 pixels</source>
        <translation>rien n’a été dessiné&#xa0;: l’affichage ne montre pas de fenêtre, ou la mémoire ne suffit pas pour une image de %1x%2 pixels</translation>
    </message>
    <message>
        <source>the picture is %1 pixels large, the reference %2</source>
        <translation>l’image a une taille de %1 pixels, la référence de %2</translation>
    </message>
    <message>
        <source>the picture differs from the reference by %1 percent; the threshold is %2</source>
        <translation>l’image diffère de la référence de %1 pour cent&#x202f;; le seuil est %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos;: %2</source>
        <translation>«&#xa0;%1&#xa0;»&#xa0;: %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1&#xa0;: %2</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>interrompu</translation>
    </message>
    <message>
        <source>not enough memory</source>
        <translation>mémoire insuffisante</translation>
    </message>
    <message>
        <source>the colour engine failed unexpectedly</source>
        <translation>le calcul des couleurs a échoué de façon inattendue</translation>
    </message>
    <message>
        <source>the file name is empty</source>
        <translation>le nom du fichier est vide</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>fichier introuvable</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>ce n’est pas un fichier ordinaire</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>lecture impossible&#xa0;: %1</translation>
    </message>
    <message>
        <source>the file is too large to be an ICC profile</source>
        <translation>le fichier est trop grand pour un profil ICC</translation>
    </message>
    <message>
        <source>the profile is empty</source>
        <translation>le profil est vide</translation>
    </message>
    <message>
        <source>too large to be an ICC profile</source>
        <translation>trop grand pour un profil ICC</translation>
    </message>
    <message>
        <source>not an ICC profile</source>
        <translation>ce n’est pas un profil ICC</translation>
    </message>
    <message>
        <source>not a usable ICC profile: %1</source>
        <translation>ce n’est pas un profil ICC utilisable&#xa0;: %1</translation>
    </message>
    <message>
        <source>the profile&apos;s tag table is damaged</source>
        <translation>la table des balises du profil est endommagée</translation>
    </message>
    <message>
        <source>the tag &apos;%1&apos; declares more data than it holds or than a device needs</source>
        <translation>la balise «&#xa0;%1&#xa0;» déclare plus de données qu’elle n’en contient ou qu’un périphérique n’en demande</translation>
    </message>
    <message>
        <source>there is no profile</source>
        <translation>il n’y a pas de profil</translation>
    </message>
    <message>
        <source>the request names no profile and no saved gamut</source>
        <translation>la demande ne nomme ni profil ni gamut enregistré</translation>
    </message>
    <message>
        <source>%1 is not a rendering intent</source>
        <translation>%1 n’est pas une intention de rendu</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a setting</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un réglage</translation>
    </message>
    <message>
        <source>a device link has no gamut of its own</source>
        <translation>un profil de liaison (device link) n’a pas de gamut propre</translation>
    </message>
    <message>
        <source>an abstract profile has no device and so no gamut</source>
        <translation>un profil abstrait n’a pas de périphérique et donc pas de gamut</translation>
    </message>
    <message>
        <source>a list of named colours has no gamut surface</source>
        <translation>une liste de couleurs nommées n’a pas de surface de gamut</translation>
    </message>
    <message>
        <source>profiles of class &apos;%1&apos; have no gamut</source>
        <translation>les profils de la classe «&#xa0;%1&#xa0;» n’ont pas de gamut</translation>
    </message>
    <message>
        <source>%1 is not a device colour space and has no gamut</source>
        <translation>%1 n’est pas un espace de couleurs de périphérique et n’a pas de gamut</translation>
    </message>
    <message>
        <source>a gamut needs at least three channels; grey has one</source>
        <translation>un gamut demande au moins trois canaux&#x202f;; le gris en a un</translation>
    </message>
    <message>
        <source>a gamut needs at least three channels; this profile has two</source>
        <translation>un gamut demande au moins trois canaux&#x202f;; ce profil en a deux</translation>
    </message>
    <message>
        <source>the 11-grid is defined for three channels; this profile has %1</source>
        <translation>la grille de 11 est définie pour trois canaux&#x202f;; ce profil en a %1</translation>
    </message>
    <message>
        <source>the device colour space &apos;%1&apos; is unknown</source>
        <translation>l’espace de couleurs de périphérique «&#xa0;%1&#xa0;» est inconnu</translation>
    </message>
    <message>
        <source>the profile has no usable transform from device to Lab</source>
        <translation>le profil n’a pas de transformation utilisable du périphérique vers Lab</translation>
    </message>
    <message>
        <source>the profile has no usable transform from device to Lab: %1</source>
        <translation>le profil n’a pas de transformation utilisable du périphérique vers Lab&#xa0;: %1</translation>
    </message>
    <message>
        <source>the profile gives Lab values that are NaN or out of range</source>
        <translation>le profil donne des valeurs Lab qui sont NaN ou hors limites</translation>
    </message>
    <message>
        <source>the colours of the profile span no volume</source>
        <translation>les couleurs du profil ne forment pas de volume</translation>
    </message>
    <message>
        <source>the gamut&apos;s volume is less than 1 cubic dE</source>
        <translation>le volume du gamut est inférieur à 1&#xa0;ΔE³</translation>
    </message>
    <message>
        <source>the gamut is concave, which cannot be resolved with so many channels</source>
        <translation>le gamut est concave, ce qui ne peut pas être résolu avec autant de canaux</translation>
    </message>
    <message>
        <source>the surface found for this device self-intersects</source>
        <translation>la surface trouvée pour ce périphérique se recoupe elle-même</translation>
    </message>
    <message>
        <source>the device&apos;s colours overlap too often for a surface to be found</source>
        <translation>les couleurs du périphérique se superposent trop souvent pour qu’une surface soit trouvée</translation>
    </message>
    <message>
        <source>the surface has no faces</source>
        <translation>la surface n’a pas de faces</translation>
    </message>
    <message>
        <source>the surface has vertices that are NaN or out of range</source>
        <translation>la surface a des sommets qui sont NaN ou hors limites</translation>
    </message>
    <message>
        <source>the surface&apos;s faces refer to vertices that do not exist</source>
        <translation>les faces de la surface renvoient à des sommets qui n’existent pas</translation>
    </message>
    <message>
        <source>the surface is not closed</source>
        <translation>la surface n’est pas fermée</translation>
    </message>
    <message>
        <source>the surface is not manifold</source>
        <translation>la surface n’est pas une variété</translation>
    </message>
    <message>
        <source>the surface is inside out</source>
        <translation>la surface est retournée&#xa0;: l’intérieur est à l’extérieur</translation>
    </message>
    <message>
        <source>the surfaces of the gamuts cross too often for a body to be made</source>
        <translation>les surfaces des gamuts se coupent trop souvent pour qu’un solide soit formé</translation>
    </message>
    <message>
        <source>the surface self-intersects</source>
        <translation>la surface se recoupe elle-même</translation>
    </message>
    <message>
        <source>the surface&apos;s faces are too close together to be checked for self-intersection</source>
        <translation>les faces de la surface sont trop proches les unes des autres pour vérifier si elle se recoupe elle-même</translation>
    </message>
    <message>
        <source>not a saved gamut</source>
        <translation>ce n’est pas un gamut enregistré</translation>
    </message>
    <message>
        <source>the saved gamut has the unknown version &apos;%1&apos;</source>
        <translation>le gamut enregistré a la version inconnue «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>the saved gamut is damaged</source>
        <translation>le gamut enregistré est endommagé</translation>
    </message>
    <message>
        <source>the saved gamut contains invalid values</source>
        <translation>le gamut enregistré contient des valeurs non valides</translation>
    </message>
    <message>
        <source>the saved gamut&apos;s faces are too close together to be checked for self-intersection</source>
        <translation>les faces du gamut enregistré sont trop proches les unes des autres pour vérifier si elles se recoupent</translation>
    </message>
    <message>
        <source>the saved gamut&apos;s surface self-intersects</source>
        <translation>la surface du gamut enregistré se recoupe elle-même</translation>
    </message>
    <message>
        <source>the display has no OpenGL</source>
        <translation>l’affichage n’offre pas OpenGL</translation>
    </message>
    <message>
        <source>the display has only OpenGL ES %1; desktop OpenGL 2.1 is needed</source>
        <translation>l’affichage n’offre qu’OpenGL ES %1&#x202f;; OpenGL 2.1 pour ordinateur est nécessaire</translation>
    </message>
    <message>
        <source>the display has only OpenGL %1; version 2.1 is needed</source>
        <translation>l’affichage n’offre qu’OpenGL %1&#x202f;; la version 2.1 est nécessaire</translation>
    </message>
    <message>
        <source>the display has only the core profile of OpenGL %1; the compatibility profile is needed</source>
        <translation>l’affichage n’offre que le profil «&#xa0;core&#xa0;» d’OpenGL %1&#x202f;; le profil de compatibilité est nécessaire</translation>
    </message>
    <message>
        <source>the display&apos;s OpenGL %1 has no shaders of version 1.20</source>
        <translation>l’OpenGL %1 de l’affichage n’a pas de shaders de version 1.20</translation>
    </message>
    <message>
        <source>the display&apos;s OpenGL %1 has no framebuffers that can be copied</source>
        <translation>l’OpenGL %1 de l’affichage n’a pas de framebuffers qui puissent être copiés</translation>
    </message>
    <message>
        <source>OpenGL cannot be used in the window</source>
        <translation>OpenGL ne peut pas être utilisé dans la fenêtre</translation>
    </message>
    <message>
        <source>the file is too large to be a shader</source>
        <translation>le fichier est trop grand pour un shader</translation>
    </message>
    <message>
        <source>the shader cannot be built: %1</source>
        <translation>le shader ne peut pas être compilé&#xa0;: %1</translation>
    </message>
    <message>
        <source>the session was saved by a newer version of this program (format %1; this version reads up to %2)</source>
        <translation>la session a été enregistrée par une version plus récente de ce programme (format %1&#x202f;; cette version lit jusqu’à %2)</translation>
    </message>
    <message>
        <source>gamuts are saved as .ply, .obj, .stl, .gltf, .x3d, .json, .icc or .kvgamut</source>
        <translation>les gamuts sont enregistrés en .ply, .obj, .stl, .gltf, .x3d, .json, .icc ou .kvgamut</translation>
    </message>
    <message>
        <source>the %1 picture has no embedded profile; the colours of its pixels, taken as sRGB, are a gamut with @pixels after the name</source>
        <translation>l’image %1 n’a pas de profil incorporé&#x202f;; avec @pixels après le nom, les couleurs de ses pixels, interprétées comme sRGB, forment un gamut</translation>
    </message>
    <message>
        <source>CMYK and floating-point pictures need a profile: embed it, or name it with --photo-profile, after @pixels with --points-space</source>
        <translation>les images CMJN et en virgule flottante demandent un profil&#xa0;: incorporez-le, ou indiquez-le avec --photo-profile, après @pixels avec --points-space</translation>
    </message>
    <message>
        <source>no such file; did you mean %1?</source>
        <translation>fichier introuvable&#xa0;; vouliez-vous dire %1&#xa0;?</translation>
    </message>
</context>
<context>
    <name>SectionBar</name>
    <message>
        <source>Fixed scale</source>
        <translation>Échelle fixe</translation>
    </message>
    <message>
        <source>Kind of section</source>
        <translation>Type de coupe</translation>
    </message>
    <message>
        <source>Lightness</source>
        <translation>Clarté</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>Teinte</translation>
    </message>
    <message>
        <source>Rings</source>
        <translation>Anneaux</translation>
    </message>
    <message>
        <source>Hue angle</source>
        <translation>Angle de teinte</translation>
    </message>
    <message>
        <source>Hue angle: 0° is +a*, 90° is +b*</source>
        <translation>Angle de teinte&#xa0;: 0° est +a*, 90° est +b*</translation>
    </message>
    <message>
        <source>All sections have the same scale</source>
        <translation>Toutes les coupes ont la même échelle</translation>
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
        <translation>Perceptif</translation>
    </message>
    <message>
        <source>Relative colorimetric</source>
        <translation>Colorimétrie relative</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Saturation</translation>
    </message>
    <message>
        <source>Absolute colorimetric</source>
        <translation>Colorimétrie absolue</translation>
    </message>
    <message>
        <source>, black point compensated</source>
        <translation>, avec compensation du point noir</translation>
    </message>
    <message>
        <source>, not adapted</source>
        <translation>, sans adaptation</translation>
    </message>
    <message>
        <source>, not adapted, relative to D65</source>
        <translation>, sans adaptation, par rapport à D65</translation>
    </message>
    <message>
        <source>Given surface</source>
        <translation>Surface donnée</translation>
    </message>
    <message>
        <source>Convex hull</source>
        <translation>Enveloppe convexe</translation>
    </message>
    <message>
        <source>As in the profile</source>
        <translation>Comme dans le profil</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucune</translation>
    </message>
    <message>
        <source>None, relative to D65</source>
        <translation>Aucune, par rapport à D65</translation>
    </message>
    <message>
        <source>Table: %1; the profile has none for this intent</source>
        <translation>Table&#xa0;: %1&#x202f;; le profil n’en a pas pour cette intention de rendu</translation>
    </message>
    <message>
        <source>Table: %1</source>
        <translation>Table&#xa0;: %1</translation>
    </message>
    <message>
        <source>Media white: %1</source>
        <translation>Blanc du support&#xa0;: %1</translation>
    </message>
    <message>
        <source>Adapted to D50 by the profile</source>
        <translation>Adapté à D50 par le profil</translation>
    </message>
    <message>
        <source>The profile&apos;s adaptation to D50 is undone</source>
        <translation>L’adaptation du profil à D50 est annulée</translation>
    </message>
    <message>
        <source>The profile contains no adaptation to undo</source>
        <translation>Le profil ne contient pas d’adaptation à annuler</translation>
    </message>
    <message>
        <source>Mapped to L* 0: %1</source>
        <translation>Ramené à L* 0&#xa0;: %1</translation>
    </message>
    <message>
        <source>Encoding (cicp): %1</source>
        <translation>Codage (cicp)&#xa0;: %1</translation>
    </message>
    <message>
        <source>The volume is relative to the profile&apos;s white; brighter light is not counted</source>
        <translation>Le volume se rapporte au blanc du profil&#x202f;; la lumière plus intense n’est pas comptée</translation>
    </message>
    <message>
        <source>%1 ΔE inside %2</source>
        <translation>%1&#xa0;ΔE à l’intérieur de %2</translation>
    </message>
    <message>
        <source>%1 ΔE outside %2</source>
        <translation>%1&#xa0;ΔE à l’extérieur de %2</translation>
    </message>
    <message>
        <source>With more than %1 channels, colours of mixtures beyond the sampled ones are not looked for; the uncertainty does not include them</source>
        <translation>Au-delà de %1 canaux, les couleurs de mélanges au-delà de celles qui sont échantillonnées ne sont pas recherchées&#xa0;; l’incertitude ne les contient pas</translation>
    </message>
</context>
<context>
    <name>SlicePanel</name>
    <message>
        <source>Gamut slice at L* = %1 in CIELAB (D50)</source>
        <translation>Coupe du gamut à L* = %1 dans CIELAB (D50)</translation>
    </message>
    <message>
        <source>area %1</source>
        <translation>aire %1</translation>
    </message>
    <message>
        <source>inside %1: %2</source>
        <translation>à l’intérieur de %1&#xa0;: %2</translation>
    </message>
    <message>
        <source>outside %1: %2</source>
        <translation>à l’extérieur de %1&#xa0;: %2</translation>
    </message>
    <message>
        <source>Section of the gamuts</source>
        <translation>Coupe des gamuts</translation>
    </message>
    <message>
        <source>Gamut rings in CIELAB (D50)</source>
        <translation>Anneaux de gamut dans CIELAB (D50)</translation>
    </message>
    <message>
        <source>Gamut slice at hue %1° in CIELAB (D50)</source>
        <translation>Coupe du gamut à la teinte %1° dans CIELAB (D50)</translation>
    </message>
    <message>
        <source>volume %1</source>
        <translation>volume %1</translation>
    </message>
</context>
<context>
    <name>ToolBar</name>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>Cadrer</translation>
    </message>
    <message>
        <source>Legend</source>
        <translation>Légende</translation>
    </message>
    <message>
        <source>Only active</source>
        <translation>Seul l’actif</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Couper</translation>
    </message>
    <message>
        <source>Section</source>
        <translation>Coupe</translation>
    </message>
    <message>
        <source>Cursor</source>
        <translation>Curseur</translation>
    </message>
    <message>
        <source>Present</source>
        <translation>Présenter</translation>
    </message>
    <message>
        <source>Find…</source>
        <translation>Chercher…</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Outils</translation>
    </message>
</context>
<context>
    <name>UnsavedQuestion</name>
    <message>
        <source>Unsaved changes</source>
        <translation>Modifications non enregistrées</translation>
    </message>
    <message>
        <source>Save the changes as a session?</source>
        <translation>Enregistrer les modifications comme session&#x202f;?</translation>
    </message>
    <message>
        <source>Save the changes of “%1”?</source>
        <translation>Enregistrer les modifications de «&#xa0;%1&#xa0;»&#x202f;?</translation>
    </message>
    <message>
        <source>Otherwise they are lost.</source>
        <translation>Sinon, elles seront perdues.</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Enregistrer</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>A&amp;bandonner</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Annuler</translation>
    </message>
</context>
<context>
    <name>ViewArea</name>
    <message>
        <source>Gamuts in Lab space</source>
        <translation>Gamuts dans l’espace Lab</translation>
    </message>
</context>
<context>
    <name>ViewMenu</name>
    <message>
        <source>&amp;View</source>
        <translation>Affic&amp;hage</translation>
    </message>
    <message>
        <source>F&amp;ull screen</source>
        <translation>Plein écra&amp;n</translation>
    </message>
    <message>
        <source>&amp;Reset camera</source>
        <translation>&amp;Réinitialiser la caméra</translation>
    </message>
    <message>
        <source>&amp;Frame the gamuts</source>
        <translation>Ca&amp;drer les gamuts</translation>
    </message>
    <message>
        <source>&amp;Orthogonal</source>
        <translation>Projection &amp;orthogonale</translation>
    </message>
    <message>
        <source>&amp;Wider angle</source>
        <translation>Angle plus &amp;large</translation>
    </message>
    <message>
        <source>&amp;Narrower angle</source>
        <translation>Angle plus é&amp;troit</translation>
    </message>
    <message>
        <source>&amp;Look from</source>
        <translation>&amp;Vue</translation>
    </message>
    <message>
        <source>&amp;Top</source>
        <translation>De de&amp;ssus</translation>
    </message>
    <message>
        <source>&amp;Bottom</source>
        <translation>De desso&amp;us</translation>
    </message>
    <message>
        <source>&amp;Front: a* across</source>
        <translation>De &amp;face&#xa0;: a* horizontal</translation>
    </message>
    <message>
        <source>Bac&amp;k</source>
        <translation>De de&amp;rrière</translation>
    </message>
    <message>
        <source>&amp;Right: b* across</source>
        <translation>De &amp;droite&#xa0;: b* horizontal</translation>
    </message>
    <message>
        <source>&amp;Left</source>
        <translation>De &amp;gauche</translation>
    </message>
    <message>
        <source>&amp;Cut at the lightness</source>
        <translation>&amp;Couper à la clarté</translation>
    </message>
    <message>
        <source>&amp;Section without cutting</source>
        <translation>Coupe &amp;sans couper les gamuts</translation>
    </message>
    <message>
        <source>Section panel in &amp;true colours</source>
        <translation>Coupe en vraies co&amp;uleurs</translation>
    </message>
    <message>
        <source>Lighter section</source>
        <translation>Coupe plus claire</translation>
    </message>
    <message>
        <source>Darker section</source>
        <translation>Coupe plus sombre</translation>
    </message>
    <message>
        <source>&amp;Axes</source>
        <translation>&amp;Axes</translation>
    </message>
    <message>
        <source>&amp;Grid</source>
        <translation>&amp;Grille</translation>
    </message>
    <message>
        <source>ab &amp;plane</source>
        <translation>&amp;Plan ab</translation>
    </message>
    <message>
        <source>Scales and l&amp;egend</source>
        <translation>Éc&amp;helles et légende</translation>
    </message>
    <message>
        <source>Reset panels</source>
        <translation>Réinitialiser les panneaux</translation>
    </message>
    <message>
        <source>Present</source>
        <translation>Présenter</translation>
    </message>
    <message>
        <source>Only the view and the legend, in large type; Esc returns</source>
        <translation>Seulement la vue et la légende, en grands caractères&#x202f;; Échap revient</translation>
    </message>
    <message>
        <source>Colour cursor</source>
        <translation>Curseur de couleur</translation>
    </message>
    <message>
        <source>Chooses colours with the keyboard: arrow keys, Page Up, Page Down, Enter</source>
        <translation>Choisit des couleurs au clavier&#xa0;: touches fléchées, Page préc., Page suiv., Entrée</translation>
    </message>
    <message>
        <source>Section panel</source>
        <translation>Panneau de coupe</translation>
    </message>
    <message>
        <source>At a &amp;lightness</source>
        <translation>À une &amp;clarté</translation>
    </message>
    <message>
        <source>At a &amp;hue</source>
        <translation>À une &amp;teinte</translation>
    </message>
    <message>
        <source>Gamut &amp;rings</source>
        <translation>A&amp;nneaux de gamut</translation>
    </message>
    <message>
        <source>&amp;Next hue</source>
        <translation>Teinte &amp;suivante</translation>
    </message>
    <message>
        <source>&amp;Previous hue</source>
        <translation>Teinte &amp;précédente</translation>
    </message>
</context>
<context>
    <name>WelcomePage</name>
    <message>
        <source>Open a profile to see its gamut</source>
        <translation>Ouvrez un profil pour voir son gamut</translation>
    </message>
    <message>
        <source>Drop ICC profiles, pictures with a profile or saved gamuts here.
With two gamuts open they are compared. Measurements (CGATS, CxF, CSV) show as points.</source>
        <translation>Déposez ici des profils ICC, des images avec profil ou des gamuts enregistrés.
Deux gamuts ouverts sont comparés. Les mesures (CGATS, CxF, CSV) apparaissent sous forme de points.</translation>
    </message>
    <message>
        <source>&amp;Open a file…</source>
        <translation>Ou&amp;vrir un fichier…</translation>
    </message>
    <message>
        <source>Compare s&amp;RGB with Display P3</source>
        <translation>&amp;Comparer sRGB à Display P3</translation>
    </message>
</context>
</TS>
