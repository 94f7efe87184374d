"""Tests faults in a copy of the sources with its own build."""

import contextlib
import json
import os
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import time

# Shared libraries: a faulty one replaces the original at run time, so no program is relinked. No
# warnings: a fault may leave a variable unused. Library assertions find out-of-range accesses,
# which the sanitizers find in the other builds.
OPTIONS = ["-DBUILD_SHARED_LIBS=ON", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
           "-DCMAKE_CXX_FLAGS=-w -D_GLIBCXX_ASSERTIONS"]
# Test programs of folders whose name does not follow the rule native_LASTNAME.
UNITS = {"database/odbc": "native_database"}
FILTERS = {"contract": "*Sqlite*"}  # the others need servers
CYCLES = "10"  # of native_longdays: what grows, grows with the first
LEFT_OUT = {"otheruser", "standins", "line", "failover"}  # no test program; Java; servers
LONG = {"native_adversary", "native_nesting"}
MEMORY = 4 << 30
OUTPUT = 64 << 20


class Unbuildable(Exception):
    pass


class Program:
    """A test program: the project's libraries that it loads, and the seconds of wall-clock time and
    processor time that its tests take."""

    def __init__(self, path):
        self.path = path
        listed = subprocess.run(["ldd", path], check=True, capture_output=True, text=True).stdout
        self.loaded = set(re.findall(r"libktrv_\w+\.so", listed))
        self.seconds = self.work = 0


