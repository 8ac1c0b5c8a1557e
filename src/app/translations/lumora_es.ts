<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES">
<context>
    <name>ActionRow</name>
    <message>
        <source>Attach an image</source>
        <translation>Adjuntar una imagen</translation>
    </message>
    <message>
        <source>Attach Image</source>
        <translation>Adjuntar imagen</translation>
    </message>
    <message>
        <source>Send</source>
        <translation>Enviar</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
</context>
<context>
    <name>AnswerCardView</name>
    <message>
        <source>Key points</source>
        <translation>Puntos clave</translation>
    </message>
    <message>
        <source>Next steps</source>
        <translation>Próximos pasos</translation>
    </message>
</context>
<context>
    <name>AvailabilityBanner</name>
    <message>
        <source>Checking model readiness</source>
        <translation>Comprobando si el modelo está listo</translation>
    </message>
    <message>
        <source>Checked at %1 · Checking every 10 seconds</source>
        <translation>Comprobado a las %1 · Se comprueba cada 10 segundos</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Comprobar ahora</translation>
    </message>
    <message>
        <source>macOS does not provide this app with a download percentage or transfer status.</source>
        <translation>El sistema no informa a esta aplicación del porcentaje ni del estado de la descarga.</translation>
    </message>
</context>
<context>
    <name>ContextMeter</name>
    <message>
        <source>Tokens counted for the latest prompt. Image, instructions, tools, and output also use context.</source>
        <translation>Tokens contados en la última petición. La imagen, las instrucciones, las herramientas y la salida también ocupan contexto.</translation>
    </message>
    <message>
        <source>Context %1 / %2 tokens</source>
        <translation>Contexto: %1 / %2 tokens</translation>
    </message>
</context>
<context>
    <name>ConversationList</name>
    <message>
        <source>Chats</source>
        <translation>Chats</translation>
    </message>
    <message>
        <source>Delete Chat</source>
        <translation>Eliminar chat</translation>
    </message>
</context>
<context>
    <name>DocumentPanel</name>
    <message>
        <source>Documents</source>
        <translation>Documentos</translation>
    </message>
    <message>
        <source>Importing a document</source>
        <translation>Importando un documento</translation>
    </message>
    <message>
        <source>Add a text, Markdown, or PDF document for local search</source>
        <translation>Añadir un documento de texto, Markdown o PDF para la búsqueda local</translation>
    </message>
    <message>
        <source>Add Document</source>
        <translation>Añadir documento</translation>
    </message>
    <message>
        <source>Add a document to ask questions about it.</source>
        <translation>Añada un documento para hacer preguntas sobre él.</translation>
    </message>
</context>
<context>
    <name>DocumentPicker</name>
    <message>
        <source>Text, Markdown and PDF documents</source>
        <translation>Documentos de texto, Markdown y PDF</translation>
    </message>
    <message>
        <source>Add Document</source>
        <translation>Añadir documento</translation>
    </message>
</context>
<context>
    <name>DocumentRow</name>
    <message>
        <source>Remove %1</source>
        <translation>Quitar «%1»</translation>
    </message>
</context>
<context>
    <name>EmptyState</name>
    <message>
        <source>Explore Apple’s on-device model</source>
        <translation>Descubra el modelo local</translation>
    </message>
    <message>
        <source>Ask a question, try Structured mode, add a document, or attach an image to read text and barcodes. Your chats stay on this Mac.</source>
        <translation>Haga una pregunta, pruebe el modo «Structured», añada un documento o adjunte una imagen para leer texto y códigos de barras. Sus chats no salen de este equipo.</translation>
    </message>
</context>
<context>
    <name>ImagePicker</name>
    <message>
        <source>Images</source>
        <translation>Imágenes</translation>
    </message>
    <message>
        <source>Attach Image</source>
        <translation>Adjuntar imagen</translation>
    </message>
