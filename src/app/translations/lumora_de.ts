<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>ActionRow</name>
    <message>
        <source>Attach an image</source>
        <translation>Bild anhängen</translation>
    </message>
    <message>
        <source>Attach Image</source>
        <translation>Bild anhängen</translation>
    </message>
    <message>
        <source>Send</source>
        <translation>Senden</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
</context>
<context>
    <name>AnswerCardView</name>
    <message>
        <source>Key points</source>
        <translation>Kernpunkte</translation>
    </message>
    <message>
        <source>Next steps</source>
        <translation>Nächste Schritte</translation>
    </message>
</context>
<context>
    <name>AvailabilityBanner</name>
    <message>
        <source>Checking model readiness</source>
        <translation>Bereitschaft des Modells wird geprüft</translation>
    </message>
    <message>
        <source>Checked at %1 · Checking every 10 seconds</source>
        <translation>Geprüft um %1 · Prüfung alle 10 Sekunden</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Jetzt prüfen</translation>
    </message>
    <message>
        <source>macOS does not provide this app with a download percentage or transfer status.</source>
        <translation>Das System teilt dieser App weder den Fortschritt noch den Status des Downloads mit.</translation>
    </message>
</context>
<context>
    <name>ContextMeter</name>
    <message>
        <source>Tokens counted for the latest prompt. Image, instructions, tools, and output also use context.</source>
        <translation>Gezählte Token der letzten Eingabe. Auch Bild, Anweisungen, Werkzeuge und Ausgabe belegen Kontext.</translation>
    </message>
    <message>
        <source>Context %1 / %2 tokens</source>
        <translation>Kontext: %1 / %2 Token</translation>
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
        <translation>Chat löschen</translation>
    </message>
</context>
<context>
    <name>DocumentPanel</name>
    <message>
        <source>Documents</source>
        <translation>Dokumente</translation>
    </message>
    <message>
        <source>Importing a document</source>
        <translation>Dokument wird importiert</translation>
    </message>
    <message>
        <source>Add a text, Markdown, or PDF document for local search</source>
        <translation>Text-, Markdown- oder PDF-Dokument für die lokale Suche hinzufügen</translation>
    </message>
    <message>
        <source>Add Document</source>
        <translation>Dokument hinzufügen</translation>
    </message>
    <message>
        <source>Add a document to ask questions about it.</source>
        <translation>Fügen Sie ein Dokument hinzu, um Fragen dazu zu stellen.</translation>
    </message>
</context>
<context>
    <name>DocumentPicker</name>
    <message>
        <source>Text, Markdown and PDF documents</source>
        <translation>Text-, Markdown- und PDF-Dokumente</translation>
    </message>
    <message>
        <source>Add Document</source>
        <translation>Dokument hinzufügen</translation>
    </message>
</context>
<context>
    <name>DocumentRow</name>
    <message>
        <source>Remove %1</source>
        <translation>„%1“ entfernen</translation>
    </message>
</context>
<context>
    <name>EmptyState</name>
    <message>
        <source>Explore Apple’s on-device model</source>
        <translation>Das lokale Modell entdecken</translation>
    </message>
    <message>
        <source>Ask a question, try Structured mode, add a document, or attach an image to read text and barcodes. Your chats stay on this Mac.</source>
        <translation>Stellen Sie eine Frage, probieren Sie den Modus „Structured“, fügen Sie ein Dokument hinzu oder hängen Sie ein Bild an, um Text und Barcodes zu lesen. Ihre Chats bleiben auf diesem Computer.</translation>
    </message>
</context>
<context>
    <name>ImagePicker</name>
    <message>
        <source>Images</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Attach Image</source>
        <translation>Bild anhängen</translation>
    </message>
