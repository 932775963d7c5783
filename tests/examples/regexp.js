// KrRegExp, its matches, and expressions on their way between scripts and library. Prints what is
// wrong, and at last the number of checks.

var checks = 0;

function check(what, condition) {
    checks++;
    if (!condition) print("WRONG: " + what);
}

function same(what, actual, expected) {
    check(what + ": " + JSON.stringify(actual), JSON.stringify(actual) === JSON.stringify(expected));
}

function failure(action) {
    try {
        action();
    } catch (e) {
        return e.number || String(e);
    }
    return 0;
}

// Making them.
var plain = new KrRegExp("a(b)?"), all = new KrRegExp("B", "mgi");
check("properties", all.source === "B" && all.flags === "gim" && all.global && all.ignoreCase && all.multiline &&
      !plain.global && !plain.ignoreCase && !plain.multiline && plain.flags === "" && all.lastIndex === 0);
check("texts", String(all) === "/B/gim" && String(new KrRegExp()) === "/(?:)/" && new KrRegExp().exec("a")[0] === "");
check("copies", String(new KrRegExp(all)) === "/B/gim" && String(new KrRegExp(all, "i")) === "/B/i" &&
      String(new KrRegExp(all, "")) === "/B/");
check("class", plain instanceof KrRegExp && Object.keys(plain).join() === "source,flags,global,ignoreCase,multiline,lastIndex");
check("read-only", ["source", "flags", "global", "ignoreCase", "multiline"].every(function (name) {
    return failure(function () { plain[name] = 1; }) === 46;
}));
[["(a", "", "/(a/ does not compile"], ["a", "gx", "/a/ has flags"], ["b", "gg", "/b/ has flags"], ["a**", "", "/a**/"],
    [new Array(1000).join("("), "", "...(((((((((.../ "]].forEach(function (row) {
    try {
        new KrRegExp(row[0], row[1]);
        check("refused: " + row[0], false);
    } catch (e) {
        check(e.message, e instanceof SyntaxError && e.number === 8 && e.message.length < 180 &&
              e.message.indexOf(row[2].replace(/^\.\.\./, "")) >= 0);
    }
});
check("no patterns", [5, null, undefined, /a/, {}].every(function (value) {
    return failure(function () { new KrRegExp(value); }) === 47;
}));

// One match.
var match = new KrRegExp("(\\d+)(x)?-(\\d*)").exec("at 12-7");
same("texts of a match", [match[0], match[1], match[2], match[3], match.length], ["12-7", "12", undefined, "7", 4]);
check("unset group", match[2] === undefined && !(2 in match) && match.captures[2] === undefined);
same("places", match.captures.map(function (c) { return [c.start, c.end]; }), [[3, 7], [3, 5], null, [6, 7]]);
check("of a match", match.index === 3 && match.input === "at 12-7" && String(match) === "12-7,12,,7");
check("fixed", failure(function () { match[0] = "x"; }) === 46 && failure(function () { match.index = 1; }) === 46 &&
      failure(function () { match.captures[0].start = 1; }) === 46 && Array.prototype.slice.call(match, 1)[2] === "7");
check("none", plain.exec("xyz") === null && plain.test("xyz") === false && plain.match("xyz") === null);
check("start", plain.exec("ab a", 1).index === 3 && plain.test("a", 1) === false && plain.test("a", 9) === false &&
      plain.test("a", undefined));
check("wrong starts", failure(function () { plain.test("a", -1); }) === 41 && failure(function () { plain.exec("a", NaN); }) === 47 &&
      failure(function () { plain.test("a", {}); }) === 47 && failure(function () { all.lastIndex = -1; }) === 41);
check("missing text", ["test", "exec", "match", "replace", "split"].every(function (name) {
    return failure(function () { plain[name](); }) === 20;
}) && failure(function () { plain.replace("a"); }) === 20);
check("other texts", new KrRegExp("^\\d+$").test(42) && new KrRegExp("\ud834.").test("\ud834\u0000"));
check("methods of others", failure(function () { plain.test.call(new Box(1, 1), "a"); }) === 26 && plain.test.call(all, "b"));

// From match to match.
function walk(expression, text) {
    var found = [];
    for (var m; (m = expression.exec(text)) !== null;) found.push(m[0] + "@" + m.index);
    return found.join();
}
all.lastIndex = 0;
check("walk", walk(all, "bxBb") === "b@0,B@2,b@3" && all.lastIndex === 0);
check("empty ones", walk(new KrRegExp("x*", "g"), "axb") === "@0,x@1,@2" && walk(new KrRegExp("", "g"), "") === "@0" &&
      walk(new KrRegExp("$", "g"), "ab") === "@2");
check("last index", all.test("ab") && all.lastIndex === 2 && all.test("bb", 1) && all.lastIndex === 2 && !all.test("ab") &&
      all.lastIndex === 0 && plain.test("ab") && plain.lastIndex === 0);
