import dataclasses
import math
import unittest
from collections import Counter

from support import XYZ, Cancelled, PluginTest, load, rows_of

CLASS = "tarvo.class"


class GroundClassifier(PluginTest):
    plugin = "ground-classifier"

    def classes(self, db):
        return dict(rows_of(db, ["tarvo.id", CLASS]))

    def scene(self):
        """A hillside with a house, posts, and echoes from below; and which points are ground."""
        points, is_ground = [], []
        for i in range(-60, 60):
            for j in range(-60, 60):
                x, y = i / 2 + 0.25, j / 2 + 0.25
                hill = 0.08 * x - 0.05 * y - 30
                is_house = abs(x + 5) < 8 and abs(y - 4) < 6
                height = 5 if is_house else 0
                if (i, j) in ((40, 40), (-50, 8)):
                    height = 3
                if (i, j) in ((30, -40), (-44, -12)):
                    height = -9
                points.append((x, y, hill + height + self.random.uniform(-0.03, 0.03)))
                is_ground.append(height == 0)
        return points, is_ground

    def test_finds_the_ground_under_houses_posts_and_echoes_from_below(self):
        points, is_ground = self.scene()
        db = self.make(points, attributes=[CLASS], **{CLASS: 2})
        report = self.run_plugin(db, other=9)
        found = [value for _, value in sorted(self.classes(db).items())]
        wrong = [points[i] for i, g in enumerate(is_ground) if found[i] != (2 if g else 9)]
        # At the walls, cells hold both.
        self.assertLess(len(wrong), len(points) / 100, wrong[:20])
        self.assertEqual(
            [p for p in wrong if abs(abs(p[0] + 5) - 8) > 1.5 and abs(abs(p[1] - 4) - 6) > 1.5], []
        )
        figures = {key: int(value) for key, value in report.figures().items()}
        numbers = Counter(found)
        self.assertEqual(
            figures,
            {
                "considered": len(points),
                "ground": numbers[2],
                "new ground": 0,
                "ground no more": numbers[9],
            },
        )

    def test_says_that_lengths_are_in_the_unit_of_the_coordinates(self):
        self.assertEqual(self.run_plugin(self.make([(0, 0, 0)])).texts, "")
        feet = dataclasses.replace(XYZ, unit="ftUS")
        report = self.run_plugin(self.make([(0, 0, 0)], primary=feet))
        self.assertIn("The coordinates are in ftUS", report.texts)

    def test_leaves_points_alone_that_are_not_considered(self):
        points, _ = self.scene()
        before = [self.random.choice([1, 2, 5, 7]) for _ in points]
        db = self.make(points, attributes=[CLASS], **{CLASS: before})
        old = self.classes(db)
        self.run_plugin(db, filter="tarvo.class != 7 && tarvo.xyz[0] > 0")
        new = self.classes(db)
        places = dict(rows_of(db, ["tarvo.id", "tarvo.xyz[0]"]))
        for id, value in new.items():
            if old[id] == 7 or places[id] <= 0:
                self.assertEqual(value, old[id])
            else:  # vegetation that is none keeps its class
                self.assertIn(value, (2, 1 if old[id] == 2 else old[id]))
        self.assertIn((5, 2), {(old[id], new[id]) for id in new})
        self.assertIn((2, 1), {(old[id], new[id]) for id in new})

    def test_agrees_with_itself_on_a_real_cloud(self):
        db = self.real("autzen_trim.las")
        # In feet.
        wishes = {"cell": 5, "window": 60, "threshold": 1.5}
        first = self.run_plugin(db, **wishes).figures()
        self.assertEqual(int(first["ground"]), db.count("tarvo.class == 2"))
        self.assertEqual(db.count(), int(first["considered"]))
        self.assertEqual(db.count("tarvo.class > 2"), 0)
        self.assertTrue(0.4 < int(first["ground"]) / db.count() < 0.95, first)
        second = self.run_plugin(db, **wishes).figures()
        self.assertEqual((second["new ground"], second["ground no more"]), ("0", "0"))
        # Ground lies deeper than what stands on it.
        heights = [rows_of(db, ["tarvo.xyz[2]"], f"tarvo.class == {i}") for i in (1, 2)]
        means = [sum(z for z, in column) / len(column) for column in heights]
        self.assertGreater(means[0], means[1])

    def test_windows_agree_with_looking_at_every_cell(self):
        load(self.plugin)
        import morphology

        for _ in range(20):
            columns, rows = self.random.randint(1, 12), self.random.randint(1, 12)
            heights = [self.random.randint(0, 50) / 4 for _ in range(rows * columns)]
            radius = self.random.randint(0, 8)

            def window(surface, choose, rows=rows, columns=columns, radius=radius):
                return [
                    choose(
                        surface[k * columns + m]
                        for k in range(max(0, i - radius), min(rows, i + radius + 1))
                        for m in range(max(0, j - radius), min(columns, j + radius + 1))
                    )
                    for i in range(rows)
                    for j in range(columns)
                ]

            surface = morphology.surface_of(heights, columns)
            for function, order in (
                (morphology.opened, (min, max)),
                (morphology.closed, (max, min)),
            ):
                expected = window(window(heights, order[0]), order[1])
                found = [float(z) for row in function(surface, radius) for z in row]
                self.assertEqual(found, expected)

    def test_fills_gaps_with_heights_of_their_surroundings(self):
        load(self.plugin)
        import morphology

        for _ in range(20):
            columns, rows = self.random.randint(1, 20), self.random.randint(1, 20)
            heights = [self.random.choice([math.inf, 3.0, 4.0]) for _ in range(rows * columns)]
            heights[self.random.randrange(len(heights))] = 3.5
            found = [
                z for row in morphology.filled(morphology.surface_of(heights, columns)) for z in row
            ]
            for before, after in zip(heights, found):
                self.assertTrue(after == before or before == math.inf and 3 <= after <= 4)

    def test_adds_the_class_and_takes_no_points_and_one(self):
        empty = self.make([])
        self.assertIn("nothing is changed", self.run_plugin(empty).texts)
        self.assertNotIn(CLASS, empty.attributes)
        one = self.make([(-3, -4, -5)])
        self.assertEqual(self.run_plugin(one).figures()["ground"], "1")
        self.assertEqual(list(self.classes(one).values()), [2])

    def test_refuses_an_area_with_too_many_cells_and_changes_nothing(self):
        db = self.make([(-90_000, -90_000, 0), (90_000, 90_000, 0)])
        self.assertRefused("cells of .* would do", db, cell=0.5)
        self.assertNotIn(CLASS, db.attributes)

    def test_changes_nothing_where_it_is_cancelled(self):
        points, _ = self.scene()
        db = self.make(points, attributes=[CLASS], **{CLASS: 1})
        for fraction in (0.0, 0.4, 0.7):
            with self.assertRaises(Cancelled):
                self.run_plugin(db, cancel_at=fraction)
            self.assertEqual(db.count("tarvo.class == 1"), len(points), f"cancelled at {fraction}")


if __name__ == "__main__":
    unittest.main()