</context>
<context>
    <name>LanguageModel</name>
    <message>
        <source>The model&apos;s answer has something else in the property “%1”.</source>
        <translation>Die Antwort des Modells enthält in der Eigenschaft „%1“ etwas anderes als erwartet.</translation>
    </message>
    <message>
        <source>The model&apos;s answer is nested too deeply.</source>
        <translation>Die Antwort des Modells ist zu tief verschachtelt.</translation>
    </message>
    <message>
        <source>The model&apos;s answer is not complete JSON.</source>
        <translation>Die Antwort des Modells ist kein vollständiges JSON.</translation>
    </message>
    <message>
        <source>The model&apos;s answer is not an object.</source>
        <translation>Die Antwort des Modells ist kein Objekt.</translation>
    </message>
    <message>
        <source>The model&apos;s answer lacks the property “%1”.</source>
        <translation>In der Antwort des Modells fehlt die Eigenschaft „%1“.</translation>
    </message>
    <message>
        <source>There is no language model.</source>
        <translation>Es ist kein Sprachmodell vorhanden.</translation>
    </message>
    <message>
        <source>There is no language model. Put a model file (*.gguf) into the folder %1.</source>
        <translation>Es ist kein Sprachmodell vorhanden. Legen Sie eine Modelldatei (*.gguf) in den Ordner %1.</translation>
    </message>
    <message>
        <source>The model file %1 cannot be read. Allow reading it, or replace it.</source>
        <translation>Die Modelldatei %1 kann nicht gelesen werden. Erlauben Sie den Lesezugriff oder ersetzen Sie die Datei.</translation>
    </message>
    <message>
        <source>The model file %1 is still being written. Wait until it is complete.</source>
        <translation>Die Modelldatei %1 wird noch geschrieben. Warten Sie, bis sie vollständig ist.</translation>
    </message>
    <message>
        <source>The model file %1 is one of several parts, and not all of them are there. Add the others, or wait until they are complete.</source>
        <translation>Die Modelldatei %1 ist einer von mehreren Teilen, und nicht alle sind vorhanden. Fügen Sie die übrigen hinzu oder warten Sie, bis sie vollständig sind.</translation>
    </message>
    <message>
        <source>The file %1 is not a model file, or not a complete one. Replace it or remove it.</source>
        <translation>Die Datei %1 ist keine oder keine vollständige Modelldatei. Ersetzen oder entfernen Sie sie.</translation>
    </message>
    <message>
        <source>The model %1 is larger than this computer&apos;s memory. Use a smaller one.</source>
        <translation>Das Modell %1 ist größer als der Arbeitsspeicher dieses Computers. Verwenden Sie ein kleineres.</translation>
    </message>
    <message>
        <source>The language model keeps crashing. Use another model file, or try again in a minute.</source>
        <translation>Das Sprachmodell stürzt immer wieder ab. Verwenden Sie eine andere Modelldatei oder versuchen Sie es in einer Minute erneut.</translation>
    </message>
    <message>
        <source>The language model was killed while it was loading, perhaps because memory was short. Close other programs or use a smaller model file, then try again in a minute.</source>
        <translation>Das Sprachmodell wurde während des Ladens beendet, vielleicht weil der Arbeitsspeicher knapp war. Schließen Sie andere Programme oder verwenden Sie eine kleinere Modelldatei und versuchen Sie es in einer Minute erneut.</translation>
    </message>
    <message>
        <source>The model file %1 took too long to load. Check the disk that it lies on, or use another model file.</source>
        <translation>Das Laden der Modelldatei %1 hat zu lange gedauert. Prüfen Sie den Datenträger, auf dem sie liegt, oder verwenden Sie eine andere Modelldatei.</translation>
    </message>
    <message>
        <source>What the tool found is too long for the language model. Ask for less.</source>
        <translation>Was das Werkzeug gefunden hat, ist zu lang für das Sprachmodell. Fragen Sie nach weniger.</translation>
    </message>
    <message>
        <source>The message is too long for the language model. Shorten it.</source>
        <translation>Die Nachricht ist zu lang für das Sprachmodell. Kürzen Sie sie.</translation>
    </message>
    <message>
        <source>The computer ran out of memory and stopped the language model. Close other programs or use a smaller model file, then send the message again.</source>
        <translation>Der Arbeitsspeicher war erschöpft, und der Computer hat das Sprachmodell beendet. Schließen Sie andere Programme oder verwenden Sie eine kleinere Modelldatei und senden Sie die Nachricht erneut.</translation>
    </message>
    <message>
        <source>The language model was killed from outside, perhaps because memory was short. It is starting again; send the message again.</source>
        <translation>Das Sprachmodell wurde von außen beendet, vielleicht weil der Arbeitsspeicher knapp war. Es startet neu; senden Sie die Nachricht erneut.</translation>
    </message>
    <message>
        <source>The language model was stopped from outside. It is starting again; send the message again.</source>
        <translation>Das Sprachmodell wurde von außen angehalten. Es startet neu; senden Sie die Nachricht erneut.</translation>
    </message>
    <message>
        <source>The language model uses instructions that this computer&apos;s processor does not have.</source>
        <translation>Das Sprachmodell verwendet Befehle, die der Prozessor dieses Computers nicht kennt.</translation>
    </message>
    <message>
        <source>The language model crashed (signal %1). It is starting again; send the message again. If it keeps crashing, try another model file.</source>
        <translation>Das Sprachmodell ist abgestürzt (Signal %1). Es startet neu; senden Sie die Nachricht erneut. Stürzt es immer wieder ab, versuchen Sie es mit einer anderen Modelldatei.</translation>
    </message>
    <message>
        <source>The language model sent an answer that makes no sense and was ended. It is starting again; send the message again.</source>
        <translation>Das Sprachmodell hat etwas Unverständliches gesendet und wurde beendet. Es startet neu; senden Sie die Nachricht erneut.</translation>
    </message>
    <message>
        <source>The language model no longer answered and was ended. It is starting again; send the message again.</source>
        <translation>Das Sprachmodell hat nicht mehr reagiert und wurde beendet. Es startet neu; senden Sie die Nachricht erneut.</translation>
    </message>
    <message>
        <source>The language model ended by itself (exit code %1). It is starting again; send the message again. If it keeps ending, try another model file.</source>
        <translation>Das Sprachmodell hat sich von selbst beendet (Exit-Code %1). Es startet neu; senden Sie die Nachricht erneut. Beendet es sich immer wieder, versuchen Sie es mit einer anderen Modelldatei.</translation>
    </message>
    <message>
        <source>The part of Lumora that runs the language model cannot be started. Install Lumora again.</source>
        <translation>Der Teil von Lumora, der das Sprachmodell ausführt, kann nicht gestartet werden. Installieren Sie Lumora neu.</translation>
    </message>
    <message>
        <source>The model called the tool “%1”, which it was not offered. Send the message again.</source>
        <translation>Das Modell hat das Werkzeug „%1“ aufgerufen, das ihm nicht angeboten wurde. Senden Sie die Nachricht erneut.</translation>
    </message>
    <message>
        <source>The tool “%1” needs more memory than there is. Close other programs and ask again.</source>
        <translation>Das Werkzeug „%1“ braucht mehr Arbeitsspeicher, als vorhanden ist. Schließen Sie andere Programme und fragen Sie erneut.</translation>
    </message>
    <message>
        <source>The tool “%1” failed (%2). Ask again.</source>
        <translation>Das Werkzeug „%1“ ist gescheitert (%2). Fragen Sie erneut.</translation>
    </message>
    <message>
        <source>The tool “%1” failed. Ask again.</source>
        <translation>Das Werkzeug „%1“ ist gescheitert. Fragen Sie erneut.</translation>
    </message>
    <message>
        <source>The image cannot be read now: the computer is short of memory, or too many programs run on it. Close some of them and ask again.</source>
        <translation>Das Bild kann gerade nicht gelesen werden: Der Arbeitsspeicher ist knapp, oder es laufen zu viele Programme. Schließen Sie einige davon und fragen Sie erneut.</translation>
    </message>
    <message>
        <source>The image cannot be read, because a part of this program cannot be started. Install the program again and ask again.</source>
        <translation>Das Bild kann nicht gelesen werden, weil ein Teil dieses Programms nicht gestartet werden kann. Installieren Sie das Programm neu und fragen Sie erneut.</translation>
    </message>
    <message>
        <source>Text in images cannot be read, because no language data for text recognition is installed. Install a package such as tesseract-ocr-eng and ask again.</source>
        <translation>Text in Bildern kann nicht gelesen werden, weil keine Sprachdaten für die Texterkennung installiert sind. Installieren Sie ein Paket wie tesseract-ocr-deu und fragen Sie erneut.</translation>
    </message>
