"""Polygons from files, and which points lie within."""

import json
import math
import re

from points import numpy, wrong

_ADVICE = "It has to hold WKT such as POLYGON((0 0, 9 0, 9 9)), GeoJSON, or lines of x and y."
#: Strips from south to north: a point is compared only with the edges in its strip.
_STRIPS = 512


def read_polygons(file_name):
    """The polygons of a file. Each is a list of rings of (x, y); a further ring is a hole."""
    with open(file_name, encoding="utf-8-sig", errors="replace") as file:
        text = file.read().strip()
    try:
        if text.startswith("{"):
            polygons = list(_of_geojson(json.loads(text)))
        elif text[:1].isalpha() and "(" in text:
            polygons = _of_wkt(text)
        else:
            polygons = [[_of_lines(text)]]
    except (ValueError, LookupError, TypeError, AttributeError, RecursionError) as error:
        raise wrong(f'"{file_name}" can\'t be read: {error}.', _ADVICE) from None
    rings = [ring for polygon in polygons for ring in polygon]
    if not rings or min(map(len, rings)) < 3:
        raise wrong(f'"{file_name}" holds no polygon with three corners.', _ADVICE)
    if not all(math.isfinite(number) for ring in rings for corner in ring for number in corner):
        raise wrong(f'"{file_name}" has corners that lie nowhere.', _ADVICE)
    return polygons


def _of_geojson(value):
    """RFC 7946: a geometry, a feature, or a collection of them."""
    kind = value["type"]
    if kind == "FeatureCollection":
        for feature in value["features"]:
            yield from _of_geojson(feature)
    elif kind == "GeometryCollection":
        for geometry in value["geometries"]:
            yield from _of_geojson(geometry)
    elif kind == "Feature":
        yield from _of_geojson(
            value["geometry"] or {"type": "GeometryCollection", "geometries": []}
        )
    elif kind in ("Polygon", "MultiPolygon"):
        coordinates = value["coordinates"]
        for rings in [coordinates] if kind == "Polygon" else coordinates:
            yield [[(float(corner[0]), float(corner[1])) for corner in ring] for ring in rings]
    else:
        raise ValueError(f"{kind} is no polygon")


def _of_wkt(text):
    """POLYGON or MULTIPOLYGON, with Z and M or without (OGC 06-103r4)."""
    text = re.sub(r"(?i)^SRID=\d+;", "", text)
    kind = re.match(r"(?i)(MULTI)?POLYGON\s*[ZM]{0,2}\s*(?=\()", text)
    if kind is None:
        raise ValueError("POLYGON or MULTIPOLYGON is expected")
    # Parentheses as brackets, and corners as texts: then it is JSON.
    body = re.sub(
        r"[^(),]+", lambda found: json.dumps(found[0].strip()), text[kind.end() :].strip()
    )
    body = body.replace('""', "").replace("(", "[").replace(")", "]")
    nested = json.loads(body)
    return [
        [[tuple(map(float, corner.split()[:2])) for corner in ring] for ring in rings]
        for rings in (nested if kind[1] else [nested])
    ]


def _of_lines(text):
    corners = []
    for number, line in enumerate(line for line in text.splitlines() if line.strip()):
        try:
            x, y = (float(cell) for cell in re.split(r"[,;\s]+", line.strip())[:2])
        except ValueError:
            if number == 0:
                continue  # titles
            raise
        corners.append((x, y))
    return corners


class Polygons:
    """Tells which points lie within, by counting the edges east of them: an odd number is within
    (see "Point in polygon" in J. O'Rourke, Computational Geometry in C). Of points on edges, those
    of western and southern ones are within, so that neighbours share no point."""

    def __init__(self, polygons):
        corners = [corner for polygon in polygons for ring in polygon for corner in ring]
        self.least = [min(corner[i] for corner in corners) for i in range(2)]
        self.greatest = [max(corner[i] for corner in corners) for i in range(2)]
        self._height = (self.greatest[1] - self.least[1]) / _STRIPS or 1.0
        self._polygons = [self._strips(polygon) for polygon in polygons]

    def _strips(self, rings):
        """For each strip the edges in it: (south, north, x of an end, x per y, y of that end)."""
        strips = [[] for _ in range(_STRIPS)]
        for ring in rings:
            for (x, y), (u, v) in zip(ring, ring[1:] + ring[:1]):
                if y == v:
                    continue
                edge = (min(y, v), max(y, v), x, (u - x) / (v - y), y)
                for strip in range(self._strip(edge[0]), self._strip(edge[1]) + 1):
                    strips[strip].append(edge)
        return strips

    def _strip(self, y):
        return min(max(int((y - self.least[1]) / self._height), 0), _STRIPS - 1)

    def hold(self, xs, ys):
        """For each point, whether it lies within one of the polygons."""
        if numpy is None:
            return [self._holds(x, y) for x, y in zip(xs, ys)]
        result = numpy.zeros(len(xs), dtype=bool)
        strips = ((ys - self.least[1]) / self._height).astype(numpy.int64)
        strips = numpy.clip(strips, 0, _STRIPS - 1)
        order = numpy.argsort(strips, kind="stable")
        ends = numpy.searchsorted(strips[order], numpy.arange(_STRIPS + 1))
        for strip in numpy.flatnonzero(numpy.diff(ends)).tolist():
            points = order[ends[strip] : ends[strip + 1]]
            x, y = xs[points], ys[points]
            for polygon in self._polygons:
                is_within = numpy.zeros(len(points), dtype=bool)
                for south, north, begin, run, base in polygon[strip]:
                    is_within ^= (south <= y) & (y < north) & (x < begin + (y - base) * run)
                result[points] |= is_within
        return result

    def _holds(self, x, y):
        strip = self._strip(y)
        for polygon in self._polygons:
            is_within = False
            for south, north, begin, run, base in polygon[strip]:
                if south <= y < north and x < begin + (y - base) * run:
                    is_within = not is_within
            if is_within:
                return True
        return False
