"""A tutorial whose code does not work."""

import contextlib
import io
import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

from support import ROOT, WITHOUT_NUMPY

TEXT = (ROOT / "python" / "README.md").read_text("utf-8")


class Tutorial(unittest.TestCase):
    @unittest.skipIf(WITHOUT_NUMPY, "the tutorial uses NumPy")
    def test_the_code_runs_and_prints_what_it_says(self):
        blocks = re.findall(r"```python\n(.*?)```", TEXT, flags=re.DOTALL)
        self.assertGreater(len(blocks), 5)
        with tempfile.TemporaryDirectory() as folder:
            here = os.getcwd()
            os.chdir(folder)
            self.addCleanup(os.chdir, here)
            tool = os.environ["QRBTOOL_FILE"]
            subprocess.run(
                [tool, "sample", "--points", "20000", "scan.qrbx"],
                check=True,
                stdout=subprocess.DEVNULL,
            )
            names = {}
            for block in blocks:
                output = io.StringIO()
                with contextlib.redirect_stdout(output):
                    exec(compile(block, "README.md", "exec"), names)
                expected = re.findall(r"^# prints: (.*)$", block, flags=re.MULTILINE)
                if expected:
                    self.assertEqual(output.getvalue().splitlines(), expected, block)
            names["db"].close()
            self.assertTrue(Path("scan.qrbx").exists())
            os.chdir(here)


if __name__ == "__main__":
    unittest.main()
