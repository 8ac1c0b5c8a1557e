<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP">
<context>
    <name>ActionRow</name>
    <message>
        <source>Attach an image</source>
        <translation>画像を添付します</translation>
    </message>
    <message>
        <source>Attach Image</source>
        <translation>画像を添付</translation>
    </message>
    <message>
        <source>Send</source>
        <translation>送信</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
</context>
<context>
    <name>AnswerCardView</name>
    <message>
        <source>Key points</source>
        <translation>要点</translation>
    </message>
    <message>
        <source>Next steps</source>
        <translation>次のステップ</translation>
    </message>
</context>
<context>
    <name>AvailabilityBanner</name>
    <message>
        <source>Checking model readiness</source>
        <translation>モデルの準備状況を確認しています</translation>
    </message>
    <message>
        <source>Checked at %1 · Checking every 10 seconds</source>
        <translation>%1 に確認 · 10 秒ごとに確認しています</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>今すぐ確認</translation>
    </message>
    <message>
        <source>macOS does not provide this app with a download percentage or transfer status.</source>
        <translation>ダウンロードの進捗率や転送状況は、システムからこのアプリに通知されません。</translation>
    </message>
</context>
<context>
    <name>ContextMeter</name>
    <message>
        <source>Tokens counted for the latest prompt. Image, instructions, tools, and output also use context.</source>
        <translation>直近のプロンプトのトークン数です。画像、指示、ツール、出力もコンテキストを使用します。</translation>
    </message>
    <message>
        <source>Context %1 / %2 tokens</source>
        <translation>コンテキスト: %1 / %2 トークン</translation>
    </message>
</context>
<context>
    <name>ConversationList</name>
    <message>
        <source>Chats</source>
        <translation>チャット</translation>
    </message>
    <message>
        <source>Delete Chat</source>
        <translation>チャットを削除</translation>
    </message>
</context>
<context>
    <name>DocumentPanel</name>
    <message>
        <source>Documents</source>
        <translation>ドキュメント</translation>
    </message>
    <message>
        <source>Importing a document</source>
        <translation>ドキュメントを読み込んでいます</translation>
    </message>
    <message>
        <source>Add a text, Markdown, or PDF document for local search</source>
        <translation>ローカル検索用にテキスト、Markdown、PDF のドキュメントを追加します</translation>
    </message>
    <message>
        <source>Add Document</source>
        <translation>ドキュメントを追加</translation>
    </message>
    <message>
        <source>Add a document to ask questions about it.</source>
        <translation>ドキュメントを追加すると、その内容について質問できます。</translation>
    </message>
</context>
<context>
    <name>DocumentPicker</name>
    <message>
        <source>Text, Markdown and PDF documents</source>
        <translation>テキスト、Markdown、PDF のドキュメント</translation>
    </message>
    <message>
        <source>Add Document</source>
        <translation>ドキュメントを追加</translation>
    </message>
</context>
<context>
    <name>DocumentRow</name>
    <message>
        <source>Remove %1</source>
        <translation>「%1」を削除</translation>
    </message>
</context>
<context>
    <name>EmptyState</name>
    <message>
        <source>Explore Apple’s on-device model</source>
        <translation>ローカルモデルを使ってみましょう</translation>
    </message>
    <message>
        <source>Ask a question, try Structured mode, add a document, or attach an image to read text and barcodes. Your chats stay on this Mac.</source>
        <translation>質問する、「Structured」モードを試す、ドキュメントを追加する、画像を添付して文字やバーコードを読み取る、などができます。チャットはこのコンピューターの中にとどまります。</translation>
    </message>
</context>
<context>
    <name>ImagePicker</name>
    <message>
        <source>Images</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>Attach Image</source>
        <translation>画像を添付</translation>
    </message>
