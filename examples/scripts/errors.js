// Errors of the library are JavaScript errors of the class that fits, with a number.

function attempt(what, action) {
    try {
        action();
        print(what + ": fine");
    } catch (e) {
        print(what + ": " + e.name + " " + e.number + ", " + e.message + ", line " + e.lineNumber);
    }
}

var box = new Box(1, 1);
attempt("read-only", function () { box.area = 2; });
attempt("out of range", function () { box.width = -1; });
attempt("type", function () { box.width = "wide"; });
attempt("method as value", function () { box.resize = 3; });
attempt("unknown name", function () { box.colour = "red"; });
attempt("other class", function () { box.resize.call(new Settings(), 1, 2); });
attempt("too deep", function () {
    var ring = [];
    ring.push(ring);
    box.tags = ring;
});

// They can be told apart, caught and thrown on.
function careful(width) {
    try {
        return box.resize(width, 1).width;
    } catch (e) {
        if (e instanceof RangeError) return "refused";
        throw e;
    }
}
print(careful(3), careful(-3));
try {
    careful("three");
} catch (e) {
    print("thrown on: " + e);
}

// What a script function throws while the host calls it arrives as what it was.
function NarrowError(width) { this.width = width; }
box.onResize = function (which) {
    if (which.width < 1) throw new NarrowError(which.width);
    if (which.width > 99) undefinedFunction();
};
try {
    box.resize(0.5, 1);
} catch (e) {
    print(e instanceof NarrowError, e.width);
}
attempt("in the host", function () { box.resize(100, 1); });

// A script may use the classes of the table, too.
try {
    throw new IOError("disk full");
} catch (e) {
    print(e instanceof IOError, e instanceof Error, String(e));
}

// Things of the host can die while the script still holds their objects.
var first = new Document("first");
first.append("some text");
print(first.name, first.length, first.line(0));
attempt("missing line", function () { first.line(1); });
first.close();
attempt("read", function () { return first.name; });
attempt("write", function () { first.name = "new"; });
attempt("call", function () { first.append("more"); });
attempt("ask", function () { return "name" in first; });
attempt("list", function () { for (var name in first) print(name); });
attempt("delete", function () { delete first.name; });
attempt("convert", function () { return first + ""; });

// The desk has room for two; opening one more closes the oldest.
var second = new Document("second"), third = new Document("third"), fourth = new Document("fourth");
attempt("second", function () { return second.name; });
attempt("third", function () { return third.name; });
print(fourth.name, fourth.append("a"), fourth.append("b"));
