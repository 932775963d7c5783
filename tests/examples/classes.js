// Classes of the host that describe themselves. Prints what is wrong, and at last the number of checks.

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

/// The names of the members in a section of a description.
function members(object, type) {
    var names = [], description = new XML(describe(object), true);
    for (var i in description.elements) {
        var section = description.elements[i];
        if (section["@type"] != type) continue;
        for (var m in section) names.push(String(section[m]["@name"]));
    }
    return names.join();
}

var box = new XML(describe(new Box(1, 1)), true);
check("class", box.getName() === "classdef" && box["@name"] == "Box" && box.superclass == "Object");
check("every text is there", [new Box(1, 1), new Document("d"), new Document("e").lines, new List(), new Settings(), new XML(), new File("f"), new Folder(),
    SeekFrom, new KrRegExp("a"), new KrRegExp("a").exec("a"), new KrRegExp("a").exec("a").captures[0]].every(function (object) {
    var description = new XML(describe(object), true), all = description.descendants(), described = 0, named = 0;
    for (var i in all) {
        if (!/^(classdef|method|property|parameter)$/.test(all[i].getName())) continue;
        named++;
        if (all[i].shortdesc != undefined && all[i].shortdesc != "") described++;
        else print(description["@name"] + ": " + all[i]["@name"]);
    }
    return named === described && named > 1 && description.shortdesc != "" && description.example != undefined;
}));
check("two ways", members(new Box(1, 1), "instance").split(",title").length === 3);
check("class members", members(new Folder(), "class") === "current,startup,temp,userData,desktop" &&
      members(new XML(), "class") === "parse" && members(SeekFrom, "class") === "Start,Here,End");
check("constructors", [new Box(1, 1), new List(), new Settings(), new XML()].every(function (object) {
    return members(object, "constructor") === object.constructor.name;
}));

// What scripts and data add to an object is described where it belongs to the class.
var settings = new Settings(), known = "language,currency,decimals,pageWidth";
check("before", members(settings, "instance") === known + ",restore");
settings.colour = "red";
settings.restore();
check("own properties", members(settings, "instance") === known + ",colour,restore");
check("data", members(new XML("<a><b/><c/></a>"), "instance") === members(new XML(), "instance"));

check("objects that are none", [5, null, undefined, "x", {}, [], print, Box, function () {}].every(function (value) {
    return failure(function () { describe(value); }) === 19;
}));
var doc = new Document("a");
doc.close();
check("closed things", failure(function () { describe(doc); }) === 45);

// Constants.
check("constants", SeekFrom.End === 2 && Object.keys(SeekFrom).join() === "Start,Here,End" &&
      failure(function () { SeekFrom.End = 3; }) === 46);
check("of a file", new File("f").seek(0, SeekFrom.End) === false);

print(checks + " checks");
