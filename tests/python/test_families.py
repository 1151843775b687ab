"""Wrappers that do something else than the function that they are named after, and functions that
nothing wraps."""

import json
import math
import os
import re
import subprocess
import sys
import unittest
from unittest import mock

from support import POSITION, ROOT, DatabaseTest, qrb

from qrb import ErrorCode, _library, _prototypes

KEY = b"\1\2\3"


class Families(DatabaseTest):
    def test_library(self):
        info = qrb.library_info()
        self.assertTrue(info.version.startswith(info.name), info)
        self.assertEqual(os.path.realpath(info.filename), os.path.realpath(qrb.load().path))
        self.assertIn("MIT", info.license)
        self.assertEqual((info.suffix, info.title), ("qrbx", "Point cloud database"))
        self.assertTrue(qrb.is_database(self.path))
        self.assertFalse(qrb.is_database(self.folder) or qrb.is_database("missing"))
        log = self.folder / "log.txt"
        with qrb.open(os.fsencode(self.path), cache_size=0, log_level="TRACE", log_path=log) as db:
            self.assertTrue(db.is_empty)
        self.assertIn("qrb_pointcloud_is_empty", log.read_text())
        error = self.assertCode(ErrorCode.ARGUMENT, qrb.open, self.path, log_level="LOUD")
        self.assertIn("LOUD", error.text)

    def test_creation(self):
        path = self.folder / "b.qrbx"
        settings = qrb.CreateSettings(
            primary_attribute=POSITION,
            chunk_mode=qrb.ChunkMode.EDGE_LENGTH,
            chunk_size=9,
            lod_mode=qrb.LodMode.COMBINE,
            lod_size=2,
            cache_size=2**33,
            compression_level=7,
            optimize_point_id=True,
            point_insert_mode="multi-pass",
        )
        self.assertEqual(qrb.CreateSettings.from_json(settings.to_json()), settings)
        self.assertEqual(qrb.OpenSettings.from_json(qrb.OpenSettings(5).to_json()).cache_size, 5)
        with qrb.create(path, settings=settings, attributes=["tarvo.class"]) as db:
            self.assertEqual(list(db.attributes), ["p", "tarvo.id", "tarvo.class"])
            self.assertEqual(qrb.CreateSettings.from_json(db.transactions[1].settings), settings)
            self.assertEqual(db.level_of_detail, (qrb.LodMode.COMBINE, 2))
            with db.transaction("Insert") as transaction:
                values = {"p": [[1, 2, 3]]}
                self.assertCode(ErrorCode.STATE, transaction.insert, values, return_ids=True)
                self.assertEqual(transaction.insert(values), 1)
        self.assertCode(ErrorCode.EXISTS, qrb.create, path)
        error = self.assertCode(ErrorCode.ARGUMENT, qrb.CreateSettings.from_json, '{"chunk_mode":')
        self.assertTrue(error.text and error.details)
        self.assertCode(ErrorCode.NOT_FOUND, qrb.open, self.folder / "missing.qrbx")
        self.assertRaises(KeyError, qrb.create, self.folder / "c.qrbx", primary="missing")
        schema = {"identifier": "own", "extension": "own", "primary_attribute": "tarvo.xyz"}
        schema.update(attributes=["tarvo.xyz*", "tarvo.class"], metadata=["tarvo.time_base"])
        with qrb.create(self.folder / "d.qrbx", schema=schema, optionals=True) as db:
            self.assertEqual(db.attributes.primary, "tarvo.xyz")
            self.assertIn("tarvo.class", db.attributes)
            self.assertEqual(db.validate(schema), [])
        for wrong in (["tarvo.class", "missing"], [qrb.Attribute("a", 1, 0)]):
            with self.assertRaises(qrb.Error):
                qrb.create(self.folder / "e.qrbx", attributes=wrong)
        self.assertEqual(len(list(self.folder.iterdir())), 3)

    def test_attributes(self):
        attributes = self.db.attributes
        self.assertEqual(list(attributes)[:3], ["p", "tarvo.id", "class"])
        self.assertEqual((attributes.primary, attributes.point_id), ("p", "tarvo.id"))
        self.assertEqual(attributes.point_id_type, qrb.DataType.UINT64)
        self.assertEqual(attributes.point_id_unit, attributes["tarvo.id"].unit)
        full = qrb.Attribute(
            "my.full", -7, 5, 0.5, 2, 1.5, -8, "m/s", "Title", "Of \u00fc", "a, b", "1=one\n2=two",
            qrb.StorageClass.DYNAMIC, qrb.Compression.DELTA_SHUFFLE, "default", 3.5,
        )  # fmt: skip
        with self.db.transaction("Attributes") as transaction:
            pending = transaction.attributes
            pending["my.full"] = full
            self.assertEqual(pending["my.full"], full)
            pending.add("tarvo.reflectance")
            pending.duplicate("class", "copy")
            transaction.insert({"class": [4], "copy": 5})
            pending["copy"] = qrb.Attribute("copy", 0, 63)
            pending.duplicate("copy", "gone")
            del pending["gone"]
            pending.discard("class")
            self.assertRaises(KeyError, pending.__delitem__, "gone")
            self.assertRaises(ValueError, pending.__setitem__, "other", full)
            self.assertRaises(TypeError, pending.__setitem__, "other", "class")
        self.assertEqual(attributes["copy"].maximum, 63)
        self.assertTrue(math.isnan(attributes["copy"].invalid))
        self.assertEqual(attributes["copy"], qrb.Attribute.from_json(attributes["copy"].to_json()))
        self.assertEqual((self.column("class"), self.column("copy")), ([1], [5]))
        self.assertEqual(full.data_type(), qrb.DataType.SINGLE)
        self.assertEqual(attributes.matching("c*"), ["class", "colour", "copy"])
        self.assertEqual(attributes.matching("#b"), ["my.full"])
        self.assertNotIn("missing", attributes)
        self.assertNotIn(7, attributes)
        self.assertRaises(KeyError, attributes.__getitem__, "missing")
        self.assertEqual(len(attributes), len(list(attributes)))
        catalogue = attributes.catalogue
        self.assertEqual(len(catalogue), len(list(catalogue)))
        self.assertEqual(catalogue["tarvo.reflectance"], attributes["tarvo.reflectance"])
        self.assertEqual(
            catalogue.group("tarvo.reflectance").name, attributes.group("tarvo.reflectance").name
        )
        self.assertRaises(KeyError, catalogue.__getitem__, "missing")
        with qrb.create(
            self.folder / "b.qrbx",
            primary=POSITION,
            attributes=[qrb.Attribute("class", 0, 255), "tarvo.class"],
        ) as other:
            merged = attributes.merged("class", [other.attributes])
            self.assertEqual((merged.minimum, merged.maximum), (0, 255))
            names = attributes.merged_names([other.attributes])
            self.assertEqual(names, [*attributes, "tarvo.class"])
        self.assertEqual(attributes.merged("class", []), attributes["class"])
        self.assertRaises(TypeError, attributes.merged_names, [self.db])

    def test_metadata(self):
        with self.db.transaction("Metadata") as transaction:
            items = transaction.metadata
            items["b"] = "no JSON"
            items["a"] = {"x": [1, "\u00fc"]}
            items["gone"] = "1"
            del items["gone"]
            self.assertRaises(KeyError, items.__delitem__, "gone")
            for wrong in (None, b"1", {"x": math.nan}, {1j}):
                with self.assertRaises((TypeError, ValueError)):
                    items["wrong"] = wrong
            items.sign("a", KEY)
            items.sign("b", KEY)
            items.unsign("b")
            self.assertRaises(TypeError, items.sign, "a")
        items = self.db.metadata
        self.assertEqual(dict(items), {"a": '{"x": [1, "\u00fc"]}', "b": "no JSON"})
        self.assertEqual((len(items), items.json("a")), (2, {"x": [1, "\u00fc"]}))
        self.assertRaises(ValueError, items.json, "b")
        self.assertEqual((items.get("gone"), items.get("gone", "d")), (None, "d"))
        self.assertRaises(KeyError, items.__getitem__, "gone")
        self.assertTrue(items.verify("a") and items.verify("a", KEY))
        self.assertFalse(items.verify("a", b"other") or items.verify("b"))
        self.assertRaises(TypeError, items.verify, "a", "text")
        self.assertRaises(ValueError, items.verify, "a", b"")
        schema = {"properties": {"x": {"items": {"type": "integer"}}}}
        findings = items.validate("a", schema)
        self.assertEqual([(f.pointer, f.keyword) for f in findings], [("/x/1", "type")])
        self.assertEqual(str(findings[0]), findings[0].line)
        self.assertEqual(items.validate_json({"x": [1]}, json.dumps(schema)), [])
        self.assertEqual(len(items.validate_json([2], False)), 1)
        self.assertCode(ErrorCode.NOT_FOUND, items.validate, "gone")

    def test_transactions(self):
        for value in range(3):
            self.insert(300, **{"class": value})
        transactions = self.db.transactions
        self.assertEqual(list(transactions), [1, 2, 3, 4, 5])
        self.assertEqual((len(transactions), transactions.current), (5, 5))
        record = transactions[3]
        self.assertEqual((record.id, record.title, record.agent), (3, "Insert", "Python"))
        self.assertLess(record.start, record.stop + "Z")
        self.assertIn("QRB for Python", record.qrb)
        self.assertRaises(KeyError, transactions.__getitem__, 99)
        self.assertGreater(transactions.size([4]), 0)
        transactions.restore(3)
        self.assertEqual((transactions.current, self.db.count()), (3, 300))
        transactions.restore(5)
        self.assertEqual(self.db.count(), 900)
        transactions.discard([2, 4])
        self.assertEqual(list(transactions), [1, 3, 5])
        self.assertCode(ErrorCode.ARGUMENT, transactions.discard, [1])
        transactions.finalize()
        self.assertEqual(list(transactions), [1, 5])
        self.db.vacuum()
        self.db.clear_cache()
        self.assertEqual(self.db.count(), 900)
        self.assertEqual(len(self.db.uuid), 36)
        self.assertTrue(self.db.is_open)

    def test_changelog(self):
        with self.db.transaction("Signed", comments="why", settings="{}", key=KEY) as transaction:
            transaction.log("[#7] is no header; \u00fc")
        changelog = self.db.changelog
        entries = list(changelog)
        self.assertEqual([entry.id for entry in entries], [1, 2, 3])
        self.assertEqual("".join(entry.text for entry in entries), changelog.text())
        self.assertIn("#7] is no header; \u00fc", entries[-1].text)
        self.assertTrue(
            changelog.verify(entries[-1].text, KEY) and changelog.verify(entries[-1].text)
        )
        self.assertFalse(
            changelog.verify(entries[-1].text, b"x") or changelog.verify(entries[0].text)
        )
        exported = self.folder / "log.txt"
        changelog.export(exported)
        self.assertEqual(exported.read_text("utf-8"), changelog.text())
        with qrb.create(self.folder / "b.qrbx") as other:
            with other.transaction("Import") as transaction:
                transaction.import_changelog(self.path)
            self.assertIn("Signed", other.changelog.text())

    def test_reports(self):
        self.insert(50)
        self.assertIn(self.db.uuid, self.db.inspect())
        self.assertIsInstance(self.db.inspect("json"), dict)
        self.assertIn("<", self.db.inspect(qrb.Report.HTML))
        self.assertIn("class", self.db.inspect("histograms"))
        self.assertEqual(self.db.inspect("check")["points"], 50)
        self.assertRaises((KeyError, ValueError), self.db.inspect, "missing")
        self.assertRaises(ValueError, self.db.inspect, 0)
        schema = {
            "identifier": "own",
            "extension": "own",
            "attributes": ["tarvo.class"],
            "metadata": [],
        }
        findings = self.db.validate(schema)
        self.assertIn("tarvo.class", [finding.attribute for finding in findings])
        self.assertGreater(len(self.db.validate(schema, strict=True)), len(findings))
        error = self.assertCode(ErrorCode.ARGUMENT, self.db.validate, "{}")
        self.assertTrue(error.details and error.details in str(error))

    def test_points(self):
        ids = self.insert(1000, flag=1)
        with self.db.transaction("Points") as transaction:
            transaction.set_level_of_detail(qrb.LodMode.COMBINE, 1)
            transaction.update({"class": 2}, ids=ids[:3])
            transaction.update(
                {"class": 3}, filter="", nodes=[self.db.index("find largest leaf").id]
            )
            transaction.update({"class": 3}, filter="p[0] < 3")
            transaction.invert("flag", filter="")
            transaction.invert("flag", filter="", nodes=[])
            transaction.remove(ids[:1])
        transaction = self.db.transaction("Nothing")
        transaction.commit(progress=lambda part: True)
        transaction = self.db.transaction("Not kept")
        transaction.rollback()
        self.assertEqual(self.db.index("class == 3").total, 999)
        leaf = next(node for node in self.db.index().walk() if not node.children)
        for extreme in (self.db.minimum, self.db.maximum):
            self.assertIsInstance(extreme("class", node=leaf.id), int)
            self.assertIsInstance(extreme("class", invalid=True), int)
        self.assertEqual(self.db.revision("flag"), self.db.transactions.current - 1)
        self.assertEqual(self.db.count(nodes=[leaf.id]), leaf.own)
        selection = self.db.select()
        next(selection)
        self.assertGreater(selection.progress, 0)


