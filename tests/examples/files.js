// How File and Folder behave where scripts and disks are unkind. Prints what is wrong, and at last
// the number of checks.

var checks = 0;

function check(what, condition) {
    checks++;
    if (!condition) print("WRONG: " + what);
}

function failure(action) {
    try {
        action();
    } catch (e) {
        return e.number || String(e);
    }
    return 0;
}

/// Whether an operation was refused with a reason.
function refused(result, entry) {
    return (result === false || result === null) && entry.error !== "";
}

function names(folder, mask) {
    return folder.getFiles(mask).map(function (entry) { return entry.name; }).sort().join();
}

function make(path, text) {
    var file = new File(path);
    file.encoding = "UTF-8";
    file.lineFeed = "Unix";
    check("make " + file.name, file.open("w") && file.write(text) && file.close());
    return file;
}

function content(path) {
    var file = new File(path);
    file.encoding = "UTF-8";
    return file.open("r") ? file.read() : file.error;
}

function removeAll(folder) {
    folder.getFiles().forEach(function (entry) {
        if (entry instanceof Folder) removeAll(entry);
        else entry.remove();
    });
    return folder.remove();
}

var start = Folder.current, number = 1;
while (!new Folder(Folder.temp + "/krhost-files-" + number + "/in").create()) number++;
var work = new Folder(Folder.temp + "/krhost-files-" + number);
var a = work + "/a.txt";

// Folders.
check("made with what is around it", work.exists && work.error === "");
check("made twice", refused(work.create(), work));
check("not empty", refused(work.remove(), work) && work.exists);
check("parents", new Folder(work + "/in").parent.absoluteURI === String(work));
for (var top = work, depth = 0; top.parent && depth < 100; depth++) top = top.parent;
check("parents end", top.parent === null && depth < 100 && String(work).indexOf(String(top)) === 0);
var known = [Folder.current, Folder.temp, Folder.startup, Folder.desktop, Folder.userData];
check("known folders", known.every(function (folder) { return folder instanceof Folder; }) &&
      Folder.temp.exists && Folder.startup.exists && "desktop" in Folder);

// Relative paths are in the current folder, which a script can choose.
Folder.current = work;
check("current", String(Folder.current) === String(work) && String(new Folder()) === String(work));
check("relative", String(new File("in/x%20y")) === work + "/in/x%20y" && new File("x").parent.exists);
check("relative URI", new File("in/../x%20y").relativeURI === "x%20y" && work.relativeURI === "." &&
      work.parent.relativeURI === "..");
Folder.current = "in";
check("current by path", new File("../a.txt").absoluteURI === a);
check("no such current folder", failure(function () { Folder.current = new Folder(a); }) === 48 &&
      failure(function () { Folder.current = undefined; }) === 48 && Folder.current.name === "in");
Folder.current = start;

// Names, as they are and as URIs.
var odd = make(work + "/50%25%20%23%C3%BC.txt", "x");
check("odd name", odd.name === "50% #\u00fc.txt" && odd.displayName === odd.name &&
      odd.fsName.indexOf(odd.name) > 0 && content(String(odd)) === "x");
check("plain name", odd.rename("%20.txt") && odd.name === "%20.txt" && odd.exists && odd.remove());
check("from an object", String(new File(odd)) === String(odd));
check("no path", failure(function () { new File(); }) === 20 &&
      failure(function () { new Folder("a%2Fb"); }) === 31 && failure(function () { new File("\0"); }) === 31);

// What is not there.
var missing = new File(work + "/missing/x");
[missing.open("r"), missing.open("w"), missing.remove(), missing.rename("y"), missing.copy(a),
 missing.read(), missing.readln(), missing.readch(), missing.write("x"), missing.flush(),
 missing.seek(0)].forEach(function (result, i) { check("missing " + i, result === false || result === null); });
check("missing", missing.close() && !missing.exists && missing.length === -1 && missing.error !== "" && missing.eof &&
      missing.tell() === -1 && !missing.isOpen && missing.readonly === false && missing.encoding === "");
check("list", refused(new Folder(missing).getFiles(), {error: "x"}) && refused(missing.parent.remove(), {error: "x"}));

// Reading.
var text = make(a, "\u00e4\n\ud83d\ude00x\r\nlast");
check("mode", refused(text.open("x"), text) && !text.isOpen);
check("open", text.open("R") && text.error === "" && text.isOpen && !text.eof && text.encoding === "UTF-8");
check("no writing", refused(text.write("x"), text) && text.tell() === 0);
check("characters", text.readch() === "\u00e4" && text.tell() === 2 && text.readch() === "\n" &&
      text.readch() === "\ud83d\ude00" && text.tell() === 7);
check("seek", text.seek(3) && text.read(1) === "\ud83d\ude00" && text.seek(-2, 1) === true && text.tell() === 5);
check("seek outside", refused(text.seek(1e300), text) && refused(text.seek(-1), text) &&
      refused(text.seek(0, 7), text) && text.tell() === 5);
