<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR">
<context>
    <name>ActionRow</name>
    <message>
        <source>Attach an image</source>
        <translation>Joindre une image</translation>
    </message>
    <message>
        <source>Attach Image</source>
        <translation>Joindre une image</translation>
    </message>
    <message>
        <source>Send</source>
        <translation>Envoyer</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
</context>
<context>
    <name>AnswerCardView</name>
    <message>
        <source>Key points</source>
        <translation>Points clés</translation>
    </message>
    <message>
        <source>Next steps</source>
        <translation>Prochaines étapes</translation>
    </message>
</context>
<context>
    <name>AvailabilityBanner</name>
    <message>
        <source>Checking model readiness</source>
        <translation>Vérification de l’état du modèle</translation>
    </message>
    <message>
        <source>Checked at %1 · Checking every 10 seconds</source>
        <translation>Vérifié à %1 · Vérification toutes les 10 secondes</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Vérifier maintenant</translation>
    </message>
    <message>
        <source>macOS does not provide this app with a download percentage or transfer status.</source>
        <translation>Le système n’indique à cette application ni le pourcentage ni l’état du téléchargement.</translation>
    </message>
</context>
<context>
    <name>ContextMeter</name>
    <message>
        <source>Tokens counted for the latest prompt. Image, instructions, tools, and output also use context.</source>
        <translation>Jetons comptés pour la dernière demande. L’image, les instructions, les outils et la réponse occupent aussi le contexte.</translation>
    </message>
    <message>
        <source>Context %1 / %2 tokens</source>
        <translation>Contexte&#xa0;: %1 / %2 jetons</translation>
    </message>
</context>
<context>
    <name>ConversationList</name>
    <message>
        <source>Chats</source>
        <translation>Discussions</translation>
    </message>
    <message>
        <source>Delete Chat</source>
        <translation>Supprimer la discussion</translation>
    </message>
</context>
<context>
    <name>DocumentPanel</name>
    <message>
        <source>Documents</source>
        <translation>Documents</translation>
    </message>
    <message>
        <source>Importing a document</source>
        <translation>Importation d’un document</translation>
    </message>
    <message>
        <source>Add a text, Markdown, or PDF document for local search</source>
        <translation>Ajouter un document texte, Markdown ou PDF à la recherche locale</translation>
    </message>
    <message>
        <source>Add Document</source>
        <translation>Ajouter un document</translation>
    </message>
    <message>
        <source>Add a document to ask questions about it.</source>
        <translation>Ajoutez un document pour poser des questions à son sujet.</translation>
    </message>
</context>
<context>
    <name>DocumentPicker</name>
    <message>
        <source>Text, Markdown and PDF documents</source>
        <translation>Documents texte, Markdown et PDF</translation>
    </message>
    <message>
        <source>Add Document</source>
        <translation>Ajouter un document</translation>
    </message>
</context>
<context>
    <name>DocumentRow</name>
    <message>
        <source>Remove %1</source>
        <translation>Retirer «&#xa0;%1&#xa0;»</translation>
    </message>
</context>
<context>
    <name>EmptyState</name>
    <message>
        <source>Explore Apple’s on-device model</source>
        <translation>Découvrez le modèle local</translation>
    </message>
    <message>
        <source>Ask a question, try Structured mode, add a document, or attach an image to read text and barcodes. Your chats stay on this Mac.</source>
        <translation>Posez une question, essayez le mode «&#xa0;Structured&#xa0;», ajoutez un document ou joignez une image pour en lire le texte et les codes-barres. Vos discussions restent sur cet ordinateur.</translation>
    </message>
</context>
<context>
    <name>ImagePicker</name>
    <message>
        <source>Images</source>
        <translation>Images</translation>
    </message>
    <message>
        <source>Attach Image</source>
        <translation>Joindre une image</translation>
    </message>
