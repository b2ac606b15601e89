#!/usr/bin/env python3
"""Prints how many lines of src/ the programs of a build with VX_COVERAGE ran, and fails if they are too few.

Usage: coverage.py <root> <build folder> <least percentage>

The counters of all programs that ran since the folder "profiles" of the build was emptied count together. What the
build generates does not count, nor do sources of another platform, which it does not compile.
"""
import json
import pathlib
import re
import shlex
import subprocess
import sys

# Its line is part of no function that somebody wrote.
GENERATED = re.compile(r"\s*(Q_OBJECT|Q_GADGET)\s*$")


def counts_by_source(report, sources):
    """{path below sources: {line: how often it ran}} of a report in the format of lcov."""
    found = {}
    for line in report.splitlines():
        kind, _, value = line.partition(":")
        if kind == "SF":
            path = pathlib.Path(value).resolve()
            lines = found.setdefault(path.relative_to(sources), {}) if path.is_relative_to(sources) else {}
        elif kind == "DA":
            number, count = (int(word) for word in value.split(",")[:2])
            lines[number] = max(count, lines.get(number, 0))
    return found


def without_generated(counts, sources):
    """The same counts, but for the lines that a macro of Qt fills."""
    kept = {}
    for path, lines in counts.items():
        text = (sources / path).read_text().splitlines()
        kept[path] = {number: count for number, count in lines.items() if not GENERATED.match(text[number - 1])}
    return kept


def percentage(covered, lines):
    return 100 * covered / lines if lines else 100.0


def totals_by_folder(counts):
    """{folder: (lines, covered)}; the last is "in all"."""
    totals = {}
    for path, lines in sorted(counts.items()):
        for name in (path.parent.as_posix(), "in all"):
            number, covered = totals.get(name, (0, 0))
            totals[name] = (number + len(lines), covered + sum(1 for count in lines.values() if count))
    totals["in all"] = totals.pop("in all", (0, 0))
    return totals


def uncovered_ranges(lines):
    """The lines that did not run as a text like "3, 7-9". Lines without code do not part a range."""
    ranges = []
    extends = False
    for number, count in sorted(lines.items()):
        if count:
            extends = False
        elif extends:
            ranges[-1][1] = number
        else:
            ranges.append([number, number])
            extends = True
    return ", ".join(str(first) if first == last else f"{first}-{last}" for first, last in ranges)


def objects_of(build):
    """The objects of the product, relative to the build folder. What lies there of earlier builds is none of them."""
    objects = []
    for command in json.loads((build / "compile_commands.json").read_text()):
        words = shlex.split(command["command"])
        path = words[words.index("-o") + 1]
        if path.startswith("src/"):
            objects.append(path)
    missing = [path for path in objects if not (build / path).exists()]
    if missing:
        sys.exit(f"{missing[0]} is not built")
    return objects


def require_unchanged(build, objects, sources):
    """Leaves if a source is younger than what was made of it: its lines are not those that ran."""
    known = subprocess.run(["ninja", "-C", build, "-t", "deps", *objects], check=True, capture_output=True, text=True)
    built = 0
    for line in known.stdout.splitlines():
        if ": #deps" in line:
            built = (build / line.partition(": #deps")[0]).stat().st_mtime_ns
        elif line.startswith("    "):
            path = (build / line.strip()).resolve()
            if path.is_relative_to(sources) and not (path.exists() and path.stat().st_mtime_ns <= built):
                sys.exit(f"src/{path.relative_to(sources)} changed since it was built")


def report_of(build, objects):
    """What the programs ran, of everything that is compiled for the product, in the format of lcov."""
    profiles = sorted((build / "profiles").glob("*.profraw"))
    if not profiles:
        sys.exit("No program of this build has run")
    merged = build / "profiles" / "merged.profdata"
    if subprocess.run(["llvm-profdata", "merge", "-sparse", "-o", merged, *profiles], check=False).returncode != 0:
        sys.exit("The counters cannot be read")
    # The objects and not the programs: a linker leaves out what nobody uses.
    arguments = [argument for path in objects for argument in ("-object", build / path)]
    report = subprocess.run(["llvm-cov", "export", "-format=lcov", f"-instr-profile={merged}", *arguments],
                            check=False, capture_output=True, text=True)
    if report.returncode != 0:  # else it complains of each inline function that a source has and does not use
        sys.exit(report.stderr)
    return report.stdout


def main(root, build, least):
    sources = pathlib.Path(root).resolve() / "src"
    folder = pathlib.Path(build)
    objects = objects_of(folder)
    require_unchanged(folder, objects, sources)
    counts = without_generated(counts_by_source(report_of(folder, objects), sources), sources)
    totals = totals_by_folder(counts)

    print("Lines that did not run:")
    for path, lines in sorted(counts.items()):
        ranges = uncovered_ranges(lines)
        if ranges:
            print(f"  src/{path}: {ranges}")
    print(f"\n{'folder of src/':<20} {'lines':>7} {'covered':>8} {'percent':>8}")
    for name, (lines, covered) in totals.items():
        print(f"{name:<20} {lines:>7} {covered:>8} {percentage(covered, lines):>8.1f}")

    lines, covered = totals["in all"]
    if not lines or percentage(covered, lines) < float(least):
        sys.exit(f"Fewer than {least} % of the lines ran")


if __name__ == "__main__":
    main(*sys.argv[1:])
