// Makes 100,000 objects of the host and drops them. Memory comes back to where it was.

function inUse() {
    gc();
    var stats = heapStats();
    return [stats.liveObjects, stats.libraryBlocks, stats.libraryBytes, stats.scriptBytes];
}

function work(count) {
    var sum = 0;
    for (var i = 0; i < count; i++) {
        var box = new Box(i % 100, 2);
        box.title("box " + i).tags = [i, "tag", {x: i, y: i}];
        box.onResize = function () { sum++; };
        box.resize(3, 4);
        box.onResize = null;
        try {
            box.area = 1;
        } catch (e) {
            sum += e.number;
        }
    }
    return sum;
}

work(10); // what is made once and stays: names, functions, tables
var before = inUse();
print("sum", work(100000));
var after = inUse();

["live objects", "library blocks", "library bytes"].forEach(function (what, i) {
    print(what + ": " + (after[i] === before[i] ? "as before" : before[i] + " became " + after[i]));
});
print("script bytes: " + (Math.abs(after[3] - before[3]) < 2000 ? "as before" : "more than before"));

// References count: an object goes when its last user does, without waiting for a collection.
var box = new Box(1, 1), keeper = new Box(2, 2);
var held = heapStats().liveObjects;
keeper.tags = [box];
box = null;
print("in the host's hands:", held - heapStats().liveObjects, keeper.tags[0].area);
keeper = null;
print("and gone:", held - heapStats().liveObjects);
