// Puts boxes onto shelves and draws them, as seen from the front.
//
//   krhost shelves.js [shelf width] < shelves.in
//
// Each line of the input is a title, a width and a height, separated by commas; "#" begins a remark.
// Boxes and settings are objects of the host: `box.width`, `box.contains(point)` and so on are calls
// into the library, and a box with an impossible size is refused by the host, not by this script.

var settings = new Settings();
settings.decimals = 1;
settings.shelfWidth = arguments.length > 0 ? Number(arguments[0]) : 24; // a new property
settings.gap = 1;

function readBoxes() {
    var boxes = [], lineNumber = 0, line;
    while ((line = readln()) !== null) {
        lineNumber++;
        line = line.replace(/#.*/, "").trim();
        if (line === "") continue;
        try {
            boxes.push(readBox(line.split(",")));
        } catch (e) {
            if (!(e instanceof RangeError || e instanceof TypeError)) throw e;
            print("line " + lineNumber + " left out: " + e.message);
        }
    }
    return boxes;
}

function readBox(fields) {
    if (fields.length !== 3) throw new TypeError("title, width and height expected");
    var box = new Box(Number(fields[1]), Number(fields[2]));
    box.title(fields[0].trim());
    if (box.width > settings.shelfWidth) {
        // The function stays in the host's property and is called from `resize`.
        var before = box.width;
        box.onResize = function (resized) {
            print(resized.title + " is cut from " + before + " to " + resized.width);
        };
        box.resize(settings.shelfWidth, box.height);
    }
    return box;
}

/// Tall boxes first, each as far left as it goes; a new shelf when one is full.
function arrange(boxes) {
    var x = 0, y = 0, shelfHeight = 0, shelves = 1;
    boxes.sort(function (a, b) { return b.height - a.height || b - a || (String(a) < String(b) ? -1 : 1); });
    boxes.forEach(function (box) {
        if (x + box.width > settings.shelfWidth) {
            y += shelfHeight + settings.gap;
            x = shelfHeight = 0;
            shelves++;
        }
        box.position = {x: x, y: y + (shelfHeight === 0 ? 0 : shelfHeight - box.height)};
        shelfHeight = Math.max(shelfHeight, box.height);
        x += box.width;
    });
    return shelves;
}

/// One letter for each unit of a box that covers its middle.
function draw(boxes) {
    var whole = boxes.reduce(function (sum, box) { return sum["+"](box); });
    for (var y = 0; y < whole.bounds.bottom; y++) {
        var line = "";
        for (var x = 0; x < settings.shelfWidth; x++) {
            var middle = {x: x + 0.5, y: y + 0.5}, sign = " ";
            boxes.forEach(function (box) { if (box.contains(middle)) sign = box.tags.letter; });
            line += sign;
        }
        print("|" + line + "|");
    }
    return whole;
}

var boxes = readBoxes();
if (boxes.length === 0) throw new IOError("no boxes");
var shelves = arrange(boxes);
boxes.forEach(function (box, i) { box.tags = {letter: String.fromCharCode(65 + i % 26)}; });

var whole = draw(boxes), used = 0;
boxes.forEach(function (box) {
    used += box.area;
    print(box.tags.letter + "  " + String(box) + " at " + box.position.x + "," + box.position.y);
});
print(boxes.length + " boxes on " + shelves + " shelves, " +
      (100 * used / whole.area).toFixed(settings.decimals) + "% of " + String(whole) + " used");
