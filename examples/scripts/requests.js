// Reads the log of a web farm: levels, hosts, the slowest requests, and the errors with what was
// written below them.
//
//   krhost requests.js [how many slow ones] < requests.in

var entry = new KrRegExp("^([-\\d]+)T([\\d:]+)\\.\\d+ (info|warn|error)\\s+\\[(\\w+)\\] (.*)$", "i"),
    request = new KrRegExp("^(GET|POST|PUT|DELETE) (\\S+) (\\d{3}) (\\d+)ms(?: from ([\\d.]+))?"),
    setting = new KrRegExp("(\\w+)=\"([^\"]*)\"", "g"),
    indented = new KrRegExp("^\\s+(?=\\S)"),
    address = new KrRegExp("(\\d+\\.\\d+)\\.\\d+\\.\\d+", "g");

var levels = {}, hosts = {}, slow = [], errors = [], users = {}, unread = 0, last = null, line;

function count(counts, name) {
    counts[name] = (counts[name] || 0) + 1;
}

function pad(value, width) {
    value = String(value);
    while (value.length < Math.abs(width)) value = width < 0 ? value + " " : " " + value;
    return value;
}

function readEntry(match) {
    last = {time: match[2], level: match[3].toUpperCase(), host: match[4], text: match[5], more: []};
    count(levels, last.level);
    count(hosts, last.host);
    if (last.level === "ERROR") errors.push(last);
    var asked = request.exec(last.text);
    if (!asked) return;
    slow.push({entry: last, what: asked[1] + " " + asked[2], status: asked[3], ms: Number(asked[4])});
    // Settings stand behind the request; what a visitor asks for may only look like one.
    for (var found, rest = last.text.slice(asked.captures[0].end); (found = setting.exec(rest)) !== null;) {
        if (found[1] === "user") count(users, found[2]);
    }
}

while ((line = readln()) !== null) {
    var match = entry.exec(line);
    if (match) readEntry(match);
    else if (last && indented.test(line)) last.more.push(indented.replace(line, ""));
    else if (line !== "") unread++;
}

function printCounts(title, counts) {
    print(title);
    Object.keys(counts).sort().forEach(function (name) {
        print("  " + pad(name, -10) + pad(counts[name], 4) + "  " + new Array(counts[name] + 1).join("*"));
    });
}

printCounts("levels:", levels);
printCounts("hosts:", hosts);
printCounts("users:", users);

slow.sort(function (a, b) { return b.ms - a.ms; });
print("slowest requests:");
slow.slice(0, arguments.length ? Number(arguments[0]) : 3).forEach(function (r) {
    print(pad(r.ms, 7) + " ms  " + r.entry.host + "  " + r.status + "  " + decodeURIComponent(r.what));
});

print("errors:");
errors.forEach(function (e) {
    // The addresses of visitors do not belong into reports, and settings read better in words.
    var text = setting.replace(address.replace(e.text, "$1.x.x"), function (all, name, value) {
        return name + " " + value;
    });
    print("  " + e.time + "  " + e.host + "  " + text);
    e.more.forEach(function (below) { print("            " + below); });
});
if (unread > 0) print(unread + " line" + (unread === 1 ? "" : "s") + " of another kind");
