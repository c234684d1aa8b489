"""Builds the checkout once, and for each mutant only what the mutant can change, and runs the tests on that.

What has to be compiled again is not asked of time stamps but of the texts: a unit is compiled again when its text behind
the preprocessor is another one. System headers, which no mutant changes, are empty for that purpose, so this takes
milliseconds. A test program that sees nothing of a changed row runs as it is, with the changed library; one that does see it
is compiled with it, so no test fails for having been built from other sources than the library. What is compiled for
a mutant lies in a folder of its own; the build of the checkout stays whole.
"""

import hashlib
import json
import os
import re
import resource
import shlex
import shutil
import signal
import subprocess
import threading
import time
from pathlib import Path
from typing import NamedTuple

MEMORY_LIMIT = 6 << 30
SLOW = 0.3  # seconds that a test takes
CONFIGURATION = [
    "-G", "Ninja", "-DCMAKE_CXX_COMPILER=g++", "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DBUILD_SHARED_LIBS=ON",
    "-DQUENZO_BUILD_EXAMPLES=OFF", "-DQUENZO_INSTALL=OFF", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
    # The library of a mutant is found through the environment, which only this kind of path lets pass.
    "-DCMAKE_EXE_LINKER_FLAGS=-Wl,--enable-new-dtags", "-DCMAKE_SHARED_LINKER_FLAGS=-Wl,--enable-new-dtags",
]  # fmt: skip
STARTS_PROGRAMS = ("docs-tests", "tool-tests")
LIBRARIES = ("quenzo-conf", "quenzo-foundation")
# A library that another one loads from beside itself: no program is linked to it.
LOADED_BY = {"quenzo-conf-log": "quenzo-conf"}


class DoesNotCompile(Exception):
    """The mutant is no program; `noticed` tells whether an assertion of the sources says so."""

    def __init__(self, output):
        super().__init__(output)
        self.noticed = bool(re.search(r"static assertion failed|non-constant condition|call to non-.constexpr|is not a constant expression"
                                      r"|in .constexpr. expansion|overflow in constant expression", output))  # fmt: skip


def _run(command, **options):
    return subprocess.run(command, capture_output=True, text=True, errors="replace", **options)


class Unit:
    """One compilation: where its source is, where its object goes, and by which command."""

    def __init__(self, entry, build):
        self.file = entry["file"]
        self.command = entry["command"]
        self.object = re.search(r" -o (\S+\.o)\b", self.command).group(1)
        self.build = build
        self.target = re.search(r"([^/]+)\.dir/", self.object).group(1)
        self.is_test = False
        self.text, self.includes = "", frozenset()

    @property
    def stem(self):
        return Path(self.file).stem


