<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES">
<context>
    <name>ChangeLog</name>
    <message>
        <source>Note begun</source>
        <translation>Nota iniciada</translation>
    </message>
    <message>
        <source>Tooth</source>
        <translation>Diente</translation>
    </message>
    <message>
        <source>Bracket</source>
        <translation>Bracket</translation>
    </message>
    <message>
        <source>Lingual button</source>
        <translation>Botón lingual</translation>
    </message>
    <message>
        <source>Bracket colour</source>
        <translation>Color del bracket</translation>
    </message>
    <message>
        <source>Elastic placed</source>
        <translation>Elástico colocado</translation>
    </message>
    <message>
        <source>Elastic removed</source>
        <translation>Elástico retirado</translation>
    </message>
    <message>
        <source>Elastic size</source>
        <translation>Tamaño del elástico</translation>
    </message>
    <message>
        <source>Elastic named</source>
        <translation>Elástico nombrado</translation>
    </message>
    <message>
        <source>Elastics shortened</source>
        <translation>Elásticos acortados</translation>
    </message>
    <message>
        <source>Approval</source>
        <translation>Aprobación</translation>
    </message>
    <message>
        <source>Approval of the treatment</source>
        <translation>Aprobación del tratamiento</translation>
    </message>
    <message>
        <source>none</source>
        <translation>ninguno</translation>
    </message>
    <message>
        <source>shown</source>
        <translation>visible</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>oculto</translation>
    </message>
    <message>
        <source>Elastic renamed</source>
        <translation>Elástico renombrado</translation>
    </message>
    <message>
        <source>not approved</source>
        <translation>no aprobada</translation>
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
            <numerusform>Colocar %n diente</numerusform>
            <numerusform>Colocar %n dientes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Remove %n teeth</source>
        <translation>
            <numerusform>Quitar %n diente</numerusform>
            <numerusform>Quitar %n dientes</numerusform>
        </translation>
    </message>
    <message>
        <source>Place tooth %1</source>
        <translation>Colocar el diente %1</translation>
    </message>
    <message>
        <source>Remove tooth %1</source>
        <translation>Quitar el diente %1</translation>
    </message>
    <message numerus="yes">
        <source>Remove %n brackets</source>
        <translation>
            <numerusform>Quitar %n bracket</numerusform>
            <numerusform>Quitar %n brackets</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove bracket from %1</source>
        <translation>Quitar el bracket de %1</translation>
    </message>
    <message numerus="yes">
        <source>Place %n brackets</source>
        <translation>
            <numerusform>Colocar %n bracket</numerusform>
            <numerusform>Colocar %n brackets</numerusform>
        </translation>
    </message>
    <message>
        <source>Place bracket on %1</source>
        <translation>Colocar un bracket en %1</translation>
    </message>
    <message numerus="yes">
        <source>Place %n buttons</source>
        <translation>
            <numerusform>Colocar %n botón</numerusform>
            <numerusform>Colocar %n botones</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Remove %n buttons</source>
        <translation>
            <numerusform>Quitar %n botón</numerusform>
            <numerusform>Quitar %n botones</numerusform>
        </translation>
    </message>
    <message>
        <source>Place button on %1</source>
        <translation>Colocar un botón en %1</translation>
    </message>
    <message>
        <source>Remove button from %1</source>
        <translation>Quitar el botón de %1</translation>
    </message>
    <message numerus="yes">
        <source>Clear %n brackets</source>
        <translation>
            <numerusform>Quitar el color de %n bracket</numerusform>
            <numerusform>Quitar el color de %n brackets</numerusform>
        </translation>
    </message>
    <message>
        <source>Clear bracket on %1</source>
        <translation>Quitar el color del bracket de %1</translation>
    </message>
    <message numerus="yes">
        <source>Colour %n brackets</source>
        <translation>
            <numerusform>Colorear %n bracket</numerusform>
            <numerusform>Colorear %n brackets</numerusform>
        </translation>
    </message>
    <message>
        <source>Colour bracket on %1</source>
        <translation>Colorear el bracket de %1</translation>
    </message>
    <message numerus="yes">
        <source>Place %n elastics</source>
        <translation>
            <numerusform>Colocar %n elástico</numerusform>
            <numerusform>Colocar %n elásticos</numerusform>
        </translation>
    </message>
    <message>
        <source>Place elastic %1</source>
        <translation>Colocar el elástico %1</translation>
    </message>
    <message numerus="yes">
        <source>Remove %n elastics</source>
        <translation>
            <numerusform>Quitar %n elástico</numerusform>
            <numerusform>Quitar %n elásticos</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove elastic %1</source>
        <translation>Quitar el elástico %1</translation>
    </message>
    <message numerus="yes">
        <source>Change %n elastics</source>
        <translation>
            <numerusform>Cambiar %n elástico</numerusform>
            <numerusform>Cambiar %n elásticos</numerusform>
        </translation>
    </message>
    <message>
        <source>Change elastic %1</source>
        <translation>Cambiar el elástico %1</translation>
    </message>
    <message>
        <source>%1, from %2 to %3</source>
        <translation>%1, de %2 a %3</translation>
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
        <translation>No se puede colocar el elástico con nombre</translation>
    </message>
    <message>
        <source>The Elastic Configuration named &apos;%@&apos; cannot be placed because 1 or more required teeth for Bracket/Button placement are missing.</source>
        <translation>El elástico «%@» no se puede colocar porque falta al menos un diente que debería llevar un bracket o un botón lingual para él.</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Imprimir</translation>
    </message>
    <message>
        <source>String elastics</source>
        <translation>Colocar elásticos</translation>
    </message>
    <message>
        <source>Place and colour brackets</source>
        <translation>Colocar y colorear brackets</translation>
    </message>
    <message>
        <source>Printing Not Supported</source>
        <translation>No se puede imprimir</translation>
    </message>
    <message>
        <source>This computer does not meet the minimum system requirements for printing.</source>
        <translation>Este equipo no cumple los requisitos mínimos para imprimir.</translation>
    </message>
    <message>
        <source>Place Named Elastic...</source>
        <translation>Colocar elástico con nombre…</translation>
    </message>
    <message>
        <source>Place Lingual Button</source>
        <translation>Colocar botón lingual</translation>
    </message>
    <message>
        <source>Remove Lingual Button</source>
        <translation>Quitar botón lingual</translation>
    </message>
    <message>
        <source>Place Tooth</source>
        <translation>Colocar diente</translation>
    </message>
    <message>
        <source>Remove Tooth</source>
        <translation>Quitar diente</translation>
    </message>
    <message>
        <source>Remove Bracket</source>
        <translation>Quitar bracket</translation>
    </message>
    <message>
        <source>Remove All Brackets</source>
        <translation>Quitar todos los brackets</translation>
    </message>
    <message>
        <source>Name This Elastic...</source>
        <translation>Nombrar este elástico…</translation>
    </message>
    <message>
        <source>Remove Elastic</source>
        <translation>Quitar elástico</translation>
    </message>
    <message>
        <source>Remove All Elastics</source>
        <translation>Quitar todos los elásticos</translation>
    </message>
    <message>
        <source>Place All Brackets</source>
        <translation>Colocar todos los brackets</translation>
    </message>
    <message>
        <source>Place Bracket</source>
        <translation>Colocar bracket</translation>
    </message>
    <message>
        <source>Mark All Brackets</source>
        <translation>Colorear todos los brackets</translation>
    </message>
    <message>
        <source>Mark Bracket</source>
        <translation>Colorear bracket</translation>
    </message>
    <message>
        <source>Mark All Elastics</source>
        <translation>Tamaño de todos los elásticos</translation>
    </message>
    <message>
        <source>Mark Elastic</source>
        <translation>Tamaño del elástico</translation>
    </message>
    <message>
        <source>Start New Elastic</source>
        <translation>Empezar un elástico nuevo</translation>
    </message>
    <message>
        <source>Rename &quot;%@&quot; Elastic...</source>
        <translation>Cambiar el nombre del elástico «%@»…</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Hoy</translation>
    </message>
    <message>
        <source>Missing: %@</source>
        <translation>Dientes que faltan: %@</translation>
    </message>
