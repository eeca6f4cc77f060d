#!/usr/bin/env python3
"""Changes one line of src/ at a time and lists the changes that no test of the host notices.

    tests/mutate/mutate.py [--seed N] [--count N] [--jobs N] [FILE or FOLDER of src/]...
    tests/mutate/mutate.py --change [--base BRANCH]     only files that differ from BRANCH (main)

Each job works in a copy of its own below build/mutate; the tree that it is started in is only read. A change that does
not compile, or that gives the same programs, is not counted. Tests may write below a folder of their own alone: a changed
machine may forget its bounds. Ends with 0 if every change that counts was noticed, with 1 if not.
"""
import argparse
import collections
import hashlib
import json
import os
import pathlib
import random
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

sys.dont_write_bytecode = True
from operators import mutations_of  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parents[2]
WORK = ROOT / "build" / "mutate"
MEMORY = pathlib.Path("/dev/shm")  # a disk is slow for what the tests do
# What only Windows or a person at the console sees.
LEFT_OUT = ("src/platform/win32/", "src/view/win32/", "src/app/")
SLOW_TEST = 0.4  # seconds; these run behind all others, one by one
GRACE = 4        # seconds of processor time beyond what the unchanged program takes
WAIT = 900       # seconds, for tests that wait for something that never comes
# The shredder's tests make a file of more than 4 GiB without content.
LIMITS = ((resource.RLIMIT_AS, 6 << 30), (resource.RLIMIT_FSIZE, 5 << 30))
# Makes all but the folder $0 read-only, for this process and those below it.
ENCLOSE = """mount --make-rprivate / && mount --bind "$0" "$0" || exit 99
cut -d' ' -f2 /proc/self/mounts | grep -Ev "^($0|/proc|/sys)(/|$)" | while read -r point; do
  mount -o remount,bind,ro "$(printf %b "$point")" || exit 99
done || exit 99
cd "$0" && exec "$@" """


def git(*arguments):
    return subprocess.run(["git", "-C", str(ROOT), *arguments], check=True, capture_output=True, text=True).stdout


def tree_files():
    names = git("ls-files", "-z", "--cached", "--others", "--exclude-standard").split("\0")
    return sorted(name for name in names if name and (ROOT / name).is_file())


def chosen_files(arguments):
    endings = (".cpp", ".h") if arguments.headers or arguments.files else ".cpp"
    sources = [name for name in tree_files() if name.startswith("src/") and name.endswith(endings)]
    if arguments.change:
        base = git("merge-base", arguments.base, "HEAD").strip()
        changed = git("diff", "--name-only", base) + git("ls-files", "--others", "--exclude-standard")
        sources = [name for name in sources if name in changed.split("\n")]
    if not arguments.files:
        return [name for name in sources if not name.startswith(LEFT_OUT)]
    wanted = [os.path.relpath(name, ROOT) for name in arguments.files]
    return [name for name in sources if any(name == row or name.startswith(row.rstrip("/") + "/") for row in wanted)]


def sample(files, seed):
    """All lines that can be changed in an order of chance, one of its changes for each: (file, line, old, new)."""
    lines = []
    for name in files:
        text = (ROOT / name).read_text().split("\n")
        for number, changes in sorted(mutations_of(text, name.endswith(".h")).items()):
            lines.append((name, number, text[number], changes))
    generator = random.Random(seed)
    generator.shuffle(lines)
    return [(name, number, old, generator.choice(changes)) for name, number, old, changes in lines]


