"""A private desktop for driving the real dq480 as an operator does: its own X server, window manager,
session and accessibility bus, and a FAT16 card image mounted through fusefat."""

import argparse
import importlib.util
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import traceback

SKIP = 77  # ctest's SKIP_RETURN_CODE for this test


class Skip(Exception):
    pass


class JourneyFailed(AssertionError):
    pass


def require_tools(names):
    missing = [name for name in names if shutil.which(name) is None]
    if missing:
        raise Skip("missing tools: " + ", ".join(missing))


def wait_until(condition, what, timeout=15.0, interval=0.05):
    """Polls `condition` until it returns something true; fails naming `what` after `timeout`."""
    deadline = time.monotonic() + timeout
    last_error = None
    while True:
        try:
            value = condition()
            if value:
                return value
        except Exception as error:  # the tree changes under us while windows open and close
            last_error = error
        if time.monotonic() > deadline:
            detail = f" (last error: {last_error})" if last_error else ""
            raise JourneyFailed(f"timed out waiting for {what}{detail}")
        time.sleep(interval)


def run(args, check=True, **kwargs):
    result = subprocess.run(args, capture_output=True, text=True, **kwargs)
    if check and result.returncode != 0:
        raise JourneyFailed(f"{' '.join(map(str, args))} failed ({result.returncode}): "
                            f"{result.stdout}{result.stderr}")
    return result


def detach_foreign_mounts(keep):
    """Inside the journey's own mount namespace: detaches other tests' FAT and FUSE volumes (cards
    the program would offer as card slots, or a busy FUSE mount whose statfs blocks), except any
    holding a path of `keep`."""
    keep = [os.path.realpath(path) for path in keep]
    points = []
    with open("/proc/self/mountinfo") as table:
        for line in table:
            fields = line.split()
            point = fields[4].encode().decode("unicode_escape")
            kind = fields[fields.index("-") + 1]
            if not (kind.startswith("fuse") or kind in ("vfat", "msdos")):
                continue
            if any(path == point or path.startswith(point.rstrip("/") + "/") for path in keep):
                continue
            points.append(point)
    for point in sorted(points, key=len, reverse=True):
        subprocess.run(["umount", "-l", point], capture_output=True)


class CardJourney:
    """A journey that ends on a card image; a subclass's run() takes the steps."""

    def __init__(self, args, desktop, workdir):
        import pyatspi  # needs the session bus chosen by the desktop

        from atspi_operator import Operator

        self.args = args
        self.desktop = desktop
        self.work = workdir
        self.image = os.path.join(workdir, "card.img")
        self.card = os.path.join(workdir, "card")
        self.op = Operator(pyatspi)

    @classmethod
    def main(cls, doc, prefix, tools=(), screen="1280x1024x24", extra=()):
        def check(args):
            if os.geteuid() != 0:
                raise Skip("mounting the card image through fusefat needs root")
            require_tools(["mkfs.fat", "fsck.fat", "fusefat", "fusermount", "mdir", "mcopy", "unshare",
                           "umount", "cmp", *tools])
            if not os.path.exists("/dev/fuse"):
                raise Skip("no /dev/fuse on this machine")
            for program in (args.dq480, args.cli):
                if not os.access(program, os.X_OK):
                    raise JourneyFailed(f"{program} is not built")
            # Again in a mount namespace of its own: the program lists every mounted volume to find
            # the card slot, and other tests' mounts must not be among them.
            if os.environ.get("DQ480_JOURNEY_NAMESPACE") == "1":
                return
            if subprocess.run(["unshare", "--mount", "--propagation", "private", "true"], capture_output=True).returncode != 0:
                raise Skip("this machine does not allow a mount namespace of its own")
            os.environ["DQ480_JOURNEY_NAMESPACE"] = "1"
            os.execvp("unshare", ["unshare", "--mount", "--propagation", "private", "--", sys.executable, *sys.argv])

        def body(args, desktop, workdir):
            detach_foreign_mounts([args.dq480, args.cli, sys.argv[0]])
            desktop.start(screen)
            cls(args, desktop, workdir).run()

        return journey_main(doc, prefix, check, body, [("--cli", {"required": True}), *extra])