</context>
<context>
    <name>DatabaseAdvice</name>
    <message>
        <source>Close the other program that works with the database, then try again.</source>
        <translation>Cierre el otro programa que usa la base de datos e inténtelo de nuevo.</translation>
    </message>
    <message>
        <source>Ask for permission to write to the file and its folder.</source>
        <translation>Pida permiso para modificar el archivo y su carpeta.</translation>
    </message>
    <message>
        <source>Make room on the disk, then try again.</source>
        <translation>Libere espacio en el disco e inténtelo de nuevo.</translation>
    </message>
    <message>
        <source>Check that the folder is there, that you may read and write the file, and that there is room on the disk, then try again.</source>
        <translation>Compruebe que la carpeta existe, que puede leer y modificar el archivo y que hay espacio en el disco, e inténtelo de nuevo.</translation>
    </message>
    <message>
        <source>Keep a copy of the file as it is, and put the last backup in its place.</source>
        <translation>Guarde una copia del archivo tal como está y ponga en su lugar la última copia de seguridad.</translation>
    </message>
    <message>
        <source>Start the program with another file: --database FILE.</source>
        <translation>Inicie el programa con otro archivo: --database FILE.</translation>
    </message>
    <message>
        <source>Install the newer version of this program.</source>
        <translation>Instale la versión más reciente de este programa.</translation>
    </message>
    <message>
        <source>Nothing was changed in the file.</source>
        <translation>No se ha cambiado nada en el archivo.</translation>
    </message>
