"""Point density on a grid, and where flight lines overlap, how well their heights agree."""

import html
import math

from grid import CELL_LIMIT, Grid, Statistics
from picture import legend, picture_of
from points import (
    batches,
    coordinates,
    definition,
    extent,
    numpy,
    single,
    tell_unit,
    with_values,
    wrong,
)

#: What LAS files bring.
PROPOSED_LINE = "las.point_source_id"
#: More than that are no flight lines.
LINE_LIMIT = 1000


def run(db, parameters, report):
    tell_unit(db, report)
    names = coordinates(db)
    filter = with_values(db, parameters["filter"], names)
    line = parameters["line"]
    if line == PROPOSED_LINE and line not in db.attributes:
        line = ""
        report.text(f"The file has no attribute {PROPOSED_LINE}: flight lines are not told apart.")
    elif line:
        line = single(db, line)

    bounds = extent(db, filter, names[:2], report, (0.0, 0.1))
    if bounds is None:
        report.text("No points pass the filter: there is nothing to show.")
        return
    grid = Grid(*bounds, parameters["cell"], CELL_LIMIT // 2)
    density, lines = _density(db, filter, names, line, grid, report)
    unit = definition(db, names[0]).unit or "unit"
    sections = [_tell_density(grid, density, parameters["limit"], unit, report)]
    if lines:
        means, per_line = _overlap(db, filter, names, line, lines, grid, report)
        sections.append(_tell_overlap(grid, means, per_line, line, unit, report))
    report.html("".join(sections), "Density and overlap")


def _density(db, filter, names, line, grid, report):
    """Statistics of the cells, and the lines that there are."""
    statistics, lines = Statistics(grid.size), set()
    wanted = [*names, line] if line else names
    for xs, ys, zs, *of_line in batches(db, filter, wanted, report, "Counting", (0.1, 0.4)):
        statistics.add(grid.cells(xs, ys), zs)
        for column in of_line:
            lines.update(numpy.unique(column).tolist() if numpy else column)
        if len(lines) > LINE_LIMIT:
            raise wrong(
                f'"{line}" has more than {LINE_LIMIT} different values.',
                "Choose an attribute that tells flight lines apart.",
            )
    if line:
        invalid = definition(db, line).invalid
        lines = {value for value in lines if value == value and value != invalid}
    return statistics, sorted(lines)


def _overlap(db, filter, names, line, lines, grid, report):
    """Statistics of the lines' mean heights in each cell, and points and cells per line.

    One line after another: so one set of cells does for any number of lines."""
    means, per_line = Statistics(grid.size), []
    for done, number in enumerate(lines):
        wish = f"{line} == {number:.17g}"
        wish = f"{filter} && {wish}" if filter else wish
        part = [0.4 + 0.5 * (done + i) / len(lines) for i in range(2)]
        heights = Statistics(grid.size)
        for xs, ys, zs in batches(db, wish, names, report, f"Line {number:.12g}", part):
            heights.add(grid.cells(xs, ys), zs)
        cells = heights.occupied()
        means.add(*_means(heights, cells))
        points = sum(heights.count[cell] for cell in cells)
        per_line.append((f"{number:.12g}", int(points), len(cells)))
    return means, per_line


def _means(heights, cells):
    if numpy is None:
        return cells, [heights.total[cell] / heights.count[cell] for cell in cells]
    cells = numpy.array(cells, dtype=numpy.int64)
    return cells, heights.total[cells] / heights.count[cells]


def _tell_density(grid, statistics, limit, unit, report):
    cells = statistics.occupied()
    area = grid.cell**2
    densities = [float(statistics.count[cell] / area) for cell in cells]
    below = sum(density < limit for density in densities)
    points = int(sum(statistics.count[cell] for cell in cells))
    report.table(
        ["Figure", "Value"],
        [
            ("Points", points),
            ("Cells with points", len(cells)),
            ("Cells without, within the extent", grid.size - len(cells)),
            (f"Cells below {limit:g}", below),
            ("Smallest density", (min(densities), 3)),
            ("Median density", (_quantile(densities, 0.5), 3)),
            ("Mean density", (points / (area * len(cells)), 3)),
            ("Largest density", (max(densities), 3)),
        ],
        "Density",
    )
    per = f"points per {html.escape(unit)}²"
    _paint(grid, cells, densities, f"Points per {unit}²", report)
    return (
        f"<h2>Density</h2><p>{points:,} points in {len(cells):,} cells of {grid.cell:g} "
        f"{html.escape(unit)}: {points / (area * len(cells)):.3f} {per} in the mean.</p>"
        f"<p><b>{below:,} cells ({_per_cent(below, len(cells))}) hold fewer than {limit:g} {per}."
        "</b> Cells without points are not among them: they may be gaps, or lie outside of the "
        f"area that was to be covered ({grid.size - len(cells):,} within the extent).</p>"
    )


def _tell_overlap(grid, means, per_line, line, unit, report):
    covered = means.occupied()
    cells = [cell for cell in covered if means.count[cell] > 1]
    differences = [float(means.greatest[cell] - means.least[cell]) for cell in cells]
    report.table(["Line", "Points", "Cells"], per_line, "Flight lines")
    text = (
        f"<h2>Overlap</h2><p>{len(per_line)} flight lines ({html.escape(line)}). "
        f"<b>{len(cells):,} of {len(covered):,} cells ({_per_cent(len(cells), len(covered))}) hold "
        "points of two lines or more.</b></p>"
    )
    if not cells:
        return text
    rms = math.sqrt(sum(value**2 for value in differences) / len(differences))
    figures = [
        ("Cells", len(cells)),
        ("Mean", (sum(differences) / len(differences), 4)),
        ("RMS", (rms, 4)),
        ("Median", (_quantile(differences, 0.5), 4)),
        ("95 % are at most", (_quantile(differences, 0.95), 4)),
        ("Largest", (max(differences), 4)),
    ]
    report.table(["Height differences", "Value"], figures, "Height differences")
    _paint(grid, cells, differences, f"Height difference in {unit}", report)
    return text + (
        "<p>In each of them the difference between the largest and the smallest mean height of a "
        f"line was taken: {sum(differences) / len(differences):.4f} {html.escape(unit)} in the "
        f"mean, {max(differences):.4f} at most. Slopes, walls and vegetation add to it.</p>"
    )


def _paint(grid, cells, values, title, report):
    most = _quantile(values, 0.98)  # a few cells of large values would leave one colour to the rest
    report.picture(picture_of(grid, cells, values, most), legend(title, values, most))


def _quantile(values, part):
    """The smallest value that so many of the values do not exceed."""
    ordered = sorted(values)
    return ordered[max(0, math.ceil(part * len(ordered)) - 1)]


def _per_cent(part, whole):
    return f"{100 * part / whole:.1f} %" if whole else "none"
