#!/usr/bin/env python3
"""Writes docs/performance.md from what ./measure left: RESULTS_FOLDER GOALS OUTPUT."""
import collections
import fnmatch
import json
import os
import pathlib
import platform
import re
import statistics
import subprocess
import sys

OURS = "brcore8"
UNITS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
Goal = collections.namedtuple("Goal", "workload against ratio note")


def read_goals(path):
    goals = []
    for line in pathlib.Path(path).read_text().splitlines():
        if line and not line.startswith("#"):
            workload, against, ratio, *note = line.split("\t")
            goals.append(Goal(workload, against, float(ratio), note[0] if note else ""))
    return goals


def read_results(folder):
    """Seconds of every repetition, by workload and contestant; seconds an item by size."""
    times = collections.defaultdict(lambda: collections.defaultdict(list))
    growth = collections.defaultdict(lambda: collections.defaultdict(list))
    for path in sorted(pathlib.Path(folder).glob("*.json")):
        for run in json.loads(path.read_text())["benchmarks"]:
            if run["run_type"] != "iteration":
                continue
            if run.get("error_occurred"):
                sys.exit(f"{run['name']}: {run['error_message']}")
            workload, contestant = run["run_name"].split(":", 1)
            contestant, *argument = contestant.split("/")
            clock = "real_time" if "real_time" in argument else "cpu_time"
            seconds = run[clock] * UNITS[run["time_unit"]]
            if workload.startswith("growth/"):
                work = run.get("items_per_second") or run["bytes_per_second"]
                growth[workload][int(argument[0])].append(1 / work)
            else:
                times[workload][contestant].append(seconds)
    for path in sorted(pathlib.Path(folder).glob("*.tsv")):
        for line in path.read_text().splitlines():
            workload, contestant, microseconds = line.split("\t")
            times[workload][contestant].append(int(microseconds) * 1e-6)
    return times, growth


def shown(seconds):
    for unit in ("s", "ms", "us", "ns"):
        if seconds >= UNITS[unit] or unit == "ns":
            return f"{seconds / UNITS[unit]:.3g} {unit}".replace("us", "µs")
    return ""


def goal_of(goals, workload):
    for goal in goals:
        if fnmatch.fnmatchcase(workload, goal.workload):
            return goal
    return None


def row_of(workload, contestants, goal):
    """The row's cells, and whether the goal is met (None: there is none to meet)."""
    medians = {name: statistics.median(runs) for name, runs in contestants.items()}
    ours = medians.pop(OURS, None)
    peers = ", ".join(f"{name} {shown(time)}" for name, time in sorted(medians.items(),
                                                                     key=lambda item: item[1]))
    if ours is None or not medians:
        return [workload, shown(ours) if ours else "-", peers, "", "", ""], None
    # What does less than the task, a limit, stands in parentheses.
    able = [name for name in medians if not name.startswith("(")]
    fastest = min(able or medians, key=medians.get)
    against = goal.against if goal and goal.against != "fastest" else fastest
    if against not in medians:
        sys.exit(f"{workload}: nothing was measured for {against}")
    ratio = ours / medians[against]
    cells = [workload, shown(ours), peers, against, f"{ratio:.2f}", f"{goal.ratio:g}" if goal else ""]
    return cells, ratio <= goal.ratio * 1.005 if goal else None


def table(lines, head, rows):
    lines.append("| " + " | ".join(head) + " |")
    lines.append("|" + "---|" * len(head))
    lines.extend("| " + " | ".join(row) + " |" for row in rows)
    lines.append("")


def machine():
    """What was measured on; the load is that of the last quarter of an hour."""
    cpu = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    compiler = subprocess.run(["g++", "--version"], capture_output=True, text=True, check=True)
    return (f"{cpu.group(1) if cpu else platform.processor()}, {platform.system()} "
            f"{platform.release().split('-')[0]}, {compiler.stdout.splitlines()[0]}; load {os.getloadavg()[2]:.0f} "
            f"on {os.cpu_count()} processors")


def compared(lines, times, goals):
    """The tables of workloads; returns what is missed."""
    missed = []
    groups = sorted({workload.split("/")[0] for workload in times})
    for group in groups:
        lines += [f"## {group}", ""]
        rows = []
        for workload in sorted(w for w in times if w.split("/")[0] == group):
            goal = goal_of(goals, workload)
            cells, met = row_of(workload, times[workload], goal)
            rows.append(cells + ["" if met is None else "yes" if met else "**no**"])
            if met is False:
                missed.append((workload, cells[4], goal))
        table(lines, ["workload", "BRCORE8", "peers", "compared with", "ratio", "goal", "met"], rows)
    return missed


def write(output, times, growth, goals):
    lines = ["# How fast it is", "",
             "Written by `./measure`, which installs the peers, runs every workload at least five times, its",
             "contestants in turn, and takes medians. The ratio is our time over that of the peer compared with,",
             "the fastest one unless the goal names another; below 1 is faster. A limit, which does less than the",
             "task, stands in parentheses beside the peers. Ratios hold elsewhere, times do not. Times are the",
             "processor's, but the clock's where a workload waits for the disk, uses several threads, or is a whole",
             "run of the command and of other programs (`..._process`, output thrown away) or 300 of them (`startup/process`).", "",
             f"Measured on: {machine()}.", ""]
    if os.getloadavg()[2] > os.cpu_count():
        lines += ["Other work had the processors meanwhile: rows that go by the clock are to be measured again.", ""]
    missed = compared(lines, times, goals)
    if growth:
        lines += ["## Growth", "", "Time for one item, or one byte, at three sizes: it stays the same where costs are linear.", ""]
        rows = []
        for workload, sizes in sorted(growth.items()):
            cells = [f"{size}: {shown_small(statistics.median(runs))}" for size, runs in sorted(sizes.items())]
            rows.append([workload.removeprefix("growth/")] + cells)
        table(lines, ["workload", "small", "medium", "large"], rows)
    if missed:
        lines += ["## What holds the rest back", ""]
        lines += [f"- `{workload}` ({ratio}, goal {goal.ratio:g}): {goal.note or 'not looked into yet.'}"
                  for workload, ratio, goal in missed]
        lines.append("")
    waiting = [g.workload for g in goals if not fnmatch.filter(times, g.workload)]
    if waiting:
        lines += ["## Not measured yet", "", ", ".join(f"`{name}`" for name in waiting) + ".", ""]
    pathlib.Path(output).write_text("\n".join(lines))


def shown_small(seconds):
    return f"{seconds * 1e9:.3g} ns"


if __name__ == "__main__":
    results, goals_file, target = sys.argv[1:]
    all_times, all_growth = read_results(results)
    write(target, all_times, all_growth, read_goals(goals_file))