</context>
<context>
    <name>LanguageModel</name>
    <message>
        <source>The model&apos;s answer has something else in the property “%1”.</source>
        <translation>La réponse du modèle contient autre chose dans la propriété «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>The model&apos;s answer is nested too deeply.</source>
        <translation>La réponse du modèle est imbriquée trop profondément.</translation>
    </message>
    <message>
        <source>The model&apos;s answer is not complete JSON.</source>
        <translation>La réponse du modèle n’est pas du JSON complet.</translation>
    </message>
    <message>
        <source>The model&apos;s answer is not an object.</source>
        <translation>La réponse du modèle n’est pas un objet.</translation>
    </message>
    <message>
        <source>The model&apos;s answer lacks the property “%1”.</source>
        <translation>Il manque la propriété «&#xa0;%1&#xa0;» dans la réponse du modèle.</translation>
    </message>
    <message>
        <source>There is no language model.</source>
        <translation>Il n’y a pas de modèle de langage.</translation>
    </message>
    <message>
        <source>There is no language model. Put a model file (*.gguf) into the folder %1.</source>
        <translation>Il n’y a pas de modèle de langage. Placez un fichier de modèle (*.gguf) dans le dossier %1.</translation>
    </message>
    <message>
        <source>The model file %1 cannot be read. Allow reading it, or replace it.</source>
        <translation>Le fichier de modèle %1 ne peut pas être lu. Autorisez sa lecture ou remplacez-le.</translation>
    </message>
    <message>
        <source>The model file %1 is still being written. Wait until it is complete.</source>
        <translation>Le fichier de modèle %1 est encore en cours d’écriture. Attendez qu’il soit complet.</translation>
    </message>
    <message>
        <source>The model file %1 is one of several parts, and not all of them are there. Add the others, or wait until they are complete.</source>
        <translation>Le fichier de modèle %1 fait partie d’un ensemble qui n’est pas au complet. Ajoutez les autres parties ou attendez qu’elles soient complètes.</translation>
    </message>
    <message>
        <source>The file %1 is not a model file, or not a complete one. Replace it or remove it.</source>
        <translation>Le fichier %1 n’est pas un fichier de modèle, ou il est incomplet. Remplacez-le ou supprimez-le.</translation>
    </message>
    <message>
        <source>The model %1 is larger than this computer&apos;s memory. Use a smaller one.</source>
        <translation>Le modèle %1 dépasse la mémoire de cet ordinateur. Utilisez-en un plus petit.</translation>
    </message>
    <message>
        <source>The language model keeps crashing. Use another model file, or try again in a minute.</source>
        <translation>Le modèle de langage plante sans cesse. Utilisez un autre fichier de modèle ou réessayez dans une minute.</translation>
    </message>
    <message>
        <source>The language model was killed while it was loading, perhaps because memory was short. Close other programs or use a smaller model file, then try again in a minute.</source>
        <translation>Le modèle de langage a été interrompu pendant son chargement, peut-être faute de mémoire. Fermez d’autres programmes ou utilisez un fichier de modèle plus petit, puis réessayez dans une minute.</translation>
    </message>
    <message>
        <source>The model file %1 took too long to load. Check the disk that it lies on, or use another model file.</source>
        <translation>Le fichier de modèle %1 a mis trop de temps à se charger. Vérifiez le disque où il se trouve ou utilisez un autre fichier de modèle.</translation>
    </message>
    <message>
        <source>What the tool found is too long for the language model. Ask for less.</source>
        <translation>Ce que l’outil a trouvé est trop long pour le modèle de langage. Demandez moins.</translation>
    </message>
    <message>
        <source>The message is too long for the language model. Shorten it.</source>
        <translation>Le message est trop long pour le modèle de langage. Raccourcissez-le.</translation>
    </message>
    <message>
        <source>The computer ran out of memory and stopped the language model. Close other programs or use a smaller model file, then send the message again.</source>
        <translation>L’ordinateur a manqué de mémoire et a arrêté le modèle de langage. Fermez d’autres programmes ou utilisez un fichier de modèle plus petit, puis renvoyez le message.</translation>
    </message>
    <message>
        <source>The language model was killed from outside, perhaps because memory was short. It is starting again; send the message again.</source>
        <translation>Le modèle de langage a été interrompu de l’extérieur, peut-être faute de mémoire. Il redémarre&#x202f;; renvoyez le message.</translation>
    </message>
    <message>
        <source>The language model was stopped from outside. It is starting again; send the message again.</source>
        <translation>Le modèle de langage a été arrêté de l’extérieur. Il redémarre&#x202f;; renvoyez le message.</translation>
    </message>
    <message>
        <source>The language model uses instructions that this computer&apos;s processor does not have.</source>
        <translation>Le modèle de langage utilise des instructions que le processeur de cet ordinateur n’a pas.</translation>
    </message>
    <message>
        <source>The language model crashed (signal %1). It is starting again; send the message again. If it keeps crashing, try another model file.</source>
        <translation>Le modèle de langage a planté (signal %1). Il redémarre&#x202f;; renvoyez le message. S’il continue à planter, essayez un autre fichier de modèle.</translation>
    </message>
    <message>
        <source>The language model sent an answer that makes no sense and was ended. It is starting again; send the message again.</source>
        <translation>Le modèle de langage a envoyé une réponse incompréhensible et a été arrêté. Il redémarre&#x202f;; renvoyez le message.</translation>
    </message>
    <message>
        <source>The language model no longer answered and was ended. It is starting again; send the message again.</source>
        <translation>Le modèle de langage ne répondait plus et a été arrêté. Il redémarre&#x202f;; renvoyez le message.</translation>
    </message>
    <message>
        <source>The language model ended by itself (exit code %1). It is starting again; send the message again. If it keeps ending, try another model file.</source>
        <translation>Le modèle de langage s’est arrêté de lui-même (code de sortie %1). Il redémarre&#x202f;; renvoyez le message. S’il continue à s’arrêter, essayez un autre fichier de modèle.</translation>
    </message>
    <message>
        <source>The part of Lumora that runs the language model cannot be started. Install Lumora again.</source>
        <translation>La partie de Lumora qui exécute le modèle de langage ne peut pas démarrer. Réinstallez Lumora.</translation>
    </message>
    <message>
        <source>The model called the tool “%1”, which it was not offered. Send the message again.</source>
        <translation>Le modèle a appelé l’outil «&#xa0;%1&#xa0;», qui ne lui était pas proposé. Renvoyez le message.</translation>
    </message>
    <message>
        <source>The tool “%1” needs more memory than there is. Close other programs and ask again.</source>
        <translation>L’outil «&#xa0;%1&#xa0;» a besoin de plus de mémoire qu’il n’y en a. Fermez d’autres programmes et reposez la question.</translation>
    </message>
    <message>
        <source>The tool “%1” failed (%2). Ask again.</source>
        <translation>L’outil «&#xa0;%1&#xa0;» a échoué (%2). Reposez la question.</translation>
    </message>
    <message>
        <source>The tool “%1” failed. Ask again.</source>
        <translation>L’outil «&#xa0;%1&#xa0;» a échoué. Reposez la question.</translation>
    </message>
    <message>
        <source>The image cannot be read now: the computer is short of memory, or too many programs run on it. Close some of them and ask again.</source>
        <translation>L’image ne peut pas être lue pour le moment&#xa0;: la mémoire est insuffisante, ou trop de programmes sont ouverts. Fermez-en quelques-uns et reposez la question.</translation>
    </message>
    <message>
        <source>The image cannot be read, because a part of this program cannot be started. Install the program again and ask again.</source>
        <translation>L’image ne peut pas être lue, car une partie de ce programme ne peut pas démarrer. Réinstallez le programme et reposez la question.</translation>
    </message>
    <message>
        <source>Text in images cannot be read, because no language data for text recognition is installed. Install a package such as tesseract-ocr-eng and ask again.</source>
        <translation>Le texte des images ne peut pas être lu, car aucune donnée de langue pour la reconnaissance de texte n’est installée. Installez un paquet tel que tesseract-ocr-fra et reposez la question.</translation>
    </message>
