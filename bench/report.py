#!/usr/bin/env python3
"""Prints vela_bench's results: medians, ratios, goals and growth by workload, the Star Schema Benchmark, peak memory.

    report.py [--markdown] RESULT.json ...

The files are what vela_bench writes with --benchmark_format=json; several count as one run.
"""

import json
import math
import os
import re
import statistics
import sys

# Growth is fitted over numbers of rows from here on, and wants two sizes at least.
SMALLEST = 10_000
# What Vela's time may be of SQLite's, at 1,000,000 rows.
GOALS = {
    "bulk insert, values": 0.5,
    "bulk insert, texts": 0.25,
    "commit of one row, an index": 0.25,
    "read by row id": 0.4,
    "read by indexed integer": 0.5,
    "read by indexed string": 0.5,
    "filter by equality, no index": 0.03,
    "filter keeping 1 %": 0.08,
    "SUM, COUNT, AVG": 0.03,
    "LIKE '%word%'": 0.25,
    "GROUP BY, 7 groups": 0.03,
    "GROUP BY, N/10 groups": 0.05,
    "join, aggregate": 0.04,
    "join, aggregate, no index": 0.04,
    "join, N/2 rows": 0.15,
    "join of three tables": 0.04,
    "ORDER BY string": 0.25,
    "ORDER BY integer DESC": 0.12,
    "DISTINCT, 1,000 values": 0.04,
    "update all, commit": 0.5,
    "update by row id": 0.3,
    "delete half, commit": 0.25,
    "open, read by row id": 2,
    "open, read by row id, cold": 2,
    "create index on integer, commit": 0.5,
    "create index on string, commit": 0.5,
}
GOAL_ROWS = 1_000_000
# The exponent that Vela's time may grow with, by the beginning of the workload's name; 1.05 for all others.
GROWTH_GOALS = {"ORDER BY": 1.15, "read by": 0.05, "commit of one row": 0.05, "update by row id": 0.05,
                "open, read by row id": 0.05}
# In the order in which a database goes through them; "files" is what the files take, loaded.
MEMORY_STAGES = ("insert", "create index", "open and query", "update all", "commit of update",
                 "delete half, commit", "files")
# SQLite in other ways, beside its rollback journal and statement texts.
VARIANTS = {"sqlite": "", "sqlite_prepared": ", SQLite prepared", "sqlite_wal": ", SQLite WAL"}
STAR = "SSB "


def read_file(path):
    # Nothing is written when no workload has a name that was asked for.
    if os.path.getsize(path) == 0:
        return {"benchmarks": []}
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def read_runs(paths):
    """Seconds for one operation by (workload, engine, rows), a list each; rows of the answer by
    workload; bytes by (stage, rows); DuckDB's version, or None."""
    seconds, answers, memory, duckdb = {}, {}, {}, None
    for path in paths:
        content = read_file(path)
        duckdb = content.get("context", {}).get("duckdb", duckdb)
        # They may have taken turns.
        for run in sorted(content["benchmarks"], key=lambda run: (run.get("place", 0), run["family_index"])):
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
                answers[workload] = int(run["rows"])
    return seconds, answers, memory, duckdb


def time_text(seconds):
    for unit, factor in (("s", 1), ("ms", 1e3), ("us", 1e6)):
        value = seconds * factor
        if value >= 1 or unit == "us":
            return f"{value:.0f} {unit}" if value >= 100 else f"{value:#.3g} {unit}"


def ratio_text(ratio):
    return f"{ratio:.2f}" if ratio >= 0.1 else f"{ratio:.3f}"


def fitted_exponent(points):
    """The slope of the straight line nearest to the points (rows, seconds), both as logarithms."""
    logs = [(math.log(rows), math.log(seconds)) for rows, seconds in points]
    middle_x, middle_y = (statistics.mean(values) for values in zip(*logs))
    return (sum((x - middle_x) * (y - middle_y) for x, y in logs)
            / sum((x - middle_x) ** 2 for x, _ in logs))


def growth_cells(medians, workload, sizes):
    points = [(rows, medians[workload, "vela", rows]) for rows in sizes
              if rows >= SMALLEST and (workload, "vela", rows) in medians]
    if len(points) < 2:
        return ["", ""]
    goal = next((goal for start, goal in GROWTH_GOALS.items() if workload.startswith(start)), 1.05)
    exponent = fitted_exponent(points)
    return [f"{exponent:.2f}", f"{goal:.2f}" + (" missed" if round(exponent, 2) > goal else "")]


