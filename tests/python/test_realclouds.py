"""Values of real point clouds that come out of the module other than they stand in their files."""

import os
import subprocess
import tempfile
import unittest
from decimal import Decimal
from pathlib import Path

from lasfile import LasFile
from support import assert_same, qrb, rows

DATA = os.environ.get("QRB_TEST_DATA")


@unittest.skipUnless(DATA, "QRB_TEST_DATA is not set")
class RealClouds(unittest.TestCase):
    def test_every_value_of_every_point(self):
        paths = sorted(Path(DATA).glob("*.las"))
        self.assertGreater(len(paths), 5)
        for path in paths:
            with self.subTest(path.name), tempfile.TemporaryDirectory() as folder:
                database = os.path.join(folder, "a.qrbx")
                tool = os.environ["QRBTOOL_FILE"]
                subprocess.run(
                    [tool, "import", str(path), database], check=True, stdout=subprocess.DEVNULL
                )
                with qrb.open(database) as db:
                    self.compare(LasFile(path), db)

    def compare(self, file, db):
        columns = file.columns()
        read = [[] for _ in range(file.count)]  # by the order of the file, which ids follow
        names = ["tarvo.xyz", *columns]
        # What is missing has one value only, of which the importer makes no attribute.
        names = [name for name in names if name in db.attributes]
        others = set(db.attributes) - set(names) - {"tarvo.id"}
        self.assertEqual(others, set())
        for batch in db.select("", ["tarvo.id", *names], batch=30011):
            for id, *values in zip(*(rows(column) for column in batch.values())):
                read[id - 1] = values
        for place, name in enumerate(names):
            found = [point[place] for point in read]
            if name == "tarvo.xyz":
                # What the stored whole numbers stand for, without errors of binary fractions.
                origin = [Decimal(repr(number)) for number in file.offset]
                step = [Decimal(repr(number)) for number in file.scale]
                exact = [
                    [float(o + s * v) for o, s, v in zip(origin, step, point)]
                    for point in file.coordinates()
                ]
                if any(o % s for o, s in zip(origin, step)):
                    # The importer gives an offset between the steps no more than 8 places.
                    found = [[round(number, 6) for number in point] for point in found]
                    exact = [[round(number, 6) for number in point] for point in exact]
                assert_same(self, found, exact, name)
            elif name == "tarvo.rgba":
                opaque = int(db.attributes[name].maximum)  # the file has no such part
                expected = [[*colour, opaque] for colour in columns[name]]
                assert_same(self, found, expected, name)
            else:
                assert_same(self, found, columns[name], name)
        for name in set(columns) - set(names):
            self.assertEqual(len({str(value) for value in columns[name]}), 1, name)
        classes = columns["tarvo.class"]
        for number in set(classes):
            self.assertEqual(db.count(f"tarvo.class == {number}"), classes.count(number))


if __name__ == "__main__":
    unittest.main()
