#!/usr/bin/env python3
"""Measures the project's figures and prints them as one table: run.py [--brief].

Each figure compares two readings. Runs that belong together take turns, A B C A B C ..., each in a process of its own.
Only readings of the same round are compared, because a busy machine changes its speed from second to second. The result
is the median over the rounds, so it may differ from the quotient of the two medians shown. The full form also draws a
picture. The brief form runs each program once, to see that all of them work; its numbers mean little. A missed target
isn't a failure; a program that fails is.
"""

import argparse
import datetime
import json
import os
import pathlib
import platform
import statistics
import subprocess
import sys
from typing import Callable, NamedTuple, Optional

FOLDER = pathlib.Path(__file__).resolve().parent
BUILD = FOLDER.parent / "build" / "bench"
TEXTS = BUILD / "texts"
RIVALS = {"parse_nlohmann": "nlohmann", "parse_jsoncpp": "jsoncpp", "parse_rapidjson": "RapidJSON",
          "parse_simdjson": "simdjson"}
DRAWN = {"parse_docproducts": "docproducts", "copy_value": "copying the Value", **RIVALS}
DRAWN_COUNTS = (10, 100, 1000, 5000, 20_000, 100_000)


class Run(NamedTuple):
    """One benchmark of a program. If the program has only one, it needn't be named."""
    program: str
    arguments: tuple
    benchmark: str = ""


class Reading(NamedTuple):
    """A field of a run's report, a time in nanoseconds or a number of bytes, divided by `per`."""
    run: Run
    field: str = "cpu_time"
    per: int = 1


class Target(NamedTuple):
    """How two readings are compared, and what the result must be."""
    words: str
    compare: Callable[[float, float], float]
    is_met: Optional[Callable[[float], bool]]
    form: str = "{:.2f} times"


class Figure(NamedTuple):
    name: str
    ours: Reading
    against: str
    theirs: Reading
    target: Target


class Group(NamedTuple):
    """Figures whose runs take turns, and readings for the picture alone, whose runs join in.

    The commands of `same_output` must print the same bytes, or the figures mean nothing.
    """
    name: str
    figures: list
    in_brief: bool = True
    same_output: tuple = ()
    drawn: tuple = ()


def speed(words, is_met):
    return Target(words, lambda ours, theirs: theirs / ours, is_met, "{:.2f} times as fast")


def at_most(times):
    return Target(f"at most {times:g} times", lambda ours, theirs: ours / theirs, lambda measured: measured <= times)


def as_fast(times):
    return speed(f"at least {times:g} times as fast", lambda measured: measured >= times)


def at_most_more(amount, unit, nanoseconds):
    return Target(f"at most {amount} {unit} more", lambda ours, theirs: (ours - theirs) / nanoseconds,
                  lambda measured: measured <= amount, "{:+.2f} " + unit)


FASTER = speed("faster", lambda measured: measured > 1)
SHOWN = speed("-", None)


def on_text(program, text):
    return Reading(Run(program, (TEXTS / f"{text}.json",)))


def per_product(program, count):
    return on_text(program, f"products-{count}")._replace(per=count)


def on_installation(benchmark):
    return Reading(Run("library", (TEXTS / "install-5000",), benchmark))


def against_rival(name, text, rival, target):
    return Figure(name, on_text("parse_docproducts", text), RIVALS[rival], on_text(rival, text), target)


def parse_figures(count, copying, nlohmann, jsoncpp):
    """The readers on a catalogue. RapidJSON and simdjson build a DOM of another kind and have no target."""
    text, name = f"products-{count}", f"parse {count:,} products"
    return [
        Figure(name, on_text("parse_docproducts", text), "copying the Value", on_text("copy_value", text),
               at_most(copying)),
        against_rival(name, text, "parse_nlohmann", as_fast(nlohmann)),
        against_rival(name, text, "parse_jsoncpp", as_fast(jsoncpp)),
        against_rival(name, text, "parse_rapidjson", SHOWN),
        against_rival(name, text, "parse_simdjson", SHOWN),
    ]


