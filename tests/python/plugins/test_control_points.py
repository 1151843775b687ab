import math
import unittest
from statistics import mean, stdev

from support import Cancelled, PluginTest, rows_of

NAMES = ["tarvo.xyz[0]", "tarvo.xyz[1]", "tarvo.xyz[2]"]


class ControlPoints(PluginTest):
    plugin = "control-points"

    def controls(self, text):
        name = self.folder / "controls.csv"
        name.write_bytes(text.encode())
        return str(name)

    def compare(self, db, controls, **parameters):
        """Rows by the names of control points."""
        text = "".join(f"{name},{x!r},{y!r},{z!r}\n" for name, x, y, z in controls)
        self.report = self.run_plugin(db, file=self.controls(text), **parameters)
        return {row[0]: row[1:] for row in self.report.rows()}

    def test_finds_the_plane_that_the_points_were_made_of(self):
        points = []
        for _ in range(4000):
            x, y = (self.random.randrange(-50_000, 50_000) / 1000 for _ in range(2))
            points.append((x, y, round(100 + 0.1 * x - 0.2 * y, 3)))
        db = self.make(points)
        lifts = [0.05 * i for i in range(-3, 5)]
        controls = []
        for i, lift in enumerate(lifts):
            x, y = self.random.uniform(-40, 40), self.random.uniform(-40, 40)
            controls.append((f"c{i}", x, y, 100 + 0.1 * x - 0.2 * y - lift))
        rows = self.compare(db, controls, radius=4, surface="plane")
        for i, lift in enumerate(lifts):
            self.assertAlmostEqual(float(rows[f"c{i}"][4]), lift, delta=0.0006)
        figures = self.report.figures(1)
        rms = math.sqrt(mean(lift**2 for lift in lifts))
        for key, expected in (
            ("Mean", mean(lifts)),
            ("Standard deviation", stdev(lifts)),
            ("RMS", rms),
            ("95 % value (1.96 RMS)", 1.96 * rms),
            ("Largest", max(lifts)),
        ):
            self.assertAlmostEqual(float(figures[key]), expected, delta=0.0012, msg=key)

    def test_looks_at_every_point_around_on_a_real_cloud(self):
        db = self.real("autzen_trim.las")
        points = rows_of(db, NAMES, "tarvo.class == 2")
        chosen = self.random.sample(points, 10)
        controls = [(str(i), x + 1.3, y - 0.7, z - 0.5) for i, (x, y, z) in enumerate(chosen)]
        radius = 20
        for surface in ("nearest", "distance"):
            rows = self.compare(db, controls, radius=radius, surface=surface)
            for name, x, y, z in controls:
                near = [(math.hypot(a - x, b - y), c) for a, b, c in points]
                near = [(distance, c) for distance, c in near if distance <= radius]
                if surface == "nearest":
                    least = min(near)[0]
                    allowed = [c for distance, c in near if distance - least < 1e-9]
                else:
                    weights = [distance**-2 for distance, _ in near]
                    allowed = [sum(w * c for w, (_, c) in zip(weights, near)) / sum(weights)]
                found = float(rows[name][3])
                self.assertTrue(any(abs(found - height) < 0.0001 for height in allowed), name)
                self.assertEqual(int(rows[name][5]), len(near))

    def test_reads_the_forms_that_such_files_have(self):
        db = self.make([(-1, -2, 3), (5, 6, 7)])
        texts = [
            "name,x,y,z\nA,-1,-2,2.5\nB b,5,6,7\n",
            "\ufeffA;-1;-2;2,5\r\nB b;5;6;7\r\n",
            "Punkt\tOst\tNord\tHoehe\nA\t-1\t-2\t2.5\n\nB b\t5\t6\t7",
            '"A",-1,-2,2.5,note\n"B b",5,6,7,\n',
        ]
        for text in texts:
            report = self.run_plugin(db, file=self.controls(text), surface="nearest")
            shown = [(row[0], row[5]) for row in report.rows()]
            self.assertEqual(shown, [("A", "0.5000"), ("B b", "0.0000")], text)
        report = self.run_plugin(db, file=self.controls("A -1 -2 2.5\nB  5 6 7"), surface="nearest")
        self.assertEqual([row[5] for row in report.rows()], ["0.5000", "0.0000"])
        for text in ("", "name,x,y,z\n", "A,1,2,3\nB,1,2\n", "A,1,2,3\nB,1,2,nan\n"):
            self.assertRefused("name, x, y and z", db, file=self.controls(text))

    def test_names_points_without_coverage_and_uses_them_for_nothing(self):
        line = [(i / 10, 0, 1) for i in range(20)]
        db = self.make([*line, (50, 50, 5), (50.5, 50.5, 5), (50, 50.5, 5)])
        controls = [("out", 90, 90, 0), ("line", 1, 0, 0), ("in", 50.2, 50.3, 4)]
        rows = self.compare(db, controls)
        self.assertEqual(
            [rows[name][6] for name in ("out", "line", "in")],
            ["no points within the radius", "no plane through the points", ""],
        )
        self.assertEqual(self.report.figures(1)["Control points used"], "1")
        self.assertEqual(self.report.figures(1)["Standard deviation"], "")
        self.assertIn("out (no points within the radius)", self.report.texts)
        # The place of a point itself, and one at the rim of the radius.
        rows = self.compare(db, [("on", 50, 50, 4)], surface="distance", radius=0.5)
        self.assertEqual((rows["on"][3], rows["on"][5]), ("5.0000", "2"))

    def test_takes_no_points_and_says_so(self):
        rows = self.compare(self.make([]), [("a", 0, 0, 0)])
        self.assertEqual(rows["a"][4], "")
        self.assertIn("0 of 1", self.report.texts)

    def test_can_be_cancelled(self):
        db = self.make([(0, 0, 0)])
        with self.assertRaises(Cancelled):
            self.run_plugin(db, cancel_at=0.5, file=self.controls("a,0,0,0\nb,0,0,0\nc,0,0,0"))


if __name__ == "__main__":
    unittest.main()
