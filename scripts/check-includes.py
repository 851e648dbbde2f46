#!/usr/bin/env python3
"""Holds the includes of src/ against the tables of modules and their floors, and rejects cycles
between files.

The tables are docs/architecture.md's, written once more as data. There are no exceptions.
"""
import pathlib
import re
import sys

MAY_USE = {
    "platform": set(),
    "text": {"platform"},
    "core": {"platform", "text"},
    "commands": {"platform", "text", "core"},
    "charts": {"text", "platform"},
    "appearance": {"platform", "core", "text"},
    "editor": {"platform", "core", "commands", "text", "charts", "appearance"},
    "pdf": {"platform", "core", "text", "appearance"},
    "transfer": {"platform", "core", "text", "charts", "pdf"},
    "drive": {"platform", "core", "transfer"},
    "brainmap": {"platform", "core", "appearance"},
    "teleprompter": {"platform", "core", "text", "appearance"},
    "shell": {"platform", "core", "commands", "text", "charts", "appearance", "editor", "pdf", "transfer",
              "drive", "brainmap", "teleprompter"},
    "tour": {"platform", "core", "commands", "text", "appearance", "editor", "shell"},
}
# From the ground up: a floor uses itself and those before it; those in one row use each other.
FLOORS = {
    "core": [["records"], ["binder"], ["tags"], ["notebook"], ["store"], ["library"], ["versions"],
             ["state"]],
    "text": [["value"], ["archive"], ["store"], ["layout"], ["attachments"], ["lists"], ["rtf"], ["html"]],
}
NO_WIDGETS = {"text", "core", "charts"}
WIDGET_HEADERS = re.compile(r"<(QtWidgets/|QWidget|QApplication|QMessageBox|QDialog|QLabel|QPushButton|QTextEdit|"
                            r"QPlainTextEdit|QAbstractScrollArea|QStyle|QMenu|QAction)")


def floor_problem(name, target):
    floors = FLOORS.get(name.split("/")[0])
    if not floors or target.split("/")[0] != name.split("/")[0]:
        return None
    heights = {floor: height for height, row in enumerate(floors) for floor in row}
    own, other = name.split("/")[1], target.split("/")[1]
    if own not in heights or other not in heights:
        return f"{own} or {other} is no floor"
    return f"{own} lies below {other}" if heights[other] > heights[own] else None


def main():
    root = pathlib.Path(__file__).resolve().parent.parent / "src"
    problems = []
    graph = {}
    for path in sorted([*root.rglob("*.h"), *root.rglob("*.cpp")]):
        name = path.relative_to(root).as_posix()
        module = name.split("/")[0]
        if module not in MAY_USE:
            problems.append(f"{name}: no such module")
            continue
        graph[name] = []
        for number, line in enumerate(path.read_text().splitlines(), 1):
            if module in NO_WIDGETS and WIDGET_HEADERS.search(line) and line.startswith("#include"):
                problems.append(f"{name}:{number}: {module} uses no widgets")
            found = re.match(r'#include "([^"]+)"', line)
            if not found:
                continue
            target = found.group(1)
            if target.endswith(".moc"):
                continue
            graph[name].append(target)
            other = target.split("/")[0]
            if other != module and other not in MAY_USE[module]:
                problems.append(f"{name}:{number}: {module} may not use {other}")
            problem = floor_problem(name, target)
            if problem:
                problems.append(f"{name}:{number}: {problem}")
            if not (root / target).exists():
                problems.append(f"{name}:{number}: include {target} by its path under src/")
    state = {}

    def visit(name, trail):
        state[name] = "open"
        for target in graph.get(name, []):
            if state.get(target) == "open":
                problems.append("cycle: " + " -> ".join([*trail[trail.index(target):], target])
                                if target in trail else f"cycle: {name} -> {target}")
            elif target not in state:
                visit(target, [*trail, target])
        state[name] = "done"

    for name in list(graph):
        if name.endswith(".h") and name not in state:
            visit(name, [name])
    print("\n".join(problems) or f"includes: {len(graph)} files hold to the table")
    return 1 if problems else 0


sys.exit(main())
