"""Statistics of an attribute in square cells, as a picture, a table and a CSV file."""

from grid import Grid, Statistics
from picture import legend, picture_of
from points import (
    batches,
    coordinates,
    definition,
    extent,
    ground_filter,
    single,
    whole_file,
    with_values,
)


def run(db, parameters, report):
    x, y, _ = coordinates(db)
    value = single(db, parameters["attribute"])
    names = list(dict.fromkeys([x, y, value]))  # the value may be one of the coordinates
    filter = ground_filter(db, parameters["filter"], report)
    filter = with_values(db, filter, names)

    bounds = extent(db, filter, [x, y], report, (0.0, 0.3))
    if bounds is None:
        report.text("No points pass the filter: there is nothing to show.")
        return
    grid = Grid(*bounds, parameters["cell"])
    statistics = Statistics(grid.size)
    for columns in batches(db, filter, names, report, "Reading points", (0.3, 0.9)):
        column = dict(zip(names, columns))
        statistics.add(grid.cells(column[x], column[y]), column[value])

    cells = statistics.occupied()
    shown = [_STATISTICS[parameters["statistic"]](statistics, cell) for cell in cells]
    summary = _summary(grid, statistics, cells, shown, parameters)
    report.table(["Figure", "Value"], summary, "Grid")
    unit = "" if parameters["statistic"] == "count" else definition(db, value).unit
    title = f"{parameters['statistic'].capitalize()} of {value}" + (f" in {unit}" if unit else "")
    report.progress(0.92, "Painting")
    report.picture(picture_of(grid, cells, shown), legend(title, shown))
    if parameters["file"]:
        _write(parameters["file"], db, grid, statistics, cells, report)


#: How a statistic of a cell is had.
_STATISTICS = {
    "count": lambda statistics, cell: float(statistics.count[cell]),
    "minimum": lambda statistics, cell: float(statistics.least[cell]),
    "mean": lambda statistics, cell: float(statistics.total[cell] / statistics.count[cell]),
    "maximum": lambda statistics, cell: float(statistics.greatest[cell]),
    "range": lambda statistics, cell: float(statistics.greatest[cell] - statistics.least[cell]),
}


def _summary(grid, statistics, cells, shown, parameters):
    name = parameters["statistic"]
    return [
        ("Points", int(sum(statistics.count[cell] for cell in cells))),
        ("Columns", grid.columns),
        ("Rows", grid.rows),
        ("Cells with points", len(cells)),
        ("Cells without", grid.size - len(cells)),
        ("West edge", float(grid.west)),
        ("South edge", float(grid.south)),
        (f"Smallest {name} of a cell", min(shown)),
        (f"Mean {name} of cells", sum(shown) / len(shown)),
        (f"Largest {name} of a cell", max(shown)),
    ]


def _write(name, db, grid, statistics, cells, report):
    with whole_file(name, db) as file:
        file.write(f"x,y,{','.join(_STATISTICS)}\n".encode())
        for done, cell in enumerate(cells):
            numbers = [*grid.centre(cell), *(of(statistics, cell) for of in _STATISTICS.values())]
            file.write((",".join(f"{number:.15g}" for number in numbers) + "\n").encode())
            if done % 10_000 == 0:
                report.progress(0.95 + 0.05 * done / len(cells), "Writing the file")
    report.file(name, "Cells")
