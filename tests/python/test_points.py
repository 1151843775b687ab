"""Values that come back other than they went in, and arguments that a C interface would swallow."""

import array
import math
import unittest

from support import DatabaseTest, numpy, qrb, rows

from qrb import DataType, ErrorCode


class Points(DatabaseTest):
    def test_values_come_back_in_the_types_that_hold_them(self):
        ids = self.insert(
            4,
            height=[0.25, -99.75, 100, -100],
            p=[[0.01, -0.03, 1.23]] * 4,
            colour=[[0, 1, 2], [65535, 0, 7], [3, 3, 3], [4, 5, 6]],
            wide=[0, 2**53 + 1, 2**63, 1],
        )
        batch = self.db.select().read()
        self.assertEqual(list(batch), list(self.db.attributes))
        order = [rows(batch["tarvo.id"]).index(id) for id in ids]
        for name, expected in {
            "height": [0.25, -99.75, 100, -100],
            "colour": [[0, 1, 2], [65535, 0, 7], [3, 3, 3], [4, 5, 6]],
            "wide": [0, 2**53 + 1, 2**63, 1],
            "class": [1, 1, 1, 1],
            "p": [[0.01, -0.03, 1.23]] * 4,
        }.items():
            values = rows(batch[name])
            self.assertEqual([values[i] for i in order], expected, name)
        sizes = {name: column.itemsize for name, column in batch.items()}
        expected = {"p": 8, "tarvo.id": 8, "class": 1, "height": 8, "colour": 2, "flag": 1}
        self.assertEqual(sizes, {**expected, "wide": 8})
        self.assertEqual(tuple(batch["colour"].shape), (4, 3))
        self.assertEqual(tuple(batch["class"].shape), (4,))
        narrow = self.db.select(
            "", ["height", "class"], types={"height": "f", "class": DataType.INT64}
        )
        self.assertEqual([column.itemsize for column in narrow.read().values()], [4, 8])
        elements = self.db.select("wide > 1", ["colour[2]", "p[1]"]).read()
        self.assertEqual(sorted(rows(elements["colour[2]"])), [3, 7])
        self.assertEqual(rows(elements["p[1]"]), [-0.03, -0.03])

    def test_batches_hold_each_point_once_and_keep_their_values(self):
        self.insert(2500, **{"class": [i % 32 for i in range(2500)]})
        kept = list(self.db.select("class < 20", ["tarvo.id", "class"], batch=700))
        self.assertEqual([batch.count for batch in kept[:-1]], [700] * (len(kept) - 1))
        ids = [id for batch in kept for id in rows(batch["tarvo.id"])]
        self.assertEqual(len(ids), self.db.count("class < 20"))
        self.assertEqual(sorted(ids), [i + 1 for i in range(2500) if i % 32 < 20])
        for batch in kept:  # the first ones were not overwritten by the last
            self.assertEqual(
                rows(batch["class"]), [(id - 1) % 32 for id in rows(batch["tarvo.id"])]
            )
        selection = self.db.select("", ["class"], batch=1000)
        next(selection)
        self.assertTrue(0 < selection.progress < 1)
        self.assertEqual(selection.read().count, 1500)
        self.assertEqual((selection.progress, list(selection)), (1, []))
        empty = self.db.select("class > 31", ["class", "colour"]).read()
        self.assertEqual((empty.count, rows(empty["class"]), rows(empty["colour"])), (0, [], []))

    def test_nodes_and_levels_of_detail_select_their_points_alone(self):
        self.insert(1000)
        with self.db.transaction("Level of detail") as transaction:
            transaction.set_level_of_detail(qrb.LodMode.THINOUT, 25)
        self.assertEqual(self.db.level_of_detail, (qrb.LodMode.THINOUT, 25))
        root = self.db.index()
        nodes = list(root.walk())
        leaves = [node for node in nodes if not node.children]
        self.assertEqual(sum(leaf.own for leaf in leaves), root.total)
        self.assertEqual(root.total, 1000)
        for node in (root, *root.children, leaves[0]):
            self.assertEqual(self.db.count(nodes=[node.id]), node.own)
            self.assertEqual(self.db.count(node=node.id), node.total)
            self.assertEqual(self.db.select("", ["p"], node=node.id).read().count, node.total)
        self.assertGreater(root.own, 0)
        self.assertEqual(self.db.count(nodes=[]), 0)
        some = self.db.index("p[0] < 5")
        self.assertLess(len(list(some.walk())), len(nodes))
        self.assertRaises(TypeError, self.db.count, node=1, nodes=[1])
        self.assertCode(ErrorCode.NOT_FOUND, self.db.count, node=10**6)

    def test_the_index_tells_least_and_greatest_values(self):
        self.assertCode(ErrorCode.NOT_FOUND, self.db.minimum, "class")
        self.insert(3, height=[-100, 4.5, 8], wide=[5, 2**53 + 1, 7])
        self.assertEqual(self.db.minimum("height"), 4.5)
        self.assertEqual(self.db.minimum("height", invalid=True), -100)
        self.assertEqual(self.db.maximum("wide"), 2**53 + 1)
        self.assertEqual(self.db.maximum("p"), (2, 0, 0))
        self.assertEqual(self.db.maximum("p[0]", invalid=True), 2)
        leaf = next(node for node in self.db.index().walk() if not node.children)
        self.assertEqual(self.db.minimum("p[0]", node=leaf.id), 0)
        self.assertEqual(self.db.revision("height"), self.db.transactions.current)

    def test_changes_reach_the_points_that_they_name(self):
        ids = self.insert(6)
        with self.db.transaction("Change") as transaction:
            self.assertEqual(transaction.update({"class": [2, 3, 4]}, ids=[*ids[:2], 999]), 2)
            changed = self.db.select("class == 3", ["tarvo.id", "colour"]).read()
            changed["colour"][0, 1] = 77
            self.assertEqual(transaction.update(changed), 1)
            self.assertEqual(transaction.update({"colour[2]": 9}, ids=ids[2:4]), 2)
            self.assertEqual(
                transaction.update({"class": 5, "colour": [1, 2, 3]}, filter="p[0] > 3"), 2
            )
            self.assertEqual(transaction.update({"height": 1}, filter=""), 6)
            self.assertEqual(transaction.invert("flag", filter="p[0] < 2"), 2)
            self.assertEqual(transaction.remove(ids[2:3] + [999]), 1)
            self.assertEqual(transaction.remove(filter="p[0] == 5"), 1)
        left = self.db.select("", "tarvo.id").read()["tarvo.id"]
        self.assertEqual(sorted(rows(left)), ids[:2] + ids[3:5])
        self.assertEqual(self.column("class"), [2, 3, 1, 5])
        self.assertEqual(self.column("colour"), [[0, 0, 0], [0, 77, 0], [0, 0, 9], [1, 2, 3]])
        self.assertEqual(self.column("height"), [1] * 4)
        self.assertEqual(self.column("flag"), [1, 1, 0, 0])
        with self.db.transaction("Remove all") as transaction:
            self.assertEqual(transaction.remove(filter=""), 4)
        self.assertTrue(self.db.is_empty)

    def test_own_ids_and_portions(self):
        from qrb import _changes

        portion, _changes.PORTION = _changes.PORTION, 7
        self.addCleanup(setattr, _changes, "PORTION", portion)
        ids = [1000 - i for i in range(20)]
        with self.db.transaction("Insert") as transaction:
            values = {"tarvo.id": ids, "p": [[i, 0, 0] for i in range(20)], "class": 3}
            self.assertEqual(rows(transaction.insert(values, return_ids=True)), ids)
            self.assertEqual(transaction.update({"wide": [i * 2 for i in ids]}, ids=ids), 20)
        self.assertEqual(self.column("wide"), [2 * id for id in sorted(ids)])
        self.assertEqual(self.column("p[0]"), list(range(19, -1, -1)))
        self.insert(1000)
        with self.db.transaction("Remove") as transaction:
            self.assertEqual(transaction.remove(ids[:15]), 15)
            leaf = self.db.count("find fullest leaf")
            self.assertEqual(transaction.remove(filter="find fullest leaf"), leaf)
            self.assertEqual(transaction.update({"class": 4}, filter=""), 1005 - leaf)
            self.assertEqual(transaction.remove(filter="class == 4"), 1005 - leaf)