class Tree:
    """A copy of the tree with a build of its own."""

    def __init__(self, number):
        self.folder = WORK / f"tree{number}"
        self.build_folder = self.folder / "build"
        self.programs = [self.build_folder / "tests" / "quillbarrow_tests", self.build_folder / "quillbarrow-rehearse",
                         self.build_folder / "tests" / "conformance" / "conformance"]
        self.temp = pathlib.Path(tempfile.mkdtemp(prefix="mutate-", dir=MEMORY if MEMORY.is_dir() else None))
        self.running = None

    def copy(self):
        """Makes the copy like the tree; files that are alike keep their time, so little is built."""
        wanted = set(tree_files())
        for name in wanted:
            target, content = self.folder / name, (ROOT / name).read_bytes()
            if not target.is_file() or target.read_bytes() != content:
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_bytes(content)
        for top in ("src", "tests", "cmake"):
            for path in (self.folder / top).rglob("*"):
                if path.is_file() and str(path.relative_to(self.folder)) not in wanted:
                    path.unlink()

    def configure(self):
        command = ["cmake", "-G", "Ninja", "-S", self.folder, "-B", self.build_folder, "-DCMAKE_BUILD_TYPE=None",
                   "-DCMAKE_CXX_FLAGS=-O1 -w", "-DQUILLBARROW_TESTS=ON",
                   "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"]
        if shutil.which("ld.lld"):
            command.append("-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld")
        if shutil.which("ccache"):
            command.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)

    def run(self, command, **options):
        """Whether the command says that all is well; what it prints goes nowhere."""
        self.running = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                        stdin=subprocess.DEVNULL, start_new_session=True, **options)
        try:
            return self.running.wait(WAIT) == 0
        except subprocess.TimeoutExpired:
            self.stop()
            return False

    def stop(self):
        if self.running and self.running.poll() is None:
            os.killpg(self.running.pid, signal.SIGKILL)
            self.running.wait()

    def build(self):
        return self.run(["ninja", "-C", self.build_folder, *(path.name for path in self.programs)])

    def digest(self):
        return [hashlib.sha1(path.read_bytes()).hexdigest() for path in self.programs]

    def test(self, command, seconds):
        """Plays a test, on at most `seconds` of processor time and the grace."""
        limits = (*LIMITS, (resource.RLIMIT_CPU, int(seconds) + GRACE))
        namespace = ["unshare", "--mount"] + ([] if os.getuid() == 0 else ["--map-root-user"])
        well = self.run([*namespace, "sh", "-c", ENCLOSE, self.temp, *command], env={**os.environ, "TMPDIR": str(self.temp)},
                        preexec_fn=lambda: [resource.setrlimit(limit, (most, most)) for limit, most in limits])
        for path in self.temp.iterdir():
            shutil.rmtree(path, ignore_errors=True) if path.is_dir() and not path.is_symlink() else path.unlink()
        return well

    def script(self, name):
        return self.test([self.programs[1], self.temp / "machine", self.folder / "tests" / "scripts" / name], 2)

    def sequences(self):
        sequences = self.folder / "tests" / "conformance"
        return self.test(["cmake", f"-DPROGRAM={self.programs[2]}", f"-DTESTS={sequences}",
                          f"-DMACHINE={self.temp / 'machine'}", "-P", sequences / "directed.cmake"], 2)

    def gtests(self, rows):
        names = ":".join(name for _, name, _ in rows)
        return not rows or self.test([self.programs[0], "--gtest_fail_fast", "--gtest_filter=" + names],
                                     2 * sum(seconds for *_, seconds in rows))


class Tests:
    """The tests of the unchanged program, with what each takes."""

    def __init__(self, tree, longest):
        listing, slow_list, started = tree.temp / "tests.json", WORK / "slow_tests", time.time()
        slow = slow_list.read_text().split() if slow_list.is_file() else []
        done = subprocess.run([tree.programs[0], "--gtest_brief=1", f"--gtest_output=json:{listing}",
                               "--gtest_filter=-" + ":".join(slow)], text=True, stdout=subprocess.PIPE, env={**os.environ, "TMPDIR": str(tree.temp)})
        if done.returncode != 0:
            sys.exit("the tests of the unchanged program fail:\n" + done.stdout)
        rows = [(pathlib.Path(test["file"]).parent.name, f"{test['classname']}.{test['name']}", float(test["time"][:-1]))
                for suite in json.loads(listing.read_text())["testsuites"] for test in suite["testsuite"]]
        self.rows = [row for row in rows if row[2] <= longest]
        slow += [name for _, name, seconds in rows if seconds > longest]
        slow_list.write_text("\n".join(slow))
        self.scripts = sorted(path.name for path in (tree.folder / "tests" / "scripts").glob("*.rehearsal"))
        for name in self.scripts:
            if not tree.script(name):
                sys.exit(f"{name} fails on the unchanged program")
        if not tree.sequences():
            sys.exit("the directed sequences fail on the unchanged program")
        # Within their bounds, or all that comes behind them would seem to be noticed.
        if not tree.gtests(self.rows):
            sys.exit("the tests of the unchanged program fail within their bounds")
        print(f"{len(self.rows)} tests and {len(self.scripts)} scripts, {time.time() - started:.0f} s; "
              f"too long: {' '.join(slow) or 'none'}", flush=True)

    def noticed_by(self, tree, source):
        """The name of what fails; None if nothing does. What is near to the changed file runs first."""
        folders = source.split("/")[1:-1]
        words = set(pathlib.Path(source).stem.split("_")) | set(folders)
        near = [row for row in self.rows if row[2] < SLOW_TEST and row[0] in folders]
        far = [row for row in self.rows if row[2] < SLOW_TEST and row[0] not in folders]
        slow = sorted((row for row in self.rows if row[2] >= SLOW_TEST), key=lambda row: (row[0] not in folders, row[2]))
        by_name = [name for name in self.scripts if words & set(name.split(".")[0].split("_"))]
        for name in by_name:
            if not tree.script(name):
                return name
        if not tree.gtests(near):
            return "tests of " + "/".join(folders)
        if not tree.sequences():
            return "the directed sequences"
        for name in self.scripts:
            if name not in by_name and not tree.script(name):
                return name
        if not tree.gtests(far):
            return "quick tests"
        return next((row[1] for row in slow if not tree.gtests([row])), None)


