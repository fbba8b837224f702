<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>AnnotationBinding</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>No gamut is shown</source>
        <translation>No se muestra ninguna gama</translation>
    </message>
</context>
<context>
    <name>BackgroundMenu</name>
    <message>
        <source>&amp;Background</source>
        <translation>&amp;Fondo</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>&amp;Oscuro</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Claro</translation>
    </message>
    <message>
        <source>&amp;Neutral grey</source>
        <translation>&amp;Gris neutro</translation>
    </message>
</context>
<context>
    <name>ClipControl</name>
    <message>
        <source>Cu&amp;t</source>
        <translation>Cor&amp;tar</translation>
    </message>
    <message>
        <source>Lightness of the section</source>
        <translation>Claridad de la sección</translation>
    </message>
    <message>
        <source>Cut the gamuts off above this lightness</source>
        <translation>Cortar las gamas por encima de esta claridad</translation>
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
        <translation>dentro</translation>
    </message>
    <message>
        <source>edge</source>
        <translation>borde</translation>
    </message>
    <message>
        <source>outside</source>
        <translation>fuera</translation>
    </message>
    <message>
        <source>Colour %1</source>
        <translation>Color %1</translation>
    </message>
    <message>
        <source>The screen cannot show this colour; the patch shows a similar one</source>
        <translation>La pantalla no puede mostrar este color; el recuadro muestra uno parecido</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Color</translation>
    </message>
    <message>
        <source>Nearest in %1</source>
        <translation>El más cercano en %1</translation>
    </message>
    <message>
        <source>Device values, %1</source>
        <translation>Valores del dispositivo, %1</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Archivo</translation>
    </message>
    <message>
        <source>CIEDE2000 to the nearest colour of %1; 0 inside</source>
        <translation>CIEDE2000 hasta el color más cercano de %1; 0 dentro</translation>
    </message>
    <message>
        <source>What the profile of %1 makes of the colour, in percent</source>
        <translation>Lo que el perfil de %1 hace del color, en porcentaje</translation>
    </message>
</context>
<context>
    <name>ColorsPanel</name>
    <message>
        <source>Colours</source>
        <translation>Colores</translation>
    </message>
    <message>
        <source>Copy rows</source>
        <translation>Copiar las filas</translation>
    </message>
    <message>
        <source>Copy all rows</source>
        <translation>Copiar todas las filas</translation>
    </message>
    <message>
        <source>Save the table as CSV…</source>
        <translation>Guardar la tabla como CSV…</translation>
    </message>
    <message>
        <source>Search by name</source>
        <translation>Buscar por nombre</translation>
    </message>
    <message>
        <source>Search colours by name</source>
        <translation>Buscar colores por su nombre</translation>
    </message>
    <message>
        <source>Zone of the active gamut</source>
        <translation>Zona de la gama activa</translation>
    </message>
    <message>
        <source>Which colours are listed, by their place in the active gamut</source>
        <translation>Qué colores se muestran, según su lugar respecto a la gama activa</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Todos</translation>
    </message>
    <message>
        <source>Outside</source>
        <translation>Fuera</translation>
    </message>
    <message>
        <source>Edge</source>
        <translation>En el borde</translation>
    </message>
    <message>
        <source>Inside</source>
        <translation>Dentro</translation>
    </message>
    <message>
        <source>Colours: %1</source>
        <translation>Colores: %1</translation>
    </message>
    <message>
        <source>Colours: %1 of %2</source>
        <translation>Colores: %1 de %2</translation>
    </message>
    <message>
        <source>%1, computing: %2 %</source>
        <translation>%1, calculando: %2&#xa0;%</translation>
    </message>
</context>
<context>
    <name>CommandSearch</name>
    <message>
        <source>Find a command</source>
        <translation>Buscar un comando</translation>
    </message>
    <message>
        <source>Words of the command</source>
        <translation>Palabras del comando</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Comandos</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Comando</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menú</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Tecla</translation>
    </message>
</context>
<context>
    <name>ComparisonModel</name>
    <message>
        <source>computing…</source>
        <translation>calculando…</translation>
    </message>
    <message>
        <source>the active gamut</source>
        <translation>la gama activa</translation>
    </message>
    <message>
        <source>Intersection</source>
        <translation>Intersección</translation>
    </message>
    <message>
        <source>Union</source>
        <translation>Unión</translation>
    </message>
    <message>
        <source>Covers</source>
        <translation>Cubre</translation>
    </message>
    <message>
        <source>Inside</source>
        <translation>Cubierta</translation>
    </message>
    <message>
        <source>Gamut</source>
        <translation>Gama</translation>
    </message>
    <message>
        <source>Intent</source>
        <translation>Propósito de representación</translation>
    </message>
    <message>
        <source>White L* a* b*</source>
        <translation>Blanco L* a* b*</translation>
    </message>
    <message>
        <source>Volume ΔE³</source>
        <translation>Volumen ΔE³</translation>
    </message>
    <message>
        <source>Uncertainty</source>
        <translation>Incertidumbre</translation>
    </message>
    <message>
        <source>Intersection with %1</source>
        <translation>Intersección con %1</translation>
    </message>
    <message>
        <source>Union with %1</source>
        <translation>Unión con %1</translation>
    </message>
    <message>
        <source>Share of %1 that this one covers</source>
        <translation>Parte de %1 que cubre esta gama</translation>
    </message>
    <message>
        <source>Share of this one that %1 covers</source>
        <translation>Parte de esta gama que cubre %1</translation>
    </message>
    <message>
        <source>White L*	White a*	White b*</source>
        <translation>Blanco L*	Blanco a*	Blanco b*</translation>
    </message>
</context>
<context>
    <name>ComparisonPanel</name>
    <message>
        <source>The gamuts have different intents: %1. Choose one intent to compare the devices.</source>
        <translation>Las gamas tienen propósitos distintos: %1. Elija un solo propósito para comparar los dispositivos.</translation>
    </message>
</context>
<context>
    <name>ComparisonTable</name>
    <message>
        <source>Comparison of the gamuts</source>
        <translation>Comparación de las gamas</translation>
    </message>
</context>
<context>
    <name>CoverageModel</name>
    <message>
        <source>computing…</source>
        <translation>calculando…</translation>
    </message>
    <message>
        <source>Share of %1 that %2 covers</source>
        <translation>Parte de %1 que cubre %2</translation>
    </message>
</context>
<context>
    <name>CoverageTable</name>
    <message>
        <source>Coverage of all gamuts</source>
        <translation>Cobertura de todas las gamas</translation>
    </message>
    <message>
        <source>The share of the volume of each row&apos;s gamut that the column&apos;s gamut covers.</source>
        <translation>La parte del volumen de la gama de la fila que cubre la gama de la columna.</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copiar</translation>
    </message>
</context>
<context>
    <name>EditMenu</name>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Edición</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Deshacer</translation>
    </message>
    <message>
        <source>R&amp;edo</source>
        <translation>&amp;Rehacer</translation>
    </message>
    <message>
        <source>Copy &amp;picture</source>
        <translation>Copiar &amp;imagen</translation>
    </message>
    <message>
        <source>Copy &amp;comparison</source>
        <translation>Copiar &amp;comparación</translation>
    </message>
    <message>
        <source>Copy &amp;table of colours</source>
        <translation>Copiar &amp;tabla de colores</translation>
    </message>
    <message>
        <source>Copy c&amp;licked colour</source>
        <translation>Copiar color &amp;señalado</translation>
    </message>
    <message>
        <source>Copy c&amp;amera</source>
        <translation>Copiar cá&amp;mara</translation>
    </message>
    <message>
        <source>Pa&amp;ste camera</source>
        <translation>&amp;Pegar cámara</translation>
    </message>
