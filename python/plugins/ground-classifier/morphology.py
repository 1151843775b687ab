"""Surfaces over a grid: a height per cell, by rows. They are arrays of NumPy, or lists of lists.

An empty cell has an infinite height.
"""

import math

from points import numpy

INF = math.inf


def surface_of(heights, columns):
    """The surface of heights that stand row after row."""
    if numpy is not None:
        return numpy.array(heights).reshape(-1, columns)
    return [list(heights[i : i + columns]) for i in range(0, len(heights), columns)]


def opened(surface, radius):
    """The largest of the smallest heights in square windows of 2 radius + 1 cells: what is too
    narrow for a window is cut down to what is around it."""
    return _filtered(_filtered(surface, radius, "least"), radius, "greatest")


def closed(surface, radius):
    """The same from below: narrow pits are filled up."""
    return _filtered(_filtered(surface, radius, "greatest"), radius, "least")


def emptied(surface, other, limit):
    """The surface without the cells that are higher than the other one by more than the limit."""
    if numpy is not None:
        return numpy.where(surface - other > limit, INF, surface)
    return [
        [INF if a - b > limit else a for a, b in zip(row, others)]
        for row, others in zip(surface, other)
    ]


def filled(surface):
    """The surface with the means of surrounding heights in empty cells: the cells are put together,
    two by two, until none is empty."""
    if not _has_gaps(surface):
        return surface
    coarse = filled(_halved(surface))
    if numpy is not None:
        parents = coarse.repeat(2, 0).repeat(2, 1)[: surface.shape[0], : surface.shape[1]]
        return numpy.where(numpy.isinf(surface), parents, surface)
    return [
        [coarse[i // 2][j // 2] if height == INF else height for j, height in enumerate(row)]
        for i, row in enumerate(surface)
    ]


def slopes(surface, cell):
    """Rise over run in each cell."""
    if numpy is not None:
        wide = numpy.pad(surface, 1, "edge")
        east = wide[1:-1, 2:] - wide[1:-1, :-2]
        north = wide[2:, 1:-1] - wide[:-2, 1:-1]
        return numpy.hypot(east, north) / (2 * cell)
    result = []
    for i, row in enumerate(surface):
        south, north = surface[max(0, i - 1)], surface[min(len(surface) - 1, i + 1)]
        east, west = row[1:] + row[-1:], row[:1] + row[:-1]
        result.append(
            [math.hypot(b - a, d - c) / (2 * cell) for a, b, c, d in zip(west, east, south, north)]
        )
    return result


def _has_gaps(surface):
    if numpy is not None:
        return bool(numpy.isinf(surface).any())
    return any(INF in row for row in surface)


def _halved(surface):
    """Two by two cells as one: the mean of those that are not empty."""
    if numpy is not None:
        rows, columns = surface.shape
        even = numpy.pad(surface, ((0, rows % 2), (0, columns % 2)), constant_values=INF)
        blocks = even.reshape(even.shape[0] // 2, 2, -1, 2)
        known = numpy.isfinite(blocks)
        counts = known.sum(axis=(1, 3))
        totals = numpy.where(known, blocks, 0.0).sum(axis=(1, 3))
        return numpy.where(counts > 0, totals / numpy.maximum(counts, 1), INF)
    coarse = []
    for i in range(0, len(surface), 2):
        row = []
        for j in range(0, len(surface[0]), 2):
            block = [height for line in surface[i : i + 2] for height in line[j : j + 2]]
            known = [height for height in block if height != INF]
            row.append(sum(known) / len(known) if known else INF)
        coarse.append(row)
    return coarse


def _filtered(surface, radius, which):
    """The smallest or largest height in square windows: over columns, then over rows."""
    for _ in range(2):
        surface = _transposed(_slid(surface, radius, which))
    return surface


def _slid(surface, radius, which):
    """The smallest or largest of radius rows to each side. Runs of 1, 2, 4, ... rows are had from
    two of half the length, and a window from two runs that overlap: few steps for wide windows."""
    edge = INF if which == "least" else -INF
    if numpy is not None:
        choose = numpy.minimum if which == "least" else numpy.maximum
        runs = numpy.pad(surface, ((radius, radius), (0, 0)), constant_values=edge)
    else:
        of = min if which == "least" else max

        def choose(above, below):
            return [list(map(of, *rows)) for rows in zip(above, below)]

        outside = [[edge] * len(surface[0])] * radius
        runs = outside + surface + outside
    width, length = 2 * radius + 1, 1
    while 2 * length <= width:
        runs = choose(runs[:-length], runs[length:])
        length *= 2
    count, rest = len(surface), width - length
    return choose(runs[:count], runs[rest : rest + count])


def _transposed(surface):
    return surface.T if numpy is not None else list(map(list, zip(*surface)))
