// Values on their way into the library and back.

var box = new Box(1, 1);

function roundTrip(value) {
    box.tags = value;
    return box.tags;
}

// Texts are UTF-16, unit by unit: also zeros, and halves of surrogate pairs.
["", "plain", "gr\u00f6\u00dfer \u20ac", "a\u0000b", "\ud83d\ude00", "\ud83d", "\ude00\ud83d", "\uffff"]
    .forEach(function (text) {
        var back = roundTrip(text), units = [];
        for (var i = 0; i < back.length; i++) units.push(back.charCodeAt(i).toString(16));
        print(back === text, back.length, units.join(" "));
    });
print(roundTrip(new Array(1001).join("\u20ac\ud83d\ude00")).length);

// Numbers, and what is nothing.
[0, -0, 1 / 3, 1e21, NaN, -Infinity, true, null, undefined].forEach(function (value) {
    var back = roundTrip(value);
    print(typeof back, String(back), 1 / back === 1 / value);
});

// Arrays keep their holes; only what has a value is there.
var array = roundTrip([1, , [2, , "three"], {x: 1, y: 2}]);
print(array.length, 1 in array, 1 in array[2], JSON.stringify(array));
var sparse = [];
sparse[100000] = "far";
print(roundTrip(sparse).length, roundTrip(sparse)[100000], Object.keys(roundTrip(sparse)).length);

// A point has x and y and nothing else, a rectangle its four edges; other objects are only kept.
var point = {x: 1, y: 2}, more = {x: 1, y: 2, z: 3}, moment = new Date(0);
print(roundTrip(point) === point, JSON.stringify(roundTrip(point)));
print(roundTrip(more) === more, roundTrip(moment) === moment, roundTrip(print) === print);
print(JSON.stringify(roundTrip({left: 1, top: 2, right: 3, bottom: 4})));

// Text can be in names, too.
var settings = new Settings();
settings["gr\u00f6\u00dfe \u0000 \ud83d"] = 1;
settings[7] = "seven";
settings[""] = "no name";
print(settings["gr\u00f6\u00dfe \u0000 \ud83d"], settings["7"], Object.keys(settings).length);