class Workshop:
    def __init__(self, root, folder, quick=False):
        self.quick = quick
        self.root, self.folder = Path(root), Path(folder)
        self.source, self.build, self.stubs = self.folder / "source", self.folder / "build", self.folder / "stubs"
        self.helpers_lock = threading.Lock()
        self.symbols = {}

    # The build of the checkout.

    def prepare(self, jobs):
        self._copy_checkout()
        for command in (["cmake", "-S", self.source, "-B", self.build, *CONFIGURATION], ["ninja", "-C", self.build, f"-j{jobs}"]):
            done = _run(command)
            if done.returncode != 0:
                raise SystemExit(done.stdout[-4000:] + done.stderr[-4000:])
        self._make_stubs()
        entries = json.loads((self.build / "compile_commands.json").read_text())
        self.units = [Unit(entry, self.build) for entry in entries if "cmake_pch" not in entry["file"]]
        for unit in self.units:
            unit.is_test = bool(re.search(r"^(?:TEST|TEST_F|TEST_P|TYPED_TEST|RC_GTEST_\w+)\(", Path(unit.file).read_text(), re.MULTILINE))
            unit.text, unit.includes = self._preprocess(unit, self.source)
        self._read_links()
        self._precompile()

    def files(self):
        """The files of the checkout, as they are now, without the scripts, which neither the build nor a test program reads."""
        listed = _run(["git", "-C", self.root, "ls-files", "-co", "--exclude-standard", "-z"]).stdout
        return sorted(file for file in listed.split("\0")
                      if file and not file.startswith("scripts/") and (self.root / file).is_file())  # fmt: skip

    def _copy_checkout(self):
        files = self.files()
        for file in files:
            target = self.source / file
            if not target.exists() or target.read_bytes() != (self.root / file).read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(self.root / file, target)
        for present in [path for path in self.source.rglob("*") if path.is_file()]:
            if str(present.relative_to(self.source)) not in set(files):
                present.unlink()

    def _make_stubs(self):
        for path in [*self.source.rglob("*"), *self.build.rglob("guide*/**/*.cpp"), *self.build.glob("tests/docs/*.cpp")]:
            if path.suffix not in (".h", ".cpp", ".inc", ".def"):
                continue
            for name in re.findall(r"^\s*#\s*include\s*[<\"]([^>\"]+)[>\"]", path.read_text(), re.MULTILINE):
                stub = self.stubs / name
                if not (self.source / name).exists() and not (path.parent / name).exists() and not stub.exists():
                    stub.parent.mkdir(parents=True, exist_ok=True)
                    stub.touch()

    def _precompile(self):
        """The system headers of the libraries, read once for all mutants."""
        self.headers = {}
        for target in LIBRARIES:
            units = [unit for unit in self.units if unit.target == target]
            texts = [(self.source / name).read_text() for name in {name for unit in units for name in unit.includes}]
            names = {name for text in texts for name in re.findall(r"^#include <(.*)>", text, re.MULTILINE)}
            header = self.folder / "headers" / f"{target}.h"
            header.parent.mkdir(exist_ok=True)
            text = "".join(f"#include <{name}>\n" for name in sorted(names) if not (self.source / name).exists())
            made = Path(f"{header}.gch")
            if not made.exists() or header.read_text() != text:
                header.write_text(text)
                words = shlex.split(units[0].command)
                words[words.index("-o") + 1 :] = [str(made), "-x", "c++-header", str(header)]
                if _run(words, cwd=self.build).returncode != 0:
                    continue
            self.headers[target] = ["-include", str(header)]

    def _preprocess(self, unit, source):
        """The unit's own text with its macros expanded, and the files of the project that it is made of."""
        words = shlex.split(unit.command)
        defines = [word for word in words if word.startswith("-D")]
        folders = [word[2:] for word in words if word.startswith("-I")]
        folders = [folder.replace(str(self.source), str(source)) for folder in folders]
        file = unit.file.replace(str(self.source), str(source))
        depends = self.folder / "depends" / f"{threading.get_ident()}"
        depends.parent.mkdir(exist_ok=True)
        done = _run(["g++", "-E", "-P", "-std=c++20", "-nostdinc", "-MMD", "-MF", depends, *defines,
                     *(f"-I{folder}" for folder in [*folders, source]), f"-I{self.stubs}", file])  # fmt: skip
        if done.returncode != 0:
            raise DoesNotCompile(done.stderr)
        names = depends.read_text().replace("\\\n", " ").split()[1:]
        prefix = f"{source}/"
        text = done.stdout.replace(prefix, "")
        return hashlib.sha256(text.encode()).digest(), frozenset(name[len(prefix) :] for name in names if name.startswith(prefix))

    def _read_links(self):
        """How each program and library is linked, and out of what."""
        self.links = {}
        for line in _run(["ninja", "-C", self.build, "-t", "commands"]).stdout.splitlines():
            steps = line.split(" && ")
            if len(steps) < 2 or ".o" not in line or " -c " in line:
                continue
            link = next((step for step in steps if " -o " in step or " qc " in step), None)
            if link is None:
                continue
            words = shlex.split(link)
            output = words[words.index("-o") + 1] if "-o" in words else words[words.index("qc") + 1]
            self.links[output] = words
        tests = {unit.target for unit in self.units if unit.is_test}
        self.programs, self.helpers, self.archives, self.shared = {}, {}, {}, {}
        for output, words in self.links.items():
            objects = {word for word in words if word.endswith(".o")}
            target = next(iter(unit.target for unit in self.units if unit.object in objects))
            kind = (self.shared if ".so" in output else self.archives if output.endswith(".a")
                    else self.programs if target in tests else self.helpers)  # fmt: skip
            kind[target] = output

    # The tests of the checkout, which have to pass and tell how long they take.

    def measure(self):
        self.tests = {}
        for target, output in self.programs.items():
            report = self.folder / f"{target}.json"
            if not self._is_newest(report):
                status, printed = self._run_program(self.build / output, self.build / output, [f"--gtest_output=json:{report}"], {}, 600)
                if status != "passed":
                    report.unlink(missing_ok=True)
                    raise SystemExit(f"{target} fails without a mutant:\n{printed[-3000:]}")
            self.tests[target] = {
                f"{suite['name']}.{test['name']}": float(test["time"][:-1])
                for suite in json.loads(report.read_text())["testsuites"] for test in suite["testsuite"]}  # fmt: skip
            print(f"{sum(self.tests[target].values()):6.1f} s  {target} passes without a mutant", flush=True)

    def _is_newest(self, report):
        """Whether nothing has changed since a program last passed."""
        if not report.exists():
            return False
        made = [self.build / output for kind in (self.programs, self.helpers, self.shared) for output in kind.values()]
        copied = [self.source / file for file in self.files()]
        return all(path.stat().st_mtime < report.stat().st_mtime for path in made + copied)

    def goes(self, target, mutant):
        """The goes in which a program is run for a mutant: the tests of suites named like its file, the others that are quick,
        and the slow ones."""
        tests = self.tests[target]
        words = [word for word in re.findall(r"[A-Z]+[a-z0-9]{3,}", Path(mutant.file).stem) if word not in ("Format", "Graph")]
        slow = [name for name in tests if tests[name] > SLOW]
        likely = [name for name in tests if name not in slow and any(word in name.split(".")[0] for word in words)]
        first = [Go("--gtest_filter=" + ":".join(likely), sum(tests[name] for name in likely))] if likely else []
        others = [name for name in tests if name not in slow and name not in likely]
        second = [Go("--gtest_filter=*-" + ":".join(slow + likely), sum(tests[name] for name in others))] if others else []
        return first + second + ([] if self.quick or not slow else [Go("--gtest_filter=" + ":".join(slow), sum(tests[name] for name in slow))])

    @staticmethod
    def _limits():
        os.setpgid(0, 0)
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

    def _run_program(self, program, home, options, environment, limit):
        """Runs a test program where ctest would, up to its first failure."""
        process = subprocess.Popen(
            [program, "--gtest_fail_fast", "--gtest_brief=1", *options], cwd=Path(home).parent, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace", preexec_fn=self._limits,
            env={**os.environ, "RC_PARAMS": "seed=1", **environment},
        )  # fmt: skip
        try:
            printed, _ = process.communicate(timeout=limit)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            printed, _ = process.communicate()
            return "timed out", printed
        return ("passed" if process.returncode == 0 else "failed"), printed


