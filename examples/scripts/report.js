// Reports the orders in an XML text: reading a tree, changing a copy of it, and telling where a
// text that is no XML goes wrong.
//
//   krhost report.js < report.in

var text = "", line;
while ((line = readln()) !== null) text += line + "\n";

var orders = new XML(text, true);

function pad(value, width) {
    value = String(value);
    while (value.length < Math.abs(width)) value = width < 0 ? value + " " : " " + value;
    return value;
}

function money(cents) {
    return (cents / 100).toFixed(2);
}

function isElement(node) {
    return node.getType() === "element";
}

function each(list, action) {
    for (var i in list) action(list[i]);
}

// A comment before the document element makes it one of a list.
if (!isElement(orders)) {
    var document = orders;
    each(document, function (node) {
        if (isElement(node)) orders = node;
    });
}

var sold = {}, sum = 0;
each(orders.order, function (order) {
    var cents = 0;
    each(order.item, function (item) {
        var price = item["@count"] * item.price;
        sold[item.sort] = (sold[item.sort] || 0) + Number(item["@count"]);
        cents += price;
    });
    sum += cents;
    print(pad(order["@number"], 4) + "  " + pad(order.customer, -16) + pad(order.item.length, 3) +
          " items" + pad(money(cents), 10) + ("note" in order ? "  (" + order.note + ")" : ""));
});
print(pad("total", 31) + pad(money(sum), 10) + " " + orders["@currency"]);

print("\nsold:");
Object.keys(sold).sort().forEach(function (sort) {
    print("  " + pad(sort, -14) + pad(sold[sort], 3));
});

// The copy goes to the next office: only open orders, without prices, and with a mark.
var open = orders.copy();
for (var i = open.order.length - 1; i >= 0; i--) {
    if (open.order[i]["@state"] != "open") delete open.order[i];
}
each(open.order, function (order) {
    delete order.item.price;
    delete order.note;
    order["@due"] = "today";
});
print("\nstill to send:");
print(open.toXMLString(2));

// What is wrong with a text is told with its line.
try {
    XML.parse(open.toXMLString(2).replace("</customer>", "</costumer>"));
} catch (e) {
    print("\na slip of the pen: " + e.message);
}
