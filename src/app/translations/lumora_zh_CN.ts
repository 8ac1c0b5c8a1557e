<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ActionRow</name>
    <message>
        <source>Attach an image</source>
        <translation>添加图片附件</translation>
    </message>
    <message>
        <source>Attach Image</source>
        <translation>添加图片</translation>
    </message>
    <message>
        <source>Send</source>
        <translation>发送</translation>
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
        <translation>后续步骤</translation>
    </message>
</context>
<context>
    <name>AvailabilityBanner</name>
    <message>
        <source>Checking model readiness</source>
        <translation>正在检查模型是否就绪</translation>
    </message>
    <message>
        <source>Checked at %1 · Checking every 10 seconds</source>
        <translation>检查时间：%1 · 每 10 秒检查一次</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>立即检查</translation>
    </message>
    <message>
        <source>macOS does not provide this app with a download percentage or transfer status.</source>
        <translation>系统不会向本应用提供下载百分比或传输状态。</translation>
    </message>
</context>
<context>
    <name>ContextMeter</name>
    <message>
        <source>Tokens counted for the latest prompt. Image, instructions, tools, and output also use context.</source>
        <translation>最近一次提示的词元数。图片、指令、工具和输出也会占用上下文。</translation>
    </message>
    <message>
        <source>Context %1 / %2 tokens</source>
        <translation>上下文：%1 / %2 个词元</translation>
    </message>
</context>
<context>
    <name>ConversationList</name>
    <message>
        <source>Chats</source>
        <translation>对话</translation>
    </message>
    <message>
        <source>Delete Chat</source>
        <translation>删除对话</translation>
    </message>
</context>
<context>
    <name>DocumentPanel</name>
    <message>
        <source>Documents</source>
        <translation>文档</translation>
    </message>
    <message>
        <source>Importing a document</source>
        <translation>正在导入文档</translation>
    </message>
    <message>
        <source>Add a text, Markdown, or PDF document for local search</source>
        <translation>添加文本、Markdown 或 PDF 文档，用于本地搜索</translation>
    </message>
    <message>
        <source>Add Document</source>
        <translation>添加文档</translation>
    </message>
    <message>
        <source>Add a document to ask questions about it.</source>
        <translation>添加文档后，即可就其内容提问。</translation>
    </message>
</context>
<context>
    <name>DocumentPicker</name>
    <message>
        <source>Text, Markdown and PDF documents</source>
        <translation>文本、Markdown 和 PDF 文档</translation>
    </message>
    <message>
        <source>Add Document</source>
        <translation>添加文档</translation>
    </message>
</context>
<context>
    <name>DocumentRow</name>
    <message>
        <source>Remove %1</source>
        <translation>移除“%1”</translation>
    </message>
</context>
<context>
    <name>EmptyState</name>
    <message>
        <source>Explore Apple’s on-device model</source>
        <translation>探索本地模型</translation>
    </message>
    <message>
        <source>Ask a question, try Structured mode, add a document, or attach an image to read text and barcodes. Your chats stay on this Mac.</source>
        <translation>您可以提问、试用“Structured”模式、添加文档，或添加图片来识别文字和条码。您的对话只保存在这台计算机上。</translation>
    </message>
</context>
<context>
    <name>ImagePicker</name>
    <message>
        <source>Images</source>
        <translation>图片</translation>
    </message>
    <message>
        <source>Attach Image</source>
        <translation>添加图片</translation>
    </message>
