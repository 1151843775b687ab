"""Functions of the caller within the library's calls: they stop the work, raise, and call back."""

import hashlib
import hmac
import sys
import unittest

from support import DatabaseTest, qrb

from qrb import ErrorCode


class Callbacks(DatabaseTest):
    def setUp(self):
        super().setUp()
        self.ids = self.insert(2000)
        self.raised = []
        hook, sys.unraisablehook = sys.unraisablehook, lambda raised: self.raised.append(raised)
        self.addCleanup(setattr, sys, "unraisablehook", hook)

    def commit(self, progress):
        with self.db.transaction("Changes", progress=progress) as transaction:
            transaction.update({"class": 9}, filter="")

    def test_progress_tells_parts_and_stops_the_commit(self):
        told = []
        self.assertCode(ErrorCode.CANCELLED, self.commit, lambda part: told.append(part) or False)
        self.assertEqual(len(told), 1)
        self.assertFalse(self.db.transactions.pending)
        self.assertEqual(self.db.count("class == 9"), 0)
        transaction = self.db.transaction("Can be tried again")
        transaction.update({"class": 9}, filter="")
        self.assertCode(ErrorCode.CANCELLED, transaction.commit, progress=lambda _: 0)
        self.assertTrue(transaction.is_pending and self.db.transactions.pending)
        told.clear()
        transaction.commit(progress=told.append)
        self.assertEqual(told, sorted(told))
        self.assertTrue(all(0 <= part <= 1 for part in told) and told[-1] == 1)
        self.assertEqual(self.db.count("class == 9"), 2000)
        self.assertRaises(TypeError, self.db.vacuum, progress=1)

    def test_exceptions_reach_the_caller(self):
        for error in (KeyError("mine"), KeyboardInterrupt(), SystemExit(3), qrb.Error(7, "mine")):

            def stop(part):
                raise error

            with self.assertRaises(type(error)) as caught:
                self.commit(stop)
            self.assertIs(caught.exception, error)
            self.assertFalse(self.db.transactions.pending)
        self.assertEqual((self.db.count("class == 9"), self.raised), (0, []))

    def test_an_exception_behind_the_work_does_not_undo_it(self):
        def stop_late(part):
            if part == 1:
                raise KeyError("late")

        self.commit(stop_late)
        self.assertEqual(self.db.count("class == 9"), 2000)
        self.assertEqual([str(raised.exc_value) for raised in self.raised], ["'late'"])

    def test_calls_within_a_call_are_answered_or_refused(self):
        answers = {}

        def ask(part):
            with qrb.open(self.path) as other:
                answers["other"] = other.count("class == 9")
            answers["current"] = self.db.transactions.current
            answers["open"] = self.db.is_open
            for name, call in {
                "count": self.db.count,
                "close": self.db.close,
                "commit": self.pending.commit,
                "rollback": self.pending.rollback,
                "select": lambda: next(self.reading),
            }.items():
                answers[name] = self.assertCode(ErrorCode.STATE, call).code
            self.reading = None  # dropped here, deleted later

        self.reading = self.db.select()
        before = self.db.transactions.current
        self.pending = self.db.transaction("Asks")
        self.pending.update({"class": 9}, filter="")
        told = []
        self.pending.commit(progress=lambda part: told or told.append(ask(part)))
        self.assertEqual(answers["other"], 0)
        self.assertEqual((answers["current"], answers["open"]), (before, True))
        self.assertEqual(len(answers), 8)
        self.assertEqual(self.db.count("class == 9"), 2000)

    def test_vacuum_tells_its_progress(self):
        values = [i * 2**39 % 2**63 ^ i**5 for i in range(2000)]
        for part in (values, values[::-1], [0] * 2000):
            with self.db.transaction("Changes") as transaction:
                transaction.update({"wide": part}, ids=self.ids)
        self.db.transactions.finalize()
        size = self.path.stat().st_size
        told = []
        self.db.vacuum(progress=told.append)
        self.assertEqual(told[-1:], [1])
        self.assertLess(self.path.stat().st_size, size)


class Authentication(DatabaseTest):
    def test_a_function_signs_in_place_of_a_key(self):
        self.db.close()
        key, raised = b"secret", []

        def answer(challenge, size):
            if raised:
                raise raised[0]
            return hmac.new(key, challenge, hashlib.sha256).digest()[:size]

        with qrb.open(self.path, authentication=answer) as db:
            with db.transaction("Signed", method=2) as transaction:
                transaction.metadata["a"] = "1"
                transaction.metadata.sign("a", method=2)
            self.assertTrue(db.metadata.verify("a", method=2))
            key = b"another"
            self.assertFalse(db.metadata.verify("a", method=2))
            raised.append(LookupError("no key at hand"))
            with self.assertRaises(LookupError):
                db.metadata.verify("a", method=2)
            with self.assertRaises(LookupError), db.transaction("Unsigned", method=2):
                pass
            self.assertFalse(db.transactions.pending)
            raised.clear()
            for wrong in (lambda *_: b"short", lambda *_: 7.5, lambda: None):
                with qrb.open(self.path, authentication=wrong) as other:
                    with self.assertRaises((ValueError, TypeError)):
                        other.metadata.verify("a", method=2)
            with qrb.open(self.path, authentication=lambda *_: None) as other:
                self.assertRaises(qrb.Error, other.metadata.verify, "a", method=2)
        self.assertRaises(TypeError, qrb.open, self.path, authentication=7)


if __name__ == "__main__":
    unittest.main()
