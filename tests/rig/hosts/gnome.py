"""GNOME Shell with the AppIndicator extension: window manager, tray and notification server in one.

Needs a system bus, since the shell's login manager fails without one.
"""

import subprocess

from gi.repository import GLib

from ..processes import wait_until
from .host import Host

_EXTENSION = "ubuntu-appindicators@ubuntu.com"
_READY = (
    "if (Main.layoutManager._startingUp) throw 1; Main.overview.hide(); !Main.overview.visible"
)
# The shell greets a session without a screen lock with a notification.
_NO_GREETING = (
    "let s = Main.messageTray.getSources(); s.forEach(x => x.destroy()); s.length > 0"
)
# It shows an icon beside the item's as long as that mode lasts.
_SAFE_MODE = "global.context.unsafe_mode = false; true"


class Gnome(Host):
    desktop = "GNOME"
    services = ("ca.desrt.dconf", "org.gnome.Shell.Notifications")
    window_manager = ()
    has_notifications = True

    def environment(self):
        return {**super().environment(), "LIBGL_ALWAYS_SOFTWARE": "1"}

    def start_shell(self, desk):
        settings = [
            ("org.gnome.shell", "welcome-dialog-last-shown-version", "99"),
            ("org.gnome.shell", "enabled-extensions", f"['{_EXTENSION}']"),
            ("org.gnome.desktop.interface", "enable-animations", "false"),
            ("org.gnome.desktop.interface", "scaling-factor", str(self.look.scale)),
        ]
        for setting in settings:
            subprocess.run(["gsettings", "set", *setting], env=desk.environment, check=True)

    def start_panel(self, desk):
        # The unsafe mode lets Eval close the overview.
        desk.start("panel", "gnome-shell", "--x11", "--sm-disable", "--unsafe-mode")

    def settle(self, desk):
        for script in (_READY, _NO_GREETING, _SAFE_MODE):
            wait_until(lambda script=script: self._evaluates(desk, script), "the shell")

    @staticmethod
    def _evaluates(desk, script):
        arguments = GLib.Variant("(s)", (script,))
        shell = ("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell")
        try:
            return desk.bus.call(*shell, "Eval", arguments) == (True, "true")
        except GLib.Error:
            return False
