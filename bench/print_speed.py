#!/usr/bin/env python3
"""How long printing takes: bench/print_speed.py [PATH OF heron] [PDF...]

A text of 1,000 pages with a watermark on each (five seconds are the aim), lines of one and five megabytes (five times as
long, no more), and each PDF that is named (half a second for 100 pages of text). Works in a store of its own that is gone
afterwards.
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
            subprocess.run([heron, *map(str, arguments)], env=environment, check=True, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)

        def measure(name, *arguments):
            out = pathlib.Path(folder, f"job{name}".replace("/", "_"))
            began, used = time.perf_counter(), resource.getrusage(resource.RUSAGE_CHILDREN)
            run("print", "-p", "Bench", *arguments, "--out", out)
            took, now = time.perf_counter() - began, resource.getrusage(resource.RUSAGE_CHILDREN)
            cpu = now.ru_utime + now.ru_stime - used.ru_utime - used.ru_stime
            size = (out / "pages.pdf").stat().st_size
            print(f"{name}: {took:.2f} s ({cpu:.2f} s of processor time), pages.pdf {size} bytes")

        run("printer", "add", "Bench")
        text = pathlib.Path(folder, "long.txt")
        page = "\n".join(f"line {n:2} the quick brown fox jumps over the lazy dog, again and again" for n in range(LINES))
        text.write_text("\f".join([page] * PAGES))
        for path in ("488", "556"):
            measure(f"{PAGES} pages of text, path {path}", "-o", "Watermark_Use=1", "--path", path, text)
        for megabytes in (1, 5):
            line = pathlib.Path(folder, f"line{megabytes}.txt")
            line.write_text("x" * megabytes * 1024 * 1024)
            measure(f"a line of {megabytes} MiB", line)
        for pdf in sys.argv[2:]:
            measure(pdf, pdf)
            measure(f"{pdf} with a watermark", "-o", "Watermark_Use=1", pdf)
        print(f"most memory of a run: {resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024} MiB")


if __name__ == "__main__":
    main()