</context>
<context>
    <name>LanguageModel</name>
    <message>
        <source>The model&apos;s answer has something else in the property “%1”.</source>
        <translation>模型的回答中，属性“%1”的内容不符合要求。</translation>
    </message>
    <message>
        <source>The model&apos;s answer is nested too deeply.</source>
        <translation>模型的回答嵌套过深。</translation>
    </message>
    <message>
        <source>The model&apos;s answer is not complete JSON.</source>
        <translation>模型的回答不是完整的 JSON。</translation>
    </message>
    <message>
        <source>The model&apos;s answer is not an object.</source>
        <translation>模型的回答不是对象。</translation>
    </message>
    <message>
        <source>The model&apos;s answer lacks the property “%1”.</source>
        <translation>模型的回答缺少属性“%1”。</translation>
    </message>
    <message>
        <source>There is no language model.</source>
        <translation>没有语言模型。</translation>
    </message>
    <message>
        <source>There is no language model. Put a model file (*.gguf) into the folder %1.</source>
        <translation>没有语言模型。请将模型文件 (*.gguf) 放入文件夹 %1。</translation>
    </message>
    <message>
        <source>The model file %1 cannot be read. Allow reading it, or replace it.</source>
        <translation>无法读取模型文件 %1。请允许读取，或更换文件。</translation>
    </message>
    <message>
        <source>The model file %1 is still being written. Wait until it is complete.</source>
        <translation>模型文件 %1 仍在写入。请等待其完成。</translation>
    </message>
    <message>
        <source>The model file %1 is one of several parts, and not all of them are there. Add the others, or wait until they are complete.</source>
        <translation>模型文件 %1 是多个部分之一，但其余部分不全。请补全其余部分，或等待它们完成。</translation>
    </message>
    <message>
        <source>The file %1 is not a model file, or not a complete one. Replace it or remove it.</source>
        <translation>文件 %1 不是模型文件，或者不完整。请更换或移除它。</translation>
    </message>
    <message>
        <source>The model %1 is larger than this computer&apos;s memory. Use a smaller one.</source>
        <translation>模型 %1 超出了这台计算机的内存。请使用较小的模型。</translation>
    </message>
    <message>
        <source>The language model keeps crashing. Use another model file, or try again in a minute.</source>
        <translation>语言模型反复崩溃。请使用其他模型文件，或一分钟后重试。</translation>
    </message>
    <message>
        <source>The language model was killed while it was loading, perhaps because memory was short. Close other programs or use a smaller model file, then try again in a minute.</source>
        <translation>语言模型在加载时被强行终止，可能是内存不足。请关闭其他程序或使用较小的模型文件，一分钟后重试。</translation>
    </message>
    <message>
        <source>The model file %1 took too long to load. Check the disk that it lies on, or use another model file.</source>
        <translation>模型文件 %1 的加载时间过长。请检查它所在的磁盘，或使用其他模型文件。</translation>
    </message>
    <message>
        <source>What the tool found is too long for the language model. Ask for less.</source>
        <translation>工具找到的内容对语言模型来说过长。请缩小提问范围。</translation>
    </message>
    <message>
        <source>The message is too long for the language model. Shorten it.</source>
        <translation>消息对语言模型来说过长。请缩短消息。</translation>
    </message>
    <message>
        <source>The computer ran out of memory and stopped the language model. Close other programs or use a smaller model file, then send the message again.</source>
        <translation>计算机内存耗尽，语言模型已被停止。请关闭其他程序或使用较小的模型文件，然后重新发送消息。</translation>
    </message>
    <message>
        <source>The language model was killed from outside, perhaps because memory was short. It is starting again; send the message again.</source>
        <translation>语言模型被外部强行终止，可能是内存不足。它正在重新启动，请重新发送消息。</translation>
    </message>
    <message>
        <source>The language model was stopped from outside. It is starting again; send the message again.</source>
        <translation>语言模型被外部停止。它正在重新启动，请重新发送消息。</translation>
    </message>
    <message>
        <source>The language model uses instructions that this computer&apos;s processor does not have.</source>
        <translation>语言模型使用了这台计算机的处理器不支持的指令。</translation>
    </message>
    <message>
        <source>The language model crashed (signal %1). It is starting again; send the message again. If it keeps crashing, try another model file.</source>
        <translation>语言模型崩溃（信号 %1）。它正在重新启动，请重新发送消息。如果仍然崩溃，请尝试其他模型文件。</translation>
    </message>
    <message>
        <source>The language model sent an answer that makes no sense and was ended. It is starting again; send the message again.</source>
        <translation>语言模型发送了无法理解的内容，已被终止。它正在重新启动，请重新发送消息。</translation>
    </message>
    <message>
        <source>The language model no longer answered and was ended. It is starting again; send the message again.</source>
        <translation>语言模型不再响应，已被终止。它正在重新启动，请重新发送消息。</translation>
    </message>
    <message>
        <source>The language model ended by itself (exit code %1). It is starting again; send the message again. If it keeps ending, try another model file.</source>
        <translation>语言模型自行退出（退出码 %1）。它正在重新启动，请重新发送消息。如果仍然退出，请尝试其他模型文件。</translation>
    </message>
    <message>
        <source>The part of Lumora that runs the language model cannot be started. Install Lumora again.</source>
        <translation>无法启动 Lumora 中运行语言模型的组件。请重新安装 Lumora。</translation>
    </message>
    <message>
        <source>The model called the tool “%1”, which it was not offered. Send the message again.</source>
        <translation>模型调用了未提供给它的工具“%1”。请重新发送消息。</translation>
    </message>
    <message>
        <source>The tool “%1” needs more memory than there is. Close other programs and ask again.</source>
        <translation>工具“%1”所需的内存不足。请关闭其他程序后重新提问。</translation>
    </message>
    <message>
        <source>The tool “%1” failed (%2). Ask again.</source>
        <translation>工具“%1”失败（%2）。请重新提问。</translation>
    </message>
    <message>
        <source>The tool “%1” failed. Ask again.</source>
        <translation>工具“%1”失败。请重新提问。</translation>
    </message>
    <message>
        <source>The image cannot be read now: the computer is short of memory, or too many programs run on it. Close some of them and ask again.</source>
        <translation>现在无法读取图片：计算机内存不足，或运行的程序过多。请关闭一些程序后重新提问。</translation>
    </message>
    <message>
        <source>The image cannot be read, because a part of this program cannot be started. Install the program again and ask again.</source>
        <translation>无法读取图片，因为本程序的某个组件无法启动。请重新安装本程序后再提问。</translation>
    </message>
    <message>
        <source>Text in images cannot be read, because no language data for text recognition is installed. Install a package such as tesseract-ocr-eng and ask again.</source>
        <translation>无法识别图片中的文字，因为没有安装文字识别所需的语言数据。请安装 tesseract-ocr-chi-sim 等软件包后重新提问。</translation>
    </message>