</context>
<context>
    <name>MessageEditor</name>
    <message>
        <source>Message</source>
        <translation>Nachricht</translation>
    </message>
</context>
<context>
    <name>MessageImage</name>
    <message>
        <source>Attached image</source>
        <translation>Angehängtes Bild</translation>
    </message>
    <message>
        <source>Image unavailable</source>
        <translation>Bild nicht verfügbar</translation>
    </message>
</context>
<context>
    <name>MessageList</name>
    <message>
        <source>Messages</source>
        <translation>Nachrichten</translation>
    </message>
</context>
<context>
    <name>MessageParts</name>
    <message>
        <source>Waiting for the reply</source>
        <translation>Warten auf die Antwort</translation>
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
        <translation>Lokales Modell</translation>
    </message>
    <message>
        <source>You</source>
        <translation>Sie</translation>
    </message>
</context>
<context>
    <name>ModeControl</name>
    <message>
        <source>Response mode</source>
        <translation>Antwortmodus</translation>
    </message>
</context>
<context>
    <name>NewChatButton</name>
    <message>
        <source>Start a new chat (⌘N)</source>
        <translation>Neuen Chat beginnen (Strg+N)</translation>
    </message>
    <message>
        <source>New chat</source>
        <translation>Neuer Chat</translation>
    </message>