class HostileArguments(DatabaseTest):
    """What ctypes or a buffer would take for something else."""

    def setUp(self):
        super().setUp()
        self.ids = self.insert(3)
        self.transaction = self.db.transaction("Hostile")

    def refuse(self, kind, values, **options):
        with self.assertRaises(kind) as caught:
            self.transaction.insert({"p": [[0, 0, 0]] * 2, **values}, **options)
        return str(caught.exception)

    def test_shapes(self):
        self.assertIn("(n, 3)", self.refuse(ValueError, {"colour": [1, 2]}))
        self.assertIn("(n, 3)", self.refuse(ValueError, {"colour": 7}))
        self.refuse(ValueError, {"colour": [[1, 2], [3, 4]]})
        self.refuse(ValueError, {"colour": [[1, 2, 3], [4]]})
        self.refuse(ValueError, {"class": [[1, 2], [3, 4]]})
        self.assertIn("class: 3", self.refuse(ValueError, {"class": [1, 2, 3]}))
        self.assertRaises(ValueError, self.transaction.insert, {})
        self.assertRaises(ValueError, self.transaction.insert, {"class": 1})
        self.assertRaises(TypeError, self.transaction.insert, [1, 2])
        self.assertRaises(ValueError, self.transaction.update, {"class": [1]})
        self.assertRaises(TypeError, self.transaction.update, {"class": 1}, ids=[1], filter="")
        self.assertRaises(TypeError, self.transaction.remove)
        self.assertRaises(ValueError, self.transaction.update, {"colour": [1, 2]}, filter="")
        self.assertEqual(self.transaction.insert({"class": [], "flag": 1}), 0)
        self.assertEqual(self.transaction.remove([]), 0)
        self.assertEqual(self.db.count(), 3)

    def test_ids_are_never_rounded_and_masks_are_none(self):
        for wrong in ([1.5], [2.0, 1.0], [True, False], array.array("d", [1])):
            self.assertRaises(TypeError, self.transaction.remove, wrong)
            self.assertRaises(TypeError, self.transaction.update, {"class": 1}, ids=wrong)
        if numpy is not None:
            self.assertRaises(TypeError, self.transaction.remove, numpy.array([True, False]))
        self.assertEqual(self.transaction.remove(array.array("d")), 0)
        self.assertEqual(self.db.count(), 3)

    def test_values(self):
        for wrong in (None, "7", [1, None], ["a", "b"], [1j, 2], {"a": 1}, object()):
            self.refuse(TypeError, {"class": wrong})
        self.refuse(ValueError, {"wide": [2**64, 1]})
        self.refuse(ValueError, {"wide": [2**63, -1]})
        self.refuse(ValueError, {"wide": 2**70})
        for wrong in ([1, 32], [1, -1], -1, [1, math.inf], [1, math.nan], 2**63, 300.5):
            self.assertCode(
                ErrorCode.RANGE, self.transaction.insert, {"p": [[0, 0, 0]] * 2, "class": wrong}
            )
        self.assertEqual(self.db.count(), 3)
        self.assertCode(ErrorCode.NOT_FOUND, self.transaction.insert, {"missing": [1]})
        self.assertCode(
            ErrorCode.RANGE, self.transaction.update, {"class": [2, 99]}, ids=self.ids[:2]
        )
        self.assertEqual(self.column("class"), [1, 1, 1])
        self.assertEqual(self.transaction.update({"class": 1}, ids=[-5, 10**18, 0]), 0)
        self.assertEqual(self.transaction.remove([-1, 2**62]), 0)

    def test_numbers_that_ctypes_would_cut(self):
        for batch in (0, -1, 2**32, 2.5, None, "7"):
            self.assertRaises((ValueError, TypeError), self.db.select, "", ["class"], batch=batch)
        for number in (-1, 2**32, 1.0, None):
            self.assertRaises((ValueError, TypeError), self.db.count, node=number)
            self.assertRaises((ValueError, TypeError), self.db.count, nodes=[number])
            self.assertRaises((ValueError, TypeError), self.db.transactions.restore, number)
            self.assertRaises((ValueError, TypeError), self.db.transactions.size, [number])
        self.assertRaises(TypeError, self.db.count, nodes=7)
        self.assertRaises(ValueError, qrb.Attribute("a", 0, 1, length=-1).to_json)
        self.assertRaises(ValueError, qrb.Attribute("a", 0, 1, storage_class=256).to_json)
        self.assertRaises(TypeError, qrb.Attribute("a", 0, "1").to_json)
        self.assertRaises(ValueError, qrb.open, self.path, cache_size=-1)

    def test_texts_that_c_would_cut_or_utf8_has_not(self):
        for text, words in (("a\0b", "NUL"), ("a\ud800", "surrogate")):
            for call in (
                lambda: self.db.count(text),
                lambda: self.db.select("", [text]),
                lambda: self.db.attributes[text],
                lambda: self.transaction.log(text),
                lambda: self.transaction.metadata.__setitem__(text, "1"),
                lambda: self.transaction.metadata.__setitem__("a", text),
                lambda: qrb.open(text),
                lambda: qrb.create(self.folder / "b.qrbx", primary=qrb.Attribute(text, 0, 1)),
            ):
                with self.assertRaisesRegex(ValueError, words):
                    call()
        for call in (self.db.count, self.transaction.log, qrb.open):
            self.assertRaises(TypeError, call, 7.5)
        name = self.folder / "Großes Punktfeld \U0001f30d.qrbx"
        with qrb.create(name, attributes="tarvo.class") as other:
            with other.transaction("Übersicht") as transaction:
                transaction.metadata["ключ"] = "значение \U0001f30d"
            self.assertEqual(dict(other.metadata), {"ключ": "значение \U0001f30d"})
            self.assertEqual(other.transactions[other.transactions.current].title, "Übersicht")
        self.assertTrue(qrb.is_database(name))
        self.assertFalse(list(self.folder.glob("b.qrbx")))

    def test_selections(self):
        self.assertRaises(ValueError, self.db.select, "", ["class", "class"])
        self.assertRaises(ValueError, self.db.select, "", ["class"], types={"flag": "f"})
        for wrong in ("x", DataType.NONE, "c", object, 7):
            with self.assertRaises((TypeError, ValueError)):
                self.db.select("", ["class"], types={"class": wrong})
        self.assertCode(ErrorCode.NOT_FOUND, self.db.select, "", ["missing"])
        self.assertCode(ErrorCode.FILTER, self.db.select, "class = 2")
        error = self.assertCode(ErrorCode.FILTER, self.db.count, "class ==")
        self.assertIn("class ==", error.details)
        self.transaction.update({"wide": 2**40}, filter="")
        narrow = self.db.select("", ["wide"], types={"wide": "B"})
        self.assertCode(ErrorCode.RANGE, next, narrow)

    def test_buffers_of_the_standard_library(self):
        ids = array.array("Q", self.ids)
        self.assertEqual(self.transaction.update({"class": bytes([4, 5, 6])}, ids=ids), 3)
        self.assertEqual(self.column("class"), [4, 5, 6])
        every = memoryview(array.array("H", range(6)))[::2]
        self.assertEqual(self.transaction.update({"class": every}, ids=memoryview(ids)), 3)
        self.assertEqual(self.column("class"), [0, 2, 4])
        flat = memoryview(array.array("f", [0.5, -3, 7.25])).toreadonly()
        self.assertEqual(self.transaction.update({"height": flat}, ids=ids), 3)
        self.assertEqual(self.column("height"), [0.5, -3, 7.25])
        self.refuse(TypeError, {"class": memoryview(b"ab").cast("c")})

    @unittest.skipIf(numpy is None, "needs NumPy")
    def test_arrays_of_all_sorts(self):
        ids = numpy.array(self.ids)
        base = numpy.arange(36, dtype="u2").reshape(6, 6)
        read_only = base[::2, ::2].copy()
        read_only.flags.writeable = False
        for colours in (
            base[::2, ::2],
            base[::-2, 5::-2],
            base[::2, ::2].T.copy().T,
            base[::2, ::2].astype(">u2"),
            base[::2, ::2].astype("f2"),
            numpy.asfortranarray(base[:3, :3]),
            numpy.broadcast_to(numpy.array([1, 2, 3]), (3, 3)),
            base[::2, ::2].astype("f8"),
            base[::2, ::2].astype("i8"),
            list(base[:3, :3]),
            read_only,
            numpy.frombuffer(b"\1" + bytes(18), "u2", 9, 1).reshape(3, 3),
        ):
            self.assertEqual(self.transaction.update({"colour": colours}, ids=ids), 3)
            self.assertEqual(self.column("colour"), [[int(v) for v in row] for row in colours])
        self.transaction.update({"flag": numpy.array([True, False, True])}, ids=ids[:, None])
        self.assertEqual(self.column("flag"), [1, 0, 1])
        self.transaction.update({"class": numpy.int8(7)}, filter="flag == 1")
        self.assertEqual(self.column("class"), [7, 1, 7])
        self.transaction.update({"colour": base[0, ::2]}, filter="flag == 1")
        self.assertEqual(self.column("colour")[0], [0, 2, 4])
        for wrong in (
            numpy.array(["a", "b"]),
            numpy.array([1, None], object),
            numpy.array([1, 2], "M8[s]"),
            numpy.array([1, 2], complex),
            numpy.array([1, 2], numpy.longdouble),
            numpy.ma.array([1, 2], mask=[True, False]),
        ):
            self.refuse(TypeError, {"class": wrong})
        self.refuse(ValueError, {"class": numpy.zeros((2, 1, 1))})


if __name__ == "__main__":
    unittest.main()