</context>
<context>
    <name>LanguageModel</name>
    <message>
        <source>The model&apos;s answer has something else in the property “%1”.</source>
        <translation>La respuesta del modelo tiene otra cosa en la propiedad «%1».</translation>
    </message>
    <message>
        <source>The model&apos;s answer is nested too deeply.</source>
        <translation>La respuesta del modelo tiene demasiados niveles anidados.</translation>
    </message>
    <message>
        <source>The model&apos;s answer is not complete JSON.</source>
        <translation>La respuesta del modelo no es JSON completo.</translation>
    </message>
    <message>
        <source>The model&apos;s answer is not an object.</source>
        <translation>La respuesta del modelo no es un objeto.</translation>
    </message>
    <message>
        <source>The model&apos;s answer lacks the property “%1”.</source>
        <translation>En la respuesta del modelo falta la propiedad «%1».</translation>
    </message>
    <message>
        <source>There is no language model.</source>
        <translation>No hay ningún modelo de lenguaje.</translation>
    </message>
    <message>
        <source>There is no language model. Put a model file (*.gguf) into the folder %1.</source>
        <translation>No hay ningún modelo de lenguaje. Ponga un archivo de modelo (*.gguf) en la carpeta %1.</translation>
    </message>
    <message>
        <source>The model file %1 cannot be read. Allow reading it, or replace it.</source>
        <translation>No se puede leer el archivo de modelo %1. Permita su lectura o sustitúyalo.</translation>
    </message>
    <message>
        <source>The model file %1 is still being written. Wait until it is complete.</source>
        <translation>El archivo de modelo %1 todavía se está escribiendo. Espere a que esté completo.</translation>
    </message>
    <message>
        <source>The model file %1 is one of several parts, and not all of them are there. Add the others, or wait until they are complete.</source>
        <translation>El archivo de modelo %1 es una de varias partes, y no están todas. Añada las demás o espere a que estén completas.</translation>
    </message>
    <message>
        <source>The file %1 is not a model file, or not a complete one. Replace it or remove it.</source>
        <translation>El archivo %1 no es un archivo de modelo o no está completo. Sustitúyalo o elimínelo.</translation>
    </message>
    <message>
        <source>The model %1 is larger than this computer&apos;s memory. Use a smaller one.</source>
        <translation>El modelo %1 es mayor que la memoria de este equipo. Use uno más pequeño.</translation>
    </message>
    <message>
        <source>The language model keeps crashing. Use another model file, or try again in a minute.</source>
        <translation>El modelo de lenguaje falla una y otra vez. Use otro archivo de modelo o vuelva a intentarlo dentro de un minuto.</translation>
    </message>
    <message>
        <source>The language model was killed while it was loading, perhaps because memory was short. Close other programs or use a smaller model file, then try again in a minute.</source>
        <translation>El modelo de lenguaje se interrumpió mientras se cargaba, quizá por falta de memoria. Cierre otros programas o use un archivo de modelo más pequeño y vuelva a intentarlo dentro de un minuto.</translation>
    </message>
    <message>
        <source>The model file %1 took too long to load. Check the disk that it lies on, or use another model file.</source>
        <translation>El archivo de modelo %1 ha tardado demasiado en cargarse. Compruebe el disco en el que está o use otro archivo de modelo.</translation>
    </message>
    <message>
        <source>What the tool found is too long for the language model. Ask for less.</source>
        <translation>Lo que encontró la herramienta es demasiado largo para el modelo de lenguaje. Pida menos.</translation>
    </message>
    <message>
        <source>The message is too long for the language model. Shorten it.</source>
        <translation>El mensaje es demasiado largo para el modelo de lenguaje. Acórtelo.</translation>
    </message>
    <message>
        <source>The computer ran out of memory and stopped the language model. Close other programs or use a smaller model file, then send the message again.</source>
        <translation>El equipo se quedó sin memoria y detuvo el modelo de lenguaje. Cierre otros programas o use un archivo de modelo más pequeño y vuelva a enviar el mensaje.</translation>
    </message>
    <message>
        <source>The language model was killed from outside, perhaps because memory was short. It is starting again; send the message again.</source>
        <translation>El modelo de lenguaje se interrumpió desde fuera, quizá por falta de memoria. Se está reiniciando; vuelva a enviar el mensaje.</translation>
    </message>
    <message>
        <source>The language model was stopped from outside. It is starting again; send the message again.</source>
        <translation>El modelo de lenguaje se detuvo desde fuera. Se está reiniciando; vuelva a enviar el mensaje.</translation>
    </message>
    <message>
        <source>The language model uses instructions that this computer&apos;s processor does not have.</source>
        <translation>El modelo de lenguaje usa instrucciones que el procesador de este equipo no tiene.</translation>
    </message>
    <message>
        <source>The language model crashed (signal %1). It is starting again; send the message again. If it keeps crashing, try another model file.</source>
        <translation>El modelo de lenguaje ha fallado (señal %1). Se está reiniciando; vuelva a enviar el mensaje. Si sigue fallando, pruebe con otro archivo de modelo.</translation>
    </message>
    <message>
        <source>The language model sent an answer that makes no sense and was ended. It is starting again; send the message again.</source>
        <translation>El modelo de lenguaje envió algo sin sentido y se cerró. Se está reiniciando; vuelva a enviar el mensaje.</translation>
    </message>
    <message>
        <source>The language model no longer answered and was ended. It is starting again; send the message again.</source>
        <translation>El modelo de lenguaje dejó de responder y se cerró. Se está reiniciando; vuelva a enviar el mensaje.</translation>
    </message>
    <message>
        <source>The language model ended by itself (exit code %1). It is starting again; send the message again. If it keeps ending, try another model file.</source>
        <translation>El modelo de lenguaje se cerró por sí solo (código de salida %1). Se está reiniciando; vuelva a enviar el mensaje. Si sigue cerrándose, pruebe con otro archivo de modelo.</translation>
    </message>
    <message>
        <source>The part of Lumora that runs the language model cannot be started. Install Lumora again.</source>
        <translation>No se puede iniciar la parte de Lumora que ejecuta el modelo de lenguaje. Vuelva a instalar Lumora.</translation>
    </message>
    <message>
        <source>The model called the tool “%1”, which it was not offered. Send the message again.</source>
        <translation>El modelo llamó a la herramienta «%1», que no se le había ofrecido. Vuelva a enviar el mensaje.</translation>
    </message>
    <message>
        <source>The tool “%1” needs more memory than there is. Close other programs and ask again.</source>
        <translation>La herramienta «%1» necesita más memoria de la que hay. Cierre otros programas y vuelva a preguntar.</translation>
    </message>
    <message>
        <source>The tool “%1” failed (%2). Ask again.</source>
        <translation>La herramienta «%1» ha fallado (%2). Vuelva a preguntar.</translation>
    </message>
    <message>
        <source>The tool “%1” failed. Ask again.</source>
        <translation>La herramienta «%1» ha fallado. Vuelva a preguntar.</translation>
    </message>
    <message>
        <source>The image cannot be read now: the computer is short of memory, or too many programs run on it. Close some of them and ask again.</source>
        <translation>La imagen no se puede leer ahora: queda poca memoria o hay demasiados programas en ejecución. Cierre algunos y vuelva a preguntar.</translation>
    </message>
    <message>
        <source>The image cannot be read, because a part of this program cannot be started. Install the program again and ask again.</source>
        <translation>La imagen no se puede leer porque no se puede iniciar una parte de este programa. Vuelva a instalarlo y pregunte de nuevo.</translation>
    </message>
    <message>
        <source>Text in images cannot be read, because no language data for text recognition is installed. Install a package such as tesseract-ocr-eng and ask again.</source>
        <translation>No se puede leer texto en imágenes porque no hay datos de idioma instalados para el reconocimiento de texto. Instale un paquete como tesseract-ocr-spa y vuelva a preguntar.</translation>
    </message>
