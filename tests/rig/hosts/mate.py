"""mate-panel with the layout it has by default."""

from ..private_bus import installed_services
from .host import Host


class Mate(Host):
    desktop = "MATE"

    @property
    def services(self):
        return ("ca.desrt.dconf", *installed_services("org.mate.panel.applet.*"))

    def environment(self):
        # Of the whole session, as the bus starts the applets.
        theme = {"GTK_THEME": "Adwaita:dark"} if self.look.dark else {}
        return {**super().environment(), **theme}

    def start_panel(self, desk):
        desk.start("panel", "mate-panel")
