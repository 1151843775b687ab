"""Compares the surface of the points with control points.

The 95 % value is 1.96 RMS, as the National Standard for Spatial Data Accuracy has it for heights
(FGDC-STD-007.3-1998, appendix 3-A); it holds for errors without a systematic part that are
distributed normally, as they may be expected on open ground.
"""

import csv
import math

from points import batches, coordinates, ground_filter, with_values, wrong

#: A quotient of the eigenvalues of the points' spread, below which they lie on a line.
LINE_LIMIT = 1e-6


def run(db, parameters, report):
    controls = read_controls(parameters["file"])
    names = coordinates(db)
    filter = with_values(db, ground_filter(db, parameters["filter"], report), names)
    rows, residuals, uncovered = [], [], []
    for done, (name, x, y, z) in enumerate(controls):
        report.progress(done / len(controls), f"Control point {name}")
        near = _near(db, filter, names, x, y, parameters["radius"], report, done / len(controls))
        height = SURFACES[parameters["surface"]](near)
        if height is None:
            remark = "no points within the radius" if not near else "no plane through the points"
            uncovered.append(f"{name} ({remark})")
            rows.append((name, x, y, (z, 4), None, None, len(near), remark))
            continue
        residuals.append(height - z)
        rows.append((name, x, y, (z, 4), (height, 4), (height - z, 4), len(near), ""))
    report.table(
        ["Name", "X", "Y", "Z", "Surface", "Surface - Z", "Points", "Remark"],
        rows,
        "Control points",
    )
    _tell(residuals, uncovered, report)


def read_controls(file_name):
    """Names and coordinates, as (name, x, y, z)."""
    with open(file_name, newline="", encoding="utf-8-sig", errors="replace") as file:
        lines = [line for line in file.read().splitlines() if line.strip()]
    separator = _separator(lines[0]) if lines else ","
    controls = []
    for number, line in enumerate(lines):
        if separator == " ":
            cells = line.split()
        else:
            cells = [cell.strip() for cell in next(csv.reader([line], delimiter=separator))]
        try:
            name, x, y, z = cells[0], *(_number(cell, separator) for cell in cells[1:4])
        except ValueError:
            if number == 0:
                continue  # titles
            raise wrong(
                f'Line {number + 1} of the control points can\'t be read: "{line[:80]}".',
                "Lines hold name, x, y and z, all separated by the same sign.",
            ) from None
        controls.append((name, x, y, z))
    if not controls:
        raise wrong(
            f'There are no control points in "{file_name}".', "Lines hold name, x, y and z."
        )
    return controls


def _separator(line):
    """The sign that a line of four or more cells is separated by."""
    return next((sign for sign in ";\t," if line.count(sign) >= 3), " ")


def _number(cell, separator):
    """A finite number; where commas separate nothing, one may stand before the decimals."""
    number = float(cell if separator == "," else cell.replace(",", "."))
    if not math.isfinite(number):
        raise ValueError
    return number


def _near(db, filter, names, x, y, radius, report, fraction):
    """The points around a place: distances in x, y, and heights. The box lets the index leave most
    of the file unread."""
    box = " && ".join(
        f"{name} >= {centre - radius!r} && {name} <= {centre + radius!r}"
        for name, centre in zip(names, (x, y))
    )
    wish = f"{filter} && {box}" if filter else box
    near = []
    for columns in batches(db, wish, names, report, part=(fraction, fraction)):
        near += [
            (east - x, north - y, height)
            for east, north, height in zip(*(column.tolist() for column in columns))
            if (east - x) ** 2 + (north - y) ** 2 <= radius**2
        ]
    return near


def nearest(near):
    """The height of the nearest point; None where there is none."""
    return min(near, key=lambda point: point[0] ** 2 + point[1] ** 2)[2] if near else None


def by_distance(near):
    """The mean height, weighted by the inverse square of the distance (Shepard 1968)."""
    weights = heights = 0.0
    for east, north, height in near:
        square = east**2 + north**2
        if square == 0:
            return height
        weights += 1 / square
        heights += height / square
    return heights / weights if near else None


def plane(near):
    """The height of the plane with the least squares of height differences; None where the points
    lie on a line, as less than three do."""
    if not near:
        return None
    # About the centre of the points the equations are well conditioned.
    count = len(near)
    east, north, height = (sum(column) / count for column in zip(*near))
    ee = en = nn = eh = nh = 0.0
    for x, y, z in near:
        ee += (x - east) ** 2
        en += (x - east) * (y - north)
        nn += (y - north) ** 2
        eh += (x - east) * (z - height)
        nh += (y - north) * (z - height)
    determinant = ee * nn - en**2
    if determinant <= LINE_LIMIT * (ee + nn) ** 2:
        return None
    slope_east = (eh * nn - nh * en) / determinant
    slope_north = (nh * ee - eh * en) / determinant
    return height - slope_east * east - slope_north * north


SURFACES = {"nearest": nearest, "distance": by_distance, "plane": plane}


def _tell(residuals, uncovered, report):
    count = len(residuals)
    lines = [f"{count} of {count + len(uncovered)} control points are covered."]
    if uncovered:
        lines += ["", "Not covered:", *uncovered]
    if residuals:
        mean = sum(residuals) / count
        rms = math.sqrt(sum(value**2 for value in residuals) / count)
        spread = sum((value - mean) ** 2 for value in residuals)
        figures = [
            ("Control points used", count),
            ("Mean", (mean, 4)),
            ("Standard deviation", (math.sqrt(spread / (count - 1)), 4) if count > 1 else None),
            ("RMS", (rms, 4)),
            ("95 % value (1.96 RMS)", (1.96 * rms, 4)),
            ("Smallest", (min(residuals), 4)),
            ("Largest", (max(residuals), 4)),
        ]
        report.table(["Surface - Z", "Value"], figures, "Accuracy")
        lines += [
            "",
            f"RMS {rms:.4f}, 95 % value {1.96 * rms:.4f}, in the unit of the coordinates.",
        ]
        if count < 20:
            lines += ["The standard of the 95 % value asks for 20 control points at least."]
    report.text("\n".join(lines), "Summary")
