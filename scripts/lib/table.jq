# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

# The table of docs/performance.md from the benchmarks' results: medians, and their ratios with what is allowed.

def median($file; $name):
    [$file.benchmarks[] | select(.aggregate_name == "median" and (.run_name | startswith($name)))][0];
def digits($n): (. * pow(10; $n) | round) / pow(10; $n);
def time: "\(.real_time | digits(1)) \(.time_unit)";
def row($what; $ours; $theirs; $ratio; $bound): "| \($what) | \($ours) | \($theirs) | \($ratio | digits(2)) | \($bound) |";
def compared($what; $ours; $theirs; $bound):
    row($what; $ours | time; $theirs | time; $ours.real_time / $theirs.real_time; "≤ \($bound)");

$history[0] as $h | $store[0] as $s | $search[0] as $q | $pdf[0] as $p | $vision[0] as $v | $reply[0] as $r | $llama[0][0] as $l
| ($l.samples_ts | sort | .[length / 2 | floor]) as $rate
| "| what | Lumora | against | ratio | bound |",
  "|---|---|---|---|---|",
  compared("decoding a 50 MB history, against RapidJSON parsing it";
      median($h; "historyDecode"); median($h; "rapidJsonParse"); 2),
  compared("encoding it, written and synced, against RapidJSON’s writer, plainly written and synced";
      median($h; "historyEncodeAndSave"); median($h; "rapidJsonWriteAndSync"); 1.5),
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
  compared("text of a PDF of 200 pages, against pdftotext"; median($p; "pdfText"); median($p; "pdftotextCommand"); 1.2),
  compared("recognising a page of A4 at 200 dpi, against the tesseract command";
      median($v; "recognisePage");
      [median($v; "tesseractCommand/0"), median($v; "tesseractCommand/1")] | min_by(.real_time); 1.1),
  row("tokens a second of a reply to \($r.promptTokens) tokens, against llama-bench with \($l.n_threads) threads";
      $r.tokensPerSecond | digits(1); $rate | digits(1); $r.tokensPerSecond / $rate; "≥ 0.95"),
  row("first text of the tenth question (\($r.tenthPromptTokens) tokens), against a cold start";
      "\($r.firstTextWarm | digits(2)) s"; "\($r.firstTextCold | digits(2)) s"; $r.firstTextWarm / $r.firstTextCold; "≤ 0.3")
