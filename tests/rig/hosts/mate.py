"""mate-panel with the layout it has by default."""

from ..private_bus import installed_services
from .host import Host


class Mate(Host):
    desktop = "MATE"

    @property
    def services(self):
        return ("ca.desrt.dconf", *installed_services("org.mate.panel.applet.*"))

    def start_panel(self, desk):
        desk.start("panel", "mate-panel")