</context>
<context>
    <name>ElasticName</name>
    <message>
        <source>Name Elastic</source>
        <translation>Nombrar elástico</translation>
    </message>
    <message>
        <source>Name of the elastic</source>
        <translation>Nombre del elástico</translation>
    </message>
</context>
<context>
    <name>Materials</name>
    <message>
        <source>Materials</source>
        <translation>Materiales</translation>
    </message>
    <message>
        <source>&amp;Part:</source>
        <translation>&amp;Parte:</translation>
    </message>
    <message>
        <source>Part of the scene</source>
        <translation>Parte de la escena</translation>
    </message>
    <message>
        <source>&amp;Colour:</source>
        <translation>&amp;Color:</translation>
    </message>
    <message>
        <source>Colour of the part</source>
        <translation>Color de la parte</translation>
    </message>
    <message>
        <source>&amp;Shininess:</source>
        <translation>&amp;Brillo:</translation>
    </message>
    <message>
        <source>Shininess of the part</source>
        <translation>Brillo de la parte</translation>
    </message>
    <message>
        <source>Sa&amp;ve as My Default</source>
        <translation>&amp;Guardar como mi preferencia</translation>
    </message>
    <message>
        <source>&amp;Restore My Default</source>
        <translation>&amp;Restaurar mi preferencia</translation>
    </message>
    <message>
        <source>Restore &amp;Factory Setting</source>
        <translation>Restaurar los valores de &amp;fábrica</translation>
    </message>
</context>
<context>
    <name>OpenedTreatment</name>
    <message>
        <source>A name is needed.</source>
        <translation>Hace falta un nombre.</translation>
    </message>
    <message>
        <source>Another elastic has this name already.</source>
        <translation>Otro elástico ya tiene este nombre.</translation>
    </message>
</context>
<context>
    <name>PagePreview</name>
    <message>
        <source>There is no printer: the page can be printed into a PDF file.</source>
        <translation>No hay ninguna impresora: la página se puede imprimir en un archivo PDF.</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Imprimir</translation>
    </message>
    <message>
        <source>The page could not be printed: %1 cannot be written to.</source>
        <translation>La página no se pudo imprimir: no se puede escribir en %1.</translation>
    </message>
