"""What the tests of the Python module share: the module itself, with or without NumPy, and a folder
with databases."""

import os
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
WITHOUT_NUMPY = os.environ.get("QRB_WITHOUT_NUMPY") == "1"
if WITHOUT_NUMPY:
    sys.modules["numpy"] = None
sys.path.insert(0, str(ROOT / "python"))

import qrb  # noqa: E402

if WITHOUT_NUMPY:
    numpy = None
else:
    import numpy  # noqa: F401

CLASS = qrb.Attribute("class", 0, 31, default=1)
HEIGHT = qrb.Attribute("height", -100, 100, resolution=0.25, unit="m", invalid=-100)
COLOUR = qrb.Attribute("colour", 0, 65535, length=3)
FLAG = qrb.Attribute("flag", 0, 1)
WIDE = qrb.Attribute("wide", 0, 2**63, default=0)
POSITION = qrb.Attribute("p", -1000, 1000, resolution=0.01, length=3, unit="m")


def assert_same(test, found, expected, what):
    """Two long lists are equal, else says where they are not."""
    test.assertEqual(len(found), len(expected), what)
    for place, (one, other) in enumerate(zip(found, expected)):
        if one != other:
            test.fail(f"{what}: {one!r} in place of {other!r} at place {place}")


def rows(column):
    """A column as plain numbers."""
    return column.tolist()


class DatabaseTest(unittest.TestCase):
    """Each test has an empty folder and an open database with the attributes above."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="qrb-python-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.path = self.folder / "a.qrbx"
        self.db = qrb.create(
            self.path,
            primary=POSITION,
            attributes=[CLASS, HEIGHT, COLOUR, FLAG, WIDE],
            settings=qrb.CreateSettings(chunk_size=100),
        )
        self.addCleanup(self.db.close)

    def insert(self, count=10, **values):
        """Points with x = 0, 1, 2, ...; returns their ids."""
        positions = [(i % 1000, i // 1000, 0) for i in range(count)]
        with self.db.transaction("Insert") as transaction:
            ids = transaction.insert({"p": positions, **values}, return_ids=True)
        return rows(ids)

    def column(self, name, filter="", **options):
        """The values of an attribute in the order of the ids."""
        batch = self.db.select(filter, ["tarvo.id", name], **options).read()
        pairs = sorted(zip(rows(batch["tarvo.id"]), rows(batch[name])))
        return [value for _, value in pairs]

    def assertCode(self, code, function, *arguments, **options):
        """Calls the function, which must raise qrb.Error with this code; returns the error."""
        with self.assertRaises(qrb.Error) as caught:
            function(*arguments, **options)
        self.assertEqual(caught.exception.code, code, str(caught.exception))
        return caught.exception