</context>
<context>
    <name>LanguageModel</name>
    <message>
        <source>The model&apos;s answer has something else in the property “%1”.</source>
        <translation>モデルの回答のプロパティ「%1」に、想定外の内容が入っています。</translation>
    </message>
    <message>
        <source>The model&apos;s answer is nested too deeply.</source>
        <translation>モデルの回答の入れ子が深すぎます。</translation>
    </message>
    <message>
        <source>The model&apos;s answer is not complete JSON.</source>
        <translation>モデルの回答は完全な JSON ではありません。</translation>
    </message>
    <message>
        <source>The model&apos;s answer is not an object.</source>
        <translation>モデルの回答はオブジェクトではありません。</translation>
    </message>
    <message>
        <source>The model&apos;s answer lacks the property “%1”.</source>
        <translation>モデルの回答にプロパティ「%1」がありません。</translation>
    </message>
    <message>
        <source>There is no language model.</source>
        <translation>言語モデルがありません。</translation>
    </message>
    <message>
        <source>There is no language model. Put a model file (*.gguf) into the folder %1.</source>
        <translation>言語モデルがありません。モデルファイル (*.gguf) をフォルダー %1 に入れてください。</translation>
    </message>
    <message>
        <source>The model file %1 cannot be read. Allow reading it, or replace it.</source>
        <translation>モデルファイル %1 を読み取れません。読み取りを許可するか、別のファイルに置き換えてください。</translation>
    </message>
    <message>
        <source>The model file %1 is still being written. Wait until it is complete.</source>
        <translation>モデルファイル %1 はまだ書き込み中です。完了するまでお待ちください。</translation>
    </message>
    <message>
        <source>The model file %1 is one of several parts, and not all of them are there. Add the others, or wait until they are complete.</source>
        <translation>モデルファイル %1 は複数の部分の一つですが、全部はそろっていません。残りを追加するか、そろうまでお待ちください。</translation>
    </message>
    <message>
        <source>The file %1 is not a model file, or not a complete one. Replace it or remove it.</source>
        <translation>ファイル %1 はモデルファイルではないか、不完全です。置き換えるか、削除してください。</translation>
    </message>
    <message>
        <source>The model %1 is larger than this computer&apos;s memory. Use a smaller one.</source>
        <translation>モデル %1 はこのコンピューターのメモリより大きいです。小さいモデルを使ってください。</translation>
    </message>
    <message>
        <source>The language model keeps crashing. Use another model file, or try again in a minute.</source>
        <translation>言語モデルが繰り返しクラッシュしています。別のモデルファイルを使うか、1 分ほどしてからもう一度お試しください。</translation>
    </message>
    <message>
        <source>The language model was killed while it was loading, perhaps because memory was short. Close other programs or use a smaller model file, then try again in a minute.</source>
        <translation>言語モデルが読み込み中に強制終了されました。メモリ不足の可能性があります。ほかのプログラムを閉じるか、小さいモデルファイルを使い、1 分ほどしてからもう一度お試しください。</translation>
    </message>
    <message>
        <source>The model file %1 took too long to load. Check the disk that it lies on, or use another model file.</source>
        <translation>モデルファイル %1 の読み込みに時間がかかりすぎました。保存先のディスクを確認するか、別のモデルファイルを使ってください。</translation>
    </message>
    <message>
        <source>What the tool found is too long for the language model. Ask for less.</source>
        <translation>ツールが見つけた内容は、言語モデルには長すぎます。範囲を狭めて質問してください。</translation>
    </message>
    <message>
        <source>The message is too long for the language model. Shorten it.</source>
        <translation>メッセージが言語モデルには長すぎます。短くしてください。</translation>
    </message>
    <message>
        <source>The computer ran out of memory and stopped the language model. Close other programs or use a smaller model file, then send the message again.</source>
        <translation>コンピューターのメモリが不足し、言語モデルが停止されました。ほかのプログラムを閉じるか、小さいモデルファイルを使い、メッセージをもう一度送信してください。</translation>
    </message>
    <message>
        <source>The language model was killed from outside, perhaps because memory was short. It is starting again; send the message again.</source>
        <translation>言語モデルが外部から強制終了されました。メモリ不足の可能性があります。再起動していますので、メッセージをもう一度送信してください。</translation>
    </message>
    <message>
        <source>The language model was stopped from outside. It is starting again; send the message again.</source>
        <translation>言語モデルが外部から停止されました。再起動していますので、メッセージをもう一度送信してください。</translation>
    </message>
    <message>
        <source>The language model uses instructions that this computer&apos;s processor does not have.</source>
        <translation>言語モデルが、このコンピューターのプロセッサーにない命令を使用しています。</translation>
    </message>
    <message>
        <source>The language model crashed (signal %1). It is starting again; send the message again. If it keeps crashing, try another model file.</source>
        <translation>言語モデルがクラッシュしました (シグナル %1)。再起動していますので、メッセージをもう一度送信してください。クラッシュが続く場合は、別のモデルファイルをお試しください。</translation>
    </message>
    <message>
        <source>The language model sent an answer that makes no sense and was ended. It is starting again; send the message again.</source>
        <translation>言語モデルが意味をなさない応答を返したため、終了しました。再起動していますので、メッセージをもう一度送信してください。</translation>
    </message>
    <message>
        <source>The language model no longer answered and was ended. It is starting again; send the message again.</source>
        <translation>言語モデルが応答しなくなったため、終了しました。再起動していますので、メッセージをもう一度送信してください。</translation>
    </message>
    <message>
        <source>The language model ended by itself (exit code %1). It is starting again; send the message again. If it keeps ending, try another model file.</source>
        <translation>言語モデルが自ら終了しました (終了コード %1)。再起動していますので、メッセージをもう一度送信してください。終了が続く場合は、別のモデルファイルをお試しください。</translation>
    </message>
    <message>
        <source>The part of Lumora that runs the language model cannot be started. Install Lumora again.</source>
        <translation>言語モデルを実行する Lumora の構成要素を起動できません。Lumora をもう一度インストールしてください。</translation>
    </message>
    <message>
        <source>The model called the tool “%1”, which it was not offered. Send the message again.</source>
        <translation>モデルが、提供されていないツール「%1」を呼び出しました。メッセージをもう一度送信してください。</translation>
    </message>
    <message>
        <source>The tool “%1” needs more memory than there is. Close other programs and ask again.</source>
        <translation>ツール「%1」に必要なメモリが足りません。ほかのプログラムを閉じて、もう一度質問してください。</translation>
    </message>
    <message>
        <source>The tool “%1” failed (%2). Ask again.</source>
        <translation>ツール「%1」が失敗しました (%2)。もう一度質問してください。</translation>
    </message>
    <message>
        <source>The tool “%1” failed. Ask again.</source>
        <translation>ツール「%1」が失敗しました。もう一度質問してください。</translation>
    </message>
    <message>
        <source>The image cannot be read now: the computer is short of memory, or too many programs run on it. Close some of them and ask again.</source>
        <translation>今は画像を読み取れません。メモリが不足しているか、実行中のプログラムが多すぎます。いくつか閉じて、もう一度質問してください。</translation>
    </message>
    <message>
        <source>The image cannot be read, because a part of this program cannot be started. Install the program again and ask again.</source>
        <translation>このプログラムの一部を起動できないため、画像を読み取れません。プログラムをもう一度インストールしてから質問してください。</translation>
    </message>
    <message>
        <source>Text in images cannot be read, because no language data for text recognition is installed. Install a package such as tesseract-ocr-eng and ask again.</source>
        <translation>文字認識用の言語データがインストールされていないため、画像内の文字を読み取れません。tesseract-ocr-jpn などのパッケージをインストールしてから、もう一度質問してください。</translation>
    </message>