check("lines", text.seek(0) && text.readln() === "\u00e4" && text.readln() === "\ud83d\ude00x" &&
      text.readln() === "last" && text.eof);
check("end", refused(text.readln(), text) && refused(text.read(), text) && refused(text.readch(), text));
check("from the end", text.seek(-4, 2) && text.read(0) === "" && text.read(99) === "last");
check("undecodable", text.seek(1) && refused(text.read(), text) && text.tell() === 1);
text.encoding = "latin1";
check("another encoding", text.read(2) === "\u00a4\n" && text.close() && !text.isOpen);
check("senseless", failure(function () { text.seek(); }) === 20 && failure(function () { text.seek("x"); }) === 47 &&
      failure(function () { text.read({}); }) === 47 &&
      failure(function () { text.encoding = "Klingon"; }) === 19 && text.encoding === "ISO-8859-1" &&
      failure(function () { text.lineFeed = "Amiga"; }) === 19);

// Writing.
[["windows", "a\r\nb\r\n", "Windows"], ["UNIX", "a\nb\n", "Unix"], ["Macintosh", "a\rb\r", "Macintosh"]]
    .forEach(function (kind) {
        var file = make(a, "");
        file.lineFeed = kind[0];
        file.open("w");
        check(kind[0], file.writeln("a\nb") && file.close() && file.lineFeed === kind[2] && content(a) === kind[1]);
    });
var file = make(a, "one");
file.encoding = "US-ASCII";
check("append", file.open("a") && file.tell() === 3 && file.write(1, null, "\n") && file.length === 9);
check("nothing of it", refused(file.write("abc\u20ac"), file) && file.length === 9 && file.flush());
check("edit", file.open("e") && file.seek(1) && file.write("N") && file.read(2) === "e1" && file.close() &&
      content(a) === "oNe1null\n");

// Moving about.
make(work + "/b.txt", "b");
check("copy", file.copy(work + "/c.txt") && content(work + "/c.txt") === content(a));
check("copy into", file.copy(new Folder(work + "/in")) && content(work + "/in/a.txt") === content(a));
check("copy over", new File(work + "/b.txt").copy(a) && content(a) === "b");
check("copy what is open", file.open("a") && file.write("?") && file.copy(work + "/c.txt") &&
      content(work + "/c.txt") === "b?" && file.isOpen);
check("rename what is open", file.rename("d.txt") && !file.isOpen && file.name === "d.txt" &&
      content(work + "/d.txt") === "b?" && !new File(a).exists);
check("rename over", refused(file.rename("b.txt"), file) && file.name === "d.txt");
check("rename to a path", refused(file.rename("in/d.txt"), file) && refused(file.rename(""), file) && file.exists);
check("no target", failure(function () { file.rename(); }) === 20 && failure(function () { file.copy(); }) === 20 &&
      failure(function () { file.createAlias(undefined); }) === 20 && !new File("undefined").exists);
check("masks", names(work, "*.TXT") === "b.txt,c.txt,d.txt" && names(work, "b*;in") === "b.txt,in" &&
      names(work, "none") === "" && names(work) === "b.txt,c.txt,d.txt,in");
check("alias", new File(work + "/in/to b").createAlias(work + "/b.txt") && names(new Folder(work + "/in"), "to b*") !== "");
check("rename a folder", new Folder(work + "/in").rename("out") && new File(work + "/out/a.txt").exists);

// Attributes. A name with a dot is hidden where the attribute does not exist.
file = make(work + "/.dot", "");
file.hidden = true;
file.readonly = true;
check("attributes", file.hidden && file.readonly && file.error === "");
file.readonly = file.hidden = false;
check("no attributes", !file.readonly && file.remove());

// What the objects are.
check("a file is no folder", !new File(work).exists && !new Folder(work + "/b.txt").exists);
check("classes", file.getFiles === undefined && work.open === undefined && file.constructor === File);
check("foreign this", failure(function () { file.open.call(work); }) === 26 &&
      failure(function () { work.create.call(file); }) === 26 &&
      failure(function () { file.remove.call(new Box(1, 1)); }) === 26);
check("read only", ["name", "parent", "error", "eof", "length"].every(function (name) {
    return failure(function () { file[name] = "x"; }) === 46;
}) && failure(function () { file.read = 1; }) === 55);
Folder.temp = 1;
check("fixed", Folder.temp instanceof Folder && "fsName" in work && !("open" in Object.keys(file)));

// A file that nobody holds is closed.
(function () {
    var lost = new File(work + "/lost");
    lost.open("w");
    lost.write("kept");
})();
gc();
check("closed", content(work + "/lost") === "kept");

// All of it goes and comes back.
gc();
var before = heapStats().libraryBlocks;
for (var round = 0; round < 50; round++) {
    names(work);
    new File(work + "/b.txt").open("r");
}
gc();
check("returned", Math.abs(heapStats().libraryBlocks - before) < 20);
check("gone", removeAll(work) && !work.exists && String(Folder.current) === String(start));

print(checks + " checks");