</context>
<context>
    <name>PendingImageRow</name>
    <message>
        <source>Remove image</source>
        <translation>Bild entfernen</translation>
    </message>
</context>
<context>
    <name>PrivacyNote</name>
    <message>
        <source>Private on this Mac. Shift+Return inserts a new line.</source>
        <translation>Privat auf diesem Computer. Umschalt+Eingabe fügt eine neue Zeile ein.</translation>
    </message>
    <message>
        <source>Private · On this Mac</source>
        <translation>Privat · Auf diesem Computer</translation>
    </message>
    <message>
        <source>Shift+Return for a new line</source>
        <translation>Umschalt+Eingabe für eine neue Zeile</translation>
    </message>
    <message>
        <source>On-device</source>
        <translation>Lokal</translation>
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
        <translation>Lässt sich mit den Pfeiltasten links und rechts ändern.</translation>
    </message>
    <message>
        <source>Sidebar width</source>
        <translation>Breite der Seitenleiste</translation>
    </message>
</context>
<context>
    <name>StatusFooter</name>
    <message>
        <source>On-device model ready</source>
        <translation>Lokales Modell bereit</translation>
    </message>
    <message>
        <source>Model unavailable</source>
        <translation>Modell nicht verfügbar</translation>
    </message>
</context>
<context>
    <name>TextMenu</name>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
</context>
<context>
    <name>lumora::Announcements</name>
    <message>
        <source>Reply: %1</source>
        <translation>Antwort: %1</translation>
    </message>
    <message>
        <source>On-device model ready</source>
        <translation>Lokales Modell bereit</translation>
    </message>
