"""A Debian of the tests' own: what every Debian has, and what is then installed on it, in memory."""

import contextlib
import os
import pathlib
import signal
import subprocess
import sys
import tempfile

from .waiting import missing, need, wait_until

USER = "ann"
USER_NUMBER = 1000
NUMBERS = {"root": 0, USER: USER_NUMBER}
PATH = "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"
SIZE = "6g"


def sources():
    """The lines for apt that name the archives of Debian which this machine uses."""
    wanted = "$(SITE) $(RELEASE) $(COMPONENT)"
    listed = subprocess.run(
        ["apt-get", "indextargets", "--format", wanted, "Created-By: Packages", "Origin: Debian"],
        capture_output=True, text=True, check=True,
    )  # fmt: skip
    found = sorted({f"deb {line}" for line in listed.stdout.splitlines() if line.endswith(" main")})
    return found or missing("no list of Debian's packages; apt-get update makes one")


def codename():
    """The name of the Debian that this machine is: "bookworm"."""
    for line in pathlib.Path("/etc/os-release").read_text().splitlines():
        key, _, value = line.partition("=")
        if key == "VERSION_CODENAME":
            return value.strip('"')
    raise AssertionError("/etc/os-release names no Debian")


def have_own_world():
    """Starts the calling program anew where nobody but it and what it starts sees what it mounts, and where all of it
    goes with it: whatever ends the program, the kernel ends the rest. Does nothing where that is done, or refused.
    """
    new_world = ["unshare", "--mount", "--propagation", "private", "--pid", "--fork", "--kill-child", "--mount-proc"]
    if is_own_world() or subprocess.run([*new_world, "true"], stderr=subprocess.DEVNULL).returncode != 0:
        return
    os.execvp(new_world[0], [*new_world, sys.executable, *sys.argv])


def is_own_world():
    return os.getpid() == 1


class BareSystem:
    """A fresh Debian in a folder, for a program that has a world of its own; gone when the block or the program ends.

    Its user, USER, has a home as an installation gives it.
    """

    def __init__(self):
        self.root = None

    def __enter__(self):
        need("debootstrap", "chroot", "mount", "unshare")
        if not is_own_world():
            missing("not root, or not allowed to make namespaces: a system can be made by nobody else")
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="larkspool-system."))
        try:
            self._mount("tmpfs", "", "mode=755,size=" + SIZE)
            self._make()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.end_programs_of()
        if self.root.is_mount():
            subprocess.run(["umount", "--recursive", "--lazy", self.root], check=True)
        self.root.rmdir()

    def _mount(self, kind, name, options="defaults"):
        self._finish(["mount", "-t", kind, "-o", options, kind, self.root / name], 20)

    def _make(self):
        archives = sources()
        release = codename()
        mirror = next(line.split()[1] for line in archives if line.split()[2] == release)
        base = ["debootstrap", "--variant=minbase", "--include=ca-certificates"]
        self._finish([*base, release, self.root, mirror], 1200)
        (self.root / "etc/apt/sources.list").write_text("".join(line + "\n" for line in archives))
        # Nothing that is installed starts a service, and nothing is asked.
        (self.root / "usr/sbin/policy-rc.d").write_text("#!/bin/sh\nexit 101\n")
        (self.root / "usr/sbin/policy-rc.d").chmod(0o755)
        for kind, name in (("proc", "proc"), ("devpts", "dev/pts"), ("tmpfs", "dev/shm")):
            self._mount(kind, name)
        self.run("useradd", "--create-home", "--uid", USER_NUMBER, "--shell", "/bin/bash", USER)
        self.run("install", "-d", "-m", "700", "-o", USER, "-g", USER, self.runtime_folder)
        self.run("apt-get", "update", deadline=300)

    # Places: `root` and `home` as the test names them, `runtime_folder` as the programs inside do

    @property
    def home(self):
        """The user's home, for this process."""
        return self.root / "home" / USER

    @property
    def runtime_folder(self):
        return f"/run/user/{USER_NUMBER}"

    # Programs inside

    def environment(self, **more):
        """What a login gives the user's programs."""
        return {
            "PATH": PATH, "HOME": f"/home/{USER}", "USER": USER, "LOGNAME": USER, "LANG": "C.UTF-8",
            "XDG_RUNTIME_DIR": self.runtime_folder, **more,
        }  # fmt: skip

    def words(self, *command, user=None):
        """The words that start a command inside, as root or as the user."""
        who = [f"--userspec={user}:{user}", f"--groups={user}"] if user else []
        return ["chroot", *who, str(self.root), *(str(word) for word in command)]

    def run(self, *command, user=None, deadline=60, env=None):
        """Runs a command inside to its end; what it has printed."""
        return self._finish(self.words(*command, user=user), deadline, env)

    def processes(self, user=None, program=None):
        """The numbers of the processes inside: of a user, of a program by its file."""
        here = os.stat(self.root)
        found = []
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                place = os.stat(folder / "root")
                if (place.st_dev, place.st_ino) != (here.st_dev, here.st_ino):
                    continue
                is_wanted = program is None or os.readlink(folder / "exe").startswith(f"{self.root}{program}")
                if is_wanted and (user is None or folder.stat().st_uid == NUMBERS[user]):
                    found.append(int(folder.name))
            except (FileNotFoundError, ProcessLookupError, PermissionError):
                continue  # it has ended meanwhile, or is none of ours
        return found

    def end_programs_of(self, user=None, deadline=15.0):
        """Asks them to end and waits until they have; those that do not are killed."""
        for number, patience in ((signal.SIGTERM, deadline), (signal.SIGKILL, 5.0)):
            for process in self.processes(user):
                with contextlib.suppress(ProcessLookupError):
                    os.kill(process, number)
            try:
                return wait_until(lambda: not self.processes(user), "the programs end", patience)
            except AssertionError:
                if number == signal.SIGKILL:
                    raise

    def install(self, *packages, deadline=900):
        """With what they need and nothing else."""
        return self.run("apt-get", "install", "--yes", "--no-install-recommends", *packages, deadline=deadline)

    def files(self, name):
        """Every path inside whose last part matches the pattern, without /proc."""
        found = self.run("find", "/", "-xdev", "-iname", name, deadline=120)
        return sorted(found.splitlines())

    def _finish(self, words, deadline, env=None):
        plain = {"PATH": PATH, "HOME": "/root", "LANG": "C.UTF-8", "DEBIAN_FRONTEND": "noninteractive"}
        proxies = {key: value for key, value in os.environ.items() if key.lower().endswith("_proxy")}
        done = subprocess.run(
            [str(word) for word in words], env=env or plain | proxies,
            stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=deadline,
        )  # fmt: skip
        if done.returncode != 0:
            raise AssertionError(f"{words} failed with {done.returncode}:\n{done.stdout[-3000:]}\n{done.stderr[-3000:]}")
        return done.stdout
