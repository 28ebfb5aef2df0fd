#!/usr/bin/env python3
"""Builds everything, runs every test and ends with one line of counts. Called by ./test once everything is set up.

Usage: tools/run_tests.py [step...]     only these steps and what they need (see --list); default: all
"""

import json
import os
import re
import shutil
import signal
import subprocess
import sys
import threading
import time
import xml.etree.ElementTree as xml
from pathlib import Path

REPO = Path(__file__).resolve().parent.parent
LOGS = REPO / "build" / "logs"
BUILD_LIMIT, TEST_LIMIT, DESKTOP_LIMIT = 2400, 600, 600
MONKEY_STEPS, MONKEY_SEED = 120, 1
WORKERS = max(2, min(4, os.cpu_count() or 2))
COUNTS = re.compile(r"^(\d+) passed, (\d+) failed, (\d+) skipped$")


class Result:
    def __init__(self, passed=0, failed=0, skipped=0, notes=()):
        self.passed, self.failed, self.skipped, self.notes = passed, failed, skipped, list(notes)


class Step:
    """One line of the output. `work` gets the step and returns a Result; `needs` are steps that must succeed first."""

    def __init__(self, name, work, needs=(), after=(), builds=False):
        self.name, self.work, self.needs, self.after, self.builds = name, work, needs, after, builds
        self.log = LOGS / (re.sub(r"[^A-Za-z0-9]+", "-", name).strip("-") + ".log")
        self.result, self.seconds = None, 0.0

    def ok(self):
        return self.result is not None and self.result.failed == 0


# ---- Running programs ------------------------------------------------------------------------------------------

class Running:
    """Every program runs in a process group of its own, so that an interrupted run leaves nothing behind."""

    groups = set()
    lock = threading.Lock()

    @classmethod
    def end_all(cls):
        with cls.lock:
            groups = list(cls.groups)
        for group in groups:
            try:
                os.killpg(group, signal.SIGTERM)
            except ProcessLookupError:
                pass


def run(command, log, limit, environment=None, directory=REPO):
    """Appends the program's output to the log; returns its exit code, or "timeout"."""
    with log.open("ab") as out:
        out.write(("$ " + " ".join(map(str, command)) + "\n").encode())
        out.flush()
        process = subprocess.Popen([str(part) for part in command], cwd=directory, stdin=subprocess.DEVNULL,
                                   stdout=out, stderr=subprocess.STDOUT, start_new_session=True,
                                   env={**os.environ, **(environment or {})})
        with Running.lock:
            Running.groups.add(process.pid)
        try:
            return process.wait(limit)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGTERM)
            try:
                process.wait(20)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
            return "timeout"
        finally:
            with Running.lock:
                Running.groups.discard(process.pid)


def said(code, limit):
    return f"ended after {limit} s" if code in ("timeout", 124) else f"exit code {code}"


def tail(log, count=12):
    try:
        return [line[:300] for line in log.read_text(errors="replace").splitlines()[-count:]]
    except OSError:
        return []


def telling(log, count=12):
    """What a reader wants to see of a failure: a sanitizer's own words when there are some, else the last lines."""
    lines = tail(log, 3000)
    words = re.compile(r"ERROR: |runtime error:|SUMMARY: |panic|Unhandled page fault|Assertion|\.(cpp|h):\d+: Failure")
    found = [line for line in lines if words.search(line)]
    return found[:count] if found else lines[-count:]


# ---- The kinds of steps ----------------------------------------------------------------------------------------

def lint(step):
    counts = step.log.with_suffix(".json")
    counts.unlink(missing_ok=True)
    code = run([REPO / "tools/lint", "--counts", counts], step.log, TEST_LIMIT)
    if not counts.exists():
        return Result(failed=1, notes=tail(step.log))
    found = json.loads(counts.read_text())
    return Result(found["passed"], found["failed"], 0, tail(step.log, 30)[1:] if code else ())


def build(preset):
    def work(step):
        for command in (["cmake", "--preset", preset], ["cmake", "--build", "--preset", preset, "-j2"]):
            code = run(["nice", *command], step.log, BUILD_LIMIT)
            if code != 0:
                words = re.compile(r"error: |^FAILED: |undefined reference|multiple definition|CMake Error")
                errors = [line for line in tail(step.log, 3000) if words.search(line)]
                return Result(failed=1, notes=[said(code, BUILD_LIMIT)] + errors[:8])
        return Result()
    return work


