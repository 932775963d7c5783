// How elements behave where scripts are unkind. Prints what is wrong, and at last the number of
// checks.

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

var array = Array.prototype;

// What is an index, and what is a name.
var list = new List("a", "b");
check("spellings", list[1] === "b" && list["1"] === "b" && list[1.0] === "b" && list[-0] === "a");
list["01"] = list[-1] = list["1.5"] = list["4294967295"] = list["1e0"] = "name";
check("names", list.length === 2 && list["01"] === "name" && list[4294967295] === "name" && list[" 1"] === undefined);
check("names are listed last", Object.keys(list).slice(0, 3).join() === "0,1,1e0");
delete list["01"];
check("deleted name", !("01" in list) && list[1] === "b");
check("symbol", (list[Symbol("s")] = 1) && Object.keys(list).indexOf("s") < 0);
check("last index", (list[4294967294] = "end") && list.length === 4294967295 && list[4294967294] === "end");
check("no dense memory", heapStats().libraryBytes < 10000000);
check("too long to list", failure(function () { Object.keys(list); }) === 41);
check("too long to take", failure(function () { for (var i in list) print(i); }) === 41);
list.length = 2;
check("listed again", Object.keys(list)[1] === "1");
list[99999] = "far";
check("few in a long one", Object.keys(list).slice(0, 3).join() === "0,1,99999");
list.length = 100001;
for (var i = 0; i < 100000; i++) list[i] = i;
check("as many as can be listed", Object.keys(list)[99999] === "99999");
list[100000] = 1;
check("one too many", failure(function () { Object.keys(list); }) === 41);

// Lengths.
list.length = "3";
check("length", list.length === 3 && list[3] === undefined && !(3 in list));
list.length = -1;
check("negative length", list.length === 0 && delete list.length === false);
check("undefined is a hole", (list[0] = undefined) === undefined && list.length === 1 && !(0 in list) &&
      !list.hasOwnProperty(0) && list.hasOwnProperty("length"));
check("delete beyond", delete list[50] && list.length === 1);

// The language's methods.
list = new List(3, 1, 2);
check("callbacks", array.reduce.call(list, function (sum, n) { return sum + n; }) === 6 &&
      array.filter.call(list, function (n) { return n > 1; }).join() === "3,2");
array.reverse.call(array.sort.call(list));
array.unshift.call(list, 4);
check("changes", array.splice.call(list, 1, 2).join() === "3,2" && String(list) === "4,1");
check("last", array.indexOf.call(list, 1) === 1 && array.shift.call(list) === 4 && list.length === 1);
check("json", JSON.stringify(new List(1)) === '{"0":1,"length":1}');

// A collection that another keeps, and that ends with it.
var doc = new Document("a"), lines = doc.lines;
lines[0] = 5;
check("converted", lines[0] === "5" && doc.line(0) === "5" && lines === doc.lines);
check("too far", failure(function () { lines[2] = "x"; }) === 41 && failure(function () { return lines[1]; }) === 41);
check("not longer", failure(function () { lines.length = 9; }) === 41 && delete lines[9]);
array.push.call(lines, "b", "c");
check("pushed", lines.join("|") === "5|b|c" && Object.keys(lines).join() === "0,1,2,length");
check("method", failure(function () { lines.join(); }) === 20 && lines.join.call(lines, "") === "5bc");
doc = null;
gc();
check("holds the document", lines.length === 3);
lines = null;
doc = new Document("b");
(doc.lines.note = "x") && doc.append("y");
gc();
check("made anew", doc.lines.note === undefined && doc.lines[0] === "y");
lines = doc.lines;
doc.close();
check("closed", [function () { return lines[0]; }, function () { lines[0] = 1; }, function () { return 0 in lines; },
    function () { delete lines[0]; }, function () { lines.length = 0; }, function () { lines.join(""); },
    function () { Object.keys(lines); }].every(function (action) { return failure(action) === 45; }));
check("no elements", new Box(1, 1)[0] === undefined && failure(function () { new Box(1, 1)[0] = 1; }) === 55);

// Rings through elements: functions that refer to the list that they are in.
function selfReferring() {
    var own = new List();
    own[3] = function () { return own.length; };
    own[1] = own[3];
    array.shift.call(own); // elements move
    own.add(1);
    return own;
}
function makeRings(count) {
    for (var n = 0; n < count; n++) selfReferring();
}
makeRings(1);
gc();
var before = heapStats();
makeRings(1000);
gc();
check("rings", heapStats().liveObjects === before.liveObjects);
check("rings in the library", heapStats().libraryBlocks === before.libraryBlocks);
var copy = selfReferring().copy(), box = new Box(1, 1);
box.onResize = selfReferring()[0];
gc();
gc();
check("shared elements stay", copy[0]() === 4 && copy[2]() === 4);
check("elements of others stay", box.onResize() === 4);
copy = box.onResize = null;
gc();
check("until they go", heapStats().liveObjects === before.liveObjects + 1);

print(checks + " checks");
