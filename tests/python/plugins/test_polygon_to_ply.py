import json
import math
import os
import struct
import unittest

from support import PluginTest, qrb, rows_of

NAMES = ["tarvo.xyz[0]", "tarvo.xyz[1]", "tarvo.xyz[2]"]
FORMATS = {
    "uchar": "B",
    "char": "b",
    "ushort": "H",
    "short": "h",
    "uint": "I",
    "int": "i",
    "float": "f",
    "double": "d",
}


def is_within(x, y, rings):
    """Whether a point lies within rings, by the sum of the angles that it sees; None on edges."""
    total = 0.0
    for ring in rings:
        angle = 0.0
        for (a, b), (c, d) in zip(ring, ring[1:] + ring[:1]):
            p, q, r, s = a - x, b - y, c - x, d - y
            length = math.hypot(c - a, d - b)
            if length and abs(p * s - q * r) / length < 1e-6 and p * r + q * s <= 0:
                return None
            angle += math.atan2(p * s - q * r, p * r + q * s)
        total += abs(round(angle / (2 * math.pi)))
    return total % 2 == 1


class PolygonToPly(PluginTest):
    plugin = "polygon-to-ply"

    def polygon(self, text):
        name = self.folder / "polygon"
        name.write_text(text)
        return str(name)

    def export(self, db, polygon, **parameters):
        """Types by the names of properties, and the points."""
        name = self.folder / "out.ply"
        self.report = self.run_plugin(
            db, polygon=self.polygon(polygon), file=str(name), **parameters
        )
        header, _, body = name.read_bytes().partition(b"end_header\n")
        lines = header.decode("ascii").splitlines()
        self.assertEqual(lines[:2], ["ply", "format binary_little_endian 1.0"])
        (count,) = [int(line.split()[2]) for line in lines if line.startswith("element vertex")]
        properties = [line.split()[1:] for line in lines if line.startswith("property")]
        record = struct.Struct("<" + "".join(FORMATS[kind] for kind, _ in properties))
        self.assertEqual(len(body), count * record.size)
        self.assertIn(f"{count:,} points", self.report.texts)
        return {name: kind for kind, name in properties}, list(record.iter_unpack(body))

    def assertPoints(self, found, points, polygons):
        """Each point once, with those that lie within one of the polygons, but for edges."""
        told = [
            any(w is not False for w in [is_within(p[0], p[1], rings) for rings in polygons])
            for p in points
        ]
        surely = [
            any(w is True for w in [is_within(p[0], p[1], rings) for rings in polygons])
            for p in points
        ]
        possible = {p for p, is_in in zip(points, told) if is_in}
        certain = {p for p, is_in in zip(points, surely) if is_in}
        self.assertEqual(len(found), len(set(found)))
        self.assertLessEqual(certain, set(found))
        self.assertLessEqual(set(found), possible)
        self.assertLess(len(possible - certain), 20)

    def test_finds_points_within_stars_with_holes_in_all_notations(self):
        points = list(
            {
                (
                    self.random.randrange(-30_000, 30_000) / 1000,
                    self.random.randrange(-30_000, 30_000) / 1000,
                    float(i),
                )
                for i in range(4000)
            }
        )
        db = self.make(points)

        def star(x, y, size, corners=9):
            return [
                (
                    round(
                        x + size * self.random.uniform(0.3, 1) * math.cos(math.tau * i / corners), 3
                    ),
                    round(
                        y + size * self.random.uniform(0.3, 1) * math.sin(math.tau * i / corners), 3
                    ),
                )
                for i in range(corners)
            ]

        first = [star(-8, -5, 20), star(-8, -5, 5)]
        second = [star(20, 20, 9, 4)]
        places = rows_of(db, NAMES)
        closed = [[ring + ring[:1] for ring in polygon] for polygon in (first, second)]
        wkt = [
            "("
            + ", ".join("(" + ",".join(f"{x} {y}" for x, y in ring) + ")" for ring in polygon)
            + ")"
            for polygon in closed
        ]
        geometry = {"type": "MultiPolygon", "coordinates": closed}
        feature = {"type": "Feature", "properties": {}, "geometry": geometry}
        texts = [
            (f"POLYGON {wkt[0]}", [first]),
            (f"SRID=4711;multipolygon({wkt[0]} , {wkt[1]})\n", [first, second]),
            (json.dumps(geometry), [first, second]),
            (json.dumps({"type": "FeatureCollection", "features": [feature]}), [first, second]),
            (json.dumps({"type": "Polygon", "coordinates": closed[0]}), [first]),
            ("x;y\n" + "\n".join(f"{x};{y}" for x, y in second[0]), [second]),
            ("\n".join(f"{x}, {y}" for x, y in closed[0][0]), [first[:1]]),
        ]
        for text, polygons in texts:
            kinds, found = self.export(db, text, attributes=[])
            self.assertEqual(kinds, {"x": "double", "y": "double", "z": "double"})
            self.assertPoints(found, places, polygons)

    def test_writes_a_real_cloud_with_natural_types(self):
        db = self.real("autzen_trim.las")
        ring = [(636300.0, 848950.0), (637000.0, 849100.0), (636600.0, 849480.0)]
        text = "POLYGON Z((" + ",".join(f"{x} {y} 0" for x, y in ring) + "))"
        wishes = [
            "tarvo.class",
            "tarvo.intensity",
            "tarvo.rgba",
            "tarvo.scan_angle",
            "tarvo.timestamp",
            "tarvo.id",
        ]
        kinds, found = self.export(db, text, attributes=wishes, filter="tarvo.target_index == 1")
        expected = dict(
            x="double", y="double", z="double", intensity="ushort", red="uchar", alpha="uchar"
        )
        expected.update(
            {"class": "ushort", "scan_angle": "float", "timestamp": "double", "id": "double"}
        )
        self.assertEqual({**kinds, **expected}, kinds)
        names = NAMES + [
            "tarvo.class",
            "tarvo.intensity",
            *(f"tarvo.rgba[{i}]" for i in range(4)),
            "tarvo.scan_angle",
            "tarvo.timestamp",
            "tarvo.id",
        ]
        points = rows_of(db, names, "tarvo.target_index == 1")
        place = names.index("tarvo.scan_angle")
        single = struct.Struct("f")
        points = [
            (*p[:place], *single.unpack(single.pack(p[place])), *p[place + 1 :]) for p in points
        ]
        self.assertPoints(found, points, [[ring]])

    def test_shares_no_point_between_neighbours_and_loses_none(self):
        points = [(float(x), float(y), 0.0) for x in range(-5, 6) for y in range(-5, 6)]
        db = self.make(points)
        squares = [
            [(x, y), (x + 5, y), (x + 5, y + 5), (x, y + 5)] for x in (-5, 0) for y in (-5, 0)
        ]
        seen = []
        for ring in squares:
            seen += self.export(db, "\n".join(f"{x} {y}" for x, y in ring), attributes=[])[1]
        self.assertEqual(len(seen), len(set(seen)))
        self.assertEqual(set(seen), {p for p in points if p[0] < 5 and p[1] < 5})

    def test_gives_properties_names_that_programs_can_read(self):
        attributes = [qrb.Attribute(name, 0, 2**40) for name in ("a_b", "a.b", "tarvo.x")]
        db = self.make([(1, 1, 1)], attributes=attributes)
        square = "0 0\n2 0\n2 2\n0 2"
        kinds, found = self.export(
            db, square, attributes=["a_b", "a.b", "a_b", "tarvo.x", "tarvo.xyz"]
        )
        self.assertEqual(list(kinds), ["x", "y", "z", "a_b", "a_b_2", "x_2"])
        self.assertEqual(len(found), 1)
        self.assertRefused(
            "Choose one of", db, polygon=self.polygon(square), file="x", attributes=["no"]
        )
        self.assertRefused(
            "1 values", db, polygon=self.polygon(square), file="x", attributes=["a_b[1]"]
        )

    def test_refuses_what_is_no_polygon(self):
        db = self.make([(1, 1, 1)])
        out = str(self.folder / "out.ply")
        for text in (
            "",
            "0 0\n1 1",
            "POINT(1 2)",
            "POLYGON((0 0, 1",
            '{"type": "Point", "coordinates": [1, 2]}',
            "POLYGON EMPTY",
            "{",
            "[1",
            "x y\n1 2\na b\n",
            '{"type": "Polygon"}',
            "0 0\n1 0\n1 nan",
            "POLYGON((0 0,1 0,x y))",
        ):
            self.assertRefused("polygon|read|lie nowhere", db, polygon=self.polygon(text), file=out)
        self.assertFalse(os.path.exists(out))

    def test_writes_no_points_and_leaves_nothing_where_it_is_cancelled(self):
        square = "-99 -99\n99 -99\n99 99\n-99 99"
        self.assertEqual(self.export(self.make([]), square, attributes=[])[1], [])
        db = self.make([(i % 50, i // 50, 0) for i in range(2500)])
        self.assertCancelLeaves(
            db,
            self.folder,
            fractions=(0.0, 0.5),
            polygon=self.polygon(square),
            file=str(self.folder / "new.ply"),
            attributes=[],
        )
        self.assertRefused(
            "is a database", db, polygon=self.polygon(square), file=db.path, attributes=[]
        )


if __name__ == "__main__":
    unittest.main()