</context>
<context>
    <name>MessageEditor</name>
    <message>
        <source>Message</source>
        <translation>Mensaje</translation>
    </message>
</context>
<context>
    <name>MessageImage</name>
    <message>
        <source>Attached image</source>
        <translation>Imagen adjunta</translation>
    </message>
    <message>
        <source>Image unavailable</source>
        <translation>Imagen no disponible</translation>
    </message>
</context>
<context>
    <name>MessageList</name>
    <message>
        <source>Messages</source>
        <translation>Mensajes</translation>
    </message>
</context>
<context>
    <name>MessageParts</name>
    <message>
        <source>Waiting for the reply</source>
        <translation>Esperando la respuesta</translation>
    </message>
</context>
<context>
    <name>MessageRow</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Apple Foundation Model</source>
        <translation>Modelo local</translation>
    </message>
    <message>
        <source>You</source>
        <translation>Usted</translation>
    </message>
</context>
<context>
    <name>ModeControl</name>
    <message>
        <source>Response mode</source>
        <translation>Modo de respuesta</translation>
    </message>
</context>
<context>
    <name>NewChatButton</name>
    <message>
        <source>Start a new chat (⌘N)</source>
        <translation>Iniciar un chat nuevo (Ctrl+N)</translation>
    </message>
    <message>
        <source>New chat</source>
        <translation>Chat nuevo</translation>
    </message>