class Score:
    def __init__(self, waiting, count):
        self.waiting, self.count = collections.deque(waiting), count
        self.lock, self.over = threading.Lock(), False
        self.seen, self.lost, self.left_out = (collections.Counter() for _ in range(3))
        self.survivors = []

    def next(self):
        with self.lock:
            done = self.over or self.seen.total() + self.lost.total() >= self.count
            return None if done or not self.waiting else self.waiting.popleft()

    def enter(self, change, verdict, seconds):
        name, number, old, new = change
        with self.lock:
            if self.over:
                return
            report = f"{name}:{number + 1}: {verdict} ({seconds:.0f} s)\n  -{old.strip()}\n  +{new.strip()}"
            print(report, flush=True)
            folder = "/".join(name.split("/")[1:-1])
            if verdict == "survived":
                self.survivors.append(report)
            table, key = {"survived": (self.lost, folder), "noticed": (self.seen, folder)}.get(
                verdict.split(" ")[0], (self.left_out, verdict))
            table[key] += 1

    def print(self, seed):
        print("\nSurvivors:", *sorted(self.survivors), "", sep="\n")
        for folder in sorted({*self.seen, *self.lost}):
            print(f"{folder:28} {self.seen[folder]:4} of {self.seen[folder] + self.lost[folder]:4} noticed")
        left_out = ", ".join(f"{count} {what}" for what, count in sorted(self.left_out.items())) or "none"
        print(f"{'all':28} {self.seen.total():4} of {self.seen.total() + self.lost.total():4} noticed, seed {seed}; "
              f"not counted: {left_out}")


def work(tree, tests, score):
    unchanged = tree.digest()
    while change := score.next():
        name, number, _, new = change
        path, started = tree.folder / name, time.time()
        original = path.read_text()
        lines = original.split("\n")
        lines[number] = new
        path.write_text("\n".join(lines))
        if not tree.build():
            verdict = "does not compile"
        elif tree.digest() == unchanged:
            verdict = "same programs"
        else:
            found = tests.noticed_by(tree, name)
            verdict = f"noticed by {found}" if found else "survived"
        path.write_text(original)
        score.enter(change, verdict, time.time() - started)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("files", nargs="*")
    parser.add_argument("--change", action="store_true", help="only files that this branch changed")
    parser.add_argument("--base", default="main")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=40, help="how many changes that count")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--headers", action="store_true", help="headers too; each may take minutes to build")
    parser.add_argument("--longest", type=float, default=1.0,
                        help="tests that once took more seconds are left out; build/mutate/slow_tests names them")
    arguments = parser.parse_args()
    for number in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, lambda *_: sys.exit(130))
    score = Score(sample(chosen_files(arguments), arguments.seed), arguments.count)
    trees = [Tree(number) for number in range(arguments.jobs)]
    try:
        for tree in trees:
            print(f"building {tree.folder} …", flush=True)
            tree.copy()
            tree.configure()
            if not tree.build():
                sys.exit("the unchanged program does not build")
        tests = Tests(trees[0], arguments.longest)
        threads = [threading.Thread(target=work, args=(tree, tests, score), daemon=True) for tree in trees]
        for thread in threads:
            thread.start()
        while any(thread.is_alive() for thread in threads):
            time.sleep(0.5)
    except KeyboardInterrupt:
        print("interrupted")
    finally:
        score.over = True
        for tree in trees:
            tree.stop()
            shutil.rmtree(tree.temp, ignore_errors=True)
    score.print(arguments.seed)
    return 0 if not score.survivors else 1


if __name__ == "__main__":
    sys.exit(main())
