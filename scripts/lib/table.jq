# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

# The table of docs/performance.md from the benchmarks' results: medians, and their ratios with what is allowed.

def median($file; $name):
    [$file.benchmarks[] | select(.aggregate_name == "median" and (.run_name | . == $name or startswith($name + "/")))][0];
def digits($n): (. * pow(10; $n) | round) / pow(10; $n);
def limit: if . then "≤ \(.)" else "" end;
def time: "\(.real_time | digits(1)) \(.time_unit)";
def row($what; $ours; $theirs; $ratio; $bound):
    "| \($what) | \($ours) | \($theirs) | \($ratio | digits(if $ratio < 0.01 then 4 else 2 end)) | \($bound) |";
def compared($what; $ours; $theirs; $bound):
    row($what; $ours | time; $theirs | time; $ours.real_time / $theirs.real_time; $bound | limit);
def measured($what; $unit; $ours; $theirs; $bound):
    row($what; "\($ours | digits(1)) \($unit)"; "\($theirs | digits(1)) \($unit)"; $ours / $theirs; $bound | limit);

$history[0] as $h | $store[0] as $s | $search[0] as $q | $pdf[0] as $p | $vision[0] as $v | $reply[0] as $r | $llama[0][0] as $l
| $start[0] as $w | $frames[0] as $f
| ($l.samples_ts | sort | .[length / 2 | floor]) as $rate
| "| what | Lumora | against | ratio | bound |",
  "|---|---|---|---|---|",
  compared("decoding a 50 MB history, against RapidJSON parsing it";
      median($h; "historyDecode"); median($h; "rapidJsonParse"); 2),
  compared("decoding it and packing the chats, as at a start"; median($h; "historyDecodeAndPack"); median($h; "rapidJsonParse"); null),
  compared("encoding it, written and synced, against RapidJSON’s writer, plainly written and synced";
      median($h; "historyEncodeAndSave"); median($h; "rapidJsonWriteAndSync"); 1.5),
  compared("the same with packed chats"; median($h; "packedHistorySave"); median($h; "rapidJsonWriteAndSync"); 1.5),
  compared("prompt of a chat of 5,000 messages, against one of 20";
      median($s; "prompt5000Messages"); median($s; "prompt20Messages"); 2),
  compared("prompt of a chat with an earlier message of 5 MB, against ordinary ones";
      median($s; "prompt5MegabyteEarlierMessage"); median($s; "prompt20Messages"); 2),
  compared("prompt with a latest message of 5 MB, against an ordinary one";
      median($s; "prompt5MegabyteLatestMessage"); median($s; "prompt20Messages"); 2),
  compared("applying one snapshot with 5,000 chats, against 10";
      median($s; "snapshot/5000"); median($s; "snapshot/10"); 1.5),
  compared("a question to 10,000 documents of 20 KB, against plain FTS5";
      median($q; "questionToLargeLibrary"); median($q; "plainQuestion"); 2),
  compared("the same with rare words only";
      median($q; "rareQuestion"); median($q; "plainRareQuestion"); 2),
  compared("a question to 10,000 documents, against the same to 1,000";
      median($q; "questionToLargeLibrary"); median($q; "questionToSmallLibrary"); 10),
  row("a question that one of 10,000 documents answers, against reading them all";
      median($q; "markInIndex") | time; median($q; "markByReading") | time;
      median($q; "markInIndex").real_time / median($q; "markByReading").real_time; "≤ 0.01"),
  compared("text of a PDF of 200 pages, against pdftotext"; median($p; "pdfText"); median($p; "pdftotextCommand"); 1.2),
  compared("importing it, against pdftotext and an insert of the text into the index";
      median($p; "pdfImport"); median($p; "pdftotextAndInsert"); 1.2),
  compared("recognising a page of A4 at 200 dpi, against the tesseract command";
      median($v; "recognisePage");
      [median($v; "tesseractCommand/0"), median($v; "tesseractCommand/1")] | min_by(.real_time); 1.1),
  row("tokens a second of a reply to \($r.promptTokens) tokens, against llama-bench with \($l.n_threads) threads";
      $r.tokensPerSecond | digits(1); $rate | digits(1); $r.tokensPerSecond / $rate; "≥ 0.95"),
  row("first text of the tenth question (\($r.tenthPromptTokens) tokens), against a cold start";
      "\($r.firstTextWarm | digits(2)) s"; "\($r.firstTextCold | digits(2)) s"; $r.firstTextWarm / $r.firstTextCold; "≤ 0.3"),
  measured("first frame with a history of 20 MB in 2,000 chats, against an empty window"; "ms";
      $w.lumora.firstFrame; $w.bare.firstFrame; 1.3),
  measured("the frame that has the chats in it"; "ms"; $w.lumora.filledFrame; $w.bare.filledFrame; null),
  measured("memory then"; "MB"; $w.lumora.residentMegabytes; $w.bare.residentMegabytes; 1.5),
  measured("opening a chat of 5,000 messages, against a plain list of the same texts"; "ms";
      $f.open.lumora; $f.open.bare; 2),
  measured("a frame while it is scrolled"; "ms"; $f.scroll.lumora; $f.scroll.bare; 2),
  measured("a frame while a reply streams into it"; "ms"; $f.stream.lumora; $f.stream.bare; 2),
  measured("a snapshot of a reply of 20,000 characters, against laying it out"; "ms";
      $f.snapshotOfLongChat; $f.layout; 3),
  measured("a snapshot in a chat of 5,000 messages, against one of 20"; "ms";
      $f.snapshotOfLongChat; $f.snapshotOfShortChat; 1.1)