</context>
<context>
    <name>StandardView</name>
    <message>
        <source>Front</source>
        <translation>Frente</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Derecha</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Izquierda</translation>
    </message>
    <message>
        <source>Upper Occlusal</source>
        <translation>Oclusal superior</translation>
    </message>
    <message>
        <source>Lower Occlusal</source>
        <translation>Oclusal inferior</translation>
    </message>
</context>
<context>
    <name>ToothChart</name>
    <message>
        <source>Tooth Chart</source>
        <translation>Odontograma</translation>
    </message>
    <message>
        <source>Tooth chart</source>
        <translation>Odontograma</translation>
    </message>
    <message>
        <source>Patient&apos;s right is on the left.</source>
        <translation>La derecha del paciente está a la izquierda.</translation>
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
        <translation>Derecha</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Frente</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Izquierda</translation>
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
        <translation>Página %1 de %2</translation>
    </message>
    <message>
        <source>Brackets</source>
        <translation>Brackets</translation>
    </message>
    <message>
        <source>Treatment of %1, %2</source>
        <translation>Tratamiento de %1, %2</translation>
    </message>
</context>
<context>
    <name>TreatmentSession</name>
    <message>
        <source>and %1 more</source>
        <translation>y %1 más</translation>
    </message>
    <message>
        <source>The changes could not be stored and are kept in memory for the next try: %1</source>
        <translation>Los cambios no se pudieron guardar y quedan en memoria para el próximo intento: %1</translation>
    </message>
    <message>
        <source>The elastic %1 is not shown: %2 is no bracket or button of this document</source>
        <translation>El elástico %1 no se muestra: %2 no es un bracket ni un botón de este documento</translation>
    </message>
    <message>
        <source>The elastic size %1 is not in the catalogue; elastics of this size are shown without colour</source>
        <translation>El tamaño de elástico %1 no está en el catálogo; los elásticos de este tamaño se muestran sin color</translation>
    </message>
    <message>
        <source>The elastic configuration %1 is not in the catalogue</source>
        <translation>La configuración de elásticos %1 no está en el catálogo</translation>
    </message>
</context>
<context>
    <name>TreatmentStore</name>
    <message>
        <source>the file is not a database</source>
        <translation>el archivo no es una base de datos</translation>
    </message>
    <message>
        <source>the database is locked by another program</source>
        <translation>la base de datos está bloqueada por otro programa</translation>
    </message>
    <message>
        <source>the database cannot be written to</source>
        <translation>no se puede escribir en la base de datos</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>el disco está lleno</translation>
    </message>
    <message>
        <source>the database could not be opened</source>
        <translation>la base de datos no se pudo abrir</translation>
    </message>
    <message>
        <source>the database could not be read or written (%1)</source>
        <translation>la base de datos no se pudo leer o escribir (%1)</translation>
    </message>
    <message>
        <source>the database is damaged</source>
        <translation>la base de datos está dañada</translation>
    </message>
    <message>
        <source>the database was written by a newer version of this program (its tables are of version %1, this program knows version %2)</source>
        <translation>la base de datos fue escrita por una versión más reciente de este programa (sus tablas son de la versión %1, este programa conoce la versión %2)</translation>
    </message>
    <message>
        <source>the database belongs to another program</source>
        <translation>la base de datos pertenece a otro programa</translation>
    </message>
    <message>
        <source>the database was changed by another program (%1 &quot;%2&quot; is not as this program makes it)</source>
        <translation>otro programa modificó la base de datos (%1 «%2» no es como la crea este programa)</translation>
    </message>
    <message>
        <source>%1: the file is not a database</source>
        <translation>%1: el archivo no es una base de datos</translation>
    </message>
    <message>
        <source>%1: another window of the program works with the database; it is open for reading only</source>
        <translation>%1: otra ventana del programa trabaja con la base de datos; está abierta solo para lectura</translation>
    </message>
    <message>
        <source>%1; it is open for reading only</source>
        <translation>%1; está abierta solo para lectura</translation>
    </message>
    <message>
        <source>the database takes too long to answer</source>
        <translation>la base de datos tarda demasiado en responder</translation>
    </message>