def ratio_cells(medians, workload, engine, rows):
    """An engine's time and Vela's in proportion to it."""
    vela, peer = medians.get((workload, "vela", rows)), medians.get((workload, engine, rows))
    return ["", ""] if vela is None or peer is None else [time_text(peer), ratio_text(vela / peer)]


def goal_cell(medians, workload, engine):
    goal = GOALS.get(workload) if engine == "sqlite" else None
    if goal is None or (workload, engine, GOAL_ROWS) not in medians:
        return ""
    ratio = medians[workload, "vela", GOAL_ROWS] / medians[workload, engine, GOAL_ROWS]
    return f"{goal:.2f}" + (" missed" if ratio > goal else "")


def workload_lines(medians, sizes, duckdb):
    """A line for each workload and SQLite's way of running it, as lists of cells."""
    workloads = list(dict.fromkeys((workload, engine) for workload, engine, _ in medians
                                   if engine in VARIANTS))
    for workload, engine in workloads:
        line = [workload + VARIANTS[engine]]
        for rows in sizes:
            vela = medians.get((workload, "vela", rows))
            line += ["" if vela is None else time_text(vela)]
            line += ratio_cells(medians, workload, engine, rows)
            if duckdb:
                line += ratio_cells(medians, workload, "duckdb" if engine == "sqlite" else "", rows)
        yield (line + [goal_cell(medians, workload, engine)]
               + (growth_cells(medians, workload, sizes) if engine == "sqlite" else ["", ""]))


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
    print()


def engine_header(rows_text, duckdb):
    return [f"Vela {rows_text}".strip(), "SQLite", "ratio"] + (["DuckDB", "ratio"] if duckdb else [])


def print_workloads(medians, duckdb, markdown):
    sizes = sorted({rows for _, _, rows in medians})
    header = ["one operation"]
    for rows in sizes:
        header += engine_header(f"{rows:,}", duckdb)
    print_table(header + ["goal", "growth", "at most"], workload_lines(medians, sizes, duckdb), markdown)


def star_line(medians, name, rows, workload, duckdb):
    line = [name, rows, time_text(medians[workload])]
    for engine in ("sqlite", "duckdb") if duckdb else ("sqlite",):
        peer = medians.get((workload[0], engine, workload[2]))
        line += ["", ""] if peer is None else [time_text(peer), ratio_text(medians[workload] / peer)]
    return line


def print_star(medians, answers, duckdb, markdown):
    for scale_rows in sorted({rows for _, _, rows in medians}):
        queries = [workload for workload, engine, rows in medians
                   if (engine, rows) == ("vela", scale_rows)]
        every = "all of them"
        for engine in {engine for _, engine, _ in medians}:
            medians[every, engine, scale_rows] = sum(medians[query, engine, scale_rows]
                                                     for query in queries)
        lines = [star_line(medians, query, f"{answers[query]:,}" if query in answers else "",
                           (query, "vela", scale_rows), duckdb) for query in queries + [every]]
        header = [f"Star Schema Benchmark, {scale_rows:,} lineorders", "rows"]
        print_table(header + engine_header("", duckdb), lines, markdown)


def print_memory(memory, markdown):
    sizes = sorted({rows for _, rows in memory})
    header = ["Vela's peak memory, MB"]
    for rows in sizes:
        header += [f"{rows:,} rows", "times the files"]
    lines = []
    for stage in MEMORY_STAGES:
        line = [stage if stage != "files" else "(size of the files)"]
        for rows in sizes:
            line += [f"{memory[stage, rows] / 1e6:.1f}",
                     f"{memory[stage, rows] / memory['files', rows]:.2f}"]
        lines.append(line)
    print_table(header, lines, markdown)


def main(arguments):
    markdown = "--markdown" in arguments
    seconds, answers, memory, duckdb = read_runs([path for path in arguments if path != "--markdown"])
    medians = {key: statistics.median(values) for key, values in seconds.items()}
    star = {key: median for key, median in medians.items() if key[0].startswith(STAR)}
    shop = {key: median for key, median in medians.items() if key not in star}
    print(f"DuckDB {duckdb}, one thread" if duckdb else "DuckDB is left out: its library was not given.")
    print()
    if shop:
        print_workloads(shop, duckdb, markdown)
    if star:
        print_star(star, answers, duckdb, markdown)
    if memory:
        print_memory(memory, markdown)


main(sys.argv[1:])