class Go(NamedTuple):
    filter: str
    seconds: float


class Bench:
    """A place where one mutant at a time is built and tested."""

    def __init__(self, workshop, number):
        self.shop = workshop
        self.folder = workshop.folder / f"bench{number}"
        shutil.rmtree(self.folder, ignore_errors=True)
        self.source = self.folder / "source"
        shutil.copytree(workshop.source, self.source)
        for name in ("objects", "bin", "lib"):
            (self.folder / name).mkdir()

    def judge(self, mutant, order):
        """What comes of a mutant: a status, and which program and test said so. `order` tells which to ask first."""
        path = self.source / mutant.file
        text = path.read_text()
        path.write_text(text[: mutant.start] + mutant.text + text[mutant.end :])
        self.built = {}
        try:
            changed = self._changed_units(mutant)
            self._build_libraries(changed)
            return self._test(mutant, changed, order)
        except DoesNotCompile as failure:
            return ("assertion" if failure.noticed else "no program"), str(failure)[-600:], ""
        finally:
            path.write_text(text)
            for name in ("objects", "bin", "lib"):
                for file in (self.folder / name).iterdir():
                    file.unlink()

    def _changed_units(self, mutant):
        changed = []
        function = mutant.unit.split("::")[-1]
        for unit in self.shop.units:
            if mutant.file not in unit.includes or (not mutant.everywhere and not self._mentions(unit, function)):
                continue
            if self.shop._preprocess(unit, self.source)[0] != unit.text:
                changed.append(unit)
        return changed

    def _mentions(self, unit, function):
        """Whether the object has a trace of a function: nothing is inlined, so one that does not has none of its code."""
        if unit.object not in self.shop.symbols:
            self.shop.symbols[unit.object] = _run(["nm", "-C", self.shop.build / unit.object]).stdout
        return function in self.shop.symbols[unit.object]

    def _compile(self, unit):
        if unit.object in self.built:
            return
        target = self.folder / "objects" / (hashlib.sha256(unit.object.encode()).hexdigest()[:16] + ".o")
        command = unit.command.replace(f"{self.shop.source}/", f"{self.source}/").replace(f"-I{self.shop.source}", f"-I{self.source}")
        words = shlex.split(command)
        words[words.index("-o") + 1] = str(target)
        done = _run([*words, "-w", *self.shop.headers.get(unit.target, [])], cwd=self.shop.build)
        if done.returncode != 0:
            raise DoesNotCompile(done.stderr)
        self.built[unit.object] = str(target)

    def _link(self, output, target, only=None):
        """Links what is linked to `output` elsewhere, from the mutant's objects and archives where there are any; `only`
        names the objects wanted when not all are."""
        words = []
        for word in self.shop.links[output]:
            if not (word.endswith(".o") and only is not None and word not in only):
                words.append(self.built.get(word, word))
        words[words.index("-o" if "-o" in words else "qc") + 1] = str(target)
        done = _run(words, cwd=self.shop.build)
        if done.returncode != 0:
            raise DoesNotCompile(done.stderr)

    def _build_libraries(self, changed):
        # Those that the mutant does not change lie beside those that it does: one of them loads another from there.
        for library in self.shop.shared.values():
            self._place(library).symlink_to(self.shop.build / library)
        for name, output in {**self.shop.shared, **self.shop.archives}.items():
            units = [unit for unit in changed if unit.target == name]
            if not units:
                continue
            for unit in units:
                self._compile(unit)
            place = self._place(output)
            place.unlink(missing_ok=True)
            self._link(output, place)
            if output in self.shop.archives.values():
                self.built[output] = str(place)

    def _place(self, library):
        """Where programs find a library while a mutant is judged."""
        return self.folder / "lib" / re.sub(r"(\.so\.\d+).*", r"\1", Path(library).name)

    def _affected(self, target, changed):
        output = {**self.shop.programs, **self.shop.helpers}[target]
        archive = any(word in self.built for word in self.shop.links[output] if word.endswith(".a"))
        return [unit for unit in changed if unit.target == target], archive

    def _test(self, mutant, changed, order):
        for target in order(mutant):
            output = self.shop.programs[target]
            units, archive = self._affected(target, changed)
            if not units and not archive and not self._can_notice(target, changed):
                continue
            with self._helpers(target, changed):
                for program, go in self._runs(mutant, target, output, units, archive):
                    status, printed = self.shop._run_program(
                        program, self.shop.build / output, [go.filter], {"LD_LIBRARY_PATH": str(self.folder / "lib")},
                        3 * go.seconds + 10)  # fmt: skip
                    if status != "passed":
                        failed = re.search(r"\[  FAILED  \] ([\w/.]+)", printed)
                        return status, target, failed.group(1) if failed else printed.strip()[-200:]
        return "survived", "", ""

    def _can_notice(self, target, changed):
        """Whether a program that is not itself changed is linked to a library that is, or starts other programs."""
        words = self.shop.links[self.shop.programs[target]]
        targets = {unit.target for unit in changed}
        targets |= {LOADED_BY[target] for target in targets & LOADED_BY.keys()}
        libraries = {Path(output).name for name, output in self.shop.shared.items() if name in targets}
        return target in STARTS_PROGRAMS or any(Path(word).name in libraries for word in words)

    def _runs(self, mutant, target, output, units, archive):
        """All programs in all their goes, the quick goes first as long as nothing has to be compiled."""
        goes = self.shop.goes(target, mutant)
        if not units and not archive:
            yield from ((self.shop.build / output, go) for go in goes)
            return
        for program in self._programs_for(mutant, target, output, units):
            yield from ((program, go) for go in goes)

    def _programs_for(self, mutant, target, output, units):
        """The programs that together run all tests of a test program that has to be compiled again: one with the tests that did
        not change, and one for each source of tests that did, the likeliest first."""
        tests = {unit.object for unit in self.shop.units if unit.target == target and unit.is_test}
        for unit in units:
            if not unit.is_test:
                self._compile(unit)
        support = {word for word in self.shop.links[output] if word.endswith(".o")} - tests
        changed_tests = sorted((unit for unit in units if unit.is_test), key=lambda unit: -_alike(unit.stem, mutant))
        if len(changed_tests) <= 2:
            groups = [changed_tests] if changed_tests else [[]]
            rest_in_first = True
        else:
            groups, rest_in_first = [[unit] for unit in changed_tests] + [[]], False
        unchanged = tests - {unit.object for unit in changed_tests}
        for place, group in enumerate(groups):
            for unit in group:
                self._compile(unit)
            only = support | {unit.object for unit in group} | (unchanged if rest_in_first or not group else set())
            if only == support:
                continue
            program = self.folder / "bin" / f"{target}{place}"
            self._link(output, program, only)
            yield program

    def _helpers(self, target, changed):
        """Puts the programs that tests start in the place where the tests look for them, for as long as tests run."""
        return _Swapped(self, target, changed)


