#!/usr/bin/env python3
"""How long a text of 1,000 pages takes to print, with a watermark on each: bench/print_speed.py [PATH OF heron]

Works in a store of its own that is gone afterwards. Five seconds are the aim.
"""

import os
import pathlib
import resource
import subprocess
import sys
import tempfile
import time

PAGES, LINES = 1000, 60


def main():
    built = pathlib.Path(__file__).resolve().parent.parent / "build/release/bin/heron"
    heron = sys.argv[1] if len(sys.argv) > 1 else str(built)
    with tempfile.TemporaryDirectory(prefix="heron-bench-") as folder:
        environment = {**os.environ, "HERON_HOME": f"{folder}/home"}

        def run(*arguments):
            subprocess.run([heron, *arguments], env=environment, check=True, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)

        run("printer", "add", "Bench")
        text = pathlib.Path(folder, "long.txt")
        page = "\n".join(f"line {n:2} the quick brown fox jumps over the lazy dog, again and again" for n in range(LINES))
        text.write_text("\f".join([page] * PAGES))
        for path in ("488", "556"):
            began, used = time.perf_counter(), resource.getrusage(resource.RUSAGE_CHILDREN)
            run("print", "-p", "Bench", "-o", "Watermark_Use=1", "--path", path, str(text), "--out", f"{folder}/{path}")
            took, now = time.perf_counter() - began, resource.getrusage(resource.RUSAGE_CHILDREN)
            cpu = now.ru_utime + now.ru_stime - used.ru_utime - used.ru_stime
            sizes = {file.name: file.stat().st_size for file in pathlib.Path(folder, path).iterdir()}
            print(f"path {path}: {PAGES} pages in {took:.2f} s ({cpu:.2f} s of processor time), {sizes}")


if __name__ == "__main__":
    main()
