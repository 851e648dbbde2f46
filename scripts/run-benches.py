#!/usr/bin/env python3
"""Runs the benchmark programs and prints their rows as one table.

usage: run-benches.py BUILD_DIR [--json FILE] [NAME...]
"""
import json
import os
import pathlib
import subprocess
import sys
import threading

# What the off-screen platform says of every window that has a least size.
NOISE = "This plugin does not support propagateSizeHints()"


def pass_on(errors):
    for line in errors:
        if NOISE not in line:
            sys.stderr.write(line)


def main():
    arguments = sys.argv[1:]
    build = pathlib.Path(arguments.pop(0))
    json_file = None
    if "--json" in arguments:
        at = arguments.index("--json")
        json_file = arguments[at + 1]
        del arguments[at:at + 2]
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", QT_LOGGING_RULES="*.debug=false;*.info=false")
    rows = []
    known = set()
    layout = "{:<26} {:>12} {:<6} {:>12} {:>8} {:>8}  {}"
    print(layout.format("name", "figure", "unit", "baseline", "ratio", "target", "holds"))
    for program in sorted(build.glob("benchmarks/*/*_bench")):
        if not os.access(program, os.X_OK):
            continue
        listed = subprocess.run([program, "--list"], env=environment, capture_output=True, text=True).stdout.split()
        known.update(listed)
        wanted = [n for n in arguments if n in listed or (n.endswith("/") and any(l.startswith(n) for l in listed))]
        if arguments and not wanted:
            continue
        process = subprocess.Popen([program, *wanted], env=environment, stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE, text=True)
        errors = threading.Thread(target=pass_on, args=(process.stderr,))
        errors.start()
        for line in process.stdout:
            if not line.startswith("{"):
                continue
            row = json.loads(line)
            rows.append(row)
            target = f"{row['target']:g}" if row["targetOf"] == "ratio" else f"{row['target']:g}{row['unit']}"
            print(layout.format(row["name"], f"{row['figure']:.4g}", row["unit"], f"{row['baseline']:.4g}",
                                f"{row['ratio']:.3g}", target, "yes" if row["holds"] else "NO"), flush=True)
        errors.join()
        if process.wait() != 0:
            print(f"{program.name} ended with status {process.returncode}", file=sys.stderr)
            return 1
    unknown = [n for n in arguments if n not in known and not n.endswith("/")]
    if unknown:
        print("no such benchmark: " + ", ".join(unknown), file=sys.stderr)
        return 2
    if json_file:
        keys = ("name", "figure", "unit", "baseline", "ratio", "target", "holds")
        pathlib.Path(json_file).write_text(json.dumps([{k: row[k] for k in keys} for row in rows], indent=2) + "\n")
    return 0


sys.exit(main())
