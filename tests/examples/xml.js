// How XML behaves where scripts are unkind. Prints what is wrong, and at last the number of checks.

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

var doc = new XML("<r a='1'><b>x</b><b c='2'>y</b><length>7</length><t/></r>");

// Names, indexes and what is not there.
check("list", doc.b.length === 2 && doc.b[1] == "y" && String(doc.b) === '<b>x</b><b c="2">y</b>' &&
      String(doc.b[0]) === "x");
check("attribute", doc["@a"] == 1 && doc.b["@c"] + 1 === "21" && doc["@*"].length === 1);
check("not there", doc.missing === undefined && !("missing" in doc) && doc[9] === undefined);
check("there", "b" in doc && "@a" in doc && 3 in doc && doc.hasOwnProperty("t"));
check("own names come first", doc.length === 4 && doc.child("length") == 7);
check("what all objects have", doc.constructor === XML && doc.b[0].valueOf() == "x");
check("keys", Object.keys(doc).join() === "0,1,2,3" && Object.keys(doc["@a"][0]).length === 0);
check("json", JSON.stringify(doc.b[0]) === '"x"');
check("odd names", doc[""] === undefined && doc["a/b"] === undefined && doc[-1] === undefined &&
      doc["::b"].length === 2 && doc["urn:x::b"] === undefined && doc["00"] === undefined);

// A name that was found is asked for again.
var other = doc.parent() || doc;
check("found", "t" in other && other.t.length === 1);
delete doc.t;
check("gone", !("t" in other) && other.t === undefined);

// Assignment and deletion.
doc.t = "<&>";
doc.b[0]["@d"] = true;
doc["x/y/@z"] = 5;
check("assigned", doc.toXMLString() === '<r a="1"><b d="true">x</b><b c="2">y</b><length>7</length>' +
      '<t>&lt;&amp;&gt;</t><x><y z="5"/></x></r>');
doc.b = new XML("<b/>");
doc.x = doc.t;
check("a copy", doc.b.length === 1 && doc.x.t == "<&>" && doc.t.length === 1);
check("delete", delete doc.x && delete doc["@a"] && delete doc[0] && delete doc.nothing);
check("deleted", doc.toXMLString() === "<r><length>7</length><t>&lt;&amp;&gt;</t></r>");
var list = XML.parse("<><i/><i/><i/></>");
delete list[1];
check("delete from a list", list.length === 2);
doc.add("i", "1");
doc.add("i");
delete doc.i[0];
check("a list's member leaves its tree", doc.i.length === 1 && doc.i == "");

// What cannot be.
check("index", failure(function () { doc[0] = 1; }) === 46);
check("length", failure(function () { doc.length = 1; }) === 46);
check("method", failure(function () { doc.add = 1; }) !== 0);
check("null", failure(function () { doc.t = null; }) === 47);
check("name", failure(function () { doc["*"] = 1; }) === 19);
check("into text", failure(function () { doc.t[0][0].q = 1; }) === 19);
check("foreign this", failure(function () { doc.copy.call(new Box(1, 1)); }) === 26);
check("no node", failure(function () { doc.insert("x"); }) === 47 && !doc.isEqual("x"));
check("ring", doc.insert(doc) === false && doc.t[0].parent().isEqual(doc));
check("symbol", failure(function () { doc.t = Symbol("s"); }) === 44);

// Texts and their errors.
check("empty", new XML().getType() === "text" && new XML("").length === 0);
check("spaces", new XML("<a> <b/> </a>").length === 3 && new XML("<a> <b/> </a>", true).length === 1);
check("flags", new XML("<a><!--c--><?p?></a>", false, true, true).length === 0);
try {
    new XML("<a>\n<b>\n</a>");
    check("error", false);
} catch (e) {
    check("error", e instanceof Error && e.number === 1 && e.message.indexOf("line 3") > 0);
}
check("attack", failure(function () {
    var text = "<!DOCTYPE a [<!ENTITY e0 '0123456789'>";
    for (var i = 1; i < 12; i++) text += "<!ENTITY e" + i + " '" + Array(11).join("&e" + (i - 1) + ";") + "'>";
    XML.parse(text + "]><a>&e11;</a>");
}) !== 0);

// Deep and many; a part keeps its whole tree.
var deep = XML.parse(Array(100001).join("<d>") + "x" + Array(100001).join("</d>"));
check("deep", deep.descendants().length === 100000 && deep.copy().isEqual(deep));
var part = new XML("<a><b><c/></b></a>").b.c[0];
gc();
check("kept", part.parent().parent().getName() === "a");

// All of it comes back.
deep = part = list = null;
gc();
var before = heapStats().libraryBlocks;
for (var round = 0; round < 200; round++) {
    var tree = new XML("<a><b>1</b><b>2</b></a>");
    for (var i in tree.b) tree.b[i]["@n"] = i;
    tree = null;
}
gc();
check("returned", Math.abs(heapStats().libraryBlocks - before) < 20);

print(checks + " checks");