def check_card_image(image, cli, project, sentences, workdir):
    """An unmounted card as the device meets it: a sound FAT, CONTENTS holding only DQ480.CSV (byte
    for byte dq480-cli's conversion of `project`) and `sentences` (card name: its PC source)."""
    run(["fsck.fat", "-n", image])  # fails with the faults it finds
    # fusefat leaves the FAT's second entry as 0x8000, which mtools would take for damage.
    os.environ["MTOOLS_SKIP_CHECK"] = "1"
    on_card = sorted(os.path.basename(line) for line in run(["mdir", "-b", "-i", image, "::CONTENTS"]).stdout.split())
    expected = sorted(["DQ480.CSV", *sentences])
    if on_card != expected:
        raise JourneyFailed(f"the card holds {on_card}, not {expected}")
    copied = os.path.join(workdir, "from-card")
    os.makedirs(copied)
    run(["mcopy", "-n", "-i", image, *[f"::CONTENTS/{n}" for n in expected], copied])
    converted = os.path.join(workdir, "converted")
    os.makedirs(converted)
    run([cli, "convert", project, os.path.join(converted, "DQ480.CSV")])
    run(["cmp", os.path.join(converted, "DQ480.CSV"), os.path.join(copied, "DQ480.CSV")])
    for name, source in sentences.items():
        run(["cmp", source, os.path.join(copied, name)])


class Desktop:
    """Xvfb, openbox, a session bus (which starts the accessibility bus) and the card mount; it ends
    every process it starts, by its own id or process group."""

    def __init__(self, workdir, artifacts, window_manager=True):
        self.workdir = workdir
        self.artifacts = artifacts
        self.window_manager = window_manager
        self.processes = []
        self.mounts = []
        self.shots = 0

    def daemon_line(self, command, failure):
        """Starts a server that writes where it listens to the pipe `command` gets; returns that."""
        read, write = os.pipe()
        process = subprocess.Popen(command(write), pass_fds=(write,), stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, start_new_session=True)
        os.close(write)
        self.processes.append(process)
        with os.fdopen(read) as pipe:
            line = pipe.readline().strip()
        if line:
            return line
        raise Skip(failure)

    def start(self, screen="1280x1024x24"):
        os.environ["DISPLAY"] = ":" + self.daemon_line(
            # A key held past the repeat delay types twice; on a loaded machine xdotool's key release
            # may come that late, so keys repeat only after ten seconds here.
            lambda fd: ["Xvfb", "-displayfd", str(fd), "-screen", "0", screen, "-nolisten", "tcp", "-noreset",
                        "-ardelay", "10000"],
            "Xvfb did not start")
        runtime = os.path.join(self.workdir, "runtime")
        os.makedirs(runtime, mode=0o700)
        os.environ["XDG_RUNTIME_DIR"] = runtime
        home = os.environ["HOME"] = os.path.join(self.workdir, "home")
        os.makedirs(home)
        os.environ.update(XDG_CONFIG_HOME=os.path.join(home, ".config"), XDG_CACHE_HOME=os.path.join(home, ".cache"))
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.daemon_line(
            lambda fd: ["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--print-address={fd}"],
            "the session bus did not start")
        os.environ.update(QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_ACCESSIBILITY="1", QT_QPA_PLATFORM="xcb")
        for name in ("QT_QPA_PLATFORMTHEME", "SESSION_MANAGER"):
            os.environ.pop(name, None)
        # An operator's desktop has a window manager: it stacks the windows (a message box over the
        # window in front, or under it) and decides where the focus goes when one closes. Without
        # one, nothing but the program itself gives the focus back.
        if self.window_manager:
            self.launch("openbox", "--sm-disable")
            wait_until(lambda: subprocess.run(["xdotool", "get_num_desktops"], capture_output=True).returncode == 0,
                       "the window manager to start")

    def start_sound_server(self):
        """A PulseAudio daemon of the journey's own, its default input a 440 Hz sine and its output a
        null sink, which the program then uses; False, said in one line, where none can start."""
        if shutil.which("pulseaudio") is None or shutil.which("pactl") is None:
            print("no sound server here (pulseaudio, pulseaudio-utils): recording and playing left out")
            return False
        socket = os.path.join(self.workdir, "pulse", "native")
        os.makedirs(os.path.dirname(socket), mode=0o700)
        self.processes.append(subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--log-level=error",
             "-L", f"module-native-protocol-unix auth-anonymous=1 socket={socket}",
             "-L", "module-null-sink sink_name=journey_out",
             "-L", "module-sine-source source_name=journey_sine frequency=440"],
            env=dict(os.environ, PULSE_RUNTIME_PATH=os.path.dirname(socket)), stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, start_new_session=True))
        os.environ["PULSE_SERVER"] = f"unix:{socket}"
        try:
            wait_until(lambda: run(["pactl", "info"], check=False).returncode == 0, "the sound server", 10)
        except JourneyFailed:
            print("the sound server does not start here: recording and playing left out")
            return False
        run(["pactl", "set-default-source", "journey_sine"])
        run(["pactl", "set-default-sink", "journey_out"])
        return True

    def mount_card(self, image, mount_point):
        run(["mkfs.fat", "-C", "-F", "16", "-n", "DQ480", image, "65536"])
        os.makedirs(mount_point)
        if run(["fusefat", "-o", "rw+", image, mount_point], check=False).returncode != 0:
            raise Skip("this machine does not allow FUSE mounts")
        self.mounts.append(mount_point)

    def unmount(self, mount_point):
        if mount_point in self.mounts:
            self.mounts.remove(mount_point)
            run(["fusermount", "-u", mount_point])
            # fusefat writes its last sectors as it goes away; the image is whole once it has gone.
            wait_until(lambda: not os.path.ismount(mount_point), "the card to be unmounted")

    def launch(self, program, *args):
        log = open(os.path.join(self.artifacts, f"{os.path.basename(program)}-{len(self.processes)}.log"), "w")
        process = subprocess.Popen([program, *args], stdout=log, stderr=subprocess.STDOUT)
        self.processes.append(process)
        return process

    def step(self, name, action):
        print(f"--- {name}", flush=True)
        try:
            return action()
        finally:
            self.screenshot(name)

    def screenshot(self, name):
        self.shots += 1
        subprocess.run(["import", "-window", "root", os.path.join(self.artifacts, f"{self.shots:02d}-{name}.png")],
                       capture_output=True)

    def stop(self):
        for mount_point in list(self.mounts):
            subprocess.run(["fusermount", "-u", mount_point], capture_output=True)
        self.mounts.clear()
        for process in reversed(self.processes):
            if process.poll() is not None:
                continue
            try:
                if process.pid == os.getpgid(process.pid):
                    os.killpg(process.pid, signal.SIGTERM)  # with the buses the bus started
                else:
                    process.terminate()
                process.wait(timeout=5)
            except (ProcessLookupError, subprocess.TimeoutExpired):
                process.kill()