</context>
<context>
    <name>PendingImageRow</name>
    <message>
        <source>Remove image</source>
        <translation>Quitar imagen</translation>
    </message>
</context>
<context>
    <name>PrivacyNote</name>
    <message>
        <source>Private on this Mac. Shift+Return inserts a new line.</source>
        <translation>Privado en este equipo. Mayús+Intro inserta una línea nueva.</translation>
    </message>
    <message>
        <source>Private · On this Mac</source>
        <translation>Privado · En este equipo</translation>
    </message>
    <message>
        <source>Shift+Return for a new line</source>
        <translation>Mayús+Intro para una línea nueva</translation>
    </message>
    <message>
        <source>On-device</source>
        <translation>Local</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Lumora</source>
        <translation>Lumora</translation>
    </message>
    <message>
        <source>Chats</source>
        <translation>Chats</translation>
    </message>
</context>
<context>
    <name>SplitHandle</name>
    <message>
        <source>The left and right arrow keys change it.</source>
        <translation>Se cambia con las flechas izquierda y derecha.</translation>
    </message>
    <message>
        <source>Sidebar width</source>
        <translation>Anchura de la barra lateral</translation>
    </message>
</context>
<context>
    <name>StatusFooter</name>
    <message>
        <source>On-device model ready</source>
        <translation>Modelo local listo</translation>
    </message>
    <message>
        <source>Model unavailable</source>
        <translation>Modelo no disponible</translation>
    </message>
</context>
<context>
    <name>TextMenu</name>
    <message>
        <source>Cut</source>
        <translation>Cortar</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Pegar</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Seleccionar todo</translation>
    </message>
</context>
<context>
    <name>lumora::Announcements</name>
    <message>
        <source>Reply: %1</source>
        <translation>Respuesta: %1</translation>
    </message>
    <message>
        <source>On-device model ready</source>
        <translation>Modelo local listo</translation>
    </message>
