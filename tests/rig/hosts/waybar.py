"""Waybar on sway, which runs nested in the virtual X server: so pointer and screenshots work."""

import json
import os
import shutil

from ..processes import wait_until
from .host import Host

_SWAY = """output X11-1 mode {width}x{height} scale {scale}
output * bg #336699 solid_color
seat * hide_cursor 0
"""


class Waybar(Host):
    desktop = "sway"
    wayland = True
    window_manager = ()

    def environment(self):
        return {}  # The compositor itself knows the scale.

    def configure(self, home):
        folder = home / ".config/waybar"
        folder.mkdir(parents=True)
        bar = {
            "layer": "top",
            "position": "top",
            "height": self.look.panel,
            "modules-left": ["sway/workspaces"],
            "modules-right": ["tray", "clock"],
            "tray": {"icon-size": self.look.panel - 10, "spacing": 8},
        }
        (folder / "config").write_text(json.dumps(bar))
        (folder / "style.css").write_text('* { font-family: "DejaVu Sans"; font-size: 13px; }\n')

    def start_shell(self, desk):
        # Sway refuses to run as root; it gets a runtime directory of its own, and its clients use
        # the absolute path of the socket.
        runtime = desk.directory / "sway"
        runtime.mkdir(mode=0o700)
        desk.directory.chmod(0o711)  # Let sway through to it.
        look = {"width": self.look.width, "height": self.look.height, "scale": self.look.scale}
        (runtime / "config").write_text(_SWAY.format(**look))
        command = ["sway", "-c", runtime / "config"]
        if os.getuid() == 0:
            for path in (runtime, runtime / "config"):
                shutil.chown(path, "nobody", "nogroup")
            command = ["setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups",
                       "--pdeathsig=KILL", *command]
        desk.start(
            "sway", *command,
            HOME=str(runtime), XDG_RUNTIME_DIR=str(runtime), XDG_CONFIG_HOME=str(runtime),
            XDG_CACHE_HOME=str(runtime), WLR_BACKENDS="x11", WLR_X11_OUTPUTS="1",
            WLR_RENDERER="pixman", DISPLAY=desk.display,
        )
        wait_until(lambda: [*runtime.glob("sway-ipc.*")] and [*runtime.glob("wayland-?")], "sway")
        desk.environment["WAYLAND_DISPLAY"] = str(next(runtime.glob("wayland-?")))
        desk.environment["SWAYSOCK"] = str(next(runtime.glob("sway-ipc.*")))

    def start_panel(self, desk):
        theme = {"GTK_THEME": "Adwaita:dark"} if self.look.dark else {}
        desk.start("panel", "waybar", "--log-level", "info", **theme)