# Functions that the module has no use for.
UNUSED = {
    r"qrb_context_new": "contexts tell their interface: qrb_context_new_with_api",
    r"qrb_object_(un)?lock_cf": "a record belongs to one object and is deleted with it alone",
    r"qrb_pointcloud_(create_settings|open_settings|point_attribute)_\w+(?<!_cf)":
        "records are used through the functions that need no context",
    r"qrb_pointcloud_(create|open)_settings_[gs]et_cache_size_cf": "the one of 64 bits is used",
    r"qrb_pointcloud_point_attribute_[gs]et_length_cf": "the one of 32 bits is used",
    r"qrb_pointcloud_query_(fill|invert)_progress": "one call handles all points",
}  # fmt: skip


class Completeness(unittest.TestCase):
    def test_every_function_is_called_or_has_a_reason(self):
        library = qrb.load()
        called = set()

        def recorder(name, function):
            def call(*arguments):
                called.add(name)
                return function(*arguments)

            return call

        names = {name: recorder(name, getattr(library, name)) for name in _prototypes.FUNCTIONS}
        result = unittest.TestResult()
        from test_callbacks import Authentication

        with mock.patch.multiple(library, **names):
            for case in (Families, Authentication):
                unittest.defaultTestLoader.loadTestsFromTestCase(case).run(result)
        self.assertTrue(result.wasSuccessful(), result.errors + result.failures)
        for name in names:
            excused = any(re.fullmatch(pattern, name) for pattern in UNUSED)
            excused = excused and not name.endswith("decode_descriptor")
            self.assertEqual(name in called, not excused, name)

    def test_prototypes_are_those_of_the_interface(self):
        script = [sys.executable, str(ROOT / "python" / "make_prototypes.py"), "--check"]
        ran = subprocess.run(script, stderr=subprocess.PIPE, text=True)
        self.assertEqual(ran.returncode, 0, ran.stderr)

    def test_the_version_is_that_of_the_project(self):
        project = (ROOT / "CMakeLists.txt").read_text()
        self.assertIn(f"VERSION {qrb.__version__} ", project)


