"""What every tray host has in common; by itself a desk without a panel."""

import dataclasses

WATCHER = "org.kde.StatusNotifierWatcher"


@dataclasses.dataclass(frozen=True)
class Look:
    """How a desk looks: its size and scale, the panel's height in points, light or dark."""

    width: int = 1280
    height: int = 720
    panel: int = 32
    scale: int = 1
    dark: bool = False


class Host:
    desktop = "X-Rig"
    services = ()
    wayland = False
    window_manager = ("openbox", "--sm-disable")
    items_on_left = False  # A new item comes on the left of what else the tray shows.
    panel_processes = ("panel",)  # What start_panel starts, in that order.
    has_notifications = False  # Its own notification server, so no other one can be started.

    def __init__(self, look):
        self.look = look

    def environment(self):
        """Variables of the whole session."""
        if self.look.scale == 1:
            return {}
        return {"GDK_SCALE": str(self.look.scale), "QT_SCALE_FACTOR": str(self.look.scale)}

    def configure(self, home):
        """Writes the host's settings below the desk's home directory."""

    def start_panel(self, desk):
        """Starts the process that owns the watcher; called again after it was stopped."""

    def start_shell(self, desk):
        """Starts what the session needs before the panel, once."""

    def settle(self, desk):
        """Waits for what is not told by the watcher's name alone."""
