// Elements of host objects, and classes that describe themselves: numbers the lines of a document,
// sorts a list of the host's, and prints an overview of what those classes offer.

var doc = new Document("notebook"), lines = doc.lines;

// A collection: what it shows is the document's. Writing behind the last element adds one.
["buy tea", "", "call Čapek", "water the plants"].forEach(function (text) {
    lines[lines.length] = text;
});
print(doc.length, lines[2], 3 in lines, 4 in lines);
for (var i = lines.length - 1; i >= 0; i--) {
    if (lines[i] === "") delete lines[i]; // those behind it move up
}
for (i = 0; i < lines.length; i++) lines[i] = (i + 1) + ". " + lines[i];
print(lines.join("; "));

// The functions of the language's arrays work on whatever has elements and a length.
var array = Array.prototype;
print(array.map.call(lines, function (text) { return text.length; }).join(" "));
print(array.pop.call(lines), "was the last of", lines.length + 1);

// An array of the host's takes any values, and keeps holes.
var list = new List("pear", "apple", "quince");
array.sort.call(list);
list[4] = {note: "far away"};
list.add(lines);
print(list.length, String(list[0]), 3 in list, list[4].note, list[5] === lines);
delete list[4];
print(Object.keys(list).join(" "));
list.length = 2;
print(String(list), "and a copy", String(list.copy()));

function attempt(action) {
    try {
        action();
    } catch (e) {
        print(e.name + " " + e.number + ": " + e.message);
    }
}
attempt(function () { return lines[7]; });
attempt(function () { lines.length = 7; });
doc.close();
attempt(function () { return lines[0]; });
attempt(function () { return lines.length; });

// What a class offers, from its description.
function member(element) {
    var parameters = element.parameters ? element.parameters.parameter : [];
    var names = array.map.call(parameters, function (parameter) {
        return parameter["@name"] + (parameter["@optional"] ? "?" : "");
    });
    return element["@name"] + (element.getName() === "method" ? "(" + names.join(", ") + ")" : "");
}

function overview(object) {
    var description = new XML(describe(object), true);
    print("\n" + description["@name"] + " - " + description.shortdesc);
    array.forEach.call(description.elements, function (section) {
        array.forEach.call(section.children(), function (element) {
            var type = element.datatype ? element.datatype.type : "nothing";
            print("  " + member(element) + ": " + type);
        });
    });
}

overview(new List());
overview(new Document("another").lines);
overview(SeekFrom);
attempt(function () { describe({}); });
