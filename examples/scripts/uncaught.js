// Nobody catches this error: it is printed with file and line, and the exit status is 1.

function shrink(box) {
    box.resize(box.width - 1, box.height - 1); // line 4
    shrink(box);
}

shrink(new Box(3, 2));