def picture_group(count):
    return Group(f"{count:,} products, for the picture", [], in_brief=False,
                 drawn=tuple(per_product(program, count) for program in DRAWN))


def shape(name, text, target):
    return Group(name, [against_rival(f"parse {name}", text, "parse_nlohmann", target)])


def heap_group(count, in_brief=True):
    run = Run("heap", (TEXTS / f"products-{count}.json",), "heap")
    name = f"heap at the peak, {count:,} products"
    figure = Figure(name, Reading(run, "peak_bytes"), "text and a copy of the tree", Reading(run, "kept_bytes"),
                    at_most(1.1))
    return Group(name, [figure], in_brief)


def check_group(count, times, in_brief=True):
    """The command's check, without looking for files, against the library's reader."""
    def reading(program, benchmark, *field):
        return Reading(Run(program, (TEXTS / f"products-{count}.json",), benchmark), *field)

    name = f"check, {count:,} products"
    against = "DocSetJsonParser::parse"
    return Group(name, [
        Figure(name, reading("check", "check"), against, reading("check", "parse"), at_most(times)),
        Figure(f"{name}: heap at the peak", reading("heap", "check", "peak_bytes"), against,
               reading("heap", "parseFile", "peak_bytes"), at_most(2)),
    ], in_brief)


def library_group(name, benchmark, against, theirs, times):
    return Group(name, [Figure(name, on_installation(benchmark), against, theirs, at_most(times))])


def statement_group(name, benchmark, against, theirs, nanoseconds):
    return Group(name, [Figure(name, Reading(Run("statements", (), benchmark)), against,
                               Reading(Run("statements", (), theirs)), at_most_more(nanoseconds, "ns", 1))])


def whole_process(*command):
    return Reading(Run("process", command), "real_time")


EMPTY_PROGRAM = whole_process(BUILD / "bench" / "empty_program")


def list_group(count, in_brief=True, against_empty=()):
    name, root = f"docproducts list, {count:,} products", TEXTS / f"install-{count}"
    command = whole_process(BUILD / "app" / "docproducts", "list", "--install-root", root)
    bare = whole_process(BUILD / "bench" / "bare_list", root)
    figures = [Figure(name, command, "2 parses, stat, and the table", bare, at_most(1.3)),
               *(Figure(name, command, "empty program", EMPTY_PROGRAM, target) for target in against_empty)]
    return Group(name, figures, in_brief, same_output=(command.run.arguments, bare.run.arguments))


GROUPS = [
    Group("100 products", parse_figures(100, copying=1.9, nlohmann=2.3, jsoncpp=2.5)),
    Group("5,000 products", parse_figures(5000, copying=1.7, nlohmann=2.2, jsoncpp=2.5)),
    Group("100,000 products", [
        *parse_figures(100_000, copying=1.3, nlohmann=1.7, jsoncpp=1.7),
        Figure("parse, per product of 100,000", per_product("parse_docproducts", 100_000),
               "per product of 1,000", per_product("parse_docproducts", 1000), at_most(2.5)),
    ], in_brief=False),
    picture_group(10),
    picture_group(1000),
    picture_group(20_000),
    shape("one long string", "long-string", FASTER),
    shape("short numbers", "short-numbers", FASTER),
    shape("17-digit numbers", "long-numbers", FASTER),
    shape("typed arrays, type first", "typed-arrays", FASTER),
    shape("100,000 keys, falling", "falling-keys", FASTER),
    shape("message feed", "message-feed", FASTER),
    shape("map", "outlines", FASTER),
    shape("[[1],[2],...]", "small-arrays", SHOWN),
    shape("typed arrays, data first", "typed-arrays-late", SHOWN),
    heap_group(100),
    heap_group(5000),
    heap_group(100_000, in_brief=False),
    library_group("DocSetJsonParser::parse", "parseFile", "reading, and parse of the text",
                  on_text("read_and_parse", "install-5000/help/docset"), 1.25),
    library_group("building a DocProductCollector", "buildCollector", "DocSetJsonParser::parse, and stat",
                  on_installation("parseAndStat"), 1.25),
    library_group("warm getDocProductCache", "getDocProductCache", "3 locks, 2 paths, 1 pointer",
                  on_installation("lockCompareAndCopy"), 1.3),
    library_group("getProductInfo", "getProductInfo", "look-up in a hash map", on_installation("findInMap"), 1.15),
    library_group("warm getDocroot", "getDocroot", "lock and copy of a path", on_installation("copyPath"), 1.3),
    statement_group("diagnostic, level off", "diagnosticOff", "empty loop", "emptyLoop", 1),
    statement_group("trace scope, level off", "traceOff", "std::uncaught_exceptions", "uncaughtExceptions", 3),
    check_group(5000, times=4),
    check_group(100_000, times=5, in_brief=False),
    list_group(100, against_empty=(at_most(2), at_most_more(5, "ms", 1e6))),
    list_group(5000),
    list_group(100_000, in_brief=False),
]


