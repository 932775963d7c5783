// Uses what krhost declares. Each wrong use is marked, and the compiler must find fault with it.

// Properties, also those that can be called, and optional parameters.
var box = new Box(4, 3), sum: number = box.area + new Box().width;
box.title("Lid").resize(2, 2).title = "Hat";
var title: string = box.title.valueOf();
box.onResize = function (which: Box) { print(which.area, which.bounds.left); };
box.position = {x: 1, y: 1};
// @ts-expect-error: read-only
box.area = 5;
// @ts-expect-error: no such property
box.colour = "red";
// @ts-expect-error: one argument is missing
box.resize(1);
// @ts-expect-error: a text is no number
new Box("4");
// @ts-expect-error: the value of a property that can be called
box.title = 5;
// @ts-expect-error: half a point
box.contains({x: 1});

// Elements.
var doc = new Document("notes"), lines = doc.lines, line: string = lines[0];
lines[lines.length] = "more";
for (var i = 0; i < lines.length; i++) print(lines[i].length);
Array.prototype.map.call(lines, function (text) { return text; });
var list = new List(1, "two", {three: 3}), copy: List = list.copy();
list[list.add(4, 5)] = null;
// @ts-expect-error: lines are texts
lines[0] = 5;
// @ts-expect-error: nobody constructs these
new Lines();
// @ts-expect-error: gives nothing
var nothing: number = doc.close();

// What may be null or undefined, members of classes, constants.
var file = new File("notes.txt"), around: Folder | null = file.parent, read: string | null = file.readln();
file.seek(-1, SeekFrom.End);
file.write("a", 1, true);
Folder.current = Folder.temp;
if (around) print(around.name);
// @ts-expect-error: null at the end
file.readln().length;
// @ts-expect-error: read-only
Folder.temp = Folder.current;
// @ts-expect-error: no such constant
file.seek(0, 7);
// @ts-expect-error: a constant
SeekFrom.End = 0;

// Regular expressions and their matches.
var pair = new KrRegExp("(\\w+)=(\\d+)", "g"), found = pair.exec("a=1");
if (found) print(found[1].length, found.index + found.captures[0].end, found.input.length);
pair.lastIndex = pair.split("a,b", 1).length;
pair.replace("a=1", function (match: string, name: string) { return name; }).length;
// @ts-expect-error: null when there is no match
pair.exec("").index;
// @ts-expect-error: read-only
pair.source = "a";
// @ts-expect-error: matches are only read
if (found) found[0] = "b";
// @ts-expect-error: nobody constructs these
new KrMatch();
// @ts-expect-error: the language's own are others
var own: RegExp = pair;

// Objects with any properties, and globals.
var settings = new Settings(), tree = XML.parse("<a><b/></a>");
settings.colour = "red";
print(tree.b["@id"], tree[0].getName(), describe(tree), arguments.length, readln());
if (tree.parent() === undefined) throw new IOError("no parent");
try { gc(); } catch (e) { print((e as Error).number); }
// @ts-expect-error: the settings that there are have their types
settings.decimals = "two";
// @ts-expect-error: elements of trees are only read
tree[0] = tree;
// @ts-expect-error: no live object
describe(5);
