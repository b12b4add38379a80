#!/usr/bin/env python3
"""Make the eight 20 x 20 bitmaps of 4 bits of a grid of directions.

    make_arrows.py FOLDER

Writes arrow_1.bmp (top left) to arrow_8.bmp (bottom right) by rows, without a centre: raised light
grey tiles with a black arrow that points outwards. Two drawings are enough; the others are their
turns.
"""

import struct
import sys

SIZE = 20
PALETTE = [(0, 0, 0), (128, 128, 128), (192, 192, 192), (255, 255, 255)]
BLACK, SHADOW, FACE, WHITE = range(4)

UP = """
......##......
.....####.....
....######....
...########...
..##########..
.....####.....
.....####.....
.....####.....
.....####.....
.....####.....
.....####.....
"""

UP_LEFT = """
#########...
########....
#######.....
########....
#########...
##########..
####.######.
###...######
##.....####.
#.......##..
"""


def tile():
    grid = [[FACE] * SIZE for _ in range(SIZE)]
    for inset, light, dark in ((0, WHITE, BLACK), (1, FACE, SHADOW)):
        far = SIZE - 1 - inset
        for i in range(inset, SIZE - inset):
            grid[inset][i] = grid[i][inset] = light
        for i in range(inset, SIZE - inset):
            grid[far][i] = grid[i][far] = dark
    return grid


def arrow(drawing):
    cells = [list(line) for line in drawing.split()]
    square = [["."] * SIZE for _ in range(SIZE)]
    top, left = (SIZE - len(cells)) // 2, (SIZE - len(cells[0])) // 2
    for y, line in enumerate(cells):
        for x, letter in enumerate(line):
            square[top + y][left + x] = letter
    return square


def turned(square):
    """A quarter to the right."""
    return [list(row) for row in zip(*square[::-1])]


def bitmap(square):
    grid = tile()
    for y in range(SIZE):
        for x in range(SIZE):
            if square[y][x] == "#":
                grid[y][x] = BLACK
    stride = (SIZE * 4 + 31) // 32 * 4
    rows = b""
    for row in reversed(grid):
        packed = bytes(row[x] << 4 | row[x + 1] for x in range(0, SIZE, 2))
        rows += packed.ljust(stride, b"\0")
    palette = b"".join(bytes([b, g, r, 0]) for r, g, b in PALETTE)
    palette = palette.ljust(16 * 4, b"\0")
    offset = 14 + 40 + len(palette)
    header = struct.pack("<2sIHHI", b"BM", offset + len(rows), 0, 0, offset)
    header += struct.pack("<IiiHHIIiiII", 40, SIZE, SIZE, 1, 4, 0, len(rows), 0, 0, 16, 16)
    return header + palette + rows


def main(folder):
    ring = [(0, 0), (0, 1), (0, 2), (1, 2), (2, 2), (2, 1), (2, 0), (1, 0)]
    cells = [(row, column) for row in range(3) for column in range(3) if (row, column) != (1, 1)]
    corner, side = arrow(UP_LEFT), arrow(UP)
    for number in range(0, 8, 2):
        for cell, square in ((ring[number], corner), (ring[number + 1], side)):
            with open(f"{folder}/arrow_{cells.index(cell) + 1}.bmp", "wb") as file:
                file.write(bitmap(square))
        corner, side = turned(corner), turned(side)


if __name__ == "__main__":
    main(sys.argv[1])
