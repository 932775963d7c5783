// Makes UTF-8 with Unix line ends of the text files in a folder, whatever they are, and tells what
// they were. The files are samples of its own, in a folder of its own, which is gone at the end.

var charset = {mark: "\uFEFF", legacy: ["UTF-8", "Shift-JIS", "Windows-1252"]};

function must(succeeded, entry) {
    if (!succeeded) throw new IOError(entry.name + ": " + entry.error);
}

/// A name is no URI: it may hold "%" and "#".
function fileIn(folder, name) {
    return new File(folder + "/" + encodeURIComponent(name));
}

function makeFolder() {
    for (var number = 1; ; number++) {
        var folder = new Folder(Folder.temp + "/krhost-convert-" + number);
        if (folder.create()) return folder;
        if (!folder.exists) throw new IOError(folder.fsName + ": " + folder.error);
    }
}

function byName(a, b) {
    return a.name < b.name ? -1 : a.name > b.name ? 1 : 0;
}

function removeAll(folder) {
    folder.getFiles().forEach(function (entry) {
        if (entry instanceof Folder) removeAll(entry);
        else must(entry.remove(), entry);
    });
    must(folder.remove(), folder);
}

// The samples.

function makeSample(folder, name, encoding, lineFeed, text) {
    var file = fileIn(folder, name);
    file.encoding = encoding;
    file.lineFeed = lineFeed;
    must(file.open("w") && file.write(text) && file.close(), file);
    return file;
}

function makeSamples(folder) {
    var lines = "Grüße aus dem Café, € 5\nΩ ≈ 日本 \ud83d\ude00\n";
    makeSample(folder, "plain.txt", "UTF-8", "Unix", lines);
    makeSample(folder, "marked.txt", "UTF-8", "Windows", charset.mark + lines);
    makeSample(folder, "wide little.txt", "UTF-16LE", "Windows", charset.mark + lines);
    makeSample(folder, "wide big.txt", "UTF-16BE", "Macintosh", charset.mark + lines);
    makeSample(folder, "western 100%.txt", "Windows-1252", "Windows", "Größe\nCafé, € 5\nno end");
    makeSample(folder, "japan.csv", "Shift-JIS", "Unix", "日本語,テキスト\n2,カナ\n");
    makeSample(folder, "ascii.txt", "US-ASCII", "Macintosh", "one\ntwo\n\nfour\n");
    makeSample(folder, "empty.txt", "UTF-8", "Unix", "");
    makeSample(folder, "picture.bin", "BINARY", "Unix", "\u0089PNG\u0000\u00ff");
    // Half a character too many, behind a mark that leaves no doubt about the encoding.
    var broken = makeSample(folder, "broken.txt", "UTF-16LE", "Unix", charset.mark + "wide");
    broken.encoding = "BINARY";
    must(broken.open("a") && broken.write("\u00e4") && broken.close(), broken);
}

// The conversion.

/// The text of a file, with the encoding it turned out to have; without the text when it has none of
/// those in question. Opening tells a mark, which is passed over, and the encodings of Unicode;
/// those that came before it can only be tried.
function readText(file) {
    must(file.open("r"), file);
    var isMarked = file.tell() > 0, guess = file.encoding;
    var candidates = isMarked || /^(UTF|UCS)/.test(guess) ? [guess] : [];
    if (!isMarked) candidates = candidates.concat(charset.legacy);
    var found = {text: null};
    for (var i = 0; i < candidates.length && found.text === null; i++) {
        file.encoding = candidates[i];
        found.text = file.eof ? "" : file.read();
        found.error = file.error;
    }
    found.encoding = file.encoding + (isMarked ? " with mark" : "");
    file.close();
    return found;
}

function lineEndsOf(text) {
    var kinds = {"\r\n": "CR LF", "\r": "CR", "\n": "LF"}, seen = {};
    (text.match(/\r\n|\r|\n/g) || []).forEach(function (end) { seen[kinds[end]] = true; });
    return Object.keys(seen).sort().join(" and ") || "none";
}

function describe(text) {
    var lines = text.split(/\r\n|\r|\n/);
    if (lines[lines.length - 1] === "") lines.pop();
    var characters = lines.join("").replace(/[\uD800-\uDBFF][\uDC00-\uDFFF]/g, "?").length;
    return {ends: lineEndsOf(text), characters: characters, lines: lines.length};
}

function pad(value, width) {
    value = String(value);
    while (value.length < Math.abs(width)) value = width < 0 ? value + " " : " " + value;
    return value;
}

function row(name, encoding, ends, characters, lines) {
    print(pad(name, -18) + pad(encoding, -18) + pad(ends, -10) + pad(characters, 10) + pad(lines, 6));
}

function convert(file, folder) {
    var found = readText(file);
    if (found.text === null) {
        print(pad(file.name, -18) + "left out, not " + found.encoding + ": " + found.error);
        return;
    }
    var is = describe(found.text);
    row(file.name, found.encoding, is.ends, is.characters, is.lines);
    makeSample(folder, file.name, "UTF-8", "Unix", found.text);
}

/// Whether a file is what this program makes of text files.
function isConverted(file) {
    var found = readText(file), bytes = file.length;
    return found.encoding === "UTF-8" && found.text.indexOf("\r") < 0 &&
        bytes === unescape(encodeURIComponent(found.text)).length;
}

var work = makeFolder();
try {
    makeSamples(work);
    var result = new Folder(work + "/utf8");
    must(result.create(), result);

    row("file", "encoding", "line ends", "characters", "lines");
    work.getFiles("*.txt;*.csv").sort(byName).forEach(function (file) { convert(file, result); });

    print("\nall of it:");
    result.getFiles().sort(byName).forEach(function (file) {
        print(pad(file.name, -18) + pad(file.length, 4) + " bytes" + (isConverted(file) ? "" : ", wrong"));
    });
    var files = result.getFiles().length;
    print("\n" + files + " of " + work.getFiles("*.*").length + " converted");
} finally {
    removeAll(work);
}
print(work.exists ? "still there" : "nothing left behind");