</context>
<context>
    <name>viewer::ChangeLogDialog</name>
    <message>
        <source>Changes</source>
        <translation>Cambios</translation>
    </message>
    <message>
        <source>When</source>
        <translation>Cuándo</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Nota</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Qué</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Dónde</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Antes</translation>
    </message>
    <message>
        <source>After</source>
        <translation>Después</translation>
    </message>
    <message>
        <source>Search the changes</source>
        <translation>Buscar en los cambios</translation>
    </message>
</context>
<context>
    <name>viewer::DateBar</name>
    <message>
        <source>Dates of the treatment</source>
        <translation>Fechas del tratamiento</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Hoy</translation>
    </message>
    <message>
        <source>Approved %1</source>
        <translation>Aprobado el %1</translation>
    </message>
    <message>
        <source>Approve</source>
        <translation>Aprobar</translation>
    </message>
    <message>
        <source>Take the approval back</source>
        <translation>Retirar la aprobación</translation>
    </message>
    <message>
        <source>Approve the treatment as it is shown</source>
        <translation>Aprobar el tratamiento tal como se muestra</translation>
    </message>
</context>
<context>
    <name>viewer::KeysDialog</name>
    <message>
        <source>Treatment view</source>
        <translation>Vista del tratamiento</translation>
    </message>
    <message>
        <source>Drag</source>
        <translation>Arrastrar</translation>
    </message>
    <message>
        <source>Across: turns the jaws. Up and down: opens the mouth.</source>
        <translation>De lado: gira los maxilares. Arriba y abajo: abre la boca.</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>Rueda</translation>
    </message>
    <message>
        <source>Up and down: opens the mouth. Across: turns the jaws.</source>
        <translation>Arriba y abajo: abre la boca. De lado: gira los maxilares.</translation>
    </message>
    <message>
        <source>Left, Right</source>
        <translation>Izquierda, derecha</translation>
    </message>
    <message>
        <source>Turn by 45 degrees</source>
        <translation>Girar 45 grados</translation>
    </message>
    <message>
        <source>Up, Down</source>
        <translation>Arriba, abajo</translation>
    </message>
    <message>
        <source>Open the mouth by a step, or close it</source>
        <translation>Abrir la boca un paso, o cerrarla</translation>
    </message>
    <message>
        <source>0</source>
        <translation>0</translation>
    </message>
    <message>
        <source>Front view with the mouth closed</source>
        <translation>Vista frontal con la boca cerrada</translation>
    </message>
    <message>
        <source>Click with the elastics tool</source>
        <translation>Clic con la herramienta de elásticos</translation>
    </message>
    <message>
        <source>On a bracket or a lingual button: begins an elastic or goes on with it; on its first member: places it. On an elastic: its menu.</source>
        <translation>En un bracket o botón lingual: empieza un elástico o lo continúa; en su primer punto: lo coloca. En un elástico: su menú.</translation>
    </message>
    <message>
        <source>Click with the bracket tool</source>
        <translation>Clic con la herramienta de brackets</translation>
    </message>
    <message>
        <source>The menu of the tooth&apos;s bracket; for three seconds afterwards clicks do the same to other teeth.</source>
        <translation>El menú del bracket del diente; durante tres segundos, otros clics hacen lo mismo con otros dientes.</translation>
    </message>
    <message>
        <source>Control and click</source>
        <translation>Control y clic</translation>
    </message>
    <message>
        <source>With the elastics tool: as with the bracket tool</source>
        <translation>Con la herramienta de elásticos: como con la de brackets</translation>
    </message>
    <message>
        <source>Menu key</source>
        <translation>Tecla de menú</translation>
    </message>
    <message>
        <source>The menu of what is under the pointer</source>
        <translation>El menú de lo que está bajo el puntero</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Gives up an elastic that is being strung, or leaves full screen</source>
        <translation>Descarta un elástico empezado o sale de la pantalla completa</translation>
    </message>
    <message>
        <source>Double click</source>
        <translation>Doble clic</translation>
    </message>
    <message>
        <source>Full screen and back</source>
        <translation>Pantalla completa y vuelta</translation>
    </message>
    <message>
        <source>Keys and Mouse</source>
        <translation>Teclas y ratón</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Dónde</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Teclas</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>Qué hace</translation>
    </message>
    <message>
        <source>Search the keys</source>
        <translation>Buscar en las teclas</translation>
    </message>
    <message>
        <source>Keys and mouse gestures</source>
        <translation>Teclas y gestos del ratón</translation>
    </message>