def googletest(command, directory, environment=None, limit=TEST_LIMIT):
    """The whole test program in one process; what a crash keeps from being written is read from the output."""
    def work(step):
        report = directory / f"{step.log.stem}.json"
        report.unlink(missing_ok=True)
        arguments = ["--gtest_brief=0", "--gtest_color=no", f"--gtest_output=json:{report.name}"]
        code = run([*command, *arguments], step.log, limit, environment, directory)
        if report.exists():
            result = read_report(report)
            if code != 0 and result.failed == 0:
                result.failed = 1
                result.notes = [f"all tests passed, and still {said(code, limit)}"] + telling(step.log)
            if result.passed + result.failed == 0:
                result.failed = 1
                result.notes.append("the program contains no tests")
            return result
        output = step.log.read_text(errors="replace").splitlines()
        passed = sum(line.startswith("[       OK ]") for line in output)
        last = next((line[13:] for line in reversed(output) if line.startswith("[ RUN      ]")), "the first test")
        return Result(passed, 1, 0, [f"{said(code, limit)} in or after {last}"] + telling(step.log))
    return work


def read_report(path):
    result = Result()
    for suite in json.loads(path.read_text(encoding="utf-8", errors="replace"))["testsuites"]:
        for test in suite["testsuite"]:
            if test.get("failures"):
                result.failed += 1
                first = test["failures"][0]["failure"].strip().splitlines()
                result.notes.append(f"{suite['name']}.{test['name']}: " + " | ".join(first)[:300])
            elif test.get("status") == "NOTRUN" or test.get("result") in ("SKIPPED", "SUPPRESSED"):
                result.skipped += 1
            else:
                result.passed += 1
    return result


def self_contained(bits):
    """The program is one file: right machine, no library that a Windows does not bring along, all of the memory, and
    a program of today for the window manager."""
    def work(step):
        exe = program(bits)
        if not exe.exists():
            return Result(failed=1, notes=[f"{exe} was not built"])
        tool = {32: "i686-w64-mingw32-objdump", 64: "x86_64-w64-mingw32-objdump"}[bits]
        run([tool, "-f", "-p", exe], step.log, TEST_LIMIT)
        text = step.log.read_text(errors="replace")
        wrong = [name for name in re.findall(r"DLL Name: (\S+)", text)
                 if re.match(r"lib(gcc|stdc\+\+|winpthread)", name, re.IGNORECASE)]
        machine = {32: "pei-i386", 64: "pei-x86-64"}[bits]
        notes = [f"needs {name}" for name in wrong]
        for what, pattern in ((f"a {machine}", rf"file format {machine}\n"),
                              ("large address aware", r"^\tlarge address aware$"),
                              ("of subsystem version 6.0", r"^MajorSubsystemVersion\s+6\nMinorSubsystemVersion\s+0$")):
            if not re.search(pattern, text, re.MULTILINE):
                notes.append(f"is not {what}")
        return Result(failed=1, notes=notes) if notes else Result(passed=1)
    return work


def fuzz_targets():
    return sorted(path.stem for path in (REPO / "fuzz").glob("*_fuzz.cpp"))


def fuzz(name):
    def work(step):
        code = run([REPO / "tools/fuzz", "--fixed", name], step.log, TEST_LIMIT)
        if code == 0:
            return Result(passed=1)
        return Result(failed=1, notes=[said(code, TEST_LIMIT), f"the input lies in build/fuzz/findings/{name}"]
                      + telling(step.log))
    return work


def desktop_scripts():
    folder = REPO / "tests" / "desktop"
    return sorted(path for path in folder.glob("*_test.*") if path.suffix in (".py", ".sh") and os.access(path, os.X_OK))


def desktop_environment(name, bits):
    exe = program(bits)
    shots = REPO / "build" / "shots" / f"{name}-{bits}"
    shutil.rmtree(shots, ignore_errors=True)
    shots.mkdir(parents=True)
    return {"NXCLIP_EXE": str(exe), "NXCLIP_TOOLS": str(exe.parent / "desktop"), "NXCLIP_SHOTS": str(shots)}