</context>
<context>
    <name>MessageEditor</name>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
</context>
<context>
    <name>MessageImage</name>
    <message>
        <source>Attached image</source>
        <translation>Image jointe</translation>
    </message>
    <message>
        <source>Image unavailable</source>
        <translation>Image indisponible</translation>
    </message>
</context>
<context>
    <name>MessageList</name>
    <message>
        <source>Messages</source>
        <translation>Messages</translation>
    </message>
</context>
<context>
    <name>MessageParts</name>
    <message>
        <source>Waiting for the reply</source>
        <translation>En attente de la réponse</translation>
    </message>
</context>
<context>
    <name>MessageRow</name>
    <message>
        <source>%1: %2</source>
        <translation>%1&#xa0;: %2</translation>
    </message>
    <message>
        <source>Apple Foundation Model</source>
        <translation>Modèle local</translation>
    </message>
    <message>
        <source>You</source>
        <translation>Vous</translation>
    </message>
</context>
<context>
    <name>ModeControl</name>
    <message>
        <source>Response mode</source>
        <translation>Mode de réponse</translation>
    </message>
</context>
<context>
    <name>NewChatButton</name>
    <message>
        <source>Start a new chat (⌘N)</source>
        <translation>Commencer une nouvelle discussion (Ctrl+N)</translation>
    </message>
    <message>
        <source>New chat</source>
        <translation>Nouvelle discussion</translation>
    </message>
