"use strict";
// Run with --strict: a name that a live object does not know is an error, inherited ones are not.

var box = new Box(1, 1);

function describe(action) {
    try {
        return String(action());
    } catch (e) {
        return e.name + " " + e.number + ": " + e.message;
    }
}

print(describe(function () { return box.colour; }));
print(describe(function () { return "colour" in box; }));
print(describe(function () { return typeof box.hasOwnProperty; }));
print(describe(function () { return new Settings().colour; }));
print(describe(function () { delete box.width; }).split(":")[0]);
print(arguments.length, JSON.stringify(arguments));