</context>
<context>
    <name>lumora::ChatStore</name>
    <message>
        <source>The reply failed unexpectedly (%1). Please try again.</source>
        <translation>La respuesta falló de forma inesperada (%1). Vuelva a intentarlo.</translation>
    </message>
    <message>
        <source>The file has more than %1 MB. Choose a smaller image.</source>
        <translation>El archivo tiene más de %1 MB. Elija una imagen más pequeña.</translation>
    </message>
    <message>
        <source>Could not attach image: </source>
        <translation>No se pudo adjuntar la imagen: </translation>
    </message>
    <message>
        <source>The image is not on this computer. Copy it here, and attach the copy.</source>
        <translation>La imagen no está en este equipo. Cópiela aquí y adjunte la copia.</translation>
    </message>
    <message>
        <source>Could not find local image storage.</source>
        <translation>No se encontró el almacén local de imágenes.</translation>
    </message>
    <message>
        <source>This Mac does not support Apple Intelligence. The on-device model needs a compatible Apple silicon Mac.</source>
        <translation>Este equipo no es compatible con el modelo local, que necesita un equipo compatible con memoria suficiente.</translation>
    </message>
    <message>
        <source>Turn on Apple Intelligence in System Settings to use the on-device model.</source>
        <translation>Configure el modelo local en este equipo para poder usarlo.</translation>
    </message>
    <message>
        <source>Apple reports that the on-device model is not ready. It may be downloading or waiting for system conditions.</source>
        <translation>El modelo local aún no está listo. Es posible que se esté cargando o que esté esperando al sistema.</translation>
    </message>
    <message>
        <source>The on-device model is unavailable right now.</source>
        <translation>El modelo local no está disponible en este momento.</translation>
    </message>
    <message>
        <source>Could not save chats: </source>
        <translation>No se pudieron guardar los chats: </translation>
    </message>
</context>
<context>
    <name>lumora::DocumentLibrary</name>
    <message>
        <source>Document storage is unavailable.</source>
        <translation>El almacén de documentos no está disponible.</translation>
    </message>
    <message>
        <source>Could not import document: </source>
        <translation>No se pudo importar el documento: </translation>
    </message>
    <message>
        <source>The document is not on this computer. Copy it here, and add the copy.</source>
        <translation>El documento no está en este equipo. Cópielo aquí y añada la copia.</translation>
    </message>
    <message>
        <source>No readable text was found in this document. Scanned PDFs need OCR first.</source>
        <translation>No se encontró texto legible en este documento. Los PDF escaneados necesitan antes un OCR.</translation>
    </message>
</context>
<context>
    <name>lumora::Documents</name>
    <message>
        <source>There is too little memory to read the document. Close other programs and add it again.</source>
        <translation>No hay memoria suficiente para leer el documento. Cierre otros programas y vuelva a añadirlo.</translation>
    </message>
    <message>
        <source>The document cannot be read: %1.</source>
        <translation>No se puede leer el documento: %1.</translation>
    </message>
    <message>
        <source>The document is not UTF-8 text. Save it as UTF-8 and add it again.</source>
        <translation>El documento no es texto UTF-8. Guárdelo como UTF-8 y vuelva a añadirlo.</translation>
    </message>
    <message>
        <source>PDF files cannot be read now: the computer is short of memory, or too many programs run on it. Close some of them and add the document again.</source>
        <translation>Los archivos PDF no se pueden leer ahora: queda poca memoria o hay demasiados programas en ejecución. Cierre algunos y vuelva a añadir el documento.</translation>
    </message>
    <message>
        <source>PDF files cannot be read, because a part of this program cannot be started. Install the program again and add the document again.</source>
        <translation>Los archivos PDF no se pueden leer porque no se puede iniciar una parte de este programa. Vuelva a instalarlo y añada de nuevo el documento.</translation>
    </message>
    <message>
        <source>The document has more than 64 MB of text.</source>
        <translation>El documento tiene más de 64 MB de texto.</translation>
    </message>