</context>
<context>
    <name>MessageEditor</name>
    <message>
        <source>Message</source>
        <translation>消息</translation>
    </message>
</context>
<context>
    <name>MessageImage</name>
    <message>
        <source>Attached image</source>
        <translation>附加的图片</translation>
    </message>
    <message>
        <source>Image unavailable</source>
        <translation>图片不可用</translation>
    </message>
</context>
<context>
    <name>MessageList</name>
    <message>
        <source>Messages</source>
        <translation>消息</translation>
    </message>
</context>
<context>
    <name>MessageParts</name>
    <message>
        <source>Waiting for the reply</source>
        <translation>正在等待回复</translation>
    </message>
</context>
<context>
    <name>MessageRow</name>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>Apple Foundation Model</source>
        <translation>本地模型</translation>
    </message>
    <message>
        <source>You</source>
        <translation>您</translation>
    </message>
</context>
<context>
    <name>ModeControl</name>
    <message>
        <source>Response mode</source>
        <translation>回复模式</translation>
    </message>
</context>
<context>
    <name>NewChatButton</name>
    <message>
        <source>Start a new chat (⌘N)</source>
        <translation>开始新对话 (Ctrl+N)</translation>
    </message>
    <message>
        <source>New chat</source>
        <translation>新对话</translation>
    </message>
</context>
<context>
    <name>PendingImageRow</name>
    <message>
        <source>Remove image</source>
        <translation>移除图片</translation>
    </message>
</context>
<context>
    <name>PrivacyNote</name>
    <message>
        <source>Private on this Mac. Shift+Return inserts a new line.</source>
        <translation>内容仅保留在这台计算机上。按 Shift+Enter 换行。</translation>
    </message>
    <message>
        <source>Private · On this Mac</source>
        <translation>私密 · 仅在本机</translation>
    </message>
    <message>
        <source>Shift+Return for a new line</source>
        <translation>Shift+Enter 换行</translation>
    </message>
    <message>
        <source>On-device</source>
        <translation>本地</translation>
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
        <translation>对话</translation>
    </message>