</context>
<context>
    <name>MessageEditor</name>
    <message>
        <source>Message</source>
        <translation>メッセージ</translation>
    </message>
</context>
<context>
    <name>MessageImage</name>
    <message>
        <source>Attached image</source>
        <translation>添付画像</translation>
    </message>
    <message>
        <source>Image unavailable</source>
        <translation>画像を表示できません</translation>
    </message>
</context>
<context>
    <name>MessageList</name>
    <message>
        <source>Messages</source>
        <translation>メッセージ</translation>
    </message>
</context>
<context>
    <name>MessageParts</name>
    <message>
        <source>Waiting for the reply</source>
        <translation>返信を待っています</translation>
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
        <translation>ローカルモデル</translation>
    </message>
    <message>
        <source>You</source>
        <translation>あなた</translation>
    </message>
</context>
<context>
    <name>ModeControl</name>
    <message>
        <source>Response mode</source>
        <translation>返信モード</translation>
    </message>
</context>
<context>
    <name>NewChatButton</name>
    <message>
        <source>Start a new chat (⌘N)</source>
        <translation>新しいチャットを始めます (Ctrl+N)</translation>
    </message>
    <message>
        <source>New chat</source>
        <translation>新しいチャット</translation>
    </message>
</context>
<context>
    <name>PendingImageRow</name>
    <message>
        <source>Remove image</source>
        <translation>画像を削除</translation>
    </message>
</context>
<context>
    <name>PrivacyNote</name>
    <message>
        <source>Private on this Mac. Shift+Return inserts a new line.</source>
        <translation>このコンピューターの外には送信されません。Shift+Enter で改行します。</translation>
    </message>
    <message>
        <source>Private · On this Mac</source>
        <translation>プライベート · このコンピューター内</translation>
    </message>
    <message>
        <source>Shift+Return for a new line</source>
        <translation>Shift+Enter で改行</translation>
    </message>
    <message>
        <source>On-device</source>
        <translation>ローカル</translation>
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
        <translation>チャット</translation>
    </message>
