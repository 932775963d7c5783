// Counts the words of a text. Plain JavaScript: it runs wherever there are print and readln.
//
//   krhost words.js [how many] < words.in

var counts = Object.create(null), total = 0, line;

while ((line = readln()) !== null) {
    (line.toLowerCase().match(/[a-z\u00df-\u024f']+/g) || []).forEach(function (word) {
        counts[word] = (counts[word] || 0) + 1;
        total++;
    });
}

function pad(text, width) {
    text = String(text);
    while (text.length < width) text = " " + text;
    return text;
}

var words = Object.keys(counts).sort(function (a, b) {
    return counts[b] - counts[a] || (a < b ? -1 : 1);
});
words.slice(0, arguments.length ? Number(arguments[0]) : 10).forEach(function (word) {
    print(pad(counts[word], 5) + "  " + pad((100 * counts[word] / total).toFixed(1), 5) + "%  " + word);
});
print(pad(total, 5) + "  words, " + words.length + " of them different");