class Bench:
    """libraries: maps each source to the path of its library in the build."""

    def __init__(self, project, place, left_out):
        self.left_out = LEFT_OUT | left_out
        self.project = project
        self.source = place / "source"
        self.build = place / "build"
        self.run = place / "run"
        self.log = place / "build.log"
        # In memory where there is some, because tests mostly wait for their databases.
        folder = "/dev/shm" if os.path.isdir("/dev/shm") else None
        self.memory = tempfile.TemporaryDirectory(prefix="ktrv-mutants-", dir=folder)
        self.libraries = {}
        self.programs = {}
        self.surroundings = dict(os.environ)

    def prepare(self):
        """Updates the copy and the build, and runs all tests once without a fault."""
        self.copy()
        self.build.mkdir(parents=True, exist_ok=True)
        if not (self.call("cmake", "-S", self.source, "-B", self.build, "-G", "Ninja", *OPTIONS)
                and self.say("Building what the faults are tried in")
                and self.call("cmake", "--build", self.build)):
            sys.exit(f"tools/mutants: the sources cannot be built: {self.log}")
        self.read_links()
        for name, program in self.programs.items():
            started, worked = time.monotonic(), processor_seconds()
            if self.test(name, 1800, 1800):
                sys.exit(f"tools/mutants: {name} fails without a fault: {self.run}/{name}.log")
            program.seconds = time.monotonic() - started
            program.work = processor_seconds() - worked
            self.say(f"{name} passes, in {program.seconds:.0f} s")
        self.surroundings["CCACHE_DISABLE"] = "1"  # no fault is compiled twice

    def say(self, text):
        print(text, flush=True)
        return True

    def files(self):
        listed = subprocess.run(
            ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            cwd=self.project, check=True, capture_output=True, text=True).stdout
        return {path for path in listed.split("\0") if (self.project / path).is_file()}

    def copy(self):
        """Unchanged files keep their modification time, so that they are not compiled again."""
        wanted = self.files()
        for path in wanted:
            copied, new = self.source / path, (self.project / path).read_bytes()
            if not copied.is_file() or copied.read_bytes() != new:
                copied.parent.mkdir(parents=True, exist_ok=True)
                copied.write_bytes(new)
                shutil.copymode(self.project / path, copied)
        for copied in self.source.rglob("*"):
            path = str(copied.relative_to(self.source))
            if copied.is_file() and path not in wanted and not path.startswith("build/"):
                copied.unlink()

    def call(self, *command):
        with self.log.open("w") as log:
            return not subprocess.run(command, cwd=self.build, stdout=log, stderr=log,
                                      env=self.surroundings).returncode

    def read_links(self):
        for line in (self.build / "build.ninja").read_text().splitlines():
            match = re.match(r"build (\S+): CXX_(SHARED_LIBRARY|EXECUTABLE)_LINKER__\S+ (.*)", line)
            if not match:
                continue
            target, kind, inputs = match.groups()
            name = os.path.basename(target)
            if kind == "EXECUTABLE" and name not in self.left_out:
                self.programs[name] = Program(self.build / target)
            elif kind == "SHARED_LIBRARY":
                for folder, path in re.findall(r"(\S*?)CMakeFiles/\S+?\.dir/(\S+)\.o\b", inputs):
                    self.libraries[folder + path] = target

    def outcome(self, path, faulty):
        """The program that detected the fault and how, or SURVIVED."""
        library = self.make(path, faulty)
        for name in self.order(path):
            program = self.programs[name]
            how = self.test(name, 60 + 5 * program.seconds, 10 + 3 * program.work, library)
            if how:
                return f"{name} {how}"
        return "SURVIVED"

    def command(self, target, *new):
        """The command that builds the target; new: pairs of a path and its replacement."""
        listed = subprocess.run(["ninja", "-t", "commands", "-s", target], cwd=self.build,
                                check=True, capture_output=True, text=True).stdout
        for before, after in zip(new[::2], new[1::2]):
            listed = listed.replace(f" {before}", f" {shlex.quote(str(after))}")
        return ["sh", "-c", listed]

    def make(self, path, faulty):
        """Builds the library with the fault, next to the original."""
        library = self.libraries[path]
        folder, name = os.path.split(library)
        unit = name.removeprefix("lib").removesuffix(".so")
        clean = f"{folder}/CMakeFiles/{unit}.dir/{os.path.relpath(path, folder)}.o"
        changed, linked = self.run / "faulty.o", self.run / name
        # Changes the source in place, because it may include files of its folder.
        source = self.source / path
        times, text = source.stat(), source.read_text()
        source.write_text(faulty)
        try:
            made = self.call(*self.command(clean, clean, changed))
        finally:
            source.write_text(text)
            os.utime(source, ns=(times.st_atime_ns, times.st_mtime_ns))
        link = self.command(library, library, linked, clean, changed)
        if not made or not self.call(*link):
            raise Unbuildable
        return linked

    def order(self, path):
        """The programs that load the faulty library: the folder's own first, then by duration."""
        folder = os.path.dirname(path)
        own = UNITS.get(folder, "native_" + os.path.basename(folder))
        library = os.path.basename(self.libraries[path])
        within = [name for name, each in self.programs.items() if library in each.loaded]
        return sorted(within, key=lambda name: (name != own, self.programs[name].seconds))

    def test(self, name, seconds, work, library=None):
        """Runs a program with the library preloaded. Returns how it failed; "" if it passed."""
        files = os.path.join(self.memory.name, name)
        shutil.rmtree(files, ignore_errors=True)
        os.makedirs(files)
        self.run.mkdir(parents=True, exist_ok=True)
        command = [self.programs[name].path, "--gtest_brief=1", "--gtest_fail_fast",
                   "--gtest_filter=" + FILTERS.get(name, "*")]
        surroundings = {**os.environ, "TMPDIR": files, "KTRV_CYCLES": CYCLES}
        if library:
            surroundings["LD_PRELOAD"] = str(library)
        with (self.run / f"{name}.log").open("w") as log:
            running = subprocess.Popen(
                command, cwd=files, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                env=surroundings, start_new_session=True, preexec_fn=lambda: bound(work))
            try:
                status = running.wait(seconds)
            except subprocess.TimeoutExpired:
                return "too late"
            finally:
                try:
                    os.killpg(running.pid, signal.SIGKILL)  # and its child processes
                except ProcessLookupError:
                    pass
                running.wait()
        if status == -signal.SIGXCPU:
            return "too late"
        return "" if status == 0 else "crashed" if status < 0 else "failed"


def processor_seconds():
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def bound(work):
    """Limits time, memory and output: a fault may cause an endless loop."""
    # The scheduler treats each session as a group: give this one the niceness of this program.
    with contextlib.suppress(OSError), open("/proc/self/autogroup", "w") as group:
        group.write(str(os.nice(0)))
    resource.setrlimit(resource.RLIMIT_CPU, (int(work), int(work) + 5))
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_FSIZE, (OUTPUT, OUTPUT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