</context>
<context>
    <name>lumora::Files</name>
    <message>
        <source>The file cannot be copied: %1.</source>
        <translation>No se puede copiar el archivo: %1.</translation>
    </message>
    <message>
        <source>it was stopped</source>
        <translation>se ha detenido la copia</translation>
    </message>
    <message>
        <source>The storage folder cannot be created: %1.</source>
        <translation>No se puede crear la carpeta de almacenamiento: %1.</translation>
    </message>
    <message>
        <source>The file cannot be written: %1.</source>
        <translation>No se puede escribir el archivo: %1.</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>no es un archivo</translation>
    </message>
    <message>
        <source>what follows the last full stop in its name is too long. Rename the file and try again</source>
        <translation>su extensión es demasiado larga. Cambie el nombre del archivo y vuelva a intentarlo</translation>
    </message>
    <message>
        <source>The unreadable file cannot be set aside: %1.</source>
        <translation>No se puede apartar el archivo ilegible: %1.</translation>
    </message>
</context>
<context>
    <name>lumora::MessageListModel</name>
    <message>
        <source>%1 input · %2 output tokens</source>
        <translation>Tokens: %1 de entrada · %2 de salida</translation>
    </message>
</context>
<context>
    <name>lumora::Program</name>
    <message>
        <source>Lumora is not installed completely: its window cannot be filled. Install it again.</source>
        <translation>Lumora no está instalado por completo: no se puede cargar el contenido de la ventana. Vuelva a instalarlo.</translation>
    </message>
    <message>
        <source>Lumora is already running; its window has been raised.</source>
        <translation>Lumora ya está en ejecución; su ventana se ha traído al frente.</translation>
    </message>
    <message>
        <source>Lumora is already running, but its window does not answer.</source>
        <translation>Lumora ya está en ejecución, pero su ventana no responde.</translation>
    </message>
</context>
<context>
    <name>lumora::Search</name>
    <message>
        <source>The search index is busy: another program uses it, or it is being made anew after an update. Try again in a few minutes.</source>
        <translation>El índice de búsqueda está ocupado: otro programa lo usa o se está rehaciendo tras una actualización. Vuelva a intentarlo dentro de unos minutos.</translation>
    </message>
    <message>
        <source>The disk has no room left for the search index.</source>
        <translation>No queda espacio en el disco para el índice de búsqueda.</translation>
    </message>
    <message>
        <source>The search index cannot be written: it or its folder is read-only.</source>
        <translation>No se puede escribir el índice de búsqueda: el índice o su carpeta son de solo lectura.</translation>
    </message>
    <message>
        <source>The search index cannot be used: %1.</source>
        <translation>No se puede usar el índice de búsqueda: %1.</translation>
    </message>
    <message>
        <source>There is too little memory for the search index.</source>
        <translation>No hay memoria suficiente para el índice de búsqueda.</translation>
    </message>
    <message>
        <source>The search index cannot be used now: too many programs run on this computer. Close some of them and try again.</source>
        <translation>El índice de búsqueda no se puede usar ahora: hay demasiados programas en ejecución en este equipo. Cierre algunos y vuelva a intentarlo.</translation>
    </message>
    <message>
        <source>The search index was closed.</source>
        <translation>El índice de búsqueda se ha cerrado.</translation>
    </message>
    <message>
        <source>The search index was made by a newer version of this program.</source>
        <translation>El índice de búsqueda se creó con una versión más reciente de este programa.</translation>
    </message>
    <message>
        <source>The search index is damaged and cannot be replaced: %1.</source>
        <translation>El índice de búsqueda está dañado y no se puede sustituir: %1.</translation>
    </message>
    <message>
        <source>The search index cannot be opened: %1.</source>
        <translation>No se puede abrir el índice de búsqueda: %1.</translation>
    </message>
    <message>
        <source>The search index cannot be opened: something else has its name.</source>
        <translation>No se puede abrir el índice de búsqueda: otra cosa tiene su nombre.</translation>
    </message>
    <message>
        <source>The search index cannot be created: %1.</source>
        <translation>No se puede crear el índice de búsqueda: %1.</translation>
    </message>
</context>
</TS>
