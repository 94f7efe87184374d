"""Where faults are tried: a copy of the sources with a build of its own."""

import json
import os
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import time

# The libraries are shared, so that one with a fault can take the place of the one without, and no
# program is linked again. No warnings: a fault may leave a variable unused. A place behind the end
# of a container, which the sanitizers notice in the other builds, is noticed by the library.
OPTIONS = ["-DKTRV_TEST_SERVERS=OFF", "-DBUILD_SHARED_LIBS=ON", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
           "-DCMAKE_CXX_FLAGS=-w -D_GLIBCXX_ASSERTIONS"]
# The tests of a folder, where they are not called after its last name.
UNITS = {"database/odbc": "native_database", "forms/addressbook": "native_forms"}
FILTERS = {"contract": "*Sqlite*"}  # the others need servers
LEFT_OUT = {"otheruser", "standins"}  # no program of tests; needs Java
LONG = {"native_adversary", "native_nesting"}
MEMORY = 4 << 30
OUTPUT = 64 << 20


class Unbuildable(Exception):
    pass


class Program:
    """A program of tests: the libraries that it loads, and the seconds that it takes, altogether
    and of the processor."""

    def __init__(self, path):
        self.path = path
        listed = subprocess.run(["ldd", path], check=True, capture_output=True, text=True).stdout
        self.loaded = set(re.findall(r"libktrv_\w+\.so", listed))
        self.seconds = self.work = 0


class Bench:
    """libraries: which one each source is linked into, as a path in the build."""

    def __init__(self, project, place, left_out):
        self.left_out = LEFT_OUT | left_out
        self.project = project
        self.source = place / "source"
        self.build = place / "build"
        self.run = place / "run"
        self.log = place / "build.log"
        self.unsynced = place / "unsynced.so"
        self.libraries = {}
        self.programs = {}
        self.surroundings = dict(os.environ)

    def prepare(self):
        """Brings copy and build up to date, and lets all tests pass once."""
        self.copy()
        self.build.mkdir(parents=True, exist_ok=True)
        if not (self.call("cmake", "-S", self.source, "-B", self.build, "-G", "Ninja", *OPTIONS)
                and self.say("Building what the faults are tried in")
                and self.call("cmake", "--build", self.build)
                and self.call("cc", "-shared", "-fPIC", "-o", self.unsynced,
                              self.project / "tools" / "mutation" / "unsynced.c")):
            sys.exit(f"tools/mutants: the sources cannot be built: {self.log}")
        self.read_links()
        for name, program in self.programs.items():
            started, worked = time.monotonic(), processor_seconds()
            if self.test(name, 1800, 1800):
                sys.exit(f"tools/mutants: {name} fails without a fault: {self.run}/{name}.log")
            program.seconds = time.monotonic() - started
            program.work = processor_seconds() - worked
            self.say(f"{name} passes, in {program.seconds:.0f} s")
        self.surroundings["CCACHE_DISABLE"] = "1"  # nobody wants a fault a second time

    def say(self, text):
        print(text, flush=True)
        return True

    def files(self):
        listed = subprocess.run(
            ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            cwd=self.project, check=True, capture_output=True, text=True).stdout
        return {path for path in listed.split("\0") if (self.project / path).is_file()}

    def copy(self):
        """What has not changed keeps its time, so that it is not compiled again."""
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
        """What became of the fault: the program that noticed it and how, or SURVIVED."""
        library = self.make(path, faulty)
        for name in self.order(path):
            program = self.programs[name]
            how = self.test(name, 60 + 5 * program.seconds, 10 + 3 * program.work, library)
            if how:
                return f"{name} {how}"
        return "SURVIVED"

    def command(self, target, *new):
        """What makes the target, with paths in it for others."""
        listed = subprocess.run(["ninja", "-t", "commands", "-s", target], cwd=self.build,
                                check=True, capture_output=True, text=True).stdout
        for before, after in zip(new[::2], new[1::2]):
            listed = listed.replace(f" {before}", f" {shlex.quote(str(after))}")
        return ["sh", "-c", listed]

    def make(self, path, faulty):
        """The library with the fault, which stands beside the one without."""
        library = self.libraries[path]
        folder, name = os.path.split(library)
        unit = name.removeprefix("lib").removesuffix(".so")
        clean = f"{folder}/CMakeFiles/{unit}.dir/{os.path.relpath(path, folder)}.o"
        changed, linked = self.run / "faulty.o", self.run / name
        # The source itself is changed, because it may include what lies beside it.
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
        """The programs that the fault is in: the unit's own first, then by what they cost."""
        folder = os.path.dirname(path)
        own = UNITS.get(folder, "native_" + os.path.basename(folder))
        library = os.path.basename(self.libraries[path])
        within = [name for name, each in self.programs.items() if library in each.loaded]
        return sorted(within, key=lambda name: (name != own, self.programs[name].seconds))

    def test(self, name, seconds, work, library=None):
        """How its tests ended, with the library in its namesake's place; nothing when they passed."""
        shutil.rmtree(self.run / "files", ignore_errors=True)
        (self.run / "files").mkdir(parents=True)
        command = [self.programs[name].path, "--gtest_brief=1", "--gtest_fail_fast",
                   "--gtest_filter=" + FILTERS.get(name, "*")]
        first = [str(each) for each in (self.unsynced, library) if each]
        surroundings = {**os.environ, "TMPDIR": str(self.run / "files"),
                        "LD_PRELOAD": " ".join(first)}
        with (self.run / f"{name}.log").open("w") as log:
            running = subprocess.Popen(
                command, cwd=self.run / "files", stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                env=surroundings, start_new_session=True, preexec_fn=lambda: bound(work))
            try:
                status = running.wait(seconds)
            except subprocess.TimeoutExpired:
                return "too late"
            finally:
                try:
                    os.killpg(running.pid, signal.SIGKILL)  # with what it started
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
    """A fault may never end, take all memory, or write without end."""
    resource.setrlimit(resource.RLIMIT_CPU, (int(work), int(work) + 5))
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_FSIZE, (OUTPUT, OUTPUT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
