import json
import os
import subprocess
import sys
import unittest

from support import TOOL, PluginTest

SHIPPED = os.environ.get("QRB_PLUGINS")


@unittest.skipIf(SHIPPED is None, "QRB_PLUGINS names no folder of plugins as they are shipped")
class Shipping(PluginTest):
    """The plugins are found and run by qrbtool, in the folder that the build makes."""

    def tool(self, *words, code=0):
        """Standard output and error of qrbtool."""
        done = subprocess.run(
            [TOOL, "plugin", *words],
            capture_output=True,
            text=True,
            env={**os.environ, "XDG_CONFIG_HOME": str(self.folder)},
        )
        self.assertEqual(done.returncode, code, done.stderr)
        return done.stdout, done.stderr

    def test_all_manifests_are_read(self):
        listed, problems = self.tool("list", "--plugins", SHIPPED, "--json")
        names = {"control-points", "density-overlap", "ground-classifier", "ground-grid"}
        self.assertEqual({one["name"] for one in json.loads(listed)}, names | {"polygon-to-ply"})
        self.assertEqual(problems, "")

    def test_all_run_with_what_lies_beside_them(self):
        points = [(i % 20, i // 20, 0) for i in range(400)]
        db = self.make(points, attributes=["tarvo.class"], **{"tarvo.class": 1})
        db.close()
        places = {name: self.folder / name for name in ("square", "controls", "out.ply")}
        places["square"].write_text("0 0\n9.5 0\n9.5 9.5\n0 9.5")
        places["controls"].write_text("A,5,5,0.5")
        common = ["--plugins", SHIPPED, "--trust", "--python", sys.executable, db.path]
        for name, wishes, answer in (
            ("ground-classifier", [], "400"),
            ("ground-grid", ["cell=2"], "Cells with points"),
            ("density-overlap", [], "Mean density"),
            ("control-points", [f"file={places['controls']}"], "-0.5000"),
            (
                "polygon-to-ply",
                [f"polygon={places['square']}", f"file={places['out.ply']}"],
                "100 p",
            ),
        ):
            shown, _ = self.tool("run", name, *common, *(f"--set={wish}" for wish in wishes))
            self.assertIn(answer, shown, name)

    def test_a_refusal_tells_its_advice_once(self):
        db = self.make([(0, 0, 0)])
        db.close()
        common = ["--plugins", SHIPPED, "--trust", "--python", sys.executable, db.path]
        _, told = self.tool("run", "ground-grid", *common, "--set=attribute=tarvo.gain", code=1)
        self.assertEqual(told.count("Choose one of: tarvo.xyz, tarvo.id."), 1, told)


if __name__ == "__main__":
    unittest.main()
