"""A copy of the sources with a build of its own, in which changes are tried."""
import os
import re
import signal
import subprocess
import time
from pathlib import Path

SURROUNDINGS = {"QT_QPA_PLATFORM": "offscreen", "LANG": "en_GB.UTF-8", "LC_ALL": "", "QUILLON_DIR": "",
                "TZ": "UTC", "no_proxy": "*", "QTEST_DISABLE_STACK_DUMP": "1"}


class House:
    """The copy: `tree` with the sources, `build` beside them."""

    def __init__(self, root, folder, jobs):
        self.root = Path(root)
        self.tree = Path(folder) / "tree"
        self.build = self.tree / "build" / "default"
        self.jobs = jobs
        self.only = {}  # patterns of tests by their folder
        self.seconds = {}

    def refresh(self):
        """Makes the copy what is in the repository's folder now; files that are the same keep their time."""
        names = subprocess.run(["git", "ls-files", "-z", "-co", "--exclude-standard"], cwd=self.root, check=True,
                               stdout=subprocess.PIPE, text=True).stdout.split("\0")
        known = set()
        for name in filter(None, names):
            source, copy = self.root / name, self.tree / name
            if not source.is_file():
                continue
            known.add(copy)
            content = source.read_bytes()
            if not copy.exists() or copy.read_bytes() != content:
                copy.parent.mkdir(parents=True, exist_ok=True)
                copy.write_bytes(content)
                copy.chmod(source.stat().st_mode)
        for old in [each for each in self.tree.rglob("*") if each.is_file()]:
            if old not in known and self.build.parent not in old.parents:
                old.unlink()

    def configure(self):
        # A change is linked into one library, not into each test that meets it.
        subprocess.run(["cmake", "--preset", "default", "-DQUILLON_TESTS=ON", "-DQUILLON_SHARED_FLOORS=ON",
                        "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON"], cwd=self.tree, check=True,
                       env=self.environment(), stdout=subprocess.DEVNULL)

    def environment(self):
        # What the repository's own build has compiled need not be compiled again.
        return {**os.environ, "CCACHE_BASEDIR": str(self.tree), "CCACHE_NOHASHDIR": "1"}

    def made(self, *targets):
        """Builds; what the compiler said if it refused."""
        run = subprocess.run(["ninja", f"-j{self.jobs}", *targets], cwd=self.build, env=self.environment(),
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        return None if run.returncode == 0 else run.stdout

    def object_of(self, path):
        """The object file of a source, or nothing if it was not built. One that is older is of a target that is gone."""
        found = self.build.glob(f"{os.path.dirname(path)}/CMakeFiles/*.dir/{os.path.basename(path)}.o")
        return max(found, key=lambda each: each.stat().st_mtime, default=None)

    def tests_of(self, folder):
        """The tests of a folder; where there is a pattern for it, those that it is found in."""
        prefix = "tst_" + folder.replace("/", "_") + "_"
        names = [each.stem[4:] for each in sorted((self.tree / "tests" / folder).glob("tst_*.cpp"))]
        return [prefix + name for name in names if re.search(self.only.get(folder, ""), name)]

    def source_of(self, test, folder):
        prefix = "tst_" + folder.replace("/", "_") + "_"
        return (self.tree / "tests" / folder / f"tst_{test[len(prefix):]}.cpp").read_text()

    def nearest_first(self, path, folder):
        """The tests of a folder: those that include the header of the source, then the others, the quick ones first."""
        header = re.sub(r"(_\w+)?\.cpp$", ".h", path)
        named = re.sub(r"\.cpp$", ".h", path)

        def distance(test):
            text = self.source_of(test, folder)
            near = f'"{named}"' in text or f'"{header}"' in text
            return not near, self.seconds.get(test, 0)

        return sorted((test for test in self.tests_of(folder) if test in self.seconds), key=distance)

    def run(self, test, patience):
        """Runs a test: True when it passes in time. Ends only what it started."""
        started = time.monotonic()
        with subprocess.Popen([self.build / "tests" / test, "-maxwarnings", "1"], cwd=self.build / "tests",
                              env={**self.environment(), **SURROUNDINGS}, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, start_new_session=True) as program:
            try:
                result = program.wait(patience)
            except subprocess.TimeoutExpired:
                os.killpg(program.pid, signal.SIGKILL)
                result = -1
            self.seconds.setdefault(test, time.monotonic() - started)
        return result == 0
