"""Plasma 5: the tray's watcher lives in kded5, the tray in plasmashell; no compositing."""

import glob

from ..processes import wait_until
from .host import Host

_APPLETS = ("kickoff", "panelspacer", "systemtray", "digitalclock")


class Plasma(Host):
    desktop = "KDE"
    window_manager = ("kwin_x11",)
    services = ("org.kde.kscreen",)
    items_on_left = True
    panel_processes = ("kded", "panel")
    has_notifications = True

    def environment(self):
        return {
            **super().environment(),
            "KDE_FULL_SESSION": "true",
            "KDE_SESSION_VERSION": "5",
            "LIBGL_ALWAYS_SOFTWARE": "1",
            "KWIN_COMPOSE": "N",
        }

    def configure(self, home):
        folder = home / ".config"
        panel = (
            "[Containments][1]\nformfactor=2\nlastScreen=0\nlocation=3\n"
            "plugin=org.kde.panel\nimmutability=1\n"
            "[Containments][1][General]\nAppletOrder=2;3;4;5\n"
        )
        for number, applet in enumerate(_APPLETS, start=2):
            panel += f"[Containments][1][Applets][{number}]\nplugin=org.kde.plasma.{applet}\n"
        (folder / "plasma-org.kde.plasma.desktop-appletsrc").write_text(panel)
        height = f"[PlasmaViews][Panel 1][Defaults]\nthickness={self.look.panel}\n"
        (folder / "plasmashellrc").write_text(height)
        theme = "breeze-dark" if self.look.dark else "breeze-light"
        (folder / "plasmarc").write_text(f"[Theme]\nname={theme}\n")
        (folder / "ksplashrc").write_text("[KSplash]\nEngine=none\n")

    def start_shell(self, desk):
        desk.start("activities", *glob.glob("/usr/lib/*/libexec/kactivitymanagerd"))
        self._wait_for(desk, "org.kde.ActivityManager")

    def start_panel(self, desk):
        desk.start("kded", "kded5")
        self._wait_for(desk, "org.kde.kded5")
        desk.start("panel", "plasmashell", "--no-respawn")

    @staticmethod
    def _wait_for(desk, name):
        wait_until(lambda: desk.bus.has_owner(name), name)