def journey_main(doc, prefix, check, body, extra=()):
    """The command line of a journey (--dq480, `extra`, --artifacts, --keep, --no-window-manager):
    `check` raises Skip for what the machine lacks, then `body(args, desktop, workdir)` runs on a fresh
    desktop. Returns ctest's exit code: 0 passed, SKIP, 1 failed (with a screenshot of the end)."""
    parser = argparse.ArgumentParser(description=doc.splitlines()[0])
    parser.add_argument("--dq480", required=True)
    for name, options in extra:
        parser.add_argument(name, **options)
    parser.add_argument("--artifacts", required=True)
    parser.add_argument("--keep", action="store_true", help="keep the screenshots after success")
    parser.add_argument("--no-window-manager", action="store_true", help="a bare X display, without openbox")
    args = parser.parse_args()
    try:
        require_tools(["Xvfb", "dbus-daemon", "xdotool", "import"] + ([] if args.no_window_manager else ["openbox"]))
        # Imported only once the private session bus exists: it binds to the bus it finds.
        if importlib.util.find_spec("pyatspi") is None:
            raise Skip("python3-pyatspi is not installed")
        check(args)
    except Skip as reason:
        print(f"SKIP: {reason}")
        return SKIP
    except JourneyFailed as error:
        print(f"FAILED: {error}")
        return 1
    shutil.rmtree(args.artifacts, ignore_errors=True)
    os.makedirs(args.artifacts)
    workdir = tempfile.mkdtemp(prefix=prefix)
    desktop = Desktop(workdir, args.artifacts, window_manager=not args.no_window_manager)
    started = time.monotonic()
    try:
        body(args, desktop, workdir)
        result = 0
    except Skip as reason:
        print(f"SKIP: {reason}")
        result = SKIP
    except Exception:
        traceback.print_exc()
        desktop.screenshot("failure")
        print(f"FAILED after {time.monotonic() - started:.0f} s; screenshots and logs in {args.artifacts}")
        result = 1
    finally:
        desktop.stop()
        shutil.rmtree(workdir, ignore_errors=True)
    if result != 1 and not args.keep:
        shutil.rmtree(args.artifacts, ignore_errors=True)
    if result == 0:
        print(f"PASS in {time.monotonic() - started:.0f} s")
    return result
