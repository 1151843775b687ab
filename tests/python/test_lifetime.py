"""Objects used after their end, dropped in any order, from other threads, at the program's exit."""

import gc
import os
import subprocess
import sys
import textwrap
import threading
import unittest
import warnings

from support import ROOT, DatabaseTest, qrb, rows

from qrb import ErrorCode


class Lifetime(DatabaseTest):
    def test_what_is_used_after_its_end_says_so(self):
        self.insert(300)
        selection = self.db.select("", ["class"], batch=100)
        batch = next(selection)
        transaction = self.db.transaction("Lost")
        transaction.update({"class": 9}, filter="")
        attributes, metadata = transaction.attributes, transaction.metadata
        self.db.close()
        self.db.close()
        self.assertFalse(self.db.is_open or transaction.is_pending)
        self.assertEqual(rows(batch["class"]), [1] * 100)
        for call in (
            lambda: next(selection),
            lambda: selection.progress,
            lambda: selection.read(),
            lambda: self.db.count(),
            lambda: self.db.uuid,
            lambda: self.db.select(),
            lambda: self.db.index(),
            lambda: self.db.attributes["class"],
            lambda: "class" in self.db.attributes,
            lambda: list(self.db.metadata),
            lambda: self.db.transactions.current,
            lambda: self.db.transaction("Another"),
            lambda: self.db.changelog.text(),
            lambda: self.db.inspect(),
            lambda: self.db.vacuum(),
            lambda: transaction.commit(),
            lambda: transaction.insert({"class": [1]}),
            lambda: attributes.add("tarvo.class"),
            lambda: metadata.__setitem__("a", "1"),
        ):
            self.assertIn("closed", self.assertCode(ErrorCode.STATE, call).text)
        selection.close()
        repr((self.db, transaction, attributes, metadata, selection))
        with qrb.open(self.path) as again:
            self.assertEqual(again.count("class == 9"), 0)
            self.assertCode(ErrorCode.STATE, again.attributes.merged_names, [self.db.attributes])

    def test_what_has_ended_says_so(self):
        self.insert(5)
        with self.db.select("", ["class"]) as selection:
            next(selection)
        self.assertIn("closed", self.assertCode(ErrorCode.STATE, next, selection).text)
        for end in (qrb.Transaction.commit, qrb.Transaction.rollback):
            transaction = self.db.transaction("Ended")
            end(transaction)
            for call in (
                transaction.commit,
                transaction.rollback,
                transaction.__enter__,
                lambda: transaction.remove([1]),
                lambda: transaction.log("late"),
                lambda: transaction.metadata,
            ):
                self.assertIn("ended", self.assertCode(ErrorCode.STATE, call).text)
        with self.assertRaises(qrb.Error), self.db.transaction("Closed within"):
            self.db.close()

    def test_transactions_end_with_their_blocks(self):
        self.insert(5)
        with self.assertRaises(ZeroDivisionError):
            with self.db.transaction("Fails") as transaction:
                transaction.update({"class": 9}, filter="")
                1 / 0
        self.assertFalse(self.db.transactions.pending)
        self.assertEqual(self.db.count("class == 9"), 0)
        with self.db.transaction("Ends early") as transaction:
            transaction.update({"class": 9}, filter="p[0] < 2")
            transaction.commit()
        with self.db.transaction("Is given up") as transaction:
            transaction.update({"class": 10}, filter="")
            transaction.rollback()
        self.assertEqual((self.db.count("class == 9"), self.db.count("class == 10")), (2, 0))
        self.assertCode(ErrorCode.STATE, lambda: [self.db.transaction("a") for _ in range(2)])
        gc.collect()
        # The one that was begun was dropped: it is no longer in the way.
        self.assertFalse(self.db.transactions.pending)
        with qrb.open(self.path) as other, other.transaction("Other"):
            self.assertCode(ErrorCode.BUSY, self.db.transaction, "Mine")

    def test_anything_may_be_dropped_in_any_order(self):
        self.insert(500)
        for order in range(24):
            db = qrb.open(self.path)
            things = [db, db.select("", ["class"], batch=10), db.attributes, db.transaction("T")]
            next(things[1])
            del db
            for _ in range(4):
                things.pop(order % len(things))
                order //= len(things) + 1
                gc.collect()
        cycle = [qrb.open(self.path)]
        cycle.append((cycle, cycle[0].select()))
        del cycle
        gc.collect()
        batches = list(qrb.open(self.path).select("", ["class"], batch=200))
        self.assertEqual(sum(batch.count for batch in batches), 500)
        with self.db.transaction("Nobody else is writing"):
            pass

    def test_dropped_selections_give_their_memory_back(self):
        self.insert(100)
        library = qrb.load()
        delete = library.qrb_pointcloud_query_select_delete
        deleted = []
        library.qrb_pointcloud_query_select_delete = lambda *a: deleted.append(delete(*a)) or 1
        self.addCleanup(setattr, library, "qrb_pointcloud_query_select_delete", delete)
        selections = [self.db.select("", ["class"]) for _ in range(10)]
        deleted.clear()
        next(selections[0])
        with self.db._handle.context:  # as if within another call
            del selections
            self.assertEqual(deleted, [])
        self.db.count()
        self.assertEqual(deleted.count(1), 11)

    def test_threads_wait_for_each_other(self):
        self.insert(3000)
        shared = self.db.select("", ["tarvo.id"], batch=37)
        seen, failures = [], []

        def work(number):
            try:
                for batch in shared:
                    seen.extend(rows(batch["tarvo.id"]))
                    if self.db.count(f"p[0] < {number * 100}") != number * 300:
                        failures.append("count")
                    try:
                        self.db.count("class ==")
                    except qrb.Error as error:
                        if error.code != ErrorCode.FILTER:
                            failures.append(error)
                    with qrb.open(self.path) as own:
                        own.select("p[0] < 3", ["p"]).read()
            except BaseException as error:
                failures.append(error)

        threads = [threading.Thread(target=work, args=(i,)) for i in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(failures, [])
        self.assertEqual(sorted(seen), list(range(1, 3001)))

    @unittest.skipUnless(hasattr(os, "fork"), "needs fork")
    def test_a_forked_process_leaves_the_database_alone(self):
        self.insert(10)
        transaction = self.db.transaction("Kept")
        transaction.update({"class": 7}, filter="")
        with warnings.catch_warnings():
            warnings.simplefilter("ignore", DeprecationWarning)  # of threads, which the library has
            child = os.fork()
        if child == 0:
            try:
                self.assertCode(ErrorCode.STATE, self.db.count)
                del transaction
                gc.collect()
                with qrb.open(self.path) as own:
                    os._exit(0 if own.count() == 10 else 2)
            finally:
                os._exit(1)
        self.assertEqual(os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]), 0)
        transaction.commit()
        self.assertEqual(self.db.count("class == 7"), 10)


