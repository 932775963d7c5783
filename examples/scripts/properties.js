// What the properties of a host object can be, and how a script meets them.

var box = new Box(4, 3);

// Read/write and read-only properties, and what can be said about them.
box.width = box.height * 2;
print("size", box.width, box.height, "area", box.area);
print("width" in box, "colour" in box, box.colour, box.hasOwnProperty("area"));

// Points and rectangles are values: what comes is a copy.
var bounds = box.bounds;
bounds.left = -100;
box.position = {x: 1, y: 1};
print(JSON.stringify(box.bounds), box.contains({x: 2, y: 2}), box.contains({x: 0, y: 0}));

// A property that can also be called: calling sets it and gives the box, for chains.
print(box.title("Hat box").resize(5, 5) === box, box.title + "!", box.title.length, String(box));

// The same object is the same in the script, wherever it has been in the meantime.
var other = new Box(2, 10);
box.tags = [other, , {note: "the script's own"}];
print(box.tags[0] === other, 1 in box.tags, box.tags.length, box.tags[2] === box.tags[2]);
print(box.resize === box.resize, box instanceof Box, box.constructor === Box);

// An operator goes by its name; numbers and texts are made as for any object.
print(String(box["+"](other)), box > other, box + 1, String(box));

// Methods can be kept. They remember their object, and take another one of the class.
var resize = box.resize;
resize(1, 1);
resize.call(other, 9, 9);
print(box.area, other.area);

// A function kept by the host is called by the host, and comes back as itself.
var log = [], grow = function (which) { log.push(which === box, which.width); };
box.onResize = grow;
box.resize(3, 3);
box.onResize = null;
box.resize(4, 4);
print(log.join(), grow === box.onResize);

// The hidden property is there for those who know of it. Listing leaves it and the methods out.
print("serial" in box, typeof box.serial);
var names = [];
for (var name in box) names.push(name);
print(names.join(" "));
print(JSON.stringify(other));

// A dynamic object takes any property; a listener of the host's knows some more.
var settings = new Settings();
settings.colour = "red";
settings.currency = "CHF";
print(settings.currency, settings.language, settings.colour, settings.taste);
print(Object.keys(settings).join(" "));
settings.restore();
print(settings.currency, delete settings.colour, "colour" in settings, delete box.width);