</context>
<context>
    <name>lumora::ChatStore</name>
    <message>
        <source>The reply failed unexpectedly (%1). Please try again.</source>
        <translation>Die Antwort ist unerwartet gescheitert (%1). Bitte versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The file has more than %1 MB. Choose a smaller image.</source>
        <translation>Die Datei hat mehr als %1 MB. Wählen Sie ein kleineres Bild.</translation>
    </message>
    <message>
        <source>Could not attach image: </source>
        <translation>Das Bild konnte nicht angehängt werden: </translation>
    </message>
    <message>
        <source>The image is not on this computer. Copy it here, and attach the copy.</source>
        <translation>Das Bild liegt nicht auf diesem Computer. Kopieren Sie es hierher und hängen Sie die Kopie an.</translation>
    </message>
    <message>
        <source>Could not find local image storage.</source>
        <translation>Der lokale Bildspeicher wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>This Mac does not support Apple Intelligence. The on-device model needs a compatible Apple silicon Mac.</source>
        <translation>Dieser Computer unterstützt das lokale Modell nicht. Es braucht einen kompatiblen Computer mit genügend Arbeitsspeicher.</translation>
    </message>
    <message>
        <source>Turn on Apple Intelligence in System Settings to use the on-device model.</source>
        <translation>Richten Sie das lokale Modell auf diesem Computer ein, um es zu verwenden.</translation>
    </message>
    <message>
        <source>Apple reports that the on-device model is not ready. It may be downloading or waiting for system conditions.</source>
        <translation>Das lokale Modell ist noch nicht bereit. Möglicherweise wird es noch geladen oder wartet auf das System.</translation>
    </message>
    <message>
        <source>The on-device model is unavailable right now.</source>
        <translation>Das lokale Modell ist zurzeit nicht verfügbar.</translation>
    </message>
    <message>
        <source>Could not save chats: </source>
        <translation>Die Chats konnten nicht gespeichert werden: </translation>
    </message>
</context>
<context>
    <name>lumora::DocumentLibrary</name>
    <message>
        <source>Document storage is unavailable.</source>
        <translation>Der Dokumentspeicher ist nicht verfügbar.</translation>
    </message>
    <message>
        <source>Could not import document: </source>
        <translation>Das Dokument konnte nicht importiert werden: </translation>
    </message>
    <message>
        <source>The document is not on this computer. Copy it here, and add the copy.</source>
        <translation>Das Dokument liegt nicht auf diesem Computer. Kopieren Sie es hierher und fügen Sie die Kopie hinzu.</translation>
    </message>
    <message>
        <source>No readable text was found in this document. Scanned PDFs need OCR first.</source>
        <translation>In diesem Dokument wurde kein lesbarer Text gefunden. Gescannte PDFs benötigen zuerst eine Texterkennung.</translation>
    </message>
</context>
<context>
    <name>lumora::Documents</name>
    <message>
        <source>There is too little memory to read the document. Close other programs and add it again.</source>
        <translation>Der Arbeitsspeicher reicht nicht, um das Dokument zu lesen. Schließen Sie andere Programme und fügen Sie es erneut hinzu.</translation>
    </message>
    <message>
        <source>The document cannot be read: %1.</source>
        <translation>Das Dokument kann nicht gelesen werden: %1.</translation>
    </message>
    <message>
        <source>The document is not UTF-8 text. Save it as UTF-8 and add it again.</source>
        <translation>Das Dokument ist kein UTF-8-Text. Speichern Sie es als UTF-8 und fügen Sie es erneut hinzu.</translation>
    </message>
    <message>
        <source>PDF files cannot be read now: the computer is short of memory, or too many programs run on it. Close some of them and add the document again.</source>
        <translation>PDF-Dateien können gerade nicht gelesen werden: Der Arbeitsspeicher ist knapp, oder es laufen zu viele Programme. Schließen Sie einige davon und fügen Sie das Dokument erneut hinzu.</translation>
    </message>
    <message>
        <source>PDF files cannot be read, because a part of this program cannot be started. Install the program again and add the document again.</source>
        <translation>PDF-Dateien können nicht gelesen werden, weil ein Teil dieses Programms nicht gestartet werden kann. Installieren Sie das Programm neu und fügen Sie das Dokument erneut hinzu.</translation>
    </message>
    <message>
        <source>The document has more than 64 MB of text.</source>
        <translation>Das Dokument hat mehr als 64 MB Text.</translation>
    </message>