</context>
<context>
    <name>PendingImageRow</name>
    <message>
        <source>Remove image</source>
        <translation>Retirer l’image</translation>
    </message>
</context>
<context>
    <name>PrivacyNote</name>
    <message>
        <source>Private on this Mac. Shift+Return inserts a new line.</source>
        <translation>Privé, sur cet ordinateur. Maj+Entrée insère une nouvelle ligne.</translation>
    </message>
    <message>
        <source>Private · On this Mac</source>
        <translation>Privé · Sur cet ordinateur</translation>
    </message>
    <message>
        <source>Shift+Return for a new line</source>
        <translation>Maj+Entrée pour une nouvelle ligne</translation>
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
        <translation>Discussions</translation>
    </message>
</context>
<context>
    <name>SplitHandle</name>
    <message>
        <source>The left and right arrow keys change it.</source>
        <translation>Les flèches gauche et droite la modifient.</translation>
    </message>
    <message>
        <source>Sidebar width</source>
        <translation>Largeur de la barre latérale</translation>
    </message>
</context>
<context>
    <name>StatusFooter</name>
    <message>
        <source>On-device model ready</source>
        <translation>Modèle local prêt</translation>
    </message>
    <message>
        <source>Model unavailable</source>
        <translation>Modèle indisponible</translation>
    </message>
</context>
<context>
    <name>TextMenu</name>
    <message>
        <source>Cut</source>
        <translation>Couper</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Coller</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Tout sélectionner</translation>
    </message>
</context>
<context>
    <name>lumora::Announcements</name>
    <message>
        <source>Reply: %1</source>
        <translation>Réponse&#xa0;: %1</translation>
    </message>
    <message>
        <source>On-device model ready</source>
        <translation>Modèle local prêt</translation>
    </message>
