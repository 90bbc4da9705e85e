#!/usr/bin/env python3
"""Prints vela_bench's results: medians, ratios and growth by workload, then Vela's peak memory.

    report.py [--markdown] RESULT.json ...

The files are what vela_bench writes with --benchmark_format=json; several count as one run.
"""

import json
import math
import re
import statistics
import sys

# Growth is measured between these numbers of rows.
SMALL, LARGE = 10_000, 1_000_000
# In the order in which a database goes through them; "files" is what the files take, loaded.
MEMORY_STAGES = ("insert", "create indexes", "open and query", "ORDER BY", "update all",
                 "commit of update", "delete half, commit", "files")


def read_runs(paths):
    """Seconds for one operation by (workload, engine, rows), a list each; bytes by (stage, rows)."""
    seconds, memory = {}, {}
    for path in paths:
        with open(path, encoding="utf-8") as file:
            runs = json.load(file)["benchmarks"]
        # They took turns at random; the families are numbered in the order of the table.
        for run in sorted(runs, key=lambda run: run["family_index"]):
            if run["run_type"] != "iteration":
                continue
            if run.get("error_occurred"):
                sys.exit(f"report: {run['name']}: {run['error_message']}")
            workload, engine, rows = re.match(r"(.*)/(\w+)/(\d+)/", run["run_name"]).groups()
            if workload == "memory":
                memory.update({(stage, int(rows)): run[stage] for stage in MEMORY_STAGES})
            else:
                one = run["real_time"] / 1e6 / run["operations"]
                seconds.setdefault((workload, engine, int(rows)), []).append(one)
    return seconds, memory


def time_text(seconds):
    for unit, factor in (("s", 1), ("ms", 1e3), ("us", 1e6)):
        value = seconds * factor
        if value >= 1 or unit == "us":
            return f"{value:.0f} {unit}" if value >= 100 else f"{value:#.3g} {unit}"


def growth_text(medians, workload):
    small, large = ((workload, "vela", rows) in medians for rows in (SMALL, LARGE))
    if not small or not large:
        return ""
    ratio = medians[workload, "vela", LARGE] / medians[workload, "vela", SMALL]
    return f"{math.log(ratio) / math.log(LARGE / SMALL):.2f}"


def workload_lines(medians, sizes):
    """A line for each workload and SQLite's way of running it, as lists of cells."""
    workloads = list(dict.fromkeys((workload, engine) for workload, engine, _ in medians
                                   if engine != "vela"))
    for workload, engine in workloads:
        line = [workload + (", SQLite prepared" if engine == "sqlite_prepared" else "")]
        for rows in sizes:
            vela = medians.get((workload, "vela", rows))
            peer = medians.get((workload, engine, rows))
            if vela is None or peer is None:
                line += ["", "", ""]
            else:
                line += [time_text(vela), time_text(peer), f"{vela / peer:.2f}"]
        yield line + [growth_text(medians, workload)]


def print_table(header, lines, markdown):
    lines = [header] + list(lines)
    widths = [max(len(line[i]) for line in lines) for i in range(len(header))]
    for number, line in enumerate(lines):
        cells = [cell.ljust(width) if i == 0 else cell.rjust(width)
                 for i, (cell, width) in enumerate(zip(line, widths))]
        print("| " + " | ".join(cells) + " |" if markdown else "  ".join(cells))
        if number == 0 and markdown:
            print("|" + "|".join("-" * (width + 1) + ("-" if i == 0 else ":")
                                 for i, width in enumerate(widths)) + "|")
        elif number == 0:
            print("  ".join("-" * width for width in widths))


def print_workloads(seconds, markdown):
    medians = {key: statistics.median(values) for key, values in seconds.items()}
    sizes = sorted({rows for _, _, rows in medians})
    header = ["one operation"]
    for rows in sizes:
        header += [f"Vela {rows:,}", "SQLite", "ratio"]
    print_table(header + ["growth"], workload_lines(medians, sizes), markdown)


def print_memory(memory, markdown):
    sizes = sorted({rows for _, rows in memory})
    header = ["Vela's peak memory, MB"]
    for rows in sizes:
        header += [f"{rows:,} rows", "bytes a row"]
    lines = []
    for stage in MEMORY_STAGES:
        line = [stage if stage != "files" else "(size of the files)"]
        for rows in sizes:
            line += [f"{memory[stage, rows] / 1e6:.1f}", f"{memory[stage, rows] / rows:.0f}"]
        lines.append(line)
    print_table(header, lines, markdown)


def main(arguments):
    markdown = "--markdown" in arguments
    seconds, memory = read_runs([path for path in arguments if path != "--markdown"])
    if seconds:
        print_workloads(seconds, markdown)
    if seconds and memory:
        print()
    if memory:
        print_memory(memory, markdown)


main(sys.argv[1:])
