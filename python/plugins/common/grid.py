"""Square cells over an area, and what is known of the points in each.

The build puts this file beside each plugin that imports it.
"""

import math
from array import array

from points import numpy, wrong

#: The most cells of a grid. Statistics of all kinds take 32 bytes a cell.
CELL_LIMIT = 10_000_000


class Grid:
    """Cells in rows from south to north, each row from west to east.

    They begin at multiples of their size: grids of neighbouring files fit together.
    """

    def __init__(self, least, greatest, cell, limit=CELL_LIMIT):
        """least, greatest: x and y of the corners of what is covered."""
        extents = [high - low for low, high in zip(least, greatest)]
        if not all(map(math.isfinite, extents)):
            raise wrong("The area is infinite.", "A filter leaves points out that lie nowhere.")
        if not _count(extents, cell) <= limit:
            raise wrong(
                f"{_count(extents, cell):.3g} cells of {cell:.12g} would be needed, "
                f"{limit} are the most.",
                f"The area is {extents[0]:.12g} by {extents[1]:.12g}: cells of "
                f"{_least_cell(extents, limit):.12g} would do. Where a few points lie far outside, "
                "a filter leaves them out.",
            )
        self.cell = cell
        self.west, self.south = (_begin(low, cell) for low in least[:2])
        self.columns, self.rows = (
            max(0, math.floor((high - low) / cell)) + 1
            for low, high in zip((self.west, self.south), greatest)
        )
        self.size = self.columns * self.rows

    def cells(self, xs, ys):
        """The numbers of the cells that points lie in."""
        west, south, cell, columns = self.west, self.south, self.cell, self.columns
        if numpy is None:
            return [
                int((y - south) / cell) * columns + int((x - west) / cell) for x, y in zip(xs, ys)
            ]
        rows = ((ys - south) / cell).astype(numpy.int64)
        return rows * columns + ((xs - west) / cell).astype(numpy.int64)

    def centre(self, number):
        row, column = divmod(number, self.columns)
        return self.west + (column + 0.5) * self.cell, self.south + (row + 0.5) * self.cell


def _begin(low, cell):
    """The multiple of the cell size before a coordinate; the coordinate where that is no double."""
    number = low / cell
    return min(low, math.floor(number) * cell) if abs(number) < 2**53 else low


def _count(extents, cell):
    return math.prod(extent / cell + 2 for extent in extents[:2])


def _least_cell(extents, limit):
    """A cell size of two digits, the smallest that keeps to the limit."""
    cell = max(math.sqrt(extents[0] / limit) * math.sqrt(extents[1]), max(extents[:2]) / limit)
    while True:
        unit = 10.0 ** (math.floor(math.log10(cell)) - 1)
        cell = float(f"{math.ceil(cell / unit) * unit:.2g}")
        if _count(extents, cell) <= limit:
            return cell
        cell *= 1.01


class Statistics:
    """Number, sum, smallest and largest of the values in each cell, one entry per cell."""

    def __init__(self, size):
        self.count = _filled("q", size, 0)
        self.total = _filled("d", size, 0.0)
        self.least = _filled("d", size, math.inf)
        self.greatest = _filled("d", size, -math.inf)

    def add(self, cells, values):
        if numpy is None:
            self._add_each(cells, values)
            return
        # Values of one cell one after another: a few calls then treat all cells.
        order = numpy.argsort(cells, kind="stable")
        cells, values = cells[order], values[order]
        begins = numpy.flatnonzero(numpy.diff(cells, prepend=-1))
        cells = cells[begins]
        self.count[cells] += numpy.diff(begins, append=len(values))
        self.total[cells] += numpy.add.reduceat(values, begins)
        self.least[cells] = numpy.minimum(self.least[cells], numpy.minimum.reduceat(values, begins))
        self.greatest[cells] = numpy.maximum(
            self.greatest[cells], numpy.maximum.reduceat(values, begins)
        )

    def _add_each(self, cells, values):
        count, total, least, greatest = self.count, self.total, self.least, self.greatest
        for cell, value in zip(cells, values):
            count[cell] += 1
            total[cell] += value
            if value < least[cell]:
                least[cell] = value
            if value > greatest[cell]:
                greatest[cell] = value

    def occupied(self):
        """The numbers of the cells with points."""
        if numpy is None:
            return [cell for cell, count in enumerate(self.count) if count]
        return numpy.flatnonzero(self.count).tolist()


def _filled(format, size, value):
    numbers = array(format, [value]) * size
    # An array of NumPy in the same memory.
    return numbers if numpy is None else numpy.frombuffer(numbers, numbers.typecode)