</context>
<context>
    <name>lumora::ChatStore</name>
    <message>
        <source>The reply failed unexpectedly (%1). Please try again.</source>
        <translation>La réponse a échoué de façon inattendue (%1). Veuillez réessayer.</translation>
    </message>
    <message>
        <source>The file has more than %1 MB. Choose a smaller image.</source>
        <translation>Le fichier dépasse %1 Mo. Choisissez une image plus petite.</translation>
    </message>
    <message>
        <source>Could not attach image: </source>
        <translation>Impossible de joindre l’image&#xa0;: </translation>
    </message>
    <message>
        <source>The image is not on this computer. Copy it here, and attach the copy.</source>
        <translation>L’image n’est pas sur cet ordinateur. Copiez-la ici et joignez la copie.</translation>
    </message>
    <message>
        <source>Could not find local image storage.</source>
        <translation>Le dossier local des images est introuvable.</translation>
    </message>
    <message>
        <source>This Mac does not support Apple Intelligence. The on-device model needs a compatible Apple silicon Mac.</source>
        <translation>Cet ordinateur ne prend pas en charge le modèle local, qui demande un ordinateur compatible et assez de mémoire.</translation>
    </message>
    <message>
        <source>Turn on Apple Intelligence in System Settings to use the on-device model.</source>
        <translation>Installez le modèle local sur cet ordinateur pour l’utiliser.</translation>
    </message>
    <message>
        <source>Apple reports that the on-device model is not ready. It may be downloading or waiting for system conditions.</source>
        <translation>Le modèle local n’est pas encore prêt. Il est peut-être en cours de chargement ou en attente du système.</translation>
    </message>
    <message>
        <source>The on-device model is unavailable right now.</source>
        <translation>Le modèle local est indisponible pour le moment.</translation>
    </message>
    <message>
        <source>Could not save chats: </source>
        <translation>Impossible d’enregistrer les discussions&#xa0;: </translation>
    </message>
</context>
<context>
    <name>lumora::DocumentLibrary</name>
    <message>
        <source>Document storage is unavailable.</source>
        <translation>Le dossier des documents est indisponible.</translation>
    </message>
    <message>
        <source>Could not import document: </source>
        <translation>Impossible d’importer le document&#xa0;: </translation>
    </message>
    <message>
        <source>The document is not on this computer. Copy it here, and add the copy.</source>
        <translation>Le document n’est pas sur cet ordinateur. Copiez-le ici et ajoutez la copie.</translation>
    </message>
    <message>
        <source>No readable text was found in this document. Scanned PDFs need OCR first.</source>
        <translation>Aucun texte lisible n’a été trouvé dans ce document. Les PDF numérisés doivent d’abord passer par une OCR.</translation>
    </message>
</context>
<context>
    <name>lumora::Documents</name>
    <message>
        <source>There is too little memory to read the document. Close other programs and add it again.</source>
        <translation>Il n’y a pas assez de mémoire pour lire le document. Fermez d’autres programmes et ajoutez-le de nouveau.</translation>
    </message>
    <message>
        <source>The document cannot be read: %1.</source>
        <translation>Le document ne peut pas être lu&#xa0;: %1.</translation>
    </message>
    <message>
        <source>The document is not UTF-8 text. Save it as UTF-8 and add it again.</source>
        <translation>Le document n’est pas du texte UTF-8. Enregistrez-le en UTF-8 et ajoutez-le de nouveau.</translation>
    </message>
    <message>
        <source>PDF files cannot be read now: the computer is short of memory, or too many programs run on it. Close some of them and add the document again.</source>
        <translation>Les fichiers PDF ne peuvent pas être lus pour le moment&#xa0;: la mémoire est insuffisante, ou trop de programmes sont ouverts. Fermez-en quelques-uns et ajoutez de nouveau le document.</translation>
    </message>
    <message>
        <source>PDF files cannot be read, because a part of this program cannot be started. Install the program again and add the document again.</source>
        <translation>Les fichiers PDF ne peuvent pas être lus, car une partie de ce programme ne peut pas démarrer. Réinstallez le programme et ajoutez de nouveau le document.</translation>
    </message>
    <message>
        <source>The document has more than 64 MB of text.</source>
        <translation>Le document contient plus de 64 Mo de texte.</translation>
    </message>
