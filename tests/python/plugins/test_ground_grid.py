import base64
import csv
import struct
import unittest
import zlib
from collections import defaultdict

from support import PluginTest, qrb, rows_of

CLASS = "tarvo.class"
NAMES = ["tarvo.xyz[0]", "tarvo.xyz[1]", "tarvo.xyz[2]"]


def pixels(message):
    """Width, height and the numbers in the palette of a picture, line by line from the north."""
    png = base64.b64decode(message["png"])
    place, data = 8, b""
    while place < len(png):
        length, kind = struct.unpack_from(">I4s", png, place)
        body = png[place + 8 : place + 8 + length]
        (checksum,) = struct.unpack_from(">I", png, place + 8 + length)
        assert checksum == zlib.crc32(kind + body)
        if kind == b"IHDR":
            width, height, bits, colour = struct.unpack_from(">IIBB", body)
            assert (bits, colour) == (8, 3)
        data += body if kind == b"IDAT" else b""
        place += 12 + length
    lines = zlib.decompress(data)
    assert len(lines) == height * (width + 1)
    return [lines[i * (width + 1) + 1 : (i + 1) * (width + 1)] for i in range(height)]


class GroundGrid(PluginTest):
    plugin = "ground-grid"

    def cells(self, db, **parameters):
        """The cells that the plugin writes: statistics by the centre."""
        name = self.folder / "cells.csv"
        self.report = self.run_plugin(db, file=str(name), **parameters)
        with open(name, newline="") as file:
            rows = [
                {key: float(value) for key, value in row.items()} for row in csv.DictReader(file)
            ]
        return {(row.pop("x"), row.pop("y")): row for row in rows}

    def assertCells(self, cells, points, cell):
        """Compares with the plainest computation: points are (x, y, value)."""
        expected = defaultdict(list)
        for x, y, value in points:
            expected[((x // cell + 0.5) * cell, (y // cell + 0.5) * cell)].append(value)
        self.assertEqual(set(cells), set(expected))
        for place, values in expected.items():
            found = cells[place]
            self.assertEqual(found["count"], len(values))
            self.assertEqual((found["minimum"], found["maximum"]), (min(values), max(values)))
            self.assertAlmostEqual(found["mean"], sum(values) / len(values), 9)
            self.assertAlmostEqual(found["range"], max(values) - min(values), 9)

    def test_puts_points_on_both_sides_of_zero_into_their_cells(self):
        points = [
            tuple(self.random.randrange(-40_000, 40_000) / 1000 for _ in range(3))
            for _ in range(3000)
        ]
        db = self.make(points, attributes=[CLASS], **{CLASS: [2] * 1500 + [5] * 1500})
        # A power of two: quotients are exact, here and there.
        self.assertCells(self.cells(db, cell=4), rows_of(db, NAMES, "tarvo.class == 2"), 4)
        self.assertCells(self.cells(db, cell=8, filter=""), rows_of(db, NAMES), 8)
        self.assertEqual(self.report.figures()["Points"], "3000")

    def test_reads_a_real_cloud_as_a_plain_loop_does(self):
        db = self.real("autzen_trim.las")
        self.assertCells(self.cells(db, cell=16), rows_of(db, NAMES, "tarvo.class == 2"), 16)
        places = NAMES[:2] + ["tarvo.intensity"]
        cells = self.cells(db, cell=16, attribute="tarvo.intensity", filter="")
        self.assertCells(cells, rows_of(db, places), 16)

    def test_paints_north_up_and_leaves_empty_cells_clear(self):
        db = self.make([(0.5, 0.5, 10), (1.5, 0.5, 20), (0.5, 2.5, 30)])
        report = self.run_plugin(db, cell=1)
        lines = pixels(report.of("picture")[0])
        factor = len(lines) // 3
        corners = [
            [lines[factor * row][factor * column] for column in range(2)] for row in range(3)
        ]
        self.assertEqual(corners, [[255, 0], [0, 0], [1, 128]])
        self.assertIn("10 (dark blue) to 30 (yellow)", report.of("picture")[0]["title"])
        self.assertIn("no attribute tarvo.class", report.texts)

    def test_passes_over_points_without_a_value(self):
        value = qrb.Attribute("value", -1, 1000, resolution=0.1, invalid=-0.3)
        loose = qrb.Attribute("loose", -1e9, 1e9, resolution=0)
        points = [(i, 0, 0) for i in range(4)]
        nan = float("nan")
        db = self.make(
            points, attributes=[value, loose], value=[1, -0.3, 3, -0.3], loose=[nan, 2.5, nan, nan]
        )
        means = {
            x: cell["mean"] for (x, _), cell in self.cells(db, cell=1, attribute="value").items()
        }
        self.assertEqual(means, {0.5: 1, 2.5: 3})
        self.assertEqual(len(self.cells(db, cell=1, attribute="loose")), 1)

    def test_one_point_one_cell_and_no_point(self):
        one = self.cells(self.make([(-7.5, -7.5, -1)]), cell=10)
        self.assertEqual(
            one, {(-5.0, -5.0): {"count": 1, "minimum": -1, "mean": -1, "maximum": -1, "range": 0}}
        )
        far = self.make([(22720.229, 22720.229, 4)] * 2)
        self.assertEqual([cell["count"] for cell in self.cells(far, cell=7e-14).values()], [2])
        self.assertIn("No points", self.run_plugin(self.make([])).texts)
        self.assertIn("No points", self.run_plugin(self.make([(1, 2, 3)]), filter="0").texts)

    def test_names_a_cell_size_that_does_where_the_area_is_huge(self):
        wide = qrb.Attribute("tarvo.xyz", -1e9, 1e9, resolution=1, length=3)
        for points in ([(-1e9, -1e9, 0), (1e9, 1e9, 0)], [(0, 0, 0), (1e9, 0, 0)]):
            db = self.make(points, primary=wide)
            error = self.assertRefused("cells of .* would do", db, cell=1)
            size = float(error.details.split("cells of ")[1].split(" would")[0])
            self.assertEqual(len(self.cells(db, cell=size)), 2)

    def test_tells_what_to_do_where_an_attribute_is_missing_or_has_several_values(self):
        db = self.make([(0, 0, 0)], attributes=["tarvo.rgba"])
        self.assertRefused("Choose one of: tarvo.xyz", db, attribute="tarvo.reflectance")
        self.assertRefused(r"tarvo\.rgba\[0\]", db, attribute="tarvo.rgba")
        self.assertEqual(len(self.cells(db, cell=1, attribute="tarvo.rgba[3]")), 1)
        self.assertRefused("4 values", db, attribute="tarvo.rgba[4]")
        self.assertRefused("no position", self.make([1.0], primary=qrb.Attribute("t", 0, 9)))

    def test_leaves_the_old_file_where_it_is_cancelled_and_takes_no_database(self):
        db = self.make([(i % 50, i // 50, 0) for i in range(2500)])
        name = self.folder / "old.csv"
        name.write_text("old")
        self.assertCancelLeaves(db, self.folder, cell=1, file=str(name))
        self.assertEqual(name.read_text(), "old")
        self.assertRefused("is a database", db, file=db.path)
        self.assertTrue(qrb.is_database(db.path))


if __name__ == "__main__":
    unittest.main()