def desktop_tests(bits):
    """The GoogleTest program that drives the finished program from outside. Without a display: there its keys and
    its mouse are the only ones, and nobody moves the pointer away between two steps."""
    def work(step):
        exe = program(bits).parent / "desktop" / "nxclip_desktop_tests.exe"
        command = [REPO / "tools/wine-run", f"--{bits}", "--timeout", DESKTOP_LIMIT - 30, exe]
        environment = desktop_environment("nxclip_desktop_tests", bits)
        return googletest(command, program(bits).parent, environment, DESKTOP_LIMIT)(step)
    return work


def monkey(bits):
    """The same random way through the finished program on every machine; see tools/desktop/monkey."""
    def work(step):
        exe = program(bits)
        code = run([REPO / "tools/wine-run", f"--{bits}", "--timeout", TEST_LIMIT - 30, exe.parent / "desktop/monkey.exe",
                    MONKEY_STEPS, MONKEY_SEED], step.log, TEST_LIMIT, desktop_environment("monkey", bits))
        return Result(passed=1) if code == 0 else Result(failed=1, notes=[said(code, TEST_LIMIT)] + tail(step.log, 30))
    return work


def desktop_script(script, bits):
    """Exit code 0 passed, 77 skipped, anything else failed. A script of several cases may end in a line of counts."""
    def work(step):
        code = run([REPO / "tools/desktop-session", f"--{bits}", "--timeout", DESKTOP_LIMIT - 30, script, program(bits)],
                   step.log, DESKTOP_LIMIT, desktop_environment(script.stem, bits))
        match = next(filter(None, (COUNTS.match(line.strip()) for line in reversed(tail(step.log, 5)))), None)
        result = Result(*map(int, match.groups())) if match else \
            Result(passed=int(code == 0), skipped=int(code == 77))
        if code not in (0, 77) and result.failed == 0:
            result.failed = 1
        if code == 0 and result.passed + result.failed + result.skipped == 0:
            result.failed = 1
        if result.failed:
            result.notes = [said(code, DESKTOP_LIMIT)] + tail(step.log)
        elif result.skipped:
            result.notes = tail(step.log, 1)
        return result
    return work


def no_wine(bits):
    def work(step):
        return Result(skipped=1, notes=[f"NO {bits}-BIT WINE HERE: the {bits}-bit program was built and none of its "
                                        "tests ran"])
    return work


def program(bits):
    return REPO / "build" / f"win{bits}" / "NXClip.exe"


def wine_available(bits):
    return subprocess.run([REPO / "tools/wine-run", f"--{bits}", "--available"]).returncode == 0


# ---- All steps -------------------------------------------------------------------------------------------------

def all_steps():
    steps = [Step("lint", lint)]
    native = Step("build native", build("native"), builds=True)
    win = {bits: Step(f"build win{bits}", build(f"win{bits}"), builds=True) for bits in (64, 32)}
    steps += [native, win[64], win[32]]
    builds = [native, win[64], win[32]]
    if fuzz_targets():
        fuzzing = Step("build fuzz", build("fuzz"), builds=True)
        steps.append(fuzzing)
        builds.append(fuzzing)
    sanitizers = {"ASAN_OPTIONS": "detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1",
                  "UBSAN_OPTIONS": "print_stacktrace=1"}
    steps.append(Step("tests native", googletest([REPO / "build/native/nxclip_tests"], REPO / "build/native",
                                                 sanitizers), [native]))
    for bits in (64, 32):
        folder = REPO / "build" / f"win{bits}"
        steps.append(Step(f"one file win{bits}", self_contained(bits), [win[bits]]))
        if not wine_available(bits):
            steps.append(Step(f"tests win{bits}", no_wine(bits)))
            continue
        steps.append(Step(f"tests win{bits}", googletest(
            [REPO / "tools/wine-run", f"--{bits}", "--timeout", TEST_LIMIT - 30, folder / "nxclip_tests.exe"], folder),
            [win[bits]]))
    for name in fuzz_targets():
        steps.append(Step(name.replace("_fuzz", " fuzz"), fuzz(name), [fuzzing]))
    # The desktop tests watch a real program in real time: they begin when nothing else runs any more, one home
    # after the other.
    for bits in (32, 64):
        if not wine_available(bits):
            continue
        before = list(steps)
        if any((REPO / "tests" / "desktop").glob("*_test.cpp")):
            steps.append(Step(f"desktop win{bits}", desktop_tests(bits), [win[bits]], before))
        steps.append(Step(f"monkey win{bits}", monkey(bits), [win[bits]], before))
        for script in desktop_scripts():
            steps.append(Step(f"{script.name} win{bits}", desktop_script(script, bits), [win[bits]], before))
    return steps


