import json
import re
import types
import unittest

from support import ROOT, PluginTest, Recorder

CLASS = "tarvo.class"


class Documentation(PluginTest):
    """The plugins of docs/plugins.md do what it says."""

    def blocks(self, kind):
        text = (ROOT / "docs" / "plugins.md").read_text()
        return re.findall(rf"```{kind}\n(.*?)```", text, re.DOTALL)

    def module(self, text):
        """The script among those of the documentation that the text is found in."""
        (source,) = [block for block in self.blocks("python") if text in block]
        module = types.ModuleType("plugin")
        exec(compile(source, "docs/plugins.md", "exec"), module.__dict__)
        return module

    def defaults(self, name):
        (described,) = [m for m in map(json.loads, self.blocks("json")) if m["name"] == name]
        return {one["name"]: one.get("default") for one in described["parameters"]}

    def test_the_first_plugin_finds_what_it_is_said_to_find(self):
        heights = [self.random.randrange(-900, 900) / 100 for _ in range(500)]
        classes = [self.random.choice([1, 2, 6]) for _ in heights]
        db = self.make(
            [(i, -i, z) for i, z in enumerate(heights)], attributes=[CLASS], **{CLASS: classes}
        )
        report = Recorder()
        self.module("heights = {}").run(db, self.defaults("class-heights"), report)
        expected = []
        for kind in sorted(set(classes)):
            of_kind = [z for z, other in zip(heights, classes) if other == kind]
            ends = [f"{end(of_kind):.3f}" for end in (min, max)]
            expected.append([str(kind), str(len(of_kind)), *ends])
        self.assertEqual(report.rows(), expected)
        self.module("# /// plugin").run(db, {}, report)
        self.assertEqual(report.texts, "500 points")

    def test_the_plugin_that_writes_writes(self):
        db = self.make([(0, 0, z) for z in range(-5, 5)], attributes=[CLASS])
        report = Recorder()
        self.assertEqual(list(self.defaults("high-noise")), ["height"])
        with db.transaction("High Noise") as report.transaction:
            self.module("report.transaction.update").run(db, {"height": 1.5}, report)
        self.assertEqual(db.count("tarvo.class == 18"), 3)

    def test_the_manifest_in_a_comment_is_one(self):
        (source,) = [block for block in self.blocks("python") if "# /// plugin" in block]
        lines = [line.lstrip("# ") for line in source.splitlines() if line.startswith("# {")]
        self.assertEqual(json.loads("".join(lines))["name"], "count")


if __name__ == "__main__":
    unittest.main()
