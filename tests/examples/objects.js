// How host objects behave where scripts are unkind. Prints what is wrong, and at last the number of
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

// An ID is remembered for a name, and asked for anew when definitions change.
var settings = new Settings();
settings.colour = "red";
for (var i = 0; i < 3; i++) check("defined", settings.colour === "red");
delete settings.colour;
check("deleted", settings.colour === undefined && !("colour" in settings));
settings.colour = "blue";
check("defined again", settings.colour === "blue");
check("known to the listener", settings.decimals === 2);
var names = [];
for (i = 0; i < 100; i++) settings["name" + i] = i;
for (i = 0; i < 100; i++) check("many names", settings["name" + i] === i);
var restore = settings.restore;
check("method", restore === settings.restore);

// A closed document forgets that it knew its names.
var doc = new Document("a"), line = doc.line, append = doc.append;
append("x");
check("kept method", line(0) === "x");
doc.close();
check("dead by name", failure(function () { doc.name; }) === 45);
check("dead by method", failure(function () { line(0); }) === 45);
check("dead by stringify", failure(function () { JSON.stringify(doc); }) === 45);

// Keys that are no names, and receivers that are no host objects.
var box = new Box(2, 3), symbol = Symbol("s");
box[symbol] = 5;
check("symbol", box[symbol] === 5 && symbol in box && Object.keys(box).indexOf("s") < 0);
check("unknown index", box[0] === undefined && failure(function () { box[0] = 1; }) === 55);
box.resize(4, 4);
check("foreign this", box.contains.call(7, {x: 0, y: 0}) === true);
check("foreign toString", failure(function () { Box.prototype.toString.call({}); }) !== 0);
check("without new", Box(1, 1).area === 1);
check("bad construction", failure(function () { new Box(-1, 1); }) === 41);
check("symbol as value", failure(function () { box.tags = symbol; }) === 44);

// A name of the class in front of those that everything has; and what the class itself inherits.
Box.prototype.half = function () { return this.width / 2; };
check("added to the prototype", box.half() === 2);
check("own before inherited", box.toString() === "Box 4x4" && !box.hasOwnProperty("half"));

// Scripts that change or throw while they are being read.
var trap = [1, 2, 3];
Object.defineProperty(trap, 1, {get: function () { trap.length = 0; gc(); return box; }});
box.tags = trap;
check("getter", box.tags[1] === box && box.tags[2] === undefined);
Object.defineProperty(trap, 0, {get: function () { throw new EvalError("no"); }});
check("throwing getter", failure(function () { box.tags = trap; }) === "EvalError: no");
var nested = "end";
for (i = 0; i < 100; i++) nested = [nested];
check("deep enough", failure(function () { box.tags = nested; }) === 0);
check("too deep", failure(function () { box.tags = [nested]; }) === 41);
box.tags = null;

// Functions in the hands of the host.
var other = new Box(1, 1), calls = 0;
box.onResize = function again(which) {
    check("this", this === undefined || this !== box);
    if (++calls < 5) which.resize(calls, calls);
};
box.resize(9, 9);
check("called within a call", calls === 5 && box.width === 4);
box.onResize = function () { box.onResize = null; gc(); box.title("replaced"); };
box.resize(1, 1);
check("replaced itself", box.onResize === null && String(box.title) === "replaced");
box.onResize = function () { box.resize(1, 1); };
check("without end", /limit/.test(failure(function () { box.resize(1, 1); })));
box.onResize = null;
box.onResize = other.resize;
check("method of another", failure(function () { box.resize(5, 5); }) === 47);
check("method comes back", box.onResize === other.resize);
[5, "text", null, undefined, {a: 1}].forEach(function (thrown) {
    var caught = "nothing";
    box.onResize = function () { throw thrown; };
    try { box.resize(1, 1); } catch (e) { caught = e; }
    check("thrown " + thrown, caught === thrown);
});
box.onResize = null;

// Identity does not depend on the collector, and the table does not keep what is gone.
gc();
var before = heapStats().liveObjects;
(function () {
    var inner = new Box(1, 1);
    box.tags = [inner, inner];
    inner = null;
    gc();
    check("same twice", box.tags[0] === box.tags[1]);
    box.tags = null;
})();
gc();
check("gone", heapStats().liveObjects === before);
(function () {
    var ring = {box: new Box(1, 1)};
    ring.ring = ring;
})();
check("a ring waits", heapStats().liveObjects === before + 1);
gc();
check("until collected", heapStats().liveObjects === before);

// Rings through both sides: a function in a property of the object that it refers to.
function selfReferring(width) {
    var own = new Box(width, 1);
    own.onResize = function () { calls += own.width; };
    own.resize(width, 2); // makes a function for the method, which holds the object as well
    return own;
}
gc();
before = heapStats();
(function () { for (var n = 0; n < 1000; n++) selfReferring(1); })();
gc();
check("rings", heapStats().liveObjects === before.liveObjects);
check("rings in the library", heapStats().libraryBlocks === before.libraryBlocks);
var kept = selfReferring(1), inHost = new Box(1, 1), method = selfReferring(3).resize;
inHost.tags = selfReferring(5);
other.onResize = kept.onResize;
kept = null;
gc();
gc();
calls = 0;
other.resize(1, 1);
check("shared function stays", calls === 1);
method(30, 1);
check("object of a method stays", calls === 31);
inHost.tags.resize(500, 1);
check("object of the host stays", calls === 531);
other.onResize = inHost.tags = null;

// The engine's own doors are shut.
check("no engine access", typeof Duktape === "undefined" && String.fromBufferRaw === undefined);
check("names of errors", new InternalError("x") instanceof Error && FatalError("y").name === "FatalError");


// Scripts that replace what everybody uses, or put a setter in the way of a listing.
Object.defineProperty(Box.prototype, "area", {set: function () { throw new Error("never asked"); }});
check("listing", Object.keys(box).length === 8);
var RealError = Error;
Error = RangeError = null;
check("classes", new IOError("x") instanceof RealError && failure(function () { box.width = -1; }) === 41);

print(checks + " checks");