def say(text):
    print(text, file=sys.stderr, flush=True)


def program_path(program):
    return BUILD / "bench" / program


def is_left_out(reading):
    """True for a reading of a rival that wasn't installed when the programs were built."""
    program = reading.run.program
    return program in RIVALS and not program_path(program).exists()


def report_of(run, min_time):
    """Google Benchmark's report on one run. Exits if the run fails."""
    selected = f"^{run.benchmark}(/iterations:1)?$" if run.benchmark else "."
    command = [program_path(run.program), *run.arguments, f"--benchmark_filter={selected}",
               "--benchmark_format=json", f"--benchmark_min_time={min_time}"]
    done = subprocess.run(command, capture_output=True, text=True)
    report = json.loads(done.stdout) if done.returncode == 0 else {"benchmarks": []}
    results = report["benchmarks"]
    if len(results) != 1 or "error_message" in results[0]:
        sys.exit(f"failed: {' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return report


def output_of(command):
    done = subprocess.run(command, capture_output=True)
    if done.returncode != 0:
        sys.exit(f"failed: {' '.join(map(str, command))}\n{done.stderr.decode()}")
    return done.stdout


def require_same_output(group):
    if len(set(map(output_of, group.same_output))) > 1:
        sys.exit(f"failed: {group.name}: the programs print different bytes")


def take_turns(readings, rounds, min_time):
    """All reports of each run of the readings. The runs take turns."""
    runs = dict.fromkeys(reading.run for reading in readings)
    reports = {run: [] for run in runs}
    for _ in range(rounds):
        for run in runs:
            reports[run].append(report_of(run, min_time))
    return reports


def values_of(reading, reports):
    return [report["benchmarks"][0][reading.field] / reading.per for report in reports[reading.run]]


def result_of(figure, reports):
    rounds = {"ours": values_of(figure.ours, reports), "theirs": values_of(figure.theirs, reports)}
    measured = statistics.median(map(figure.target.compare, rounds["ours"], rounds["theirs"]))
    return {
        "figure": figure.name,
        "ours": statistics.median(rounds["ours"]),
        "against": figure.against,
        "theirs": statistics.median(rounds["theirs"]),
        "unit": "bytes" if figure.ours.field.endswith("_bytes") else "ns",
        "measured": measured,
        "shown": figure.target.form.format(measured),
        "target": figure.target.words,
        "met": figure.target.is_met and figure.target.is_met(measured),
        "rounds": rounds,
    }


def versions_of(reports):
    """The versions of the compiler and of the rivals, as the programs report them."""
    contexts = [report["context"] for all_of_run in reports.values() for report in all_of_run]
    return {name: context[name] for context in contexts for name in ("compiler", *RIVALS.values()) if name in context}


def measure_all(groups, rounds, min_time):
    """The results of all figures, and the reports of all runs; for a run in two groups, those of the second."""
    results, all_reports = [], {}
    for number, group in enumerate(groups, 1):
        say(f"[{number}/{len(groups)}] {group.name}")
        figures = [figure for figure in group.figures if not is_left_out(figure.theirs)]
        readings = [reading for figure in figures for reading in (figure.ours, figure.theirs)]
        readings += [reading for reading in group.drawn if not is_left_out(reading)]
        reports = take_turns(readings, rounds, min_time)
        results += [result_of(figure, reports) for figure in figures]
        all_reports |= reports
    return results, all_reports


def curve_of(program, reports):
    """The nanoseconds per product, for each number of products that was measured."""
    readings = ((count, per_product(program, count)) for count in DRAWN_COUNTS)
    return [(count, statistics.median(values_of(reading, reports))) for count, reading in readings
            if reading.run in reports]


def quantity(value, unit):
    """About three digits, in the unit that suits the size."""
    steps = {"ns": (1000, ["ns", "µs", "ms", "s"]), "bytes": (1024, ["B", "KiB", "MiB"])}
    factor, units = steps[unit]
    index = 0
    while value >= factor and index + 1 < len(units):
        value, index = value / factor, index + 1
    return f"{value:.{2 if value < 10 else 1 if value < 100 else 0}f} {units[index]}"


def row_of(result):
    return [result["figure"], quantity(result["ours"], result["unit"]),
            result["against"], quantity(result["theirs"], result["unit"]),
            result["shown"], result["target"], {None: "-", True: "yes", False: "no"}[result["met"]]]


def table(results):
    """A Markdown table with aligned columns. Numbers are aligned right."""
    headings = ["figure", "median", "against", "median", "measured", "target", "met"]
    rows = [headings] + [row_of(result) for result in results]
    widths = [max(map(len, column)) for column in zip(*rows)]
    aligns = "<><>><<"
    lines = ["| " + " | ".join(f"{cell:{align}{width}}" for cell, align, width in zip(row, aligns, widths)) + " |"
             for row in rows]
    rule = [f":{'-' * (width + 1)}" if align == "<" else f"{'-' * (width + 1)}:"
            for align, width in zip(aligns, widths)]
    return "\n".join([lines[0], "|" + "|".join(rule) + "|", *lines[1:]])


def system():
    try:
        return platform.freedesktop_os_release()["PRETTY_NAME"]
    except OSError:  # a system that doesn't name itself
        return platform.platform()


def machine():
    model = next((line.split(":", 1)[1].strip() for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines()
                  if line.startswith("model name")), platform.machine())
    return {"cpu": model, "cores": os.cpu_count(), "system": system()}


def save(path, document):
    path.write_text(json.dumps(document, indent=2) + "\n", encoding="utf-8")


def remarks(rounds, brief):
    yield (f"Rounds: {rounds}. All figures are medians over the rounds. Times are processor time, but wall-clock time "
           "for whole processes.")
    missing = [name for program, name in RIVALS.items() if not program_path(program).exists()]
    if missing:
        yield f"Left out, because not installed: {', '.join(missing)}."
    if brief:
        yield f"Left out in brief: {'; '.join(group.name for group in GROUPS if not group.in_brief)}."


def main():
    parser = argparse.ArgumentParser(description="Measures the project's figures and prints them as a table.")
    parser.add_argument("--brief", action="store_true", help="run each program once, without the largest texts")
    brief = parser.parse_args().brief
    rounds, min_time = (1, 0.001) if brief else (15, 0.05)
    surroundings = machine()

    say("generating the texts")
    subprocess.run([FOLDER / "make_texts.py", TEXTS, *(["--brief"] if brief else [])], check=True)
    groups = [group for group in GROUPS if group.in_brief or not brief]
    for group in groups:
        require_same_output(group)
    results, reports = measure_all(groups, rounds, min_time)
    save(BUILD / ("results-brief.json" if brief else "results.json"), {
        "date": datetime.datetime.now(datetime.timezone.utc).isoformat(timespec="seconds"),
        "machine": surroundings,
        "versions": versions_of(reports),
        "rounds": rounds,
        "figures": results,
        "curves": {name: curve_of(program, reports) for program, name in DRAWN.items()},
    })
    print(table(results), *remarks(rounds, brief), sep="\n\n", flush=True)
    if not brief:
        subprocess.run([FOLDER / "draw.py"], check=True)


if __name__ == "__main__":
    main()