def chosen(steps, words):
    if not words:
        return steps
    wanted = {step for step in steps for word in words if word in step.name}
    grown = True
    while grown:
        more = {need for step in wanted for need in step.needs} - wanted
        grown = bool(more)
        wanted |= more
    for step in wanted:
        step.after = [other for other in step.after if other in wanted]
    return [step for step in steps if step in wanted]


class Schedule:
    """Builds one after the other (each uses both cores), everything else beside them, in the order of the list."""

    def __init__(self, steps):
        self.waiting, self.steps, self.running = list(steps), steps, set()
        self.changed = threading.Condition()

    def next(self):
        for step in self.waiting:
            if any(need.result is None for need in [*step.needs, *step.after]):
                continue
            if step.builds and any(other.builds for other in self.running):
                continue
            return step
        return None

    def worker(self):
        while True:
            with self.changed:
                while self.waiting and (step := self.next()) is None:
                    self.changed.wait()
                if not self.waiting:
                    return
                self.waiting.remove(step)
                self.running.add(step)
            began = time.monotonic()
            result = self.perform(step)
            with self.changed:
                step.result, step.seconds = result, time.monotonic() - began
                self.running.discard(step)
                tell(step)
                self.changed.notify_all()

    @staticmethod
    def perform(step):
        broken = [need.name for need in step.needs if not need.ok()]
        if broken:
            return Result(failed=1, notes=[f"could not run without \"{broken[0]}\""])
        step.log.unlink(missing_ok=True)
        try:
            return step.work(step)
        except Exception as error:  # a fault of this runner must be seen as a failure, never as silence
            return Result(failed=1, notes=[f"{type(error).__name__}: {error}"])

    def run(self):
        threads = [threading.Thread(target=self.worker, daemon=True) for _ in range(WORKERS)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()


def tell(step):
    result = step.result
    numbers = ", ".join(f"{count} {word}" for count, word in
                        ((result.passed, "passed"), (result.failed, "failed"), (result.skipped, "skipped")) if count)
    word = "FAILED" if result.failed else "ok"
    print(f"{word:6} {step.name:34} {numbers or 'built':32} {step.seconds:6.1f} s", flush=True)
    for note in result.notes:
        print(f"         {note}")
    if result.failed:
        print(f"         log: {step.log.relative_to(REPO)}", flush=True)


def write_junit(steps, path):
    """The same for machines: a case for each step, with its notes where it failed."""
    suites = xml.Element("testsuites")
    suite = xml.SubElement(suites, "testsuite", name="nxclip", tests=str(len(steps)),
                           failures=str(sum(bool(step.result.failed) for step in steps)))
    for step in steps:
        case = xml.SubElement(suite, "testcase", name=step.name, time=f"{step.seconds:.1f}")
        notes = "\n".join(re.sub(r"[^\t\n\x20-\uFFFD]", "?", note) for note in step.result.notes)
        if step.result.failed:
            xml.SubElement(case, "failure", message=f"{step.result.failed} failed").text = notes
        elif step.result.skipped and not step.result.passed:
            xml.SubElement(case, "skipped", message=notes)
    xml.ElementTree(suites).write(path, encoding="utf-8", xml_declaration=True)


def stop(number, _):
    Running.end_all()
    print(f"ended by signal {number}", flush=True)
    os._exit(128 + number)


def main(words):
    LOGS.mkdir(parents=True, exist_ok=True)
    os.environ.setdefault("CCACHE_BASEDIR", str(REPO))
    os.environ.setdefault("CCACHE_NOHASHDIR", "1")
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, stop)
    steps = all_steps()
    if "--list" in words:
        print("\n".join(step.name for step in steps))
        return 0
    steps = chosen(steps, words)
    if not steps:
        print(f"there is no step called {' '.join(words)}", file=sys.stderr)
        return 2
    Schedule(steps).run()
    write_junit(steps, LOGS / "junit.xml")
    failed = [step for step in steps if step.result.failed]
    if failed:
        print("failed: " + ", ".join(f"{step.name} ({step.log.relative_to(REPO)})" for step in failed))
    total = [sum(getattr(step.result, kind) for step in steps) for kind in ("passed", "failed", "skipped")]
    print("{} passed, {} failed, {} skipped".format(*total), flush=True)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
