#!/usr/bin/env python3
"""Make a 32 x 32 cursor file from a drawing in letters.

    make_cursor.py DRAWING OUT.cur LEFT TOP HOT_X HOT_Y

In the drawing '#' is black, 'o' is white and '.' is transparent; LEFT and TOP say where its top
left corner lies in the cursor.
"""

import struct
import sys

SIZE = 32


def main(drawing, out, left, top, hot_x, hot_y):
    grid = [["."] * SIZE for _ in range(SIZE)]
    with open(drawing) as lines:
        for y, line in enumerate(lines.read().split()):
            for x, letter in enumerate(line):
                grid[top + y][left + x] = letter

    def plane(letter):
        rows = [int("".join("01"[cell == letter] for cell in row), 2) for row in reversed(grid)]
        return struct.pack(f">{SIZE}I", *rows)

    header = struct.pack("<IiiHHIIiiII", 40, SIZE, 2 * SIZE, 1, 1, 0, 2 * SIZE * 4, 0, 0, 2, 2)
    palette = bytes([0, 0, 0, 0, 255, 255, 255, 0])
    image = header + palette + plane("o") + plane(".")
    directory = struct.pack("<HHH", 0, 2, 1)
    entry = struct.pack("<BBBBHHII", SIZE, SIZE, 2, 0, hot_x, hot_y, len(image), 6 + 16)
    with open(out, "wb") as file:
        file.write(directory + entry + image)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2], *map(int, sys.argv[3:7]))