same("all", new KrRegExp("\\w", "g").match("a-b"), ["a", "b"]);
check("first", plain.match("xab").captures[1].end === 3);

// Replacing: expression, flags, text, replacement, result.
[["b", "", "abab", "-", "a-ab"], ["b", "g", "abab", "-", "a-a-"], ["x", "g", "abab", "-", "abab"],
    ["(a)(b)?", "g", "aba", "<$2$1>", "<ba><a>"], ["b", "", "abc", "[$`|$&|$'|$$]", "a[a|b|c|$]c"],
    ["b", "", "abc", "$1$0$x$", "a$1$0$x$c"], ["(b)", "", "abc", "$1$10$01$2$00", "abb0b$2$00c"],
    ["(a)(a)(a)(a)(a)(a)(a)(a)(a)(b)", "", "aaaaaaaaab", "$10$11$100", "ba1b0"], ["", "g", "ab", "-", "-a-b"],
    ["x*", "g", "axb", "-", "-a--b"], ["a", "", "a", 5, "5"], ["a", "", "a", undefined, "undefined"], ["", "", "", "$&x", "x"]
].forEach(function (row) {
    same(row.join(), new KrRegExp(row[0], row[1]).replace(row[2], row[3]), row[4]);
});
var seen = [];
check("function", new KrRegExp("(a)|(b)", "g").replace("xab", function () {
    seen.push([].slice.call(arguments));
    return "$1";
}) === "x$1$1");
same("its arguments", seen, [["a", "a", undefined, 1, "xab"], ["b", undefined, "b", 2, "xab"]]);
var thrown = {};
try {
    all.replace("b", function () { throw thrown; });
} catch (e) {
    check("thrown value", e === thrown);
    thrown = null;
}
check("thrown", thrown === null);
check("nested", new KrRegExp("a.", "g").replace("abac", function (m) {
    gc();
    return new KrRegExp("a").replace(m, "<$'>");
}) === "<b>b<c>c" &&
      failure(function () { all.replace("abc", new Box(2, 3).contains); }) === 47);

// Long texts, of which the host remembers the last.
var list = new List(1), long = new Array(1001).join("ab"), other = new Array(1001).join("cb");
check("by turns", [long, other, long, long + "b", other].every(function (text) {
    var found = all.exec(text);
    all.lastIndex = 0;
    return found.input === text && all.match(text).length === (text.length === 2001 ? 1001 : 1000);
}));
check("within each other", new KrRegExp("a(?=b)", "g").replace(long, function (m, index, text) {
    return text === long && plain.exec(other) === null && list.add(long + index) ? "c" : "?";
}) === other && list[list.length - 1] === long + "1998");
list[0] = long;
gc();
check("changed", list[0] + "x" === long + "x" && new Document(other).name === other && list[0] === long);

// Splitting: expression, text, limit, parts.
[[",", "a,b,,c", undefined, ["a", "b", "", "c"]], [",", "a", undefined, ["a"]], [",", ",", undefined, ["", ""]],
    ["", "abc", undefined, ["a", "b", "c"]], ["x*", "axxb", undefined, ["a", "b"]], [",", "", undefined, [""]],
    ["", "", undefined, []], ["(-)|,", "a-b,c", undefined, ["a", "-", "b", null, "c"]], [",", "a,b,c", 2, ["a", "b"]],
    [",", "a,b", 0, []], ["$", "ab", undefined, ["ab"]]].forEach(function (row) {
    same("split " + row, new KrRegExp(row[0]).split(row[1], row[2]), row[3]);
});

// As values of the host.
list = new List(all, [plain]);
var settings = new Settings();
settings.pattern = plain;
check("a copy", list[0] !== all && String(list[0]) === "/B/gim" && list[0] instanceof KrRegExp && list[0].test("b"));
check("in an array", list[1][0].exec("ab")[1] === "b" && list.add(list[0], all) === 4);
check("in a property", String(settings.pattern) === "/a(b)?/" && settings.pattern.lastIndex === 0);
check("to a function", all.replace("b", function () { return list[0]; }) === "B");
var box = new Box(1, 1);
box.tags = [new KrRegExp("x", "g"), undefined];
check("kept", box.tags[0].replace("axx", "") === "a");
check("the language's own", (box.tags = /x/) && box.tags instanceof RegExp);

// Nothing is left behind.
function use(count) {
    for (var i = 0; i < count; i++) {
        box.tags = new KrRegExp("(a)" + i % 7, "g");
        box.tags.exec("xa" + i % 7).captures.length;
        failure(function () { new KrRegExp("("); });
    }
}
use(10);
gc();
var before = heapStats();
use(1000);
gc();
check("blocks", heapStats().libraryBlocks === before.libraryBlocks && heapStats().liveObjects === before.liveObjects);

print(checks + " checks");