class _Swapped:
    def __init__(self, bench, target, changed):
        self.bench, self.target, self.changed, self.swapped = bench, target, changed, []

    def __enter__(self):
        if self.target not in STARTS_PROGRAMS:
            return
        self.bench.shop.helpers_lock.acquire()
        try:
            for target, output in self.bench.shop.helpers.items():
                units, archive = self.bench._affected(target, self.changed)
                if units or archive:
                    for unit in units:
                        self.bench._compile(unit)
                    program = self.bench.folder / "bin" / target
                    self.bench._link(output, program)
                    home = self.bench.shop.build / output
                    home.rename(f"{home}.kept")
                    self.swapped.append(home)
                    shutil.copy(program, home)
        except BaseException:
            self.__exit__()
            raise

    def __exit__(self, *_):
        if self.target not in STARTS_PROGRAMS:
            return
        for home in self.swapped:
            Path(f"{home}.kept").rename(home)
        self.bench.shop.helpers_lock.release()


def _alike(stem, mutant):
    """How much the name of a source of tests has in common with the mutant's file and function."""
    words = set(re.findall(r"[A-Z][a-z0-9]+", stem))
    near = set(re.findall(r"[A-Z][a-z0-9]+", f"{Path(mutant.file).stem} {mutant.unit}"))
    return 2 * (Path(mutant.file).stem in stem) + len(words & near) / (1 + len(words))