</context>
<context>
    <name>lumora::Files</name>
    <message>
        <source>The file cannot be copied: %1.</source>
        <translation>Die Datei kann nicht kopiert werden: %1.</translation>
    </message>
    <message>
        <source>it was stopped</source>
        <translation>der Vorgang wurde abgebrochen</translation>
    </message>
    <message>
        <source>The storage folder cannot be created: %1.</source>
        <translation>Der Speicherordner kann nicht angelegt werden: %1.</translation>
    </message>
    <message>
        <source>The file cannot be written: %1.</source>
        <translation>Die Datei kann nicht geschrieben werden: %1.</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>es ist keine Datei</translation>
    </message>
    <message>
        <source>what follows the last full stop in its name is too long. Rename the file and try again</source>
        <translation>ihre Dateiendung ist zu lang. Benennen Sie die Datei um und versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>The unreadable file cannot be set aside: %1.</source>
        <translation>Die unlesbare Datei kann nicht beiseitegelegt werden: %1.</translation>
    </message>
</context>
<context>
    <name>lumora::MessageListModel</name>
    <message>
        <source>%1 input · %2 output tokens</source>
        <translation>%1 Eingabe- · %2 Ausgabe-Token</translation>
    </message>
</context>
<context>
    <name>lumora::Program</name>
    <message>
        <source>Lumora is not installed completely: its window cannot be filled. Install it again.</source>
        <translation>Lumora ist nicht vollständig installiert: Der Fensterinhalt kann nicht geladen werden. Installieren Sie es neu.</translation>
    </message>
    <message>
        <source>Lumora is already running; its window has been raised.</source>
        <translation>Lumora läuft bereits; das Fenster wurde in den Vordergrund geholt.</translation>
    </message>
    <message>
        <source>Lumora is already running, but its window does not answer.</source>
        <translation>Lumora läuft bereits, aber das Fenster reagiert nicht.</translation>
    </message>
</context>
<context>
    <name>lumora::Search</name>
    <message>
        <source>The search index is busy: another program uses it, or it is being made anew after an update. Try again in a few minutes.</source>
        <translation>Der Suchindex ist in Benutzung: Ein anderes Programm verwendet ihn, oder er wird nach einer Aktualisierung neu aufgebaut. Versuchen Sie es in einigen Minuten erneut.</translation>
    </message>
    <message>
        <source>The disk has no room left for the search index.</source>
        <translation>Auf dem Datenträger ist kein Platz mehr für den Suchindex.</translation>
    </message>
    <message>
        <source>The search index cannot be written: it or its folder is read-only.</source>
        <translation>Der Suchindex kann nicht geschrieben werden: Er oder sein Ordner ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>The search index cannot be used: %1.</source>
        <translation>Der Suchindex kann nicht verwendet werden: %1.</translation>
    </message>
    <message>
        <source>There is too little memory for the search index.</source>
        <translation>Der Arbeitsspeicher reicht nicht für den Suchindex.</translation>
    </message>
    <message>
        <source>The search index cannot be used now: too many programs run on this computer. Close some of them and try again.</source>
        <translation>Der Suchindex kann gerade nicht verwendet werden: Auf diesem Computer laufen zu viele Programme. Schließen Sie einige davon und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The search index was closed.</source>
        <translation>Der Suchindex wurde geschlossen.</translation>
    </message>
    <message>
        <source>The search index was made by a newer version of this program.</source>
        <translation>Der Suchindex stammt von einer neueren Version dieses Programms.</translation>
    </message>
    <message>
        <source>The search index is damaged and cannot be replaced: %1.</source>
        <translation>Der Suchindex ist beschädigt und kann nicht ersetzt werden: %1.</translation>
    </message>
    <message>
        <source>The search index cannot be opened: %1.</source>
        <translation>Der Suchindex kann nicht geöffnet werden: %1.</translation>
    </message>
    <message>
        <source>The search index cannot be opened: something else has its name.</source>
        <translation>Der Suchindex kann nicht geöffnet werden: Etwas anderes trägt seinen Namen.</translation>
    </message>
    <message>
        <source>The search index cannot be created: %1.</source>
        <translation>Der Suchindex kann nicht angelegt werden: %1.</translation>
    </message>
</context>
</TS>