</context>
<context>
    <name>SplitHandle</name>
    <message>
        <source>The left and right arrow keys change it.</source>
        <translation>左右の矢印キーで変更できます。</translation>
    </message>
    <message>
        <source>Sidebar width</source>
        <translation>サイドバーの幅</translation>
    </message>
</context>
<context>
    <name>StatusFooter</name>
    <message>
        <source>On-device model ready</source>
        <translation>ローカルモデルは準備完了です</translation>
    </message>
    <message>
        <source>Model unavailable</source>
        <translation>モデルを利用できません</translation>
    </message>
</context>
<context>
    <name>TextMenu</name>
    <message>
        <source>Cut</source>
        <translation>切り取り</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>貼り付け</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>すべて選択</translation>
    </message>
</context>
<context>
    <name>lumora::Announcements</name>
    <message>
        <source>Reply: %1</source>
        <translation>返信: %1</translation>
    </message>
    <message>
        <source>On-device model ready</source>
        <translation>ローカルモデルは準備完了です</translation>
    </message>
</context>
<context>
    <name>lumora::ChatStore</name>
    <message>
        <source>The reply failed unexpectedly (%1). Please try again.</source>
        <translation>予期しない問題で返信に失敗しました (%1)。もう一度お試しください。</translation>
    </message>
    <message>
        <source>The file has more than %1 MB. Choose a smaller image.</source>
        <translation>ファイルが %1 MB を超えています。小さい画像を選んでください。</translation>
    </message>
    <message>
        <source>Could not attach image: </source>
        <translation>画像を添付できませんでした: </translation>
    </message>
    <message>
        <source>The image is not on this computer. Copy it here, and attach the copy.</source>
        <translation>画像がこのコンピューターにありません。ここにコピーして、そのコピーを添付してください。</translation>
    </message>
    <message>
        <source>Could not find local image storage.</source>
        <translation>画像の保存場所が見つかりませんでした。</translation>
    </message>
    <message>
        <source>This Mac does not support Apple Intelligence. The on-device model needs a compatible Apple silicon Mac.</source>
        <translation>このコンピューターはローカルモデルに対応していません。対応するコンピューターと十分なメモリが必要です。</translation>
    </message>
    <message>
        <source>Turn on Apple Intelligence in System Settings to use the on-device model.</source>
        <translation>ローカルモデルを使うには、このコンピューターにモデルを用意してください。</translation>
    </message>
    <message>
        <source>Apple reports that the on-device model is not ready. It may be downloading or waiting for system conditions.</source>
        <translation>ローカルモデルの準備がまだできていません。読み込み中か、システムの状態を待っている可能性があります。</translation>
    </message>
    <message>
        <source>The on-device model is unavailable right now.</source>
        <translation>ローカルモデルは現在利用できません。</translation>
    </message>
    <message>
        <source>Could not save chats: </source>
        <translation>チャットを保存できませんでした: </translation>
    </message>
</context>
<context>
    <name>lumora::DocumentLibrary</name>
    <message>
        <source>Document storage is unavailable.</source>
        <translation>ドキュメントの保存場所を利用できません。</translation>
    </message>
    <message>
        <source>Could not import document: </source>
        <translation>ドキュメントを読み込めませんでした: </translation>
    </message>
    <message>
        <source>The document is not on this computer. Copy it here, and add the copy.</source>
        <translation>ドキュメントがこのコンピューターにありません。ここにコピーして、そのコピーを追加してください。</translation>
    </message>
    <message>
        <source>No readable text was found in this document. Scanned PDFs need OCR first.</source>
        <translation>このドキュメントには読み取れる文字が見つかりませんでした。スキャンした PDF は、先に OCR 処理が必要です。</translation>
    </message>
</context>
<context>
    <name>lumora::Documents</name>
    <message>
        <source>There is too little memory to read the document. Close other programs and add it again.</source>
        <translation>メモリが足りないため、ドキュメントを読み込めません。ほかのプログラムを閉じて、もう一度追加してください。</translation>
    </message>
    <message>
        <source>The document cannot be read: %1.</source>
        <translation>ドキュメントを読み取れません: %1。</translation>
    </message>
    <message>
        <source>The document is not UTF-8 text. Save it as UTF-8 and add it again.</source>
        <translation>ドキュメントが UTF-8 のテキストではありません。UTF-8 で保存して、もう一度追加してください。</translation>
    </message>
    <message>
        <source>PDF files cannot be read now: the computer is short of memory, or too many programs run on it. Close some of them and add the document again.</source>
        <translation>今は PDF ファイルを読み取れません。メモリが不足しているか、実行中のプログラムが多すぎます。いくつか閉じて、ドキュメントをもう一度追加してください。</translation>
    </message>
    <message>
        <source>PDF files cannot be read, because a part of this program cannot be started. Install the program again and add the document again.</source>
        <translation>このプログラムの一部を起動できないため、PDF ファイルを読み取れません。プログラムをもう一度インストールしてから、ドキュメントを追加してください。</translation>
    </message>
    <message>
        <source>The document has more than 64 MB of text.</source>
        <translation>ドキュメントのテキストが 64 MB を超えています。</translation>
    </message>
