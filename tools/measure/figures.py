#!/usr/bin/python3
"""Prints what was measured beside what is allowed, and which of it holds. Ends with 1 if something does not.

usage: figures.py PROGRAM BARE_WINDOW CORE_BENCHMARKS [ROUNDS]
       figures.py PROGRAM.exe BARE_WINDOW.exe WINE [ROUNDS]
"""
import json
import pathlib
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


def beside_bare_window(program, bare, start, memory, rounds):
    """Start and memory of both in turn, A B A B ... The first pair warms the caches."""
    samples = [], []
    for _ in range(rounds + 1):
        for command, kept in zip((program, bare), samples):
            running = Program(command)
            kept.append((running.started, *running.memory(memory)))
            running.close()
    ours, theirs = (list(zip(*kept[1:])) for kept in samples)
    budgets = {"start until the launcher is on the screen": (start, "ms")}
    budgets |= {f"memory at rest, {kind}": (budget, "MiB") for kind, budget in memory.items()}
    for (name, (budget, unit)), a, b in zip(budgets.items(), ours, theirs):
        row(name, budget, "x", ratio(a, b), f"{statistics.median(a):.1f} : {statistics.median(b):.1f} {unit}")
    return [statistics.median(column) for column in theirs[1:]]


def tools(program, opening, press, rounds):
    for tool in TOOLS:
        openings, presses = [], []
        for _ in range(rounds):
            running = Program(program)
            window, took = running.open(tool)
            openings.append(took)
            presses += [running.press(window, tool) for _ in range(PRESSES)]
            running.close()
        presses = [took for took in presses if took is not None]
        if not presses:
            sys.exit(f"no press in {tool} gave a text")
        row(f"first opening, {tool}", opening, "ms", statistics.median(openings),
            f"worst of {rounds}: {max(openings):.1f}")
        row(f"press to text, {tool}", press, "ms", statistics.median(presses),
            f"worst of {len(presses)}: {max(presses):.1f}")


def all_tools(program, bare_memory, memory):
    running = Program(program)
    # The counter brings the generator with it.
    windows = {tool: running.open(tool)[0] for tool in list(TOOLS)[1:]}
    for name, size, bare in zip(memory, running.memory(memory), bare_memory):
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


def main(program, bare, helper, rounds=15):
    rounds = int(rounds)
    print(f"{'What':44s} {'Budget':>12s} {'Measured':>12s}")
    if program.endswith(".exe"):
        row("size of the program", 2.5, "MB", pathlib.Path(program).stat().st_size / 1e6)
        memory = {"Rss": 1.4, "Private_Dirty": 2}
        beside_bare_window([helper, program], [helper, bare], 1.3, memory, rounds)
        tools([helper, program], 60, 10, max(1, rounds // 3))
        running = Program([helper, program])
        row(f"wake-ups in {IDLE_SECONDS} s, idle", 0, "", running.idle_wake_ups(IDLE_SECONDS))
        running.close()
    else:
        memory = {"Rss": 1.2, "Pss": 1.2}
        bare_memory = beside_bare_window([program], [bare], 1.25, memory, rounds)
        tools([program], 50, 5, max(1, rounds // 3))
        all_tools([program], bare_memory, memory)
        cores(helper)
    print(f"missed: {', '.join(missed)}" if missed else "every budget holds")
    sys.exit(1 if missed else 0)


main(*sys.argv[1:])
