"""The tray hosts, each with what its desktop needs around it.

A host names its desktop as XDG_CURRENT_DESKTOP does, the bus services it wants activated, and
starts its panel; a desk (see desk.py) brings the display and the bus.
"""

from .gnome import Gnome
from .host import Host
from .lxqt import Lxqt
from .mate import Mate
from .plasma import Plasma
from .waybar import Waybar
from .xfce import Xfce

HOSTS = {
    "xfce": Xfce,
    "lxqt": Lxqt,
    "mate": Mate,
    "waybar": Waybar,
    "plasma": Plasma,
    "gnome": Gnome,
    "none": Host,
}
