#!/usr/bin/env python3
"""Reads a million points through the Python module and through the C++ layer, each time in a process
of its own, the two alternating. Prints medians; run by python.sh.

    python_select.py BUILD_FOLDER WORK_FOLDER
"""

import os
import statistics
import subprocess
import sys
import time

NAMES = ["tarvo.xyz", "tarvo.intensity", "tarvo.class"]
ROUNDS, PROCESSES, BATCH = 4, 9, 100_000


def make(sample, database):
    """The points of a sample scan, with intensities in place of reflectances."""
    import numpy
    import qrb

    with qrb.open(sample) as source, qrb.create(
        database,
        primary=source.attributes["tarvo.xyz"],
        attributes=["tarvo.intensity", source.attributes["tarvo.class"]],
    ) as target, target.transaction("Copy") as transaction:
        names = ["tarvo.xyz", "tarvo.class", "tarvo.reflectance"]
        for batch in source.select("", names, batch=250_000):
            columns = dict(batch)
            steps = numpy.clip(columns.pop("tarvo.reflectance") * 100 + 5000, 0, 65535)
            transaction.insert({**columns, "tarvo.intensity": steps.astype("u2")})


def read(database, rounds):
    import qrb

    db = None
    for _ in range(rounds):
        begin = time.perf_counter()
        db = db or qrb.open(database)
        total = 0
        for batch in db.select("", NAMES, batch=BATCH):
            total += batch.count
        print(total, (time.perf_counter() - begin) * 1000)


def measured(command):
    ran = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True)
    lines = [line.split() for line in ran.stdout.splitlines()]
    assert {line[0] for line in lines} == {"1000000"}, lines
    times = [float(line[1]) for line in lines]
    return times[0], min(times[1:])


def main(build, work):
    os.environ["QRB_LIBRARY"] = library = os.path.join(build, "bin", "qrblib.so")
    sample, database = (os.path.join(work, name) for name in ("sample.qrbx", "select.qrbx"))
    if not os.path.exists(database):
        tool = os.path.join(build, "bin", "qrbtool")
        subprocess.run([tool, "sample", "--points", "1000000", "--overwrite", sample], check=True)
        make(sample, database)
    layer = [os.path.join(build, "bin", "bench_select"), library, database, str(ROUNDS), str(BATCH)]
    module = [sys.executable, __file__, "--read", database]
    times = [(measured(layer), measured(module)) for _ in range(PROCESSES)]
    print(f"{'':32}{'layer':>10}{'module':>10} ms{'ratio':>8}")
    for place, name in enumerate(["1000000 points, file opened", "  again"]):
        ours, theirs = (statistics.median(pair[which][place] for pair in times) for which in (0, 1))
        print(f"{name:32}{ours:10.1f}{theirs:10.1f} ms{theirs / ours:8.2f}")


if __name__ == "__main__":
    if sys.argv[1] == "--read":
        read(sys.argv[2], ROUNDS)
    else:
        main(sys.argv[1], sys.argv[2])
