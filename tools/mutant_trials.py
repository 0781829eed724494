"""Tries one change of a source: compiles that source alone, links the tests anew and runs those that reach it.

Each worker has a folder of its own. The changed program runs apart: it sees the whole computer, can
change nothing but that folder, and has a /tmp that goes with it; so what it deletes by mistake is its own.
"""

import hashlib
import os
import shlex
import shutil
import signal
import subprocess
from dataclasses import dataclass
from pathlib import Path

PROGRAM = "zelvreg-tests"
# What one run may take of the computer.
MEMORY, DISK = 6 << 30, 2 << 30
# A run is given up after this many times what it should take, and some seconds.
PATIENCE, SLACK = 6, 15
COUNTING = {"-fprofile-instr-generate", "-fcoverage-mapping"}

NOTICED, TIMED_OUT, SURVIVED = "noticed", "noticed by time", "survived"
NOT_COMPILED, THE_SAME = "does not compile", "compiles to the same"


@dataclass(frozen=True)
class Compilation:
    """How a source is compiled: the command without its file, and the object that the link command names."""
    command: tuple
    directory: str
    file: str
    object: str

    @staticmethod
    def of(entry):
        words = shlex.split(entry["command"])
        if words[0].endswith("ccache"):
            words = words[1:]
        kept, skip = [], False
        for word in words:
            if skip or word in COUNTING or word in ("-MD", "-c", entry["file"], "-Werror"):
                skip = False
            elif word in ("-MT", "-MF", "-o"):
                skip = True
            else:
                kept.append(word)
        return Compilation(tuple(kept) + ("-w",), entry["directory"], entry["file"],
                           words[words.index("-o") + 1])

    def flags(self):
        """For clang's library, which is the compiler itself."""
        return list(self.command[1:])


class Worker:
    """A folder with a program that is linked with a changed object, and its runs."""

    def __init__(self, folder, checkout, build, link, lang=None):
        self.folder, self.checkout, self.build, self.link = folder, checkout, build, link
        self.originals = {}
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        if lang:
            shutil.copytree(lang, folder / "lang")

    def compiled(self, compilation, content):
        """The object that a source with this text becomes; None if it does not compile."""
        source, result = self.folder / "source.cpp", self.folder / "changed.o"
        source.write_bytes(content)
        result.unlink(missing_ok=True)
        status = subprocess.run([*compilation.command, "-c", source, "-o", result], check=False,
                                cwd=compilation.directory, stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode
        return result if status == 0 else None

    def digest_of_original(self, compilation, content):
        if compilation.file not in self.originals:
            made = self.compiled(compilation, content)
            self.originals[compilation.file] = made and hashlib.sha256(made.read_bytes()).digest()
        return self.originals[compilation.file]

    def build_changed(self, compilation, original, changed):
        """Makes the program with the changed text; None if it is made, otherwise why it is not."""
        digest = self.digest_of_original(compilation, original)
        made = self.compiled(compilation, changed)
        if made is None:
            return NOT_COMPILED
        if hashlib.sha256(made.read_bytes()).digest() == digest:
            return THE_SAME
        return None if self.linked(compilation.object, made) else NOT_COMPILED

    def linked(self, replaced, made):
        """Links the program with another object in place of one."""
        words = [str(made) if word == replaced else word for word in self.link]
        program = self.folder / PROGRAM
        program.unlink(missing_ok=True)
        words[words.index("-o") + 1] = str(program)
        return subprocess.run(words, cwd=self.build, check=False, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def command(self, arguments):
        """Runs the program apart."""
        apart = ["bwrap", "--die-with-parent", "--new-session", "--unshare-pid", "--unshare-ipc",
                 "--ro-bind", "/", "/", "--dev", "/dev", "--proc", "/proc",
                 "--size", str(DISK), "--tmpfs", "/tmp", "--size", str(DISK), "--tmpfs", "/var/tmp",
                 "--ro-bind", self.checkout, self.checkout, "--ro-bind", self.build, self.build,
                 "--bind", self.folder, self.folder, "--chdir", self.folder,
                 "--setenv", "HOME", self.folder, "--setenv", "TMPDIR", "/tmp",
                 "--setenv", "LLVM_PROFILE_FILE", os.devnull]
        return [*apart, "prlimit", f"--as={MEMORY}", f"--fsize={DISK}", "--core=0", "--",
                self.folder / PROGRAM, *arguments]

    def run(self, suites, seconds, *arguments):
        """Runs suites that should take that long: whether they pass, or None if they take far too long."""
        tests = ":".join(f"{suite}.*" for suite in suites)
        process = subprocess.Popen(self.command([f"--gtest_filter={tests}", *arguments]),
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, start_new_session=True)
        try:
            return process.wait(PATIENCE * seconds + SLACK) == 0
        except subprocess.TimeoutExpired:
            # All that runs apart ends with the first of it.
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
            return None

    def try_suites(self, stages, seconds):
        """Runs one group of suites after the other until one of them notices the change."""
        for suites in stages:
            if not suites:
                continue
            passed = self.run(suites, sum(seconds[suite] for suite in suites), "--gtest_fail_fast")
            if not passed:
                return TIMED_OUT if passed is None else NOTICED
        return SURVIVED


def link_command(build):
    """The words of the command that links the tests."""
    last = subprocess.run(["ninja", "-C", build, "-t", "commands", PROGRAM], check=True, text=True,
                          stdout=subprocess.PIPE).stdout.splitlines()[-1]
    return shlex.split(last.removeprefix(": && ").removesuffix(" && :"))


def stages_of(suites, files, seconds, room, first=10):
    """The suites that reach a change in the order in which they probably notice it: the quick ones of its
    room, as far as `first` seconds go, then all others."""
    near = sorted((suite for suite in suites if str(Path(files[suite]).parent).endswith(f"tests/{room}")),
                  key=seconds.get)
    early, spent = [], 0.0
    for suite in near:
        spent += seconds[suite]
        if early and spent > first:
            break
        early.append(suite)
    return early, [suite for suite in suites if suite not in set(early)]