</context>
<context>
    <name>lumora::Files</name>
    <message>
        <source>The file cannot be copied: %1.</source>
        <translation>ファイルをコピーできません: %1。</translation>
    </message>
    <message>
        <source>it was stopped</source>
        <translation>中止されました</translation>
    </message>
    <message>
        <source>The storage folder cannot be created: %1.</source>
        <translation>保存用のフォルダーを作成できません: %1。</translation>
    </message>
    <message>
        <source>The file cannot be written: %1.</source>
        <translation>ファイルに書き込めません: %1。</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>ファイルではありません</translation>
    </message>
    <message>
        <source>what follows the last full stop in its name is too long. Rename the file and try again</source>
        <translation>拡張子が長すぎます。ファイル名を変更して、もう一度お試しください</translation>
    </message>
    <message>
        <source>The unreadable file cannot be set aside: %1.</source>
        <translation>読み取れないファイルを退避できません: %1。</translation>
    </message>
</context>
<context>
    <name>lumora::MessageListModel</name>
    <message>
        <source>%1 input · %2 output tokens</source>
        <translation>入力 %1 · 出力 %2 トークン</translation>
    </message>
</context>
<context>
    <name>lumora::Program</name>
    <message>
        <source>Lumora is not installed completely: its window cannot be filled. Install it again.</source>
        <translation>Lumora が完全にインストールされていないため、ウィンドウの内容を表示できません。もう一度インストールしてください。</translation>
    </message>
    <message>
        <source>Lumora is already running; its window has been raised.</source>
        <translation>Lumora はすでに起動しています。ウィンドウを前面に表示しました。</translation>
    </message>
    <message>
        <source>Lumora is already running, but its window does not answer.</source>
        <translation>Lumora はすでに起動していますが、ウィンドウが応答しません。</translation>
    </message>
</context>
<context>
    <name>lumora::Search</name>
    <message>
        <source>The search index is busy: another program uses it, or it is being made anew after an update. Try again in a few minutes.</source>
        <translation>検索インデックスは使用中です。ほかのプログラムが使っているか、更新後の再作成中です。数分後にもう一度お試しください。</translation>
    </message>
    <message>
        <source>The disk has no room left for the search index.</source>
        <translation>検索インデックスのための空き容量がディスクにありません。</translation>
    </message>
    <message>
        <source>The search index cannot be written: it or its folder is read-only.</source>
        <translation>検索インデックスに書き込めません。インデックスまたはそのフォルダーが読み取り専用です。</translation>
    </message>
    <message>
        <source>The search index cannot be used: %1.</source>
        <translation>検索インデックスを使用できません: %1。</translation>
    </message>
    <message>
        <source>There is too little memory for the search index.</source>
        <translation>検索インデックスのためのメモリが足りません。</translation>
    </message>
    <message>
        <source>The search index cannot be used now: too many programs run on this computer. Close some of them and try again.</source>
        <translation>今は検索インデックスを使用できません。このコンピューターで実行中のプログラムが多すぎます。いくつか閉じて、もう一度お試しください。</translation>
    </message>
    <message>
        <source>The search index was closed.</source>
        <translation>検索インデックスは閉じられました。</translation>
    </message>
    <message>
        <source>The search index was made by a newer version of this program.</source>
        <translation>検索インデックスは、このプログラムの新しいバージョンで作成されたものです。</translation>
    </message>
    <message>
        <source>The search index is damaged and cannot be replaced: %1.</source>
        <translation>検索インデックスが壊れていて、作り直せません: %1。</translation>
    </message>
    <message>
        <source>The search index cannot be opened: %1.</source>
        <translation>検索インデックスを開けません: %1。</translation>
    </message>
    <message>
        <source>The search index cannot be opened: something else has its name.</source>
        <translation>検索インデックスを開けません。同じ名前の別のものがあります。</translation>
    </message>
    <message>
        <source>The search index cannot be created: %1.</source>
        <translation>検索インデックスを作成できません: %1。</translation>
    </message>
</context>
</TS>
