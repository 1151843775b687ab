import unittest
from collections import defaultdict
from statistics import mean, median

from support import PluginTest, qrb, rows_of

LINE = "las.point_source_id"
NAMES = ["tarvo.xyz[0]", "tarvo.xyz[1]", "tarvo.xyz[2]"]


class DensityOverlap(PluginTest):
    plugin = "density-overlap"

    def lines(self, **options):
        return qrb.Attribute(LINE, 0, 65535, **options)

    def table(self, report, title):
        (found,) = [message for message in report.of("table") if message["title"] == title]
        return {row[0]: row[1] for row in found["rows"]}

    def assertReport(self, report, points, cell, limit):
        """Compares with the plainest computation: points are (x, y, z, line or None)."""
        cells = defaultdict(lambda: defaultdict(list))
        for x, y, z, line in points:
            cells[(x // cell, y // cell)][line].append(z)
        densities = [sum(map(len, lines.values())) / cell**2 for lines in cells.values()]
        found = self.table(report, "Density")
        self.assertEqual(int(found["Points"]), len(points))
        self.assertEqual(int(found["Cells with points"]), len(cells))
        self.assertEqual(int(found[f"Cells below {limit:g}"]), sum(d < limit for d in densities))
        self.assertAlmostEqual(float(found["Smallest density"]), min(densities), delta=0.00051)
        self.assertAlmostEqual(float(found["Largest density"]), max(densities), delta=0.00051)
        self.assertAlmostEqual(float(found["Mean density"]), mean(densities), delta=0.00051)
        means = [
            [mean(z) for line, z in lines.items() if line is not None] for lines in cells.values()
        ]
        differences = [max(of) - min(of) for of in means if len(of) > 1]
        if not differences:
            self.assertEqual(len(report.of("table")), 2)
            return
        found = self.table(report, "Height differences")
        self.assertEqual(int(found["Cells"]), len(differences))
        self.assertAlmostEqual(float(found["Mean"]), mean(differences), delta=0.000051)
        self.assertAlmostEqual(float(found["Largest"]), max(differences), delta=0.000051)
        if len(differences) % 2:
            self.assertAlmostEqual(float(found["Median"]), median(differences), delta=0.000051)
        self.assertEqual(len(report.of("picture")), 2)

    def test_compares_lines_where_they_overlap_and_passes_over_points_of_none(self):
        points, lines = [], []
        for line, west, lift in ((7, -40, 0), (9, -10, 0.12), (65535, 15, -0.3), (0, -40, 50)):
            for _ in range(2000):
                x, y = (
                    west + self.random.randrange(30_000) / 1000,
                    self.random.randrange(20_000) / 1000,
                )
                points.append((x, y, 0.01 * x + lift))
                lines.append(line)
        db = self.make(points, attributes=[self.lines(invalid=0)], **{LINE: lines})
        report = self.run_plugin(db, cell=4, limit=3)
        rows = [(*row[:3], row[3] or None) for row in rows_of(db, [*NAMES, LINE])]
        self.assertReport(report, rows, 4, 3)
        self.assertEqual(
            self.table(report, "Flight lines"), {"7": "2000", "9": "2000", "65535": "2000"}
        )
        self.assertIn("two lines or more", report.of("html")[0]["text"])
        report = self.run_plugin(db, cell=4, limit=3, filter="tarvo.xyz[1] < 9")
        self.assertReport(report, [row for row in rows if row[1] < 9], 4, 3)

    def test_reads_a_real_cloud_as_a_plain_loop_does(self):
        # The returns stand for lines: this cloud is of one.
        db = self.real("autzen_trim.las")
        report = self.run_plugin(db, cell=32, limit=0.2, line="tarvo.target_index")
        self.assertReport(report, rows_of(db, [*NAMES, "tarvo.target_index"]), 32, 0.2)
        report = self.run_plugin(db, cell=32, limit=0.2)
        self.assertReport(report, rows_of(db, [*NAMES, LINE]), 32, 0.2)
        self.assertEqual(self.table(report, "Flight lines"), {"7326": "110000"})

    def test_tells_what_is_missing(self):
        db = self.make([(-1, -1, -1)])
        report = self.run_plugin(db)
        self.assertIn("not told apart", report.texts)
        self.assertEqual(self.table(report, "Density")["Mean density"], "0.040")
        self.assertEqual(len(report.of("picture")), 1)
        self.assertRefused("Choose one of", db, line="tarvo.segment_id")
        self.assertRefused(
            "more than 1000 different", self.make([(i, 0, 0) for i in range(1100)]), line="tarvo.id"
        )
        self.assertIn("No points", self.run_plugin(self.make([])).texts)

    def test_names_a_cell_size_that_does_where_the_area_is_huge(self):
        db = self.make([(-90_000, -90_000, 0), (90_000, 90_000, 0)])
        self.assertRefused("cells of .* would do", db, cell=0.5)

    def test_can_be_cancelled_at_any_time(self):
        lines = [i % 3 for i in range(3000)]
        db = self.make(
            [(i % 50, i // 50, 0) for i in range(3000)], attributes=[self.lines()], **{LINE: lines}
        )
        self.assertCancelLeaves(db, self.folder, fractions=(0.0, 0.3, 0.6))
        self.run_plugin(db)


if __name__ == "__main__":
    unittest.main()
