#!/usr/bin/env python3
"""Runs every test program of a build, two at a time, and counts what passed.

usage: run-tests.py BUILD_DIR [--long]
"""
import concurrent.futures
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time


def run(program, environment, folder, limit):
    report = pathlib.Path(folder) / (program.name + ".json")
    started = time.monotonic()
    try:
        process = subprocess.run([program, f"--gtest_output=json:{report}"], env=environment,
                                 capture_output=True, text=True, errors="replace", timeout=limit)
        output, status = process.stdout + process.stderr, process.returncode
    except subprocess.TimeoutExpired as late:
        output, status = str(late.stdout or "") + f"\nstopped after {limit} s", -1
    passed, failed, skipped = 0, [], 0
    if report.exists():
        for suite in json.loads(report.read_text())["testsuites"]:
            for case in suite["testsuite"]:
                if case.get("failures"):
                    failed.append(f"{suite['name']}.{case['name']}")
                elif case.get("result") == "SKIPPED":
                    skipped += 1
                elif case.get("result") == "COMPLETED":
                    passed += 1
    if status != 0 and not failed:
        failed.append(f"{program.name} (ended with status {status})")
    return program.name, passed, failed, skipped, output, time.monotonic() - started


def main():
    build = pathlib.Path(sys.argv[1])
    long_run = "--long" in sys.argv[2:]
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8",
                       ASAN_OPTIONS="detect_leaks=1:allocator_may_return_null=1",
                       LSAN_OPTIONS=f"suppressions={pathlib.Path('scripts/leaks.supp').resolve()}:print_suppressions=0",
                       UBSAN_OPTIONS="print_stacktrace=1")
    if long_run:
        environment["ORVANE_LONG"] = "1"
    # Temporary folders in memory: the tests write small files by the thousand, each to the disk.
    if os.access("/dev/shm", os.W_OK) and os.statvfs("/dev/shm").f_bavail * os.statvfs("/dev/shm").f_frsize > 1 << 30:
        environment.setdefault("TMPDIR", "/dev/shm")
    programs = sorted(p for p in build.glob("tests/*/*_test") if os.access(p, os.X_OK) and p.is_file())
    total_passed, total_failed, total_skipped = 0, 0, 0
    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ThreadPoolExecutor(2) as pool:
        limit = 14400 if long_run else 900
        jobs = [pool.submit(run, p, environment, folder, limit) for p in programs]
        for job in concurrent.futures.as_completed(jobs):
            name, passed, failed, skipped, output, elapsed = job.result()
            total_passed += passed
            total_failed += len(failed)
            total_skipped += skipped
            print(f"{name}: {passed} passed, {len(failed)} failed, {skipped} skipped in {elapsed:.1f} s", flush=True)
            if failed:
                print(output[-12000:])
                print("failed: " + ", ".join(failed), flush=True)
    summary = f"{total_passed} passed, {total_failed} failed"
    if total_skipped:
        summary += f", {total_skipped} skipped"
    print(summary)
    return 1 if total_failed or not total_passed else 0


sys.exit(main())
