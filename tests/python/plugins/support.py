"""What the tests of the plugins share: databases, and runs of plugins as the runner does them.

QRB_PLUGINS names the folder of plugins as it is shipped, else they are taken from the source tree.
QRB_WITHOUT_NUMPY=1 runs them as if NumPy were not there.
"""

import importlib.util
import json
import os
import random
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
if os.environ.get("QRB_WITHOUT_NUMPY") == "1":
    sys.modules["numpy"] = None
sys.path.insert(0, str(ROOT / "python"))

import qrb  # noqa: E402
from runner.report import Report  # noqa: E402

PLUGINS = Path(os.environ.get("QRB_PLUGINS", ROOT / "python" / "plugins"))
TOOL = os.environ.get("QRBTOOL_FILE", "qrbtool")
CLOUDS = os.environ.get("QRB_TEST_DATA", "")
XYZ = qrb.Attribute("tarvo.xyz", -100_000, 100_000, resolution=0.001, length=3, unit="m")


class Cancelled(BaseException):
    """As the runner's: no Exception."""


class Recorder(Report):
    """The runner's report, which keeps what is told; cancels where the progress gets so far."""

    def __init__(self, cancel_at=2.0):
        super().__init__(self)
        self.messages = []
        self.cancel_at = cancel_at
        self.fractions = []

    def send(self, **message):
        self.messages.append(json.loads(json.dumps(message, allow_nan=False)))

    def progress(self, fraction, text=""):
        self.fractions.append(fraction)
        super().progress(fraction, text)
        if fraction >= self.cancel_at:
            raise Cancelled

    def of(self, kind):
        return [message for message in self.messages if message["type"] == kind]

    @property
    def texts(self):
        return "\n".join(message["text"] for message in self.of("text"))

    def rows(self, index=0):
        return self.of("table")[index]["rows"]

    def figures(self, index=0):
        """The second column of a table by the first."""
        return {row[0]: row[1] for row in self.rows(index)}


def manifest(name):
    return json.loads((PLUGINS / name / "plugin.json").read_text())


def load(name):
    """The module of a plugin."""
    for folder in (PLUGINS / "common", PLUGINS / name):
        if str(folder) not in sys.path:
            sys.path.insert(1, str(folder))
    module_name = name.replace("-", "_")
    if module_name not in sys.modules:
        spec = importlib.util.spec_from_file_location(module_name, PLUGINS / name / "plugin.py")
        sys.modules[module_name] = importlib.util.module_from_spec(spec)
        spec.loader.exec_module(sys.modules[module_name])
    return sys.modules[module_name]


class PluginTest(unittest.TestCase):
    """Each test has an empty folder; `plugin` is the name of the plugin that the class is about."""

    plugin = ""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="qrb-plugins-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        seed = int(os.environ.get("QRB_SEED", random.SystemRandom().randrange(2**32)))
        self.random = random.Random(seed)
        self.told = f"QRB_SEED={seed}"

    def _formatMessage(self, message, standard):  # noqa: N802 - of unittest
        return f"{super()._formatMessage(message, standard)} ({self.told})"

    def make(self, points, primary=XYZ, attributes=(), **columns):
        """An open database of these positions and columns."""
        settings = qrb.CreateSettings(chunk_size=64)
        path = self.folder / f"{len(list(self.folder.iterdir()))}.qrbx"
        db = qrb.create(path, primary=primary, attributes=attributes, settings=settings)
        self.addCleanup(db.close)
        if points:
            with db.transaction("Points") as transaction:
                transaction.insert({primary.name: points, **columns})
        return db

    def real(self, name):
        """An open database of a real cloud."""
        if not CLOUDS:
            self.skipTest("QRB_TEST_DATA names no folder of real clouds")
        path = self.folder / "real.qrbx"
        subprocess.run(
            [TOOL, "import", os.path.join(CLOUDS, name), path], check=True, capture_output=True
        )
        db = qrb.open(path)
        self.addCleanup(db.close)
        return db

    def run_plugin(self, db, cancel_at=2.0, **parameters):
        """Runs it with defaults for what is not told, within a transaction if it writes; returns
        the report."""
        described = manifest(self.plugin)
        values = {one["name"]: one.get("default") for one in described["parameters"]}
        self.assertLessEqual(set(parameters), set(values))
        values.update(parameters)
        report = Recorder(cancel_at)
        function = load(self.plugin).run
        if described.get("writes"):
            with db.transaction(described["title"]) as transaction:
                report.transaction = transaction
                function(db, values, report)
        else:
            function(db, values, report)
        self.assertTrue(all(0 <= fraction <= 1 for fraction in report.fractions))
        return report

    def assertRefused(self, pattern, db, **parameters):
        """The plugin must refuse with a text or an advice that the pattern is found in."""
        with self.assertRaisesRegex(qrb.Error, pattern) as caught:
            self.run_plugin(db, **parameters)
        return caught.exception

    def assertCancelLeaves(self, db, folder, fractions=(0.0, 0.5, 0.95), **parameters):
        """Cancels early, in the middle and late; each time the folder must hold the same files."""
        before = sorted(os.listdir(folder))
        for fraction in fractions:
            with self.assertRaises(Cancelled, msg=f"at {fraction}"):
                self.run_plugin(db, cancel_at=fraction, **parameters)
            self.assertEqual(sorted(os.listdir(folder)), before, f"cancelled at {fraction}")


def rows_of(db, names, filter=""):
    """Values of points as tuples."""
    batch = db.select(filter, names).read()
    return list(zip(*(batch[name].tolist() for name in names)))
