#!/usr/bin/env python3
"""Runs a benchmark program and prints each backend figure as a ratio to the
references measured in the same run.

usage: bench/ratios.py build/bench/unary_bench
"""
import json
import subprocess
import sys


def main():
    prog = sys.argv[1]
    out = subprocess.run([prog, "--benchmark_format=json", "--benchmark_min_time=0.2"],
                         check=True, capture_output=True, text=True).stdout
    rows = {}
    for b in json.loads(out)["benchmarks"]:
        name, _, size = b["name"].rpartition("/")
        rows[(name, int(size))] = b
    names = sorted({n for n, _ in rows})
    sizes = sorted({s for _, s in rows})
    print(f"{'benchmark':40s} " + " ".join(f"{s:>14d}" for s in sizes))
    for n in names:
        cells = []
        for s in sizes:
            b = rows.get((n, s))
            if not b:
                cells.append(f"{'-':>14s}")
                continue
            ns = b["real_time"]  # nanoseconds, the default unit
            gbs = b.get("bytes_per_second", 0) / 1e9
            cells.append(f"{ns:9.0f}ns {gbs:4.1f}")
        print(f"{n:40s} " + " ".join(cells))
    # Ratios of each backend row to the references of its family.
    print()
    for n in names:
        if not n.endswith("Backend") and not n.endswith("Export"):
            continue
        family = n.split("/")[-1]
        for suffix in ("Backend", "Export"):
            if family.endswith(suffix):
                stem = family[: -len(suffix)]
        for s in sizes:
            b = rows.get((n, s))
            if not b:
                continue
            parts = []
            for ref in ("Plain", "Native", "Backend"):
                for m in names:
                    if m.split("/")[-1] == stem + ref and m != n and (m, s) in rows:
                        parts.append(f"{ref.lower()}/this {rows[(m, s)]['real_time'] / b['real_time']:.2f}")
            mc = rows.get(("Memcpy64", s))
            if mc and "bytes_per_second" in b:
                parts.append(f"this/memcpy bandwidth {b['bytes_per_second'] / mc['bytes_per_second']:.2f}")
            print(f"{family:20s} {s:>9d}: " + ", ".join(parts))


if __name__ == "__main__":
    main()
