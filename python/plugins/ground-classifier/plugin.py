"""Finds the ground with the simple morphological filter and writes it as class 2.

T. J. Pingel, K. C. Clarke, W. A. McBride: An improved simple morphological filter for the terrain
classification of airborne LIDAR data. ISPRS Journal of Photogrammetry and Remote Sensing 77 (2013),
21-30. In short: the lowest points of cells make a surface; windows that grow cut objects off it
which rise above what the slope explains; what lies close to the rest is ground.

Other than there, windows are squares instead of discs, and empty cells get means of their
surroundings instead of the solution of an equation of springs: both are much faster.
"""

import math

import qrb
from grid import CELL_LIMIT, Grid, Statistics
from morphology import closed, emptied, filled, opened, slopes, surface_of
from points import batches, coordinates, extent, numpy, tell_unit, with_values

CLASS = "tarvo.class"
GROUND_CLASS = 2
#: A pit of one cell, deeper than five times its width, is a measuring error (the paper's 500 %).
PIT_SLOPE = 5
#: How much further from the surface points may lie on slopes, per rise over run (the paper's 1.25).
SLOPE_SCALE = 1.25


def run(db, parameters, report):
    tell_unit(db, report)
    names = coordinates(db)
    filter = with_values(db, parameters["filter"], names)
    bounds = extent(db, filter, names[:2], report, (0.0, 0.1))
    if bounds is None:
        report.text("No points pass the filter: nothing is changed.")
        return
    grid = Grid(*bounds, parameters["cell"], CELL_LIMIT if numpy else CELL_LIMIT // 4)
    ground = _ground_surface(_lowest(db, filter, names, grid, report), grid, parameters, report)
    if CLASS not in db.attributes:
        report.transaction.attributes.add(CLASS)
    counts = _classify(db, filter, names, _Terrain(ground, grid, parameters), parameters, report)
    report.table(["Points", "Number"], counts.items(), "Ground")


def _lowest(db, filter, names, grid, report):
    """The lowest height in each cell."""
    statistics = Statistics(grid.size)
    for xs, ys, zs in batches(
        db, filter, names, report, "Looking for the lowest points", (0.1, 0.3)
    ):
        statistics.add(grid.cells(xs, ys), zs)
    return surface_of(statistics.least, grid.columns)


def _ground_surface(lowest, grid, parameters, report):
    """The surface of the ground alone."""
    # Points below the ground: what is far below the surface without narrow pits.
    lowest = filled(lowest)
    pits = emptied(closed(lowest, 1), lowest, PIT_SLOPE * grid.cell)
    lowest = filled(_where_known(lowest, pits))
    # Objects: windows of growing radius cut them off.
    ground = surface = lowest
    radii = math.ceil(parameters["window"] / grid.cell)
    radii = min(radii, max(grid.columns, grid.rows))
    for radius in range(1, radii + 1):
        report.progress(0.3 + 0.3 * radius / radii, f"Window {radius} of {radii}")
        narrow = opened(surface, radius)
        is_left = emptied(surface, narrow, parameters["slope"] * radius * grid.cell)
        ground = _where_known(ground, is_left)
        surface = narrow
    return filled(ground)


def _where_known(surface, other):
    """The surface, empty where the other one is."""
    if numpy is not None:
        return numpy.where(numpy.isinf(other), math.inf, surface)
    return [
        [math.inf if b == math.inf else a for a, b in zip(row, others)]
        for row, others in zip(surface, other)
    ]


class _Terrain:
    """The surface, and how far from it the ground may be."""

    def __init__(self, surface, grid, parameters):
        self._grid = grid
        self._surface = surface
        self._slopes = slopes(surface, grid.cell)
        self._threshold = parameters["threshold"]

    def is_ground(self, xs, ys, zs):
        """For each point, whether it is ground."""
        if numpy is None:
            return [self._holds(x, y, z) for x, y, z in zip(xs, ys, zs)]
        columns, easts = self._places(xs, self._grid.west, self._grid.columns)
        rows, norths = self._places(ys, self._grid.south, self._grid.rows)
        next_columns = numpy.minimum(columns + 1, self._grid.columns - 1)
        next_rows = numpy.minimum(rows + 1, self._grid.rows - 1)
        south = self._between(rows, columns, next_columns, easts)
        north = self._between(next_rows, columns, next_columns, easts)
        cells = self._grid.cells(xs, ys)
        allowed = self._threshold + SLOPE_SCALE * self._slopes.ravel()[cells]
        return abs(zs - (south + (north - south) * norths)) <= allowed

    def _places(self, coordinates, begin, count):
        """The cells whose centres are before points, and how far from there to the next."""
        places = numpy.clip((coordinates - begin) / self._grid.cell - 0.5, 0, count - 1)
        cells = places.astype(numpy.int64)
        return cells, places - cells

    def _between(self, rows, columns, next_columns, parts):
        west, east = self._surface[rows, columns], self._surface[rows, next_columns]
        return west + (east - west) * parts

    def _holds(self, x, y, z):
        """The same for one point, bilinear between the centres of four cells."""
        grid = self._grid
        east, north = (x - grid.west) / grid.cell, (y - grid.south) / grid.cell
        allowed = self._threshold + SLOPE_SCALE * self._slopes[int(north)][int(east)]
        east = min(max(east - 0.5, 0.0), grid.columns - 1)
        north = min(max(north - 0.5, 0.0), grid.rows - 1)
        i, j = int(north), int(east)
        k = min(j + 1, grid.columns - 1)
        south, above = self._surface[i], self._surface[min(i + 1, grid.rows - 1)]
        low = south[j] + (south[k] - south[j]) * (east - j)
        high = above[j] + (above[k] - above[j]) * (east - j)
        return abs(z - (low + (high - low) * (north - i))) <= allowed


def _classify(db, filter, names, terrain, parameters, report):
    """Writes what differs, batch by batch: memory does not grow with the points."""
    point_id = db.attributes.point_id
    counts = {"considered": 0, "ground": 0, "new ground": 0, "ground no more": 0}
    types = {name: qrb.DataType.DOUBLE for name in names}
    with db.select(filter, [*names, CLASS, point_id], types=types) as selection:
        for batch in selection:
            is_ground = terrain.is_ground(*(batch[name] for name in names))
            ids, classes = batch[point_id], batch[CLASS]
            added, dropped = _differences(ids, classes, is_ground)
            for changed, value in ((added, GROUND_CLASS), (dropped, parameters["other"])):
                if len(changed) > 0:
                    report.transaction.update({CLASS: value}, ids=changed)
            counts["considered"] += batch.count
            counts["ground"] += int(sum(is_ground)) if numpy is None else int(is_ground.sum())
            counts["new ground"] += len(added)
            counts["ground no more"] += len(dropped)
            report.progress(0.6 + 0.4 * selection.progress, "Classifying")
    return counts


def _differences(ids, classes, is_ground):
    """The ids of points that become ground, and of those that are not ground any more."""
    if numpy is not None:
        was_ground = classes == GROUND_CLASS
        return ids[is_ground & ~was_ground], ids[was_ground & ~is_ground]
    points = list(zip(ids, classes, is_ground))
    return (
        [id for id, old, ground in points if ground and old != GROUND_CLASS],
        [id for id, old, ground in points if old == GROUND_CLASS and not ground],
    )