</context>
<context>
    <name>viewer::MaterialsPanel</name>
    <message>
        <source>Teeth</source>
        <translation>Dientes</translation>
    </message>
    <message>
        <source>Gums</source>
        <translation>Encías</translation>
    </message>
    <message>
        <source>Brackets without a colour</source>
        <translation>Brackets sin color</translation>
    </message>
    <message>
        <source>Lingual buttons</source>
        <translation>Botones linguales</translation>
    </message>
    <message>
        <source>Colour of %1</source>
        <translation>Color: %1</translation>
    </message>
</context>
<context>
    <name>viewer::NewPatientDialog</name>
    <message>
        <source>&amp;Born:</source>
        <translation>N&amp;acimiento:</translation>
    </message>
    <message>
        <source>New Patient</source>
        <translation>Paciente nuevo</translation>
    </message>
    <message>
        <source>Date of birth</source>
        <translation>Fecha de nacimiento</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Nombre:</translation>
    </message>
    <message>
        <source>N&amp;umber:</source>
        <translation>Nú&amp;mero:</translation>
    </message>
    <message>
        <source>Another patient has this number already.</source>
        <translation>Otro paciente ya tiene este número.</translation>
    </message>
</context>
<context>
    <name>viewer::OpenTreatments</name>
    <message>
        <source>Loading the meshes…</source>
        <translation>Cargando los modelos…</translation>
    </message>
    <message>
        <source>Open Treatment</source>
        <translation>Abrir tratamiento</translation>
    </message>
    <message>
        <source>Import Treatment</source>
        <translation>Importar tratamiento</translation>
    </message>
</context>
<context>
    <name>viewer::PatientsDialog</name>
    <message>
        <source>Patients</source>
        <translation>Pacientes</translation>
    </message>
    <message>
        <source>Search the patients</source>
        <translation>Buscar pacientes</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>&amp;Abrir</translation>
    </message>
    <message>
        <source>&amp;New Patient…</source>
        <translation>Paciente &amp;nuevo…</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Número</translation>
    </message>
    <message>
        <source>Born</source>
        <translation>Nacimiento</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notas</translation>
    </message>
    <message>
        <source>Last note</source>
        <translation>Última nota</translation>
    </message>
</context>
<context>
    <name>viewer::SearchableTable</name>
    <message>
        <source>Search</source>
        <translation>Buscar</translation>
    </message>
</context>
<context>
    <name>viewer::ToothChart</name>
    <message>
        <source>Tooth</source>
        <translation>Diente</translation>
    </message>
    <message>
        <source>Bracket</source>
        <translation>Bracket</translation>
    </message>
    <message>
        <source>Lingual button</source>
        <translation>Botón lingual</translation>
    </message>
    <message>
        <source>No colour</source>
        <translation>Sin color</translation>
    </message>
    <message>
        <source>not placed</source>
        <translation>no colocado</translation>
    </message>
    <message>
        <source>no colour</source>
        <translation>sin color</translation>
    </message>
    <message>
        <source>Bracket %1: %2</source>
        <translation>Bracket %1: %2</translation>
    </message>
    <message>
        <source>Tooth %1</source>
        <translation>Diente %1</translation>
    </message>
    <message>
        <source>Tooth %1: missing</source>
        <translation>Diente %1: ausente</translation>
    </message>
    <message>
        <source>Lingual button %1</source>
        <translation>Botón lingual %1</translation>
    </message>
    <message>
        <source>Lingual button %1: not placed</source>
        <translation>Botón lingual %1: no colocado</translation>
    </message>
    <message>
        <source>the tooth is missing</source>
        <translation>falta el diente</translation>
    </message>
    <message>
        <source>Lingual button %1: the tooth is missing</source>
        <translation>Botón lingual %1: falta el diente</translation>
    </message>