class Exit(DatabaseTest):
    """Programs that end with open objects."""

    @unittest.skipUnless(hasattr(os, "fork"), "needs fork")
    def test_a_forked_process_ends_and_takes_nothing_with_it(self):
        self.insert(20)
        self.run_program(
            """
            import os
            transaction = db.transaction("Kept")
            transaction.update({"class": 7}, filter="")
            next(db.select())
            child = os.fork()
            if child == 0:
                sys.exit(0)
            assert os.waitpid(child, 0)[1] == 0
            transaction.commit()
            assert db.count("class == 7") == 20
            """
        )

    def run_program(self, text, code=0):
        program = "import sys\n"
        if os.environ.get("QRB_WITHOUT_NUMPY") == "1":
            program += "sys.modules['numpy'] = None\n"
        program += f"import qrb\ndb = qrb.open({str(self.path)!r})\n" + textwrap.dedent(text)
        environment = {**os.environ, "PYTHONPATH": str(ROOT / "python")}
        ran = subprocess.run(
            [sys.executable, "-X", "faulthandler", "-c", program],
            env=environment,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
            timeout=120,
        )
        self.assertEqual(ran.returncode, code, ran.stdout)
        return ran.stdout

    def test_programs_end_with_what_is_open(self):
        self.insert(2000)
        self.db.close()
        for text, code, words in (
            ("s = db.select('', ['class'], batch=10); next(s); b = next(s)", 0, ""),
            ("t = db.transaction('Open'); t.update({'class': 9}, filter='')", 0, ""),
            ("import builtins; builtins.kept = [db, db.select(), db.transaction('a')]", 0, ""),
            ("db.kept = db; s = db.select(); s.kept = s; del db", 0, ""),
            ("s = db.select(); next(s); raise SystemExit(3)", 3, ""),
            ("1 / 0", 1, "ZeroDivisionError"),
            (
                """
                import threading
                def work():
                    while True:
                        db.count('p[0] + 1 < 7'); db.select().read()
                threading.Thread(target=work, daemon=True).start()
                import time; time.sleep(0.2)
                """,
                0,
                "",
            ),
            (
                """
                import os
                t = db.transaction('Killed')
                def stop(fraction): os._exit(5)
                t.insert({'class': [1] * 1000})
                t.commit(progress=stop)
                """,
                5,
                "",
            ),
        ):
            output = self.run_program(text, code)
            self.assertIn(words, output)
            if not words:
                self.assertEqual(output, "")
        with qrb.open(self.path) as db:
            self.assertEqual((db.count(), db.count("class == 9")), (2000, 0))
            self.assertEqual(db.inspect("check")["fault_count"], 0)


if __name__ == "__main__":
    unittest.main()
