"""A desk: a private session bus, a virtual display, a real tray host, a notification daemon."""

import os
import pathlib
import shutil
import subprocess

from .bus import Bus
from .fixture import Fixture
from .hosts import HOSTS
from .hosts.host import WATCHER, Look
from .kelvane import kept_environment
from .notices import NOTIFICATIONS, Notices
from .private_bus import start_bus
from .processes import Processes, wait_until


class Desk(Fixture):
    """`host` is a key of HOSTS, `power` a running Power or None; `environment` is for programs.

    `notifier` is "dunst" or "none".
    """

    def __init__(self, directory, host="xfce", notifier="dunst", power=None, look=Look(),
                 accessibility=False):
        self.directory = pathlib.Path(directory)
        self.host = HOSTS[host](look)
        self._notifier = "none" if self.host.has_notifications else notifier
        self._power = power
        self._accessibility = accessibility
        self.processes = Processes(self.directory / "log")
        self.environment = {}
        self.notices = None

    @property
    def mock_environment(self):
        """For programs that read /sys or listen to uevents themselves."""
        return {**self.environment, **self._power.mock_environment}

    def start(self, name, *command, **variables):
        """Starts a program on the desk, ended with it."""
        return self.processes.start(name, command, {**self.environment, **variables})

    def start_panel(self):
        """Starts the host's panel and waits for the tray."""
        self.host.start_panel(self)
        wait_until(lambda: self.bus.has_owner(WATCHER), f"{self.host.desktop}'s tray")
        self.host.settle(self)

    def kill_panel(self):
        """Ends the panel as a crash does and waits until the tray is gone."""
        for name in reversed(self.host.panel_processes):
            self.processes.kill(name)
        wait_until(lambda: not self.bus.has_owner(WATCHER), "the tray's end")

    def start_notifier(self):
        """Starts the notification daemon and waits until it is on the bus."""
        self.start("notifier", "dunst", "-print")
        self._wait_for_notifier()

    def screenshot(self, path, area=None):
        """Saves a PNG of the display, or of an `area` "WxH+X+Y" of it."""
        crop = ["-crop", area, "+repage"] if area else []
        command = ["import", "-silent", "-window", "root", *crop, str(path)]
        subprocess.run(command, env=self._x_environment(), check=True)

    def pointer(self, x, y, button=None):
        """Moves the pointer there and, with a button, clicks."""
        # The second, small move makes a real motion of it for programs that just appeared.
        moves = ["mousemove", str(x), str(y), "mousemove_relative", "1", "0"]
        self._xdotool(*moves, *(["click", str(button)] if button else []))

    def key(self, *names, window=None):
        """Presses keys; with a `window`'s title, once that has the keyboard.

        What accessibility tells as focused comes earlier than the display's focus.
        """
        if window is not None:
            wait_until(lambda: self._title_in_focus() == window,
                       lambda: f"the keys to go to “{window}”, not “{self._title_in_focus()}”")
        self._xdotool("key", *names)

    def hold(self, name, is_held=True):
        """Presses a key and keeps it down, or lets go of it."""
        self._xdotool("keydown" if is_held else "keyup", name)

    def x(self, *command):
        """What a program on the display says."""
        return subprocess.run(command, env=self._x_environment(), capture_output=True,
                              text=True).stdout

    def __exit__(self, *_):
        if self.notices:
            self.notices.close()
        super().__exit__()

    def _start(self):
        for left_over in ("home", "services", "sway"):
            shutil.rmtree(self.directory / left_over, ignore_errors=True)
        home = self.directory / "home"
        runtime = home / "run"
        (home / ".config").mkdir(parents=True)
        runtime.mkdir(mode=0o700)
        self.environment.update(self._session(home, runtime))
        self.display = self._start_display()
        if not self.host.wayland:
            self.environment["DISPLAY"] = self.display
        self.host.configure(home)
        self._start_bus()
        subprocess.run(["xsetroot", "-solid", "#336699"], env=self._x_environment(), check=True)
        if self.host.window_manager:
            self.start("window_manager", *self.host.window_manager)
        self.host.start_shell(self)
        if self._notifier != "none":
            self.start_notifier()
        if type(self.host) is not HOSTS["none"]:
            self.start_panel()
        if self.host.has_notifications:
            self._wait_for_notifier()

    def _wait_for_notifier(self):
        wait_until(lambda: self.bus.has_owner(NOTIFICATIONS), "the notification daemon")

    def _session(self, home, runtime):
        variables = dict(
            kept_environment(),
            HOME=str(home),
            XDG_CONFIG_HOME=str(home / ".config"),
            XDG_DATA_HOME=str(home / ".local/share"),
            XDG_CACHE_HOME=str(home / ".cache"),
            XDG_RUNTIME_DIR=str(runtime),
            XDG_CURRENT_DESKTOP=self.host.desktop,
        )
        if not self._accessibility:
            variables.update(NO_AT_BRIDGE="1", GTK_A11Y="none")
        if self._power:
            variables.update(self._power.environment)
        return {**variables, **self.host.environment()}

    def _start_display(self):
        look = self.host.look
        reader, writer = os.pipe()
        self.processes.start(
            "display",
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{look.width}x{look.height}x24",
             "-nolisten", "tcp", "-noreset"],
            self.environment,
            pass_fds=(writer,),
        )
        os.close(writer)
        with open(reader) as answer:
            number = answer.readline().strip()
        if not number:
            raise RuntimeError(f"Xvfb did not start: {self.processes.log('display')}")
        return f":{number}"

    def _start_bus(self):
        services = [*self.host.services, *(["org.a11y.Bus"] if self._accessibility else [])]
        address = start_bus(
            self.processes, self.directory, "session", services, self.environment
        )
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.bus = Bus(address)
        self.notices = Notices(address)

    def _title_in_focus(self):
        return self.x("xdotool", "getwindowfocus", "getwindowname").strip()

    def _xdotool(self, *words):
        subprocess.run(["xdotool", *words], env=self._x_environment(), check=True)

    def _x_environment(self):
        return {**self.environment, "DISPLAY": self.display}
