// Run with --trace: the standard error shows the calls that each line makes.

var box = new Box(2, 3);
box.width = box.height + box.height; // the name is looked up once
box.title("Lid").resize(1, 1);
print("size" in box, Object.keys(box).length);
var settings = new Settings();
settings.depth = 7; // unknown to everybody, so it is created
settings.decimals = settings.depth;
delete settings.depth;
new Document("draft").close();
var list = new List("a");
list[1] = list[0];
delete list[0]; // an array leaves that to its listeners, and none is there
