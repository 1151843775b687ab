"""Changes in random order against a dictionary. QRB_SEED replays a run."""

import os
import random
import unittest

from support import DatabaseTest, assert_same, numpy, qrb, rows

NAMES = ("p", "class", "height", "colour", "flag", "wide")


class Model(DatabaseTest):
    def test_random_changes_leave_what_a_dictionary_holds(self):
        seed = int(os.environ.get("QRB_SEED") or random.randrange(2**32))
        print(f"QRB_SEED={seed}")
        self.random = random.Random(seed)
        self.points = {}
        for step in range(40):
            before = dict(self.points)
            try:
                with self.db.transaction(f"Step {step}") as transaction:
                    for _ in range(self.random.randrange(1, 5)):
                        self.change(transaction)
                        if self.random.random() < 0.2:
                            self.compare()
                    if self.random.random() < 0.2:
                        raise KeyError("given up")
            except KeyError:
                self.points = before
            if self.random.random() < 0.1:
                self.db.close()
                self.db = qrb.open(self.path, cache_size=self.random.choice([0, 10**6]))
                self.addCleanup(self.db.close)
            self.compare()

    def value(self, name):
        draw = self.random.randint
        return {
            "p": lambda: [draw(-1000, 1000), draw(-3, 3) / 4, 0.01 * draw(0, 9)],
            "class": lambda: draw(0, 31),
            "height": lambda: draw(-400, 400) / 4,
            "colour": lambda: [draw(0, 65535) for _ in range(3)],
            "flag": lambda: draw(0, 1),
            "wide": lambda: draw(0, 2**63),
        }[name]()

    def column(self, name, count):
        values = [self.value(name) for _ in range(count)]
        if numpy is not None and self.random.random() < 0.5:
            kind = {"wide": "u8", "p": "f8", "height": "f4"}.get(name, "i4")
            spread = numpy.zeros((2 * count, *numpy.shape(values)[1:]), kind)
            spread[::2] = values
            return spread[::2], values
        return values, values

    def some_ids(self, least=0):
        count = min(len(self.points), self.random.randrange(least, 60))
        return self.random.sample(sorted(self.points), count)

    def change(self, transaction):
        names = self.random.sample(NAMES[1:], self.random.randrange(1, 4))
        kind = self.random.choice(
            ["insert", "insert", "update", "fill", "invert", "remove", "filter"]
        )
        if kind == "insert":
            count = self.random.randrange(1, 200)
            columns = {name: self.column(name, count) for name in ["p", *names]}
            ids = transaction.insert({n: c[0] for n, c in columns.items()}, return_ids=True)
            plain = {"class": 1, "height": 0, "colour": [0, 0, 0], "flag": 0, "wide": 0}
            for i, id in enumerate(rows(ids)):
                given = {name: column[1][i] for name, column in columns.items()}
                self.points[id] = {**plain, **given}
        elif kind == "update":
            ids = self.some_ids()
            names = self.random.sample(NAMES, 2)
            columns = {name: self.column(name, len(ids) + 1) for name in names}
            values = {n: c[0] for n, c in columns.items()}
            self.assertEqual(transaction.update(values, ids=[*ids, 10**9]), len(ids))
            for i, id in enumerate(ids):
                changed = {name: column[1][i] for name, column in columns.items()}
                self.points[id] = {**self.points[id], **changed}
        elif kind == "remove":
            ids = self.some_ids()
            self.assertEqual(transaction.remove([*ids, 0]), len(ids))
            for id in ids:
                del self.points[id]
        else:
            limit = self.random.randrange(33)
            hit = [id for id, point in self.points.items() if point["class"] < limit]
            expression = f"class < {limit}"
            if kind == "fill":
                values = {name: self.value(name) for name in names}
                self.assertEqual(transaction.update(values, filter=expression), len(hit))
                for id in hit:
                    self.points[id] = {**self.points[id], **values}
            elif kind == "invert":
                self.assertEqual(transaction.invert("flag", filter=expression), len(hit))
                for id in hit:
                    self.points[id] = {**self.points[id], "flag": 1 - self.points[id]["flag"]}
            elif limit < 8:
                self.assertEqual(transaction.remove(filter=expression), len(hit))
                for id in hit:
                    del self.points[id]

    def compare(self):
        read = {}
        for batch in self.db.select("", ["tarvo.id", *NAMES], batch=self.random.randrange(1, 500)):
            columns = [rows(column) for column in batch.values()]
            for id, *values in zip(*columns):
                read[id] = dict(zip(NAMES, values))
        assert_same(self, sorted(read.items()), sorted(self.points.items()), "points")


if __name__ == "__main__":
    unittest.main()
