#!/usr/bin/env python3
"""The Python package against the C++ code it stands on.

1. job.history over 100,000 steps, against the same histories read by the
   C++ history benchmark (bench_results, which reads them through the
   library's own request routine) on the same job files, which that
   benchmark writes to the temporary directory.
2. job.range_graph of the sample job (900 places, 1000 steps), against the
   tool's `range`, which reads the same 900 histories through the C++
   interface.

    /usr/bin/python3 benchmarks/python/bench_python.py [BUILD_DIR]

BUILD_DIR (build/py unless given) must be configured with
-DTMRDAR_BUILD_BENCHMARKS=ON and have bench_results built.
"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build" / "py").resolve()
os.environ.setdefault("TMRDAR_LIBRARY", str(BUILD / "src" / "frame" / "exports" / "libtmrdar.so"))
sys.path.insert(0, str(ROOT / "python"))

import numpy as np  # noqa: E402

import tmrdar  # noqa: E402

# name in the C++ benchmark: the same request in Python
HISTORIES = {
    "displacement_V861": ("V861", ("displacement", 2), {"node": 2}),
    "element_force_V861": ("V861", ("element-force", 1), {"element": 1, "position": 2}),
    "guide_reaction_magnitude_V861": ("V861", ("guide-surface-reaction", 4), {"node": 1}),
    "displacement_V811": ("V811", ("displacement", 2), {"node": 2}),
    "element_force_V811": ("V811", ("element-force", 1), {"element": 1, "position": 2}),
}


def best_of(call, repeats):
    times = []
    for _ in range(repeats):
        start = time.perf_counter()
        call()
        times.append(time.perf_counter() - start)
    return min(times) * 1e3, float(np.median(times)) * 1e3


def cxx_benchmark(pattern):
    """The median real time in ms of each C++ history benchmark."""
    out = subprocess.run([str(BUILD / "benchmarks" / "results" / "bench_results"), f"--benchmark_filter={pattern}",
                          "--benchmark_format=json", "--benchmark_repetitions=5"],
                         capture_output=True, text=True, check=True).stdout
    rows = json.loads(out)["benchmarks"]
    return {r["run_name"].split("/")[-1]: r["real_time"] for r in rows if r.get("aggregate_name") == "median"}


def main():
    cxx = cxx_benchmark("HISTORY/(" + "|".join(HISTORIES) + ")$")
    folder = pathlib.Path(tempfile.gettempdir()) / "tmrdar_history_benchmark"
    print("job.history over 100,000 steps (ms; C++ the median of 5 runs, Python the best and median of 20)")
    print(f"{'request':32} {'C++':>8} {'best':>8} {'median':>8} {'median/C++':>10}")
    for name, (fmt, output, item) in HISTORIES.items():
        with tmrdar.open(folder / f"long-{fmt}") as job:
            assert job.dimensions.time_steps == 100_000
            buffer = np.empty(100_000, dtype=np.float32)
            job.history(*output, **item, out=buffer)
            best, median = best_of(lambda: job.history(*output, **item, out=buffer), 20)
            fresh, _ = best_of(lambda: job.history(*output, **item), 20)
        reference = cxx[name]
        print(f"{name:32} {reference:8.2f} {best:8.2f} {median:8.2f} {median / reference:6.2f}"
              f"   (a new array each call: {fresh:.2f})")

    sample = BUILD / "sample" / "riser"
    with tmrdar.open(sample) as job:
        job.range_graph("element-force", 1)
        best, median = best_of(lambda: job.range_graph("element-force", 1), 5)
    start = time.perf_counter()
    subprocess.run([str(BUILD / "src" / "tools" / "tmrdar"), "range", str(sample), "element-force", "1"],
                   capture_output=True, check=True)
    tool = (time.perf_counter() - start) * 1e3
    print("\nrange_graph of the sample job's element-force 1, 300 elements x 3 positions over 1000 steps:")
    print(f"  Python best {best:.0f} ms, median {median:.0f} ms; the tool's range command {tool:.0f} ms "
          "(the same 900 history reads through the C++ interface)")


if __name__ == "__main__":
    main()
