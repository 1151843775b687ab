"""Runs the commands of docs/tutorial.md: one that fails, or writes what the text does not show.

    tutorial.py TUTORIAL QRBTOOL_FOLDER

In the text "..." stands for what is different each time, alone in a line for any lines.
"""

import os
import re
import subprocess
import sys
import tempfile


def pattern(expected):
    lines = [".*\n" if line == "..." else re.escape(line).replace(r"\.\.\.", ".*") + "\n"
             for line in expected]
    # Any lines: also none.
    return "".join("(?:.*\n)*" if line == ".*\n" else line for line in lines)


def main(text_file, tool_folder):
    with open(text_file, encoding="utf-8") as file:
        blocks = re.findall(r"```console\n(.*?)```", file.read(), flags=re.DOTALL)
    environment = dict(os.environ, LC_ALL="C.UTF-8", COLUMNS="200",
                       PATH=tool_folder + os.pathsep + os.environ["PATH"])
    run = failed = 0
    with tempfile.TemporaryDirectory() as folder:
        for step in re.findall(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", "".join(blocks), flags=re.MULTILINE):
            command, expected = step
            done = subprocess.run(["bash", "-c", command + " 2>&1"], cwd=folder, env=environment,
                                  stdout=subprocess.PIPE, text=True)
            run += 1
            # "validate" ends with 1 where it finds what the text shows.
            if done.returncode > 1 or not re.fullmatch(pattern(expected.splitlines()), done.stdout):
                failed += 1
                print(f"$ {command}\n--- expected\n{expected}--- written ({done.returncode})\n"
                      f"{done.stdout}")
    print(f"{run} commands, {failed} failed")
    return 1 if failed or run < 20 else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