class Loading(unittest.TestCase):
    def setUp(self):
        self.file = qrb.load().path
        for name, value in (("_first", None), ("_loaded", {})):
            patch = mock.patch.object(_library, name, value)
            patch.start()
            self.addCleanup(patch.stop)

    def test_the_places_are_tried_in_their_order(self):
        with mock.patch.dict(os.environ, {"QRB_LIBRARY": "/missing/lib.so"}):
            with self.assertRaises(qrb.Error) as caught:
                qrb.load()
            self.assertIn("/missing/lib.so", caught.exception.details)
            self.assertIn("QRB_LIBRARY", caught.exception.details)
            named = qrb.load(self.file)
            self.assertIs(qrb.load(), named)
            self.assertIs(qrb.load(""), named)
            self.assertRaises(qrb.Error, qrb.load, "/missing/other.so")
        with mock.patch.dict(os.environ, clear=True), mock.patch.object(_library, "_first", None):
            module = os.path.join(os.path.dirname(self.file), "_library.py")
            with mock.patch.object(_library, "__file__", module):
                self.assertEqual(os.path.realpath(qrb.load().path), os.path.realpath(self.file))

    def test_a_library_of_something_else_is_named(self):
        import _ctypes

        with self.assertRaises(qrb.Error) as caught:
            qrb.load(_ctypes.__file__)
        self.assertEqual(caught.exception.code, ErrorCode.NOT_AVAILABLE)
        self.assertIn("qrb_context_delete", caught.exception.text)
        self.assertRaises(qrb.Error, qrb.load, __file__)


if __name__ == "__main__":
    unittest.main()