</context>
<context>
    <name>SplitHandle</name>
    <message>
        <source>The left and right arrow keys change it.</source>
        <translation>可用左右方向键调整。</translation>
    </message>
    <message>
        <source>Sidebar width</source>
        <translation>侧边栏宽度</translation>
    </message>
</context>
<context>
    <name>StatusFooter</name>
    <message>
        <source>On-device model ready</source>
        <translation>本地模型已就绪</translation>
    </message>
    <message>
        <source>Model unavailable</source>
        <translation>模型不可用</translation>
    </message>
</context>
<context>
    <name>TextMenu</name>
    <message>
        <source>Cut</source>
        <translation>剪切</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>粘贴</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
</context>
<context>
    <name>lumora::Announcements</name>
    <message>
        <source>Reply: %1</source>
        <translation>回复：%1</translation>
    </message>
    <message>
        <source>On-device model ready</source>
        <translation>本地模型已就绪</translation>
    </message>
</context>
<context>
    <name>lumora::ChatStore</name>
    <message>
        <source>The reply failed unexpectedly (%1). Please try again.</source>
        <translation>回复意外失败（%1）。请重试。</translation>
    </message>
    <message>
        <source>The file has more than %1 MB. Choose a smaller image.</source>
        <translation>文件超过 %1 MB。请选择较小的图片。</translation>
    </message>
    <message>
        <source>Could not attach image: </source>
        <translation>无法添加图片：</translation>
    </message>
    <message>
        <source>The image is not on this computer. Copy it here, and attach the copy.</source>
        <translation>图片不在这台计算机上。请先复制到本机，再添加副本。</translation>
    </message>
    <message>
        <source>Could not find local image storage.</source>
        <translation>找不到本地图片存储位置。</translation>
    </message>
    <message>
        <source>This Mac does not support Apple Intelligence. The on-device model needs a compatible Apple silicon Mac.</source>
        <translation>这台计算机不支持本地模型。本地模型需要兼容的计算机和足够的内存。</translation>
    </message>
    <message>
        <source>Turn on Apple Intelligence in System Settings to use the on-device model.</source>
        <translation>要使用本地模型，请先在这台计算机上配置模型。</translation>
    </message>
    <message>
        <source>Apple reports that the on-device model is not ready. It may be downloading or waiting for system conditions.</source>
        <translation>本地模型尚未就绪。它可能正在加载，或正在等待系统条件。</translation>
    </message>
    <message>
        <source>The on-device model is unavailable right now.</source>
        <translation>本地模型目前不可用。</translation>
    </message>
    <message>
        <source>Could not save chats: </source>
        <translation>无法保存对话：</translation>
    </message>
</context>
<context>
    <name>lumora::DocumentLibrary</name>
    <message>
        <source>Document storage is unavailable.</source>
        <translation>文档存储位置不可用。</translation>
    </message>
    <message>
        <source>Could not import document: </source>
        <translation>无法导入文档：</translation>
    </message>
    <message>
        <source>The document is not on this computer. Copy it here, and add the copy.</source>
        <translation>文档不在这台计算机上。请先复制到本机，再添加副本。</translation>
    </message>
    <message>
        <source>No readable text was found in this document. Scanned PDFs need OCR first.</source>
        <translation>此文档中没有可读取的文字。扫描的 PDF 需要先进行 OCR。</translation>
    </message>
</context>
<context>
    <name>lumora::Documents</name>
    <message>
        <source>There is too little memory to read the document. Close other programs and add it again.</source>
        <translation>内存不足，无法读取文档。请关闭其他程序后重新添加。</translation>
    </message>
    <message>
        <source>The document cannot be read: %1.</source>
        <translation>无法读取文档：%1。</translation>
    </message>
    <message>
        <source>The document is not UTF-8 text. Save it as UTF-8 and add it again.</source>
        <translation>文档不是 UTF-8 文本。请将其另存为 UTF-8 后重新添加。</translation>
    </message>
    <message>
        <source>PDF files cannot be read now: the computer is short of memory, or too many programs run on it. Close some of them and add the document again.</source>
        <translation>现在无法读取 PDF 文件：计算机内存不足，或运行的程序过多。请关闭一些程序后重新添加文档。</translation>
    </message>
    <message>
        <source>PDF files cannot be read, because a part of this program cannot be started. Install the program again and add the document again.</source>
        <translation>无法读取 PDF 文件，因为本程序的某个组件无法启动。请重新安装本程序后再添加文档。</translation>
    </message>
    <message>
        <source>The document has more than 64 MB of text.</source>
        <translation>文档的文本超过 64 MB。</translation>
    </message>