</context>
<context>
    <name>viewer::TreatmentWindow</name>
    <message>
        <source>Dates</source>
        <translation>Fechas</translation>
    </message>
    <message>
        <source>%1 - Treatment viewer</source>
        <translation>%1 - Visor de tratamientos</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>Cambios sin guardar</translation>
    </message>
    <message>
        <source>Save the changes to %1?</source>
        <translation>¿Guardar los cambios en %1?</translation>
    </message>
    <message>
        <source>Changes are not stored</source>
        <translation>Los cambios no están guardados</translation>
    </message>
    <message>
        <source>Close all the same and lose them?</source>
        <translation>¿Cerrar de todos modos y perderlos?</translation>
    </message>
    <message>
        <source>Open Treatment</source>
        <translation>Abrir tratamiento</translation>
    </message>
    <message>
        <source>Treatments (*.json)</source>
        <translation>Tratamientos (*.json)</translation>
    </message>
    <message>
        <source>Import Treatment</source>
        <translation>Importar tratamiento</translation>
    </message>
    <message>
        <source>Export Treatment</source>
        <translation>Exportar tratamiento</translation>
    </message>
    <message>
        <source>Save Picture</source>
        <translation>Guardar imagen</translation>
    </message>
    <message>
        <source>Pictures (*.png)</source>
        <translation>Imágenes (*.png)</translation>
    </message>
    <message>
        <source>Save Page as PDF</source>
        <translation>Guardar página como PDF</translation>
    </message>
    <message>
        <source>Pages (*.pdf)</source>
        <translation>Páginas (*.pdf)</translation>
    </message>
    <message>
        <source>Name of the elastic %1:</source>
        <translation>Nombre del elástico %1:</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Archivo</translation>
    </message>
    <message>
        <source>Pa&amp;tients…</source>
        <translation>Pa&amp;cientes…</translation>
    </message>
    <message>
        <source>&amp;Open File…</source>
        <translation>&amp;Abrir archivo…</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>Abrir &amp;recientes</translation>
    </message>
    <message>
        <source>&amp;Import File…</source>
        <translation>&amp;Importar archivo…</translation>
    </message>
    <message>
        <source>&amp;Save Treatment</source>
        <translation>&amp;Guardar tratamiento</translation>
    </message>
    <message>
        <source>&amp;Export Treatment…</source>
        <translation>&amp;Exportar tratamiento…</translation>
    </message>
    <message>
        <source>Save Pict&amp;ure…</source>
        <translation>Guardar i&amp;magen…</translation>
    </message>
    <message>
        <source>&amp;Print…</source>
        <translation>Im&amp;primir…</translation>
    </message>
    <message>
        <source>Save Page as P&amp;DF…</source>
        <translation>Guardar página como P&amp;DF…</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation>&amp;Cerrar ventana</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Salir</translation>
    </message>
    <message>
        <source>&amp;Clear List</source>
        <translation>&amp;Vaciar lista</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Edición</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Deshacer</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Rehacer</translation>
    </message>
    <message>
        <source>&amp;Copy Picture</source>
        <translation>&amp;Copiar imagen</translation>
    </message>
    <message>
        <source>&amp;Treatment</source>
        <translation>&amp;Tratamiento</translation>
    </message>
    <message>
        <source>&amp;Earlier Note</source>
        <translation>Nota &amp;anterior</translation>
    </message>
    <message>
        <source>&amp;Later Note</source>
        <translation>Nota &amp;siguiente</translation>
    </message>
    <message>
        <source>&amp;Today&apos;s Note</source>
        <translation>Nota de &amp;hoy</translation>
    </message>
    <message>
        <source>&amp;Approved</source>
        <translation>A&amp;probado</translation>
    </message>
    <message>
        <source>C&amp;hanges…</source>
        <translation>&amp;Cambios…</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ver</translation>
    </message>
    <message>
        <source>&amp;Zoom to Fit</source>
        <translation>A&amp;justar</translation>
    </message>
    <message>
        <source>&amp;Full Screen</source>
        <translation>&amp;Pantalla completa</translation>
    </message>
    <message>
        <source>Sho&amp;w</source>
        <translation>&amp;Mostrar</translation>
    </message>
    <message>
        <source>&amp;Tooth Numbers</source>
        <translation>&amp;Números de los dientes</translation>
    </message>
    <message>
        <source>&amp;Colours of Windows</source>
        <translation>&amp;Colores de las ventanas</translation>
    </message>
    <message>
        <source>&amp;Upper Arch</source>
        <translation>Arcada &amp;superior</translation>
    </message>
    <message>
        <source>&amp;Lower Arch</source>
        <translation>Arcada &amp;inferior</translation>
    </message>
    <message>
        <source>&amp;Gums</source>
        <translation>&amp;Encías</translation>
    </message>
    <message>
        <source>&amp;Brackets</source>
        <translation>&amp;Brackets</translation>
    </message>
    <message>
        <source>Lingual Bu&amp;ttons</source>
        <translation>B&amp;otones linguales</translation>
    </message>
    <message>
        <source>&amp;Elastics</source>
        <translation>E&amp;lásticos</translation>
    </message>
    <message>
        <source>&amp;Beside the Teeth</source>
        <translation>&amp;Junto a los dientes</translation>
    </message>
    <message>
        <source>&amp;Universal</source>
        <translation>&amp;Universal</translation>
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
        <translation>Como el &amp;escritorio</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Claro</translation>
    </message>
    <message>
        <source>Da&amp;rk</source>
        <translation>&amp;Oscuro</translation>
    </message>
    <message>
        <source>&amp;Panels</source>
        <translation>&amp;Paneles</translation>
    </message>
    <message>
        <source>&amp;Tooth Chart</source>
        <translation>O&amp;dontograma</translation>
    </message>
    <message>
        <source>&amp;Materials</source>
        <translation>&amp;Materiales</translation>
    </message>
    <message>
        <source>&amp;Close All Panels</source>
        <translation>&amp;Cerrar todos los paneles</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>A&amp;yuda</translation>
    </message>
    <message>
        <source>&amp;Keys and Mouse…</source>
        <translation>&amp;Teclas y ratón…</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Acerca de</translation>
    </message>
    <message>
        <source>Treatment viewer</source>
        <translation>Visor de tratamientos</translation>
    </message>
    <message>
        <source>Treatment viewer %1
One patient&apos;s orthodontic treatment as an interactive scene.</source>
        <translation>Visor de tratamientos %1
El tratamiento de ortodoncia de un paciente como escena interactiva.</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Rename Elastic</source>
        <translation>Cambiar el nombre del elástico</translation>
    </message>
    <message>
        <source>Name Elastic</source>
        <translation>Nombrar elástico</translation>
    </message>
    <message>
        <source>Name elastic %1, %2</source>
        <translation>Nombrar el elástico %1, %2</translation>
    </message>
    <message>
        <source>Place Named Elastic</source>
        <translation>Colocar elástico con nombre</translation>
    </message>
    <message>
        <source>An elastic runs over %1 already. Place %2 on top of it as a second one?</source>
        <translation>Ya hay un elástico sobre %1. ¿Colocar %2 encima como segundo?</translation>
    </message>
    <message>
        <source>Rename elastic %1, from %2 to %3</source>
        <translation>Cambiar el nombre del elástico %1, de %2 a %3</translation>
    </message>
</context>
</TS>