</context>
<context>
    <name>FileDialogs</name>
    <message>
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message>
        <source>All that can be opened (*.icc *.icm *.png *.jpg *.jpeg *.tif *.tiff *.kvgamut *.kvsession *.gam *.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)</source>
        <translation>Todo lo que se puede abrir (*.icc *.icm *.png *.jpg *.jpeg *.tif *.tiff *.kvgamut *.kvsession *.gam *.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)</translation>
    </message>
    <message>
        <source>Profiles (*.icc *.icm)</source>
        <translation>Perfiles (*.icc *.icm)</translation>
    </message>
    <message>
        <source>Pictures with a profile (*.png *.jpg *.jpeg *.tif *.tiff)</source>
        <translation>Imágenes con perfil (*.png *.jpg *.jpeg *.tif *.tiff)</translation>
    </message>
    <message>
        <source>Saved gamuts (*.kvgamut)</source>
        <translation>Gamas guardadas (*.kvgamut)</translation>
    </message>
    <message>
        <source>Measurements (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)</source>
        <translation>Mediciones (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Todos los archivos (*)</translation>
    </message>
    <message>
        <source>Add points</source>
        <translation>Añadir puntos</translation>
    </message>
    <message>
        <source>Measurements and pictures (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl *.png *.jpg *.jpeg *.tif *.tiff)</source>
        <translation>Mediciones e imágenes (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl *.png *.jpg *.jpeg *.tif *.tiff)</translation>
    </message>
    <message>
        <source>Restore session</source>
        <translation>Restaurar sesión</translation>
    </message>
    <message>
        <source>Sessions (*.kvsession)</source>
        <translation>Sesiones (*.kvsession)</translation>
    </message>
    <message>
        <source>Save session</source>
        <translation>Guardar sesión</translation>
    </message>
    <message>
        <source>Save picture</source>
        <translation>Guardar imagen</translation>
    </message>
    <message>
        <source>Pictures (*.png *.jpg *.tif *.webp *.svg *.pdf)</source>
        <translation>Imágenes (*.png *.jpg *.tif *.webp *.svg *.pdf)</translation>
    </message>
    <message>
        <source>Save section</source>
        <translation>Guardar sección</translation>
    </message>
    <message>
        <source>Drawings (*.svg *.pdf)</source>
        <translation>Dibujos (*.svg *.pdf)</translation>
    </message>
    <message>
        <source>Save page to send</source>
        <translation>Guardar página para enviar</translation>
    </message>
    <message>
        <source>Web pages (*.html)</source>
        <translation>Páginas web (*.html)</translation>
    </message>
    <message>
        <source>Save table of colours</source>
        <translation>Guardar tabla de colores</translation>
    </message>
    <message>
        <source>Tables (*.csv)</source>
        <translation>Tablas (*.csv)</translation>
    </message>
    <message>
        <source>Save gamut as mesh</source>
        <translation>Guardar gama como malla</translation>
    </message>
    <message>
        <source>Meshes (*.ply *.obj *.stl *.gltf *.x3d *.json)</source>
        <translation>Mallas (*.ply *.obj *.stl *.gltf *.x3d *.json)</translation>
    </message>
    <message>
        <source>Profiles (*.icc)</source>
        <translation>Perfiles (*.icc)</translation>
    </message>
</context>
<context>
    <name>FileMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Archivo</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>&amp;Abrir…</translation>
    </message>
    <message>
        <source>Add &amp;points or the pixels of a picture…</source>
        <translation>Añadir &amp;puntos o los píxeles de una imagen…</translation>
    </message>
    <message>
        <source>R&amp;estore session…</source>
        <translation>&amp;Restaurar sesión…</translation>
    </message>
    <message>
        <source>Save p&amp;icture…</source>
        <translation>Guardar &amp;imagen…</translation>
    </message>
    <message>
        <source>Save sec&amp;tion…</source>
        <translation>Guardar s&amp;ección…</translation>
    </message>
    <message>
        <source>Save pa&amp;ge to send…</source>
        <translation>Guardar página para en&amp;viar…</translation>
    </message>
    <message>
        <source>Save t&amp;able of colours…</source>
        <translation>Guardar &amp;tabla de colores…</translation>
    </message>
    <message>
        <source>&amp;Close everything</source>
        <translation>&amp;Cerrar todo</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Salir</translation>
    </message>
    <message>
        <source>Open &amp;built-in profile</source>
        <translation>Abrir perfil integra&amp;do</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>Abrir recie&amp;nte</translation>
    </message>
    <message>
        <source>Save gamut as &amp;mesh…</source>
        <translation>Guardar gama como &amp;malla…</translation>
    </message>
    <message>
        <source>&amp;Load files again</source>
        <translation>Vo&amp;lver a cargar los archivos</translation>
    </message>
    <message>
        <source>Load changed files a&amp;utomatically</source>
        <translation>Cargar a&amp;utomáticamente los archivos cambiados</translation>
    </message>
    <message>
        <source>&amp;Save session</source>
        <translation>&amp;Guardar sesión</translation>
    </message>
    <message>
        <source>Sa&amp;ve session as…</source>
        <translation>Guardar sesión c&amp;omo…</translation>
    </message>
</context>
<context>
    <name>FindingPanel</name>
    <message>
        <source>The clicked colour on this screen</source>
        <translation>El color señalado en esta pantalla</translation>
    </message>
    <message>
        <source>A corner is missing if the screen cannot show the colour</source>
        <translation>Falta una esquina si la pantalla no puede mostrar el color</translation>
    </message>
    <message>
        <source>Click a gamut or a point to see its colour here.</source>
        <translation>Haga clic en una gama o un punto para ver aquí su color.</translation>
    </message>
</context>
<context>
    <name>GamutInformation</name>
    <message>
        <source>Description</source>
        <translation>Descripción</translation>
    </message>
    <message>
        <source>Class</source>
        <translation>Clase</translation>
    </message>
    <message>
        <source>Device colours</source>
        <translation>Colores del dispositivo</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n channels</source>
        <translation>
            <numerusform>%1, %n canal</numerusform>
            <numerusform>%1, %n canales</numerusform>
        </translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Versión</translation>
    </message>
    <message>
        <source>Intents</source>
        <translation>Propósitos</translation>
    </message>
    <message>
        <source>Copyright</source>
        <translation>Derechos de autor</translation>
    </message>
    <message>
        <source>Saved of</source>
        <translation>Guardada a partir de</translation>
    </message>
    <message>
        <source>Computed with</source>
        <translation>Calculada con</translation>
    </message>
    <message>
        <source>Conversion to Lab</source>
        <translation>Conversión a Lab</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volumen</translation>
    </message>
    <message>
        <source>Volume of the surface</source>
        <translation>Volumen de la superficie</translation>
    </message>
    <message>
        <source>White</source>
        <translation>Blanco</translation>
    </message>
    <message>
        <source>Black</source>
        <translation>Negro</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>Método</translation>
    </message>
    <message>
        <source>Grid</source>
        <translation>Rejilla</translation>
    </message>
    <message>
        <source>Triangles</source>
        <translation>Triángulos</translation>
    </message>
    <message>
        <source>Folded share</source>
        <translation>Parte plegada</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Duración</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Archivo</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Tipo</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notas</translation>
    </message>
    <message>
        <source>Information about %1</source>
        <translation>Información sobre %1</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copiar</translation>
    </message>
</context>
<context>
    <name>GamutListModel</name>
    <message>
        <source>%1 – %2 %</source>
        <translation>%1 – %2&#xa0;%</translation>
    </message>
    <message>
        <source>%1
is being computed</source>
        <translation>%1
calculando</translation>
    </message>
</context>
<context>
    <name>GamutMenu</name>
    <message>
        <source>&amp;Gamut</source>
        <translation>&amp;Gama</translation>
    </message>
    <message>
        <source>&amp;Next gamut</source>
        <translation>&amp;Siguiente gama</translation>
    </message>
    <message>
        <source>&amp;Remove gamut</source>
        <translation>&amp;Quitar gama</translation>
    </message>
    <message>
        <source>&amp;Black point compensation</source>
        <translation>Compensación de punto &amp;negro</translation>
    </message>
    <message>
        <source>&amp;Visible</source>
        <translation>&amp;Visible</translation>
    </message>
    <message>
        <source>&amp;Surface</source>
        <translation>Super&amp;ficie</translation>
    </message>
    <message>
        <source>Pro&amp;jection</source>
        <translation>Pro&amp;yección</translation>
    </message>
    <message>
        <source>&amp;Primaries</source>
        <translation>Pri&amp;marios</translation>
    </message>
    <message>
        <source>Smooth, flat, &amp;wireframe</source>
        <translation>Liso, facetado, &amp;alambre</translation>
    </message>
    <message>
        <source>More &amp;opaque</source>
        <translation>Más &amp;opaca</translation>
    </message>
    <message>
        <source>&amp;Less opaque</source>
        <translation>M&amp;enos opaca</translation>
    </message>
    <message>
        <source>&amp;Colour…</source>
        <translation>&amp;Color…</translation>
    </message>
    <message>
        <source>Own colo&amp;urs</source>
        <translation>Colores &amp;reales</translation>
    </message>
    <message>
        <source>Only this gamut</source>
        <translation>Solo esta gama</translation>
    </message>
    <message>
        <source>Information…</source>
        <translation>Información…</translation>
    </message>
    <message>
        <source>Coverage of all…</source>
        <translation>Cobertura de todas…</translation>
    </message>
</context>
<context>
    <name>GamutPanel</name>
    <message>
        <source>Gamuts</source>
        <translation>Gamas</translation>
    </message>
    <message>
        <source>Remove gamut</source>
        <translation>Quitar gama</translation>
    </message>
    <message>
        <source>&amp;Black point compensation</source>
        <translation>Compensación de punto &amp;negro</translation>
    </message>
    <message>
        <source>No effect with the absolute intent</source>
        <translation>Sin efecto con el propósito absoluto</translation>
    </message>
    <message>
        <source>automatic</source>
        <translation>automática</translation>
    </message>
    <message>
        <source>Samples along each device axis</source>
        <translation>Muestras a lo largo de cada eje del dispositivo</translation>
    </message>
    <message>
        <source>Computed with</source>
        <translation>Calculada con</translation>
    </message>
    <message>
        <source>&amp;Intent</source>
        <translation>&amp;Propósito</translation>
    </message>
    <message>
        <source>Adaptatio&amp;n</source>
        <translation>Adaptación del &amp;blanco</translation>
    </message>
    <message>
        <source>G&amp;rid</source>
        <translation>Re&amp;jilla</translation>
    </message>
    <message>
        <source>Adaptation of a display&apos;s colours to D50; only with the absolute intent</source>
        <translation>Adaptación de los colores de una pantalla a D50; solo con el propósito absoluto</translation>
    </message>
    <message>
        <source>Smooth</source>
        <translation>Liso</translation>
    </message>
    <message>
        <source>Flat</source>
        <translation>Facetado</translation>
    </message>
    <message>
        <source>Wireframe</source>
        <translation>Alambre</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Opacidad</translation>
    </message>
    <message>
        <source>Light from everywhere</source>
        <translation>Luz desde todos los lados</translation>
    </message>
    <message>
        <source>Right: pure colours. Left: the light models the surface.</source>
        <translation>Derecha: colores puros. Izquierda: la luz modela la superficie.</translation>
    </message>
    <message>
        <source>&amp;Choose…</source>
        <translation>Eleg&amp;ir…</translation>
    </message>
    <message>
        <source>&amp;Own colours</source>
        <translation>C&amp;olores reales</translation>
    </message>
    <message>
        <source>&amp;Surface</source>
        <translation>&amp;Superficie</translation>
    </message>
    <message>
        <source>Pro&amp;jection</source>
        <translation>Proye&amp;cción</translation>
    </message>
    <message>
        <source>&amp;Primaries</source>
        <translation>P&amp;rimarios</translation>
    </message>
    <message>
        <source>Shown as</source>
        <translation>Mostrada como</translation>
    </message>
    <message>
        <source>&amp;Mode</source>
        <translation>&amp;Modo</translation>
    </message>
    <message>
        <source>Opacit&amp;y</source>
        <translation>Opaci&amp;dad</translation>
    </message>
    <message>
        <source>P&amp;urity</source>
        <translation>Pure&amp;za</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Color</translation>
    </message>
    <message>
        <source>Colour of the gamut</source>
        <translation>Color de la gama</translation>
    </message>
    <message>
        <source>(%1 used)</source>
        <translation>(%1 usadas)</translation>
    </message>
</context>
<context>
    <name>HelpMenu</name>
    <message>
        <source>&amp;Help</source>
        <translation>A&amp;yuda</translation>
    </message>
    <message>
        <source>&amp;Keys…</source>
        <translation>&amp;Atajos de teclado…</translation>
    </message>
    <message>
        <source>&amp;Find a command…</source>
        <translation>&amp;Buscar un comando…</translation>
    </message>
    <message>
        <source>&amp;Tour…</source>
        <translation>&amp;Visita guiada…</translation>
    </message>
    <message>
        <source>&amp;About kvgamut…</source>
        <translation>A&amp;cerca de kvgamut…</translation>
    </message>
</context>
<context>
    <name>HelpPages</name>
    <message>
        <source>Shows and compares colour gamuts in CIE L*a*b*.</source>
        <translation>Muestra y compara gamas de color en CIE L*a*b*.</translation>
    </message>
    <message>
        <source>Licence: %1</source>
        <translation>Licencia: %1</translation>
    </message>
    <message>
        <source>Made with Qt %1</source>
        <translation>Hecho con Qt %1</translation>
    </message>
    <message>
        <source>Nothing leaves this computer: the program uses no network.</source>
        <translation>Nada sale de este ordenador: el programa no usa la red.</translation>
    </message>
    <message>
        <source>About kvgamut</source>
        <translation>Acerca de kvgamut</translation>
    </message>
    <message>
        <source>Tour</source>
        <translation>Visita guiada</translation>
    </message>
</context>
<context>
    <name>History</name>
    <message>
        <source>Add %1</source>
        <translation>añadir %1</translation>
    </message>
    <message>
        <source>Add %1 gamuts</source>
        <translation>añadir %1 gamas</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>quitar %1</translation>
    </message>
    <message>
        <source>Remove %1 gamuts</source>
        <translation>quitar %1 gamas</translation>
    </message>
    <message>
        <source>Change points</source>
        <translation>cambiar los puntos</translation>
    </message>
    <message>
        <source>Settings of %1</source>
        <translation>cambiar los ajustes de %1</translation>
    </message>
    <message>
        <source>Show %1</source>
        <translation>mostrar %1</translation>
    </message>
    <message>
        <source>Hide %1</source>
        <translation>ocultar %1</translation>
    </message>
    <message>
        <source>Look of %1</source>
        <translation>cambiar el aspecto de %1</translation>
    </message>
    <message>
        <source>Edge of points</source>
        <translation>cambiar el borde de los puntos</translation>
    </message>
    <message>
        <source>Close everything</source>
        <translation>cerrar todo</translation>
    </message>
    <message>
        <source>Several changes</source>
        <translation>varios cambios</translation>
    </message>
</context>
<context>
    <name>Inspector</name>
    <message>
        <source>%1, point %2</source>
        <translation>%1, punto %2</translation>
    </message>
    <message>
        <source>sRGB %1</source>
        <translation>sRGB %1</translation>
    </message>
    <message>
        <source>sRGB about %1</source>
        <translation>sRGB aprox. %1</translation>
    </message>
    <message>
        <source>Surface of %1</source>
        <translation>Superficie de %1</translation>
    </message>
    <message>
        <source>seen from %1 away</source>
        <translation>vista desde una distancia de %1</translation>
    </message>
    <message>
        <source>CIEDE2000 %1 to %2</source>
        <translation>CIEDE2000 %1 hasta %2</translation>
    </message>
    <message>
        <source>at the same hue %1 to %2</source>
        <translation>con el mismo tono %1 hasta %2</translation>
    </message>
    <message>
        <source>%1 makes it with %2 %</source>
        <translation>%1 lo produce con %2&#xa0;%</translation>
    </message>
    <message>
        <source>Colour at the cursor</source>
        <translation>Color en el cursor</translation>
    </message>
</context>
<context>
    <name>KeyList</name>
    <message>
        <source>Keys</source>
        <translation>Atajos de teclado</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Acción</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Tecla</translation>
    </message>
    <message>
        <source>In the 3D view</source>
        <translation>En la vista 3D</translation>
    </message>
    <message>
        <source>Arrow keys, drag</source>
        <translation>Teclas de flecha, arrastrar</translation>
    </message>
    <message>
        <source>Turn</source>
        <translation>Girar</translation>
    </message>
    <message>
        <source>+, -, wheel</source>
        <translation>+, -, rueda</translation>
    </message>
    <message>
        <source>Nearer, farther</source>
        <translation>Acercar, alejar</translation>
    </message>
    <message>
        <source>Shift and drag, right drag</source>
        <translation>Mayús y arrastrar, arrastrar con el derecho</translation>
    </message>
    <message>
        <source>Move the scene</source>
        <translation>Mover la escena</translation>
    </message>
    <message>
        <source>Click</source>
        <translation>Clic</translation>
    </message>
    <message>
        <source>Which colour is this?</source>
        <translation>¿Qué color es este?</translation>
    </message>
    <message>
        <source>On to the next control</source>
        <translation>Ir al siguiente control</translation>
    </message>
    <message>
        <source>Everywhere</source>
        <translation>En todas partes</translation>
    </message>
    <message>
        <source>Cancel loading, then dismiss messages</source>
        <translation>Cancelar la carga, después descartar los mensajes</translation>
    </message>
    <message>
        <source>In lists and tables</source>
        <translation>En listas y tablas</translation>
    </message>
    <message>
        <source>Show or hide the gamut</source>
        <translation>Mostrar u ocultar la gama</translation>
    </message>
    <message>
        <source>Remove the gamut or the points</source>
        <translation>Quitar la gama o los puntos</translation>
    </message>
    <message>
        <source>Copy the selected numbers</source>
        <translation>Copiar los números seleccionados</translation>
    </message>
    <message>
        <source>&amp;Set</source>
        <translation>&amp;Establecer</translation>
    </message>
    <message>
        <source>&amp;No key</source>
        <translation>&amp;Sin tecla</translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>&amp;Predeterminado</translation>
    </message>
    <message>
        <source>&amp;All to default</source>
        <translation>&amp;Todo predeterminado</translation>
    </message>
    <message>
        <source>With the colour cursor</source>
        <translation>Con el cursor de color</translation>
    </message>
    <message>
        <source>Arrow keys</source>
        <translation>Teclas de flecha</translation>
    </message>
    <message>
        <source>Along a* and b*</source>
        <translation>A lo largo de a* y b*</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Lighter, darker</source>
        <translation>Más claro, más oscuro</translation>
    </message>
    <message>
        <source>Shift and these keys</source>
        <translation>Mayús y estas teclas</translation>
    </message>
    <message>
        <source>Ten times as far</source>
        <translation>Diez veces más lejos</translation>
    </message>
    <message>
        <source>Which colour is the nearest?</source>
        <translation>¿Qué color es el más cercano?</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Terminar</translation>
    </message>
    <message>
        <source>New key</source>
        <translation>Tecla nueva</translation>
    </message>
    <message>
        <source>Press the new key here</source>
        <translation>Pulse aquí la tecla nueva</translation>
    </message>
    <message>
        <source>Choose a command of the menus to change its key.</source>
        <translation>Elija un comando de los menús para cambiar su tecla.</translation>
    </message>
    <message>
        <source>Press a key in the field first.</source>
        <translation>Pulse antes una tecla en el campo.</translation>
    </message>
    <message>
        <source>%1 has a meaning in the view or in lists.</source>
        <translation>%1 ya tiene una función en la vista o en las listas.</translation>
    </message>
    <message>
        <source>%1 is the key of &quot;%2&quot;.</source>
        <translation>%1 es la tecla de «%2».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no key now.</source>
        <translation>«%1» ya no tiene tecla.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has the key %2 now.</source>
        <translation>«%1» tiene ahora la tecla %2.</translation>
    </message>
    <message>
        <source>All commands have their default keys.</source>
        <translation>Todos los comandos tienen sus teclas predeterminadas.</translation>
    </message>
</context>
<context>
    <name>LightMenu</name>
    <message>
        <source>L&amp;ight</source>
        <translation>Ilu&amp;minación</translation>
    </message>
    <message>
        <source>From &amp;above</source>
        <translation>Desde &amp;arriba</translation>
    </message>
    <message>
        <source>From the &amp;left</source>
        <translation>Desde la &amp;izquierda</translation>
    </message>
    <message>
        <source>From the &amp;right</source>
        <translation>Desde la &amp;derecha</translation>
    </message>
    <message>
        <source>&amp;Colour…</source>
        <translation>&amp;Color…</translation>
    </message>
    <message>
        <source>&amp;White</source>
        <translation>Luz &amp;blanca</translation>
    </message>
    <message>
        <source>Colour of the light</source>
        <translation>Color de la luz</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Gamuts</source>
        <translation>Gamas</translation>
    </message>
    <message>
        <source>Section</source>
        <translation>Sección</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Colores</translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation>Comparación</translation>
    </message>
    <message>
        <source>Clicked colour</source>
        <translation>Color señalado</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progreso</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Cancel (Esc)</source>
        <translation>Cancelar (Esc)</translation>
    </message>
    <message>
        <source>Comparison with %1</source>
        <translation>Comparación con %1</translation>
    </message>
    <message>
        <source>Writing %1…</source>
        <translation>Escribiendo %1…</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>Se guardó %1</translation>
    </message>
    <message>
        <source>Copied the picture: %1 x %2 pixels</source>
        <translation>Imagen copiada: %1 x %2 píxeles</translation>
    </message>
    <message>
        <source>Copied the clicked colour</source>
        <translation>Color señalado copiado</translation>
    </message>
    <message>
        <source>Copied the camera</source>
        <translation>Cámara copiada</translation>
    </message>
    <message>
        <source>A window ended unexpectedly. Its unsaved changes of %1 were kept.</source>
        <translation>Una ventana terminó de forma inesperada. Se conservaron sus cambios sin guardar del %1.</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Restaurar</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Descartar</translation>
    </message>
    <message>
        <source>Changed on disk: %1</source>
        <translation>Cambiado en el disco: %1</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Volver a cargar</translation>
    </message>
    <message>
        <source>Not now</source>
        <translation>Ahora no</translation>
    </message>
</context>
<context>
    <name>MenuCommands</name>
    <message>
        <source> or </source>
        <translation> o </translation>
    </message>
</context>
<context>
    <name>MessageBar</name>
    <message>
        <source>Messages</source>
        <translation>Mensajes</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Descartar</translation>
    </message>
    <message>
        <source>Dismiss (Esc)</source>
        <translation>Descartar (Esc)</translation>
    </message>
    <message>
        <source>Shows all messages</source>
        <translation>Muestra todos los mensajes</translation>
    </message>
    <message numerus="yes">
        <source>%n more…</source>
        <translation>
            <numerusform>%n más…</numerusform>
            <numerusform>%n más…</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>OfferBar</name>
    <message>
        <source>Questions</source>
        <translation>Preguntas</translation>
    </message>
</context>
<context>
    <name>PhotoMask</name>
    <message>
        <source>The picture is being made…</source>
        <translation>Creando la imagen…</translation>
    </message>
    <message>
        <source>%1: what %2 cannot make</source>
        <translation>%1: lo que %2 no puede reproducir</translation>
    </message>
    <message>
        <source>Marked is what is outside %1. Grey can be made.</source>
        <translation>Está marcado lo que queda fuera de %1. Lo gris es reproducible.</translation>
    </message>
    <message>
        <source>%1 % of the pixels are outside, %2 % on the edge.</source>
        <translation>El %1&#xa0;% de los píxeles está fuera; el %2&#xa0;%, en el borde.</translation>
    </message>
</context>
<context>
    <name>PictureDialog</name>
    <message>
        <source>Size of the picture</source>
        <translation>Tamaño de la imagen</translation>
    </message>
    <message>
        <source>&amp;Width</source>
        <translation>&amp;Anchura</translation>
    </message>
    <message>
        <source>&amp;Height</source>
        <translation>Al&amp;tura</translation>
    </message>
    <message>
        <source>&amp;Keep the proportions of the view</source>
        <translation>&amp;Conservar las proporciones de la vista</translation>
    </message>
    <message>
        <source>&amp;Transparent ground</source>
        <translation>&amp;Fondo transparente</translation>
    </message>
    <message>
        <source>Not in JPEG files</source>
        <translation>No en archivos JPEG</translation>
    </message>
</context>
<context>
    <name>PointLayer</name>
    <message>
        <source>reading…</source>
        <translation>leyendo…</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Puntos</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Cantidad</translation>
    </message>
    <message>
        <source>Inside</source>
        <translation>Dentro</translation>
    </message>
    <message>
        <source>Edge</source>
        <translation>Borde</translation>
    </message>
    <message>
        <source>Outside</source>
        <translation>Fuera</translation>
    </message>
    <message>
        <source>Every pixel is counted: %1</source>
        <translation>Se cuenta cada píxel: %1</translation>
    </message>
    <message>
        <source>CIEDE2000: mean %1, 95 % up to %2, largest %3</source>
        <translation>CIEDE2000: media %1, 95&#xa0;% hasta %2, máximo %3</translation>
    </message>
</context>
<context>
    <name>PointPanel</name>
    <message>
        <source>Files of points</source>
        <translation>Archivos de puntos</translation>
    </message>
    <message>
        <source>Colours no farther from the active gamut&apos;s surface than this are its edge</source>
        <translation>Los colores cuya distancia a la superficie de la gama activa no supera este valor forman su borde</translation>
    </message>
    <message>
        <source>&amp;Add points…</source>
        <translation>Añadir p&amp;untos…</translation>
    </message>
    <message>
        <source>E&amp;dge</source>
        <translation>&amp;Franja del borde</translation>
    </message>
    <message>
        <source>Show what is lost of the photo</source>
        <translation>Mostrar lo que se pierde de la foto</translation>
    </message>
    <message>
        <source>Remove points</source>
        <translation>Quitar los puntos</translation>
    </message>
</context>
<context>
    <name>Problem</name>
    <message>
        <source>No such file or directory</source>
        <translation>No existe el archivo o el directorio</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>Permiso denegado</translation>
    </message>
    <message>
        <source>Is a directory</source>
        <translation>Es un directorio</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>No queda espacio en el dispositivo</translation>
    </message>
    <message>
        <source>Read-only file system</source>
        <translation>Sistema de archivos de solo lectura</translation>
    </message>
    <message>
        <source>Too many open files</source>
        <translation>Demasiados archivos abiertos</translation>
    </message>
    <message>
        <source>Broken pipe</source>
        <translation>Tubería rota (broken pipe)</translation>
    </message>
    <message>
        <source>Bad file descriptor</source>
        <translation>Descriptor de archivo incorrecto</translation>
    </message>
    <message>
        <source>%1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>no se puede leer</translation>
    </message>
    <message>
        <source>cannot be written</source>
        <translation>no se puede escribir</translation>
    </message>
    <message>
        <source>neither an ICC profile, nor a PNG, JPEG or TIFF picture, nor a saved gamut, nor a chart or a list of colours</source>
        <translation>ni un perfil ICC, ni una imagen PNG, JPEG o TIFF, ni una gama guardada, ni una carta o una lista de colores</translation>
    </message>
    <message>
        <source>larger than %1 MiB, the limit for files of this kind</source>
        <translation>más de %1&#xa0;MiB, el límite para archivos de este tipo</translation>
    </message>
    <message>
        <source>neither a regular file nor a pipe</source>
        <translation>ni un archivo normal ni una tubería</translation>
    </message>
    <message>
        <source>not a text file</source>
        <translation>no es un archivo de texto</translation>
    </message>
    <message>
        <source>the name is not UTF-8</source>
        <translation>el nombre no está en UTF-8</translation>
    </message>
    <message>
        <source>the output would overwrite this input; choose another name</source>
        <translation>la salida sobrescribiría este archivo de entrada; elija otro nombre</translation>
    </message>
    <message>
        <source>unknown setting &apos;%1&apos; behind the @ (known: %2)</source>
        <translation>ajuste desconocido «%1» detrás de la @ (conocidos: %2)</translation>
    </message>
    <message>
        <source>the hull of the %1 colours encloses less than 1 cubic dE; a gamut needs colours of different lightness, hue and chroma</source>
        <translation>la envolvente de los %1 colores encierra menos de 1&#xa0;ΔE³; una gama necesita colores de distinta claridad, tono y croma</translation>
    </message>
    <message>
        <source>the chart has too few patches: %1 with different device values, or a channel that varies by less than 50 %</source>
        <translation>la carta tiene muy pocos parches: %1 con valores de dispositivo distintos, o un canal que varía menos de un 50&#xa0;%</translation>
    </message>
    <message>
        <source>all patches of the chart are black</source>
        <translation>todos los parches de la carta son negros</translation>
    </message>
    <message>
        <source>more than %1 different patches, the limit of a chart</source>
        <translation>más de %1 parches distintos, el límite de una carta</translation>
    </message>
    <message>
        <source>a saved gamut keeps its intent, which is %1</source>
        <translation>una gama guardada conserva su propósito de representación, que es %1</translation>
    </message>
    <message>
        <source>the surface has no table of %1</source>
        <translation>la superficie no tiene ninguna tabla de %1</translation>
    </message>
    <message>
        <source>the surface is in &apos;%1&apos;; only Lab and XYZ are supported</source>
        <translation>la superficie está en «%1»; solo se admiten Lab y XYZ</translation>
    </message>
    <message>
        <source>line %1: there is no vertex %2</source>
        <translation>línea %1: no hay ningún vértice %2</translation>
    </message>
    <message>
        <source>line %1: vertex %2 occurs twice</source>
        <translation>línea %1: el vértice %2 aparece dos veces</translation>
    </message>
    <message>
        <source>more than %1 triangles, the limit of a surface</source>
        <translation>más de %1 triángulos, el límite de una superficie</translation>
    </message>
    <message>
        <source>the profile has no gamut boundary (a tag gbd0 to gbd3)</source>
        <translation>el perfil no tiene límite de gama (una etiqueta gbd0 a gbd3)</translation>
    </message>
    <message>
        <source>the tag &apos;%1&apos; is damaged</source>
        <translation>la etiqueta «%1» está dañada</translation>
    </message>
    <message>
        <source>this gamut has no rendering intents; leave out &apos;@%1&apos;</source>
        <translation>esta gama no tiene propósitos de representación; omita «@%1»</translation>
    </message>
    <message>
        <source>the %1 picture is damaged</source>
        <translation>la imagen %1 está dañada</translation>
    </message>
    <message>
        <source>unsupported picture format</source>
        <translation>formato de imagen no admitido</translation>
    </message>
    <message>
        <source>the picture cannot be decoded</source>
        <translation>la imagen no se puede decodificar</translation>
    </message>
    <message>
        <source>the picture is too large for the memory</source>
        <translation>la imagen es demasiado grande para la memoria</translation>
    </message>
    <message>
        <source>the picture has more than %1 million pixels, the limit</source>
        <translation>la imagen tiene más de %1 millones de píxeles, el límite</translation>
    </message>
    <message>
        <source>the picture is progressive, interlaced or of a format that is decoded as a whole, and has more than %1 million pixels, the limit; save it as TIFF</source>
        <translation>la imagen es progresiva, entrelazada o de un formato que se decodifica entero, y tiene más de %1 millones de píxeles, el límite; guárdela como TIFF</translation>
    </message>
    <message>
        <source>pictures cannot be read; install libvips (Debian package libvips42)</source>
        <translation>las imágenes no se pueden leer; instale libvips (paquete de Debian libvips42)</translation>
    </message>
    <message>
        <source>the number or the type of the values of a pixel is not supported; grey, RGB, CMYK and Lab with 8 or 16 bits or floating point are</source>
        <translation>el número o el tipo de los valores de un píxel no se admite; se admiten gris, RGB, CMYK y Lab con 8 o 16 bits o en coma flotante</translation>
    </message>
    <message>
        <source>the profile is for another kind of colour than the pixels</source>
        <translation>el perfil es para otro tipo de color que el de los píxeles</translation>
    </message>
    <message>
        <source>the first of %1 pages is read</source>
        <translation>se lee la primera de %1 páginas</translation>
    </message>
    <message>
        <source>%1 pixels have values below 0 or above 1, which were clamped</source>
        <translation>%1 píxeles tienen valores menores que 0 o mayores que 1, que se han limitado</translation>
    </message>
    <message>
        <source>not a readable PNG picture</source>
        <translation>no es una imagen PNG legible</translation>
    </message>
    <message>
        <source>the embedded profile cannot be read</source>
        <translation>el perfil incrustado no se puede leer</translation>
    </message>
    <message>
        <source>the embedded profile has no usable transform to Lab</source>
        <translation>el perfil incrustado no tiene una transformación utilizable a Lab</translation>
    </message>
    <message>
        <source>every pixel is transparent</source>
        <translation>todos los píxeles son transparentes</translation>
    </message>
    <message>
        <source>no embedded profile; the colours are taken as sRGB</source>
        <translation>sin perfil incrustado; los colores se interpretan como sRGB</translation>
    </message>
    <message>
        <source>line %1: the value of %2 is missing</source>
        <translation>línea %1: falta el valor de %2</translation>
    </message>
    <message>
        <source>line %1: %2 is &apos;%3&apos;, expected a number</source>
        <translation>línea %1: %2 es «%3»; se esperaba un número</translation>
    </message>
    <message>
        <source>line %1: %2 is %3, expected %4 to %5</source>
        <translation>línea %1: %2 es %3; se esperaba de %4 a %5</translation>
    </message>
    <message>
        <source>line %1: &apos;%2&apos;, expected a colour such as 40c0ff</source>
        <translation>línea %1: «%2»; se esperaba un color como 40c0ff</translation>
    </message>
    <message>
        <source>line %1: &apos;%2&apos; is not a colour</source>
        <translation>línea %1: «%2» no es un color</translation>
    </message>
    <message>
        <source>line %1: %2 values for %3 columns</source>
        <translation>línea %1: %2 valores para %3 columnas</translation>
    </message>
    <message>
        <source>line %1: expected L*, a*, b* and optionally a name and a colour; for anything else the first line must name the columns</source>
        <translation>línea %1: se esperaban L*, a*, b* y, opcionalmente, un nombre y un color; para cualquier otra cosa, la primera línea debe nombrar las columnas</translation>
    </message>
    <message>
        <source>line %1: L* %2, a* %3, b* %4 is not a possible colour</source>
        <translation>línea %1: L* %2, a* %3, b* %4 no es un color posible</translation>
    </message>
    <message>
        <source>%1 of %2 colours are left out (lines: %3)</source>
        <translation>se omiten %1 de %2 colores (líneas: %3)</translation>
    </message>
    <message>
        <source>line %1: %2 is not a value of L*, a*, b*; name the columns in the first line, for example L,a,b or R,G,B</source>
        <translation>línea %1: %2 no es un valor de L*, a*, b*; nombre las columnas en la primera línea, por ejemplo L,a,b o R,G,B</translation>
    </message>
    <message>
        <source>line %1: unknown columns (%2); known are L, a, b; L, C, h; X, Y, Z; R, G, B; hex; C, M, Y, K, and reflectances such as 400 nm</source>
        <translation>línea %1: columnas desconocidas (%2); se conocen L, a, b; L, C, h; X, Y, Z; R, G, B; hex; C, M, Y, K, y reflectancias como 400 nm</translation>
    </message>
    <message>
        <source>unknown columns are ignored: %1</source>
        <translation>se ignoran las columnas desconocidas: %1</translation>
    </message>
    <message>
        <source>no heading; the numbers are taken as L*, a*, b* for D50</source>
        <translation>sin encabezado; los números se interpretan como L*, a*, b* para D50</translation>
    </message>
    <message>
        <source>neither UTF-8 nor UTF-16; the text is taken as Latin-1</source>
        <translation>ni UTF-8 ni UTF-16; el texto se interpreta como Latin-1</translation>
    </message>
    <message>
        <source>the values for %1 are adapted to D50 (Bradford)</source>
        <translation>los valores para %1 se adaptan a D50 (Bradford)</translation>
    </message>
    <message>
        <source>the values are for the 10 degree observer, gamuts for the 2 degree observer; compare them with care</source>
        <translation>los valores son para el observador de 10 grados, las gamas para el observador de 2 grados; compárelos con cautela</translation>
    </message>
    <message>
        <source>the largest XYZ value is %1, so it is not clear whether white has Y 1 or Y 100; declare it: --points-white-y, or a line &apos;# white-y: 1&apos; in the file</source>
        <translation>el mayor valor XYZ es %1, por lo que no está claro si el blanco tiene Y 1 o Y 100; indíquelo: --points-white-y, o una línea «# white-y: 1» en el archivo</translation>
    </message>
    <message>
        <source>the %1 values are taken as numbers from 0 to %2</source>
        <translation>los valores %1 se interpretan como números de 0 a %2</translation>
    </message>
    <message>
        <source>%1 values without their colour space; declare it: --points-space with a built-in RGB space or an ICC profile, or for RGB a line &apos;# space: sRGB&apos; in the file</source>
        <translation>valores %1 sin su espacio de color; indíquelo: --points-space con un espacio RGB integrado o un perfil ICC, o para RGB una línea «# space: sRGB» en el archivo</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a profile for %2 values</source>
        <translation>«%1» no es un perfil para valores %2</translation>
    </message>
    <message>
        <source>the colours cannot be converted with the profile &apos;%1&apos;</source>
        <translation>los colores no se pueden convertir con el perfil «%1»</translation>
    </message>
    <message>
        <source>line %1: &apos;%2&apos; is not known; known are %3</source>
        <translation>línea %1: «%2» no se conoce; se conocen %3</translation>
    </message>
    <message>
        <source>%1 reflectances from %2 to %3 nm are not enough; needed are equal steps of at most 20 nm from 400 to 700 nm</source>
        <translation>%1 reflectancias de %2 a %3&#xa0;nm no bastan; se necesitan pasos iguales de 20&#xa0;nm como máximo de 400 a 700&#xa0;nm</translation>
    </message>
    <message>
        <source>the reflectances from %1 to %2 nm, taken as 0 to %3, are computed for the CIE 1931 2 degree observer and D50</source>
        <translation>las reflectancias de %1 a %2&#xa0;nm, interpretadas de 0 a %3, se calculan para el observador CIE 1931 de 2 grados y D50</translation>
    </message>
    <message>
        <source>%1 of %2 colours are left out (numbers: %3)</source>
        <translation>se omiten %1 de %2 colores (números: %3)</translation>
    </message>
    <message>
        <source>number %1: L* %2, a* %3, b* %4 is not a possible colour</source>
        <translation>número %1: L* %2, a* %3, b* %4 no es un color posible</translation>
    </message>
    <message>
        <source>the %1 palette is damaged</source>
        <translation>la paleta %1 está dañada</translation>
    </message>
    <message>
        <source>number %1: the colour model &apos;%2&apos; is not known; known are RGB, CMYK and Lab</source>
        <translation>número %1: el modelo de color «%2» no se conoce; se conocen RGB, CMYK y Lab</translation>
    </message>
    <message>
        <source>number %1: %2, expected 0 to 1</source>
        <translation>número %1: %2; se esperaba de 0 a 1</translation>
    </message>
    <message>
        <source>not a file of colours, but %1; known are CSV, CGATS, CxF, ASE, ACB and GPL</source>
        <translation>no es un archivo de colores, sino %1; se conocen CSV, CGATS, CxF, ASE, ACB y GPL</translation>
    </message>
    <message>
        <source>the file contains no positions</source>
        <translation>el archivo no contiene posiciones de color</translation>
    </message>
    <message>
        <source>more than %1 points, the limit of a file</source>
        <translation>más de %1 puntos, el límite de un archivo</translation>
    </message>
    <message>
        <source>line %1: more than %2 columns, the limit of a table</source>
        <translation>línea %1: más de %2 columnas, el límite de una tabla</translation>
    </message>
    <message>
        <source>line %1: longer than %2 characters, the limit</source>
        <translation>línea %1: más larga que %2 caracteres, el límite</translation>
    </message>
    <message>
        <source>the CGATS file cannot be read</source>
        <translation>el archivo CGATS no se puede leer</translation>
    </message>
    <message>
        <source>line %1: %2 reads another file, which is not allowed here; insert the content of that file instead</source>
        <translation>línea %1: %2 lee otro archivo, lo que aquí no se permite; inserte en su lugar el contenido de ese archivo</translation>
    </message>
    <message>
        <source>line %1: the data have no column names (BEGIN_DATA_FORMAT is missing)</source>
        <translation>línea %1: los datos no tienen nombres de columna (falta BEGIN_DATA_FORMAT)</translation>
    </message>
    <message>
        <source>Line %1: %2 is missing</source>
        <translation>Línea %1: falta %2</translation>
    </message>
    <message>
        <source>Line %1: %2 was %3, found %4</source>
        <translation>Línea %1: %2 era %3, se encontraron %4</translation>
    </message>
    <message>
        <source>the CGATS file has no known columns of colours (%1); known are Lab, LCh, XYZ, RGB and CMYK, and reflectances such as SPECTRAL_NM400</source>
        <translation>el archivo CGATS no tiene columnas de color conocidas (%1); se conocen Lab, LCh, XYZ, RGB y CMYK, y reflectancias como SPECTRAL_NM400</translation>
    </message>
    <message>
        <source>the XML is not CxF</source>
        <translation>el XML no es CxF</translation>
    </message>
    <message>
        <source>line %1: the XML is invalid</source>
        <translation>línea %1: el XML no es válido</translation>
    </message>
    <message>
        <source>line %1: the XML declares a document type, which CxF does not have</source>
        <translation>línea %1: el XML declara un tipo de documento, que CxF no tiene</translation>
    </message>
    <message>
        <source>line %1: more than %2 nested elements, the limit of CxF</source>
        <translation>línea %1: más de %2 elementos anidados, el límite de CxF</translation>
    </message>
    <message>
        <source>line %1: more than %2 attributes, the limit of an element of CxF</source>
        <translation>línea %1: más de %2 atributos, el límite de un elemento de CxF</translation>
    </message>
    <message>
        <source>%1 of %2 objects have no CIELAB, XYZ or reflectance values for D50</source>
        <translation>%1 de %2 objetos no tienen valores CIELAB, XYZ o de reflectancia para D50</translation>
    </message>
    <message>
        <source>no colours at L* %1; the gamut reaches from L* %2 to %3</source>
        <translation>no hay colores en L* %1; la gama va de L* %2 a %3</translation>
    </message>
    <message>
        <source>no colours at the hue %1</source>
        <translation>no hay colores en el tono %1</translation>
    </message>
    <message>
        <source>no part of %1 is outside %2</source>
        <translation>ninguna parte de %1 está fuera de %2</translation>
    </message>
    <message>
        <source>%1 and %2 have nothing in common</source>
        <translation>%1 y %2 no tienen nada en común</translation>
    </message>
    <message>
        <source>not a session of this program</source>
        <translation>no es una sesión de este programa</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be true or false</source>
        <translation>«%1» debe ser true o false</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a number from %2 to %3</source>
        <translation>«%1» debe ser un número de %2 a %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a name</source>
        <translation>«%1» debe ser un nombre</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a colour such as &quot;#40c0ff&quot;</source>
        <translation>«%1» debe ser un color como &quot;#40c0ff&quot;</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be three numbers</source>
        <translation>«%1» debe constar de tres números</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be one of %2</source>
        <translation>«%1» debe ser uno de los valores %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a list of files</source>
        <translation>«%1» debe ser una lista de archivos</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a list</source>
        <translation>«%1» debe ser una lista</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a group of values</source>
        <translation>«%1» debe ser un grupo de valores</translation>
    </message>
    <message>
        <source>&quot;%1&quot; and &quot;%2&quot; must be different points</source>
        <translation>«%1» y «%2» deben ser puntos distintos</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has more than %2 entries, the limit of a session</source>
        <translation>«%1» tiene más de %2 entradas, el límite de una sesión</translation>
    </message>
    <message>
        <source>sections are saved as .svg or .pdf</source>
        <translation>las secciones se guardan como .svg o .pdf</translation>
    </message>
    <message>
        <source>pages to send are saved as .html</source>
        <translation>las páginas para enviar se guardan como .html</translation>
    </message>
    <message>
        <source>there is no gamut to save; open a profile first</source>
        <translation>no hay ninguna gama que guardar; abra antes un perfil</translation>
    </message>
    <message>
        <source>there is no picture to save: nothing is shown, or the memory does not suffice</source>
        <translation>no hay ninguna imagen que guardar: no se muestra nada, o la memoria no basta</translation>
    </message>
    <message>
        <source>the clipboard holds no camera; an example: %1</source>
        <translation>el portapapeles no contiene ninguna cámara; un ejemplo: %1</translation>
    </message>
    <message>
        <source>there is no display to open a window on; &apos;kvgamut render&apos; needs none</source>
        <translation>no hay ninguna pantalla en la que abrir una ventana; «kvgamut render» no la necesita</translation>
    </message>
    <message>
        <source>no window can be opened: the display (%1) does not answer; name one that runs, or use &apos;kvgamut render&apos;, which needs none</source>
        <translation>no se puede abrir una ventana: la pantalla (%1) no responde; indique una que funcione o use «kvgamut render», que no la necesita</translation>
    </message>
    <message>
        <source>no window can be opened: Qt&apos;s plug-in &apos;%1&apos; for the display is missing or cannot be loaded (Debian, Ubuntu: apt-get install %2)</source>
        <translation>no se puede abrir una ventana: el complemento de Qt «%1» para la pantalla falta o no se puede cargar (Debian, Ubuntu: apt-get install %2)</translation>
    </message>
    <message>
        <source>there is no display, and Xvfb gave none</source>
        <translation>no hay ninguna pantalla, y Xvfb no ha proporcionado una</translation>
    </message>
    <message>
        <source>there is no display, and Xvfb, which provides a virtual one, is not installed (Debian, Ubuntu: apt-get install xvfb)</source>
        <translation>no hay ninguna pantalla, y Xvfb, que proporciona una virtual, no está instalado (Debian, Ubuntu: apt-get install xvfb)</translation>
    </message>
    <message>
        <source>there is no display, and Xvfb cannot be started</source>
        <translation>no hay ninguna pantalla, y Xvfb no se puede iniciar</translation>
    </message>
    <message>
        <source>this display has no OpenGL (Debian, Ubuntu: apt-get install libgl1-mesa-dri)</source>
        <translation>esta pantalla no ofrece OpenGL (Debian, Ubuntu: apt-get install libgl1-mesa-dri)</translation>
    </message>
    <message>
        <source>nothing was drawn: the display shows no window, or the memory does not suffice for a picture of %1x%2 pixels</source>
        <translation>no se ha dibujado nada: la pantalla no muestra ninguna ventana, o la memoria no basta para una imagen de %1x%2 píxeles</translation>
    </message>
    <message>
        <source>the picture is %1 pixels large, the reference %2</source>
        <translation>la imagen mide %1 píxeles; la referencia, %2</translation>
    </message>
    <message>
        <source>the picture differs from the reference by %1 percent; the threshold is %2</source>
        <translation>la imagen difiere de la referencia en un %1 por ciento; el umbral es %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos;: %2</source>
        <translation>«%1»: %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>cancelado</translation>
    </message>
    <message>
        <source>not enough memory</source>
        <translation>memoria insuficiente</translation>
    </message>
    <message>
        <source>the colour engine failed unexpectedly</source>
        <translation>el cálculo de los colores ha fallado de forma inesperada</translation>
    </message>
    <message>
        <source>the file name is empty</source>
        <translation>el nombre del archivo está vacío</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>no se encuentra el archivo</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>no es un archivo normal</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>no se puede leer: %1</translation>
    </message>
    <message>
        <source>the file is too large to be an ICC profile</source>
        <translation>el archivo es demasiado grande para ser un perfil ICC</translation>
    </message>
    <message>
        <source>the profile is empty</source>
        <translation>el perfil está vacío</translation>
    </message>
    <message>
        <source>too large to be an ICC profile</source>
        <translation>demasiado grande para ser un perfil ICC</translation>
    </message>
    <message>
        <source>not an ICC profile</source>
        <translation>no es un perfil ICC</translation>
    </message>
    <message>
        <source>not a usable ICC profile: %1</source>
        <translation>no es un perfil ICC utilizable: %1</translation>
    </message>
    <message>
        <source>the profile&apos;s tag table is damaged</source>
        <translation>la tabla de etiquetas del perfil está dañada</translation>
    </message>
    <message>
        <source>the tag &apos;%1&apos; declares more data than it holds or than a device needs</source>
        <translation>la etiqueta «%1» declara más datos de los que contiene o de los que necesita un dispositivo</translation>
    </message>
    <message>
        <source>there is no profile</source>
        <translation>no hay ningún perfil</translation>
    </message>
    <message>
        <source>the request names no profile and no saved gamut</source>
        <translation>la petición no indica ni un perfil ni una gama guardada</translation>
    </message>
    <message>
        <source>%1 is not a rendering intent</source>
        <translation>%1 no es un propósito de representación</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a setting</source>
        <translation>«%1» no es un ajuste</translation>
    </message>
    <message>
        <source>a device link has no gamut of its own</source>
        <translation>un perfil de enlace (device link) no tiene gama propia</translation>
    </message>
    <message>
        <source>an abstract profile has no device and so no gamut</source>
        <translation>un perfil abstracto no tiene dispositivo y, por tanto, no tiene gama</translation>
    </message>
    <message>
        <source>a list of named colours has no gamut surface</source>
        <translation>una lista de colores con nombre no tiene superficie de gama</translation>
    </message>
    <message>
        <source>profiles of class &apos;%1&apos; have no gamut</source>
        <translation>los perfiles de la clase «%1» no tienen gama</translation>
    </message>
    <message>
        <source>%1 is not a device colour space and has no gamut</source>
        <translation>%1 no es un espacio de color de dispositivo y no tiene gama</translation>
    </message>
    <message>
        <source>a gamut needs at least three channels; grey has one</source>
        <translation>una gama necesita al menos tres canales; el gris tiene uno</translation>
    </message>
    <message>
        <source>a gamut needs at least three channels; this profile has two</source>
        <translation>una gama necesita al menos tres canales; este perfil tiene dos</translation>
    </message>
    <message>
        <source>the 11-grid is defined for three channels; this profile has %1</source>
        <translation>la rejilla de 11 está definida para tres canales; este perfil tiene %1</translation>
    </message>
    <message>
        <source>the device colour space &apos;%1&apos; is unknown</source>
        <translation>el espacio de color de dispositivo «%1» es desconocido</translation>
    </message>
    <message>
        <source>the profile has no usable transform from device to Lab</source>
        <translation>el perfil no tiene una transformación utilizable del dispositivo a Lab</translation>
    </message>
    <message>
        <source>the profile has no usable transform from device to Lab: %1</source>
        <translation>el perfil no tiene una transformación utilizable del dispositivo a Lab: %1</translation>
    </message>
    <message>
        <source>the profile gives Lab values that are NaN or out of range</source>
        <translation>el perfil da valores Lab que son NaN o están fuera de rango</translation>
    </message>
    <message>
        <source>the colours of the profile span no volume</source>
        <translation>los colores del perfil no forman ningún volumen</translation>
    </message>
    <message>
        <source>the gamut&apos;s volume is less than 1 cubic dE</source>
        <translation>el volumen de la gama es menor que 1&#xa0;ΔE³</translation>
    </message>
    <message>
        <source>the gamut is concave, which cannot be resolved with so many channels</source>
        <translation>la gama es cóncava, lo que no se puede resolver con tantos canales</translation>
    </message>
    <message>
        <source>the surface found for this device self-intersects</source>
        <translation>la superficie encontrada para este dispositivo se corta a sí misma</translation>
    </message>
    <message>
        <source>the device&apos;s colours overlap too often for a surface to be found</source>
        <translation>los colores del dispositivo se superponen demasiadas veces para encontrar una superficie</translation>
    </message>
    <message>
        <source>the surface has no faces</source>
        <translation>la superficie no tiene caras</translation>
    </message>
    <message>
        <source>the surface has vertices that are NaN or out of range</source>
        <translation>la superficie tiene vértices que son NaN o están fuera de rango</translation>
    </message>
    <message>
        <source>the surface&apos;s faces refer to vertices that do not exist</source>
        <translation>las caras de la superficie remiten a vértices que no existen</translation>
    </message>
    <message>
        <source>the surface is not closed</source>
        <translation>la superficie no está cerrada</translation>
    </message>
    <message>
        <source>the surface is not manifold</source>
        <translation>la superficie no es una variedad</translation>
    </message>
    <message>
        <source>the surface is inside out</source>
        <translation>la superficie está del revés: el interior queda fuera</translation>
    </message>
    <message>
        <source>the surfaces of the gamuts cross too often for a body to be made</source>
        <translation>las superficies de las gamas se cortan demasiadas veces para formar un sólido</translation>
    </message>
    <message>
        <source>the surface self-intersects</source>
        <translation>la superficie se corta a sí misma</translation>
    </message>
    <message>
        <source>the surface&apos;s faces are too close together to be checked for self-intersection</source>
        <translation>las caras de la superficie están demasiado juntas para comprobar si se corta a sí misma</translation>
    </message>
    <message>
        <source>not a saved gamut</source>
        <translation>no es una gama guardada</translation>
    </message>
    <message>
        <source>the saved gamut has the unknown version &apos;%1&apos;</source>
        <translation>la gama guardada tiene la versión desconocida «%1»</translation>
    </message>
    <message>
        <source>the saved gamut is damaged</source>
        <translation>la gama guardada está dañada</translation>
    </message>
    <message>
        <source>the saved gamut contains invalid values</source>
        <translation>la gama guardada contiene valores no válidos</translation>
    </message>
    <message>
        <source>the saved gamut&apos;s faces are too close together to be checked for self-intersection</source>
        <translation>las caras de la gama guardada están demasiado juntas para comprobar si se cortan entre sí</translation>
    </message>
    <message>
        <source>the saved gamut&apos;s surface self-intersects</source>
        <translation>la superficie de la gama guardada se corta a sí misma</translation>
    </message>
    <message>
        <source>the display has no OpenGL</source>
        <translation>la pantalla no ofrece OpenGL</translation>
    </message>
    <message>
        <source>the display has only OpenGL ES %1; desktop OpenGL 2.1 is needed</source>
        <translation>la pantalla solo ofrece OpenGL ES %1; se necesita OpenGL 2.1 de escritorio</translation>
    </message>
    <message>
        <source>the display has only OpenGL %1; version 2.1 is needed</source>
        <translation>la pantalla solo ofrece OpenGL %1; se necesita la versión 2.1</translation>
    </message>
    <message>
        <source>the display has only the core profile of OpenGL %1; the compatibility profile is needed</source>
        <translation>la pantalla solo ofrece el perfil «core» de OpenGL %1; se necesita el perfil de compatibilidad</translation>
    </message>
    <message>
        <source>the display&apos;s OpenGL %1 has no shaders of version 1.20</source>
        <translation>el OpenGL %1 de la pantalla no tiene shaders de la versión 1.20</translation>
    </message>
    <message>
        <source>the display&apos;s OpenGL %1 has no framebuffers that can be copied</source>
        <translation>el OpenGL %1 de la pantalla no tiene framebuffers que se puedan copiar</translation>
    </message>
    <message>
        <source>OpenGL cannot be used in the window</source>
        <translation>OpenGL no se puede usar en la ventana</translation>
    </message>
    <message>
        <source>the file is too large to be a shader</source>
        <translation>el archivo es demasiado grande para ser un shader</translation>
    </message>
    <message>
        <source>the shader cannot be built: %1</source>
        <translation>el shader no se puede compilar: %1</translation>
    </message>
    <message>
        <source>the session was saved by a newer version of this program (format %1; this version reads up to %2)</source>
        <translation>la sesión se guardó con una versión más reciente de este programa (formato %1; esta versión lee hasta %2)</translation>
    </message>
    <message>
        <source>gamuts are saved as .ply, .obj, .stl, .gltf, .x3d, .json, .icc or .kvgamut</source>
        <translation>las gamas se guardan como .ply, .obj, .stl, .gltf, .x3d, .json, .icc o .kvgamut</translation>
    </message>
    <message>
        <source>the %1 picture has no embedded profile; the colours of its pixels, taken as sRGB, are a gamut with @pixels after the name</source>
        <translation>la imagen %1 no tiene perfil incrustado; con @pixels detrás del nombre, los colores de sus píxeles, interpretados como sRGB, forman una gama</translation>
    </message>
    <message>
        <source>CMYK and floating-point pictures need a profile: embed it, or name it with --photo-profile, after @pixels with --points-space</source>
        <translation>las imágenes CMYK y de coma flotante necesitan un perfil: incrústelo, o indíquelo con --photo-profile, detrás de @pixels con --points-space</translation>
    </message>
    <message>
        <source>no such file; did you mean %1?</source>
        <translation>no se encuentra el archivo; ¿quería decir %1?</translation>
    </message>
</context>
<context>
    <name>SectionBar</name>
    <message>
        <source>Fixed scale</source>
        <translation>Escala fija</translation>
    </message>
    <message>
        <source>Kind of section</source>
        <translation>Tipo de sección</translation>
    </message>
    <message>
        <source>Lightness</source>
        <translation>Claridad</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>Tono</translation>
    </message>
    <message>
        <source>Rings</source>
        <translation>Anillos</translation>
    </message>
    <message>
        <source>Hue angle</source>
        <translation>Ángulo de tono</translation>
    </message>
    <message>
        <source>Hue angle: 0° is +a*, 90° is +b*</source>
        <translation>Ángulo de tono: 0° es +a*, 90° es +b*</translation>
    </message>
    <message>
        <source>All sections have the same scale</source>
        <translation>Todas las secciones tienen la misma escala</translation>
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
        <translation>Perceptual</translation>
    </message>
    <message>
        <source>Relative colorimetric</source>
        <translation>Colorimétrico relativo</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Saturación</translation>
    </message>
    <message>
        <source>Absolute colorimetric</source>
        <translation>Colorimétrico absoluto</translation>
    </message>
    <message>
        <source>, black point compensated</source>
        <translation>, con compensación de punto negro</translation>
    </message>
    <message>
        <source>, not adapted</source>
        <translation>, sin adaptación</translation>
    </message>
    <message>
        <source>, not adapted, relative to D65</source>
        <translation>, sin adaptación, respecto a D65</translation>
    </message>
    <message>
        <source>Given surface</source>
        <translation>Superficie dada</translation>
    </message>
    <message>
        <source>Convex hull</source>
        <translation>Envolvente convexa</translation>
    </message>
    <message>
        <source>As in the profile</source>
        <translation>Como en el perfil</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Ninguna</translation>
    </message>
    <message>
        <source>None, relative to D65</source>
        <translation>Ninguna, respecto a D65</translation>
    </message>
    <message>
        <source>Table: %1; the profile has none for this intent</source>
        <translation>Tabla: %1; el perfil no tiene ninguna para este propósito</translation>
    </message>
    <message>
        <source>Table: %1</source>
        <translation>Tabla: %1</translation>
    </message>
    <message>
        <source>Media white: %1</source>
        <translation>Blanco del soporte: %1</translation>
    </message>
    <message>
        <source>Adapted to D50 by the profile</source>
        <translation>Adaptado a D50 por el perfil</translation>
    </message>
    <message>
        <source>The profile&apos;s adaptation to D50 is undone</source>
        <translation>La adaptación del perfil a D50 se ha deshecho</translation>
    </message>
    <message>
        <source>The profile contains no adaptation to undo</source>
        <translation>El perfil no contiene ninguna adaptación que deshacer</translation>
    </message>
    <message>
        <source>Mapped to L* 0: %1</source>
        <translation>Llevado a L* 0: %1</translation>
    </message>
    <message>
        <source>Encoding (cicp): %1</source>
        <translation>Codificación (cicp): %1</translation>
    </message>
    <message>
        <source>The volume is relative to the profile&apos;s white; brighter light is not counted</source>
        <translation>El volumen se refiere al blanco del perfil; la luz más intensa no se cuenta</translation>
    </message>
    <message>
        <source>%1 ΔE inside %2</source>
        <translation>%1&#xa0;ΔE dentro de %2</translation>
    </message>
    <message>
        <source>%1 ΔE outside %2</source>
        <translation>%1&#xa0;ΔE fuera de %2</translation>
    </message>
    <message>
        <source>With more than %1 channels, colours of mixtures beyond the sampled ones are not looked for; the uncertainty does not include them</source>
        <translation>Con más de %1 canales no se buscan colores de mezclas más allá de las muestreadas; la incertidumbre no los incluye</translation>
    </message>
</context>
<context>
    <name>SlicePanel</name>
    <message>
        <source>Gamut slice at L* = %1 in CIELAB (D50)</source>
        <translation>Sección de la gama a L* = %1 en CIELAB (D50)</translation>
    </message>
    <message>
        <source>area %1</source>
        <translation>área %1</translation>
    </message>
    <message>
        <source>inside %1: %2</source>
        <translation>dentro de %1: %2</translation>
    </message>
    <message>
        <source>outside %1: %2</source>
        <translation>fuera de %1: %2</translation>
    </message>
    <message>
        <source>Section of the gamuts</source>
        <translation>Sección de las gamas</translation>
    </message>
    <message>
        <source>Gamut rings in CIELAB (D50)</source>
        <translation>Anillos de la gama en CIELAB (D50)</translation>
    </message>
    <message>
        <source>Gamut slice at hue %1° in CIELAB (D50)</source>
        <translation>Sección de la gama en el tono %1° en CIELAB (D50)</translation>
    </message>
    <message>
        <source>volume %1</source>
        <translation>volumen %1</translation>
    </message>
</context>
<context>
    <name>ToolBar</name>
    <message>
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>Encuadrar</translation>
    </message>
    <message>
        <source>Legend</source>
        <translation>Leyenda</translation>
    </message>
    <message>
        <source>Only active</source>
        <translation>Solo la activa</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Cortar</translation>
    </message>
    <message>
        <source>Section</source>
        <translation>Sección</translation>
    </message>
    <message>
        <source>Cursor</source>
        <translation>Cursor</translation>
    </message>
    <message>
        <source>Present</source>
        <translation>Presentar</translation>
    </message>
    <message>
        <source>Find…</source>
        <translation>Buscar…</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Herramientas</translation>
    </message>
</context>
<context>
    <name>UnsavedQuestion</name>
    <message>
        <source>Unsaved changes</source>
        <translation>Cambios sin guardar</translation>
    </message>
    <message>
        <source>Save the changes as a session?</source>
        <translation>¿Guardar los cambios como sesión?</translation>
    </message>
    <message>
        <source>Save the changes of “%1”?</source>
        <translation>¿Guardar los cambios de «%1»?</translation>
    </message>
    <message>
        <source>Otherwise they are lost.</source>
        <translation>Si no, se perderán.</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Guardar</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Descartar</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Cancelar</translation>
    </message>
</context>
<context>
    <name>ViewArea</name>
    <message>
        <source>Gamuts in Lab space</source>
        <translation>Gamas en el espacio Lab</translation>
    </message>
</context>
<context>
    <name>ViewMenu</name>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ver</translation>
    </message>
    <message>
        <source>F&amp;ull screen</source>
        <translation>Pantalla &amp;completa</translation>
    </message>
    <message>
        <source>&amp;Reset camera</source>
        <translation>&amp;Restablecer cámara</translation>
    </message>
    <message>
        <source>&amp;Frame the gamuts</source>
        <translation>&amp;Encuadrar las gamas</translation>
    </message>
    <message>
        <source>&amp;Orthogonal</source>
        <translation>Proyección &amp;ortogonal</translation>
    </message>
    <message>
        <source>&amp;Wider angle</source>
        <translation>Ángulo más &amp;amplio</translation>
    </message>
    <message>
        <source>&amp;Narrower angle</source>
        <translation>Ángulo más es&amp;trecho</translation>
    </message>
    <message>
        <source>&amp;Look from</source>
        <translation>Mirar &amp;desde</translation>
    </message>
    <message>
        <source>&amp;Top</source>
        <translation>&amp;Arriba</translation>
    </message>
    <message>
        <source>&amp;Bottom</source>
        <translation>A&amp;bajo</translation>
    </message>
    <message>
        <source>&amp;Front: a* across</source>
        <translation>D&amp;elante: a* horizontal</translation>
    </message>
    <message>
        <source>Bac&amp;k</source>
        <translation>De&amp;trás</translation>
    </message>
    <message>
        <source>&amp;Right: b* across</source>
        <translation>La &amp;derecha: b* horizontal</translation>
    </message>
    <message>
        <source>&amp;Left</source>
        <translation>La i&amp;zquierda</translation>
    </message>
    <message>
        <source>&amp;Cut at the lightness</source>
        <translation>Cortar a esta c&amp;laridad</translation>
    </message>
    <message>
        <source>&amp;Section without cutting</source>
        <translation>Sección si&amp;n cortar</translation>
    </message>
    <message>
        <source>Section panel in &amp;true colours</source>
        <translation>Panel de secc&amp;ión en colores reales</translation>
    </message>
    <message>
        <source>Lighter section</source>
        <translation>Sección más clara</translation>
    </message>
    <message>
        <source>Darker section</source>
        <translation>Sección más oscura</translation>
    </message>
    <message>
        <source>&amp;Axes</source>
        <translation>E&amp;jes</translation>
    </message>
    <message>
        <source>&amp;Grid</source>
        <translation>C&amp;uadrícula</translation>
    </message>
    <message>
        <source>ab &amp;plane</source>
        <translation>&amp;Plano ab</translation>
    </message>
    <message>
        <source>Scales and l&amp;egend</source>
        <translation>Escala&amp;s y leyenda</translation>
    </message>
    <message>
        <source>Reset panels</source>
        <translation>Restablecer paneles</translation>
    </message>
    <message>
        <source>Present</source>
        <translation>Presentar</translation>
    </message>
    <message>
        <source>Only the view and the legend, in large type; Esc returns</source>
        <translation>Solo la vista y la leyenda, en letra grande; Esc vuelve</translation>
    </message>
    <message>
        <source>Colour cursor</source>
        <translation>Cursor de color</translation>
    </message>
    <message>
        <source>Chooses colours with the keyboard: arrow keys, Page Up, Page Down, Enter</source>
        <translation>Elige colores con el teclado: teclas de flecha, Re Pág, Av Pág, Intro</translation>
    </message>
    <message>
        <source>Section panel</source>
        <translation>Panel de sección</translation>
    </message>
    <message>
        <source>At a &amp;lightness</source>
        <translation>A una &amp;claridad</translation>
    </message>
    <message>
        <source>At a &amp;hue</source>
        <translation>A un &amp;tono</translation>
    </message>
    <message>
        <source>Gamut &amp;rings</source>
        <translation>&amp;Anillos de la gama</translation>
    </message>
    <message>
        <source>&amp;Next hue</source>
        <translation>Tono &amp;siguiente</translation>
    </message>
    <message>
        <source>&amp;Previous hue</source>
        <translation>Tono a&amp;nterior</translation>
    </message>
</context>
<context>
    <name>WelcomePage</name>
    <message>
        <source>Open a profile to see its gamut</source>
        <translation>Abra un perfil para ver su gama</translation>
    </message>
    <message>
        <source>Drop ICC profiles, pictures with a profile or saved gamuts here.
With two gamuts open they are compared. Measurements (CGATS, CxF, CSV) show as points.</source>
        <translation>Suelte aquí perfiles ICC, imágenes con perfil o gamas guardadas.
Dos gamas abiertas se comparan. Las mediciones (CGATS, CxF, CSV) se muestran como puntos.</translation>
    </message>
    <message>
        <source>&amp;Open a file…</source>
        <translation>Abrir un arc&amp;hivo…</translation>
    </message>
    <message>
        <source>Compare s&amp;RGB with Display P3</source>
        <translation>Co&amp;mparar sRGB con Display P3</translation>
    </message>
</context>
</TS>