</context>
<context>
    <name>lumora::Files</name>
    <message>
        <source>The file cannot be copied: %1.</source>
        <translation>无法复制文件：%1。</translation>
    </message>
    <message>
        <source>it was stopped</source>
        <translation>复制已停止</translation>
    </message>
    <message>
        <source>The storage folder cannot be created: %1.</source>
        <translation>无法创建存储文件夹：%1。</translation>
    </message>
    <message>
        <source>The file cannot be written: %1.</source>
        <translation>无法写入文件：%1。</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>它不是文件</translation>
    </message>
    <message>
        <source>what follows the last full stop in its name is too long. Rename the file and try again</source>
        <translation>文件扩展名过长。请重命名文件后重试</translation>
    </message>
    <message>
        <source>The unreadable file cannot be set aside: %1.</source>
        <translation>无法将不可读的文件移开：%1。</translation>
    </message>
</context>
<context>
    <name>lumora::MessageListModel</name>
    <message>
        <source>%1 input · %2 output tokens</source>
        <translation>输入 %1 · 输出 %2 个词元</translation>
    </message>
</context>
<context>
    <name>lumora::Program</name>
    <message>
        <source>Lumora is not installed completely: its window cannot be filled. Install it again.</source>
        <translation>Lumora 安装不完整，无法显示窗口内容。请重新安装。</translation>
    </message>
    <message>
        <source>Lumora is already running; its window has been raised.</source>
        <translation>Lumora 已在运行，其窗口已置于最前。</translation>
    </message>
    <message>
        <source>Lumora is already running, but its window does not answer.</source>
        <translation>Lumora 已在运行，但其窗口没有响应。</translation>
    </message>
</context>
<context>
    <name>lumora::Search</name>
    <message>
        <source>The search index is busy: another program uses it, or it is being made anew after an update. Try again in a few minutes.</source>
        <translation>搜索索引正忙：其他程序正在使用它，或它正在更新后重建。请几分钟后重试。</translation>
    </message>
    <message>
        <source>The disk has no room left for the search index.</source>
        <translation>磁盘已没有空间存放搜索索引。</translation>
    </message>
    <message>
        <source>The search index cannot be written: it or its folder is read-only.</source>
        <translation>无法写入搜索索引：它或其文件夹为只读。</translation>
    </message>
    <message>
        <source>The search index cannot be used: %1.</source>
        <translation>无法使用搜索索引：%1。</translation>
    </message>
    <message>
        <source>There is too little memory for the search index.</source>
        <translation>内存不足，无法使用搜索索引。</translation>
    </message>
    <message>
        <source>The search index cannot be used now: too many programs run on this computer. Close some of them and try again.</source>
        <translation>现在无法使用搜索索引：这台计算机上运行的程序过多。请关闭一些程序后重试。</translation>
    </message>
    <message>
        <source>The search index was closed.</source>
        <translation>搜索索引已关闭。</translation>
    </message>
    <message>
        <source>The search index was made by a newer version of this program.</source>
        <translation>搜索索引由本程序的较新版本创建。</translation>
    </message>
    <message>
        <source>The search index is damaged and cannot be replaced: %1.</source>
        <translation>搜索索引已损坏且无法替换：%1。</translation>
    </message>
    <message>
        <source>The search index cannot be opened: %1.</source>
        <translation>无法打开搜索索引：%1。</translation>
    </message>
    <message>
        <source>The search index cannot be opened: something else has its name.</source>
        <translation>无法打开搜索索引：存在同名的其他项目。</translation>
    </message>
    <message>
        <source>The search index cannot be created: %1.</source>
        <translation>无法创建搜索索引：%1。</translation>
    </message>
</context>
</TS>
