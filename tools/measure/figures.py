#!/usr/bin/python3
"""Prints what was measured beside what is allowed, and which of it holds. Ends with 1 if something does not.

usage: figures.py PROGRAM BARE_WINDOW CORE_BENCHMARKS [ROUNDS]
"""
import json
import statistics
import subprocess
import sys
import tempfile

from windows import TOOLS, Program

IDLE_SECONDS = 40  # some timers come late
PRESSES = 5

missed = []


def row(what, budget, unit, value, more=""):
    """A line of the table: the value must not be above the budget."""
    holds = value <= budget
    if not holds:
        missed.append(what)
    print(f"{what:44s} {f'{budget:g} {unit}':>12s} {f'{value:.3g} {unit}':>12s}"
          f"  {'holds' if holds else 'MISSED':6s}  {more}", flush=True)


def ratio(ours, theirs):
    """The median of the ratios of pairs that were measured one after the other."""
    return statistics.median(a / b for a, b in zip(ours, theirs))


def beside_bare_window(program, bare, rounds):
    """Start and memory of both in turn, A B A B ... The first pair warms the caches."""
    samples = {program: [], bare: []}
    for _ in range(rounds + 1):
        for command, kept in samples.items():
            running = Program([command])
            kept.append((running.started, *running.memory()))
            running.close()
    ours, theirs = (list(zip(*kept[1:])) for kept in samples.values())
    medians = [f"{statistics.median(a):.1f} : {statistics.median(b):.1f}" for a, b in zip(ours, theirs)]
    row("start until the launcher is on the screen", 1.25, "x", ratio(ours[0], theirs[0]), medians[0] + " ms")
    row("memory at rest, resident", 1.2, "x", ratio(ours[1], theirs[1]), medians[1] + " MiB")
    row("memory at rest, proportional", 1.2, "x", ratio(ours[2], theirs[2]), medians[2] + " MiB")
    return [statistics.median(column) for column in theirs[1:]]


def tools(program, bare_memory, rounds):
    for tool in TOOLS:
        openings, presses = [], []
        for _ in range(rounds):
            running = Program([program])
            window, took = running.open(tool)
            openings.append(took)
            presses += [running.press(window, tool) for _ in range(PRESSES)]
            running.close()
        presses = [took for took in presses if took is not None]
        if not presses:
            sys.exit(f"no press in {tool} gave a text")
        row(f"first opening, {tool}", 50, "ms", statistics.median(openings),
            f"worst of {rounds}: {max(openings):.1f}")
        row(f"press to text, {tool}", 5, "ms", statistics.median(presses),
            f"worst of {len(presses)}: {max(presses):.1f}")
    running = Program([program])
    # The counter brings the generator with it.
    windows = {tool: running.open(tool)[0] for tool in list(TOOLS)[1:]}
    for name, size, bare in zip(("resident", "proportional"), running.memory(), bare_memory):
        row(f"memory with all tools open, {name}", 1.45, "x", size / bare, f"{size:.1f} : {bare:.1f} MiB")
    for tool, window in windows.items():
        running.press(window, tool)
    row(f"wake-ups in {IDLE_SECONDS} s, all tools used", 0, "", running.idle_wake_ups(IDLE_SECONDS))
    running.close()


def cores(benchmarks):
    with tempfile.NamedTemporaryFile() as report:
        subprocess.run([benchmarks, f"--benchmark_out={report.name}", "--benchmark_out_format=json",
                        "--benchmark_repetitions=5"],
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        found = json.load(report)["benchmarks"]
    scale = {"ns": 1e-6, "us": 1e-3, "ms": 1}
    times = {each["run_name"]: each["real_time"] * scale[each["time_unit"]]
             for each in found if each.get("aggregate_name") == "median"}
    notations = [took for name, took in times.items() if name.startswith("FindNotation")]
    small, large = times["LoadingWeapons/1000"], times["LoadingWeapons/10000"]
    row("finding a notation", 1, "us", max(notations) * 1e3, f"the slowest of {len(notations)} ranges")
    row("a weapon with its sheet", 20, "us", times["WeaponWithSheet"] * 1e3)
    row("loading 1,000 weapons", 50, "ms", small)
    row("loading 10,000 weapons, beside 1,000", 12, "x", large / small, f"{large:.1f} : {small:.1f} ms")
    row("saving 100 questions", 100, "ms", times["SaveHundredQuestions"])


def main(program, bare, benchmarks, rounds=15):
    rounds = int(rounds)
    print(f"{'What':44s} {'Budget':>12s} {'Measured':>12s}")
    bare_memory = beside_bare_window(program, bare, rounds)
    tools(program, bare_memory, max(1, rounds // 3))
    cores(benchmarks)
    print(f"missed: {', '.join(missed)}" if missed else "every budget holds")
    sys.exit(1 if missed else 0)


main(*sys.argv[1:])