</context>
<context>
    <name>lumora::Files</name>
    <message>
        <source>The file cannot be copied: %1.</source>
        <translation>Le fichier ne peut pas être copié&#xa0;: %1.</translation>
    </message>
    <message>
        <source>it was stopped</source>
        <translation>la copie a été arrêtée</translation>
    </message>
    <message>
        <source>The storage folder cannot be created: %1.</source>
        <translation>Le dossier de stockage ne peut pas être créé&#xa0;: %1.</translation>
    </message>
    <message>
        <source>The file cannot be written: %1.</source>
        <translation>Le fichier ne peut pas être écrit&#xa0;: %1.</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>ce n’est pas un fichier</translation>
    </message>
    <message>
        <source>what follows the last full stop in its name is too long. Rename the file and try again</source>
        <translation>son extension est trop longue. Renommez le fichier et réessayez</translation>
    </message>
    <message>
        <source>The unreadable file cannot be set aside: %1.</source>
        <translation>Le fichier illisible ne peut pas être mis de côté&#xa0;: %1.</translation>
    </message>
</context>
<context>
    <name>lumora::MessageListModel</name>
    <message>
        <source>%1 input · %2 output tokens</source>
        <translation>Jetons&#xa0;: %1 en entrée · %2 en sortie</translation>
    </message>
</context>
<context>
    <name>lumora::Program</name>
    <message>
        <source>Lumora is not installed completely: its window cannot be filled. Install it again.</source>
        <translation>Lumora n’est pas installé complètement&#xa0;: le contenu de sa fenêtre ne peut pas être chargé. Réinstallez-le.</translation>
    </message>
    <message>
        <source>Lumora is already running; its window has been raised.</source>
        <translation>Lumora est déjà lancé&#x202f;; sa fenêtre a été mise au premier plan.</translation>
    </message>
    <message>
        <source>Lumora is already running, but its window does not answer.</source>
        <translation>Lumora est déjà lancé, mais sa fenêtre ne répond pas.</translation>
    </message>
</context>
<context>
    <name>lumora::Search</name>
    <message>
        <source>The search index is busy: another program uses it, or it is being made anew after an update. Try again in a few minutes.</source>
        <translation>L’index de recherche est occupé&#xa0;: un autre programme l’utilise, ou il est recréé après une mise à jour. Réessayez dans quelques minutes.</translation>
    </message>
    <message>
        <source>The disk has no room left for the search index.</source>
        <translation>Il n’y a plus de place sur le disque pour l’index de recherche.</translation>
    </message>
    <message>
        <source>The search index cannot be written: it or its folder is read-only.</source>
        <translation>L’index de recherche ne peut pas être écrit&#xa0;: l’index ou son dossier est en lecture seule.</translation>
    </message>
    <message>
        <source>The search index cannot be used: %1.</source>
        <translation>L’index de recherche ne peut pas être utilisé&#xa0;: %1.</translation>
    </message>
    <message>
        <source>There is too little memory for the search index.</source>
        <translation>Il n’y a pas assez de mémoire pour l’index de recherche.</translation>
    </message>
    <message>
        <source>The search index cannot be used now: too many programs run on this computer. Close some of them and try again.</source>
        <translation>L’index de recherche ne peut pas être utilisé pour le moment&#xa0;: trop de programmes sont ouverts sur cet ordinateur. Fermez-en quelques-uns et réessayez.</translation>
    </message>
    <message>
        <source>The search index was closed.</source>
        <translation>L’index de recherche a été fermé.</translation>
    </message>
    <message>
        <source>The search index was made by a newer version of this program.</source>
        <translation>L’index de recherche a été créé par une version plus récente de ce programme.</translation>
    </message>
    <message>
        <source>The search index is damaged and cannot be replaced: %1.</source>
        <translation>L’index de recherche est endommagé et ne peut pas être remplacé&#xa0;: %1.</translation>
    </message>
    <message>
        <source>The search index cannot be opened: %1.</source>
        <translation>L’index de recherche ne peut pas être ouvert&#xa0;: %1.</translation>
    </message>
    <message>
        <source>The search index cannot be opened: something else has its name.</source>
        <translation>L’index de recherche ne peut pas être ouvert&#xa0;: autre chose porte son nom.</translation>
    </message>
    <message>
        <source>The search index cannot be created: %1.</source>
        <translation>L’index de recherche ne peut pas être créé&#xa0;: %1.</translation>
    </message>
</context>
</TS>
